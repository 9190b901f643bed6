#include "ombrel/graph2d/axes/AxesTicks.h"

#include "ombrel/foundation/GArray.h"
#include "tests/platform/framework/PrintString.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

AxisSettings AxisOver(double min, double max)
{
    AxisSettings axis;
    axis.min = axis.tickRangeMin = min;
    axis.max = axis.tickRangeMax = max;
    return axis;
}

AxisSettings StepAxis(double min, double max, double tickMin, double tickDel)
{
    AxisSettings axis = AxisOver(min, max);
    axis.tickMode = AxisSettings::tmStep;
    axis.tickMin = tickMin;
    axis.tickDel = tickDel;
    return axis;
}

/// An axis of dates with step ticks over these days.
AxisSettings DateAxis(COleDateTime const& first, COleDateTime const& last)
{
    AxisSettings axis = AxisOver(first.GetValue(), last.GetValue());
    axis.tickMode = AxisSettings::tmStep;
    axis.timeUnitsOn = 1;
    return axis;
}

std::vector<double> ValuesOf(TickList const& ticks, Tick::Kind kind)
{
    std::vector<double> values;
    for (Tick const& tick : ticks) {
        if (tick.kind == kind)
            values.push_back(tick.value);
    }
    return values;
}

std::vector<double> Majors(AxisSettings const& axis, double crossing = kNaN)
{
    return ValuesOf(MakeTicks(axis, nullptr, crossing), Tick::Kind::Regular);
}

std::vector<double> Minors(AxisSettings const& axis, double crossing = kNaN)
{
    return ValuesOf(MakeTicks(axis, nullptr, crossing), Tick::Kind::Minor);
}

std::vector<CString> Texts(AxisSettings const& axis, DateTickSettings const* dates = nullptr)
{
    std::vector<CString> texts;
    for (Tick const& tick : MakeLabelledTicks(axis, dates, kNaN)) {
        if (tick.IsMajor())
            texts.push_back(tick.text);
    }
    return texts;
}

std::vector<CString> AsDays(std::vector<double> const& dates)
{
    std::vector<CString> days;
    for (double const date : dates)
        days.push_back(COleDateTime(date).Format("%Y-%m-%d"));
    return days;
}

MATCHER_P(NearTo, tolerance, "") { return std::fabs(std::get<0>(arg) - std::get<1>(arg)) <= tolerance; }

TEST(AxesTicks, TheLastDivisionIsTheEndOfTheRangeWhateverTheRounding)
{
    for (int n = 2; n < 200; ++n) {
        AxisSettings axis = AxisOver(0.1, 0.7);
        axis.numMajorTicks = n;
        EXPECT_EQ(Majors(axis).size(), static_cast<std::size_t>(n));
    }
}

TEST(AxesTicks, MinorsAreLeftOutWhereTheAxesCrossAndWithoutAnAxisLine)
{
    AxisSettings axis = AxisOver(0, 10);
    EXPECT_EQ(Minors(axis, 0.5 + 9e-7).size(), 14u);
    EXPECT_EQ(Minors(axis, 0.5 + 1.1e-6).size(), 15u);
    axis.on = 0;
    EXPECT_THAT(Minors(axis), IsEmpty());
    EXPECT_EQ(Majors(axis).size(), 6u) << "labels are still on";
    axis.labelsOn = 0;
    EXPECT_THAT(MakeTicks(axis, nullptr, 0), IsEmpty());
}

TEST(AxesTicks, TheTickAtTheCrossingIsThereOnlyWhenAskedFor)
{
    AxisSettings axis = AxisOver(-0.9, 0.9);
    axis.numMajorTicks = 7;
    EXPECT_EQ(Majors(axis, 0)[3], 0.0) << "rounding noise is taken off";
    axis.intersectLabelOn = 0;
    EXPECT_EQ(Majors(axis, 0).size(), 6u);
    EXPECT_EQ(Majors(axis, 0.1).size(), 7u) << "regular ticks cross at zero only";

    EXPECT_THAT(Majors(StepAxis(0, 6e-15, 0, 2e-15)), ElementsAre(0, 2e-15, 4e-15, 6e-15)) << "small, but no noise";
    axis.tickMode = AxisSettings::tmArbitrary;
    axis.arbitraryTicks = { 0.0, 0.1, 0.1 + 0.9e-7, 0.1 + 1.1e-7 };
    EXPECT_THAT(ValuesOf(MakeTicks(axis, nullptr, 0.1), Tick::Kind::Arbitrary), ElementsAre(0.0, 0.1 + 1.1e-7));
    EXPECT_THAT(ValuesOf(MakeTicks(axis, nullptr, 0.0), Tick::Kind::Arbitrary).front(), 0.0)
        << "an entry of exactly 0 is never at the crossing";
}

