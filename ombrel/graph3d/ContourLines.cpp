#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/graph3d/geometry/SegmentJoin.h"
#include "ombrel/graph3d/geometry/ValueLanes.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace ombrel {
namespace {

// The sides of a cell, from corner 0 to 1, 1 to 2, 3 to 2 and 0 to 3.
enum Side : std::uint8_t { kBottom, kRight, kTop, kLeft };

struct CaseSides {
    std::uint8_t count;
    std::array<Side, 4> sides;
};

constexpr std::array<CaseSides, 16> kCases { {
    { 0, {} },
    { 1, { kLeft, kBottom } },
    { 1, { kLeft, kTop } },
    { 1, { kBottom, kTop } },
    { 1, { kTop, kRight } },
    { 2, { kLeft, kBottom, kTop, kRight } },
    { 1, { kLeft, kRight } },
    { 1, { kBottom, kRight } },
    { 1, { kBottom, kRight } },
    { 1, { kLeft, kRight } },
    { 2, { kLeft, kTop, kBottom, kRight } },
    { 1, { kTop, kRight } },
    { 1, { kBottom, kTop } },
    { 1, { kLeft, kTop } },
    { 1, { kLeft, kBottom } },
    { 0, {} },
} };

// How far along a side from value a to value b the level lies.
double Fraction(double a, double b, double level)
{
    double const difference = b - a;
    // Values of half the largest double and below minus that are too far apart for their difference.
    if (!std::isfinite(difference))
        return (level / 4 - a / 4) / (b / 4 - a / 4);
    return (level - a) / difference;
}

std::array<double, 2> PointOn(Side side, ContourCell const& cell, double level)
{
    auto const& z = cell.z;
    double const dx = cell.right - cell.left;
    double const dy = cell.top - cell.bottom;
    switch (side) {
    case kBottom:
        return { cell.left + Fraction(z[0], z[1], level) * dx, cell.bottom };
    case kRight:
        return { cell.right, cell.bottom + Fraction(z[1], z[2], level) * dy };
    case kTop:
        return { cell.left + Fraction(z[3], z[2], level) * dx, cell.top };
    default:
        return { cell.left, cell.bottom + Fraction(z[0], z[3], level) * dy };
    }
}

std::size_t Size(int n) { return static_cast<std::size_t>(n); }

constexpr int kBlockSize = ContourFinder::kBlockSize;

// Bits of the nodes above the level, the first node's lowest; count is at most one more than the size of blocks.
std::uint64_t AboveOfRow(double const* values, int count, double level)
{
    std::uint64_t above = 0;
    if (count <= kBlockSize) {
        for (int k = 0; k < count; ++k)
            above |= static_cast<std::uint64_t>(values[k] > level) << k;
        return above;
    }
    // Two at a time, as any processor with vectors can.
    typedef double Pair __attribute__((vector_size(16)));
    typedef std::int64_t PairBits __attribute__((vector_size(16)));
    Pair const levels { level, level };
    PairBits bits { 1, 2 };
    PairBits found {};
    for (int k = 0; k < kBlockSize; k += 2) {
        Pair const pair { values[k], values[k + 1] };
        found |= (pair > levels) & bits;
        bits <<= 2;
    }
    above = static_cast<std::uint64_t>(found[0] | found[1]);
    return above | static_cast<std::uint64_t>(values[kBlockSize] > level) << kBlockSize;
}

} // namespace

int GetContourCase(ContourCell const& cell, double level)
{
    auto const above = [&](std::size_t corner) { return cell.z[corner] > level ? 1 : 0; };
    return above(0) + 8 * above(1) + 4 * above(2) + 2 * above(3);
}

int GetContourSegments(int contourCase, ContourCell const& cell, double level, std::span<ContourSegment, 2> segments)
{
    if (contourCase < 0 || contourCase > 15)
        return 0;
    CaseSides const& c = kCases[Size(contourCase)];
    for (std::size_t k = 0; k < c.count; ++k) {
        segments[k].from = PointOn(c.sides[2 * k], cell, level);
        segments[k].to = PointOn(c.sides[2 * k + 1], cell, level);
    }
    return c.count;
}

