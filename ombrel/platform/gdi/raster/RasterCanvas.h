#pragma once
#include "ombrel/platform/gdi/Raster.h"
#include "ombrel/platform/gdi/Region.h"
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/platform/gdi/raster/Blend.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ombrel {

/// A raster with the clip of one drawing call worked out.
class RasterCanvas {
public:
    /// The raster is not owned; null is a canvas without pixels.
    RasterCanvas(Raster* raster, Clip const& clip);
    /// Nothing outside is painted; a rectangular clip region is part of it.
    CRect const& Box() const { return m_box; }
    bool IsEmpty() const { return m_box.IsRectEmpty(); }
    /// The clip region when Box alone does not describe it, else null.
    Region const* GetRegion() const { return m_region; }
    bool IsMono() const { return m_raster && m_raster->BitsPerPixel() == 1; }
    std::uint32_t* Row(int y) const { return m_raster->Row(y); }
    std::ptrdiff_t Stride() const { return m_raster->Width(); }
    /// The pixel value of a colour: in a 1-bit bitmap the nearer of black and white.
    std::uint32_t Pixel(COLORREF colour) const;
    Ink InkOf(VectorColour colour) const { return { Pixel(colour.colour), colour.alpha, IsMono() }; }

    /// Calls paint(pixel, left, right) for the visible parts of a row's span; pixel points at the one in column left.
    template <typename Paint> void ForVisible(int y, int left, int right, Paint&& paint) const
    {
        left = std::max(left, m_box.left);
        right = std::min(right, m_box.right);
        if (left >= right || y < m_box.top || y >= m_box.bottom)
            return;
        if (!m_region) {
            paint(Row(y) + left, left, right);
            return;
        }
        for (Region::Span const& s : m_region->Spans(y, y + 1)) {
            int const from = std::max(left, s.left);
            int const to = std::min(right, s.right);
            if (from < to)
                paint(Row(y) + from, from, to);
        }
    }
    void FillSpan(int y, int left, int right, std::uint32_t pixel) const
    {
        ForVisible(y, left, right, [pixel](std::uint32_t* p, int from, int to) { std::fill_n(p, to - from, pixel); });
    }
    void FillBox(CRect const& rect, std::uint32_t pixel) const;
    /// Paints count pixels of row y from column left on, each as far as its coverage (0 … 255) says.
    void PaintCoverage(int y, int left, int count, std::uint8_t const* coverage, Ink const& ink) const;
    bool Contains(CPoint p) const { return m_box.PtInRect(p) && (!m_region || m_region->Contains(p)); }

private:
    Raster* m_raster;
    CRect m_box;
    Region const* m_region = nullptr;
};

} // namespace ombrel
