#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <algorithm>

namespace ombrel {
namespace {

/// Device corners of a polygon. Of those that follow each other in one pixel column only the first and the last are
/// kept: an upright edge bounds no pixel that its ends do not.
class PolygonPath {
public:
    void Add(CPoint p)
    {
        std::size_t const n = m_points.size();
        if (n >= 2 && m_points[n - 1].x == p.x && m_points[n - 2].x == p.x)
            m_points.pop_back();
        m_points.push_back(p);
    }
    std::vector<CPoint> const& Points() const { return m_points; }

private:
    std::vector<CPoint> m_points;
};

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

/// A stretch of a curve without gaps: points first … last, last included.
struct GapFreeRun {
    C2DCurve const& curve;
    int first;
    int last;

    double X(int i) const { return curve.GetAt(i).x; }
    Extremes XRange() const
    {
        PointSummary const& summary = curve.GetSummary();
        if (summary.XAscends())
            return { X(first), X(last) };
        Extremes e { X(first), X(first) };
        for (int i = first + 1; i <= last; ++i)
            e = { std::min(e.min, X(i)), std::max(e.max, X(i)) };
        return e;
    }
    /// The first point whose x is not below x, or last + 1.
    int Find(double x) const
    {
        if (!curve.GetSummary().XAscends()) {
            int i = first;
            while (i <= last && X(i) < x)
                ++i;
            return i;
        }
        int low = first;
        int high = last + 1;
        while (low < high) {
            int const middle = low + (high - low) / 2;
            if (X(middle) < x)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    }
    double YAt(double x) const
    {
        int const i = Find(x);
        if (i == first)
            return curve.GetAt(first).y;
        if (i > last)
            return curve.GetAt(last).y;
        CRealPoint const p0 = curve.GetAt(i - 1);
        CRealPoint const p1 = curve.GetAt(i);
        return p0.x == p1.x ? p0.y : p0.y + (p1.y - p0.y) * (x - p0.x) / (p1.x - p0.x);
    }
};

std::vector<GapFreeRun> SplitAtGaps(C2DCurve const& curve)
{
    std::vector<GapFreeRun> runs;
    int first = -1;
    for (int i = 0, n = curve.GetNumPoints(); i <= n; ++i) {
        bool const gap = i == n || IsGap(curve.GetAt(i).x) || IsGap(curve.GetAt(i).y);
        if (!gap && first < 0)
            first = i;
        if (gap && first >= 0) {
            runs.push_back({ curve, first, i - 1 });
            first = -1;
        }
    }
    return runs;
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
    PortMapping const map = port.GetMapping();
    PolygonPath polygon;
    for (int i = 0, n = GetNumPoints(); i < n; ++i) {
        CRealPoint const p = GetAt(i);
        if (!IsGap(p.x) && !IsGap(p.y))
            polygon.Add({ map.X(p.x), map.Y(p.y) });
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
    axes.GetRange(CAxes::atX, axes.GetXAxisRangeMode(), axisMin, axisMax);
    PortMapping const map = port.GetMapping();
    for (GapFreeRun const& run : SplitAtGaps(*this)) {
        Extremes const range = run.XRange();
        double low = std::max(axisMin, range.min);
        double high = std::min(axisMax, range.max);
        if (m_useFillRange) {
            low = std::max(low, m_fillMin);
            high = std::min(high, m_fillMax);
        }
        int const first = run.Find(low);
        if (first >= run.last)
            continue;
        auto const clamped = [&](double y) { return ClampToSide(y, baseline, m_baselineShadeMode); };
        CRealPoint const lowEnd(low, clamped(run.YAt(low)));
        CRealPoint const highEnd(high, clamped(run.YAt(high)));
        PolygonPath polygon;
        auto const add = [&](CRealPoint const& p) { polygon.Add({ map.X(p.x), map.Y(p.y) }); };
        add({ low, baseline });
        int end = first;
        while (end < run.last && run.X(end) < high)
            ++end;
        add({ high, baseline });
        add(highEnd);
        for (int i = end - (run.X(end) < high ? 0 : 1); i >= first && i > run.first && run.X(i) > low; --i)
            add({ run.X(i), clamped(GetAt(i).y) });
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
