#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/view/Camera.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel {
namespace {

using test::Fill;

constexpr CSize kSize { 240, 200 };
constexpr COLORREF kBackground = RGB(10, 20, 30);

bool AreNear(COLORREF a, COLORREF b)
{
    for (int shift = 0; shift < 24; shift += 8) {
        if (std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)) > 2)
            return false;
    }
    return true;
}

int Brightness(COLORREF c) { return static_cast<int>((c & 255) + (c >> 8 & 255) + (c >> 16 & 255)); }

/// A graph of a surface alone, without light, seen from straight above.
class DrawSurface : public testing::Test {
protected:
    DrawSurface()
        : m_graph(1)
        , m_target(kSize.cx, kSize.cy, 24)
    {
        m_graph.SetGraphFrameOn(0);
        m_graph.GetGrid()->SetOn(0);
        for (C3DAxis** axis = m_graph.GetAxes(); axis != m_graph.GetAxes() + 3; ++axis)
            (*axis)->SetOn(0);
        m_graph.SetBackgroundColour(kBackground);
        m_graph.SetLightingOn(0);
        m_graph.SetViewingElevation(0);
        m_surface = AddSurface();
        m_surface->SetColour(RGB(200, 100, 40));
        m_surface->SetGradationOn(0);
    }
    CSurface* AddSurface() { return static_cast<CSurface*>(m_graph.AddPlot(itSurfacePlot)->CreateCurve()); }
    void Draw()
    {
        m_surface->SetPlotDataModified(1);
        m_graph.Draw(m_target.GetDC(), { { 0, 0 }, kSize }, pmOffScreen);
    }
    /// Where a place in data units is seen.
    CPoint Place(double x, double y, double z) const
    {
        ViewSettings settings;
        settings.azimuth = m_graph.GetViewingAzimuth();
        settings.elevation = m_graph.GetViewingElevation();
        settings.aspectRatio = static_cast<double>(kSize.cx) / kSize.cy;
        settings.viewportSize = kSize;
        C3DAxis* const* const axes = m_graph.GetAxes();
        CVertex const window = *Camera(settings).Project(
            { axes[0]->GetViewVal(x, 1), axes[1]->GetViewVal(y, 1), axes[2]->GetViewVal(z, 1) });
        return { static_cast<int>(window.X()), static_cast<int>(kSize.cy - window.Y()) };
    }
    COLORREF At(double x, double y, double z) const
    {
        CPoint const p = Place(x, y, z);
        return m_target.GetDC()->GetPixel(p.x, p.y);
    }
    /// Whether the colour is within two pixels of the place.
    bool IsNear(double x, double y, double z, COLORREF colour) const
    {
        CPoint const p = Place(x, y, z);
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -2; dx <= 2; ++dx) {
                if (AreNear(m_target.GetDC()->GetPixel(p.x + dx, p.y + dy), colour))
                    return true;
            }
        }
        return false;
    }

    C3DGraph m_graph;
    CDIB m_target;
    CSurface* m_surface;
};

TEST_F(DrawSurface, OneColourCoversItsCellsAndHolesShowWhatIsBehind)
{
    Fill(*m_surface, 9, 9, [](int c, int r) { return c == 4 && r == 4 ? kGap : c + r; });
    Draw();
    for (auto const& [x, y] :
        std::vector<std::pair<double, double>> { { 0.5, 0.5 }, { 7.5, 2.5 }, { 2.2, 4.1 }, { 5.6, 5.6 } })
        EXPECT_TRUE(AreNear(At(x, y, x + y), RGB(200, 100, 40))) << x << ", " << y;
    for (auto const& [x, y] : std::vector<std::pair<double, double>> { { 4, 4 }, { 3.3, 3.3 }, { 4.7, 3.3 } })
        EXPECT_TRUE(AreNear(At(x, y, x + y), kBackground)) << x << ", " << y;
}

