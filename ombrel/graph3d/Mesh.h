#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ombrel {

/// The nodes of a regular grid of rows × columns cells: places in space over a rectangle of parameters.
///
/// Node (i, j) is the column i = 0 … columns and the row j = 0 … rows; its parameters are x = min + i · step, and so y.
/// Nodes are stored row by row. A node whose z is missing (IsGridGap) is no part of the surface. Nodes stand over their
/// parameters until they are placed elsewhere; while all do, their x and y take no memory.
class OMBREL_EXPORT CMesh : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// Without nodes.
    CMesh() = default;
    CMesh(int rows, int cols, double xMin, double xMax, double yMin, double yMax)
    {
        Init(rows, cols, xMin, xMax, yMin, yMax);
    }
    /// Makes (rows + 1) × (cols + 1) nodes over their parameters, with z = 0; none when either number is below 0. A
    /// single row or column of nodes stands over the smallest parameter.
    /// Throws std::bad_alloc.
    void Init(int rows, int cols, double xMin, double xMax, double yMin, double yMax);
    /// Places the grid over other parameters. Nodes that have been placed elsewhere stay there.
    void SetExtent(double xMin, double xMax, double yMin, double yMax);
    void Clear();

    /// Cells along y and along x.
    int GetNumRows() const { return m_rows; }
    int GetNumCols() const { return m_cols; }
    bool HasNodes() const { return !m_z.empty(); }
    double GetXDel() const { return m_xDel; }
    double GetYDel() const { return m_yDel; }
    double GetXMin() const { return m_xMin; }
    double GetYMin() const { return m_yMin; }
    double GetXMax() const { return m_xMax; }
    double GetYMax() const { return m_yMax; }
    double GetMeshX(int i) const { return m_xMin + i * m_xDel; }
    double GetMeshY(int j) const { return m_yMin + j * m_yDel; }

    /// Where node (i, j) is in the arrays.
    std::size_t GetIndex(int i, int j) const
    {
        return CheckedIndex(j, static_cast<std::size_t>(m_rows) + 1) * (static_cast<std::size_t>(m_cols) + 1)
            + CheckedIndex(i, static_cast<std::size_t>(m_cols) + 1);
    }
    double GetX(int i, int j) const { return IsOverParameters() ? GetMeshX(i) : m_x[GetIndex(i, j)]; }
    double GetY(int i, int j) const { return IsOverParameters() ? GetMeshY(j) : m_y[GetIndex(i, j)]; }
    double GetZ(int i, int j) const { return m_z[GetIndex(i, j)]; }
    /// One coordinate (0 is x, 1 y, 2 z) of the nodes of row j, into columns + 1 places.
    void ReadRow(int coordinate, int j, double* values) const;
    std::vector<double> const& GetZVals() const { return m_z; }
    /// Changing z values tells nobody.
    std::vector<double>& GetZVals() { return m_z; }
    /// The coordinates of row j's nodes, to be filled; whoever does so has the ranges computed afterwards.
    double* GetXRow(int j)
    {
        MakePlaces();
        return m_x.data() + GetIndex(0, j);
    }
    double* GetYRow(int j)
    {
        MakePlaces();
        return m_y.data() + GetIndex(0, j);
    }
    double* GetZRow(int j) { return m_z.data() + GetIndex(0, j); }
    double const* GetZRow(int j) const { return m_z.data() + GetIndex(0, j); }
    /// Puts all nodes back over their parameters.
    void PlaceOverParameters();
    /// Whether no node has been placed elsewhere.
    bool IsOverParameters() const { return m_x.empty(); }
    bool IsMissing(int i, int j) const { return IsGridGap(m_z[GetIndex(i, j)]); }
    /// Lets the places of the nodes that are not missing be changed: change(x, y, z).
    template <typename Change> void ChangeNodes(Change const& change)
    {
        MakePlaces();
        for (std::size_t n = 0; n < m_z.size(); ++n) {
            if (!IsGridGap(m_z[n]))
                change(m_x[n], m_y[n], m_z[n]);
        }
    }

    /// z at a parameter point, bilinear between the four nodes of its cell. kGap outside of the grid and where a node
    /// that takes part is missing.
    double Interpolate(double x, double y) const
    {
        return InterpolateOn(m_z.data(), m_rows, m_cols, (x - m_xMin) / m_xDel, (y - m_yMin) / m_yDel);
    }
    /// The same on any (rows + 1) × (cols + 1) values, at a place counted in cells.
    static double InterpolateOn(double const* values, int rows, int cols, double x, double y);

protected:
    /// Gives every node an x and a y of its own.
    void MakePlaces();

    /// Both empty while the nodes stand over their parameters.
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<double> m_z;

private:
    static bool FindCell(double at, int cells, int& cell, double& fraction);

    int m_rows = 0;
    int m_cols = 0;
    double m_xMin = 0.0;
    double m_yMin = 0.0;
    double m_xMax = 0.0;
    double m_yMax = 0.0;
    double m_xDel = 0.0;
    double m_yDel = 0.0;
};

/// The cell that a place, counted in cells, lies in, and the fraction of it that lies before the place.
inline bool CMesh::FindCell(double at, int cells, int& cell, double& fraction)
{
    // Ends of ranges are often computed in another way than the grid's.
    constexpr double kTolerance = 1e-9;
    double const slack = kTolerance * (cells + 1.0);
    if (cells < 0 || !(at >= -slack && at <= cells + slack))
        return false;
    cell = static_cast<int>(std::max(std::min(at, cells - 1.0), 0.0));
    fraction = std::min(std::max(at - cell, 0.0), 1.0);
    return true;
}

inline double CMesh::InterpolateOn(double const* values, int rows, int cols, double x, double y)
{
    int i = 0;
    int j = 0;
    double fx = 0.0;
    double fy = 0.0;
    if (!FindCell(x, cols, i, fx) || !FindCell(y, rows, j, fy))
        return kGap;
    double const* const low
        = values + static_cast<std::size_t>(j) * (static_cast<std::size_t>(cols) + 1) + static_cast<std::size_t>(i);
    // A single row or column is its own neighbour.
    std::size_t const right = cols > 0 ? 1 : 0;
    double const* const high = rows > 0 ? low + cols + 1 : low;
    if (!IsGridGap(low[0]) && !IsGridGap(low[right]) && !IsGridGap(high[0]) && !IsGridGap(high[right]))
        return CVUtils::InterpolateBilinear(low[0], low[right], high[right], high[0], fx, fy);
    // On a side of the cell the nodes off it take no part.
    double const weights[] = { (1 - fx) * (1 - fy), fx * (1 - fy), (1 - fx) * fy, fx * fy };
    double const corners[] = { low[0], low[right], high[0], high[right] };
    double z = 0.0;
    for (std::size_t k = 0; k < 4; ++k) {
        if (weights[k] == 0.0)
            continue;
        if (IsGridGap(corners[k]))
            return kGap;
        z += weights[k] * corners[k];
    }
    return z;
}

} // namespace ombrel
