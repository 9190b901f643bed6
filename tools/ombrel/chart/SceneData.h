#pragma once
#include "ombrel/chart/AxisTicks.h"
#include "ombrel/model/ItemType.h"
#include "tools/ombrel/grid/HeightFile.h"

#include <string>
#include <vector>

namespace ombrel {
class C3DCurve;
class C3DGraph;
class CPlotComponent;
} // namespace ombrel

namespace ombrel::host {

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

/// What was added to a scene.
struct SceneContent {
    /// The curve whose colours a key explains; owned by the scene.
    C3DCurve* curve = nullptr;
    SceneData data;
};

/// A new curve in a new plot of that kind, which has its data as a table.
CPlotComponent& AddCurveOf(C3DGraph& scene, ItemType plot);
template <typename Curve> Curve& AddCurve(C3DGraph& scene, ItemType plot)
{
    return static_cast<Curve&>(AddCurveOf(scene, plot));
}

/// All curves, plot by plot.
std::vector<C3DCurve*> CurvesOf(C3DGraph const& scene);

/// What the columns of points are called.
HeightTitles TitlesOf(Points const& points);

/// What the valid curves of the scene need for all that they draw: room for symbols, and the baselines that bars stand
/// on. There are no titles.
SceneData SceneDataOf(C3DGraph const& scene);
/// The same with titles, for a key of that curve.
SceneContent ContentOf(C3DGraph const& scene, C3DCurve& curve, HeightTitles const& titles);

} // namespace ombrel::host
