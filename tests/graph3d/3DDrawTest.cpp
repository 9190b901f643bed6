#include "ombrel/graph3d/Walls.h"
#include "tests/graph3d/Draw3D.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace ombrel {
namespace {

using test::Draw3D;
using test::kBackground;
using test::kSize;

TEST_F(Draw3D, ShowsTheThreeWallsAtTheBackInTheirOwnColour)
{
    struct Case {
        double azimuth, elevation;
        CVertex x, y, z;
    };
    Case const cases[] = {
        { 330.0, 70.0, { -0.5, 0, 0 }, { 0, 0.5, 0 }, { 0, 0, -0.5 } },
        { 60.0, 45.0, { -0.5, 0, 0 }, { 0, -0.5, 0 }, { 0, 0, -0.5 } },
        { 150.0, 110.0, { 0.5, 0, 0 }, { 0, -0.5, 0 }, { 0, 0, 0.5 } },
        { 240.0, 20.0, { 0.5, 0, 0 }, { 0, 0.5, 0 }, { 0, 0, -0.5 } },
    };
    m_graph.GetWalls()->SetOn(1);
    COLORREF const colour = RGB(215, 100, 50);
    m_graph.GetWalls()->SetColour(colour);
    for (Case const& each : cases) {
        m_graph.SetViewingAzimuth(each.azimuth);
        m_graph.SetViewingElevation(each.elevation);
        Draw();
        int const all = Count(colour);
        EXPECT_EQ(AtBox(each.x), colour) << each.azimuth;
        EXPECT_EQ(AtBox(each.y), colour) << each.azimuth;
        EXPECT_EQ(AtBox(each.z), colour) << each.azimuth;
        EXPECT_EQ(At({ 1, 1 }), kBackground) << each.azimuth;
        // Each wall by its own flag.
        m_graph.GetWalls()->SetXWallOn(0);
        Draw();
        EXPECT_EQ(AtBox(each.x), kBackground) << each.azimuth;
        EXPECT_LT(Count(colour), all);
        EXPECT_EQ(AtBox(each.z), colour) << each.azimuth;
        m_graph.GetWalls()->SetXWallOn(1);
    }
    // Lit, the floor has another colour than in its own light.
    m_graph.GetWalls()->SetLit(1);
    Draw();
    EXPECT_NE(AtBox(cases[3].z), colour);
}

TEST_F(Draw3D, DrawsGridLinesWhereTheirSettingsSay)
{
    C3DGrid& grid = *m_graph.GetGrid();
    COLORREF const colour = RGB(255, 0, 0);
    grid.SetOn(1);
    grid.SetColour(colour);
    grid.SetXPLaneOn(0);
    grid.SetYPLaneOn(0);
    m_graph.SetViewingElevation(0.0);
    m_graph.SetViewingAzimuth(270.0);
    auto const isLine = [&](double x, double y) { return IsNear({ x, y, -0.5 }, colour); };
    // Straight down on the floor: three lines across x, and two across y.
    grid.SetNumXLines(3);
    grid.SetNumYLines(2);
    Draw();
    for (double const x : { -0.5, 0.0, 0.5 })
        EXPECT_TRUE(isLine(x, 0.25)) << x;
    EXPECT_TRUE(isLine(0.25, -0.5));
    EXPECT_FALSE(isLine(0.25, 0.0));
    EXPECT_FALSE(isLine(-0.25, 0.25));
    // Divided once more.
    grid.SetNumMinorXDivs(2);
    Draw();
    EXPECT_TRUE(isLine(-0.25, 0.25));
    // At steps of data units, from a value in the middle in both directions; the borders stay. x runs from −10 to 10.
    grid.SetXLineMode(GridLines3D::glStep);
    grid.SetNumMinorXDivs(1);
    grid.SetXLineMin(2.0);
    grid.SetXLineDel(6.0);
    Draw();
    for (double const x : { -0.5, -0.2, 0.1, 0.4, 0.5 })
        EXPECT_TRUE(isLine(x, 0.25)) << x;
    EXPECT_FALSE(isLine(0.25, 0.25));
    // Settings that would have no end.
    grid.SetXLineDel(0.0);
    Draw();
    EXPECT_TRUE(isLine(0.5, 0.25));
    EXPECT_FALSE(isLine(0.1, 0.25));
    grid.SetNumYLines(std::numeric_limits<int>::max());
    grid.SetNumMinorYDivs(std::numeric_limits<int>::max());
    Draw();
    EXPECT_TRUE(isLine(0.5, 0.25));
}

TEST_F(Draw3D, KeepsToTheGraphsRectangle)
{
    m_graph.GetWalls()->SetOn(1);
    m_graph.SetZoomFactor(3.0);
    auto const colour = static_cast<COLORREF>(m_graph.GetWalls()->GetColour());
    Draw();
    EXPECT_EQ(Count(colour), kSize.cx * kSize.cy);
    CRect const part(40, 30, 140, 90);
    m_graph.SetGraphRect(part);
    Draw();
    for (int y = 0; y < kSize.cy; ++y) {
        for (int x = 0; x < kSize.cx; ++x)
            ASSERT_EQ(At({ x, y }), part.PtInRect({ x, y }) ? colour : kBackground) << x << "," << y;
    }
    EXPECT_DOUBLE_EQ(m_graph.GetAspectRatio(), 100.0 / 60.0);
    EXPECT_EQ(m_graph.GetViewportRect(), CRect(40, 110, 140, 170));
    EXPECT_EQ(m_graph.ViewportToWindow({ 7, 110 }), CPoint(7, 90));
}

TEST_F(Draw3D, LeavesTheBoxToTheDataAndPutsTextOutsideInEveryView)
{
    for (int i = 0; i < 3; ++i) {
        C3DAxis& axis = *m_graph.GetAxes()[i];
        axis.SetOn(1);
        axis.SetColour(kBackground);
        axis.SetLabelsColour(RGB(255, 0, 0));
        axis.SetTitleColour(RGB(0, 255, 0));
        axis.SetTitle("A rather long title");
        axis.SetLabelPrecision(12);
        axis.SetRange(-10.000123, 10.000456);
    }
    m_graph.GetWalls()->SetOn(1);
    COLORREF const wall = RGB(100, 100, 100);
    m_graph.GetWalls()->SetColour(wall);
    for (double azimuth = 10.0; azimuth < 360.0; azimuth += 35.0) {
        for (double const elevation : { 20.0, 70.0, 90.0, 110.0 }) {
            m_graph.SetViewingAzimuth(azimuth);
            m_graph.SetViewingElevation(elevation);
            for (int i = 0; i < 3; ++i)
                m_graph.GetAxes()[i]->SetOn(0);
            Draw();
            std::vector<CPoint> walls;
            for (int y = 0; y < kSize.cy; ++y) {
                for (int x = 0; x < kSize.cx; ++x) {
                    if (At({ x, y }) == wall)
                        walls.push_back({ x, y });
                }
            }
            ASSERT_GT(walls.size(), 1000U);
            for (int i = 0; i < 3; ++i)
                m_graph.GetAxes()[i]->SetOn(1);
            Draw();
            int covered = 0;
            for (CPoint const p : walls) {
                COLORREF const colour = At(p);
                // A touch of text is one that has more red, or green, than the others.
                covered += colour != wall && (GetRValue(colour) > 110 || GetGValue(colour) > 110);
            }
            EXPECT_EQ(covered, 0) << azimuth << " " << elevation;
        }
    }
}

TEST_F(Draw3D, LabelsTicksWithNumbersTextsOrBoth)
{
    C3DAxis& axis = *m_graph.GetAxes()[0];
    axis.SetOn(1);
    axis.SetTickMode(C3DAxis::tmDivisionsArbitrary);
    axis.SetNumTicks(3);
    axis.SetNumMinorDivs(2);
    axis.SetArbTickPosns({ 5.0, -2.5 });
    axis.SetLabels({ "a", "b", "c" });
    struct Case {
        int mode;
        CStringArray texts;
    };
    Case const cases[] = {
        { C3DAxis::lmNumbers, { "-10", "-2.5", "0", "5", "10" } },
        // Labels that run out leave the other ticks without one.
        { C3DAxis::lmTexts, { "a", "b", "c", "", "" } },
        { C3DAxis::lmNumbersAndTexts, { "-10", "a", "0", "b", "10" } },
    };
    for (Case const& each : cases) {
        axis.SetLabelMode(each.mode);
        Draw();
        EXPECT_EQ(axis.GetLabelTexts(), each.texts) << each.mode;
    }
    EXPECT_EQ(axis.GetNotchKinds(), (CDWordArray { 0, 1, 0, 1, 0 }));
    EXPECT_EQ(axis.GetNotchValues(), (CDoubleArray { -10.0, -2.5, 0.0, 5.0, 10.0 }));
    // In the first view of a graph the x axis runs along y = −1/2 on the floor.
    ASSERT_EQ(axis.GetNotchPositions().GetSize(), 5);
    EXPECT_EQ(*axis.GetNotchPositions()[1], CVertex(-0.125, -0.5, -0.5));
    ASSERT_EQ(axis.GetMinorNotchPositions().GetSize(), 4);
    EXPECT_EQ(*axis.GetMinorNotchPositions()[3], CVertex(0.25, -0.5, -0.5));
    // Labels lie outside of the axis and below it: by a tick and half the text's height, at least.
    for (int i = 0; i < 5; ++i) {
        CVertex const offset = *axis.GetLabelPositions()[i] - *axis.GetNotchPositions()[i];
        EXPECT_EQ(offset.X(), 0.0);
        EXPECT_LT(offset.Y(), -0.03);
        EXPECT_LT(offset.Z(), -0.02);
    }
}

} // namespace
} // namespace ombrel
