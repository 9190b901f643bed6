#pragma once
#include "ombrel/layout/Look.h"
#include "tools/ombrel/options/Options.h"

#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrel {
class C2DGraph;
class C3DGraph;
} // namespace ombrel

namespace ombrel::host {

/// The colours of a picture: of its curves, and of all else.
class PictureLook : public Look {
public:
    explicit PictureLook(Theme which)
        : Look(LookOf(which))
        , m_palette(PaletteNamed("", 0, *this))
    {
    }
    CurveLook Curve(int index) const { return m_palette.At(static_cast<std::size_t>(index)); }
    COLORREF Colour(int index) const { return Curve(index).colour; }
    /// A lighter shade of the colour, for areas.
    COLORREF Tint(int index) const { return Curve(index).tint; }

private:
    Palette m_palette;
};

/// Builds the plots of a picture and sets what is not usual about axes, grids and annotation; the rest is laid out for
/// the picture's size afterwards: axes of a 2D graph, axes and the size of the box in a 3D graph.
using BuildPicture = std::variant<void (*)(C2DGraph& graph, PictureLook const& look),
    void (*)(C3DGraph& graph, PictureLook const& look)>;

/// Whether ranges and ticks are chosen for the picture's size, or stay as the graph itself makes them.
enum class AxesChoice { Fitted, AsBuilt };

struct GalleryPicture {
    /// Of its files, without extension; of the anchors in the page.
    std::string_view name;
    std::string_view section;
    std::string_view title;
    /// One sentence: what is to be seen.
    std::string_view caption;
    BuildPicture build;
    /// As it stands in the source, by which the page finds the code.
    std::string_view functionName;
    AxesChoice axes = AxesChoice::Fitted;
    /// None for that of the gallery.
    std::optional<Theme> theme = std::nullopt;
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
