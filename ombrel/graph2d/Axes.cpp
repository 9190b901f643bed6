#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const CAxes::kClass = PersistentClass<CAxes, CGraphComponent>("CAxes");

CAxes::CAxes() = default;

CAxes::CAxes(CGraph* graph)
    : AxesAccessors(graph)
{
    COLORREF colour = CPreferences::GetAxesColour2DDefault();
    CPreferences::GetAxesColour2D(colour);
    SetColour(colour);
    CPreferences::GetMajorLabelsColour2D(m_texts.labels.colour);
    CPreferences::GetMinorLabelsColour2D(m_texts.minorLabels.colour);
    CPreferences::GetTitlesColour2D(m_texts.titlesColour);
}

CAxes::~CAxes() = default;

C2DGraph* CAxes::Graph2D() const { return DynamicDowncast<C2DGraph>(GetGraph()); }

bool CAxes::IsPolarGridOn() const
{
    C2DGraph const* const graph = Graph2D();
    return graph && graph->GetPolarGrid() && graph->GetPolarGrid()->IsOn();
}

void CAxes::BeginLayout()
{
    m_results.reset();
    m_inLayout = true;
}

void CAxes::EndLayout()
{
    m_results.reset();
    m_inLayout = false;
}

void CAxes::SetAxis(AxisType type, AxisSettings const& axis)
{
    if (type != atX && type != atY)
        return;
    Axis(type) = axis;
    SetScaleMode(type, axis.scaleMode);
}

void CAxes::SetScaleMode(AxisType type, int mode)
{
    Change(Axis(type).scaleMode, mode);
    if (GetGraph() && GetGraph()->GetPlotArray())
        GetGraph()->GetPlotArray()->Set2DCurveScaleModes(this);
}

void CAxes::SwitchAxis(AxisType type, int on)
{
    Change(Axis(type).on, on);
    Axis(type).labelsOn = on;
}

void CAxes::SetRange(AxisType type, double min, double max)
{
    if (type != atX && type != atY)
        return;
    Store(Axis(type).min, min);
    Store(Axis(type).max, max);
}

void CAxes::GetXAxisRange(double& min, double& max) const
{
    min = m_x.min;
    max = m_x.max;
}

void CAxes::GetYAxisRange(double& min, double& max) const
{
    min = m_y.min;
    max = m_y.max;
}

double CAxes::GetRange(AxisType type) const
{
    return type == atX || type == atY ? GetAxis(type).max - GetAxis(type).min : 0.0;
}

void CAxes::Set(double xmin, double xmax, double ymin, double ymax, CRealPoint const& intersect)
{
    SetXAxisRange(xmin, xmax);
    SetYAxisRange(ymin, ymax);
    SetIntersect(intersect);
}

void CAxes::Get(double& xmin, double& xmax, double& ymin, double& ymax, CRealPoint& intersect) const
{
    GetXAxisRange(xmin, xmax);
    GetYAxisRange(ymin, ymax);
    intersect = m_intersect;
}

bool CAxes::GetDataRange(AxisType type, double& min, double& max) const
{
    C2DGraph const* const graph = Graph2D();
    CPlotArray const* const plots = graph ? graph->GetPlotArray() : nullptr;
    if (!plots || plots->GetSize() == 0 || !plots->HasDefinedCurve())
        return false;
    double lo = 0.0;
    double hi = 0.0;
    if (type == atY)
        graph->GetYRange(lo, hi);
    else
        graph->GetXRange(lo, hi);
    if (!std::isfinite(lo) || !std::isfinite(hi))
        return false;
    min = lo;
    max = hi;
    return true;
}

namespace {

void WidenEmptyRange(double& min, double& max)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    if (max != min)
        return;
    double const value = min;
    min = value - 1.0;
    max = value + 1.0;
    if (max == min) {
        min = std::max(value - std::fabs(value) * 1e-6, -kLargest);
        max = std::min(value + std::fabs(value) * 1e-6, kLargest);
    }
}

void WidenToTidySteps(double& min, double& max)
{
    double const step = CVUtils::NiceNum(CVUtils::NiceNum(max - min, 0) / 5.0, 1);
    if (!(step > 0.0))
        return;
    double const lo = std::floor(min / step) * step;
    double const hi = std::ceil(max / step) * step;
    if (!std::isfinite(lo) || !std::isfinite(hi))
        return;
    min = lo;
    max = hi;
}

} // namespace

