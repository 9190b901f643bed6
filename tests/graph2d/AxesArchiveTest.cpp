#include "ombrel/graph2d/Axes.h"

#include "ombrel/prefs/Preferences.h"
#include "tests/graph2d/TakeOver.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::OwnFields;
using test::Stored;
using test::TakeOver;

/// Every field with a value of its own, in stream order.
Bytes DistinctAxes()
{
    return Bytes()
        .Component(0x332211, 1, 2, 3)
        .Int(1)
        .Double(1.5, 2.5, 3.5, 4.5) // x and y range
        .Point(5.5, 6.5) // crossing point
        .Int(11, 12, 13, 14) // major and minor ticks, x and y each
        .Int(21, 22, 23, 24, 25) // reserved, labels, minor labels, titles, text colour
        .Int(31, 32, 33, 34, 35) // range modes, intersect mode, scale modes
        .Double(7.5, 8.5) // scale factors
        .Int(41, 42, 43, 44) // axes on, labels at the crossing on
        .Texts("x title", "y title")
        .Font("Face 1", 101, 1, 1.25)
        .Font("Face 2", 102, 2, 2.25)
        .Font("Face 3", 103, 3, 3.25)
        .Double(9.5, 10.5, 11.5, 12.5) // tick length factors: x major and minor, y major and minor
        .Int(51) // labels horizontal
        .Point(61.5, 62.5)
        .Point(63.5, 64.5)
        .Point(65.5, 66.5)
        .Point(67.5, 68.5)
        .Int(71, 72) // label modes
        .Short(2)
        .Texts("xa", "xb")
        .Short(1)
        .Text("ya")
        .Int(81, 82) // tick modes
        .Short(1)
        .Double(91.5)
        .Short(2)
        .Double(92.5, 93.5)
        .Int(111, 112, 113, 114) // precisions: major x and y, minor x and y
        .Double(115.5, 116.5, 117.5, 118.5) // tick minimum x and y, tick step x and y
        .Int(121, 122, 123, 124) // label placements, labels on
        .Int(131, 132, 133, 134) // formats: major x and y, minor x and y
        .Int(141, 142) // time units on
        .Int(151)
        .Double(152.5, 153.5) // x tick range
        .Int(154)
        .Double(155.5, 156.5) // y tick range
        .Int(0)
        .Double(40000.25) // reference date
        .Int(161, 2, 162, 5) // major and minor date step
        .Texts("date", "minor date", "time", "minor time")
        .Int(171, 172, 173, 174); // minor labels on, minor labels horizontal, align reference date
}

TEST(AxesArchive, KeepsEveryFieldInItsPlace)
{
    CAxes axes;
    axes.SetXLabels({ "left", "from", "before" });
    axes.SetYArbTickPosns({ 1, 2, 3, 4 });
    ASSERT_TRUE(Load(axes, DistinctAxes()));
    EXPECT_EQ(Stored(axes), DistinctAxes());
    for (std::size_t length = 0; length < DistinctAxes().Get().size(); ++length) {
        CAxes cut;
        EXPECT_FALSE(Load(cut, Bytes::Of(std::span(DistinctAxes().Get()).first(length)))) << length;
    }
}

