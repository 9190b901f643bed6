#pragma once
#include "tools/ombrel/gallery/Pictures.h"

#include <string>

namespace ombrel::host {

/// The page that shows the pictures: HTML with everything in it but the pictures themselves.
std::string MakeGalleryPage(std::span<GalleryPicture const> pictures, Theme theme);

/// The names of a picture's files.
std::string LargeName(GalleryPicture const& picture);
std::string SmallName(GalleryPicture const& picture);
/// That of a bitmap with twice the pixels, for dense screens.
std::string DenseName(std::string const& name);
std::string SvgName(GalleryPicture const& picture);
std::string PdfName(GalleryPicture const& picture);
std::string ProgramName(GalleryPicture const& picture);
inline constexpr char const* kOverviewName = "overview.png";

} // namespace ombrel::host
