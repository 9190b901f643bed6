#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>

namespace ombrel {
namespace {

constexpr CSize kSize(120, 90);

struct Data {
    std::string name;
    CTableData table;
    bool logarithmic = false;
};

CTableData MakeTable(int points, std::function<CRealPoint(int)> const& at)
{
    CTableData table(2, points);
    for (int i = 0; i < points; ++i) {
        CRealPoint const p = at(i);
        table.SetAt(0, i, p.x);
        table.SetAt(1, i, p.y);
    }
    return table;
}

std::vector<Data> AllKindsOfData()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    double walk = 0.5;
    auto const step = [&] { return walk += (unit(random) - 0.5) * 0.02; };
    std::vector<Data> all;
    all.push_back({ "random walk", MakeTable(50000, [&](int i) { return CRealPoint(i / 50000.0, step()); }) });
    all.push_back({ "noise", MakeTable(20000, [&](int i) { return CRealPoint(i / 20000.0, unit(random)); }) });
    all.push_back({ "x out of order", MakeTable(20000, [&](int) { return CRealPoint(unit(random), unit(random)); }) });
    all.push_back({ "few points", MakeTable(30, [&](int i) { return CRealPoint(i / 30.0, unit(random)); }) });
    all.push_back({ "wider than the picture",
        MakeTable(40000, [&](int i) { return CRealPoint(i / 4000.0 - 5.0, unit(random) * 3.0 - 1.0); }) });
    all.push_back({ "gaps", MakeTable(30000, [&](int i) {
                       bool const gap = i % 977 == 0 || (i > 9000 && i < 9900);
                       return CRealPoint(i / 30000.0, gap ? kGap : step());
                   }) });
    all.push_back({ "equal points", MakeTable(5000, [&](int) { return CRealPoint(0.4, 0.4); }) });
    all.push_back({ "logarithmic",
        MakeTable(30000, [&](int i) { return CRealPoint(1.0 + i / 5000.0, unit(random) * 9.0 - 0.5); }), true });
    return all;
}

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
    void Stroke(LinePath const& path, VectorPen const& pen)
    {
        VectorGraphics graphics(*bitmap.GetDC());
        graphics.DrawPath(pen, path.Get());
    }
};

/// How many pixels differ.
int Differences(Drawing const& a, Drawing const& b)
{
    int different = 0;
    for (int y = 0; y < kSize.cy; ++y) {
        for (int x = 0; x < kSize.cx; ++x)
            different += a.bitmap.GetDC()->GetPixel(x, y) != b.bitmap.GetDC()->GetPixel(x, y);
    }
    return different;
}

StoredPoints PointsOf(CTableData const& table, PointSummary& summary)
{
    summary.Update(table);
    return { table.GetRow(0), table.GetRow(1), static_cast<std::size_t>(table.GetNumCols()), &summary };
}

TEST(LinePath, MergedLinesCoverThePixelsOfAllPoints)
{
    for (Data const& data : AllKindsOfData()) {
        PointSummary summary;
        StoredPoints const points = PointsOf(data.table, summary);
        Drawing merged(data.logarithmic);
        Drawing plain(data.logarithmic);
        LinePath path;
        path.Clear();
        AddStraightLines(path, points, merged.map, -1, kSize.cx);
        EXPECT_LE(path.points.size(), std::max<std::size_t>(points.count, 5u * 122u)) << data.name;
        merged.Stroke(path, {});
        path.Clear();
        AddUnmergedLines(path, points, plain.map);
        plain.Stroke(path, {});
        EXPECT_EQ(Differences(merged, plain), 0) << data.name;
    }
}

TEST(LinePath, WideLinesThroughTheExtremesAloneLookTheSame)
{
    for (Data const& data : AllKindsOfData()) {
        PointSummary summary;
        StoredPoints const points = PointsOf(data.table, summary);
        Drawing extremes(data.logarithmic);
        Drawing plain(data.logarithmic);
        VectorPen const wide { {}, 6.0, {} };
        LinePath path;
        path.Clear();
        AddStraightLines(path, points, extremes.map, -6, kSize.cx + 6, Merging::Extremes);
        extremes.Stroke(path, wide);
        path.Clear();
        AddUnmergedLines(path, points, plain.map);
        plain.Stroke(path, wide);
        // At the tips of spikes joins may differ.
        EXPECT_LE(Differences(extremes, plain), kSize.cx * kSize.cy / 40) << data.name;
    }
}

TEST(LinePath, DashesThatWouldOverlapBecomeUprightLines)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    CTableData const table = MakeTable(100000, [&](int i) { return CRealPoint(i / 1e5, unit(random)); });
    PointSummary summary;
    Drawing drawing(false);
    LinePath dashed;
    LinePath solid;
    dashed.Clear();
    solid.Clear();
    AddDashedLines(dashed, solid, PointsOf(table, summary), drawing.map, 20);
    EXPECT_GE(solid.points.size(), 2u * 119u);
    EXPECT_LE(dashed.points.size(), 4u * 121u);
}

} // namespace
} // namespace ombrel
