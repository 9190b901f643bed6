#include "ombrel/platform/gdi/raster/HatchPainter.h"

#include "ombrel/platform/gdi/geometry/HatchPatterns.h"

#include <algorithm>

namespace ombrel {

namespace {

/// Repeats eight pixels; the first painted is that of column left.
void PaintOpaque(std::uint32_t* pixels, std::uint32_t const* row, int left, int count)
{
    std::array<std::uint32_t, 8> turned;
    for (int i = 0; i < 8; ++i)
        turned[static_cast<std::size_t>(i)] = row[(left + i) & 7];
    int i = 0;
    for (; i + 8 <= count; i += 8)
        std::copy_n(turned.begin(), 8, pixels + i);
    std::copy_n(turned.begin(), count - i, pixels + i);
}

} // namespace

HatchPainter::HatchPainter(VectorBrush const& brush, bool mono)
    : m_mono(mono)
{
    std::uint32_t const foreground = Raster::FromColour(brush.foreground.colour);
    PixelBlend const background(Raster::FromColour(brush.background.colour), brush.background.alpha);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            std::uint32_t const weight = ForegroundWeight(*brush.hatchStyle, x, y);
            PixelBlend cell = background;
            if (weight > 0)
                cell = PixelBlend::Layers(background, { foreground, (weight * brush.foreground.alpha + 127) / 255 });
            auto const index = static_cast<std::size_t>(8 * y + x);
            m_cells[index] = cell;
            m_pixels[index] = cell(0);
            m_opaque = m_opaque && cell.IsOpaque() && !mono;
        }
    }
}

void HatchPainter::Paint(std::uint32_t* pixels, int y, int left, int right) const
{
    if (m_opaque) {
        PaintOpaque(pixels, m_pixels.data() + 8 * (y & 7), left, right - left);
        return;
    }
    PixelBlend const* const row = m_cells.data() + 8 * (y & 7);
    for (int x = left; x < right; ++x, ++pixels) {
        std::uint32_t const mixed = row[x & 7](*pixels);
        *pixels = m_mono ? ((mixed >> 8 & 0xFF) >= 128 ? 0xFFFFFF : 0) : mixed;
    }
}

} // namespace ombrel
