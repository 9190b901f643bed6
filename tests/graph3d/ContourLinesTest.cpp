#include "ombrel/graph3d/ContourLines.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <set>

namespace ombrel {

void PrintTo(ContourSegment const& s, std::ostream* out)
{
    *out << "(" << s.i << ", " << s.j << "): " << s.from[0] << ", " << s.from[1] << " - " << s.to[0] << ", " << s.to[1];
}

bool operator==(ContourSegment const& a, ContourSegment const& b)
{
    return a.from == b.from && a.to == b.to && a.i == b.i && a.j == b.j;
}

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
using Point = std::array<double, 2>;

TEST(ContourCell, EachCaseCutsItsCornersOff)
{
    // From (10, 20) to (14, 28); the level halves the way between 0 and 2 and is a quarter of the way from 1 to 5.
    Point const bottom { 12, 20 };
    Point const right { 14, 24 };
    Point const top { 12, 28 };
    Point const left { 10, 24 };
    struct Expected {
        int contourCase;
        std::vector<Point> points;
    };
    Expected const all[] = {
        { 0, {} },
        { 1, { left, bottom } },
        { 2, { left, top } },
        { 3, { bottom, top } },
        { 4, { top, right } },
        { 5, { left, bottom, top, right } },
        { 6, { left, right } },
        { 7, { bottom, right } },
        { 8, { bottom, right } },
        { 9, { left, right } },
        { 10, { left, top, bottom, right } },
        { 11, { top, right } },
        { 12, { bottom, top } },
        { 13, { left, top } },
        { 14, { left, bottom } },
        { 15, {} },
    };
    for (Expected const& expected : all) {
        int const c = expected.contourCase;
        auto const z = [c](int bit) { return c & bit ? 2.0 : 0.0; };
        ContourCell const cell { 10, 20, 14, 28, { z(1), z(8), z(4), z(2) } };
        EXPECT_EQ(GetContourCase(cell, 1.0), c);
        std::array<ContourSegment, 2> found {};
        int const count = GetContourSegments(c, cell, 1.0, found);
        std::vector<Point> points;
        for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k) {
            points.push_back(found[k].from);
            points.push_back(found[k].to);
        }
        EXPECT_EQ(points, expected.points) << "case " << c;
    }
}

TEST(ContourCell, PointsLieWhereTheLevelIsOnTheSide)
{
    ContourCell const cell { 0, 0, 8, 4, { 1, 5, 9, 3 } };
    EXPECT_EQ(GetContourCase(cell, 2), 8 + 4 + 2);
    std::array<ContourSegment, 2> found {};
    ASSERT_EQ(GetContourSegments(14, cell, 2, found), 1);
    EXPECT_EQ(found[0].from, (Point { 0, 2 }));
    EXPECT_EQ(found[0].to, (Point { 2, 0 }));
    ASSERT_EQ(GetContourCase(cell, 4), 8 + 4);
    ASSERT_EQ(GetContourSegments(12, cell, 4, found), 1);
    EXPECT_EQ(found[0].from, (Point { 6, 0 }));
    EXPECT_THAT(found[0].to, testing::ElementsAre(testing::DoubleEq(8.0 / 6), 4));
    // A level on a corner counts that corner as below; values too far apart for their difference have points, too.
    EXPECT_EQ(GetContourCase(cell, 9), 0);
    ContourCell const wide { 0, 0, 1, 1, { -1.6e308, 0.8e308, 0.8e308, -1.6e308 } };
    ASSERT_EQ(GetContourSegments(12, wide, -0.4e308, found), 1);
    EXPECT_DOUBLE_EQ(found[0].from[0], 0.5);
    EXPECT_EQ(GetContourSegments(16, cell, 2, found), 0);
}

// A grid with its own values; heights are those of a function of the node.
struct Grid {
    template <typename Height> Grid(int gridCols, int gridRows, Height const& height)
        : cols(gridCols)
        , rows(gridRows)
    {
        for (int j = 0; j <= rows; ++j) {
            for (int i = 0; i <= cols; ++i)
                values.push_back(height(i, j));
        }
    }
    double& At(int i, int j) { return values[static_cast<std::size_t>(j * (cols + 1) + i)]; }
    ContourGrid View() const { return { values, cols, rows, -3, 7, 0.5, 0.25, leftOut }; }

    int cols;
    int rows;
    std::vector<double> values;
    std::vector<std::uint8_t> leftOut;
};

// Cell by cell, as it reads.
std::vector<ContourSegment> PlainSegments(Grid const& grid, double level)
{
    std::vector<ContourSegment> all;
    auto const at = [&](int i, int j) { return static_cast<std::size_t>(j * (grid.cols + 1) + i); };
    for (int i = 0; i < grid.cols; ++i) {
        for (int j = 0; j < grid.rows; ++j) {
            ContourCell cell { -3 + i * 0.5, 7 + j * 0.25, -3 + (i + 1) * 0.5, 7 + (j + 1) * 0.25, {} };
            std::size_t const corners[] = { at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1) };
            bool missing = false;
            for (std::size_t c = 0; c < 4; ++c) {
                cell.z[c] = grid.values[corners[c]];
                missing = missing || IsGridGap(cell.z[c]) || (!grid.leftOut.empty() && grid.leftOut[corners[c]]);
            }
            std::array<ContourSegment, 2> found;
            found.fill({ {}, {}, i, j });
            int const count = missing ? 0 : GetContourSegments(GetContourCase(cell, level), cell, level, found);
            all.insert(all.end(), found.begin(), found.begin() + count);
        }
    }
    return all;
}

