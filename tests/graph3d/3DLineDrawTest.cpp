#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/render/ShapeBatch.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/SurfaceData.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace ombrel {
namespace {

using test::AreNear;
using test::kBackground;
using test::kSize;

constexpr COLORREF kRed = RGB(200, 0, 0);
constexpr COLORREF kGreen = RGB(0, 200, 0);

/// Curves in a box whose axes run from −1 to 1, so that half a data unit is a quarter of the box; without light, so
/// that colours are what they were set to.
class DrawLines : public test::Draw3D {
protected:
    DrawLines()
    {
        m_graph.GetWalls()->SetOn(0);
        m_graph.SetLightingOn(0);
        for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis) {
            (*axis)->SetRangeMode(C3DAxis::rmFixed);
            (*axis)->SetMin(-1.0);
            (*axis)->SetMax(1.0);
        }
    }
    template <typename Curve> Curve& Add(ItemType type, std::vector<CVertex> const& points)
    {
        auto& curve = Draw3D::Add<Curve>(type);
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetNumPts(static_cast<int>(points.size()));
        for (int i = 0; i < curve.GetNumPts(); ++i)
            curve.GetPoints()[i] = points[static_cast<std::size_t>(i)];
        curve.SetColour(kRed);
        curve.SetSymbolColour(kGreen);
        return curve;
    }
    COLORREF AtData(double x, double y, double z) const { return AtBox({ x / 2, y / 2, z / 2 }); }
    std::vector<COLORREF> DrawnPixels()
    {
        Draw();
        return Pixels();
    }
    int CountOther(COLORREF colour) const { return kSize.cx * kSize.cy - Count(colour); }
};

TEST_F(DrawLines, ModesSayWhichPointsAreJoined)
{
    std::vector<CVertex> const points { { -0.8, 0, -0.8 }, { -0.8, 0, 0.8 }, { 0, 0, 0.8 }, { 0, 0, -0.8 },
        { 0.8, 0, -0.8 } };
    auto& curve = Add<C3DLineCurve>(it3DLinePlot, points);
    for (int const style : { 0, 1 }) {
        curve.SetLineStyle(style);
        curve.SetThicknessScaleFac(style == 0 ? 3.0 : 1.0);
        for (int const mode : { 0, 1, 2 }) {
            curve.SetLineMode(mode);
            Draw();
            auto const isDrawn = [&](double x, double z) { return AtData(x, 0, z) == kRed; };
            EXPECT_EQ(isDrawn(-0.8, 0), mode != 1) << style << mode;
            EXPECT_EQ(isDrawn(-0.4, 0.8), mode == 0) << style << mode;
            EXPECT_EQ(isDrawn(0, 0), mode != 1) << style << mode;
            EXPECT_EQ(isDrawn(0.4, -0.8), mode == 0) << style << mode;
        }
    }
    // A missing point breaks the line.
    curve.SetLineMode(0);
    curve.SetZVal(2, kGap);
    Draw();
    EXPECT_EQ(AtData(-0.8, 0, 0), kRed);
    EXPECT_EQ(AtData(0, 0, 0), kBackground);
    EXPECT_EQ(AtData(0.4, 0, -0.8), kRed);
}

TEST_F(DrawLines, ThinLinesShowNoGapsWhereTheyMeet)
{
    auto& curve = Add<C3DLineCurve>(it3DLinePlot, { { -0.8, -0.3, -0.7 }, { 0.8, 0.5, 0.7 } });
    curve.SetLineStyle(0);
    curve.SetThicknessScaleFac(2);
    Draw();
    int const inOne = Count(kRed);
    curve.SetNumPts(17);
    for (int i = 0; i < 17; ++i)
        curve.GetPoints()[i] = CVertex(-0.8, -0.3, -0.7) + CVertex(1.6, 0.8, 1.4) * (i / 16.0);
    Draw();
    EXPECT_GT(inOne, 100);
    EXPECT_GE(Count(kRed), inOne * 98 / 100);
}

TEST_F(DrawLines, SymbolsStandAtAllPointsOrAtTheEnds)
{
    auto& curve = Add<C3DLineCurve>(it3DLinePlot, { { -0.8, 0, 0 }, { 0, 0, 0 }, { 0.8, 0, 0 } });
    curve.SetLineMode(1);
    curve.SetSymbols(1);
    curve.SetSymbolScaleFac(4);
    for (int const style : { 0, 1, 2, 3 }) {
        curve.SetSymbolStyle(style);
        for (int const ends : { 0, 1 }) {
            curve.SetEndPointSymbolMode(ends);
            Draw();
            EXPECT_EQ(AtData(-0.8, 0, 0), kGreen) << style;
            EXPECT_EQ(AtData(0, 0, 0), ends == 0 ? kGreen : kBackground) << style;
            EXPECT_EQ(AtData(0.8, 0, 0), kGreen) << style;
        }
    }
    // Of size 0.06 box units, 0.12 in data units: below and above the point only.
    curve.SetSymbolStyle(0);
    for (int const align : { 1, 2 }) {
        curve.SetSymbolAlignMode(align);
        Draw();
        EXPECT_EQ(AtData(0.8, 0, 0.12), align == 2 ? kGreen : kBackground);
        EXPECT_EQ(AtData(0.8, 0, -0.12), align == 1 ? kGreen : kBackground);
    }
}

