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

using test::FillsOver;
using test::Record;

constexpr CSize kSize(600, 450);
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A table curve of the plot's kind at x = 1, 2, … unless told otherwise.
template <typename Curve = C2DCurve>
Curve& AddCurve(CPlot& plot, std::vector<double> const& ys, std::vector<double> const& xs = {})
{
    auto& curve = static_cast<Curve&>(*plot.CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.Initialise(static_cast<int>(ys.size()));
    for (std::size_t i = 0; i < ys.size(); ++i)
        curve.SetAt(static_cast<int>(i), { i < xs.size() ? xs[i] : static_cast<double>(i + 1), ys[i] });
    return curve;
}

template <typename Plot> Plot& AddPlot(C2DGraph& graph, ItemType type)
{
    auto& plot = static_cast<Plot&>(*graph.AddPlot(type));
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(&plot))
        series->SetXValueMode(1);
    return plot;
}

TEST(BarWidth, IsTheSmallestDistanceBetweenNeighbours)
{
    struct Case {
        std::vector<double> xs;
        double width;
    };
    for (Case const& c : { Case { { 1, 2, 4 }, 1 }, Case { { 4, 2.5, 0.5 }, 1.5 }, Case { { 1, 1, 3 }, 0 },
             Case { { 7 }, 1 }, Case { {}, 1 }, Case { { 1, kGap, 4, std::nan(""), kInfinity, 6 }, 2 } })
        EXPECT_EQ(MaxBarWidthOfPoints(c.xs), c.width) << testing::PrintToString(c.xs);
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 11), static_cast<double>(0.1f));
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 1), 1.0);
    EXPECT_TRUE(std::isfinite(MaxBarWidthOfMesh(-kMostReal, kMostReal, 3)));
}

TEST(BarCurve, WidensItsRangesForTheBars)
{
    C2DGraph graph(1);
    auto& plot = AddPlot<C2DBarPlot>(graph, it2DBarPlot);
    auto& curve = AddCurve<C2DBarCurve>(plot, { 2, 8, 5 }, { 1, 2, 4 });
    graph.UpdatePlots();
    double min = 0;
    double max = 0;
    plot.GetXRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(0.75, 4.25));
    EXPECT_EQ(curve.GetBarWidth(), 0.5);
    plot.GetYRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(2 - 0.06, 8.0)) << "room below a minimum that is not 0";
    curve.SetAutoBaseline(0);
    curve.SetBaseline(-5);
    plot.GetYRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(-5.0, 8.0));
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
        AddCurve(plot, { 3, -1, kGap }, { -14, -12, -10 });
        graph.UpdatePlots();
        double min = 0;
        double max = 0;
        plot.GetXRange(min, max);
        EXPECT_EQ(std::make_pair(min, max), std::make_pair(-14.5, -11.5));
        if (auto* const stacked = DynamicDowncast<C2DStackedBarPlot>(&plot)) {
            stacked->SetNoRangeMargin(1);
            plot.GetXRange(min, max);
            EXPECT_EQ(std::make_pair(min, max), std::make_pair(-14.0, -12.0));
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
        std::vector<double> heights;
        std::vector<COLORREF> curves;
        double min;
        double max;
    };
    for (Case const& c : {
             Case { 0, 0, { 3, -2, 5 }, -2, { 2, 3, 5 }, { 1, 0, 2 }, -2, 8 },
             Case { 0, 0, { -3, -2, 5 }, -5, { 2, 3, 5 }, { 1, 0, 2 }, -5, 5 },
             Case { 1, 0, { 3, -2, 5 }, -20, { 20, 30, 50 }, { 1, 0, 2 }, -20, 80 },
             Case { 1, 0, { -1, -2, -5 }, 0, { 62.5, 25, 12.5 }, { 2, 1, 0 }, 0, 100 },
             Case { 1, 0, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, 0, 100 },
             Case { 0, 1, { 3, -2, 5 }, -0.8, { 0.8, 1.2, 2 }, { 1, 0, 2 }, -2, 8 },
             Case { 0, 1, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, 0, 0 },
             Case { 1, 1, { 3, kGap, 1 }, 0, { 3, 1 }, { 0, 2 }, 0, 100 },
             Case { 0, 0, { -kMostReal, kMostReal, kMostReal }, -kMostReal, { kMostReal, kMostReal, kMostReal },
                 { 0, 1, 2 }, -kMostReal, kMostReal },
         }) {
        C2DGraph graph(1);
        auto& plot = AddPlot<C2DStackedBarPlot>(graph, it2DStackedBarPlot);
        plot.SetPlotStyle(c.style);
        plot.SetScaleStacksOn(c.scaled);
        plot.SetStackTotal(4);
        for (COLORREF k = 0; k < 3; ++k) {
            auto& curve = AddCurve<SeriesBarCurve>(plot, { c.values[k] });
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
        double min = 1;
        double max = 1;
        plot.GetYRange(min, max);
        EXPECT_DOUBLE_EQ(min, c.min) << message;
        EXPECT_DOUBLE_EQ(max, c.max) << message;
        EXPECT_EQ(plot.GetStackedBars(1, base, heights, colours, patterns), 0) << "beyond the points";
    }
    double min = 3;
    double max = 4;
    C2DStackedBarPlot().GetYRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(3.0, 4.0)) << "without a curve";
}

TEST(Bars, OfAnyDataStayInsideTheAxes)
{
    std::vector<std::pair<std::vector<double>, std::vector<double>>> const data {
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
                auto& first = AddCurve(plot, ys, xs);
                AddCurve(plot, { -1, 4 });
                if (auto* const bars = DynamicDowncast<C2DBarCurve>(&first))
                    bars->SetBarWidthFactor(factor);
                if (auto* const clusters = DynamicDowncast<C2DClusteredBarPlot>(&plot))
                    clusters->SetBarWidthFactor(factor);
                if (auto* const stacks = DynamicDowncast<C2DStackedBarPlot>(&plot))
                    stacks->SetBarWidthFactor(factor);
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
        CMemFile file;
        CArchive ar(&file, CArchive::store);
        object.Serialize(ar);
        ar.Close();
        std::vector<std::byte> const all = file.GetBytes();
        std::vector<std::byte> const& end = expected.Get();
        return all.size() > end.size() && std::equal(end.rbegin(), end.rend(), all.rbegin());
    };
    C2DBarCurve curve;
    curve.SetBarWidthFactor(0.25);
    curve.SetBaseline(-2);
    curve.SetAutoBaseline(0);
    curve.SetBorderColour(7);
    curve.SetFillPattern(19);
    EXPECT_TRUE(endsWith(curve, test::Bytes().Int(1).Double(1, 0.25, -2).Int(0, 7, 19)));
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
