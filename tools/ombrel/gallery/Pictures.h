#pragma once
#include "ombrel/layout/Look.h"

#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrel {
class Chart;
class ContourMap;
class GraphPicture;
class Scene;
} // namespace ombrel

namespace ombrel::host {

/// Fills a picture with a title; maps are made of their heights at once.
using BuildPicture = std::variant<void (*)(Chart& chart), void (*)(GraphPicture& picture), void (*)(Scene& scene),
    ContourMap (*)(std::string_view title)>;

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
    /// Where the data come from, below the picture; empty where there are none.
    std::string_view source = {};
    /// None for that of the gallery.
    std::optional<Theme> theme = std::nullopt;

    bool IsScene() const { return build.index() == 2; }
};

/// In the order of the page, sections together.
std::vector<GalleryPicture> AllGalleryPictures();

// By what they are made with: charts, classes of 2D, scenes and maps, classes of 3D.
std::span<GalleryPicture const> ChartPictures();
std::span<GalleryPicture const> GraphPictures();
std::span<GalleryPicture const> ScenePictures();
std::span<GalleryPicture const> SolidPictures();

} // namespace ombrel::host

/// A function that builds a picture, and its name.
#define OMBREL_PICTURE(function) &(function), #function
