#include "ombrel/graph2d/2DPlot.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C2DPlot::kClass = PersistentClass<C2DPlot, CPlot>("C2DPlot");

void C2DPlot::Serialize(CArchive& ar)
{
    CPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

namespace {

template <typename Contributes, typename AskRange>
void RangeOfCurves(CPlot const& plot, Contributes contributes, AskRange ask, double& min, double& max)
{
    bool any = false;
    for (CPlotComponent* component : plot.GetComponents()) {
        auto* const curve = DynamicDowncast<C2DCurve>(component);
        if (!curve || !curve->IsDefined() || !curve->IsValid() || !contributes(*curve) || !curve->HasRange())
            continue;
        Extremes range { 0.0, 0.0 };
        ask(*curve, range);
        min = any ? std::min(min, range.min) : range.min;
        max = any ? std::max(max, range.max) : range.max;
        any = true;
    }
}

} // namespace

void C2DPlot::GetXRange(double& min, double& max)
{
    RangeOfCurves(
        *this, [](C2DCurve const& c) { return c.GetContributeToXRange() != 0; },
        [](C2DCurve const& c, Extremes& r) { c.GetXRange(r.min, r.max); }, min, max);
}

void C2DPlot::GetYRange(double& min, double& max)
{
    RangeOfCurves(
        *this, [](C2DCurve const&) { return true; }, [](C2DCurve const& c, Extremes& r) { c.GetYRange(r.min, r.max); },
        min, max);
}

void C2DPlot::Draw(CPort* port)
{
    for (CPlotComponent* curve : GetComponents())
        curve->Draw(port);
}

} // namespace ombrel
