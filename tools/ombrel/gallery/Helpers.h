#pragma once
#include "ombrel/scene/Heights.h"

#include <algorithm>
#include <vector>

// What the pictures of the gallery share: the code that they are shown with is all there is besides.

namespace ombrel::host {

/// So many numbers, evenly spread from one to the other.
inline std::vector<double> Spread(double from, double to, std::size_t n)
{
    std::vector<double> numbers(n);
    for (std::size_t i = 0; i < n; ++i)
        numbers[i] = from + (to - from) * static_cast<double>(i) / static_cast<double>(n - 1);
    return numbers;
}

/// The function's value at each of the numbers.
template <typename Function> std::vector<double> Each(std::vector<double> const& numbers, Function const& f)
{
    std::vector<double> values(numbers.size());
    std::transform(numbers.begin(), numbers.end(), values.begin(), f);
    return values;
}

/// Heights f(x, y) over a grid, at all of these places, which are evenly spread.
template <typename Function> Grid GridOf(std::vector<double> const& x, std::vector<double> const& y, Function const& f)
{
    Grid grid { { x.front(), x.back(), x.size(), {} }, { y.front(), y.back(), y.size(), {} }, {}, {} };
    for (double const up : y) {
        for (double const across : x)
            grid.heights.push_back(f(across, up));
    }
    return grid;
}

} // namespace ombrel::host
