#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/Figures.h"
#include "ombrel/platform/gdi/geometry/DashPattern.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"
#include "ombrel/platform/gdi/geometry/LinePixels.h"
#include "ombrel/platform/gdi/geometry/PathSimplify.h"
#include "ombrel/platform/gdi/raster/StrokeCorner.h"

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Coordinates, DivideAndRoundTowardsTheSameSideOfZero)
{
    using Case = std::tuple<long long, long long, long long>;
    for (auto const& [a, quotient, remainder] :
        { Case { 7, 2, 1 }, { 6, 2, 0 }, { 0, 0, 0 }, { -1, -1, 2 }, { -3, -1, 0 }, { -4, -2, 2 } }) {
        EXPECT_EQ(FloorDivide(a, 3), quotient) << a;
        EXPECT_EQ(FloorRemainder(a, 3), remainder) << a;
    }
    for (auto const& [value, whole] : { std::pair(2.0, 2), std::pair(2.1, 3), std::pair(-2.0, -2), std::pair(-2.9, -2),
             std::pair(1e300, kCoordinateLimit), std::pair(-1e300, -kCoordinateLimit),
             std::pair(std::numeric_limits<double>::quiet_NaN(), -kCoordinateLimit) })
        EXPECT_EQ(CeilToInt(value), whole) << value;
    EXPECT_EQ(MovePoint({ kCoordinateLimit, 5 }, { 1, -7 }), CPoint(kCoordinateLimit, -2));
    EXPECT_EQ(MoveRect({ 1, 2, 3, 4 }, { 10, -20 }), CRect(11, -18, 13, -16));
}

TEST(Figures, StartsThatDoNotAscendOrLieBeyondGiveNoPoints)
{
    std::array const points { CPoint(1, 0), CPoint(2, 0), CPoint(3, 0), CPoint(4, 0) };
    std::size_t const starts[] = { 0, 3, 1, 9 };
    Figures const figures { points, starts };
    ASSERT_EQ(figures.Count(), 4u);
    EXPECT_THAT(figures.PointsOf(0), ElementsAre(points[0], points[1], points[2]));
    EXPECT_THAT(figures.PointsOf(1), IsEmpty());
    EXPECT_THAT(figures.PointsOf(2), ElementsAre(points[1], points[2], points[3]));
    EXPECT_THAT(figures.PointsOf(3), IsEmpty());
    EXPECT_EQ((Figures { points, {} }).PointsOf(0).size(), 4u);
}

TEST(LinePixels, ClippingLeavesThePixelsInsideTheBox)
{
    CRect const box(3, 4, 9, 8);
    for (Halves const halves : { Halves::Smaller, Halves::Larger }) {
        for (int code = 0; code < 13 * 13 * 4; ++code) {
            // Steep and flat lines of all directions, and level and upright ones, from four corners round the box.
            CPoint const from(code / 169 % 2 ? 0 : 12, code / 338 ? 1 : 11);
            CPoint const to(code % 13, code / 13 % 13);
            LinePixels const line(from, to, halves);
            if (line.n == 0)
                continue;
            long long first = 0;
            long long last = line.n + 1;
            line.Clip(box, first, last);
            for (long long i = 0; i <= line.n; ++i)
                ASSERT_EQ(i >= first && i < last, box.PtInRect(line.At(i)))
                    << from.x << ',' << from.y << " to " << to.x << ',' << to.y << " pixel " << i;
        }
    }
}

