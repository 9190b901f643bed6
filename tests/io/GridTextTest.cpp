#include "ombrel/io/reading/GridText.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstring>
#include <random>

namespace ombrel::io {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<double> Numbers(std::string const& line, Separator separator, std::size_t most = 100)
{
    std::vector<double> values(most);
    NumbersRead const read = ReadNumbers(line, separator, values);
    values.resize(read.items);
    EXPECT_EQ(read.gaps, static_cast<std::size_t>(std::count(values.begin(), values.end(), kGap))) << line;
    return values;
}

TEST(GridText, ItemsAreThoseOfTheSplittingFunctions)
{
    std::string const lines[] = { "", " ", "1", " 1\t 2  3 ", "1,2,3", "1,,3,", ",", ",,", " 1 , 2\t,\t3 , ", "1 2,3 4",
        "1\v2", "\v 1 \f 2\v", "\xC2\xA0 1,2,\xC2\xA0", "1 \xC2\xA0 2\xC2\xA0", "+1,-2,+-3,--4",
        "1e,1e+,1-2,0x10,1.2.3", ".5,5.,.,-.,-", ".0,-0,00,+0", "nan,inf,-inf,NA", "1e999,-1e999,1e-999",
        "12345678901234567890,0.1234567890123456789012345,9007199254740993", "1.5e308 1e22 1e23 4.9e-324",
        std::string("1\0002 3", 5) };
    for (std::string const& line : lines) {
        for (Separator const separator : { Separator::Comma, Separator::WhiteSpace }) {
            CStringArray items;
            if (separator == Separator::Comma)
                CVUtils::SplitCSVString(line, items);
            else
                CVUtils::SplitSpaceDelimitedString(line, items);
            std::vector<double> expected;
            for (CString const& item : items) {
                double value = kGap;
                CVUtils::StringToFloat(item, value);
                expected.push_back(std::isfinite(value) ? value : kGap);
            }
            std::vector<double> found = Numbers(line, separator);
            // Zeros that StringToFloat does not take for numbers are numbers here.
            for (std::size_t i = 0; i < std::min(found.size(), expected.size()); ++i) {
                if (found[i] == 0.0 && expected[i] == kGap)
                    expected[i] = 0.0;
            }
            EXPECT_THAT(found, ElementsAreArray(expected)) << line;
        }
    }
    EXPECT_THAT(Numbers("1 2 3 4", Separator::WhiteSpace, 3), ElementsAre(1, 2, 3)) << "no more than asked for";
    EXPECT_THAT(Numbers(".0,1e-999", Separator::Comma), ElementsAre(0, 0));
}

TEST(GridText, NumbersAreRoundedAsTheStandardLibraryDoes)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        double const value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        int const decimals = static_cast<int>(random() % 18);
        double const small = static_cast<double>(static_cast<std::int64_t>(random()) >> (random() % 60)) / 1e6;
        char text[2][64] = {};
        *std::to_chars(text[0], text[0] + 40, value).ptr = '\0';
        *std::to_chars(text[1], text[1] + 60, small, std::chars_format::fixed, decimals).ptr = '\0';
        for (char const* const t : text) {
            double expected = 0.0;
            std::from_chars(t, t + std::strlen(t), expected);
            ASSERT_THAT(Numbers(t, Separator::WhiteSpace), ElementsAre(expected)) << t;
        }
    }
}

TEST(GridText, LinesEndAsThoseOfTextFilesDo)
{
    TextLines lines("\xEF\xBB\xBF"
                    "ab\r\n\n\rc\rd\nlast\r");
    std::vector<std::string> found;
    std::vector<std::size_t> offsets;
    for (std::string_view line; lines.Next(line);) {
        found.emplace_back(line);
        offsets.push_back(lines.GetOffset());
    }
    EXPECT_THAT(found, ElementsAre("ab", "", "\rc\rd", "last\r"));
    EXPECT_THAT(offsets, ElementsAre(3, 7, 8, 13));
    EXPECT_EQ(lines.GetLine(), 5u);
}

} // namespace
} // namespace ombrel::io
