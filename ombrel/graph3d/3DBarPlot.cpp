#include "ombrel/graph3d/3DBarPlot.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DBarPlot::kClass = PersistentClass<C3DBarPlot, C3DPlot>("C3DBarPlot");

C3DBarPlot::C3DBarPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Bar Plot");
    SetItemType(it3DBarPlot);
}

CPlotComponent* C3DBarPlot::CreateCurve() { return AddNew<C3DBarCurve>(); }

void C3DBarPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

constinit CRuntimeClass const C3DIrregBarPlot::kClass = PersistentClass<C3DIrregBarPlot, C3DPlot>("C3DIrregBarPlot");

C3DIrregBarPlot::C3DIrregBarPlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Irregular Bar Plot");
    SetItemType(it3DIrregBarPlot);
}

CPlotComponent* C3DIrregBarPlot::CreateCurve() { return AddNew<C3DIrregBarCurve>(); }

void C3DIrregBarPlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

} // namespace ombrel