TEST(AxesTicks, StepsReachTheRangeFromBothSides)
{
    struct Case {
        char const* name;
        double min, max, tickMin, tickDel;
        std::vector<double> positions;
    };
    Case const cases[] = {
        { "from inside", 0, 3, 0.25, 1, { 0.25, 1.25, 2.25 } },
        { "from above", 0, 3, 7.5, 1, { 0.5, 1.5, 2.5 } },
        { "on both ends", 0, 2, 0, 1, { 0, 1, 2 } },
        { "from below, one step after", 10, 12, 8, 1.5, { 9.5, 11 } },
        { "far from above", 0, 2, 1e9, 1, { 0, 1, 2 } },
        { "ends are met in spite of rounding", 0, 0.3, 0.3, 0.1, { 0, 0.1, 0.2, 0.3 } },
        { "far below, only what is in the range", 1e6, 1e6 + 2, 0, 1, { 1e6, 1e6 + 1, 1e6 + 2 } },
        { "a step beyond the range", 0, 1, 0.5, 10, { 0.5 } },
        { "no tick fits", 0, 1, 1.5, 10, {} },
        { "no step", 0, 1, 0, 0, {} },
        { "too many", 0, 1, 0, 1e-5, {} },
        { "too small to move", 1e9, 1e9 + 1, 1e9, 1e-300, {} },
        { "out of all bounds", -kLargest, kLargest, kLargest, 1, {} },
        { "no range", kNaN, kNaN, 0, 1, {} },
    };
    for (Case const& c : cases) {
        std::vector<double> const positions = StepPositions(StepAxis(c.min, c.max, c.tickMin, c.tickDel));
        EXPECT_THAT(positions, Pointwise(NearTo(1e-12), c.positions)) << c.name;
    }
}

TEST(AxesTicks, StepMinorsLieBetweenMajorsOnlyAndInTheTickRange)
{
    AxisSettings axis = StepAxis(0, 3, 0.25, 1);
    EXPECT_THAT(Minors(axis), ElementsAre(0.5, 0.75, 1.0, 1.5, 1.75, 2.0));
    axis.numMinorTicks = 2;
    EXPECT_EQ(Minors(StepAxis(0, 0.3, 0, 0.1)).size(), 9u) << "none on a major tick";
    axis = StepAxis(10, 12, 8, 1.5);
    EXPECT_THAT(Minors(axis), ElementsAre(10.25, 10.625));
    EXPECT_THAT(Majors(axis), ElementsAre(11));
    axis = StepAxis(1, 2, 0, 0.3);
    axis.numMinorTicks = 2;
    EXPECT_THAT(Minors(axis), Pointwise(NearTo(1e-12), { 1.0, 1.1, 1.3, 1.4, 1.6, 1.7 }))
        << "also the one that rounding puts just below the range";
    axis.tickRangeMax = 1.5;
    EXPECT_THAT(Minors(axis), Pointwise(NearTo(1e-12), { 1.0, 1.1, 1.3, 1.4 })) << "none after the last major tick";
}

TEST(AxesTicks, UnreasonableCountsGiveNoTicks)
{
    int const most = std::numeric_limits<int>::max();
    for (int const n : { most, -most, 1, kMaxTicks + 1 }) {
        AxisSettings axis = AxisOver(0, 10);
        axis.numMajorTicks = n;
        EXPECT_THAT(MakeTicks(axis, nullptr, 0), IsEmpty()) << n;
        axis = StepAxis(0, 10, 0, 2);
        axis.numMinorTicks = n == 1 ? 0 : n;
        EXPECT_EQ(MakeTicks(axis, nullptr, 0).size(), 6u) << n;
    }
    AxisSettings axis = AxisOver(0, 10);
    axis.tickMode = AxisSettings::tmArbitrary;
    axis.arbitraryTicks.SetSize(kMaxTicks + 1);
    EXPECT_THAT(MakeTicks(axis, nullptr, 1), IsEmpty());
}

