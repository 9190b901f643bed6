#include "ombrel/layout/Description.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/TidyNumbers.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/layout/Titles.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// From which value to which; empty at first.
struct Extent {
    double min = kInfinity;
    double max = -kInfinity;
    bool IsEmpty() const { return !(min <= max); }
    void Add(double low, double high)
    {
        if (low <= high && !IsGap(low) && !IsGap(high)) {
            min = std::min(min, low);
            max = std::max(max, high);
        }
    }
};

/// One axis as a sentence names it.
struct AxisWords {
    std::string title;
    /// Data units.
    Extent range {};
    bool isLogarithmic = false;
    bool hasDates = false;
    /// In place of numbers, what stands along the axis; how many there are, more than have labels perhaps.
    std::vector<std::string> words {};
    std::size_t wordCount = 0;
};

/// What the plots of a graph are, in order.
struct Contents {
    std::vector<std::string> kinds;
    std::vector<std::string> names;
    std::size_t series = 0;
    void AddKind(std::string_view kind)
    {
        if (!kind.empty() && std::find(kinds.begin(), kinds.end(), kind) == kinds.end())
            kinds.emplace_back(kind);
    }
};

std::string Listed(std::vector<std::string> const& words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 < words.size() ? ", " : " and ") + words[i];
    return text;
}

std::string Fixed(double value, int decimals)
{
    char digits[400];
    auto const end = std::to_chars(digits, std::end(digits), value, std::chars_format::fixed, decimals).ptr;
    std::string text = WithoutZeros(std::string(digits, end));
    std::size_t const first = text.starts_with('-') ? 1 : 0;
    std::size_t const point = std::min(text.find('.'), text.size());
    // Years have no comma.
    constexpr std::size_t kPlain = 4;
    if (point - first > kPlain)
        text = GroupThousands(std::move(text));
    return text == "-0" ? "0" : text;
}

/// The number to a thousandth of the span; without one, to four digits.
std::string Rounded(double value, double span)
{
    constexpr double kMost = 1e12;
    constexpr double kLeast = 1e-6;
    double const size = std::max(std::abs(value), span);
    if (size >= kMost || (size < kLeast && size > 0.0)) {
        char digits[64];
        std::string text(digits, std::to_chars(digits, std::end(digits), value, std::chars_format::general, 4).ptr);
        std::size_t const exponent = text.find("e-0");
        return exponent == std::string::npos ? text : text.erase(exponent + 2, 1);
    }
    double const unit = span > 0.0 ? span / 1000.0 : std::abs(value) / 10000.0;
    int const exponent = unit > 0.0 ? static_cast<int>(std::ceil(std::log10(unit) - 1e-9)) : 0;
    double const step = std::pow(10.0, std::max(exponent, 0));
    return Fixed(exponent > 0 ? std::round(value / step) * step : value, std::max(-exponent, 0));
}

/// The date without a zero before the day.
std::string DateText(double days, char const* format)
{
    std::string const text = COleDateTime(days).Format(format).ToUtf8();
    return text.starts_with('0') ? text.substr(1) : text;
}

std::string FromTo(std::string const& from, std::string const& to)
{
    return from == to ? " at " + from : " from " + from + " to " + to;
}

/// Dates as a person writes them: to the month over years, and with times within days.
std::string DatesPhrase(AxisWords const& axis)
{
    std::string const title = TitleWithoutDate(axis.title, axis.range.min);
    std::string const name = title.empty() ? "dates" : title;
    constexpr double kYears = 3.0 * 365.0;
    constexpr double kDays = 3.0;
    auto const [min, max] = axis.range;
    double const span = max - min;
    bool const isWhole = span >= kDays || (min == std::floor(min) && max == std::floor(max));
    if (isWhole || std::floor(min) != std::floor(max)) {
        char const* const format = span >= kYears ? "%B %Y" : isWhole ? "%d %B %Y" : "%d %B %Y %H:%M";
        return name + FromTo(DateText(min, format), DateText(max, format));
    }
    auto const time = [](double days) { return COleDateTime(days).Format("%H:%M").ToUtf8(); };
    return name + " on " + DateText(min, "%d %B %Y") + FromTo(time(min), time(max));
}

