#include "ombrel/graph3d/meshes/MeshElements.h"
#include "ombrel/model/TableData.h"

#include <algorithm>
#include <utility>

namespace ombrel {
namespace {

/// The corners of a face, ascending: equal for the same face of two elements. The fourth of a triangle is kNoColumn.
using FaceKey = std::array<std::uint32_t, 4>;

FaceKey KeyOf(MeshElements const& elements, std::uint32_t face)
{
    ElementShape const& shape = *elements.shape;
    std::uint32_t const* const nodes = elements.columns.data() + face / shape.numFaces * shape.numNodes;
    auto const& corners = shape.faces[face % shape.numFaces];
    FaceKey key { nodes[corners[0]], nodes[corners[1]], nodes[corners[2]], kNoColumn };
    if (shape.cornersOfFace == 4)
        key[3] = nodes[corners[3]];
    auto const order = [&key](std::size_t i, std::size_t j) {
        std::uint32_t const low = std::min(key[i], key[j]);
        key[j] = std::max(key[i], key[j]);
        key[i] = low;
    };
    order(0, 1);
    order(2, 3);
    order(0, 2);
    order(1, 3);
    order(1, 2);
    return key;
}

bool IsIn(MeshElements const& elements, std::size_t e, std::span<BYTE const> isLeftOut)
{
    return (isLeftOut.empty() || isLeftOut[e] == 0) && elements.columns[e * elements.shape->numNodes] != kNoColumn;
}

/// Items gathered by a node, in order of the nodes and then of the items. give(add) is called twice, and must call
/// add(node, item) alike both times.
struct ByNode {
    /// Where the items of each node start, and the end of the last ones.
    std::vector<std::uint32_t> starts;
    std::vector<std::uint32_t> items;

    template <typename Give> ByNode(std::size_t numNodes, Give const& give)
        : starts(numNodes + 1)
    {
        give([this](std::uint32_t node, std::uint32_t) { ++starts[node]; });
        std::uint32_t sum = 0;
        for (std::uint32_t& start : starts)
            sum += std::exchange(start, sum);
        items.resize(sum);
        give([this](std::uint32_t node, std::uint32_t item) { items[starts[node]++] = item; });
        // Each start has moved to its end.
        starts.insert(starts.begin(), 0);
        starts.pop_back();
    }
    std::span<std::uint32_t> Of(std::size_t node)
    {
        return { items.data() + starts[node], items.data() + starts[node + 1] };
    }
};

/// Clears the flags of faces among these that occur more than once.
void ClearShared(std::vector<std::pair<FaceKey, std::uint32_t>>& faces, std::vector<BYTE>& flags)
{
    constexpr std::size_t kFewFaces = 24;
    if (faces.size() <= kFewFaces) {
        for (std::size_t i = 1; i < faces.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (faces[i].first == faces[j].first)
                    flags[faces[i].second] = flags[faces[j].second] = 0;
            }
        }
        return;
    }
    // A node in the middle of thousands of elements.
    std::sort(faces.begin(), faces.end());
    for (std::size_t i = 1; i < faces.size(); ++i) {
        if (faces[i].first == faces[i - 1].first)
            flags[faces[i].second] = flags[faces[i - 1].second] = 0;
    }
}

} // namespace

NodePlaces GetNodePlaces(CTableData const& points)
{
    NodePlaces places;
    if (points.GetNumRows() != 3)
        return places;
    auto const n = static_cast<std::size_t>(points.GetNumCols());
    places.x = { points.GetRow(0), n };
    places.y = { points.GetRow(1), n };
    places.z = { points.GetRow(2), n };
    return places;
}

std::vector<BYTE> FindOuterFaces(MeshElements const& elements, std::span<BYTE const> isLeftOut)
{
    std::size_t const numFaces = elements.shape->numFaces;
    std::vector<BYTE> flags(elements.count * numFaces);
    // Faces are the same only if their first corners are, so those of one such corner are looked at together: they
    // are few, and their elements lie near each other in memory.
    ByNode byFirst(elements.numNodes, [&](auto const& add) {
        for (std::size_t e = 0; e < elements.count; ++e) {
            if (!IsIn(elements, e, isLeftOut))
                continue;
            std::uint32_t const* const nodes = elements.columns.data() + e * elements.shape->numNodes;
            for (std::size_t f = 0; f < numFaces; ++f) {
                auto const& corners = elements.shape->faces[f];
                std::uint32_t first = std::min({ nodes[corners[0]], nodes[corners[1]], nodes[corners[2]] });
                if (elements.shape->cornersOfFace == 4)
                    first = std::min(first, nodes[corners[3]]);
                add(first, static_cast<std::uint32_t>(e * numFaces + f));
            }
        }
    });
    for (std::uint32_t const face : byFirst.items)
        flags[face] = 1;
    std::vector<std::pair<FaceKey, std::uint32_t>> faces;
    for (std::size_t node = 0; node < elements.numNodes; ++node) {
        faces.clear();
        for (std::uint32_t const face : byFirst.Of(node))
            faces.emplace_back(KeyOf(elements, face), face);
        ClearShared(faces, flags);
    }
    return flags;
}

void ForEachEdge(MeshElements const& elements, std::span<BYTE const> isLeftOut,
    std::function<void(std::uint32_t a, std::uint32_t b)> const& take)
{
    auto const forEachLine = [&](auto const& add) {
        for (std::size_t e = 0; e < elements.count; ++e) {
            if (!isLeftOut.empty() && isLeftOut[e] != 0)
                continue;
            std::span<std::uint32_t const> const nodes = elements.NodesOf(e);
            if (nodes.empty())
                continue;
            if (!elements.shape) {
                for (std::size_t i = 0; i < nodes.size(); ++i)
                    add(nodes[i], nodes[(i + 1) % nodes.size()]);
                continue;
            }
            for (auto const& [a, b] : std::span(elements.shape->edges).first(elements.shape->numEdges))
                add(nodes[a], nodes[b]);
        }
    };
    // The lines of so many nodes at a time, so that those of a large mesh need not be held all at once.
    constexpr std::size_t kNodes = std::size_t { 1 } << 18;
    for (std::size_t firstNode = 0; firstNode < elements.numNodes; firstNode += kNodes) {
        std::size_t const count = std::min(kNodes, elements.numNodes - firstNode);
        ByNode byFirst(count, [&](auto const& add) {
            forEachLine([&](std::uint32_t a, std::uint32_t b) {
                std::size_t const first = std::min(a, b) - firstNode;
                if (std::min(a, b) >= firstNode && first < count)
                    add(static_cast<std::uint32_t>(first), std::max(a, b));
            });
        });
        for (std::size_t node = 0; node < count; ++node) {
            std::span<std::uint32_t> const ends = byFirst.Of(node);
            std::sort(ends.begin(), ends.end());
            auto const last = std::unique(ends.begin(), ends.end());
            for (auto end = ends.begin(); end != last; ++end)
                take(static_cast<std::uint32_t>(firstNode + node), *end);
        }
    }
}

} // namespace ombrel
