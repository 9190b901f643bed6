#include "tools/ombrel/commands/HeightCommands.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/ContourMap.h"
#include "tools/ombrel/chart/Document.h"
#include "tools/ombrel/chart/SurfaceScene.h"
#include "tools/ombrel/chart/TitleCaption.h"
#include "tools/ombrel/options/Options.h"

namespace ombrel::host {

namespace {

using Files = std::vector<std::unique_ptr<InputFile>>;

/// What both commands do round the making of their graph.
template <typename Make>
void RunHeights(Options const& options, Files const& files, Messages const& messages, Make const& make)
{
    if (files.size() > 1)
        throw Failure(kUsageFault, "expected one file of heights, found " + std::to_string(files.size()));
    Target target = MakeTarget(options, options.files.front());
    target.title = OneLine(options.title);
    CheckPaths(options, target);
    Picture picture(target);
    auto const graph = make(ReadHeightFile(options, *files.front(), messages), picture);
    DrawGraph(*graph, picture);
    std::string const bytes = picture.Encode();
    if (!options.save.empty())
        SaveDocument(options.save, *graph);
    WriteTarget(target, bytes, messages);
}

} // namespace

void RunSurface(Options const& options, Files& files, Messages const& messages)
{
    RunHeights(options, files, messages, [&](HeightFile&& file, Picture& picture) {
        return MakeSurfaceScene(options, std::move(file), picture, messages);
    });
}

void RunContour(Options const& options, Files& files, Messages const& messages)
{
    RunHeights(options, files, messages, [&](HeightFile&& file, Picture& picture) {
        return MakeContourMap(options, std::move(file), picture, messages);
    });
}

} // namespace ombrel::host
