#include "tools/ombrel/commands/SceneInfo.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DRowColCurve.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/MeshInfo.h"
#include "tools/ombrel/commands/TableFile.h"

#include <algorithm>

namespace ombrel::host {

namespace {

std::string DescribePoints(C3DCurve const& curve, int points)
{
    std::string text = ", " + CountedInt(points, "point", "points");
    return points > 0 ? text + RangesText(curve) : text;
}

} // namespace

std::string NumberRange(double min, double max) { return ShortNumber(min) + " to " + ShortNumber(max); }

std::string RangesText(C3DCurve const& curve)
{
    double min = 0.0;
    double max = 0.0;
    curve.GetXRange(min, max);
    std::string text = "\n        x " + NumberRange(min, max);
    curve.GetYRange(min, max);
    text += ", y " + NumberRange(min, max);
    curve.GetZRange(min, max);
    return text + ", z " + NumberRange(min, max);
}

std::string DescribeGrid(C3DRowColCurve const& curve)
{
    CTableData const& table = *curve.GetTableDataPtr();
    std::size_t missing = 0;
    for (int r = 0; r < table.GetNumRows(); ++r) {
        for (int c = 0; c < table.GetNumCols(); ++c)
            missing += IsGap(table.GetAt(r, c));
    }
    std::string text = ", " + CountedInt(table.GetNumRows(), "row", "rows") + " and "
        + CountedInt(table.GetNumCols(), "column", "columns");
    if (missing > 0)
        text += ", " + std::to_string(missing) + " missing";
    return curve.GetMesh()->HasNodes() ? text + RangesText(curve) : text;
}

std::optional<std::string> DescribeSceneCurve(CPlotComponent& curve)
{
    if (auto const* const grid = DynamicDowncast<C3DRowColCurve>(&curve))
        return DescribeGrid(*grid);
    if (auto const* const line = DynamicDowncast<C3DLineCurve>(&curve))
        return DescribePoints(*line, line->GetNumPts());
    if (auto const* const surface = DynamicDowncast<C3DIrregularSurfaceCurve>(&curve))
        return DescribePoints(*surface, surface->GetNumPoints());
    if (auto* const bars = DynamicDowncast<C3DIrregBarCurve>(&curve))
        return DescribePoints(*bars, bars->GetTableData()->GetNumCols());
    if (auto* const series = DynamicDowncast<C3DIrregLineArrayCurve>(&curve))
        return DescribePoints(*series, series->GetPoints().GetNumPoints());
    if (auto const* const mesh = DynamicDowncast<C3DMeshCurve>(&curve))
        return DescribeMesh(*mesh);
    if (auto const* const objects = DynamicDowncast<C3DObjectCurve>(&curve))
        return DescribeObjects(*objects);
    return std::nullopt;
}

} // namespace ombrel::host
