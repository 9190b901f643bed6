#include "ombrel/chart/Chart.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>

namespace ombrel::host {

namespace {

// --- areas ---

void StackedAreas(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("wavelength");
    graph.GetAxes()->SetYAxisTitle("intensity");
    auto& plot = static_cast<C2DAreaPlot&>(*graph.AddPlot(it2DAreaPlot));
    plot.SetNumPts(201);
    plot.SetBorderColour(look.plottingArea);
    char const* const titles[] { "first line", "second line", "third line" };
    double const centres[] { 3, 5, 6.5 };
    for (int i = 0; i < 3; ++i) {
        auto& area = AddCurve<C2DAreaCurve>(plot, titles[i], look.Colour(i));
        Sample(area, 0, 10, 201, [&](double x) { return 1 / (1 + (x - centres[i]) * (x - centres[i]) * (2 + i)); });
    }
    graph.GetLegend()->Create(CPoint());
}

void WeatherAreas(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph, 0);
    graph.GetAxes()->SetYAxisTitle("share of the days");
    auto& plot = static_cast<C2DAreaPlot&>(*graph.AddPlot(it2DAreaPlot));
    ShareMonths(plot);
    plot.SetNormalised(1);
    plot.SetBorderColour(look.plottingArea);
    COLORREF const colours[] { look.Colour(1), look.majorGrid, look.Tint(0), look.Colour(0), look.Colour(4) };
    for (std::size_t i = 0; i < kWeatherKinds.size(); ++i) {
        auto& area = AddCurve<C2DAreaCurve>(plot, kWeatherKinds[i].name, colours[i]);
        SetValues(area, kWeatherKinds[i].days);
    }
    graph.GetLegend()->Create(CPoint());
}

void Stream(C2DGraph& graph, PictureLook const& look)
{
    auto& plot = static_cast<C2DAreaPlot&>(*graph.AddPlot(it2DAreaPlot));
    plot.SetNumPts(201);
    plot.SetDrawBorders(0);
    // The first area lifts the others so that their middle stays at zero.
    constexpr int kBands = 5;
    auto const width
        = [](int band, double x) { return 1.2 + std::sin(0.9 * x + 2.1 * band) * std::cos(0.3 * x - band); };
    auto& base = AddCurve<C2DAreaCurve>(plot, "base", look.plottingArea);
    Sample(base, 0, 10, 201, [&](double x) {
        double sum = 0;
        for (int band = 0; band < kBands; ++band)
            sum -= width(band, x) / 2;
        return sum;
    });
    for (int band = 0; band < kBands; ++band) {
        auto& area = AddCurve<C2DAreaCurve>(plot, "band", look.Colour(band));
        Sample(area, 0, 10, 201, [&](double x) { return width(band, x); });
    }
}

// --- error bars ---

void Deviations(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetYAxisTitle("highest temperature / °C");
    auto& bars = AddCurve<C2DErrorBarCurve>(*graph.AddPlot(it2DErrorBarPlot), "deviation", look.text);
    SetValues(bars, kMeanHighs);
    // Bars are given by their whole height.
    for (double const deviation : kHighDeviations)
        bars.GetHeights().Add(2 * deviation);
    auto& means = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "mean", look.Colour(1));
    means.SetLineWidth(2);
    means.SetAntialiasingOn(1);
    means.SetSymbolType(C2DSymbol::Circle);
    means.SetSymbolColour(look.Colour(1));
    means.SetSymbolFillColour(look.Colour(1));
    means.SetFillSymbol(1);
    means.SetSymbolScaleFac(0.8);
    SetValues(means, kMeanHighs);
}

void FittedLine(Chart& chart)
{
    chart.X().Title("distance / m");
    chart.Y().Title("time / s");
    auto const expected = [](double x) { return 2 + 0.8 * x; };
    FixedRandom random(99);
    std::vector<double> const x = Spread(1, 15, 15);
    std::vector<double> const errors = Each(x, [](double at) { return 0.25 + 0.05 * at; });
    std::vector<double> measured;
    for (std::size_t i = 0; i < x.size(); ++i)
        measured.push_back(expected(x[i]) + errors[i] * random.Normal());
    chart.Points(x, measured).Errors(errors).Name("measured");
    std::vector<double> const ends { 0, 16 };
    chart.Line(ends, Each(ends, expected)).Name("expected");
}

// --- texts ---