TEST(DashPattern, RepeatsItsLengthsFromTheStartOfTheLine)
{
    using Case = std::tuple<std::vector<double>, double, std::string>;
    Case const cases[] = {
        { { 3, 1 }, 1.0, "###.###.###." },
        { { 1, 1 }, 2.0, "##..##..##.." },
        // An odd number of lengths is taken twice.
        { { 2, 1, 3 }, 1.0, "##.###..#...##." },
        { { 2 }, 1.0, "##..##.." },
        // Pixels lie at whole distances.
        { { 2.5, 1.5 }, 1.0, "###.###." },
        { { 0, 2 }, 1.0, "........" },
        { { 2, 0 }, 1.0, "########" },
        // No patterns.
        { {}, 1.0, "########" },
        { { 3, -1 }, 1.0, "########" },
        { { 3, std::numeric_limits<double>::infinity() }, 1.0, "########" },
        { { 0.2, 0.2 }, 1.0, "########" },
    };
    for (auto const& [lengths, scale, line] : cases) {
        DashPattern const pattern(lengths, scale);
        for (std::size_t i = 0; i < line.size(); ++i)
            EXPECT_EQ(pattern.IsOn(static_cast<double>(i)), line[i] == '#') << line << ' ' << i;
        // Counted in runs from any pixel on, the line is the same.
        for (std::size_t start = 0; start < line.size() && !pattern.IsSolid(); ++start) {
            DashCounter counter(pattern, static_cast<double>(start));
            std::string counted;
            while (counted.size() < line.size() - start) {
                long long const length = counter.Length();
                ASSERT_GE(length, 1);
                counted.append(static_cast<std::size_t>(length), counter.IsOn() ? '#' : '.');
                counter.Advance(length);
            }
            EXPECT_EQ(counted.substr(0, line.size() - start), line.substr(start)) << "from " << start;
        }
    }
}

TEST(EllipsePixels, OutlinesRunCounterClockwiseFromTheLeft)
{
    EXPECT_THAT(EllipseOutline({ 10, 20, 13, 23 }),
        ElementsAre(CPoint(10, 21), CPoint(11, 22), CPoint(12, 21), CPoint(11, 20)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 1, 3 }), ElementsAre(CPoint(0, 0), CPoint(0, 1), CPoint(0, 2)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 3, 2 }),
        ElementsAre(CPoint(0, 0), CPoint(0, 1), CPoint(1, 1), CPoint(2, 1), CPoint(2, 0), CPoint(1, 0)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 1, 1 }), IsEmpty());
    EXPECT_THAT(EllipseOutline({ 0, 0, 0, 5 }), IsEmpty());
}

TEST(EllipsePixels, ArcsBeginPastTheirStartAndLeaveOutTheirLastPixel)
{
    CRect const box(0, 0, 5, 5);
    // The twelve pixels of the outline: three on every side.
    using Case = std::tuple<CPoint, CPoint, std::vector<CPoint>>;
    Case const cases[] = {
        // From the upper left corner down to the lower right one.
        { { 0, 0 }, { 5, 5 }, { { 0, 1 }, { 0, 2 }, { 0, 3 }, { 1, 4 }, { 2, 4 } } },
        { { 5, 5 }, { 0, 0 }, { { 4, 3 }, { 4, 2 }, { 4, 1 }, { 3, 0 }, { 2, 0 } } },
        { { 0, 5 }, { 5, 0 }, { { 1, 4 }, { 2, 4 }, { 3, 4 }, { 4, 3 }, { 4, 2 } } },
        { { 5, 0 }, { 0, 5 }, { { 3, 0 }, { 2, 0 }, { 1, 0 }, { 0, 1 }, { 0, 2 } } },
    };
    for (auto const& [start, end, pixels] : cases)
        EXPECT_EQ(ArcPixels(box, start, end), pixels) << start.x << ',' << start.y;
    // Ends exactly on a pixel: above the middle it belongs to what comes after, below to what comes before.
    EXPECT_THAT(ArcPixels({ 0, 0, 4, 4 }, { -1, 1 }, { 5, 3 }),
        ElementsAre(CPoint(0, 1), CPoint(0, 2), CPoint(1, 3), CPoint(2, 3)));
    EXPECT_THAT(ArcPixels({ 0, 0, 4, 4 }, { 5, 3 }, { -1, 1 }), ElementsAre(CPoint(3, 1), CPoint(2, 0)));
    EXPECT_THAT(ArcPixels({ 0, 0, 4, 4 }, { 5, 1 }, { -1, 3 }),
        ElementsAre(CPoint(3, 1), CPoint(2, 0), CPoint(1, 0), CPoint(0, 1)));
    EXPECT_EQ(ArcPixels(box, { 9, 2 }, { 9, 2 }).size(), 11u);
    EXPECT_THAT(ArcPixels({ 3, 3, 3, 9 }, { 0, 0 }, { 9, 9 }), IsEmpty());
}