TEST(AxesTicks, ArbitraryTicksKeepTheirIndexAndIgnoreTheTickRange)
{
    AxisSettings axis = AxisOver(0, 10);
    axis.tickMode = AxisSettings::tmDivisionsArbitrary;
    axis.numMajorTicks = 2;
    axis.numMinorTicks = 0;
    axis.arbitraryTicks = { 12, kGap, 3, kNaN, kInfinity };
    TickList const ticks = MakeTicks(axis, nullptr, kNaN);
    ASSERT_EQ(ticks.size(), 4u);
    EXPECT_EQ(ticks[2].value, 12);
    EXPECT_EQ(ticks[2].index, 0);
    EXPECT_EQ(ticks[3].value, 3);
    EXPECT_EQ(ticks[3].index, 2);
    EXPECT_THAT(TickPositions(axis, nullptr), ElementsAre(0, 3, 10, 12));
    DateTickSettings const years;
    EXPECT_THAT(TickPositions(StepAxis(0, 2, 0, 1), &years), ElementsAre(0, 1, 2)) << "dates only where they are on";
}

TEST(AxesTicks, DecadesHaveNineLinesEachTheLastOnTheNext)
{
    AxisSettings axis = AxisOver(-1, 1);
    axis.scaleMode = 1;
    for (int const mode : { 0, 1, 3 }) {
        axis.tickMode = static_cast<AxisSettings::TickMode>(mode);
        TickList const ticks = MakeTicks(axis, nullptr, 0.5);
        EXPECT_THAT(ValuesOf(ticks, Tick::Kind::Regular), ElementsAre(-1, 0, 1));
        auto const lines = ValuesOf(ticks, Tick::Kind::DecadeLine);
        ASSERT_EQ(lines.size(), 18u);
        EXPECT_DOUBLE_EQ(lines[0], std::log10(0.2));
        EXPECT_DOUBLE_EQ(lines[8], 0.0);
        EXPECT_DOUBLE_EQ(lines[9], std::log10(2.0));
        EXPECT_DOUBLE_EQ(lines[17], 1.0);
    }
    EXPECT_THAT(Texts(axis), ElementsAre("0.1", "1", "10"));
    EXPECT_EQ(MakeLabelledTicks(axis, nullptr, 0)[1].text, "") << "lines have no label";
    axis.intersectLabelOn = 0;
    EXPECT_THAT(Majors(axis, 0), ElementsAre(-1, 1)) << "10^0 at the crossing";
    axis.numMajorTicks = 1;
    axis.tickMode = AxisSettings::tmDivisions;
    EXPECT_THAT(Majors(axis, 0), ElementsAre(-1, 1)) << "the decades do not depend on the divisions";

    AxisSettings cut = AxisOver(0.4, 2.3);
    cut.scaleMode = 1;
    EXPECT_THAT(Majors(cut), ElementsAre(1, 2));
    AxisSettings endless = AxisOver(0, 1e9);
    endless.scaleMode = 1;
    EXPECT_THAT(MakeTicks(endless, nullptr, 0), IsEmpty());
}

struct DateCase {
    char const* name;
    COleDateTime tickMin;
    int del;
    TimeUnit unit;
    COleDateTime lo, hi;
    std::vector<CString> days;
};

COleDateTime Day(int year, int month, int day) { return { year, month, day, 0, 0, 0 }; }

