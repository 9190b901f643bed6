#include "tools/ombrel/chart/LegendPlacement.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ombrel::host {

namespace {

bool IsGap(CRealPoint const& p) { return ombrel::IsGap(p.x) || ombrel::IsGap(p.y); }

/// Walks the curves of a graph and marks where they are drawn.
class CurveMarker {
public:
    explicit CurveMarker(C2DGraph& graph)
        : m_occupancy(graph.GetAxesRect())
        , m_range(graph.GetAxesRealRect())
        , m_crossing(graph.GetAxes()->GetIntersect())
    {
        m_perX = m_occupancy.GetArea().Width() / m_range.Width();
        m_perY = m_occupancy.GetArea().Height() / (m_range.top - m_range.bottom);
        for (CPlot* plot : graph.GetPlotArray()->GetPlots())
            AddPlot(*plot);
    }
    Occupancy TakeOccupancy() { return std::move(m_occupancy); }

private:
    void AddPlot(CPlot& plot)
    {
        if (auto* const clustered = DynamicDowncast<C2DClusteredBarPlot>(&plot))
            AddClusters(*clustered);
        else if (auto* const stacked = DynamicDowncast<C2DStackedBarPlot>(&plot))
            AddStacks(*stacked);
        else if (auto* const area = DynamicDowncast<C2DAreaPlot>(&plot))
            AddBands(*area);
        else
            AddCurves(plot);
    }
    void AddCurves(CPlot& plot)
    {
        for (CPlotComponent* component : plot.GetComponents()) {
            if (auto* const line = DynamicDowncast<C2DLine>(component))
                AddLine(*line);
            else if (auto* const bars = DynamicDowncast<C2DBarCurve>(component))
                AddBars(*bars);
            else if (auto* const errors = DynamicDowncast<C2DErrorBarCurve>(component))
                AddErrors(*errors);
            else if (auto* const texts = DynamicDowncast<C2DTextCurve>(component))
                AddTexts(*texts);
            else
                m_occupancy.AddRect(m_occupancy.GetArea());
        }
    }
    double X(double x) const { return m_occupancy.GetArea().left + (x - m_range.left) * m_perX; }
    double Y(double y) const { return m_occupancy.GetArea().top + (m_range.top - y) * m_perY; }
    void AddBox(double x, double halfWidth, double y0, double y1)
    {
        m_occupancy.AddRect(X(x - halfWidth), Y(y0), X(x + halfWidth), Y(y1));
    }
    void AddLine(C2DLine const& line)
    {
        bool const joined = line.GetPointConnectionMode() != C2DLine::cmNone;
        bool const stepped = line.GetPointConnectionMode() == C2DLine::cmStepped;
        double const base = line.GetAutoBaseline() ? m_crossing.y : line.GetBaseline();
        bool previousIsGap = true;
        CRealPoint previous;
        for (int i = 0; i < line.GetNumPoints(); ++i) {
            CRealPoint const p = line.GetAt(i);
            bool const isGap = IsGap(p);
            if (!isGap && line.GetFillOn())
                m_occupancy.AddRect(X(previousIsGap ? p.x : previous.x), Y(p.y), X(p.x), Y(base));
            if (!isGap && (previousIsGap || !joined)) {
                m_occupancy.AddPoint(X(p.x), Y(p.y));
            } else if (!isGap && stepped) {
                m_occupancy.AddRect(X(previous.x), Y(previous.y), X(p.x), Y(p.y));
            } else if (!isGap) {
                m_occupancy.AddSegment(X(previous.x), Y(previous.y), X(p.x), Y(p.y));
            }
            previous = p;
            previousIsGap = isGap;
        }
    }
    void AddBars(C2DBarCurve& bars)
    {
        double const base = bars.GetAutoBaseline() ? m_crossing.y : bars.GetBaseline();
        double const half = bars.GetBarWidth() / 2.0;
        for (int i = 0; i < bars.GetNumPoints(); ++i) {
            CRealPoint const p = bars.GetAt(i);
            if (!IsGap(p))
                AddBox(p.x, half, p.y, base);
        }
    }
    void AddErrors(C2DErrorBarCurve const& errors)
    {
        int const count = std::min(errors.GetNumPoints(), errors.GetHeights().GetSize());
        for (int i = 0; i < count; ++i) {
            CRealPoint const p = errors.GetAt(i);
            double const half = errors.GetHeights()[i] / 2.0;
            if (!IsGap(p) && std::abs(half) < kGap / 4)
                m_occupancy.AddSegment(X(p.x), Y(p.y - half), X(p.x), Y(p.y + half));
        }
    }
    /// Where a text of usual length would be.
    void AddTexts(C2DTextCurve const& texts)
    {
        constexpr double kLength = 60.0;
        for (int i = 0; i < texts.GetNumPoints(); ++i) {
            CRealPoint const p = texts.GetAt(i);
            if (!IsGap(p))
                m_occupancy.AddRect(X(p.x) - kLength, Y(p.y) - kLength / 4, X(p.x) + kLength, Y(p.y) + kLength / 4);
        }
    }
    void AddClusters(C2DClusteredBarPlot& plot)
    {
        double const half = MaxBarWidthOfSeries(plot) * plot.GetBarWidthFactor() / 2.0;
        for (CPlotComponent* component : plot.GetComponents()) {
            auto const* const curve = DynamicDowncast<C2DCurve>(component);
            for (int i = 0; curve && i < curve->GetNumPoints(); ++i) {
                CRealPoint const p = curve->GetAt(i);
                if (!IsGap(p))
                    AddBox(p.x, half, p.y, 0.0);
            }
        }
    }
    void AddStacks(C2DStackedBarPlot& plot)
    {
        auto const& curves = plot.GetComponents();
        if (curves.IsEmpty())
            return;
        auto const size = static_cast<std::size_t>(curves.GetSize());
        double const half = MaxBarWidthOfSeries(plot) * plot.GetBarWidthFactor() / 2.0;
        std::vector<double> heights(size);
        std::vector<COLORREF> colours(size);
        std::vector<int> patterns(size);
        auto const* const first = DynamicDowncast<C2DCurve>(curves.GetAt(0));
        for (int i = 0; first && i < first->GetNumPoints(); ++i) {
            double base = 0.0;
            int const pieces = plot.GetStackedBars(i, base, heights.data(), colours.data(), patterns.data());
            double top = base;
            for (int k = 0; k < pieces; ++k)
                top += heights[static_cast<std::size_t>(k)];
            AddBox(first->GetAt(i).x, half, base, top);
        }
    }
    void AddBands(C2DAreaPlot& plot)
    {
        std::vector<double> totals;
        for (CPlotComponent* component : plot.GetComponents()) {
            auto const* const curve = DynamicDowncast<C2DCurve>(component);
            int const count = curve ? curve->GetNumPoints() : 0;
            totals.resize(std::max(totals.size(), static_cast<std::size_t>(count)));
            for (int i = 0; i < count; ++i) {
                CRealPoint const p = curve->GetAt(i);
                double& total = totals[static_cast<std::size_t>(i)];
                total += IsGap(p) ? 0.0 : p.y;
                CRealPoint const before = curve->GetAt(std::max(i - 1, 0));
                double const top = plot.GetNormalised() ? m_range.top : total;
                m_occupancy.AddRect(X(before.x), Y(0.0), X(p.x), Y(top));
            }
        }
    }