TEST(AxesSettings, EachNameReadsAndSetsItsFieldAndRaisesTheModifiedFlagWhereItShould)
{
    using A = CAxes;
    A from;
    ASSERT_TRUE(Load(from, DistinctAxes()));
    A to(nullptr);
    TakeOver<int, int>(to, from, true,
        { { &A::SetXAxisOn, &A::XAxisOn }, { &A::SetYAxisOn, &A::YAxisOn },
            { &A::SetXAxisScaleMode, &A::GetXAxisScaleMode }, { &A::SetYAxisScaleMode, &A::GetYAxisScaleMode },
            { &A::SetIntersectMode, &A::GetIntersectMode }, { &A::SetXAxisRangeMode, &A::GetXAxisRangeMode },
            { &A::SetYAxisRangeMode, &A::GetYAxisRangeMode }, { &A::SetXTimeUnitsOn, &A::GetXTimeUnitsOn },
            { &A::SetYTimeUnitsOn, &A::GetYTimeUnitsOn }, { &A::SetNumXMajorTicks, &A::GetNumXMajorTicks },
            { &A::SetNumYMajorTicks, &A::GetNumYMajorTicks }, { &A::SetNumXMinorTicks, &A::GetNumXMinorTicks },
            { &A::SetNumYMinorTicks, &A::GetNumYMinorTicks }, { &A::SetXTickRangeMode, &A::GetXTickRangeMode },
            { &A::SetYTickRangeMode, &A::GetYTickRangeMode }, { &A::SetXDelTime, &A::GetXDelTime },
            { &A::SetXDelTimeMinor, &A::GetXDelTimeMinor }, { &A::SetAlignRefDate, &A::GetAlignRefDate },
            { &A::SetXLabelsOn, &A::GetXLabelsOn }, { &A::SetYLabelsOn, &A::GetYLabelsOn },
            { &A::SetXMinorLabelsOn, &A::GetXMinorLabelsOn }, { &A::SetYMinorLabelsOn, &A::GetYMinorLabelsOn },
            { &A::SetXIntersectLabelOn, &A::GetXIntersectLabelOn },
            { &A::SetYIntersectLabelOn, &A::GetYIntersectLabelOn } });
    TakeOver<CRealPoint const&, CRealPoint>(to, from, true,
        { { &A::SetXAxisStart, &A::GetXAxisStart }, { &A::SetXAxisEnd, &A::GetXAxisEnd },
            { &A::SetYAxisStart, &A::GetYAxisStart }, { &A::SetYAxisEnd, &A::GetYAxisEnd } });
    TakeOver<CRealPoint const&, CRealPoint>(to, from, false, { { &A::SetIntersect, &A::GetIntersect } });
    TakeOver<double, double>(to, from, true,
        { { &A::SetXAxisMin, &A::GetXAxisMin }, { &A::SetYAxisMin, &A::GetYAxisMin },
            { &A::SetXAxisMax, &A::GetXAxisMax }, { &A::SetYAxisMax, &A::GetYAxisMax },
            { &A::SetXAxisScaleFac, &A::GetXAxisScaleFac }, { &A::SetYAxisScaleFac, &A::GetYAxisScaleFac },
            { &A::SetXTickMin, &A::GetXTickMin }, { &A::SetYTickMin, &A::GetYTickMin },
            { &A::SetXTickDel, &A::GetXTickDel }, { &A::SetYTickDel, &A::GetYTickDel },
            { &A::SetXTickRangeMin, &A::GetXTickRangeMin }, { &A::SetYTickRangeMin, &A::GetYTickRangeMin },
            { &A::SetXTickRangeMax, &A::GetXTickRangeMax }, { &A::SetYTickRangeMax, &A::GetYTickRangeMax },
            { &A::SetXMajorTickScaleFac, &A::GetXMajorTickScaleFac },
            { &A::SetYMajorTickScaleFac, &A::GetYMajorTickScaleFac },
            { &A::SetXMinorTickScaleFac, &A::GetXMinorTickScaleFac },
            { &A::SetYMinorTickScaleFac, &A::GetYMinorTickScaleFac } });
    TakeOver<CString const&, CString>(
        to, from, true, { { &A::SetXAxisTitle, &A::GetXAxisTitle }, { &A::SetYAxisTitle, &A::GetYAxisTitle } });
    TakeOver<A::TickMode, A::TickMode>(
        to, from, true, { { &A::SetXTickMode, &A::GetXTickMode }, { &A::SetYTickMode, &A::GetYTickMode } });
    TakeOver<COleDateTime, COleDateTime>(to, from, true, { { &A::SetXTickMinTime, &A::GetXTickMinTime } });
    TakeOver<A::TimeUnit, A::TimeUnit>(to, from, true,
        { { &A::SetXDelTimeUnit, &A::GetXDelTimeUnit }, { &A::SetXDelTimeUnitMinor, &A::GetXDelTimeUnitMinor } });
    TakeOver<A::LabelPlacement, A::LabelPlacement>(to, from, true,
        { { &A::SetXLabelPlacement, &A::GetXLabelPlacement }, { &A::SetYLabelPlacement, &A::GetYLabelPlacement } });
    TakeOver<A::FormatType, A::FormatType>(to, from, true,
        { { &A::SetXFormatType, &A::GetXFormatType }, { &A::SetYFormatType, &A::GetYFormatType },
            { &A::SetXMinorFormatType, &A::GetXMinorFormatType },
            { &A::SetYMinorFormatType, &A::GetYMinorFormatType } });
    TakeOver<COLORREF, COLORREF>(to, from, true,
        { { &A::SetLabelsColour, &A::GetLabelsColour }, { &A::SetMinorLabelsColour, &A::GetMinorLabelsColour },
            { &A::SetTitlesColour, &A::GetTitlesColour }, { &A::SetTextColour, &A::GetTextColour } });
    TakeOver<DWORD, DWORD>(to, from, true, { { &A::SetReservedColour, &A::GetReservedColour } });
    TakeOver<int, int>(to, from, false,
        { { &A::SetXAxisLabelMode, &A::GetXAxisLabelMode }, { &A::SetYAxisLabelMode, &A::GetYAxisLabelMode },
            { &A::SetXLabelPrecision, &A::GetXLabelPrecision }, { &A::SetYLabelPrecision, &A::GetYLabelPrecision },
            { &A::SetXMinorLabelPrecision, &A::GetXMinorLabelPrecision },
            { &A::SetYMinorLabelPrecision, &A::GetYMinorLabelPrecision },
            { &A::SetLabelsHorizontal, &A::GetLabelsHorizontal },
            { &A::SetMinorLabelsHorizontal, &A::GetMinorLabelsHorizontal } });
    TakeOver<CString const&, CString>(to, from, false,
        { { &A::SetXLabelDateFormat, &A::GetXLabelDateFormat },
            { &A::SetXMinorLabelDateFormat, &A::GetXMinorLabelDateFormat },
            { &A::SetXLabelTimeFormat, &A::GetXLabelTimeFormat },
            { &A::SetXMinorLabelTimeFormat, &A::GetXMinorLabelTimeFormat } });
    to.SetTitlesFont(*from.GetTitlesFont());
    to.SetLabelsFont(*from.GetLabelsFont());
    to.SetMinorLabelsFont(*from.GetMinorLabelsFont());
    CStringArray texts;
    from.GetXLabels(texts), to.SetXLabels(texts), from.GetYLabels(texts), to.SetYLabels(texts);
    CDoubleArray positions;
    from.GetXArbTickPosns(positions), to.SetXArbTickPosns(positions);
    from.GetYArbTickPosns(positions), to.SetYArbTickPosns(positions);
    EXPECT_EQ(OwnFields(Stored(to)), OwnFields(DistinctAxes()));
}

