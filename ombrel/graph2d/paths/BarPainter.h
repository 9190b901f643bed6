#pragma once
#include "ombrel/drawing/Port.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <vector>

namespace ombrel {

class C2DGraph;

/// Paints bars: each is filled, clipped to the axes, and then outlined, its sides on an axis line in the look of the
/// axes and the others in the border's, which may be the bar's own colour.
///
/// Lives within one draw: the device context's state is put back at its end. The picture is complete after Flush or
/// when the painter ends: bars thinner than a pixel are gathered by pixel column, and those that overlap are drawn as
/// one line. That changes no pixel, and a picture of very many bars costs no more than its columns.
class BarPainter {
public:
    /// The graph must have axes; the border's colour may be kOwnColour.
    BarPainter(CPort& port, C2DGraph const& graph, COLORREF borderColour);
    ~BarPainter() { Flush(); }
    BarPainter(BarPainter const&) = delete;
    BarPainter& operator=(BarPainter const&) = delete;

    /// A bar of that width about x between two heights, in real units. Nothing when one of them is a gap.
    void Paint(double x, double width, double from, double to, VectorBrush const& brush);
    void Flush();

    /// Clips the rectangle to the axes; when nothing is left it stays as it was, and the answer is whether its top-left
    /// corner lies inside the axes.
    static bool ClipToAxes(CRect& rect, CRect const& axes);

private:
    /// The rows top … bottom of a pixel column that bars thinner than a pixel cover; none when top > bottom.
    struct Column {
        int top = 0;
        int bottom = -1;
        COLORREF colour = 0;
    };
    void Outline(CRect const& rect);
    void DrawThinBar(CRect rect);
    void AddToColumn(int x, int top, int bottom);
    void FlushColumns(int first, int last);
    void DrawColumn(int x, Column const& column);
    void SetBorder(COLORREF colour);
    void Select(CPen& pen);
    CPen& PenOfRow(int y) { return y == m_crossing.y ? m_axesPen : m_borderPen; }
    CPen& PenOfColumn(int x) { return x == m_crossing.x ? m_axesPen : m_borderPen; }

    CDC& m_dc;
    SavedDC m_saved;
    VectorGraphics m_graphics;
    PortMapping m_mapping;
    CRect m_axesRect;
    /// Where the axis lines cross on the device.
    CPoint m_crossing;
    bool m_ownColours;
    /// Of the bar that is painted.
    COLORREF m_borderColour;
    CPen m_borderPen;
    CPen m_axesPen;
    CPen const* m_selected = nullptr;
    /// How far a line reaches beyond its column.
    int m_reach;
    /// Those of the axes rectangle, right edge included; made when the first one is needed.
    std::vector<Column> m_columns;
};

} // namespace ombrel
