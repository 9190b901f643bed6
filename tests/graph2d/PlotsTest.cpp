#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/paths/AreaBands.h"
#include "tests/graph2d/GraphFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ombrel {
namespace {

using test::AddCurve;
using test::AddPlot;
using test::FillsOver;
using test::OfKind;
using test::Record;
using test::Values;
using test::XRange;
using test::YRange;

constexpr CSize kSize(600, 450);
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

C2DAreaPlot& AddAreas(C2DGraph& graph, Values const& xs, std::vector<Values> const& rows)
{
    auto& plot = AddPlot<C2DAreaPlot>(graph, it2DAreaPlot);
    for (Values const& row : rows)
        AddCurve(plot, xs, row);
    return plot;
}

TEST(AreaPlot, RangeFollowsTheRunningTotals)
{
    struct Case {
        std::vector<Values> rows;
        std::pair<double, double> plain;
        std::pair<double, double> normalised;
    };
    Case const cases[] = {
        { { { 1, 2 }, { 3, 1 } }, { 0, 4 }, { 0, 1 } },
        { { { 1, 2 }, { -3, 1 }, { 1, 1 } }, { -2, 4 }, { -0.5, 1 } },
        { { { -1, -2 }, { -1, 1 } }, { -2, 0 }, { -1, 0 } },
        { { { 0, 0 } }, { 0, 0 }, { 0, 1 } },
        { { { 1e308, 0 }, { 1e308, 0 } }, { 0, kGap / 2 }, { 0, 1 } },
        { { { 1, kGap }, { kNotANumber, 2 }, { kInfinity, -kInfinity } }, { 0, 2 }, { 0, 1 } },
    };
    for (Case const& c : cases) {
        C2DGraph graph(1);
        C2DAreaPlot& plot = AddAreas(graph, { 0, 1 }, c.rows);
        EXPECT_EQ(YRange(plot), c.plain);
        plot.SetNormalised(1);
        EXPECT_EQ(YRange(plot), c.normalised);
    }
}

TEST(AreaPlot, RangeIsFoundAgainWhenTheDataChanges)
{
    C2DGraph graph(1);
    C2DAreaPlot& plot = AddAreas(graph, { 0, 1 }, { { 1, 2 }, { 3, 1 } });
    auto const top = [&] { return YRange(plot).second; };
    auto& curve = static_cast<C2DAreaCurve&>(*plot.GetComponent(0));
    double* const kept = curve.GetPoints().GetRow(1);
    EXPECT_EQ(top(), 4);
    curve.SetYAt(0, 5);
    EXPECT_EQ(top(), 8);
    kept[0] = 6;
    curve.Evaluate();
    EXPECT_EQ(top(), 9);
    std::unique_ptr<CPlotComponent> const removed(plot.GetComponent(1));
    plot.RemoveComponent(removed.get());
    EXPECT_EQ(top(), 6);
    curve.SetYAt(1, 7);
    EXPECT_EQ(top(), 7);
    plot.SetXValueMode(0);
    plot.SetNumPts(1);
    EXPECT_EQ(top(), 6) << "fewer columns";
}

TEST(AreaBands, StripKeepsPointsInsideAndCrossingsInTheOrderOfTheLine)
{
    CPort const port(nullptr, { 0, 0, 100, 100 }, { 0, 0, 100, 100 }, { 0, 100, 100, 0 });
    struct Case {
        char const* what;
        Values xs;
        Values ys;
        Values clippedXs;
        Values clippedYs;
    };
    Case const cases[] = {
        { "all inside, ends on the edges", { 20, 50, 80 }, { 1, 2, 3 }, { 20, 50, 80 }, { 1, 2, 3 } },
        { "enters and leaves", { 10, 30, 70, 90 }, { 0, 20, 20, 40 }, { 20, 30, 70, 80 }, { 10, 20, 20, 30 } },
        { "passes over", { 0, 100 }, { 0, 100 }, { 20, 80 }, { 20, 80 } },
        { "passes over leftwards", { 100, 0 }, { 0, 100 }, { 80, 20 }, { 20, 80 } },
        { "starts on an edge", { 0, 20, 100 }, { 0, 0, 80 }, { 20, 80 }, { 0, 60 } },
        { "outside", { 0, 10, 10, 15 }, { 0, 50, 3, 4 }, {}, {} },
        { "upright outside", { 81, 81 }, { 0, 50 }, {}, {} },
    };
    for (Case const& c : cases) {
        RealPath const path = ClipToStrip(c.xs, c.ys, port, { 20, 80 });
        EXPECT_EQ(path.xs, c.clippedXs) << c.what;
        EXPECT_EQ(path.ys, c.clippedYs) << c.what;
    }
}

TEST(AreaBands, RowsAreLimitedWithTheCrossingsInTheOrderTheyAreMet)
{
    CRect const rect(0, 10, 100, 20);
    using Points = std::vector<CPoint>;
    struct Case {
        Points polygon;
        Points clipped;
    };
    Case const cases[] = {
        { { { 0, 12 }, { 50, 20 }, { 100, 10 } }, { { 0, 12 }, { 50, 20 }, { 100, 10 } } },
        { { { 0, 0 }, { 30, 30 } }, { { 0, 10 }, { 10, 10 }, { 20, 20 }, { 30, 20 } } },
        { { { 0, 30 }, { 30, 0 } }, { { 0, 20 }, { 10, 20 }, { 20, 10 }, { 30, 10 } } },
        { { { 0, 15 }, { 10, 5 }, { 20, 5 }, { 20, 25 } },
            { { 0, 15 }, { 5, 10 }, { 10, 10 }, { 20, 10 }, { 20, 10 }, { 20, 20 }, { 20, 20 } } },
    };
    for (Case const& c : cases)
        EXPECT_EQ(ClipToRows(c.polygon, rect), c.clipped);
}

TEST(AreaBands, ReachUnderTheNextBandOnlyWhereItLiesBeyond)
{
    Values const xs { 0, 10 };
    PortMapping const map = CPort(nullptr, { 0, 0, 20, 20 }, { 0, 0, 20, 20 }, { 0, 20, 20, 0 }).GetMapping();
    Values const low { 1, 2 };
    Values const more { 3, 0 };
    Values const mixed { -1, 1 };
    std::span<double const> const rows[] { low, more, mixed };
    BandReach const reaches[] { BandReach::UnderNext, BandReach::UnderNext, BandReach::UnderNext };
    auto const own = MakeBands(xs, rows, map);
    auto const under = MakeBands(xs, rows, map, reaches);
    EXPECT_EQ(own[0], (std::vector<CPoint> { { 0, 19 }, { 10, 18 }, { 10, 20 }, { 0, 20 } }));
    EXPECT_EQ(under[0], (std::vector<CPoint> { { 0, 16 }, { 10, 18 }, { 10, 20 }, { 0, 20 } }));
    EXPECT_EQ(under[1], own[1]) << "the next band turns back";
    EXPECT_EQ(under[2], own[2]) << "nothing follows";
}

TEST(AreaBands, PassOverACrowdedPixelColumnInTheOrderOfItsEnds)
{
    Values const xs { 0, 5, 5, 5, 5, 10, 15, 15, 15 };
    PortMapping const map = CPort(nullptr, { 0, 0, 20, 20 }, { 0, 0, 20, 20 }, { 0, 20, 20, 0 }).GetMapping();
    Values const row { 1, 2, 6, 0, 3, 1, 4, 9, 2 };
    std::span<double const> const rows[] { row };
    EXPECT_EQ(MakeBands(xs, rows, map)[0],
        (std::vector<CPoint> { { 0, 19 }, { 5, 18 }, { 5, 20 }, { 5, 14 }, { 5, 17 }, { 10, 19 }, { 15, 16 },
            { 15, 11 }, { 15, 18 }, { 15, 20 }, { 10, 20 }, { 5, 20 }, { 0, 20 } }));
}

TEST(AreaBands, OfACrowdedPixelColumnTheEndsAndExtremesOfEachLayerAreKept)
{
    // Three places left of the strip, 700 in one pixel column, six and seven in the next two, a gap, two on the right.
    Values xs { -5, -4, -3 };
    xs.insert(xs.end(), 700, 50);
    xs.insert(xs.end(), 6, 51);
    xs.insert(xs.end(), 7, 52);
    xs.insert(xs.end(), { kNotANumber, 120, 130 });
    Values low(xs.size(), 1);
    Values high(xs.size(), 0);
    low[313] = 5;
    low[653] = -2;
    high[103] = 9;
    high[403] = -20;
    using Columns = std::vector<std::size_t>;
    Columns const ends { 703, 704, 705, 706, 707, 708, 709, 715, 717, 718 };
    PortMapping const map = CPort(nullptr, { 0, 0, 120, 100 }, { 10, 10, 110, 90 }, { 0, 1, 100, 0 }).GetMapping();
    auto const visible = [&](Normalising normalising, bool ascends) {
        AreaStack const stack { xs.data(), xs.size(), false, ascends,
            { { low.data(), low.size(), false, true }, { high.data(), high.size(), false, true } } };
        return VisibleColumns(stack, map, { 10, 110 }, normalising);
    };
    for (bool const ascends : { true, false }) {
        Columns expected { 0, 2, 3, 103, 313, 403, 653, 702 };
        expected.insert(expected.end(), ends.begin(), ends.end());
        EXPECT_EQ(visible(Normalising::No, ascends), expected);
        // Where all of a column is its total, it becomes 1 or, once, -1.
        expected.erase(expected.begin() + 3, expected.begin() + 6);
        EXPECT_EQ(visible(Normalising::Yes, ascends), expected);
    }
    std::reverse(xs.begin(), xs.end());
    std::reverse(low.begin(), low.end());
    std::reverse(high.begin(), high.end());
    Columns expected { 0, 1, 3 };
    for (std::size_t const i : Columns { 9, 10, 11, 12, 13, 14, 15, 16, 65, 315, 405, 615, 715, 716, 718 })
        expected.push_back(i);
    EXPECT_EQ(visible(Normalising::No, false), expected);
}

TEST(BarWidth, IsTheSmallestDistanceBetweenNeighbours)
{
    struct Case {
        Values xs;
        double width;
    };
    for (Case const& c : { Case { { 1, 2, 4 }, 1 }, Case { { 4, 2.5, 0.5 }, 1.5 }, Case { { 1, 1, 3 }, 0 },
             { { 7 }, 1 }, { {}, 1 }, Case { { 1, kGap, 4, std::nan(""), kInfinity, 6 }, 2 } })
        EXPECT_EQ(MaxBarWidthOfPoints(c.xs), c.width) << testing::PrintToString(c.xs);
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 11), static_cast<double>(0.1f));
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 1), 1.0);
    EXPECT_TRUE(std::isfinite(MaxBarWidthOfMesh(-kMostReal, kMostReal, 3)));
}

