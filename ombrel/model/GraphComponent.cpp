#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CGraphComponent::kClass = PersistentClass<CGraphComponent, CObject>("CGraphComponent");

void CGraphComponent::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Dword(m_colour).Int(m_drawMode, m_modified, m_zValPropertyModified).Dword(m_tag);
}

void CGraphComponent::ResetModifiedFlags()
{
    m_modified = 0;
    m_zValPropertyModified = 0;
}

CObject* CGraphComponent::GetObjectByTag(unsigned long tag) { return tag == m_tag ? this : nullptr; }

void CGraphComponent::SetGraphModified()
{
    if (m_graph)
        m_graph->SetModifiedFlag(1);
}

void CGraphComponent::SetSelected(int selected)
{
    if (selected && m_graph)
        m_graph->ClearSelection();
    m_selected = selected;
}

} // namespace ombrel
