#include "ombrel/model/Graph.h"
#include "ombrel/foundation/PlatformRandom.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const CGraph::kClass = PersistentClass<CGraph, CObject>("CGraph");

CGraph::CGraph() { m_dib.Create(1, 1, 24, nullptr); }

CGraph::~CGraph() = default;

void CGraph::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(3);
    f.Int(m_dataDimension, m_type, m_sized).Dword(m_tagCounter);
    if (version >= 2)
        f.String(m_title);
    f.Nested(m_normalisedOrigin, m_normalisedSize);
    if (ar.IsLoading())
        ClearComponents();
    f.Owned(m_components);
    if (version >= 3)
        f.Dword(m_tag).Int(m_frameOn);
    else
        m_tag = static_cast<DWORD>(GetNewTag());
    if (ar.IsLoading()) {
        FindComponents();
        AttachToChildren();
    }
}

void CGraph::FindComponents()
{
    m_plotArray = nullptr;
    for (CGraphComponent* component : m_components) {
        if (auto* const plots = DynamicDowncast<CPlotArray>(component))
            m_plotArray = plots;
    }
}

void CGraph::ClearComponents()
{
    m_plotArray = nullptr;
    m_components.DeleteAll();
}

void CGraph::AddComponent(CGraphComponent* component)
{
    component->SetTag(GetNewTag());
    m_components.Add(std::unique_ptr<CGraphComponent>(component));
    m_modified = 1;
}

bool CGraph::RemoveComponent(CGraphComponent* component)
{
    bool const removed = m_components.Detach(m_components.Find(component)).release() != nullptr;
    if (removed) {
        FindComponents();
        m_modified = 1;
    }
    return removed;
}

void CGraph::UpdateComponentParameters()
{
    for (CGraphComponent* component : m_components)
        component->UpdateGraphParameters();
}

void CGraph::AttachToChildren()
{
    for (CGraphComponent* component : m_components)
        component->SetGraph(this);
}

CPlot* CGraph::GetPlotByTag(unsigned long tag) const
{
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        if (m_plotArray->GetAt(i)->GetTag() == tag)
            return m_plotArray->GetAt(i);
    }
    return nullptr;
}

CPlot* CGraph::GetPlot(CString const& title) const
{
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        if (m_plotArray->GetAt(i)->GetTitle() == title)
            return m_plotArray->GetAt(i);
    }
    return nullptr;
}

void CGraph::GetPlotTags(ItemType type, CDWordArray& tags) const
{
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        if (m_plotArray->GetAt(i)->GetItemType() == type)
            tags.Add(static_cast<DWORD>(m_plotArray->GetAt(i)->GetTag()));
    }
}

int CGraph::HasPlotType(ItemType type) const
{
    CDWordArray tags;
    GetPlotTags(type, tags);
    return tags.IsEmpty() ? 0 : 1;
}

CPlot* CGraph::TakePlot(std::unique_ptr<CPlot> plot)
{
    if (!m_plotArray)
        return nullptr;
    plot->SetTag(GetNewTag());
    CPlot* const added = plot.release();
    m_plotArray->Add(added);
    return added;
}

bool CGraph::RemovePlot(CPlot* plot)
{
    int const index = GetPlotIndex(plot);
    if (index < 0)
        return false;
    m_plotArray->RemoveAt(index);
    return true;
}

bool CGraph::RemovePlotComponent(CPlotComponent* curve)
{
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        if (m_plotArray->GetAt(i)->RemoveComponent(curve))
            return true;
    }
    return false;
}

namespace {

/// The first curve of the plots for which the question is answered with yes, or null.
template <typename Question> CPlotComponent* FindCurve(CPlotArray const* plots, Question question)
{
    if (!plots)
        return nullptr;
    for (CPlot* plot : plots->GetPlots()) {
        for (CPlotComponent* curve : plot->GetComponents()) {
            if (question(*curve))
                return curve;
        }
    }
    return nullptr;
}

} // namespace

