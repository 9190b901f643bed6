#include "ombrel/graph3d/3DIrregularSurfacePlot.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DIrregularSurfacePlot::kClass
    = PersistentClass<C3DIrregularSurfacePlot, C3DPlot>("C3DIrregularSurfacePlot");

C3DIrregularSurfacePlot::C3DIrregularSurfacePlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Irregular Surface Plot");
    SetItemType(it3DIrregularSurfacePlot);
}

CPlotComponent* C3DIrregularSurfacePlot::CreateCurve() { return AddNew<C3DIrregularSurfaceCurve>(); }

void C3DIrregularSurfacePlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

} // namespace ombrel
