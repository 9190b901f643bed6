#pragma once

#include <string>
#include <string_view>

namespace ombrel {

/// With A to Z as small letters.
std::string LowerCase(std::string_view text);

/// The ending of a file's name in small letters, with its point.
std::string ExtensionOf(std::string const& path);

} // namespace ombrel
