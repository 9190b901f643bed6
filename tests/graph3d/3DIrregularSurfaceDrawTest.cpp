#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/ScatteredPoints.h"
#include "tests/graph3d/SurfaceData.h"

#include <cmath>
#include <memory>

namespace ombrel {
namespace {

using test::AreNear;
using test::Brightness;
using test::kBackground;

constexpr COLORREF kColour = RGB(200, 100, 40);

/// A surface alone, without light, seen from straight above.
class DrawIrregularSurface : public test::Draw3D {
protected:
    DrawIrregularSurface()
        : m_curve(AddSurface())
    {
        m_graph.SetLightingOn(0);
        m_graph.SetViewingElevation(0);
    }
    C3DIrregularSurfaceCurve& AddSurface()
    {
        auto& curve = Add<C3DIrregularSurfaceCurve>(it3DIrregularSurfacePlot);
        curve.SetColour(kColour);
        curve.SetGradationOn(0);
        return curve;
    }
    bool IsNear(double x, double y, double z, COLORREF colour) const
    {
        return Draw3D::IsNear(BoxPlace(x, y, z), colour);
    }

    C3DIrregularSurfaceCurve& m_curve;
};

TEST_F(DrawIrregularSurface, ItCoversTheHullOfItsPoints)
{
    // A triangle with a point inside, and points that take no part.
    test::SetPoints(m_curve,
        { { 0, 0, 0 }, { 10, 0, 0 }, { 0, 10, 0 }, { 2, 2, 5 }, { 10, 10, kGap }, { kGap, 3, 3 }, { 2, 2, 9 } });
    for (int const averaging : { 0, 1 }) {
        m_curve.SetNormalAveraging(averaging);
        DrawAnew();
        for (auto const& [x, y] : std::vector<std::pair<double, double>> { { 1, 1 }, { 8, 1 }, { 1, 8 }, { 4.5, 4.5 } })
            EXPECT_EQ(AtData(x, y, 1), kColour) << x << ", " << y;
        for (auto const& [x, y] : std::vector<std::pair<double, double>> { { 9, 9 }, { 6, 6 }, { 2, 9 } })
            EXPECT_EQ(AtData(x, y, 0), kBackground) << x << ", " << y;
    }
    // New points and a new colour are taken over.
    m_curve.SetColour(RGB(0, 0, 250));
    test::SetPoints(m_curve, { { 0, 0, 0 }, { 10, 0, 0 }, { 0, 10, 0 }, { 10, 10, 1 } });
    DrawAnew();
    EXPECT_EQ(AtData(9, 9, 0.9), RGB(0, 0, 250));
}

TEST_F(DrawIrregularSurface, BandsAndColoursAreCutWithinTriangles)
{
    test::SetPoints(m_curve, { { 0, 0, 0 }, { 60, 0, 60 }, { 0, 10, 0 }, { 60, 10, 60 } });
    m_curve.SetColourDescription(1);
    m_curve.SetColourmap("Spectrum");
    m_curve.SetContoursOn(1);
    for (int const averaging : { 0, 1 }) {
        m_curve.SetNormalAveraging(averaging);
        DrawAnew();
        for (int k = 0; k < 6; ++k) {
            for (double const y : { 3.0, 8.0 })
                EXPECT_TRUE(AreNear(AtData(10 * k + 5, y, 10 * k + 5), m_curve.GetContourBandColours().GetAt(k))) << k;
        }
    }
    m_curve.SetContoursOn(0);
    DrawAnew();
    EXPECT_TRUE(IsNear(15, 5, 15, m_curve.GetLUTColour(15)));
    EXPECT_TRUE(IsNear(45, 5, 45, m_curve.GetLUTColour(45)));
    // Coloured the other way round.
    CTableData values(1, 4);
    for (auto const& [i, v] : { std::pair(0, 60.0), { 2, 60.0 } })
        values.SetAt(0, i, v);
    for (int const i : { 1, 3 })
        values.SetAt(0, i, 0.0);
    m_curve.SetValueTable(values);
    m_curve.SetUseValueTable(1);
    DrawAnew();
    EXPECT_TRUE(IsNear(15, 5, 15, m_curve.GetLUTColour(45)));
}

TEST_F(DrawIrregularSurface, TheSideTowardsALightIsLit)
{
    m_graph.SetLightingOn(1);
    // A roof under a light from the side of high x.
    test::SetPoints(m_curve, { { 0, 0, 0 }, { 1, 0, 1 }, { 2, 0, 0 }, { 0, 1, 0 }, { 1, 1, 1 }, { 2, 1, 0 } });
    for (int const averaging : { 0, 1 }) {
        m_curve.SetNormalAveraging(averaging);
        for (double const elevation : { 0.0, 60.0, 120.0, 180.0 }) {
            m_graph.SetLight1Pos(0, elevation);
            m_curve.SetColour(kColour);
            DrawAnew();
            std::array<COLORREF, 2> const sides { AtData(0.4, 0.5, 0.4), AtData(1.6, 0.5, 0.4) };
            if (elevation == 60.0) {
                EXPECT_GT(Brightness(sides[1]), Brightness(sides[0]) + 50) << averaging;
            }
            // As a grid with the same heights.
            CSurface& grid = Add<CSurface>(itSurfacePlot);
            grid.SetColour(kColour);
            grid.SetGradationOn(0);
            grid.SetForceNormalAveraging(0);
            test::Fill(grid, 2, 3, [](int c, int) { return c == 1 ? 1.0 : 0.0; });
            m_curve.SetDataSourceType(CPlotComponent::dsFormula);
            m_curve.SetPlotDataModified(1);
            DrawAnew();
            if (averaging == 0) {
                EXPECT_TRUE(AreNear(AtData(0.4, 0.5, 0.4), sides[0])) << elevation;
                EXPECT_TRUE(AreNear(AtData(1.6, 0.5, 0.4), sides[1])) << elevation;
            }
            std::unique_ptr<CPlot> const removed(grid.GetPlot());
            m_graph.RemovePlot(removed.get());
            m_curve.SetDataSourceType(CPlotComponent::dsTable);
            m_curve.SetPlotDataModified(1);
        }
    }
}

TEST_F(DrawIrregularSurface, OutlinesHideWhatLiesBehindThem)
{
    test::SetPoints(m_curve, { { 0, 0, 5 }, { 8, 0, 5 }, { 0, 8, 5 }, { 8, 8.5, 5 } });
    m_curve.SetWireframeOn(1);
    m_curve.SetWireframeColour(RGB(0, 0, 250));
    C3DIrregularSurfaceCurve& below = AddSurface();
    below.SetColour(RGB(0, 255, 0));
    test::SetPoints(below, { { 0, 0, 0 }, { 8, 0, 0 }, { 0, 8, 0 }, { 8, 8, 0 } });
    for (int const averaging : { 0, 1 }) {
        m_curve.SetNormalAveraging(averaging);
        DrawAnew();
        // The diagonal from (8, 0) to (0, 8).
        EXPECT_TRUE(IsNear(4, 4, 5, RGB(0, 0, 250)));
        EXPECT_TRUE(IsNear(2, 6, 5, RGB(0, 0, 250)));
        EXPECT_TRUE(IsNear(4, 0, 5, RGB(0, 0, 250)));
        for (auto const& [x, y] : std::vector<std::pair<double, double>> { { 2, 2 }, { 6, 6 }, { 1, 5 } })
            EXPECT_EQ(AtData(x, y, 5), kColour) << x << ", " << y;
    }
}

TEST_F(DrawIrregularSurface, TransparentFacesShowWhatLiesBehindThem)
{
    test::SetPoints(m_curve, { { 0, 0, 5 }, { 8, 0, 5 }, { 0, 8, 5 }, { 8, 8, 5 } });
    C3DIrregularSurfaceCurve& below = AddSurface();
    below.SetColour(RGB(0, 255, 0));
    test::SetPoints(below, { { 0, 0, 0 }, { 8, 0, 0 }, { 0, 8, 0 }, { 8, 8, 0 } });
    m_curve.SetTransparency(0.5);
    DrawAnew();
    EXPECT_TRUE(AreNear(AtData(2, 2.5, 5), RGB(100, 178, 20)));
    m_curve.SetTransparency(0.0);
    DrawAnew();
    EXPECT_EQ(AtData(2, 2.5, 5), kColour);
}

} // namespace
} // namespace ombrel
