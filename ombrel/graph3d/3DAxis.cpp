#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DAxis::kClass = PersistentClass<C3DAxis, CGraphComponent>("C3DAxis");

C3DAxis::C3DAxis() = default;

C3DAxis::C3DAxis(C3DGraph* graph, AxisType type)
    : CGraphComponent(graph)
    , m_type(type)
    , m_title(type == atXAxis   ? "X"
              : type == atYAxis ? "Y"
                                : "Z")
{
    COLORREF colour = CPreferences::GetAxesColour3DDefault();
    CPreferences::GetAxesColour3D(colour);
    m_colour = Colour3(colour);
    colour = CPreferences::GetLabelsColour3DDefault();
    CPreferences::GetLabelsColour3D(colour);
    m_labelsColour = Colour3(colour);
    colour = CPreferences::GetTitlesColour3DDefault();
    CPreferences::GetTitlesColour3D(colour);
    m_titleColour = Colour3(colour);
}

C3DAxis::~C3DAxis() = default;

C3DGraph* C3DAxis::Get3DGraph() const { return DynamicDowncast<C3DGraph>(GetGraph()); }

double C3DAxis::GetWorldVal(double view, int scaled) const
{
    double const scale = scaled ? GetScaleFac() : 1.0;
    double const fraction = scale != 0.0 ? view / scale : 0.0;
    return (fraction + 0.5) * (m_max - m_min) + m_min;
}

namespace {

/// The range widened to multiples of a tidy step, after P. S. Heckbert, "Nice Numbers for Graph Labels" (Graphics
/// Gems, 1990): loose labels. The quotients are rounded to single precision, so that what is a multiple but for
/// rounding counts as one.
void MakeTidy(int numTicks, double& min, double& max)
{
    double const width = CVUtils::NiceNum(max - min, 0);
    double const step = CVUtils::NiceNum(width / (std::max(numTicks, 2) - 1), 1);
    if (!(step > 0.0) || !std::isfinite(step))
        return;
    double lo = std::floor(static_cast<float>(min / step)) * step;
    double hi = std::ceil(static_cast<float>(max / step)) * step;
    // Far from zero single precision does not tell the ends apart.
    if (lo > min + step * 1e-6 || hi < max - step * 1e-6) {
        lo = std::floor(min / step) * step;
        hi = std::ceil(max / step) * step;
    }
    if (!std::isfinite(lo) || !std::isfinite(hi) || !(lo < hi))
        return;
    min = lo;
    max = hi;
}

} // namespace

void C3DAxis::GetRange(int mode, double& min, double& max) const
{
    min = m_min;
    max = m_max;
    C3DGraph const* const graph = Get3DGraph();
    CPlotArray const* const plots = graph ? graph->GetPlotArray() : nullptr;
    if (plots && plots->GetSize() > 0 && plots->HasDefinedCurve()) {
        if (m_type == atXAxis)
            graph->GetXRange(min, max);
        else if (m_type == atYAxis)
            graph->GetYRange(min, max);
        else
            graph->GetZRange(min, max);
    }
    if (max == min) {
        min -= 1.0;
        max += 1.0;
    }
    if (mode == rmTidy)
        MakeTidy(m_numTicks, min, max);
}

void C3DAxis::UpdateRange()
{
    if (m_rangeMode != rmTidy && m_rangeMode != rmExact)
        return;
    double min = m_min;
    double max = m_max;
    GetRange(m_rangeMode, min, max);
    if (min == m_min && max == m_max)
        return;
    m_min = min;
    m_max = max;
    SetZValPropertyModified(1);
}

void C3DAxis::UpdateGraphParameters() { UpdateRange(); }

void C3DAxis::SetRange(double min, double max)
{
    Change(m_min, min);
    Change(m_max, max);
    SetZValPropertyModified(1);
}

void C3DAxis::GetScaleFacs(double& sx, double& sy, double& sz) const
{
    sx = m_scaleX;
    sy = m_scaleY;
    sz = m_scaleZ;
}

void C3DAxis::SetScaleFacs(double sx, double sy, double sz)
{
    ChangeView(m_scaleX, sx);
    ChangeView(m_scaleY, sy);
    ChangeView(m_scaleZ, sz);
}

double C3DAxis::GetScaleFac() const
{
    switch (m_type) {
    case atXAxis:
        return m_scaleX;
    case atYAxis:
        return m_scaleY;
    case atZAxis:
        return m_scaleZ;
    default:
        return 0.0;
    }
}

namespace {

bool IsNumberArray(VARIANT const& v) { return v.vt == (VT_ARRAY | VT_R8) && v.parray; }

} // namespace

void C3DAxis::SetArbTickPositions(VARIANT const& values)
{
    if (!IsNumberArray(values))
        return;
    CDoubleArray ticks;
    ticks.GetArray().Values() = values.parray->values;
    SetArbTickPosns(ticks);
}

void C3DAxis::SetLabels(VARIANT const& labels)
{
    if (!IsNumberArray(labels))
        return;
    CStringArray texts;
    for (double const value : labels.parray->values)
        texts.Add(CVUtils::FormatDouble(m_formatType, value, m_labelPrecision));
    SetLabels(texts);
}

void C3DAxis::GetXYNotchScaleFacs(double& major, double& minor) const
{
    major = m_xyNotchFactors.major;
    minor = m_xyNotchFactors.minor;
}

void C3DAxis::SetXYNotchScaleFacs(double major, double minor) { Change(m_xyNotchFactors, Factors { major, minor }); }

void C3DAxis::GetZNotchScaleFacs(double& major, double& minor) const
{
    major = m_zNotchFactors.major;
    minor = m_zNotchFactors.minor;
}

void C3DAxis::SetZNotchScaleFacs(double major, double minor) { Change(m_zNotchFactors, Factors { major, minor }); }

} // namespace ombrel
