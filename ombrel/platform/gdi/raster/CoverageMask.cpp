#include "ombrel/platform/gdi/raster/CoverageMask.h"

#include <cstring>
#include <limits>

namespace ombrel {

namespace {

constexpr int kBand = 8;

/// Masks above this many bytes are given back after use.
constexpr std::size_t kBytesKept = std::size_t { 1 } << 26;

int RoundUp(int value) { return (value + kBand - 1) / kBand * kBand; }

/// Turns 8 × 8 bytes: byte k of word j becomes byte j of word k.
void Transpose(std::uint64_t (&w)[8])
{
    auto const exchange = [&w](int first, int second, int bits, std::uint64_t mask) {
        std::uint64_t const different = (w[first] >> bits ^ w[second]) & mask;
        w[second] ^= different;
        w[first] ^= different << bits;
    };
    for (int i = 0; i < 8; i += 2)
        exchange(i, i + 1, 8, 0x00FF00FF00FF00FF);
    for (int i : { 0, 1, 4, 5 })
        exchange(i, i + 2, 16, 0x0000FFFF0000FFFF);
    for (int i = 0; i < 4; ++i)
        exchange(i, i + 4, 32, 0x00000000FFFFFFFF);
}

} // namespace

void CoverageMask::Begin(CRect const& box, Lines lines)
{
    m_lines = lines;
    SetOrigin({});
    bool const rows = lines == Lines::Rows;
    m_uBegin = rows ? box.top : box.left;
    m_uEnd = rows ? box.bottom : box.right;
    m_vBegin = rows ? box.left : box.top;
    m_vEnd = rows ? box.right : box.bottom;
    // Whole bands, so that turning them never reads outside.
    auto const lineCount = static_cast<std::size_t>(RoundUp(m_uEnd - m_uBegin));
    m_stride = static_cast<std::size_t>(RoundUp(m_vEnd - m_vBegin));
    if (m_coverage.size() < lineCount * m_stride)
        m_coverage.resize(lineCount * m_stride);
    m_extents.assign(lineCount, { std::numeric_limits<int>::max(), std::numeric_limits<int>::min() });
}

void CoverageMask::Flush(RasterCanvas const& canvas, Ink const& ink)
{
    SetOrigin({});
    if (m_lines == Lines::Rows)
        FlushRows(canvas, ink);
    else
        FlushColumns(canvas, ink);
    Clear();
}

void CoverageMask::Clear()
{
    if (m_coverage.size() > kBytesKept) {
        m_coverage = {};
        return;
    }
    for (std::size_t i = 0; i < m_extents.size(); ++i) {
        Extent const& e = m_extents[i];
        if (e.begin < e.end)
            std::memset(m_coverage.data() + i * m_stride + static_cast<std::size_t>(e.begin - m_vBegin), 0,
                static_cast<std::size_t>(e.end - e.begin));
    }
}

void CoverageMask::FlushRows(RasterCanvas const& canvas, Ink const& ink)
{
    for (int y = m_uBegin; y < m_uEnd; ++y) {
        Extent const& e = m_extents[static_cast<std::size_t>(y - m_uBegin)];
        if (e.begin < e.end)
            canvas.PaintCoverage(y, e.begin, e.end - e.begin, Touch(y, e.begin, e.end), ink);
    }
}

void CoverageMask::FlushColumns(RasterCanvas const& canvas, Ink const& ink)
{
    // Eight columns together, and how far they reach from the mask's first row.
    std::size_t const groups = m_extents.size() / kBand;
    m_groups.assign(groups, { m_vEnd, m_vBegin });
    Extent all { m_vEnd, m_vBegin };
    for (std::size_t i = 0; i < m_extents.size(); ++i) {
        Extent const& e = m_extents[i];
        Extent& group = m_groups[i / kBand];
        group = { std::min(group.begin, e.begin), std::max(group.end, e.end) };
        all = { std::min(all.begin, e.begin), std::max(all.end, e.end) };
    }
    if (all.begin >= all.end)
        return;
    m_band.resize(m_extents.size() * kBand);
    int const width = m_uEnd - m_uBegin;
    for (int top = (all.begin - m_vBegin) / kBand * kBand; top < all.end - m_vBegin; top += kBand) {
        int const rows = std::min(kBand, m_vEnd - m_vBegin - top);
        auto const reaches = [this, top](std::size_t group) {
            return m_groups[group].begin - m_vBegin < top + kBand && m_groups[group].end - m_vBegin > top;
        };
        for (std::size_t group = 0; group < groups; ++group) {
            std::size_t const first = group;
            for (; group < groups && reaches(group); ++group)
                TransposeGroup(top, static_cast<int>(group) * kBand);
            if (group == first)
                continue;
            int const left = static_cast<int>(first) * kBand;
            int const count = std::min(static_cast<int>(group) * kBand, width) - left;
            for (int row = 0; row < rows; ++row)
                canvas.PaintCoverage(m_vBegin + top + row, m_uBegin + left, count,
                    m_band.data() + static_cast<std::size_t>(row) * m_extents.size() + left, ink);
        }
    }
}

void CoverageMask::TransposeGroup(int top, int left)
{
    std::uint64_t words[8];
    std::uint8_t const* from
        = m_coverage.data() + static_cast<std::size_t>(left) * m_stride + static_cast<std::size_t>(top);
    for (std::uint64_t& word : words) {
        std::memcpy(&word, from, sizeof word);
        from += m_stride;
    }
    Transpose(words);
    std::uint8_t* to = m_band.data() + left;
    for (std::uint64_t const& word : words) {
        std::memcpy(to, &word, sizeof word);
        to += m_extents.size();
    }
}

} // namespace ombrel
