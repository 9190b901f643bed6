#pragma once
#include <span>
#include <string>
#include <string_view>

namespace ombrel::host {

struct GalleryPicture;

/// The code that builds the picture: the body of its function, after the functions of the same source that it calls.
std::string SourceOf(GalleryPicture const& picture);

// What the build puts into the program from files of their own.

/// The sources of all pictures.
extern std::span<std::string_view const> const kGallerySources;
/// The helpers that they share, and a whole program.
extern std::string_view const kGalleryHelpers;
extern std::string_view const kGalleryProgram;
/// Style sheet and script of the page.
extern std::string_view const kGalleryStyle;
extern std::string_view const kGalleryScript;

} // namespace ombrel::host
