#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C2DGraph::kClass = PersistentClass<C2DGraph, CGraph>("C2DGraph");

C2DGraph::C2DGraph(int createComponents)
{
    m_dataDimension = gd2D;
    CPreferences::GetGraphBackgroundColour2D(m_graphBackground);
    CPreferences::GetBackgroundColour2D(m_windowBackground);
    SetInitialNormalisedRect({ 0.05, 0.05 }, { 0.9, 0.9 });
    if (createComponents)
        CreateComponents();
}

C2DGraph::~C2DGraph() = default;

void C2DGraph::Serialize(CArchive& ar)
{
    CGraph::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_sized).Rect(m_graphRect).Dword(m_graphBackground, m_windowBackground);
    f.Nested(m_normalisedOrigin, m_normalisedSize).Raw(m_drawOrder);
    if (ar.IsLoading()) {
        // Sums of a damaged document's edges must stay numbers.
        auto const limited
            = [](LONG edge) { return std::clamp<int>(edge, -PortMapping::kDeviceLimit, PortMapping::kDeviceLimit); };
        m_graphRect.SetRect(limited(m_graphRect.left), limited(m_graphRect.top), limited(m_graphRect.right),
            limited(m_graphRect.bottom));
        m_drawOrder = WithoutRepetitions(m_drawOrder);
        CreateComponents();
    }
}

void C2DGraph::CreateComponents()
{
    if (!m_grid)
        AddComponent(m_grid = new C2DGrid(this));
    if (!m_axes)
        AddComponent(m_axes = new CAxes(this));
    if (!m_polarGrid)
        AddComponent(m_polarGrid = new C2DPolarGrid(this));
    CreateLegend();
    CreateColourKeyArray();
    CreateCaptionArray();
    if (!GetPlotArray()) {
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
    }
}

void C2DGraph::ClearComponents()
{
    m_axes = nullptr;
    m_grid = nullptr;
    m_polarGrid = nullptr;
    CAnnotatedGraph::ClearComponents();
}

void C2DGraph::FindComponents()
{
    CAnnotatedGraph::FindComponents();
    m_axes = nullptr;
    m_grid = nullptr;
    m_polarGrid = nullptr;
    for (CGraphComponent* component : GetComponentArray()) {
        if (auto* const axes = DynamicDowncast<CAxes>(component))
            m_axes = axes;
        else if (auto* const grid = DynamicDowncast<C2DGrid>(component))
            m_grid = grid;
        else if (auto* const polarGrid = DynamicDowncast<C2DPolarGrid>(component))
            m_polarGrid = polarGrid;
    }
}

CPlot* C2DGraph::AddPlot(ItemType type)
{
    std::unique_ptr<CPlot> plot;
    switch (type) {
    case it2DLinePlot:
        plot = std::make_unique<C2DLinePlot>(this);
        break;
    case it2DLineSeriesPlot:
        plot = std::make_unique<C2DLineSeriesPlot>(this);
        break;
    case it2DAreaPlot:
        plot = std::make_unique<C2DAreaPlot>(this);
        break;
    case it2DTextPlot:
        plot = std::make_unique<C2DTextPlot>(this);
        break;
    case it2DErrorBarPlot:
        plot = std::make_unique<C2DErrorBarPlot>(this);
        break;
    case it2DBarPlot:
        plot = std::make_unique<C2DBarPlot>(this);
        break;
    case it2DClusteredBarPlot:
        plot = std::make_unique<C2DClusteredBarPlot>(this);
        break;
    case it2DContourPlot:
        plot = std::make_unique<C2DContourPlot>(this);
        break;
    case it2DStackedBarPlot:
        plot = std::make_unique<C2DStackedBarPlot>(this);
        break;
    default:
        return nullptr;
    }
    return TakePlot(std::move(plot));
}

void C2DGraph::ReplaceAxes(CAxes* axes)
{
    if (!axes || !m_axes || axes == m_axes)
        return;
    axes->SetTag(m_axes->GetTag());
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    axes->Serialize(storing);
    storing.Close();
    CArchive loading(file.GetBytes());
    m_axes->Serialize(loading);
    SetModifiedFlag(1);
}

int C2DGraph::TimeUnitsOn() const { return m_axes ? m_axes->GetAxis(CAxes::atX).timeUnitsOn : 0; }

int C2DGraph::CanHaveLogScale() const
{
    if (!GetPlotArray() || GetPlotArray()->GetSize() == 0)
        return 0;
    auto const& plots = GetPlotArray()->GetPlots();
    return std::all_of(plots.begin(), plots.end(), [](CPlot const* plot) { return plot->CanHaveLogScale(); });
}

namespace {

/// The smallest minimum and largest maximum that the plots report; (0, 0) when none does.
template <typename AskRange> void RangeOfPlots(CPlotArray const* plots, AskRange ask, double& min, double& max)
{
    Extremes range { kGap, -kGap };
    for (int i = 0; plots && i < plots->GetSize(); ++i) {
        auto* const plot = DynamicDowncast<C2DPlot>(plots->GetAt(i));
        Extremes reported { kGap, -kGap };
        if (plot)
            ask(*plot, reported);
        range.min = std::min(range.min, reported.min);
        range.max = std::max(range.max, reported.max);
    }
    min = range.IsEmpty() ? 0.0 : range.min;
    max = range.IsEmpty() ? 0.0 : range.max;
}

} // namespace

void C2DGraph::GetXRange(double& min, double& max) const
{
    RangeOfPlots(
        GetPlotArray(), [](C2DPlot& p, Extremes& r) { p.GetXRange(r.min, r.max); }, min, max);
}

void C2DGraph::GetYRange(double& min, double& max) const
{
    RangeOfPlots(
        GetPlotArray(), [](C2DPlot& p, Extremes& r) { p.GetYRange(r.min, r.max); }, min, max);
}

CRealRect C2DGraph::GetAxesRealRect() const { return m_axes ? m_axes->GetRealExtentRect() : CRealRect(); }

CRect C2DGraph::GetClipRect() const
{
    CRealRect const real = GetAxesRealRect();
    CPoint const topLeft = UnitsToWindow(real.TopLeft());
    CPoint const bottomRight = UnitsToWindow(real.BottomRight());
    return { topLeft.x, topLeft.y, bottomRight.x, bottomRight.y };
}

bool C2DGraph::GetPlotClipRect(CRect& clip) const
{
    clip = GetClipRect();
    return true;
}

std::optional<AnnotationFrame> C2DGraph::GetAnnotationFrame(AnnotationKind kind, CRect const& window) const
{
    AnnotationFrame frame;
    if (kind == AnnotationKind::ColourKey) {
        frame.reference = GetGraphRect();
        frame.textArea = window;
        frame.textRule = AnnotationFrame::TextRule::Picture;
    } else {
        frame.reference = m_layout.axesRect;
        frame.textArea = m_layout.axesRect;
    }
    return frame;
}

CPoint C2DGraph::UnitsToWindow(CRealPoint const& p) const
{
    return CPort::UnitsToWindow(p, GetWindowRect(), GetGraphRect(), m_layout.unitsRect);
}

CRealPoint C2DGraph::WindowToUnits(POINT p) const
{
    return CPort::WindowToUnits(p, GetWindowRect(), GetGraphRect(), m_layout.unitsRect);
}

} // namespace ombrel