TEST(AxesSettings, AreReadAndSetAllAtOnce)
{
    CAxes axes;
    ASSERT_TRUE(Load(axes, DistinctAxes()));
    axes.SetModified(0);
    axes.SetAxis(static_cast<CAxes::AxisType>(2), AxisSettings());
    EXPECT_FALSE(axes.Modified()) << "there are two axes";
    AxisSettings const x = axes.GetAxis(CAxes::atX);
    axes.SetAxis(CAxes::atX, axes.GetAxis(CAxes::atY));
    EXPECT_TRUE(axes.Modified());
    EXPECT_EQ(axes.GetXAxisTitle(), "y title");
    axes.SetAxis(CAxes::atX, x);
    EXPECT_EQ(Stored(axes), DistinctAxes());
}

TEST(AxesArchive, HoldsTheDefaultsOfNewAxes)
{
    COLORREF line = 1, labels = 1, minorLabels = 1, titles = 1;
    CPreferences::GetAxesColour2D(line);
    CPreferences::GetMajorLabelsColour2D(labels);
    CPreferences::GetMinorLabelsColour2D(minorLabels);
    CPreferences::GetTitlesColour2D(titles);
    Bytes expected;
    expected.Component(static_cast<int>(line), 1, 0, 0).Int(1).Double(0, 10, 0, 10).Point(0, 0);
    expected.Int(6, 3, 6, 3).Int(0, labels, minorLabels, titles, 0).Int(0, 0, 0, 0, 0).Double(1, 1).Int(1, 1, 1, 1);
    expected.Texts("", "").Font("Arial", 400, 0, 1).Font("Arial", 400, 0, 1).Font("Arial", 400, 0, 1);
    expected.Double(1, 1, 1, 1).Int(1);
    for (int point = 0; point < 4; ++point)
        expected.Point(0, 0);
    expected.Int(0, 0).Short(0).Short(0).Int(1, 1).Short(0).Short(0).Int(4, 4, 4, 4).Double(0, 0, 2, 2);
    expected.Int(3, 0, 1, 1).Int(0, 0, 0, 0).Int(0, 0).Int(0).Double(0, 10).Int(0).Double(0, 10);
    expected.Int(0).Double(0).Int(1, 0, 0, 0);
    expected.Texts("%d/%m/%y", "%d/%m/%y", "%H:%M:%S", "%H:%M:%S").Int(0, 0, 1, 1);
    CAxes axes(nullptr);
    EXPECT_TRUE(axes.Modified());
    EXPECT_EQ(Stored(axes), expected);
}

} // namespace
} // namespace ombrel
