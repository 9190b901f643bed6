#pragma once

namespace ombrel {

/// The six faces of the data box, which spans −1/2 … 1/2 along each axis before it is scaled.
enum WallType : int {
    wtXMin = 0,
    wtXMax = 1,
    wtYMin = 2,
    wtYMax = 3,
    /// The floor and the ceiling.
    wtZMin = 4,
    wtZMax = 5,
};

/// The walls that lie at the back when the viewer stands in a quadrant, 0 … 3, above (level 0) or below the box.
constexpr void BackWalls(int quadrant, int level, WallType& x, WallType& y, WallType& z)
{
    x = quadrant == 1 || quadrant == 2 ? wtXMax : wtXMin;
    y = quadrant == 2 || quadrant == 3 ? wtYMax : wtYMin;
    z = level == 1 ? wtZMax : wtZMin;
}

} // namespace ombrel
