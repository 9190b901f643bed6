#include "ombrel/graph3d/3DLineData.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

TEST(LineDataTest, points_that_miss_a_coordinate_have_no_part_in_ranges)
{
    C3DLineData data;
    double min = 7.0;
    double max = 8.0;
    data.GetYRange(min, max);
    EXPECT_EQ(min, 7.0);
    EXPECT_EQ(max, 8.0);
    data.Initialise(4);
    data[0] = { 1.0, -2.0, 3.0 };
    data[1] = { kGap, -50.0, 50.0 };
    data[2] = { -4.0, 5.0, std::numeric_limits<double>::quiet_NaN() };
    data[3] = { -1.0, 2.0, 9.0 };
    data.GetXRange(min, max);
    EXPECT_EQ(min, -1.0);
    EXPECT_EQ(max, 1.0);
    data.GetYRange(min, max);
    EXPECT_EQ(min, -2.0);
    EXPECT_EQ(max, 2.0);
    data.GetZRange(min, max);
    EXPECT_EQ(min, 3.0);
    EXPECT_EQ(max, 9.0);
    data.Initialise(-3);
    EXPECT_EQ(data.GetNumPoints(), 0);
}

TEST(LineDataTest, stores_its_points_and_believes_no_count)
{
    C3DLineData data;
    data.Initialise(2);
    data[1] = { 1.5, 2.5, 3.5 };
    Bytes const bytes = Bytes().Int(1, 2).Int(1).Double(0, 0, 0).Int(1).Double(1.5, 2.5, 3.5);
    EXPECT_EQ(Stored(data), bytes);
    C3DLineData loaded;
    loaded.Initialise(5);
    ASSERT_TRUE(Load(loaded, bytes));
    EXPECT_EQ(Stored(loaded), bytes);
    ASSERT_TRUE(Load(loaded, Bytes().Int(1, -7)));
    EXPECT_EQ(loaded.GetNumPoints(), 0);
    EXPECT_FALSE(Load(loaded, Bytes().Int(1, 2'000'000'000).Int(1).Double(0, 0, 0)));
    EXPECT_EQ(loaded.GetNumPoints(), 0);
}

} // namespace
} // namespace ombrel
