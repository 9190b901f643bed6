#pragma once
#include "ombrel/drawing/Opacity.h"

namespace ombrel {

/// The fill pattern that stands for a solid brush; others are hatch styles.
inline constexpr int kSolidFillPattern = 6;

/// The brush of a fill pattern, as opaque as the colour; solid too for a style that does not exist. Hatches lie on
/// white unless told otherwise.
inline VectorBrush MakePatternBrush(int pattern, COLORREF colour, VectorColour background = { 0xFFFFFF, 255 })
{
    VectorColour const foreground = InkOf(colour);
    if (pattern == kSolidFillPattern)
        return { foreground, {}, {} };
    background.alpha = static_cast<BYTE>(background.alpha * foreground.alpha / 255);
    return VectorBrush::Hatch(pattern, foreground, background);
}

} // namespace ombrel