TEST(BarCurve, WidensItsRangesForTheBars)
{
    C2DGraph graph(1);
    auto& plot = AddPlot<C2DBarPlot>(graph, it2DBarPlot);
    auto& curve = AddCurve<C2DBarCurve>(plot, { 1, 2, 4 }, { 2, 8, 5 });
    EXPECT_EQ(XRange(plot), std::make_pair(0.75, 4.25));
    EXPECT_EQ(curve.GetBarWidth(), 0.5);
    EXPECT_EQ(YRange(plot), std::make_pair(2 - 0.06, 8.0)) << "room below a minimum that is not 0";
    curve.SetAutoBaseline(0);
    curve.SetBaseline(-5);
    EXPECT_EQ(YRange(plot), std::make_pair(-5.0, 8.0));
    curve.SetFillPattern(25);
    auto const fills = FillsOver(Record(graph, kSize));
    ASSERT_EQ(fills.size(), 3u);
    EXPECT_EQ(fills[0].brush.hatchStyle, 25);
    EXPECT_EQ(fills[0].brush.background, (VectorColour { RGB(255, 255, 255), 255 }));
    CRect outside(-10, -10, -5, -5);
    EXPECT_FALSE(curve.GetActualRect(outside));
    EXPECT_EQ(outside, CRect(-10, -10, -5, -5));
}

