#include "tests/platform/gdi/Picture.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

/// A bitmap whose pixel (x, y) has the colour x, y.
void Number(Picture& picture)
{
    CSize const size = picture.Bitmap().GetSize();
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x)
            picture.DC().SetPixel(x, y, RGB(x, y, 0));
    }
}

/// The columns of a row that is stretched; mirrored when the new width is negative.
std::vector<int> Columns(int from, int width)
{
    Picture source(from, 1);
    Number(source);
    int const to = std::abs(width);
    Picture target(to, 1);
    target.DC().StretchBlt(to - std::max(width, 0), 0, width, 1, &source.DC(), 0, 0, from, 1, SRCCOPY);
    std::vector<int> columns;
    for (int x = 0; x < to; ++x)
        columns.push_back(GetRValue(target.DC().GetPixel(x, 0)));
    return columns;
}

TEST(Stretch, EnlargingTakesTheNearestPixelAndTheLowerOnABoundary)
{
    EXPECT_EQ(Columns(3, 7), (std::vector { 0, 0, 1, 1, 1, 2, 2 }));
    EXPECT_EQ(Columns(4, 6), (std::vector { 0, 0, 1, 2, 2, 3 }));
    EXPECT_EQ(Columns(4, 4), (std::vector { 0, 1, 2, 3 }));
    EXPECT_EQ(Columns(4, -6), (std::vector { 3, 2, 2, 1, 0, 0 }));
    EXPECT_EQ(Columns(8, 3), (std::vector { 2, 4, 7 }));
}

TEST(Stretch, ClippedStretchIsPartOfTheWholeOne)
{
    Picture source(7, 5);
    Number(source);
    Picture whole(60, 50);
    Picture parts(60, 50);
    whole.DC().StretchBlt(-9, -7, 80, 70, &source.DC(), 0, 0, 7, 5, SRCCOPY);
    for (int const split : { 0, 1 }) {
        parts.ClipTo(split ? CRect(23, 0, 60, 50) : CRect(0, 0, 23, 50));
        parts.DC().StretchBlt(-9, -7, 80, 70, &source.DC(), 0, 0, 7, 5, SRCCOPY);
    }
    EXPECT_EQ(whole.Pixels(), parts.Pixels());
}

TEST(BitBlt, CopiesWhatSourceAndDestinationHave)
{
    Picture source(5, 4);
    Number(source);
    Picture target(10, 8);
    EXPECT_TRUE(target.DC().BitBlt(7, 6, 5, 4, &source.DC(), 0, 0, SRCCOPY));
    EXPECT_TRUE(target.DC().BitBlt(-2, -1, 5, 4, &source.DC(), 0, 0, SRCCOPY));
    EXPECT_TRUE(target.DC().BitBlt(5, 0, 6, 3, &source.DC(), -2, -1, SRCCOPY));
    EXPECT_EQ(target.Pixel(9, 7), Raster::FromColour(RGB(2, 1, 0)));
    EXPECT_EQ(target.Pixel(0, 0), Raster::FromColour(RGB(2, 1, 0)));
    EXPECT_EQ(target.Pixel(7, 1), 0U);
    EXPECT_EQ(target.Pixel(6, 1), Raster::FromColour(kPaper));
    EXPECT_EQ(target.Pixel(7, 0), Raster::FromColour(kPaper));
    CDC empty;
    EXPECT_FALSE(target.DC().BitBlt(0, 0, 5, 4, &empty, 0, 0, SRCCOPY));
    EXPECT_FALSE(target.DC().BitBlt(0, 0, 5, 4, nullptr, 0, 0, SRCCOPY));
    constexpr DWORD kPatternCopy = 0x00F00021;
    EXPECT_FALSE(target.DC().BitBlt(0, 0, 5, 4, &source.DC(), 0, 0, kPatternCopy));
}