CPlotComponent* CGraph::GetComponentByTag(unsigned long tag) const
{
    return FindCurve(m_plotArray, [tag](CPlotComponent const& c) { return c.GetTag() == tag; });
}

CPlotComponent* CGraph::GetComponentByName(CString const& title) const
{
    return FindCurve(m_plotArray, [&title](CPlotComponent const& c) { return c.GetTitle() == title; });
}

int CGraph::IsDefined() const
{
    return FindCurve(m_plotArray, [](CPlotComponent const&) { return true; }) != nullptr;
}

bool CGraph::PlotComponentModified() const
{
    return FindCurve(m_plotArray, [](CPlotComponent const& c) { return c.Modified() != 0; }) != nullptr;
}

bool CGraph::PlotComponentDataModified() const
{
    return FindCurve(m_plotArray, [](CPlotComponent const& c) { return c.PlotDataModified() != 0; }) != nullptr;
}

namespace {

constexpr COLORREF kPlotColours[] = { RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 0, 255),
    RGB(0, 255, 255), RGB(255, 255, 0), RGB(255, 128, 0), RGB(255, 0, 128), RGB(128, 255, 0), RGB(128, 255, 0),
    RGB(0, 255, 128), RGB(128, 0, 255), RGB(0, 128, 255), RGB(128, 128, 0), RGB(128, 0, 128) };

} // namespace

unsigned long CGraph::GetColour() const
{
    std::unordered_set<unsigned long> used;
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        for (CPlotComponent const* curve : m_plotArray->GetAt(i)->GetComponents())
            used.insert(curve->GetColour());
    }
    auto const isUsed = [&used](COLORREF colour) { return used.contains(colour); };
    for (COLORREF const colour : kPlotColours) {
        if (!isUsed(colour))
            return colour;
    }
    PlatformRandom random(1234);
    COLORREF candidate = 0;
    do {
        candidate = random.NextColour();
    } while (isUsed(candidate));
    return candidate;
}

CObject* CGraph::GetObjectByTag(unsigned long tag) const
{
    for (CGraphComponent* component : m_components) {
        if (CObject* const found = component->GetObjectByTag(tag))
            return found;
    }
    return nullptr;
}

std::unordered_set<DWORD> CGraph::GetAllTags() const
{
    std::unordered_set<DWORD> tags;
    auto const add = [&tags](auto const& tagged) { tags.insert(static_cast<DWORD>(tagged.GetTag())); };
    for (CGraphComponent const* component : m_components) {
        add(*component);
        for (int i = 0; i < component->GetNumItems(); ++i)
            add(*component->GetItem(i));
    }
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        for (CPlotComponent const* curve : m_plotArray->GetAt(i)->GetComponents())
            add(*curve);
    }
    return tags;
}

void CGraph::SetComponentTags()
{
    for (CGraphComponent* component : m_components) {
        component->SetTag(GetNewTag());
        if (component != m_plotArray)
            continue;
        for (CPlot* plot : m_plotArray->GetPlots()) {
            plot->SetTag(GetNewTag());
            plot->SetComponentTags();
        }
    }
}

void CGraph::SetActivePlot(CPlot* plot, ScriptType type)
{
    m_activePlot = plot;
    m_activeScriptType = type;
}

void CGraph::SetActiveCurve(CPlotComponent* curve, ScriptType type)
{
    m_activeCurve = curve;
    m_activeScriptType = type;
}

CGraphComponent* CGraph::GetSelectedComponent() const
{
    for (CGraphComponent* component : m_components) {
        if (!component->IsArray()) {
            if (component->GetSelected())
                return component;
            continue;
        }
        for (int i = 0; i < component->GetNumItems(); ++i) {
            if (component->GetItem(i)->GetSelected())
                return component->GetItem(i);
        }
    }
    return nullptr;
}

void CGraph::ClearSelection()
{
    for (CGraphComponent* component : m_components) {
        if (!component->IsArray())
            component->SetSelected(0);
        for (int i = 0; i < component->GetNumItems(); ++i)
            component->GetItem(i)->SetSelected(0);
    }
}

