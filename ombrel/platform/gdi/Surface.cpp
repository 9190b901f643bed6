#include "ombrel/platform/gdi/Surface.h"

#include "ombrel/platform/gdi/RecordingSurface.h"

namespace ombrel {

VectorBrush VectorBrush::Hatch(int style, VectorColour foreground, VectorColour background)
{
    if (style < 0 || style >= kHatchStyles)
        return { foreground, {}, {} };
    return { foreground, style, background };
}

void Surface::Repeat(std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, Clip const& clip)
{
    for (CPoint const& point : points)
        for (RecordedPrimitive const& primitive : mark)
            Replay(primitive, point, *this, clip);
}

} // namespace ombrel
