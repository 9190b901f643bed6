#pragma once
#include "ombrel/foundation/Vertex.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ombrel {

/// In single precision, which decides where the last digits of points of round objects lie.
inline constexpr double kRoundPi = 3.14159265F;

/// The faces of an object between its points, in world coordinates.
struct ObjectMesh {
    /// Either way round; a triangle repeats its third corner.
    using Face = std::array<std::uint32_t, 4>;

    std::vector<CCoord> points;
    std::vector<Face> faces;

    std::uint32_t GetNumPoints() const { return static_cast<std::uint32_t>(points.size()); }
    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) { faces.push_back({ a, b, c, c }); }
    /// The quads between cols × rows points that stand row by row from first on. With isClosed the last column is
    /// followed by the first.
    void AddGrid(std::uint32_t first, std::uint32_t cols, std::uint32_t rows, bool isClosed)
    {
        for (std::uint32_t j = 1; j < rows; ++j) {
            std::uint32_t const below = first + (j - 1) * cols;
            std::uint32_t const above = below + cols;
            for (std::uint32_t i = 0; i < (isClosed ? cols : cols - 1); ++i) {
                std::uint32_t const next = (i + 1) % cols;
                faces.push_back({ above + next, below + next, below + i, above + i });
            }
        }
    }
    /// Triangles around a point, over a closed row of count points.
    void AddFan(std::uint32_t centre, std::uint32_t first, std::uint32_t count)
    {
        for (std::uint32_t i = 0; i < count; ++i)
            AddTriangle(centre, first + i, first + (i + 1) % count);
    }
};

} // namespace ombrel
