#include "ombrel/graph3d/bars/BarGeometry.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ombrel {
namespace {

/// The sides of a box: which way they look, and the corners around them, each by whether it is the higher (1) or the
/// lower one (0) along x, y and z.
struct BoxSide {
    std::size_t axis;
    bool isHigh;
    std::array<std::array<std::size_t, 3>, 4> corners;
};
constexpr std::array<BoxSide, 6> kSides { { { 0, false, { { { 0, 0, 0 }, { 0, 0, 1 }, { 0, 1, 1 }, { 0, 1, 0 } } } },
    { 0, true, { { { 1, 0, 0 }, { 1, 1, 0 }, { 1, 1, 1 }, { 1, 0, 1 } } } },
    { 1, false, { { { 0, 0, 0 }, { 1, 0, 0 }, { 1, 0, 1 }, { 0, 0, 1 } } } },
    { 1, true, { { { 0, 1, 0 }, { 0, 1, 1 }, { 1, 1, 1 }, { 1, 1, 0 } } } },
    { 2, false, { { { 0, 0, 0 }, { 0, 1, 0 }, { 1, 1, 0 }, { 1, 0, 0 } } } },
    { 2, true, { { { 0, 0, 1 }, { 1, 0, 1 }, { 1, 1, 1 }, { 0, 1, 1 } } } } } };

struct Box {
    /// The lower and the higher coordinates.
    std::array<std::array<double, 3>, 2> ends;
    std::array<BYTE, 4> colour;
};

constexpr double kSector = std::numbers::pi / 4.0;

int EyeSector(C3DGraph const& graph)
{
    if (!graph.GetPicture())
        return 0;
    CVertex const eye = graph.GetPicture()->camera.GetEye();
    return static_cast<int>(std::floor(std::atan2(eye.Y(), eye.X()) / kSector));
}

} // namespace

BarsKey::BarsKey(
    C3DCurve const& curve, C3DGraph const& graph, std::uint64_t dataRevision, Bar3DSettings const& barSettings)
    : revision(dataRevision)
    , settings(barSettings)
    , colours(curve)
    , eyeSector(EyeSector(graph))
{
    curve.GetBoxAxes(axes);
}

void BarBatch::Clear()
{
    m_faces.Clear();
    m_sides = {};
    m_isCut = false;
}

void BarBatch::Build(std::vector<Bar> const& bars, BarsKey const& key, BarWidths const& defaultWidths)
{
    BoxAxes const& axes = key.axes;
    double const base = axes[2].GetViewVal(key.settings.baseline.Get(axes[2]));
    double const halfX = std::fabs(defaultWidths.x * axes[0].scale * key.settings.widthScaleX) / 2.0;
    double const halfY = std::fabs(defaultWidths.y * axes[1].scale * key.settings.widthScaleY) / 2.0;
    std::vector<Box> boxes;
    for (Bar const& bar : bars) {
        CVertex const end = GetBoxPlace(axes, bar.end);
        Box const box { { { { end.X() - halfX, end.Y() - halfY, std::min(end.Z(), base) },
                            { end.X() + halfX, end.Y() + halfY, std::max(end.Z(), base) } } },
            FaceVertex::Bytes(bar.colour) };
        bool isFinite = std::isfinite(end.Z());
        for (std::size_t k = 0; k < 3; ++k) {
            isFinite = isFinite && std::isfinite(box.ends[0][k]) && std::isfinite(box.ends[1][k]);
            m_isCut = m_isCut || std::max(-box.ends[0][k], box.ends[1][k]) > (0.5 + 1e-6) * axes[k].scale;
        }
        if (isFinite)
            boxes.push_back(box);
    }
    if (boxes.empty())
        return;
    double const towardsEye = (key.eyeSector + 0.5) * kSector;
    auto const nearness = [x = std::cos(towardsEye), y = std::sin(towardsEye)](
                              Box const& box) { return x * box.ends[0][0] + y * box.ends[0][1]; };
    if (nearness(boxes.back()) > nearness(boxes.front()))
        std::ranges::reverse(boxes);
    for (std::size_t s = 0; s < kSides.size(); ++s) {
        BoxSide const& side = kSides[s];
        double const sign = side.isHigh ? 1.0 : -1.0;
        FaceVertex vertex;
        vertex.normal[side.axis] = static_cast<float>(sign);
        m_sides[s] = { { m_faces.GetTriangles().size(), 6 * boxes.size() }, std::numeric_limits<double>::infinity() };
        for (Box const& box : boxes) {
            vertex.colour = box.colour;
            std::array<std::uint32_t, 4> indices {};
            for (std::size_t c = 0; c < indices.size(); ++c) {
                for (std::size_t k = 0; k < 3; ++k)
                    vertex.place[k] = static_cast<float>(box.ends[side.corners[c][k]][k]);
                indices[c] = m_faces.AddVertex(vertex);
            }
            m_faces.AddTriangle(indices[0], indices[1], indices[2]);
            m_faces.AddTriangle(indices[0], indices[2], indices[3]);
            m_sides[s].hindmost = std::min(m_sides[s].hindmost, sign * box.ends[side.isHigh ? 1 : 0][side.axis]);
        }
    }
}

std::vector<FaceBatch::Span> BarBatch::GetVisibleParts(CVertex const& eye) const
{
    std::vector<FaceBatch::Span> parts;
    for (std::size_t s = 0; s < kSides.size(); ++s) {
        double const place = eye.GetData()[kSides[s].axis] * (kSides[s].isHigh ? 1.0 : -1.0);
        if (m_isCut || place > m_sides[s].hindmost)
            parts.push_back(m_sides[s].triangles);
    }
    return parts;
}

void BarBatch::Draw(C3DGraph& graph)
{
    if (!graph.GetPicture())
        return;
    Camera const& camera = graph.GetPicture()->camera;
    // The eye so near that it may see into bars: what is before the near plane is cut away, too.
    constexpr double kHalfDiagonal = 0.87;
    if (m_isCut || camera.EyeDistance() - camera.Near() < kHalfDiagonal) {
        m_faces.DrawFaces(graph, 0);
        return;
    }
    // Nothing is cut off, and only outsides are seen: testing for the one and lighting the others took a tenth of the
    // time.
    graph.EnableClip(0);
    gl::LightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0);
    m_faces.DrawFaces(graph, 0, GetVisibleParts(camera.GetEye()));
    gl::LightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    graph.EnableClip(1);
}

} // namespace ombrel
