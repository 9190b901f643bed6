#pragma once
#include "ombrel/chart/DrawnPicture.h"
#include "tools/ombrel/gallery/Pictures.h"

namespace ombrel::host {

/// In pixels: what a program gets that does not ask for a size. Pages are as large as the large picture is on a screen.
inline constexpr PictureSize kLargePicture {};
inline constexpr PictureSize kSmallPicture { 300, 190 };
/// All fifteen pictures of the overview together.
inline constexpr PictureSize kOverview { 1200, 1260 };

/// The picture, as its program makes it; theme is the gallery's.
std::unique_ptr<DrawnPicture> MakeGalleryPicture(GalleryPicture const& picture, Theme theme);

/// Fifteen small pictures in one bitmap, as a PNG file.
std::string DrawOverview(std::span<GalleryPicture const> pictures, Theme theme);

} // namespace ombrel::host