ContourFinder::ContourFinder(ContourGrid const& grid)
    : m_grid(grid)
{
    if (grid.cols < 1 || grid.rows < 1)
        return;
    std::size_t const nodes = (Size(grid.cols) + 1) * (Size(grid.rows) + 1);
    if (grid.values.size() < nodes || (!grid.leftOut.empty() && grid.leftOut.size() < nodes))
        return;
    m_blockCols = (grid.cols - 1) / kBlockSize + 1;
    m_blockRows = (grid.rows - 1) / kBlockSize + 1;
    m_blocks.resize(Size(m_blockCols) * Size(m_blockRows));
    for (int b = 0; b < m_blockRows; ++b) {
        int const firstRow = b * kBlockSize;
        Summarise(Size(b) * Size(m_blockCols), firstRow, std::min(firstRow + kBlockSize, grid.rows));
    }
}

// One row of blocks, whose nodes are those of the rows from firstRow to lastRow.
void ContourFinder::Summarise(std::size_t firstBlock, int firstRow, int lastRow)
{
    std::vector<ValueLanes> all(Size(m_blockCols));
    for (int j = firstRow; j <= lastRow; ++j) {
        double const* const row = m_grid.values.data() + NodeAt(0, j);
        for (int b = 0; b < m_blockCols; ++b)
            all[Size(b)].Take(row + Size(b) * kBlockSize, row + std::min((b + 1) * kBlockSize, m_grid.cols) + 1);
    }
    for (int b = 0; b < m_blockCols; ++b) {
        ValueLanes const& lanes = all[Size(b)];
        Block& block = m_blocks[firstBlock + Size(b)];
        block = { lanes.Min(), lanes.Max(), false };
        if (!lanes.ArePlain() || !m_grid.leftOut.empty())
            block = SummariseWithGaps(b * kBlockSize, std::min((b + 1) * kBlockSize, m_grid.cols), firstRow, lastRow);
    }
}

ContourFinder::Block ContourFinder::SummariseWithGaps(int firstCol, int lastCol, int firstRow, int lastRow) const
{
    Block block { std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), false };
    for (int j = firstRow; j <= lastRow; ++j) {
        for (int i = firstCol; i <= lastCol; ++i) {
            std::size_t const node = NodeAt(i, j);
            if (IsLeftOut(node)) {
                block.hasGaps = true;
                continue;
            }
            block.min = std::min(block.min, m_grid.values[node]);
            block.max = std::max(block.max, m_grid.values[node]);
        }
    }
    return block;
}

bool ContourFinder::IsLeftOut(std::size_t node) const
{
    return IsGridGap(m_grid.values[node]) || (!m_grid.leftOut.empty() && m_grid.leftOut[node] != 0);
}

std::uint64_t ContourFinder::GapsOfRow(std::size_t node, int count) const
{
    std::uint64_t gaps = 0;
    for (int k = 0; k < count; ++k)
        gaps |= static_cast<std::uint64_t>(IsLeftOut(node + Size(k))) << k;
    return gaps;
}

