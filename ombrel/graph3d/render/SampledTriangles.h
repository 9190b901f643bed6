#pragma once
#include "ombrel/platform/opengl/GLObject.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

/// Draws of many small triangles those that can be seen at all: that cover the centre of a pixel.
///
/// A software renderer takes as long for a triangle between the centres as for one that colours a pixel, and of the
/// triangles of a large surface most lie between them; telling them apart costs a tenth of drawing them. The picture is
/// the same to the bit: a triangle is left out only where OpenGL's rounding of its corners could not bring it to a
/// centre. All functions belong within a draw of the graph.
class SampledTriangles {
public:
    /// Places in box units, of three coordinates, one every so many bytes.
    struct Places {
        float const* first = nullptr;
        std::size_t stride = 0;
        std::size_t count = 0;
    };
    /// How indices make triangles: three each, or a strip.
    enum class Form { List, Strip };

    /// Whether drawing is quicker this way: of many triangles, on a software renderer.
    static bool AreWorthIt(std::size_t triangles);
    /// Picks the triangles for OpenGL's matrices and viewport as they are now.
    void Find(Places const& places, std::span<std::uint32_t const> indices, Form form);
    /// Draws what was found, with the arrays that are bound.
    void Draw();
    /// Of what was found: three indices a triangle, in the order in which OpenGL takes a triangle's corners.
    std::span<std::uint32_t const> GetIndices() const { return m_indices; }

private:
    /// In pixels of the picture, whose centres are whole numbers.
    struct Point {
        float x;
        float y;
    };
    void Project(Places const& places);
    /// Whether a centre lies in a triangle, or as near to it as rounding goes.
    bool Covers(Point const& a, Point const& b, Point const& c) const;

    int m_width = 0;
    int m_height = 0;
    float m_rounding = 0.0F;
    std::vector<Point> m_points;
    std::vector<std::uint32_t> m_indices;
    GLObject m_buffer;
};

} // namespace ombrel