Grid Waves(int cols, int rows)
{
    return { cols, rows, [](int i, int j) { return std::sin(i * 0.21) * std::cos(j * 0.17) + 0.01 * (i - j); } };
}

Grid Noise(int cols, int rows)
{
    std::mt19937 random(7);
    return { cols, rows, [&](int, int) { return static_cast<double>(random() % 9); } };
}

TEST(ContourFinder, FindsWhatCellByCellWouldFind)
{
    // Below, at and above the size of blocks.
    for (auto const& [cols, rows] : std::vector<std::pair<int, int>> { { 1, 1 }, { 31, 33 }, { 32, 64 }, { 97, 40 } }) {
        for (Grid grid : { Waves(cols, rows), Noise(cols, rows) }) {
            for (int const gaps : { 0, 1, 2 }) {
                if (gaps == 1) {
                    grid.At(0, rows) = kNaN;
                    grid.At(cols / 2, rows / 2) = std::numeric_limits<double>::max();
                    grid.At(cols, 0) = -std::numeric_limits<double>::infinity();
                } else if (gaps == 2) {
                    grid.leftOut.assign(grid.values.size(), 0);
                    grid.leftOut[grid.leftOut.size() / 3] = 1;
                }
                ContourFinder const finder(grid.View());
                for (double const level : { -0.9, -0.2, 0.0, 0.4, 1.0, 3.0, 7.5, 8.0, 100.0 }) {
                    std::vector<ContourSegment> found;
                    finder.FindSegments(level, found);
                    EXPECT_EQ(found, PlainSegments(grid, level)) << cols << " x " << rows << " at " << level;
                }
            }
        }
    }
}

TEST(ContourFinder, ANotANumberLevelAndGridsWithoutValuesHaveNoLines)
{
    Grid grid = Waves(40, 40);
    std::vector<ContourSegment> found;
    ContourFinder(grid.View()).FindSegments(kNaN, found);
    grid.rows = 41;
    ContourFinder(grid.View()).FindSegments(0.1, found);
    grid.rows = 0;
    ContourFinder(grid.View()).FindSegments(0.1, found);
    grid.rows = 40;
    grid.leftOut.resize(5);
    ContourFinder(grid.View()).FindSegments(0.1, found);
    EXPECT_TRUE(found.empty());
}

TEST(ContourFinder, LinesHoldEverySegmentOnceAndAreAsLongAsTheyCanBe)
{
    Grid withHole = Waves(70, 50);
    withHole.At(30, 20) = kNaN;
    for (Grid const& grid : { Waves(70, 50), Noise(40, 40), withHole }) {
        ContourFinder const finder(grid.View());
        for (double const level : { -0.2, 0.4, 4.5 }) {
            using Sides = std::multiset<std::pair<Point, Point>>;
            auto const ordered = [](Point a, Point b) { return a < b ? std::pair(a, b) : std::pair(b, a); };
            Sides expected;
            std::vector<ContourSegment> segments;
            finder.FindSegments(level, segments);
            for (ContourSegment const& s : segments)
                expected.insert(ordered(s.from, s.to));
            Sides found;
            ContourPolylines lines;
            finder.FindLines(level, lines);
            std::multiset<Point> looseEnds;
            for (std::size_t k = 0; k < lines.GetSize(); ++k) {
                auto const line = lines.GetLine(k);
                ASSERT_GE(line.size(), 2U);
                for (std::size_t p = 1; p < line.size(); ++p)
                    found.insert(ordered(line[p - 1], line[p]));
                if (line.front() != line.back()) {
                    looseEnds.insert(line.front());
                    looseEnds.insert(line.back());
                }
            }
            EXPECT_EQ(found, expected);
            for (Point const& end : looseEnds)
                EXPECT_EQ(looseEnds.count(end), 1U) << "two lines end at " << end[0] << ", " << end[1];
        }
    }
}

TEST(ContourFinder, AHillHasOneClosedLineAndASlopeOneOpenOne)
{
    Grid const hill(100, 100, [](int i, int j) { return -std::hypot(i - 50.0, j - 50.0); });
    ContourPolylines lines;
    ContourFinder(hill.View()).FindLines(-30, lines);
    ASSERT_EQ(lines.GetSize(), 1U);
    EXPECT_EQ(lines.GetLine(0).front(), lines.GetLine(0).back());
    // Steps are 0.5 and 0.25, so the circle of 30 nodes is an ellipse; the trapezium's rule gives its area.
    double area = 0;
    auto const line = lines.GetLine(0);
    for (std::size_t p = 1; p < line.size(); ++p)
        area += (line[p][0] - line[p - 1][0]) * (line[p][1] + line[p - 1][1]) / 2;
    EXPECT_NEAR(std::abs(area), 3.14159 * 15 * 7.5, 0.5);

    Grid const slope(50, 80, [](int i, int) { return i + 0.5; });
    lines = {};
    ContourFinder(slope.View()).FindLines(10, lines);
    ASSERT_EQ(lines.GetSize(), 1U);
    EXPECT_EQ(lines.GetLine(0).size(), 81U);
    EXPECT_EQ(lines.GetLine(0).front(), (Point { -3 + 9.5 * 0.5, 7 }));
    EXPECT_EQ(lines.GetLine(0).back(), (Point { -3 + 9.5 * 0.5, 7 + 80 * 0.25 }));
}

} // namespace
} // namespace ombrel
