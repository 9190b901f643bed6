#pragma once
#include <array>
#include <memory_resource>
#include <span>
#include <vector>

namespace ombrel {

/// The Delaunay triangulation of points in the plane: triangles between neighbouring points that cover their convex
/// hull, with no point inside of the circle through the corners of any of them.
///
/// Points are taken in single precision; of those that are equal then, only the first takes part, as do none that are
/// not finite. Each triangle is three indices of points, turning right (clockwise where y points up); triangles come in
/// the order of growing y in which their circles are left behind. Four points and more on one circle may be divided in
/// any of the ways that there are. Fewer than three points, and points on one line, have no triangles.
/// Throws std::invalid_argument unless there are as many y as x and no more than an int can count. When memory runs
/// out, a line that says so goes to the standard error stream, and std::bad_alloc is thrown; the working memory is
/// taken from the resource.
///
/// The method is the sweep of S. Fortune, "A Sweepline Algorithm for Voronoi Diagrams", Algorithmica 2, 1987.
std::vector<std::array<int, 3>> TriangulateDelaunay(std::span<double const> x, std::span<double const> y,
    std::pmr::memory_resource* memory = std::pmr::get_default_resource());

} // namespace ombrel
