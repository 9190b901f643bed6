#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {
class C3DGraph;

/// The zoom factor with which a picture of that size shows the graph's box and its labels whole from left to right,
/// where a wider picture does so with the graph's own: at one zoom factor, what is seen from top to bottom stays, and a
/// narrow picture cuts what was made for a wide one. Else the graph's own, and for a view so close that pictures
/// eight times as wide would be cut as well. Lays the graph out for other sizes meanwhile.
OMBREL_EXPORT double ZoomToKeepWidth(C3DGraph& scene, CSize picture);

} // namespace ombrel
