#include "ombrel/graph3d/geometry/Delaunay.h"
#include "ombrel/graph3d/geometry/DelaunayRepair.h"
#include "ombrel/graph3d/geometry/DelaunaySites.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <numbers>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace ombrel {
namespace {

using Triangles = std::vector<std::array<int, 3>>;

struct Points {
    std::vector<double> x;
    std::vector<double> y;
    void Add(double px, double py)
    {
        x.push_back(px);
        y.push_back(py);
    }
    std::size_t Size() const { return x.size(); }
};

std::vector<FloatPoint> Rounded(Points const& points)
{
    std::vector<FloatPoint> rounded;
    for (std::size_t i = 0; i < points.Size(); ++i)
        rounded.push_back({ static_cast<float>(points.x[i]), static_cast<float>(points.y[i]) });
    return rounded;
}

/// Says what is wrong with a triangulation; empty when nothing is. Triangles turn right and fit together, no corner
/// across from a side lies in a circle, and by Euler's formula they leave no hole and cover the hull, which turns right
/// once around.
std::string Faults(std::vector<FloatPoint> const& points, Triangles const& triangles)
{
    auto const at = [&](int i) -> FloatPoint const& { return points[static_cast<std::size_t>(i)]; };
    auto const keyOf = [](int from, int to) {
        return std::uint64_t { static_cast<std::uint32_t>(from) } << 32 | static_cast<std::uint32_t>(to);
    };
    std::unordered_map<std::uint64_t, int> apexes;
    std::unordered_set<int> used;
    for (std::array<int, 3> const& t : triangles) {
        if (!(Orientation(at(t[0]), at(t[1]), at(t[2])) < 0.0))
            return "a triangle does not turn right";
        for (std::size_t k = 0; k < 3; ++k) {
            used.insert(t[k]);
            if (!apexes.emplace(keyOf(t[k], t[(k + 1) % 3]), t[(k + 2) % 3]).second)
                return "two triangles on the same side of an edge";
        }
    }
    std::map<int, int> hull;
    std::size_t numEdges = 0;
    for (auto const& [edge, apex] : apexes) {
        auto const from = static_cast<int>(edge >> 32);
        auto const to = static_cast<int>(edge & 0xFFFFFFFFU);
        auto const other = apexes.find(keyOf(to, from));
        if (other == apexes.end()) {
            hull[from] = to;
            ++numEdges;
        } else if (from < to) {
            ++numEdges;
            if (InCircle(at(to), at(from), at(apex), at(other->second)) > 0.0)
                return "a point lies in a circle";
        }
    }
    std::set<std::pair<float, float>> distinct;
    for (FloatPoint const& p : points)
        distinct.insert({ p.x, p.y });
    if (used.size() != distinct.size())
        return "not all points have a triangle, or equal ones have";
    if (used.size() + triangles.size() != numEdges + 1)
        return "the formula of Euler is not fulfilled";
    auto const isUp = [&](int a, int b) { return std::pair(at(a).y, at(a).x) < std::pair(at(b).y, at(b).x); };
    std::size_t length = 0;
    int numTops = 0;
    int from = hull.begin()->first;
    for (int const start = from; length == 0 || (from != start && length <= hull.size()); ++length) {
        int const to = hull[from];
        int const next = hull[to];
        if (Orientation(at(from), at(to), at(next)) > 0.0)
            return "the hull is not convex";
        numTops += isUp(from, to) && !isUp(to, next) ? 1 : 0;
        from = to;
    }
    return length == hull.size() && numTops == 1 ? "" : "the hull does not go around once";
}

std::string Faults(Points const& points) { return Faults(Rounded(points), TriangulateDelaunay(points.x, points.y)); }

Points Grid(int cols, int rows, double ax, double ay, double bx, double by)
{
    Points grid;
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < cols; ++i)
            grid.Add(i * ax + j * bx, i * ay + j * by);
    }
    return grid;
}

template <typename Place> Points Sampled(int n, Place const& place)
{
    Points points;
    std::mt19937 random(7);
    auto const next = [&] { return static_cast<double>(random()) * 0x1p-32; };
    for (int k = 0; k < n; ++k) {
        auto const [x, y] = place(k, next);
        points.Add(x, y);
    }
    return points;
}

