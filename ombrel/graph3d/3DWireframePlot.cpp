#include "ombrel/graph3d/3DWireframePlot.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DWireframePlot::kClass = PersistentClass<C3DWireframePlot, C3DPlot>("C3DWireframePlot");

C3DWireframePlot::C3DWireframePlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Wire Frame Plot");
    SetItemType(it3DWireframePlot);
}

CPlotComponent* C3DWireframePlot::CreateCurve() { return AddNew<C3DWireframeCurve>(); }

void C3DWireframePlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

} // namespace ombrel
