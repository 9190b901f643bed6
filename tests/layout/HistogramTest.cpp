#include "ombrel/layout/Histogram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace ombrel {
namespace {

TEST(HistogramBins, HoldEveryValueOnceBetweenTidyEdges)
{
    std::mt19937_64 random(5);
    auto const uniform = [&random] { return static_cast<double>(random() >> 11) / 9007199254740992.0; };
    for (int i = 0; i < 300; ++i) {
        double const scale = std::pow(10.0, uniform() * 20.0 - 10.0);
        double const shift = (uniform() - 0.5) * scale * 1000.0;
        std::vector<double> values(1 + random() % 400);
        for (double& v : values)
            v = shift + scale * (i % 3 == 0 ? uniform() : std::pow(uniform(), 8.0));
        for (int const bins : { 0, 1, 7, 100 }) {
            std::vector<double> const edges = HistogramEdges(values, bins);
            std::vector<std::size_t> const counts = CountInBins(values, edges);
            SCOPED_TRACE(testing::Message() << "round " << i << ", bins " << bins);
            ASSERT_TRUE(std::is_sorted(edges.begin(), edges.end(), std::less_equal<>()));
            ASSERT_EQ(counts.size(), edges.size() - 1);
            ASSERT_TRUE(bins == 0 || counts.size() == static_cast<std::size_t>(bins));
            ASSERT_LE(counts.size(), 1000u);
            for (std::size_t k = 0; k < counts.size(); ++k) {
                bool const isLast = k + 1 == counts.size();
                ASSERT_EQ(counts[k], std::ranges::count_if(values, [&](double v) {
                    return v >= edges[k] && (v < edges[k + 1] || (isLast && v == edges[k + 1]));
                }));
            }
        }
    }
}

TEST(HistogramBins, FollowTheirRule)
{
    struct {
        std::vector<double> values;
        int bins;
        std::vector<double> edges;
    } const cases[] {
        // The quartiles, 2.5 and 7.5, give 2 * 5 / 2, the number 99 / 4: nearest to 5.
        { { 1, 2.5, 2.5, 2.5, 7.5, 7.5, 7.5, 100 }, 0,
            { 0, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 95, 100 } },
        // Whole numbers lie in the middle of bins of width 1, and have bins of no less.
        { { 1, 1, 1, 2, 2, 3 }, 0, { 0.5, 1.5, 2.5, 3.5 } },
        // 14 / (1 + log2 of 6) is 3.9, and 12 / (1 + log2 of 6) is 3.3: nearest to 5.
        { { 1, 3, 5, 7, 9, 15 }, 0, { 0, 5, 10, 15, 20 } },
        { { 1, 3, 5, 7, 9, 13 }, 0, { 0, 5, 10, 15 } },
        // Without a distance between the quartiles the number of values decides: 9 / (1 + 3).
        { { 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 9.5 }, 0, { 0, 2, 4, 6, 8, 10 } },
        { { 5, 5, 5 }, 0, { 4.5, 5.5 } },
        { { 5, 5 }, 2, { 4.5, 5, 5.5 } },
        { { 1, 2, 9 }, 4, { 1, 3, 5, 7, 9 } },
        { {}, 0, {} },
    };
    for (auto const& c : cases) {
        std::vector<double> const edges = HistogramEdges(c.values, c.bins);
        EXPECT_THAT(edges, testing::Pointwise(testing::DoubleNear(1e-12), c.edges));
    }
}

TEST(Histograms, HaveOutlinesThatEncloseAllCounts)
{
    std::vector<double> const edges { 0, 2, 4, 6, 8, 10 };
    Outline const outline = OutlineOf(std::vector<std::size_t> { 0, 3, 0, 1, 0 }, edges);
    EXPECT_EQ(outline.xs, (std::vector<double> { 2, 2, 4, 4, 6, 6, 8, 8 }));
    EXPECT_EQ(outline.ys, (std::vector<double> { 0, 3, 3, 0, 0, 1, 1, 0 }));
    EXPECT_TRUE(OutlineOf(std::vector<std::size_t> { 0, 0, 0, 0, 0 }, edges).xs.empty());
}

} // namespace
} // namespace ombrel