TEST(HatchPatterns, DiagonalsAloneHaveSmoothNeighbours)
{
    // The first rows of a forward diagonal, a backward one and a cross of lines.
    unsigned const expected[][8] { { 233, 64, 0, 0, 0, 0, 0, 64 }, { 64, 0, 0, 0, 0, 0, 64, 233 },
        { 255, 255, 255, 255, 255, 255, 255, 255 } };
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(ForegroundWeight(2 + i / 8, i % 8, 0), expected[i / 8][i % 8]) << i;
    EXPECT_EQ(ForegroundWeight(2, 3, 3), 233u);
    EXPECT_EQ(ForegroundWeight(18, 1, 0), 0u);
}

TEST(HatchPatterns, HaveTheirDensityDirectionAndSymmetry)
{
    constexpr int kSet[] = { 8, 8, 8, 8, 15, 16, 2, 4, 8, 16, 24, 30, 32, 40, 48, 56, 60, 62, 16, 16, 32, 32, 24, 24,
        16, 16, 32, 32, 32, 32, 8, 8, 8, 8, 8, 24, 16, 14, 12, 22, 19, 32, 6, 7, 6, 13, 48, 38, 28, 32, 32, 14, 25 };
    auto const set = [](int style, int x, int y) {
        return (HatchPattern(style)[static_cast<std::size_t>(y & 7)] >> (7 - (x & 7)) & 1) != 0;
    };
    for (int style = 0; style < kHatchStyles; ++style) {
        int count = 0;
        for (int i = 0; i < 64; ++i)
            count += set(style, i % 8, i / 8);
        EXPECT_EQ(count, kSet[style]) << style;
    }
    for (int i = 0; i < 64; ++i) {
        int const x = i % 8;
        int const y = i / 8;
        for (int const downward : { 2, 18, 20, 22 }) {
            EXPECT_EQ(set(downward, x, y), set(downward, x + 1, y + 1)) << downward;
            EXPECT_EQ(set(downward, x, y), set(downward + 1, 7 - x, y)) << downward;
        }
        for (int const upright : { 1, 24, 26, 28 })
            EXPECT_EQ(set(upright, x, y), set(upright, x, 0)) << upright;
        for (int const level : { 0, 25, 27, 29 })
            EXPECT_EQ(set(level, x, y), set(level, 0, y)) << level;
        EXPECT_EQ(set(30, x, y), set(31, 7 - x, y));
        EXPECT_EQ(set(32, x, y), set(32, x + 4, y + 4));
        EXPECT_EQ(set(33, x, y), set(33, x + 4, y + 4));
        EXPECT_EQ(set(49, x, y), set(49, x + 4, y + 4));
        EXPECT_NE(set(50, x, y), set(50, x, y + 4));
        EXPECT_NE(set(12, x, y), set(12, x, y + 1));
    }
}

