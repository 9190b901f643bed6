#pragma once
#include "ombrel/platform/framework/Geometry.h"
#include "tools/ombrel/chart/AxisLayout.h"
#include "tools/ombrel/grid/HeightFile.h"

#include <memory>

namespace ombrel {
class C3DGraph;
class CDC;
} // namespace ombrel

namespace ombrel::host {

class Messages;
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

/// Gives the axes tidy ticks and titles, the grid the same lines, and the box its proportions.
void SetSceneAxes(C3DGraph& scene, SceneData const& data, Options const& options);

/// Where the title stands in a window; without height when there is none.
CRect TitleRoom(CRect const& window, Options const& options);

/// Makes box, labels and titles as large as the picture has room for beside a strip of that many pixels at its right,
/// and puts the graph's title over them. Only the view's size and place change.
void FitScene(C3DGraph& scene, Picture& picture, int stripAtRight, Options const& options);

} // namespace ombrel::host
