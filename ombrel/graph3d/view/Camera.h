#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Geometry.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace ombrel {

/// What a picture of the data box depends on. Settings that make no picture count as the nearest that does.
struct ViewSettings {
    /// Degrees.
    double azimuth = 0.0;
    double elevation = 0.0;
    /// 0 … 1.
    double perspective = 0.5;
    double zoom = 1.0;
    /// In box units at the box's centre.
    double xPos = 0.0;
    double yPos = 0.0;
    /// Width by height of the picture.
    double aspectRatio = 1.0;
    /// Where OpenGL draws: left, bottom (y up), and a size.
    CPoint viewportOrigin;
    CSize viewportSize { 1, 1 };
    /// Fractions of a pixel that the picture is moved by.
    double jitterX = 0.0;
    double jitterY = 0.0;
};

/// A view of the data box: the matrices that OpenGL draws with, and what they do to a point.
///
/// Window coordinates are pixels, y up, with the depth 0 (at the near plane) … 1 (at the far plane) as z.
class Camera {
public:
    /// Column after column, as OpenGL takes them.
    using Matrix = std::array<double, 16>;

    Camera() = default;
    explicit Camera(ViewSettings const& settings);
    /// The view of the settings without perspective: 10 box units on a square picture of 500 pixels.
    static Camera WithoutPerspective(double azimuth, double elevation);

    Matrix const& Projection() const { return m_projection; }
    Matrix const& ModelView() const { return m_modelView; }
    /// Distance of the eye from the box's centre, and of the planes between which things are seen from the eye.
    double EyeDistance() const { return m_eyeDistance; }
    /// Where the eye is, in box units.
    CVertex GetEye() const;
    double Near() const { return m_near; }
    double Far() const { return m_far; }
    /// Degrees, of the picture's height.
    double FieldOfView() const { return m_fieldOfView; }

    /// The depth in the window of points in box units, whichever part of the picture they are in; 0 where Project gives
    /// none. For many points: a copy does not look back at the camera.
    class DepthOf {
    public:
        explicit DepthOf(Camera const& camera);
        double operator()(double x, double y, double z) const
        {
            double const eye = m_eye[0] * x + m_eye[1] * y + m_eye[2] * z + m_eye[3];
            double const w = m_projection[2] * eye + m_projection[3];
            double const depth = std::fabs((m_projection[0] * eye + m_projection[1]) / w + 1.0) / 2.0;
            return w > 0.0 && depth <= std::numeric_limits<double>::max() ? depth : 0.0;
        }

    private:
        std::array<double, 4> m_eye;
        std::array<double, 4> m_projection;
    };
    DepthOf GetDepthOf() const { return DepthOf(*this); }

    /// Nothing for a point that is not before the eye; and for a depth that no point has.
    std::optional<CVertex> Project(CVertex const& point) const;
    std::optional<CVertex> Unproject(CVertex const& window) const;
    /// The width and height at the near plane, in box units, of a length in pixels across the picture.
    double UnitsOfWidth(double pixels) const { return pixels * m_unitsPerPixelX; }
    double UnitsOfHeight(double pixels) const { return pixels * m_unitsPerPixelY; }

private:
    void Look(double azimuth, double elevation, double x, double y, double distance);

    Matrix m_projection {};
    Matrix m_modelView {};
    CPoint m_origin;
    CSize m_size { 1, 1 };
    double m_eyeDistance = 0.0;
    double m_near = 0.0;
    double m_far = 0.0;
    double m_fieldOfView = 0.0;
    double m_unitsPerPixelX = 0.0;
    double m_unitsPerPixelY = 0.0;
};

} // namespace ombrel
