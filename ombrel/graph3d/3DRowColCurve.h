#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/Mesh.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Variant.h"

#include <memory>

namespace ombrel {

class GridCoordinates;

/// The grid of a curve: cells, and the rectangle of parameters over which they lie.
struct GridExtent {
    int rows = 50;
    int cols = 50;
    double xMin = -10.0;
    double xMax = 10.0;
    double yMin = -10.0;
    double yMax = 10.0;
};

/// Where the table's values lie: the parameters of row 0, column 0, and the steps from value to value.
struct TablePlacement {
    double xMin = 0.0;
    double yMin = 0.0;
    double xStep = 1.0;
    double yStep = 1.0;
};

/// The base of the curves over a regular grid: a table of values, and the grid of cells on which they are shown.
///
/// The two may differ: values are then interpolated at the grid's nodes, and nodes outside of the table are missing.
/// Settings of grid and table raise the curve's three flags.
/// Errors: Serialize throws CArchiveException* (newly allocated), Evaluate std::bad_alloc.
class OMBREL_EXPORT C3DRowColCurve : public C3DCurve {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit C3DRowColCurve(CPlot* plot = nullptr, int useGraphColour = 0);
    ~C3DRowColCurve() override;
    void Serialize(CArchive& ar) override;

    // The grid

    /// Cells along y and along x; nodes are one more.
    int GetNumRows() const { return m_grid.rows; }
    void SetNumRows(int rows) { ChangeData(m_grid.rows, rows); }
    int GetNumCols() const { return m_grid.cols; }
    void SetNumCols(int cols) { ChangeData(m_grid.cols, cols); }
    double GetXMin() const { return m_grid.xMin; }
    void SetXMin(double x) { ChangeData(m_grid.xMin, x); }
    double GetXMax() const { return m_grid.xMax; }
    void SetXMax(double x) { ChangeData(m_grid.xMax, x); }
    double GetYMin() const { return m_grid.yMin; }
    void SetYMin(double y) { ChangeData(m_grid.yMin, y); }
    double GetYMax() const { return m_grid.yMax; }
    void SetYMax(double y) { ChangeData(m_grid.yMax, y); }
    GridExtent const& GetGrid() const { return m_grid; }
    void SetGrid(GridExtent const& grid) { ChangeData(m_grid, grid); }
    /// The counts that SetCoarseMeshMode brings back.
    int GetSavedNumRows() const { return m_savedRows; }
    int GetSavedNumCols() const { return m_savedCols; }
    /// Whether reading a file gives the curve the file's grid (AlignMeshes).
    int GetAlignMeshes() const { return m_alignMeshes; }
    void SetAlignMeshes(int on) { Change(m_alignMeshes, on); }
    /// Gives the curve the table's grid. An empty table has none, nor has one of fewer than 2 × 2 values where cells
    /// are drawn; nothing changes then.
    void AlignMeshes();
    /// 1 when the table has a value at each node of the grid and no others.
    int DataMeshEqualsCurveMesh() const;
    /// Draws with at most as many cells as given until 0, 0 brings the former numbers back. Returns 1 when a number
    /// has changed.
    virtual int SetCoarseMeshMode(int cols, int rows);
    bool IsCoarse() const { return AreRowsCoarse() || AreColsCoarse(); }
    bool AreRowsCoarse() const { return m_rowsReplaced; }
    bool AreColsCoarse() const { return m_colsReplaced; }

    /// The nodes as last evaluated, or without nodes; owned by the curve.
    CMesh* GetMesh() { return m_mesh.get(); }
    CMesh const* GetMesh() const { return m_mesh.get(); }
    /// The parameters of a column and of a row of nodes.
    double GetMeshX(short i) const override { return m_mesh->GetMeshX(i); }
    double GetMeshY(short j) const override { return m_mesh->GetMeshY(j); }

    // The table: row r is y, column c is x

    /// Takes an array of doubles, whose element (r, c) becomes the value in row r, column c. Throws
    /// COleDispatchException* (newly allocated), with the table as it was, when it has not two dimensions or is empty.
    void SetTableData(VARIANT const& values);
    /// Takes the table over.
    void SetTableData(CTableData&& table);
    void GetTableData(CTableData& table) const { table = m_table; }
    /// Owned by the curve. A change through it raises no flag.
    CTableData* GetTableDataPtr() { return &m_table; }
    CTableData const* GetTableDataPtr() const { return &m_table; }
    /// See CTableData::Offset; raises the modified flag.
    void OffsetTableData(double offset, double gain);
    int GetNumTableRows() const { return m_table.GetNumRows(); }
    int GetNumTableCols() const { return m_table.GetNumCols(); }
    double GetTableXMin() const { return m_placement.xMin; }
    void SetTableXMin(double x) { ChangeData(m_placement.xMin, x); }
    double GetTableYMin() const { return m_placement.yMin; }
    void SetTableYMin(double y) { ChangeData(m_placement.yMin, y); }
    double GetTableXStep() const { return m_placement.xStep; }
    void SetTableXStep(double step) { ChangeData(m_placement.xStep, step); }
    double GetTableYStep() const { return m_placement.yStep; }
    void SetTableYStep(double step) { ChangeData(m_placement.yStep, step); }
    void SetTablePlacement(TablePlacement const& placement) { ChangeData(m_placement, placement); }

    int IsPolar() const { return GetCurveType() == ctPolar ? 1 : 0; }
    int IsCylindrical() const { return GetCurveType() == ctCylindrical ? 1 : 0; }
    int IsGeographical() const { return GetCurveType() == ctGeographical ? 1 : 0; }
    /// Whether values are radii.
    bool HasRadius() const { return IsPolar() || IsCylindrical() || IsGeographical(); }

    /// Fills the mesh from the table; a formula curve becomes invalid, since nothing here computes formulas.
    int Evaluate() override;
    int GetDataSize() const override { return static_cast<int>(m_table.GetDataSize()); }
    COLORREF GetLUTColour(double value) const override;
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return GetColourmap()->GetColour(value, low, high);
    }

protected:
    /// How small and how large a grid may be.
    struct GridLimits {
        /// Cells along either axis.
        int leastCells = 1;
        /// Nodes, unless the table has more values: a document of a few bytes may ask for any number of cells.
        double mostInterpolatedNodes = 1 << 22;
    };
    virtual GridLimits GetGridLimits() const { return {}; }
    /// Stores a setting of the data and raises the three flags.
    template <typename T, typename V> void ChangeData(T& setting, V const& value)
    {
        Change(setting, value);
        SetPlotDataModified(1);
    }
    void SetMesh(std::unique_ptr<CMesh> mesh) { m_mesh = std::move(mesh); }
    /// Fills the mesh from the table; 0 when that cannot be done.
    virtual int EvaluateTableCurve();
    /// Gives the mesh the curve's grid, and the places of its nodes; a node without a value is missing. False when the
    /// table or the grid has no cells or too many.
    bool FillMesh(GridCoordinates const& coordinates);

private:
    GridExtent m_grid;
    int m_savedRows = 50;
    int m_savedCols = 50;
    bool m_rowsReplaced = false;
    bool m_colsReplaced = false;
    TablePlacement m_placement;
    int m_alignMeshes = 1;
    CTableData m_table;
    std::unique_ptr<CMesh> m_mesh;
};

} // namespace ombrel