using Pair = std::pair<double, double>;
Pair OnCircle(double angle, double radius) { return { radius * std::cos(angle), radius * std::sin(angle) }; }

TEST(Delaunay, SetsOfEveryKindAreTriangulated)
{
    std::map<std::string, Points> const sets {
        { "random", Sampled(3000, [](int, auto const& next) { return Pair(next(), next()); }) },
        { "grid", Grid(70, 60, 1, 0, 0, 1) },
        { "grid of tenths", Grid(50, 70, 0.1, 0, 0, 0.1) },
        { "slanting grid", Grid(60, 60, 0.9553, 0.2955, -0.2955, 0.9553) },
        { "grid of whole numbers, turned", Grid(60, 60, 3, 4, -4, 3) },
        { "hexagons", Grid(60, 60, 1, 0, 0.5, std::numbers::sqrt3 / 2) },
        { "huge grid", Grid(40, 40, 1e36, 0, 0, 2e36) },
        { "circle", Sampled(3000, [](int k, auto const&) { return OnCircle(k * std::numbers::pi / 1500, 10); }) },
        { "rings",
            Sampled(3000, [](int k, auto const&) { return OnCircle(k % 100 * std::numbers::pi / 50, 1 + k / 100); }) },
        { "circle and its centre",
            Sampled(101, [](int k, auto const&) { return k == 0 ? Pair() : OnCircle(k * std::numbers::pi / 50, 1); }) },
        { "parabola",
            Sampled(4000,
                [](int, auto const& next) {
                    double const x = next();
                    return Pair(x, x * x);
                }) },
        { "rounded line",
            Sampled(1000,
                [](int, auto const& next) {
                    double const x = next();
                    return Pair(x, 2 * x + 1);
                }) },
        { "spiral",
            Sampled(3000,
                [](int, auto const& next) {
                    double const t = 50 * next();
                    return OnCircle(t, t);
                }) },
        { "three columns", Sampled(3000, [](int k, auto const& next) { return Pair(k % 3, next()); }) },
        { "three rows", Sampled(3000, [](int k, auto const& next) { return Pair(next(), k % 3); }) },
        { "clusters",
            Sampled(3000,
                [](int k, auto const& next) {
                    double const size = std::pow(10.0, -(k % 7));
                    return Pair(k % 50 + size * next(), k % 11 + size * next());
                }) },
        { "flat", Sampled(3000, [](int, auto const& next) { return Pair(next(), 1e-6 * next()); }) },
        { "far away",
            Sampled(2000, [](int, auto const& next) { return Pair(1e7 + 100 * next(), 1e7 + 100 * next()); }) },
        { "all magnitudes",
            Sampled(300,
                [](int, auto const& next) {
                    return Pair(std::pow(10.0, 70 * next() - 35), -std::pow(10.0, 70 * next() - 35));
                }) },
        { "the smallest numbers",
            Sampled(2000, [](int, auto const& next) { return Pair(1e-42 * next(), 1e-42 * next()); }) },
    };
    for (auto const& [name, points] : sets)
        EXPECT_EQ(Faults(points), "") << name;
    // Few points, many of them on lines, on circles and equal.
    std::mt19937 random(3);
    for (int k = 0; k < 2000; ++k) {
        Points points;
        int const size = 2 + static_cast<int>(random() % 6);
        for (std::size_t n = 3 + random() % 20; n != 0; --n)
            points.Add(static_cast<int>(random()) % size, static_cast<int>(random()) % size);
        Triangles const triangles = TriangulateDelaunay(points.x, points.y);
        if (!triangles.empty()) {
            ASSERT_EQ(Faults(Rounded(points), triangles), "") << k;
        }
    }
}

