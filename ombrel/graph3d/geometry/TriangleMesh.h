#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

using TriangleCorners = std::array<int, 3>;

/// Which triangles use a point, for all points: their indices, rising.
class TriangleLists {
public:
    TriangleLists() = default;
    TriangleLists(std::size_t numPoints, std::span<TriangleCorners const> triangles);
    /// Empty for a point without triangles, and before the lists are built.
    std::span<std::uint32_t const> Of(std::size_t point) const;

private:
    std::vector<std::uint32_t> m_firsts;
    std::vector<std::uint32_t> m_triangles;
};

/// The triangles, each as its index, in an order that draws faster: a software renderer finds most corners among those
/// that it has computed for the triangles before. They go up along y (as they must already do) in strips of equal
/// shares of the points, whose x are given.
std::vector<std::uint32_t> OrderForDrawing(std::span<TriangleCorners const> triangles, std::span<double const> x);

} // namespace ombrel
