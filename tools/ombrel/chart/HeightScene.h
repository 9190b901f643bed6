#pragma once
#include "tools/ombrel/grid/HeightFile.h"

#include <memory>

namespace ombrel {
class Picture;
class C3DGraph;
} // namespace ombrel

namespace ombrel::host {

class Messages;
struct Options;

/// What the kind of scene that the options ask for needs of a file.
HeightShape ShapeFor(Options const& options);

/// A 3D graph of the heights, shown as the options ask for, fitted into the picture, with a key beside it. Throws
/// Failure and Error.
std::unique_ptr<C3DGraph> MakeHeightScene(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages);

} // namespace ombrel::host
