#include "ombrel/table/TableCells.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace ombrel {
namespace {

TEST(CellNumbers, AreRoundedAsTheStandardConversionRoundsThem)
{
    // Halves between doubles, long mantissas, exponents past the exact powers, the smallest and the largest double.
    std::vector<std::string> texts { "0", "-0", "1", "+7.5", ".5", "5.", "-.25e1", "1e22", "1e23", "9007199254740993",
        "9007199254740992.5", "123456789012345678901234567890", "0.1", "0.30000000000000004", "1e-22", "1e-23",
        "4.9e-324", "2.4703282292062328e-324", "1.7976931348623157e308", "1e-400", "1E+05", "00000000000000000000001.5",
        "0.000000000000000000000000000000123", "8.5e-17", "+0.30000000000000004", std::string(62, '0') + "7",
        std::string(63, '0') + "7", std::string(64, '0') + "7" };
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        char buffer[64];
        double const magnitude = std::pow(10.0, static_cast<double>(random() % 60) - 30.0);
        std::snprintf(buffer, sizeof buffer, "%.*g", static_cast<int>(random() % 20) + 1,
            (static_cast<double>(random()) / 1e19 - 0.5) * magnitude);
        texts.emplace_back(buffer);
    }
    for (std::string const& text : texts) {
        auto const value = ParseCellNumber(text, '.');
        ASSERT_TRUE(value) << text;
        double const expected = std::strtod(text.c_str(), nullptr);
        EXPECT_EQ(*value, expected) << text;
        EXPECT_EQ(std::signbit(*value), std::signbit(expected)) << text;
        std::string comma = text;
        std::replace(comma.begin(), comma.end(), '.', ',');
        EXPECT_TRUE(comma.ends_with(',') || ParseCellNumber(comma, ',') == value) << comma;
    }
    EXPECT_EQ(ParseCellNumber("-1e999", '.'), -std::numeric_limits<double>::infinity());
}

TEST(CellNumbers, AreNothingElse)
{
    for (char const* const text : { "", "-", "+", ".", "e5", "1e", "1e+", "1.2.3", "1,5", "12a", "0x10", "inf", "nan",
             "--1", "1 2", "1e5.", "١" })
        EXPECT_FALSE(ParseCellNumber(text, '.')) << text;
    EXPECT_FALSE(ParseCellNumber("1.5", ','));
    EXPECT_FALSE(ParseCellNumber("1,", ','));
}

TEST(IsoDates, BecomeDaysSinceTheEndOf1899)
{
    struct {
        char const* text;
        double days;
        bool hasOffset;
    } const cases[] {
        { "1899-12-29T06:00", -1.25, false },
        { "1899-12-30 06:00", 0.25, false },
        { "2000-01-01 12:00:00", 36526.5, false },
        { "0100-01-01", -657434.0, false },
        { "9999-12-31T23:59:59", 2958465.0 + 86399.0 / 86400.0, false },
        { "2000-01-01T01:30:00.5", 36526.0 + 5400.5 / 86400.0, false },
        { "2000-01-01T00:30:00Z", 36526.0 + 1800.0 / 86400.0, true },
        { "2000-01-01T00:30:00+01:00", 36525.0 + 84600.0 / 86400.0, true },
        { "2000-01-01 23:30-0200", 36527.0 + 5400.0 / 86400.0, true },
        // Through the day where the fraction changes its direction.
        { "1899-12-30T01:00:00+02", -1.0 - 82800.0 / 86400.0, true },
    };
    for (auto const& c : cases) {
        auto const date = ParseIsoDate(c.text);
        ASSERT_TRUE(date) << c.text;
        EXPECT_NEAR(date->days, c.days, 1e-9) << c.text;
        EXPECT_EQ(date->hasOffset, c.hasOffset) << c.text;
    }
}

TEST(IsoDates, ThatDoNotExistAreRefused)
{
    for (char const* const text : { "2020", "20200331", "2020-13", "2020-00-01", "2021-02-29", "1900-02-29", "2020-3-1",
             "2020-03-31T", "2020-03-31T24:00", "2020-03-31 12", "2020-03-31 12:60", "2020-03-31 12:00:60",
             "2020-03-31 12:00:00.", "2020-03-31Z", "2020-03-31 12:00+1", "2020-03-31 12:00+24",
             "2020-03-31 12:00-01:60", "2020-03/31", "0099-01-01", "9999-12-31T23:00-02", "2020-03-31x", "" })
        EXPECT_FALSE(ParseIsoDate(text)) << text;
}

