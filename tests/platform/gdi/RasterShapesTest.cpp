#include "tests/platform/gdi/Picture.h"

#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

using Points = std::vector<CPoint>;

std::string EllipseIn(int width, int height)
{
    Picture picture(width, height);
    picture.DC().Ellipse({ 0, 0, width, height });
    return picture.Rows();
}

TEST(Ellipse, SmallCirclesHaveTheirKnownShapes)
{
    EXPECT_EQ(EllipseIn(1, 1), ".\n");
    EXPECT_EQ(EllipseIn(2, 2), "##\n##\n");
    EXPECT_EQ(EllipseIn(2, 4), "##\n##\n##\n##\n");
    EXPECT_EQ(EllipseIn(3, 3), ".#.\n#o#\n.#.\n");
    EXPECT_EQ(EllipseIn(5, 5), ".###.\n#ooo#\n#ooo#\n#ooo#\n.###.\n");
    EXPECT_EQ(EllipseIn(7, 7), "..###..\n.#ooo#.\n#ooooo#\n#ooooo#\n#ooooo#\n.#ooo#.\n..###..\n");
    EXPECT_EQ(EllipseIn(8, 8), "..####..\n.#oooo#.\n#oooooo#\n#oooooo#\n#oooooo#\n#oooooo#\n.#oooo#.\n..####..\n");
    EXPECT_EQ(EllipseIn(9, 9),
        "...###...\n.##ooo##.\n.#ooooo#.\n#ooooooo#\n#ooooooo#\n#ooooooo#\n.#ooooo#.\n.##ooo##.\n...###...\n");
}

TEST(Ellipse, OutlineIsSymmetricConnectedAndFillsItsBox)
{
    for (auto const& [width, height] : { std::pair(40, 23), std::pair(31, 60), std::pair(200, 199) }) {
        Picture picture(width, height);
        picture.UseBrush(CBrush());
        picture.DC().Ellipse({ 0, 0, width, height });
        int first = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(picture.Pixel(x, y), picture.Pixel(width - 1 - x, y));
                ASSERT_EQ(picture.Pixel(x, y), picture.Pixel(x, height - 1 - y));
            }
            first += picture.Pixel(0, y) == Raster::FromColour(kPenColour);
        }
        EXPECT_GT(first, 0);
        EXPECT_EQ(picture.Count('o'), 0);
    }
}

TEST(Ellipse, PenAndBrushAreIndependent)
{
    Picture filled(9, 9);
    filled.UsePen(PS_NULL, 1);
    filled.DC().Ellipse({ 0, 0, 9, 9 });
    Picture both(9, 9);
    both.DC().Ellipse({ 9, 9, 0, 0 });
    EXPECT_EQ(filled.Count('o'), both.Count('o') + both.Count('#'));
}

TEST(Ellipse, BeyondTheDirectSizeLooksLikeTheShape)
{
    // The leftmost point of a huge circle comes to the left edge of the picture.
    Picture picture(40, 40);
    int const size = 200000;
    picture.DC().Ellipse({ 10, 20 - size / 2, 10 + size, 20 + size / 2 });
    EXPECT_EQ(picture.Count('#'), 40);
    EXPECT_EQ(picture.Pixel(10, 20), Raster::FromColour(kPenColour));
    EXPECT_EQ(picture.Pixel(30, 3), Raster::FromColour(kBrushColour));
    EXPECT_EQ(picture.Pixel(5, 3), Raster::FromColour(kPaper));
}

TEST(Arc, TwoHalvesLackOnePixelEach)
{
    auto const halves = [](int size, CPoint from, CPoint to) {
        Picture picture(size, size);
        picture.DC().Arc({ 0, 0, size, size }, from, to);
        picture.DC().Arc({ 0, 0, size, size }, to, from);
        return picture.Rows();
    };
    EXPECT_EQ(halves(7, { 0, 0 }, { 7, 7 }), "...##..\n.#...#.\n#.....#\n#.....#\n#.....#\n.#.....\n..###..\n");
    EXPECT_EQ(halves(3, { 0, 3 }, { 3, 0 }), ".#.\n...\n.#.\n");
    EXPECT_EQ(halves(4, { 0, 0 }, { 4, 4 }), "..#.\n#..#\n#..#\n.#..\n");
}

TEST(Arc, EqualEndsDrawTheWholeOutlineButOnePixel)
{
    Picture arc(20, 14);
    arc.UseBrush(CBrush());
    arc.DC().Arc({ 1, 1, 19, 13 }, { 1, 1 }, { 1, 1 });
    Picture ellipse(20, 14);
    ellipse.UseBrush(CBrush());
    ellipse.DC().Ellipse({ 1, 1, 19, 13 });
    EXPECT_EQ(arc.Count('#'), ellipse.Count('#') - 1);
}