void CAxes::GetRange(AxisType type, int rangeMode, double& min, double& max) const
{
    min = GetAxis(type).min;
    max = GetAxis(type).max;
    if (rangeMode == rmTidy || rangeMode == rmExact)
        GetDataRange(type, min, max);
    WidenEmptyRange(min, max);
    if (rangeMode == rmTidy)
        WidenToTidySteps(min, max);
    WidenEmptyRange(min, max);
}

void CAxes::GetLogRange(AxisType type, double& min, double& max) const
{
    min = GetAxis(type).min;
    max = GetAxis(type).max;
    GetDataRange(type, min, max);
    min = std::floor(min);
    max = std::ceil(max);
    if (max == min)
        max = min + 1.0;
}

void CAxes::SetTickRange(AxisType type, double min, double max)
{
    Change(Axis(type).tickRangeMin, min);
    Change(Axis(type).tickRangeMax, max);
}

void CAxes::GetTickRange(AxisType type, int, double& min, double& max) const
{
    min = GetAxis(type).tickRangeMin;
    max = GetAxis(type).tickRangeMax;
}

void CAxes::GetTickMinDel(AxisType type, double& min, double& del) const
{
    min = GetAxis(type).tickMin;
    del = GetAxis(type).tickDel;
}

int CAxes::IsClipped(CRealPoint const& p) const
{
    auto const clips
        = [](AxisSettings const& axis, double v) { return axis.HasStoredLimits() && (v < axis.min || v > axis.max); };
    return clips(m_x, p.x) || clips(m_y, p.y) ? 1 : 0;
}

namespace {

void CopyPositions(std::vector<double>&& from, CDoubleArray& to) { to.GetArray().Values() = std::move(from); }

} // namespace

void CAxes::GetXNotchPositions(CDoubleArray& positions) const
{
    CopyPositions(TickPositions(m_x, &m_dates), positions);
}

void CAxes::GetYNotchPositions(CDoubleArray& positions) const { CopyPositions(TickPositions(m_y, nullptr), positions); }

void CAxes::UpdateRange(AxisType type)
{
    double min = 0.0;
    double max = 0.0;
    bool const logarithmic = Axis(type).scaleMode != 0;
    if (logarithmic && !Axis(type).KeepsLogLimits())
        GetLogRange(type, min, max);
    else
        GetRange(type, Axis(type).rangeMode, min, max);
    if (type == atX && !logarithmic && m_dates.alignRefDate) {
        m_dates.tickMin = COleDateTime(min);
        // A date also where the minimum lies beyond the calendar: what is stored says so, too.
        m_dates.tickMin.SetStatus(COleDateTime::valid);
    }
    SetRange(type, min, max);
}

void CAxes::UpdatePolarRanges()
{
    m_x.rangeMode = rmTidy;
    m_y.rangeMode = rmTidy;
    double radius = 0.0;
    for (AxisType const type : { atX, atY }) {
        double min = 0.0;
        double max = 0.0;
        GetRange(type, rmTidy, min, max);
        radius = std::max({ radius, std::fabs(min), std::fabs(max) });
    }
    SetXAxisRange(-radius, radius);
    SetYAxisRange(-radius, radius);
}

void CAxes::UpdateGraphParameters()
{
    if (IsPolarGridOn()) {
        UpdatePolarRanges();
    } else {
        UpdateRange(atX);
        UpdateRange(atY);
    }
    for (AxisSettings* const axis : { &m_x, &m_y }) {
        if (axis->tickRangeMode == trAxis) {
            axis->tickRangeMin = axis->min;
            axis->tickRangeMax = axis->max;
        }
    }
    if (m_intersect.x < m_x.min || m_intersect.x > m_x.max || m_intersect.y < m_y.min || m_intersect.y > m_y.max)
        m_intersectMode = 0;
    if (m_intersectMode == 0)
        m_intersect = GetAutoIntersect();
    m_xAxisStart = { m_x.min, m_intersect.y };
    m_xAxisEnd = { m_x.max, m_intersect.y };
    m_yAxisStart = { m_intersect.x, m_y.min };
    m_yAxisEnd = { m_intersect.x, m_y.max };
}

} // namespace ombrel
