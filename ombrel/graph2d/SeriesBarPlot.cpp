#include "ombrel/graph2d/SeriesBarPlot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

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
    return entry;
}

} // namespace ombrel
