#include "ombrel/layout/EndLabels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(EndLabels, LieAsNearToTheEndsAsTheyCan)
{
    // Far apart, as wanted; three that overlap round their middle; clear of the window's edges.
    EXPECT_THAT(SpreadTops({ 10, 50, 90 }, 10, 0, 200), ElementsAre(10, 50, 90));
    EXPECT_THAT(SpreadTops({ 50, 52, 54, 120 }, 10, 0, 200), ElementsAre(42, 52, 62, 120));
    EXPECT_THAT(SpreadTops({ -5, 196 }, 10, 0, 200), ElementsAre(0, 190));
    // A pool that is pushed into the next one joins it.
    EXPECT_THAT(SpreadTops({ 20, 21, 34 }, 10, 0, 200), ElementsAre(15, 25, 35));
    EXPECT_THAT(SpreadTops({ 20, 20, 32 }, 12, 0, 200), ElementsAre(12, 24, 36));
    EXPECT_THAT(SpreadTops({ 0, 0, 0 }, 10, 0, 29), IsEmpty());
}

} // namespace
} // namespace ombrel
