#include "ombrel/layout/AxisTicks.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <set>

namespace ombrel {
namespace {

/// Every character 8 pixels wide.
int Width(std::string const& text) { return 8 * static_cast<int>(text.size()); }

std::vector<double> PositionsOf(NumberTicks const& ticks)
{
    std::vector<double> positions;
    for (double v = ticks.first; v <= ticks.range.max + ticks.step * 1e-6 && positions.size() < 50; v += ticks.step)
        positions.push_back(v);
    return positions;
}

void ExpectNear(AxisRange const& range, AxisRange const& expected)
{
    EXPECT_NEAR(range.min, expected.min, 1e-9);
    EXPECT_NEAR(range.max, expected.max, 1e-9);
}

TEST(NumberTicks, AreTidyAndFewAndLabelledDifferently)
{
    std::mt19937_64 random(3);
    auto const uniform = [&random] { return static_cast<double>(random() >> 11) / 9007199254740992.0; };
    for (int i = 0; i < 5000; ++i) {
        double const length = std::pow(10.0, uniform() * 30.0 - 15.0);
        double const min = (uniform() - 0.5) * length * std::pow(10.0, uniform() * 5.0);
        AxisRange const data { min, min + length };
        NumberTicks const ticks = MakeNumberTicks(data, {}, 8);
        SCOPED_TRACE(testing::Message() << data.min << " to " << data.max << " step " << ticks.step);
        double const slack = ticks.step * 1e-6;
        ASSERT_LE(ticks.range.min, data.min);
        ASSERT_GE(ticks.range.max, data.max);
        // Both ends lie on the ticks outside the data that are the nearest.
        double const minorStep = ticks.step / (ticks.minor + 1);
        for (double const end : { ticks.range.min, ticks.range.max })
            ASSERT_NEAR(end, std::round(end / minorStep) * minorStep, slack);
        ASSERT_LT(std::max(data.min - ticks.range.min, ticks.range.max - data.max), minorStep * (1 + 1e-6));
        ASSERT_TRUE(data.min * ticks.range.min >= 0.0 && data.max * ticks.range.max >= 0.0) << "across zero";
        std::vector<double> const positions = PositionsOf(ticks);
        ASSERT_GE(positions.size(), 3u);
        ASSERT_LE(positions.size(), 9u);
        ASSERT_GE(positions.front(), ticks.range.min - slack);
        ASSERT_LT(positions.front() - ticks.step, ticks.range.min - slack) << "a tick is missing";
        ASSERT_EQ(ticks.step, CVUtils::NiceNum(ticks.step * 1.2, 1)) << "not 1, 2 or 5";
        std::set<std::string> labels;
        for (double const v : positions)
            labels.insert(NumberLabel(ticks, std::abs(v) < slack ? 0.0 : v));
        ASSERT_EQ(labels.size(), positions.size());
    }
}

TEST(NumberTicks, StandAtTheEndsOfUsualRanges)
{
    struct {
        AxisRange data;
        RangeFreedom freedom;
        AxisRange range;
        double step;
        int minor;
        int mostSteps = 8;
        double smallestStep = 0.0;
    } const cases[] {
        { { 0.3, 7.2 }, {}, { 0.2, 7.2 }, 1, 4 },
        { { -0.3, 7.3 }, {}, { -0.4, 7.4 }, 1, 4 },
        { { 0, 110 }, {}, { 0, 110 }, 20, 3 },
        { { 0.1, 0.7 }, {}, { 0.1, 0.7 }, 0.1, 4 },
        // An end too far from the next tick stays.
        { { 1, 100 }, { false, false, 0.05 }, { 0, 100 }, 20, 3 },
        { { 0, 8.05 }, { false, false, 0.05 }, { 0, 8.05 }, 2, 3 },
        { { 0, 8.15 }, { false, false, 0.05 }, { 0, 8.5 }, 2, 3 },
        { { -0.5, 79.5 }, { false, false, 0.0 }, { -0.5, 79.5 }, 10, 4 },
        // Fixed ends get positions of their own.
        { { 0.3, 7.2 }, { true, true, 1.0 }, { 0.3, 7.2 }, 1, 4 },
        { { 0.3, 7.3 }, { true, false, 1.0 }, { 0.3, 7.4 }, 1, 4 },
        { { 0.3, 7.3 }, { false, true, 1.0 }, { 0.2, 7.3 }, 1, 4 },
        // One tick alone does not make a scale.
        { { 0.4, 0.9 }, {}, { 0, 1 }, 1, 4, 1 },
        // What counts has ticks at whole numbers, minor ones too.
        { { 1, 3 }, {}, { 1, 3 }, 1, 0, 8, 1.0 },
        { { 0, 12.6 }, {}, { 0, 13 }, 2, 1, 8, 1.0 },
        { { 0, 36.5 }, {}, { 0, 37 }, 5, 4, 8, 1.0 },
    };
    for (auto const& c : cases) {
        NumberTicks const ticks = MakeNumberTicks(c.data, c.freedom, c.mostSteps, c.smallestStep);
        SCOPED_TRACE(testing::Message() << c.data.min << " to " << c.data.max);
        ExpectNear(ticks.range, c.range);
        EXPECT_NEAR(ticks.step, c.step, 1e-9);
        EXPECT_EQ(ticks.minor, c.minor);
    }
}

TEST(NumberLabels, AreWrittenAlikeAlongAnAxis)
{
    using Texts = std::vector<std::string>;
    struct {
        AxisRange range;
        int steps;
        Texts labels;
        char const* title;
    } const cases[] {
        { { 1990, 2020 }, 3, { "1990", "2000", "2010", "2020" }, "q" },
        { { -5000, 10000 }, 3, { "-5,000", "0", "5,000", "10,000" }, "q" },
        { { 0, 600000 }, 3, { "0", "200,000", "400,000", "600,000" }, "q" },
        { { -500000, 1500000 }, 4, { "-0.5", "0.0", "0.5", "1.0", "1.5" }, "q (× 10⁶)" },
        { { 0, 4e10 }, 4, { "0", "10", "20", "30", "40" }, "q (× 10⁹)" },
        // A power of ten would leave as many digits.
        { { 1000000.1, 1000000.3 }, 2, { "1,000,000.1", "1,000,000.2", "1,000,000.3" }, "q" },
        { { 123456000, 123456400 }, 2, { "123,456,000", "123,456,200", "123,456,400" }, "q" },
        { { 0, 0.0006 }, 3, { "0.0000", "0.0002", "0.0004", "0.0006" }, "q" },
        { { -2e-9, 4e-9 }, 3, { "-2", "0", "2", "4" }, "q (× 10⁻⁹)" },
        { { 0.4e-13, 0.8e-13 }, 2, { "40", "60", "80" }, "q (× 10⁻¹⁵)" },
        { { 1e300, 3e300 }, 2, { "1", "2", "3" }, "q (× 10³⁰⁰)" },
    };
    for (auto const& c : cases) {
        NumberTicks const ticks = MakeNumberTicks(c.range, { true, true }, c.steps);
        EXPECT_EQ(NumberLabels(ticks), c.labels);
        EXPECT_EQ(TitleWithPower("q", ticks), c.title) << c.labels.front();
        EXPECT_EQ(TitleWithoutPower(c.title), "q");
    }
    EXPECT_EQ(TitleWithPower("", MakeNumberTicks({ 0, 1e7 }, {}, 5)), "× 10⁶");
    EXPECT_EQ(TitleWithoutPower("× 10⁶"), "");
}

TEST(Margins, AreAlikeAndEndAtZeroAndAtTheLimit)
{
    constexpr std::array kStops { 0.0, -100.0, 100.0 };
    struct {
        AxisRange range;
        std::size_t stops;
        AxisRange wider;
    } const cases[] {
        { { 10, 60 }, 1, { 5, 65 } },
        { { 1, 60 }, 1, { 0, 65.9 } },
        { { -60, -1 }, 1, { -65.9, 0 } },
        { { -100, 100 }, 3, { -100, 100 } },
        { { -44, 99 }, 3, { -58.3, 100 } },
        { { -99, 44 }, 3, { -100, 58.3 } },
        { { 1, 60 }, 0, { -4.9, 65.9 } },
        { { 110, 120 }, 3, { 109, 121 } },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.range.min << " to " << c.range.max);
        ExpectNear(WithMargins(c.range, 0.1, std::span(kStops).first(c.stops)), c.wider);
    }
}

TEST(Circles, StandAtTidyRadii)
{
    for (auto const& [radius, circles] : { std::pair(5.0, 5), std::pair(10.0, 5), std::pair(12.5, 5), std::pair(4.0, 4),
             std::pair(800.0, 4), std::pair(6.0, 6), std::pair(0.3, 6), std::pair(0.75, 3), std::pair(7.0, 5) })
        EXPECT_EQ(TidyCircles(radius), circles) << radius;
}

TEST(EmptyRanges, GetALengthThatFitsTheirValue)
{
    for (double const value : { 0.0, 5.0, -5.0, 1e15, 1e-9, 1e300, 1e-300, -1e300 }) {
        AxisRange const range = WidenEmptyRange({ value, value });
        EXPECT_LT(range.min, value);
        EXPECT_GT(range.max, value);
        NumberTicks const ticks = MakeNumberTicks(range, {}, 8);
        EXPECT_GE(PositionsOf(ticks).size(), 2u) << value;
    }
    AxisRange const narrow = WidenEmptyRange({ 1e6, std::nextafter(1e6, 2e6) });
    EXPECT_GE(PositionsOf(MakeNumberTicks(narrow, {}, 8)).size(), 3u);
    EXPECT_EQ(WidenEmptyRange({ 7, 3 }).min, 3);
}

double Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return COleDateTime(year, month, day, hour, minute, second).GetValue();
}

