#pragma once
#include "ombrel/platform/gdi/Surface.h"

namespace ombrel {

/// The fill pattern that stands for a solid brush; others are hatch styles.
inline constexpr int kSolidFillPattern = 6;

/// The brush of a fill pattern; solid too for a style that does not exist. Hatches lie on white unless told otherwise.
inline VectorBrush MakePatternBrush(int pattern, COLORREF colour, VectorColour background = { 0xFFFFFF, 255 })
{
    if (pattern == kSolidFillPattern)
        return VectorBrush::Solid(colour);
    return VectorBrush::Hatch(pattern, { colour, 255 }, background);
}

} // namespace ombrel
