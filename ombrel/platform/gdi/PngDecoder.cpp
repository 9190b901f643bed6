#include "ombrel/platform/gdi/PngDecoder.h"
#include "ombrel/platform/framework/Error.h"

#include <png.h>
#include <string>

namespace ombrel {

namespace {

/// libpng's picture, which is to be freed whatever happens.
class Picture {
public:
    explicit Picture(std::span<std::byte const> bytes)
    {
        m_image.version = PNG_IMAGE_VERSION;
        if (!png_image_begin_read_from_memory(&m_image, bytes.data(), bytes.size()))
            Fail();
    }
    ~Picture() { png_image_free(&m_image); }
    Picture(Picture const&) = delete;
    Picture& operator=(Picture const&) = delete;

    Raster Read()
    {
        if (static_cast<std::size_t>(m_image.width) * m_image.height > kMostPngPixels)
            throw Error(Error::Kind::Data,
                "a picture of " + std::to_string(m_image.width) + " x " + std::to_string(m_image.height)
                    + " pixels is too large");
        Raster raster(static_cast<int>(m_image.width), static_cast<int>(m_image.height), 32);
        m_image.format = PNG_FORMAT_BGR;
        std::vector<std::uint8_t> samples(PNG_IMAGE_SIZE(m_image));
        png_color const white { 255, 255, 255 };
        if (!png_image_finish_read(&m_image, &white, samples.data(), 0, nullptr))
            Fail();
        std::uint8_t const* from = samples.data();
        for (int y = 0; y < raster.Height(); ++y) {
            std::uint32_t* const row = raster.Row(y);
            for (int x = 0; x < raster.Width(); ++x, from += 3)
                row[x] = static_cast<std::uint32_t>(from[2]) << 16 | static_cast<std::uint32_t>(from[1]) << 8 | from[0];
        }
        return raster;
    }

private:
    [[noreturn]] void Fail() const
    {
        throw Error(Error::Kind::Data, std::string("expected a whole PNG file: ") + m_image.message);
    }

    png_image m_image {};
};

} // namespace

Raster DecodePng(std::span<std::byte const> bytes) { return Picture(bytes).Read(); }

} // namespace ombrel
