#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <cmath>

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

TEST(Curve2D, ShowsItsLineAndSymbolsInLegends)
{
    TableCurve curve({ { 1, 2 } });
    curve.SetTitle("t");
    curve.SetColour(1);
    curve.SetLineType(5);
    curve.SetLineWidth(2);
    curve.SetSymbolType(C2DSymbol::Plus);
    curve.SetSymbolColour(3);
    curve.SetSymbolFillColour(4);
    curve.SetFillSymbol(5);
    auto const e = curve.GetLegendEntry();
    EXPECT_TRUE(e->title == CString("t") && e->colour == 1 && e->dashes.size() == 2 && e->lineWidth == 2);
    EXPECT_TRUE(e->symbolType == 7 && e->symbolColour == 3 && e->symbolFillColour == 4 && e->fillSymbol == 5);
    EXPECT_EQ(e->fillPattern, LegendEntry::kNoPattern);
}

TEST(Curve2D, IsDefinedByItsDataSource)
{
    C2DCurve curve;
    EXPECT_FALSE(curve.IsDefined());
    curve.SetFormulaString("y = x");
    EXPECT_TRUE(curve.IsDefined());
    EXPECT_FALSE(curve.Evaluate());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    EXPECT_FALSE(curve.IsDefined());
    curve.Initialise(3);
    EXPECT_TRUE(curve.IsDefined());
    EXPECT_TRUE(curve.Evaluate());
    curve.SetDataSourceType(CPlotComponent::dsFile);
    EXPECT_FALSE(curve.IsDefined());
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

} // namespace
} // namespace ombrel
