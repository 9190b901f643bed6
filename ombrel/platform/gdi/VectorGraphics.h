#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Surface.h"

#include <span>
#include <vector>

namespace ombrel {

class CDC;

/// Draws on a device context with the anti-aliasing vector interface.
///
/// Coordinates are device pixels and follow the context's viewport origin. The context's clip region always limits
/// it too; its pen, brush and position are neither used nor changed. Lives within one draw; the context is not owned.
class OMBREL_EXPORT VectorGraphics {
public:
    explicit VectorGraphics(CDC& dc);
    /// Anti-aliased lines; fills are never smoothed. Off at first.
    void SetSmoothing(bool on) { m_smooth = on; }
    /// Lets x … x + w − 1, y … y + h − 1 through: nothing when the rectangle is empty.
    void SetClipRect(CRect const& rect);
    void DrawLine(VectorPen const& pen, CPoint from, CPoint to);
    /// One curve of straight segments through all points.
    void DrawCurve(VectorPen const& pen, std::span<CPoint const> points);
    /// Separate figures, each starting the dash pattern again.
    void DrawPath(VectorPen const& pen, Figures const& figures);
    /// The whole outline of an ellipse that spans the columns left … right and the rows top … bottom: a curve for that
    /// pen, clockwise from its rightmost point and back, so that dashes run on. Empty when the box is.
    ///
    /// On a bitmap a thin pen gets the pixels of the outline one by one. Elsewhere the curve lies within half a
    /// pixel of the ellipse.
    std::vector<CPoint> EllipsePoints(VectorPen const& pen, CRect const& box) const;
    void FillRegion(VectorBrush const& brush, Region const& region);
    void FillPolygon(VectorBrush const& brush, std::span<CPoint const> points);
    /// Pixels whose whole coordinates lie in [x, x + w) × [y, y + h).
    void FillRectangle(VectorBrush const& brush, double x, double y, double w, double h);

private:
    CDC& m_dc;
    bool m_smooth = false;
    Clip m_clip;
};

} // namespace ombrel
