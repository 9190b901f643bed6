#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ombrel::host {

/// Evenly spaced coordinates of a grid's columns or rows.
struct GridAxis {
    double first = 0.0;
    double last = 1.0;
    /// At least 2.
    std::size_t count = 2;
    std::string title;

    double Step() const { return (last - first) / static_cast<double>(count - 1); }
    double At(std::size_t index) const { return first + static_cast<double>(index) * Step(); }
};

/// Heights over a grid.
struct Grid {
    GridAxis x;
    GridAxis y;
    std::string title;
    /// Row by row from the first y, x.count heights each; NaN is a gap.
    std::vector<double> heights;
};

} // namespace ombrel::host
