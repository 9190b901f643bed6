#include "ombrel/chart/data/ChartGraph.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/EndLabels.h"
#include "ombrel/layout/FillLook.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <limits>

namespace ombrel {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

[[noreturn]] void FailSetting(std::string const& text) { throw ChartError(ChartError::Cause::Setting, text); }

bool IsBars(SeriesKind kind)
{
    return kind == SeriesKind::Bars || kind == SeriesKind::Stacked || kind == SeriesKind::Histogram;
}

bool IsLine(SeriesKind kind) { return !IsBars(kind) && kind != SeriesKind::Area; }

/// Nothing but marks, which are not to be cut in half.
bool IsMarks(SeriesData const& one) { return one.kind == SeriesKind::Points || one.kind == SeriesKind::Texts; }

template <typename Test> bool AnySeries(ChartContent const& content, Test const& test)
{
    return std::any_of(content.series.begin(), content.series.end(), [&](SeriesData const* one) { return test(*one); });
}

std::vector<SeriesData*> SeriesOf(ChartContent const& content, bool (*belongs)(SeriesKind))
{
    std::vector<SeriesData*> some;
    std::copy_if(content.series.begin(), content.series.end(), std::back_inserter(some),
        [belongs](SeriesData const* one) { return belongs(one->kind); });
    return some;
}

bool HasLegend(ChartContent const& content)
{
    if (content.legend != LegendPlace::Auto && content.legend != LegendPlace::Ends)
        return content.legend != LegendPlace::Off;
    return content.series.size() > 1 && AnySeries(content, [](SeriesData const& one) { return !one.name.empty(); });
}

void CheckEnds(AxisContent const& axis, bool logarithmic, bool hasWords, std::string const& name)
{
    if (hasWords && (axis.from || axis.to))
        FailSetting(name + ": the x values are words");
    if (axis.from && axis.to && !(*axis.from < *axis.to))
        FailSetting(name + ": expected ends with the first below the second, found " + NumberText(*axis.from) + " and "
            + NumberText(*axis.to));
    for (std::optional<double> const& end : { axis.from, axis.to }) {
        if (logarithmic && end && *end <= 0.0)
            FailSetting(name + ": expected ends above zero on a logarithmic axis, found " + NumberText(*end));
    }
}

void CheckContent(ChartContent const& content)
{
    ChartSettings const& settings = content.settings;
    if (content.series.empty())
        throw ChartError(ChartError::Cause::Data, "there is nothing to draw: no series was added");
    for (SeriesData const* const one : content.series)
        CheckKind(one->kind, settings);
    bool const isStacked = AnySeries(content, [](SeriesData const& one) { return one.kind == SeriesKind::Stacked; });
    if (isStacked && AnySeries(content, [](SeriesData const& one) { return one.kind == SeriesKind::Bars; }))
        FailSetting("kind: stacked bars do not stand beside others");
    if (settings.xKind == XKind::Dates && settings.xLog)
        FailSetting("log x: the x values are dates");
    if (settings.xKind == XKind::Dates && settings.polar)
        FailSetting("polar: the x values are dates, not angles");
    if (!content.words.empty() && settings.xLog)
        FailSetting("log x: the x values are words");
    if (!content.words.empty() && settings.polar)
        FailSetting("polar: the x values are words, not angles");
    if (settings.polar && (content.x.reversed || content.y.reversed))
        FailSetting("reverse: a polar chart has no axes of x and y");
    if (settings.polar && settings.equalScales)
        FailSetting("equal: the scales of a polar chart are equal already");
    if (settings.equalScales && (settings.xLog || settings.yLog))
        FailSetting("equal: scales of logarithmic axes cannot be equal");
    if (settings.equalScales && (settings.xKind != XKind::Numbers || !content.words.empty()))
        FailSetting("equal: the x values are " + std::string(content.words.empty() ? "dates" : "words"));
    if (settings.north && !settings.polar)
        FailSetting("north: only a polar chart has angles");
    CheckEnds(content.x, settings.xLog, !content.words.empty(), "x-range");
    CheckEnds(content.y, settings.yLog, false, "y-range");
}

/// The part of the x axis that is shown.
AxisRange ShownOf(ChartContent const& content)
{
    return { content.x.from.value_or(-kInfinity), content.x.to.value_or(kInfinity) };
}

PlotAxisSettings SettingsOf(AxisContent const& axis, bool logarithmic)
{
    PlotAxisSettings settings;
    settings.title = OneLine(axis.title);
    settings.min = axis.from;
    settings.max = axis.to;
    settings.logarithmic = logarithmic;
    settings.reversed = axis.reversed;
    return settings;
}

void CheckData(CurveData const& data, ChartContent const& content, ChartNotes& notes)
{
    std::string const why
        = std::string("all values are gaps") + (content.x.from || content.x.to ? " or outside of the x range" : "");
    if (data.notPositive > 0)
        notes.AddWarning(Counted(data.notPositive, "value is", "values are")
            + " not above zero and cannot be shown on a logarithmic axis; taken as gaps");
    if (data.x.min > data.x.max || data.y.min > data.y.max)
        throw ChartError(ChartError::Cause::Data, "there is nothing to draw: " + why);
    if ((content.y.from && data.y.max < *content.y.from) || (content.y.to && data.y.min > *content.y.to))
        notes.AddWarning("nothing is drawn: all values, from " + NumberText(data.y.min) + " to "
            + NumberText(data.y.max) + ", lie outside of the y range");
    for (std::string const& name : data.empty)
        notes.AddWarning(std::string(name).append(": nothing is drawn: ").append(why));
}

} // namespace

