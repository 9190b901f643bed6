#pragma once
#include <cstdint>

namespace ombrel {

/// 8 bits without a sign.
using BYTE = std::uint8_t;
/// 16 bits without a sign.
using WORD = std::uint16_t;
/// 32 bits without a sign, on every platform.
using DWORD = std::uint32_t;
/// 32 bits with a sign, on every platform.
using LONG = std::int32_t;
/// 32 bits without a sign.
using UINT = std::uint32_t;

/// A colour as 0x00BBGGRR: red in the low byte.
using COLORREF = std::uint32_t;

/// The colour of three parts of 0 … 255; of larger numbers the low eight bits count.
constexpr COLORREF RGB(int red, int green, int blue)
{
    return static_cast<COLORREF>(red & 0xFF) | static_cast<COLORREF>(green & 0xFF) << 8
        | static_cast<COLORREF>(blue & 0xFF) << 16;
}
/// Red.
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c); }
/// Green.
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>(c >> 8); }
/// Blue.
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>(c >> 16); }

} // namespace ombrel
