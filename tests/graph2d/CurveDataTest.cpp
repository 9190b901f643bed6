#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace ombrel {
namespace {

class TableCurve : public C2DCurve {
public:
    explicit TableCurve(test::Points const& points) { test::SetTable(*this, points); }
};

TEST(Curve2D, InterpolatesBetweenPointsAndStaysAtTheEnds)
{
    TableCurve const curve({ { 0, 1 }, { 1, 3 }, { 1, 7 }, { 3, 9 } });
    for (auto const& [x, y] :
        test::Points { { -5, 1 }, { 0, 1 }, { 0.5, 2 }, { 1, 3 }, { 2, 8 }, { 3, 9 }, { 99, 9 } }) {
        EXPECT_DOUBLE_EQ(curve.GetAt(x).y, y) << x;
        EXPECT_DOUBLE_EQ(curve.GetYVal(x), y) << x;
    }
}

TEST(Curve2D, SlopeOfAParabolaIsExact)
{
    test::Points points;
    for (double const x : { -3.0, -1.0, 0.0, 0.5, 2.0, 7.0 })
        points.emplace_back(x, x * x);
    TableCurve const curve(points);
    for (double const x : { -3.0, -2.5, -0.2, 0.0, 0.3, 1.9, 6.0, 7.0 })
        EXPECT_NEAR(curve.GetDerivative(x), 2 * x, 1e-12) << x;
    // Of a cube the three points round the nearest one tell: 0, 1, 2 or 1, 2, 3.
    TableCurve const cube({ { 0, 0 }, { 1, 1 }, { 2, 8 }, { 3, 27 }, { 4, 64 } });
    EXPECT_NEAR(cube.GetDerivative(1.2), 6 * 1.2 - 2, 1e-12);
    EXPECT_NEAR(cube.GetDerivative(1.6), 12 * 1.6 - 11, 1e-12);
    EXPECT_EQ(TableCurve({ { 0, 1 }, { 1, 2 } }).GetDerivative(0.5), 0.0);
}

TEST(Curve2D, LogarithmicAxesSeeDecadesAndClampWhatHasNone)
{
    TableCurve curve({ { 1, 0 }, { 10, 100 }, { 1000, 0.01 } });
    curve.SetYScaleMode(1);
    curve.SetXScaleMode(1);
    EXPECT_EQ(curve.GetAt(0).y, -100.0);
    double small = 1e-99;
    C2DCurve::LogClamp(small);
    EXPECT_DOUBLE_EQ(small, -99.0);
    EXPECT_EQ(test::XRange(curve), std::make_pair(0.0, 3.0));
    EXPECT_EQ(test::YRange(curve), std::make_pair(-100.0, 2.0));
    EXPECT_EQ(curve.GetYVal(10), 100.0) << "stored values";
    EXPECT_EQ(test::XRange(TableCurve({ { 1, kGap }, { kGap, 2 } })), std::make_pair(0.0, 0.0)) << "no point";
}

TEST(Curve2D, TakesRowsOfTablesAndSpreadsXOverItsInterval)
{
    CTableData table(3, 2);
    for (int i = 0; i < 6; ++i)
        table.SetAt(i / 2, i % 2, i);
    TableCurve curve({});
    curve.SetPoints(table, 2, 0);
    ASSERT_EQ(curve.GetNumPoints(), 2);
    for (auto const& [x, y] : { std::pair(0, 3), std::pair(3, 0), std::pair(-1, 0), std::pair(0, -1) })
        curve.SetPoints(table, x, y);
    EXPECT_EQ(std::as_const(curve).GetAt(1), CRealPoint(5, 1)) << "there are no such rows";
    curve.SetXPoints(table);
    curve.SetYPoints(table);
    EXPECT_EQ(std::as_const(curve).GetAt(1), CRealPoint(1, 3));
    curve.SetPoints(table, -1, -1);
    EXPECT_EQ(curve.GetPoints().GetNumRows(), 3);
    curve.Initialise(4);
    curve.SetNumPts(4);
    curve.SetXMin(2);
    curve.SetXMax(8);
    curve.SetXValuesFromMesh();
    EXPECT_EQ(std::as_const(curve).GetAt(1).x, 4.0);
    EXPECT_EQ(std::as_const(curve).GetAt(3).x, 8.0);
}

TEST(Curve2D, TakesPointsFromArraysOnlyWhenTheyAreLongEnough)
{
    TableCurve curve({ { 5, 6 } });
    CDoubleArray const xs { 1, 2, 3 };
    CDoubleArray const ys { 9 };
    curve.SetPoints(&xs, &ys, 2);
    EXPECT_EQ(curve.GetNumPoints(), 1) << "y is too short";
    curve.SetPoints(&xs, static_cast<CDoubleArray*>(nullptr), 3);
    EXPECT_EQ(curve.GetNumPoints(), 3);
    EXPECT_EQ(std::as_const(curve).GetAt(2).x, 3.0);
    CByteArray const bytes { 0, 255 };
    curve.SetPoints(nullptr, &bytes, 2);
    EXPECT_EQ(std::as_const(curve).GetAt(1).y, 255.0);
}

TEST(SeriesPlot, GivesItsCurvesTheSharedXValues)
{
    C2DGraph graph(1);
    auto& plot = static_cast<C2DSeriesPlot&>(*graph.AddPlot(it2DLineSeriesPlot));
    plot.SetNumPts(11);
    plot.SetXMin(-10);
    plot.SetXValMode(C2DCurve::xvDates);
    auto& first = static_cast<C2DCurve&>(*plot.CreateCurve());
    test::SetTable(first, { { 0, 7 }, { 0, 8 }, { 0, 9 }, { 0, 10 } });
    graph.UpdatePlots();
    ASSERT_EQ(first.GetNumPoints(), 11);
    EXPECT_EQ(std::as_const(first).GetAt(10).x, 10.0);
    EXPECT_EQ(std::as_const(first).GetAt(3).y, 10.0) << "own y values stay";
    EXPECT_EQ(std::as_const(first).GetAt(4).y, 0.0);
    EXPECT_EQ(first.GetXValueKind(), C2DCurve::xvDates);
    EXPECT_EQ(first.GetXMax() - first.GetXMin(), 20.0);
    EXPECT_EQ(plot.GetAt(3), CRealPoint(-4, 10)) << "the plot takes over the first curve's points";

    CDoubleArray const xs { 1, 4, 9 };
    plot.SetXValueMode(1);
    plot.SetPoints(&xs, 4);
    EXPECT_EQ(plot.GetNumActualPoints(), 11) << "too few values change nothing";
    plot.SetPoints(&xs, 3);
    plot.UpdateCurves();
    ASSERT_EQ(first.GetNumPoints(), 3);
    EXPECT_EQ(std::as_const(first).GetAt(2).x, 9.0);

    double v = 1000.0;
    C2DSeriesPlot::LogClamp(v);
    EXPECT_EQ(v, 3.0);
    v = 0.0;
    C2DSeriesPlot::LogClamp(v);
    EXPECT_EQ(v, -10.0);
}

CTableData RandomWalk(int points)
{
    CTableData table(2, points);
    std::mt19937 random(7);
    std::normal_distribution<double> step;
    double y = 0.0;
    for (int i = 0; i < points; ++i) {
        table.SetAt(0, i, i * 0.5);
        table.SetAt(1, i, y += step(random));
    }
    return table;
}

TEST(PointSummary, GivesTheExtremesOfAnyStretchAsAScanDoes)
{
    CTableData const table = RandomWalk(1000);
    PointSummary summary;
    summary.Update(table);
    EXPECT_TRUE(summary.XAscends());
    for (std::size_t const first : { 0U, 1U, 63U, 64U, 65U, 500U }) {
        for (std::size_t const last : { 501U, 511U, 512U, 513U, 999U, 1000U }) {
            Extremes found {};
            ASSERT_TRUE(summary.YExtremes(table.GetRow(1), first, last, found));
            auto const [low, high] = std::minmax_element(table.GetRow(1) + first, table.GetRow(1) + last);
            EXPECT_EQ(found.min, *low) << first << " … " << last;
            EXPECT_EQ(found.max, *high) << first << " … " << last;
        }
    }
}

TEST(PointSummary, LeavesPointsOutOfBothRangesWhenEitherCoordinateIsMissing)
{
    for (double const missing : { kGap, std::nan(""), std::numeric_limits<double>::infinity() }) {
        for (int const at : { 3, 150, 190 }) {
            CTableData table = RandomWalk(200);
            table.SetAt(0, at, 1e6);
            table.SetAt(1, at, missing);
            PointSummary summary;
            summary.Update(table);
            EXPECT_EQ(summary.XRange().max, 199 * 0.5);
            EXPECT_LT(summary.YRange().max, 1e5);
            Extremes found {};
            EXPECT_FALSE(summary.YExtremes(table.GetRow(1), 0, 200, found));
        }
    }
}

TEST(PointSummary, KnowsWhenXDoesNotAscend)
{
    for (int const at : { 1, 4, 63, 64, 65, 199 }) {
        for (double const x : { 0.5 * (at - 1) - 0.25, std::nan("") }) {
            CTableData table = RandomWalk(200);
            table.SetAt(0, at, x);
            PointSummary summary;
            summary.Update(table);
            EXPECT_FALSE(summary.XAscends()) << at << " " << x;
        }
    }
}

TEST(PointSummary, FollowsTheTable)
{
    CTableData table = RandomWalk(100);
    PointSummary summary;
    summary.Update(table);
    table.SetAt(1, 50, 1e9);
    summary.Update(table);
    EXPECT_EQ(summary.YRange().max, 1e9);
    std::fill_n(table.GetRow(1), 100, -5.0);
    summary.Update(table);
    EXPECT_EQ(summary.YRange().max, -5.0);
    table.Clear();
    summary.Update(table);
    EXPECT_TRUE(summary.XRange().IsEmpty());
}

} // namespace
} // namespace ombrel
