#include "ombrel/foundation/GArray.h"

#include "tests/model/ArchiveBytes.h"
#include "tests/platform/framework/Refused.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using test::Bytes;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(GArray, WhatIsNoFiniteNumberCountsAsAGap)
{
    for (double const v : { kGap, -kGap, kInfinity, -kInfinity, kNaN })
        EXPECT_TRUE(IsGap(v)) << v;
    for (double const v : { 0.0, -1.0, std::nextafter(kGap, 0.0), -std::nextafter(kGap, 0.0), 5e-324 })
        EXPECT_FALSE(IsGap(v)) << v;
}

TEST(GArray, MarkersInsideAreGapsAndMarkersAtTheEndAreSpareRoom)
{
    using Case = std::tuple<CDoubleArray, int, int, int>;
    for (auto const& [values, validSize, hasGaps, validSizeReverse] :
        { Case { {}, 0, 0, 0 }, { { 1, kGap, 3 }, 1, 1, 3 }, { { 1, 3, kGap, kGap }, 2, 0, 2 },
            { { kGap, kGap }, 0, 0, 0 }, { { kGap, 2 }, 0, 1, 2 }, { { 1, kNaN, kInfinity }, 3, 0, 3 } }) {
        SCOPED_TRACE(values.GetSize());
        EXPECT_EQ(values.GetValidSize(), validSize);
        EXPECT_EQ(values.HasGaps(), hasGaps);
        EXPECT_EQ(values.GetValidSizeReverse(), validSizeReverse);
    }
}

TEST(GArray, StatisticsOfAKnownSample)
{
    CDoubleArray const values { 2, 4, 4, 4, 5, 5, 7, 9 };
    double const deviation = std::sqrt(32.0 / 7.0);
    EXPECT_DOUBLE_EQ(values.Mean(), 5.0);
    EXPECT_DOUBLE_EQ(values.Variance(), 32.0 / 7.0);
    EXPECT_DOUBLE_EQ(values.StandardDeviation(), deviation);
    EXPECT_DOUBLE_EQ(values.Skewness(), 42.0 / (7.0 * std::pow(deviation, 3)));
    EXPECT_DOUBLE_EQ(values.Kurtosis(), 356.0 / (7.0 * std::pow(deviation, 4)));
    EXPECT_EQ(values.Min(), 2.0);
    EXPECT_EQ(values.Max(), 9.0);
    for (CDoubleArray const& few : { CDoubleArray(), CDoubleArray { 3 } }) {
        EXPECT_EQ(few.Variance(), 0.0);
        EXPECT_EQ(few.Skewness(), 0.0);
        EXPECT_EQ(few.Kurtosis(), 0.0);
    }
    CDoubleArray const spare { kGap, kGap };
    EXPECT_EQ(spare.Min(), kGap);
    EXPECT_EQ(spare.Max(), -kGap);
    EXPECT_EQ((CDoubleArray { 1, kNaN, 3 }).Max(), 3.0);
}

TEST(GArray, TheMedianLeavesTheArraySorted)
{
    CDoubleArray values { 3, 1, 2, 4 };
    EXPECT_EQ(values.Median(), 2.5);
    EXPECT_EQ(values, (CDoubleArray { 1, 2, 3, 4 }));
    CDoubleArray odd { 9, 7, 8 };
    EXPECT_EQ(odd.Median(), 8.0);
    EXPECT_EQ(CDoubleArray().Median(), 0.0);
    CDoubleArray withNaN { kNaN, 2, kNaN, 1 };
    withNaN.Sort();
    EXPECT_EQ(withNaN[1], 2.0);
    EXPECT_TRUE(std::isnan(withNaN[3]));
}

TEST(GArray, UpperIndexIsExactInSinglePrecision)
{
    CDoubleArray const values { 1, 2, 3 };
    int exact = 7;
    EXPECT_EQ(CDoubleArray { 1 }.GetUpperIndex(1, exact), -1);
    EXPECT_EQ(exact, 0);
    using Case = std::tuple<double, int, int>;
    for (auto const& [x, index, isExact] : { Case { 2.5, 2, 0 }, { 2, 1, 1 }, { 2.00000001, 1, 1 }, { 1, 0, 1 },
             { 3, 2, 1 }, { 5, -1, 0 }, { kNaN, -1, 0 } }) {
        EXPECT_EQ(values.GetUpperIndex(x, exact), index) << x;
        EXPECT_EQ(exact, isExact) << x;
    }
}

