#pragma once
#include "tools/ombrel/chart/SceneData.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <memory>

namespace ombrel {
class Picture;
struct Look;
} // namespace ombrel

namespace ombrel::host {

struct Options;

/// An empty 3D graph in the look and the view that the options ask for.
std::unique_ptr<C3DGraph> MakeScene(Options const& options, Look const& look);

/// Reads the curve's coordinates in that system; all but radial ones.
void SetCoordinates(C3DCurve& curve, CoordinateChoice coordinates);

/// Gives the curve the colour map that the options name, over the heights that they ask for.
void SetHeightColours(C3DCurve& curve, SurfaceOptions const& options);

/// Gives the axes tidy ticks and titles, the grid the same lines, and the box its proportions; makes box, labels and
/// titles as large as the picture has room for, with a key of the curve's colours beside them and the graph's title
/// over them, where these are wanted.
void LayOutScene(C3DGraph& scene, C3DCurve const& curve, SceneData const& data, Look const& look, Picture& picture,
    Options const& options);

} // namespace ombrel::host
