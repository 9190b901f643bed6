#include "ombrel/chart/Chart.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>
#include <numbers>

namespace ombrel::host {

namespace {

using std::numbers::pi;

// --- lines ---

void DampedOscillations(Chart& chart)
{
    chart.X().Title("time / s");
    chart.Y().Title("deflection / mm");
    std::vector<double> const t = Spread(0, 20, 500);
    auto const add = [&](char const* name, double damping) {
        chart.Line(t, Each(t, [&](double at) { return 5 * std::exp(-damping * at) * std::cos(1.5 * at); })).Name(name);
    };
    add("weak", 0.05);
    add("medium", 0.15);
    add("strong", 0.4);
}

void CarbonDioxide(Chart& chart)
{
    chart.X().Title("year");
    chart.Y().Title("carbon dioxide / ppm");
    chart.Line(Spread(kFirstCarbonYear, kFirstCarbonYear + 60, 61), kCarbonDioxide).Width(3);
}

void RandomWalks(Chart& chart)
{
    chart.X().Title("step");
    chart.Y().Title("distance");
    std::vector<double> const steps = Spread(0, 1000, 1001);
    FixedRandom random(2012);
    for (char const* const name : { "first", "second", "third", "fourth", "fifth", "sixth" }) {
        double y = 0;
        chart.Line(steps, Each(steps, [&](double) { return y += random.Normal(); })).Name(name).Width(1);
    }
    chart.Legend(LegendPlace::Ends);
}

void ManyPoints(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("time / s");
    graph.GetAxes()->SetYAxisTitle("signal / V");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "signal", look.Colour(0));
    FixedRandom random(1);
    Sample(line, 0, 100, 100'000,
        [&](double t) { return 3 * std::sin(t / 8) + random.Normal() * (1.2 + std::sin(t / 5)); });
}

void Steps(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    char const* const titles[] { "half way", "at the end", "at once" };
    double const values[] { 2, 5, 4, 7, 6, 8 };
    for (int mode = 0; mode < 3; ++mode) {
        auto& line = AddCurve<C2DLine>(plot, titles[mode], look.Colour(mode));
        line.SetPointConnectionMode(C2DLine::cmStepped);
        line.SetStepMode(mode); // smMiddle, smHorizontalFirst, smVerticalFirst
        line.SetLineWidth(2);
        SetValues(line, values);
        for (int i = 0; i < line.GetNumPoints(); ++i)
            line.SetYAt(i, values[i] - 4 * mode);
        line.SetSymbolType(C2DSymbol::Circle);
        line.SetSymbolColour(look.Colour(mode));
        line.SetSymbolFillColour(look.plottingArea);
        line.SetFillSymbol(1);
        line.SetSymbolScaleFac(0.7);
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsLine);
}

void DailyRanges(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("July 2014");
    graph.GetAxes()->SetYAxisTitle("temperature / °C");
    auto& range = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "from lowest to highest", look.Colour(1));
    range.SetPointConnectionMode(C2DLine::cmPairs);
    range.SetLineWidth(6);
    range.Initialise(62);
    for (int i = 0; i < 31; ++i) {
        auto const day = static_cast<std::size_t>(i);
        range.SetAt(2 * i, { i + 1.0, kJulyLows[day] });
        range.SetAt(2 * i + 1, { i + 1.0, kJulyHighs[day] });
    }
}

void Gaps(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("x");
    graph.GetAxes()->SetYAxisTitle("tan x");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "tan x", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    Sample(line, -6, 6, 601, [](double x) { return std::abs(std::tan(x)) < 8 ? std::tan(x) : kGap; });
}

void Lissajous(C2DGraph& graph, PictureLook const& look)
{
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetXAxisRange(-1.2, 1.2);
    axes.SetYAxisRangeMode(CAxes::rmFixed);
    axes.SetYAxisRange(-1.2, 1.2);
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "Lissajous figure", look.Colour(3));
    line.SetAntialiasingOn(1);
    line.SetLineWidth(2);
    line.Initialise(2001);
    for (int i = 0; i <= 2000; ++i) {
        double const t = 2 * pi * i / 2000;
        line.SetAt(i, { std::sin(7 * t), std::cos(9 * t) });
    }
}

