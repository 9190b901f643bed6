#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/graph2d/axes/LabelFont.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

CString StringAt(CStringArray const& strings, int index)
{
    return index >= 0 && index < strings.GetSize() ? strings[index] : CString();
}

CString DateText(double date, CString const& dateFormat, CString const& timeFormat)
{
    return COleDateTime(date).Format(dateFormat + " " + timeFormat);
}

CString MajorText(AxisSettings const& axis, DateTickSettings const* dates, Tick const& tick)
{
    if (!axis.labelsOn)
        return {};
    if (tick.kind == Tick::Kind::InvalidDates)
        return "Invalid Date Range";
    if (axis.labelMode == AxisSettings::lmStrings)
        return StringAt(axis.labels, tick.position);
    if (axis.labelMode == AxisSettings::lmArbitraryStrings && tick.kind == Tick::Kind::Arbitrary)
        return StringAt(axis.labels, tick.index);
    if (dates && axis.timeUnitsOn)
        return DateText(tick.value, dates->dateFormat, dates->timeFormat);
    double const number = axis.scaleMode != 0 ? std::pow(10.0, tick.value) : tick.value;
    return CVUtils::FormatDouble(axis.formatType, number, axis.labelPrecision);
}

CString MinorText(AxisSettings const& axis, DateTickSettings const* dates, Tick const& tick)
{
    if (tick.kind == Tick::Kind::DecadeLine)
        return {};
    if (dates && tick.kind == Tick::Kind::MinorDate)
        return dates->minorDateFormat.IsEmpty() ? CString() : COleDateTime(tick.value).Format(dates->minorDateFormat);
    if (dates && axis.timeUnitsOn)
        return DateText(tick.value, dates->minorDateFormat, dates->minorTimeFormat);
    return CVUtils::FormatDouble(axis.minorFormatType, tick.value, axis.minorLabelPrecision);
}

/// The size of a text in the selected font; a document may bring fonts of any size, which sums of pixels must survive.
CSize MeasuredText(CDC const& dc, CString const& text)
{
    constexpr int kLargest = 100000;
    CSize const extent = dc.GetTextExtent(text);
    return { std::clamp<int>(extent.cx, 0, kLargest), std::clamp<int>(extent.cy, 0, kLargest) };
}

void MeasureTicks(CDC& dc, CFont& font, TickList& ticks, bool major)
{
    dc.SelectObject(&font);
    for (Tick& tick : ticks) {
        if (tick.IsMajor() == major)
            tick.extent = MeasuredText(dc, tick.text);
    }
}

} // namespace

TickList MakeLabelledTicks(AxisSettings const& axis, DateTickSettings const* dates, double crossing)
{
    TickList ticks = MakeTicks(axis, dates, crossing);
    for (Tick& tick : ticks) {
        tick.text = tick.IsMajor() ? MajorText(axis, dates, tick) : MinorText(axis, dates, tick);
        tick.text.Trim();
    }
    return ticks;
}

AxesResults CAxes::MakeSizes(CPort& port) const
{
    constexpr double kMinorLabelSize = 0.85;
    CRect const rect = GetGraph()->GetGraphRect();
    AxesResults results;
    results.tickLength = VUNearest(ShorterSide(rect) / 80.0);
    results.fontHeight = LabelFontHeight(*port.GetDC(), rect);
    results.minorFontHeight = VUNearest(results.fontHeight * kMinorLabelSize);
    return results;
}

AxesResults CAxes::MakeResults(CPort& port) const
{
    AxesResults results = MakeSizes(port);
    results.x = MakeLabelledTicks(m_x, &m_dates, m_intersect.x);
    results.y = MakeLabelledTicks(m_y, nullptr, m_intersect.y);
    MeasureTexts(*port.GetDC(), results);
    return results;
}

void CAxes::MeasureTexts(CDC& dc, AxesResults& results) const
{
    SavedDC const saved(dc);
    CFont font;
    auto const measureAxis = [&](TickList& ticks, int majorVertical, int minorVertical) {
        CVUtils::ConfigureFont(&font, m_texts.labels.font, results.fontHeight, majorVertical);
        MeasureTicks(dc, font, ticks, true);
        CVUtils::ConfigureFont(&font, m_texts.minorLabels.font, results.minorFontHeight, minorVertical);
        MeasureTicks(dc, font, ticks, false);
    };
    measureAxis(results.x, !m_texts.labels.horizontal, !m_texts.minorLabels.horizontal);
    measureAxis(results.y, 0, 0);
    CVUtils::ConfigureFont(&font, m_texts.titlesFont, results.fontHeight, 0);
    dc.SelectObject(&font);
    results.xTitle = MeasuredText(dc, m_x.title);
    CVUtils::ConfigureFont(&font, m_texts.titlesFont, results.fontHeight, 1);
    dc.SelectObject(&font);
    results.yTitle = MeasuredText(dc, m_y.title);
}

} // namespace ombrel