TEST(WrittenDates, AreReadInOneWayOrBoth)
{
    double const first = *MakeDate(2020, 2, 1, 0.0);
    double const second = *MakeDate(2020, 1, 2, 0.0);
    double const last = *MakeDate(2003, 9, 19, 0.0);
    double const evening = *MakeDate(2003, 9, 19, 21.5 * 3600.0);
    using Both = std::pair<std::optional<double>, std::optional<double>>;
    struct {
        char const* text;
        Both readings;
        std::optional<DateOrder> order = std::nullopt;
    } const cases[] {
        { "01/02/2020", { first, second } },
        { "1-2-2020", { first, second } },
        { "1/2/20", { first, second } },
        { "1.2.2020", { first, first } },
        { "01.02.20", { first, first } },
        { "01/02/2020", { first, first }, DateOrder::DayFirst },
        { "1.2.2020", { second, second }, DateOrder::MonthFirst },
        { "20/2/1", { first, first }, DateOrder::YearFirst },
        { "2020-2-1", { first, first }, DateOrder::MonthFirst },
        { "2020.02.01", { first, first } },
        { "19/09/2003", { last, std::nullopt } },
        { "9/19/2003", { std::nullopt, last } },
        { "9/19/2003 9:30 PM", { std::nullopt, evening } },
        { "19-Sep-03", { last, last } },
        { "19 September 2003, 21:30", { evening, evening } },
        { "Sep 19 2003", { last, last } },
        { "Sept 19 2003", {} },
        { "September 19, 2003 21:30:00", { evening, evening } },
        { "Sep 2003", { last - 18.0, last - 18.0 } },
        { "2003-Sep-19", { last, last } },
        { "31/02/2020", {} },
        { "13/13/2020", {} },
        { "9/19/2003", {}, DateOrder::DayFirst },
        // Versions, addresses, times of day, words and numbers.
        { "1.2.10", {} },
        { "01-02-03", {} },
        { "192.168.1.2020", {} },
        { "1/2/2020 24:00", {} },
        { "1/2/2020 13:00 pm", {} },
        { "1/2/2020x", {} },
        { "Market 5 2000", {} },
        { "May", {} },
        { "5", {} },
        { "1/2", {} },
        { "-1/2/2020", {} },
        { "", {} },
    };
    for (auto const& c : cases) {
        WrittenDate const found = ParseWrittenDate(c.text, c.order).value_or(WrittenDate());
        EXPECT_EQ(Both(found.dayFirst, found.monthFirst), c.readings) << c.text;
    }
}

TEST(DateFormats, ReadWhatTheyDescribe)
{
    struct {
        char const* format;
        char const* text;
        double days;
    } const cases[] {
        { "%Y%m%d", "20200331", 43921.0 },
        { "%Y%j", "2020091", 43921.0 },
        { "%m/%d/%y", "3/31/20", 43921.0 },
        { "%m/%d/%y", "1/1/69", 25204.0 },
        { "%d %b %Y", "31  MAR 2020", 43921.0 },
        { "%B %e, %Y", "March 31, 2020", 43921.0 },
        { "%F %T", "2020-03-31 06:00:00", 43921.25 },
        { "%F %H:%M:%S", "2020-03-31 06:00:00.864", 43921.25 + 1e-5 },
        { "%m", "3", 61.0 },
        { "%d %H", "2 12", 3.5 },
        { "100%% %Y", "100% 2020", 43831.0 },
    };
    for (auto const& c : cases) {
        auto const format = DateFormat::Compile(c.format);
        ASSERT_TRUE(std::holds_alternative<DateFormat>(format)) << c.format;
        auto const days = std::get<DateFormat>(format).Parse(c.text);
        ASSERT_TRUE(days) << c.format << " of " << c.text;
        EXPECT_NEAR(*days, c.days, 1e-9) << c.format << " of " << c.text;
    }
    auto const german = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y"));
    for (char const* const text : { "31.04.2020", "31.03.2020x", "31-03-2020", "31.03.", "", "0.3.2020", "1.13.2020" })
        EXPECT_FALSE(german.Parse(text)) << text;
    for (auto const& [format, text] : { std::pair { "%H:%M", "24:00" }, { "%H:%M", "12:60" }, { "%T", "12:00:60" },
             { "%Y%b", "999Mar" }, { "%j %Y", "366 2019" }, { "%y%m", "1" }, { "%d%%", "1" } })
        EXPECT_FALSE(std::get<DateFormat>(DateFormat::Compile(format)).Parse(text)) << text;
    for (char const* const bad : { "", "date", "%Q", "%Y-%", "%%" })
        EXPECT_TRUE(std::holds_alternative<std::string>(DateFormat::Compile(bad))) << bad;
}

} // namespace
} // namespace ombrel