TEST(AxesTicks, DateStepsFollowTheCalendarFromTheLastDateNotAfterTheRange)
{
    COleDateTime none;
    none.SetStatus(COleDateTime::null);
    COleDateTime outside(1e12);
    outside.SetStatus(COleDateTime::valid);
    DateCase const cases[] = {
        { "months", Day(2009, 1, 15), 1, TimeUnit::Month, Day(2009, 1, 15), Day(2009, 4, 1),
            { "2009-01-15", "2009-02-15", "2009-03-15" } },
        { "months back", Day(2009, 4, 15), 1, TimeUnit::Month, Day(2008, 12, 20), Day(2009, 2, 15),
            { "2008-12-15", "2009-01-15", "2009-02-15" } },
        { "years back", Day(2009, 3, 1), 2, TimeUnit::Year, Day(2004, 1, 1), Day(2006, 1, 1),
            { "2003-03-01", "2005-03-01" } },
        { "weeks", Day(2009, 1, 1), 1, TimeUnit::Week, Day(2009, 1, 1), Day(2009, 1, 15),
            { "2009-01-01", "2009-01-08", "2009-01-15" } },
        { "days from far above", Day(9999, 1, 1), 1, TimeUnit::Day, Day(200, 1, 1), Day(200, 1, 2),
            { "200-01-01", "200-01-02" } },
        { "months from far below", Day(100, 1, 1), 1, TimeUnit::Month, Day(9999, 10, 15), Day(9999, 12, 31),
            { "9999-11-01", "9999-12-01" } },
        { "31 January stops at February", Day(2009, 1, 31), 1, TimeUnit::Month, Day(2009, 1, 1), Day(2009, 12, 31),
            { "2008-12-31", "2009-01-31" } },
        { "on the way back too", Day(2009, 3, 31), 1, TimeUnit::Month, Day(2009, 1, 1), Day(2009, 12, 31), {} },
        { "no step", Day(2009, 1, 1), 0, TimeUnit::Day, Day(2009, 1, 1), Day(2009, 1, 2), {} },
        { "a negative step", Day(2009, 1, 1), -1, TimeUnit::Month, Day(2008, 1, 1), Day(2009, 1, 2), {} },
        { "no unit", Day(2009, 1, 1), 1, static_cast<TimeUnit>(7), Day(2008, 1, 1), Day(2009, 1, 2), {} },
        { "a null date", none, 1, TimeUnit::Day, Day(2009, 1, 1), Day(2009, 1, 2), {} },
        { "a date out of bounds", outside, 1, TimeUnit::Month, Day(2009, 1, 1), Day(2009, 1, 2), {} },
        { "too many", Day(2009, 1, 1), 1, TimeUnit::Second, Day(2009, 1, 1), Day(2009, 1, 2), {} },
        { "the largest step", Day(2009, 1, 1), std::numeric_limits<int>::max(), TimeUnit::Year, Day(2009, 1, 1),
            Day(2009, 1, 2), { "2009-01-01" } },
    };
    for (DateCase const& c : cases) {
        DateTickSettings dates;
        dates.tickMin = c.tickMin;
        dates.del = c.del;
        dates.delUnit = c.unit;
        EXPECT_EQ(AsDays(DateStepPositions(dates, c.lo.GetValue(), c.hi.GetValue())), c.days) << c.name;
    }
    DateTickSettings halfDays;
    halfDays.tickMin = Day(1899, 12, 31);
    for (auto const& [del, unit] :
        { std::pair(12, TimeUnit::Hour), { 720, TimeUnit::Minute }, { 43200, TimeUnit::Second } }) {
        halfDays.del = del;
        halfDays.delUnit = unit;
        EXPECT_THAT(DateStepPositions(halfDays, -2, 0.5), ElementsAre(-2, -2.5, -1, -1.5, 0, 0.5))
            << "the time of a date before the zero date counts away from zero";
    }
}

TEST(AxesTicks, MinorDatesLieStrictlyBetweenMajorDatesInsideTheRange)
{
    AxisSettings const axis = DateAxis(Day(2009, 1, 15), Day(2009, 6, 1));
    DateTickSettings dates;
    dates.tickMin = Day(2009, 1, 1);
    dates.del = 3;
    dates.delUnit = TimeUnit::Month;
    dates.delMinor = 1;
    dates.delUnitMinor = TimeUnit::Month;
    auto const days = [&](Tick::Kind kind) { return AsDays(ValuesOf(MakeTicks(axis, &dates, 0), kind)); };
    EXPECT_THAT(days(Tick::Kind::Regular), ElementsAre("2009-04-01"));
    EXPECT_THAT(days(Tick::Kind::MinorDate), ElementsAre("2009-02-01", "2009-03-01", "2009-05-01"))
        << "not on the range's end";
    dates.delUnitMinor = TimeUnit::Week;
    dates.delMinor = 6;
    EXPECT_THAT(days(Tick::Kind::MinorDate), ElementsAre("2009-02-12", "2009-03-26", "2009-05-13"));
    dates.delUnit = TimeUnit::Day;
    dates.del = 1;
    dates.delUnitMinor = TimeUnit::Hour;
    dates.delMinor = 6;
    EXPECT_EQ(days(Tick::Kind::MinorDate).size(), 137u * 3) << "none on a major date";
    dates.delUnitMinor = TimeUnit::Second;
    EXPECT_THAT(days(Tick::Kind::MinorDate), IsEmpty()) << "more than can be drawn";
    dates.delUnitMinor = static_cast<TimeUnit>(-3);
    EXPECT_THAT(days(Tick::Kind::MinorDate), IsEmpty());
}

