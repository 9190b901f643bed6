#include "ombrel/graph3d/objects/ObjectScene.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DObject.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/render/NearerDepth.h"

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

/// Whether a place in the box is one that a picture can show at all.
bool IsUsable(CVertex const& place)
{
    constexpr double kFarthest = 1e30;
    double const* const p = place.GetData();
    return std::all_of(p, p + 3, [](double c) { return std::fabs(c) < kFarthest; });
}

/// The face the way round that its corners' normals say, since OpenGL lights the side that turns to the left by them,
/// and the other one by their opposites: placements may mirror an object.
ObjectMesh::Face Turned(ObjectMesh const& mesh, ObjectMesh::Face const& face)
{
    auto const at = [&](std::size_t k) -> CVertex const& { return mesh.points[face[k]].vertex; };
    CVertex const u = at(2) - at(0);
    CVertex const v = at(3) - at(1);
    CVertex const cross(u.Y() * v.Z() - u.Z() * v.Y(), u.Z() * v.X() - u.X() * v.Z(), u.X() * v.Y() - u.Y() * v.X());
    double dot = 0.0;
    for (std::uint32_t const corner : face) {
        CNormal const& n = mesh.points[corner].normal;
        dot += cross.X() * n.X() + cross.Y() * n.Y() + cross.Z() * n.Z();
    }
    // A triangle's third corner stays the one that is repeated.
    return dot < 0.0 ? ObjectMesh::Face { face[1], face[0], face[3], face[2] } : face;
}

} // namespace

void ObjectScene::Clear()
{
    for (FaceBatch* batch : { &m_opaque, &m_transparent, &m_wires })
        batch->Clear();
}

void ObjectScene::Add(C3DObject const& object, BoxAxes const& axes)
{
    ObjectMesh mesh;
    object.MakeMesh(mesh, object.GetMostDrawnDivisions());
    bool const hasWires = object.GetWireframeOn() != 0;
    FaceBatch& faces = object.IsTransparent() ? m_transparent : m_opaque;
    auto const firstPoint = static_cast<std::uint32_t>(faces.GetVertices().size());
    auto const firstWirePoint = static_cast<std::uint32_t>(m_wires.GetVertices().size());
    std::vector<bool> isUsable(mesh.points.size());
    auto const wireColour = FaceVertex::Bytes(object.GetWireframeColour());
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        CCoord const& point = mesh.points[i];
        CVertex const place = GetBoxPlace(axes, point.vertex);
        isUsable[i] = IsUsable(place);
        FaceVertex vertex;
        if (isUsable[i])
            vertex.place = FaceVertex::Floats(place);
        vertex.normal = FaceVertex::Floats(point.normal);
        vertex.colour = FaceVertex::Bytes(object.GetVertexColour(point.vertex.Z()), object.GetTransparency());
        faces.AddVertex(vertex);
        if (hasWires) {
            vertex.colour = wireColour;
            m_wires.AddVertex(vertex);
        }
    }
    for (ObjectMesh::Face const& anyWay : mesh.faces) {
        ObjectMesh::Face const face = Turned(mesh, anyWay);
        if (!std::all_of(face.begin(), face.end(), [&](std::uint32_t corner) { return isUsable[corner]; }))
            continue;
        faces.AddTriangle(firstPoint + face[0], firstPoint + face[1], firstPoint + face[2]);
        if (face[3] != face[2])
            faces.AddTriangle(firstPoint + face[0], firstPoint + face[2], firstPoint + face[3]);
        for (std::size_t k = 0; hasWires && k < face.size(); ++k) {
            std::uint32_t const from = face[k];
            std::uint32_t const to = face[(k + 1) % face.size()];
            if (from != to)
                m_wires.AddLine(firstWirePoint + from, firstWirePoint + to);
        }
    }
}

void ObjectScene::Draw(C3DGraph& graph)
{
    m_opaque.DrawFaces(graph, 0);
    {
        NearerDepth const nearer(0.002);
        m_wires.DrawLines(graph, graph.GetLineWidth(3), 0);
    }
    if (!m_transparent.IsEmpty())
        m_transparent.AddTransparent(graph, 0);
}

void ObjectScene::InvalidateDeviceObjects()
{
    for (FaceBatch* batch : { &m_opaque, &m_transparent, &m_wires })
        batch->InvalidateDeviceObjects();
}

} // namespace ombrel
