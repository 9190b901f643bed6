#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C2DLineSeriesLine::kClass
    = PersistentClass<C2DLineSeriesLine, C2DLine>("C2DLineSeriesLine");
constinit CRuntimeClass const C2DLineSeriesPlot::kClass
    = PersistentClass<C2DLineSeriesPlot, C2DSeriesPlot>("C2DLineSeriesPlot");

C2DLineSeriesLine::C2DLineSeriesLine(CPlot* plot, int useGraphColour)
    : C2DLine(plot, useGraphColour)
{
    SetTitle("Constrained Lines Curve");
    SetItemType(it2DLineSeriesLine);
}

void C2DLineSeriesLine::Serialize(CArchive& ar)
{
    C2DLine::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

C2DLineSeriesPlot::C2DLineSeriesPlot(CGraph* graph)
    : C2DSeriesPlot(graph)
{
    StoreTitle("Constrained Lines Plot");
    SetItemType(it2DLineSeriesPlot);
}

void C2DLineSeriesPlot::Serialize(CArchive& ar)
{
    C2DSeriesPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C2DLineSeriesPlot::CreateCurve()
{
    auto* const curve = AddNew<C2DLineSeriesLine>();
    curve->SetSeries(1);
    return curve;
}

} // namespace ombrel