TEST(GArray, DoublesAreStoredAsACountAndRawValues)
{
    CDateArray dates;
    dates.Add(1.0);
    dates.Add(kGap);
    EXPECT_EQ(dates.GetElType(), CGArray::etDate);
    Bytes const bytes = Bytes().Short(2).Double(1.0, kGap);
    EXPECT_EQ(test::Stored(dates), bytes);
    CDoubleArray loaded { 5, 6, 7 };
    ASSERT_TRUE(test::Load(loaded, bytes));
    EXPECT_EQ(loaded, (CDoubleArray { 1.0, kGap }));
    EXPECT_FALSE(test::Load(loaded, Bytes().Short(3).Double(1.0, 2.0)));
}

void Fill(CGCharArray& strings, std::initializer_list<char const*> texts)
{
    for (char const* const text : texts)
        strings.Add(text ? CGCharArray::NewString(text) : nullptr);
}

TEST(GArray, OwnedStringsSkipBlankOnesWhenLookingForGaps)
{
    auto const expect = [](std::initializer_list<char const*> texts, int validSize, int hasGaps) {
        CGCharArray strings;
        Fill(strings, texts);
        SCOPED_TRACE(texts.size());
        EXPECT_EQ(strings.GetValidSize(), validSize);
        EXPECT_EQ(strings.HasGaps(), hasGaps);
    };
    CGStringArray values;
    for (char const* const text : { "a", "", "b", "", "" })
        values.Add(text);
    EXPECT_EQ(values.GetValidSize(), 3) << "empty ones at the end are spare room";
    EXPECT_EQ(values.HasGaps(), 0);
    expect({}, 0, 0);
    expect({ "a", "b", nullptr }, 2, 0);
    expect({ "a", nullptr, "b" }, 1, 1);
    expect({ "a", " \t", "b" }, 3, 1);
    expect({ "a", "", "  " }, 3, 0);
}

TEST(GArray, OwnedStringsSurviveEveryChangeOfTheArray)
{
    // Leaks and double frees show under the address sanitizer.
    CGCharArray strings;
    Fill(strings, { "one", nullptr, "three" });
    strings.SetAt(1, CGCharArray::NewString("two"));
    strings.SetAtGrow(5, CGCharArray::NewString("six"));
    strings.InsertAt(1, CGCharArray::NewString("twice"), 2);
    CGCharArray copy(strings);
    copy.Append(strings);
    strings.RemoveAt(0, 2);
    EXPECT_EQ(CString(strings.GetAt(0)), "twice");
    for (int const i : { -1, 6 }) {
        EXPECT_TRUE(test::Refused([&] { strings.SetAt(i, nullptr); })) << i;
        EXPECT_TRUE(test::Refused([&] { strings.RemoveAt(1, i); })) << i;
    }
    EXPECT_TRUE(test::Refused([&] { strings.InsertAt(-1, nullptr); }));
    EXPECT_EQ(CString(strings.GetAt(5)), "six");
    strings.SetSize(1);
    EXPECT_EQ(copy.GetSize(), 16);
    EXPECT_EQ(CString(copy.GetAt(15)), "six");
    EXPECT_EQ(copy.GetAt(14), nullptr);
    char16_t* const kept = strings.GetAt(0);
    strings.RemoveAll(0);
    EXPECT_EQ(CString(kept), "twice");
    delete[] kept;
}

TEST(GArray, OwnedStringsPackIntoABufferAndBack)
{
    CGCharArray strings;
    Fill(strings, { "a", nullptr, "\xC3\xA4\xC3\xB6" });
    ASSERT_EQ(strings.GetDataSize(), 8);
    char buffer[8];
    int length = 0;
    strings.WriteData(buffer, length);
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(length)), std::string("a\0\0\xC3\xA4\xC3\xB6\0", 8));
    CGCharArray read;
    read.ReadData(buffer, length);
    ASSERT_EQ(read.GetSize(), 3);
    EXPECT_EQ(CString(read.GetAt(1)), "");
    EXPECT_EQ(CString(read.GetAt(2)), "\xC3\xA4\xC3\xB6");
    // A text without its zero byte ends with the buffer; there is always one text.
    read.ReadData("xyz", 2);
    read.ReadData("", 0);
    ASSERT_EQ(read.GetSize(), 5);
    EXPECT_EQ(CString(read.GetAt(3)), "xy");
    EXPECT_EQ(CString(read.GetAt(4)), "");
}

} // namespace
} // namespace ombrel
