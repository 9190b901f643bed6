#pragma once
#include "ombrel/platform/gdi/raster/CoverageMask.h"

namespace ombrel {

/// Draws pixels, in order, with a device context's pen: its dot stamped on each of them, the pattern when it is thin.
void DrawPixels(RasterCanvas const& canvas, CoverageMask& mask, std::span<CPoint const> pixels, LineStyle const& line);

/// Draws lines with a device context's pen of width 2 and more: its round dot moved along them, both ends included.
void DrawWideLines(
    RasterCanvas const& canvas, CoverageMask& mask, std::span<CPoint const> points, LineStyle const& line);

} // namespace ombrel