TEST_F(DrawSurface, TransformsMoveASurfaceThatWasDrawn)
{
    Fill(*m_surface, 3, 3, [](int c, int) { return c; });
    Draw();
    CTransformArray moved;
    moved.Add(CCoordTransform(CCoordTransform::ctTranslate, 10, 0, 5));
    m_surface->SetTransforms(moved);
    m_graph.Draw(m_target.GetDC(), { { 0, 0 }, kSize }, pmOffScreen);
    EXPECT_EQ(m_graph.GetAxes()[0]->GetMin(), 10.0);
    EXPECT_EQ(m_graph.GetAxes()[2]->GetMax(), 7.0);
    EXPECT_TRUE(AreNear(At(11.5, 0.7, 6.5), RGB(200, 100, 40)));
}

TEST_F(DrawSurface, BandsAreCutWhereTheValueIsTheLevel)
{
    for (bool const isFlat : { false, true }) {
        m_surface->SetForceNormalAveraging(isFlat ? 0 : 1);
        m_surface->SetColourDescription(2);
        m_surface->SetColourmap("Spectrum");
        m_surface->SetContoursOn(1);
        Fill(*m_surface, 3, 3, [](int c, int r) { return 30.0 * c + r; });
        Draw();
        // Between the levels of 62 / 6.
        for (int k = 0; k < 6; ++k) {
            double const value = 62.0 / 6 * (k + 0.5);
            EXPECT_TRUE(AreNear(At((value - 1) / 30, 1, value), m_surface->GetContourBandColours().GetAt(k))) << k;
        }
        m_surface->SetContoursOn(0);
        Draw();
        EXPECT_TRUE(IsNear(0.5, 1, 16, m_surface->GetLUTColour(16)));
        EXPECT_TRUE(IsNear(1.5, 1, 46, m_surface->GetLUTColour(46)));
    }
}

TEST_F(DrawSurface, TheSideTowardsALightIsLit)
{
    m_graph.SetLightingOn(1);
    Fill(*m_surface, 2, 2, [](int, int) { return 5.0; });
    std::array<int, 2> brightness {};
    for (bool const isFlat : { false, true }) {
        m_surface->SetForceNormalAveraging(isFlat ? 0 : 1);
        for (std::size_t k = 0; k < 2; ++k) {
            m_graph.SetLight1Pos(0, k == 0 ? 0 : 180);
            Draw();
            brightness[k] = Brightness(At(0.5, 0.5, 5));
        }
        EXPECT_GT(brightness[0], 2 * brightness[1]);
        EXPECT_GT(brightness[1], 0);
    }
    // A roof under a light from the side of high x.
    Fill(*m_surface, 2, 3, [](int c, int) { return c == 1 ? 1.0 : 0.0; });
    m_graph.SetLight1Pos(0, 60);
    Draw();
    EXPECT_GT(Brightness(At(1.5, 0.5, 0.5)), Brightness(At(0.5, 0.5, 0.5)) + 50);
}

TEST_F(DrawSurface, AWireframeHidesWhatLiesBehindIt)
{
    m_surface->SetWireframeOn(1);
    m_surface->SetWireframeColour(RGB(0, 0, 250));
    CSurface* const below = AddSurface();
    below->SetColour(RGB(0, 255, 0));
    below->SetGradationOn(0);
    for (bool const isFlat : { false, true }) {
        m_surface->SetForceNormalAveraging(isFlat ? 0 : 1);
        // Blocks of four cells.
        Fill(*m_surface, 9, 9, [](int, int) { return 5.0; });
        Fill(*below, 9, 9, [](int, int) { return 0.0; });
        below->SetPlotDataModified(1);
        Draw();
        for (auto const& [x, y] :
            std::vector<std::pair<double, double>> { { 2, 2 }, { 6, 2 }, { 5, 7 }, { 1, 1 }, { 2, 3 } })
            EXPECT_TRUE(AreNear(At(x, y, 5), RGB(200, 100, 40))) << x << ", " << y;
        for (auto const& [x, y] :
            std::vector<std::pair<double, double>> { { 4, 2 }, { 2, 4 }, { 4, 4 }, { 0, 3 }, { 8, 6 } })
            EXPECT_TRUE(IsNear(x, y, 5, RGB(0, 0, 250))) << x << ", " << y;
    }
    m_surface->SetWireframeMode(CSurface::wmAcrossX);
    Draw();
    EXPECT_TRUE(IsNear(4, 2, 5, RGB(0, 0, 250)));
    EXPECT_FALSE(IsNear(2, 4, 5, RGB(0, 0, 250)));
    // A block whose first node is missing is not there at all.
    Fill(*m_surface, 9, 9, [](int c, int r) { return c == 4 && r == 4 ? kGap : 5.0; });
    Draw();
    EXPECT_TRUE(AreNear(At(6, 6, 0), RGB(0, 255, 0)));
    EXPECT_TRUE(AreNear(At(6, 2, 5), RGB(200, 100, 40)));
}

