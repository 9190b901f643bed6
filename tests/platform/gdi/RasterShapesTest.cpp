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
    // Without a pen the brush reaches the edge; the corners may come in any order.
    Picture filled(5, 5);
    filled.UsePen(PS_NULL, 1);
    filled.DC().Ellipse({ 5, 5, 0, 0 });
    EXPECT_EQ(filled.Rows(), ".ooo.\nooooo\nooooo\nooooo\n.ooo.\n");
}

TEST(Ellipse, WideOutlinesStampTheirDotOnEveryPixel)
{
    Picture circle(12, 12);
    circle.UsePen(PS_DOT, 3);
    circle.DC().Ellipse({ 2, 2, 10, 10 });
    EXPECT_EQ(circle.Rows(),
        "............\n....####....\n...######...\n..########..\n"
        ".###oooo###.\n.###oooo###.\n.###oooo###.\n.###oooo###.\n"
        "..########..\n...######...\n....####....\n............\n");
    Picture arc(12, 12);
    arc.UsePen(PS_SOLID, 2);
    arc.DC().Arc({ 2, 2, 9, 9 }, { 6, 0 }, { 0, 6 });
    EXPECT_EQ(arc.Rows(),
        "............\n...###......\n..####......\n.###........\n"
        ".##.........\n............\n............\n............\n"
        "............\n............\n............\n............\n");
    Picture dashed(12, 12);
    dashed.UsePen(PS_DOT, 1);
    dashed.DC().Arc({ 1, 1, 11, 11 }, { 12, 6 }, { 0, 6 });
    dashed.DC().SetBkMode(OPAQUE);
    dashed.DC().SetBkColor(kBrushColour);
    dashed.DC().Arc({ 1, 1, 11, 11 }, { 0, 6 }, { 12, 6 });
    EXPECT_EQ(dashed.Rows(),
        "............\n....##......\n...#........\n.........#..\n"
        "..........#.\n..........#.\n.#..........\n.#........o.\n"
        "..#......o..\n...o....#...\n....oo##....\n............\n");
}

TEST(Ellipse, BeyondTheDirectSizeLooksLikeTheShape)
{
    // The leftmost point of a huge circle comes to the left edge of the picture.
    Picture picture(40, 40);
    int const size = 200000;
    picture.DC().Ellipse({ 10, 20 - size / 2, 10 + size, 20 + size / 2 });
    EXPECT_EQ(picture.Count('#'), 40);
    EXPECT_EQ(picture.Pixel(30, 3), Raster::FromColour(kBrushColour));
    EXPECT_EQ(picture.Pixel(5, 3), Raster::FromColour(kPaper));
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
        ASSERT_EQ(picture.Rows(), Rows(*region.GetRegion(), 64, 60)) << "round " << round;
    }
}

TEST(Shapes, FillsLeaveOutTheirRightAndBottomEdges)
{
    Picture picture(6, 4);
    picture.DC().SetViewportOrg(1, -1);
    picture.DC().FillSolidRect({ 0, 2, 4, 4 }, kBrushColour);
    picture.DC().FillSolidRect({ 2, 2, 2, 4 }, kPenColour);
    EXPECT_EQ(picture.Rows(), "......\n.oooo.\n.oooo.\n......\n");
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
    dc.Polyline(cross);
    graphics.DrawCurve({ { kPenColour, 255 }, 3, dashes }, cross);
    graphics.SetSmoothing(true);
    graphics.DrawCurve({ { kPenColour, 100 }, 1, {} }, cross);
    graphics.FillRectangle(VectorBrush::Hatch(4, { 0, 255 }, { kBrushColour, 99 }), 0, 0, 40, 40);
    dc.TextOut(0, 12, "Clipped text");
    std::string touched = picture.Rows();
    std::replace_if(
        touched.begin(), touched.end(), [](char c) { return c == '#' || c == '?'; }, 'o');
    EXPECT_EQ(touched, Rows(*region.GetRegion(), 40, 40));
}

