#pragma once
#include "tools/ombrel/chart/Scene.h"

namespace ombrel::host {

class Messages;

/// Adds the heights as a surface: over their grid, or over the triangles of points that form none. Throws Failure and
/// Error.
SceneContent AddSurface(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages);

} // namespace ombrel::host
