#include "ombrel/platform/gdi/PngEncoder.h"

#include <gtest/gtest.h>
#include <png.h>

namespace ombrel {
namespace {

struct Decoded {
    int width = 0;
    int height = 0;
    int bitDepth = 0;
    int colourType = 0;
    int dotsPerMetre = 0;
    std::vector<std::pair<std::string, std::string>> texts;
    /// 0xAARRGGBB.
    std::vector<std::uint32_t> pixels;
};

Decoded Decode(std::string const& bytes)
{
    Decoded decoded;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    struct Source {
        char const* at;
        std::size_t left;
    } source { bytes.data(), bytes.size() };
    if (setjmp(png_jmpbuf(png)) != 0) {
        png_destroy_read_struct(&png, &info, nullptr);
        return {};
    }
    png_set_read_fn(png, &source, [](png_structp reader, png_bytep data, png_size_t size) {
        auto* const from = static_cast<Source*>(png_get_io_ptr(reader));
        if (size > from->left)
            png_error(reader, "end");
        std::copy_n(from->at, size, reinterpret_cast<char*>(data));
        from->at += size;
        from->left -= size;
    });
    png_read_info(png, info);
    decoded.width = static_cast<int>(png_get_image_width(png, info));
    decoded.height = static_cast<int>(png_get_image_height(png, info));
    decoded.bitDepth = png_get_bit_depth(png, info);
    decoded.colourType = png_get_color_type(png, info);
    decoded.dotsPerMetre = static_cast<int>(png_get_x_pixels_per_meter(png, info));
    png_textp texts = nullptr;
    int count = 0;
    png_get_text(png, info, &texts, &count);
    for (int i = 0; i < count; ++i)
        decoded.texts.emplace_back(texts[i].key, texts[i].text);
    png_set_expand(png);
    png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
    decoded.pixels.resize(static_cast<std::size_t>(decoded.width * decoded.height));
    for (int y = 0; y < decoded.height; ++y)
        png_read_row(png, reinterpret_cast<png_bytep>(decoded.pixels.data() + y * decoded.width), nullptr);
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return decoded;
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
    struct Case {
        unsigned colours;
        int bitDepth;
        int colourType;
    };
    Case const cases[] = {
        { 1, 1, PNG_COLOR_TYPE_PALETTE },
        { 2, 1, PNG_COLOR_TYPE_PALETTE },
        { 3, 2, PNG_COLOR_TYPE_PALETTE },
        { 5, 4, PNG_COLOR_TYPE_PALETTE },
        { 16, 4, PNG_COLOR_TYPE_PALETTE },
        { 17, 8, PNG_COLOR_TYPE_PALETTE },
        { 256, 8, PNG_COLOR_TYPE_PALETTE },
        { 257, 8, PNG_COLOR_TYPE_RGB },
    };
    for (auto const& c : cases) {
        for (int const width : { 37, 40 }) {
            Raster raster = MakePicture(width, 29, c.colours);
            // Some sources leave rubbish beside the colour.
            raster.Row(3)[4] |= 0xAB000000;
            Decoded const decoded = Decode(EncodePng(raster, {}));
            SCOPED_TRACE(c.colours);
            ASSERT_EQ(decoded.width, width);
            ASSERT_EQ(decoded.height, 29);
            EXPECT_EQ(decoded.bitDepth, c.bitDepth);
            EXPECT_EQ(decoded.colourType, c.colourType);
            for (int y = 0; y < 29; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(decoded.pixels[static_cast<std::size_t>(y * width + x)], raster.Row(y)[x] | 0xFF000000)
                        << x << "," << y;
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
    for (int i = 0; i < 22; ++i)
        EXPECT_EQ(decoded.pixels[static_cast<std::size_t>(i)], raster.Row(i / 11)[i % 11] | 0xFF000000) << i;
}

TEST(PngEncoder, ResolutionAndTextsAreStored)
{
    Raster const raster = MakePicture(8, 8, 4);
    std::string const longKeyword(80, 'k');
    PngSettings const settings { 300,
        { { "Title", "Plain" }, { "Comment", "Größe" }, { "", "x" }, { longKeyword, "x" } }, {} };
    std::string const bytes = EncodePng(raster, settings);
    Decoded const decoded = Decode(bytes);
    EXPECT_EQ(decoded.dotsPerMetre, 11811);
    EXPECT_EQ(decoded.texts,
        (std::vector<std::pair<std::string, std::string>> { { "Title", "Plain" }, { "Comment", "Größe" } }));
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
