#pragma once
#include "tools/ombrel/grid/HeightFile.h"

#include <memory>

namespace ombrel {
class C3DGraph;
}

namespace ombrel::host {

class Messages;
class Picture;
struct Options;

/// A 3D graph of the heights as a surface, fitted into the picture, with a key beside it. Throws Failure and Error.
std::unique_ptr<C3DGraph> MakeSurfaceScene(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages);

} // namespace ombrel::host
