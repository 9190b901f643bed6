#include "tools/ombrel/PlotAxes.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/DC.h"
#include "tools/ombrel/Output.h"

#include <algorithm>
#include <cmath>

namespace ombrel::host {

namespace {

/// Ends of an x axis move to the next notch when that is near, so that curves use the width there is.
constexpr double kNear = 0.05;

AxisRange RangeOf(AxisWish const& wish)
{
    AxisRange range = wish.data;
    if (range.min > range.max)
        range = { 0.0, 1.0 };
    if (wish.min)
        range.min = *wish.min;
    if (wish.max)
        range.max = *wish.max;
    // One end given, and all data beyond it: the other end follows.
    if (range.min > range.max)
        (wish.min ? range.max : range.min) = wish.min ? range.min : range.max;
    if (wish.dates && range.min == range.max)
        return { range.min - 0.5, range.max + 0.5 };
    return WidenEmptyRange(range);
}

RangeFreedom FreedomOf(AxisWish const& wish, double reach)
{
    return { wish.min.has_value(), wish.max.has_value(), reach };
}

/// The sizes that labels have in the picture.
class LabelMeasure {
public:
    LabelMeasure(C2DGraph& graph, CDC& dc)
        : m_dc(dc)
        , m_saved(dc)
        , m_height(graph.GetAxes()->GetFontHeight())
    {
        CVUtils::ConfigureFont(&m_font, *graph.GetAxes()->GetLabelsFont(), m_height, 0);
        m_dc.SelectObject(&m_font);
    }
    int Height() const { return m_height; }
    int Width(std::string const& text) const { return m_dc.GetTextExtent(CString(text)).cx; }

private:
    CDC& m_dc;
    SavedDC m_saved;
    CFont m_font;
    int m_height;
};

void SetNumberAxis(CAxes& axes, CAxes::AxisType type, NumberTicks const& ticks)
{
    axes.SetRange(type, ticks.range.min, ticks.range.max);
    if (type == CAxes::atX) {
        axes.SetXAxisRangeMode(CAxes::rmFixed);
        axes.SetXTickMode(CAxes::tmStep);
        axes.SetXTickMin(ticks.first);
        axes.SetXTickDel(ticks.step);
        axes.SetNumXMinorTicks(ticks.minor);
        axes.SetXFormatType(ticks.format);
        axes.SetXLabelPrecision(ticks.precision);
    } else {
        axes.SetYAxisRangeMode(CAxes::rmFixed);
        axes.SetYTickMode(CAxes::tmStep);
        axes.SetYTickMin(ticks.first);
        axes.SetYTickDel(ticks.step);
        axes.SetNumYMinorTicks(ticks.minor);
        axes.SetYFormatType(ticks.format);
        axes.SetYLabelPrecision(ticks.precision);
    }
}

void SetDateAxis(CAxes& axes, DateTicks const& ticks)
{
    axes.SetXAxisRange(ticks.range.min, ticks.range.max);
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetXTimeUnitsOn(1);
    axes.SetXTickMode(CAxes::tmStep);
    axes.SetAlignRefDate(0);
    axes.SetXTickMinTime(ticks.first);
    axes.SetXDelTime(ticks.step);
    axes.SetXDelTimeUnit(ticks.unit);
    axes.SetXDelTimeMinor(ticks.minorStep);
    axes.SetXDelTimeUnitMinor(ticks.minorUnit);
    axes.SetXLabelDateFormat(CString(ticks.format));
    axes.SetXLabelTimeFormat("");
    // Minor notches have no labels, but the room for them would be kept.
    axes.SetXMinorLabelDateFormat("");
    axes.SetXMinorLabelTimeFormat("");
}

/// Gives the graph the whole picture but for a margin, and room for its title.
void PlaceGraph(C2DGraph& graph, CRect const& rect, int margin)
{
    bool const hasTitle = graph.GetTitle() != CString(kUntitled) && !graph.GetTitle().IsEmpty();
    CRect const place(
        rect.left + margin, rect.top + (hasTitle ? margin * 5 / 2 : margin), rect.right - margin, rect.bottom - margin);
    graph.SetGraphAndWindowRect(place, rect);
}

/// Draws what there is of the graph onto a picture that is thrown away, for its sizes.
void MeasureGraph(C2DGraph& graph, Picture& scratch) { graph.Draw(&scratch.GetDC(), scratch.GetRect(), pmDirect); }

/// With labels that leave out what they have in common, that goes into the title.
std::string TitleWithCommon(std::string const& title, DateTicks const& ticks)
{
    if (ticks.common.empty())
        return title;
    std::string const common = COleDateTime(ticks.range.min).Format(CString(ticks.common)).ToUtf8();
    std::string const last = COleDateTime(ticks.range.max).Format(CString(ticks.common)).ToUtf8();
    std::string const text = common == last ? common : common + " – " + last;
    return title.empty() ? text : title + " (" + text + ")";
}

void LayOutX(CAxes& axes, AxisWish const& x, int length, LabelMeasure const& measure)
{
    auto const width = [&measure](std::string const& text) { return measure.Width(text); };
    RangeFreedom const freedom = FreedomOf(x, kNear);
    if (x.dates) {
        DateTicks const ticks = FitDateTicks(RangeOf(x), freedom, length, width);
        SetDateAxis(axes, ticks);
        axes.SetXAxisTitle(CString(TitleWithCommon(x.title, ticks)));
    } else if (!x.logarithmic) {
        double const smallestStep = x.counts ? 1.0 : 0.0;
        SetNumberAxis(axes, CAxes::atX, FitNumberTicks(RangeOf(x), freedom, smallestStep, length, width));
    }
}

void LayOutY(CAxes& axes, AxisWish const& y, int length, int fontHeight)
{
    constexpr int kMostSteps = 8;
    if (y.logarithmic)
        return;
    // Labels need twice their height to be told apart easily.
    int const steps = std::clamp(length / (2 * std::max(fontHeight, 1)), 1, kMostSteps);
    AxisRange range = RangeOf(y);
    // A curve should not run along the x axis, unless that is where zero is.
    double const below = range.min - 0.01 * (range.max - range.min);
    if (!y.min && range.min != 0.0 && (range.min > 0.0) == (below > 0.0))
        range.min = below;
    SetNumberAxis(axes, CAxes::atY, MakeNumberTicks(range, FreedomOf(y, 1.0), steps));
}

} // namespace

void LayOutAxes(C2DGraph& graph, AxisWish const& x, AxisWish const& y, Picture& scratch)
{
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisTitle(CString(x.title));
    axes.SetYAxisTitle(CString(y.title));
    if (x.logarithmic)
        axes.SetXAxisScaleMode(1);
    if (y.logarithmic)
        axes.SetYAxisScaleMode(1);

    CRect const rect = scratch.GetRect();
    PlaceGraph(graph, rect, std::min(rect.Width(), rect.Height()) / 30);
    MeasureGraph(graph, scratch);
    int const fontHeight = axes.GetFontHeight();
    PlaceGraph(graph, rect, fontHeight);
    LayOutY(axes, y, graph.GetAxesRect().Height(), fontHeight);
    // The y labels decide how much of the width is left.
    MeasureGraph(graph, scratch);
    LabelMeasure const measure(graph, scratch.GetDC());
    LayOutX(axes, x, graph.GetAxesRect().Width(), measure);
    PlaceGraph(graph, rect, fontHeight);
}

} // namespace ombrel::host
