#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/graph3d/render/LineWidth.h"
#include "ombrel/graph3d/render/NearerDepth.h"
#include "ombrel/graph3d/render/SurfaceRenderer.h"
#include "ombrel/graph3d/render/TowardsViewer.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ombrel {
namespace {

using Place = std::array<double, 3>;

// A cell as it is drawn: two triangles.
class CellFaces {
public:
    CellFaces(CSurfaceMesh const& mesh, int i, int j)
        : m_mesh(mesh)
        , m_i(i)
        , m_j(j)
    {
        for (std::size_t c = 0; c < 4; ++c) {
            CVertex const v = mesh.GetNormalisedVertex(i + (c == 1 || c == 2), j + (c >= 2));
            m_corners[c] = { v.X(), v.Y(), v.Z() };
        }
        for (std::size_t t = 0; t < 2; ++t) {
            CNormal const normal = mesh.GetFaceNormal(i, j, static_cast<int>(t));
            m_normals[t] = { normal.X(), normal.Y(), normal.Z() };
        }
    }
    std::array<double, 2> FractionsOf(std::array<double, 2> const& point) const
    {
        return { (point[0] - m_mesh.GetMeshX(m_i)) / m_mesh.GetXDel(),
            (point[1] - m_mesh.GetMeshY(m_j)) / m_mesh.GetYDel() };
    }
    /// How far a place that belongs to these fractions is off the faces there, square to them.
    double Distance(Place const& place, double fx, double fy) const
    {
        std::array<double, 2> across {};
        for (std::size_t k = 0; k < 3; ++k) {
            auto const [p00, p10, p11, p01]
                = std::array { m_corners[0][k], m_corners[1][k], m_corners[2][k], m_corners[3][k] };
            double const onFace
                = fx > fy ? p00 + fx * (p10 - p00) + fy * (p11 - p10) : p00 + fx * (p11 - p01) + fy * (p01 - p00);
            for (std::size_t t = 0; t < 2; ++t)
                across[t] += (place[k] - onFace) * m_normals[t][k];
        }
        if (fx == fy)
            return std::max(std::abs(across[0]), std::abs(across[1]));
        return std::abs(across[fx > fy ? 1 : 0]);
    }

private:
    CSurfaceMesh const& m_mesh;
    int m_i;
    int m_j;
    std::array<Place, 4> m_corners;
    std::array<Place, 2> m_normals;
};

// How far a segment leaves the faces of its cell: at its ends, or where it crosses the edge between them.
double Deviation(CellFaces const& faces, ContourSegment const& segment, Place const& from, Place const& to)
{
    auto const a = faces.FractionsOf(segment.from);
    auto const b = faces.FractionsOf(segment.to);
    double deviation = std::max(faces.Distance(from, a[0], a[1]), faces.Distance(to, b[0], b[1]));
    double const sideA = a[0] - a[1];
    double const sideB = b[0] - b[1];
    if (sideA * sideB < 0.0) {
        double const f = sideA / (sideA - sideB);
        Place place {};
        for (std::size_t k = 0; k < 3; ++k)
            place[k] = from[k] + f * (to[k] - from[k]);
        double const onEdge = a[0] + f * (b[0] - a[0]);
        deviation = std::max(deviation, faces.Distance(place, onEdge, onEdge));
    }
    return deviation;
}

// How much nearer, as the depth test sees it, lines come that leave the faces by so much: twice, since faces stand at a
// slant to the viewer. In steps, so that few groups are drawn.
double ExtraDistance(double deviation)
{
    if (!(2.0 * deviation > kLineDistance))
        return 0.0;
    double step = 2.0 * kLineDistance;
    while (step < 2.0 * deviation && step < 1.0)
        step *= 2.0;
    return step;
}

} // namespace

void SurfaceRenderer::MakeContourLines(CSurface const& surface)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    std::vector<std::array<float, 3>> vertices;
    std::vector<ContourSegment> segments;
    m_lineGroups.clear();
    for (std::size_t level = 0; level < m_linesKey.levels.size(); ++level) {
        double const value = m_linesKey.levels[level];
        segments.clear();
        surface.FindContourSegments(value, segments);
        std::map<double, std::vector<std::array<float, 3>>> groups;
        for (ContourSegment const& segment : segments) {
            auto const placeOf = [&](std::array<double, 2> const& point) {
                CVertex const v = surface.GetContourPoint(segment, point, value);
                return Place { mesh.GetViewVal(v.X(), atXAxis), mesh.GetViewVal(v.Y(), atYAxis),
                    mesh.GetViewVal(v.Z(), atZAxis) };
            };
            Place const from = placeOf(segment.from);
            Place const to = placeOf(segment.to);
            CellFaces const faces(mesh, segment.i, segment.j);
            auto& group = groups[ExtraDistance(Deviation(faces, segment, from, to))];
            for (Place const& place : { from, to })
                group.push_back(
                    { static_cast<float>(place[0]), static_cast<float>(place[1]), static_cast<float>(place[2]) });
        }
        for (auto const& [distance, points] : groups) {
            m_lineGroups.push_back({ level, distance, { vertices.size(), points.size() } });
            vertices.insert(vertices.end(), points.begin(), points.end());
        }
    }
    FillBuffer(m_lineBuffer, GL_ARRAY_BUFFER, vertices);
}

void SurfaceRenderer::DrawContourLines(CSurface const& surface, C3DGraph& graph)
{
    auto const levels = surface.GetContourLevels();
    LinesKey key { surface.m_revision, surface.GetSurfaceMesh()->GetBoxAxes(), { levels.begin(), levels.end() } };
    if (!(key == m_linesKey) || !m_lineBuffer.IsAlive()) {
        m_linesKey = std::move(key);
        MakeContourLines(surface);
    }
    graph.EnableLighting(0);
    gl::LineWidth(GetValidLineWidth(surface.GetContourScaleFac() * graph.GetLineWidth(2)));
    TowardsViewer const moved(graph);
    gl::EnableClientState(GL_VERTEX_ARRAY);
    gl::BindBuffer(GL_ARRAY_BUFFER, m_lineBuffer.Name());
    gl::VertexPointer(3, GL_FLOAT, 0, nullptr);
    for (LineGroup const& group : m_lineGroups) {
        auto const level = static_cast<int>(group.level);
        Colour3 const colour(
            surface.GetContourColourMode() ? surface.GetContourLineColours().GetAt(level) : surface.GetContourColour());
        gl::Color3ubv(colour.rgb);
        NearerDepth const depth(group.distance);
        gl::DrawArrays(GL_LINES, static_cast<GLint>(group.vertices.first), static_cast<GLsizei>(group.vertices.count));
    }
    gl::BindBuffer(GL_ARRAY_BUFFER, 0);
    gl::DisableClientState(GL_VERTEX_ARRAY);
    graph.EnableLighting(1);
    gl::LineWidth(1.0F);
}

} // namespace ombrel
