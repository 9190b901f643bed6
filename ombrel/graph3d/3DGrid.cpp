#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/prefs/Preferences.h"

namespace ombrel {

constinit CRuntimeClass const C3DGrid::kClass = PersistentClass<C3DGrid, CGraphComponent>("C3DGrid");

C3DGrid::C3DGrid() = default;

C3DGrid::C3DGrid(C3DGraph* graph)
    : CGraphComponent(graph)
{
    COLORREF colour = CPreferences::GetGridColour3DDefault();
    CPreferences::GetGridColour3D(colour);
    m_colour = Colour3(colour);
}

void C3DGrid::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_on).Double(m_scale[0], m_scale[1], m_scale[2]);
    f.Int(m_x.lines, m_y.lines, m_z.lines, m_synch, m_x.mode, m_y.mode, m_z.mode);
    f.Double(m_x.min, m_x.del, m_y.min, m_y.del, m_z.min, m_z.del);
    f.Int(m_x.planeOn, m_y.planeOn, m_z.planeOn, m_x.minorDivs, m_y.minorDivs, m_z.minorDivs, m_useLighting);
    f.Byte(m_colour.rgb[0], m_colour.rgb[1], m_colour.rgb[2]);
}

C3DGraph* C3DGrid::Get3DGraph() const { return DynamicDowncast<C3DGraph>(GetGraph()); }

void C3DGrid::GetColour(BYTE& r, BYTE& g, BYTE& b) const
{
    r = m_colour.rgb[0];
    g = m_colour.rgb[1];
    b = m_colour.rgb[2];
}

void C3DGrid::UpdateGraphParameters()
{
    C3DGraph const* const graph = Get3DGraph();
    if (graph && graph->GetAxes()[0])
        graph->GetAxes()[0]->GetScaleFacs(m_scale[0], m_scale[1], m_scale[2]);
}

} // namespace ombrel