TEST(SeriesBars, WidenTheXRangeForTheBarsOfPointsThatAreNoGaps)
{
    for (ItemType const type : { it2DClusteredBarPlot, it2DStackedBarPlot }) {
        C2DGraph graph(1);
        auto& plot = AddPlot<SeriesBarPlot>(graph, type);
        plot.SetBarWidthFactor(0.5);
        AddCurve(plot, { -14, -12, -10 }, { 3, -1, kGap });
        EXPECT_EQ(XRange(plot), std::make_pair(-14.5, -11.5));
        if (auto* const stacked = DynamicDowncast<C2DStackedBarPlot>(&plot)) {
            stacked->SetNoRangeMargin(1);
            EXPECT_EQ(XRange(plot), std::make_pair(-14.0, -12.0));
        }
    }
}

TEST(StackedBars, ListTheirPiecesFromTheLowerEndOn)
{
    struct Case {
        int style;
        int scaled;
        std::array<double, 3> values;
        double base;
        Values heights;
        std::vector<COLORREF> curves;
        std::pair<double, double> range;
    };
    for (Case const& c : {
             Case { 0, 0, { 3, -2, 5 }, -2, { 2, 3, 5 }, { 1, 0, 2 }, { -2, 8 } },
             Case { 0, 0, { -3, -2, 5 }, -5, { 2, 3, 5 }, { 1, 0, 2 }, { -5, 5 } },
             Case { 1, 0, { 3, -2, 5 }, -20, { 20, 30, 50 }, { 1, 0, 2 }, { -20, 80 } },
             Case { 1, 0, { -1, -2, -5 }, 0, { 62.5, 25, 12.5 }, { 2, 1, 0 }, { 0, 100 } },
             Case { 1, 0, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, { 0, 100 } },
             Case { 0, 1, { 3, -2, 5 }, -0.8, { 0.8, 1.2, 2 }, { 1, 0, 2 }, { -2, 8 } },
             Case { 0, 1, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, { 0, 0 } },
             Case { 1, 1, { 3, kGap, 1 }, 0, { 3, 1 }, { 0, 2 }, { 0, 100 } },
             Case { 0, 0, { -kMostReal, kMostReal, kMostReal }, -kMostReal, { kMostReal, kMostReal, kMostReal },
                 { 0, 1, 2 }, { -kMostReal, kMostReal } },
         }) {
        C2DGraph graph(1);
        auto& plot = AddPlot<C2DStackedBarPlot>(graph, it2DStackedBarPlot);
        plot.SetPlotStyle(c.style);
        plot.SetScaleStacksOn(c.scaled);
        plot.SetStackTotal(4);
        for (COLORREF k = 0; k < 3; ++k) {
            auto& curve = AddCurve<SeriesBarCurve>(plot, {}, { c.values[k] });
            curve.SetColour(k);
            curve.SetFillPattern(static_cast<int>(k) + 20);
        }
        // A curve that is not valid takes no part.
        plot.CreateCurve();
        graph.UpdatePlots();
        double base = 0;
        double heights[4];
        COLORREF colours[4];
        int patterns[4];
        auto const n = static_cast<std::size_t>(plot.GetStackedBars(0, base, heights, colours, patterns));
        std::string const message = testing::PrintToString(c.values) + " style " + std::to_string(c.style);
        ASSERT_EQ(n, c.heights.size()) << message;
        EXPECT_DOUBLE_EQ(base, c.base) << message;
        for (std::size_t k = 0; k < n; ++k) {
            EXPECT_DOUBLE_EQ(heights[k], c.heights[k]) << message;
            EXPECT_EQ(colours[k], c.curves[k]) << message;
            EXPECT_EQ(patterns[k], static_cast<int>(c.curves[k]) + 20) << message;
        }
        EXPECT_DOUBLE_EQ(YRange(plot).first, c.range.first) << message;
        EXPECT_DOUBLE_EQ(YRange(plot).second, c.range.second) << message;
        EXPECT_EQ(plot.GetStackedBars(1, base, heights, colours, patterns), 0) << "beyond the points";
    }
}