constexpr VectorColour kBlack { 0, 255 };
constexpr VectorColour kWhite { 0xFFFFFF, 255 };

TEST(Hatch, LinesFallOnEveryEighthRowAndColumnOfTheBitmap)
{
    VectorColour const pen { kPenColour, 255 };
    VectorColour const brush { kBrushColour, 255 };
    Picture picture(11, 10);
    picture.DC().SetViewportOrg(3, 5);
    VectorGraphics graphics(picture.DC());
    graphics.FillRectangle(VectorBrush::Hatch(0, pen, brush), -2, -4, 3, 8);
    graphics.FillRegion(VectorBrush::Hatch(1, pen, brush), Region::FromRect({ 3, -4, 8, -2 }));
    graphics.FillPolygon(
        VectorBrush::Hatch(1, pen, brush), std::vector<CPoint> { { 2, 0 }, { 8, 0 }, { 8, 2 }, { 2, 2 } });
    EXPECT_EQ(picture.Rows(),
        "...........\n.ooo..oo#oo\n.ooo..oo#oo\n.ooo.......\n.ooo.......\n"
        ".ooo.ooo#oo\n.ooo.ooo#oo\n.ooo.......\n.###.......\n...........\n");
}

TEST(Hatch, EveryStyleHasBothColoursAndNoTwoAreEqual)
{
    std::vector<std::string> seen;
    for (int style = 0; style < kHatchStyles; ++style) {
        Picture picture(8, 8);
        VectorGraphics(picture.DC())
            .FillRectangle(VectorBrush::Hatch(style, { kPenColour, 255 }, { kPaper, 255 }), 0, 0, 8, 8);
        std::string const rows = picture.Rows();
        EXPECT_LT(picture.Count('.'), 64) << style;
        EXPECT_GT(picture.Count('.'), 0) << style;
        EXPECT_EQ(std::count(seen.begin(), seen.end(), rows), 0) << style;
        seen.push_back(rows);
    }
    EXPECT_FALSE(VectorBrush::Hatch(-1, kBlack, kWhite).hatchStyle);
    EXPECT_FALSE(VectorBrush::Hatch(kHatchStyles, kBlack, kWhite).hatchStyle);
}

TEST(Hatch, TranslucentBackgroundLeavesTheBitmapThrough)
{
    Picture picture(8, 8);
    picture.DC().FillSolidRect({ 0, 0, 8, 8 }, 0xFFFFFF);
    VectorGraphics(picture.DC()).FillRectangle(VectorBrush::Hatch(0, kBlack, { 0, 1 }), 0, 0, 8, 8);
    EXPECT_EQ(picture.Pixel(3, 0), 0U);
    EXPECT_EQ(picture.Pixel(3, 1), 0xFEFEFEU);
}

TEST(Blend, ColoursMixToTheNearest)
{
    using Case = std::tuple<std::uint32_t, BYTE, std::uint32_t, std::uint32_t>;
    for (auto const& [colour, alpha, over, result] :
        { Case { 0, 0x80, 0x102030, 0x081018 }, { 0, 0x01, 0xFFFFFF, 0xFEFEFE }, { 0xFF0000, 0x40, 0x102030, 0x4C1824 },
            { 0xFF0000, 0x00, 0x102030, 0x102030 }, { 0x00FF80, 0x7F, 0x102030, 0x088F58 },
            { 0xA0B0C0, 0xC0, 0x000000, 0x788591 }, { 0x123456, 0xFF, 0xFFFFFF, 0x123456 } }) {
        Picture picture(1, 1);
        picture.DC().FillSolidRect({ 0, 0, 1, 1 }, Raster::ToColour(over));
        VectorGraphics(picture.DC()).FillRectangle({ { Raster::ToColour(colour), alpha }, {}, {} }, 0, 0, 1, 1);
        EXPECT_EQ(picture.Pixel(0, 0), result);
    }
}

