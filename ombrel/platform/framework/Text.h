#pragma once
#include <initializer_list>
#include <string>
#include <string_view>

namespace ombrel {

/// The parts, one after the other.
inline std::string Join(std::initializer_list<std::string_view> parts)
{
    std::size_t size = 0;
    for (std::string_view const part : parts)
        size += part.size();
    std::string text;
    text.reserve(size);
    for (std::string_view const part : parts)
        text += part;
    return text;
}

} // namespace ombrel