void ConstrainedLines(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("x");
    auto& plot = static_cast<C2DLineSeriesPlot&>(*graph.AddPlot(it2DLineSeriesPlot));
    plot.SetNumPts(201);
    plot.SetXMin(-10);
    plot.SetXMax(10);
    for (int order = 0; order < 4; ++order) {
        auto& line = AddCurve<C2DLineSeriesLine>(plot, ("J" + std::to_string(order)).c_str(), look.Colour(order));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        line.Initialise(201);
        for (int i = 0; i < 201; ++i) {
            // Bessel's integral for whole orders.
            double sum = 0;
            for (int k = 0; k < 60; ++k) {
                double const angle = (k + 0.5) * pi / 60;
                sum += std::cos(order * angle - (i * 0.1 - 10) * std::sin(angle)) / 60;
            }
            line.SetYAt(i, sum);
        }
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsLine);
}

// --- line types ---

void LineTypes(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    char const* const titles[] { "type 0", "type 1", "type 2", "type 3", "type 4", "type 5" };
    for (int type = 0; type < 6; ++type) {
        auto& line = AddCurve<C2DLine>(plot, titles[type], look.Colour(type));
        line.SetLineType(type);
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        Sample(line, 0, 10, 200, [&](double x) { return 10 - 1.5 * type + std::sin(x); });
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsLine);
}

void LineWidths(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int width = 1; width <= 8; ++width) {
        auto& line = AddCurve<C2DLine>(plot, "line", look.Colour(0));
        line.SetLineWidth(width);
        line.SetAntialiasingOn(1);
        Sample(line, 0, 10, 200, [&](double x) { return width + 0.4 * std::sin(x); });
    }
    graph.GetAxes()->SetYAxisTitle("line width");
}

void Antialiasing(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(0);
    graph.GetAxes()->SetXAxisOn(0);
    graph.GetAxes()->SetYAxisOn(0);
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int smooth = 0; smooth < 2; ++smooth) {
        for (int ray = 0; ray < 19; ++ray) {
            auto& line = AddCurve<C2DLine>(plot, "ray", look.Colour(smooth));
            line.SetAntialiasingOn(smooth);
            double const angle = pi * ray / 36;
            line.Initialise(2);
            line.SetAt(0, { smooth * 1.1, 0 });
            line.SetAt(1, { smooth * 1.1 + std::cos(angle), std::sin(angle) });
        }
    }
}

// --- symbols ---

void Symbols(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    char const* const titles[] { "circle", "square", "triangle", "inverted", "diamond", "cross", "plus" };
    for (int type = C2DSymbol::Circle; type <= C2DSymbol::Plus; ++type) {
        auto& line = AddCurve<C2DLine>(plot, titles[type - 1], look.Colour(type - 1));
        line.SetSymbolType(static_cast<C2DSymbol::SymbolType>(type));
        line.SetSymbolColour(look.Colour(type - 1));
        line.SetSymbolFillColour(look.Colour(type - 1));
        line.SetFillSymbol(1);
        line.SetAntialiasingOn(1);
        Sample(line, 0, 10, 11, [&](double x) { return 8 - type + 0.5 * std::cos(0.6 * x); });
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsSymbol);
}

void Scatter(Chart& chart)
{
    chart.X().Title("lowest temperature / °C");
    chart.Y().Title("highest temperature / °C");
    chart.Points(kJulyLows, kJulyHighs);
}

void PointClouds(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    FixedRandom random(7);
    char const* const titles[] { "first", "second", "third" };
    CRealPoint const centres[] { { -2, 1 }, { 2, 2 }, { 1, -2 } };
    for (int cloud = 0; cloud < 3; ++cloud) {
        auto& points = AddCurve<C2DLine>(plot, titles[cloud], look.Colour(cloud));
        points.SetPointConnectionMode(C2DLine::cmNone);
        points.SetSymbolType(cloud == 0 ? C2DSymbol::Square : cloud == 1 ? C2DSymbol::Diamond : C2DSymbol::Plus);
        points.SetSymbolColour(look.Colour(cloud));
        points.SetSymbolScaleFac(0.7);
        points.Initialise(250);
        for (int i = 0; i < 250; ++i)
            points.SetAt(i, { centres[cloud].x + random.Normal(), centres[cloud].y + 0.8 * random.Normal() });
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsSymbol);
}

