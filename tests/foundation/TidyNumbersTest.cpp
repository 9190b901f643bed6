#include "ombrel/foundation/TidyNumbers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ombrel {
namespace {

TEST(TidyNumbers, HaveOneFormThatFitsThemAll)
{
    struct {
        std::vector<double> values;
        std::vector<std::string> texts;
    } const cases[] {
        { {}, {} },
        { { 0, -0.5, 2.25, 100 }, { "0", "-0.5", "2.25", "100" } },
        // Years have no commas.
        { { 1990, 2005 }, { "1990", "2005" } },
        { { 5000, -10'000, 12.5419, 123'456 }, { "5,000", "-10,000", "12.54", "123,456" } },
        { { 9999.96, 999'999.4 }, { "10,000", "999,999" } },
        { { 0, 1e7, -2.5e7, 20'900 }, { "0", "10⁷", "-2.5×10⁷", "2.09×10⁴" } },
        { { 9.99996e5, 1e6 }, { "10⁶", "10⁶" } },
        { { 0, 3.5e-5, -1e-12 }, { "0", "3.5×10⁻⁵", "-10⁻¹²" } },
        { { 0.001, 1e-7 }, { "0.001", "0.0000001" } },
        { { 1.7976931348623157e308 }, { "1.798×10³⁰⁸" } },
        { { 0, 0 }, { "0", "0" } },
    };
    for (auto const& c : cases)
        EXPECT_EQ(TidyNumbers(c.values, 4), c.texts);
    EXPECT_EQ(
        TidyNumbers(std::vector { 1e6, 1000000.5 }, 8), (std::vector<std::string> { "1,000,000", "1,000,000.5" }));
    EXPECT_EQ(TidyNumbers(std::vector { 1.5e15 }, 8), std::vector<std::string> { "1.5×10¹⁵" });
    EXPECT_EQ(TidyNumbers(std::vector { INFINITY, 1e7 }, 4)[1], "10⁷");
}

} // namespace
} // namespace ombrel
