#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace ombrel {
namespace {

constexpr CSize kSize(120, 90);

struct Drawing {
    CDIB bitmap { kSize.cx, kSize.cy, 24 };
    PointMapping map;
    explicit Drawing(bool logarithmic)
    {
        bitmap.GetDC()->FillSolidRect({ 0, 0, kSize.cx, kSize.cy }, 0xFFFFFF);
        CRect const area({ 0, 0 }, kSize);
        CPort const port(bitmap.GetDC(), area, area, CRealRect({ 0.0, 1.0 }, { 1.0, 0.0 }));
        map = { port.GetMapping(), logarithmic, logarithmic };
    }
    void Stroke(LinePath const& path)
    {
        VectorGraphics graphics(*bitmap.GetDC());
        graphics.DrawPath({}, path.Get());
    }
};

/// Every point as it is, broken at gaps.
LinePath UnmergedLines(StoredPoints const& points, PointMapping const& map)
{
    LinePath path;
    path.Clear();
    for (std::size_t i = 0; i < points.count; ++i) {
        if (IsGap(points.xs[i]) || IsGap(points.ys[i]))
            path.Break();
        else
            path.Add({ map.X(points.xs[i]), map.Y(points.ys[i]) });
    }
    return path;
}

TEST(LinePath, MergedLinesCoverThePixelsOfAllPoints)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    double walk = 0.5;
    auto const step = [&] { return walk += (unit(random) - 0.5) * 0.02; };
    struct {
        char const* name;
        int count;
        std::function<CRealPoint(int)> at;
        bool logarithmic;
    } const kinds[] {
        { "random walk", 50000, [&](int i) { return CRealPoint(i / 50000.0, step()); }, false },
        { "noise", 20000, [&](int i) { return CRealPoint(i / 20000.0, unit(random)); }, false },
        { "x out of order", 20000, [&](int) { return CRealPoint(unit(random), unit(random)); }, false },
        { "few points", 30, [&](int i) { return CRealPoint(i / 30.0, unit(random)); }, false },
        { "wider", 40000, [&](int i) { return CRealPoint(i / 4000.0 - 5.0, unit(random) * 3.0 - 1.0); }, false },
        { "gaps", 30000, [&](int i) { return CRealPoint(i / 3e4, i % 977 == 0 || i / 900 == 9 ? kGap : step()); },
            false },
        { "equal points", 5000, [&](int) { return CRealPoint(0.4, 0.4); }, false },
        { "logarithmic", 30000, [&](int i) { return CRealPoint(1.0 + i / 5000.0, unit(random) * 9.0 - 0.5); }, true },
    };
    for (auto const& kind : kinds) {
        CTableData table(2, kind.count);
        for (int i = 0; i < kind.count; ++i) {
            CRealPoint const p = kind.at(i);
            table.SetAt(0, i, p.x);
            table.SetAt(1, i, p.y);
        }
        PointSummary summary;
        summary.Update(table);
        StoredPoints const points { table.GetRow(0), table.GetRow(1), static_cast<std::size_t>(kind.count), &summary };
        Drawing merged(kind.logarithmic);
        Drawing plain(kind.logarithmic);
        LinePath path;
        path.Clear();
        AddStraightLines(path, points, merged.map, -1, kSize.cx);
        EXPECT_LE(path.points.size(), std::max<std::size_t>(points.count, 5U * 122U)) << kind.name;
        merged.Stroke(path);
        plain.Stroke(UnmergedLines(points, plain.map));
        int different = 0;
        for (int y = 0; y < kSize.cy; ++y) {
            for (int x = 0; x < kSize.cx; ++x)
                different += merged.bitmap.GetDC()->GetPixel(x, y) != plain.bitmap.GetDC()->GetPixel(x, y);
        }
        EXPECT_EQ(different, 0) << kind.name;
    }
}

TEST(LinePath, TallColumnsBesideEachOtherBecomeOneForAWideLine)
{
    // 90 points a column, up and down all over it; in the middle third all of them at one height.
    constexpr int kColumns = 60;
    constexpr int kPoints = kColumns * 90;
    Drawing drawing(false);
    CTableData table(2, kPoints);
    for (int i = 0; i < kPoints; ++i) {
        int const column = i / 90;
        double const height = column / 20 == 1 ? 0.0 : 0.2 + column / 300.0;
        table.SetAt(0, i, (column + 0.5) / kSize.cx);
        table.SetAt(1, i, i % 2 == 0 ? 0.1 : 0.1 + height);
    }
    PointSummary summary;
    summary.Update(table);
    StoredPoints const points { table.GetRow(0), table.GetRow(1), kPoints, &summary };
    LinePath path;
    path.Clear();
    AddStraightLines(path, points, drawing.map, -1, kSize.cx, { true, 3 });
    int const bottom = drawing.map.Y(0.1);
    std::vector<int> xs;
    int tallest = 0;
    for (CPoint const& p : path.points) {
        if (xs.empty() || xs.back() != p.x)
            xs.push_back(p.x);
        tallest = std::max(tallest, bottom - p.y);
    }
    std::vector<int> expected;
    auto const expect = [&](int column) { expected.push_back(drawing.map.X((column + 0.5) / kSize.cx)); };
    for (int first = 0; first < kColumns; first += 20) {
        if (first == 20) {
            for (int column = first; column < 40; ++column)
                expect(column);
            continue;
        }
        // Of twenty, two are left over in the end.
        for (int column = first; column < first + 18; column += 3)
            expect(column + 1);
        expect(first + 18);
    }
    EXPECT_EQ(xs, expected);
    // Nothing of the extremes is lost, and most are there once.
    EXPECT_EQ(tallest, bottom - drawing.map.Y(0.1 + 0.2 + 59 / 300.0));
    EXPECT_LT(path.points.size(), 2U * 14U + 20U + 8U);
}

TEST(LinePath, DashedColumnsAreSolidWhereTheirMovesOutgrowTheLimit)
{
    // A hundred points in one column of pixels: up and down by about three, or up all the way. Nothing is dashed
    // before or behind a solid column.
    struct {
        std::function<double(int)> y;
        int maxLength;
        std::size_t dashed;
        std::size_t solid;
    } const cases[] {
        { [](int i) { return i % 2 ? 0.5 : 0.5 + 3.0 / kSize.cy; }, 1000, 100, 0 },
        { [](int i) { return i % 2 ? 0.5 : 0.5 + 3.0 / kSize.cy; }, 20, 0, 2 },
        { [](int i) { return i / 100.0; }, 20, 2, 0 },
    };
    for (auto const& c : cases) {
        CTableData table(2, 100);
        for (int i = 0; i < 100; ++i) {
            table.SetAt(0, i, 0.5);
            table.SetAt(1, i, c.y(i));
        }
        PointSummary summary;
        summary.Update(table);
        LinePath dashed;
        LinePath solid;
        dashed.Clear();
        solid.Clear();
        AddDashedLines(
            dashed, solid, { table.GetRow(0), table.GetRow(1), 100, &summary }, Drawing(false).map, c.maxLength);
        EXPECT_EQ(dashed.points.size(), c.dashed) << c.maxLength;
        EXPECT_EQ(solid.points.size(), c.solid) << c.maxLength;
    }
}

} // namespace
} // namespace ombrel
