#include "ombrel/graph2d/SeriesBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

SeriesBarCurve::SeriesBarCurve(CPlot* plot, int useGraphColour, CString const& title, ItemType type)
    : C2DCurve(plot, useGraphColour)
{
    SetTitle(title);
    SetSeries(1);
    SetModified(0);
    SetItemType(type);
}

void SeriesBarCurve::Serialize(CArchive& ar)
{
    C2DCurve::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_fillPattern);
}

std::optional<LegendEntry> SeriesBarCurve::GetLegendEntry() const
{
    auto entry = C2DCurve::GetLegendEntry();
    entry->fillPattern = m_fillPattern;
    entry->isFill = true;
    return entry;
}

SeriesBarPlot::SeriesBarPlot(CGraph* graph, CString const& title, ItemType type, double widthFactor)
    : C2DSeriesPlot(graph)
    , m_bars { .widthFactor = widthFactor }
{
    StoreTitle(title);
    SetItemType(type);
}

void SeriesBarPlot::Serialize(CArchive& ar)
{
    C2DSeriesPlot::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    m_bars.Serialize(f);
}

void SeriesBarPlot::GetXRange(double& min, double& max)
{
    double low = kGap;
    double high = -kGap;
    C2DSeriesPlot::GetXRange(low, high);
    if (low > high)
        return;
    m_bars.maxWidth = MaxBarWidthOfSeries(*this);
    m_bars.WidenXRange(low, high);
    min = low;
    max = high;
}

int SeriesBarPlot::CountSharedPoints() const
{
    auto const* const first = HasComponents() ? DynamicDowncast<C2DCurve>(GetComponents()[0]) : nullptr;
    if (!first)
        return 0;
    return GetXValueMode() ? first->GetNumPoints() : std::min(first->GetNumPts(), first->GetNumPoints());
}

void SeriesBarPlot::DrawBars(CPort* port)
{
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    int const points = CountSharedPoints();
    if (!graph || !graph->GetAxes() || points == 0)
        return;
    m_bars.maxWidth = MaxBarWidthOfSeries(*this);
    BarPainter painter(*port, *graph, m_bars.borderColour);
    PaintBars(painter, points, m_bars.Width());
}

} // namespace ombrel
