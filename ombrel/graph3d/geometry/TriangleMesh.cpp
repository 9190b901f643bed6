#include "ombrel/graph3d/geometry/TriangleMesh.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ombrel {

TriangleLists::TriangleLists(std::size_t numPoints, std::span<TriangleCorners const> triangles)
    : m_firsts(numPoints + 2)
    , m_triangles(3 * triangles.size())
{
    // One place late, so that filling the lists leaves every first where it belongs.
    for (TriangleCorners const& corners : triangles) {
        for (int const point : corners)
            ++m_firsts[static_cast<std::size_t>(point) + 2];
    }
    for (std::size_t i = 2; i < m_firsts.size(); ++i)
        m_firsts[i] += m_firsts[i - 1];
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        for (int const point : triangles[t])
            m_triangles[m_firsts[static_cast<std::size_t>(point) + 1]++] = static_cast<std::uint32_t>(t);
    }
}

std::span<std::uint32_t const> TriangleLists::Of(std::size_t point) const
{
    if (point + 1 >= m_firsts.size())
        return {};
    return std::span(m_triangles).subspan(m_firsts[point], m_firsts[point + 1] - m_firsts[point]);
}

std::vector<std::array<float, 3>> MakeFaceNormals(
    std::span<TriangleCorners const> triangles, std::span<std::array<double, 3> const> places)
{
    auto const vertexOf = [&](int point) {
        auto const& [x, y, z] = places[static_cast<std::size_t>(point)];
        return CVertex(x, y, z);
    };
    std::vector<std::array<float, 3>> normals;
    normals.reserve(triangles.size());
    CNormal normal;
    for (auto const& [a, b, c] : triangles) {
        CVUtils::NormalVector(vertexOf(a), vertexOf(b), vertexOf(c), normal);
        normals.push_back(
            { static_cast<float>(normal.X()), static_cast<float>(normal.Y()), static_cast<float>(normal.Z()) });
    }
    return normals;
}

std::vector<std::array<float, 3>> AverageFaceNormals(std::span<TriangleCorners const> triangles,
    std::span<std::array<float, 3> const> faceNormals, std::size_t numPoints)
{
    std::vector<std::array<float, 3>> normals(numPoints);
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        for (int const point : triangles[t]) {
            for (std::size_t k = 0; k < 3; ++k)
                normals[static_cast<std::size_t>(point)][k] += faceNormals[t][k];
        }
    }
    for (auto& [x, y, z] : normals) {
        float const length = std::sqrt(x * x + y * y + z * z);
        if (!(length > 0.0F))
            continue;
        x /= length;
        y /= length;
        z /= length;
    }
    return normals;
}

std::vector<std::array<int, 2>> FindEdges(std::span<TriangleCorners const> triangles)
{
    std::vector<std::array<int, 2>> edges;
    edges.reserve(3 * triangles.size());
    for (auto const& [a, b, c] : triangles) {
        for (auto const& [from, to] : { std::pair(a, b), { b, c }, { c, a } })
            edges.push_back({ std::min(from, to), std::max(from, to) });
    }
    std::ranges::sort(edges);
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return edges;
}

std::vector<std::uint32_t> OrderForDrawing(std::span<TriangleCorners const> triangles, std::span<double const> x)
{
    // So many points across a strip.
    constexpr double kAcross = 24.0;
    // Of the triangles, enough to tell where shares end.
    constexpr std::size_t kSamples = 1 << 14;
    auto const xOf = [&](TriangleCorners const& corners) { return x[static_cast<std::size_t>(corners[0])]; };
    std::vector<double> samples;
    for (std::size_t t = 0; t < triangles.size(); t += 1 + triangles.size() / kSamples)
        samples.push_back(xOf(triangles[t]));
    std::ranges::sort(samples);
    auto const numStrips = static_cast<std::size_t>(std::sqrt(static_cast<double>(x.size())) / kAcross) + 1;
    std::vector<double> ends;
    for (std::size_t s = 1; s < numStrips && !samples.empty(); ++s)
        ends.push_back(samples[s * samples.size() / numStrips]);

    std::vector<std::uint32_t> strips(triangles.size());
    std::vector<std::uint32_t> places(numStrips + 1);
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        auto const end = std::ranges::upper_bound(ends, xOf(triangles[t]));
        strips[t] = static_cast<std::uint32_t>(end - ends.begin());
        ++places[strips[t] + 1];
    }
    for (std::size_t s = 1; s < places.size(); ++s)
        places[s] += places[s - 1];
    std::vector<std::uint32_t> order(triangles.size());
    for (std::size_t t = 0; t < triangles.size(); ++t)
        order[places[strips[t]]++] = static_cast<std::uint32_t>(t);
    return order;
}

} // namespace ombrel
