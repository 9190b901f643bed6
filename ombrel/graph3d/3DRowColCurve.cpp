#include "ombrel/graph3d/3DRowColCurve.h"
#include "ombrel/graph3d/geometry/GridCoordinates.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/framework/Exception.h"

#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DRowColCurve::kClass = PersistentClass<C3DRowColCurve, C3DCurve>("C3DRowColCurve");

namespace {

// Steps are compared as the numbers that they are stored as in files of text.
bool Same(double a, double b) { return a == b || CVUtils::FloatEq(a, b); }

} // namespace

C3DRowColCurve::C3DRowColCurve(CPlot* plot, int useGraphColour)
    : C3DCurve(plot, useGraphColour)
    , m_mesh(std::make_unique<CMesh>())
{
}

C3DRowColCurve::~C3DRowColCurve() = default;

void C3DRowColCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_grid.rows, m_grid.cols);
    f.Double(m_grid.xMin, m_grid.xMax, m_grid.yMin, m_grid.yMax);
    f.Double(m_placement.xMin, m_placement.yMin, m_placement.xStep, m_placement.yStep);
    f.Int(m_alignMeshes);
    if (GetDataSourceType() > dsFormula)
        f.Nested(m_table);
    // Documents hold no nodes: the next draw makes them.
    if (!ar.IsStoring())
        SetPlotDataModified(1);
}

void C3DRowColCurve::SetTableData(VARIANT const& values)
{
    SAFEARRAY const* const array = (values.vt & VT_ARRAY) != 0 ? values.parray.get() : nullptr;
    if (!array || array->bounds.size() != 2)
        throw new COleDispatchException("ZVals array needs to be two dimensional");
    std::size_t const rows = array->bounds[0];
    std::size_t const cols = array->bounds[1];
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    if (rows < 1 || cols < 1 || rows > kMost || cols > kMost || array->values.size() / rows < cols)
        throw new COleDispatchException("Problem with ZVals array bounds");
    CTableData table;
    table.Initialise(static_cast<int>(rows), static_cast<int>(cols), 0);
    for (std::size_t r = 0; r < rows; ++r) {
        double* const row = table.GetRow(static_cast<int>(r));
        for (std::size_t c = 0; c < cols; ++c)
            row[c] = array->values[r + c * rows];
    }
    SetTableData(std::move(table));
}

void C3DRowColCurve::SetTableData(CTableData&& table)
{
    m_table = std::move(table);
    SetModified(1);
    SetPlotDataModified(1);
}

void C3DRowColCurve::OffsetTableData(double offset, double gain)
{
    m_table.Offset(offset, gain);
    SetModified(1);
}

void C3DRowColCurve::AlignMeshes()
{
    int const rows = m_table.GetNumRows() - 1;
    int const cols = m_table.GetNumCols() - 1;
    int const least = GetGridLimits().leastCells;
    if (rows < least || cols < least)
        return;
    SetGrid({ rows, cols, m_placement.xMin, m_placement.xMin + cols * m_placement.xStep, m_placement.yMin,
        m_placement.yMin + rows * m_placement.yStep });
    m_rowsReplaced = false;
    m_colsReplaced = false;
}

int C3DRowColCurve::DataMeshEqualsCurveMesh() const
{
    return m_table.GetNumRows() - 1 == m_grid.rows && m_table.GetNumCols() - 1 == m_grid.cols
            && Same(m_placement.xMin, m_grid.xMin) && Same(m_placement.yMin, m_grid.yMin)
            && Same(m_placement.xMin + m_grid.cols * m_placement.xStep, m_grid.xMax)
            && Same(m_placement.yMin + m_grid.rows * m_placement.yStep, m_grid.yMax)
        ? 1
        : 0;
}

