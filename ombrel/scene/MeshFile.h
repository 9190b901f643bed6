#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <vector>

namespace ombrel {
class C3DCurve;
class C3DGraph;
class ChartNotes;

/// Whether the file is a mesh (.tvm), objects (.tvo) or a drawing (.dxf), by the ending of its name.
OMBREL_EXPORT bool IsMeshFile(std::string const& path);

/// Reads the file into curves of the scene, which owns them: one, and one more for each object that is a mesh. Notes
/// what was read over. Throws Error, and ChartError when the file holds nothing.
OMBREL_EXPORT std::vector<C3DCurve*> AddMeshFile(C3DGraph& scene, std::string const& path, ChartNotes& notes);

} // namespace ombrel
