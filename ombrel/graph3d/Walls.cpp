#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/BoxFaces.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "ombrel/prefs/Preferences.h"

namespace ombrel {

constinit CRuntimeClass const CWalls::kClass = PersistentClass<CWalls, CGraphComponent>("CWalls");

CWalls::CWalls() = default;

CWalls::CWalls(C3DGraph* graph)
    : CGraphComponent(graph)
{
    COLORREF colour = CPreferences::GetWallsColour3DDefault();
    CPreferences::GetWallsColour3D(colour);
    m_colour = Colour3(colour);
}

void CWalls::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_on).Byte(m_colour.rgb[0], m_colour.rgb[1], m_colour.rgb[2]).Int(m_xOn, m_yOn, m_floorOn);
    if (version >= 2)
        f.Int(m_lit);
}

C3DGraph* CWalls::Get3DGraph() const { return DynamicDowncast<C3DGraph>(GetGraph()); }

void CWalls::GetColour(BYTE& r, BYTE& g, BYTE& b) const
{
    r = m_colour.rgb[0];
    g = m_colour.rgb[1];
    b = m_colour.rgb[2];
}

void CWalls::UpdateGraphParameters()
{
    C3DGraph const* const graph = Get3DGraph();
    if (graph && graph->GetAxes()[0])
        graph->GetAxes()[0]->GetScaleFacs(m_scale[0], m_scale[1], m_scale[2]);
}

void CWalls::GetWalls(WallType& x, WallType& y, WallType& z) const { BackWalls(m_quadrant, m_level, x, y, z); }

void CWalls::RenderWall(WallType wall)
{
    // A little outside of the box, so that walls do not meet what lies on its faces.
    constexpr double kOutside = 1.01;
    BoxFace const& face = kBoxFaces[wall];
    float normal[3] = { 0.0F, 0.0F, 0.0F };
    normal[wall / 2] = static_cast<float>(face.sign);
    gl::Color3ubv(m_colour.rgb);
    gl::Normal3fv(normal);
    gl::Begin(GL_QUADS);
    for (int const corner : face.corners) {
        double const* const at = kBoxCorners[corner];
        gl::Vertex3d(at[0] * kOutside * m_scale[0], at[1] * kOutside * m_scale[1], at[2] * kOutside * m_scale[2]);
    }
    gl::End();
}

void CWalls::Draw()
{
    C3DGraph* const graph = Get3DGraph();
    if (!m_on || !graph || !graph->GetPicture())
        return;
    graph->EnableLighting(m_lit);
    UpdateGraphParameters();
    WallType x = wtXMin;
    WallType y = wtYMin;
    WallType z = wtZMin;
    GetWalls(x, y, z);
    gl::PolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    graph->Set1DTextureState(0, 0);
    if (m_xOn)
        RenderWall(x);
    if (m_yOn)
        RenderWall(y);
    if (m_floorOn)
        RenderWall(z);
    graph->EnableLighting(1);
}

} // namespace ombrel