void Pixels(C2DGraph& graph, PictureLook const& look)
{
    auto& points = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "Hénon map", look.Colour(0));
    points.SetPointConnectionMode(C2DLine::cmNone);
    points.SetSymbolType(C2DSymbol::Pixel);
    points.SetSymbolColour(look.Colour(0));
    points.Initialise(6'000);
    CRealPoint p { 0.1, 0.1 };
    for (int i = 0; i < points.GetNumPoints(); ++i) {
        p = { 1 - 1.4 * p.x * p.x + p.y, 0.3 * p.x };
        points.SetAt(i, p);
    }
}

// --- shading ---

void AboveAndBelow(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph, 0);
    graph.GetAxes()->SetYAxisTitle("difference / ppm");
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    for (int below = 0; below < 2; ++below) {
        auto& line = AddCurve<C2DLine>(plot, below ? "below" : "above", look.text);
        line.SetFillOn(1);
        line.SetFillPattern(kSolidFillPattern);
        line.SetFillColour(look.Colour(below ? 0 : 1));
        line.SetBaselineShadeMode(below ? C2DLine::bsBelow : C2DLine::bsAbove);
        line.SetAutoBaseline(0);
        line.SetBaseline(0);
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        // Shading ends at the base line point by point, so there are many.
        Sample(line, 1, 12, 1101, [](double month) {
            auto const i = std::min<std::size_t>(static_cast<std::size_t>(month), 11);
            return std::lerp(kCarbonCycle[i - 1], kCarbonCycle[i], month - static_cast<double>(i));
        });
    }
}

void NormalDistribution(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("standard deviations");
    graph.GetAxes()->SetYAxisTitle("density");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "density", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    line.SetFillOn(1);
    line.SetFillPattern(kSolidFillPattern);
    line.SetFillColour(look.Tint(0));
    line.SetUseFillRange(1);
    line.SetFillRange(-1, 1);
    line.SetFillBoundaryOn(1);
    line.SetBorderColour(look.Colour(0));
    line.SetAutoBaseline(0);
    line.SetBaseline(0);
    Sample(line, -4, 4, 321, [](double x) { return std::exp(-x * x / 2) / std::sqrt(2 * pi); });
}

void Band(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph, 0);
    graph.GetAxes()->SetYAxisTitle("temperature / °C");
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    // Along the highs and back along the lows.
    auto const addBand = [&](char const* title, auto const& highs, auto const& lows, COLORREF colour) {
        auto& band = AddCurve<C2DLine>(plot, title, colour);
        band.SetFillOn(1);
        band.SetFillPattern(kSolidFillPattern);
        band.SetFillColour(colour);
        band.SetShadeMode(C2DLine::shClosed);
        band.Initialise(24);
        for (int i = 0; i < 12; ++i) {
            band.SetAt(i, { i + 1.0, highs[static_cast<std::size_t>(i)] });
            band.SetAt(23 - i, { i + 1.0, lows[static_cast<std::size_t>(i)] });
        }
    };
    addBand("records", kRecordHighs, kRecordLows, look.Tint(1));
    addBand("means", kMeanHighs, kMeanLows, look.Colour(1));
    graph.GetLegend()->Create(CPoint());
}

void HatchedShading(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    int const patterns[] { 3, 2, 4 };
    for (int i = 0; i < 3; ++i) {
        auto& line = AddCurve<C2DLine>(plot, "hatched", look.Colour(i));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        line.SetFillOn(1);
        line.SetFillPattern(patterns[i]);
        line.SetFillColour(look.Colour(i));
        line.SetAutoBaseline(0);
        line.SetBaseline(0);
        Sample(line, 0, 10, 201, [&](double x) { return std::exp(-(x - 2.5 - 2.5 * i) * (x - 2.5 - 2.5 * i)); });
    }
}

