#include "ombrel/graph2d/paths/ContourPainter.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/platform/gdi/DC.h"

#include <cstdlib>
#include <vector>

namespace ombrel {

namespace {

CRealPoint PointOf(std::array<double, 2> const& at) { return { at[0], at[1] }; }

} // namespace

ContourPainter::ContourPainter(CPort& port, ContourFinder const& finder, int width)
    : m_port(port)
    , m_finder(finder)
    , m_width(width)
{
}

void ContourPainter::DrawLevel(double level, COLORREF colour)
{
    CDC& dc = *m_port.GetDC();
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, m_width, colour);
    dc.SelectObject(&pen);
    // This cuts pieces off without moving them, wherever their ends lie.
    CRect clip;
    if (m_port.GetClipRect(clip))
        dc.IntersectClipRect(CRect(clip.left, clip.top, clip.right + 1, clip.bottom + 1));
    if (dc.IsPrinting())
        DrawJoined(level);
    else
        DrawSegments(level, colour);
}

void ContourPainter::DrawSegments(double level, COLORREF colour)
{
    m_segments.clear();
    m_pixels.clear();
    m_finder.FindSegments(level, m_segments);
    CDC& dc = *m_port.GetDC();
    CRect clip;
    bool const clipped = m_port.GetClipRect(clip) != 0;
    // Most pieces of a fine grid cover one pixel or two: those are set all at once.
    auto const add = [this](CPoint p) {
        if (m_pixels.empty() || m_pixels.back() != p)
            m_pixels.push_back(p);
    };
    for (ContourSegment const& segment : m_segments) {
        CPoint const from = m_port.UnitsToWindow(PointOf(segment.from));
        CPoint const to = m_port.UnitsToWindow(PointOf(segment.to));
        bool const isShort = m_width == 1 && std::abs(from.x - to.x) <= 1 && std::abs(from.y - to.y) <= 1;
        if (isShort && (!clipped || (clip.PtInRect(from) && clip.PtInRect(to)))) {
            add(from);
            add(to);
            continue;
        }
        dc.MoveTo(from);
        dc.LineTo(to);
        m_port.SetPixel(to.x, to.y, colour);
    }
    dc.Repeat([colour](CDC& mark) { mark.SetPixel(0, 0, colour); }, m_pixels);
}

void ContourPainter::DrawJoined(double level)
{
    ContourPolylines lines;
    m_finder.FindLines(level, lines);
    CDC& dc = *m_port.GetDC();
    std::vector<CPoint> points;
    for (std::size_t i = 0; i < lines.GetSize(); ++i) {
        points.clear();
        for (auto const& point : lines.GetLine(i)) {
            CPoint const at = m_port.UnitsToWindow(PointOf(point));
            if (points.empty() || points.back() != at)
                points.push_back(at);
        }
        dc.Polyline(points);
    }
}

} // namespace ombrel
