#include "ombrel/graph3d/render/ShapeBatch.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/Picture3D.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ombrel {
namespace {

/// Farther out nothing of a shape is seen, and single precision makes it ragged.
constexpr double kFarthest = 1e4;

bool IsPlace(CVertex const& v)
{
    return std::fabs(v.X()) < kFarthest && std::fabs(v.Y()) < kFarthest && std::fabs(v.Z()) < kFarthest;
}

double Dot(CVertex const& a, CVertex const& b) { return a.X() * b.X() + a.Y() * b.Y() + a.Z() * b.Z(); }

CVertex Cross(CVertex const& a, CVertex const& b)
{
    return { a.Y() * b.Z() - a.Z() * b.Y(), a.Z() * b.X() - a.X() * b.Z(), a.X() * b.Y() - a.Y() * b.X() };
}

double Length(CVertex const& v) { return std::hypot(v.X(), v.Y(), v.Z()); }

/// Of length 1; the zero vector stays.
CVertex Unit(CVertex const& v)
{
    double const length = Length(v);
    return length > 0.0 ? v * (1.0 / length) : v;
}

/// A direction and two more of unit length, all at right angles.
struct Frame {
    CVertex along;
    CVertex right;
    CVertex up;

    explicit Frame(CVertex const& direction)
        : along(Unit(direction))
    {
        // Any that is far from parallel will do.
        CVertex const other = std::fabs(along.Z()) < 0.9 ? CVertex(0.0, 0.0, 1.0) : CVertex(1.0, 0.0, 0.0);
        right = Unit(Cross(other, along));
        up = Cross(along, right);
    }
    /// The same frame turned the shortest way until it points in a new direction of unit length.
    void TurnTo(CVertex const& direction)
    {
        // A reflection that takes the one direction into the opposite of the other turns all across it as wanted.
        CVertex const sum = along + direction;
        double const square = Dot(sum, sum);
        if (square < 1e-12) {
            *this = Frame(direction);
            return;
        }
        auto const turned = [&](CVertex const& v) { return v - sum * (Dot(sum, v) / square * 2.0); };
        right = turned(right);
        up = turned(up);
        along = direction;
    }
};

/// Whether two pieces of a tube, given by their directions, meet at too large an angle to share a ring of corners.
bool IsSharp(CVertex const& before, CVertex const& after) { return Dot(before, after) < 0.8; }

/// Puts the faces of shapes with that many sides into a batch.
class FaceMaker {
public:
    FaceMaker(FaceBatch& batch, int sides)
        : m_batch(batch)
        , m_sides(static_cast<std::size_t>(sides))
    {
        // One more than there are sides: the last closes the round.
        for (std::size_t i = 0; i <= m_sides; ++i) {
            double const angle = 2.0 * std::numbers::pi * static_cast<double>(i % m_sides) / sides;
            m_circle.push_back({ std::cos(angle), std::sin(angle) });
        }
    }
    void SetColour(COLORREF colour) { m_colour = FaceVertex::Bytes(colour); }

