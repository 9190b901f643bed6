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
    // Readers that know no other labels take these values for a grid that is on.
    int on = m_on == 1 ? 1 + m_angleLabels : m_on;
    f.Int(on, m_majorRadii, m_majorAngles, m_minorRadii, m_minorAngles);
    if (ar.IsLoading()) {
        bool const hasLabels = on == 1 + alDegrees || on == 1 + alBearings;
        m_on = hasLabels ? 1 : on;
        m_angleLabels = hasLabels ? static_cast<AngleLabels>(on - 1) : alPlain;
    }
    f.Dword(m_major.colour, m_minor.colour).Int(m_major.style, m_minor.style);
}

} // namespace ombrel