TEST(BitBlt, OverlappingCopyWithinABitmapReadsBeforeItWrites)
{
    Picture before(12, 9);
    Number(before);
    for (CPoint const by : { CPoint(1, 0), CPoint(-1, 0), CPoint(0, 1), CPoint(2, -1) }) {
        Picture picture(12, 9);
        Number(picture);
        picture.DC().BitBlt(3 + by.x, 3 + by.y, 5, 4, &picture.DC(), 3, 3, SRCCOPY);
        EXPECT_EQ(picture.Pixels({ CPoint(3, 3) + by, CSize(5, 4) }), before.Pixels({ 3, 3, 8, 7 })) << by.x;
    }
}

TEST(BitBlt, OperationsActBitByBit)
{
    using Case = std::tuple<DWORD, std::uint32_t>;
    Case const cases[] = {
        { SRCCOPY, 0x34E863 },
        { SRCAND, 0x34E863 & 0x17CA26 },
        { SRCPAINT, 0x34E863 | 0x17CA26 },
        { SRCINVERT, 0x34E863 ^ 0x17CA26 },
        { NOTSRCCOPY, 0xFFFFFF ^ 0x34E863 },
        // Destination inverted; source and inverted destination.
        { 0x00550009, 0xFFFFFF ^ 0x17CA26 },
        { 0x00440328, 0x34E863 & ~0x17CA26 },
    };
    for (auto const& [operation, result] : cases) {
        Picture source(3, 2);
        Picture target(3, 2);
        source.DC().FillSolidRect({ 0, 0, 3, 2 }, Raster::ToColour(0x34E863));
        target.DC().FillSolidRect({ 0, 0, 3, 2 }, Raster::ToColour(0x17CA26));
        EXPECT_TRUE(target.DC().BitBlt(0, 0, 3, 2, &source.DC(), 0, 0, operation));
        EXPECT_EQ(target.Pixel(1, 1), result);
    }
}

TEST(MonoBitmap, MaskGoesToOneBitAndBack)
{
    COLORREF const key = RGB(3, 100, 200);
    COLORREF const colours[] = { key, 0, 0xFFFFFF, key ^ 1U };
    Picture source(4, 1);
    for (int x = 0; x < 4; ++x)
        source.DC().SetPixel(x, 0, colours[x]);
    source.DC().SetBkColor(key);
    Picture mask(4, 1, 1);
    mask.DC().BitBlt(0, 0, 4, 1, &source.DC(), 0, 0, SRCCOPY);
    EXPECT_EQ(mask.Pixels(), (std::vector { 0xFFFFFFU, 0U, 0U, 0U }));

    // Text black on white background lets the mask cut a hole with AND.
    Picture target(4, 1);
    target.DC().SetTextColor(0);
    target.DC().SetBkColor(0xFFFFFF);
    target.DC().BitBlt(0, 0, 4, 1, &mask.DC(), 0, 0, SRCAND);
    EXPECT_EQ(target.Pixel(0, 0), Raster::FromColour(kPaper));
    EXPECT_EQ(target.Pixel(1, 0), 0U);

    // Other colours stain it.
    target.DC().SetTextColor(kPenColour);
    target.DC().SetBkColor(kBrushColour);
    target.DC().BitBlt(0, 0, 4, 1, &mask.DC(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.Rows(), "o###\n");
}

TEST(Bitmap, BadSizesAreRefused)
{
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.CreateBitmap(0, 5, 32));
    EXPECT_FALSE(bitmap.CreateBitmap(5, -1, 32));
    EXPECT_FALSE(bitmap.CreateBitmap(5, 5, 8));
    EXPECT_FALSE(bitmap.CreateBitmap(2000000000, 2000000000, 32));
    EXPECT_FALSE(bitmap.GetRaster());
    EXPECT_TRUE(bitmap.CreateCompatibleBitmap(nullptr, 3, 4));
    EXPECT_EQ(bitmap.GetSize(), CSize(3, 4));
}

} // namespace
} // namespace ombrel
