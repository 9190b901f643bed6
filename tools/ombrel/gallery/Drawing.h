#pragma once
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/gallery/Pictures.h"

namespace ombrel::host {

/// In pixels; pages are as large as the large picture is on a screen.
inline constexpr PictureSize kLargePicture { 900, 560 };
inline constexpr PictureSize kSmallPicture { 300, 190 };
/// All fifteen pictures of the overview together.
inline constexpr PictureSize kOverview { 1200, 1260 };

/// The graph of the picture, laid out for the target. theme is the gallery's.
std::unique_ptr<CAnnotatedGraph> MakeGalleryGraph(GalleryPicture const& picture, Target const& target, Theme theme);

/// The file of the picture, laid out for the target.
std::string DrawGalleryPicture(GalleryPicture const& picture, Target const& target, Theme theme);

/// Fifteen small graphs in one bitmap, as a PNG file.
std::string DrawOverview(std::span<GalleryPicture const> pictures, Theme theme);

} // namespace ombrel::host
