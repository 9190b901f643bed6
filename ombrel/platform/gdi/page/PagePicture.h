#pragma once
#include "ombrel/platform/gdi/Surface.h"

#include <optional>

namespace ombrel {

/// A picture that is ready to place: true colour, with the colour that is left out.
struct PagePicture {
    Raster pixels;
    std::optional<COLORREF> transparent;
    CRect to;
};

/// What a copy of a bitmap shows, in true colour. Paper cannot be read back: copies that combine with what is there
/// leave out the colour that changes nothing (white for "and", black for "or" and "exclusive or"), which is what masked
/// pictures need. Nothing when the copy has no pixels.
std::optional<PagePicture> MakePicture(ImageCopy const& copy);

} // namespace ombrel
