#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <string_view>

namespace ombrel {

/// Whether the bytes are well-formed UTF-8.
OMBREL_EXPORT bool IsUtf8(std::string_view text);

/// Each byte as the character of that number.
OMBREL_EXPORT std::string Utf8FromLatin1(std::string_view text);

/// The text in double quotes for an error message: cut to a readable length, control and invalid bytes as \xNN.
OMBREL_EXPORT std::string QuoteForMessage(std::string_view text);

} // namespace ombrel
