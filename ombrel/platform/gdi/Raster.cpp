#include "ombrel/platform/gdi/Raster.h"

#include <limits>
#include <new>

namespace ombrel {

namespace {

std::size_t PixelCount(int width, int height)
{
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    auto const count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (width < 1 || height < 1 || count > kMost)
        throw std::bad_alloc();
    return count;
}

} // namespace

Raster::Raster(int width, int height, int bitsPerPixel)
    : m_width(width)
    , m_height(height)
    , m_bitsPerPixel(bitsPerPixel)
    , m_pixels(PixelCount(width, height))
{
}

} // namespace ombrel