TEST(AxesLabels, ComeFromValuesOrStringsByTheLabelMode)
{
    AxisSettings axis = AxisOver(0, 10);
    axis.tickMode = AxisSettings::tmDivisionsArbitrary;
    axis.numMajorTicks = 3;
    axis.arbitraryTicks = { 7.25, 2.5 };
    axis.labels = { " first ", "second", "third", "fourth" };
    EXPECT_THAT(Texts(axis), ElementsAre("0", "5", "10", "7.25", "2.5"));
    axis.labelMode = AxisSettings::lmStrings;
    EXPECT_THAT(Texts(axis), ElementsAre("first", "third", "", "fourth", "second"));
    axis.labelMode = AxisSettings::lmArbitraryStrings;
    EXPECT_THAT(Texts(axis), ElementsAre("0", "5", "10", "first", "second"));
    axis.labels.SetSize(1);
    EXPECT_THAT(Texts(axis), ElementsAre("0", "5", "10", "first", ""));
    axis.labelsOn = 0;
    EXPECT_THAT(Texts(axis), ElementsAre("", "", "", "", ""));

    axis = AxisOver(0, 2000);
    axis.numMajorTicks = 2;
    axis.formatType = kEngineeringFormat;
    EXPECT_THAT(Texts(axis), ElementsAre("0", "2k")) << "the blank of the sign is trimmed";
}

TEST(AxesLabels, OfAnArbitraryAxisGoByTheSortedPositions)
{
    AxisSettings axis = AxisOver(0, 10);
    axis.tickMode = AxisSettings::tmArbitrary;
    axis.labelMode = AxisSettings::lmStrings;
    axis.arbitraryTicks = { 9, 1, 5, 5 };
    axis.labels = { "a", "b", "c", "d" };
    EXPECT_THAT(Texts(axis), ElementsAre("d", "a", "b", "b"));
    axis.scaleMode = 1;
    axis.max = 1;
    EXPECT_THAT(Texts(axis), ElementsAre("", "a")) << "a decade that is no tick position has none";
}

TEST(AxesLabels, OfDatesUseTheDateAndTimeFormats)
{
    AxisSettings axis = DateAxis(Day(2009, 1, 1), Day(2009, 1, 3));
    DateTickSettings dates;
    dates.tickMin = Day(2009, 1, 1);
    dates.delUnit = TimeUnit::Day;
    dates.delMinor = 12;
    dates.delUnitMinor = TimeUnit::Hour;
    dates.timeFormat = "";
    dates.minorDateFormat = "%H h";
    EXPECT_THAT(Texts(axis, &dates), ElementsAre("01/01/09", "02/01/09", "03/01/09"));
    TickList const ticks = MakeLabelledTicks(axis, &dates, 0);
    EXPECT_EQ(ticks.back().kind, Tick::Kind::MinorDate);
    EXPECT_EQ(ticks.back().text, "12 h") << "without the time format";
    axis.labelMode = AxisSettings::lmStrings;
    axis.labels = { "a", "b", "c" };
    EXPECT_THAT(Texts(axis, &dates), ElementsAre("a", "b", "c"));
    axis.tickMode = AxisSettings::tmDivisions;
    axis.numMinorTicks = 1;
    axis.numMajorTicks = 2;
    EXPECT_EQ(MakeLabelledTicks(axis, &dates, 0)[1].text, "00 h 00:00:00") << "divisions use both formats";
}

