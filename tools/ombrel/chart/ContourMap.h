#pragma once
#include "tools/ombrel/grid/HeightFile.h"

#include <memory>

namespace ombrel {
class Picture;
class C2DGraph;
} // namespace ombrel

namespace ombrel::host {

class Messages;
struct Options;

/// A 2D graph of the heights as bands and lines, laid out for the picture, with a key beside it. Throws Failure.
std::unique_ptr<C2DGraph> MakeContourMap(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages);

} // namespace ombrel::host
