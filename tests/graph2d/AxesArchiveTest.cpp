#include "ombrel/graph2d/Axes.h"

#include "ombrel/prefs/Preferences.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

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

template <typename T> double Number(T value) { return static_cast<double>(value); }

TEST(AxesArchive, FieldsAreWhatTheirAccessorsSay)
{
    CAxes axes;
    ASSERT_TRUE(Load(axes, DistinctAxes()));
    struct {
        char const* name;
        double found, expected;
    } const fields[] = {
        { "YAxisMin", Number(axes.GetYAxisMin()), 3.5 },
        { "NumXMinorTicks", Number(axes.GetNumXMinorTicks()), 12 },
        { "NumYMajorTicks", Number(axes.GetNumYMajorTicks()), 13 },
        { "MinorLabelsColour", Number(axes.GetMinorLabelsColour()), 23 },
        { "TitlesColour", Number(axes.GetTitlesColour()), 24 },
        { "YAxisRangeMode", Number(axes.GetYAxisRangeMode()), 32 },
        { "XAxisScaleMode", Number(axes.GetXAxisScaleMode()), 34 },
        { "YAxisOn", Number(axes.YAxisOn()), 42 },
        { "XIntersectLabelOn", Number(axes.GetXIntersectLabelOn()), 43 },
        { "MinorLabelsFont", Number(axes.GetMinorLabelsFont()->sizeFactor), 3.25 },
        { "XMinorTickScaleFac", Number(axes.GetXMinorTickScaleFac()), 10.5 },
        { "YMajorTickScaleFac", Number(axes.GetYMajorTickScaleFac()), 11.5 },
        { "XAxisEnd", Number(axes.GetXAxisEnd().y), 64.5 },
        { "YTickMode", Number(axes.GetYTickMode()), 82 },
        { "YLabelPrecision", Number(axes.GetYLabelPrecision()), 112 },
        { "XMinorLabelPrecision", Number(axes.GetXMinorLabelPrecision()), 113 },
        { "YTickMin", Number(axes.GetYTickMin()), 116.5 },
        { "XTickDel", Number(axes.GetXTickDel()), 117.5 },
        { "YLabelPlacement", Number(axes.GetYLabelPlacement()), 122 },
        { "XLabelsOn", Number(axes.GetXLabelsOn()), 123 },
        { "YFormatType", Number(axes.GetYFormatType()), 132 },
        { "XMinorFormatType", Number(axes.GetXMinorFormatType()), 133 },
        { "XTickRangeMax", Number(axes.GetXTickRangeMax()), 153.5 },
        { "YTickRangeMode", Number(axes.GetYTickRangeMode()), 154 },
        { "XTickMinTime", Number(axes.GetXTickMinTime().GetValue()), 40000.25 },
        { "XDelTimeMinor", Number(axes.GetXDelTimeMinor()), 162 },
        { "XDelTimeUnit", Number(axes.GetXDelTimeUnit()), 2 },
        { "YMinorLabelsOn", Number(axes.GetYMinorLabelsOn()), 172 },
        { "MinorLabelsHorizontal", Number(axes.GetMinorLabelsHorizontal()), 173 },
        { "AlignRefDate", Number(axes.GetAlignRefDate()), 174 },
    };
    for (auto const& field : fields)
        EXPECT_EQ(field.found, field.expected) << field.name;
    EXPECT_EQ(axes.GetXMinorLabelDateFormat(), "minor date");
    EXPECT_EQ(axes.GetXLabelTimeFormat(), "time");
    CDoubleArray positions;
    axes.GetYArbTickPosns(positions);
    EXPECT_EQ(positions, CDoubleArray({ 92.5, 93.5 }));
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
    EXPECT_EQ(Stored(axes), expected);
}

} // namespace
} // namespace ombrel
