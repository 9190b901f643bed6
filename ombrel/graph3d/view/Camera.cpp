#include "ombrel/graph3d/view/Camera.h"
#include "ombrel/graph3d/view/ViewDirection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

using Matrix = Camera::Matrix;

constexpr double kRadians = std::numbers::pi / 180.0;

constexpr Matrix kIdentity { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };

Matrix Product(Matrix const& a, Matrix const& b)
{
    Matrix product {};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t i = 0; i < 4; ++i)
                product[column * 4 + row] += a[i * 4 + row] * b[column * 4 + i];
        }
    }
    return product;
}

/// About the z axis, or about the x axis; degrees.
Matrix TurnZ(double angle)
{
    double const c = std::cos(angle * kRadians);
    double const s = std::sin(angle * kRadians);
    return { c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };
}

Matrix TurnX(double angle)
{
    double const c = std::cos(angle * kRadians);
    double const s = std::sin(angle * kRadians);
    return { 1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1 };
}

std::array<double, 4> Transformed(Matrix const& m, std::array<double, 4> const& v)
{
    std::array<double, 4> result {};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t i = 0; i < 4; ++i)
            result[row] += m[i * 4 + row] * v[i];
    }
    return result;
}

double Limited(double v, double least, double most, double otherwise)
{
    return std::isfinite(v) ? std::clamp(v, least, most) : otherwise;
}

/// From where the near plane stays before the eye: beyond it, perspective would put it behind.
constexpr double kNearest = 0.25;

} // namespace

void Camera::Look(double azimuth, double elevation, double x, double y, double distance)
{
    m_modelView = kIdentity;
    m_modelView[12] = x;
    m_modelView[13] = y;
    m_modelView[14] = -distance;
    ViewDirection const direction(azimuth, elevation);
    m_modelView = Product(m_modelView, TurnX(-direction.elevation));
    m_modelView = Product(m_modelView, TurnZ(270.0 - direction.azimuth));
}

Camera::Camera(ViewSettings const& settings)
    : m_origin(settings.viewportOrigin)
    , m_size(std::max(settings.viewportSize.cx, 1), std::max(settings.viewportSize.cy, 1))
{
    m_eyeDistance = 10.5 - 9.0 * Limited(settings.perspective, 0.0, 1.0, 0.5);
    m_near = std::max(m_eyeDistance - 2.0, kNearest);
    m_far = m_eyeDistance + 2.0;

    double const aspect = settings.aspectRatio > 0.0 ? Limited(settings.aspectRatio, 1e-5, 1e5, 1.0) : 1.0;
    double const zoom = settings.zoom > 0.0 ? Limited(settings.zoom, 1e-3, 1e6, 1.0) : 1.0;
    double field = 2.6 * std::atan(0.7 / m_eyeDistance) / kRadians / zoom;
    if (aspect < 1.0)
        field /= aspect;
    constexpr double kWidest = 175.0;
    m_fieldOfView = std::min(field, kWidest);
    double const top = m_near * std::tan(m_fieldOfView / 2.0 * kRadians);
    double const right = top * aspect;
    m_unitsPerPixelX = 2.0 * right / m_size.cx;
    m_unitsPerPixelY = 2.0 * top / m_size.cy;

    // The frustum moved sideways: what a jitter of the picture by fractions of a pixel needs.
    double const dx = -settings.jitterX * m_unitsPerPixelX;
    double const dy = -settings.jitterY * m_unitsPerPixelY;
    m_projection = {};
    m_projection[0] = m_near / right;
    m_projection[5] = m_near / top;
    m_projection[8] = dx / right;
    m_projection[9] = dy / top;
    m_projection[10] = -(m_far + m_near) / (m_far - m_near);
    m_projection[11] = -1.0;
    m_projection[14] = -2.0 * m_far * m_near / (m_far - m_near);

    constexpr double kFarthest = 1e6;
    Look(settings.azimuth, settings.elevation, Limited(settings.xPos, -kFarthest, kFarthest, 0.0),
        Limited(settings.yPos, -kFarthest, kFarthest, 0.0), m_eyeDistance);
}

Camera Camera::WithoutPerspective(double azimuth, double elevation)
{
    Camera camera;
    camera.m_size = { 500, 500 };
    camera.m_projection = kIdentity;
    camera.m_projection[0] = camera.m_projection[5] = 1.0 / 5.0;
    camera.m_projection[10] = -1.0 / 5.0;
    camera.Look(azimuth, elevation, 0.0, 0.0, 0.0);
    return camera;
}

Camera::DepthOf::DepthOf(Camera const& camera)
    : m_eye { camera.m_modelView[2], camera.m_modelView[6], camera.m_modelView[10], camera.m_modelView[14] }
    , m_projection { camera.m_projection[10], camera.m_projection[14], camera.m_projection[11],
        camera.m_projection[15] }
{
}

CVertex Camera::GetEye() const
{
    // What the view turns and moves into the origin.
    Matrix const& m = m_modelView;
    auto const back = [&](std::size_t column) {
        return -(m[4 * column] * m[12] + m[4 * column + 1] * m[13] + m[4 * column + 2] * m[14]);
    };
    return { back(0), back(1), back(2) };
}

std::optional<CVertex> Camera::Project(CVertex const& point) const
{
    std::array<double, 4> const eye = Transformed(m_modelView, { point.X(), point.Y(), point.Z(), 1.0 });
    std::array<double, 4> const clip = Transformed(m_projection, eye);
    if (!(clip[3] > 0.0))
        return {};
    return CVertex(m_origin.x + m_size.cx * (clip[0] / clip[3] + 1.0) / 2.0,
        m_origin.y + m_size.cy * (clip[1] / clip[3] + 1.0) / 2.0, (clip[2] / clip[3] + 1.0) / 2.0);
}

std::optional<CVertex> Camera::Unproject(CVertex const& window) const
{
    // Back through the projection by hand: its third and fourth rows depend on the eye's depth alone.
    double const x = (window.X() - m_origin.x) / m_size.cx * 2.0 - 1.0;
    double const y = (window.Y() - m_origin.y) / m_size.cy * 2.0 - 1.0;
    double const z = window.Z() * 2.0 - 1.0;
    double const divisor = m_projection[10] - z * m_projection[11];
    if (!(divisor > 0.0 || divisor < 0.0))
        return {};
    double const eyeZ = (z * m_projection[15] - m_projection[14]) / divisor;
    double const w = m_projection[11] * eyeZ + m_projection[15];
    double const eyeX = (x * w - m_projection[8] * eyeZ) / m_projection[0];
    double const eyeY = (y * w - m_projection[9] * eyeZ) / m_projection[5];
    // The model-view matrix turns and moves: its inverse is the turn transposed.
    double const turned[3] = { eyeX - m_modelView[12], eyeY - m_modelView[13], eyeZ - m_modelView[14] };
    CVertex point;
    for (std::size_t i = 0; i < 3; ++i) {
        double sum = 0.0;
        for (std::size_t row = 0; row < 3; ++row)
            sum += m_modelView[i * 4 + row] * turned[row];
        point[static_cast<int>(i)] = sum;
    }
    return point;
}

} // namespace ombrel
