#pragma once
#include <cstdint>

namespace ombrel {

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using UINT = std::uint32_t;

/// A colour as 0x00BBGGRR: red in the low byte.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(int red, int green, int blue)
{
    return static_cast<COLORREF>(red & 0xFF) | static_cast<COLORREF>(green & 0xFF) << 8
        | static_cast<COLORREF>(blue & 0xFF) << 16;
}
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c); }
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>(c >> 8); }
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>(c >> 16); }

} // namespace ombrel
