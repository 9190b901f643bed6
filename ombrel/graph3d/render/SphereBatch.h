#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/opengl/GLObject.h"

#include <array>
#include <vector>

namespace ombrel {

class C3DGraph;
class Camera;

/// Spheres, drawn in one go however many they are, round and evenly lit at every size.
///
/// A sphere is a square that faces the eye. Each pixel of it works out where the line of sight meets the sphere, so
/// that outline and light are exact. Where the spheres cover few pixels, their depth is, too. Where they cover many, it
/// is the square's: pixels that nearer spheres cover are left out before any work then, and the spheres are drawn from
/// the nearest to the farthest; the middle of larger squares is raised to the sphere's nearest point. A sphere that
/// reaches out of the planes which cut off what lies outside of the data box shows a plane cut.
///
/// Adding needs no OpenGL; Draw belongs within a draw of the graph and leaves OpenGL's settings as they were.
class SphereBatch {
public:
    void Clear();
    /// In box units. One without a positive radius, or whose place is no number, is left out.
    void Add(CVertex const& centre, double radius, COLORREF colour);
    bool IsEmpty() const { return m_spheres.empty(); }
    std::size_t GetCount() const { return m_spheres.size(); }
    /// None is drawn smaller than a pixel.
    void Draw(C3DGraph& graph);
    /// Gives back the buffer; the next draw fills it again.
    void InvalidateDeviceObjects();

private:
    struct Sphere {
        std::array<float, 3> centre;
        float radius;
        std::array<BYTE, 4> colour;
    };
    enum class Look { Fast, Exact, Cut };
    /// Half the sides of the box that cuts.
    void Upload(std::array<double, 3> const& box);
    bool CoverFewPixels(Camera const& camera) const;
    bool AreLarge(Camera const& camera) const;
    void SortByDistance(Camera const& camera, bool isRaised);
    void DrawRange(C3DGraph const& graph, Look look, std::size_t first, std::size_t count) const;

    /// Those wholly inside the box come first.
    std::vector<Sphere> m_spheres;
    std::size_t m_numInside = 0;
    std::array<double, 3> m_box {};
    /// Of the squares of the radii.
    double m_sumOfSquares = 0.0;
    bool m_isUploaded = false;
    GLObject m_vertexBuffer;
    /// Of the spheres in the order in which they are drawn, seen from one direction.
    GLObject m_indexBuffer;
    bool m_isRaised = false;
    std::array<double, 3> m_towardsEye {};
};

} // namespace ombrel
