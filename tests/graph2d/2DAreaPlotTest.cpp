#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/paths/AreaBands.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <limits>

namespace ombrel {
namespace {

using test::YRange;
using Row = test::Values;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

C2DAreaPlot& AddAreas(C2DGraph& graph, Row const& xs, std::vector<Row> const& rows)
{
    auto& plot = test::AddPlot<C2DAreaPlot>(graph, it2DAreaPlot);
    for (Row const& row : rows)
        test::AddCurve(plot, xs, row);
    return plot;
}

TEST(AreaPlot, RangeFollowsTheRunningTotals)
{
    struct Case {
        std::vector<Row> rows;
        std::pair<double, double> plain;
        std::pair<double, double> normalised;
    };
    Case const cases[] = {
        { { { 1, 2 }, { 3, 1 } }, { 0, 4 }, { 0, 1 } },
        { { { 1, 2 }, { -3, 1 }, { 1, 1 } }, { -2, 4 }, { -0.5, 1 } },
        { { { -1, -2 }, { -1, 1 } }, { -2, 0 }, { -1, 0 } },
        { { { 0, 0 } }, { 0, 0 }, { 0, 1 } },
        { { { 1e308, 0 }, { 1e308, 0 } }, { 0, kGap / 2 }, { 0, 1 } },
        { { { 1, kGap }, { kNaN, 2 }, { kInfinity, -kInfinity } }, { 0, 2 }, { 0, 1 } },
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

TEST(AreaBands, NormalisedColumnsSpanOne)
{
    Row first { 1, 2, -1, 0, 1e308 };
    Row second { 3, 1, 4, 0, 1e308 };
    double* const rows[] { first.data(), second.data() };
    NormaliseColumns(rows, first.size());
    EXPECT_EQ(first, (Row { 0.25, 2.0 / 3.0, -0.25, 0, 0 }));
    EXPECT_EQ(second, (Row { 0.75, 1.0 / 3.0, 1, 0, 0 }));
}

TEST(AreaBands, StripKeepsPointsInsideAndCrossingsInTheOrderOfTheLine)
{
    CPort const port(nullptr, { 0, 0, 100, 100 }, { 0, 0, 100, 100 }, { 0, 100, 100, 0 });
    struct Case {
        char const* what;
        Row xs;
        Row ys;
        Row clippedXs;
        Row clippedYs;
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
    Row const xs { 0, 10 };
    PortMapping const map = CPort(nullptr, { 0, 0, 20, 20 }, { 0, 0, 20, 20 }, { 0, 20, 20, 0 }).GetMapping();
    Row const low { 1, 2 };
    Row const more { 3, 0 };
    Row const mixed { -1, 1 };
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
    Row const xs { 0, 5, 5, 5, 5, 10, 15, 15, 15 };
    PortMapping const map = CPort(nullptr, { 0, 0, 20, 20 }, { 0, 0, 20, 20 }, { 0, 20, 20, 0 }).GetMapping();
    Row const row { 1, 2, 6, 0, 3, 1, 4, 9, 2 };
    std::span<double const> const rows[] { row };
    EXPECT_EQ(MakeBands(xs, rows, map)[0],
        (std::vector<CPoint> { { 0, 19 }, { 5, 18 }, { 5, 20 }, { 5, 14 }, { 5, 17 }, { 10, 19 }, { 15, 16 },
            { 15, 11 }, { 15, 18 }, { 15, 20 }, { 10, 20 }, { 5, 20 }, { 0, 20 } }));
}

TEST(AreaBands, OfACrowdedPixelColumnTheEndsAndExtremesOfEachLayerAreKept)
{
    // Three places left of the strip, 700 in one pixel column, six and seven in the next two, a gap, two on the right.
    Row xs { -5, -4, -3 };
    xs.insert(xs.end(), 700, 50);
    xs.insert(xs.end(), 6, 51);
    xs.insert(xs.end(), 7, 52);
    xs.insert(xs.end(), { kNaN, 120, 130 });
    Row low(xs.size(), 1);
    Row high(xs.size(), 0);
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
    for (std::size_t const i : { 9, 10, 11, 12, 13, 14, 15, 16, 65, 315, 405, 615, 715, 716, 718 })
        expected.push_back(i);
    EXPECT_EQ(visible(Normalising::No, false), expected);
}

TEST(AreaPlot, OddDataAndTinyAreasDrawNothingOutside)
{
    std::vector<std::pair<Row, std::vector<Row>>> const data {
        { {}, {} },
        { { 1, 2 }, {} },
        { { 1 }, { { 2 }, { 3 } } },
        { { 5, 5, 5 }, { { 1, 9, 2 }, { 3, -3, 3 } } },
        { { 9, 4, 1 }, { { 1, 2, 3 } } },
        { { 0, 1 }, { { 0, 0 }, { 0, 0 } } },
        { { kNaN, kGap }, { { 1, 2 } } },
        { { -1e308, kNaN, 1e308 }, { { 1e308, 1, 1e308 }, { 1e308, kNaN, -1e308 } } },
        { { 0, 1, 2 }, { { kGap, kGap, kGap }, { 1e-310, -1e-310, 0 } } },
    };
    for (auto const& [xs, rows] : data) {
        for (CSize const size : { CSize(60, 40), CSize(3, 2), CSize(1, 1) }) {
            for (int const normalised : { 0, 1 }) {
                C2DGraph graph(1);
                C2DAreaPlot& plot = AddAreas(graph, xs, rows);
                plot.SetNormalised(normalised);
                // Counts of curves may differ in a damaged document.
                if (rows.size() > 1)
                    static_cast<C2DAreaCurve&>(*plot.GetComponent(1)).Initialise(1);
                for (auto const& p : test::FillsOver(test::Record(graph, size)))
                    EXPECT_TRUE(CRect(-1, -1, size.cx + 1, size.cy + 1).PtInRect(p.region.Box().TopLeft()));
            }
        }
    }
}

} // namespace
} // namespace ombrel
