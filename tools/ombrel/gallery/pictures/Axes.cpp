#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>
#include <numbers>

namespace ombrel::host {

namespace {

using std::numbers::pi;

// --- grids ---

void MajorGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(1);
    graph.GetAxes()->SetXAxisTitle("x");
    graph.GetAxes()->SetYAxisTitle("sin x / x");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "sinc", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    Sample(line, -20, 20, 400, [](double x) { return std::sin(x) / x; });
}

void MinorGrid(C2DGraph& graph, PictureLook const& look)
{
    // Solid major lines and dotted minor ones.
    C2DGrid& grid = *graph.GetGrid();
    grid.SetOn(1);
    grid.SetMajorColour(look.frame);
    grid.SetMajorLineStyle(1);
    grid.SetMinorColour(look.frame);
    grid.SetMinorLineStyle(0);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "oscillation", look.Colour(1));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    Sample(line, 0, 10, 400, [](double x) { return x * std::sin(x); });
}

void FreeLines(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("July 2014");
    graph.GetAxes()->SetYAxisTitle("highest temperature / °C");
    graph.GetGrid()->SetOn(0);
    graph.GetGrid()->SetArbYLinesOn(1);
    graph.GetGrid()->SetArbYLinePosns({ 20.0, 30.0 });
    graph.GetGrid()->SetArbLineColour(look.Colour(1));
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "highs", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    SetValues(line, kJulyHighs);
}

void YearGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(1);
    graph.GetAxes()->SetXTimeUnitsOn(1);
    graph.GetAxes()->SetYAxisTitle("carbon dioxide / ppm");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "Mauna Loa", look.Colour(0));
    line.SetXValMode(C2DCurve::xvDates);
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    SetValues(line, kCarbonDioxide);
    // The middle of each year.
    for (int i = 0; i < line.GetNumPoints(); ++i)
        line.SetXAt(i, COleDateTime(kFirstCarbonYear + i, 7, 1, 0, 0, 0).GetValue());
}

void DayGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(1);
    graph.GetAxes()->SetXTimeUnitsOn(1);
    graph.GetAxes()->SetYAxisTitle("temperature / °C");
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int high = 0; high < 2; ++high) {
        auto& line = AddCurve<C2DLine>(plot, high ? "highest" : "lowest", look.Colour(high));
        line.SetXValMode(C2DCurve::xvDates);
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        SetValues(line, high ? kJulyHighs : kJulyLows, COleDateTime(2014, 7, 1, 0, 0, 0).GetValue());
    }
}

void HourGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(1);
    graph.GetAxes()->SetXTimeUnitsOn(1);
    graph.GetAxes()->SetYAxisTitle("tide / m");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "tide", look.Colour(0));
    line.SetXValMode(C2DCurve::xvDates);
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    // The two largest tides of the moon and the sun, with periods of 12.42 and 12 hours.
    double const start = COleDateTime(2024, 3, 9, 0, 0, 0).GetValue();
    Sample(line, start, start + 2, 400, [&](double date) {
        double const hours = 24 * (date - start);
        return 1.6 * std::cos(2 * pi * hours / 12.42) + 0.6 * std::cos(2 * pi * hours / 12);
    });
}

void LogarithmicGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetYAxisScaleMode(1);
    graph.GetAxes()->SetXAxisTitle("half-lives");
    graph.GetAxes()->SetYAxisTitle("activity / Bq");
    graph.GetGrid()->SetOn(1);
    graph.GetGrid()->SetMinorColour(look.minorGrid);
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int i = 0; i < 2; ++i) {
        auto& line = AddCurve<C2DLine>(plot, i ? "decay" : "noise", look.Colour(i));
        line.SetLineWidth(1 + i);
        line.SetAntialiasingOn(1);
        FixedRandom random(5);
        Sample(line, 0, 12, 241, [&](double x) {
            double const activity = 20'000 * std::exp2(-x) + 2;
            return i ? activity : std::abs(activity + std::sqrt(5 * activity) * random.Normal()) + 0.2;
        });
    }
}

void DoublyLogarithmicGrid(C2DGraph& graph, PictureLook const& look)
{
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisScaleMode(1);
    axes.SetYAxisScaleMode(1);
    axes.SetXAxisTitle("frequency / Hz");
    axes.SetYAxisTitle("amplification");
    graph.GetGrid()->SetOn(1);
    graph.GetGrid()->SetMinorColour(look.minorGrid);
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int order = 1; order <= 3; ++order) {
        auto& line = AddCurve<C2DLine>(plot, "low pass", look.Colour(order - 1));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        line.Initialise(301);
        for (int i = 0; i <= 300; ++i) {
            double const frequency = std::pow(10, i / 100.0);
            line.SetAt(i, { frequency, 1 / std::sqrt(1 + std::pow(frequency / 20, 2 * order)) });
        }
    }
}

void PolarGrid(C2DGraph& graph, PictureLook const& look)
{
    graph.GetPolarGrid()->SetOn(1);
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int curve = 0; curve < 2; ++curve) {
        auto& line = AddCurve<C2DLine>(plot, curve ? "rose" : "cardioid", look.Colour(curve));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        line.Initialise(721);
        for (int i = 0; i <= 720; ++i) {
            double const angle = 2 * pi * i / 720;
            double const radius = curve ? 4 * std::abs(std::cos(2 * angle)) : 2 * (1 - std::cos(angle));
            line.SetAt(i, { radius * std::cos(angle), radius * std::sin(angle) });
        }
    }
}

