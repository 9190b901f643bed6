#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DBarPlot.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DIrregularSurfacePlot.h"
#include "ombrel/graph3d/3DLineArrayPlot.h"
#include "ombrel/graph3d/3DLinePlot.h"
#include "ombrel/graph3d/3DMeshPlot.h"
#include "ombrel/graph3d/3DObjectPlot.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/3DWireframePlot.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const C3DGraph::kClass = PersistentClass<C3DGraph, CGraph>("C3DGraph");

C3DGraph::C3DGraph(int createComponents)
    : m_ownPicture(std::make_unique<Picture3D>())
{
    m_dataDimension = gd3D;
    COLORREF background = CPreferences::GetBackgroundColour3DDefault();
    CPreferences::GetBackgroundColour3D(background);
    SetBackgroundColour(background);
    if (createComponents)
        CreateComponents();
}

C3DGraph::~C3DGraph() = default;

void C3DGraph::CreateComponents()
{
    if (!m_walls)
        AddComponent(m_walls = new CWalls(this));
    if (!m_grid)
        AddComponent(m_grid = new C3DGrid(this));
    int type = atXAxis;
    for (C3DAxis*& axis : m_axes) {
        if (!axis)
            AddComponent(axis = new C3DAxis(this, static_cast<AxisType>(type)));
        ++type;
    }
    CreateLegend();
    CreateColourKeyArray();
    CreateCaptionArray();
    if (!GetPlotArray()) {
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
    }
}

void C3DGraph::ClearComponents()
{
    m_axes = {};
    m_grid = nullptr;
    m_walls = nullptr;
    CAnnotatedGraph::ClearComponents();
}

void C3DGraph::FindComponents()
{
    CAnnotatedGraph::FindComponents();
    m_axes = {};
    m_grid = nullptr;
    m_walls = nullptr;
    for (CGraphComponent* component : GetComponentArray()) {
        if (auto* const walls = DynamicDowncast<CWalls>(component)) {
            m_walls = walls;
        } else if (auto* const grid = DynamicDowncast<C3DGrid>(component)) {
            m_grid = grid;
        } else if (auto* const axis = DynamicDowncast<C3DAxis>(component)) {
            AxisType const type = axis->GetAxisType();
            if (type >= atXAxis && type <= atZAxis)
                m_axes[static_cast<std::size_t>(type - atXAxis)] = axis;
        }
    }
}

CPlot* C3DGraph::AddPlot(ItemType type)
{
    std::unique_ptr<CPlot> plot;
    switch (type) {
    case it3DObjectPlot:
        plot = std::make_unique<C3DObjectPlot>(this);
        break;
    case it3DLinePlot:
        plot = std::make_unique<C3DLinePlot>(this);
        break;
    case it3DScatterPlot:
        plot = std::make_unique<C3DScatterPlot>(this);
        break;
    case it3DTextPlot:
        plot = std::make_unique<C3DTextPlot>(this);
        break;
    case itSurfacePlot:
        plot = std::make_unique<CSurfacePlot>(this);
        break;
    case it3DIrregularSurfacePlot:
        plot = std::make_unique<C3DIrregularSurfacePlot>(this);
        break;
    case it3DBarPlot:
        plot = std::make_unique<C3DBarPlot>(this);
        break;
    case it3DIrregBarPlot:
        plot = std::make_unique<C3DIrregBarPlot>(this);
        break;
    case it3DIrregLineArrayPlot:
        plot = std::make_unique<C3DIrregLineArrayPlot>(this);
        break;
    case it3DLineArrayPlot:
        plot = std::make_unique<C3DLineArrayPlot>(this);
        break;
    case it3DWireframePlot:
        plot = std::make_unique<C3DWireframePlot>(this);
        break;
    case it3DMeshPlot:
        plot = std::make_unique<C3DMeshPlot>(this);
        break;
    default:
        return nullptr;
    }
    return TakePlot(std::move(plot));
}

CCaption* C3DGraph::AddCaption(double x, double y)
{
    if (!GetCaptionArray())
        return nullptr;
    auto* const caption = new CCaption(this, "Caption Text", CCaption::ctGeneral);
    GetCaptionArray()->Add(caption);
    caption->SetTag(GetNewTag());
    caption->Create(CRealPoint(x, y));
    return caption;
}

void C3DGraph::SetInitialSize()
{
    m_graphRect = CRect({ 0, 0 }, m_windowRect.Size());
    UpdateNormalisedRect();
}

std::optional<AnnotationFrame> C3DGraph::GetAnnotationFrame(AnnotationKind kind, CRect const& window) const
{
    AnnotationFrame frame;
    frame.reference = kind == AnnotationKind::Caption ? window : GetGraphRect();
    frame.textArea = window;
    frame.textRule = AnnotationFrame::TextRule::Picture;
    frame.printer = m_printerDC;
    frame.printScale = m_printScale;
    return frame;
}

unsigned long C3DGraph::GetBackgroundColour() const
{
    auto const channel = [this](std::size_t i) { return static_cast<BYTE>(std::clamp<int>(m_background[i], 0, 255)); };
    return RGB(channel(0), channel(1), channel(2));
}

