#include "ombrel/annotation/Legend.h"
#include "ombrel/graph3d/Surface.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

namespace ombrel::test {
namespace {

/// How many lines of the graph's picture are red.
std::size_t RedLines(C2DGraph& graph)
{
    std::size_t lines = 0;
    for (auto const& stroke : OfKind<primitive::Stroke>(Record(graph, { 300, 200 })))
        lines += stroke.pen.colour.colour == RGB(255, 0, 0) ? 1 : 0;
    return lines;
}

TEST(NewGraph, DrawsACurveOnceItHasASourceAndWasEvaluated)
{
    C2DGraph graph(1);
    auto& curve = static_cast<C2DLine&>(*graph.AddPlot(it2DLinePlot)->CreateCurve());
    curve.SetColour(RGB(255, 0, 0));
    curve.Initialise(2);
    curve.SetAt(1, { 20, 30 });
    graph.UpdatePlots();
    EXPECT_EQ(RedLines(graph), 0u);

    curve.SetDataSourceType(CPlotComponent::dsTable);
    EXPECT_EQ(RedLines(graph), 0u);
    graph.UpdatePlots();
    EXPECT_EQ(RedLines(graph), 1u);
    EXPECT_EQ(graph.GetAxes()->GetXAxisMax(), 20.0);
}

TEST(NewGraph, AddsCurvesByNameToLineAndContourPlotsOnly)
{
    for (int type = it2DLinePlot; type <= it2DContourPlot; ++type) {
        C2DGraph graph(1);
        CPlot* const plot = graph.AddPlot(static_cast<ItemType>(type));
        if (!plot)
            continue;
        bool const isByName = type == it2DLinePlot || type == it2DContourPlot;
        EXPECT_EQ(plot->AddCurve("a", CPlotComponent::dsTable) != nullptr, isByName) << type;
        EXPECT_NE(plot->CreateCurve(), nullptr) << type;
    }
}

TEST(NewGraph, KeepsTheXValuesOfASeriesCurveInValueMode1)
{
    for (ItemType const type : { it2DAreaPlot, it2DLineSeriesPlot, it2DStackedBarPlot, it2DClusteredBarPlot }) {
        C2DGraph graph(1);
        auto& plot = static_cast<C2DSeriesPlot&>(*graph.AddPlot(type));
        auto& curve = static_cast<C2DCurve&>(*plot.CreateCurve());
        auto const lastX = [&] {
            graph.UpdatePlots();
            return std::pair(curve.GetNumPoints(), curve.GetAt(curve.GetNumPoints() - 1).x);
        };
        SetTable(curve, { { 1, 1 }, { 4, 2 }, { 9, 3 } });
        EXPECT_EQ(lastX(), std::pair(20, 10.0)) << type;

        plot.SetXValueMode(1);
        plot.SetPoints(CTableData());
        SetTable(curve, { { 1, 1 }, { 4, 2 }, { 9, 3 } });
        EXPECT_EQ(lastX(), std::pair(3, 9.0)) << type;
        // The plot has its x values now, until it is given others.
        SetTable(curve, { { 2, 1 }, { 5, 2 } });
        EXPECT_EQ(lastX(), std::pair(3, 9.0)) << type;
        plot.SetPoints(CTableData());
        SetTable(curve, { { 2, 1 }, { 5, 2 } });
        EXPECT_EQ(lastX(), std::pair(2, 5.0)) << type;
    }
}

TEST(Setters, TakeNumbersAndTheNamesOfTheirOwnValues)
{
    auto const takesRange = [](auto mode) {
        return requires(CAxes & axes) { axes.SetXAxisRangeMode(mode); };
    };
    static_assert(takesRange(3));
    static_assert(takesRange(CAxes::rmStored));
    static_assert(!takesRange(CAxes::trFixed));
    auto const takesStep = [](auto mode) {
        return requires(C2DLine & line) { line.SetStepMode(mode); };
    };
    static_assert(!takesStep(C2DLine::cmStepped));
    auto const takesContours = [](auto mode) {
        return requires(CSurface & surface) { surface.SetContourMode(mode); };
    };
    static_assert(takesContours(CSurface::cmLines));
    static_assert(!takesContours(CSurface::clArbitrary));
    auto const takesLegend = [](auto style) {
        return requires(CLegend & legend) { legend.SetStyle(style); };
    };
    static_assert(!takesLegend(C2DSymbol::Circle));

    C2DLine line;
    line.SetStepMode(C2DLine::smVerticalFirst);
    EXPECT_EQ(line.GetStepMode(), 2);
    line.SetStepMode(-7);
    EXPECT_EQ(line.GetStepMode(), -7);
}

} // namespace
} // namespace ombrel::test