constexpr GalleryPicture kPictures[] {
    { "lines-oscillations", "Lines", "Damped oscillations come to rest",
        "Smooth lines two pixels wide, and a legend that shows them.", OMBREL_PICTURE(DampedOscillations) },
    { "lines-carbon-dioxide", "Lines", "Carbon dioxide rose by 96 ppm in 60 years",
        "Yearly means at Mauna Loa, 1959 to 2019.", OMBREL_PICTURE(CarbonDioxide), kCarbonSource },
    { "lines-walks", "Lines", "Random walks stray far from where they began",
        "Thin lines in the colours of the palette.", OMBREL_PICTURE(RandomWalks) },
    { "lines-many-points", "Lines", "A hundred thousand points, and no peak is lost",
        "However many points there are, drawing costs one pass over them.", OMBREL_PICTURE(ManyPoints) },
    { "lines-steps", "Lines", "Steps rise half way, at the end, or at once",
        "Stepped lines: half way between two points, at the second or at the first of them.", OMBREL_PICTURE(Steps) },
    { "lines-pairs", "Lines", "July nights are twelve degrees cooler than days",
        "Pairs of points, joined: temperatures of each day of July 2014 in Seattle.", OMBREL_PICTURE(DailyRanges),
        kWeatherSource },
    { "lines-gaps", "Lines", "Where a value is missing, the line is broken", "The tangent without its poles.",
        OMBREL_PICTURE(Gaps) },
    { "lines-parametric", "Lines", "A curve may cross itself", "Points may come in any order.",
        OMBREL_PICTURE(Lissajous) },
    { "lines-constrained", "Lines", "Bessel functions of order 0 to 3", "Curves that share their x values.",
        OMBREL_PICTURE(ConstrainedLines) },
    { "types-dashes", "Line types", "Six line types", "From solid to long dashes.", OMBREL_PICTURE(LineTypes) },
    { "types-widths", "Line types", "Lines of one to eight pixels", "Widths are those of a screen, on paper too.",
        OMBREL_PICTURE(LineWidths) },
    { "types-smooth", "Line types", "Plain lines and smooth ones",
        "Lines of one pixel, drawn pixel by pixel on the left and anti-aliased on the right.",
        OMBREL_PICTURE(Antialiasing) },
    { "symbols-all", "Symbols", "Seven symbols", "Every symbol, filled, on a line.", OMBREL_PICTURE(Symbols) },
    { "symbols-scatter", "Symbols", "Warm days follow warm nights, but not closely",
        "Highest over lowest temperature of each day of July 2014 in Seattle.", OMBREL_PICTURE(Scatter),
        kWeatherSource },
    { "symbols-clouds", "Symbols", "Open symbols tell overlapping clouds apart",
        "Points of three normal distributions.", OMBREL_PICTURE(PointClouds) },
    { "symbols-pixels", "Symbols", "The Hénon map, a pixel for each point", "Six thousand points.",
        OMBREL_PICTURE(Pixels) },
    { "shading-above-below", "Shading", "Carbon dioxide peaks in May and is lowest in October",
        "The season's part, shaded by its sign.", OMBREL_PICTURE(AboveAndBelow), kCarbonSource },
    { "shading-range", "Shading", "Two thirds lie within one standard deviation",
        "The normal distribution, shaded from -1 to 1 with upright ends.", OMBREL_PICTURE(NormalDistribution) },
    { "shading-band", "Shading", "Record highs lie ten degrees above usual ones",
        "Closed shapes: mean and record temperatures, 2012 to 2015.", OMBREL_PICTURE(Band), kWeatherSource },
    { "shading-hatched", "Shading", "Curves under a hatch are seen through it", "Three bells with a hatch each.",
        OMBREL_PICTURE(HatchedShading) },
};

} // namespace

std::span<GalleryPicture const> LinePictures() { return kPictures; }

} // namespace ombrel::host