void LabelledPoints(C2DGraph& graph, PictureLook const& look)
{
    struct Planet {
        char const* name;
        double distance; // astronomical units
        double period; // years
    };
    constexpr Planet kPlanets[] { { "Mercury", 0.387, 0.241 }, { "Venus", 0.723, 0.615 }, { "Earth", 1, 1 },
        { "Mars", 1.524, 1.881 }, { "Jupiter", 5.203, 11.86 }, { "Saturn", 9.537, 29.45 }, { "Uranus", 19.19, 84.02 },
        { "Neptune", 30.07, 164.8 } };
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisScaleMode(1);
    axes.SetYAxisScaleMode(1);
    axes.SetXAxisTitle("distance / astronomical units");
    axes.SetYAxisTitle("period / years");
    auto& points = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "planets", look.Colour(0));
    points.SetSymbolType(C2DSymbol::Circle);
    points.SetSymbolColour(look.Colour(0));
    points.SetSymbolFillColour(look.Colour(0));
    points.SetFillSymbol(1);
    points.SetAntialiasingOn(1);
    points.Initialise(8);
    // Names alternate between the two sides of the line.
    CPlot& texts = *graph.AddPlot(it2DTextPlot);
    auto& above = AddCurve<C2DTextCurve>(texts, "above", look.text);
    auto& below = AddCurve<C2DTextCurve>(texts, "below", look.text);
    above.SetHorzAlignment(C2DTextCurve::alRight);
    below.SetVertAlignment(C2DTextCurve::alTop);
    for (int i = 0; i < 8; ++i) {
        points.SetAt(i, { kPlanets[i].distance, kPlanets[i].period });
        above.GetText().Add(i % 2 ? CString(kPlanets[i].name) + CString("  ") : CString());
        below.GetText().Add(i % 2 ? CString() : CString("  ") + CString(kPlanets[i].name));
    }
    above.SetPoints(points.GetPoints(), 0, 1);
    below.SetPoints(points.GetPoints(), 0, 1);
}

void LabelledBars(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetYAxisTitle("precipitation / mm");
    auto& bars = AddCurve<C2DBarCurve>(*graph.AddPlot(it2DBarPlot), "precipitation", look.Tint(0));
    bars.SetBarWidthFactor(0.8);
    bars.SetAutoBaseline(0);
    bars.SetBorderColour(look.Colour(0));
    SetValues(bars, kMeanPrecipitation);
    auto& texts = AddCurve<C2DTextCurve>(*graph.AddPlot(it2DTextPlot), "values", look.text);
    texts.SetHorzAlignment(C2DTextCurve::alCentre);
    texts.SetFont(CFontData("Arial", CFontData::kNormalWeight, 0, 0.8));
    SetValues(texts, kMeanPrecipitation);
    for (double const value : kMeanPrecipitation)
        texts.GetText().Add(CString(std::to_string(std::lround(value))));
}

void TurnedTexts(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("year");
    AxisSettings y = graph.GetAxes()->GetAxis(CAxes::atY);
    y.title = "carbon dioxide / ppm";
    // The texts hang below the line.
    y.rangeMode = CAxes::rmFixed;
    y.min = 300;
    y.max = 420;
    graph.GetAxes()->SetAxis(CAxes::atY, y);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "Mauna Loa", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    SetValues(line, kCarbonDioxide, kFirstCarbonYear);
    // Where the line passed each ten parts per million.
    auto& texts = AddCurve<C2DTextCurve>(*graph.AddPlot(it2DTextPlot), "years", look.Colour(1));
    texts.SetRotate(1);
    texts.SetHorzAlignment(C2DTextCurve::alCentre);
    texts.SetVertAlignment(C2DTextCurve::alTop);
    texts.SetFont(CFontData("Arial", CFontData::kNormalWeight, 1, 0.8));
    texts.Initialise(6);
    for (int i = 0; i < 6; ++i) {
        auto const year = static_cast<std::size_t>(10 * i + 6);
        texts.SetAt(i, { kFirstCarbonYear + static_cast<double>(year), kCarbonDioxide[year] - 4 });
        texts.GetText().Add(CString(std::to_string(kFirstCarbonYear + static_cast<int>(year))));
    }
}

constexpr GalleryPicture kPictures[] {
    { "areas-stacked", "Areas", "Three spectral lines add up to one broad band", "Three spectral lines and their sum.",
        OMBREL_PICTURE(StackedAreas) },
    { "areas-shares", "Areas", "Nearly three of four days in July are sunny",
        "Kinds of weather in Seattle as shares of one.", OMBREL_PICTURE(WeatherAreas), kWeatherSource },
    { "areas-stream", "Areas", "A stream swells and ebbs on both sides of zero",
        "Without outlines, on a base that keeps the middle at zero.", OMBREL_PICTURE(Stream) },
    { "errors-deviations", "Error bars", "Highs in Seattle spread most in early summer",
        "Mean and standard deviation of daily highs by month.", OMBREL_PICTURE(Deviations), kWeatherSource },
    { "errors-fit", "Error bars", "Most measurements lie within an error of what is expected",
        "Measurements with errors that grow, beside what is expected.", OMBREL_PICTURE(FittedLine) },
    { "texts-points", "Texts", "A planet's year grows with its distance from the sun",
        "The planets: the square of the period grows with the cube of the distance.", OMBREL_PICTURE(LabelledPoints) },
    { "texts-bars", "Texts", "Novembers bring thirteen times the rain of Julys",
        "Values on bars: an average month in Seattle.", OMBREL_PICTURE(LabelledBars), kWeatherSource },
    { "texts-turned", "Texts", "Texts may run upwards", "Texts that run upwards, in italics.",
        OMBREL_PICTURE(TurnedTexts) },
};

} // namespace

std::span<GalleryPicture const> AreaPictures() { return kPictures; }

} // namespace ombrel::host