/// Where the ticks stand on the axis.
std::vector<double> PlacesOf(DateTicks const& ticks)
{
    std::vector<double> places;
    COleDateTime date = ticks.first;
    for (; date.IsValid() && date.GetValue() <= ticks.range.max; CVUtils::IncrementTime(ticks.step, ticks.unit, date)) {
        if (date.GetValue() >= ticks.range.min)
            places.push_back(date.GetValue());
    }
    return places;
}

TEST(DateTicks, StepByTheCalendarAndTellEachYearAndDayOnce)
{
    using Texts = std::vector<std::string>;
    struct {
        AxisRange data;
        int length;
        TimeUnit unit;
        int step;
        Texts labels;
        char const* common;
    } const cases[] {
        { { Day(1958, 3, 1), Day(1990, 4, 1) }, 800, TimeUnit::Year, 5,
            { "1960", "1965", "1970", "1975", "1980", "1985", "1990" }, "" },
        { { Day(2019, 11, 1), Day(2020, 3, 1) }, 400, TimeUnit::Month, 1,
            { "Nov 2019", "Dec", "Jan 2020", "Feb", "Mar" }, "" },
        { { Day(2020, 1, 1), Day(2020, 9, 1) }, 200, TimeUnit::Month, 2, { "Jan", "Mar", "May", "Jul", "Sep" },
            "2020" },
        // Weeks begin on Mondays.
        { { Day(2020, 12, 22), Day(2021, 1, 13) }, 800, TimeUnit::Day, 7, { "28 Dec 2020", "4 Jan 2021", "11 Jan" },
            "" },
        { { Day(2020, 3, 30), Day(2020, 4, 2) }, 300, TimeUnit::Day, 1, { "30 Mar", "31 Mar", "1 Apr", "2 Apr" },
            "2020" },
        { { Day(2020, 3, 4, 15), Day(2020, 3, 6, 1) }, 800, TimeUnit::Hour, 6,
            { "4 Mar 18:00", "5 Mar", "06:00", "12:00", "18:00", "6 Mar" }, "2020" },
        { { Day(2020, 12, 31, 15), Day(2021, 1, 1, 7) }, 500, TimeUnit::Hour, 6,
            { "31 Dec 2020 18:00", "1 Jan 2021", "06:00" }, "" },
        { { Day(2020, 3, 4, 10, 7), Day(2020, 3, 4, 11, 32) }, 400, TimeUnit::Minute, 15,
            { "10:15", "10:30", "10:45", "11:00", "11:15", "11:30" }, "4 Mar 2020" },
        { { Day(2020, 3, 4, 10, 7, 3), Day(2020, 3, 4, 10, 7, 5) + 1e-6 }, 800, TimeUnit::Second, 1,
            { "10:07:03", "10:07:04", "10:07:05" }, "4 Mar 2020" },
        { { Day(100, 1, 1), Day(9999, 12, 31) }, 800, TimeUnit::Year, 1000,
            { "100", "1100", "2100", "3100", "4100", "5100", "6100", "7100", "8100", "9100" }, "" },
    };
    for (auto const& c : cases) {
        DateTicks const ticks = FitDateTicks(c.data, { false, false, 0.0 }, c.length, Width);
        SCOPED_TRACE(c.labels.front());
        EXPECT_EQ(ticks.unit, c.unit);
        EXPECT_EQ(ticks.step, c.step);
        EXPECT_EQ(DateLabels(ticks, PlacesOf(ticks)), c.labels);
        EXPECT_EQ(ticks.common, c.common);
    }
    // The end of the year is near enough for the axis to reach its tick.
    EXPECT_EQ(FitDateTicks({ Day(2012, 1, 1), Day(2015, 12, 31) }, { false, false, 0.05 }, 800, Width).range.max,
        Day(2016, 1, 1));
}

