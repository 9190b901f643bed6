#include "ombrel/platform/gdi/PngDecoder.h"
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/gdi/PngEncoder.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

std::span<std::byte const> BytesOf(std::string const& text) { return std::as_bytes(std::span(text)); }

TEST(PngDecoder, GivesBackWhatWasEncoded)
{
    // Grey, with a palette, and in true colour.
    for (auto const& [bits, colours] : { std::pair(1, 2U), std::pair(24, 7U), std::pair(24, 999U) }) {
        Raster raster(37, 29, bits);
        unsigned i = 0;
        for (int y = 0; y < 29; ++y)
            for (int x = 0; x < 37; ++x, ++i)
                raster.Row(y)[x] = bits == 1 ? i % 3 % 2 * 0xFFFFFFU : i % colours * 0x9E3779U & 0xFFFFFFU;
        PngSettings settings;
        if (bits == 24)
            settings.transparent = Raster::ToColour(raster.Row(0)[5]);
        Raster const decoded = DecodePng(BytesOf(EncodePng(raster, settings)));
        ASSERT_EQ(decoded.Bounds(), raster.Bounds());
        for (int y = 0; y < 29; ++y)
            for (int x = 0; x < 37; ++x) {
                bool const shows = settings.transparent && raster.Row(y)[x] == raster.Row(0)[5];
                ASSERT_EQ(decoded.Row(y)[x], shows ? 0xFFFFFFU : raster.Row(y)[x]) << x << "," << y;
            }
    }
}

TEST(PngDecoder, RefusesWhatIsNoWholePicture)
{
    Raster raster(20, 10, 24);
    std::string const whole = EncodePng(raster, {});
    for (std::size_t size = 0; size + 12 < whole.size(); ++size)
        EXPECT_THROW(DecodePng(BytesOf(whole.substr(0, size))), Error) << size;
    EXPECT_THROW(DecodePng(BytesOf("BM" + whole)), Error);
    // A claim of 65536 x 65536 pixels.
    std::string large = whole;
    large.replace(16, 8, std::string("\0\1\0\0\0\1\0\0", 8));
    try {
        DecodePng(BytesOf(large));
        ADD_FAILURE() << "nothing was thrown";
    } catch (Error const& error) {
        EXPECT_EQ(error.GetKind(), Error::Kind::Data);
    }
}

} // namespace
} // namespace ombrel
