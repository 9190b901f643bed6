#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/SurfaceData.h"

namespace ombrel {
namespace {

using test::kBackground;

constexpr COLORREF kColour = RGB(200, 100, 40);

class DrawGrid : public test::Draw3D {
protected:
    DrawGrid() { m_graph.SetLightingOn(0); }
    /// In one colour.
    template <typename Curve> Curve& Add(ItemType type)
    {
        auto& curve = Draw3D::Add<Curve>(type);
        curve.SetColour(kColour);
        return curve;
    }
};

TEST_F(DrawGrid, BarsStandAtTheirNodesWithGapsBetweenThem)
{
    auto& bars = Add<C3DBarCurve>(it3DBarPlot);
    m_graph.SetViewingElevation(0.0);
    test::Fill(bars, 4, 5, [](int c, int r) { return c == 1 && r == 2 ? kGap : 1.0 + c + r; });
    Draw();
    // Columns are 0.2 wide, rows 0.25, tops at (z − 1) / 7 − 0.5.
    auto const top = [](int c, int r) { return CVertex(0.2 * c - 0.4, 0.25 * r - 0.375, (c + r) / 7.0 - 0.5); };
    for (int c = 0; c < 5; ++c) {
        for (int r = 0; r < 4; ++r)
            EXPECT_EQ(AtBox(top(c, r)), c == 1 && r == 2 ? kBackground : kColour) << c << ", " << r;
    }
    EXPECT_EQ(AtBox({ -0.1, 0.375, -0.5 }), kBackground) << "between columns";
    bars.SetColourDescription(2);
    bars.SetBarWidthScaleFacX(0.3);
    DrawAnew();
    for (int c = 0; c < 5; ++c)
        EXPECT_EQ(AtBox(top(c, 3)), GetRowColour(c));
    EXPECT_EQ(AtBox(top(2, 2) + CVertex(0.06, 0, 0)), kBackground) << "narrower";
    EXPECT_EQ(AtBox(top(2, 2) + CVertex(0, 0.06, 0)), GetRowColour(2)) << "as deep as before";
    bars.SetColourDescription(3);
    bars.SetBarWidthScaleFacX(1.0);
    DrawAnew();
    for (int r = 0; r < 4; ++r)
        EXPECT_EQ(AtBox(top(3, r)), GetRowColour(r));
}

TEST_F(DrawGrid, BarsStandOnAndHangFromTheBaselineOnAllSides)
{
    auto& bars = Add<C3DBarCurve>(it3DBarPlot);
    test::Fill(bars, 1, 3, [](int c, int) { return c == 1 ? -1.0 : 1.0; });
    m_graph.SetViewingElevation(90.0);
    for (double const azimuth : { 90.0, 270.0 }) {
        m_graph.SetViewingAzimuth(azimuth);
        DrawAnew();
        for (int c = 0; c < 3; ++c) {
            double const x = (c - 1) / 3.0;
            EXPECT_EQ(AtBox({ x, 0, 0.2 }), c == 1 ? kBackground : kColour) << azimuth << ", " << c;
            EXPECT_EQ(AtBox({ x, 0, -0.2 }), c == 1 ? kColour : kBackground) << azimuth << ", " << c;
        }
    }
    // Once they all hang, and once they all stand; beyond the range the baseline stays in it.
    bars.SetAutoBaseline(0);
    for (double const baseline : { 50.0, -50.0 }) {
        bars.SetBaseline(baseline);
        DrawAnew();
        EXPECT_EQ(AtBox({ 0, 0, 0.2 }), baseline > 0 ? kColour : kBackground);
        EXPECT_EQ(AtBox({ 0.3, 0, 0.2 }), baseline > 0 ? kBackground : kColour);
        EXPECT_EQ(AtBox({ 0.3, 0, -0.2 }), baseline > 0 ? kBackground : kColour);
    }
}

TEST_F(DrawGrid, BarsAreLitByTheirSides)
{
    auto& bars = Add<C3DBarCurve>(it3DBarPlot);
    test::Fill(bars, 1, 1, [](int, int) { return 5.0; });
    m_graph.SetLightingOn(1);
    m_graph.SetViewingAzimuth(330);
    m_graph.SetLight1Pos(0, 0);
    DrawAnew();
    // The range is 4 … 6, the bar as wide as deep.
    COLORREF const top = AtBox({ 0, 0, 0 });
    COLORREF const side = AtBox({ 0.1, -0.375, -0.25 });
    EXPECT_GT(GetRValue(top), GetRValue(side) + 30);
    EXPECT_GT(GetRValue(side), 0);
}

TEST_F(DrawGrid, StacksFillWhatTheirLinesAreAbove)
{
    auto& series = Add<C3DLineArrayCurve>(it3DLineArrayPlot);
    test::Fill(series, 5, 2, [](int, int r) { return r - 2.0; });
    m_graph.SetViewingAzimuth(180.0);
    m_graph.SetViewingElevation(90.0);
    Draw();
    COLORREF const stack = series.GetStackColour();
    // Seen along x: from −2 … 2 over y, about a baseline in the middle; the nearer line stands on the box's side.
    EXPECT_EQ(AtBox({ -0.5, -0.4, -0.2 }), stack);
    EXPECT_EQ(AtBox({ -0.5, -0.4, 0.2 }), kBackground);
    EXPECT_EQ(AtBox({ -0.5, 0.4, 0.2 }), stack);
    EXPECT_EQ(AtBox({ -0.5, 0.4, -0.2 }), kBackground);
    for (double const y : { -0.4, -0.2, 0.2, 0.4 })
        EXPECT_TRUE(IsNear({ -0.5, y, y }, series.GetLineColour())) << y;
    EXPECT_TRUE(IsNear({ -0.5, 0.2, 0.0 }, series.GetLineColour())) << "the baseline";
    EXPECT_TRUE(IsNear({ -0.5, 0.5, 0.2 }, series.GetLineColour())) << "a side";
    series.SetStackColourDescription(1);
    series.SetColourmap("Spectrum");
    series.SetDrawLines(0);
    DrawAnew();
    EXPECT_EQ(Count(series.GetLineColour()), 0);
    COLORREF const low = AtBox({ -0.5, -0.45, -0.44 });
    COLORREF const high = AtBox({ -0.5, 0.45, 0.44 });
    EXPECT_TRUE(GetBValue(low) > 200 && GetRValue(low) < 50);
    EXPECT_TRUE(GetRValue(high) > 200 && GetBValue(high) < 50);
    series.SetStackColourDescription(2);
    DrawAnew();
    EXPECT_GT(Count(GetRowColour(1)) + Count(GetRowColour(0)), 500);
    series.SetDrawStacks(0);
    series.SetDrawLines(1);
    series.SetLineColour(RGB(1, 255, 1));
    DrawAnew();
    EXPECT_TRUE(IsNear({ -0.5, 0.3, 0.3 }, RGB(1, 255, 1)));
    EXPECT_EQ(AtBox({ -0.5, 0.4, 0.2 }), kBackground);
}

TEST_F(DrawGrid, SeriesAreCutAlongTheirLinesAndWholeAcross)
{
    auto& series = Add<C3DLineArrayCurve>(it3DLineArrayPlot);
    test::Fill(series, 5, 5, [](int, int r) { return r == 4 ? -1.0 : 1.0; });
    COLORREF const stack = series.GetStackColour();
    m_graph.SetViewingAzimuth(180.0);
    m_graph.SetViewingElevation(90.0);
    C3DAxis& y = *m_graph.GetAxes()[1];
    y.SetRangeMode(2);
    y.SetRange(0, 2);
    DrawAnew();
    EXPECT_EQ(AtBox({ -0.5, 0.45, 0.2 }), stack);
    EXPECT_EQ(AtBox({ -0.5, 0.6, 0.2 }), kBackground) << "cut at the side of the box";
    // Bars are cut wherever the box ends.
    auto& bars = Add<C3DBarCurve>(it3DBarPlot);
    series.SetDataSourceType(CPlotComponent::dsFormula);
    test::Fill(bars, 5, 5, [](int, int) { return 1.0; });
    bars.SetAutoBaseline(0);
    DrawAnew();
    EXPECT_EQ(Count(stack), 0);
    EXPECT_GT(Count(kColour), 500);
    EXPECT_EQ(AtBox({ -0.5, 0.6, 0.0 }), kBackground);
}

TEST_F(DrawGrid, PointsOfAGridAreDrawnAsTheGridIs)
{
    auto const height = [](int c, int r) { return c == 2 && r == 1 ? kGap : 3.0 * c - r * r; };
    auto& grid = Add<C3DBarCurve>(it3DBarPlot);
    test::Fill(grid, 4, 5, height);
    auto& series = Add<C3DLineArrayCurve>(it3DLineArrayPlot);
    test::Fill(series, 4, 5, height);
    DrawAnew();
    std::vector<COLORREF> const expected = Pixels();
    grid.SetDataSourceType(CPlotComponent::dsFormula);
    series.SetDataSourceType(CPlotComponent::dsFormula);
    std::array<CDoubleArray, 3> rows;
    for (int c = 0; c < 5; ++c) {
        for (int r = 0; r < 4; ++r) {
            rows[0].Add(c);
            rows[1].Add(r);
            rows[2].Add(height(c, r));
        }
    }
    std::array<CDoubleArray*, 3> arrays { &rows[0], &rows[1], &rows[2] };
    auto& bars = Add<C3DIrregBarCurve>(it3DIrregBarPlot);
    bars.SetTableData(arrays.data(), 20);
    bars.SetDataSourceType(CPlotComponent::dsTable);
    auto& lines = Add<C3DIrregLineArrayCurve>(it3DIrregLineArrayPlot);
    lines.SetPoints(rows[0], rows[1], rows[2]);
    lines.SetDataSourceType(CPlotComponent::dsTable);
    DrawAnew();
    EXPECT_TRUE(Pixels() == expected);
    EXPECT_GT(Count(kColour), 1000);
    EXPECT_GT(Count(series.GetStackColour()), 100);
}

TEST_F(DrawGrid, NetsHaveLinesThroughTheirNodesAndHolesWhereOneIsMissing)
{
    auto& net = Add<C3DWireframeCurve>(it3DWireframePlot);
    m_graph.SetViewingElevation(0.0);
    test::Fill(net, 5, 5, [](int c, int r) { return c == 2 && r == 2 ? kGap : 3.0; });
    Draw();
    EXPECT_TRUE(IsNear({ -0.125, 0.25, 0 }, kColour));
    EXPECT_TRUE(IsNear({ 0.25, -0.125, 0 }, kColour));
    EXPECT_EQ(AtBox({ -0.125, 0.125, 0 }), kBackground) << "nothing between lines";
    EXPECT_FALSE(IsNear({ -0.1, 0, 0 }, kColour)) << "a missing node has no lines";
    EXPECT_FALSE(IsNear({ 0, 0.1, 0 }, kColour));
    test::Fill(net, 2, 2, [](int c, int) { return 1.0 * c; });
    net.SetColourDescription(1);
    net.SetColourmap("Greyscale");
    net.SetPlotDataModified(1);
    Draw();
    EXPECT_EQ(Count(kColour), 0);
    // Between the colours of the ends.
    COLORREF const first = net.GetLUTColour(0);
    COLORREF const last = net.GetLUTColour(1);
    int brightest = 0;
    CPoint const middle = Place({ 0, 0.5, 0 });
    for (int dy = -2; dy <= 2; ++dy)
        brightest = std::max<int>(brightest, At({ middle.x, middle.y + dy }) & 255);
    EXPECT_NEAR(brightest, (GetRValue(first) + GetRValue(last)) / 2.0, 12);
}

TEST_F(DrawGrid, WhatIsDrawnFollowsColoursThatNoFlagTells)
{
    auto& bars = Add<C3DBarCurve>(it3DBarPlot);
    m_graph.SetViewingElevation(0.0);
    bars.SetColourDescription(1);
    test::Fill(bars, 1, 1, [](int, int) { return 2.0; });
    for (char const* const name : { "Spectrum", "Greyscale", "Extended Spectrum" }) {
        bars.SetColourmap(name);
        bars.SetUseLUTMinMax(1);
        bars.SetLUTMinMax(0, 4);
        Draw();
        EXPECT_EQ(AtBox({ 0, 0, 0 }), bars.GetLUTColour(2)) << name;
    }
    m_graph.SetAntialiasMode(1);
    m_graph.InvalidateDeviceObjects();
    DrawAnew();
    EXPECT_EQ(AtBox({ 0, 0, 0 }), bars.GetLUTColour(2));
}

} // namespace
} // namespace ombrel
