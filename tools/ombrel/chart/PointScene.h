#pragma once
#include "tools/ombrel/chart/Scene.h"

namespace ombrel {
struct Look;
} // namespace ombrel

namespace ombrel::host {

struct Options;

// Each adds the file's points to the scene. Throw Failure when there is none.

/// Joined in their order; a point with a gap breaks the line.
SceneContent AddLines(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look);
/// A symbol at each, on a stick where that is wanted.
SceneContent AddScatter(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look);
/// A text at each.
SceneContent AddTexts(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look);

} // namespace ombrel::host