TEST(DateTicks, LeaveRoomBetweenTheirLabels)
{
    for (double const days : { 1e-5, 1e-3, 0.1, 0.9, 3.0, 20.0, 100.0, 900.0, 5000.0, 1e5, 2e6 }) {
        for (int const length : { 200, 500, 1000 }) {
            double const start = Day(2001, 5, 17, 9, 41, 12);
            AxisRange const data { start, std::min(start + days, 2958000.0) };
            DateTicks const ticks = FitDateTicks(data, { false, false, 0.05 }, length, Width);
            std::vector<double> const places = PlacesOf(ticks);
            std::vector<std::string> const labels = DateLabels(ticks, places);
            for (std::size_t i = 1; i < places.size(); ++i) {
                double const apart = (places[i] - places[i - 1]) / (ticks.range.max - ticks.range.min) * length;
                EXPECT_GE(apart, (Width(labels[i - 1]) + Width(labels[i])) / 2)
                    << days << " days in " << length << ": " << labels[i];
            }
        }
    }
}

TEST(LogAxes, EndAtOneTwoOrFiveTimesAPowerOfTen)
{
    struct {
        AxisRange data;
        RangeFreedom freedom;
        AxisRange expected;
    } const cases[] {
        { { 3, 57 }, {}, { 2, 100 } },
        { { 2, 500 }, {}, { 2, 500 } },
        { { 0.0009, 0.6 }, {}, { 0.0005, 1 } },
        { { 3, 57 }, { true, false }, { 3, 100 } },
        { { 3, 57 }, { false, true }, { 2, 57 } },
        { { 7, 7 }, {}, { 5, 10 } },
    };
    for (auto const& c : cases) {
        AxisRange const range = MakeLogRange(c.data, c.freedom);
        ExpectNear(range, { std::log10(c.expected.min), std::log10(c.expected.max) });
    }
    // One value on such a number stands in the middle.
    ExpectNear(MakeLogRange({ 10, 10 }, {}), { 0.5, 1.5 });
}

