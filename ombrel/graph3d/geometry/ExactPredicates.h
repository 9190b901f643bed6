#pragma once
#include <cmath>

namespace ombrel {

/// A point of single precision.
struct FloatPoint {
    float x = 0.0F;
    float y = 0.0F;
    friend bool operator==(FloatPoint const& a, FloatPoint const& b) = default;
};

/// The difference in double precision, which nearly always holds it without rounding.
inline double Difference(float a, float b) { return static_cast<double>(a) - static_cast<double>(b); }

// The signs of determinants of a few points, always right: they are worked out in double precision first, and again
// without rounding where that cannot tell. (J. R. Shewchuk, "Adaptive Precision Floating-Point Arithmetic and Fast
// Robust Geometric Predicates", Discrete & Computational Geometry 18, 1997, whose error bounds these are.)

/// Half the distance from 1 to the next double.
inline constexpr double kRoundoff = 0x1p-53;

double ExactOrientation(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c);
double ExactInCircle(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c, FloatPoint const& d);
double ExactArcOrder(FloatPoint const& p, FloatPoint const& q, FloatPoint const& s);

/// Above 0 where a, b and c turn left, below where they turn right, 0 on one line. What comes back is twice the area of
/// their triangle but for rounding, unless it is so small that only its sign counts.
inline double Orientation(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c)
{
    double const left = Difference(a.x, c.x) * Difference(b.y, c.y);
    double const right = Difference(a.y, c.y) * Difference(b.x, c.x);
    double const det = left - right;
    constexpr double kBound = (3.0 + 16.0 * kRoundoff) * kRoundoff;
    // A product that is 0 is so without rounding: common on grids.
    if (std::abs(det) > kBound * (std::abs(left) + std::abs(right)) || left == 0.0 || right == 0.0) [[likely]]
        return det;
    return ExactOrientation(a, b, c);
}

/// Above 0 when d lies inside of the circle through a, b and c, which turn left; 0 on it.
inline double InCircle(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c, FloatPoint const& d)
{
    double const ax = Difference(a.x, d.x);
    double const ay = Difference(a.y, d.y);
    double const bx = Difference(b.x, d.x);
    double const by = Difference(b.y, d.y);
    double const cx = Difference(c.x, d.x);
    double const cy = Difference(c.y, d.y);
    double const aa = ax * ax + ay * ay;
    double const bb = bx * bx + by * by;
    double const cc = cx * cx + cy * cy;
    double const det = aa * (bx * cy - cx * by) + bb * (cx * ay - ax * cy) + cc * (ax * by - bx * ay);
    double const size = aa * (std::abs(bx * cy) + std::abs(cx * by)) + bb * (std::abs(cx * ay) + std::abs(ax * cy))
        + cc * (std::abs(ax * by) + std::abs(bx * ay));
    constexpr double kBound = (10.0 + 96.0 * kRoundoff) * kRoundoff;
    if (std::abs(det) > kBound * size) [[likely]]
        return det;
    return ExactInCircle(a, b, c, d);
}

/// Which of the parabolas with the foci p and q and a horizontal directrix through s, which lies above both, is the
/// higher one at the x of s: above 0 for that of q, 0 when they meet there.
inline double ArcOrder(FloatPoint const& p, FloatPoint const& q, FloatPoint const& s)
{
    double const px = Difference(p.x, s.x);
    double const py = Difference(p.y, s.y);
    double const qx = Difference(q.x, s.x);
    double const qy = Difference(q.y, s.y);
    double const left = (qx * qx + qy * qy) * py;
    double const right = (px * px + py * py) * qy;
    double const det = left - right;
    constexpr double kBound = 10.0 * kRoundoff;
    if (std::abs(det) > kBound * (std::abs(left) + std::abs(right))) [[likely]]
        return det;
    return ExactArcOrder(p, q, s);
}

} // namespace ombrel
