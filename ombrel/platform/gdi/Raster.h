#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <cstdint>
#include <vector>

namespace ombrel {

/// A bitmap's pixels: 32 bits each as 0xXXRRGGBB whatever depth is reported, rows top-down. Drawing writes zero into
/// the top byte.
class OMBREL_EXPORT Raster {
public:
    /// Both sides at least 1; black. Throws std::bad_alloc.
    Raster(int width, int height, int bitsPerPixel);
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// 1, 24 or 32: what the bitmap says of itself. A 1-bit bitmap holds black and white only.
    int BitsPerPixel() const { return m_bitsPerPixel; }
    /// What contexts that draw on it say of it; 96 at first, as of a screen.
    int DotsPerInch() const { return m_dotsPerInch; }
    void SetDotsPerInch(int dots) { m_dotsPerInch = dots; }
    CRect Bounds() const { return { 0, 0, m_width, m_height }; }
    std::uint32_t* Row(int y)
    {
        return m_pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }
    std::uint32_t const* Row(int y) const
    {
        return m_pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }
    static constexpr std::uint32_t FromColour(COLORREF c)
    {
        return static_cast<std::uint32_t>(GetRValue(c)) << 16 | static_cast<std::uint32_t>(GetGValue(c)) << 8
            | GetBValue(c);
    }
    static constexpr COLORREF ToColour(std::uint32_t pixel)
    {
        return RGB(
            static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF), static_cast<int>(pixel & 0xFF));
    }

private:
    int m_width;
    int m_height;
    int m_bitsPerPixel;
    int m_dotsPerInch = 96;
    std::vector<std::uint32_t> m_pixels;
};

} // namespace ombrel