bool CGraph::GraphComponentModified() const
{
    return std::any_of(m_components.begin(), m_components.end(), [](CGraphComponent* c) { return c->Modified(); });
}

void CGraph::ResetModifiedFlags()
{
    m_modified = 0;
    m_rectModified = 0;
    for (CGraphComponent* component : m_components)
        component->ResetModifiedFlags();
}

void CGraph::SetHint(long hint)
{
    if (m_hint != 0)
        m_prevHint = m_hint;
    m_hint = hint;
}

void CGraph::SetGraphRect(CRect const& graph) { SetGraphAndWindowRect(graph, m_windowRect); }

void CGraph::SetGraphAndWindowRect(CRect const& graph, CRect const& window)
{
    m_graphRect = graph;
    m_windowRect = window;
    m_rectModified = 1;
    UpdateNormalisedRect();
}

void CGraph::UpdateNormalisedRect()
{
    if (m_windowRect.Width() == 0 || m_windowRect.Height() == 0)
        return;
    double const width = m_windowRect.Width();
    double const height = m_windowRect.Height();
    m_normalisedOrigin.Set(m_graphRect.left / width, m_graphRect.top / height);
    m_normalisedSize.Set(m_graphRect.Width() / width, m_graphRect.Height() / height);
}

namespace {

/// Truncated towards zero, but a whole pixel that went through a fraction and back stays whole. Kept where pixels are,
/// since a damaged document may hold any fraction.
int TruncatedPixel(double v)
{
    constexpr double kFarthest = 32000.0;
    constexpr double kRounding = 1e-9;
    if (!(v > -kFarthest))
        return 0;
    return static_cast<int>(std::min(v, kFarthest) + (v < 0 ? -kRounding : kRounding));
}

} // namespace

void CGraph::UpdateGraphRect()
{
    double const width = m_windowRect.Width();
    double const height = m_windowRect.Height();
    int const left = TruncatedPixel(width * m_normalisedOrigin.x);
    int const top = TruncatedPixel(height * m_normalisedOrigin.y);
    m_graphRect.SetRect(left, top, left + TruncatedPixel(width * m_normalisedSize.x),
        top + TruncatedPixel(height * m_normalisedSize.y));
}

void CGraph::SetInitialNormalisedRect(CRealPoint const& origin, CRealSize const& size)
{
    m_initialOrigin = origin;
    m_initialSize = size;
}

int CGraph::GetDataSize() const
{
    int size = 0;
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i)
        size += m_plotArray->GetAt(i)->GetDataSize();
    return size;
}

void CGraph::UpdatePlots()
{
    AttachToChildren();
    for (int i = 0; m_plotArray && i < m_plotArray->GetSize(); ++i) {
        CPlot* const plot = m_plotArray->GetAt(i);
        if (plot->Evaluate() != 0)
            continue;
        for (int c = 0; c < plot->GetNumComponents(); ++c) {
            CPlotComponent& curve = *plot->GetComponent(c);
            plot->PrepareCurve(curve);
            curve.Evaluate();
            if (c == 0)
                plot->TakeOverPoints(curve);
        }
    }
}

void CGraph::SetGraphDrawnCallback(CObject* target, void (CObject::*method)())
{
    m_callbackTarget = target;
    m_callbackMethod = method;
}

CGraph::DrawScope::DrawScope(CGraph& graph)
    : m_graph(graph)
    , m_alive(graph.m_alive)
{
    graph.m_busy = 1;
}

CGraph::DrawScope::~DrawScope()
{
    if (m_alive.expired())
        return;
    m_graph.m_busy = 0;
    m_graph.m_dc = nullptr;
}

bool CGraph::DrawScope::Finish(bool printed)
{
    m_graph.m_dc = nullptr;
    m_graph.ResetModifiedFlags();
    if (m_graph.m_callbackTarget && m_graph.m_callbackMethod)
        (m_graph.m_callbackTarget->*m_graph.m_callbackMethod)();
    if (m_alive.expired())
        return false;
    if (printed)
        m_graph.m_modified = 1;
    return true;
}

} // namespace ombrel
