#include "tools/ombrel/commands/HeightCommands.h"
#include "ombrel/chart/Document.h"
#include "ombrel/chart/Titles.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/ContourMap.h"
#include "tools/ombrel/chart/HeightScene.h"
#include "tools/ombrel/chart/MeshScene.h"
#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/options/PlotChecks.h"

namespace ombrel::host {

namespace {

using Files = std::vector<std::unique_ptr<InputFile>>;

/// What the commands do round the making of their graph: make(file, picture).
template <typename Make>
void RunWith(Options const& options, Files const& files, char const* kind, Messages const& messages, Make const& make)
{
    if (files.size() > 1)
        throw Failure(
            kUsageFault, std::string("expected one file of ") + kind + ", found " + std::to_string(files.size()));
    Target target = MakeTarget(options, options.files.front());
    target.title = OneLine(options.title);
    CheckPaths(options, target);
    Picture picture(target);
    auto const graph = make(*files.front(), picture);
    picture.Draw(*graph);
    std::string const bytes = picture.Encode();
    TellMarks(target, picture, messages);
    if (!options.save.empty())
        SaveDocument(options.save, *graph);
    WriteTarget(target, bytes, messages);
}

} // namespace

void RunSurface(Options const& options, Files& files, Messages const& messages)
{
    CheckSceneOptions(options);
    RunWith(options, files, "heights", messages, [&](InputFile& file, Picture& picture) {
        return MakeHeightScene(options, ReadHeightFile(options, file, ShapeFor(options), messages), picture, messages);
    });
}

void RunContour(Options const& options, Files& files, Messages const& messages)
{
    RunWith(options, files, "heights", messages, [&](InputFile& file, Picture& picture) {
        return MakeContourMap(options, ReadHeightFile(options, file, HeightShape::Grid, messages), picture, messages);
    });
}

void RunMesh(Options const& options, Files& files, Messages const& messages)
{
    CheckMeshOptions(options);
    RunWith(options, files, "a mesh", messages, [&](InputFile const& file, Picture& picture) {
        if (!IsMeshFile(file.GetName()))
            throw Failure(kUsageFault, file.GetName() + ": expected a .tvm, .tvo or .dxf file");
        return MakeMeshScene(options, file.GetName(), picture, messages);
    });
}

} // namespace ombrel::host
