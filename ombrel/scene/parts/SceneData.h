#pragma once
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/model/ItemType.h"
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/SceneStyle.h"

#include <string>
#include <vector>

namespace ombrel {
class C3DCurve;
class C3DGraph;
class CPlotComponent;

/// What a 3D graph shows, for its axes and proportions.
struct SceneData {
    AxisRange x;
    AxisRange y;
    AxisRange z;
    HeightTitles titles;
    /// What colours mean, when that is not told by the z axis.
    std::string keyTitle;
    /// All three are lengths of one unit: x, y and z have the same scale.
    bool inSpace = false;
};

/// A new curve in a new plot of that kind, which has its data as a table.
CPlotComponent& AddCurveOf(C3DGraph& scene, ItemType plot);
template <typename Curve> Curve& AddCurve(C3DGraph& scene, ItemType plot)
{
    return static_cast<Curve&>(AddCurveOf(scene, plot));
}

/// All curves, plot by plot.
std::vector<C3DCurve*> CurvesOf(C3DGraph const& scene);

/// Reads the curve's coordinates in that system; radial ones as lengths.
void SetCoordinates(C3DCurve& curve, CoordinateChoice coordinates);

/// What the valid curves of the scene need for all that they draw: room for symbols, and the baselines that bars stand
/// on. There are no titles.
SceneData SceneDataOf(C3DGraph const& scene);

} // namespace ombrel