TEST(VectorFill, RectanglesTakeThePixelsWhoseCoordinatesLieInside)
{
    using Case = std::tuple<double, double, int, int>;
    for (auto const& [x, w, first, count] : { Case { 2, 3, 2, 3 }, { 3.5, 8, 4, 8 }, { 2.2, 0.5, 3, 0 },
             { 2.6, 0.5, 3, 1 }, { 4, 0, 0, 0 }, { 4, -2, 0, 0 }, { std::numeric_limits<double>::quiet_NaN(), 3, 0, 0 },
             { -1e300, 2e300, 0, 15 }, { 9, std::numeric_limits<double>::infinity(), 9, 6 } }) {
        Picture picture(15, 1);
        VectorGraphics(picture.DC()).FillRectangle(VectorBrush::Solid(kBrushColour), x, 0, w, 1);
        std::string expected(15, '.');
        expected.replace(
            static_cast<std::size_t>(first), static_cast<std::size_t>(count), static_cast<std::size_t>(count), 'o');
        EXPECT_EQ(picture.Rows(), expected + '\n') << x;
    }
}

Region Polygon(std::vector<CPoint> const& points, PolyFillMode mode = ALTERNATE)
{
    return Region::FromPolygon(points, mode);
}

TEST(Region, PolygonTakesInItsLeftAndTopEdgesOnly)
{
    using Case = std::tuple<std::vector<CPoint>, PolyFillMode, std::string>;
    Case const cases[] = {
        { { { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 } }, ALTERNATE, ".....\n.ooo.\n.ooo.\n.....\n" },
        { { { 0, 0 }, { 4, 8 }, { 8, 0 } }, ALTERNATE,
            "oooooooo\n.ooooooo\n.oooooo.\n..ooooo.\n..oooo..\n...ooo..\n...oo...\n....o...\n........\n" },
        { { { 3, 0 }, { 6, 3 }, { 3, 6 }, { 0, 3 } }, ALTERNATE,
            "......\n..oo..\n.oooo.\noooooo\n.oooo.\n..oo..\n......\n" },
        // A rectangle within another, both the same way round: a hole only when alternating.
        { { { 0, 0 }, { 5, 0 }, { 5, 4 }, { 0, 4 }, { 0, 0 }, { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 }, { 1, 1 } },
            ALTERNATE, "ooooo\no...o\no...o\nooooo\n" },
        { { { 0, 0 }, { 5, 0 }, { 5, 4 }, { 0, 4 }, { 0, 0 }, { 1, 1 }, { 4, 1 }, { 4, 3 }, { 1, 3 }, { 1, 1 } },
            WINDING, "ooooo\nooooo\nooooo\nooooo\n" },
        { { { 2, 2 }, { 2, 2 } }, ALTERNATE, "...\n...\n...\n" },
    };
    for (auto const& [points, mode, rows] : cases) {
        int const width = static_cast<int>(rows.find('\n'));
        int const height = static_cast<int>(rows.size()) / (width + 1);
        EXPECT_EQ(Rows(Polygon(points, mode), width, height), rows);
    }
}

TEST(Region, SpansOfPartOfTheRowsAreThoseOfAllRows)
{
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        std::vector<CPoint> points;
        for (int i = 0; i < 9; ++i)
            points.push_back({ static_cast<int>(random() % 60), static_cast<int>(random() % 60) });
        PolyFillMode const mode = round % 2 ? ALTERNATE : WINDING;
        // Made so tall that only the rows asked for are found.
        std::vector<CPoint> tall = points;
        tall.insert(tall.end(), { { 70, 9000 }, { 71, -9000 }, { 70, 9000 }, points.back() });
        ASSERT_EQ(Rows(Polygon(points, mode), 60, 60), Rows(Polygon(tall, mode), 60, 60)) << "round " << round;
    }
}

