#pragma once
#include "ombrel/platform/framework/Types.h"

#include <cstdint>

namespace ombrel {

/// A colour by its red, green and blue parts, 0 to 255 each.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    /// From six hexadecimal digits, as in 0x1F77B4.
    static constexpr Colour Hex(std::uint32_t digits)
    {
        return { static_cast<std::uint8_t>(digits >> 16), static_cast<std::uint8_t>(digits >> 8),
            static_cast<std::uint8_t>(digits) };
    }
    constexpr bool operator==(Colour const&) const = default;
    constexpr COLORREF ToColorRef() const { return RGB(red, green, blue); }
};

/// Colours with a name.
namespace colours {
inline constexpr Colour kBlack { 0, 0, 0 };
inline constexpr Colour kGrey { 128, 128, 128 };
inline constexpr Colour kWhite { 255, 255, 255 };
inline constexpr Colour kBlue { 0, 95, 170 };
inline constexpr Colour kSkyBlue { 86, 180, 233 };
inline constexpr Colour kGreen { 0, 158, 115 };
inline constexpr Colour kYellow { 240, 228, 66 };
inline constexpr Colour kOrange { 230, 159, 0 };
inline constexpr Colour kVermilion { 213, 94, 0 };
inline constexpr Colour kPurple { 204, 121, 167 };
inline constexpr Colour kRed { 192, 40, 40 };
} // namespace colours

} // namespace ombrel
