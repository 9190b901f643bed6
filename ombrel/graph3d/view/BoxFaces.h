#pragma once
#include "ombrel/graph3d/WallType.h"

namespace ombrel {

/// The corners of the data box, in its sides: −1/2 or 1/2 along x, y and z.
inline constexpr double kBoxCorners[8][3] = { { -0.5, -0.5, -0.5 }, { -0.5, -0.5, 0.5 }, { -0.5, 0.5, 0.5 },
    { -0.5, 0.5, -0.5 }, { 0.5, -0.5, -0.5 }, { 0.5, -0.5, 0.5 }, { 0.5, 0.5, 0.5 }, { 0.5, 0.5, -0.5 } };

/// A face of the data box.
struct BoxFace {
    /// Its corners, in drawing order.
    int corners[4];
    /// Which side of the box it is, and so where its normal points: out.
    int sign;
};

/// By WallType.
inline constexpr BoxFace kBoxFaces[6] = { { { 0, 1, 2, 3 }, -1 }, { { 4, 7, 6, 5 }, 1 }, { { 0, 4, 5, 1 }, -1 },
    { { 3, 2, 6, 7 }, 1 }, { { 0, 3, 7, 4 }, -1 }, { { 1, 5, 6, 2 }, 1 } };

} // namespace ombrel