    Occupancy m_occupancy;
    CRealRect m_range;
    CRealPoint m_crossing;
    /// Pixels a unit.
    double m_perX = 0.0;
    double m_perY = 0.0;
};

CLegend::Style LegendStyleOf(C2DGraph const& graph)
{
    CLegend::Style style = CLegend::lsSymbol;
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        for (CPlotComponent const* component : plot->GetComponents()) {
            bool const isText
                = component->IsKindOf(C2DErrorBarCurve::kClass) || component->IsKindOf(C2DTextCurve::kClass);
            auto const* const line = DynamicDowncast<C2DLine>(component);
            if ((!line && !isText) || component->IsKindOf(C2DAreaCurve::kClass))
                return CLegend::lsFill;
            if (line && line->GetPointConnectionMode() != C2DLine::cmNone)
                style = CLegend::lsLine;
        }
    }
    return style;
}

/// Leaves room in the graph rectangle for a legend that is too large for the plotting area.
CRect RectBesideLegend(CRect const& graph, CSize size, int gap, bool below)
{
    CRect rect = graph;
    if (below)
        rect.bottom = std::max(rect.top + 1, rect.bottom - size.cy - gap);
    else
        rect.right = std::max(rect.left + 1, rect.right - size.cx - gap);
    return rect;
}

} // namespace

Occupancy OccupancyOf(C2DGraph& graph) { return CurveMarker(graph).TakeOccupancy(); }

void SetReadableFont(CAnnotation& box, C2DGraph const& graph, CDC& dc)
{
    CFontData font = box.GetFont();
    font.sizeFactor = 1.0;
    if (auto const frame = graph.GetAnnotationFrame(AnnotationKind::Caption, graph.GetWindowRect())) {
        int const usual = GetAnnotationTextHeight(dc, *frame).pixels;
        font.sizeFactor = std::max(1.0, graph.GetAxes()->GetFontHeight() / static_cast<double>(usual));
    }
    box.SetFont(font);
}

void PlaceLegend(
    C2DGraph& graph, LegendPlace place, CRect const& rect, CDC& dc, std::function<void(CRect const&)> const& layOut)
{
    if (place == LegendPlace::Off)
        return;
    CLegend& legend = *graph.GetLegend();
    legend.SetStyle(LegendStyleOf(graph));
    SetReadableFont(legend, graph, dc);
    CSize const size = legend.Measure(&dc);
    CRect const area = graph.GetAxesRect();
    int const gap = std::max(graph.GetAxes()->GetFontHeight() / 2, 2);
    bool const atLeft = place == LegendPlace::TopLeft || place == LegendPlace::BottomLeft;
    bool const atTop = place == LegendPlace::TopLeft || place == LegendPlace::TopRight;
    if (place != LegendPlace::Auto) {
        legend.Create(CPoint(atLeft ? area.left + gap : area.right - gap - size.cx,
            atTop ? area.top + gap : area.bottom - gap - size.cy));
        return;
    }
    bool const isPolar = graph.GetPolarGrid()->IsOn();
    if (!isPolar) {
        if (auto const free = FindFreePlace(OccupancyOf(graph), size, gap)) {
            legend.Create(*free);
            return;
        }
    }
    bool const below = rect.Width() - size.cx - gap < rect.Height() * 3 / 4;
    layOut(RectBesideLegend(rect, size, gap, below));
    SetReadableFont(legend, graph, dc);
    CRect const smaller = graph.GetAxesRect();
    CSize const now = legend.Measure(&dc);
    if (below)
        legend.Create(CPoint(smaller.left + (smaller.Width() - now.cx) / 2, rect.bottom - now.cy));
    else
        legend.Create(CPoint(rect.right - now.cx, smaller.top));
}

} // namespace ombrel::host
