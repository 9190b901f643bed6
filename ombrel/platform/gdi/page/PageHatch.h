#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <vector>

namespace ombrel {

/// A corner of a hatch line, in eighths of the cell, x right and y down.
struct HatchCorner {
    double x = 0.0;
    double y = 0.0;
};
using HatchCorners = std::vector<HatchCorner>;

/// The lines of a square of hatch cells as polygons of one turning sense: runs of pixels, and smooth bands for
/// diagonals. The style lies within 0 … 52.
std::vector<HatchCorners> HatchLines(int style, int cells);
/// Whether the style's lines go on from cell to cell, so that few cover a large area.
bool HasLongLines(int style);
/// The same in device pixels over at least a box, when a pixel of the pattern has so many.
std::vector<HatchCorners> HatchLinesOver(int style, CRect const& box, double scale);

} // namespace ombrel
