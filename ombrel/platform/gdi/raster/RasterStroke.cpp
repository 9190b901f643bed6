#include "ombrel/platform/gdi/raster/DashStrip.h"
#include "ombrel/platform/gdi/raster/RasterLines.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"
#include "ombrel/platform/gdi/raster/StrokeBands.h"
#include "ombrel/platform/gdi/raster/StrokeCorner.h"

#include <cmath>

namespace ombrel {

namespace {

/// Pens wider than this are as wide as this.
constexpr double kWidestPen = 65536.0;

/// Draws the figures of one call into a mask, segment by segment.
class BandDrawer {
public:
    BandDrawer(CoverageMask& mask, double width, DashPattern const& pattern, bool smooth)
        : m_mask(mask)
        , m_half(width / 2.0)
        , m_pattern(pattern)
        , m_smooth(smooth)
    {
    }
    void Draw(std::span<CPoint const> points)
    {
        StrokeSegment segment;
        CPoint start;
        bool pending = false;
        double distance = 0.0;
        for (std::size_t i = 1; i < points.size(); ++i) {
            StrokeSegment next = Between(points[i - 1], points[i]);
            if (next.length == 0.0)
                continue;
            next.phase = distance;
            if (pending) {
                // A dash that runs over the vertex has a corner there.
                if (m_pattern.IsOn(distance - kNear) && m_pattern.IsOn(distance + kNear))
                    Join(segment, next, ClampPoint(points[i - 1]));
                DrawSegment(segment, start);
            }
            distance += next.length;
            segment = next;
            start = ClampPoint(points[i - 1]);
            pending = true;
        }
        if (pending)
            DrawSegment(segment, start);
    }

private:
    static constexpr double kNear = 1e-6;

    StrokeSegment Between(CPoint from, CPoint to) const
    {
        StrokeSegment segment;
        segment.start = ToMask(ClampPoint(from) - OriginFor(ClampPoint(from)));
        segment.delta = ToMask(ClampPoint(to) - ClampPoint(from));
        segment.length = std::sqrt(segment.delta.u * segment.delta.u + segment.delta.v * segment.delta.v);
        return segment;
    }
    MaskPoint ToMask(CPoint p) const
    {
        return m_mask.HasColumns() ? MaskPoint { static_cast<double>(p.x), static_cast<double>(p.y) }
                                   : MaskPoint { static_cast<double>(p.y), static_cast<double>(p.x) };
    }
    void Join(StrokeSegment& before, StrokeSegment& after, CPoint corner)
    {
        m_mask.SetOrigin(OriginFor(corner));
        MaskPoint const a = before.Direction();
        MaskPoint const b = after.Direction();
        if (!m_smooth) {
            CoverCorner(m_mask, after.start, a, b, m_half);
            return;
        }
        before.endReach = SmoothReach(a, b, m_half);
        after.startReach = SmoothReach(b, a, m_half);
        if (m_half > 0.5)
            SmoothCorner(m_mask, after.start, a, b, m_half);
    }
    void DrawSegment(StrokeSegment const& segment, CPoint start)
    {
        m_mask.SetOrigin(OriginFor(start));
        if (m_smooth)
            SmoothBand(m_mask, segment, m_half, m_pattern, m_strip);
        else
            CoverBand(m_mask, segment, m_half, m_pattern, m_strip);
    }

    CoverageMask& m_mask;
    double m_half;
    DashPattern const& m_pattern;
    bool m_smooth;
    DashStrip m_strip;
};

void DrawBands(RasterCanvas const& canvas, CoverageMask& mask, Figures const& figures, double width,
    DashPattern const& pattern, bool smooth, Ink const& ink)
{
    int const margin = CeilToInt(width / 2.0 * kMitreLimit) + 2;
    FiguresExtent const extent = MeasureFigures(canvas, figures, margin);
    if (extent.box.IsRectEmpty())
        return;
    mask.Begin(extent.box, extent.isUpright ? CoverageMask::Lines::Columns : CoverageMask::Lines::Rows);
    BandDrawer drawer(mask, width, pattern, smooth);
    for (std::size_t i = 0; i < figures.Count(); ++i)
        drawer.Draw(figures.PointsOf(i));
    mask.Flush(canvas, ink);
}

} // namespace

void RasterSurface::Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty() || pen.colour.alpha == 0)
        return;
    double const width = pen.width > 1.0 ? std::min(pen.width, kWidestPen) : 1.0;
    DashPattern const pattern(pen.dashes, width);
    if (width > 1.0 || smooth) {
        DrawBands(canvas, m_mask, figures, width, pattern, smooth, canvas.InkOf(pen.colour));
        return;
    }
    ThinPen thin;
    thin.ink = canvas.InkOf(pen.colour);
    thin.dashes = pattern;
    thin.halves = Halves::Larger;
    thin.withEnd = true;
    DrawThinLines(canvas, m_mask, figures, thin);
}

} // namespace ombrel