void ContourFinder::FindActive(int blockCol, int blockRow, double level, std::vector<ActiveCell>& cells) const
{
    int const firstCol = blockCol * kBlockSize;
    int const width = std::min(kBlockSize, m_grid.cols - firstCol);
    int const firstRow = blockRow * kBlockSize;
    int const lastRow = std::min(firstRow + kBlockSize, m_grid.rows);
    bool const hasGaps = m_blocks[Size(blockRow) * Size(m_blockCols) + Size(blockCol)].hasGaps;
    std::uint64_t const all = (std::uint64_t { 1 } << width) - 1;
    std::uint64_t lower = 0;
    std::uint64_t lowerGaps = 0;
    for (int j = firstRow; j <= lastRow; ++j) {
        std::size_t const node = NodeAt(firstCol, j);
        std::uint64_t const upper = AboveOfRow(m_grid.values.data() + node, width + 1, level);
        std::uint64_t const upperGaps = hasGaps ? GapsOfRow(node, width + 1) : 0;
        if (j > firstRow) {
            std::uint64_t const gaps = lowerGaps | upperGaps;
            std::uint64_t active = (lower ^ lower >> 1) | (upper ^ upper >> 1) | (lower ^ upper);
            active &= all & ~(gaps | gaps >> 1);
            for (; active != 0; active &= active - 1) {
                int const k = std::countr_zero(active);
                std::uint64_t const code = (lower >> k & 1) | (lower >> (k + 1) & 1) << 3 | (upper >> (k + 1) & 1) << 2
                    | (upper >> k & 1) << 1;
                cells.push_back({ j - 1, static_cast<std::uint8_t>(k), static_cast<std::uint8_t>(code) });
            }
        }
        lower = upper;
        lowerGaps = upperGaps;
    }
}

ContourCell ContourFinder::CellAt(int i, int j) const
{
    double const* const low = m_grid.values.data() + NodeAt(i, j);
    double const* const high = m_grid.values.data() + NodeAt(i, j + 1);
    return { m_grid.x0 + i * m_grid.dx, m_grid.y0 + j * m_grid.dy, m_grid.x0 + (i + 1) * m_grid.dx,
        m_grid.y0 + (j + 1) * m_grid.dy, { low[0], low[1], high[1], high[0] } };
}

// Calls visit(i, j, case) for every cell that the level crosses, with ascending i, then ascending j.
template <typename Visit> void ContourFinder::VisitActive(double level, Visit const& visit) const
{
    std::vector<ActiveCell> cells;
    std::vector<ActiveCell> sorted;
    for (int b = 0; b < m_blockCols; ++b) {
        cells.clear();
        for (int r = 0; r < m_blockRows; ++r) {
            Block const& block = m_blocks[Size(r) * Size(m_blockCols) + Size(b)];
            if (block.min <= level && level < block.max)
                FindActive(b, r, level, cells);
        }
        // The blocks give cells row by row: they are dealt out to their columns.
        std::array<std::size_t, kBlockSize + 1> starts {};
        for (ActiveCell const& cell : cells)
            ++starts[cell.column + 1U];
        for (std::size_t k = 1; k < starts.size(); ++k)
            starts[k] += starts[k - 1];
        sorted.resize(cells.size());
        for (ActiveCell const& cell : cells)
            sorted[starts[cell.column]++] = cell;
        for (ActiveCell const& cell : sorted)
            visit(b * kBlockSize + cell.column, cell.j, cell.contourCase);
    }
}

void ContourFinder::FindSegments(double level, std::vector<ContourSegment>& segments) const
{
    VisitActive(level, [&](int i, int j, int contourCase) {
        ContourSegment const empty { {}, {}, i, j };
        std::array<ContourSegment, 2> found { empty, empty };
        int const count = GetContourSegments(contourCase, CellAt(i, j), level, found);
        segments.insert(segments.end(), found.begin(), found.begin() + count);
    });
}

void ContourFinder::FindLines(double level, ContourPolylines& lines) const
{
    SegmentJoin join;
    // A side is told by the node at its lower or left end, and whether it runs along y.
    auto const keyOf = [this](int i, int j, Side side) {
        std::size_t const node = NodeAt(i + (side == kRight), j + (side == kTop));
        return 2 * node + (side == kLeft || side == kRight ? 1 : 0);
    };
    VisitActive(level, [&](int i, int j, int contourCase) {
        std::array<ContourSegment, 2> found;
        int const count = GetContourSegments(contourCase, CellAt(i, j), level, found);
        for (std::size_t k = 0; k < Size(count); ++k) {
            auto const& sides = kCases[Size(contourCase)].sides;
            join.Add(keyOf(i, j, sides[2 * k]), found[k].from, keyOf(i, j, sides[2 * k + 1]), found[k].to);
        }
    });
    join.Join(lines);
}

} // namespace ombrel
