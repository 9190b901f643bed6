#include "ombrel/Init.h"
#include "ombrel/graph3d/Surface.h"
#include "tests/graph3d/Draw3D.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"

namespace ombrel {
namespace {

using test::Fill;

using test::AreNear;
using test::Brightness;
using test::kBackground;
using test::kSize;

/// A graph of a surface alone, without light, seen from straight above.
class DrawSurface : public test::Draw3D {
protected:
    DrawSurface()
        : m_surface(AddSurface())
    {
        m_graph.SetLightingOn(0);
        m_graph.SetViewingElevation(0);
        m_surface->SetColour(RGB(200, 100, 40));
        m_surface->SetGradationOn(0);
    }
    CSurface* AddSurface() { return &Add<CSurface>(itSurfacePlot); }
    void Draw()
    {
        m_surface->SetPlotDataModified(1);
        Draw3D::Draw();
    }
    bool IsNear(double x, double y, double z, COLORREF colour) const
    {
        return Draw3D::IsNear(BoxPlace(x, y, z), colour);
    }

    CSurface* m_surface;
};

TEST_F(DrawSurface, OneColourCoversItsCellsAndHolesShowWhatIsBehind)
{
    Fill(*m_surface, 9, 9, [](int c, int r) { return c == 4 && r == 4 ? kGap : c + r; });
    Draw();
    for (auto const& [x, y] :
        std::vector<std::pair<double, double>> { { 0.5, 0.5 }, { 7.5, 2.5 }, { 2.2, 4.1 }, { 5.6, 5.6 } })
        EXPECT_TRUE(AreNear(AtData(x, y, x + y), RGB(200, 100, 40))) << x << ", " << y;
    for (auto const& [x, y] : std::vector<std::pair<double, double>> { { 4, 4 }, { 3.3, 3.3 }, { 4.7, 3.3 } })
        EXPECT_TRUE(AreNear(AtData(x, y, x + y), kBackground)) << x << ", " << y;
}

TEST_F(DrawSurface, TransformsMoveASurfaceThatWasDrawn)
{
    Fill(*m_surface, 3, 3, [](int c, int) { return c; });
    Draw();
    CTransformArray moved;
    moved.Add(CCoordTransform(CCoordTransform::ctTranslate, 10, 0, 5));
    m_surface->SetTransforms(moved);
    Draw3D::Draw();
    EXPECT_EQ(m_graph.GetAxes()[0]->GetMin(), 10.0);
    EXPECT_EQ(m_graph.GetAxes()[2]->GetMax(), 7.0);
    EXPECT_TRUE(AreNear(AtData(11.5, 0.7, 6.5), RGB(200, 100, 40)));
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
            EXPECT_TRUE(AreNear(AtData((value - 1) / 30, 1, value), m_surface->GetContourBandColours().GetAt(k))) << k;
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
            brightness[k] = Brightness(AtData(0.5, 0.5, 5));
        }
        EXPECT_GT(brightness[0], 2 * brightness[1]);
        EXPECT_GT(brightness[1], 0);
    }
    // A roof under a light from the side of high x.
    Fill(*m_surface, 2, 3, [](int c, int) { return c == 1 ? 1.0 : 0.0; });
    m_graph.SetLight1Pos(0, 60);
    Draw();
    EXPECT_GT(Brightness(AtData(1.5, 0.5, 0.5)), Brightness(AtData(0.5, 0.5, 0.5)) + 50);
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
            EXPECT_TRUE(AreNear(AtData(x, y, 5), RGB(200, 100, 40))) << x << ", " << y;
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
    EXPECT_TRUE(AreNear(AtData(6, 6, 0), RGB(0, 255, 0)));
    EXPECT_TRUE(AreNear(AtData(6, 2, 5), RGB(200, 100, 40)));
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
    EXPECT_TRUE(AreNear(AtData(1.3, 2.6, 5), RGB(105, 60, 35)));
    m_surface->SetTransparency(1);
    Draw();
    EXPECT_TRUE(AreNear(AtData(1.3, 2.6, 5), kBackground));
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
        EXPECT_TRUE(AreNear(AtData(3, 3.2, 5), RGB(200 * 250 / 255, 0, 0)));
        EXPECT_TRUE(AreNear(AtData(5, 3.2, 5), RGB(0, 100 * 250 / 255, 0)));
        EXPECT_TRUE(AreNear(AtData(3, 5.2, 5), RGB(0, 0, 40 * 250 / 255)));
        EXPECT_TRUE(AreNear(AtData(5, 5.2, 5), RGB(200, 100, 40)));
        EXPECT_TRUE(AreNear(AtData(1, 1.2, 5), RGB(200, 100, 40)));
        EXPECT_TRUE(AreNear(AtData(3, 7.2, 5), RGB(200, 100, 40)));
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

} // namespace
} // namespace ombrel
