#pragma once

#include <string>

namespace ombrel {
class C3DMeshCurve;
class C3DObjectCurve;
} // namespace ombrel

namespace ombrel::host {

class InputFile;
class Messages;

/// Variables, node sets and patches, with their counts and ranges, behind the curve's name.
std::string DescribeMesh(C3DMeshCurve const& curve);

/// Kinds and places of the objects.
std::string DescribeObjects(C3DObjectCurve const& curve);

/// What is in a file of a mesh, of objects, or in a drawing. Throws Failure and Error.
std::string DescribeMeshFile(InputFile const& file, Messages const& messages);

} // namespace ombrel::host
