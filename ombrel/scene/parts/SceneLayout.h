#pragma once
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/scene/MapKey.h"
#include "ombrel/scene/SceneStyle.h"
#include "ombrel/scene/parts/SceneData.h"

#include <memory>

namespace ombrel {
class CDC;
struct Look;

/// An empty 3D graph without frame and walls.
std::unique_ptr<C3DGraph> MakeScene();

/// Gives the graph the look, the view and the lights.
void ApplySceneStyle(C3DGraph& scene, SceneStyle const& style, Look const& look);

/// Gives the axes tidy ticks and titles, the grid the same lines, and the box its proportions.
void SetSceneAxes(C3DGraph& scene, SceneData const& data, std::optional<double> verticalScale);

/// Does so, and makes box, labels and titles as large as the window has room for, with a key of the curve's colours
/// beside them and the graph's title over them, where there are such. keys are those of the last layout, which go.
/// dc is a context like the one that will be drawn on.
TitledKey LayOutScene(C3DGraph& scene, C3DCurve const* keyCurve, SceneData const& data, Look const& look,
    SceneStyle const& style, TitledKey keys, CDC& dc, CRect const& window);

} // namespace ombrel
