#include "ombrel/layout/FillLook.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/model/LineWidth.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace ombrel {

namespace {

/// In widths of an outline: how wide bars are at least, how thick bands are where they are thickest, and how far apart
/// the rows of bands lie. Below, outlines would take up too much of what they are round.
constexpr double kLeastBar = 6.0;
constexpr double kLeastBand = 3.0;
constexpr double kLeastDistance = 6.0;

/// The sizes of a graph that was laid out, in device pixels.
struct Scale {
    Scale(C2DGraph& graph, CDC& dc)
        : area(graph.GetAxesRect())
        , range(graph.GetAxesRealRect())
        , perX(area.Width() / std::abs(range.Width()))
        , perY(area.Height() / std::abs(range.top - range.bottom))
        , outline(DeviceLineWidth(dc, 1))
        , crossing(graph.GetAxes()->GetIntersect().y)
        , ground(static_cast<COLORREF>(graph.GetBkndColour()))
    {
    }
    bool IsShown(double x) const
    {
        return !IsGap(x) && x >= std::min(range.left, range.right) && x <= std::max(range.left, range.right);
    }
    /// Whether outlines at its top and bottom leave nothing of a bar.
    bool IsFlat(double height) const { return height != 0.0 && std::abs(height) * perY < 2.0 * outline; }

    CRect area;
    CRealRect range;
    /// Pixels a unit.
    double perX;
    double perY;
    double outline;
    /// Where the axes cross.
    double crossing;
    /// The colour behind the curves.
    COLORREF ground;
};

bool HasFlatBars(C2DCurve const& curve, double base, Scale const& scale)
{
    for (int i = 0; i < curve.GetNumPoints(); ++i) {
        CRealPoint const p = curve.GetAt(i);
        if (scale.IsShown(p.x) && !IsGap(p.y) && scale.IsFlat(p.y - base))
            return true;
    }
    return false;
}

bool HasFlatBars(C2DClusteredBarPlot& plot, Scale const& scale)
{
    return std::any_of(plot.GetComponents().begin(), plot.GetComponents().end(),
        [&scale](CPlotComponent* component) { return HasFlatBars(static_cast<C2DCurve&>(*component), 0.0, scale); });
}

bool HasFlatBars(C2DStackedBarPlot& plot, Scale const& scale)
{
    auto const size = static_cast<std::size_t>(plot.GetNumComponents());
    std::vector<double> heights(size);
    std::vector<COLORREF> colours(size);
    std::vector<int> patterns(size);
    auto const& first = static_cast<C2DCurve const&>(*plot.GetComponents()[0]);
    for (int i = 0; i < first.GetNumPoints(); ++i) {
        double base = 0.0;
        int const pieces = plot.GetStackedBars(i, base, heights.data(), colours.data(), patterns.data());
        bool const isFlat = std::any_of(
            heights.begin(), heights.begin() + pieces, [&scale](double height) { return scale.IsFlat(height); });
        if (isFlat && scale.IsShown(first.GetAt(i).x))
            return true;
    }
    return false;
}

/// place is that of a bar or group, in units.
template <typename Bars> void Settle(Bars& bars, double place, int sideBySide, bool hasFlatBars, Scale const& scale)
{
    // Only an outline that cannot be seen itself makes a flat bar vanish.
    bool const vanish = hasFlatBars && bars.GetBorderColour() == scale.ground;
    BarLook const look = ChooseBarLook(place * scale.perX, bars.GetBarWidthFactor(), sideBySide, scale.outline, vanish);
    bars.SetBarWidthFactor(look.widthFactor);
    if (look.ownOutlines)
        bars.SetBorderColour(kOwnColour);
}

/// Warns of bars of several colours that share pixels; width is that of a bar's place, in units.
void WarnOfCoveredBars(C2DSeriesPlot const& plot, double width, Scale const& scale, ChartNotes& notes)
{
    if (width * scale.perX >= 1.0)
        return;
    auto const rows = static_cast<std::size_t>(plot.GetNumActualPoints());
    notes.AddWarning(Counted(rows, "row of bars is", "rows of bars are")
        + " too narrow to be told apart: they cover each other; a wider picture, fewer rows or bands would show "
          "more");
}

/// A band's share of a column of a normalised plot, and what it is without that.
double Thickness(C2DAreaPlot const& plot, C2DCurve const& curve, int i)
{
    auto const valueOf = [i](C2DCurve const& c) {
        double const y = i < c.GetNumPoints() ? c.GetAt(i).y : 0.0;
        return IsGap(y) ? 0.0 : std::abs(y);
    };
    double whole = plot.GetNormalised() ? 0.0 : 1.0;
    for (CPlotComponent const* other : plot.GetComponents())
        whole += plot.GetNormalised() ? valueOf(static_cast<C2DCurve const&>(*other)) : 0.0;
    return whole > 0.0 ? valueOf(curve) / whole : 0.0;
}

bool OutlinesHide(C2DAreaPlot const& plot, Scale const& scale)
{
    for (CPlotComponent const* component : plot.GetComponents()) {
        auto const& curve = static_cast<C2DCurve const&>(*component);
        int distances = -1;
        double thickest = 0.0;
        for (int i = 0; i < curve.GetNumPoints(); ++i) {
            if (!scale.IsShown(curve.GetAt(i).x))
                continue;
            if (scale.area.Width() < kLeastDistance * scale.outline * ++distances)
                return true;
            thickest = std::max(thickest, Thickness(plot, curve, i) * scale.perY);
        }
        if (thickest > 0.0 && thickest < kLeastBand * scale.outline)
            return true;
    }
    return false;
}

/// The tags of all that covers what was drawn before over whole areas.
std::vector<DWORD> TagsOfFills(C2DGraph const& graph)
{
    std::vector<DWORD> tags;
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        if (plot->IsKindOf(C2DClusteredBarPlot::kClass) || plot->IsKindOf(C2DStackedBarPlot::kClass)
            || plot->IsKindOf(C2DAreaPlot::kClass))
            tags.push_back(static_cast<DWORD>(plot->GetTag()));
        for (CPlotComponent const* curve : plot->GetComponents()) {
            auto const* const line = DynamicDowncast<C2DLine>(curve);
            if (curve->IsKindOf(C2DBarCurve::kClass) || (line && line->GetFillOn()))
                tags.push_back(static_cast<DWORD>(curve->GetTag()));
        }
    }
    return tags;
}

} // namespace

