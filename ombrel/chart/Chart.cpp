#include "ombrel/chart/Chart.h"
#include "ombrel/Init.h"
#include "ombrel/chart/data/ChartGraph.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <deque>

namespace ombrel {

struct Chart::Parts {
    ChartContent content;
    Series::Changes changes;
    ChartAxis x { changes.all };
    ChartAxis y { changes.all };
    std::vector<std::unique_ptr<Series>> series;
    std::optional<ChartGraph> graph;
    ChartNotes notes;

    Series& Add(SeriesKind kind, CTableData points, XKind xKind);
    /// Builds the graph, or brings it up to date.
    ChartGraph& Prepare(CDC& dc, CRect const& rect, bool takeOver);
    void TakeAxes();
};

namespace {

std::string NameOf(XKind kind) { return kind == XKind::Numbers ? "numbers" : kind == XKind::Dates ? "dates" : "words"; }

} // namespace

Series& Chart::Parts::Add(SeriesKind kind, CTableData points, XKind xKind)
{
    if (kind != SeriesKind::Histogram && !series.empty() && changes.xKind != xKind)
        throw SeriesError(series.size(), std::nullopt,
            "expected " + NameOf(changes.xKind) + " along x as in the series before it, found " + NameOf(xKind));
    auto data = std::make_unique<SeriesData>();
    data->kind = kind;
    data->index = series.size();
    data->points = std::move(points);
    content.series.push_back(data.get());
    content.settings.xKind = changes.xKind = xKind;
    changes.all = true;
    series.emplace_back(new Series(std::move(data), changes));
    return *series.back();
}

void Chart::Parts::TakeAxes()
{
    content.x = { x.m_title, x.m_from, x.m_to, x.m_isReversed };
    content.y = { y.m_title, y.m_from, y.m_to, y.m_isReversed };
    content.settings.xLog = x.m_isLogarithmic;
    content.settings.yLog = y.m_isLogarithmic;
    content.words = changes.words;
}

ChartGraph& Chart::Parts::Prepare(CDC& dc, CRect const& rect, bool takeOver)
{
    notes = ChartNotes();
    bool const isBuilt = graph && !changes.all && graph->Fits(dc, rect.Size()) && !takeOver;
    if (!isBuilt || (!changes.points.empty() && !graph->Refill(content, changes.points, dc, notes))) {
        TakeAxes();
        graph.reset();
        notes = ChartNotes();
        graph.emplace(content, dc, rect.Size(), notes, takeOver);
    }
    changes.all = false;
    changes.points.clear();
    return *graph;
}

Chart::Chart(std::string_view title)
    : DrawnPicture(title)
    , m_parts(std::make_unique<Parts>())
{
    m_parts->content.title = title;
}

Chart::~Chart() = default;
Chart::Chart(Chart&&) noexcept = default;
Chart& Chart::operator=(Chart&&) noexcept = default;

Series& Chart::Add(SeriesKind kind, XValues const& x, std::span<double const> y)
{
    Series& series = m_parts->Add(kind, CTableData(), x.Kind());
    try {
        series.Update(x, y);
    } catch (...) {
        m_parts->content.series.pop_back();
        m_parts->series.pop_back();
        throw;
    }
    return series;
}

Series& Chart::Add(SeriesKind kind, std::span<double const> y)
{
    // Histograms look at no x, whatever that of the others is.
    XKind const others = m_parts->changes.xKind;
    if (kind == SeriesKind::Histogram && !m_parts->series.empty() && others != XKind::Numbers) {
        CTableData points(2, static_cast<int>(y.size()));
        std::copy(y.begin(), y.end(), points.GetRow(1));
        return m_parts->Add(kind, std::move(points), others);
    }
    return Add(kind, XValues::Counted(y.size()), y);
}

Series& Chart::Add(SeriesKind kind, CTableData&& points, XKind xKind)
{
    if (points.HasData() && points.GetNumRows() != 2)
        throw SeriesError(m_parts->series.size(), std::nullopt,
            "expected a table of two rows, x and y, found " + std::to_string(points.GetNumRows()));
    if (xKind == XKind::Words)
        throw SeriesError(m_parts->series.size(), std::nullopt, "expected numbers or dates in a table, not words");
    return m_parts->Add(kind, std::move(points), xKind);
}

Series& Chart::Texts(XValues const& x, std::span<double const> y, std::span<std::string const> texts)
{
    return Add(SeriesKind::Texts, x, y).Labels(texts);
}

Series* Chart::GetSeries(std::size_t index)
{
    return index < m_parts->series.size() ? m_parts->series[index].get() : nullptr;
}

ChartAxis& Chart::X() { return m_parts->x; }
ChartAxis& Chart::Y() { return m_parts->y; }

template <typename Change> Chart& Chart::Set(Change const& change)
{
    change(m_parts->content);
    m_parts->changes.all = true;
    return *this;
}

Chart& Chart::Title(std::string_view title)
{
    SetFileTitle(title);
    return Set([title](ChartContent& content) { content.title = title; });
}

Chart& Chart::Footnote(std::string_view text)
{
    return Set([text](ChartContent& content) { content.footnote = text; });
}

Chart& Chart::SetTheme(Theme theme)
{
    return Set([theme](ChartContent& content) { content.theme = theme; });
}

Chart& Chart::SetPalette(std::string_view name)
{
    return Set([name](ChartContent& content) { content.palette = name; });
}

Chart& Chart::Grid(GridChoice grid)
{
    return Set([grid](ChartContent& content) { content.grid = grid; });
}

Chart& Chart::Legend(LegendPlace place)
{
    return Set([place](ChartContent& content) { content.legend = place; });
}

Chart& Chart::Caption(std::string_view text, double x, double y)
{
    return Set([&](ChartContent& content) { content.captions.push_back({ std::string(text), x, y }); });
}

Chart& Chart::Polar(Angle unit)
{
    return Set([unit](ChartContent& content) {
        content.settings.polar = true;
        content.settings.radians = unit == Angle::Radians;
    });
}

Chart& Chart::North(bool on)
{
    return Set([on](ChartContent& content) { content.settings.north = on; });
}

Chart& Chart::EqualScales(bool on)
{
    return Set([on](ChartContent& content) { content.settings.equalScales = on; });
}

Chart& Chart::Percent(bool on)
{
    return Set([on](ChartContent& content) { content.settings.percent = on; });
}

Chart& Chart::Normalised(bool on)
{
    return Set([on](ChartContent& content) { content.settings.normalised = on; });
}

Chart& Chart::Bins(int bins)
{
    return Set([bins](ChartContent& content) { content.settings.bins = std::max(bins, 0); });
}

CAnnotatedGraph& Chart::LaidOut(CDC& dc, CRect const& window) { return m_parts->Prepare(dc, window, false).Get(); }

ChartNotes Chart::Notes() const { return m_parts->notes; }

C2DGraph& Chart::Graph(CDC& dc, CRect const& rect)
{
    return WithErrors([&]() -> C2DGraph& { return m_parts->Prepare(dc, rect, false).Get(); });
}

std::unique_ptr<C2DGraph> Chart::TakeGraph(CDC& dc, CRect const& rect)
{
    return WithErrors([&] {
        std::unique_ptr<C2DGraph> graph = m_parts->Prepare(dc, rect, true).Take();
        m_parts->graph.reset();
        return graph;
    });
}

ChartAxis& ChartAxis::Title(std::string_view title)
{
    m_title = title;
    m_isChanged = true;
    return *this;
}

ChartAxis& ChartAxis::Range(
    std::chrono::sys_time<std::chrono::milliseconds> from, std::chrono::sys_time<std::chrono::milliseconds> to)
{
    return Range(DateValue(from), DateValue(to));
}

ChartAxis& ChartAxis::From(double from)
{
    m_from = from;
    m_isChanged = true;
    return *this;
}

ChartAxis& ChartAxis::To(double to)
{
    m_to = to;
    m_isChanged = true;
    return *this;
}

ChartAxis& ChartAxis::FollowData()
{
    m_from.reset();
    m_to.reset();
    m_isChanged = true;
    return *this;
}

ChartAxis& ChartAxis::Logarithmic(bool on)
{
    m_isLogarithmic = on;
    m_isChanged = true;
    return *this;
}

ChartAxis& ChartAxis::Reversed(bool on)
{
    m_isReversed = on;
    m_isChanged = true;
    return *this;
}

} // namespace ombrel
