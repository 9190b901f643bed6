#include "ombrel/platform/gdi/raster/RasterCanvas.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <cstring>

namespace ombrel {

namespace {

constexpr int kNarrow = 8;

constexpr std::uint64_t kAllCovered = ~std::uint64_t { 0 };

std::uint64_t LoadEight(std::uint8_t const* bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

void PaintOne(std::uint32_t* pixel, std::uint32_t coverage, Ink const& ink)
{
    std::uint32_t const product = coverage * ink.alpha + 128;
    std::uint32_t const alpha = (product + (product >> 8)) >> 8;
    if (ink.mono)
        *pixel = alpha >= 128 ? ink.pixel : *pixel;
    else
        *pixel = PixelBlend(ink.pixel, alpha)(*pixel);
}

/// Eight pixels at once, in bytes: the compiler makes vector instructions of the loops.
void PaintEight(std::uint32_t* pixels, std::uint8_t const* coverage, Ink const& ink)
{
    constexpr std::size_t kBytes = 8 * sizeof(std::uint32_t);
    std::uint32_t spread[8];
    std::uint32_t colour[8];
    for (int i = 0; i < 8; ++i) {
        std::uint32_t const product = coverage[i] * ink.alpha + 128;
        spread[i] = ((product + (product >> 8)) >> 8) * 0x01010101U;
        colour[i] = ink.pixel;
    }
    std::uint8_t alpha[kBytes];
    std::uint8_t above[kBytes];
    std::uint8_t below[kBytes];
    std::memcpy(alpha, spread, kBytes);
    std::memcpy(above, colour, kBytes);
    std::memcpy(below, pixels, kBytes);
    for (std::size_t i = 0; i < kBytes; ++i) {
        auto const sum = static_cast<std::uint16_t>(above[i] * alpha[i] + below[i] * (255 - alpha[i]) + 128);
        below[i] = static_cast<std::uint8_t>((sum + (sum >> 8)) >> 8);
    }
    std::memcpy(pixels, below, kBytes);
}

void PaintRun(std::uint32_t* pixels, std::uint8_t const* coverage, int count, Ink const& ink)
{
    int i = 0;
    while (i + 8 <= count) {
        std::uint64_t const eight = LoadEight(coverage + i);
        if (eight == kAllCovered && ink.alpha == 255) {
            std::fill_n(pixels + i, 8, ink.pixel);
        } else if (eight != 0 && !ink.mono) {
            PaintEight(pixels + i, coverage + i, ink);
        } else if (eight != 0) {
            for (int k = i; k < i + 8; ++k)
                PaintOne(pixels + k, coverage[k], ink);
        }
        i += 8;
    }
    for (; i < count; ++i)
        PaintOne(pixels + i, coverage[i], ink);
}

} // namespace

PixelBlend PixelBlend::Layers(PixelBlend const& lower, PixelBlend const& upper)
{
    auto const scaled = [&upper](std::uint32_t product) { return (product * upper.m_rest + 127) / 255; };
    PixelBlend both = upper;
    both.m_redBlue += scaled(lower.m_redBlue & 0xFFFF) | scaled(lower.m_redBlue >> 16) << 16;
    both.m_green += scaled(lower.m_green);
    // Rounded down, so that colour and rest together never exceed white.
    both.m_rest = lower.m_rest * upper.m_rest / 255;
    return both;
}

RasterCanvas::RasterCanvas(Raster* raster, Clip const& clip)
    : m_raster(raster)
{
    if (raster)
        m_box.IntersectRect(raster->Bounds(), clip.Box());
    if (clip.region && !clip.region->IsRect())
        m_region = clip.region.get();
}

std::uint32_t RasterCanvas::Pixel(COLORREF colour) const
{
    if (!IsMono())
        return Raster::FromColour(colour);
    int const luminance = 299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour);
    return luminance >= 127500 ? 0xFFFFFF : 0;
}

void RasterCanvas::FillBox(CRect const& rect, std::uint32_t pixel) const
{
    CRect box;
    if (!box.IntersectRect(rect, m_box))
        return;
    if (m_region) {
        for (int y = box.top; y < box.bottom; ++y)
            FillSpan(y, box.left, box.right, pixel);
        return;
    }
    int const width = box.Width();
    if (width <= kNarrow) {
        // A column of few pixels: finding out how to copy them would take longer than writing them.
        std::uint32_t* row = Row(box.top) + box.left;
        for (int y = box.top; y < box.bottom; ++y, row += Stride())
            for (int x = 0; x < width; ++x)
                row[x] = pixel;
        return;
    }
    // The first row is in the cache: copying it is the fastest way to write the others.
    std::uint32_t const* const first = Row(box.top) + box.left;
    std::fill_n(Row(box.top) + box.left, box.Width(), pixel);
    std::size_t const bytes = static_cast<std::size_t>(box.Width()) * sizeof(std::uint32_t);
    for (int y = box.top + 1; y < box.bottom; ++y)
        std::memcpy(Row(y) + box.left, first, bytes);
}

void RasterCanvas::PaintCoverage(int y, int left, int count, std::uint8_t const* coverage, Ink const& ink) const
{
    ForVisible(y, left, left + count,
        [=](std::uint32_t* p, int from, int to) { PaintRun(p, coverage + (from - left), to - from, ink); });
}

} // namespace ombrel
