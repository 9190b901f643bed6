#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

void CAxes::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(m_x.min, m_x.max, m_y.min, m_y.max).Nested(m_intersect);
    f.Int(m_x.numMajorTicks, m_x.numMinorTicks, m_y.numMajorTicks, m_y.numMinorTicks);
    f.Dword(m_reservedColour, m_texts.labels.colour, m_texts.minorLabels.colour, m_texts.titlesColour, m_textColour);
    f.Int(m_x.rangeMode, m_y.rangeMode, m_intersectMode, m_x.scaleMode, m_y.scaleMode);
    f.Double(m_x.scaleFac, m_y.scaleFac);
    f.Int(m_x.on, m_y.on, m_x.intersectLabelOn, m_y.intersectLabelOn);
    f.String(m_x.title, m_y.title).Nested(m_texts.titlesFont, m_texts.labels.font, m_texts.minorLabels.font);
    f.Double(m_x.majorTickScaleFac, m_x.minorTickScaleFac, m_y.majorTickScaleFac, m_y.minorTickScaleFac);
    f.Int(m_texts.labels.horizontal).Nested(m_xAxisStart, m_xAxisEnd, m_yAxisStart, m_yAxisEnd);
    f.Int(m_x.labelMode, m_y.labelMode).Strings(m_x.labels).Strings(m_y.labels);
    f.Int(m_x.tickMode, m_y.tickMode).Raw(m_x.arbitraryTicks).Raw(m_y.arbitraryTicks);
    f.Int(m_x.labelPrecision, m_y.labelPrecision, m_x.minorLabelPrecision, m_y.minorLabelPrecision);
    f.Double(m_x.tickMin, m_y.tickMin, m_x.tickDel, m_y.tickDel);
    f.Int(m_x.labelPlacement, m_y.labelPlacement, m_x.labelsOn, m_y.labelsOn);
    f.Int(m_x.formatType, m_y.formatType, m_x.minorFormatType, m_y.minorFormatType);
    f.Int(m_x.timeUnitsOn, m_y.timeUnitsOn);
    f.Int(m_x.tickRangeMode).Double(m_x.tickRangeMin, m_x.tickRangeMax);
    f.Int(m_y.tickRangeMode).Double(m_y.tickRangeMin, m_y.tickRangeMax);
    f.Date(m_dates.tickMin).Int(m_dates.del, m_dates.delUnit, m_dates.delMinor, m_dates.delUnitMinor);
    f.String(m_dates.dateFormat, m_dates.minorDateFormat, m_dates.timeFormat, m_dates.minorTimeFormat);
    f.Int(m_x.minorLabelsOn, m_y.minorLabelsOn, m_texts.minorLabels.horizontal, m_dates.alignRefDate);
}

} // namespace ombrel
