#pragma once
#include "ombrel/graph3d/geometry/ExactPredicates.h"

#include <array>
#include <memory_resource>
#include <span>
#include <vector>

namespace ombrel {

/// Makes a triangulation Delaunay by exchanging the diagonals of quadrilaterals where the other one is right. Triangles
/// are indices of points and turn right; they fit together and cover a convex area.
/// (C. L. Lawson, "Software for C¹ Surface Interpolation", Mathematical Software III, 1977.)
void RepairDelaunay(std::span<FloatPoint const> points, std::vector<std::array<int, 3>>& triangles,
    std::pmr::memory_resource* memory = std::pmr::get_default_resource());

} // namespace ombrel
