#pragma once
#include "ombrel/colour/ColourMap.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <cstddef>
#include <span>
#include <string>

namespace ombrel {
class CDC;

/// What a sheet shows of a colour map.
struct ColourMapRow {
    std::string name;
    /// Who made the map; stands below the name unless it is empty.
    std::string authors;
    CColourMap map;
};

/// Draws colour maps below each other, so that they can be compared: the colours from end to end, in ten steps, and how
/// light they are seen (CIE 1976 L*, 0 at the bottom of a frame and 100 at its top). Fills the paper, in device pixels;
/// where the rows are too many for its height, they become lower, and names too long for their place are shortened.
OMBREL_EXPORT void DrawColourMapSheet(CDC& dc, CRect const& paper, std::span<ColourMapRow const> rows);

/// The height that so many rows want, at least one, in pixels at 96 to the inch.
OMBREL_EXPORT int ColourMapSheetHeight(std::size_t rows);

} // namespace ombrel
