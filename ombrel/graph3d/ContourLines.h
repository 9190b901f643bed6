#pragma once
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace ombrel {

/// Values above this, and those that are not numbers, are missing in a grid.
inline constexpr double kGridGap = std::numeric_limits<double>::max() / 2;

/// Whether the value of a grid's node is missing. Minus infinity is, too: no height could be given to it.
inline bool IsGridGap(double v) { return !(v <= kGridGap && v >= std::numeric_limits<double>::lowest()); }

/// Where contour lines are looked for: the nodes of cols × rows cells. Nothing of it is owned.
struct ContourGrid {
    /// (cols + 1) × (rows + 1) values, row by row, the lowest y first and x ascending.
    std::span<double const> values;
    /// Cells along x and along y, at least 1 each; otherwise there are no lines.
    int cols = 0;
    int rows = 0;
    /// Node (0, 0), and the steps from node to node.
    double x0 = 0.0;
    double y0 = 0.0;
    double dx = 1.0;
    double dy = 1.0;
    /// As many as values: not 0 for nodes whose cells are left out although their values are not missing; or empty.
    std::span<std::uint8_t const> leftOut;
};

/// A piece of a contour line inside of cell (i, j).
struct ContourSegment {
    std::array<double, 2> from;
    std::array<double, 2> to;
    int i;
    int j;
};

/// One cell from its corner 0 = (i, j) to its corner 2 = (i + 1, j + 1), and the values at these, at corner 1 = (i + 1,
/// j) and at corner 3 = (i, j + 1).
struct ContourCell {
    double left = 0.0;
    double bottom = 0.0;
    double right = 1.0;
    double top = 1.0;
    std::array<double, 4> z {};
};

/// Which corners lie above the level: 1 for corner 0, 8 for corner 1, 4 for corner 2, 2 for corner 3.
OMBREL_EXPORT int GetContourCase(ContourCell const& cell, double level);
/// The segments of the cell's case: none for 0 and 15, two for 5 and 10, which cut off the two corners above the level
/// separately, else one. Returns how many; i and j of the segments stay as they are.
OMBREL_EXPORT int GetContourSegments(
    int contourCase, ContourCell const& cell, double level, std::span<ContourSegment, 2> segments);

/// Joined contour lines, one behind the other.
struct ContourPolylines {
    std::vector<std::array<double, 2>> points;
    /// Where each line starts in points, and the end of the last one: one more than there are lines. A closed line ends
    /// on the point that it starts with.
    std::vector<std::size_t> starts { 0 };

    std::size_t GetSize() const { return starts.size() - 1; }
    std::span<std::array<double, 2> const> GetLine(std::size_t line) const
    {
        return std::span(points).subspan(starts[line], starts[line + 1] - starts[line]);
    }
};

/// Finds the contour lines of a grid by marching squares, cell by cell. Cells with a missing corner have none.
///
/// The grid is read once, for the smallest and largest values of its blocks; a level then looks only into blocks that
/// it crosses. The grid must stay as it is while the finder is used. What two cells share is computed in the same way
/// for both, so segments meet exactly.
class OMBREL_EXPORT ContourFinder {
public:
    /// Cells of a block along x and along y: few enough that a row of nodes fits into one word.
    static constexpr int kBlockSize = 32;
    /// With fewer values than the numbers of cells ask for, or a leftOut of another size, there are no lines.
    explicit ContourFinder(ContourGrid const& grid);
    /// Appends the segments of a level, cells with ascending i, and among these with ascending j.
    void FindSegments(double level, std::vector<ContourSegment>& segments) const;
    /// Appends the lines of a level, each as long as it can be; which end comes first follows from the grid alone.
    void FindLines(double level, ContourPolylines& lines) const;

private:
    struct Block {
        double min;
        double max;
        bool hasGaps;
    };
    struct ActiveCell {
        int j;
        std::uint8_t column;
        std::uint8_t contourCase;
    };
    void Summarise(std::size_t firstBlock, int firstRow, int lastRow);
    Block SummariseWithGaps(int firstCol, int lastCol, int firstRow, int lastRow) const;
    bool IsLeftOut(std::size_t node) const;
    std::uint64_t GapsOfRow(std::size_t node, int count) const;
    void FindActive(int blockCol, int blockRow, double level, std::vector<ActiveCell>& cells) const;
    template <typename Visit> void VisitActive(double level, Visit const& visit) const;
    ContourCell CellAt(int i, int j) const;
    std::size_t NodeAt(int i, int j) const
    {
        return static_cast<std::size_t>(j) * (static_cast<std::size_t>(m_grid.cols) + 1) + static_cast<std::size_t>(i);
    }

    ContourGrid m_grid;
    int m_blockCols = 0;
    int m_blockRows = 0;
    std::vector<Block> m_blocks;
};

} // namespace ombrel
