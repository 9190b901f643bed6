#pragma once
#include "ombrel/graph3d/geometry/ExactPredicates.h"

#include <cstdint>
#include <memory_resource>
#include <span>
#include <vector>

namespace ombrel {

/// The points that a sweep meets, in its order: by y, then by x.
struct DelaunaySites {
    explicit DelaunaySites(std::pmr::memory_resource* memory)
        : points(memory)
        , indices(memory)
        , cells(memory)
    {
    }
    std::pmr::vector<FloatPoint> points;
    /// What the caller knows each by.
    std::pmr::vector<std::uint32_t> indices;
    /// Where each stands among all by x: equal shares of the points, 0 … numCells − 1 from left to right.
    std::pmr::vector<std::uint16_t> cells;
    std::uint32_t numCells = 1;
};

/// Rounds points to single precision, leaves out those that are not finite and all but the first of equal ones, and
/// sorts the others.
void SortSites(std::span<double const> x, std::span<double const> y, DelaunaySites& sites);

} // namespace ombrel
