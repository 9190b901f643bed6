#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
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
using test::Record;
using test::Values;
using test::XRange;
using test::YRange;

constexpr CSize kSize(600, 450);
constexpr double kInfinity = std::numeric_limits<double>::infinity();

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

TEST(Bars, OfAnyDataStayInsideTheAxes)
{
    std::vector<std::pair<Values, Values>> const data {
        { {}, {} },
        { { 5 }, { 1 } },
        { { kGap, std::nan("") }, { 1, 2 } },
        { { 1, 2, 3 }, { 2, 2, 2 } },
        { { 1, 2, 3 }, { 3, 2, 1 } },
        { { kMostReal, -kMostReal, 1e300 }, { -kMostReal, 0, kMostReal } },
        { { kInfinity, -kInfinity, 1 }, { 1, std::nan(""), kInfinity } },
    };
    for (ItemType const type : { it2DBarPlot, it2DClusteredBarPlot, it2DStackedBarPlot }) {
        for (auto const& [ys, xs] : data) {
            for (double const factor : { 0.5, 0.0, -3.0, 1e300, kInfinity, std::nan("") }) {
                C2DGraph graph(1);
                auto& plot = AddPlot<C2DPlot>(graph, type);
                auto& first = AddCurve(plot, xs, ys);
                AddCurve(plot, {}, { -1, 4 });
                if (auto* const bars = DynamicDowncast<C2DBarCurve>(&first))
                    bars->SetBarWidthFactor(factor);
                if (auto* const series = dynamic_cast<SeriesBarPlot*>(&plot))
                    series->SetBarWidthFactor(factor);
                graph.UpdatePlots();
                // As in a damaged document: fewer points than the plot and the other curves have.
                static_cast<C2DCurve&>(*plot.GetComponent(1)).Initialise(1);
                auto const primitives = Record(graph, kSize);
                CRect const axes = graph.GetAxesRect();
                for (auto const& p : FillsOver(primitives)) {
                    CRect common;
                    EXPECT_TRUE(common.IntersectRect(p.region.Box(), axes) && common == p.region.Box());
                }
            }
        }
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

} // namespace
} // namespace ombrel
