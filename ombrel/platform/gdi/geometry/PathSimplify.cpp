#include "ombrel/platform/gdi/geometry/PathSimplify.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

struct Vector {
    double x = 0.0;
    double y = 0.0;
};

Vector Between(CPoint from, CPoint to)
{
    return { static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y };
}

double Cross(Vector a, Vector b) { return a.x * b.y - a.y * b.x; }
double Dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y; }
double SquaredLength(Vector v) { return Dot(v, v); }

/// The directions from one kept point that pass all points since within the tolerance: a wedge that gets narrower.
class Wedge {
public:
    explicit Wedge(double tolerance)
        : m_tolerance(tolerance)
    {
    }
    void Start()
    {
        m_bounded = false;
        m_farthest = 0.0;
    }
    /// Whether the segment to a point passes all those included so far. A point nearer than one of them would leave
    /// that one beyond the segment's end.
    bool Allows(Vector to) const
    {
        if (SquaredLength(to) < m_farthest)
            return false;
        if (!m_bounded)
            return true;
        bool const ahead = Dot(m_low, to) > 0.0 || Dot(m_high, to) > 0.0;
        return ahead && Cross(m_low, to) >= 0.0 && Cross(to, m_high) >= 0.0;
    }
    /// From now on segments must pass this point too.
    void Include(Vector to)
    {
        double const squared = SquaredLength(to);
        m_farthest = std::max(m_farthest, squared);
        if (squared <= m_tolerance * m_tolerance)
            return;
        // The tangents from the kept point to the circle of the tolerance round this one.
        // Without a tolerance they are the direction itself, unscaled and so exact.
        double const along = m_tolerance > 0.0 ? std::sqrt(squared - m_tolerance * m_tolerance) : 1.0;
        Vector const low { to.x * along + to.y * m_tolerance, to.y * along - to.x * m_tolerance };
        Vector const high { to.x * along - to.y * m_tolerance, to.y * along + to.x * m_tolerance };
        if (!m_bounded || Cross(m_low, low) > 0.0)
            m_low = low;
        if (!m_bounded || Cross(high, m_high) > 0.0)
            m_high = high;
        m_bounded = true;
    }

private:
    double m_tolerance;
    bool m_bounded = false;
    Vector m_low;
    Vector m_high;
    double m_farthest = 0.0;
};

} // namespace

std::vector<CPoint> SimplifyPath(std::span<CPoint const> points, double tolerance)
{
    std::vector<CPoint> kept;
    if (points.empty())
        return kept;
    kept.push_back(points.front());
    Wedge wedge(std::max(tolerance, 0.0));
    CPoint candidate = points.front();
    for (CPoint const& point : points.subspan(1)) {
        if (point == candidate)
            continue;
        if (!wedge.Allows(Between(kept.back(), point))) {
            kept.push_back(candidate);
            wedge.Start();
        }
        candidate = point;
        wedge.Include(Between(kept.back(), candidate));
    }
    if (points.size() > 1)
        kept.push_back(candidate);
    return kept;
}

} // namespace ombrel