TEST(Delaunay, ASquareHasTwoTrianglesInTheOrderOfTheSweep)
{
    std::vector<double> const x { 0, 1, 0, 1, 5 };
    std::vector<double> const y { 0, 0, 1, 1, 9 };
    Triangles const triangles = TriangulateDelaunay(std::span(x).first(4), std::span(y).first(4));
    ASSERT_EQ(triangles.size(), 2U);
    EXPECT_EQ(Faults({ { 0, 0 }, { 1, 0 }, { 0, 1 }, { 1, 1 } }, triangles), "");
    // The circle through the point far above ends last.
    Triangles const more = TriangulateDelaunay(x, y);
    ASSERT_GE(more.size(), 3U);
    EXPECT_EQ(std::ranges::count(more.back(), 4), 1);
    EXPECT_EQ(std::ranges::count(more.front(), 4), 0);
    // Left site, right site, and that of the arc between them.
    EXPECT_EQ(TriangulateDelaunay(std::vector<double> { 0, -1, 1 }, std::vector<double> { 0, 1, 2 }),
        (Triangles { { 1, 2, 0 } }));
}

TEST(Delaunay, OnlyTheFirstOfEqualPointsHasTriangles)
{
    // The second and the last are the first one in single precision; zeros have no sign.
    std::vector<double> const x { 1, 1 + 1e-9, 4, 0, -0.0, 1 };
    std::vector<double> const y { 1, 1, 0, -0.0, 0, 1 - 1e-9 };
    Triangles const triangles = TriangulateDelaunay(x, y);
    ASSERT_EQ(triangles.size(), 1U);
    EXPECT_EQ((std::set<int>(triangles[0].begin(), triangles[0].end())), (std::set<int> { 0, 2, 3 }));
}

TEST(Delaunay, PointsOnALineAndTooFewHaveNoTriangles)
{
    for (auto const& [dx, dy] : std::vector<Pair> { { 1, 0 }, { 0, 1 }, { 3, 5 }, { -1, 1 } }) {
        for (int const n : { 0, 1, 2, 3, 50 })
            EXPECT_TRUE(TriangulateDelaunay(Grid(n, 1, dx, dy, 0, 0).x, Grid(n, 1, dx, dy, 0, 0).y).empty());
        Points points = Grid(50, 1, dx, dy, 0, 0);
        points.Add(dy, -dx);
        EXPECT_EQ(TriangulateDelaunay(points.x, points.y).size(), 49U);
        EXPECT_EQ(Faults(points), "");
    }
    EXPECT_TRUE(TriangulateDelaunay(std::vector<double>(9, 2.5), std::vector<double>(9, 2.5)).empty());
}

TEST(Delaunay, PointsThatAreNotFiniteAreLeftOut)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<double> x { 0, 1, 0, 0.1, kInfinity, 0.3, 1e39 };
    std::vector<double> y { 0, 0, 1, std::nan(""), 0.2, -kInfinity, 0 };
    EXPECT_EQ(TriangulateDelaunay(x, y), (Triangles { { 2, 1, 0 } }));
    EXPECT_THROW(TriangulateDelaunay(x, std::span(y).first(2)), std::invalid_argument);
}

/// Has only so many bytes.
class LittleMemory : public std::pmr::memory_resource {
public:
    explicit LittleMemory(std::size_t bytes)
        : m_left(bytes)
    {
    }

private:
    void* do_allocate(std::size_t bytes, std::size_t alignment) override
    {
        if (bytes > m_left)
            throw std::bad_alloc();
        m_left -= bytes;
        return std::pmr::new_delete_resource()->allocate(bytes, alignment);
    }
    void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override
    {
        m_left += bytes;
        std::pmr::new_delete_resource()->deallocate(memory, bytes, alignment);
    }
    bool do_is_equal(std::pmr::memory_resource const& other) const noexcept override { return this == &other; }
    std::size_t m_left;
};

TEST(Delaunay, RunningOutOfMemoryIsToldAndThrown)
{
    Points const points = Grid(20, 20, 1, 0.1, 0, 1);
    bool isInSweep = false;
    for (std::size_t bytes = 1000;; bytes += 100) {
        LittleMemory memory(bytes);
        testing::internal::CaptureStderr();
        bool isDone = true;
        try {
            (void)TriangulateDelaunay(points.x, points.y, &memory);
        } catch (std::bad_alloc const&) {
            isDone = false;
        }
        std::string const told = testing::internal::GetCapturedStderr();
        if (isDone) {
            EXPECT_EQ(told, "");
            break;
        }
        int site = -1;
        int inUse = -1;
        ASSERT_EQ(
            std::sscanf(told.c_str(), "Insufficient memory processing site %d (%d bytes in use)", &site, &inUse), 2)
            << told;
        EXPECT_EQ(std::ranges::count(told, '\n'), 1);
        EXPECT_LE(static_cast<std::size_t>(inUse), bytes);
        isInSweep = isInSweep || site > 0;
        ASSERT_LT(bytes, 1'000'000U);
    }
    EXPECT_TRUE(isInSweep);
}