TEST(Region, KnowsRectanglesAndWhichRegionsAreEqual)
{
    Points const rect { { 1, 1 }, { 1, 4 }, { 6, 4 }, { 6, 1 } };
    auto const with = [&rect](CPoint last) {
        Points points = rect;
        points.push_back(last);
        return points;
    };
    EXPECT_TRUE(Polygon(rect).IsRect());
    EXPECT_TRUE(Polygon({ { 1, 1 }, { 6, 1 }, { 6, 4 }, { 1, 4 } }).IsRect());
    EXPECT_TRUE(Polygon(with({ 1, 1 })).IsRect());
    EXPECT_FALSE(Polygon(with({ 3, 2 })).IsRect());
    EXPECT_FALSE(Polygon({ { 1, 1 }, { 1, 4 }, { 6, 4 }, { 6, 2 } }).IsRect());
    EXPECT_FALSE(Polygon({ { 1, 1 }, { 6, 1 }, { 6, 4 }, { 2, 4 } }).IsRect());
    Points const crossed { { 0, 0 }, { 9, 0 }, { 9, 9 }, { 3, 9 }, { 3, 3 }, { 6, 3 }, { 6, 9 }, { 0, 9 } };
    EXPECT_TRUE(Polygon(crossed) == Polygon(crossed));
    EXPECT_TRUE(Polygon(rect) == Region::FromRect({ 6, 4, 1, 1 }));
    EXPECT_FALSE(Polygon(crossed) == Polygon(crossed, WINDING));
    EXPECT_FALSE(Polygon(crossed) == Region::FromRect({ 0, 0, 9, 9 }));
    EXPECT_TRUE(Region::Intersection(Polygon(crossed), Region::FromRect({ 0, 0, 9, 9 })) == Polygon(crossed));
    VectorBrush const hatched = VectorBrush::Hatch(3, kBlack, kWhite);
    EXPECT_FALSE(hatched == VectorBrush::Hatch(3, kBlack, kBlack));
    EXPECT_FALSE(hatched == VectorBrush::Hatch(3, kWhite, kWhite));
    EXPECT_FALSE(hatched == VectorBrush::Hatch(4, kBlack, kWhite));
    EXPECT_FALSE((VectorColour { 1, 2 } == VectorColour { 1, 3 }));
}

TEST(Region, IntersectionHoldsThePixelsOfBoth)
{
    Region const triangle = Polygon({ { 0, 0 }, { 12, 24 }, { 24, 0 } });
    Region const diamond = Polygon({ { 12, -2 }, { 22, 9 }, { 12, 20 }, { 2, 9 } });
    Region const rect = Region::FromRect({ 18, 15, 5, 3 });
    Region const others[] = { diamond, rect, Region::FromRect({ 40, 0, 50, 9 }), Region(), triangle };
    for (Region const& other : others) {
        std::string expected = Rows(triangle, 26, 26);
        std::string const second = Rows(other, 26, 26);
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] = second[i] == '.' ? '.' : expected[i];
        EXPECT_EQ(Rows(Region::Intersection(triangle, other), 26, 26), expected);
        EXPECT_EQ(Rows(Region::Intersection(other, triangle), 26, 26), expected);
    }
}

TEST(Region, OffsetMovesPixelsAndOutline)
{
    Region region = Polygon({ { -10, 5 }, { -8, 9 }, { -6, 5 } });
    Region cut = Region::Intersection(region, Region::FromRect({ -10, 5, -8, 7 }));
    region.Spans(0, 8);
    region.Offset(11, -5);
    cut.Offset(11, -5);
    EXPECT_EQ(region.Outline().front(), CPoint(1, 0));
    EXPECT_EQ(Rows(region, 6, 4), ".oooo.\n..ooo.\n..oo..\n...o..\n");
    EXPECT_EQ(Rows(cut, 6, 4), ".oo...\n..o...\n......\n......\n");
}

} // namespace
} // namespace ombrel