constexpr std::size_t kMostListed = 6;

std::string WordsPhrase(AxisWords const& axis)
{
    std::string const title = axis.title;
    if (axis.wordCount > axis.words.size())
        return (title.empty() ? "" : title + " in ") + std::to_string(axis.wordCount) + " categories";
    if (axis.words.size() > kMostListed)
        return (title.empty() ? "categories" : title) + FromTo(axis.words.front(), axis.words.back());
    return (title.empty() ? "" : title + " ") + Listed(axis.words);
}

std::string Phrase(AxisWords const& axis, std::string const& fallback)
{
    if (!axis.words.empty())
        return WordsPhrase(axis);
    std::string name = axis.title.empty() ? fallback : axis.title;
    Extent const& range = axis.range;
    if (range.IsEmpty())
        return name;
    double const span = range.max - range.min;
    if (axis.hasDates)
        return DatesPhrase(axis);
    if (axis.isLogarithmic)
        return name + FromTo(Rounded(range.min, 0.0), Rounded(range.max, 0.0)) + " on a logarithmic scale";
    return name + FromTo(Rounded(range.min, span), Rounded(range.max, span));
}

AxisWords WordsOf(AxisSettings const& axis, Extent drawn)
{
    AxisWords words { TitleWithoutPower(axis.title.ToUtf8()), drawn };
    words.isLogarithmic = axis.scaleMode != 0;
    words.hasDates = axis.timeUnitsOn != 0;
    if (!drawn.IsEmpty()) {
        // What lies beyond the axis is not to be seen.
        words.range.min = std::max(drawn.min, std::min(axis.min, axis.max));
        words.range.max = std::min(drawn.max, std::max(axis.min, axis.max));
    }
    if (words.isLogarithmic && !words.range.IsEmpty())
        words.range = { std::pow(10.0, words.range.min), std::pow(10.0, words.range.max) };
    return words;
}

std::string_view KindOf(CPlot const& plot, CPlotComponent const& curve, bool isPolar)
{
    switch (plot.GetItemType()) {
    case it2DLinePlot:
    case it2DLineSeriesPlot: {
        auto const* const line = DynamicDowncast<C2DLine>(&curve);
        bool const isMarks = line && line->GetPointConnectionMode() == C2DLine::cmNone;
        return isPolar ? "polar chart" : isMarks ? "scatter plot" : "line chart";
    }
    case it2DBarPlot: {
        auto const* const bars = DynamicDowncast<C2DBarCurve>(&curve);
        return bars && bars->GetBarWidthFactor() >= 1.0 ? "histogram" : "bar chart";
    }
    case it2DClusteredBarPlot:
        return "bar chart";
    case it2DStackedBarPlot:
        return "stacked bar chart";
    case it2DAreaPlot:
        return "area chart";
    case it2DContourPlot:
        return "contour map";
    case itSurfacePlot:
    case it3DIrregularSurfacePlot:
        return "3D surface";
    case it3DBarPlot:
    case it3DIrregBarPlot:
        return "3D bar chart";
    case it3DLinePlot:
        return "3D line chart";
    case it3DLineArrayPlot:
    case it3DIrregLineArrayPlot:
        return "3D series chart";
    case it3DTextPlot:
    case it3DScatterPlot:
        return "3D scatter plot";
    case it3DWireframePlot:
        return "3D wireframe";
    case it3DObjectPlot:
        return "3D picture of solid objects";
    case it3DMeshPlot:
        return "3D mesh";
    default:
        // Error bars and texts go with the points that they belong to.
        return {};
    }
}

