#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C2DLinePlot::kClass = PersistentClass<C2DLinePlot, C2DPlot>("C2DLinePlot");

C2DLinePlot::C2DLinePlot(CGraph* graph)
    : C2DPlot(graph)
{
    StoreTitle("Line Plot");
    SetItemType(it2DLinePlot);
}

void C2DLinePlot::Serialize(CArchive& ar)
{
    C2DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DLinePlot::AddCurve(CString const& title, CPlotComponent::DataSourceType source)
{
    CPlotComponent* const curve = CreateCurve();
    curve->SetTitle(title);
    curve->SetDataSourceType(source);
    return curve;
}

CPlotComponent* C2DLinePlot::CreateCurve() { return AddNew<C2DLine>(); }

} // namespace ombrel
