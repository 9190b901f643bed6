#pragma once

#include <memory>
#include <string>
#include <vector>

namespace ombrel {
class Picture;
class C3DCurve;
class C3DGraph;
} // namespace ombrel

namespace ombrel::host {

class Messages;
struct Options;

/// Whether the file is a mesh, objects or a drawing, by the ending of its name.
bool IsMeshFile(std::string const& path);

/// Reads the file into curves of the scene, which owns them: one, and one more for each object that is a mesh. Tells
/// what was read over. Throws Error, and Failure when the file holds nothing.
std::vector<C3DCurve*> AddMeshFile(C3DGraph& scene, std::string const& path, Messages const& messages);

/// A 3D graph of the file in the same scale along all axes, fitted into the picture, with a key beside it. Throws
/// Failure and Error.
std::unique_ptr<C3DGraph> MakeMeshScene(
    Options const& options, std::string const& path, Picture& picture, Messages const& messages);

} // namespace ombrel::host