TEST(PlotArchives, EndWithSettingsInTheirOrder)
{
    auto const endsWith = [](CObject& object, test::Bytes const& expected) {
        return test::Stored(object).Hex().ends_with(expected.Hex());
    };
    C2DCurve curve;
    curve.SetNumPts(3);
    curve.SetXMin(1.5);
    curve.SetXMax(2.5);
    curve.SetScriptXValueMode(1);
    curve.SetLineType(4);
    curve.SetLineWidth(5);
    curve.SetLineMode(6);
    curve.SetXScaleMode(7);
    curve.SetYScaleMode(8);
    curve.SetSeries(9);
    curve.SetSymbolType(C2DSymbol::Plus);
    curve.SetSymbolColour(10);
    curve.SetSymbolFillColour(11);
    curve.SetFillSymbol(12);
    curve.SetSymbolScaleFac(3.5);
    curve.SetXValMode(C2DCurve::xvDates);
    curve.SetUseDefaultRanges(13);
    curve.Initialise(1);
    curve.SetAt(0, { 4.5, 5.5 });
    test::Bytes common = test::Bytes().Int(2).Double(1.5, 2.5).Int(3, 1, 4, 5, 6, 7, 8, 9, 7, 10, 11, 12).Double(3.5);
    EXPECT_TRUE(endsWith(curve, common.Int(1, 13, 2, 2, 1).Double(4.5, 5.5, 0, 1)));
    C2DBarCurve bars;
    bars.SetBarWidthFactor(0.25);
    bars.SetBaseline(-2);
    bars.SetAutoBaseline(0);
    bars.SetBorderColour(7);
    bars.SetFillPattern(19);
    EXPECT_TRUE(endsWith(bars, test::Bytes().Int(1).Double(1, 0.25, -2).Int(0, 7, 19)));
    C2DLinePlot linePlot;
    C2DPlot plain;
    plain.SetTitle(linePlot.GetTitle());
    EXPECT_EQ(test::Stored(linePlot).Get().size(), test::Stored(plain).Get().size() + 4);
    EXPECT_TRUE(endsWith(linePlot, test::Bytes().Int(1)));
    C2DErrorBarCurve errors;
    errors.SetScaleFac(0.25);
    EXPECT_TRUE(endsWith(errors, test::Bytes().Double(0.25)));
    C2DLineSeriesPlot lines;
    lines.SetXMin(3);
    EXPECT_TRUE(
        endsWith(lines, test::Bytes().Int(1, 0).Short(20).Double(3, 10).Int(0, 0, 0).Int(2, 0, 0).Double(0, 1).Int(1)));
    C2DLine line;
    line.SetPointConnectionMode(1);
    line.SetStepMode(2);
    line.SetBaseline(-3);
    line.SetFillColour(4);
    line.SetFillOn(5);
    line.SetShadeMode(C2DLine::shClosed);
    line.SetBaselineShadeMode(C2DLine::bsBelow);
    line.SetUseFillRange(6);
    line.SetFillRange(7, 8);
    line.SetFillBoundaryOn(9);
    line.SetBorderColour(10);
    line.SetAntialiasingOn(11);
    EXPECT_TRUE(
        endsWith(line, test::Bytes().Int(2, 1, 2).Double(-3).Int(3, 1, 4, 5, 1, 2, 6).Double(7, 8).Int(9, 10, 11)));
    C2DClusteredBarPlot clusters;
    EXPECT_TRUE(endsWith(clusters, test::Bytes().Int(1).Double(1, 0.6, 0).Int(1, 0)));
    C2DStackedBarPlot stacks;
    stacks.SetNoRangeMargin(2);
    stacks.SetScaleStacksOn(3);
    stacks.SetStackTotal(4.5);
    stacks.SetPlotStyle(1);
    EXPECT_TRUE(endsWith(stacks, test::Bytes().Int(1).Double(1, 0.5, 0).Int(1, 0, 2, 3).Double(4.5).Int(1)));
}

