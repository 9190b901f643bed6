#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/host/Host.h"
#include "ombrel/platform/registry/Registry.h"

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> Utf8(CStringArray const& strings)
{
    std::vector<std::string> texts;
    for (CString const& s : strings)
        texts.push_back(s.ToUtf8());
    return texts;
}

TEST(Utils, RoundingCutsTowardsZeroAfterAddingAHalf)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    using Case = std::tuple<double, int, int>;
    for (auto const& [x, nearest, round] :
        { Case { 2.5, 3, 3 }, { -0.7, 0, -1 }, { -2.5, -2, -3 }, { 2.4, 2, 2 }, { 0.0, 0, 0 }, { 1e30, kMost, kMost },
            { -1e30, kLeast, kLeast }, { kInfinity, kMost, kMost }, { -kInfinity, kLeast, kLeast }, { kNaN, 0, 0 } }) {
        EXPECT_EQ(VUNearest(x), nearest) << x;
        EXPECT_EQ(CVUtils::Round(static_cast<float>(x)), round) << x;
    }
    EXPECT_EQ(VUNearest(2147483646.4), 2147483646);
    EXPECT_EQ(VUNearest(-2147483648.9), kLeast);
}

TEST(Utils, ComparisonToleranceFollowsTheLargerOperand)
{
    using Case = std::tuple<double, double, double, int>;
    for (auto const& [a, b, epsilon, result] : { Case { 1e10, 1e10 + 1, 1e-9, 0 }, { 1e10 + 100, 1e10, 1e-9, 1 },
             { -2, -1, 1e-9, -1 }, { 0, 0, 0, 0 }, { 0, 1e-300, 1e-9, -1 } })
        EXPECT_EQ(CVUtils::fcmp(a, b, epsilon), result) << a << ' ' << b;
    EXPECT_TRUE(CVUtils::FloatEq(1.0, 1.0000001));
    EXPECT_FALSE(CVUtils::FloatEq(1.0, 1.000001));
}

TEST(Utils, NearestDivisors)
{
    using Case = std::tuple<int, int, int>;
    for (auto const& [n, d, divisor] :
        { Case { 12, 5, 4 }, { 12, 12, 12 }, { 12, 100, 12 }, { 7, 6, 1 }, { 36, 7, 6 }, { 12, 0, 1 }, { 12, -3, 1 },
            { -12, 5, 4 }, { 0, 5, 5 }, { 2147483647, 2147483646, 1 }, { -2147483647 - 1, 1000, 512 } })
        EXPECT_EQ(CVUtils::GetNearestDivisor(n, d), divisor) << n << ' ' << d;
}

TEST(Utils, NiceNumbers)
{
    using Case = std::tuple<double, int, double>;
    for (auto const& [x, round, nice] : { Case { 0.37, 1, 0.5 }, { 0.37, 0, 0.5 }, { 1.5, 1, 2 }, { 1.49, 1, 1 },
             { 70, 1, 100 }, { 70, 0, 100 }, { 2, 0, 2 }, { 2.1, 0, 5 }, { 1000, 0, 1000 }, { 3e-7, 1, 5e-7 },
             { 0, 0, 0 }, { -1, 1, 0 }, { kNaN, 1, 0 } })
        EXPECT_DOUBLE_EQ(CVUtils::NiceNum(x, round), nice) << x;
}

TEST(Utils, NumbersAreFormattedInThreeNotations)
{
    using Case = std::tuple<int, double, int, char const*>;
    for (auto const& [mode, value, precision, text] : { Case { 0, 1234.5678, 6, "1234.57" }, { 0, 0.1, 15, "0.1" },
             { 1, 1234.5678, 2, "1234.57" }, { 1, -0.5, 0, "-0" }, { 2, 1500, 3, " 1.5k" }, { 2, -0.002, 3, "-2m" },
             { 2, 0.5, 3, " 500m" }, { 2, 999999, 3, " 1M" }, { 2, 0.0, 3, " 0" }, { 2, -0.0, 3, " 0" },
             { 2, 1, 3, " 1" }, { 2, 123456, 6, " 123.456k" }, { 2, 4.7e-6, 3, " 4.7\xC2\xB5" },
             { 2, -3.3e-9, 3, "-3.3n" }, { 2, 2.5e12, 3, " 2.5T" }, { 2, 2.5e16, 3, " 25" }, { 2, 0.1, -1, " 100m" },
             { 2, kInfinity, 3, " inf" }, { 2, kNaN, 3, " nan" }, { 3, 1.0, 3, "" }, { -1, 1.0, 3, "" } })
        EXPECT_EQ(CVUtils::FormatDouble(mode, value, precision).ToUtf8(), text) << mode << ' ' << value;
}

