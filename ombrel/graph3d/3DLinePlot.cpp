#include "ombrel/graph3d/3DLinePlot.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C3DLinePlot::kClass = PersistentClass<C3DLinePlot, C3DPlot>("C3DLinePlot");
constinit CRuntimeClass const C3DScatterPlot::kClass = PersistentClass<C3DScatterPlot, C3DLinePlot>("C3DScatterPlot");
constinit CRuntimeClass const C3DTextPlot::kClass = PersistentClass<C3DTextPlot, C3DLinePlot>("C3DTextPlot");

namespace {

/// The version of a plot's own part, which some documents have and some have not. Behind a plot without it comes an
/// object, which begins in another way, or the graph's tag.
void SerializeOptionalVersion(CArchive& ar)
{
    constexpr std::byte kOne[sizeof(LONG)] { std::byte { 1 } };
    if (ar.IsStoring() || std::ranges::equal(ar.Peek(sizeof kOne), kOne))
        ArchiveFields(ar).Version(1);
}

} // namespace

C3DLinePlot::C3DLinePlot(CGraph* graph)
    : C3DPlot(graph)
{
    StoreTitle("Line Plot");
    SetItemType(it3DLinePlot);
}

void C3DLinePlot::Serialize(CArchive& ar)
{
    C3DPlot::Serialize(ar);
    ArchiveFields(ar).Version(1);
}

CPlotComponent* C3DLinePlot::CreateCurve() { return AddNew<C3DLineCurve>(); }

C3DScatterPlot::C3DScatterPlot(CGraph* graph)
    : C3DLinePlot(graph)
{
    StoreTitle("Scatter Plot");
    SetItemType(it3DScatterPlot);
}

void C3DScatterPlot::Serialize(CArchive& ar)
{
    C3DLinePlot::Serialize(ar);
    SerializeOptionalVersion(ar);
}

CPlotComponent* C3DScatterPlot::CreateCurve() { return AddNew<C3DScatterCurve>(); }

C3DTextPlot::C3DTextPlot(CGraph* graph)
    : C3DLinePlot(graph)
{
    StoreTitle("Text Plot");
    SetItemType(it3DTextPlot);
}

void C3DTextPlot::Serialize(CArchive& ar)
{
    C3DLinePlot::Serialize(ar);
    SerializeOptionalVersion(ar);
}

CPlotComponent* C3DTextPlot::CreateCurve() { return AddNew<C3DTextCurve>(); }

} // namespace ombrel
