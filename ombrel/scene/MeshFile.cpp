#include "ombrel/scene/MeshFile.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/scene/parts/SceneData.h"
#include "ombrel/scene/parts/SceneTexts.h"

namespace ombrel {

bool IsMeshFile(std::string const& path)
{
    std::string const extension = ExtensionOf(path);
    return extension == ".tvm" || extension == ".tvo" || extension == ".dxf";
}

std::vector<C3DCurve*> AddMeshFile(C3DGraph& scene, std::string const& path, ChartNotes& notes)
{
    if (ExtensionOf(path) == ".tvo") {
        auto& objects = AddCurve<C3DObjectCurve>(scene, it3DObjectPlot);
        objects.SetDataSourceType(CPlotComponent::dsFile);
        WithErrors([&] { objects.SetPathname(CString(path)); });
        for (C3DObjectFile::Note const& note : objects.GetReadNotes())
            notes.AddWarning(path + ":" + std::to_string(note.line) + ": " + note.text.ToUtf8());
        if (objects.GetObjects().GetSize() == 0)
            throw ChartError(
                ChartError::Cause::Data, path + ": expected objects (general, sphere, cylinder or cube), found none");
        objects.CheckForGeneralObjects();
    } else {
        auto& mesh = AddCurve<C3DMeshCurve>(scene, it3DMeshPlot);
        mesh.SetDataSourceType(CPlotComponent::dsFile);
        WithErrors([&] { mesh.SetPathname(CString(path)); });
        if (mesh.GetPatches().GetSize() == 0)
            throw ChartError(ChartError::Cause::Data, path + ": expected patches of elements, found none");
    }
    return CurvesOf(scene);
}

} // namespace ombrel
