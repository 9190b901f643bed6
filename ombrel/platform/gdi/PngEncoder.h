#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Raster.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ombrel {

/// What a PNG file says besides its pixels.
struct PngSettings {
    /// 0 leaves it open.
    int dotsPerInch = 96;
    /// Keyword and UTF-8 text of each entry ("Title", "Software", …).
    std::vector<std::pair<std::string, std::string>> texts;
    /// The colour of pixels that show what is behind the picture.
    std::optional<COLORREF> transparent;
};

/// A picture of few colours; the first, which no other equals, is transparent.
struct PackedPicture {
    int width = 0;
    int height = 0;
    /// Of a pixel: 1, 2, 4 or 8.
    int bits = 1;
    /// Indices of colours, the left pixel in the high bits; every row begins with a byte.
    std::vector<std::uint8_t> rows;
    std::vector<COLORREF> colours;
};

/// The picture as the bytes of a PNG file: with a palette when it has at most 256 colours, else true colour.
/// The same picture gives the same bytes. Throws CResourceException* when libpng fails.
OMBREL_EXPORT std::string EncodePng(Raster const& raster, PngSettings const& settings);
/// Likewise.
OMBREL_EXPORT std::string EncodePng(PackedPicture&& picture);

} // namespace ombrel
