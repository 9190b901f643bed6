#include "ombrel/layout/EndLabels.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

struct EndLabel {
    C2DLine const* line = nullptr;
    /// The graph's.
    CCaption* caption = nullptr;
    CPoint end {};
};

/// The lines that have names; nothing when other curves have, too.
std::vector<EndLabel> NamedLines(C2DGraph const& graph)
{
    std::vector<EndLabel> labels;
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        for (CPlotComponent const* component : plot->GetComponents()) {
            auto const* const line = DynamicDowncast<C2DLine>(component);
            bool const isLine = line && !component->IsKindOf(C2DAreaCurve::kClass)
                && line->GetPointConnectionMode() != C2DLine::cmNone;
            if (component->GetTitle().IsEmpty() || component->IsKindOf(C2DErrorBarCurve::kClass))
                continue;
            if (!isLine)
                return {};
            labels.push_back({ line });
        }
    }
    return labels;
}

/// The last point that has both values, the first one where the axis runs backwards; false without any.
bool FindEnd(C2DLine const& line, bool backwards, CRealPoint& end)
{
    int const count = line.GetNumPoints();
    for (int i = 0; i < count; ++i) {
        end = line.GetAt(backwards ? i : count - 1 - i);
        if (!IsGap(end.x) && !IsGap(end.y))
            return true;
    }
    return false;
}

/// The colour, nearer to that of texts until it can be read on the ground.
COLORREF ReadableColour(COLORREF colour, Look const& look)
{
    constexpr double kReadable = 3.0;
    constexpr int kSteps = 4;
    for (int i = 0; i < kSteps && ContrastOf(colour, look.window) < kReadable; ++i) {
        auto const mixed = [](int a, int b) { return (2 * a + b) / 3; };
        colour = RGB(mixed(GetRValue(colour), GetRValue(look.text)), mixed(GetGValue(colour), GetGValue(look.text)),
            mixed(GetBValue(colour), GetBValue(look.text)));
    }
    return colour;
}

/// Adds the captions, and gives back the largest of their sizes.
CSize AddCaptions(C2DGraph& graph, std::vector<EndLabel>& labels, Look const& look, CDC& dc)
{
    CSize largest(0, 0);
    for (EndLabel& label : labels) {
        label.caption = graph.AddCaption(CPoint());
        ApplyLook(*label.caption, look);
        label.caption->SetText(label.line->GetTitle());
        label.caption->SetBoundingRectOn(0);
        label.caption->SetTransparentBkgnd(1);
        label.caption->SetTextColour(ReadableColour(static_cast<COLORREF>(label.line->GetColour()), look));
        SetReadableFont(*label.caption, graph, dc);
        CSize const size = label.caption->Measure(&dc);
        largest = { std::max(largest.cx, size.cx), std::max(largest.cy, size.cy) };
    }
    return largest;
}

void RemoveCaptions(C2DGraph& graph, std::size_t count)
{
    CCaptionArray& captions = *graph.GetCaptionArray();
    for (; count > 0; --count)
        captions.RemoveAt(captions.GetSize() - 1);
}

/// Where the lines end, topmost first; false when one ends far from the right of the plotting area.
bool FindEnds(C2DGraph const& graph, std::vector<EndLabel>& labels)
{
    constexpr int kNear = 20;
    CRect const area = graph.GetAxesRect();
    bool const backwards = graph.GetAxes()->GetRange(CAxes::atX) < 0.0;
    for (EndLabel& label : labels) {
        CRealPoint end;
        if (!FindEnd(*label.line, backwards, end))
            return false;
        label.end = graph.UnitsToWindow(end);
        bool const isNear = label.end.x >= area.right - area.Width() / kNear && label.end.x <= area.right
            && label.end.y >= area.top && label.end.y <= area.bottom;
        if (!isNear)
            return false;
    }
    std::stable_sort(
        labels.begin(), labels.end(), [](EndLabel const& a, EndLabel const& b) { return a.end.y < b.end.y; });
    return true;
}

/// Puts the captions beside the ends; false when one would be more than a line away.
bool PlaceBeside(C2DGraph const& graph, std::vector<EndLabel> const& labels, double height, int gap)
{
    CRect const area = graph.GetAxesRect();
    std::vector<double> wanted;
    wanted.reserve(labels.size());
    for (EndLabel const& label : labels)
        wanted.push_back(static_cast<double>(label.end.y) - height / 2);
    std::vector<double> const tops
        = SpreadTops(wanted, height, static_cast<double>(area.top) - height / 2, static_cast<double>(area.bottom));
    if (tops.empty())
        return false;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (std::abs(tops[i] - wanted[i]) > height)
            return false;
        labels[i].caption->Create(CRealPoint((area.Width() + gap) / static_cast<double>(area.Width()),
            (tops[i] - area.top) / std::max<LONG>(area.Height(), 1)));
    }
    return true;
}

} // namespace

std::vector<double> SpreadTops(std::vector<double> const& wanted, double height, double first, double last)
{
    if (static_cast<double>(wanted.size()) * height > last - first)
        return {};
    struct Pool {
        double sum = 0.0;
        std::size_t count = 0;
        double Mean() const { return sum / static_cast<double>(count); }
    };
    std::vector<Pool> pools;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        pools.push_back({ wanted[i] - static_cast<double>(i) * height, 1 });
        while (pools.size() > 1 && pools[pools.size() - 2].Mean() > pools.back().Mean()) {
            Pool const lower = pools.back();
            pools.pop_back();
            pools.back().sum += lower.sum;
            pools.back().count += lower.count;
        }
    }
    double const lastPool = last - static_cast<double>(wanted.size()) * height;
    std::vector<double> tops;
    for (Pool const& pool : pools) {
        for (std::size_t i = 0; i < pool.count; ++i)
            tops.push_back(std::clamp(pool.Mean(), first, lastPool) + static_cast<double>(tops.size()) * height);
    }
    return tops;
}

bool PlaceEndLabels(
    C2DGraph& graph, CRect const& rect, CDC& dc, Look const& look, std::function<void(CRect const&)> const& layOut)
{
    std::vector<EndLabel> labels = NamedLines(graph);
    if (labels.empty() || graph.GetPolarGrid()->IsOn())
        return false;
    CSize const size = AddCaptions(graph, labels, look, dc);
    int const gap = std::max(graph.GetAxes()->GetFontHeight() / 4, 2);
    bool const hasRoom = size.cx + gap < rect.Width() / 3;
    if (hasRoom)
        layOut(CRect(rect.left, rect.top, rect.right - size.cx - gap, rect.bottom));
    // Names lie close to each other without touching.
    constexpr double kLineHeight = 0.9;
    if (hasRoom && FindEnds(graph, labels)
        && PlaceBeside(graph, labels, kLineHeight * static_cast<double>(size.cy), gap))
        return true;
    RemoveCaptions(graph, labels.size());
    if (hasRoom)
        layOut(rect);
    return false;
}

} // namespace ombrel
