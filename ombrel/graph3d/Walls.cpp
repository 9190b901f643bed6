#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/framework/ArchiveFields.h"
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

} // namespace ombrel
