#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/graph3d/Surface.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const CSurfacePlot::kClass = PersistentClass<CSurfacePlot, C3DPlot>("CSurfacePlot");

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

CSurfacePlot::CSurfacePlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Surface Plot");
    SetItemType(itSurfacePlot);
}

CPlotComponent* CSurfacePlot::CreateCurve() { return AddNew<CSurface>(); }

void CSurfacePlot::GetXRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetXRange(lo, hi); });
}

void CSurfacePlot::GetYRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetYRange(lo, hi); });
}

void CSurfacePlot::GetZRange(double& min, double& max)
{
    UniteRanges(GetComponents(), min, max, [](C3DCurve const& c, double& lo, double& hi) { c.GetZRange(lo, hi); });
}

} // namespace ombrel
