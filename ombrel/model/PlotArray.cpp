#include "ombrel/model/PlotArray.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/model/AxesScaleModes.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const CPlotArray::kClass = PersistentClass<CPlotArray, CGraphComponent>("CPlotArray");

namespace {

template <typename Question> int AnyPlot(OwnedArray<CPlot> const& plots, Question question)
{
    return std::any_of(plots.begin(), plots.end(), question);
}

} // namespace

void CPlotArray::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Owned(m_plots);
}

void CPlotArray::SetGraph(CGraph* graph)
{
    CGraphComponent::SetGraph(graph);
    for (CPlot* plot : m_plots)
        plot->SetGraph(graph);
}

int CPlotArray::Modified() const
{
    return AnyPlot(m_plots, [](CPlot* p) { return p->Modified(); });
}

int CPlotArray::ZValPropertyModified() const
{
    return AnyPlot(m_plots, [](CPlot* p) { return p->ZValPropertyModified(); });
}

void CPlotArray::Draw(CPort* port)
{
    CRect clip;
    if (GetGraph() && GetGraph()->GetPlotClipRect(clip))
        port->SetClipRect(&clip);
    for (CPlot* plot : m_plots)
        plot->Draw(port);
    port->SetClipRect(nullptr);
}

void CPlotArray::Draw()
{
    if (m_plots.IsEmpty() || !GetGraph())
        return;
    GetGraph()->SwitchClipping(true);
    for (CPlot* plot : m_plots)
        plot->Draw();
    GetGraph()->SwitchClipping(false);
}

void CPlotArray::UpdateGraphParameters()
{
    for (CPlot* plot : m_plots)
        plot->UpdateGraphParameters();
}

void CPlotArray::ResetModifiedFlags()
{
    CGraphComponent::ResetModifiedFlags();
    for (CPlot* plot : m_plots)
        plot->ResetModifiedFlags();
}

CObject* CPlotArray::GetObjectByTag(unsigned long tag)
{
    if (tag == GetTag())
        return this;
    for (CPlot* plot : m_plots) {
        if (CObject* const found = plot->GetObjectByTag(tag))
            return found;
    }
    return nullptr;
}

void CPlotArray::InvalidateDeviceObjects()
{
    for (CPlot* plot : m_plots)
        plot->InvalidateDeviceObjects();
}

void CPlotArray::RestoreDeviceObjects()
{
    for (CPlot* plot : m_plots)
        plot->RestoreDeviceObjects();
}

int CPlotArray::Add(CPlot* plot)
{
    int const index = m_plots.Add(std::unique_ptr<CPlot>(plot));
    SetGraphModified();
    return index;
}

void CPlotArray::RemoveAt(int index)
{
    // The caller owns the plot from here on.
    if (m_plots.Detach(index).release())
        SetGraphModified();
}

void CPlotArray::RemoveAll()
{
    m_plots.DetachAll();
    SetGraphModified();
}

int CPlotArray::HasCurveWithColour(unsigned long colour) const
{
    return AnyPlot(m_plots, [colour](CPlot* p) { return p->HasCurveWithColour(colour); });
}

int CPlotArray::HasDefinedCurve() const
{
    return AnyPlot(m_plots, [](CPlot* p) { return p->HasDefinedCurve(); });
}

int CPlotArray::HasDateCurve() const
{
    return AnyPlot(m_plots, [](CPlot* p) { return p->HasDateCurve(); });
}

void CPlotArray::SortByTag()
{
    SelectionSortByTag(m_plots);
    for (CPlot* plot : m_plots)
        plot->SortByTag();
    SetGraphModified();
}

void CPlotArray::Set2DCurveScaleModes(AxesScaleModes const* axes)
{
    if (!axes)
        return;
    for (CPlot* plot : m_plots) {
        for (CPlotComponent* curve : plot->GetComponents())
            curve->TakeOverScaleModes(axes->GetXAxisScaleMode() == 1, axes->GetYAxisScaleMode() == 1);
    }
}

void CPlotArray::GetColourRampCurves(CDWordArray& tags, CStringArray& titles) const
{
    for (CPlot* plot : m_plots) {
        for (CPlotComponent* curve : plot->GetComponents()) {
            if (curve->CanHaveColourKey()) {
                tags.Add(static_cast<DWORD>(curve->GetTag()));
                titles.Add(curve->GetTitle());
            }
        }
    }
}

void CPlotArray::CheckForGeneralObjects()
{
    for (CPlot* plot : m_plots)
        plot->CheckForGeneralObjects();
}

} // namespace ombrel
