#include "ombrel/chart/Chart.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <string>

namespace ombrel::host {

namespace {

// --- bars ---

void Precipitation(Chart& chart)
{
    chart.Y().Title("precipitation / mm");
    chart.Bars(kMonths, kMeanPrecipitation);
}

void Histogram(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("highest temperature / °C");
    graph.GetAxes()->SetYAxisTitle("days");
    auto& bars = AddCurve<C2DBarCurve>(*graph.AddPlot(it2DBarPlot), "days", look.Colour(1));
    bars.SetBarWidthFactor(1);
    bars.SetAutoBaseline(0);
    bars.SetBorderColour(look.plottingArea);
    bars.Initialise(static_cast<int>(kHighCounts.size()));
    for (int i = 0; i < bars.GetNumPoints(); ++i)
        bars.SetAt(i, { -1.0 + 2 * i, kHighCounts[static_cast<std::size_t>(i)] });
}

void UpAndDown(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetYAxisTitle("difference / ppm");
    CPlot& plot = *graph.AddPlot(it2DBarPlot);
    for (int negative = 0; negative < 2; ++negative) {
        auto& bars = AddCurve<C2DBarCurve>(plot, negative ? "below" : "above", look.Colour(negative ? 0 : 1));
        bars.SetBarWidthFactor(0.8);
        bars.SetAutoBaseline(0);
        bars.SetBorderColour(look.Colour(negative ? 0 : 1));
        SetValues(bars, kCarbonCycle);
        for (int i = 0; i < 12; ++i) {
            if ((kCarbonCycle[static_cast<std::size_t>(i)] < 0) != (negative != 0))
                bars.SetYAt(i, kGap);
        }
    }
}

void HatchedBars(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DBarPlot);
    // The days of each kind of weather in four years, the most frequent first.
    std::multimap<double, char const*, std::greater<>> kinds;
    for (auto const& kind : kWeatherKinds)
        kinds.emplace(std::accumulate(kind.days.begin(), kind.days.end(), 0.0), kind.name);
    int const patterns[] { 18, 2, 24, 32, 39 };
    CStringArray names;
    int i = 0;
    for (auto const& [days, name] : kinds) {
        // A curve for each, so that it has a hatch of its own.
        auto& bar = AddCurve<C2DBarCurve>(plot, name, look.Colour(i));
        bar.SetFillPattern(patterns[i]);
        bar.SetBorderColour(look.Colour(i));
        bar.SetBarWidthFactor(0.7);
        bar.SetAutoBaseline(0);
        bar.Initialise(1);
        bar.SetAt(0, { i + 1.0, days });
        names.Add(name);
        ++i;
    }
    NameTicks(graph, names);
    graph.GetAxes()->SetYAxisTitle("days");
}

// --- clustered bars ---

void YearsSideBySide(Chart& chart)
{
    chart.Y().Title("precipitation / mm");
    int year = kFirstYear;
    for (auto const& months : kPrecipitation)
        chart.Bars(kMonths, months).Name(std::to_string(year++));
}

void HatchedClusters(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetYAxisTitle("temperature / °C");
    auto& plot = static_cast<C2DClusteredBarPlot&>(*graph.AddPlot(it2DClusteredBarPlot));
    ShareMonths(plot);
    plot.SetBorderColour(look.text);
    plot.SetBarWidthFactor(0.8);
    auto& lows = AddCurve<C2DClusteredBarCurve>(plot, "lowest", look.Colour(0));
    lows.SetFillPattern(3);
    SetValues(lows, kRecordLows);
    auto& highs = AddCurve<C2DClusteredBarCurve>(plot, "highest", look.Colour(1));
    SetValues(highs, kRecordHighs);
    graph.GetLegend()->Create(CPoint());
}

// --- stacked bars ---

/// Days of each kind of weather by month.
C2DStackedBarPlot& AddWeather(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    auto& plot = static_cast<C2DStackedBarPlot&>(*graph.AddPlot(it2DStackedBarPlot));
    ShareMonths(plot);
    plot.SetBarWidthFactor(0.8);
    plot.SetBorderColour(look.plottingArea);
    COLORREF const colours[] { look.Colour(1), look.majorGrid, look.Tint(0), look.Colour(0), look.Colour(4) };
    for (std::size_t i = 0; i < kWeatherKinds.size(); ++i) {
        auto& bars = AddCurve<C2DStackedBarCurve>(plot, kWeatherKinds[i].name, colours[i]);
        SetValues(bars, kWeatherKinds[i].days);
    }
    graph.GetLegend()->Create(CPoint());
    return plot;
}

void WeatherStacks(C2DGraph& graph, PictureLook const& look)
{
    AddWeather(graph, look);
    graph.GetAxes()->SetYAxisTitle("days in four years");
}

void WeatherShares(C2DGraph& graph, PictureLook const& look)
{
    AddWeather(graph, look).SetPlotStyle(C2DStackedBarPlot::psPercent);
    graph.GetAxes()->SetYAxisTitle("share of the days / %");
}

void StacksBelowZero(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetYAxisTitle("gain and loss");
    auto& plot = static_cast<C2DStackedBarPlot&>(*graph.AddPlot(it2DStackedBarPlot));
    ShareMonths(plot);
    plot.SetBarWidthFactor(0.7);
    plot.SetBorderColour(look.plottingArea);
    char const* const titles[] { "first", "second", "third", "fourth" };
    for (int i = 0; i < 4; ++i) {
        auto& bars = AddCurve<C2DStackedBarCurve>(plot, titles[i], look.Colour(i));
        Sample(bars, 1, 12, 12, [&](double x) { return (i % 2 ? -1 : 1) * (3 + 2 * std::sin(0.5 * x + i)); });
    }
    graph.GetLegend()->Create(CPoint());
}

constexpr GalleryPicture kPictures[] {
    { "bars-months", "Bars", "Seattle's Novembers are wet, its Julys dry", "Bars: an average month, 2012 to 2015.",
        OMBREL_PICTURE(Precipitation), kWeatherSource },
    { "bars-histogram", "Bars", "Days of 10 to 14 °C are the most common",
        "A histogram: how warm it was on 1461 days in Seattle. Bars have no gaps.", OMBREL_PICTURE(Histogram),
        kWeatherSource },
    { "bars-up-and-down", "Bars", "Carbon dioxide peaks in May and is lowest in October",
        "Bars that stand on zero or hang from it: the season's part.", OMBREL_PICTURE(UpAndDown), kCarbonSource },
    { "bars-hatched", "Bars", "Seattle has as many days of rain as of sun",
        "Hatches besides colours: days of each kind of weather, 2012 to 2015.", OMBREL_PICTURE(HatchedBars),
        kWeatherSource },
    { "clustered-years", "Clustered bars", "In four years no July had 30 mm of rain",
        "Years side by side: precipitation in Seattle, month by month.", OMBREL_PICTURE(YearsSideBySide),
        kWeatherSource },
    { "clustered-hatched", "Clustered bars", "From −7 °C in December to 36 °C in August",
        "Two bars, one hatched: record temperatures in Seattle, 2012 to 2015.", OMBREL_PICTURE(HatchedClusters),
        kWeatherSource },
    { "stacked-weather", "Stacked bars", "From May to September there is more sun than rain",
        "Stacks: kinds of weather in Seattle, 2012 to 2015.", OMBREL_PICTURE(WeatherStacks), kWeatherSource },
    { "stacked-shares", "Stacked bars", "Nearly three of four days in July are sunny", "The same in percent.",
        OMBREL_PICTURE(WeatherShares), kWeatherSource },
    { "stacked-below-zero", "Stacked bars", "Gains are stacked upwards, losses downwards",
        "Positive values are stacked upwards, negative ones downwards.", OMBREL_PICTURE(StacksBelowZero) },
};

} // namespace

std::span<GalleryPicture const> BarPictures() { return kPictures; }

} // namespace ombrel::host