/// A sphere of many faces, which OpenGL itself lights and cuts.
class MeshSphere : public C3DCurve {
public:
    MeshSphere(CPlot* plot, CVertex const& centre, double radius)
        : C3DCurve(plot, 0)
    {
        SetDataSourceType(dsTable);
        constexpr std::uint32_t kRings = 200;
        for (std::uint32_t i = 0; i <= kRings; ++i) {
            for (std::uint32_t k = 0; k <= kRings; ++k) {
                double const down = std::numbers::pi * i / kRings;
                double const round = 2 * std::numbers::pi * k / kRings;
                CVertex const out(std::sin(down) * std::cos(round), std::sin(down) * std::sin(round), std::cos(down));
                FaceVertex vertex;
                vertex.normal = FaceVertex::Floats(out);
                vertex.place = FaceVertex::Floats(centre + out * radius);
                vertex.colour = FaceVertex::Bytes(kRed);
                std::uint32_t const at = m_faces.AddVertex(vertex);
                if (i == 0 || k == 0)
                    continue;
                m_faces.AddTriangle(at - kRings - 2, at - 1, at);
                m_faces.AddTriangle(at - kRings - 2, at, at - kRings - 1);
            }
        }
    }
    void Render() override { m_faces.DrawFaces(*Get3DGraph(), 0); }

private:
    FaceBatch m_faces;
};

TEST_F(DrawLines, SpheresLookLikeThoseOfManyFaces)
{
    m_graph.SetLightingOn(1);
    m_graph.SetLight1Pos(40, 50);
    m_graph.SetLightDistance(1.2);
    m_graph.SetLight2On(1);
    m_graph.SetLight2Pos(200, 90);
    m_graph.SetPerspective(0.8);
    auto& curve = Add<C3DScatterCurve>(it3DScatterPlot, { { 0.3, -0.2, 0.1 } });
    curve.SetSymbolScaleFac(16);
    auto const compare = [&] {
        curve.SetDataSourceType(CPlotComponent::dsTable);
        std::vector<COLORREF> const ours = DrawnPixels();
        CVertex const centre = curve.GetPoints()[0] * 0.5;
        CPlot& plot = *curve.GetPlot();
        auto* const mesh = new MeshSphere(&plot, centre, 0.015 * 16);
        plot.AddComponent(mesh);
        curve.SetNumPts(0);
        std::vector<COLORREF> const theirs = DrawnPixels();
        int different = 0;
        int covered = 0;
        for (std::size_t i = 0; i < ours.size(); ++i) {
            different += !AreNear(ours[i], theirs[i], 4);
            covered += theirs[i] != kBackground;
        }
        EXPECT_GT(covered, 500);
        EXPECT_LT(different, 30) << "of " << covered << "; the outline may be a pixel off here and there";
        plot.RemoveComponent(mesh);
        delete mesh;
    };
    compare();
    m_graph.SetLightingOn(0);
    curve.SetNumPts(1);
    curve.GetPoints()[0] = { -0.5, 0.5, 0.4 };
    compare();
}

TEST_F(DrawLines, PointsOutsideOfTheBoxHaveNeitherSymbolNorStick)
{
    auto& curve = Add<C3DScatterCurve>(it3DScatterPlot, { { 0, 0, 1 } });
    curve.SetSymbolScaleFac(3);
    Draw();
    EXPECT_EQ(AtData(0, 0, 0.98), kRed) << "half of the sphere, cut at the face";
    EXPECT_EQ(AtBox({ 0, 0, 0.53 }), kBackground);
    curve.SetSticksOn(1);
    curve.SetZVal(0, 1.0 + 1e-9);
    Draw();
    EXPECT_EQ(CountOther(kBackground), 0);
}

TEST_F(DrawLines, SticksRunFromTheSymbolToTheBaseline)
{
    auto& curve = Add<C3DScatterCurve>(it3DScatterPlot, { { 0, 0, 0.6 } });
    curve.SetSticksOn(1);
    curve.SetStickColour(kGreen);
    curve.SetSymbolScaleFac(4);
    for (int const kind : { 0, 1, 2 }) {
        curve.SetStickLook(kind == 0 ? 0 : 1);
        curve.SetStickType(kind == 2 ? 1 : 0);
        curve.SetAutoBaseline(1);
        Draw();
        EXPECT_EQ(AtData(0, 0, 0.6), kRed);
        EXPECT_NE(AtData(0, 0, -0.9), kBackground) << kind;
        EXPECT_EQ(AtData(0, 0, 0.8), kBackground) << kind;
        curve.SetAutoBaseline(0);
        curve.SetBaseline(-0.2);
        Draw();
        EXPECT_NE(AtData(0, 0, 0.1), kBackground) << kind;
        EXPECT_EQ(AtData(0, 0, -0.4), kBackground) << kind;
        // Nearer than the symbol's size there is no room for a stick; from below it runs upwards.
        curve.SetBaseline(0.55);
        Draw();
        EXPECT_EQ(Count(kGreen), 0) << kind;
        curve.SetBaseline(0.95);
        Draw();
        EXPECT_NE(AtData(0, 0, 0.85), kBackground) << kind;
        EXPECT_EQ(AtData(0, 0, 0.3), kBackground) << kind;
    }
}

