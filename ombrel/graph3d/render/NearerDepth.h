#pragma once
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <array>

namespace ombrel {

/// While it lives, depths are those of points that are nearer to the eye by a distance in box units; where they are
/// seen does not change, nor what is cut off at the data box.
class NearerDepth {
public:
    explicit NearerDepth(double distance)
        : m_active(distance > 0.0)
    {
        if (!m_active)
            return;
        std::array<double, 16> projection {};
        std::array<double, 16> modelView {};
        gl::GetDoublev(GL_PROJECTION_MATRIX, projection.data());
        gl::GetDoublev(GL_MODELVIEW_MATRIX, modelView.data());
        // Depth grows fastest at the nearest part of the box.
        double const near = projection[14] / (projection[10] - 1.0);
        double const nearest = std::max(near, -modelView[14] - 0.9);
        double const shift = -projection[14] / (nearest * nearest) * distance;
        for (std::size_t column = 0; column < 16; column += 4)
            projection[column + 2] -= shift * projection[column + 3];
        gl::MatrixMode(GL_PROJECTION);
        gl::PushMatrix();
        gl::LoadMatrixd(projection.data());
        gl::MatrixMode(GL_MODELVIEW);
    }
    ~NearerDepth()
    {
        if (!m_active)
            return;
        gl::MatrixMode(GL_PROJECTION);
        gl::PopMatrix();
        gl::MatrixMode(GL_MODELVIEW);
    }
    NearerDepth(NearerDepth const&) = delete;
    NearerDepth& operator=(NearerDepth const&) = delete;

private:
    bool m_active;
};

} // namespace ombrel
