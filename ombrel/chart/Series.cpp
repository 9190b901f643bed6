#include "ombrel/chart/Series.h"
#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/layout/ChartError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace ombrel {

namespace {

[[noreturn]] void FailSetting(std::string const& text) { throw ChartError(ChartError::Cause::Setting, text); }

void RequireOneEach(SeriesData const& series, std::string const& what, std::size_t found)
{
    if (found != series.Count())
        throw SeriesError(series.index, std::nullopt,
            "expected " + what + " for each of " + Counted(series.Count(), "point", "points") + ", found "
                + std::to_string(found));
}

} // namespace

void CheckKind(SeriesKind kind, ChartSettings const& settings)
{
    bool const isLog = settings.xLog || settings.yLog;
    if (isLog && (kind == SeriesKind::Stacked || kind == SeriesKind::Area))
        FailSetting(std::string("log: ") + (kind == SeriesKind::Area ? "area" : "stacked")
            + " values add up, and logarithms do not");
    if (settings.xLog && kind == SeriesKind::Histogram)
        FailSetting("log x: the bins of a histogram are equally wide");
    if (settings.xLog && kind == SeriesKind::Bars)
        FailSetting("log x: bars are equally wide");
    bool const isPolar = kind == SeriesKind::Line || kind == SeriesKind::Points || kind == SeriesKind::Filled;
    if (settings.polar && !isPolar)
        FailSetting("polar: is for lines, points and filled lines");
    if (settings.polar && isLog)
        FailSetting("polar: has no logarithmic axes");
}

double DateValue(std::chrono::sys_time<std::chrono::milliseconds> time)
{
    using namespace std::chrono;
    constexpr sys_days kZero { year { 1899 } / December / 30 };
    constexpr double kMillisecondsPerDay = 86'400'000.0;
    auto const day = floor<days>(time);
    double const whole = static_cast<double>((day - kZero).count());
    double const part = static_cast<double>((time - day).count()) / kMillisecondsPerDay;
    return whole < 0.0 ? whole - part : whole + part;
}

Series::Series(std::unique_ptr<SeriesData> data, Changes& changes)
    : m_data(std::move(data))
    , m_changes(&changes)
{
}

Series::~Series() = default;

template <typename Change> Series& Series::Set(Change const& change)
{
    change(*m_data);
    m_changes->all = true;
    return *this;
}

Series& Series::Name(std::string_view name)
{
    return Set([name](SeriesData& data) { data.name = name; });
}

Series& Series::Colour(ombrel::Colour colour)
{
    return Set([colour](SeriesData& data) { data.colour = colour.ToColorRef(); });
}

Series& Series::Width(int pixels)
{
    return Set([pixels](SeriesData& data) { data.lineWidth = std::max(pixels, 1); });
}

Series& Series::Dash(ombrel::Dash dash)
{
    return Set([dash](SeriesData& data) { data.lineType = static_cast<int>(dash); });
}

Series& Series::Mark(ombrel::Mark mark)
{
    return Set([mark](SeriesData& data) {
        data.symbol = static_cast<C2DSymbol::SymbolType>(mark);
        data.marked = mark != ombrel::Mark::None;
    });
}

Series& Series::Marks(bool on)
{
    return Set([on](SeriesData& data) { data.marked = on; });
}

Series& Series::MarkSize(double factor)
{
    if (!(factor > 0.0))
        FailSetting("symbol-size: expected a factor above 0, found " + NumberText(factor));
    return Set([factor](SeriesData& data) { data.markSize = factor; });
}

Series& Series::Smooth(bool on)
{
    return Set([on](SeriesData& data) { data.smooth = on; });
}

Series& Series::Opacity(double opacity)
{
    if (!(opacity > 0.0 && opacity <= 1.0))
        FailSetting("opacity: expected a number above 0 up to 1, found " + NumberText(opacity));
    return Set([opacity](SeriesData& data) { data.opacity = opacity; });
}

Series& Series::Errors(std::span<double const> errors)
{
    RequireOneEach(*m_data, "an error", errors.size());
    SeriesKind const kind = m_data->kind;
    if (kind == SeriesKind::Stacked || kind == SeriesKind::Area || kind == SeriesKind::Histogram
        || kind == SeriesKind::Texts)
        FailSetting("error: is for lines, points and bars side by side");
    return Set([errors](SeriesData& data) { data.errors.assign(errors.begin(), errors.end()); });
}

Series& Series::Labels(std::span<std::string const> texts)
{
    RequireOneEach(*m_data, "a text", texts.size());
    if (m_data->kind != SeriesKind::Texts)
        FailSetting("label: is for texts at points");
    return Set([texts](SeriesData& data) { data.labels.assign(texts.begin(), texts.end()); });
}

std::vector<double> Series::Changes::TakeWords(XValues const& x)
{
    // The places look at the words where they are, so these must not move.
    words.reserve(words.size() + x.Words().size());
    std::unordered_map<std::string_view, double> places;
    for (std::string const& word : words)
        places.emplace(word, static_cast<double>(places.size() + 1));
    // Of those of x, by their numbers there; a gap stays one.
    std::vector<double> renumbered;
    for (std::string const& word : x.Words()) {
        auto const [place, isNew] = places.try_emplace(word, static_cast<double>(places.size() + 1));
        renumbered.push_back(place->second);
        if (isNew)
            words.push_back(word);
        all = all || isNew;
    }
    std::vector<double> numbers(x.Numbers().begin(), x.Numbers().end());
    for (double& number : numbers)
        number = std::isnan(number) ? number : renumbered[static_cast<std::size_t>(number) - 1];
    return numbers;
}

void Series::Update(XValues const& x, std::span<double const> y)
{
    if (x.Numbers().size() != y.size())
        throw SeriesError(m_data->index, std::nullopt,
            "expected as many y values as there are x values (" + std::to_string(x.Numbers().size()) + "), found "
                + std::to_string(y.size()));
    if (y.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw SeriesError(m_data->index, std::nullopt, "has more than 2147483647 points");
    if (m_changes->xKind != x.Kind())
        throw SeriesError(m_data->index, std::nullopt, "expected x values of the kind that the chart has");
    if (m_data->Count() != y.size())
        m_data->points.Initialise(2, static_cast<int>(y.size()), 0);
    if (x.Kind() == XKind::Words)
        std::ranges::copy(m_changes->TakeWords(x), m_data->points.GetRow(0));
    else
        std::ranges::copy(x.Numbers(), m_data->points.GetRow(0));
    std::copy(y.begin(), y.end(), m_data->points.GetRow(1));
    // What belonged to the points before is gone with them.
    m_changes->all = m_changes->all || !m_data->errors.empty() || !m_data->labels.empty();
    m_data->errors.clear();
    m_data->labels.clear();
    if (std::find(m_changes->points.begin(), m_changes->points.end(), m_data.get()) == m_changes->points.end())
        m_changes->points.push_back(m_data.get());
}

void Series::Update(std::span<double const> y) { Update(XValues::Counted(y.size()), y); }

SeriesKind Series::Kind() const { return m_data->kind; }

} // namespace ombrel
