#pragma once
#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {

/// Distance of the eye from the middle of a scene's box, in box units.
inline double EyeDistance(double perspective) { return 10.5 - 9.0 * perspective; }

/// The angle, in radians, from the bottom to the top of a 3D graph of that shape (width by height), as C3DGraph sees
/// it.
inline double ViewAngle(double perspective, double zoom, double shape)
{
    constexpr double kWidest = 175.0 * std::numbers::pi / 180.0;
    double const angle = 2.6 * std::atan(0.7 / EyeDistance(perspective)) / zoom;
    return std::min(angle / std::min(shape, 1.0), kWidest);
}

} // namespace ombrel
