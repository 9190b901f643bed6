#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/graph2d/paths/PolygonPath.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ombrel {
namespace {

void FillPolygon(CPort& port, VectorBrush const& brush, PolygonPath const& polygon)
{
    CDC& dc = *port.GetDC();
    SavedDC const saved(dc);
    VectorGraphics graphics(dc);
    CRect clip;
    if (port.GetClipRect(clip))
        graphics.SetClipRect({ clip.left, clip.top, clip.right + 1, clip.bottom + 1 });
    graphics.FillPolygon(brush, polygon.Points());
}

/// Over an all but transparent background.
VectorBrush MakeFillBrush(int pattern, COLORREF colour) { return MakePatternBrush(pattern, colour, { 0, 1 }); }

/// A curve's stored points and how they reach the device.
struct ShadedPoints {
    StoredPoints stored;
    PointMapping map;
    bool xAscends;

    ShadedPoints(C2DCurve const& curve, PortMapping const& port)
        : stored { nullptr, nullptr, 0, &curve.GetSummary() }
        , map { port, curve.IsXLogarithmic(), curve.IsYLogarithmic() }
        , xAscends(stored.summary->XAscends())
    {
        CTableData const& table = curve.GetPoints();
        if (!table.HasData() || table.GetNumRows() < 2)
            return;
        stored.xs = table.GetRow(0);
        stored.ys = table.GetRow(1);
        stored.count = static_cast<std::size_t>(table.GetNumCols());
    }
    /// As drawn, of points that are no gaps.
    double X(std::size_t i) const
    {
        double x = stored.xs[i];
        if (map.xLogarithmic)
            C2DCurve::LogClamp(x);
        return x;
    }
    double Y(std::size_t i) const
    {
        double y = stored.ys[i];
        if (map.yLogarithmic)
            C2DCurve::LogClamp(y);
        return y;
    }
    bool IsGapAt(std::size_t i) const { return IsGap(stored.xs[i]) || IsGap(stored.ys[i]); }
};

/// A stretch of a curve without gaps: points first … last, last included.
struct GapFreeRun {
    ShadedPoints const& points;
    std::size_t first;
    std::size_t last;

    Extremes XRange() const
    {
        if (points.xAscends)
            return { points.X(first), points.X(last) };
        Extremes e { points.X(first), points.X(first) };
        for (std::size_t i = first + 1; i <= last; ++i)
            e = { std::min(e.min, points.X(i)), std::max(e.max, points.X(i)) };
        return e;
    }
    /// The first point from the given one on whose x is not below x, or last + 1.
    std::size_t Find(std::size_t from, double x) const
    {
        if (!points.xAscends) {
            while (from <= last && points.X(from) < x)
                ++from;
            return from;
        }
        std::size_t high = last + 1;
        while (from < high) {
            std::size_t const middle = from + (high - from) / 2;
            if (points.X(middle) < x)
                from = middle + 1;
            else
                high = middle;
        }
        return from;
    }
    double YAt(double x) const
    {
        std::size_t const i = Find(first, x);
        if (i == first || i > last)
            return points.Y(i == first ? first : last);
        double const x0 = points.X(i - 1);
        double const x1 = points.X(i);
        double const y0 = points.Y(i - 1);
        return x0 == x1 ? y0 : y0 + (points.Y(i) - y0) * (x - x0) / (x1 - x0);
    }
    /// The first of the points before end, from the given one on, such that it and those after it lie right of x.
    std::size_t FirstRightOf(double x, std::size_t from, std::size_t end) const
    {
        if (!points.xAscends) {
            while (end > from && points.X(end - 1) > x)
                --end;
            return end;
        }
        return std::min(Find(from, std::nextafter(x, std::numeric_limits<double>::infinity())), end);
    }
};

std::vector<GapFreeRun> SplitAtGaps(ShadedPoints const& points)
{
    StoredPoints const& p = points.stored;
    Extremes y {};
    // Where x ascends no x is missing.
    if (p.count > 0 && points.xAscends && p.summary->YExtremes(p.ys, 0, p.count, y))
        return { { points, 0, p.count - 1 } };
    std::vector<GapFreeRun> runs;
    for (std::size_t i = 0; i < p.count; ++i) {
        if (points.IsGapAt(i))
            continue;
        std::size_t const first = i;
        while (i + 1 < p.count && !points.IsGapAt(i + 1))
            ++i;
        runs.push_back({ points, first, i });
    }
    return runs;
}

/// Of the points first ≤ i < last, which are no gaps, the first and the last of each pixel column that they fall into
/// one after the other: all that a polygon needs of them.
std::vector<std::size_t> ColumnEnds(ShadedPoints const& points, std::size_t first, std::size_t last)
{
    std::vector<std::size_t> ends;
    for (std::size_t next = first; first < last; first = next) {
        int const column = points.map.X(points.stored.xs[first]);
        if (points.xAscends) {
            next = PastColumn(points.stored, points.map, first, last, column);
        } else {
            for (next = first + 1; next < last && points.map.X(points.stored.xs[next]) == column;)
                ++next;
        }
        ends.push_back(first);
        if (next - first > 1)
            ends.push_back(next - 1);
    }
    return ends;
}

double ClampToSide(double y, double baseline, C2DLine::BaselineShadeMode mode)
{
    if (mode == C2DLine::bsAbove)
        return std::max(y, baseline);
    if (mode == C2DLine::bsBelow)
        return std::min(y, baseline);
    return y;
}

} // namespace

