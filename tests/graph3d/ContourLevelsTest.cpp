#include "ombrel/graph3d/ContourLevels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(ContourLevels, EvenOnesCutTheRangeIntoEqualParts)
{
    EXPECT_THAT(MakeEvenLevels(0, 60, 6).values, ElementsAre(10, 20, 30, 40, 50));
    EXPECT_THAT(MakeEvenLevels(-1, 3, 2).values, ElementsAre(1));
    for (int const parts : { 1, 0, -7 })
        EXPECT_THAT(MakeEvenLevels(0, 60, parts).values, IsEmpty());
    EXPECT_THAT(MakeEvenLevels(5, 5, 6).values, IsEmpty());
    // The width of this range is more than the largest double.
    EXPECT_THAT(MakeEvenLevels(-1.6e308, 0.8e308, 3).values,
        ElementsAre(testing::DoubleEq(-0.8e308), testing::DoubleNear(0, 1e293)));
}

TEST(ContourLevels, SpacedOnesStartWithTheFirstOfTheSeriesInTheRange)
{
    EXPECT_THAT(MakeSpacedLevels(0, 60, 5, 10).values, ElementsAre(5, 15, 25, 35, 45, 55));
    EXPECT_THAT(MakeSpacedLevels(0, 60, -100, 10).values, ElementsAre(0, 10, 20, 30, 40, 50));
    EXPECT_THAT(MakeSpacedLevels(0, 60, 1005, 10).values, ElementsAre(5, 15, 25, 35, 45, 55));
    EXPECT_THAT(MakeSpacedLevels(3, 4, 0, 10).values, IsEmpty());
    EXPECT_EQ(MakeSpacedLevels(0.3, 1.0, 0, 0.1).values.size(), 7U);
}

TEST(ContourLevels, WhatCannotBeDoneIsRefusedWithWords)
{
    ContourLevels const refused[] = {
        MakeSpacedLevels(0, 60, 5, 0),
        MakeSpacedLevels(0, 60, 5, -1),
        MakeSpacedLevels(0, 60, 5, kNaN),
        MakeSpacedLevels(0, 60, kNaN, 1),
        MakeSpacedLevels(0, 60, 5, 1e-300),
        MakeSpacedLevels(0, 1, -1e300, 0.1),
        // A step of the last place: the levels would not differ.
        MakeSpacedLevels(1e16, 1e16 + 8, 0, 0.25),
        MakeEvenLevels(0, 1, std::numeric_limits<int>::max()),
        MakeArbitraryLevels(std::vector { 1.0, kNaN }),
        MakeArbitraryLevels(std::vector<double>(20000)),
    };
    for (ContourLevels const& levels : refused) {
        EXPECT_THAT(levels.values, IsEmpty());
        EXPECT_FALSE(levels.error.IsEmpty());
    }
    EXPECT_TRUE(MakeSpacedLevels(0, 60, 5, 10).error.IsEmpty());
    EXPECT_EQ(MakeEvenLevels(0, 1, kMostContourLevels + 1).values.size(), 10000U);
    EXPECT_THAT(MakeEvenLevels(0, 1, std::numeric_limits<int>::min()).values, IsEmpty());
}

TEST(ContourLevels, ThoseOnTheEndsOfTheRangeAreDropped)
{
    std::vector<double> levels { 0, 1e-12, 0.1, 0.3, 0.1 + 0.2 };
    DropEndLevels(levels, 0.1, 0.3);
    EXPECT_THAT(levels, ElementsAre(0, 1e-12));
}

TEST(ContourBands, AValueOnALevelLiesBelowIt)
{
    ContourBands const bands(std::vector { 10.0, 20.0, 30.0 });
    double const values[] = { -1e308, 10, std::nextafter(10.0, 11.0), 15, 20, 29, 30, 31, 1e308, kNaN };
    std::vector<int> found;
    for (double const v : values)
        found.push_back(bands.Find(v));
    EXPECT_THAT(found, ElementsAre(0, 0, 1, 1, 1, 2, 2, 3, 3, 3));
    EXPECT_EQ(ContourBands().Find(5), 0);
}

TEST(ContourBands, TheFirstPairOfUnorderedLevelsThatHoldsAValueDecides)
{
    ContourBands const bands(std::vector { 10.0, 30.0, 20.0, 40.0 });
    double const values[] = { 5, 10, 25, 30, 35, 40, 41 };
    std::vector<int> found;
    for (double const v : values)
        found.push_back(bands.Find(v));
    EXPECT_THAT(found, ElementsAre(0, 0, 1, 1, 3, 3, 4));
    // Above the first level, not above the last one, and between no pair: as if above all.
    EXPECT_EQ(ContourBands(std::vector { 30.0, 10.0, 40.0, 20.0 }).Find(5), 0);
    EXPECT_EQ(ContourBands(std::vector { 10.0, 5.0, 20.0 }).Find(12), 2);
    EXPECT_EQ(ContourBands(std::vector { 10.0, 5.0 }).Find(12), 2);
}

} // namespace
} // namespace ombrel
