#pragma once
#include "ombrel/layout/Look.h"

#include <span>
#include <string>
#include <string_view>

namespace ombrel::host {

struct GalleryPicture;

/// Whether a character of C++ can be part of a name.
bool IsWord(char c);

/// A whole program that draws the picture, in the gallery's theme unless it has one of its own, into its current
/// folder, as the large picture of the gallery: the body of the picture's function, after all that it calls and names.
std::string ProgramOf(GalleryPicture const& picture, Theme theme);

// What the build puts into the program from files of their own.

/// The sources of all pictures.
extern std::span<std::string_view const> const kGallerySources;
/// The helpers and the data that they share.
extern std::string_view const kGalleryHelpers;
extern std::string_view const kGalleryData;
/// Style sheet and script of the page.
extern std::string_view const kGalleryStyle;
extern std::string_view const kGalleryScript;

} // namespace ombrel::host
