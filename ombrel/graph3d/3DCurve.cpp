#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DCurve::kClass = PersistentClass<C3DCurve, CPlotComponent>("C3DCurve");

void C3DCurve::Serialize(CArchive& ar)
{
    CPlotComponent::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_curveType);
    m_legacy = version < 2;
    if (m_legacy)
        m_useDefaultRanges = 0;
    else
        f.Int(m_gradationOn).Nested(m_colourMap).Int(m_useDefaultRanges);
}

int C3DCurve::SetColourmap(CString const& name)
{
    SetGraphModified();
    return m_colourMap.Load(name);
}

int C3DCurve::IsDefined() const { return GetDataSourceType() != dsFormula || CPlotComponent::IsDefined(); }

std::optional<LegendEntry> C3DCurve::GetLegendEntry() const
{
    if (GetColourDescription() != 0)
        return {};
    LegendEntry entry;
    entry.title = GetTitle();
    entry.colour = static_cast<COLORREF>(GetColour());
    return entry;
}

void C3DCurve::SetCurveType(CurveType type)
{
    Change(m_curveType, type);
    SetPlotDataModified(1);
}

void C3DCurve::Transform(double* x, double* y, double* z) const { Transforms().Transform(*x, *y, *z); }

void C3DCurve::GetUntransformedDataAndLUTRanges(double& dataMin, double& dataMax, double& lutMin, double& lutMax) const
{
    GetUntransformedDataRange(dataMin, dataMax);
    lutMin = dataMin;
    lutMax = dataMax;
    if (GetUseLUTMinMax())
        GetLUTMinMax(lutMin, lutMax);
}

ColourKeySource C3DCurve::GetColourKeySource() const
{
    ColourKeySource source;
    GetUntransformedDataAndLUTRanges(source.dataLow, source.dataHigh, source.low, source.high);
    return source;
}

COLORREF C3DCurve::GetColourInRange(double value) const
{
    double dataMin = 0.0;
    double dataMax = 0.0;
    double low = 0.0;
    double high = 0.0;
    GetUntransformedDataAndLUTRanges(dataMin, dataMax, low, high);
    return GetColourOfValue(value, low, high);
}

COLORREF C3DCurve::GetShadeOrMapColour(double value, double low, double high) const
{
    if (GetColourDescription() == 0)
        return CColourMap::GetGradedColour(static_cast<COLORREF>(GetColour()), value, low, high);
    return m_colourMap.GetColour(value, low, high);
}

void C3DCurve::GetBoxAxes(BoxAxes& axes) const
{
    C3DGraph const* const graph = Get3DGraph();
    if (!graph)
        return;
    for (std::size_t k = 0; k < axes.size(); ++k) {
        if (C3DAxis const* const axis = graph->GetAxes()[k])
            axes[k] = { axis->GetMin(), axis->GetMax(), axis->GetScaleFac() };
    }
}

C3DGraph* C3DCurve::Get3DGraph() const
{
    return GetPlot() ? DynamicDowncast<C3DGraph>(GetPlot()->GetGraph()) : nullptr;
}

} // namespace ombrel
