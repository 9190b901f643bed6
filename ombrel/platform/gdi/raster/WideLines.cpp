#include "ombrel/platform/gdi/raster/WideLines.h"

#include "ombrel/platform/gdi/geometry/EllipsePixels.h"
#include "ombrel/platform/gdi/raster/DashStrip.h"
#include "ombrel/platform/gdi/raster/RasterLines.h"

namespace ombrel {

namespace {

/// Pens wider than this are as wide as this.
constexpr int kWidestPen = 4096;

/// The dot of a wide pen: the filled ellipse of its width, the same along both axes.
class PenDot {
public:
    explicit PenDot(int width)
        : m_width(std::min(width, kWidestPen))
    {
        CRect const box(0, 0, m_width, m_width);
        m_lines = EllipseRows(box, EllipseOutline(box));
        for (EllipseRow& line : m_lines)
            line = { line.left - m_width / 2, line.right - m_width / 2 + 1 };
    }
    int Width() const { return m_width; }
    /// Stamps the dot on all positions v0 … v1 (both included) of line u.
    void Stamp(CoverageMask& mask, int u, int v0, int v1) const
    {
        int line = u - m_width / 2;
        for (EllipseRow const& row : m_lines)
            mask.FillRun(line++, v0 + row.left, v1 + row.right);
    }

private:
    int m_width;
    /// Relative to the point stamped; right is excluded.
    std::vector<EllipseRow> m_lines;
};

/// Draws a line with the dot, both ends included: upright and level ones by moving it along, others as the band between
/// the dots at their ends.
void StampLine(CoverageMask& mask, PenDot const& dot, CPoint from, CPoint to)
{
    bool const columns = mask.HasColumns();
    int const u0 = columns ? from.x : from.y;
    int const v0 = columns ? from.y : from.x;
    int const u1 = columns ? to.x : to.y;
    int const v1 = columns ? to.y : to.x;
    if (u0 == u1) {
        dot.Stamp(mask, u0, std::min(v0, v1), std::max(v0, v1));
        return;
    }
    dot.Stamp(mask, u0, v0, v0);
    dot.Stamp(mask, u1, v1, v1);
    if (v0 == v1) {
        int const first = std::max(std::min(u0, u1), mask.UBegin());
        int const last = std::min(std::max(u0, u1) + 1, mask.UEnd());
        int const low = v0 - dot.Width() / 2;
        for (int u = first; u < last; ++u)
            mask.FillRun(u, low, low + dot.Width());
        return;
    }
    CPoint const origin = OriginFor(from);
    mask.SetOrigin(origin);
    StrokeSegment band;
    band.start = { static_cast<double>(u0 - (columns ? origin.x : origin.y)),
        static_cast<double>(v0 - (columns ? origin.y : origin.x)) };
    band.delta = { static_cast<double>(u1) - u0, static_cast<double>(v1) - v0 };
    band.length = std::hypot(band.delta.u, band.delta.v);
    DashStrip unused;
    CoverBand(mask, band, dot.Width() / 2.0, DashPattern(), unused);
    mask.SetOrigin({});
}

} // namespace

void DrawPixels(RasterCanvas const& canvas, CoverageMask& mask, std::span<CPoint const> pixels, LineStyle const& line)
{
    if (line.width > 1) {
        FiguresExtent const extent = MeasureFigures(canvas, { pixels, {} }, std::min(line.width, kWidestPen));
        if (extent.box.IsRectEmpty())
            return;
        PenDot const dot(line.width);
        mask.Begin(extent.box, CoverageMask::Lines::Rows);
        for (CPoint const& p : pixels)
            dot.Stamp(mask, p.y, p.x, p.x);
        mask.Flush(canvas, canvas.InkOf({ line.colour, 255 }));
        return;
    }
    DashPattern const pattern(PenDashes(line.style), 1.0);
    std::uint32_t const on = canvas.Pixel(line.colour);
    std::uint32_t const off = canvas.Pixel(line.gapColour.value_or(line.colour));
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        CPoint const p = pixels[i];
        bool const isOn = pattern.IsOn(static_cast<double>(i));
        if ((isOn || line.gapColour) && canvas.Contains(p))
            canvas.Row(p.y)[p.x] = isOn ? on : off;
    }
}

void DrawWideLines(
    RasterCanvas const& canvas, CoverageMask& mask, std::span<CPoint const> points, LineStyle const& line)
{
    FiguresExtent const extent = MeasureFigures(canvas, { points, {} }, std::min(line.width, kWidestPen));
    if (extent.box.IsRectEmpty())
        return;
    PenDot const dot(line.width);
    mask.Begin(extent.box, extent.isUpright ? CoverageMask::Lines::Columns : CoverageMask::Lines::Rows);
    for (std::size_t i = 1; i < points.size(); ++i)
        StampLine(mask, dot, ClampPoint(points[i - 1]), ClampPoint(points[i]));
    mask.Flush(canvas, canvas.InkOf({ line.colour, 255 }));
}

} // namespace ombrel