void C3DGraph::SetBackgroundColour(unsigned long colour)
{
    auto const value = static_cast<COLORREF>(colour);
    Change(m_background, std::array<std::int16_t, 3> { GetRValue(value), GetGValue(value), GetBValue(value) });
}

void C3DGraph::GetLight1Pos(double& azimuth, double& polarAngle) const
{
    azimuth = m_lights[0].azimuth;
    polarAngle = m_lights[0].polarAngle;
}

void C3DGraph::SetLight1Pos(double azimuth, double polarAngle)
{
    Change(m_lights[0].azimuth, azimuth);
    Change(m_lights[0].polarAngle, polarAngle);
}

void C3DGraph::GetLight2Pos(double& azimuth, double& polarAngle) const
{
    azimuth = m_lights[1].azimuth;
    polarAngle = m_lights[1].polarAngle;
}

void C3DGraph::SetLight2Pos(double azimuth, double polarAngle)
{
    Change(m_lights[1].azimuth, azimuth);
    Change(m_lights[1].polarAngle, polarAngle);
}

void C3DGraph::SetAutoscaleMode(int mode)
{
    Change(m_autoscaleMode, mode);
    if (mode == 0)
        SetAutoScaleParams(0);
}

void C3DGraph::SetPrintScale(double scale) { m_printScale = scale > 0.0 && std::isfinite(scale) ? scale : 1.0; }

namespace {

/// The range starts from 0 … 0; the first plot replaces it if it has one, every other one widens it.
template <typename AskRange> void RangeOfPlots(CPlotArray const* plots, AskRange ask, double& min, double& max)
{
    min = 0.0;
    max = 0.0;
    for (int i = 0; plots && i < plots->GetSize(); ++i) {
        auto* const plot = DynamicDowncast<C3DPlot>(plots->GetAt(i));
        if (!plot || !plot->HasDefinedCurve())
            continue;
        double plotMin = std::numeric_limits<double>::quiet_NaN();
        double plotMax = plotMin;
        ask(*plot, plotMin, plotMax);
        if (!std::isfinite(plotMin) || !std::isfinite(plotMax))
            continue;
        min = i == 0 ? plotMin : std::min(min, plotMin);
        max = i == 0 ? plotMax : std::max(max, plotMax);
    }
}

template <typename Act> void ForEachCurve(CPlotArray const* plots, Act act)
{
    for (int i = 0; plots && i < plots->GetSize(); ++i) {
        for (CPlotComponent* component : plots->GetAt(i)->GetComponents()) {
            if (auto* const curve = DynamicDowncast<C3DCurve>(component))
                act(*curve);
        }
    }
}

} // namespace

void C3DGraph::GetXRange(double& min, double& max) const
{
    RangeOfPlots(
        GetPlotArray(), [](C3DPlot& plot, double& lo, double& hi) { plot.GetXRange(lo, hi); }, min, max);
}

void C3DGraph::GetYRange(double& min, double& max) const
{
    RangeOfPlots(
        GetPlotArray(), [](C3DPlot& plot, double& lo, double& hi) { plot.GetYRange(lo, hi); }, min, max);
}

void C3DGraph::GetZRange(double& min, double& max) const
{
    RangeOfPlots(
        GetPlotArray(), [](C3DPlot& plot, double& lo, double& hi) { plot.GetZRange(lo, hi); }, min, max);
}

int C3DGraph::ZValPropertyModified() const
{
    auto const& components = GetComponentArray();
    return std::any_of(
        components.begin(), components.end(), [](CGraphComponent* c) { return c->ZValPropertyModified() != 0; });
}

int C3DGraph::HasObjectCurve() const
{
    bool found = false;
    ForEachCurve(GetPlotArray(), [&found](C3DCurve const& curve) { found = found || curve.NeedsProportions(); });
    return found;
}

void C3DGraph::UpdateZVals()
{
    ForEachCurve(GetPlotArray(), [](C3DCurve& curve) {
        if (curve.IsDefined())
            curve.RefreshZVals();
    });
}

void C3DGraph::SetAutoScaleParams(int on)
{
    std::array<double, 3> factors { 1.0, 1.0, 1.0 };
    if (std::find(m_axes.begin(), m_axes.end(), nullptr) != m_axes.end())
        return;
    if (on) {
        std::array<double, 3> extents {};
        for (std::size_t i = 0; i < m_axes.size(); ++i) {
            m_axes[i]->UpdateRange();
            extents[i] = std::fabs(m_axes[i]->GetMax() - m_axes[i]->GetMin());
        }
        double const largest = *std::max_element(extents.begin(), extents.end());
        // An axis whose extent is nothing to the others', or no number, leaves the box flat rather than empty.
        constexpr double kThinnest = 1e-6;
        for (std::size_t i = 0; i < m_axes.size(); ++i) {
            double const factor = extents[i] / largest;
            factors[i] = factor > kThinnest ? std::min(factor, 1.0) : kThinnest;
        }
        if (!(largest > 0.0) || !std::isfinite(largest))
            factors = { 1.0, 1.0, 1.0 };
    }
    for (C3DAxis* axis : m_axes) {
        std::array<double, 3> before {};
        axis->GetScaleFacs(before[0], before[1], before[2]);
        if (before != factors)
            axis->SetScaleFacs(factors[0], factors[1], factors[2]);
    }
    SetModifiedFlag(1);
}

} // namespace ombrel
