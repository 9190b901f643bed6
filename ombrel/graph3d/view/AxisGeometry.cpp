#include "ombrel/graph3d/view/AxisGeometry.h"

#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

struct Edge {
    double x;
    double y;
};

/// The upright edges that stand at the left or right end of the box, by octant.
constexpr Edge kUprightEdges[8] = { { 0.5, -0.5 }, { -0.5, 0.5 }, { 0.5, 0.5 }, { -0.5, -0.5 }, { -0.5, 0.5 },
    { 0.5, -0.5 }, { -0.5, -0.5 }, { 0.5, 0.5 } };

} // namespace

AxisGeometry::AxisGeometry(AxisType type, ViewDirection const& view, std::array<double, 3> const& scale)
    : m_type(type)
    , m_view(view)
    , m_scale(scale)
    , m_sin(static_cast<float>(std::sin(view.azimuth * std::numbers::pi / 180.0)))
    , m_cos(static_cast<float>(std::cos(view.azimuth * std::numbers::pi / 180.0)))
{
    double const z = view.level == 0 ? -0.5 : 0.5;
    Edge const upright = kUprightEdges[view.octant];
    switch (type) {
    case atXAxis:
        m_edge = { 0.0, view.quadrant <= 1 ? 0.5 : -0.5, z };
        break;
    case atYAxis:
        m_edge = { view.quadrant == 0 || view.quadrant == 3 ? 0.5 : -0.5, 0.0, z };
        break;
    default:
        m_edge = { upright.x, upright.y, 0.0 };
        break;
    }
}

CVertex AxisGeometry::At(double along) const
{
    CVertex point(m_edge[0] * m_scale[0], m_edge[1] * m_scale[1], m_edge[2] * m_scale[2]);
    point[m_type == atXAxis ? 0 : m_type == atYAxis ? 1 : 2] = along;
    return point;
}

CVertex AxisGeometry::TickEnd(CVertex const& position, double length) const
{
    if (m_type == atXAxis || m_type == atYAxis)
        return position + CVertex(0.0, 0.0, m_view.level == 0 ? -length : length);
    switch (m_view.octant) {
    case 0:
    case 3:
        return position + CVertex(0.0, -length, 0.0);
    case 1:
    case 6:
        return position + CVertex(-length, 0.0, 0.0);
    case 2:
    case 5:
        return position + CVertex(length, 0.0, 0.0);
    default:
        return position + CVertex(0.0, length, 0.0);
    }
}

// Products of sine, cosine and sizes are computed in single precision.
CVertex AxisGeometry::LabelOffset(double tickLength, double width, double height, bool horizontal) const
{
    double const length = tickLength;
    float const w = static_cast<float>(width);
    float const h = static_cast<float>(height);
    if (m_type == atZAxis) {
        double const r = w / 2.0F + 1.5 * length + length;
        double const side = IsEvenOctant() ? 1.0 : -1.0;
        return { side * m_sin * r, -side * m_cos * r, 0.0 };
    }
    bool const above = m_view.level == 1;
    if (horizontal) {
        double const k = 1.5 * length;
        double const dz = above ? length + h / 2.0F : -(length + h / 2.0F);
        float const sh = m_sin * h / 2.0F;
        float const ch = m_cos * h / 2.0F;
        float const sw = m_sin * w / 2.0F;
        float const cw = m_cos * w / 2.0F;
        bool const isX = m_type == atXAxis;
        switch (m_view.quadrant) {
        case 0:
            return isX ? CVertex(0.0, sh + cw + k, dz) : CVertex(ch + sw + k, 0.0, dz);
        case 1:
            return isX ? CVertex(0.0, sh - cw + k, dz) : CVertex(ch - sw - k, 0.0, dz);
        case 2:
            return isX ? CVertex(0.0, sh + cw - k, dz) : CVertex(ch + sw - k, 0.0, dz);
        default:
            return isX ? CVertex(0.0, sh - cw - k, dz) : CVertex(ch - sw + k, 0.0, dz);
        }
    }
    float const sh = m_sin * h;
    float const ch = m_cos * h;
    if (m_type == atXAxis) {
        double const k = 1.5 * length;
        double const dz = above ? length + w : -length;
        bool const isFar = m_view.quadrant <= 1;
        bool const isTurned = m_view.quadrant == 1 || m_view.quadrant == 3;
        return { sh / 2.0F, (isFar ? k : -k) - (isTurned ? ch : 0.0F), dz };
    }
    double const k = 0.75 * length;
    double const dz = above ? (m_view.quadrant == 0 ? length + w : length) : -length;
    double dx = 0.0;
    switch (m_view.quadrant) {
    case 0:
        dx = sh + k;
        break;
    case 1:
        dx = -k;
        break;
    case 2:
        dx = sh - k;
        break;
    default:
        dx = ch + k;
        break;
    }
    return { dx, -ch / 2.0F, dz };
}

CVertex AxisGeometry::TitleOffset(double tickRoom, double widestLabel, double titleWidth, bool horizontal) const
{
    float const room = static_cast<float>(tickRoom);
    float const label = static_cast<float>(widestLabel);
    float const title = static_cast<float>(titleWidth);
    if (m_type == atZAxis) {
        bool const even = IsEvenOctant();
        double r = 0.03;
        if (horizontal)
            r += (label + title) / 2.0F;
        else
            r += even ? label / 2.0F + room : label / 2.0F;
        double const side = even ? 1.0 : -1.0;
        return { side * m_sin * r, -side * m_cos * r, 0.0 };
    }
    double const dz = m_view.level == 1 ? 2.0 * tickRoom : -2.0 * tickRoom;
    if (m_type == atXAxis) {
        float const turned = m_sin * room / 2.0F;
        float const near = m_cos * (6.0F * title + label) / 2.0F;
        float const far = m_cos * (6.0F * title + label + room) / 2.0F;
        switch (m_view.quadrant) {
        case 0:
            return { 0.0, turned + near + room, dz };
        case 1:
            return { 0.0, turned - near + room, dz };
        case 2:
            return { 0.0, turned + far - room, dz };
        default:
            return { 0.0, turned - far - room, dz };
        }
    }
    float const turned = m_cos * room / 2.0F;
    float const m = m_sin * (6.0F * title + label + room) / 2.0F;
    switch (m_view.quadrant) {
    case 0:
        return { turned + m + room, 0.0, dz };
    case 1:
        return { turned - m - room, 0.0, dz };
    case 2:
        return { turned + m - room, 0.0, dz };
    default:
        return { turned - m + room, 0.0, dz };
    }
}

} // namespace ombrel
