#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph2d/AxesNotches.h"
#include "ombrel/graph2d/LabelFont.h"

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

CString MajorText(AxisSettings const& axis, DateTickSettings const* dates, Notch const& notch)
{
    if (!axis.labelsOn)
        return {};
    if (notch.kind == Notch::Kind::InvalidDates)
        return "Invalid Date Range";
    if (axis.labelMode == AxisSettings::lmStrings)
        return StringAt(axis.labels, notch.position);
    if (axis.labelMode == AxisSettings::lmArbitraryStrings && notch.kind == Notch::Kind::Arbitrary)
        return StringAt(axis.labels, notch.index);
    if (dates && axis.timeUnitsOn)
        return DateText(notch.value, dates->dateFormat, dates->timeFormat);
    double const number = axis.scaleMode != 0 ? std::pow(10.0, notch.value) : notch.value;
    return CVUtils::FormatDouble(axis.formatType, number, axis.labelPrecision);
}

CString MinorText(AxisSettings const& axis, DateTickSettings const* dates, Notch const& notch)
{
    if (notch.kind == Notch::Kind::DecadeLine)
        return {};
    if (dates && notch.kind == Notch::Kind::MinorDate)
        return dates->minorDateFormat.IsEmpty() ? CString() : COleDateTime(notch.value).Format(dates->minorDateFormat);
    if (dates && axis.timeUnitsOn)
        return DateText(notch.value, dates->minorDateFormat, dates->minorTimeFormat);
    return CVUtils::FormatDouble(axis.minorFormatType, notch.value, axis.minorLabelPrecision);
}

/// The size of a text in the selected font; a document may bring fonts of any size, which sums of pixels must survive.
CSize MeasuredText(CDC const& dc, CString const& text)
{
    constexpr int kLargest = 100000;
    CSize const extent = dc.GetTextExtent(text);
    return { std::clamp<int>(extent.cx, 0, kLargest), std::clamp<int>(extent.cy, 0, kLargest) };
}

void MeasureNotches(CDC& dc, CFont& font, NotchList& notches, bool major)
{
    dc.SelectObject(&font);
    for (Notch& notch : notches) {
        if (notch.IsMajor() == major)
            notch.extent = MeasuredText(dc, notch.text);
    }
}

} // namespace

NotchList MakeLabelledNotches(AxisSettings const& axis, DateTickSettings const* dates, double crossing)
{
    NotchList notches = MakeNotches(axis, dates, crossing);
    for (Notch& notch : notches) {
        notch.text = notch.IsMajor() ? MajorText(axis, dates, notch) : MinorText(axis, dates, notch);
        notch.text.Trim();
    }
    return notches;
}

AxesResults CAxes::MakeSizes(CPort& port) const
{
    constexpr double kMinorLabelSize = 0.85;
    CRect const rect = GetGraph()->GetGraphRect();
    int const shorter = std::max(0, std::min(rect.Width(), rect.Height()));
    AxesResults results;
    results.notchLength = VUNearest(shorter / 80.0);
    results.fontHeight = LabelFontHeight(*port.GetDC(), rect);
    results.minorFontHeight = VUNearest(results.fontHeight * kMinorLabelSize);
    return results;
}

AxesResults CAxes::MakeResults(CPort& port) const
{
    AxesResults results = MakeSizes(port);
    results.x = MakeLabelledNotches(m_x, &m_dates, m_intersect.x);
    results.y = MakeLabelledNotches(m_y, nullptr, m_intersect.y);
    MeasureTexts(*port.GetDC(), results);
    return results;
}

void CAxes::MeasureTexts(CDC& dc, AxesResults& results) const
{
    SavedDC const saved(dc);
    CFont font;
    auto const measureAxis = [&](NotchList& notches, int majorVertical, int minorVertical) {
        CVUtils::ConfigureFont(&font, m_labelsFont, results.fontHeight, majorVertical);
        MeasureNotches(dc, font, notches, true);
        CVUtils::ConfigureFont(&font, m_minorLabelsFont, results.minorFontHeight, minorVertical);
        MeasureNotches(dc, font, notches, false);
    };
    measureAxis(results.x, !m_labelsHorizontal, !m_minorLabelsHorizontal);
    measureAxis(results.y, 0, 0);
    CVUtils::ConfigureFont(&font, m_titlesFont, results.fontHeight, 0);
    dc.SelectObject(&font);
    results.xTitle = MeasuredText(dc, m_x.title);
    CVUtils::ConfigureFont(&font, m_titlesFont, results.fontHeight, 1);
    dc.SelectObject(&font);
    results.yTitle = MeasuredText(dc, m_y.title);
}

} // namespace ombrel