TEST(AxesLabels, SayThatTheRangeIsNotOneOfDates)
{
    AxisSettings axis = AxisOver(0, 3e6);
    axis.timeUnitsOn = 1;
    DateTickSettings const dates;
    TickList const ticks = MakeLabelledTicks(axis, &dates, 0);
    ASSERT_EQ(ticks.size(), 1u);
    EXPECT_EQ(ticks[0].value, 1.5e6);
    EXPECT_EQ(ticks[0].text, "Invalid Date Range");
    EXPECT_EQ(MakeTicks(axis, nullptr, 0).size(), 21u) << "an axis without dates draws as ever";
}

/// Ten to these powers.
std::vector<double> NumbersOf(std::vector<double> const& decades)
{
    std::vector<double> numbers;
    for (double const v : decades)
        numbers.push_back(std::pow(10.0, v));
    return numbers;
}

AxisSettings LogAxis(double lo, double hi)
{
    AxisSettings axis = AxisOver(std::log10(lo), std::log10(hi));
    axis.scaleMode = 1;
    axis.rangeMode = AxisSettings::rmStored;
    return axis;
}

TEST(LogTicks, KeepWithinStoredLimits)
{
    auto const near = [](std::vector<double> const& values) { return Pointwise(testing::FloatEq(), values); };
    auto const floats = [](std::vector<double> const& decades) {
        std::vector<double> const numbers = NumbersOf(decades);
        return std::vector<float>(numbers.begin(), numbers.end());
    };
    struct {
        double lo, hi;
        std::vector<double> majors;
        std::vector<double> minors;
    } const cases[] {
        // Below two decades 2 and 5 times a power of ten, too; both ends count.
        { 0.2, 10, { 0.2, 0.5, 1, 2, 5, 10 }, { 0.3, 0.4, 0.6, 0.7, 0.8, 0.9, 3, 4, 6, 7, 8, 9 } },
        { 3, 300, { 10, 100 }, { 3, 4, 5, 6, 7, 8, 9, 20, 30, 40, 50, 60, 70, 80, 90, 200, 300 } },
        // Below a factor of five tidy steps of the values: 70 / 5 is 14, a step of 10.
        { 41, 79, { 50, 60, 70 }, { 42, 44, 46, 48, 52, 54, 56, 58, 62, 64, 66, 68, 72, 74, 76, 78 } },
    };
    for (auto const& c : cases) {
        LogTicks const ticks = MakeLogTicks(LogAxis(c.lo, c.hi));
        EXPECT_THAT(floats(ticks.majors), near(c.majors)) << c.lo;
        EXPECT_THAT(floats(ticks.minors), near(c.minors)) << c.lo;
    }
    // Steps of whole decades, counted from 1, with the decades between as minor ticks; no lines within many decades.
    AxisSettings axis = LogAxis(1e-7, 1e6);
    axis.tickMode = AxisSettings::tmStep;
    axis.tickDel = 5.0;
    EXPECT_THAT(MakeLogTicks(axis).majors, ElementsAre(-5, 0, 5));
    EXPECT_THAT(MakeLogTicks(axis).minors, ElementsAre(-7, -6, -4, -3, -2, -1, 1, 2, 3, 4, 6));
    EXPECT_THAT(MakeLogTicks(LogAxis(1e-8, 1e8)).minors, IsEmpty());
    for (auto const& [lo, hi] : { std::pair(1.0, 1.0), { 10.0, 1.0 }, { 0.0, 1.0 }, { kNaN, 1.0 }, { 1.0, kInfinity } })
        EXPECT_THAT(MakeLogTicks(LogAxis(lo, hi)).majors, IsEmpty());
}

TEST(LogTicks, AreThoseOfAxesThatStoreTheirLimits)
{
    AxisSettings axis = LogAxis(3, 30);
    TickList const ticks = MakeTicks(axis, nullptr, kNaN);
    EXPECT_EQ(ValuesOf(ticks, Tick::Kind::Regular), MakeLogTicks(axis).majors);
    EXPECT_EQ(ValuesOf(ticks, Tick::Kind::DecadeLine), MakeLogTicks(axis).minors);
    EXPECT_EQ(TickPositions(axis, nullptr), MakeLogTicks(axis).majors);
    axis.rangeMode = AxisSettings::rmFixed;
    EXPECT_THAT(ValuesOf(MakeTicks(axis, nullptr, kNaN), Tick::Kind::Regular), ElementsAre(1.0));
}

} // namespace
} // namespace ombrel