TEST(Utils, TextsAreNumbersOnlyAsAWhole)
{
    using Case = std::tuple<char const*, int, double>;
    Case const cases[] = { { "  12.5e3", 1, 12500 }, { "\t-0", 1, 0 }, { "0", 1, 0 }, { "+0.0", 1, 0 },
        { ".5", 1, 0.5 }, { "1e999", 1, kInfinity }, { "1.5.2", 1, 1.5 }, { "12.5 ", 0, 0 }, { "abc", 0, 0 },
        { "", 0, 0 }, { "  ", 0, 0 }, { "1,5", 0, 0 }, { "inf", 0, 0 }, { "-", 0, 0 }, { "+-", 0, 0 }, { ".0", 0, 0 },
        { "e5", 0, 0 }, { "\xC2\xB2", 0, 0 } };
    for (auto const& [text, good, expected] : cases) {
        double value = -77.0;
        EXPECT_EQ(CVUtils::StringToFloat(text, value), good) << text;
        EXPECT_EQ(value, good ? expected : -77.0) << text;
    }
}

TEST(Utils, DatesStepByTheCalendar)
{
    COleDateTime const invalid(2001, 2, 31, 0, 0, 0);
    using Case = std::tuple<COleDateTime, int, TimeUnit, COleDateTime>;
    Case const cases[] = {
        { { 2001, 1, 31, 6, 0, 0 }, 1, TimeUnit::Month, invalid },
        { { 2001, 1, 15, 6, 7, 8 }, -1, TimeUnit::Month, { 2000, 12, 15, 6, 7, 8 } },
        { { 2000, 12, 15, 0, 0, 0 }, 13, TimeUnit::Month, { 2002, 1, 15, 0, 0, 0 } },
        { { 2000, 12, 15, 0, 0, 0 }, -24, TimeUnit::Month, { 1998, 12, 15, 0, 0, 0 } },
        { { 2000, 2, 29, 0, 0, 0 }, 1, TimeUnit::Year, invalid },
        { { 2000, 2, 29, 0, 0, 0 }, 4, TimeUnit::Year, { 2004, 2, 29, 0, 0, 0 } },
        { { 2000, 2, 28, 0, 0, 0 }, -2147483647 - 1, TimeUnit::Month, invalid },
        { { 2000, 2, 28, 0, 0, 0 }, 2, TimeUnit::Week, { 2000, 3, 13, 0, 0, 0 } },
        { { 2000, 2, 28, 1, 0, 0 }, -1, TimeUnit::Day, { 2000, 2, 27, 1, 0, 0 } },
        { { 2000, 2, 28, 23, 0, 0 }, 2, TimeUnit::Hour, { 2000, 2, 29, 1, 0, 0 } },
        { { 2000, 2, 28, 0, 0, 0 }, -90, TimeUnit::Minute, { 2000, 2, 27, 22, 30, 0 } },
        { { 2000, 2, 28, 0, 0, 0 }, 61, TimeUnit::Second, { 2000, 2, 28, 0, 1, 1 } },
        { { 2000, 2, 28, 0, 0, 0 }, 3, static_cast<TimeUnit>(9), { 2000, 2, 28, 0, 0, 0 } },
        { invalid, 3, TimeUnit::Year, invalid },
    };
    for (auto const& [from, n, unit, to] : cases) {
        COleDateTime date = from;
        CVUtils::IncrementTime(n, unit, date);
        EXPECT_EQ(date.GetStatus(), to.GetStatus()) << n << ' ' << static_cast<int>(unit);
        EXPECT_EQ(date.Format("%Y-%m-%d %H:%M:%S"), to.Format("%Y-%m-%d %H:%M:%S")) << n;
    }
}

TEST(Utils, DatesAreValidFromTheYear100To9999)
{
    for (auto const& [date, valid] : { std::pair(0.0, 1), { 2958465, 1 }, { 2958465.5, 0 }, { 2958466, 0 },
             { -657434, 1 }, { -657435, 0 }, { kNaN, 0 }, { kInfinity, 0 }, { DBL_MAX, 0 } })
        EXPECT_EQ(CVUtils::IsValidDate(date), valid) << date;
}

