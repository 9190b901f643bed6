#include "ombrel/graph3d/GridNodeCurve.h"
#include "ombrel/platform/framework/Exception.h"

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

/// The ends and the step of what stands in equal steps.
struct EvenSteps {
    int count = 0;
    double first = 0.0;
    double last = 0.0;
    double GetStep() const { return count > 1 ? (last - first) / (count - 1) : 1.0; }
};

EvenSteps TakeEvenSteps(VARIANT const& values, char const* name)
{
    SAFEARRAY const* const array = (values.vt & VT_ARRAY) != 0 ? values.parray.get() : nullptr;
    constexpr std::size_t kMost = std::numeric_limits<int>::max() - 1;
    if (!array || array->bounds.size() != 1)
        throw new COleDispatchException(CString(name) + CString(" array needs to be one dimensional"));
    std::vector<double> const& v = array->values;
    if (v.empty() || array->bounds[0] != v.size() || v.size() > kMost)
        throw new COleDispatchException(CString("Problem with ") + CString(name) + CString(" array bounds"));
    EvenSteps const steps { static_cast<int>(v.size()), v.front(), v.back() };
    // Steps that were added up, or went through single precision, differ in their last digits.
    double const slack = 1e-6 * std::fabs(steps.GetStep());
    bool isEven = !IsGap(steps.first) && !IsGap(steps.last) && (v.size() == 1 || steps.first != steps.last);
    for (std::size_t k = 0; k < v.size(); ++k)
        isEven = isEven && std::fabs(v[k] - (steps.first + static_cast<double>(k) * steps.GetStep())) <= slack;
    if (!isEven)
        throw new COleDispatchException(CString(name) + CString(" array needs to have equal steps"));
    return steps;
}

VARIANT MakeArray(std::vector<std::size_t>&& bounds, std::vector<double>&& values)
{
    VARIANT array;
    array.vt = VT_ARRAY | VT_R8;
    array.parray = std::make_shared<SAFEARRAY>(SAFEARRAY { std::move(bounds), std::move(values) });
    return array;
}

VARIANT MakeSteps(int cells, double mostNodes, double min, double max)
{
    std::vector<double> values;
    for (int k = 0; k <= cells && cells < mostNodes; ++k)
        values.push_back(cells > 0 ? min + k * ((max - min) / cells) : min);
    std::size_t const count = values.size();
    return MakeArray({ count }, std::move(values));
}

} // namespace

GridNodeCurve::GridNodeCurve(CPlot* plot, int useGraphColour)
    : C3DRowColCurve(plot, useGraphColour)
{
    auto nodes = std::make_unique<C3DRowColCurveMesh>();
    m_nodes = nodes.get();
    SetMesh(std::move(nodes));
}

int GridNodeCurve::Evaluate()
{
    ++m_revision;
    C3DRowColCurve::Evaluate();
    if (IsValid() && GetNumTransforms() != 0)
        TranslateRotate();
    m_nodes->ComputeRanges();
    SetValid(IsValid() && m_nodes->HasRange());
    return IsValid();
}

void GridNodeCurve::TranslateRotate()
{
    m_nodes->ChangeNodes([this](double& x, double& y, double& z) { Transform(&x, &y, &z); });
}

void GridNodeCurve::GetNodeRange(int coordinate, double& min, double& max) const
{
    if (!m_nodes->HasRange())
        return;
    min = m_nodes->GetMin(coordinate);
    max = m_nodes->GetMax(coordinate);
}

void GridNodeCurve::SetXValsH(VARIANT const& values)
{
    EvenSteps const steps = TakeEvenSteps(values, "XVals");
    GridExtent grid = GetGrid();
    grid.cols = steps.count - 1;
    grid.xMin = steps.first;
    grid.xMax = steps.last;
    SetGrid(grid);
    SetTablePlacement({ steps.first, GetTableYMin(), steps.GetStep(), GetTableYStep() });
}

void GridNodeCurve::SetYValsH(VARIANT const& values)
{
    EvenSteps const steps = TakeEvenSteps(values, "YVals");
    GridExtent grid = GetGrid();
    grid.rows = steps.count - 1;
    grid.yMin = steps.first;
    grid.yMax = steps.last;
    SetGrid(grid);
    SetTablePlacement({ GetTableXMin(), steps.first, GetTableXStep(), steps.GetStep() });
}

void GridNodeCurve::SetZValsH(VARIANT const& values)
{
    SetTableData(values);
    SetDataSourceType(dsTable);
    GridExtent grid = GetGrid();
    grid.rows = GetNumTableRows() - 1;
    grid.cols = GetNumTableCols() - 1;
    SetGrid(grid);
    EvenSteps const x { grid.cols + 1, grid.xMin, grid.xMax };
    EvenSteps const y { grid.rows + 1, grid.yMin, grid.yMax };
    SetTablePlacement({ grid.xMin, grid.yMin, x.GetStep(), y.GetStep() });
}

VARIANT GridNodeCurve::GetXValsH() const
{
    double const most = std::max<double>(GetGridLimits().mostInterpolatedNodes, GetNumTableCols());
    return MakeSteps(GetNumCols(), most, GetXMin(), GetXMax());
}

VARIANT GridNodeCurve::GetYValsH() const
{
    double const most = std::max<double>(GetGridLimits().mostInterpolatedNodes, GetNumTableRows());
    return MakeSteps(GetNumRows(), most, GetYMin(), GetYMax());
}

VARIANT GridNodeCurve::GetZValsH() const
{
    if (!m_nodes->HasNodes())
        return MakeArray({ 0, 0 }, {});
    std::vector<double> values;
    values.reserve(m_nodes->GetZVals().size());
    for (int i = 0; i <= m_nodes->GetNumCols(); ++i) {
        for (int j = 0; j <= m_nodes->GetNumRows(); ++j)
            values.push_back(m_nodes->GetZ(i, j));
    }
    auto const rows = static_cast<std::size_t>(m_nodes->GetNumRows()) + 1;
    auto const cols = static_cast<std::size_t>(m_nodes->GetNumCols()) + 1;
    return MakeArray({ rows, cols }, std::move(values));
}

} // namespace ombrel
