#pragma once
#include <algorithm>
#include <cmath>

namespace ombrel {

/// Where the viewer stands, in the terms that walls, axes and labels are placed by. Angles that are no numbers count
/// as 0.
struct ViewDirection {
    ViewDirection(double azimuthDegrees, double elevationDegrees)
        : azimuth(std::isfinite(azimuthDegrees) ? std::fmod(azimuthDegrees, 360.0) : 0.0)
        , elevation(std::isfinite(elevationDegrees) ? std::fmod(elevationDegrees, 360.0) : 0.0)
    {
        if (azimuth < 0.0)
            azimuth += 360.0;
        quadrant = std::min(static_cast<int>(azimuth / 90.0), 3);
        octant = std::min(static_cast<int>(azimuth / 45.0), 7);
        level = elevation >= 90.0 ? 1 : 0;
    }

    /// Degrees, 0 … 360, and from the zenith.
    double azimuth;
    double elevation;
    int quadrant = 0;
    int octant = 0;
    /// 1 for a view from below.
    int level = 0;
};

} // namespace ombrel
