#include "ombrel/platform/gdi/Palette.h"
#include "ombrel/platform/gdi/PngEncoder.h"
#include "tests/platform/gdi/Picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

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

/// The columns and rows that fill a 3 × 2 bitmap from a part of another one.
std::vector<CPoint> Copied(CRect const& part)
{
    Picture source(9, 9);
    Number(source);
    Picture target(3, 2);
    target.DC().StretchBlt(0, 0, 3, 2, &source.DC(), part.left, part.top, part.Width(), part.Height(), SRCCOPY);
    std::vector<CPoint> points;
    for (std::uint32_t const pixel : target.Pixels())
        points.emplace_back(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF);
    return points;
}

/// The rows of a column that is stretched; mirrored when the new height is negative.
std::vector<int> RowsOf(int from, int height)
{
    Picture source(1, from);
    Number(source);
    int const to = std::abs(height);
    Picture target(1, to);
    target.DC().StretchBlt(0, to - std::max(height, 0), 1, height, &source.DC(), 0, 0, 1, from, SRCCOPY);
    std::vector<int> rows;
    for (int y = 0; y < to; ++y)
        rows.push_back(GetGValue(target.DC().GetPixel(0, y)));
    return rows;
}

TEST(Stretch, EnlargingTakesTheNearestPixelAndTheLowerOnABoundary)
{
    EXPECT_EQ(Columns(3, 7), (std::vector { 0, 0, 1, 1, 1, 2, 2 }));
    EXPECT_EQ(Columns(4, 6), (std::vector { 0, 0, 1, 2, 2, 3 }));
    EXPECT_EQ(Columns(4, 4), (std::vector { 0, 1, 2, 3 }));
    EXPECT_EQ(Columns(4, -6), (std::vector { 3, 2, 2, 1, 0, 0 }));
    EXPECT_EQ(Columns(8, 3), (std::vector { 2, 4, 7 }));
    EXPECT_EQ(Columns(8, -3), (std::vector { 7, 4, 2 }));
    EXPECT_EQ(RowsOf(8, 3), (std::vector { 0, 3, 5 })) << "of those that fall together an earlier one stays";
    EXPECT_EQ(RowsOf(4, 6), (std::vector { 0, 0, 1, 2, 2, 3 }));
    EXPECT_EQ(RowsOf(4, -4), (std::vector { 3, 2, 1, 0 }));
}

TEST(Stretch, PartsCanBeTurnedOver)
{
    using Points = std::vector<CPoint>;
    EXPECT_EQ(Copied({ 2, 4, 5, 6 }), (Points { { 2, 4 }, { 3, 4 }, { 4, 4 }, { 2, 5 }, { 3, 5 }, { 4, 5 } }));
    EXPECT_EQ(Copied({ 5, 6, 2, 4 }), (Points { { 4, 5 }, { 3, 5 }, { 2, 5 }, { 4, 4 }, { 3, 4 }, { 2, 4 } }));
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

TEST(Palette, GivesItsEntriesFromAnIndexOn)
{
    PALETTEENTRY const entries[] = { { 1, 2, 3, 0 }, { 4, 5, 6, 0 } };
    PALETTEENTRY copy[2] = {};
    EXPECT_EQ(CPalette(entries).GetPaletteEntries(1, 2, copy), 1U);
    EXPECT_EQ(copy[0].peGreen, 5);
}

TEST(Bitmap, BadSizesAreRefused)
{
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.CreateBitmap(5, 0, 32));
    EXPECT_FALSE(bitmap.CreateBitmap(5, 5, 8));
    EXPECT_FALSE(bitmap.CreateBitmap(2000000000, 2000000000, 32));
    EXPECT_FALSE(bitmap.GetRaster());
    EXPECT_TRUE(bitmap.CreateCompatibleBitmap(nullptr, 3, 4));
    EXPECT_EQ(bitmap.GetSize(), CSize(3, 4));
}

using testing::HasSubstr;
using testing::Not;

struct Decoded {
    int bitDepth = 0;
    int colourType = 0;
    /// 0xAARRGGBB.
    std::vector<std::uint32_t> pixels;
};