TEST(StrokeCorner, MeetsWhereTheOuterEdgesDoUnlessThatIsFarAway)
{
    using Kind = StrokeCorner::Kind;
    struct {
        MaskPoint before, after;
        Kind kind;
        MaskPoint outerBefore, outerAfter, tip;
    } const cases[] = {
        { { 1, 0 }, { 0, 1 }, Kind::Mitre, { 5, 5 }, { 7, 7 }, { 7, 5 } },
        { { 1, 0 }, { 0, -1 }, Kind::Mitre, { 5, 9 }, { 7, 7 }, { 7, 9 } },
        { { 0, 1 }, { -1, 0 }, Kind::Mitre, { 7, 7 }, { 5, 9 }, { 7, 9 } },
        { { 0.6, 0.8 }, { 0.6, -0.8 }, Kind::Mitre, { 3.4, 8.2 }, { 6.6, 8.2 }, { 5, 7 + 2 / 0.6 } },
        { { 1, 0 }, { -1, 0 }, Kind::Bevel, { 5, 9 }, { 5, 5 }, {} },
        { { 1, 0 }, { -0.995, 0.0998749 }, Kind::Bevel, { 5, 5 }, { 5.1997498, 8.99 }, {} },
        { { 0.8, -0.6 }, { 0.8, -0.6 }, Kind::None, {}, {}, {} },
    };
    for (auto const& c : cases) {
        StrokeCorner const found = MakeCorner({ 5, 7 }, c.before, c.after, 2.0);
        EXPECT_EQ(found.kind, c.kind);
        for (auto const& [is, should] :
            { std::pair(found.outerBefore, c.outerBefore), { found.outerAfter, c.outerAfter }, { found.tip, c.tip } }) {
            EXPECT_NEAR(is.u, should.u, 1e-9) << c.before.u << ' ' << c.after.v;
            EXPECT_NEAR(is.v, should.v, 1e-9) << c.before.u << ' ' << c.after.v;
        }
    }
    // To a mitre up to a right angle; beyond it as far as the pixel needs.
    EXPECT_NEAR(SmoothReach({ 1, 0 }, { 0, 1 }, 3.0), 3.0, 1e-9);
    EXPECT_NEAR(SmoothReach({ 0.8, 0.6 }, { 0.8, 0.6 }, 3.0), 0.625, 1e-9);
    EXPECT_NEAR(SmoothReach({ 0, -1 }, { 0.6, 0.8 }, 3.0), 0.5, 1e-9);
}

TEST(PathSimplify, KeepsWhatShapesTheLine)
{
    using Points = std::vector<CPoint>;
    using Case = std::tuple<char const*, Points, Points>;
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
    for (auto const& [name, given, kept] : cases) {
        EXPECT_EQ(SimplifyPath(given, 0.0), kept) << name;
        EXPECT_EQ(SimplifyPath(given, 0.5), kept) << name;
    }
    EXPECT_EQ(SimplifyPath(Points { { 0, 0 }, { 50, 0 }, { 100, 1 } }, 0.5), (Points { { 0, 0 }, { 100, 1 } }));
    EXPECT_EQ(SimplifyPath(Points { { 0, 0 }, { 50, 2 }, { 100, 1 } }, 0.5).size(), 3U);
}

TEST(PathSimplify, DroppedPointsLieWithinTheToleranceAndAreMost)
{
    // Along x, so that each point belongs to the kept segment above or below it.
    std::vector<CPoint> given;
    for (int x = 0; x < 4000; ++x)
        given.push_back({ x, static_cast<int>(std::lround(1000.0 * std::sin(x * 0.002))) + x % 1000 / 997 });
    for (double const tolerance : { 0.0, 0.5, 3.0 }) {
        std::vector<CPoint> const kept = SimplifyPath(given, tolerance);
        ASSERT_EQ(kept.front(), given.front());
        ASSERT_EQ(kept.back(), given.back());
        EXPECT_LT(kept.size(), tolerance > 0.0 ? 800U : 4000U);
        for (std::size_t k = 1; k < kept.size(); ++k) {
            CPoint const by = kept[k] - kept[k - 1];
            for (int x = kept[k - 1].x; x <= kept[k].x; ++x) {
                CPoint const p = given[static_cast<std::size_t>(x)] - kept[k - 1];
                EXPECT_LE(std::abs(p.y * by.x - p.x * by.y) / std::hypot(by.x, by.y), tolerance + 1e-6) << x;
            }
        }
    }
}

} // namespace
} // namespace ombrel
