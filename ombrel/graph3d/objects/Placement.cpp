#include "ombrel/graph3d/objects/Placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

/// Half a turn about the x axis.
Placement MakeFlip() { return MakeScaling(1.0, -1.0, -1.0); }

} // namespace

Placement operator*(Placement const& a, Placement const& b)
{
    Placement product {};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t k = 0; k < 4; ++k)
                product[4 * column + row] += a[4 * k + row] * b[4 * column + k];
        }
    }
    return product;
}

Placement MakeScaling(double sx, double sy, double sz) { return { sx, 0, 0, 0, 0, sy, 0, 0, 0, 0, sz, 0, 0, 0, 0, 1 }; }

Placement MakeTranslation(double tx, double ty, double tz)
{
    return { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, tx, ty, tz, 1 };
}

Placement MakeRotation(double ax, double ay, double az)
{
    double const cx = std::cos(ax * kDegree);
    double const sx = std::sin(ax * kDegree);
    double const cy = std::cos(ay * kDegree);
    double const sy = std::sin(ay * kDegree);
    double const cz = std::cos(az * kDegree);
    double const sz = std::sin(az * kDegree);
    Placement const aboutX { 1, 0, 0, 0, 0, cx, sx, 0, 0, -sx, cx, 0, 0, 0, 0, 1 };
    Placement const aboutY { cy, 0, -sy, 0, 0, 1, 0, 0, sy, 0, cy, 0, 0, 0, 0, 1 };
    Placement const aboutZ { cz, sz, 0, 0, -sz, cz, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };
    return aboutZ * aboutY * aboutX;
}

Placement MakeRotation(CVertex const& axis, double angle)
{
    double const length = std::hypot(axis.X(), axis.Y(), axis.Z());
    if (!(length > 0.0) || !std::isfinite(length))
        return kNoPlacement;
    double const x = axis.X() / length;
    double const y = axis.Y() / length;
    double const z = axis.Z() / length;
    double const c = std::cos(angle * kDegree);
    double const s = std::sin(angle * kDegree);
    double const t = 1.0 - c;
    return { t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0, //
        t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0, //
        t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0, //
        0, 0, 0, 1 };
}

Placement MakeAligningRotation(CVertex const& direction)
{
    double const length = std::hypot(direction.X(), direction.Y(), direction.Z());
    if (!(length > 0.0) || !std::isfinite(length))
        return kNoPlacement;
    CVertex const d = direction * (1.0 / length);
    // The cross product of z and d, and their dot product.
    CVertex const axis(-d.Y(), d.X(), 0.0);
    double const cosine = std::clamp(d.Z(), -1.0, 1.0);
    constexpr double kParallel = 1e-5;
    if (axis.X() * axis.X() + axis.Y() * axis.Y() < kParallel * cosine * cosine)
        return cosine > 0.0 ? kNoPlacement : MakeFlip();
    return MakeRotation(axis, std::acos(cosine) / kDegree);
}

CVertex Placed(Placement const& m, CVertex const& v)
{
    return { m[0] * v.X() + m[4] * v.Y() + m[8] * v.Z() + m[12], m[1] * v.X() + m[5] * v.Y() + m[9] * v.Z() + m[13],
        m[2] * v.X() + m[6] * v.Y() + m[10] * v.Z() + m[14] };
}

} // namespace ombrel