TEST(Line2D, StrokesWithItsColourWidthAndDashesInsideTheAxes)
{
    C2DGraph graph(1);
    C2DLine& line = test::AddLine(graph, { { -5, -5 }, { 3, 3 }, { 20, 20 } });
    test::FixAxes(*graph.GetAxes(), 10, 10);
    line.SetColour(RGB(10, 20, 30));
    line.SetLineWidth(3);
    line.SetLineType(3);
    line.SetAntialiasingOn(1);
    auto const primitives = Record(graph, kSize);
    auto const strokes = OfKind<primitive::Stroke>(primitives);
    ASSERT_EQ(strokes.size(), 1u);
    EXPECT_EQ(strokes[0].pen.colour.colour, RGB(10, 20, 30));
    EXPECT_EQ(strokes[0].pen.width, 3.0);
    EXPECT_EQ(strokes[0].pen.dashes, (std::vector<double> { 8, 2, 2, 2 }));
    EXPECT_TRUE(strokes[0].smooth);
    CRect const clip = graph.GetClipRect();
    auto const isStroke = [](RecordedPrimitive const& p) { return p.As<primitive::Stroke>() != nullptr; };
    EXPECT_EQ(std::ranges::find_if(primitives, isStroke)->clip.box,
        CRect(clip.left, clip.top, clip.right + 1, clip.bottom + 1));
    line.SetFillOn(1);
    auto const fills = FillsOver(Record(graph, kSize));
    ASSERT_EQ(fills.size(), 1u);
    EXPECT_EQ(fills[0].brush.hatchStyle, 3);
    EXPECT_EQ(fills[0].brush.background.alpha, 1) << "all but transparent";
    for (int const type : { 0, 6, -1, 1000000 }) {
        line.SetLineType(type);
        EXPECT_TRUE(OfKind<primitive::Stroke>(Record(graph, kSize))[0].pen.dashes.empty()) << type;
    }
}