TEST_F(DrawSurface, AWireframeTakesItsNodesColoursFromItsMap)
{
    m_surface->SetWireframeOn(1);
    m_surface->SetWireframeColourDescription(1);
    Fill(*m_surface, 9, 9, [](int c, int) { return c; });
    for (char const* const map : { "Spectrum", "Greyscale" }) {
        m_surface->SetWireframeColourmap(map);
        Draw();
        EXPECT_TRUE(IsNear(0, 3, 0, m_surface->GetWireframeColourmap()->GetColour(0, 0, 8))) << map;
        EXPECT_TRUE(IsNear(8, 3, 8, m_surface->GetWireframeColourmap()->GetColour(8, 0, 8))) << map;
        EXPECT_TRUE(IsNear(4, 2, 4, m_surface->GetWireframeColourmap()->GetColour(4, 0, 8))) << map;
    }
}

TEST_F(DrawSurface, ContourLinesLieOverTheirSurface)
{
    // Twisted cells, which lines leave by far.
    for (int const cells : { 1, 2, 12 }) {
        m_surface->SetContoursOn(1);
        m_surface->SetContourMode(CSurface::cmLines);
        m_surface->SetContourLevelMode(CSurface::clArbitrary);
        m_surface->SetArbContourLevels({ 0.25 });
        m_surface->SetContourColour(RGB(0, 0, 250));
        double const n = cells;
        Fill(*m_surface, cells + 1, cells + 1, [n](int c, int r) { return (c / n - 0.5) * (r / n - 0.5) * 4.0; });
        Draw();
        std::vector<ContourSegment> segments;
        m_surface->FindContourSegments(0.25, segments);
        ASSERT_FALSE(segments.empty());
        for (ContourSegment const& s : segments)
            EXPECT_TRUE(IsNear((s.from[0] + s.to[0]) / 2, (s.from[1] + s.to[1]) / 2, 0.25, RGB(0, 0, 250))) << cells;
    }
    m_graph.SetCoarseMeshMode(1);
    Draw();
    EXPECT_FALSE(IsNear(9, 9, 0.25, RGB(0, 0, 250)));
}

TEST_F(DrawSurface, HalfATransparentSurfaceIsHalfOfWhatIsBehind)
{
    m_surface->SetTransparency(0.5);
    Fill(*m_surface, 5, 5, [](int, int) { return 5.0; });
    Draw();
    EXPECT_TRUE(AreNear(At(1.3, 2.6, 5), RGB(105, 60, 35)));
    m_surface->SetTransparency(1);
    Draw();
    EXPECT_TRUE(AreNear(At(1.3, 2.6, 5), kBackground));
}

