#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace ombrel {

/// Which parts of a plotting area something is drawn on, in cells of a few pixels: marks are rounded up to whole cells.
///
/// Coordinates are device pixels, y down. What lies outside the area is left out.
class Occupancy {
public:
    /// No cell is smaller than that.
    static constexpr int kSmallestCell = 3;
    explicit Occupancy(CRect const& area);
    CRect const& GetArea() const { return m_area; }
    /// The part of the segment that lies within a rectangle.
    void AddSegment(double x0, double y0, double x1, double y1, CRect const& within);
    /// The pixels of a rectangle, without its right and bottom edges.
    void AddRect(CRect const& rect);
    /// Whether nothing is drawn in the rectangle, as far as it lies in the area.
    bool IsFree(CRect const& rect) const;

private:
    struct Cell {
        int column;
        int row;
    };
    Cell CellAt(double x, double y) const;
    /// Calls visit(word, mask) for the words that hold the rows, the last included, of a column.
    template <typename Visit> void ForRows(int column, int first, int last, Visit const& visit) const;
    void MarkRows(int column, int first, int last);

    CRect m_area;
    double m_cellWidth;
    double m_cellHeight;
    int m_columns;
    int m_rows;
    /// By column, 64 rows a word: upright stretches, which lines of many points are full of, cost next to nothing.
    std::vector<std::uint64_t> m_cells;
};

/// The place for a box of that size in the area, gap pixels away from its sides: the first free one of the corners (top
/// right, top left, bottom right, bottom left) and then the middles of the sides (top, right, left, bottom). Nothing
/// when the box would take up too much of the area or covers something everywhere.
std::optional<CPoint> FindFreePlace(Occupancy const& occupancy, CSize size, int gap);

} // namespace ombrel
