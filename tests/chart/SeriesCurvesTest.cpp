#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/chart/data/SharedColumns.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/layout/FillLook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel {
namespace {

TEST(ErrorBars, ReachEquallyFarInValuesAlsoOnALogarithmicAxis)
{
    struct {
        double y, error;
        bool logarithmic;
        ErrorBar bar;
    } const cases[] {
        { 5, 2, false, { 5, 4, 3, 7 } },
        { -5, 0, false, { -5, 0, -5, -5 } },
        // From 1 to 100: the middle lies where the decades have theirs.
        { 50.5, 49.5, true, { 10, 2, 1, 100 } },
        // Down to zero, and below it: three decades below the point.
        { 50, 50, true, { 0.05 * std::sqrt(2000), std::log10(2000), 50, 100 } },
        { 10, 90, true, { 1, 4, 10, 100 } },
    };
    for (auto const& c : cases) {
        auto const near = [](double expected) { return testing::DoubleNear(expected, 1e-9); };
        EXPECT_THAT(MakeErrorBar(c.y, c.error, c.logarithmic),
            testing::FieldsAre(near(c.bar.middle), near(c.bar.height), near(c.bar.low), near(c.bar.high)));
    }
}

TEST(LonePoints, HaveGapsOnBothSides)
{
    constexpr double G = kGap;
    struct {
        std::vector<double> ys;
        std::vector<std::size_t> lone, ofPairs;
    } const cases[] {
        { { 1 }, { 0 }, { 0 } },
        { { 1, 2 }, {}, {} },
        { { 1, G, 2, G, 3, 4, G, 5 }, { 0, 2, 7 }, { 0, 2, 7 } },
        { { G, 1, 2, G }, {}, { 1, 2 } },
        { { 1, 2, 3 }, {}, { 2 } },
    };
    for (auto const& c : cases) {
        std::vector<double> xs(c.ys.size(), 1.0);
        EXPECT_EQ(LonePoints(xs, c.ys, false), c.lone);
        EXPECT_EQ(LonePoints(xs, c.ys, true), c.ofPairs);
        // A missing x is a gap as well.
        EXPECT_EQ(LonePoints(c.ys, xs, false), c.lone);
    }
}

TEST(Curves, AreSortedByXWithTheirGapsAndRowsOfEqualXInTheirOrder)
{
    std::vector<double> xs { 3, kGap, 1, 3, 2 };
    std::vector<double> ys { 30, 99, 10, 31, kGap };
    SortByX(xs, ys);
    EXPECT_EQ(xs, (std::vector<double> { 1, 2, 3, 3, kGap }));
    EXPECT_EQ(ys, (std::vector<double> { 10, kGap, 30, 31, kGap }));
    // What ascends stays as it is, its gaps in their places.
    xs = { 1, kGap, 2 };
    ys = { 10, 99, 20 };
    SortByX(xs, ys);
    EXPECT_EQ(xs, (std::vector<double> { 1, kGap, 2 }));
    EXPECT_EQ(ys, (std::vector<double> { 10, 99, 20 }));
}

TEST(Gaps, AreWhatIsMissingAndOnALogarithmicAxisWhatIsNotAboveZero)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    std::size_t notPositive = 0;
    std::vector<double> values { 1, nan, 0, -2 };
    MarkGaps(values, false, notPositive);
    EXPECT_EQ(values, (std::vector<double> { 1, kGap, 0, -2 }));
    EXPECT_EQ(notPositive, 0u);
    values = { 1, nan, 0, -2 };
    MarkGaps(values, true, notPositive);
    EXPECT_EQ(values, (std::vector<double> { 1, kGap, kGap, kGap }));
    EXPECT_EQ(notPositive, 2u);
}

TEST(Bars, LoseOutlinesAndGapsThatAreTooWideForThem)
{
    struct {
        double place, factor;
        int sideBySide;
        double outline;
        bool hasFlatBars;
        BarLook look;
    } const cases[] {
        { 20, 0.7, 1, 1, false, { 0.7, false } },
        // Five pixels are narrow; a gap of two or more stays, and the outline's pixel is part of the bar.
        { 10, 0.5, 1, 1, false, { 0.4, true } },
        { 8, 0.75, 2, 1, false, { 0.625, true } },
        { 4, 0.625, 1, 1, false, { 1.0, true } },
        { 40, 0.5, 4, 1, false, { 0.475, true } },
        { 0.5, 0.7, 3, 1, false, { 1.0, true } },
        // Outlines of a page are six pixels wide.
        { 60, 0.5, 1, 6, false, { 0.4, true } },
        { 80, 0.5, 1, 6, false, { 0.5, false } },
        // Wide ones among which there are flat ones: a gap takes the outline's place where bars touch.
        { 20, 0.7, 1, 1, true, { 0.65, true } },
        { 20, 1.0, 1, 1, true, { 0.9, true } },
    };
    for (auto const& c : cases) {
        BarLook const look = ChooseBarLook(c.place, c.factor, c.sideBySide, c.outline, c.hasFlatBars);
        EXPECT_NEAR(look.widthFactor, c.look.widthFactor, 1e-12) << c.place << " " << c.factor;
        EXPECT_EQ(look.ownOutlines, c.look.ownOutlines) << c.place << " " << c.factor;
    }
}

TEST(SharedColumns, TellHowCloseTheirPlacesAre)
{
    SharedColumns shared;
    shared.xs = { 7 };
    EXPECT_EQ(shared.Spacing(), 1.0);
    shared.xs = { -1, 3, 5, 8 };
    EXPECT_EQ(shared.Spacing(), 2.0);
    EXPECT_TRUE(shared.HasWholeNumbers());
    shared.xs = { -1, 3.5, 4, 8 };
    EXPECT_EQ(shared.Spacing(), 0.5);
    EXPECT_FALSE(shared.HasWholeNumbers());
}

} // namespace
} // namespace ombrel
