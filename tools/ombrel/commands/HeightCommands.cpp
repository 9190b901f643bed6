#include "tools/ombrel/commands/HeightCommands.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/scene/MeshFile.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/SceneOptions.h"
#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/options/PlotChecks.h"

namespace ombrel::host {

namespace {

using Files = std::vector<std::unique_ptr<InputFile>>;

/// Where pictures of the one file go.
Outputs OutputsFor(Options const& options, Files const& files, char const* kind)
{
    if (files.size() > 1)
        throw Failure(
            kUsageFault, std::string("expected one file of ") + kind + ", found " + std::to_string(files.size()));
    Outputs outputs(options, options.files.front());
    outputs.SetTitle(OneLine(options.title));
    return outputs;
}

/// Draws it, and writes what the options ask for.
template <typename Drawing> void Write(Drawing& drawing, Outputs& outputs, NotesTeller& notes, Messages const& messages)
{
    auto const draw = [&](Picture& picture, bool) {
        drawing.Draw(picture);
        notes.Tell();
        return &drawing.Graph();
    };
    outputs.Write(draw, messages);
}

} // namespace

void RunSurface(Options const& options, Files& files, Messages const& messages)
{
    CheckSceneOptions(options);
    Outputs outputs = OutputsFor(options, files, "heights");
    HeightSource heights = ReadHeightFile(options, *files.front(), ShapeFor(options), messages);
    Scene scene = SceneFor(options);
    NotesTeller notes([&scene] { return scene.Notes(); }, messages);
    AddHeights(scene, options, std::move(heights));
    Write(scene, outputs, notes, messages);
}

void RunContour(Options const& options, Files& files, Messages const& messages)
{
    Outputs outputs = OutputsFor(options, files, "heights");
    ContourMap map = MapFor(options, ReadHeightFile(options, *files.front(), HeightShape::Grid, messages));
    NotesTeller notes([&map] { return map.Notes(); }, messages);
    Write(map, outputs, notes, messages);
}

void RunMesh(Options const& options, Files& files, Messages const& messages)
{
    CheckMeshOptions(options);
    Outputs outputs = OutputsFor(options, files, "a mesh");
    std::string const& path = files.front()->GetName();
    if (!IsMeshFile(path))
        throw Failure(kUsageFault, path + ": expected a .tvm, .tvo or .dxf file");
    Scene scene = SceneFor(options);
    NotesTeller notes([&scene] { return scene.Notes(); }, messages);
    AddMesh(scene, options, path);
    Write(scene, outputs, notes, messages);
}

} // namespace ombrel::host
