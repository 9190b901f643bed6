#pragma once
#include "ombrel/graph3d/SurfaceMesh.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace ombrel {

/// A vertex as buffers hold it: place in box units, unit normal, and place on the texture of the surface's colours.
struct SurfaceVertex {
    float place[3];
    float normal[3];
    float colour;
};

/// A rectangle of cells: columns and rows from the first ones up to, and without, the last ones.
struct CellRange {
    int firstCol = 0;
    int lastCol = 0;
    int firstRow = 0;
    int lastRow = 0;
};

/// Where nodes stand in a vertex buffer: in strips of columns, each strip row by row. The nodes between two strips
/// stand in both.
///
/// Graphics drivers compute a vertex again unless it was computed a short while ago; along a strip, the row before is.
class StripLayout {
public:
    StripLayout() = default;
    StripLayout(int rows, int cols)
        : m_rows(rows)
        , m_cols(cols)
    {
    }
    int GetRows() const { return m_rows; }
    int GetCols() const { return m_cols; }
    std::size_t GetNumVertices() const;
    int GetNumStrips() const { return (m_cols + kStripCells - 1) / kStripCells; }
    int GetFirstCol(int strip) const { return strip * kStripCells; }
    /// One behind the strip's last column of cells.
    int GetLastCol(int strip) const { return std::min((strip + 1) * kStripCells, m_cols); }
    /// Column 0 … cells of the strip.
    std::uint32_t GetIndex(int strip, int column, int row) const
    {
        auto const width = static_cast<std::uint32_t>(GetLastCol(strip) - GetFirstCol(strip)) + 1;
        return static_cast<std::uint32_t>(strip) * (kStripCells + 1) * (static_cast<std::uint32_t>(m_rows) + 1)
            + static_cast<std::uint32_t>(row) * width + static_cast<std::uint32_t>(column);
    }
    /// Node (i, j), in any of its places.
    std::uint32_t GetIndex(int i, int j) const
    {
        int const strip = std::min(i / kStripCells, GetNumStrips() - 1);
        return GetIndex(strip, i - GetFirstCol(strip), j);
    }

private:
    static constexpr int kStripCells = 24;
    int m_rows = 0;
    int m_cols = 0;
};

/// What colours the nodes: a value a node in the mesh's order, and the values at both ends of the texture; no values
/// for a surface of one colour.
struct SurfaceValues {
    std::span<double const> values;
    double min = 0.0;
    double max = 0.0;
};

/// The nodes with their averaged normals, as the layout places them.
void MakeNodeVertices(CSurfaceMesh const& mesh, SurfaceValues const& values, StripLayout const& layout,
    std::vector<SurfaceVertex>& vertices);
/// Which cells are drawn; empty for all.
using CellFilter = std::function<bool(int i, int j)>;
/// Appends the triangles of the cells for which isDrawn holds, as one triangle strip; a part of it without area leads
/// from run to run.
void AppendStrip(
    StripLayout const& layout, CellRange const& cells, CellFilter const& isDrawn, std::vector<std::uint32_t>& indices);
/// Appends the vertices of the same cells' separate triangles, each with the triangle's own normal.
void AppendFlatTriangles(CSurfaceMesh const& mesh, SurfaceValues const& values, CellRange const& cells,
    CellFilter const& isDrawn, std::vector<SurfaceVertex>& vertices);

} // namespace ombrel