    /// A ring of corners about a point, with the places and normals that of(right, up) gives each; the first's index.
    template <typename Of> std::uint32_t AddRing(Of const& of)
    {
        std::uint32_t first = 0;
        for (std::size_t i = 0; i < m_sides; ++i) {
            auto const [place, normal] = of(m_circle[i]);
            std::uint32_t const index = AddCorner(place, normal);
            first = i == 0 ? index : first;
        }
        return first;
    }
    std::uint32_t AddCorner(CVertex const& place, CVertex const& normal)
    {
        FaceVertex vertex;
        vertex.place = FaceVertex::Floats(place);
        vertex.normal = FaceVertex::Floats(normal);
        vertex.colour = m_colour;
        return m_batch.AddVertex(vertex);
    }
    /// The side between two rings.
    void JoinRings(std::uint32_t a, std::uint32_t b)
    {
        for (std::uint32_t i = 0; i < m_sides; ++i) {
            std::uint32_t const next = i + 1 == m_sides ? 0 : i + 1;
            m_batch.AddTriangle(a + i, a + next, b + next);
            m_batch.AddTriangle(a + i, b + next, b + i);
        }
    }
    /// sign: 1 for a disk that looks along the frame, −1 for one that looks back.
    void AddDisk(CVertex const& centre, Frame const& frame, double radius, double sign)
    {
        // Faces turn one way, seen from where their normals point to: that is how light knows their two sides.
        std::uint32_t const ring = AddRing([&](Corner const& c) {
            return std::pair(centre + (frame.right * c.cos + frame.up * (sign * c.sin)) * radius, frame.along * sign);
        });
        for (std::uint32_t i = 1; i + 1 < m_sides; ++i)
            m_batch.AddTriangle(ring, ring + i, ring + i + 1);
    }
    void AddCone(CVertex const& base, CVertex const& apex, double radius)
    {
        Frame const frame(apex - base);
        double const height = Length(apex - base);
        double const slant = std::hypot(height, radius);
        auto const outwards = [&](double cos, double sin) {
            return (frame.right * cos + frame.up * sin) * (height / slant) + frame.along * (radius / slant);
        };
        std::uint32_t const ring = AddRing([&](Corner const& c) {
            return std::pair(base + (frame.right * c.cos + frame.up * c.sin) * radius, outwards(c.cos, c.sin));
        });
        // The tip has no direction of its own: each side has its tip.
        for (std::uint32_t i = 0; i < m_sides; ++i) {
            double const angle = 2.0 * std::numbers::pi * (i + 0.5) / static_cast<double>(m_sides);
            std::uint32_t const tip = AddCorner(apex, outwards(std::cos(angle), std::sin(angle)));
            m_batch.AddTriangle(ring + i, ring + (i + 1 == m_sides ? 0 : i + 1), tip);
        }
        AddDisk(base, frame, radius, -1.0);
    }
    void AddCuboid(CVertex const& centre, CVertex const& half)
    {
        for (int axis = 0; axis < 3; ++axis) {
            for (double const sign : { -1.0, 1.0 }) {
                CVertex normal;
                normal[axis] = sign;
                std::uint32_t corners[4];
                for (std::size_t i = 0; i < 4; ++i) {
                    CVertex offset;
                    offset[axis] = sign * half[axis];
                    int const first = (axis + 1) % 3;
                    int const second = (axis + 2) % 3;
                    offset[first] = (i == 1 || i == 2 ? sign : -sign) * half[first];
                    offset[second] = (i >= 2 ? 1.0 : -1.0) * half[second];
                    corners[i] = AddCorner(centre + offset, normal);
                }
                m_batch.AddTriangle(corners[0], corners[1], corners[2]);
                m_batch.AddTriangle(corners[0], corners[2], corners[3]);
            }
        }
    }
    void AddTube(std::span<CVertex const> points, double radius);

private:
    struct Corner {
        double cos;
        double sin;
    };
    FaceBatch& m_batch;
    std::size_t m_sides;
    std::vector<Corner> m_circle;
    std::array<BYTE, 4> m_colour {};
};

void FaceMaker::AddTube(std::span<CVertex const> points, double radius)
{
    Frame frame(points[1] - points[0]);
    auto const around = [&](CVertex const& centre, Frame const& f) {
        return AddRing([&](Corner const& c) {
            CVertex const normal = f.right * c.cos + f.up * c.sin;
            return std::pair(centre + normal * radius, normal);
        });
    };
    AddDisk(points[0], frame, radius, -1.0);
    std::uint32_t ring = around(points[0], frame);
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (i + 1 == points.size()) {
            JoinRings(ring, around(points[i], frame));
            AddDisk(points[i], frame, radius, 1.0);
            return;
        }
        CVertex const next = Unit(points[i + 1] - points[i]);
        if (IsSharp(frame.along, next)) {
            JoinRings(ring, around(points[i], frame));
            frame.TurnTo(next);
            ring = around(points[i], frame);
            continue;
        }
        // The corners lie where the two pieces' sides meet: in the plane between them.
        Frame const before = frame;
        CVertex const between = Unit(frame.along + next);
        double const part = 1.0 / Dot(before.along, between);
        frame.TurnTo(next);
        std::uint32_t const shared = AddRing([&](Corner const& c) {
            CVertex const out = before.right * c.cos + before.up * c.sin;
            CVertex const after = frame.right * c.cos + frame.up * c.sin;
            return std::pair(points[i] + (out - before.along * (Dot(out, between) * part)) * radius, Unit(out + after));
        });
        JoinRings(ring, shared);
        ring = shared;
    }
}

} // namespace

void ShapeBatch::Clear()
{
    m_spheres.Clear();
    m_shapes.clear();
    m_tubePoints.clear();
    m_largestRadius = 0.0;
    m_numRings = 0;
    m_sides = 0;
}

void ShapeBatch::Add(Shape const& shape)
{
    m_shapes.push_back(shape);
    m_sides = 0;
}

