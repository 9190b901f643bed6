#pragma once
#include "ombrel/graph3d/meshes/ElementShape.h"
#include "ombrel/platform/framework/Types.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace ombrel {

class CTableData;

/// What stands for a node that is not in the node set.
inline constexpr std::uint32_t kNoColumn = 0xFFFFFFFF;

/// The nodes' coordinates, all of them finite where an element uses them.
struct NodePlaces {
    std::span<double const> x;
    std::span<double const> y;
    std::span<double const> z;
    /// Those that a transform has made; empty where the table's own will do.
    std::vector<double> own;

    std::size_t GetSize() const { return x.size(); }
};
/// Of a table of three rows; of any other there are none. The table must stay while they are used.
NodePlaces GetNodePlaces(CTableData const& points);
/// Each taken through transform(x, y, z), which changes it in place.
template <typename Transform> NodePlaces TransformPlaces(NodePlaces const& places, Transform const& transform)
{
    std::size_t const n = places.GetSize();
    NodePlaces moved;
    moved.own.resize(3 * n);
    double* const to = moved.own.data();
    for (std::size_t i = 0; i < n; ++i) {
        double x = places.x[i];
        double y = places.y[i];
        double z = places.z[i];
        transform(x, y, z);
        to[i] = x;
        to[n + i] = y;
        to[2 * n + i] = z;
    }
    moved.x = { to, n };
    moved.y = { to + n, n };
    moved.z = { to + 2 * n, n };
    return moved;
}

/// The elements of a patch, their nodes by column of the node set's tables.
struct MeshElements {
    /// Null for polygons.
    ElementShape const* shape = nullptr;
    std::size_t count = 0;
    /// Of the node set that they were made for: columns lie below.
    std::size_t numNodes = 0;
    /// Element after element.
    std::vector<std::uint32_t> columns;
    /// Of polygons: where each starts, and the end of the last one.
    std::vector<std::uint32_t> starts;

    /// Empty for an element with a node that is unknown or has no place: it is not drawn.
    std::span<std::uint32_t const> NodesOf(std::size_t element) const
    {
        std::size_t const first = shape ? element * shape->numNodes : starts[element];
        std::size_t const end = shape ? first + shape->numNodes : starts[element + 1];
        if (first == end || columns[first] == kNoColumn)
            return {};
        return { columns.data() + first, end - first };
    }
};

/// Flags the faces of solid elements that are seen, a byte each, element by element: those that no other element left
/// in shares, whatever its corners' order. isLeftOut has a byte an element, 0 for those that count, or is empty. The
/// corners are compared as they are, so that no faces are taken for each other.
std::vector<BYTE> FindOuterFaces(MeshElements const& elements, std::span<BYTE const> isLeftOut);

/// Gives take(a, b) the edges of all elements that are not left out, each once: two columns.
void ForEachEdge(MeshElements const& elements, std::span<BYTE const> isLeftOut,
    std::function<void(std::uint32_t a, std::uint32_t b)> const& take);

} // namespace ombrel
