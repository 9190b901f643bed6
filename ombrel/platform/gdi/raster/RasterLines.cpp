#include "ombrel/platform/gdi/raster/RasterLines.h"

#include "ombrel/platform/gdi/raster/DashStrip.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"
#include "ombrel/platform/gdi/raster/StrokeBands.h"
#include "ombrel/platform/gdi/raster/WideLines.h"

namespace ombrel {

namespace {

/// A mask is faster than the bitmap itself when the lines run up and down and cover more than this part of their box.
constexpr double kDenseLines = 0.25;

/// Walks one kind of dashes of thin lines over a plane of T.
template <typename T> class ThinLineDrawer {
public:
    ThinLineDrawer(Plane<T> const& plane, CRect const& box, ThinPen const& pen, T on, std::optional<T> off)
        : m_plane(plane)
        , m_box(box)
        , m_pen(pen)
        , m_on(on)
        , m_off(off)
        , m_useStrip(sizeof(T) == 1 && !off && pen.dashes.IsWhole())
    {
    }
    /// Draws a figure; visible(line, first, last) is told each range of pixels first.
    template <typename Visible> void Draw(std::span<CPoint const> points, Visible&& visible) const
    {
        long long drawn = 0;
        for (std::size_t i = 1; i < points.size(); ++i) {
            LinePixels const line(ClampPoint(points[i - 1]), ClampPoint(points[i]), m_pen.halves);
            if (line.n == 0)
                continue;
            long long first = 0;
            long long last = line.n + (m_pen.withEnd ? 1 : 0);
            if (!IsInside(points[i - 1]) || !IsInside(points[i]))
                line.Clip(m_box, first, last);
            if (first < last) {
                visible(line, first, last);
                DrawRange(line, first, last, drawn);
            }
            drawn += line.n;
        }
    }

private:
    bool IsInside(CPoint p) const { return m_box.PtInRect(p); }
    void DrawRange(LinePixels const& line, long long first, long long last, long long drawn) const
    {
        LineWalker<T> walker(line, first, m_plane);
        if (m_pen.dashes.IsSolid()) {
            walker.Write(last - first, m_on);
            return;
        }
        if constexpr (sizeof(T) == 1) {
            if (m_useStrip && line.steep && walker.HasLongRuns()) {
                CoverRuns(walker, line, first, last, drawn);
                return;
            }
        }
        DashCounter counter(m_pen.dashes, static_cast<double>(drawn + first));
        for (long long left = last - first; left > 0;) {
            long long const run = std::min(left, counter.Length());
            if (counter.IsOn())
                walker.Write(run, m_on);
            else if (m_off)
                walker.Write(run, *m_off);
            else
                walker.Skip(run);
            counter.Advance(run);
            left -= run;
        }
    }
    /// Covers the dashes of an upright line in a mask whose columns lie together in memory.
    void CoverRuns(
        LineWalker<T>& walker, LinePixels const& line, long long first, long long last, long long drawn) const
    {
        int const lowest = std::min(line.Major(first), line.Major(last - 1));
        int const highest = std::max(line.Major(first), line.Major(last - 1));
        auto const length = static_cast<double>(line.n);
        StrokeSegment segment;
        // A dash takes in its lower end: counted upwards, pixel i lies at start − 1 − i.
        segment.start.v = line.majorStart + (line.majorStep > 0 ? 0 : 1);
        segment.delta.v = line.majorStep * length;
        segment.length = length;
        segment.phase = static_cast<double>(drawn);
        segment.endReach = 1.0;
        m_strip.Build(segment, m_pen.dashes, lowest, highest + 1, false);
        walker.ForEachRun(last - first, [&](T* run, std::ptrdiff_t count, long long done) {
            long long const begin = line.majorStep > 0 ? first + done : first + done + count - 1;
            std::uint8_t const* const covered = m_strip.At(line.Major(begin));
            for (std::ptrdiff_t i = 0; i < count; ++i)
                run[i] = static_cast<T>(run[i] | covered[i]);
        });
    }
    Plane<T> m_plane;
    CRect m_box;
    ThinPen const& m_pen;
    T m_on;
    std::optional<T> m_off;
    bool m_useStrip;
    mutable DashStrip m_strip;
};

void DrawThroughMask(CoverageMask& mask, Figures const& figures, ThinPen const& pen, CRect const& box, bool gaps)
{
    std::uint8_t const on = gaps ? 0 : 255;
    std::optional<std::uint8_t> const off = gaps ? std::optional<std::uint8_t>(255) : std::nullopt;
    ThinLineDrawer<std::uint8_t> const drawer(mask.Pixels(), box, pen, on, off);
    auto const touch = [&mask](LinePixels const& line, long long first, long long last) {
        CPoint const a = line.At(first);
        CPoint const b = line.At(last - 1);
        auto const [uFrom, uTo] = mask.HasColumns() ? std::minmax(a.x, b.x) : std::minmax(a.y, b.y);
        auto const [vFrom, vTo] = mask.HasColumns() ? std::minmax(a.y, b.y) : std::minmax(a.x, b.x);
        for (int u = uFrom; u <= uTo; ++u)
            mask.Touch(u, vFrom, vTo + 1);
    };
    for (std::size_t i = 0; i < figures.Count(); ++i)
        drawer.Draw(figures.PointsOf(i), touch);
}

} // namespace

FiguresExtent MeasureFigures(RasterCanvas const& canvas, Figures const& figures, int margin)
{
    CRect const& clip = canvas.Box();
    int const limit = kCoordinateLimit;
    FiguresExtent extent;
    CRect bounds(limit, limit, -limit, -limit);
    auto const clampX = [&clip](int x) { return std::clamp(x, clip.left, clip.right); };
    auto const clampY = [&clip](int y) { return std::clamp(y, clip.top, clip.bottom); };
    long long across = 0;
    long long down = 0;
    long long upright = 0;
    for (std::size_t f = 0; f < figures.Count(); ++f) {
        auto const points = figures.PointsOf(f);
        for (std::size_t i = 0; i < points.size(); ++i) {
            CPoint const p = ClampPoint(points[i]);
            bounds = { std::min(bounds.left, p.x), std::min(bounds.top, p.y), std::max(bounds.right, p.x),
                std::max(bounds.bottom, p.y) };
            if (i > 0) {
                CPoint const before = ClampPoint(points[i - 1]);
                across += std::abs(clampX(p.x) - clampX(before.x));
                down += std::abs(clampY(p.y) - clampY(before.y));
                upright += std::abs(p.y - before.y) - std::abs(p.x - before.x);
            }
        }
    }
    extent.across = static_cast<double>(across);
    extent.down = static_cast<double>(down);
    extent.isUpright = upright > 0;
    if (bounds.left > bounds.right)
        return extent;
    margin = std::min(margin, limit);
    extent.box.IntersectRect(
        { bounds.left - margin, bounds.top - margin, bounds.right + margin + 1, bounds.bottom + margin + 1 }, clip);
    return extent;
}

void DrawThinLines(RasterCanvas const& canvas, CoverageMask& mask, Figures const& figures, ThinPen const& pen)
{
    bool const oncePerPixel = pen.ink.alpha != 255 || canvas.GetRegion();
    bool const few = figures.points.size() < 16;
    if (!oncePerPixel && few) {
        // Straight onto the bitmap below.
    } else {
        FiguresExtent const extent = MeasureFigures(canvas, figures, 0);
        if (extent.box.IsRectEmpty())
            return;
        double const area = static_cast<double>(extent.box.Width()) * extent.box.Height();
        bool const upright = extent.down > extent.across;
        if (oncePerPixel || (upright && !pen.gap && extent.down > kDenseLines * area)) {
            auto const lines = upright ? CoverageMask::Lines::Columns : CoverageMask::Lines::Rows;
            if (pen.gap && !pen.dashes.IsSolid()) {
                mask.Begin(extent.box, lines);
                DrawThroughMask(mask, figures, pen, extent.box, true);
                mask.Flush(canvas, *pen.gap);
            }
            mask.Begin(extent.box, lines);
            DrawThroughMask(mask, figures, pen, extent.box, false);
            mask.Flush(canvas, pen.ink);
            return;
        }
    }
    std::optional<std::uint32_t> gap;
    if (pen.gap)
        gap = pen.gap->pixel;
    Plane<std::uint32_t> const plane { canvas.Row(0), 0, 0, 1, canvas.Stride() };
    ThinLineDrawer<std::uint32_t> const drawer(plane, canvas.Box(), pen, pen.ink.pixel, gap);
    for (std::size_t i = 0; i < figures.Count(); ++i)
        drawer.Draw(figures.PointsOf(i), [](LinePixels const&, long long, long long) {});
}

void RasterSurface::Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    if (canvas.IsEmpty() || line.style == PS_NULL)
        return;
    if (line.width > 1) {
        DrawWideLines(canvas, m_mask, points, line);
        return;
    }
    ThinPen pen;
    pen.ink = canvas.InkOf({ line.colour, 255 });
    pen.dashes = DashPattern(PenDashes(line.style), 1.0);
    if (line.gapColour)
        pen.gap = canvas.InkOf({ *line.gapColour, 255 });
    DrawThinLines(canvas, m_mask, { points, {} }, pen);
}

} // namespace ombrel
