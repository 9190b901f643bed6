#pragma once
#include "ombrel/foundation/Vertex.h"

#include <array>
#include <cmath>

namespace ombrel {

/// How the data box shows coordinates along one axis: the axis's range and its length in the box.
struct BoxAxis {
    double min = -10.0;
    double max = 10.0;
    double scale = 1.0;

    double GetViewVal(double v) const { return max != min ? ((v - min) / (max - min) - 0.5) * scale : 0.0; }
    /// What share of the range a difference of coordinates is; never below 0.
    double GetFraction(double difference) const { return max != min ? std::fabs(difference / (max - min)) : 0.0; }
    friend bool operator==(BoxAxis const& a, BoxAxis const& b) = default;
};

/// Those of x, y and z.
using BoxAxes = std::array<BoxAxis, 3>;

/// A place in data units as one in the box.
inline CVertex GetBoxPlace(BoxAxes const& axes, CVertex const& v)
{
    return { axes[0].GetViewVal(v.X()), axes[1].GetViewVal(v.Y()), axes[2].GetViewVal(v.Z()) };
}

} // namespace ombrel
