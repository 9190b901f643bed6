#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace ombrel {

/// Open figures of straight segments: figure i runs from starts[i] to the next start; no starts is one figure of all.
struct Figures {
    std::span<CPoint const> points;
    std::span<std::size_t const> starts;

    std::size_t Count() const { return starts.empty() ? 1 : starts.size(); }
    /// The points of figure i; none where the starts do not ascend or lie beyond the points.
    std::span<CPoint const> PointsOf(std::size_t i) const
    {
        if (starts.empty())
            return points;
        std::size_t const begin = std::min(starts[i], points.size());
        std::size_t const end = i + 1 < starts.size() ? std::min(starts[i + 1], points.size()) : points.size();
        return points.subspan(begin, end > begin ? end - begin : 0);
    }
};

} // namespace ombrel
