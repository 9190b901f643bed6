#pragma once

#include <memory>
#include <vector>

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// Draws the heights of a file as a surface in a box. Throws Failure and Error.
void RunSurface(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages);

/// Draws them as a map with contours. Throws Failure and Error.
void RunContour(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages);

/// Draws a mesh, solid objects or a drawing. Throws Failure and Error.
void RunMesh(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages);

} // namespace ombrel::host