Decoded Decode(std::string const& bytes)
{
    png_image image {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
        return {};
    image.format = PNG_FORMAT_BGRA;
    Decoded decoded { bytes[24], bytes[25], {} };
    decoded.pixels.resize(std::size_t { image.width } * image.height);
    png_image_finish_read(&image, nullptr, decoded.pixels.data(), 0, nullptr);
    return decoded;
}

std::vector<std::uint32_t> Opaque(Raster const& raster)
{
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < raster.Height(); ++y) {
        for (int x = 0; x < raster.Width(); ++x)
            pixels.push_back(raster.Row(y)[x] | 0xFF000000);
    }
    return pixels;
}

/// A picture of the given number of colours, unlike in each direction.
Raster MakePicture(int width, int height, unsigned colours, int bitsPerPixel = 24)
{
    Raster raster(width, height, bitsPerPixel);
    unsigned i = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, ++i)
            raster.Row(y)[x] = (i + i / static_cast<unsigned>(width)) % colours * 0x9E3779U & 0xFFFFFF;
    return raster;
}

TEST(PngEncoder, PixelsComeBackFromTheSmallestForm)
{
    using Case = std::tuple<unsigned, int, int>;
    for (auto const& [colours, bitDepth, colourType] :
        { Case { 1, 1, PNG_COLOR_TYPE_PALETTE }, { 2, 1, PNG_COLOR_TYPE_PALETTE }, { 3, 2, PNG_COLOR_TYPE_PALETTE },
            { 5, 4, PNG_COLOR_TYPE_PALETTE }, { 16, 4, PNG_COLOR_TYPE_PALETTE }, { 17, 8, PNG_COLOR_TYPE_PALETTE },
            { 256, 8, PNG_COLOR_TYPE_PALETTE }, { 257, 8, PNG_COLOR_TYPE_RGB } }) {
        for (int const width : { 37, 40 }) {
            Raster raster = MakePicture(width, 29, colours);
            // Some sources leave rubbish beside the colour.
            raster.Row(3)[4] |= 0xAB000000;
            Decoded const decoded = Decode(EncodePng(raster, {}));
            SCOPED_TRACE(colours);
            EXPECT_EQ(decoded.bitDepth, bitDepth);
            EXPECT_EQ(decoded.colourType, colourType);
            EXPECT_EQ(decoded.pixels, Opaque(raster));
        }
    }
}

TEST(PngEncoder, OneBitBitmapsAreBlackAndWhite)
{
    Raster raster(11, 2, 1);
    raster.Row(0)[0] = raster.Row(0)[9] = raster.Row(1)[10] = 0xFFFFFF;
    Decoded const decoded = Decode(EncodePng(raster, {}));
    EXPECT_EQ(decoded.bitDepth, 1);
    EXPECT_EQ(decoded.colourType, PNG_COLOR_TYPE_GRAY);
    EXPECT_EQ(decoded.pixels, Opaque(raster));
}

TEST(PngEncoder, ResolutionAndTextsAreStored)
{
    Raster const raster = MakePicture(8, 8, 4);
    std::string const longKeyword(80, 'k');
    PngSettings const settings { 300,
        { { "Title", "Plain" }, { "Comment", "Größe" }, { "", "x" }, { longKeyword, "x" } }, {} };
    std::string const bytes = EncodePng(raster, settings);
    // 11811 dots a metre either way.
    EXPECT_THAT(bytes, HasSubstr(std::string("\0\0\0\x09pHYs\0\0\x2E\x23\0\0\x2E\x23\x01", 17)));
    EXPECT_THAT(EncodePng(raster, { 96, {}, {} }), HasSubstr(std::string("pHYs\0\0\x0E\xC4", 8))) << "3779.5 a metre";
    EXPECT_THAT(bytes, HasSubstr(std::string("\0\0\0\x0BtEXtTitle\0Plain", 19)));
    EXPECT_THAT(bytes, HasSubstr(std::string("iTXtComment\0\0\0\0\0Größe", 23)));
    EXPECT_THAT(bytes, Not(HasSubstr("kkk")));
    EXPECT_EQ(EncodePng(raster, settings), bytes);
}

TEST(PngEncoder, OneColourCanBeSeenThrough)
{
    for (unsigned const colours : { 4U, 300U }) {
        Raster const raster = MakePicture(40, 20, colours);
        PngSettings settings;
        settings.transparent = Raster::ToColour(raster.Row(0)[1]);
        Decoded const decoded = Decode(EncodePng(raster, settings));
        EXPECT_EQ(decoded.pixels.at(1) >> 24, 0U) << colours;
        EXPECT_EQ(decoded.pixels.at(2) >> 24, 0xFFU) << colours;
    }
}

} // namespace
} // namespace ombrel