TEST_F(DrawLines, VariablesGiveColoursAndSizes)
{
    auto& curve
        = Add<C3DScatterCurve>(it3DScatterPlot, { { -0.6, 0, 0 }, { -0.2, 0, 0 }, { 0.2, 0, 0 }, { 0.6, 0, 0 } });
    curve.SetSymbolScaleFac(6);
    CDoubleArray const colours { 1, 5, kGap, 3 };
    CDoubleArray const sizes { 8, 8, 8, kGap };
    CDoubleArray const* const arrays[] = { &colours, &sizes };
    curve.SetVarData(arrays, 4);
    curve.SetVar1Use(C3DScatterCurve::vuColour);
    curve.SetVar2Use(C3DScatterCurve::vuSize);
    Draw();
    EXPECT_EQ(AtData(-0.6, 0, 0), curve.GetLUTColour(1));
    EXPECT_EQ(AtData(-0.2, 0, 0), curve.GetLUTColour(5));
    EXPECT_EQ(AtData(0.2, 0, 0), kRed) << "without a colour";
    EXPECT_EQ(AtData(0.6, 0, 0), kBackground) << "without a size";
    int const full = CountOther(kBackground);
    curve.GetVarData().SetAt(1, 0, 4);
    m_graph.SetModifiedFlag(1);
    Draw();
    EXPECT_NEAR(CountOther(kBackground), full * (2.25 / 3), full * 0.05) << "one of three with half the radius";
    curve.SetColourmap("Spectrum");
    Draw();
    EXPECT_EQ(AtData(-0.2, 0, 0), curve.GetLUTColour(5));
}

TEST_F(DrawLines, ManySpheresHaveTheColoursOfFew)
{
    // So many that they are drawn in the other way.
    std::vector<CVertex> points(20000, CVertex(0, 0, 0));
    points.front() = { 0.5, 0, 0 };
    auto& curve = Add<C3DScatterCurve>(it3DScatterPlot, points);
    for (double const size : { 5.0, 12.0 }) {
        curve.SetSymbolScaleFac(size);
        std::vector<COLORREF> const many = DrawnPixels();
        auto const second = DrawnPixels();
        EXPECT_EQ(many, second);
        EXPECT_EQ(AtData(0, 0, 0), kRed);
        EXPECT_EQ(AtData(0.5, 0, 0), kRed);
    }
}

TEST_F(DrawLines, TextsOfPointsBehindASurfaceAreLeftOut)
{
    auto& text = Add<C3DTextCurve>(it3DTextPlot, { { 0, 0, -0.2 } });
    text.GetText().Add("Hidden");
    text.SetVertAlignment(C3DTextCurve::alCentre);
    text.SetHorzAlignment(C3DTextCurve::alCentre);
    text.SetFont({ "Arial", 700, 0, 3.0 });
    Draw();
    int const alone = CountOther(kBackground);
    EXPECT_GT(alone, 50);

    auto& surface = Draw3D::Add<CSurface>(itSurfacePlot);
    test::Fill(surface, 3, 3, [](int, int) { return 0.0; });
    surface.SetTablePlacement({ -1, -1, 1, 1 });
    surface.AlignMeshes();
    surface.SetColour(kGreen);
    surface.SetGradationOn(0);
    for (int const antialias : { 0, 1 }) {
        m_graph.SetAntialiasMode(antialias);
        text.SetZVal(0, -0.2);
        text.SetObscure(1);
        std::vector<COLORREF> const hidden = DrawnPixels();
        text.SetObscure(0);
        EXPECT_NE(DrawnPixels(), hidden);
        text.SetObscure(1);
        text.SetZVal(0, 0.0);
        EXPECT_NE(DrawnPixels(), hidden) << "on the surface";
        text.SetZVal(0, -0.2);
        text.SetDeltas(0, 0, 0.5);
        EXPECT_NE(DrawnPixels(), hidden) << "moved above it";
        text.SetDeltas(0, 0, 0);
    }
}

TEST_F(DrawLines, TextsFollowZoomButNoLimitIsPassed)
{
    auto& text = Add<C3DTextCurve>(it3DTextPlot, { { 0, 0, 0 } });
    text.GetText().Add("M");
    Draw();
    int const once = CountOther(kBackground);
    m_graph.SetZoomFactor(3);
    Draw();
    EXPECT_GT(CountOther(kBackground), 4 * once);
    for (double const zoom : { 1e9, -1.0, std::numeric_limits<double>::quiet_NaN() }) {
        m_graph.SetZoomFactor(zoom);
        Draw();
    }
    m_graph.SetZoomFactor(1);
    text.SetZVal(0, 1.5);
    Draw();
    EXPECT_EQ(CountOther(kBackground), 0) << "outside of the box";
}

} // namespace
} // namespace ombrel