TEST(LogAxes, HaveLabelsOfOneFormThatKeepApart)
{
    double const two = std::log10(2.0);
    double const five = std::log10(5.0);
    using Texts = std::vector<std::string>;
    auto const fit = [](std::vector<double> const& ticks, int length) {
        return FitLogLabels(ticks, { ticks.front(), ticks.back() }, length, Width);
    };
    EXPECT_EQ(fit({ -4, 0, 6 }, 1000), (Texts { "0.0001", "1", "1,000,000" }));
    EXPECT_EQ(fit({ -5, 0, 6 }, 1000), (Texts { "10⁻⁵", "10⁰", "10⁶" }));
    EXPECT_EQ(fit({ 6 + two, 6 + five, 7 }, 1000), (Texts { "2×10⁶", "5×10⁶", "10⁷" }));
    EXPECT_EQ(fit({ 0, two, five, 1 }, 1000), (Texts { "1", "2", "5", "10" }));
    // A decade has 40 pixels: 5 lies 12 from 10, which has the room of 8 to its left, and 5 that of 4.
    EXPECT_EQ(fit({ 0, two, five, 1 }, 40), (Texts { "1", "2", "5", "10" }));
    // 30 pixels: 9 are less than 12.
    EXPECT_EQ(fit({ 0, two, five, 1 }, 30), (Texts { "1", "2", "", "10" }));
    EXPECT_EQ(fit({ 0, 1, 2, 3 }, 40), (Texts { "1", "10", "", "1000" }));
}

} // namespace
} // namespace ombrel
