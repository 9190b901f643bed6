#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/foundation/GArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace ombrel {
namespace {

CTableData RandomWalk(int points)
{
    CTableData table(2, points);
    std::mt19937 random(7);
    std::normal_distribution<double> step;
    double y = 0.0;
    for (int i = 0; i < points; ++i) {
        table.SetAt(0, i, i * 0.5);
        table.SetAt(1, i, y += step(random));
    }
    return table;
}

TEST(PointSummary, GivesTheExtremesOfAnyStretchAsAScanDoes)
{
    CTableData const table = RandomWalk(1000);
    PointSummary summary;
    summary.Update(table);
    EXPECT_TRUE(summary.XAscends());
    for (std::size_t const first : { 0U, 1U, 63U, 64U, 65U, 500U }) {
        for (std::size_t const last : { 501U, 511U, 512U, 513U, 999U, 1000U }) {
            Extremes found {};
            ASSERT_TRUE(summary.YExtremes(table.GetRow(1), first, last, found));
            auto const [low, high] = std::minmax_element(table.GetRow(1) + first, table.GetRow(1) + last);
            EXPECT_EQ(found.min, *low) << first << " … " << last;
            EXPECT_EQ(found.max, *high) << first << " … " << last;
        }
    }
}

TEST(PointSummary, LeavesPointsOutOfBothRangesWhenEitherCoordinateIsMissing)
{
    for (double const missing : { kGap, std::nan(""), std::numeric_limits<double>::infinity() }) {
        for (int const at : { 3, 150, 190 }) {
            CTableData table = RandomWalk(200);
            table.SetAt(0, at, 1e6);
            table.SetAt(1, at, missing);
            PointSummary summary;
            summary.Update(table);
            EXPECT_EQ(summary.XRange().max, 199 * 0.5);
            EXPECT_LT(summary.YRange().max, 1e5);
            Extremes found {};
            EXPECT_FALSE(summary.YExtremes(table.GetRow(1), 0, 200, found));
        }
    }
}

TEST(PointSummary, KnowsWhenXDoesNotAscend)
{
    for (int const at : { 1, 2, 3, 4, 62, 63, 64, 65, 127, 128, 199 }) {
        for (double const x : { 0.5 * (at - 1) - 0.25, std::nan("") }) {
            CTableData table = RandomWalk(200);
            table.SetAt(0, at, x);
            PointSummary summary;
            summary.Update(table);
            EXPECT_FALSE(summary.XAscends()) << at << " " << x;
        }
    }
}

TEST(PointSummary, FollowsTheTable)
{
    CTableData table = RandomWalk(100);
    PointSummary summary;
    summary.Update(table);
    table.SetAt(1, 50, 1e9);
    summary.Update(table);
    EXPECT_EQ(summary.YRange().max, 1e9);
    std::fill_n(table.GetRow(1), 100, -5.0);
    summary.Update(table);
    EXPECT_EQ(summary.YRange().max, -5.0);
    table.Clear();
    summary.Update(table);
    EXPECT_TRUE(summary.XRange().IsEmpty());
}

} // namespace
} // namespace ombrel
