#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/parts/HeightColours.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace ombrel {
namespace {

using testing::Pointwise;

TEST(Levels, LieAtTidyValuesInsideOfTheRange)
{
    auto const are = [](std::vector<double> const& expected) { return Pointwise(testing::DoubleEq(), expected); };
    // About ten, and none at an end of the range.
    EXPECT_THAT(LevelsOf({}, { 0, 10 }), are({ 1, 2, 3, 4, 5, 6, 7, 8, 9 }));
    EXPECT_THAT(LevelsOf({}, { 305, 995 }), are({ 400, 500, 600, 700, 800, 900 }));
    // So many bands: the tidiest step that makes just as many, else equal parts.
    LevelChoice bands;
    bands.bands = 4;
    EXPECT_THAT(LevelsOf(bands, { 0, 8 }), are({ 2, 4, 6 }));
    EXPECT_THAT(LevelsOf(bands, { -0.9993, 0.9989 }), are({ -0.5, 0, 0.5 }));
    bands.bands = 2;
    EXPECT_THAT(LevelsOf(bands, { -3, 3 }), are({ 0 }));
    EXPECT_THAT(LevelsOf(bands, { 1000, 1001 }), are({ 1000.5 }));
    for (int count = 1; count <= 1000; count += 37) {
        bands.bands = count;
        std::vector<double> const levels = LevelsOf(bands, { -3.7e-5, 8.1e-4 });
        EXPECT_EQ(levels.size(), static_cast<std::size_t>(std::max(count - 1, 1)));
        EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
    }
    // A series from anywhere.
    LevelChoice steps;
    steps.reference = 1e6 + 1;
    steps.spacing = 2.5;
    EXPECT_THAT(LevelsOf(steps, { 0, 8 }), are({ 1, 3.5, 6 }));
    steps.spacing = 0.001;
    EXPECT_THROW(LevelsOf(steps, { 0, 8 }), ChartError);
    // Given ones stay; where nothing lies inside, the range's end is a level.
    EXPECT_THAT(LevelsOf(LevelChoice { {}, { -5, 100 }, {}, 0 }, { 0, 8 }), are({ -5, 100 }));
    EXPECT_THAT(LevelsOf({}, { 5, 5 }), are({ 5 }));
    // The colours' range counts when there is one.
    CDoubleArray const coloured = LevelArray({}, { {}, AxisRange { 0, 1 } }, { 0, 1000 });
    EXPECT_EQ(coloured[coloured.GetSize() - 1], 0.9);
}

} // namespace
} // namespace ombrel
