#include "ombrel/graph3d/geometry/GridCoordinates.h"

#include <cmath>
#include <numbers>

namespace ombrel {
namespace {

GridCoordinates::Parameter Angle(double value, double degrees)
{
    double const radians = degrees * (std::numbers::pi / 180.0);
    return { value, std::cos(radians), std::sin(radians) };
}

} // namespace

GridCoordinates::Parameter GridCoordinates::AlongX(double x) const
{
    switch (m_type) {
    case C3DCurve::ctPolar:
    case C3DCurve::ctCylindrical:
        return Angle(x, x);
    case C3DCurve::ctGeographical:
        return Angle(x, x + 180.0);
    default:
        return { x, 1.0, 0.0 };
    }
}

GridCoordinates::Parameter GridCoordinates::AlongY(double y) const
{
    switch (m_type) {
    case C3DCurve::ctPolar:
        return Angle(y, y);
    case C3DCurve::ctGeographical:
        return Angle(y, y + 90.0);
    case C3DCurve::ctCylindrical:
        return { y, 1.0, 0.0 };
    default:
        return m_radialGrid ? Angle(y, y) : Parameter { y, 1.0, 0.0 };
    }
}

std::array<double, 3> GridCoordinates::At(Parameter const& x, Parameter const& y, double v) const
{
    switch (m_type) {
    case C3DCurve::ctPolar:
    case C3DCurve::ctGeographical:
        return { v * x.cos * y.sin, v * x.sin * y.sin, v * y.cos };
    case C3DCurve::ctCylindrical:
        return { v * x.cos, v * x.sin, y.value };
    default:
        if (m_radialGrid)
            return { x.value * y.cos, x.value * y.sin, v };
        return { x.value, y.value, v };
    }
}

} // namespace ombrel
