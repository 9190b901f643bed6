#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <vector>

namespace ombrel {

/// Device corners of a polygon that is filled. Of those that follow each other in one pixel column only the first and
/// the last are kept: an upright edge bounds no pixel that its ends do not.
class PolygonPath {
public:
    void Add(CPoint p)
    {
        std::size_t const n = m_points.size();
        if (n >= 2 && m_points[n - 1].x == p.x && m_points[n - 2].x == p.x)
            m_points.pop_back();
        m_points.push_back(p);
    }
    std::vector<CPoint> const& Points() const { return m_points; }

private:
    std::vector<CPoint> m_points;
};

} // namespace ombrel
