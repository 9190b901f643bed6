#pragma once
#include "tools/ombrel/chart/AxisLayout.h"
#include "tools/ombrel/grid/HeightFile.h"

#include <memory>

namespace ombrel {
class C3DCurve;
class C3DGraph;
} // namespace ombrel

namespace ombrel::host {

class Picture;
struct Look;
struct Options;

/// What a 3D graph shows, for its axes and proportions.
struct SceneData {
    AxisRange x;
    AxisRange y;
    AxisRange z;
    HeightTitles titles;
    /// All three are lengths of one unit: x, y and z have the same scale.
    bool inSpace = false;
};

/// An empty 3D graph in the look and the view that the options ask for.
std::unique_ptr<C3DGraph> MakeScene(Options const& options, Look const& look);

/// What the curve needs of the scene; it has no titles.
SceneData SceneDataOf(C3DCurve const& curve);

/// Gives the axes tidy ticks and titles, the grid the same lines, and the box its proportions; makes box, labels and
/// titles as large as the picture has room for, with a key of the curve's colours beside them and the graph's title
/// over them, where these are wanted.
void LayOutScene(C3DGraph& scene, C3DCurve const& curve, SceneData const& data, Look const& look, Picture& picture,
    Options const& options);

} // namespace ombrel::host
