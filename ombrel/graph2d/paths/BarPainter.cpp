#include "ombrel/graph2d/paths/BarPainter.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/model/LineWidth.h"

#include <algorithm>
#include <array>

namespace ombrel {

BarPainter::BarPainter(CPort& port, C2DGraph const& graph, COLORREF borderColour)
    : m_dc(*port.GetDC())
    , m_saved(m_dc)
    , m_graphics(m_dc)
    , m_mapping(port.GetMapping())
    , m_axesRect(graph.GetAxesRect())
    , m_crossing(port.UnitsToWindow(graph.GetAxes()->GetIntersect()))
    , m_ownColours(borderColour == kOwnColour)
    , m_borderColour(borderColour)
    , m_borderPen(PS_SOLID, DeviceLineWidth(m_dc, 1, ThicknessKind::Border), borderColour)
    , m_axesPen(
          PS_SOLID, DeviceLineWidth(m_dc, 1, ThicknessKind::Axes), static_cast<COLORREF>(graph.GetAxes()->GetColour()))
    , m_reach(std::max(m_borderPen.GetWidth(), m_axesPen.GetWidth()))
{
    // Alike pens are one: no bar reaches this point.
    if (m_axesPen.GetColour() == borderColour && m_axesPen.GetWidth() == m_borderPen.GetWidth())
        m_crossing = { 2 * PortMapping::kDeviceLimit, 2 * PortMapping::kDeviceLimit };
}

bool BarPainter::ClipToAxes(CRect& rect, CRect const& axes)
{
    CRect common;
    if (!common.IntersectRect(rect, axes))
        return axes.PtInRect(rect.TopLeft());
    rect = common;
    return true;
}

void BarPainter::Paint(double x, double width, double from, double to, VectorBrush const& brush)
{
    if (IsGap(x) || IsGap(from) || IsGap(to))
        return;
    double const half = width * 0.5;
    if (m_ownColours)
        m_borderColour = brush.foreground.colour;
    CRect rect(
        m_mapping.X(x - half), m_mapping.Y(std::max(from, to)), m_mapping.X(x + half), m_mapping.Y(std::min(from, to)));
    rect.NormalizeRect();
    if (!ClipToAxes(rect, m_axesRect))
        return;
    if (rect.IsRectEmpty()) {
        DrawThinBar(rect);
        return;
    }
    FlushColumns(rect.left - m_reach, rect.right + m_reach);
    m_graphics.FillRectangle(brush, rect.left, rect.top, rect.Width(), rect.Height());
    Outline(rect);
}

void BarPainter::Outline(CRect const& rect)
{
    SetBorder(m_borderColour);
    // From the top-left corner clockwise: a line leaves out its last pixel, with which the next begins.
    std::array<CPoint, 5> const corners { rect.TopLeft(), CPoint(rect.right, rect.top), rect.BottomRight(),
        CPoint(rect.left, rect.bottom), rect.TopLeft() };
    std::array<CPen*, 4> const pens { &PenOfRow(rect.top), &PenOfColumn(rect.right), &PenOfRow(rect.bottom),
        &PenOfColumn(rect.left) };
    for (std::size_t first = 0; first < pens.size();) {
        std::size_t last = first + 1;
        while (last < pens.size() && pens[last] == pens[first])
            ++last;
        Select(*pens[first]);
        m_dc.Polyline({ corners.data() + first, last - first + 1 });
        first = last;
    }
}

void BarPainter::DrawThinBar(CRect rect)
{
    // The plot's drawing ends at its edges; the top-left corner lies inside.
    rect.right = std::min(rect.right, m_axesRect.right);
    rect.bottom = std::min(rect.bottom, m_axesRect.bottom);
    if (rect.left == rect.right && &PenOfColumn(rect.left) == &m_borderPen) {
        AddToColumn(rect.left, rect.top, rect.bottom);
        return;
    }
    FlushColumns(rect.left - m_reach, rect.right + m_reach);
    Outline(rect);
}

void BarPainter::AddToColumn(int x, int top, int bottom)
{
    if (m_columns.empty())
        m_columns.resize(static_cast<std::size_t>(m_axesRect.Width()) + 1);
    // Lines of several colours that reach into each other's columns keep their order.
    if (m_ownColours && m_reach > 1) {
        FlushColumns(x - 2 * m_reach, x - 1);
        FlushColumns(x + 1, x + 2 * m_reach);
    }
    Column& column = m_columns[static_cast<std::size_t>(x - m_axesRect.left)];
    if (column.colour == m_borderColour && top <= column.bottom && bottom >= column.top) {
        column = { std::min(column.top, top), std::max(column.bottom, bottom), m_borderColour };
        return;
    }
    FlushColumns(x, x);
    column = { top, bottom, m_borderColour };
}

void BarPainter::Flush() { FlushColumns(m_axesRect.left, m_axesRect.right); }

void BarPainter::FlushColumns(int first, int last)
{
    if (m_columns.empty())
        return;
    first = std::max(first, m_axesRect.left);
    last = std::min(last, m_axesRect.right);
    for (int x = first; x <= last; ++x) {
        Column& column = m_columns[static_cast<std::size_t>(x - m_axesRect.left)];
        if (column.top <= column.bottom)
            DrawColumn(x, column);
        column = {};
    }
}

void BarPainter::DrawColumn(int x, Column const& column)
{
    int bottom = column.bottom;
    // Drawn down and up again, a line one pixel wide has both its ends, and without a length none. A wider one has its
    // ends anyway.
    if (m_borderPen.GetWidth() == 1)
        bottom += column.top < bottom ? 1 : 0;
    std::array<CPoint, 2> const ends { CPoint(x, column.top), CPoint(x, bottom) };
    SetBorder(column.colour);
    Select(m_borderPen);
    m_dc.Polyline(ends);
}

void BarPainter::SetBorder(COLORREF colour)
{
    if (m_borderPen.GetColour() == colour)
        return;
    m_borderPen.CreatePen(PS_SOLID, m_borderPen.GetWidth(), colour);
    m_selected = nullptr;
}

void BarPainter::Select(CPen& pen)
{
    if (m_selected != &pen)
        m_dc.SelectObject(&pen);
    m_selected = &pen;
}

} // namespace ombrel
