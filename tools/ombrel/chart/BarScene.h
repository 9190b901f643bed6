#pragma once
#include "tools/ombrel/chart/Scene.h"

namespace ombrel {
struct Look;
} // namespace ombrel

namespace ombrel::host {

class Messages;
struct Options;

// Each adds the heights to the scene, over their grid or at points that form none. Throw Failure and Error.

/// A bar at each.
SceneContent AddBars(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages);
/// Lines one behind the other, each over a stack.
SceneContent AddSeries(
    C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look, Messages const& messages);
/// A net of lines; a grid is needed.
SceneContent AddWireframe(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages);

} // namespace ombrel::host