void C2DLine::DrawShading(CPort& port)
{
    if (m_shadeMode != shBaseline)
        DrawClosedShading(port);
    else if (CAxes* const axes = GetAxes())
        DrawBaselineShading(port, *axes);
}

void C2DLine::DrawClosedShading(CPort& port)
{
    ShadedPoints const points(*this, port.GetMapping());
    PolygonPath polygon;
    for (GapFreeRun const& run : SplitAtGaps(points)) {
        for (std::size_t const i : ColumnEnds(points, run.first, run.last + 1))
            polygon.Add({ points.map.X(points.stored.xs[i]), points.map.Y(points.stored.ys[i]) });
    }
    FillPolygon(port, MakeFillBrush(m_fillPattern, m_fillColour), polygon);
}

void C2DLine::DrawBaselineShading(CPort& port, CAxes& axes)
{
    if (GetNumPoints() < 2)
        return;
    double const baseline = m_autoBaseline ? axes.GetIntersect().y : m_baseline;
    double axisMin = 0.0;
    double axisMax = 0.0;
    axes.GetRange(CAxes::atX, axes.GetAxis(CAxes::atX).rangeMode, axisMin, axisMax);
    if (axisMin > axisMax)
        std::swap(axisMin, axisMax);
    PortMapping const map = port.GetMapping();
    ShadedPoints const points(*this, map);
    for (GapFreeRun const& run : SplitAtGaps(points)) {
        Extremes const range = run.XRange();
        double low = std::max(axisMin, range.min);
        double high = std::min(axisMax, range.max);
        if (m_useFillRange) {
            low = std::max(low, m_fillMin);
            high = std::min(high, m_fillMax);
        }
        std::size_t const first = run.Find(run.first, low);
        if (first >= run.last)
            continue;
        auto const clamped = [&](double y) { return ClampToSide(y, baseline, m_baselineShadeMode); };
        CRealPoint const lowEnd(low, clamped(run.YAt(low)));
        CRealPoint const highEnd(high, clamped(run.YAt(high)));
        PolygonPath polygon;
        auto const add = [&](CRealPoint const& p) { polygon.Add({ map.X(p.x), map.Y(p.y) }); };
        add({ low, baseline });
        add({ high, baseline });
        add(highEnd);
        // The last point belongs to the outline when it lies inside, the first one of a run never does: its place is
        // the low end's.
        std::size_t end = std::min(run.Find(first, high), run.last);
        if (points.X(end) < high)
            ++end;
        std::size_t const begin = run.FirstRightOf(low, std::max(first, run.first + 1), end);
        std::vector<std::size_t> const ends = ColumnEnds(points, begin, end);
        for (auto i = ends.rbegin(); i != ends.rend(); ++i)
            add({ points.X(*i), clamped(points.Y(*i)) });
        add(lowEnd);
        if (m_fillBoundaryOn)
            DrawShadingEnds(port, lowEnd, highEnd, baseline);
        FillPolygon(port, MakeFillBrush(m_fillPattern, m_fillColour), polygon);
    }
}

void C2DLine::DrawShadingEnds(CPort& port, CRealPoint const& lowEnd, CRealPoint const& highEnd, double baseline)
{
    CDC& dc = *port.GetDC();
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, DeviceLineWidth(dc, 1, ThicknessKind::Border), m_borderColour);
    dc.SelectObject(&pen);
    port.MoveTo({ lowEnd.x, baseline });
    port.LineTo(lowEnd);
    port.MoveTo(highEnd);
    port.LineTo({ highEnd.x, baseline });
}

} // namespace ombrel
