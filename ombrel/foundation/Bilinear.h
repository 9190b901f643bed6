#pragma once

namespace ombrel {

/// The value at fractions fx and fy of a cell with the values z0 at its corner (0, 0), z1 at (1, 0), z2 at (1, 1) and
/// z3 at (0, 1); see CVUtils::InterpolateBilinear, which is the same. Here for loops over pixels.
inline double Bilinear(double z0, double z1, double z2, double z3, double fx, double fy)
{
    return (1.0 - fx) * (1.0 - fy) * z0 + fx * (1.0 - fy) * z1 + fx * fy * z2 + (1.0 - fx) * fy * z3;
}

} // namespace ombrel
