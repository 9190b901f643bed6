#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/render/SphereBatch.h"
#include "ombrel/platform/framework/Types.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

class C3DGraph;

/// Spheres, cones, cylinders, cuboids and tubes of one curve, drawn with few calls however many they are.
///
/// The shapes stay until Clear. Those that are round have as many sides as their size in the picture asks for; where a
/// zoom asks for more or fewer, the faces are made anew, and at no other time. Places and lengths are box units;
/// shapes without a place or a size are left out.
/// Adding needs no OpenGL; Draw belongs within a draw of the graph and leaves OpenGL's settings as they were.
class ShapeBatch {
public:
    void Clear();
    void AddSphere(CVertex const& centre, double radius, COLORREF colour) { m_spheres.Add(centre, radius, colour); }
    /// Closed at its base.
    void AddCone(CVertex const& base, CVertex const& apex, double radius, COLORREF colour);
    /// Closed at both ends.
    void AddCylinder(CVertex const& from, CVertex const& to, double radius, COLORREF colour);
    /// From centre − half to centre + half.
    void AddCuboid(CVertex const& centre, CVertex const& half, COLORREF colour);
    /// Along the points, closed at both ends. Bends are round: where two pieces meet at a small angle they share a
    /// ring of corners, and elsewhere a sphere fills the gap. Points that equal the one before are left out.
    void AddTube(std::span<CVertex const> points, double radius, COLORREF colour);

    bool IsEmpty() const { return m_shapes.empty() && m_spheres.IsEmpty(); }
    SphereBatch const& GetSpheres() const { return m_spheres; }
    /// Everything but the spheres, with so many sides.
    void MakeFaces(int sides, FaceBatch& batch) const;
    void Draw(C3DGraph& graph);
    /// Gives back the buffers; the next draw fills them again.
    void InvalidateDeviceObjects();

private:
    enum class Kind : std::uint8_t { Cone, Cuboid, Tube };
    struct Shape {
        Kind kind;
        COLORREF colour;
        double radius;
        /// Base and apex; centre and half the sides. Of a tube, in m_tubePoints: the first point and their number.
        CVertex a;
        CVertex b;
        std::size_t first = 0;
        std::size_t count = 0;
    };
    int GetSides(C3DGraph const& graph) const;
    void Add(Shape const& shape);
    void EndTube(std::size_t first, double radius, COLORREF colour);

    SphereBatch m_spheres;
    std::vector<Shape> m_shapes;
    std::vector<CVertex> m_tubePoints;
    /// Of what is round.
    double m_largestRadius = 0.0;
    /// How many rings of corners there are.
    std::size_t m_numRings = 0;
    int m_sides = 0;
    FaceBatch m_faces;
};

} // namespace ombrel
