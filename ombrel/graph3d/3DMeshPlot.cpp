#include "ombrel/graph3d/3DMeshPlot.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DMeshPlot::kClass = PersistentClass<C3DMeshPlot, C3DPlot>("C3DMeshPlot");

C3DMeshPlot::C3DMeshPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Mesh Plot");
    SetItemType(it3DMeshPlot);
}

void C3DMeshPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C3DMeshPlot::CreateCurve() { return AddNew<C3DMeshCurve>(); }

} // namespace ombrel
