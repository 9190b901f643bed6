#include "ombrel/graph3d/bars/BarGeometry.h"

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

// A box whose sides are 2 long, and the corners of its faces, by face.
constexpr std::array<std::array<float, 3>, 8> kCorners { { { -1, -1, -1 }, { -1, -1, 1 }, { -1, 1, 1 }, { -1, 1, -1 },
    { 1, -1, -1 }, { 1, -1, 1 }, { 1, 1, 1 }, { 1, 1, -1 } } };
struct Face {
    std::array<std::size_t, 4> corners;
    std::array<float, 3> normal;
};
constexpr std::array<Face, 6> kFaces { { { { 0, 1, 2, 3 }, { -1, 0, 0 } }, { { 4, 7, 6, 5 }, { 1, 0, 0 } },
    { { 0, 4, 5, 1 }, { 0, -1, 0 } }, { { 3, 2, 6, 7 }, { 0, 1, 0 } }, { { 0, 3, 7, 4 }, { 0, 0, -1 } },
    { { 1, 5, 6, 2 }, { 0, 0, 1 } } } };

} // namespace

BarsKey::BarsKey(C3DCurve const& curve, std::uint64_t dataRevision, Bar3DSettings const& barSettings)
    : revision(dataRevision)
    , settings(barSettings)
    , colours(curve)
{
    curve.GetBoxAxes(axes);
}

BarBuilder::BarBuilder(FaceBatch& batch, BoxAxes const& axes, double baseline, BarWidths const& widths)
    : m_batch(batch)
    , m_axes(axes)
    , m_base(axes[2].GetViewVal(baseline))
    , m_widths(widths)
{
}

void BarBuilder::Add(CVertex const& place, COLORREF colour)
{
    CVertex const end = GetBoxPlace(m_axes, place);
    double const low = std::min(end.Z(), m_base);
    double const height = std::fabs(end.Z() - m_base);
    if (!std::isfinite(end.X()) || !std::isfinite(end.Y()) || !std::isfinite(height))
        return;
    FaceVertex vertex;
    vertex.colour = FaceVertex::Bytes(colour);
    for (Face const& face : kFaces) {
        vertex.normal = face.normal;
        std::array<std::uint32_t, 4> indices {};
        for (std::size_t k = 0; k < indices.size(); ++k) {
            auto const& corner = kCorners[face.corners[k]];
            vertex.place = FaceVertex::Floats(CVertex(end.X() + corner[0] * m_widths.x / 2.0,
                end.Y() + corner[1] * m_widths.y / 2.0, corner[2] < 0 ? low : low + height));
            indices[k] = m_batch.AddVertex(vertex);
        }
        m_batch.AddTriangle(indices[0], indices[1], indices[2]);
        m_batch.AddTriangle(indices[0], indices[2], indices[3]);
    }
}

} // namespace ombrel