BarLook ChooseBarLook(double place, double factor, int sideBySide, double outline, bool hasFlatBars)
{
    bool const isNarrow = place * factor / sideBySide < kLeastBar * outline;
    if (!isNarrow && !hasFlatBars)
        return { factor, false };
    // Gaps of a pixel or two would be there between some bars and not between others.
    bool const hasGap = place * (1.0 - factor) >= 2.0 * outline;
    if (isNarrow && !hasGap)
        return { 1.0, true };
    // An outline of its own makes a bar wider; what touches is kept apart by a gap like an outline.
    double const less = (hasGap ? 1.0 : 2.0) * outline / place;
    return { factor - less, true };
}

void SettleOutlines(C2DGraph& graph, CDC& dc, ChartNotes& notes)
{
    Scale const scale(graph, dc);
    for (CPlot* plot : graph.GetPlotArray()->GetPlots()) {
        if (auto* const clustered = DynamicDowncast<C2DClusteredBarPlot>(plot)) {
            double const place = MaxBarWidthOfSeries(*clustered);
            int const bars = clustered->GetNumComponents();
            Settle(*clustered, place, bars, HasFlatBars(*clustered, scale), scale);
            WarnOfCoveredBars(*clustered, place / bars, scale, notes);
        } else if (auto* const stacked = DynamicDowncast<C2DStackedBarPlot>(plot)) {
            double const place = MaxBarWidthOfSeries(*stacked);
            Settle(*stacked, place, 1, HasFlatBars(*stacked, scale), scale);
            WarnOfCoveredBars(*stacked, place, scale, notes);
        } else if (auto* const area = DynamicDowncast<C2DAreaPlot>(plot)) {
            if (OutlinesHide(*area, scale))
                area->SetBorderColour(kOwnColour);
        } else {
            for (CPlotComponent* component : plot->GetComponents()) {
                auto* const bars = DynamicDowncast<C2DBarCurve>(component);
                if (!bars)
                    continue;
                double const base = bars->GetAutoBaseline() ? scale.crossing : bars->GetBaseline();
                Settle(*bars, bars->ComputeMaxBarWidth(), 1, HasFlatBars(*bars, base, scale), scale);
            }
        }
    }
}

void PutAxesOverFills(C2DGraph& graph)
{
    std::vector<DWORD> const fills = TagsOfFills(graph);
    if (fills.empty() || graph.GetPolarGrid()->IsOn())
        return;
    auto const axes = static_cast<DWORD>(graph.GetAxes()->GetTag());
    auto const isFill = [&fills](DWORD tag) { return std::find(fills.begin(), fills.end(), tag) != fills.end(); };
    CDWordArray tags;
    graph.GetDefaultDrawOrderTags(tags);
    std::vector<DWORD> order;
    std::copy_if(tags.begin(), tags.end(), std::back_inserter(order), [axes](DWORD tag) { return tag != axes; });
    order.insert(std::find_if(order.rbegin(), order.rend(), isFill).base(), axes);
    tags.RemoveAll();
    for (DWORD const tag : order)
        tags.Add(tag);
    graph.SetDrawOrderTags(tags);
}

} // namespace ombrel