TEST(Utils, AFullDateAlwaysShowsATime)
{
    CString const midnight = COleDateTime().FormatDefault("", GetLocaleTimePicture());
    CString const date = COleDateTime(2001, 2, 3, 0, 0, 0).FormatDefault(GetLocaleShortDatePicture(), "");
    EXPECT_EQ(CVUtils::FormatODTFull(COleDateTime(2001, 2, 3, 0, 0, 0)), date + " " + midnight);
    EXPECT_EQ(CVUtils::FormatODTFull(COleDateTime()), midnight);
}

TEST(Utils, LinesAreCutIntoFields)
{
    using Texts = std::vector<std::string>;
    using Case = std::tuple<char const*, Texts, Texts>;
    Case const cases[] = {
        { "", {}, {} },
        { " \t ", {}, {} },
        { "a, b,,c,", { "a,", "b,,c," }, { "a", "b", "", "c" } },
        { "1\t 2   3", { "1", "2", "3" }, { "1\t 2   3" } },
        { ",", { "," }, { "" } },
        { ",,", { ",," }, { "", "" } },
        { "\"a,b\"", { "\"a,b\"" }, { "\"a", "b\"" } },
        { "  x ,y\r\n", { "x", ",y" }, { "x", "y" } },
    };
    for (auto const& [line, bySpace, byComma] : cases) {
        CStringArray fields { "old" };
        CVUtils::SplitSpaceDelimitedString(line, fields);
        EXPECT_EQ(Utf8(fields), bySpace) << line;
        CVUtils::SplitCSVString(line, fields);
        EXPECT_EQ(Utf8(fields), byComma) << line;
    }
}

TEST(Utils, TextsAreTakenApartLineByLine)
{
    using Case = std::tuple<char const*, int, char const*, char const*, int>;
    Case const cases[] = { { "a\r\nb", 2, "a", "b", 2 }, { "a\nb\n", 1, "a", "b\n", 2 }, { "a\r\rb", 1, "a", "\rb", 3 },
        { "\n\r", 0, "", "\r", 2 }, { "b", -1, "b", "", 1 }, { "", -1, "", "", 0 } };
    for (auto const& [script, index, first, rest, lines] : cases) {
        CString text(script);
        CString line("old");
        EXPECT_EQ(CVUtils::GetNumScriptLines(text), lines) << script;
        EXPECT_EQ(CVUtils::GetNextLine(text, line), index) << script;
        EXPECT_EQ(line, first);
        EXPECT_EQ(text, rest);
    }
}

TEST(Utils, VariablesAreNamesThatStandAlone)
{
    using Case = std::tuple<char const*, char const*, bool>;
    for (auto const& [text, name, found] : { Case { "y = x + 1", "x", true }, { "y = exp(1)", "x", false },
             { "x(1)", "x", false }, { "max x1", "x", false }, { "aXx", "x", false }, { "xx*x", "x", true },
             { "(x)", "x", true }, { "x", "x", true }, { "x_1", "x", true }, { "\xC3\xA4x", "x", false },
             { "x", "", false }, { "", "x", false } })
        EXPECT_EQ(CVUtils::FindVariableName(text, name), found) << text;
    EXPECT_FALSE(CVUtils::IsVariableName("x", "x", 9));
}

TEST(Utils, AssignmentsAreNamesFollowedByAnEqualsSign)
{
    using Case = std::tuple<char const*, char const*, bool>;
    Case const cases[] = { { "y = 2", "y", true }, { "x=1\r\nY\t\n= 2", " y ", true }, { "yy = 2", "y", false },
        { "1y=2 y=3", "y", true }, { "z = y", "y", false }, { "y", "y", false }, { "y + 1 = 2", "y", false },
        { "(y = 2)", "y", false }, { "= 2", "", false } };
    for (auto const& [script, name, found] : cases)
        EXPECT_EQ(CVUtils::FindAssignmentLine(script, name), found) << script;
}

TEST(Utils, ScriptsAreReadFromResourcesUpToTheirEnd)
{
    SetStringResourceFunction([](UINT id, CString& text) {
        char const* const texts[] = { "first;", "Script segment code 2;", "Script segment code 3;", "Script End" };
        text = texts[id % 100 % 4];
        return id < 104;
    });
    CString script("head;");
    EXPECT_EQ(CVUtils::GetScript(100, script), 3);
    EXPECT_EQ(script, "head;first;Script segment code 2;Script segment code 3;");
    script.Empty();
    EXPECT_EQ(CVUtils::GetScript(103, script), 0);
    // No end, and no resource either.
    EXPECT_EQ(CVUtils::GetScript(104, script), 0);
    EXPECT_EQ(script, "");
    SetStringResourceFunction(nullptr);
}

