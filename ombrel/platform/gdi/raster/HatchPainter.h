#pragma once
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/platform/gdi/raster/Blend.h"

#include <array>

namespace ombrel {

/// A hatch brush ready to paint: what each of the 8 × 8 pixels of its pattern mixes into the bitmap.
///
/// The pattern lies fixed on the bitmap: its column is x mod 8, its row y mod 8, whatever shape is filled.
class HatchPainter {
public:
    /// The brush must have a hatch style within 0 … 52. mono: the bitmap takes black and white only.
    HatchPainter(VectorBrush const& brush, bool mono);
    /// Paints the pixels left ≤ x < right of row y; the first is at *pixels.
    void Paint(std::uint32_t* pixels, int y, int left, int right) const;

private:
    std::array<PixelBlend, 64> m_cells;
    /// The pattern's pixels where it leaves nothing of the bitmap below.
    std::array<std::uint32_t, 64> m_pixels {};
    bool m_opaque = true;
    bool m_mono;
};

} // namespace ombrel
