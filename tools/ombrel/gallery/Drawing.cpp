#include "tools/ombrel/gallery/Drawing.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/scene/Scene.h"

#include <algorithm>
#include <cassert>

namespace ombrel::host {

namespace {

/// In rows of three.
constexpr std::string_view kOnOverview[] { "lines-constrained", "clustered-years", "areas-stream", "shading-range",
    "stacked-shares", "grid-polar", "symbols-clouds", "errors-fit", "colours-spectrum", "contours-bands",
    "surfaces-lit", "surfaces-globe", "bars3d-rain", "scatter3d-clouds", "mesh-clipped" };

std::unique_ptr<DrawnPicture> Make(void (*build)(Chart&), GalleryPicture const& picture, Theme theme)
{
    auto chart = std::make_unique<Chart>(picture.title);
    chart->Footnote(picture.source).SetTheme(theme);
    build(*chart);
    return chart;
}

std::unique_ptr<DrawnPicture> Make(
    void (*build)(C2DGraph&, PictureLook const&), GalleryPicture const& picture, Theme theme)
{
    auto graph = std::make_unique<GraphPicture>(picture.title, theme);
    graph->Footnote(picture.source);
    if (picture.axes == AxesChoice::AsBuilt)
        graph->KeepAxes();
    build(graph->Graph(), graph->GetLook());
    return graph;
}

std::unique_ptr<DrawnPicture> Make(void (*build)(Scene&), GalleryPicture const& picture, Theme theme)
{
    auto scene = std::make_unique<Scene>(picture.title);
    scene->Footnote(picture.source).SetTheme(theme);
    build(*scene);
    return scene;
}

std::unique_ptr<DrawnPicture> Make(
    void (*build)(C3DGraph&, PictureLook const&), GalleryPicture const& picture, Theme theme)
{
    auto scene = std::make_unique<Scene>(picture.title);
    scene->Footnote(picture.source).SetTheme(theme);
    build(scene->Graph(), PictureLook(theme));
    return scene;
}

} // namespace

std::unique_ptr<DrawnPicture> MakeGalleryPicture(GalleryPicture const& picture, Theme theme)
{
    return std::visit([&](auto build) { return Make(build, picture, picture.theme.value_or(theme)); }, picture.build);
}

std::string DrawOverview(std::span<GalleryPicture const> pictures, Theme theme)
{
    constexpr int kPerRow = 3;
    PictureForm whole;
    whole.size = kOverview;
    whole.title = "Overview";
    Picture overview(whole);
    CSize const part(
        kOverview.width / kPerRow, kOverview.height / (static_cast<int>(std::size(kOnOverview)) / kPerRow));
    int place = 0;
    for (std::string_view const name : kOnOverview) {
        auto const picture = std::find_if(
            pictures.begin(), pictures.end(), [name](GalleryPicture const& p) { return p.name == name; });
        assert(picture != pictures.end());
        CPoint const corner(place % kPerRow * part.cx, place / kPerRow * part.cy);
        MakeGalleryPicture(*picture, theme)->Draw(overview.GetDC(), CRect(corner, part));
        ++place;
    }
    return overview.Encode();
}

} // namespace ombrel::host
