#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/graph3d/ContourLevels.h"
#include "ombrel/platform/framework/Types.h"

#include <cstdint>

namespace ombrel {

/// Lines over a surface, along its grid, every so many cells.
struct WireframeSettings {
    int on = 0;
    /// Only stored.
    int emissionOn = 0;
    /// 0: the colour; others: each node's colour by its value (1) in the wireframe's colour map.
    std::int16_t colourDescription = 0;
    /// Blocks along y and x as last refreshed, and what coarse mesh mode brings back.
    std::int16_t rows = 25;
    std::int16_t cols = 25;
    std::int16_t savedRows = 25;
    std::int16_t savedCols = 25;
    /// Cells in a block along x and y, about.
    std::int16_t xFac = 4;
    std::int16_t yFac = 4;
    Colour3 colour;
    int mode = 0;
};

/// Bands and lines of equal value.
struct ContourSettings {
    int on = 0;
    int mode = 0;
    int levelMode = 0;
    int numBands = 6;
    double ref = 0.0;
    /// Must be above 0 where it is used.
    double spacing = 0.0;
    COLORREF colour = 0;
    /// 0: lines in the colour; 1: a colour a level.
    int colourMode = 0;
    /// Of the lines' width.
    double scaleFac = 1.0;

    LevelSettings GetLevels(CDoubleArray const& arbitrary) const
    {
        return { levelMode, numBands, ref, spacing,
            { arbitrary.GetData(), static_cast<std::size_t>(arbitrary.GetSize()) } };
    }
};

/// How a second table colours the surface: where its first value lies, and its steps.
struct ValueTableSettings {
    int use = 0;
    double xMin = 0.0;
    double yMin = 0.0;
    double xStep = 1.0;
    double yStep = 1.0;
};

/// How an image lies over the surface.
struct SurfaceTextureSettings {
    int use = 0;
    /// Cells beyond the image stay without it; otherwise it repeats.
    int clamp = 1;
    /// Only stored, both.
    int useMeshRanges = 1;
    int pin = 1;
};

} // namespace ombrel
