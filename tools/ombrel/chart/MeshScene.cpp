#include "tools/ombrel/chart/MeshScene.h"
#include "ombrel/chart/Look.h"
#include "ombrel/chart/Titles.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/HeightColours.h"
#include "tools/ombrel/chart/Scene.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <filesystem>

namespace ombrel::host {

namespace {

/// The mesh's own name for heights, and ours.
constexpr char const* kHeights = "thezvalue";
constexpr char const* kHeightsForUsers = "z";

std::string ExtensionOf(std::string const& path) { return LowerCase(std::filesystem::path(path).extension().string()); }

bool HasElementColours(C3DMeshCurve const& mesh)
{
    for (int i = 0; i < mesh.GetPatches().GetSize(); ++i) {
        if (mesh.GetPatches()[i]->GetColours()->GetSize() > 0)
            return true;
    }
    return false;
}

/// The name of the variable that the mesh is coloured by, as the mesh has it; empty for one colour.
std::string VariableFor(C3DMeshCurve const& mesh, SurfaceOptions const& options, std::string const& name)
{
    CStringArray names;
    mesh.GetVariables(names);
    if (options.variable.empty())
        return names.GetSize() > 0 && !HasElementColours(mesh) ? names[0].ToUtf8() : std::string();
    std::string known;
    for (int i = 0; i < names.GetSize(); ++i) {
        if (LowerCase(names[i].ToUtf8()) == LowerCase(options.variable))
            return names[i].ToUtf8();
        known += names[i].ToUtf8() + ", ";
    }
    if (LowerCase(options.variable) == kHeightsForUsers)
        return kHeights;
    throw Failure(kUsageFault,
        "--variable " + options.variable + ": " + name + " has no such values; it has " + known + "z (the heights)");
}

void SetContours(C3DMeshCurve& mesh, SurfaceOptions const& options)
{
    ContourChoice const contours
        = options.contours.value_or(options.levels ? ContourChoice::Bands : ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    AxisRange range;
    mesh.GetUntransformedDataRange(range.min, range.max);
    mesh.SetContourLevelMode(2);
    mesh.SetContourLevels(LevelArray(options, range));
    mesh.SetContoursOn(1);
}

void SetClip(C3DMeshCurve& mesh, SurfaceOptions const& options)
{
    if (!options.clip)
        return;
    constexpr double kEverywhere = 1e300;
    auto const& [x, y, z] = *options.clip;
    mesh.SetClipRanges(x.min.value_or(-kEverywhere), x.max.value_or(kEverywhere), y.min.value_or(-kEverywhere),
        y.max.value_or(kEverywhere), z.min.value_or(-kEverywhere), z.max.value_or(kEverywhere));
    mesh.SetClip(1);
}

void SetOutlines(C3DMeshCurve& mesh, SurfaceOptions const& options)
{
    bool const isSolid = options.solid && !options.outline;
    mesh.SetSolidOn(isSolid);
    mesh.SetWireframeOn(!isSolid || options.wireframe);
    mesh.SetWireframeColour(kLineColour);
}

void SetColours(C3DMeshCurve& mesh, Options const& options, std::string const& variable, Look const& look)
{
    SetHeightColours(mesh, options.surface);
    mesh.SetGradationOn(0);
    mesh.SetColour(PaletteNamed("", 1, look).At(0).colour);
    mesh.SetColourDescription(variable.empty() ? 0 : 1);
    if (variable.empty())
        mesh.SetElementColoursOn(HasElementColours(mesh));
    else
        mesh.SetColourmapVar(CString(variable));
}

} // namespace

bool IsMeshFile(std::string const& path)
{
    std::string const extension = ExtensionOf(path);
    return extension == ".tvm" || extension == ".tvo" || extension == ".dxf";
}

std::vector<C3DCurve*> AddMeshFile(C3DGraph& scene, std::string const& path, Messages const& messages)
{
    if (ExtensionOf(path) == ".tvo") {
        auto& objects = AddCurve<C3DObjectCurve>(scene, it3DObjectPlot);
        objects.SetDataSourceType(CPlotComponent::dsFile);
        WithErrors([&] { objects.SetPathname(CString(path)); });
        for (C3DObjectFile::Note const& note : objects.GetReadNotes())
            messages.Warning(path + ":" + std::to_string(note.line) + ": " + note.text.ToUtf8());
        if (objects.GetObjects().GetSize() == 0)
            throw Failure(kDataFault, path + ": expected objects (general, sphere, cylinder or cube), found none");
        objects.CheckForGeneralObjects();
    } else {
        auto& mesh = AddCurve<C3DMeshCurve>(scene, it3DMeshPlot);
        mesh.SetDataSourceType(CPlotComponent::dsFile);
        WithErrors([&] { mesh.SetPathname(CString(path)); });
        if (mesh.GetPatches().GetSize() == 0)
            throw Failure(kDataFault, path + ": expected patches of elements, found none");
    }
    return CurvesOf(scene);
}

std::unique_ptr<C3DGraph> MakeMeshScene(
    Options const& options, std::string const& path, Picture& picture, Messages const& messages)
{
    Look const look = LookOf(options.theme);
    std::unique_ptr<C3DGraph> scene = MakeScene(options, look);
    AddTitle(*scene, OneLine(options.title), look);
    std::vector<C3DCurve*> const curves = AddMeshFile(*scene, path, messages);
    C3DCurve* coloured = curves.front();
    std::string keyTitle;
    for (C3DCurve* const curve : curves) {
        auto* const mesh = DynamicDowncast<C3DMeshCurve>(curve);
        if (!mesh)
            continue;
        std::string const variable = VariableFor(*mesh, options.surface, path);
        SetColours(*mesh, options, variable, look);
        SetOutlines(*mesh, options.surface);
        SetClip(*mesh, options.surface);
        if (variable.empty())
            continue;
        coloured = mesh;
        keyTitle = variable == kHeights ? "" : variable;
        if (options.surface.variable.empty())
            messages.Note(path + ": coloured by " + QuoteForMessage(variable) + ", the first of its values");
    }
    scene->UpdatePlots();
    for (C3DCurve* const curve : curves) {
        if (auto* const mesh = DynamicDowncast<C3DMeshCurve>(curve))
            SetContours(*mesh, options.surface);
    }
    SceneData data = SceneDataOf(*scene);
    data.titles = { "x", "y", "z", true };
    data.keyTitle = keyTitle;
    LayOutScene(*scene, *coloured, data, look, picture, options);
    return scene;
}

} // namespace ombrel::host