TEST(Utils, ColoursTurnIntoHueSaturationLightnessAndBack)
{
    using Bytes = std::array<BYTE, 3>;
    for (auto const& [colour, expected] :
        { std::pair(Bytes { 255, 0, 0 }, Bytes { 0, 240, 120 }), { { 0, 255, 0 }, { 80, 240, 120 } },
            { { 0, 0, 255 }, { 160, 240, 120 } }, { { 255, 0, 255 }, { 200, 240, 120 } },
            { { 255, 255, 255 }, { 0, 0, 240 } }, { { 0, 0, 0 }, { 0, 0, 0 } } }) {
        Bytes hsl;
        Bytes back;
        CVUtils::RGBToHSL(colour[0], colour[1], colour[2], hsl[0], hsl[1], hsl[2]);
        CVUtils::HSLToRGB(hsl[0], hsl[1], hsl[2], back[0], back[1], back[2]);
        EXPECT_EQ(hsl, expected);
        EXPECT_EQ(back, colour);
    }
    double h = 0.0;
    double s = 0.0;
    double l = 0.0;
    double rgb[3];
    for (int i = 0; i < 1000; ++i) {
        double const colour[] = { i % 10 / 9.0, i / 10 % 10 / 9.0, i / 100 / 9.0 };
        CVUtils::RGBToHSL(colour[0], colour[1], colour[2], &h, &s, &l);
        ASSERT_TRUE(h >= 0.0 && h <= 1.0);
        CVUtils::HSLToRGB(h, s, l, &rgb[0], &rgb[1], &rgb[2]);
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(rgb[k], colour[k], 1e-12) << i;
    }
    // A tint of white that is the least that there is: one and the least component add up to 2.
    double const nearlyOne = std::nextafter(1.0, 0.0);
    CVUtils::RGBToHSL(1.0, nearlyOne, nearlyOne, &h, &s, &l);
    EXPECT_EQ(s, 1.0);
    // Hues outside the circle, and none at all.
    for (double const hue : { 1.0, -1.0, 7.0, kNaN, kInfinity }) {
        CVUtils::HSLToRGB(hue, 1.0, 0.5, &rgb[0], &rgb[1], &rgb[2]);
        EXPECT_EQ(rgb[0], 1.0) << hue;
        EXPECT_EQ(rgb[1], 0.0) << hue;
    }
}

TEST(Utils, SettingsLieBelowTheMakersKeyOrTheDesktops)
{
    std::string pattern = testing::TempDir() + "ombrel-settings-XXXXXX";
    std::filesystem::path const directory = mkdtemp(pattern.data());
    SetRegistryFile((directory / "registry").string());
    CString value("old");
    EXPECT_EQ(CVUtils::GetRegSettingString("Sub", value), 0);
    EXPECT_EQ(value, "old");
    EXPECT_EQ(CVUtils::SetRegSettingString("Sub", "new"), 1);
    EXPECT_TRUE(ReadRegistryValue(HKEY_CURRENT_USER, "Software\\Ombrel\\Tavolin\\Sub", "", value));
    EXPECT_EQ(value, "new");
    for (int const length : { 511, 512 }) {
        EXPECT_EQ(CVUtils::SetRegSettingString("Sub", CString(u'x', length)), 1);
        EXPECT_EQ(CVUtils::GetRegSettingString("Sub", value), length == 511 ? 1 : 0);
        EXPECT_EQ(value.GetLength(), 511);
    }
    EXPECT_FALSE(CVUtils::FullDragOn());
    for (char const* const text : { "0", "1", "" }) {
        WriteRegistryValue(HKEY_CURRENT_USER, "Control Panel\\Desktop", "DragFullWindows", text);
        EXPECT_EQ(CVUtils::FullDragOn(), *text == '1');
    }
    SetRegistryFile("");
    std::filesystem::remove_all(directory);
}

TEST(Utils, ErrorMessagesNameWhereTheDataAre)
{
    CString shown;
    SetMessageBoxFunction([&shown](CString const& text, CString const& title, UINT style) {
        shown.Format("%s|%d|%s", title, style, text);
    });
    CVUtils::InvalidDataError("Axes", "Labels", "Too many.");
    EXPECT_EQ(shown, "Invalid Data|48|Invalid Data on:\n\nPage: 'Axes', SubPage: 'Labels'\n\nToo many.");
    CVUtils::InvalidDataError("Axes", "", "Too many.");
    EXPECT_EQ(shown, "Invalid Data|48|Invalid Data on:\n\nPage: 'Axes''\n\nToo many.");
    SetMessageBoxFunction(nullptr);
}

} // namespace
} // namespace ombrel
