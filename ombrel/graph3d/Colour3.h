#pragma once
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

/// A colour as OpenGL and documents take it: red, green and blue, a byte each.
struct Colour3 {
    constexpr Colour3() = default;
    constexpr Colour3(BYTE r, BYTE g, BYTE b)
        : rgb { r, g, b }
    {
    }
    explicit constexpr Colour3(unsigned long colour)
        : rgb { static_cast<BYTE>(colour), static_cast<BYTE>(colour >> 8), static_cast<BYTE>(colour >> 16) }
    {
    }
    constexpr COLORREF ToColour() const
    {
        return static_cast<COLORREF>(rgb[0] | static_cast<unsigned>(rgb[1]) << 8 | static_cast<unsigned>(rgb[2]) << 16);
    }
    friend constexpr bool operator==(Colour3 const& a, Colour3 const& b) = default;

    BYTE rgb[3] {};
};

} // namespace ombrel
