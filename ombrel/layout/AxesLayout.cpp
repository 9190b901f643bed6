#include "ombrel/layout/AxesLayout.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/layout/axes/WordLabels.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <span>
#include <utility>

namespace ombrel {

namespace {

/// Ends of an x axis move to the next tick when that is near, so that curves use the width there is.
constexpr double kNear = 0.05;

AxisRange RangeOf(PlotAxisSettings const& settings)
{
    AxisRange range = settings.data;
    if (range.min > range.max)
        range = { 0.0, 1.0 };
    std::array const stops { 0.0, -settings.limit, settings.limit };
    if (settings.dates || settings.pastZero)
        range = WithMargins(range, settings.margin, {});
    else
        range = WithMargins(range, settings.margin, std::span(stops).first(settings.limit > 0.0 ? 3 : 1));
    range = { range.min - settings.barRoom, range.max + settings.barRoom };
    if (settings.min)
        range.min = *settings.min;
    if (settings.max)
        range.max = *settings.max;
    // One end given, and all data beyond it: the other end follows.
    if (range.min > range.max)
        (settings.min ? range.max : range.min) = settings.min ? range.min : range.max;
    if (settings.dates && range.min == range.max)
        range = { range.min - 0.5, range.max + 0.5 };
    range = WidenEmptyRange(range);
    // What was widened keeps the end that was given.
    return { settings.min.value_or(range.min), settings.max.value_or(range.max) };
}

RangeFreedom FreedomOf(PlotAxisSettings const& settings, double reach)
{
    // The room for bars is the same on both sides.
    return { settings.min.has_value(), settings.max.has_value(), settings.barRoom > 0.0 ? 0.0 : reach };
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

void SetNumberAxis(CAxes& axes, CAxes::AxisType type, PlotAxisSettings const& settings, NumberTicks const& ticks)
{
    AxisSettings axis = axes.GetAxis(type);
    axis.title = CString(TitleWithPower(settings.title, ticks));
    axis.min = ticks.range.min;
    axis.max = ticks.range.max;
    axis.rangeMode = CAxes::rmFixed;
    axis.tickMode = CAxes::tmStep;
    axis.tickMin = ticks.first;
    axis.tickDel = ticks.step;
    axis.numMinorTicks = ticks.minor;
    // Where the axis's own labels would do, they follow when a host changes the range.
    axis.formatType = kFixedFormat;
    axis.labelPrecision = ticks.decimals;
    axis.labelMode = ticks.IsPlain() ? CAxes::lmValues : CAxes::lmStrings;
    axis.labels.RemoveAll();
    if (!ticks.IsPlain()) {
        for (std::string const& text : NumberLabels(ticks))
            axis.labels.Add(CString(text));
    }
    axes.SetAxis(type, axis);
}

/// How many pixels of an axis a label takes up, with a gap to the next one.
using LabelSize = std::function<int(std::string const&)>;

/// The data's range with the ends that were given, which are positive where there is any data.
AxisRange LogRangeOf(PlotAxisSettings const& settings)
{
    AxisRange data = settings.data;
    if (!(data.min > 0.0) || data.min > data.max)
        data = { settings.min.value_or(1.0), settings.max.value_or(settings.min.value_or(1.0) * 10.0) };
    data = { settings.min.value_or(data.min), settings.max.value_or(data.max) };
    // One end given, and all data beyond it.
    if (data.min >= data.max && settings.min && !settings.max)
        data.max = 10.0 * data.min;
    else if (data.min >= data.max && settings.max && !settings.min)
        data.min = data.max / 10.0;
    return MakeLogRange(data, { settings.min.has_value(), settings.max.has_value() });
}

void SetLogAxis(
    CAxes& axes, CAxes::AxisType type, PlotAxisSettings const& settings, int length, LabelSize const& sizeOf)
{
    // Whatever stands on a decade needs it; others use the room they have.
    bool const hasEnds = settings.min || settings.max;
    bool const isWide = settings.wholeDecades || settings.data.min > settings.data.max;
    if (isWide && !hasEnds && !settings.reversed)
        return;
    AxisRange range = LogRangeOf(settings);
    if (isWide && !hasEnds)
        range = { std::floor(range.min), std::ceil(range.max) };
    AxisSettings axis = axes.GetAxis(type);
    axis.min = range.min;
    axis.max = range.max;
    axis.rangeMode = CAxes::rmStored;
    axis.tickMode = CAxes::tmStep;
    axis.labelMode = CAxes::lmStrings;
    // As many decades in a step as their labels need, of these numbers.
    for (int const step : { 1, 2, 5, 10, 20, 50, 100, 200 }) {
        axis.tickDel = step;
        axes.SetAxis(type, axis);
        axes.UpdateGraphParameters();
        CDoubleArray ticks;
        if (type == CAxes::atX)
            axes.GetXNotchPositions(ticks);
        else
            axes.GetYNotchPositions(ticks);
        std::span<double const> const places(ticks.GetData(), static_cast<std::size_t>(ticks.GetSize()));
        std::vector<std::string> const labels = FitLogLabels(places, range, length, sizeOf);
        bool const isWhole = range.max - range.min < 2.0
            || std::none_of(labels.begin(), labels.end(), [](std::string const& text) { return text.empty(); });
        axis.labels.RemoveAll();
        for (std::string const& text : labels)
            axis.labels.Add(CString(text));
        if (isWhole)
            break;
    }
    axes.SetAxis(type, axis);
}

void SetDateAxis(CAxes& axes, DateTicks const& ticks, CString const& title)
{
    AxisSettings axis = axes.GetAxis(CAxes::atX);
    axis.title = title;
    axis.min = ticks.range.min;
    axis.max = ticks.range.max;
    axis.rangeMode = CAxes::rmFixed;
    axis.timeUnitsOn = 1;
    axis.tickMode = CAxes::tmStep;
    DateTickSettings dates;
    dates.alignRefDate = 0;
    dates.tickMin = ticks.first;
    dates.del = ticks.step;
    dates.delUnit = ticks.unit;
    dates.delMinor = ticks.minorStep;
    dates.delUnitMinor = ticks.minorUnit;
    dates.dateFormat = CString(ticks.format);
    dates.timeFormat = "";
    // Minor ticks have no labels, but the room for them would be kept.
    dates.minorDateFormat = "";
    dates.minorTimeFormat = "";
    axes.SetDateTicks(dates);
    axis.labelMode = CAxes::lmStrings;
    axis.labels.RemoveAll();
    axes.SetAxis(CAxes::atX, axis);
    axes.UpdateGraphParameters();
    CDoubleArray places;
    axes.GetXNotchPositions(places);
    for (std::string const& text : DateLabels(ticks, { places.GetData(), static_cast<std::size_t>(places.GetSize()) }))
        axis.labels.Add(CString(text));
    axes.SetAxis(CAxes::atX, axis);
}

/// The last step of an axis's layout: the range is turned round, and its ticks keep theirs.
void TurnRound(CAxes& axes, CAxes::AxisType type)
{
    AxisSettings axis = axes.GetAxis(type);
    axis.tickRangeMode = CAxes::trFixed;
    axis.tickRangeMin = axis.min;
    axis.tickRangeMax = axis.max;
    std::swap(axis.min, axis.max);
    axes.SetAxis(type, axis);
}

/// So that the y title does not touch the labels beside it.
void KeepTitleApart(CAxes& axes)
{
    constexpr double kTitleGap = 0.35;
    AxisSettings axis = axes.GetAxis(CAxes::atY);
    axis.scaleFac = 1.0 + kTitleGap;
    axes.SetAxis(CAxes::atY, axis);
}

/// Lays the graph out in the rectangle without drawing it.
void Measure(C2DGraph& graph, CRect const& rect, CDC& dc)
{
    graph.SetGraphAndWindowRect(rect, graph.GetWindowRect());
    graph.LayOut(&dc, graph.GetWindowRect());
}

/// With labels that leave out what they have in common, that goes into the title.
std::string TitleWithCommon(std::string const& title, DateTicks const& ticks)
{
    if (ticks.common.empty())
        return title;
    return title.empty() ? ticks.common : title + " (" + ticks.common + ")";
}

void LayOutWords(CAxes& axes, PlotAxisSettings const& x, CSize area, LabelMeasure const& measure)
{
    auto const width = [&measure](std::string const& text) { return measure.Width(text); };
    WordLabels const labels = FitWords(x.words, area.cx, area.cy / 3, measure.Height(), width);
    AxisSettings axis = axes.GetAxis(CAxes::atX);
    axis.min = 0.5;
    axis.max = static_cast<double>(x.words.size()) + 0.5;
    axis.rangeMode = CAxes::rmFixed;
    axis.tickMode = CAxes::tmArbitrary;
    axis.labelMode = CAxes::lmArbitraryStrings;
    axis.arbitraryTicks.RemoveAll();
    axis.labels.RemoveAll();
    for (std::size_t i = 0; i < labels.shown.size(); ++i) {
        axis.arbitraryTicks.Add(static_cast<double>(labels.shown[i] + 1));
        axis.labels.Add(CString(labels.texts[i]));
    }
    axes.SetAxis(CAxes::atX, axis);
    axes.SetLabelsHorizontal(labels.upright ? 0 : 1);
}

void LayOutForwardX(CAxes& axes, PlotAxisSettings const& x, CSize area, LabelMeasure const& measure)
{
    auto const width = [&measure](std::string const& text) { return measure.Width(text); };
    RangeFreedom const freedom = FreedomOf(x, kNear);
    int const length = area.cx;
    if (!x.words.empty()) {
        LayOutWords(axes, x, area, measure);
    } else if (x.dates) {
        DateTicks const ticks = FitDateTicks(RangeOf(x), freedom, length, width);
        SetDateAxis(axes, ticks, CString(TitleWithCommon(x.title, ticks)));
    } else if (x.logarithmic) {
        int const gap = width("00");
        SetLogAxis(axes, CAxes::atX, x, length, [&](std::string const& text) { return width(text) + gap; });
    } else {
        double const smallestStep = x.counts ? 1.0 : 0.0;
        SetNumberAxis(axes, CAxes::atX, x, FitNumberTicks(RangeOf(x), freedom, smallestStep, length, width));
    }
}

void LayOutX(CAxes& axes, PlotAxisSettings const& x, CSize area, LabelMeasure const& measure)
{
    LayOutForwardX(axes, x, area, measure);
    if (x.reversed)
        TurnRound(axes, CAxes::atX);
}

void LayOutForwardY(CAxes& axes, PlotAxisSettings const& y, int length, int fontHeight)
{
    constexpr int kMostSteps = 8;
    if (y.logarithmic) {
        SetLogAxis(axes, CAxes::atY, y, length, [fontHeight](std::string const&) { return fontHeight * 3 / 2; });
        return;
    }
    // Labels need twice their height to be told apart easily.
    int const steps = std::clamp(length / (2 * std::max(fontHeight, 1)), 1, kMostSteps);
    double const smallestStep = y.counts ? 1.0 : 0.0;
    SetNumberAxis(axes, CAxes::atY, y, MakeNumberTicks(RangeOf(y), FreedomOf(y, 1.0), steps, smallestStep));
}

void LayOutY(CAxes& axes, PlotAxisSettings const& y, int length, int fontHeight)
{
    LayOutForwardY(axes, y, length, fontHeight);
    if (y.reversed)
        TurnRound(axes, CAxes::atY);
}

/// What does not depend on the layout.
void PrepareAxis(CAxes& axes, CAxes::AxisType type, PlotAxisSettings const& settings)
{
    AxisSettings axis = axes.GetAxis(type);
    axis.title = CString(settings.title);
    if (settings.logarithmic)
        axis.scaleMode = 1;
    // Of the layout before this one.
    if (axis.min > axis.max)
        std::swap(axis.min, axis.max);
    axis.tickRangeMode = CAxes::trAxis;
    axes.SetAxis(type, axis);
}

/// Half as long as labels are high, so that the first label of the x axis does not touch the lowest one of the y axis
/// where they meet.
void LengthenTicks(CAxes& axes, CRect const& graph)
{
    constexpr double kUsualPart = 1.0 / 80.0;
    double const usual = std::max(1.0, std::round(std::min(graph.Width(), graph.Height()) * kUsualPart));
    double const factor = std::max(1.0, axes.GetFontHeight() / 2.0 / usual);
    for (CAxes::AxisType const type : { CAxes::atX, CAxes::atY }) {
        AxisSettings axis = axes.GetAxis(type);
        axis.majorTickScaleFac = factor;
        axis.minorTickScaleFac = factor;
        axes.SetAxis(type, axis);
    }
}

/// Of the smaller side of the room there is, what a side has at least where axes may show more than the data.
constexpr double kNarrowestPart = 0.6;

/// Data over at least such a span, on both sides or beyond the end that was not given; span is what they have.
PlotAxisSettings WithSpan(PlotAxisSettings settings, double least, double span)
{
    if (span >= least || (settings.min && settings.max))
        return settings;
    double const first = settings.min.value_or(settings.data.min);
    double const last = settings.max.value_or(settings.data.max);
    double const more = std::max(0.0, least - (last - first));
    settings.data.min = settings.min ? first : first - (settings.max ? more : more / 2.0);
    settings.data.max = settings.max ? last : last + (settings.min ? more : more / 2.0);
    settings.margin = 0.0;
    return settings;
}

/// The ends that the axis has got become those that were asked for.
PlotAxisSettings WithEndsOf(CAxes const& axes, CAxes::AxisType type, PlotAxisSettings settings)
{
    AxisSettings const& axis = axes.GetAxis(type);
    settings.min = std::min(axis.min, axis.max);
    settings.max = std::max(axis.min, axis.max);
    return settings;
}

/// The largest part of the rectangle that the graph was laid out in where x and y have the same scale, as far as what
/// lies round the axes stays as wide as it is.
CRect WithEqualScales(C2DGraph const& graph, CRect const& rect)
{
    CAxes const& axes = *graph.GetAxes();
    CRect const area = graph.GetAxesRect();
    double const width = std::abs(axes.GetRange(CAxes::atX));
    double const height = std::abs(axes.GetRange(CAxes::atY));
    double const scale = std::min(area.Width() / width, area.Height() / height);
    int const spareX = area.Width() - static_cast<int>(std::lround(scale * width));
    int const spareY = area.Height() - static_cast<int>(std::lround(scale * height));
    return { rect.left + spareX / 2, rect.top + spareY / 2, rect.right - (spareX - spareX / 2),
        rect.bottom - (spareY - spareY / 2) };
}

} // namespace

void SetGrid(C2DGraph& graph, GridChoice choice, bool withUprightLines)
{
    C2DPolarGrid& polar = *graph.GetPolarGrid();
    C2DGrid& grid = *graph.GetGrid();
    bool const minor = choice == GridChoice::Both;
    if (!minor) {
        polar.SetNumMinorRDivs(1);
        polar.SetNumMinorPhiDivs(1);
        // Decade lines cannot be left out, but not be seen.
        grid.SetMinorColour(static_cast<COLORREF>(graph.GetBkndColour()));
    }
    grid.SetOn(choice != GridChoice::Off && !polar.IsOn());
    grid.SetVertLinesOn(withUprightLines);
}

CRect GraphRectIn(C2DGraph& graph, CRect const& window, CDC& dc)
{
    // Labels are as high as the smaller side of the graph rectangle lets them be: a first guess is good enough.
    int const guess = std::min(window.Width(), window.Height()) / 30;
    graph.SetGraphAndWindowRect(
        CRect(window.left + guess, window.top + guess, window.right - guess, window.bottom - guess), window);
    Measure(graph, graph.GetGraphRect(), dc);
    int const margin = graph.GetAxes()->GetFontHeight();
    int const top = FindTitle(graph) ? margin * 5 / 2 : margin;
    int const bottom = FindFootnote(graph) ? margin * 2 : margin;
    return CRect(window.left + margin, window.top + top, window.right - margin, window.bottom - bottom);
}

void LayOutAxes(C2DGraph& graph, PlotAxisSettings const& x, PlotAxisSettings const& y, CRect const& rect, CDC& dc)
{
    CAxes& axes = *graph.GetAxes();
    PrepareAxis(axes, CAxes::atX, x);
    PrepareAxis(axes, CAxes::atY, y);
    KeepTitleApart(axes);
    Measure(graph, rect, dc);
    LengthenTicks(axes, rect);
    LayOutY(axes, y, graph.GetAxesRect().Height(), axes.GetFontHeight());
    // The y labels decide how much of the width is left.
    Measure(graph, rect, dc);
    LabelMeasure const measure(graph, dc);
    LayOutX(axes, x, graph.GetAxesRect().Size(), measure);
    Measure(graph, rect, dc);
    if (!axes.GetLabelsHorizontal()) {
        // Room at the end of the axis is kept as if these labels lay level: the axis gets it back. They leave less of
        // the height.
        CRect const wider(rect.left, rect.top, 2 * rect.right - graph.GetAxesRect().right, rect.bottom);
        LayOutY(axes, y, graph.GetAxesRect().Height(), axes.GetFontHeight());
        Measure(graph, wider, dc);
    }
}

void LayOutEqualScales(
    C2DGraph& graph, PlotAxisSettings const& x, PlotAxisSettings const& y, CRect const& rect, CDC& dc)
{
    LayOutAxes(graph, x, y, rect, dc);
    CSize const area = graph.GetAxesRect().Size();
    double const xSpan = std::abs(graph.GetAxes()->GetRange(CAxes::atX));
    double const ySpan = std::abs(graph.GetAxes()->GetRange(CAxes::atY));
    double const scale = std::min(area.cx / xSpan, area.cy / ySpan);
    double const least = kNarrowestPart * std::min(area.cx, area.cy) / scale;
    PlotAxisSettings xEnds = WithSpan(x, least, xSpan);
    PlotAxisSettings yEnds = WithSpan(y, least, ySpan);
    auto const hasEnds = [](PlotAxisSettings const& axis) { return axis.min && axis.max; };
    if (!hasEnds(x) || !hasEnds(y)) {
        if (std::min(xSpan, ySpan) < least)
            LayOutAxes(graph, xEnds, yEnds, rect, dc);
        // Once more in about the size there will be, whose ticks are fewer; then the ends stay.
        LayOutAxes(graph, xEnds, yEnds, WithEqualScales(graph, rect), dc);
        xEnds = WithEndsOf(*graph.GetAxes(), CAxes::atX, xEnds);
        yEnds = WithEndsOf(*graph.GetAxes(), CAxes::atY, yEnds);
        LayOutAxes(graph, xEnds, yEnds, rect, dc);
    }
    CRect room = rect;
    // Smaller letters leave more room for the axes than was reckoned with.
    constexpr int kMostSteps = 4;
    for (int i = 0; i < kMostSteps; ++i) {
        CRect const next = WithEqualScales(graph, room);
        if (next == room)
            break;
        room = next;
        LayOutAxes(graph, xEnds, yEnds, room, dc);
    }
}

void LayOutPolar(C2DGraph& graph, CRect const& rect, CDC& dc)
{
    CAxes& axes = *graph.GetAxes();
    for (CAxes::AxisType const type : { CAxes::atX, CAxes::atY }) {
        AxisSettings axis = axes.GetAxis(type);
        axis.on = 0;
        axis.labelsOn = 0;
        axis.title = "";
        axes.SetAxis(type, axis);
    }
    Measure(graph, rect, dc);
    graph.GetPolarGrid()->SetNumMajorRDivs(TidyCircles(axes.GetRange(CAxes::atX) / 2.0));
    graph.GetPolarGrid()->SetNumMinorRDivs(2);
    if (graph.GetPolarGrid()->GetAngleLabels() == C2DPolarGrid::alPlain)
        graph.GetPolarGrid()->SetAngleLabels(C2DPolarGrid::alDegrees);
    Measure(graph, rect, dc);
    LabelMeasure const measure(graph, dc);
    // The labels of the angles stand round the circle, those of the radii to its left.
    int const above = measure.Height();
    int const aside = measure.Width("180°") + measure.Height() / 2;
    CRect const measured = graph.GetAxesRect();
    int const left = std::max(aside, static_cast<int>(measured.left - rect.left));
    int const side = std::max(1, std::min(rect.Width() - left - aside, rect.Height() - 2 * above));
    int const x = rect.left + left + (rect.Width() - left - aside - side) / 2;
    int const y = rect.top + (rect.Height() - side) / 2;
    // What the scale of the radius takes up makes the graph rectangle larger than the square.
    CPoint const scale(measured.left - rect.left, measured.top - rect.top);
    Measure(graph, CRect(x - scale.x, y - scale.y, x + side, y + side), dc);
}

} // namespace ombrel