ChartGraph::ChartGraph(ChartContent const& content, CDC& dc, CSize size, ChartNotes& notes, bool takeOver)
    : m_graph(std::make_unique<C2DGraph>(1))
    , m_size(size)
    , m_dotsPerInch(dc.GetDeviceCaps(LOGPIXELSX))
    , m_look(content.settings.polar ? PolarLookOf(content.theme) : LookOf(content.theme))
    , m_palette(PaletteNamed(content.palette, content.series.size(), m_look))
{
    CheckContent(content);
    m_graph->SetGraphFrameOn(0);
    m_graph->GetPolarGrid()->SetOn(content.settings.polar);
    if (content.settings.north)
        m_graph->GetPolarGrid()->SetAngleLabels(C2DPolarGrid::alBearings);
    AddTitle(*m_graph, OneLine(content.title), m_look);
    SetFootnote(*m_graph, content.footnote, m_look);
    AddCaptions(*m_graph, content.captions, m_look);
    ApplyLook(*m_graph, m_look);
    bool const hasBars = AnySeries(content, [](SeriesData const& one) { return IsBars(one.kind); });
    SetGrid(*m_graph, content.grid, content.words.empty() && !hasBars);
    AddSeries(content, notes, takeOver);
    CheckData(m_data, content, notes);
    PutAxesOverFills(*m_graph);
    CRect const window(CPoint(0, 0), size);
    m_graph->SetGraphAndWindowRect(window, window);
    // Logarithmic axes follow the curves, and so does the legend.
    m_graph->UpdatePlots();
    LayOut(content, dc, notes);
}

bool ChartGraph::Fits(CDC const& dc, CSize size) const
{
    return size == m_size && dc.GetDeviceCaps(LOGPIXELSX) == m_dotsPerInch;
}

void ChartGraph::AddSeries(ChartContent const& content, ChartNotes& notes, bool takeOver)
{
    struct {
        bool (*belongs)(SeriesKind);
        void (*add)(CurveInput const&, CurveData&);
    } const families[] {
        { [](SeriesKind kind) { return kind == SeriesKind::Area; }, &AddBands },
        { [](SeriesKind kind) { return kind == SeriesKind::Bars || kind == SeriesKind::Stacked; }, &AddBars },
        { [](SeriesKind kind) { return kind == SeriesKind::Histogram; }, &AddHistogram },
        { &IsLine, &AddLines },
    };
    for (auto const& family : families) {
        std::vector<SeriesData*> const series = SeriesOf(content, family.belongs);
        if (!series.empty())
            family.add({ *m_graph, content.settings, series, m_look, m_palette, ShownOf(content), notes, content.words,
                           takeOver },
                m_data);
    }
}

