#pragma once
#include "ombrel/graph3d/ContourLines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace ombrel {

/// The smallest and largest of many values, in independent lanes, which compilers turn into vectors.
struct ValueLanes {
    static constexpr std::size_t kCount = 8;
    std::array<double, kCount> min;
    std::array<double, kCount> max;
    /// Becomes not a number where a value is infinite or not a number.
    std::array<double, kCount> spoilt;

    ValueLanes()
    {
        min.fill(std::numeric_limits<double>::infinity());
        max.fill(-std::numeric_limits<double>::infinity());
        spoilt.fill(0.0);
    }
    void Take(double const* v, double const* end)
    {
        ValueLanes lanes = *this;
        auto const take = [&lanes](std::size_t lane, double value) {
            lanes.min[lane] = value < lanes.min[lane] ? value : lanes.min[lane];
            lanes.max[lane] = value > lanes.max[lane] ? value : lanes.max[lane];
            lanes.spoilt[lane] += value * 0.0;
        };
        for (; end - v >= static_cast<std::ptrdiff_t>(kCount); v += kCount) {
            for (std::size_t lane = 0; lane < kCount; ++lane)
                take(lane, v[lane]);
        }
        for (; v != end; ++v)
            take(0, *v);
        *this = lanes;
    }
    double Min() const { return std::ranges::min(min); }
    double Max() const { return std::ranges::max(max); }
    /// Whether no value was missing: Min and Max are those of all of them.
    bool ArePlain() const
    {
        return std::ranges::all_of(spoilt, [](double s) { return s == 0.0; }) && Max() <= kGridGap;
    }
};

} // namespace ombrel
