#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/Figures.h"
#include "ombrel/platform/gdi/geometry/DashPattern.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"
#include "ombrel/platform/gdi/geometry/LinePixels.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Coordinates, DivideAndRoundTowardsTheSameSideOfZero)
{
    struct {
        long long a;
        long long quotient;
        long long remainder;
    } const cases[] = { { 7, 2, 1 }, { 6, 2, 0 }, { 0, 0, 0 }, { -1, -1, 2 }, { -3, -1, 0 }, { -4, -2, 2 } };
    for (auto const& c : cases) {
        EXPECT_EQ(FloorDivide(c.a, 3), c.quotient) << c.a;
        EXPECT_EQ(FloorRemainder(c.a, 3), c.remainder) << c.a;
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
    EXPECT_EQ((Figures { points, {} }).Count(), 1u);
    EXPECT_EQ((Figures { points, {} }).PointsOf(0).size(), 4u);
}

TEST(LinePixels, ClippingLeavesThePixelsInsideTheBox)
{
    CRect const box(3, 4, 9, 8);
    for (Halves const halves : { Halves::Smaller, Halves::Larger }) {
        for (int code = 0; code < 13 * 13 * 4; ++code) {
            // Steep and flat lines of all directions, and level and upright ones,
            // from four corners round the box.
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
    struct {
        std::vector<double> lengths;
        double scale;
        /// The first pixels of a line.
        std::string line;
    } const cases[] = {
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
    for (auto const& c : cases) {
        DashPattern const pattern(c.lengths, c.scale);
        std::string line;
        for (std::size_t i = 0; i < c.line.size(); ++i)
            line += pattern.IsOn(static_cast<double>(i)) ? '#' : '.';
        EXPECT_EQ(line, c.line);
        // Counted in runs from any pixel on, the line is the same.
        for (std::size_t start = 0; start < c.line.size() && !pattern.IsSolid(); ++start) {
            DashCounter counter(pattern, static_cast<double>(start));
            std::string counted(start, ' ');
            while (counted.size() < c.line.size()) {
                long long const length = counter.Length();
                ASSERT_GE(length, 1);
                counted.append(static_cast<std::size_t>(length), counter.IsOn() ? '#' : '.');
                counter.Advance(length);
            }
            EXPECT_EQ(counted.substr(start, c.line.size() - start), c.line.substr(start)) << "from " << start;
        }
    }
}

TEST(PenDashes, BelongToTheDashedStylesOnly)
{
    EXPECT_THAT(PenDashes(PS_DASH), ElementsAre(18, 6));
    EXPECT_THAT(PenDashes(PS_DOT), ElementsAre(3, 3));
    EXPECT_THAT(PenDashes(PS_DASHDOT), ElementsAre(9, 6, 3, 6));
    EXPECT_THAT(PenDashes(PS_DASHDOTDOT), ElementsAre(9, 3, 3, 3, 3, 3));
    for (int const style : { int { PS_SOLID }, int { PS_NULL }, int { PS_INSIDEFRAME }, -1, 99 })
        EXPECT_THAT(PenDashes(style), IsEmpty()) << style;
}

TEST(EllipsePixels, OutlinesRunCounterClockwiseFromTheLeft)
{
    EXPECT_THAT(EllipseOutline({ 10, 20, 13, 23 }),
        ElementsAre(CPoint(10, 21), CPoint(11, 22), CPoint(12, 21), CPoint(11, 20)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 1, 3 }), ElementsAre(CPoint(0, 0), CPoint(0, 1), CPoint(0, 2)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 3, 1 }), ElementsAre(CPoint(0, 0), CPoint(1, 0), CPoint(2, 0)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 2, 3 }),
        ElementsAre(CPoint(0, 0), CPoint(0, 1), CPoint(0, 2), CPoint(1, 2), CPoint(1, 1), CPoint(1, 0)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 3, 2 }),
        ElementsAre(CPoint(0, 0), CPoint(0, 1), CPoint(1, 1), CPoint(2, 1), CPoint(2, 0), CPoint(1, 0)));
    EXPECT_THAT(EllipseOutline({ 0, 0, 1, 1 }), IsEmpty());
    EXPECT_THAT(EllipseOutline({ 0, 0, 0, 5 }), IsEmpty());
}

TEST(EllipsePixels, ArcsBeginPastTheirStartAndLeaveOutTheirLastPixel)
{
    CRect const box(0, 0, 5, 5);
    // The twelve pixels of the outline: three on every side.
    struct {
        CPoint start;
        CPoint end;
        std::vector<CPoint> pixels;
    } const cases[] = {
        // From the upper left corner down to the lower right one.
        { { 0, 0 }, { 5, 5 }, { { 0, 1 }, { 0, 2 }, { 0, 3 }, { 1, 4 }, { 2, 4 } } },
        { { 5, 5 }, { 0, 0 }, { { 4, 3 }, { 4, 2 }, { 4, 1 }, { 3, 0 }, { 2, 0 } } },
        { { 0, 5 }, { 5, 0 }, { { 1, 4 }, { 2, 4 }, { 3, 4 }, { 4, 3 }, { 4, 2 } } },
        { { 5, 0 }, { 0, 5 }, { { 3, 0 }, { 2, 0 }, { 1, 0 }, { 0, 1 }, { 0, 2 } } },
    };
    for (auto const& c : cases)
        EXPECT_EQ(ArcPixels(box, c.start, c.end), c.pixels) << c.start.x << ',' << c.start.y;
    EXPECT_EQ(ArcPixels(box, { 9, 2 }, { 9, 2 }).size(), 11u);
    EXPECT_THAT(ArcPixels({ 3, 3, 3, 9 }, { 0, 0 }, { 9, 9 }), IsEmpty());
}

TEST(HatchPatterns, DiagonalsAloneHaveSmoothNeighbours)
{
    // The first rows of a forward diagonal, a backward one and a cross of lines.
    std::array const expected { std::array { 233, 64, 0, 0, 0, 0, 0, 64 }, std::array { 64, 0, 0, 0, 0, 0, 64, 233 },
        std::array { 255, 255, 255, 255, 255, 255, 255, 255 } };
    int const styles[] = { 2, 3, 4 };
    for (std::size_t i = 0; i < 3; ++i)
        for (int x = 0; x < 8; ++x)
            EXPECT_EQ(static_cast<int>(ForegroundWeight(styles[i], x, 0)), expected[i][static_cast<std::size_t>(x)])
                << styles[i] << " column " << x;
    EXPECT_EQ(ForegroundWeight(2, 3, 3), 233u);
    EXPECT_EQ(ForegroundWeight(18, 1, 0), 0u);
}

} // namespace
} // namespace ombrel
