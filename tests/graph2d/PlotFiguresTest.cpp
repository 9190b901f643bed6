// Every primitive of small plots against figures worked out by hand.

#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "tests/graph2d/GraphFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

namespace ombrel {
namespace {

using test::AddCurve;
using test::Points;
using test::Values;
using test::XRange;

/// A unit is ten pixels: (x, y) lies at (5 + 10 x, 95 − 10 y).
constexpr CSize kLarge(100, 100);
/// A unit is two pixels wide and one high: (x, y) lies at (1 + 2 x, 8 − y).
constexpr CSize kTiny(20, 9);

/// A graph of nothing but plots, whose axes run from 0 to 9 (in the tiny size, y to 8).
struct Plotting : C2DGraph {
    CSize size;
    explicit Plotting(CSize of = kLarge)
        : C2DGraph(1)
        , size(of)
    {
        test::FixAxes(*GetAxes(), 9, of == kTiny ? 8 : 9);
        GetAxes()->SetXAxisOn(0);
        GetAxes()->SetYAxisOn(0);
        GetGrid()->SetOn(0);
        SetGraphFrameOn(0);
    }
    template <typename Plot> Plot& Add(ItemType type) { return test::AddPlot<Plot>(*this, type); }
};

/// A line in black.
C2DLine& AddLine(C2DGraph& graph, Points const& points)
{
    C2DLine& line = test::AddLine(graph, points);
    line.SetColour(0);
    return line;
}

std::string Drawn(Plotting& graph, bool printing = false)
{
    return test::Figures(test::Record(graph, graph.size, printing));
}

std::string Coloured(std::string const& what, COLORREF colour)
{
    return what + (colour ? "#" + std::to_string(colour) : "");
}

/// Round a rectangle from its top-left corner on.
std::string Outline(CRect const& r, COLORREF colour = 0)
{
    CPoint const corners[] = { r.TopLeft(), { r.right, r.top }, r.BottomRight(), { r.left, r.bottom }, r.TopLeft() };
    return Coloured(test::Figure(corners), colour);
}

TEST(LineFigures, RunThroughTheirPointsBrokenAtGaps)
{
    struct Case {
        Points points;
        int type;
        char const* drawn;
    };
    Case const cases[] = {
        { { { 0, 0 }, { 3, 6 }, { 9, 3 } }, 0, "5,95-35,35-95,65" },
        { { { 9, 0 }, { 5, 4 }, { 0, 1 } }, 0, "95,95-55,55-5,85" },
        { { { kGap, 0 }, { 1, 1 }, { 2, 2 }, { 3, kGap } }, 0, "15,85-25,75" },
        { { { 1, 1 }, { 2, 2 }, { 3, kGap }, { 4, 4 }, { kGap, 5 }, { 6, 6 }, { 7, 7 } }, 0,
            "15,85-25,75  65,35-75,25" },
        { { { 4, 4 } }, 0, "" },
        // Along a column all the way and to its last point: the nearer end first.
        { { { 4, 1 }, { 4, 7 }, { 4, 3 }, { 4, 5 } }, 0, "45,85-45,25-45,45" },
        { { { 4, 4 }, { 4, 7 }, { 4, 3 }, { 4, 5 } }, 0, "45,55-45,65-45,25-45,45" },
        { { { 4, 5 }, { 4, 7 }, { 4, 3 }, { 4, 4 }, { 6, 4 } }, 0, "45,45-45,25-45,65-45,55-65,55" },
        { { { 4, 4 }, { 4, 4 } }, 0, "" },
        // Dashes go on in one direction, turn at a corner, and overlap into a solid line where they turn for long.
        { { { 0, 0 }, { 4, 1 }, { 4, 1.5 }, { 4, 2 }, { 4, 1.7 }, { 9, 1 } }, 1,
            "[8,2]  5,95-45,85-45,75-45,78-95,85" },
        { { { 4, 1 }, { 4, 5 }, { 4, 9 } }, 1, "[8,2]  45,85-45,5" },
        { { { 0, 0 }, { 4, 1 }, { 4, 9 }, { 4, 7 }, { 9, 1 } }, 1, "[8,2]  5,95-45,85  45,25-95,85  []  45,5-45,85" },
        { { { 0, 0 }, { 4, 1 }, { 4, 9 }, { 4, 7 } }, 1, "[8,2]  5,95-45,85  []  45,5-45,85" },
        { { { 0, 0 }, { 4, 1 }, { 4, 1.2 }, { 4, 1 } }, 5, "[1,1]  5,95-45,85-45,83-45,85" },
        { { { 0, 0 }, { 4, 1 }, { 4, 1.3 }, { 4, 1 }, { kGap, 1 }, { 6, 1 }, { 8, 1 } }, 5,
            "[1,1]  5,95-45,85  65,85-85,85  []  45,82-45,85" },
    };
    for (Case const& c : cases) {
        Plotting graph;
        AddLine(graph, c.points).SetLineType(c.type);
        EXPECT_EQ(Drawn(graph), c.drawn) << testing::PrintToString(c.points);
    }
}

TEST(LineFigures, StepAndPair)
{
    Points const points { { 0, 0 }, { 2, 4 }, { 4, 1 }, { 5, kGap }, { kGap, 3 }, { 6, 6 }, { 8, 8 }, { 9, 9 } };
    struct Case {
        int connection;
        int step;
        char const* drawn;
    };
    using L = C2DLine;
    for (Case const& c :
        {
            Case { L::cmStepped, L::smMiddle, "5,95-15,95-15,55-35,55-35,85-45,85  65,35-75,35-75,15-90,15-90,5-95,5" },
            Case { L::cmStepped, L::smHorizontalFirst, "5,95-25,95-25,55-45,55-45,85  65,35-85,35-85,15-95,15-95,5" },
            Case { L::cmStepped, L::smVerticalFirst, "5,95-5,55-25,55-25,85-45,85  65,35-65,15-85,15-85,5-95,5" },
            Case { L::cmStepped, 7, "5,95-45,85  65,35-95,5" },
            Case { L::cmPairs, 0, "5,95-25,55  85,15-95,5" },
        }) {
        Plotting graph;
        C2DLine& line = AddLine(graph, points);
        line.SetPointConnectionMode(c.connection);
        line.SetStepMode(c.step);
        EXPECT_EQ(Drawn(graph), c.drawn) << c.connection << c.step;
    }
}

TEST(LineFigures, TakeDecadesOnLogarithmicAxes)
{
    Plotting graph;
    C2DLine& line = AddLine(graph, { { 1, 5 }, { 1e4, 7 }, { 1e9, 5 } });
    graph.GetAxes()->SetXAxisScaleMode(1);
    EXPECT_EQ(Drawn(graph), "5,45-45,25-95,45");
    line.SetPointConnectionMode(C2DLine::cmStepped);
    EXPECT_EQ(Drawn(graph), "5,45-25,45-25,25-70,25-70,45-95,45");
    graph.GetAxes()->SetXAxisScaleMode(0);
    graph.GetAxes()->SetYAxisScaleMode(1);
    for (int i = 0; i < 3; ++i)
        line.SetAt(i, { 2.0 * i, i == 0 ? 1 : i == 1 ? 1e3 : 1e9 });
    EXPECT_EQ(Drawn(graph), "5,95-15,95-15,65-35,65-35,5-45,5");
    line.SetPointConnectionMode(C2DLine::cmPairs);
    EXPECT_EQ(Drawn(graph), "5,95-25,65");
}

TEST(LineFigures, KeepOnePointBeyondEachSideAndFourACrowdedColumn)
{
    Points points;
    for (int i = 0; i < 10; ++i)
        points.emplace_back(i, i);
    Plotting graph;
    AddLine(graph, points);
    graph.GetAxes()->SetXAxisRange(3, 6);
    EXPECT_EQ(Drawn(graph), "-24,75-5,65-35,55-65,45-95,35-125,25");

    // Ninety points fall into each pixel column: from 4 up to 9, down to 1 and up to 6.
    constexpr int kCrowd = 90;
    std::string thin;
    std::string wide = "6,55-6,85-6,5-6,35";
    std::string dashes = "[8,2]";
    std::string solid = "  []  5,5-5,85";
    points.clear();
    for (int column = 0; column <= 90; ++column) {
        for (int i = 0; i < kCrowd; ++i)
            points.emplace_back((kCrowd * column + i - 44.5) / 900.0,
                i == 0        ? 4
                    : i == 30 ? 9
                    : i == 60 ? 1
                    : i == 89 ? 6
                              : 5);
        std::string const x = std::to_string(5 + column);
        std::string const whole = x + ",55-" + x + ",85-" + x + ",5-" + x + ",35";
        thin += (column > 0 ? "-" : "") + whole;
        if (column == 0)
            continue;
        // Four columns, as wide as half of the pen, become one at their second; three are left over in the end.
        if (column % 4 == 1 && column > 4)
            wide += "-" + (column < 89 ? x + ",85-" + x + ",5" : whole);
        dashes += "  " + std::to_string(4 + column) + ",35-" + x + ",55";
        solid += "  " + x + ",5-" + x + ",85";
    }
    Plotting crowded;
    C2DLine& line = AddLine(crowded, points);
    EXPECT_EQ(Drawn(crowded), thin);
    line.SetLineWidth(9);
    EXPECT_EQ(Drawn(crowded, true), wide) << "its width hides how columns are joined";
    line.SetLineWidth(1);
    line.SetLineType(1);
    EXPECT_EQ(Drawn(crowded), dashes + solid) << "dashes that would overlap";
    line.SetLineType(0);
    // A gap after five points of the first column.
    line.SetYAt(5, kGap);
    EXPECT_EQ(Drawn(crowded), "5,55-5,45  5,45-5,85-5,5-5,35" + thin.substr(18));
}

TEST(LineFigures, MarkPointsInsideAndOnTheEdges)
{
    struct Case {
        double factor;
        int half;
    };
    for (Case const& c : { Case { 1, 2 }, Case { 3.4, 3 }, Case { 3.6, 4 }, Case { 20, 20 } }) {
        Plotting graph;
        C2DLine& line = AddLine(graph,
            { { 2, 3 }, { kGap, 1 }, { 0, 0 }, { 9, 9 }, { -0.2, 5 }, { 9.2, 5 }, { 5, 9.2 }, { 5, -0.2 },
                { 1, kGap } });
        line.SetPointConnectionMode(C2DLine::cmNone);
        line.SetSymbolType(C2DSymbol::Square);
        line.SetSymbolScaleFac(c.factor);
        auto const square = [&c](int x, int y) { return Outline({ x - c.half, y - c.half, x + c.half, y + c.half }); };
        EXPECT_EQ(Drawn(graph), square(25, 65) + "  " + square(5, 95) + "  " + square(95, 5)) << c.factor;
    }
}

TEST(LineFigures, OfOnePointAreItsSymbolAndOfGapsAloneNothing)
{
    Plotting graph;
    AddLine(graph, { { 4, 5 } }).SetSymbolType(C2DSymbol::Square);
    AddLine(graph, { { kGap, kGap } }).SetSymbolType(C2DSymbol::Square);
    EXPECT_EQ(Drawn(graph), Outline({ 43, 43, 47, 47 }));
    EXPECT_EQ(XRange(graph), std::make_pair(4.0, 4.0));
}

TEST(SymbolFigures, ArePixelsAsLargeOnPagesAsOnScreens)
{
    DeviceCapabilities capabilities;
    capabilities.logPixelsX = 600;
    auto const page = std::make_shared<RecordingSurface>(CSize(200, 200), capabilities, true);
    CDC dc(page);
    CPort port(&dc, { 0, 0, 200, 200 }, { 0, 0, 200, 200 }, { 0, 200, 200, 0 });
    C2DSymbol::DrawPixel(&port, { 100, 100, 100, 100 }, 7);
    EXPECT_EQ(test::Figures(page->Primitives()), "fill 97,97-103,103#7");
}

C2DLine& AddShaded(Plotting& graph, Points const& points)
{
    C2DLine& line = AddLine(graph, points);
    line.SetPointConnectionMode(C2DLine::cmNone);
    line.SetFillOn(1);
    return line;
}

TEST(ShadingFigures, LieBetweenTheLineAndItsBaseline)
{
    struct Case {
        char const* what;
        Points points;
        double baseline;
        C2DLine::BaselineShadeMode side;
        char const* drawn;
    };
    auto const both = C2DLine::bsBoth;
    Points const rising { { 0, 2 }, { 6, 8 }, { 9, 5 } };
    Case const cases[] = {
        { "a hill", { { 0, 2 }, { 3, 5 }, { 9, 2 } }, 0, both, "fill 4:5-11 5:3-15 6-7:1-19" },
        { "wider than the axis", { { -3, 2 }, { 3, 5 }, { 15, -1 } }, 0, both, "fill 4:4-11 5:1-15 6-7:1-19" },
        { "both sides", rising, 4, both, "fill 1:11-15 2:9-17 3:7-19 4:1-5 5:1-3" },
        { "above", rising, 4, C2DLine::bsAbove, "fill 1:10-15 2:7-17 3:4-19" },
        { "below", rising, 4, C2DLine::bsBelow, "fill 4:1-13 5:1-7" },
        { "gaps", { { kGap, 1 }, { 0, 4 }, { 3, 4 }, { 4, kGap }, { 6, 2 }, { 9, 2 }, { kGap, 0 } }, 0, both,
            "fill 1,4-7,8  fill 13,6-19,8" },
        { "right to left: the ends have the height of the first point", { { 9, 2 }, { 3, 5 }, { 0, 3 } }, 0, both,
            "fill 1,6-19,8" },
        { "one point", { { 3, 3 } }, 0, both, "" },
    };
    for (Case const& c : cases) {
        Plotting graph(kTiny);
        C2DLine& line = AddShaded(graph, c.points);
        line.SetAutoBaseline(0);
        line.SetBaseline(c.baseline);
        line.SetBaselineShadeMode(c.side);
        EXPECT_EQ(Drawn(graph), c.drawn) << c.what;
    }
}

TEST(ShadingFigures, HaveEndsARangeAndTheCrossingOfTheAxesAsBaseline)
{
    Plotting graph(kTiny);
    C2DLine& line = AddShaded(graph, { { 0, 4 }, { 4, 4 }, { 9, 4 } });
    line.SetFillBoundaryOn(1);
    line.SetBorderColour(7);
    line.SetUseFillRange(1);
    line.SetFillRange(2, 5);
    EXPECT_EQ(Drawn(graph), "5,8-5,4#7  11,4-11,8#7  fill 4-7:5-11");
    graph.GetAxes()->SetIntersectMode(1);
    graph.GetAxes()->SetIntersect({ 0, 6 });
    line.SetFillBoundaryOn(0);
    EXPECT_EQ(Drawn(graph), "fill 2-3:5-11");
    for (double const from : { 5.0, 9.5 }) {
        line.SetFillRange(from, 12);
        EXPECT_EQ(Drawn(graph), "") << "no point from there on, or the last one alone";
    }
}

TEST(ShadingFigures, FillThePolygonOfThePointsAndReachUpToDecades)
{
    for (Points const& points : { Points { { 0, 0 }, { 6, 6 }, { 6, 0 } }, Points { { 6, 0 }, { 6, 6 }, { 0, 0 } } }) {
        Plotting graph(kTiny);
        AddShaded(graph, points).SetShadeMode(C2DLine::shClosed);
        EXPECT_EQ(Drawn(graph), "fill 3:11-13 4:9-13 5:7-13 6:5-13 7:3-13");
    }
    Plotting graph(kTiny);
    AddShaded(graph, { { 0, 1e4 }, { 3, 1e4 }, { 3, 1 }, { 9, 1 }, { 9, 1e8 } });
    graph.GetAxes()->SetYAxisScaleMode(1);
    EXPECT_EQ(Drawn(graph), "fill 4-7:1-7");
}

TEST(ShadingFigures, OfCrowdedColumnsFollowTheFirstAndTheLastPointOfEach)
{
    // Upright edges bound no pixel: of the thirty points in each column those between stick out for nothing.
    Points points;
    for (int column = 0; column <= 18; ++column) {
        for (int i = 0; i < 30; ++i)
            points.emplace_back((30 * column + i - 14.5) / 60.0, i == 0 || i == 29 ? 3 : i % 7);
    }
    for (auto const shade : { C2DLine::shBaseline, C2DLine::shClosed }) {
        for (bool const ascending : { true, false }) {
            if (!ascending)
                std::swap(points[100], points[101]);
            Plotting graph(kTiny);
            C2DLine& line = AddShaded(graph, points);
            line.SetShadeMode(shade);
            EXPECT_EQ(Drawn(graph), shade == C2DLine::shBaseline ? "fill 5-7:1-19" : "") << ascending;
        }
    }
}

TEST(AreaFigures, StackBandsThenOutlineThem)
{
    struct Case {
        char const* what;
        Values xs;
        std::vector<Values> layers;
        double yMin;
        double yMax;
        int normalised;
        char const* drawn;
    };
    Case const cases[] = {
        { "two layers", { 0, 3, 9 }, { { 2, 4, 2 }, { 2, 1, 2 } }, 0, 8, 0,
            "fill 5:4-13 6-7:1-19  fill 4:1-19 5:1-4+13-19  1,6-7,4-19,6-19,8-7,8-1,8#7  1,4-7,3-19,4-19,6-7,4-1,6#7" },
        { "right to left", { 9, 0 }, { { 2, 2 } }, 0, 8, 0, "fill 1,6-19,8  19,6-1,6-1,8-19,8#7" },
        { "below 0", { 0, 9 }, { { -2, -2 } }, -4, 4, 0, "fill 1,4-19,6  1,6-19,6-19,4-1,4#7" },
        { "missing values and places", { 0, 3, kGap, 9 }, { { 2, kGap, 5, 2 } }, 0, 8, 0,
            "fill 7:1-4+13-19  1,6-7,8-19,6-19,8-7,8-1,8#7" },
        { "normalised", { 0, 9 }, { { 1, 30 }, { 3, 10 } }, 0, 1, 1,
            "fill 3:15-19 4:10-19 5:6-19 6-7:1-19  fill 0-2:1-19 3:1-15 4:1-10 5:1-6  1,6-19,2-19,8-1,8#7  "
            "1,0-19,0-19,2-1,6#7" },
        { "normalised upside down", { 0, 9 }, { { 1, 3 } }, 1, 0, 1, "fill 1,0-19,8  1,8-19,8-19,0-1,0#7" },
        { "wider than the axis", { -3, 15 }, { { 2, 8 } }, 0, 8, 0,
            "fill 3:13-19 4:7-19 5-7:1-19  1,5-19,2-19,8-1,8#7" },
        { "higher than the axis", { 0, 9 }, { { 2, 6 } }, 0, 4, 0,
            "fill 0:11-19 1:9-19 2:6-19 3:4-19 4-7:1-19  1,4-11,0-19,0-19,0-19,8-19,8-1,8#7" },
    };
    for (Case const& c : cases) {
        Plotting graph(kTiny);
        auto& plot = graph.Add<C2DAreaPlot>(it2DAreaPlot);
        for (Values const& layer : c.layers)
            AddCurve(plot, c.xs, layer);
        graph.GetAxes()->SetYAxisRange(c.yMin, c.yMax);
        plot.SetNormalised(c.normalised);
        plot.SetBorderColour(7);
        EXPECT_EQ(Drawn(graph), c.drawn) << c.what;
        plot.SetDrawBorders(0);
        EXPECT_THAT(Drawn(graph), testing::Not(testing::HasSubstr("line")));
    }
}

TEST(AreaFigures, ReachUnderTheNextSolidBandOnPages)
{
    Plotting graph(kTiny);
    auto& plot = graph.Add<C2DAreaPlot>(it2DAreaPlot);
    for (int const pattern : { kSolidFillPattern, kSolidFillPattern, 4, kSolidFillPattern, kSolidFillPattern })
        AddCurve<C2DAreaCurve>(plot, { 0, 9 }, { 1, 1 }).SetFillPattern(pattern);
    plot.SetDrawBorders(0);
    EXPECT_EQ(Drawn(graph, true), "fill 1,6-19,8  fill 1,6-19,7  fill 1,5-19,6  fill 1,3-19,5  fill 1,3-19,4");
}

TEST(AreaFigures, HaveOutlinesInTheirOwnColoursFromTheTopDown)
{
    Plotting graph(kTiny);
    auto& plot = graph.Add<C2DAreaPlot>(it2DAreaPlot);
    for (COLORREF const colour : { 1u, 2u })
        AddCurve(plot, { 0, 9 }, { 2, 2 }).SetColour(colour);
    plot.SetBorderColour(kOwnColour);
    EXPECT_EQ(Drawn(graph), "fill 1,6-19,8#1  fill 1,4-19,6#2  1,4-19,4-19,6-1,6#2  1,6-19,6-19,8-1,8#1");
}

TEST(AreaFigures, AreMadeInStepsThatHostsCanTake)
{
    Plotting graph(kTiny);
    auto& plot = graph.Add<C2DAreaPlot>(it2DAreaPlot);
    EXPECT_TRUE(plot.ClippingRequired(CAxes::atX)) << "nothing is known to lie inside";
    EXPECT_EQ(test::YRange(plot), std::make_pair(0.0, 0.0)) << "without columns";
    EXPECT_EQ(AddCurve(plot, { 0, 9 }, { 2, 8 }).GetSeries(), 1);
    Drawn(graph);
    EXPECT_FALSE(plot.ClippingRequired(CAxes::atX) || plot.ClippingRequired(CAxes::atY));
    POINT const in[] { { 3, -2 }, { 3, 10 }, { 5, 4 } };
    POINT* out = nullptr;
    int const n = plot.DoYClip(in, out, 3);
    std::unique_ptr<POINT[]> const owned(out);
    std::string points;
    for (int i = 0; i < n; ++i)
        points += " " + test::Figure(CPoint(out[i]));
    EXPECT_EQ(points, " 3,0 3,0 3,8 3,8 4,8 5,4") << "10 to 4 over two columns passes row 8 at the first";
    graph.GetAxes()->SetYAxisRange(0, 7);
    EXPECT_FALSE(plot.ClippingRequired(CAxes::atX));
    EXPECT_TRUE(plot.ClippingRequired(CAxes::atY));
}

/// A filled bar with an outline of one colour.
std::string Bar(CRect const& r, COLORREF fill, COLORREF border)
{
    return Coloured("fill " + test::Figure(r), fill) + "  " + Outline(r, border);
}

TEST(BarFigures, StandOnTheirBaselineOrHangFromIt)
{
    Plotting graph;
    auto& curve = AddCurve<C2DBarCurve>(graph.Add<C2DBarPlot>(it2DBarPlot), { 2, 4, 6, 8, 20 }, { 3, 1, kGap, 20, 3 });
    curve.SetBorderColour(7);
    curve.SetAutoBaseline(0);
    curve.SetBaseline(2);
    EXPECT_EQ(Drawn(graph),
        Bar({ 20, 65, 30, 75 }, 0, 7) + "  " + Bar({ 40, 75, 50, 85 }, 0, 7) + "  " + Bar({ 80, 5, 90, 75 }, 0, 7));
    curve.SetBarWidthFactor(0);
    EXPECT_EQ(Drawn(graph), "25,65-25,76#7  45,75-45,86#7")
        << "of bars thinner than a pixel, those that begin outside are left out";
    curve.SetBarWidthFactor(0.5);
    curve.SetBaseline(3);
    EXPECT_THAT(Drawn(graph), testing::StartsWith(Outline({ 20, 65, 30, 65 }, 7))) << "no height";
    curve.SetXAt(0, 9);
    EXPECT_THAT(Drawn(graph), testing::StartsWith(Outline({ 90, 65, 95, 65 }, 7)))
        << "no height, cut at the right edge";
}

TEST(BarFigures, ThinnerThanAPixelAreGatheredColumnByColumn)
{
    struct Thin {
        double x;
        double from;
        double to;
        COLORREF colour;
    };
    struct Case {
        char const* what;
        int resolution;
        COLORREF border;
        std::vector<Thin> bars;
        char const* drawn;
    };
    Case const cases[] = {
        { "overlapping, with both ends", 96, 7, { { 2, 0, 3, 1 }, { 2, 2, 5, 2 } }, "25,45-25,96#7" },
        { "touching", 96, 7, { { 2, 1, 3, 1 }, { 2, 3, 5, 1 } }, "25,45-25,86#7" },
        { "apart", 96, 7, { { 2, 1, 2, 1 }, { 2, 3, 5, 1 } }, "25,75-25,86#7  25,45-25,66#7" },
        { "no height", 96, 7, { { 2, 1, 1, 1 } }, "25,85-25,85#7" },
        { "on the y axis", 96, 7, { { 0, 1, 2, 1 } }, "5,75-5,75#7  5,75-5,85#9  5,85-5,85#7  5,85-5,75#9" },
        { "own colours", 96, kOwnColour, { { 2, 0, 3, 1 }, { 2, 2, 5, 1 }, { 2, 1, 3, 2 }, { 4, 1, 2, 1 } },
            "25,45-25,96#1  25,65-25,86#2  45,75-45,86#1" },
        { "on pages bars reach into others' columns", 288, kOwnColour,
            { { 2, 0, 3, 1 }, { 2.1, 0, 3, 2 }, { 2, 0, 5, 1 } }, "25,65-25,95#1  26,65-26,95#2  25,45-25,95#1" },
        { "and those half in them", 288, kOwnColour, { { 2, 0, 3, 1 }, { 2.3, 0, 3, 2 }, { 2, 0, 5, 1 } },
            "25,65-25,95#1  28,65-28,95#2  25,45-25,95#1" },
    };
    for (Case const& c : cases) {
        Plotting graph;
        graph.GetAxes()->SetColour(9);
        graph.LayOut(CDIB(100, 100, 24).GetDC(), { 0, 0, 100, 100 });
        DeviceCapabilities capabilities;
        capabilities.logPixelsX = capabilities.logPixelsY = c.resolution;
        auto const surface = std::make_shared<RecordingSurface>(kLarge, capabilities);
        CDC dc(surface);
        CPort port(&dc, {}, graph.GetAxesRect(), graph.GetAxesRealRect());
        {
            BarPainter painter(port, graph, c.border);
            for (Thin const& bar : c.bars)
                painter.Paint(bar.x, 0.001, bar.from, bar.to, VectorBrush::Solid(bar.colour));
        }
        EXPECT_EQ(test::Figures(surface->Primitives()), c.drawn) << c.what;
    }
}

TEST(BarFigures, HaveTheLookOfTheAxesOnTheirLines)
{
    Plotting graph;
    auto& curve = AddCurve<C2DBarCurve>(graph.Add<C2DBarPlot>(it2DBarPlot), { 0, 2 }, { 3, -9 });
    curve.SetBorderColour(7);
    graph.GetAxes()->SetColour(9);
    graph.GetAxes()->SetYAxisRange(-4, 5);
    graph.GetAxes()->SetIntersectMode(1);
    graph.GetAxes()->SetIntersect({ 0, 0 });
    EXPECT_EQ(Drawn(graph),
        "fill 5,25-10,55  5,25-10,25-10,55#7  10,55-5,55-5,25#9  fill 20,55-30,95  20,55-30,55#9  "
        "30,55-30,95-20,95-20,55#7");
}

TEST(BarFigures, StackValuesOfBothSignsFromTheLowerEnd)
{
    for (int const percent : { 0, 1 }) {
        Plotting graph;
        auto& plot = graph.Add<C2DStackedBarPlot>(it2DStackedBarPlot);
        for (COLORREF colour = 1; Values const& ys : { Values { 3, -2 }, Values { 2, -1 }, Values { -1, 4 } })
            AddCurve(plot, { 2, 6 }, ys).SetColour(colour++);
        plot.SetBorderColour(kOwnColour);
        plot.SetPlotStyle(percent);
        // The second stack is higher than the first in percent: 3 parts of 7 below 0 instead of 1 of 6.
        graph.GetAxes()->SetYAxisRange(percent ? -400.0 / 7.0 : -4.0, percent ? 500.0 / 7.0 : 5.0);
        std::string const first = Bar({ 15, 55, 35, percent ? 67 : 65 }, 3, 3) + "  "
            + Bar({ 15, percent ? 20 : 25, 35, 55 }, 1, 1) + "  " + Bar({ 15, 5, 35, percent ? 20 : 25 }, 2, 2);
        std::string const second = Bar({ 55, 75, 75, 85 }, 2, 2) + "  " + Bar({ 55, 55, 75, 75 }, 1, 1) + "  "
            + Bar({ 55, 15, 75, 55 }, 3, 3);
        EXPECT_EQ(Drawn(graph), first + "  " + second) << percent;
    }
}

TEST(BarFigures, StandSideBySideInClusters)
{
    Plotting graph;
    auto& plot = graph.Add<C2DClusteredBarPlot>(it2DClusteredBarPlot);
    AddCurve(plot, { 2, 6 }, { 3, kGap }).SetColour(1);
    AddCurve(plot, { 2, 6 }, { -1, 2 }).SetColour(2);
    plot.SetBarWidthFactor(0.5);
    plot.SetBorderColour(7);
    graph.GetAxes()->SetYAxisRange(-4, 5);
    EXPECT_EQ(Drawn(graph),
        Bar({ 15, 25, 25, 55 }, 1, 7) + "  " + Bar({ 25, 55, 35, 65 }, 2, 7) + "  " + Bar({ 65, 35, 75, 55 }, 2, 7));
    // On evenly spread places 0, 4 and 8 bars are as wide.
    plot.SetXValueMode(0);
    plot.SetNumPts(3);
    plot.SetXMin(0);
    plot.SetXMax(8);
    graph.UpdatePlots();
    EXPECT_THAT(Drawn(graph), testing::StartsWith("fill 5,55-15,65#2")) << "the first bar lies left of the axes";
}

C2DErrorBarCurve& AddErrorBars(Plotting& graph, CDoubleArray const& xs, CDoubleArray const& heights)
{
    auto& curve = AddCurve<C2DErrorBarCurve>(graph.Add<CPlot>(it2DErrorBarPlot), {}, {});
    CDoubleArray const ys { 5, 5, 5 };
    curve.SetPoints(&xs, &ys, &heights, xs.GetSize());
    return curve;
}

TEST(ErrorBarFigures, HaveCapsThatNeighboursNarrowButNeverHide)
{
    struct Case {
        char const* what;
        CDoubleArray xs;
        CDoubleArray heights;
        double factor;
        char const* drawn;
    };
    double const nan = std::nan("");
    Case const cases[] = {
        { "five pixels for the tallest", { 3, 6 }, { 4, 2 }, 1,
            "35,65-35,25  33,65-38,65  33,25-38,25  65,55-65,35  64,55-66,55  64,35-66,35" },
        { "0.8 of the distance, cut at the edge", { 9, 6, 3 }, { 4, 4, 4 }, 100,
            "95,65-95,25  83,65-95,65  83,25-95,25  65,65-65,25  53,65-77,65  53,25-77,25  35,65-35,25  23,65-47,65  "
            "23,25-47,25" },
        { "close together", { 5, 8, 5.02 }, { 2, 4, 2 }, 100,
            "55,55-55,35  53,55-58,55  53,35-58,35  85,65-85,25  80,65-90,65  80,25-90,25  55,55-55,35  53,55-58,55  "
            "53,35-58,35" },
        { "two at one place", { 3, 3, 6 }, { 4, 2, 4 }, 100,
            "35,65-35,25  23,65-47,65  23,25-47,25  35,55-35,35  29,55-41,55  29,35-41,35  65,65-65,25  53,65-77,65  "
            "53,25-77,25" },
        { "missing", { 3, kGap, 6 }, { 4, 4, nan }, 1, "35,65-35,25  33,65-38,65  33,25-38,25" },
        { "no height", { 3, nan }, { 0, 4 }, 1, "35,45-35,45  35,45-35,45  35,45-35,45" },
        { "out of all bounds", { 3 }, { 1e308 }, nan, "35,5-35,95" },
    };
    for (Case const& c : cases) {
        Plotting graph;
        AddErrorBars(graph, c.xs, c.heights).SetScaleFac(c.factor);
        EXPECT_EQ(Drawn(graph), c.drawn) << c.what;
    }
    Plotting decades;
    AddLine(decades, { { 0, 1 }, { 9, 1e9 } }).SetPointConnectionMode(C2DLine::cmNone);
    AddErrorBars(decades, { 3 }, { 2 }).SetYAt(0, 1e4);
    decades.GetAxes()->SetYAxisScaleMode(1);
    EXPECT_EQ(Drawn(decades), "35,65-35,45  33,65-38,65  33,45-38,45") << "half the height in decades";
}

TEST(TextFigures, HangFromTheirPointsOrStandOnThem)
{
    Plotting graph;
    auto& curve = AddCurve<C2DTextCurve>(graph.Add<CPlot>(it2DTextPlot), { 3, 6, 3, kGap, 9.5 }, { 3, 6, 3, 3, 9.5 });
    curve.SetText({ "a", "b", "", "gap", "outside" });
    curve.SetVertAlignment(C2DTextCurve::alTop);
    EXPECT_EQ(Drawn(graph), "a 6 35,65  b 6 65,35");
    // Six pixels high: a fifteenth of the graph.
    curve.SetVertAlignment(C2DTextCurve::alBottom);
    curve.SetColour(7);
    EXPECT_EQ(Drawn(graph), "a 6 35,59#7  b 6 65,29#7");
}

TEST(TextFigures, AreAlignedAtTheirPoints)
{
    using A = C2DTextCurve;
    C2DTextCurve curve;
    // Of a text 31 wide and 15 high at (100, 100), as it is and turned.
    auto const places = [&curve](A::Alignment vertical, A::Alignment horizontal) {
        curve.SetVertAlignment(vertical);
        curve.SetHorzAlignment(horizontal);
        curve.SetRotate(0);
        CPoint const plain = curve.GetTextPosParams({ 100, 100 }, { 31, 15 });
        curve.SetRotate(1);
        return test::Figure(plain) + " " + test::Figure(curve.GetTextPosParams({ 100, 100 }, { 31, 15 }));
    };
    EXPECT_EQ(places(A::alBottom, A::alLeft), "100,85 100,100");
    EXPECT_EQ(places(A::alBottom, A::alRight), "69,85 85,100");
    EXPECT_EQ(places(A::alTop, A::alCentre), "85,100 93,131");
    EXPECT_EQ(places(A::alCentre, A::alLeft), "100,93 100,115");
}

TEST(ErrorBarsAndTexts, ChangeNothingWhenAnArrayIsTooShort)
{
    CDoubleArray const three { 1, 2, 3 };
    CDoubleArray const two { 1, 2 };
    CGStringArray texts;
    texts.SetSize(2);
    C2DErrorBarCurve bars;
    C2DTextCurve text;
    bars.SetPoints(&three, &three, &two, 3);
    text.SetPoints(&three, &three, &texts, 3);
    EXPECT_EQ(bars.GetNumPoints() + bars.GetHeights().GetSize() + text.GetNumPoints() + text.GetText().GetSize(), 0);
    bars.SetPoints(&three, &three, &two, 2);
    text.SetPoints(&three, &three, &texts, 2);
    EXPECT_EQ(bars.GetHeights(), two);
    EXPECT_EQ(bars.GetNumPoints() + text.GetNumPoints() + text.GetText().GetSize(), 6);
    EXPECT_FALSE(bars.GetLegendEntry() || text.GetLegendEntry());
}

} // namespace
} // namespace ombrel