TEST(Shapes, RegionAndOutlineMakeASymbol)
{
    struct {
        Points corners;
        std::string rows;
    } const cases[] = {
        { { { 0, 0 }, { 6, 0 }, { 6, 6 }, { 0, 6 } },
            "#######\n#ooooo#\n#ooooo#\n#ooooo#\n#ooooo#\n#ooooo#\n#######\n" },
        { { { 0, 0 }, { 6, 0 }, { 3, 6 } }, "#######\n#oooo#.\n.#ooo#.\n.#oo#..\n..#o#..\n..##...\n...#...\n" },
        { { { 0, 6 }, { 6, 6 }, { 3, 0 } }, "...#...\n..##...\n..#o#..\n.#oo#..\n.#ooo#.\n#oooo#.\n#######\n" },
        { { { 3, 0 }, { 6, 3 }, { 3, 6 }, { 0, 3 } },
            "...#...\n..#o#..\n.#ooo#.\n#ooooo#\n.#ooo#.\n..#o#..\n...#...\n" },
    };
    for (auto const& c : cases) {
        Picture picture(7, 7);
        CRgn region;
        region.CreatePolygonRgn(c.corners, ALTERNATE);
        CBrush const brush(kBrushColour);
        picture.DC().FillRgn(&region, &brush);
        Points outline = c.corners;
        outline.push_back(outline.front());
        picture.DC().Polyline(outline);
        EXPECT_EQ(picture.Rows(), c.rows);
    }
}

TEST(Shapes, CrowdedPolygonHasThePixelsOfItsRegion)
{
    std::mt19937 random(17);
    for (int round = 0; round < 30; ++round) {
        int const reach = round % 3 == 2 ? 30000 : 90;
        Points points;
        for (int i = 0; i < 400; ++i) {
            int const step = round % 2 ? i / 5 : static_cast<int>(random() % 100);
            points.push_back({ step - 10, static_cast<int>(random() % (2U * static_cast<unsigned>(reach))) - reach });
        }
        points.push_back({ 90, 70 });
        points.push_back({ -30000, 75 });
        CRgn region;
        region.CreatePolygonRgn(points, ALTERNATE);
        Picture picture(64, 60);
        CBrush const brush(kBrushColour);
        picture.DC().FillRgn(&region, &brush);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 64; ++x)
                ASSERT_EQ(Raster::ToColour(picture.Pixel(x, y)) == kBrushColour, region.GetRegion()->Contains({ x, y }))
                    << x << ',' << y << " round " << round;
        }
    }
}

TEST(Shapes, FillsLeaveOutTheirRightAndBottomEdges)
{
    Picture picture(12, 9);
    picture.DC().SetViewportOrg(1, -1);
    picture.DC().FillSolidRect({ 2, 3, 8, 7 }, kBrushColour);
    picture.DC().FillSolidRect({ 5, 5, 5, 9 }, kPenColour);
    EXPECT_EQ(picture.Count('o'), 24);
    EXPECT_EQ(picture.Pixel(3, 2), Raster::FromColour(kBrushColour));
    EXPECT_EQ(picture.Pixel(8, 5), Raster::FromColour(kBrushColour));
    EXPECT_EQ(picture.Pixel(9, 5), Raster::FromColour(kPaper));
}

TEST(Shapes, ClipAppliesToEveryPrimitive)
{
    Picture picture(40, 40);
    CRgn region;
    region.CreatePolygonRgn(Points { { 20, 4 }, { 36, 20 }, { 20, 36 }, { 4, 20 } }, ALTERNATE);
    CDC& dc = picture.DC();
    dc.SelectClipRgn(&region);
    Picture source(40, 40);
    source.DC().FillSolidRect({ 0, 0, 40, 40 }, kPenColour);
    VectorGraphics graphics(dc);
    double const dashes[] { 3, 1 };
    Points const cross { { 0, 0 }, { 39, 39 }, { 39, 0 }, { 0, 39 } };
    dc.BitBlt(0, 0, 40, 40, &source.DC(), 0, 0, SRCCOPY);
    dc.FillSolidRect({ 0, 0, 40, 20 }, kBrushColour);
    dc.Ellipse({ 0, 0, 40, 40 });
    dc.Arc({ 2, 2, 38, 38 }, { 0, 0 }, { 40, 40 });
    dc.SetPixel(0, 0, 0);
    graphics.DrawCurve({ { kPenColour, 255 }, 3, dashes }, cross);
    graphics.SetSmoothing(true);
    graphics.DrawCurve({ { kPenColour, 100 }, 1, {} }, cross);
    graphics.FillRectangle(VectorBrush::Hatch(4, { 0, 255 }, { kBrushColour, 99 }), 0, 0, 40, 40);
    dc.TextOut(0, 12, "Clipped text");
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            bool const untouched = picture.Pixel(x, y) == Raster::FromColour(kPaper);
            ASSERT_EQ(untouched, !region.GetRegion()->Contains({ x, y })) << x << ',' << y;
        }
    }
}

} // namespace
} // namespace ombrel
