#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/placing/OccupancySurface.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <memory>

namespace ombrel {

namespace {

CLegend::Style LegendStyleOf(C2DGraph const& graph)
{
    bool hasFills = false;
    bool hasLines = false;
    bool hasMarks = false;
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        if (plot->IsKindOf(C2DAreaPlot::kClass) || plot->IsKindOf(C2DStackedBarPlot::kClass))
            return CLegend::lsStack;
        for (CPlotComponent const* component : plot->GetComponents()) {
            std::optional<LegendEntry> const entry = component->GetLegendEntry();
            if (entry)
                (entry->isFill ? hasFills : entry->hasLine ? hasLines : hasMarks) = true;
        }
    }
    return hasLines || (hasFills && hasMarks) ? CLegend::lsLineAndSymbol
        : hasFills                            ? CLegend::lsFill
                                              : CLegend::lsSymbol;
}

/// Gives the legend a readable font, smaller when it would be higher than the room; returns its size.
CSize FitLegend(CLegend& legend, C2DGraph const& graph, int room, CDC& dc)
{
    constexpr double kSmaller = 0.92;
    constexpr double kSmallest = 0.6;
    SetReadableFont(legend, graph, dc);
    CFontData font = legend.GetFont();
    double const least = font.sizeFactor * kSmallest;
    CSize size = legend.Measure(&dc);
    while (size.cy > room && font.sizeFactor * kSmaller >= least) {
        font.sizeFactor *= kSmaller;
        legend.SetFont(font);
        size = legend.Measure(&dc);
    }
    return size;
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

void SetReadableFont(CAnnotation& box, C2DGraph const& graph, CDC& dc, AnnotationKind kind)
{
    CFontData font = box.GetFont();
    font.sizeFactor = 1.0;
    if (auto const frame = graph.GetAnnotationFrame(kind, graph.GetWindowRect())) {
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
    CSize const size = FitLegend(legend, graph, rect.Height(), dc);
    CRect const area = graph.GetAxesRect();
    int const gap = std::max(graph.GetAxes()->GetFontHeight() / 2, 2);
    bool const atLeft = place == LegendPlace::TopLeft || place == LegendPlace::BottomLeft;
    bool const atTop = place == LegendPlace::TopLeft || place == LegendPlace::TopRight;
    if (place != LegendPlace::Auto && place != LegendPlace::Ends) {
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
    CRect const smaller = graph.GetAxesRect();
    CSize const now = FitLegend(legend, graph, rect.Height(), dc);
    if (below)
        legend.Create(CPoint(smaller.left + (smaller.Width() - now.cx) / 2, rect.bottom - now.cy));
    else
        legend.Create(CPoint(rect.right - now.cx, smaller.top));
}

} // namespace ombrel