// --- axes ---

void CrossingAxes(C2DGraph& graph, PictureLook const& look)
{
    CAxes& axes = *graph.GetAxes();
    axes.SetIntersectMode(1);
    axes.SetIntersect({ 0, 0 });
    axes.SetXIntersectLabelOn(0);
    axes.SetYIntersectLabelOn(0);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "cubic", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    Sample(line, -3, 3, 301, [](double x) { return x * x * x - 4 * x; });
}

void NamedTicks(C2DGraph& graph, PictureLook const& look)
{
    CStringArray names;
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "days", look.Colour(2));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    line.SetSymbolType(C2DSymbol::Diamond);
    line.SetSymbolColour(look.Colour(2));
    line.SetSymbolFillColour(look.Colour(2));
    line.SetFillSymbol(1);
    line.Initialise(static_cast<int>(kWeatherKinds.size()));
    for (int i = 0; i < line.GetNumPoints(); ++i) {
        WeatherKind const& kind = kWeatherKinds[static_cast<std::size_t>(i)];
        line.SetAt(i, { i + 1.0, kind.days[0] });
        names.Add(kind.name);
    }
    NameTicks(graph, names);
    graph.GetAxes()->SetLabelsHorizontal(0);
    graph.GetAxes()->SetYAxisTitle("days in January");
}

void PlainTicks(C2DGraph& graph, PictureLook const& look)
{
    CAxes& axes = *graph.GetAxes();
    // Four divisions of the range instead of a tidy step.
    AxisSettings across = axes.GetAxis(CAxes::atX);
    across.rangeMode = CAxes::rmExact;
    across.numMajorTicks = 5;
    across.numMinorTicks = 1;
    across.formatType = kFixedFormat;
    across.labelPrecision = 3;
    axes.SetAxis(CAxes::atX, across);
    AxisSettings up = axes.GetAxis(CAxes::atY);
    up.formatType = kEngineeringFormat;
    up.labelPrecision = 3;
    up.numMajorTicks = 5;
    axes.SetAxis(CAxes::atY, up);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "exponential", look.Colour(3));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    Sample(line, 0, pi, 200, [](double x) { return 1000 * std::exp(x); });
}

void NoAxes(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(0);
    graph.GetAxes()->SetXAxisOn(0);
    graph.GetAxes()->SetYAxisOn(0);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "highs", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    line.SetFillOn(1);
    line.SetFillPattern(kSolidFillPattern);
    line.SetFillColour(look.Tint(0));
    SetValues(line, kJulyHighs);
}

constexpr GalleryPicture kPictures[] {
    { "grid-major", "Grids", "Solid lines at the ticks", "Solid grid lines at the ticks.", OMBREL_PICTURE(MajorGrid) },
    { "grid-minor", "Grids", "Solid major lines, dotted minor ones", "Solid major lines and dotted minor ones.",
        OMBREL_PICTURE(MinorGrid) },
    { "grid-free", "Grids", "Nine days of July 2014 reached 30 degrees",
        "Lines at positions of their own: 20 and 30 degrees in Seattle's July of 2014.", OMBREL_PICTURE(FreeLines),
        kWeatherSource },
    { "grid-years", "Grids", "Carbon dioxide has risen every year", "On an axis of dates, lines follow the calendar.",
        OMBREL_PICTURE(YearGrid), kCarbonSource },
    { "grid-days", "Grids", "The hottest day of July 2014 was its first",
        "Daily temperatures in Seattle, with a line for each week.", OMBREL_PICTURE(DayGrid), kWeatherSource },
    { "grid-hours", "Grids", "A spring tide comes twice a day", "A spring tide over two days.",
        OMBREL_PICTURE(HourGrid) },
    { "grid-logarithmic", "Grids", "A logarithmic axis has a line for each digit",
        "A logarithmic axis has a line for each digit.", OMBREL_PICTURE(LogarithmicGrid) },
    { "grid-log-log", "Grids", "Filters of higher order fall more steeply",
        "Low-pass filters of the first, second and third order.", OMBREL_PICTURE(DoublyLogarithmicGrid) },
    { "grid-polar", "Grids", "A cardioid and a rose of four petals", "Angles run counterclockwise on a polar grid.",
        OMBREL_PICTURE(PolarGrid) },
    { "axes-crossing", "Axes", "The axes cross where both are zero", "The axes cross where both are zero.",
        OMBREL_PICTURE(CrossingAxes) },
    { "axes-names", "Axes", "Names stand at ticks, turned upright", "Texts instead of numbers, turned upright.",
        OMBREL_PICTURE(NamedTicks), {}, AxesChoice::AsBuilt },
    { "axes-divisions", "Axes", "Ten equal divisions, with prefixes and decimals",
        "Equal divisions of just the data's range; labels with three decimals, and with metric prefixes.",
        OMBREL_PICTURE(PlainTicks), {}, AxesChoice::AsBuilt },
    { "axes-none", "Axes", "A curve alone, as in a line of text", "A curve alone, as it stands in a line of text.",
        OMBREL_PICTURE(NoAxes) },
};

} // namespace

std::span<GalleryPicture const> AxesPictures() { return kPictures; }

} // namespace ombrel::host
