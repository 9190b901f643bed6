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

/// A normal a triangle (CVUtils::NormalVector of its corners in order), of length 1, or all 0 where it has no area.
std::vector<std::array<float, 3>> MakeFaceNormals(
    std::span<TriangleCorners const> triangles, std::span<std::array<double, 3> const> places);
/// A normal a point: the average, of length 1, of the normals of the triangles that use it; all 0 where they cancel out
/// or there are none.
std::vector<std::array<float, 3>> AverageFaceNormals(std::span<TriangleCorners const> triangles,
    std::span<std::array<float, 3> const> faceNormals, std::size_t numPoints);

/// The sides of the triangles, each once however many have it: from the smaller index to the greater one, rising.
std::vector<std::array<int, 2>> FindEdges(std::span<TriangleCorners const> triangles);

/// The triangles, each as its index, in an order that draws faster: a software renderer finds most corners among those
/// that it has computed for the triangles before. They go up along y (as they must already do) in strips of equal
/// shares of the points, whose x are given.
std::vector<std::uint32_t> OrderForDrawing(std::span<TriangleCorners const> triangles, std::span<double const> x);

} // namespace ombrel
