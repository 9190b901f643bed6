#include "ombrel/graph3d/3DObjectPlot.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DObjectPlot::kClass = PersistentClass<C3DObjectPlot, C3DPlot>("C3DObjectPlot");

C3DObjectPlot::C3DObjectPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Object Plot");
    SetItemType(it3DObjectPlot);
}

void C3DObjectPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C3DObjectPlot::CreateCurve() { return AddNew<C3DObjectCurve>(); }

} // namespace ombrel