TEST(Delaunay, DiagonalsThatAreWrongAreExchanged)
{
    Points const points = Sampled(500, [](int, auto const& next) { return Pair(next(), next()); });
    std::vector<FloatPoint> const rounded = Rounded(points);
    Triangles const right = TriangulateDelaunay(points.x, points.y);
    Triangles wrong = right;
    // Exchange some diagonals of convex quadrilaterals a d b c, each in triangles of its own.
    std::set<std::size_t> changed;
    auto const at = [&](int i) -> FloatPoint const& { return rounded[static_cast<std::size_t>(i)]; };
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        for (std::size_t u = t + 1; u < wrong.size() && !changed.contains(t); ++u) {
            auto const [a, b, c] = wrong[t];
            auto& other = wrong[u];
            auto const side = std::ranges::find(other, b);
            auto const k = static_cast<std::size_t>(side - other.begin());
            if (changed.contains(u) || k == 3 || other[(k + 1) % 3] != a)
                continue;
            int const d = other[(k + 2) % 3];
            if (!(Orientation(at(a), at(d), at(c)) < 0.0 && Orientation(at(d), at(b), at(c)) < 0.0))
                continue;
            wrong[t] = { a, d, c };
            other = { d, b, c };
            changed.insert({ t, u });
        }
    }
    EXPECT_EQ(Faults(rounded, wrong), "a point lies in a circle");
    RepairDelaunay(rounded, wrong);
    EXPECT_EQ(Faults(rounded, wrong), "");
}

TEST(ExactPredicates, SignsAreRightWhereDoublesCannotTell)
{
    float const one = 1.0F;
    float const next = std::nextafter(one, 2.0F);
    // On a line through points of different magnitudes, and one step beside it.
    EXPECT_EQ(Orientation({ 0, 0 }, { 1e-30F, 1e-30F }, { 1e30F, 1e30F }), 0.0);
    EXPECT_GT(Orientation({ 0, 0 }, { 1e-30F, 1e-30F }, { 1e30F, std::nextafter(1e30F, 2e30F) }), 0.0);
    EXPECT_GT(Orientation({ 1e30F, 1e30F }, { 1e-30F, std::nextafter(1e-30F, 1.0F) }, { -1e30F, -1e30F }), 0.0);
    // Whole numbers on a circle of radius 65, and one step into it or out of it.
    FloatPoint const a { 63, 16 };
    FloatPoint const b { -33, 56 };
    FloatPoint const c { -25, -60 };
    EXPECT_EQ(InCircle(a, b, c, { 39, -52 }), 0.0);
    EXPECT_GT(InCircle(a, b, c, { std::nextafter(39.0F, 0.0F), -52 }), 0.0);
    EXPECT_LT(InCircle(a, b, c, { 39, std::nextafter(-52.0F, -99.0F) }), 0.0);
    EXPECT_GT(InCircle({ 1e30F, 0 }, { 0, 1e30F }, { -1e30F, 0 }, { 1e-30F, std::nextafter(-1e30F, 0.0F) }), 0.0);
    EXPECT_LT(InCircle({ 1e30F, 0 }, { 0, 1e30F }, { -1e30F, 0 }, { 1e-30F, -1e30F }), 0.0);
    // Parabolas meet above the middle of sites of the same height.
    EXPECT_EQ(ArcOrder({ 0, 0 }, { 2, 0 }, { one, 5 }), 0.0);
    EXPECT_GT(ArcOrder({ 0, 0 }, { 2, 0 }, { next, 5 }), 0.0);
    EXPECT_LT(ArcOrder({ 0, 0 }, { 2, 0 }, { std::nextafter(one, 0.0F), 5 }), 0.0);
    EXPECT_LT(ArcOrder({ 0, -1e-20F }, { 2, -1e20F }, { one, 1e-20F }), 0.0);
}

} // namespace
} // namespace ombrel
