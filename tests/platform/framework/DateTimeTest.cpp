#include "ombrel/platform/framework/DateTime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>

namespace ombrel {
namespace {

std::string Describe(COleDateTime const& date)
{
    COleDateTime::Fields f;
    if (!date.GetFields(f))
        return "none";
    CString text;
    text.Format("%d-%02d-%02d %02d:%02d:%02d %d %d", f.year, f.month, f.day, f.hour, f.minute, f.second, f.weekday,
        f.dayOfYear);
    return text.ToUtf8();
}

} // namespace

TEST(DateTime, FieldsOfMeasuredValues)
{
    using Case = std::tuple<double, char const*>;
    Case const cases[] = {
        { 0.0, "1899-12-30 00:00:00 6 364" },
        { -0.25, "1899-12-30 06:00:00 6 364" },
        { -1.25, "1899-12-29 06:00:00 5 363" },
        { -1.75, "1899-12-29 18:00:00 5 363" },
        { 36526.5, "2000-01-01 12:00:00 6 1" },
        { 36525.9999999, "2000-01-01 00:00:00 6 1" },
        { 0.9999943, "1899-12-31 00:00:00 0 365" },
        { -657434.0, "100-01-01 00:00:00 5 1" },
        { -657434.99899999995, "100-01-01 23:58:34 5 1" },
        { 2958465.99999999, "9999-12-31 23:59:59 5 365" },
        { -657435.0, "none" },
        { 2958466.0, "none" },
        { std::nan(""), "none" },
        { -std::numeric_limits<double>::infinity(), "none" },
    };
    for (auto const& [value, fields] : cases)
        EXPECT_EQ(Describe(COleDateTime(value)), fields) << value;
}

TEST(DateTime, EveryDayComesBackFromItsFields)
{
    COleDateTime::Fields f;
    int dayOfYear = 0;
    for (int day = -657434; day <= 2958465; ++day) {
        ASSERT_TRUE(COleDateTime(day).GetFields(f)) << day;
        ASSERT_EQ(COleDateTime(f.year, f.month, f.day, 0, 0, 0).GetValue(), day);
        ASSERT_EQ(f.weekday, (day + 657434 + 5) % 7) << day;
        dayOfYear = f.month == 1 && f.day == 1 ? 1 : dayOfYear + 1;
        ASSERT_EQ(f.dayOfYear, dayOfYear) << day;
    }
}

TEST(DateTime, ADayThatDoesNotExistIsInvalid)
{
    struct {
        int year, month, day, hour, minute, second;
    } const wrong[] = { { 2001, 2, 29, 0, 0, 0 }, { 1900, 2, 29, 0, 0, 0 }, { 2000, 2, 30, 0, 0, 0 },
        { 2001, 13, 1, 0, 0, 0 }, { 2001, 0, 1, 0, 0, 0 }, { 2001, 1, 0, 0, 0, 0 }, { 99, 12, 31, 0, 0, 0 },
        { 10000, 1, 1, 0, 0, 0 }, { 2001, 1, 1, 24, 0, 0 }, { 2001, 1, 1, 0, 60, 0 }, { 2001, 1, 1, 0, 0, 60 },
        { 2001, 1, 1, -1, 0, 0 }, { 2001, 1, 1, 0, -1, 0 }, { 2001, 1, 1, 0, 0, -1 } };
    for (auto const& w : wrong) {
        COleDateTime date(36526.0);
        EXPECT_FALSE(date.SetDateTime(w.year, w.month, w.day, w.hour, w.minute, w.second)) << w.year << '-' << w.day;
        EXPECT_EQ(date.GetStatus(), COleDateTime::invalid);
        EXPECT_EQ(date.GetYear(), -1);
    }
    EXPECT_EQ(COleDateTime(1899, 12, 29, 18, 0, 0).GetMonth(), 12);
    EXPECT_EQ(COleDateTime(1700, 2, 28, 1, 2, 3).GetValue(), -72988.043090277788);
    EXPECT_EQ(COleDateTime(2000, 2, 29, 23, 59, 58).GetValue(), 36585.999976851854);
}

TEST(DateTime, SumsCrossTheZeroDayEvenly)
{
    COleDateTime date(1.0);
    for (int i = 1; i <= 12; ++i)
        date -= 0.25;
    EXPECT_EQ(date.GetValue(), -2.0);
    EXPECT_EQ((COleDateTime(1.0) - 2.25).GetValue(), -2.75);
    EXPECT_EQ((COleDateTime(-2.75) + 2.25).GetValue(), 1.0);
    EXPECT_EQ((COleDateTime(1.0) - COleDateTime(-2.75)).GetTotalDays(), 2.25);
    EXPECT_EQ((COleDateTime(0.0) + COleDateTimeSpan(1, 12, 30, 36)).GetValue(), 1.52125);
    // A sum just below zero is midnight, not two days earlier.
    EXPECT_EQ(Describe(COleDateTime(0.1) - (0.1 + 1e-17) - 1e-18), "1899-12-30 00:00:00 6 364");
    EXPECT_TRUE(COleDateTime(-1.75) > COleDateTime(-1.25));
    EXPECT_TRUE(COleDateTime(-0.25) == COleDateTime(0.25));
}

TEST(DateTime, InvalidAndNullDatesSpreadAndCompareFalse)
{
    COleDateTime null;
    null.SetStatus(COleDateTime::null);
    COleDateTime const invalid(1e9);
    COleDateTime const day(1.0);
    for (COleDateTime const& odd : { null, invalid, COleDateTime(std::nan("")) }) {
        EXPECT_EQ((odd + 1.0).GetStatus(), odd.GetStatus());
        EXPECT_FALSE(odd == odd);
        EXPECT_FALSE(odd <= odd || odd >= odd || odd < day || odd > day || day < odd);
        EXPECT_TRUE(odd.IsSameAs(odd));
        EXPECT_FALSE((day + (odd - day)).IsValid());
    }
    for (double const span : { 3e6, -3e6, std::nan(""), 1e308 })
        EXPECT_EQ((day + span).GetStatus(), COleDateTime::invalid) << span;
    EXPECT_EQ(null.Format("%Y"), "");
    EXPECT_EQ(invalid.Format("%Y"), "Invalid DateTime");
}

TEST(DateTime, FormatsAsStrftimeDoes)
{
    // Days round the turns of long and short years, whose weeks may belong to the other year.
    for (double const value : { 36526.0, 36526.5, 36527.75, 36892.99, 45351.0001, 45656.52, 1.04, -30000.3, 400000.9,
             40176.0, 40179.0, 40180.0, 40181.0, 39448.0, 39811.0, 42369.0, 42370.0, 42372.0, 2958465.5 }) {
        COleDateTime const date(value);
        COleDateTime::Fields f;
        ASSERT_TRUE(date.GetFields(f));
        std::tm const time { .tm_sec = f.second,
            .tm_min = f.minute,
            .tm_hour = f.hour,
            .tm_mday = f.day,
            .tm_mon = f.month - 1,
            .tm_year = f.year - 1900,
            .tm_wday = f.weekday,
            .tm_yday = f.dayOfYear - 1 };
        for (char const* const pattern : { "%a %A %b %B", "%c", "%d/%m/%y", "%D", "%e", "%F", "%H:%M:%S", "%I %p", "%j",
                 "%T", "%U %W %w", "%x %X", "%Y%%", "%C", "%G-W%V-%u", "%g", "%h%n%t", "%r", "%R" }) {
            char expected[100];
            std::strftime(expected, sizeof expected, pattern, &time);
            EXPECT_EQ(date.Format(pattern).ToUtf8(), expected) << value << ' ' << pattern;
        }
    }
    EXPECT_EQ(COleDateTime(-657434.0).Format("%C %G-W%V %g").ToUtf8(), "01 99-W53 99");
    EXPECT_EQ(COleDateTime(36526.0).Format("%Q é%Z %").ToUtf8(), "%Q é %");
}

TEST(DateTime, DefaultTextFollowsTheLocalesPictures)
{
    using Case = std::tuple<double, char const*, char const*>;
    for (auto const& [value, british, american] :
        { Case { 0.0, "00:00:00", "12:00:00 AM" }, { -0.5, "12:00:00", "12:00:00 PM" },
            { 36526.0, "01/01/2000", "1/1/2000" }, { 36526.5, "01/01/2000 12:00:00", "1/1/2000 12:00:00 PM" },
            { -1.25, "29/12/1899 06:00:00", "12/29/1899 6:00:00 AM" }, { 36525.9999999, "01/01/2000", "1/1/2000" },
            { -400000.0625, "31/10/804 01:30:00", "10/31/804 1:30:00 AM" } }) {
        EXPECT_EQ(COleDateTime(value).FormatDefault("dd/MM/yyyy", "HH:mm:ss").ToUtf8(), british);
        EXPECT_EQ(COleDateTime(value).FormatDefault("M/d/yyyy", "h:mm:ss tt").ToUtf8(), american);
    }
    EXPECT_EQ(
        COleDateTime(38416.6).FormatDefault("ddd d. MMM 'yy''d' y yy", "H'h't").ToUtf8(), "Sat 5. Mar yy'd 5 05 14hP");
}

} // namespace ombrel
