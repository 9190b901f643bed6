#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/BoxFaces.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/graph3d/view/ViewDirection.h"
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {

void C3DGraph::GetWalls(WallType& x, WallType& y, WallType& z)
{
    ViewDirection const view(m_azimuth, m_elevation);
    m_quadrant = view.quadrant;
    BackWalls(view.quadrant, view.level, x, y, z);
}

CRect C3DGraph::GetViewportRect() const
{
    int const height = m_windowRect.Height();
    if (m_graphRect.IsRectEmpty())
        return { 0, 0, m_windowRect.Width(), height };
    int const bottom = height - m_graphRect.bottom;
    return { m_graphRect.left, bottom, m_graphRect.right, bottom + m_graphRect.Height() };
}

CPoint C3DGraph::ViewportToWindow(CPoint p) const { return { p.x, m_windowRect.Height() - p.y }; }

double C3DGraph::GetGraphAspectRatio() const
{
    Camera const camera = Camera::WithoutPerspective(m_azimuth, m_elevation);
    double scale[3] = { 1.0, 1.0, 1.0 };
    if (m_axes[0])
        m_axes[0]->GetScaleFacs(scale[0], scale[1], scale[2]);
    // Whole pixels; a box of any size has its corners in numbers that can be subtracted.
    auto const pixel = [](double v) { return VUNearest(std::clamp(v, -1e9, 1e9)); };
    int left = std::numeric_limits<int>::max();
    int right = std::numeric_limits<int>::min();
    int bottom = left;
    int top = right;
    for (auto const& place : kBoxCorners) {
        std::optional<CVertex> const corner
            = camera.Project({ place[0] * scale[0], place[1] * scale[1], place[2] * scale[2] });
        if (!corner)
            return 1.0;
        int const x = pixel(corner->X());
        int const y = pixel(corner->Y());
        left = std::min(left, x);
        right = std::max(right, x);
        bottom = std::min(bottom, y);
        top = std::max(top, y);
    }
    // A box that is seen as a line counts as one pixel high.
    return static_cast<double>(std::max(right - left, 1)) / std::max(top - bottom, 1);
}

int C3DGraph::WindowToUnits(int x, int y, double& unitsX, double& unitsY, double& unitsZ)
{
    int const height = m_windowRect.Height();
    int const upwards = height - y;
    if (m_graphRect.Width() == 0 || m_windowRect.Width() == 0 || !m_ownPicture->isDrawn || x < 0
        || x > m_windowRect.Width() - 1 || upwards < 0 || upwards > height - 1)
        return 0;
    if (!m_axes[0] || !m_axes[1] || !m_axes[2])
        return 0;
    float depth = 1.0F;
    try {
        GLCanvas::Scope const scope(m_ownPicture->canvas);
        gl::ReadPixels(x, upwards, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    } catch (Error const&) {
        // Without OpenGL nothing was drawn that could lie under the pixel.
        return 0;
    }
    if (!(depth > 0.0F && depth < 1.0F))
        return 0;
    std::optional<CVertex> const point
        = m_ownPicture->camera.Unproject({ static_cast<double>(x), static_cast<double>(upwards), depth });
    if (!point)
        return 0;
    unitsX = m_axes[0]->GetWorldVal(point->X(), 1);
    unitsY = m_axes[1]->GetWorldVal(point->Y(), 1);
    unitsZ = m_axes[2]->GetWorldVal(point->Z(), 1);
    return 1;
}

} // namespace ombrel
