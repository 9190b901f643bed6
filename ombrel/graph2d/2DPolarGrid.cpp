#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/axes/GridPen.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C2DPolarGrid::kClass = PersistentClass<C2DPolarGrid, CGraphComponent>("C2DPolarGrid");

C2DPolarGrid::C2DPolarGrid(CGraph* graph)
    : CGraphComponent(graph)
    , m_major(PreferredMajorGridLine())
    , m_minor(PreferredMinorGridLine())
{
}

void C2DPolarGrid::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_on, m_majorRadii, m_majorAngles, m_minorRadii, m_minorAngles);
    f.Dword(m_major.colour, m_minor.colour).Int(m_major.style, m_minor.style);
}

} // namespace ombrel
