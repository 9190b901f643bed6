#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/graph3d/Surface.h"

namespace ombrel {

constinit CRuntimeClass const CSurfacePlot::kClass = PersistentClass<CSurfacePlot, C3DPlot>("CSurfacePlot");

CSurfacePlot::CSurfacePlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Surface Plot");
    SetItemType(itSurfacePlot);
}

CPlotComponent* CSurfacePlot::CreateCurve() { return AddNew<CSurface>(); }

} // namespace ombrel
