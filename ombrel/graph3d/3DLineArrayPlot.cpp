#include "ombrel/graph3d/3DLineArrayPlot.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DLineArrayPlot::kClass = PersistentClass<C3DLineArrayPlot, C3DPlot>("C3DLineArrayPlot");

C3DLineArrayPlot::C3DLineArrayPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Series Plot");
    SetItemType(it3DLineArrayPlot);
}

CPlotComponent* C3DLineArrayPlot::CreateCurve() { return AddNew<C3DLineArrayCurve>(); }

void C3DLineArrayPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

constinit CRuntimeClass const C3DIrregLineArrayPlot::kClass
    = PersistentClass<C3DIrregLineArrayPlot, C3DPlot>("C3DIrregLineArrayPlot");

C3DIrregLineArrayPlot::C3DIrregLineArrayPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Irregular Series Plot");
    SetItemType(it3DIrregLineArrayPlot);
}

CPlotComponent* C3DIrregLineArrayPlot::CreateCurve() { return AddNew<C3DIrregLineArrayCurve>(); }

void C3DIrregLineArrayPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

} // namespace ombrel