Contents ContentsOf(CPlotArray const& plots, bool isPolar)
{
    Contents contents;
    for (CPlot const* const plot : plots.GetPlots()) {
        for (CPlotComponent const* const curve : plot->GetComponents()) {
            std::string_view const kind = KindOf(*plot, *curve, isPolar);
            contents.AddKind(kind);
            if (kind.empty())
                continue;
            ++contents.series;
            std::string const name = OneLine(curve->GetTitle().ToUtf8());
            bool const isNamed = !name.empty() && name != FirstTitle(*curve);
            if (isNamed && std::find(contents.names.begin(), contents.names.end(), name) == contents.names.end())
                contents.names.push_back(name);
        }
    }
    // A plot of error bars or texts alone.
    if (contents.kinds.empty())
        contents.AddKind(isPolar ? "polar chart" : "chart");
    return contents;
}

/// The kinds with what they end with said once: "bar and line chart".
std::string KindWords(std::vector<std::string> kinds)
{
    constexpr std::string_view kChart = " chart";
    auto const isChart = [&](std::string const& kind) { return kind.ends_with(kChart); };
    if (std::all_of(kinds.begin(), kinds.end(), isChart)) {
        for (std::size_t i = 0; i + 1 < kinds.size(); ++i)
            kinds[i].erase(kinds[i].size() - kChart.size());
    }
    std::string text = Listed(kinds);
    if (text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text;
}

/// What is shown; a name that an axis bears is not said twice.
std::string SeriesWords(Contents const& contents, std::vector<AxisWords> const& axes)
{
    std::vector<std::string> const& names = contents.names;
    auto const isOfAxis = [&](AxisWords const& axis) { return names.size() == 1 && axis.title == names.front(); };
    if (contents.series == 0)
        return " without data";
    if (contents.series == 1 && (names.empty() || std::any_of(axes.begin(), axes.end(), isOfAxis)))
        return "";
    if (names.size() == contents.series && names.size() <= kMostListed)
        return " of " + Listed(names);
    std::string text = " of " + std::to_string(contents.series) + " series";
    return names.size() == contents.series ? text + FromTo(names.front(), names.back()) : text;
}

std::string Sentence(CGraph const& graph, Contents const& contents, std::vector<AxisWords> const& axes)
{
    std::string text = KindWords(contents.kinds);
    if (!graph.GetTitle().IsEmpty() && graph.GetTitle() != CString(kUntitled))
        text += " “" + OneLine(graph.GetTitle().ToUtf8()) + "”";
    text += SeriesWords(contents, axes);
    if (contents.series == 0)
        return text + ".";
    constexpr std::string_view kNames[] { "x", "y", "z" };
    for (std::size_t i = 0; i < axes.size(); ++i) {
        bool const namesValues = i == 1 && axes.size() == 2 && !contents.names.empty();
        std::string const fallback = namesValues ? "values" : std::string(kNames[i]);
        text += (i == 0 ? ": " : ", ") + Phrase(axes[i], fallback);
    }
    return text + ".";
}

/// Of the points that are drawn, without the room that bars take up beside theirs unless they touch.
Extent DrawnX(C2DPlot& plot)
{
    Extent extent;
    bool const hasBars = plot.GetItemType() == it2DBarPlot || plot.GetItemType() == it2DClusteredBarPlot
        || plot.GetItemType() == it2DStackedBarPlot;
    for (CPlotComponent const* const component : plot.GetComponents()) {
        auto const* const curve = DynamicDowncast<C2DCurve>(component);
        if (!curve || !curve->HasRange())
            continue;
        double min = 0.0;
        double max = 0.0;
        if (hasBars && KindOf(plot, *curve, false) != "histogram")
            curve->C2DCurve::GetXRange(min, max);
        else
            curve->GetXRange(min, max);
        extent.Add(min, max);
    }
    return extent;
}

std::string DescribeFlat(C2DGraph& graph)
{
    bool const isPolar = graph.GetPolarGrid()->IsOn() != 0;
    Contents const contents = ContentsOf(*graph.GetPlotArray(), isPolar);
    Extent x;
    Extent y;
    std::optional<AxisWords> heights;
    for (CPlot* const one : graph.GetPlotArray()->GetPlots()) {
        auto* const plot = DynamicDowncast<C2DPlot>(one);
        if (!plot)
            continue;
        Extent const along = DrawnX(*plot);
        x.Add(along.min, along.max);
        Extent up;
        plot->GetYRange(up.min, up.max);
        y.Add(up.min, up.max);
        for (CPlotComponent const* const component : plot->GetComponents()) {
            if (auto const* const contours = DynamicDowncast<C2DContourCurve>(component)) {
                if (!heights)
                    heights.emplace().title = OneLine(contours->GetTitle().ToUtf8());
                Extent z;
                contours->GetSurface()->GetZRange(z.min, z.max);
                heights->range.Add(z.min, z.max);
            }
        }
    }
    if (isPolar) {
        AxisWords radius { "radius",
            { 0.0, std::max({ std::abs(x.min), std::abs(x.max), std::abs(y.min), std::abs(y.max) }) } };
        return Sentence(graph, contents, { radius });
    }
    AxisSettings const& xAxis = graph.GetAxes()->GetAxis(CAxes::atX);
    std::vector<AxisWords> axes { WordsOf(xAxis, x), WordsOf(graph.GetAxes()->GetAxis(CAxes::atY), y) };
    axes[0].words = WordsAlong(xAxis);
    axes[0].wordCount = axes[0].words.empty()
        ? 0
        : static_cast<std::size_t>(std::max(axes[0].range.max, static_cast<double>(axes[0].words.size())));
    if (heights)
        axes.push_back(*heights);
    return Sentence(graph, contents, axes);
}

std::string DescribeScene(C3DGraph& graph)
{
    Contents const contents = ContentsOf(*graph.GetPlotArray(), false);
    Extent extents[3];
    for (CPlot* const one : graph.GetPlotArray()->GetPlots()) {
        auto* const plot = DynamicDowncast<C3DPlot>(one);
        if (!plot)
            continue;
        Extent found[3];
        plot->GetXRange(found[0].min, found[0].max);
        plot->GetYRange(found[1].min, found[1].max);
        plot->GetZRange(found[2].min, found[2].max);
        for (std::size_t i = 0; i < 3; ++i)
            extents[i].Add(found[i].min, found[i].max);
    }
    std::vector<AxisWords> axes;
    for (std::size_t i = 0; i < 3; ++i)
        axes.push_back({ TitleWithoutPower(OneLine(graph.GetAxes()[i]->GetTitle().ToUtf8())), extents[i] });
    return Sentence(graph, contents, axes);
}

} // namespace

