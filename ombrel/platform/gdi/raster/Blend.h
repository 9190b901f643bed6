#pragma once
#include <cstdint>

namespace ombrel {

/// Mixes a colour into pixels: (colour · alpha + pixel · (255 − alpha)) / 255, to the nearest.
class PixelBlend {
public:
    /// Leaves the pixel as it is.
    constexpr PixelBlend() = default;
    /// alpha 0 … 255.
    constexpr PixelBlend(std::uint32_t pixel, std::uint32_t alpha)
        : m_redBlue((pixel & 0xFF00FF) * alpha)
        , m_green((pixel >> 8 & 0xFF) * alpha)
        , m_rest(255 - alpha)
    {
    }
    /// Lower first, then upper, in one step.
    static PixelBlend Layers(PixelBlend const& lower, PixelBlend const& upper);
    /// Leaves nothing of the pixel below.
    bool IsOpaque() const { return m_rest == 0; }
    std::uint32_t operator()(std::uint32_t pixel) const
    {
        std::uint32_t const redBlue = m_redBlue + (pixel & 0xFF00FF) * m_rest + 0x800080;
        std::uint32_t const green = m_green + (pixel >> 8 & 0xFF) * m_rest + 0x80;
        return ((redBlue + (redBlue >> 8 & 0xFF00FF)) >> 8 & 0xFF00FF) | ((green + (green >> 8)) & 0xFF00);
    }

private:
    std::uint32_t m_redBlue = 0;
    std::uint32_t m_green = 0;
    std::uint32_t m_rest = 255;
};

/// What is painted through a coverage: a pixel value and its opacity.
struct Ink {
    std::uint32_t pixel = 0;
    std::uint32_t alpha = 255;
    /// A 1-bit bitmap takes all or nothing.
    bool mono = false;
};

} // namespace ombrel
