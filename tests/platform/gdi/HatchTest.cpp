#include "tests/platform/gdi/Picture.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

constexpr VectorColour kBlack { 0, 255 };
constexpr VectorColour kWhite { 0xFFFFFF, 255 };

TEST(Hatch, PatternIsAnchoredToTheBitmapNotToTheShape)
{
    Picture whole(30, 25);
    VectorGraphics(whole.DC()).FillRectangle(VectorBrush::Hatch(38, kBlack, kWhite), 0, 0, 30, 25);
    Picture parts(30, 25);
    parts.DC().SetViewportOrg(3, 5);
    VectorGraphics graphics(parts.DC());
    Region const upper = Region::FromPolygon(std::vector<CPoint> { { -3, -5 }, { 27, -5 }, { -3, 20 } }, ALTERNATE);
    graphics.FillRegion(VectorBrush::Hatch(38, kBlack, kWhite), upper);
    graphics.FillPolygon(
        VectorBrush::Hatch(38, kBlack, kWhite), std::vector<CPoint> { { 27, -5 }, { 27, 20 }, { -3, 20 } });
    EXPECT_EQ(whole.Rows(), parts.Rows());
    for (int y = 0; y < 25; ++y) {
        for (int x = 0; x < 30; ++x)
            ASSERT_EQ(whole.Pixel(x, y), whole.Pixel(x % 8, y % 8));
    }
}

TEST(Hatch, HorizontalLinesFallOnEveryEighthRow)
{
    Picture picture(4, 20);
    VectorGraphics(picture.DC())
        .FillRectangle(VectorBrush::Hatch(0, { kPenColour, 255 }, { kBrushColour, 255 }), 0, 1, 4, 17);
    for (int y = 0; y < 20; ++y) {
        std::string const row = y == 8 || y == 16 ? "####" : y == 0 || y > 17 ? "...." : "oooo";
        EXPECT_EQ(picture.Rows().substr(static_cast<std::size_t>(5 * y), 4), row) << y;
    }
}

TEST(Hatch, DiagonalsAreSmoothed)
{
    Picture picture(8, 2);
    VectorGraphics(picture.DC()).FillRectangle(VectorBrush::Hatch(2, kBlack, kWhite), 0, 0, 8, 2);
    int const expected[] { 0x16, 0xBF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xBF };
    for (int x = 0; x < 8; ++x) {
        EXPECT_NEAR(picture.Pixel(x, 0) & 0xFF, expected[x], 2);
        EXPECT_EQ(picture.Pixel(x, 0), picture.Pixel((x + 1) % 8, 1));
    }
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
    struct {
        std::uint32_t colour;
        BYTE alpha;
        std::uint32_t over;
        std::uint32_t result;
    } const cases[] = {
        { 0, 0x80, 0xFFFFFF, 0x7F7F7F },
        { 0, 0x80, 0x102030, 0x081018 },
        { 0, 0x01, 0xFFFFFF, 0xFEFEFE },
        { 0xFF0000, 0x40, 0x102030, 0x4C1824 },
        { 0xFF0000, 0x00, 0x102030, 0x102030 },
        { 0x00FF80, 0x7F, 0x102030, 0x088F58 },
        { 0xA0B0C0, 0xC0, 0x000000, 0x788591 },
        { 0x123456, 0xFF, 0xFFFFFF, 0x123456 },
    };
    for (auto const& c : cases) {
        Picture picture(3, 1);
        picture.DC().FillSolidRect({ 0, 0, 3, 1 }, Raster::ToColour(c.over));
        VectorGraphics(picture.DC()).FillRectangle({ { Raster::ToColour(c.colour), c.alpha }, {}, {} }, 0, 0, 3, 1);
        for (int shift = 0; shift < 24; shift += 8)
            EXPECT_NEAR(picture.Pixel(1, 0) >> shift & 0xFF, c.result >> shift & 0xFF, 1);
    }
}

TEST(VectorFill, RectanglesTakeThePixelsWhoseCoordinatesLieInside)
{
    struct {
        double x, w;
        int first, count;
    } const cases[] = { { 2, 3, 2, 3 }, { 3.5, 8, 4, 8 }, { 2.2, 0.5, 3, 0 }, { 2.6, 0.5, 3, 1 }, { 4, 0, 0, 0 },
        { 4, -2, 0, 0 }, { std::numeric_limits<double>::quiet_NaN(), 3, 0, 0 }, { -1e300, 2e300, 0, 15 },
        { 9, std::numeric_limits<double>::infinity(), 9, 6 } };
    for (auto const& c : cases) {
        Picture picture(15, 1);
        VectorGraphics(picture.DC()).FillRectangle(VectorBrush::Solid(kBrushColour), c.x, 0, c.w, 1);
        std::string expected(15, '.');
        expected.replace(static_cast<std::size_t>(c.first), static_cast<std::size_t>(c.count),
            static_cast<std::size_t>(c.count), 'o');
        EXPECT_EQ(picture.Rows(), expected + '\n') << c.x;
    }
}

} // namespace
} // namespace ombrel