TEST_F(DrawSurface, AnImageCoversItsPlace)
{
    // 2 × 2 texels from (2, 2) to (6, 6): the lowest row is red and green, the upper one blue and white.
    std::vector<BYTE> const texels { 250, 0, 0, 255, 0, 250, 0, 255, 0, 0, 250, 255, 255, 255, 255, 255 };
    CTextureMap image;
    TextureMapParams place;
    place.xMin = place.yMin = 2;
    place.xMax = place.yMax = 6;
    image.SetParams(place);
    for (bool const isFlat : { false, true }) {
        m_surface->SetForceNormalAveraging(isFlat ? 0 : 1);
        m_surface->SetUseTextureMap(0);
        m_surface->SetTextureMapParams(image);
        ASSERT_EQ(m_surface->GetTextureMap()->SetTexels({ 2, 2 }, texels), 1);
        m_surface->SetUseTextureMap(1);
        Fill(*m_surface, 9, 9, [](int, int) { return 5.0; });
        Draw();
        // Modulated with the surface's colour.
        EXPECT_TRUE(AreNear(At(3, 3.2, 5), RGB(200 * 250 / 255, 0, 0)));
        EXPECT_TRUE(AreNear(At(5, 3.2, 5), RGB(0, 100 * 250 / 255, 0)));
        EXPECT_TRUE(AreNear(At(3, 5.2, 5), RGB(0, 0, 40 * 250 / 255)));
        EXPECT_TRUE(AreNear(At(5, 5.2, 5), RGB(200, 100, 40)));
        EXPECT_TRUE(AreNear(At(1, 1.2, 5), RGB(200, 100, 40)));
        EXPECT_TRUE(AreNear(At(3, 7.2, 5), RGB(200, 100, 40)));
    }
}

TEST_F(DrawSurface, ADocumentDrawsTheSamePicture)
{
    OmbrelInit();
    m_graph.SetLightingOn(1);
    m_surface->SetColourDescription(2);
    m_surface->SetColourmap("Spectrum");
    m_surface->SetContoursOn(1);
    m_surface->SetContourMode(CSurface::cmBandsAndLines);
    Fill(*m_surface, 9, 9, [](int c, int r) { return c == 3 && r == 5 ? kGap : c * r % 7; });
    Draw();
    C3DGraph loaded;
    ASSERT_TRUE(test::Load(loaded, test::Stored(m_graph)));
    CDIB target(kSize.cx, kSize.cy, 24);
    loaded.Draw(target.GetDC(), { { 0, 0 }, kSize }, pmOffScreen);
    EXPECT_EQ(target.EncodeBmp(), m_target.EncodeBmp());
    EXPECT_NE(target.GetDC()->GetPixel(kSize.cx / 2, kSize.cy / 2), kBackground);
}

TEST_F(DrawSurface, HostileSettingsLeaveAGraphThatCanBeDrawn)
{
    Fill(*m_surface, 9, 9, [](int c, int r) { return c * r; });
    m_surface->SetWireframeXFac(0);
    m_surface->SetWireframeYFac(-30000);
    m_surface->SetContoursOn(1);
    m_surface->SetContourMode(77);
    for (int const wireframe : { 0, 1 }) {
        for (double const transparency : { 0.0, 7.0, std::numeric_limits<double>::quiet_NaN() }) {
            m_surface->SetWireframeOn(wireframe);
            m_surface->SetTransparency(transparency);
            Draw();
        }
    }
    m_surface->SetContourMode(CSurface::cmBandsAndLines);
    m_surface->SetContourScaleFac(std::numeric_limits<double>::quiet_NaN());
    m_surface->SetWireframeOn(0);
    m_surface->SetTransparency(0);
    m_graph.GetAxes()[2]->SetRangeMode(C3DAxis::rmFixed);
    m_graph.GetAxes()[2]->SetRange(0, 1e-300);
    Draw();
    m_graph.GetAxes()[2]->SetRangeMode(C3DAxis::rmExact);
    m_surface->SetContoursOn(0);
    Draw();
    EXPECT_TRUE(AreNear(At(2.5, 3.5, 8.75), RGB(200, 100, 40)));
}

} // namespace
} // namespace ombrel
