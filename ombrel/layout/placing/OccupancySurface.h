#pragma once
#include "ombrel/layout/placing/Occupancy.h"
#include "ombrel/platform/gdi/Surface.h"

namespace ombrel {

class C2DGraph;

/// A surface that keeps where is drawn instead of what: shapes count with their inside, whatever their colour, texts
/// with their cells, and marks that repeat with the box around one.
class OccupancySurface : public Surface {
public:
    /// The part of the device that matters.
    explicit OccupancySurface(CRect const& area)
        : m_occupancy(area)
    {
    }
    Occupancy const& GetOccupancy() const { return m_occupancy; }

    CRect Bounds() const override;
    void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) override;
    void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) override;
    void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) override;
    void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip) override;
    void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip) override;
    void Text(TextRun const& run, Clip const& clip) override;
    void Image(ImageCopy const& copy, Clip const& clip) override;
    void Repeat(
        std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip) override;

private:
    void AddLine(CPoint from, CPoint to, double width, CRect const& within);
    void AddLines(std::span<CPoint const> points, double width, Clip const& clip);
    void AddPixels(CRect const& pixels, Clip const& clip);

    Occupancy m_occupancy;
};

/// Where the graph's curves are drawn in the plotting area that it was laid out with, the inside of closed shapes
/// included.
Occupancy OccupancyOf(C2DGraph& graph);

} // namespace ombrel
