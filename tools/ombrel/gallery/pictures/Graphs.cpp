#include "ombrel/chart.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>
#include <numbers>
#include <span>
#include <string>

namespace ombrel::host {

namespace {

using std::numbers::pi;

/// Adds a curve of the plot's kind that takes its points from a table: these.
template <typename Curve>
Curve& AddCurve(CPlot& plot, char const* title, COLORREF colour, std::span<double const> x, std::span<double const> y)
{
    auto& curve = static_cast<Curve&>(*plot.CreateCurve());
    curve.SetTitle(title);
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColour(colour);
    curve.Initialise(static_cast<int>(x.size()));
    for (std::size_t i = 0; i < x.size(); ++i)
        curve.SetAt(static_cast<int>(i), { x[i], y[i] });
    return curve;
}

/// A smooth line of two pixels in a plot of its own.
C2DLine& AddLine(C2DGraph& graph, COLORREF colour, std::span<double const> x, std::span<double const> y)
{
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "", colour, x, y);
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    return line;
}

void Fill(C2DLine& line, COLORREF colour)
{
    line.SetFillOn(1);
    line.SetFillPattern(kSolidFillPattern);
    line.SetFillColour(colour);
}

void PolesAtPi(GraphPicture& picture)
{
    std::vector<double> const x = Spread(-1.5 * pi, 1.5 * pi, 601);
    C2DGraph& graph = picture.Graph();
    picture.KeepAxes();
    AddLine(graph, picture.GetLook().Colour(0), x,
        Each(x, [](double at) { return std::abs(std::tan(at)) < 8 ? std::tan(at) : kGap; }));
    AxisSettings across = graph.GetAxes()->GetAxis(CAxes::atX);
    across.rangeMode = CAxes::rmFixed;
    across.min = x.front();
    across.max = x.back();
    across.tickMode = CAxes::tmStep;
    across.tickMin = x.front();
    across.tickDel = pi / 2;
    across.numMinorTicks = 0;
    across.labelMode = CAxes::lmStrings;
    across.labels = { "−3π/2", "−π", "−π/2", "0", "π/2", "π", "3π/2" };
    across.title = "x";
    graph.GetAxes()->SetAxis(CAxes::atX, across);
    AxisSettings up = graph.GetAxes()->GetAxis(CAxes::atY);
    up.rangeMode = CAxes::rmFixed;
    up.min = -8;
    up.max = 8;
    up.tickMode = CAxes::tmStep;
    up.tickMin = -8;
    up.tickDel = 4;
    up.title = "tan x";
    graph.GetAxes()->SetAxis(CAxes::atY, up);
}

void NormalDistribution(GraphPicture& picture)
{
    PictureLook const& look = picture.GetLook();
    std::vector<double> const x = Spread(-4, 4, 321);
    auto& line = AddLine(picture.Graph(), look.Colour(0), x,
        Each(x, [](double at) { return std::exp(-at * at / 2) / std::sqrt(2 * pi); }));
    Fill(line, look.Tint(0));
    line.SetUseFillRange(1);
    line.SetFillRange(-1, 1);
    line.SetFillBoundaryOn(1);
    line.SetBorderColour(look.Colour(0));
    line.SetAutoBaseline(0);
    line.SetBaseline(0);
    picture.Graph().GetAxes()->SetXAxisTitle("standard deviations");
    picture.Graph().GetAxes()->SetYAxisTitle("density");
}

void Bands(GraphPicture& picture)
{
    PictureLook const& look = picture.GetLook();
    C2DGraph& graph = picture.Graph();
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    // Along the highs and back along the lows.
    auto const addBand = [&](char const* title, auto const& highs, auto const& lows, COLORREF colour) {
        std::vector<double> months = Spread(1, 12, 12);
        std::vector<double> const back = Spread(12, 1, 12);
        std::vector<double> values(highs.begin(), highs.end());
        months.insert(months.end(), back.begin(), back.end());
        values.insert(values.end(), lows.rbegin(), lows.rend());
        auto& band = AddCurve<C2DLine>(plot, title, colour, months, values);
        Fill(band, colour);
        band.SetShadeMode(C2DLine::shClosed);
    };
    addBand("records", kRecordHighs, kRecordLows, look.Tint(1));
    addBand("means", kMeanHighs, kMeanLows, look.Colour(1));
    graph.GetAxes()->SetXAxisTitle("month");
    graph.GetAxes()->SetYAxisTitle("temperature / °C");
    graph.GetLegend()->Create(CPoint());
}

void Stream(GraphPicture& picture)
{
    PictureLook const& look = picture.GetLook();
    auto& plot = static_cast<C2DAreaPlot&>(*picture.Graph().AddPlot(it2DAreaPlot));
    std::vector<double> const x = Spread(0, 10, 201);
    plot.SetNumPts(201);
    plot.SetDrawBorders(0);
    // The first area lifts the others so that their middle stays at zero.
    constexpr int kBands = 5;
    auto const width
        = [](int band, double at) { return 1.2 + std::sin(0.9 * at + 2.1 * band) * std::cos(0.3 * at - band); };
    AddCurve<C2DAreaCurve>(plot, "base", look.plottingArea, x, Each(x, [&](double at) {
        double sum = 0;
        for (int band = 0; band < kBands; ++band)
            sum -= width(band, at) / 2;
        return sum;
    }));
    for (int band = 0; band < kBands; ++band)
        AddCurve<C2DAreaCurve>(plot, "band", look.Colour(band), x, Each(x, [&](double at) { return width(band, at); }));
}

void Hatches(GraphPicture& picture)
{
    PictureLook const& look = picture.GetLook();
    C2DGraph& graph = picture.Graph();
    graph.GetGrid()->SetOn(0);
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisOn(0);
    axes.SetYAxisOn(0);
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetXAxisRange(-0.4, 4.7);
    CPlot& bars = *graph.AddPlot(it2DBarPlot);
    CPlot& texts = *graph.AddPlot(it2DTextPlot);
    int i = 0;
    for (int const pattern : C2DLine::GetPatternIDs()) {
        // Four rows of five: bars with a base line each, and the number at the right.
        double const column[] { static_cast<double>(i % 5) };
        double const row = 3.0 - i / 5; // NOLINT(bugprone-integer-division): whole rows
        auto& bar = AddCurve<C2DBarCurve>(bars, "hatch", look.Colour(0), column, std::vector { row + 0.75 });
        bar.SetFillPattern(pattern);
        bar.SetBorderColour(look.text);
        bar.SetBarWidthFactor(0.65);
        bar.SetAutoBaseline(0);
        bar.SetBaseline(row);
        auto& number = AddCurve<C2DTextCurve>(
            texts, "number", look.text, std::vector { column[0] + 0.37 }, std::vector { row + 0.375 });
        number.SetVertAlignment(C2DTextCurve::alCentre);
        number.GetText().Add(CString(std::to_string(pattern)));
        ++i;
    }
}

void Divisions(GraphPicture& picture)
{
    picture.KeepAxes();
    CAxes& axes = *picture.Graph().GetAxes();
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
    std::vector<double> const x = Spread(0, pi, 200);
    AddLine(picture.Graph(), picture.GetLook().Colour(3), x, Each(x, [](double at) { return 1000 * std::exp(at); }));
}

void NoAxes(GraphPicture& picture)
{
    C2DGraph& graph = picture.Graph();
    graph.GetGrid()->SetOn(0);
    graph.GetAxes()->SetXAxisOn(0);
    graph.GetAxes()->SetYAxisOn(0);
    Fill(AddLine(graph, picture.GetLook().Colour(0), Spread(1, 31, 31), kJulyHighs), picture.GetLook().Tint(0));
}

constexpr GalleryPicture kPictures[] {
    { "lines-gaps", "Lines", "The tangent has a pole at each odd multiple of π/2",
        "Missing values break the line; labels are texts at ticks of their own.", OMBREL_PICTURE(PolesAtPi),
        "Computed: tan x" },
    { "shading-range", "Shading", "Two thirds lie within one standard deviation",
        "The normal distribution, shaded from −1 to 1 with upright ends.", OMBREL_PICTURE(NormalDistribution),
        "Computed: exp(−x²/2) / √(2π)" },
    { "shading-band", "Shading", "Record highs lie ten degrees above usual ones",
        "Closed shapes: mean and record temperatures, 2012 to 2015.", OMBREL_PICTURE(Bands), kWeatherSource },
    { "areas-stream", "Areas", "A stream swells and ebbs on both sides of zero",
        "Without outlines, on a base that keeps the middle at zero.", OMBREL_PICTURE(Stream),
        "Computed: 1.2 + sin(0.9x + 2.1i) cos(0.3x − i)" },
    { "hatches-all", "Hatches", "Twenty fill patterns, and 6 is solid", "The patterns on offer, with their numbers.",
        OMBREL_PICTURE(Hatches) },
    { "axes-divisions", "Axes", "An exponential grows to 23 times from 0 to π",
        "Equal divisions of just the data's range; labels with three decimals, and with metric prefixes.",
        OMBREL_PICTURE(Divisions), "Computed: 1000 exp x" },
    { "axes-none", "Axes", "July 2014 began and ended hot", "A curve alone, as it stands in a line of text.",
        OMBREL_PICTURE(NoAxes), kWeatherSource },
};

} // namespace

std::span<GalleryPicture const> GraphPictures() { return kPictures; }

} // namespace ombrel::host