TEST(Symbols, FillTheirShapesUnderTheirOutlines)
{
    struct Case {
        C2DSymbol::SymbolType type;
        std::vector<std::string> rows;
    };
    Case const cases[] = {
        { C2DSymbol::Square, { "#######", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#######" } },
        { C2DSymbol::Triangle, { "#######", "#oooo#.", ".#ooo#.", ".#oo#..", "..#o#..", "..##...", "...#..." } },
        { C2DSymbol::Diamond, { "...#...", "..#o#..", ".#ooo#.", "#ooooo#", ".#ooo#.", "..#o#..", "...#..." } },
        { C2DSymbol::InvertedTriangle,
            { "...#...", "..##...", "..#o#..", ".#oo#..", ".#ooo#.", "#oooo#.", "#######" } },
        { C2DSymbol::Circle, { ".......", "..###..", ".#ooo#.", ".#ooo#.", ".#ooo#.", "..###..", "......." } },
        { C2DSymbol::Pixel, { "#......", ".......", ".......", ".......", ".......", ".......", "......." } },
        { C2DSymbol::None, { ".......", ".......", ".......", ".......", ".......", ".......", "......." } },
        { C2DSymbol::Plus, { "...#...", "...#...", "...#...", "#######", "...#...", "...#...", "...#..." } },
        { C2DSymbol::Cross, { "#.....#", ".#...#.", "..#.#..", "...#...", "..#.#..", ".#...#.", "#.....#" } },
    };
    for (Case const& c : cases) {
        CDIB bitmap(9, 9, 24);
        CDC& dc = *bitmap.GetDC();
        dc.FillSolidRect({ 0, 0, 9, 9 }, 0xFFFFFF);
        CBrush brush(RGB(0, 0, 255));
        dc.SelectObject(&brush);
        CPort port;
        port.Set(&dc, { 0, 0, 9, 9 }, { 0, 0, 9, 9 }, CRealRect({ 0, 9 }, { 9, 0 }));
        C2DSymbol::DrawSymbol(c.type, &port, { 1, 1, 7, 7 }, 0, 1, RGB(0, 0, 255));
        for (int y = 0; y < 7; ++y) {
            std::string row;
            for (int x = 0; x < 7; ++x) {
                COLORREF const pixel = dc.GetPixel(x + 1, y + 1);
                row += pixel == 0 ? '#' : pixel == RGB(0, 0, 255) ? 'o' : '.';
            }
            EXPECT_EQ(row, c.rows[static_cast<std::size_t>(y)]) << "type " << c.type << " row " << y;
        }
    }
}

} // namespace
} // namespace ombrel
