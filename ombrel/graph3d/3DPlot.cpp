#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C3DPlot::kClass = PersistentClass<C3DPlot, CPlot>("C3DPlot");

namespace {

// The union of what getRange(curve, min, max) gives for the curves that are defined and valid; unchanged without any.
template <typename GetRange>
void UniteRanges(OwnedArray<CPlotComponent> const& curves, double& min, double& max, GetRange const& getRange)
{
    bool isFirst = true;
    for (CPlotComponent const* component : curves) {
        auto const* const curve = DynamicDowncast<C3DCurve>(component);
        if (!curve || !curve->IsDefined() || !curve->IsValid())
            continue;
        double low = 0.0;
        double high = 0.0;
        getRange(*curve, low, high);
        min = isFirst ? low : std::min(min, low);
        max = isFirst ? high : std::max(max, high);
        isFirst = false;
    }
}

} // namespace

void C3DPlot::Serialize(CArchive& ar)
{
    CPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

void C3DPlot::GetXRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetXRange(lo, hi); });
}

void C3DPlot::GetYRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetYRange(lo, hi); });
}

void C3DPlot::GetZRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetZRange(lo, hi); });
}

void C3DPlot::Draw()
{
    for (CPlotComponent* curve : GetComponents()) {
        if (curve->IsDefined())
            curve->Render();
    }
}

} // namespace ombrel
