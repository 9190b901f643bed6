#pragma once
#include <vector>

namespace ombrel {

/// A corner of a hatch line, in eighths of the cell, x right and y down.
struct HatchCorner {
    double x = 0.0;
    double y = 0.0;
};
/// The lines of a square of hatch cells as polygons of one turning sense: runs of pixels, and smooth bands for the
/// three wide diagonal styles. The style lies within 0 … 52.
std::vector<std::vector<HatchCorner>> HatchLines(int style, int cells);

} // namespace ombrel
