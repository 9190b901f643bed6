#include "ombrel/graph3d/render/SampledTriangles.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/platform/opengl/GLContext.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ombrel {
namespace {

/// For corners whose place in the picture is not known well enough: behind the eye, or far outside.
constexpr float kAnywhere = 1e30F;

/// How far the first centre lies from an edge, inwards, and the next ones along x and y; times the edge's length.
struct Edge {
    float alongX;
    float alongY;
    float distance;
};

} // namespace

bool SampledTriangles::AreWorthIt(std::size_t triangles)
{
    constexpr std::size_t kFew = 250000;
    return triangles > kFew && GLContext::Process().IsSoftware();
}

void SampledTriangles::Project(Places const& places)
{
    std::array<GLdouble, 16> view {};
    std::array<GLdouble, 16> projection {};
    std::array<GLint, 4> viewport {};
    gl::GetDoublev(GL_MODELVIEW_MATRIX, view.data());
    gl::GetDoublev(GL_PROJECTION_MATRIX, projection.data());
    gl::GetIntegerv(GL_VIEWPORT, viewport.data());
    m_width = viewport[2];
    m_height = viewport[3];
    // Rows of the matrix that leads to pixels: x and y, not yet divided by w, and w.
    std::array<std::array<float, 4>, 3> rows {};
    std::array<float, 3> reach {};
    for (std::size_t column = 0; column < 4; ++column) {
        std::array<double, 4> clip {};
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t k = 0; k < 4; ++k)
                clip[row] += projection[4 * k + row] * view[4 * column + k];
        }
        rows[0][column] = static_cast<float>((clip[0] + clip[3]) * 0.5 * m_width - 0.5 * clip[3]);
        rows[1][column] = static_cast<float>((clip[1] + clip[3]) * 0.5 * m_height - 0.5 * clip[3]);
        rows[2][column] = static_cast<float>(clip[3]);
        for (std::size_t row = 0; row < 3; ++row)
            reach[row] += std::fabs(rows[row][column]);
    }
    // Nearer to the eye single precision is lost, as it is far outside of the box and the picture.
    float const nearest = 0.1F * reach[2];
    // The renderer reckons in single precision, too, and then rounds to 1/256 of a pixel.
    m_rounding = std::min(0x1p-8F + std::max(reach[0], reach[1]) / nearest * 0x1p-22F, 0x1p16F);
    constexpr float kFarthest = 4.0F;
    float const outside = 4.0F * static_cast<float>(std::max(m_width, m_height));
    m_points.resize(places.count);
    auto const* from = reinterpret_cast<std::byte const*>(places.first);
    for (Point& point : m_points) {
        std::array<float, 3> p;
        std::memcpy(p.data(), from, sizeof p);
        from += places.stride;
        auto const along
            = [&](std::array<float, 4> const& row) { return row[0] * p[0] + row[1] * p[1] + row[2] * p[2] + row[3]; };
        float const w = along(rows[2]);
        point = { along(rows[0]) / w, along(rows[1]) / w };
        float const size = std::max({ std::fabs(p[0]), std::fabs(p[1]), std::fabs(p[2]) });
        if (!(w > nearest && size < kFarthest && std::max(std::fabs(point.x), std::fabs(point.y)) < outside))
            point = { kAnywhere, kAnywhere };
    }
}

bool SampledTriangles::Covers(Point const& a, Point const& b, Point const& c) const
{
    float const maxX = std::max({ a.x, b.x, c.x });
    if (maxX == kAnywhere)
        return true;
    // The centres between the outermost corners. Truncation rounds down what is not negative.
    auto const floor = [](float value) { return static_cast<int>(value + 4.0F) - 4; };
    auto const before = [&](float least) { return std::max(floor(std::max(least - m_rounding, -2.0F)), -1); };
    int const firstX = before(std::min({ a.x, b.x, c.x })) + 1;
    int const lastX = std::min(floor(std::max(maxX + m_rounding, -2.0F)), m_width - 1);
    if (firstX > lastX)
        return false;
    int const firstY = before(std::min({ a.y, b.y, c.y })) + 1;
    int const lastY = std::min(floor(std::max(std::max({ a.y, b.y, c.y }) + m_rounding, -2.0F)), m_height - 1);
    if (firstY > lastY)
        return false;
    constexpr int kMostCentres = 16;
    if ((lastX - firstX + 1) * (lastY - firstY + 1) > kMostCentres)
        return true;
    // Which side of each edge they lie on, and whether as near to it as rounding goes: those of a triangle lie on the
    // same side of all three.
    float const turn = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) < 0.0F ? -1.0F : 1.0F;
    auto const edgeOf = [&](Point const& from, Point const& to) {
        float const x = turn * (to.x - from.x);
        float const y = turn * (to.y - from.y);
        return Edge { -y, x,
            x * (static_cast<float>(firstY) - from.y) - y * (static_cast<float>(firstX) - from.x)
                + m_rounding * (std::fabs(x) + std::fabs(y)) };
    };
    std::array<Edge, 3> const edges { edgeOf(a, b), edgeOf(b, c), edgeOf(c, a) };
    for (int y = 0; y <= lastY - firstY; ++y) {
        for (int x = 0; x <= lastX - firstX; ++x) {
            auto const distance = [&](Edge const& edge) {
                return edge.distance + edge.alongX * static_cast<float>(x) + edge.alongY * static_cast<float>(y);
            };
            if (std::min({ distance(edges[0]), distance(edges[1]), distance(edges[2]) }) >= 0.0F)
                return true;
        }
    }
    return false;
}

void SampledTriangles::Find(Places const& places, std::span<std::uint32_t const> indices, Form form)
{
    Project(places);
    m_indices.clear();
    auto const take = [this](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        if (Covers(m_points[a], m_points[b], m_points[c]))
            m_indices.insert(m_indices.end(), { a, b, c });
    };
    if (form == Form::List) {
        for (std::size_t i = 0; i + 2 < indices.size(); i += 3)
            take(indices[i], indices[i + 1], indices[i + 2]);
        return;
    }
    for (std::size_t i = 0; i + 2 < indices.size(); ++i) {
        // Every second one turns the other way.
        std::uint32_t const a = indices[i + i % 2];
        std::uint32_t const b = indices[i + 1 - i % 2];
        std::uint32_t const c = indices[i + 2];
        if (a != b && b != c && c != a)
            take(a, b, c);
    }
}

void SampledTriangles::Draw()
{
    if (m_indices.empty())
        return;
    FillBuffer(m_buffer, GL_ELEMENT_ARRAY_BUFFER, m_indices);
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_buffer.Name());
    gl::DrawElements(GL_TRIANGLES, static_cast<GLsizei>(m_indices.size()), GL_UNSIGNED_INT, BufferOffset(0));
}

} // namespace ombrel
