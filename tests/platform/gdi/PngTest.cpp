#include "ombrel/platform/gdi/PngEncoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

namespace ombrel {
namespace {

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
