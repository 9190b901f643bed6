#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace ombrel {

namespace {

constexpr GLint kSlices = 20;
constexpr GLint kStacks = 5;

bool IsOpenGLThere() { return gl::Begin && glu::NewQuadric; }

/// The model-view matrix as it was, and everything on its way to the driver, when this ends.
class OwnMatrix {
public:
    OwnMatrix() { gl::PushMatrix(); }
    ~OwnMatrix()
    {
        gl::PopMatrix();
        gl::Flush();
    }
    OwnMatrix(OwnMatrix const&) = delete;
    OwnMatrix& operator=(OwnMatrix const&) = delete;
};

using Quadric = std::unique_ptr<GLUquadric, decltype(glu::DeleteQuadric)>;

/// Null without memory.
Quadric FilledQuadric()
{
    Quadric quadric(glu::NewQuadric(), glu::DeleteQuadric);
    if (quadric)
        glu::QuadricDrawStyle(quadric.get(), GLU_FILL);
    return quadric;
}

/// Turns and moves what follows so that z points from the start to the end; returns their distance.
double PointAlong(CVertex const& start, CVertex const& end)
{
    constexpr double kDegrees = 180.0 / std::numbers::pi;
    CVertex const d = end - start;
    double const length = std::hypot(d.X(), d.Y(), d.Z());
    gl::Translated(start.X(), start.Y(), start.Z());
    gl::Rotated(std::atan2(d.Y(), d.X()) * kDegrees + 90.0, 0.0, 0.0, 1.0);
    gl::Rotated(std::acos(std::clamp(d.Z() / length, -1.0, 1.0)) * kDegrees, 1.0, 0.0, 0.0);
    return length;
}

void SendVertex(CVertex const& v) { gl::Vertex3dv(v.GetData()); }

} // namespace

void CVUtils::Material(BYTE const* rgb)
{
    if (!IsOpenGLThere())
        return;
    auto const channel = [](BYTE value) { return static_cast<float>(value) / 255.0F; };
    float const colour[] = { channel(rgb[0]), channel(rgb[1]), channel(rgb[2]), 1.0F };
    gl::Materialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, colour);
    gl::Flush();
}

void CVUtils::DrawLine(CVertex const& p1, CVertex const& p2)
{
    if (!IsOpenGLThere())
        return;
    gl::Begin(GL_LINES);
    SendVertex(p1);
    SendVertex(p2);
    gl::End();
    gl::Flush();
}

void CVUtils::DrawLine(CVertex const& p1, CVertex const& p2, BYTE const* c1, BYTE const* c2)
{
    if (!IsOpenGLThere())
        return;
    gl::Begin(GL_LINES);
    gl::Color3ubv(c1);
    SendVertex(p1);
    gl::Color3ubv(c2);
    SendVertex(p2);
    gl::End();
    gl::Flush();
}

void CVUtils::DrawSphere(CVertex const& centre, double radius)
{
    if (!IsOpenGLThere())
        return;
    OwnMatrix const matrix;
    gl::Translated(centre.X(), centre.Y(), centre.Z());
    if (auto const quadric = FilledQuadric())
        glu::Sphere(quadric.get(), radius, kSlices, kStacks);
}

void CVUtils::DrawCone(CVertex const& base, CVertex const& apex, double radius)
{
    // A cone without a height points nowhere.
    if (!IsOpenGLThere() || base == apex)
        return;
    OwnMatrix const matrix;
    double const height = PointAlong(base, apex);
    if (auto const quadric = FilledQuadric()) {
        glu::Cylinder(quadric.get(), radius, 0.0, height, kSlices, kStacks);
        glu::Disk(quadric.get(), 0.0, radius, kSlices, kStacks);
    }
}

void CVUtils::DrawCylinderLine(CVertex const& p1, CVertex const& p2, double r1, double r2, int caps)
{
    if (!IsOpenGLThere() || p1 == p2)
        return;
    OwnMatrix const matrix;
    double const height = PointAlong(p1, p2);
    if (auto const quadric = FilledQuadric()) {
        glu::Cylinder(quadric.get(), r1, r2 < 0.0 ? r1 : r2, height, kSlices, kStacks);
        if (caps) {
            glu::Disk(quadric.get(), 0.0, r1, kSlices, kStacks);
            gl::Translated(0.0, 0.0, height);
            glu::Disk(quadric.get(), 0.0, r1, kSlices, kStacks);
        }
    }
}

void CVUtils::DrawCuboid(CVertex const& centre, double dx, double dy, double dz)
{
    if (!IsOpenGLThere())
        return;
    constexpr int kCorners[8][3] = { { -1, -1, -1 }, { -1, -1, 1 }, { -1, 1, 1 }, { -1, 1, -1 }, { 1, -1, -1 },
        { 1, -1, 1 }, { 1, 1, 1 }, { 1, 1, -1 } };
    struct Face {
        double normal[3];
        int corners[4];
    };
    constexpr Face kFaces[6] = {
        { { -1, 0, 0 }, { 0, 1, 2, 3 } },
        { { 1, 0, 0 }, { 4, 7, 6, 5 } },
        { { 0, -1, 0 }, { 0, 4, 5, 1 } },
        { { 0, 1, 0 }, { 3, 2, 6, 7 } },
        { { 0, 0, -1 }, { 0, 3, 7, 4 } },
        { { 0, 0, 1 }, { 1, 5, 6, 2 } },
    };
    gl::Begin(GL_QUADS);
    for (auto const& face : kFaces) {
        gl::Normal3dv(face.normal);
        for (int const corner : face.corners) {
            auto const* const sign = kCorners[corner];
            SendVertex(centre + CVertex(sign[0] * dx, sign[1] * dy, sign[2] * dz));
        }
    }
    gl::End();
    gl::Flush();
}

} // namespace ombrel
