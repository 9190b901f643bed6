#include "tools/ombrel/gallery/Drawing.h"
#include "ombrel/chart.h"

#include <algorithm>
#include <cassert>

namespace ombrel::host {

namespace {

/// In rows of three.
constexpr std::string_view kOnOverview[] { "lines-bessel", "clustered-years", "areas-stream", "shading-range",
    "stacked-shares", "grid-polar", "symbols-clouds", "errors-fit", "colours-palette", "contours-bands", "surfaces-lit",
    "surfaces-globe", "bars3d-rain", "scatter3d-clouds", "mesh-clipped" };

template <typename Made>
std::unique_ptr<DrawnPicture> Make(void (*build)(Made&), GalleryPicture const& picture, Theme theme)
{
    auto made = std::make_unique<Made>(picture.title);
    made->Footnote(picture.source).SetTheme(theme);
    build(*made);
    return made;
}

std::unique_ptr<DrawnPicture> Make(void (*build)(GraphPicture&), GalleryPicture const& picture, Theme theme)
{
    auto graph = std::make_unique<GraphPicture>(picture.title, theme);
    graph->Footnote(picture.source);
    build(*graph);
    return graph;
}

std::unique_ptr<DrawnPicture> Make(
    ContourMap (*build)(std::string_view title), GalleryPicture const& picture, Theme theme)
{
    auto map = std::make_unique<ContourMap>(build(picture.title));
    map->Footnote(picture.source).SetTheme(theme);
    return map;
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
