#include "ombrel/platform/gdi/geometry/PathSimplify.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

using Points = std::vector<CPoint>;

double DistanceToSegment(CPoint p, CPoint a, CPoint b)
{
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const squared = dx * dx + dy * dy;
    double const along = squared > 0.0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squared, 0.0, 1.0) : 0.0;
    return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

/// The farthest that a point lies from the segment that took its place; infinite when the kept points are not some of
/// the given ones, in order and with both ends.
double Deviation(Points const& given, Points const& kept)
{
    double farthest = 0.0;
    std::size_t from = 0;
    for (std::size_t k = 1; k < kept.size(); ++k) {
        std::size_t to = from + 1;
        while (to < given.size() && !(given[to] == kept[k]))
            ++to;
        // The last segment ends with the line, even when it passes its end before.
        if (k + 1 == kept.size())
            to = given.size() - 1;
        if (to >= given.size() || !(given[to] == kept[k]))
            return INFINITY;
        double here = 0.0;
        for (std::size_t i = from; i <= to; ++i)
            here = std::max(here, DistanceToSegment(given[i], kept[k - 1], kept[k]));
        farthest = std::max(farthest, here);
        from = to;
    }
    return !kept.empty() && kept.front() == given.front() && from + 1 == given.size() ? farthest : INFINITY;
}

TEST(PathSimplify, KeepsWhatShapesTheLine)
{
    struct Case {
        char const* name;
        Points given;
        Points kept;
    };
    Case const cases[] = {
        { "nothing", {}, {} },
        { "one point", { { 3, 4 } }, { { 3, 4 } } },
        { "a dot", { { 3, 4 }, { 3, 4 }, { 3, 4 } }, { { 3, 4 }, { 3, 4 } } },
        { "points between", { { 0, 0 }, { 1, 2 }, { 2, 4 }, { 10, 20 } }, { { 0, 0 }, { 10, 20 } } },
        { "a corner", { { 0, 0 }, { 5, 0 }, { 5, 0 }, { 5, 5 } }, { { 0, 0 }, { 5, 0 }, { 5, 5 } } },
        { "the extremes of a column", { { 0, 0 }, { 0, -7 }, { 0, 3 }, { 0, 9 }, { 0, 4 } },
            { { 0, 0 }, { 0, -7 }, { 0, 9 }, { 0, 4 } } },
        { "back over the start", { { 0, 0 }, { 3, 0 }, { -5, 0 } }, { { 0, 0 }, { 3, 0 }, { -5, 0 } } },
        { "there and back", { { 0, 0 }, { 9, 9 }, { 0, 0 } }, { { 0, 0 }, { 9, 9 }, { 0, 0 } } },
    };
    for (auto const& c : cases) {
        EXPECT_EQ(SimplifyPath(c.given, 0.0), c.kept) << c.name;
        EXPECT_EQ(SimplifyPath(c.given, 0.5), c.kept) << c.name;
    }
    EXPECT_EQ(SimplifyPath(Points { { 0, 0 }, { 50, 0 }, { 100, 1 } }, 0.5), (Points { { 0, 0 }, { 100, 1 } }));
    EXPECT_EQ(SimplifyPath(Points { { 0, 0 }, { 50, 2 }, { 100, 1 } }, 0.5).size(), 3U);
}

TEST(PathSimplify, DroppedPointsLieWithinTheTolerance)
{
    unsigned state = 1;
    auto const random = [&state](int range) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 8) % static_cast<unsigned>(2 * range + 1)) - range;
    };
    for (int const roughness : { 1, 2, 30 }) {
        for (int const advance : { 0, 1, 7 }) {
            Points given;
            CPoint at(0, 0);
            for (int i = 0; i < 3000; ++i) {
                given.push_back(at);
                at = at + CPoint(advance, random(roughness));
            }
            for (double const tolerance : { 0.0, 0.5, 3.0 }) {
                Points const kept = SimplifyPath(given, tolerance);
                EXPECT_LE(Deviation(given, kept), tolerance + 1e-6)
                    << "steps " << advance << ", " << roughness << " tolerance " << tolerance;
                EXPECT_LE(kept.size(), given.size());
            }
        }
    }
}

TEST(PathSimplify, SmoothCurvesLoseMostPoints)
{
    Points given;
    for (int x = 0; x < 4000; ++x)
        given.push_back({ x, static_cast<int>(std::lround(1000.0 * std::sin(x * 0.002))) });
    Points const kept = SimplifyPath(given, 0.5);
    EXPECT_LE(Deviation(given, kept), 0.5 + 1e-6);
    EXPECT_LT(kept.size(), given.size() / 5);
}

} // namespace
} // namespace ombrel