int C3DRowColCurve::SetCoarseMeshMode(int cols, int rows)
{
    int changed = 0;
    auto const replace = [&](int& count, int& saved, bool& replaced, int most) {
        if (most != 0 && count > most) {
            saved = replaced ? saved : count;
            ChangeData(count, most);
            replaced = true;
            changed = 1;
        }
    };
    auto const restore = [&](int& count, int saved, bool& replaced) {
        if (replaced) {
            ChangeData(count, saved);
            replaced = false;
            changed = 1;
        }
    };
    if (cols == 0 && rows == 0) {
        restore(m_grid.rows, m_savedRows, m_rowsReplaced);
        restore(m_grid.cols, m_savedCols, m_colsReplaced);
    } else {
        replace(m_grid.rows, m_savedRows, m_rowsReplaced, rows);
        replace(m_grid.cols, m_savedCols, m_colsReplaced, cols);
    }
    return changed;
}

int C3DRowColCurve::Evaluate()
{
    SetValid(GetDataSourceType() == dsFormula ? 0 : EvaluateTableCurve());
    return IsValid();
}

int C3DRowColCurve::EvaluateTableCurve()
{
    if (GetCurveType() == ctParametric || IsGeographical())
        return 0;
    return FillMesh({ GetCurveType(), false }) ? 1 : 0;
}

bool C3DRowColCurve::FillMesh(GridCoordinates const& coordinates)
{
    int const rows = m_grid.rows;
    int const cols = m_grid.cols;
    double const nodes = (rows + 1.0) * (cols + 1.0);
    GridLimits const limits = GetGridLimits();
    double const tableValues = static_cast<double>(m_table.GetNumRows()) * m_table.GetNumCols();
    int const fewest = std::min({ rows, cols, m_table.GetNumRows() - 1, m_table.GetNumCols() - 1 });
    if (fewest < limits.leastCells || nodes > std::max(limits.mostInterpolatedNodes, tableValues)) {
        m_mesh->Clear();
        return false;
    }
    if (m_mesh->HasNodes() && m_mesh->GetNumRows() == rows && m_mesh->GetNumCols() == cols)
        m_mesh->SetExtent(m_grid.xMin, m_grid.xMax, m_grid.yMin, m_grid.yMax);
    else
        m_mesh->Init(rows, cols, m_grid.xMin, m_grid.xMax, m_grid.yMin, m_grid.yMax);

    bool const isSame = DataMeshEqualsCurveMesh() != 0;
    CTableData const& table = m_table;
    std::vector<GridCoordinates::Parameter> xs;
    std::vector<double> tableX;
    for (int i = 0; i <= cols; ++i) {
        xs.push_back(coordinates.AlongX(m_mesh->GetMeshX(i)));
        tableX.push_back((xs.back().value - m_placement.xMin) / m_placement.xStep);
    }
    bool const areParameters = coordinates.AreParameters();
    if (areParameters)
        m_mesh->PlaceOverParameters();
    std::vector<double> interpolated(isSame ? 0 : xs.size());
    for (int j = 0; j <= rows; ++j) {
        GridCoordinates::Parameter const y = coordinates.AlongY(m_mesh->GetMeshY(j));
        double const* values = table.GetRow(isSame ? j : 0);
        if (!isSame) {
            double const tableY = (y.value - m_placement.yMin) / m_placement.yStep;
            for (std::size_t i = 0; i < xs.size(); ++i)
                interpolated[i]
                    = CMesh::InterpolateOn(values, table.GetNumRows() - 1, table.GetNumCols() - 1, tableX[i], tableY);
            values = interpolated.data();
        }
        double* const zRow = m_mesh->GetZRow(j);
        if (areParameters) {
            for (std::size_t i = 0; i < xs.size(); ++i)
                zRow[i] = IsGridGap(values[i]) ? kGap : values[i];
            continue;
        }
        double* const xRow = m_mesh->GetXRow(j);
        double* const yRow = m_mesh->GetYRow(j);
        for (std::size_t i = 0; i < xs.size(); ++i) {
            bool const missing = IsGridGap(values[i]);
            std::array<double, 3> const place = coordinates.At(xs[i], y, missing ? 0.0 : values[i]);
            xRow[i] = place[0];
            yRow[i] = place[1];
            zRow[i] = missing ? kGap : place[2];
        }
    }
    return true;
}

COLORREF C3DRowColCurve::GetLUTColour(double value) const { return GetColourInRange(value); }

} // namespace ombrel