void ChartGraph::LayOutAxesIn(ChartContent const& content, CRect const& rect, CDC& dc)
{
    if (content.settings.polar)
        LayOutPolar(*m_graph, rect, dc);
    else
        (content.settings.equalScales ? LayOutEqualScales : LayOutAxes)(*m_graph, m_x, m_y, rect, dc);
    m_axesRoom = rect;
}

void ChartGraph::TakeRanges(ChartContent const& content)
{
    m_x.data = m_data.x;
    m_y.data = m_data.y;
    m_x.counts = m_data.wholeNumbers;
    // The shade begins at zero.
    if (!content.settings.yLog
        && AnySeries(content, [](SeriesData const& one) { return one.kind == SeriesKind::Filled; }))
        m_y.data = { std::min(m_y.data.min, 0.0), std::max(m_y.data.max, 0.0) };
}

void ChartGraph::LayOut(ChartContent const& content, CDC& dc, ChartNotes& notes)
{
    ChartSettings const& settings = content.settings;
    auto const isHistogram = [](SeriesData const& one) { return one.kind == SeriesKind::Histogram; };
    bool const hasBars = AnySeries(content, [](SeriesData const& one) { return IsBars(one.kind); });
    bool const hasMarks = AnySeries(content, IsMarks);
    m_x = SettingsOf(content.x, settings.xLog);
    m_y = SettingsOf(content.y, settings.yLog);
    m_x.words = content.words;
    m_x.dates = settings.xKind == XKind::Dates;
    m_x.barRoom = m_data.spacing / 2.0;
    // Half a cap at the frame would look like a tick, at zero too.
    m_x.pastZero = !hasBars && AnySeries(content, [](SeriesData const& one) { return !one.errors.empty(); });
    m_x.margin = hasMarks || m_x.pastZero ? kMarkMargin : 0.0;
    m_y.margin = hasMarks || hasBars ? kMarkMargin : kCurveMargin;
    m_x.wholeDecades = m_y.wholeDecades = hasBars;
    m_y.limit = settings.percent ? 100.0 : settings.normalised ? 1.0 : 0.0;
    m_y.counts = AnySeries(content, isHistogram);
    TakeRanges(content);

    CRect const rect = GraphRectIn(*m_graph, m_graph->GetWindowRect(), dc);
    auto const layOut = [&](CRect const& room) { LayOutAxesIn(content, room, dc); };
    layOut(rect);
    bool const isNamed = content.legend == LegendPlace::Ends && PlaceEndLabels(*m_graph, rect, dc, m_look, layOut);
    if (!isNamed && HasLegend(content))
        PlaceLegend(*m_graph, content.legend, rect, dc, layOut);
    SettleOutlines(*m_graph, dc, notes);
    SettleMarks(*m_graph, dc);
    PlaceLabels(*m_graph, m_data.labels, dc, m_look, notes);
    PlaceTitle(*m_graph, dc);
    PlaceFootnote(*m_graph, content.footnote, dc);
    PlaceCaptions(*m_graph, content.captions, dc);
}

bool ChartGraph::Refill(
    ChartContent const& content, std::vector<SeriesData*> const& changed, CDC& dc, ChartNotes& notes)
{
    // Names at the ends of lines move with them.
    if (content.legend == LegendPlace::Ends)
        return false;
    if (!std::all_of(content.series.begin(), content.series.end(), [](SeriesData* one) { return IsLine(one->kind); }))
        return false;
    CurveInput const input { *m_graph, content.settings, content.series, m_look, m_palette, ShownOf(content), notes,
        content.words };
    for (SeriesData* const one : changed) {
        if (!RefillLine(input, *one))
            return false;
    }
    m_data = CurveData();
    for (SeriesData const* const one : content.series)
        m_data.Add(one->shown);
    CheckData(m_data, content, notes);
    m_graph->UpdatePlots();
    TakeRanges(content);
    LayOutAxesIn(content, m_axesRoom, dc);
    return true;
}

} // namespace ombrel
