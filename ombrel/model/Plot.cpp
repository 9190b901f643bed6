#include "ombrel/model/Plot.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const CPlot::kClass = PersistentClass<CPlot, CGraphComponent>("CPlot");

void CPlot::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_itemType).String(m_title).Owned(m_curves);
    for (CPlotComponent* curve : m_curves)
        curve->SetPlot(this);
}

void CPlot::SetGraph(CGraph* graph)
{
    CGraphComponent::SetGraph(graph);
    for (CPlotComponent* curve : m_curves)
        curve->SetPlot(this);
}

int CPlot::ZValPropertyModified() const
{
    return std::any_of(m_curves.begin(), m_curves.end(), [](CPlotComponent* c) { return c->ZValPropertyModified(); });
}

void CPlot::UpdateGraphParameters()
{
    for (CPlotComponent* curve : m_curves)
        curve->UpdateGraphParameters();
}

void CPlot::ResetModifiedFlags()
{
    for (CPlotComponent* curve : m_curves)
        curve->ResetModifiedFlags();
}

CObject* CPlot::GetObjectByTag(unsigned long tag)
{
    if (tag == GetTag())
        return this;
    for (CPlotComponent* curve : m_curves) {
        if (curve->GetTag() == tag)
            return curve;
    }
    return nullptr;
}

void CPlot::InvalidateDeviceObjects()
{
    for (CPlotComponent* curve : m_curves)
        curve->InvalidateDeviceObjects();
}

void CPlot::RestoreDeviceObjects()
{
    for (CPlotComponent* curve : m_curves)
        curve->RestoreDeviceObjects();
}

void CPlot::AddComponent(CPlotComponent* curve)
{
    std::unique_ptr<CPlotComponent> owned(curve);
    if (GetGraph())
        curve->SetTag(GetGraph()->GetNewTag());
    m_curves.Add(std::move(owned));
    SetGraphModified();
}

int CPlot::GetDataSize()
{
    int size = 0;
    for (CPlotComponent* curve : m_curves)
        size += curve->GetDataSize();
    return size;
}

int CPlot::HasDefinedCurve()
{
    return std::any_of(
        m_curves.begin(), m_curves.end(), [](CPlotComponent* c) { return c->IsDefined() && c->IsValid(); });
}

CPlotComponent* CPlot::GetCurve(CString const& title) const
{
    for (CPlotComponent* curve : m_curves) {
        if (curve->GetTitle() == title)
            return curve;
    }
    return nullptr;
}

bool CPlot::RemoveComponent(CPlotComponent* curve)
{
    // The caller owns the curve from here on.
    bool const removed = m_curves.Detach(m_curves.Find(curve)).release() != nullptr;
    if (removed)
        SetGraphModified();
    return removed;
}

int CPlot::HasCurveWithColour(unsigned long colour) const
{
    return std::any_of(
        m_curves.begin(), m_curves.end(), [colour](CPlotComponent* c) { return c->GetColour() == colour; });
}

int CPlot::HasDateCurve() const
{
    return std::any_of(m_curves.begin(), m_curves.end(), [](CPlotComponent* c) { return c->GetXValueKind() == 1; });
}

void CPlot::SortByTag()
{
    SelectionSortByTag(m_curves);
    SetGraphModified();
}

void CPlot::SetComponentTags()
{
    for (CPlotComponent* curve : m_curves) {
        if (GetGraph())
            curve->SetTag(GetGraph()->GetNewTag());
    }
}

} // namespace ombrel
