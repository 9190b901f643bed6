#include "tools/ombrel/chart/HeightScene.h"
#include "ombrel/chart/Look.h"
#include "ombrel/chart/Titles.h"
#include "ombrel/graph3d/3DGraph.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/BarScene.h"
#include "tools/ombrel/chart/PointScene.h"
#include "tools/ombrel/chart/Scene.h"
#include "tools/ombrel/chart/SurfaceScene.h"
#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/options/PlotChecks.h"

namespace ombrel::host {

HeightShape ShapeFor(Options const& options)
{
    switch (SceneKindOf(options)) {
    case PlotKind::Lines:
        return HeightShape::PointsWithGaps;
    case PlotKind::Scatter:
    case PlotKind::Text:
        return HeightShape::Points;
    case PlotKind::Wireframe:
        return HeightShape::Grid;
    default:
        return HeightShape::GridOrPoints;
    }
}

namespace {

SceneContent AddContent(
    C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look, Messages const& messages)
{
    switch (SceneKindOf(options)) {
    case PlotKind::Bars:
        return AddBars(scene, options, std::move(file), messages);
    case PlotKind::Series:
        return AddSeries(scene, options, std::move(file), look, messages);
    case PlotKind::Wireframe:
        return AddWireframe(scene, options, std::move(file), messages);
    case PlotKind::Lines:
        return AddLines(scene, options, std::move(file), look);
    case PlotKind::Scatter:
        return AddScatter(scene, options, std::move(file), look);
    case PlotKind::Text:
        return AddTexts(scene, options, std::move(file), look);
    default:
        return AddSurface(scene, options, std::move(file), messages);
    }
}

} // namespace

std::unique_ptr<C3DGraph> MakeHeightScene(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages)
{
    Look const look = LookOf(options.theme);
    std::unique_ptr<C3DGraph> scene = MakeScene(options, look);
    AddTitle(*scene, OneLine(options.title), look);
    SceneContent content = AddContent(*scene, options, std::move(file), look, messages);
    if (options.surface.zRange)
        content.data.z = { options.surface.zRange->first, options.surface.zRange->second };
    LayOutScene(*scene, *content.curve, content.data, look, picture, options);
    return scene;
}

} // namespace ombrel::host
