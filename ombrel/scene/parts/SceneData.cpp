#include "ombrel/scene/parts/SceneData.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/3DMeshCurve.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ombrel {

namespace {

/// Where bars and stacks of the curve start; nothing for other curves. 0 is what they choose themselves.
std::optional<double> BaselineOf(C3DCurve const& curve)
{
    auto const baseline
        = [](auto const& standing) { return standing.GetAutoBaseline() ? 0.0 : standing.GetBaseline(); };
    if (auto const* const bars = DynamicDowncast<C3DBarCurve>(&curve))
        return baseline(*bars);
    if (auto const* const series = DynamicDowncast<C3DLineArrayCurve>(&curve))
        return baseline(*series);
    if (auto const* const bars = DynamicDowncast<C3DIrregBarCurve>(&curve))
        return baseline(*bars);
    if (auto const* const series = DynamicDowncast<C3DIrregLineArrayCurve>(&curve))
        return baseline(*series);
    return std::nullopt;
}

/// What stands on a baseline shows it, unless the heights would then hardly differ.
void IncludeBaseline(AxisRange& z, double baseline)
{
    constexpr double kHardlyDiffer = 0.1;
    double const farthest = std::max(std::abs(z.max - baseline), std::abs(z.min - baseline));
    if (z.max > z.min && z.max - z.min < kHardlyDiffer * farthest)
        return;
    z = { std::min(z.min, baseline), std::max(z.max, baseline) };
}

AxisRange WithMargin(AxisRange range, double share)
{
    double const margin = share * (range.max - range.min);
    return { range.min - margin, range.max + margin };
}

void Unite(AxisRange& all, AxisRange const& one, bool isFirst)
{
    all = isFirst ? one : AxisRange { std::min(all.min, one.min), std::max(all.max, one.max) };
}

} // namespace

CPlotComponent& AddCurveOf(C3DGraph& scene, ItemType plot)
{
    CPlotComponent& curve = *scene.AddPlot(plot)->CreateCurve();
    curve.SetDataSourceType(CPlotComponent::dsTable);
    return curve;
}

std::vector<C3DCurve*> CurvesOf(C3DGraph const& scene)
{
    std::vector<C3DCurve*> curves;
    for (CPlot* const plot : scene.GetPlotArray()->GetPlots()) {
        for (CPlotComponent* const curve : plot->GetComponents())
            curves.push_back(static_cast<C3DCurve*>(curve));
    }
    return curves;
}

SceneData SceneDataOf(C3DGraph const& scene)
{
    SceneData data;
    bool isFirst = true;
    bool hasMarks = false;
    for (C3DCurve const* const curve : CurvesOf(scene)) {
        if (!curve->IsValid())
            continue;
        AxisRange x;
        AxisRange y;
        AxisRange z;
        curve->GetXRange(x.min, x.max);
        curve->GetYRange(y.min, y.max);
        curve->GetZRange(z.min, z.max);
        if (auto const baseline = BaselineOf(*curve))
            IncludeBaseline(z, *baseline);
        Unite(data.x, x, isFirst);
        Unite(data.y, y, isFirst);
        Unite(data.z, z, isFirst);
        isFirst = false;
        hasMarks = hasMarks || curve->IsKindOf(C3DLineCurve::kClass);
        data.inSpace = data.inSpace || curve->GetCurveType() != C3DCurve::ctCartesian || curve->NeedsProportions()
            || curve->IsKindOf(C3DMeshCurve::kClass);
    }
    if (hasMarks) {
        constexpr double kOnGround = 0.03;
        // Boxes are about half as high as long, and symbols are not flatter.
        constexpr double kUpwards = 0.06;
        data.x = WithMargin(data.x, kOnGround);
        data.y = WithMargin(data.y, kOnGround);
        data.z = WithMargin(data.z, kUpwards);
    }
    return data;
}

void SetCoordinates(C3DCurve& curve, CoordinateChoice coordinates)
{
    switch (coordinates) {
    case CoordinateChoice::Polar:
        curve.SetCurveType(C3DCurve::ctPolar);
        break;
    case CoordinateChoice::Cylindrical:
        curve.SetCurveType(C3DCurve::ctCylindrical);
        break;
    case CoordinateChoice::Geographical:
        curve.SetCurveType(C3DCurve::ctGeographical);
        break;
    default:
        curve.SetCurveType(C3DCurve::ctCartesian);
        break;
    }
}

} // namespace ombrel
