#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ombrel {

void C2DGraph::DrawBody(CDC& dc)
{
    CRect const window({ 0, 0 }, m_windowRect.Size());
    CPort port(&dc, window, m_graphRect, m_layout.unitsRect);
    dc.FillSolidRect({ 0, 0, window.right + 1, window.bottom + 1 }, m_windowBackground);
    DrawGraphBackground(port);
    DrawComponents(port);
}

void C2DGraph::DrawGraphBackground(CPort& port)
{
    if (!m_axes)
        return;
    CRealRect const range = m_axes->GetRealExtentRect();
    CPoint const topLeft = port.UnitsToWindow(range.TopLeft());
    CPoint const bottomRight = port.UnitsToWindow(range.BottomRight());
    port.GetDC()->FillSolidRect({ topLeft.x, topLeft.y, bottomRight.x, bottomRight.y }, m_graphBackground);
}

void C2DGraph::GetDefaultDrawOrderTags(CDWordArray& tags) const
{
    tags.RemoveAll();
    auto const add = [&tags](unsigned long tag) { tags.Add(static_cast<DWORD>(tag)); };
    for (CGraphComponent* component : GetComponentArray()) {
        if (component == m_grid || component == m_axes)
            add(component->GetTag());
        if (component != GetPlotArray())
            continue;
        for (CPlot* plot : GetPlotArray()->GetPlots()) {
            if (plot->IsDrawnAsWhole()) {
                add(plot->GetTag());
                continue;
            }
            for (CPlotComponent* curve : plot->GetComponents())
                add(curve->GetTag());
        }
    }
}

void C2DGraph::GetDrawOrderTags(CDWordArray& tags) const
{
    if (m_drawOrder.IsEmpty())
        GetDefaultDrawOrderTags(tags);
    else
        tags = m_drawOrder;
}

CDWordArray C2DGraph::WithoutRepetitions(CDWordArray const& tags)
{
    CDWordArray unique;
    std::unordered_set<DWORD> seen;
    std::copy_if(tags.begin(), tags.end(), std::back_inserter(unique.Values()),
        [&seen](DWORD tag) { return seen.insert(tag).second; });
    return unique;
}

bool C2DGraph::DrawOrderTagsSameAsDefault(CDWordArray const& tags) const
{
    CDWordArray defaultTags;
    GetDefaultDrawOrderTags(defaultTags);
    return WithoutRepetitions(tags) == WithoutRepetitions(defaultTags);
}

void C2DGraph::SetDrawOrderTags(CDWordArray const& tags)
{
    m_drawOrder = DrawOrderTagsSameAsDefault(tags) ? CDWordArray() : WithoutRepetitions(tags);
    SetModifiedFlag(1);
}

void C2DGraph::ResetDrawOrderTags()
{
    m_drawOrder = { 1, 2 };
    if (GetPlotArray())
        GetPlotArray()->SortByTag();
    SetModifiedFlag(1);
}

void C2DGraph::RemoveInvalidDrawOrderTags()
{
    std::unordered_set<DWORD> const valid = GetAllTags();
    std::erase_if(m_drawOrder.Values(), [&valid](DWORD tag) { return !valid.contains(tag); });
}

void C2DGraph::AppendNewDrawOrderTags()
{
    CDWordArray all = m_drawOrder;
    CDWordArray defaultTags;
    GetDefaultDrawOrderTags(defaultTags);
    all.Append(defaultTags);
    m_drawOrder = WithoutRepetitions(all);
}

void C2DGraph::DrawComponents(CPort& port)
{
    if (m_drawOrder.IsEmpty()) {
        DrawComponentsDefaultOrder(port);
        return;
    }
    RemoveInvalidDrawOrderTags();
    AppendNewDrawOrderTags();
    DrawComponentsUserOrder(port);
}

void C2DGraph::DrawComponentsDefaultOrder(CPort& port)
{
    for (CGraphComponent* component : GetComponentArray()) {
        if (!IsAnnotation(component))
            component->Draw(&port);
    }
}

namespace {

/// What each tag stands for in a drawing order: components, plots, and curves of plots that are not drawn as a whole.
/// What shares a tag is drawn in the order of the arrays.
class TaggedDrawing {
public:
    TaggedDrawing(OwnedArray<CGraphComponent> const& components, CPlotArray const* plots)
    {
        for (CGraphComponent* component : components) {
            if (component != plots)
                m_components[component->GetTag()].push_back(component);
        }
        for (int i = 0; plots && i < plots->GetSize(); ++i) {
            CPlot* const plot = plots->GetAt(i);
            m_plots[plot->GetTag()].push_back({ plot, nullptr });
            if (plot->IsDrawnAsWhole())
                continue;
            for (CPlotComponent* curve : plot->GetComponents())
                m_plots[curve->GetTag()].push_back({ nullptr, curve });
        }
    }
    void DrawComponents(unsigned long tag, CPort& port) const
    {
        auto const found = m_components.find(tag);
        if (found == m_components.end())
            return;
        for (CGraphComponent* component : found->second)
            component->Draw(&port);
    }
    /// Clipped to the rectangle, unless it is null.
    void DrawPlots(unsigned long tag, CPort& port, CRect const* clip) const
    {
        auto const found = m_plots.find(tag);
        if (found == m_plots.end())
            return;
        for (auto const& [plot, curve] : found->second) {
            port.SetClipRect(clip);
            if (plot)
                plot->Draw(&port);
            else
                curve->Draw(&port);
        }
        port.SetClipRect(nullptr);
    }

private:
    /// One of both is null.
    struct PlotOrCurve {
        CPlot* plot;
        CPlotComponent* curve;
    };
    std::unordered_map<unsigned long, std::vector<CGraphComponent*>> m_components;
    std::unordered_map<unsigned long, std::vector<PlotOrCurve>> m_plots;
};

} // namespace

void C2DGraph::DrawComponentsUserOrder(CPort& port)
{
    CRect const clip = GetClipRect();
    TaggedDrawing const drawing(GetComponentArray(), GetPlotArray());
    std::unordered_set<DWORD> ordered(m_drawOrder.begin(), m_drawOrder.end());
    bool const polarGridHasPlace = !m_polarGrid || ordered.contains(static_cast<DWORD>(m_polarGrid->GetTag()));
    for (DWORD const tag : m_drawOrder) {
        drawing.DrawComponents(tag, port);
        // While the polar grid is on the axes stay hidden: it stands for them.
        if (m_axes && m_axes->GetTag() == tag && !polarGridHasPlace)
            m_polarGrid->Draw(&port);
        drawing.DrawPlots(tag, port, &clip);
    }
    CDWordArray defaultTags;
    GetDefaultDrawOrderTags(defaultTags);
    for (DWORD const tag : defaultTags) {
        if (ordered.insert(tag).second)
            drawing.DrawPlots(tag, port, nullptr);
    }
}

} // namespace ombrel
