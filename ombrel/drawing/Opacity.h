#pragma once
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/gdi/Surface.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

/// A colour with an opacity from 0 to 1, which is kept in the top byte as what is missing to 255; it is never wholly
/// transparent. What draws curves looks at it, documents keep it with the colour, and everything else sees the colour
/// alone. Opaque colours have no such byte, and those within a hundredth of it are drawn opaquely.
inline COLORREF WithOpacity(COLORREF colour, double opacity)
{
    constexpr long kMostTransparent = 254;
    long const transparency = std::lround(255.0 * (1.0 - std::clamp(opacity, 0.0, 1.0)));
    return (colour & 0xFFFFFF) | static_cast<COLORREF>(std::min(transparency, kMostTransparent)) << 24;
}

/// The opacity of a colour, 1 to 255. Top bytes of 1 and 2 stand for entries of a palette and 255 for no colour in old
/// documents: these colours are opaque.
constexpr BYTE AlphaOf(COLORREF colour)
{
    COLORREF const transparency = colour >> 24;
    return static_cast<BYTE>(transparency < 3 || transparency == 255 ? 255 : 255 - transparency);
}

/// The colour without that byte, and its opacity.
constexpr VectorColour InkOf(COLORREF colour) { return { colour & 0xFFFFFF, AlphaOf(colour) }; }

} // namespace ombrel