void ShapeBatch::AddCone(CVertex const& base, CVertex const& apex, double radius, COLORREF colour)
{
    if (!IsPlace(base) || !IsPlace(apex) || base == apex || !(radius > 0.0 && radius < kFarthest))
        return;
    m_largestRadius = std::max(m_largestRadius, radius);
    m_numRings += 3;
    Add({ Kind::Cone, colour, radius, base, apex });
}

void ShapeBatch::AddCylinder(CVertex const& from, CVertex const& to, double radius, COLORREF colour)
{
    CVertex const ends[] = { from, to };
    AddTube(ends, radius, colour);
}

void ShapeBatch::AddCuboid(CVertex const& centre, CVertex const& half, COLORREF colour)
{
    if (IsPlace(centre) && IsPlace(half))
        Add({ Kind::Cuboid, colour, 0.0, centre, half });
}

void ShapeBatch::AddTube(std::span<CVertex const> points, double radius, COLORREF colour)
{
    if (!(radius > 0.0 && radius < kFarthest))
        return;
    std::size_t first = m_tubePoints.size();
    for (CVertex const& point : points) {
        if (!IsPlace(point)) {
            EndTube(first, radius, colour);
            first = m_tubePoints.size();
        } else if (m_tubePoints.size() == first || !(m_tubePoints.back() == point)) {
            m_tubePoints.push_back(point);
        }
    }
    EndTube(first, radius, colour);
}

/// Makes a tube of the points from the first on.
void ShapeBatch::EndTube(std::size_t first, double radius, COLORREF colour)
{
    std::size_t const count = m_tubePoints.size() - first;
    if (count < 2) {
        m_tubePoints.resize(first);
        return;
    }
    CVertex before = Unit(m_tubePoints[first + 1] - m_tubePoints[first]);
    for (std::size_t i = first + 1; i + 1 < m_tubePoints.size(); ++i) {
        CVertex const after = Unit(m_tubePoints[i + 1] - m_tubePoints[i]);
        if (IsSharp(before, after))
            m_spheres.Add(m_tubePoints[i], radius, colour);
        before = after;
    }
    m_largestRadius = std::max(m_largestRadius, radius);
    m_numRings += count + 2;
    Add({ Kind::Tube, colour, radius, {}, {}, first, count });
}

void ShapeBatch::MakeFaces(int sides, FaceBatch& batch) const
{
    batch.Clear();
    FaceMaker maker(batch, sides);
    for (Shape const& shape : m_shapes) {
        maker.SetColour(shape.colour);
        switch (shape.kind) {
        case Kind::Cone:
            maker.AddCone(shape.a, shape.b, shape.radius);
            break;
        case Kind::Cuboid:
            maker.AddCuboid(shape.a, shape.b);
            break;
        case Kind::Tube:
            maker.AddTube(std::span(m_tubePoints).subspan(shape.first, shape.count), shape.radius);
            break;
        }
    }
}

/// As many sides as keep what is round within a quarter of a pixel, where it is nearest to the eye.
int ShapeBatch::GetSides(C3DGraph const& graph) const
{
    Camera const& camera = graph.GetPicture()->camera;
    // The corner of the box lies that far in front of its centre.
    constexpr double kHalfDiagonal = 0.87;
    double const nearest = std::max(camera.EyeDistance() - kHalfDiagonal, camera.Near());
    double const pixels = m_largestRadius * camera.Near() / (camera.UnitsOfHeight(1.0) * nearest);
    constexpr int kSides[] = { 8, 12, 16, 24, 36, 56, 80, 120 };
    // Of a great many, more cannot be told apart; and there is memory to think of.
    constexpr std::size_t kMostCorners = 12'000'000;
    int sides = 6;
    for (int const more : kSides) {
        if (pixels * (1.0 - std::cos(std::numbers::pi / sides)) <= 0.25
            || m_numRings * static_cast<std::size_t>(more) > kMostCorners)
            break;
        sides = more;
    }
    return sides;
}

void ShapeBatch::Draw(C3DGraph& graph)
{
    if (!graph.GetPicture())
        return;
    if (!m_shapes.empty()) {
        int const sides = GetSides(graph);
        if (sides != m_sides || !m_faces.IsInDriver()) {
            MakeFaces(sides, m_faces);
            m_faces.MoveToDriver();
            m_sides = sides;
        }
        m_faces.DrawFaces(graph, 0);
    }
    m_spheres.Draw(graph);
}

void ShapeBatch::InvalidateDeviceObjects()
{
    m_spheres.InvalidateDeviceObjects();
    m_faces.InvalidateDeviceObjects();
}

} // namespace ombrel
