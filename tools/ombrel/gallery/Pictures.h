#pragma once
#include "ombrel/scene/GraphPicture.h"
#include "tools/ombrel/options/Options.h"

#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrel {
class C2DGraph;
class C3DGraph;
class Chart;
class Scene;
} // namespace ombrel

namespace ombrel::host {

/// Builds a picture: a chart, or the plots of a graph with what is not usual about its axes, grids and annotation.
using BuildPicture = std::variant<void (*)(Chart& chart), void (*)(C2DGraph& graph, PictureLook const& look),
    void (*)(Scene& scene), void (*)(C3DGraph& graph, PictureLook const& look)>;

/// Whether ranges and ticks are chosen for the picture's size, or stay as the graph itself makes them.
enum class AxesChoice { Fitted, AsBuilt };

struct GalleryPicture {
    /// Of its files, without extension; of the anchors in the page.
    std::string_view name;
    std::string_view section;
    /// What is seen, over the picture.
    std::string_view title;
    /// One sentence: what shows it.
    std::string_view caption;
    BuildPicture build;
    /// As it stands in the source, by which the page finds the code.
    std::string_view functionName;
    /// Where the data come from, below the picture; empty for what was made up.
    std::string_view source = {};
    AxesChoice axes = AxesChoice::Fitted;
    /// None for that of the gallery.
    std::optional<Theme> theme = std::nullopt;

    bool IsScene() const { return build.index() >= 2; }
};

/// In the order of the page, sections together.
std::vector<GalleryPicture> AllGalleryPictures();

std::span<GalleryPicture const> LinePictures();
std::span<GalleryPicture const> BarPictures();
std::span<GalleryPicture const> AreaPictures();
std::span<GalleryPicture const> ContourPictures();
std::span<GalleryPicture const> SurfacePictures();
std::span<GalleryPicture const> SceneBarPictures();
std::span<GalleryPicture const> ScenePointPictures();
std::span<GalleryPicture const> MeshPictures();
std::span<GalleryPicture const> AxesPictures();
std::span<GalleryPicture const> StylePictures();

} // namespace ombrel::host

/// A function that builds a picture, and its name.
#define OMBREL_PICTURE(function) &(function), #function
