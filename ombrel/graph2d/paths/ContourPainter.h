#pragma once
#include "ombrel/drawing/Port.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/platform/gdi/GdiObjects.h"
#include "ombrel/platform/gdi/Surface.h"

#include <vector>

namespace ombrel {

/// Draws the lines of a grid's levels with a pen of some width, cell by cell: each piece up to its last pixel, which is
/// set besides. On pages the pieces are joined into long lines, which stay lines there.
class ContourPainter {
public:
    ContourPainter(CPort& port, ContourFinder const& finder, int width);
    void DrawLevel(double level, COLORREF colour);

private:
    void DrawSegments(double level, COLORREF colour);
    void DrawJoined(double level);

    CPort& m_port;
    ContourFinder const& m_finder;
    int m_width;
    // Of one level; they keep their memory from level to level.
    std::vector<ContourSegment> m_segments;
    std::vector<CPoint> m_pixels;
};

} // namespace ombrel
