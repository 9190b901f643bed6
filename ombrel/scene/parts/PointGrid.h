#pragma once
#include "ombrel/scene/Heights.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace ombrel {

/// The coordinates of points in any order, as many x as y and z.
struct GridPoints {
    std::span<double const> x;
    std::span<double const> y;
    std::span<double const> z;
};

/// Why points form no grid.
struct PointFault {
    /// Of the point at fault; the number of points when it is missing.
    std::size_t point = 0;
    std::string text;
};

/// The grid that the points form: one at each crossing of evenly spaced columns and rows, up to a fiftieth of a step.
/// Points whose x or y is NaN are left out; a height may be NaN. placeOf tells messages where a point stands.
std::variant<Grid, PointFault> GridOfPoints(
    GridPoints const& points, std::function<std::string(std::size_t)> const& placeOf);

/// The evenly spaced coordinates that the values are, ascending or descending, up to a fiftieth of a step; empty with
/// a reason in fault when they are not.
std::optional<GridAxis> EvenAxis(std::span<double const> values, std::string& fault);

} // namespace ombrel
