#pragma once
#include "ombrel/graph3d/3DCurve.h"

#include <array>

namespace ombrel {

/// How the parameters x and y of a grid and a value there make a place in space. Angles are degrees.
///
/// Cartesian: (x, y, v), or with a radial grid x is the radius and y the angle of (x, y). Polar: x is the angle about
/// the z axis, y the angle from it, v the radius. Cylindrical: x is the angle, v the radius, y the height.
/// Geographical: x is a longitude, y a latitude, v the radius; a latitude of −90 lies on the positive z axis.
class GridCoordinates {
public:
    GridCoordinates(C3DCurve::CurveType type, bool radialGrid)
        : m_type(type)
        , m_radialGrid(radialGrid)
    {
    }
    /// Whether places have the parameters as their x and y, and the value as their z.
    bool AreParameters() const { return m_type == C3DCurve::ctCartesian && !m_radialGrid; }
    /// One parameter with what is needed of it, so that a row or column of nodes shares it.
    struct Parameter {
        double value = 0.0;
        double cos = 1.0;
        double sin = 0.0;
    };
    Parameter AlongX(double x) const;
    Parameter AlongY(double y) const;
    std::array<double, 3> At(Parameter const& x, Parameter const& y, double v) const;
    std::array<double, 3> At(double x, double y, double v) const { return At(AlongX(x), AlongY(y), v); }

private:
    C3DCurve::CurveType m_type;
    bool m_radialGrid;
};

} // namespace ombrel
