#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Raster.h"

#include <cstddef>
#include <span>

namespace ombrel {

/// Pictures with more pixels are refused: a small file can claim any number.
inline constexpr std::size_t kMostPngPixels = std::size_t { 1 } << 26;

/// The picture in the bytes of a PNG file, with 32 bits a pixel; where it shows what is behind, that is white. Throws
/// Error of kind Data when the bytes are no whole PNG file or there are too many pixels.
OMBREL_EXPORT Raster DecodePng(std::span<std::byte const> bytes);

} // namespace ombrel
