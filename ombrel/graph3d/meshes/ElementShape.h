#pragma once
#include "ombrel/graph3d/MeshElementType.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ombrel {

/// Elements with a fixed number of nodes: which of these are the corners of their faces, each once around.
struct ElementShape {
    std::size_t numNodes;
    std::size_t numFaces;
    std::size_t cornersOfFace;
    std::array<std::array<std::uint8_t, 4>, 6> faces;
    std::size_t numEdges;
    std::array<std::array<std::uint8_t, 2>, 12> edges;

    /// Whether faces may lie between elements, where nobody sees them.
    bool IsSolid() const { return numFaces > 1; }
};

inline constexpr ElementShape kTriangleShape { 3, 1, 3, { { { 0, 1, 2 } } }, 3, { { { 0, 1 }, { 1, 2 }, { 2, 0 } } } };
inline constexpr ElementShape kQuadShape { 4, 1, 4, { { { 0, 1, 2, 3 } } }, 4,
    { { { 0, 1 }, { 1, 2 }, { 2, 3 }, { 3, 0 } } } };
inline constexpr ElementShape kBrickShape { 8, 6, 4,
    { { { 0, 1, 2, 3 }, { 4, 5, 6, 7 }, { 4, 5, 1, 0 }, { 7, 6, 2, 3 }, { 5, 6, 2, 1 }, { 4, 7, 3, 0 } } }, 12,
    { { { 0, 1 }, { 1, 2 }, { 2, 3 }, { 3, 0 }, { 4, 5 }, { 5, 6 }, { 6, 7 }, { 7, 4 }, { 0, 4 }, { 1, 5 }, { 2, 6 },
        { 3, 7 } } } };
inline constexpr ElementShape kTetrahedronShape { 4, 4, 3, { { { 0, 1, 2 }, { 0, 3, 1 }, { 1, 3, 2 }, { 2, 3, 0 } } },
    6, { { { 0, 1 }, { 0, 2 }, { 0, 3 }, { 1, 2 }, { 1, 3 }, { 2, 3 } } } };

/// Null for polygons, and for numbers that are no element type.
inline ElementShape const* GetElementShape(MeshElementType type)
{
    switch (type) {
    case etTriangle:
        return &kTriangleShape;
    case etQuad:
        return &kQuadShape;
    case etBrick:
        return &kBrickShape;
    case etTetrahedron:
        return &kTetrahedronShape;
    case etPolygon:
        break;
    }
    return nullptr;
}

} // namespace ombrel