std::vector<std::string> WordsAlong(AxisSettings const& axis)
{
    int const count = axis.arbitraryTicks.GetSize();
    if (axis.labelMode != AxisSettings::lmArbitraryStrings || axis.labels.GetSize() != count)
        return {};
    std::vector<std::string> words;
    for (int i = 0; i < count; ++i) {
        double const tick = axis.arbitraryTicks[i];
        if (tick < 1.0 || tick != std::floor(tick))
            return {};
        words.push_back(axis.labels[i].ToUtf8());
    }
    return words;
}

std::string FirstTitle(CPlotComponent const& curve)
{
    CRuntimeClass const& kind = curve.GetRuntimeClass();
    std::unique_ptr<CObject> const fresh = kind.create ? kind.create() : nullptr;
    auto const* const component = DynamicDowncast<CPlotComponent>(fresh.get());
    return component ? component->GetTitle().ToUtf8() : std::string();
}

std::string TitleWithoutDate(std::string const& title, double days)
{
    constexpr std::size_t kLongestDate = 12;
    std::size_t const behind = title.rfind(" (");
    std::size_t const begin = behind == std::string::npos ? 0 : behind;
    bool const hasYear = title.find(COleDateTime(days).Format("%Y").ToUtf8(), begin) != std::string::npos;
    return hasYear && title.size() - begin <= kLongestDate + 3 ? title.substr(0, begin) : title;
}

std::string DescribeGraph(CAnnotatedGraph& graph)
{
    if (auto* const flat = DynamicDowncast<C2DGraph>(&graph))
        return DescribeFlat(*flat);
    if (auto* const scene = DynamicDowncast<C3DGraph>(&graph))
        return DescribeScene(*scene);
    return {};
}

} // namespace ombrel
