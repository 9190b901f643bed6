#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph2d/paths/AreaBands.h"
#include "ombrel/graph2d/paths/PolygonPath.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace ombrel {
namespace {

using test::FillsOver;
using test::Record;
using Row = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

C2DAreaPlot& AddAreas(C2DGraph& graph, Row const& xs, std::vector<Row> const& rows)
{
    auto& plot = static_cast<C2DAreaPlot&>(*graph.AddPlot(it2DAreaPlot));
    plot.SetXValueMode(1);
    CDoubleArray shared;
    for (double const x : xs)
        shared.Add(x);
    plot.SetPoints(&shared, shared.GetSize());
    for (Row const& row : rows) {
        auto& curve = static_cast<C2DAreaCurve&>(*plot.CreateCurve());
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.Initialise(static_cast<int>(row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            curve.SetYAt(static_cast<int>(i), row[i]);
    }
    graph.UpdatePlots();
    return plot;
}

AreaStack StackOf(Row const& xs, std::vector<Row> const& rows)
{
    auto const isComplete = [](Row const& row) { return std::none_of(row.begin(), row.end(), IsGap); };
    AreaStack stack { xs.data(), xs.size(), false, isComplete(xs) && std::is_sorted(xs.begin(), xs.end()), {} };
    for (Row const& row : rows)
        stack.layers.push_back({ row.data(), row.size(), false, isComplete(row) });
    return stack;
}

TEST(AreaPlot, RangeFollowsTheRunningTotals)
{
    struct Case {
        std::vector<Row> rows;
        Extremes plain;
        Extremes normalised;
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
        Extremes found {};
        plot.GetYRange(found.min, found.max);
        EXPECT_EQ(std::pair(found.min, found.max), std::pair(c.plain.min, c.plain.max));
        plot.SetNormalised(1);
        plot.GetYRange(found.min, found.max);
        EXPECT_EQ(std::pair(found.min, found.max), std::pair(c.normalised.min, c.normalised.max));
    }
}

TEST(AreaPlot, RangeIsFoundAgainWhenTheDataChanges)
{
    C2DGraph graph(1);
    C2DAreaPlot& plot = AddAreas(graph, { 0, 1 }, { { 1, 2 }, { 3, 1 } });
    double min = 0;
    double max = 0;
    auto const top = [&] { return plot.GetYRange(min, max), max; };
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

/// The bands' polygons with every point.
std::vector<std::vector<CPoint>> WholeBands(Row const& xs, std::vector<Row> const& rows, CPort const& port)
{
    Row bottoms(xs.size(), 0.0);
    std::vector<std::vector<CPoint>> bands;
    for (Row const& row : rows) {
        std::vector<CPoint> band;
        std::vector<CPoint> back;
        for (std::size_t i = 0; i < xs.size(); ++i) {
            back.push_back(port.UnitsToWindow(CRealPoint(xs[i], bottoms[i])));
            band.push_back(port.UnitsToWindow(CRealPoint(xs[i], bottoms[i] += row[i])));
        }
        band.insert(band.end(), back.rbegin(), back.rend());
        bands.push_back(band);
    }
    return bands;
}

/// The picture of a stack's bands, with outlines: of the visible columns as they are drawn, or of all with all points.
std::string Picture(AreaStack const& stack, CPort const& port, Normalising normalising, bool whole)
{
    CRect const clip(10, 10, 110, 90);
    auto const columns = whole ? AllColumns(stack) : VisibleColumns(stack, port.GetMapping(), { 10, 110 }, normalising);
    std::vector<Row> rows;
    std::vector<double*> data;
    for (std::size_t layer = 0; layer < stack.layers.size(); ++layer) {
        Row& row = rows.emplace_back();
        double buffer = 0.0;
        for (std::size_t const i : columns)
            row.push_back(*stack.Load(layer, i, i + 1, &buffer));
        data.push_back(row.data());
    }
    if (normalising == Normalising::Yes)
        NormaliseColumns(data, columns.size());
    Row xs;
    for (std::size_t const i : columns)
        xs.push_back(stack.X(i));
    RealPath path;
    for (Row& row : rows) {
        path = ClipToStrip(xs, row, port, { clip.left, clip.right });
        row = path.ys;
    }
    std::vector<std::span<double const>> const spans(rows.begin(), rows.end());
    CDIB dib(120, 100, 24);
    VectorGraphics graphics(*dib.GetDC());
    for (std::size_t band = 0;
         auto const& polygon : whole ? WholeBands(path.xs, rows, port) : MakeBands(path.xs, spans, port.GetMapping())) {
        auto const clipped = ClipToRows(polygon, clip);
        PolygonPath filling;
        for (CPoint const p : clipped)
            filling.Add(p);
        int const tone = 60 * static_cast<int>(++band);
        graphics.FillPolygon(VectorBrush::Solid(RGB(tone, tone, 0)), whole ? clipped : filling.Points());
        CPen pen(PS_SOLID, 1, RGB(0, 0, tone));
        dib.GetDC()->SelectObject(&pen);
        dib.GetDC()->Polyline(clipped);
    }
    return dib.EncodeBmp();
}

TEST(AreaBands, CrowdedColumnsDrawTheSamePixelsMergedAndWhole)
{
    std::mt19937 random(7);
    std::normal_distribution<double> noise;
    std::uniform_real_distribution<double> anywhere(0.0, 100.0);
    constexpr std::size_t kCount = 3000;
    enum class Order { Ascending, Descending, Any, OneColumn };
    for (Order const order : { Order::Ascending, Order::Descending, Order::Any, Order::OneColumn }) {
        for (bool const gaps : { false, true }) {
            Row xs;
            for (std::size_t i = 0; i < kCount; ++i)
                xs.push_back(order == Order::OneColumn ? 40.0 : anywhere(random));
            if (order == Order::Ascending || order == Order::Descending)
                std::sort(xs.begin(), xs.end());
            if (order == Order::Descending)
                std::reverse(xs.begin(), xs.end());
            std::vector<Row> rows(3);
            for (Row& row : rows) {
                double y = 1.0;
                for (std::size_t i = 0; i < kCount; ++i)
                    row.push_back(gaps&& i % 50 == 0 ? kGap : y += 0.1 * noise(random));
            }
            if (gaps) {
                rows[1].resize(kCount / 2);
                xs[700] = kNaN;
            }
            AreaStack const stack = StackOf(xs, rows);
            for (Normalising const normalising : { Normalising::No, Normalising::Yes }) {
                // The whole, and a part beyond whose four sides there is more.
                for (CRealRect const& shown : { CRealRect(0, 20, 100, -20), CRealRect(30, 0.8, 50, -0.3) }) {
                    CPort const port(nullptr, { 0, 0, 120, 100 }, { 10, 10, 110, 90 }, shown);
                    // Points that keep changing columns cannot be merged.
                    EXPECT_LT(VisibleColumns(stack, port.GetMapping(), { 10, 110 }, normalising).size(),
                        order == Order::Any ? kCount + 1 : kCount / 2);
                    EXPECT_TRUE(Picture(stack, port, normalising, false) == Picture(stack, port, normalising, true))
                        << static_cast<int>(order) << gaps << static_cast<int>(normalising) << shown.left;
                }
            }
        }
    }
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
        for (CSize const size : { CSize(600, 450), CSize(60, 40), CSize(3, 2), CSize(1, 1) }) {
            for (int const normalised : { 0, 1 }) {
                C2DGraph graph(1);
                C2DAreaPlot& plot = AddAreas(graph, xs, rows);
                plot.SetNormalised(normalised);
                // Counts of curves may differ in a damaged document.
                if (rows.size() > 1)
                    static_cast<C2DAreaCurve&>(*plot.GetComponent(1)).Initialise(1);
                for (auto const& p : FillsOver(Record(graph, size)))
                    EXPECT_TRUE(CRect(-1, -1, size.cx + 1, size.cy + 1).PtInRect(p.region.Box().TopLeft()));
            }
        }
    }
}

} // namespace
} // namespace ombrel
