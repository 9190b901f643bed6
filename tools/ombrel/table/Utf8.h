#pragma once

#include <string>
#include <string_view>

namespace ombrel::host {

bool IsUtf8(std::string_view text);

/// Each byte as the character of that number.
std::string Utf8FromLatin1(std::string_view text);

/// The text in double quotes for an error message: cut to a readable length, control and invalid bytes as \xNN.
std::string QuoteForMessage(std::string_view text);

} // namespace ombrel::host
