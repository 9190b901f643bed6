#include "ombrel/platform/framework/Number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>

namespace ombrel {

TEST(Number, FormatsAsPrintfDoes)
{
    for (double const value : { 123456.0, 999999.5, 9.9999995e-5, 1e-5, 5e-324, 2.5, 1.7976931348623157e308 }) {
        for (int const precision : { 0, 1, 6, 17, 40, 100 }) {
            char expected[512];
            std::snprintf(expected, sizeof expected, "%.*g", precision, value);
            EXPECT_EQ(FormatNumber(value, 'g', precision), expected) << precision;
        }
    }
    EXPECT_EQ(FormatNumber(std::nan(""), 'f', 3), "nan");
    EXPECT_EQ(FormatNumber(-std::nan(""), 'g', 3), "nan");
    EXPECT_EQ(FormatNumber(1.0, 'f', 2'000'000'000).size(), 102u);
    EXPECT_EQ(FormatNumber(1.5, 'f', -7), "2");
}

TEST(Number, ScansWhatScanfWouldAndTellsHowFar)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    using Case = std::tuple<char const*, std::optional<double>, std::size_t>;
    Case const cases[] = {
        { "12", 12.0, 2 },
        { " \t\r\n+1.5e2xyz", 150.0, 10 },
        { "-.5", -0.5, 3 },
        { "5.", 5.0, 2 },
        { "1e+", 1.0, 1 },
        { "0x10", 0.0, 1 },
        { "", std::nullopt, 0 },
        { "-", std::nullopt, 0 },
        { "+-1", std::nullopt, 0 },
        { ".", std::nullopt, 0 },
        { "e5", std::nullopt, 0 },
        { "inf", kInfinity, 3 },
        { "1e999", kInfinity, 5 },
        { "-1e999", -kInfinity, 6 },
        { "1e-999", 0.0, 6 },
        { "0.0000001e-400", 0.0, 14 },
        { "1e99999999999999999999999", kInfinity, 25 },
        { "0e99999999999999999999999", 0.0, 25 },
    };
    for (auto const& [text, value, expected] : cases) {
        std::size_t consumed = 99;
        EXPECT_EQ(ScanNumber(text, &consumed), value) << text;
        EXPECT_EQ(consumed, expected) << text;
    }
    EXPECT_TRUE(std::isnan(ScanNumber("nan").value()));
    EXPECT_TRUE(std::signbit(ScanNumber("-0").value()));
    EXPECT_EQ(ScanNumber(std::string(400, '9')), kInfinity);
    EXPECT_EQ(ScanNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(ScanNumber(std::string(400, '1') + "e-390"), ScanNumber("1111111111.1111111111"));
}

TEST(Number, ParsesWholeTextsOnly)
{
    EXPECT_EQ(ParseNumber("+2.5e-3"), 0.0025);
    for (char const* text : { "", " 1", "1 ", "1x", "1,5", "+", "1e" })
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
}

TEST(Number, IntegersAreLimitedToTheirRange)
{
    using Case = std::tuple<char const*, std::optional<int>, std::size_t>;
    Case const cases[] = {
        { " 42,", 42, 3 },
        { "-7", -7, 2 },
        { "+7.9", 7, 2 },
        { "2147483647", 2147483647, 10 },
        { "2147483648", 2147483647, 10 },
        { "-2147483648", std::numeric_limits<int>::min(), 11 },
        { "-99999999999999999999999999", std::numeric_limits<int>::min(), 27 },
        { "- 1", std::nullopt, 0 },
        { "", std::nullopt, 0 },
    };
    for (auto const& [text, value, expected] : cases) {
        std::size_t consumed = 99;
        EXPECT_EQ(ScanInteger(text, &consumed), value) << text;
        EXPECT_EQ(consumed, expected) << text;
    }
}

} // namespace ombrel
