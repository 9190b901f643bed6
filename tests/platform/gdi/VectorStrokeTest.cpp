#include "tests/platform/gdi/Picture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace ombrel {
namespace {

using Points = std::vector<CPoint>;

VectorPen Pen(double width, std::span<double const> dashes = {}, BYTE alpha = 255)
{
    return { { kPenColour, alpha }, width, dashes };
}

std::string Drawn(int width, int height, VectorPen const& pen, Points const& points)
{
    Picture picture(width, height);
    VectorGraphics(picture.DC()).DrawCurve(pen, points);
    return picture.Rows();
}

/// Coverage of each pixel, from black on white.
std::vector<std::vector<int>> Coverage(int width, int height, VectorPen pen, Points const& points)
{
    Picture picture(width, height);
    picture.DC().FillSolidRect({ 0, 0, width, height }, 0xFFFFFF);
    pen.colour.colour = 0;
    VectorGraphics graphics(picture.DC());
    graphics.SetSmoothing(true);
    graphics.DrawCurve(pen, points);
    std::vector<std::vector<int>> rows(static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        for (std::uint32_t const pixel : picture.Pixels({ 0, y, width, y + 1 }))
            rows[static_cast<std::size_t>(y)].push_back(255 - static_cast<int>(pixel & 0xFF));
    }
    return rows;
}

/// In whole pixels.
double Total(std::vector<std::vector<int>> const& rows)
{
    int sum = 0;
    for (auto const& row : rows)
        sum = std::accumulate(row.begin(), row.end(), sum);
    return sum / 255.0;
}

TEST(VectorLine, HasBothEndsAndHalvesGoToTheLargerCoordinate)
{
    EXPECT_EQ(Drawn(6, 1, Pen(1), { { 0, 0 }, { 4, 0 } }), "#####.\n");
    EXPECT_EQ(Drawn(5, 3, Pen(1), { { 0, 0 }, { 4, 2 } }), "#....\n.##..\n...##\n");
    EXPECT_EQ(Drawn(5, 3, Pen(0.3), { { 4, 2 }, { 0, 0 } }), "#....\n.##..\n...##\n");
    EXPECT_EQ(Drawn(2, 2, Pen(1), { { 1, 1 }, { 1, 1 } }), "..\n..\n");
}

TEST(VectorLine, WideLinesHaveFlatEnds)
{
    EXPECT_EQ(Drawn(8, 5, Pen(3), { { 6, 2 }, { 1, 2 } }), "........\n.#####..\n.#####..\n.#####..\n........\n");
    EXPECT_EQ(Drawn(5, 6, Pen(4), { { 2, 1 }, { 2, 4 } }), ".....\n####.\n####.\n####.\n.....\n.....\n");
    EXPECT_EQ(
        Drawn(8, 5, Pen(3), { { 1, 2 }, { 6, 2 }, { 6, 5 } }), "........\n.#######\n.#######\n.#######\n.....###\n");
    EXPECT_EQ(
        Drawn(8, 5, Pen(2), { { 6, 5 }, { 6, 2 }, { 1, 2 } }), "........\n.######.\n.######.\n.....##.\n.....##.\n");
}

TEST(VectorLine, SlantedBandsTakeInTheirLeftAndTopEdges)
{
    // Pixels between the lines x + y = 4 and x + y = 16 that lie less than √2 beside the diagonal.
    std::string const band = "..........\n..........\n..##......\n..###.....\n...###....\n....###...\n"
                             ".....###..\n......###.\n.......#..\n..........\n";
    EXPECT_EQ(Drawn(10, 10, Pen(2), { { 2, 2 }, { 8, 8 } }), band);
    EXPECT_EQ(Drawn(9, 3, Pen(3), { { 4, -20 }, { 4, 20 } }), "...###...\n...###...\n...###...\n");
}

TEST(VectorEllipse, HasAsManyPointsAsItsSizeNeeds)
{
    using Case = std::tuple<CSize, double, std::size_t>;
    Picture picture(1, 1);
    for (auto const& [size, width, count] :
        { Case { { 9, 8 }, 1, 23 }, { { 6, 7 }, 3, 19 }, { { 2811, 2811 }, 6, 269 }, { { 2811, 300 }, 6, 267 } }) {
        CRect const box(CPoint(-20, 30), size);
        Points const curve = VectorGraphics(picture.DC()).EllipsePoints(Pen(width), box);
        ASSERT_EQ(curve.size(), count);
        EXPECT_EQ(curve.front(), curve.back());
        EXPECT_EQ(curve.front(), CPoint(box.right, 30 + (size.cy + 1) / 2));
        EXPECT_GT(curve[1].y, curve[0].y) << "clockwise";
        EXPECT_EQ(curve[count / 2].x, box.left);
    }
    EXPECT_TRUE(VectorGraphics(picture.DC()).EllipsePoints(Pen(1), { 5, 5, 5, 9 }).empty());
}

TEST(VectorDashes, StartAtTheFirstPointAndRunOnOverVertices)
{
    double const long2[] { 8, 2 };
    double const dots[] { 1, 1 };
    EXPECT_EQ(Drawn(27, 1, Pen(1, long2), { { 2, 0 }, { 25, 0 } }), "..########..########..####.\n");
    EXPECT_EQ(Drawn(27, 1, Pen(1, long2), { { 25, 0 }, { 2, 0 } }), "..####..########..########.\n");
    EXPECT_EQ(Drawn(9, 1, Pen(1, dots), { { 1, 0 }, { 7, 0 } }), ".#.#.#.#.\n");

    double const short2[] { 3, 2 };
    EXPECT_EQ(Drawn(6, 4, Pen(1, short2), { { 0, 0 }, { 4, 0 }, { 4, 3 } }), "###...\n....#.\n....#.\n....#.\n");
}

TEST(VectorDashes, AreMultiplesOfTheWidth)
{
    double const pattern[] { 2, 2 };
    EXPECT_EQ(Drawn(22, 3, Pen(2, pattern), { { 1, 1 }, { 20, 1 } }),
        ".####....####....###..\n.####....####....###..\n......................\n");
    EXPECT_EQ(Drawn(22, 3, Pen(2, pattern), { { 20, 1 }, { 1, 1 } }),
        ".###....####....####..\n.###....####....####..\n......................\n");
}

TEST(VectorDashes, TakeInTheEdgeThatTheyBeginAtOnShortTurnsToo)
{
    // The upright part is drawn by rows: dashes of four rows from the corner on, gaps of two.
    double const pattern[] { 2, 1 };
    EXPECT_EQ(Drawn(18, 8, Pen(2, pattern), { { 17, 0 }, { 5, 0 }, { 5, 7 } }),
        "....##.####..####.\n....##............\n....##............\n....##............\n..................\n"
        "..................\n....##............\n..................\n");
    EXPECT_EQ(Drawn(18, 8, Pen(2, pattern), { { 17, 7 }, { 5, 7 }, { 5, 0 } }),
        "....##............\n..................\n..................\n....##............\n....##............\n"
        "....##............\n....##.####..####.\n.......####..####.\n");
}

TEST(VectorDashes, EachFigureStartsThePatternAgain)
{
    double const pattern[] { 3, 2 };
    Points const points { { 0, 0 }, { 6, 0 }, { 8, 0 }, { 14, 0 } };
    std::size_t const starts[] { 0, 2 };
    Picture picture(16, 1);
    VectorGraphics(picture.DC()).DrawPath(Pen(1, pattern), { points, starts });
    EXPECT_EQ(picture.Rows(), "###..##.###..##.\n");
}

TEST(VectorStroke, NeitherClipNorPlaceChangesPixels)
{
    std::mt19937 random(11);
    auto const coordinate
        = [&random](int reach) { return static_cast<int>(random() % (2U * static_cast<unsigned>(reach))) - reach; };
    double const dashes[] { 5, 2, 1, 2 };
    for (int round = 0; round < 200; ++round) {
        Points points;
        for (int i = 0; i < 2 + round % 30; ++i)
            points.push_back({ coordinate(round % 4 ? 60 : 30000), coordinate(round % 5 ? 50 : 30000) });
        double const width = 1 + round % 4;
        auto const pen = Pen(width, round % 3 ? std::span<double const>() : dashes, round % 7 ? 255 : 90);
        bool const smooth = round % 2;
        auto const draw = [&](Picture& picture, CRect const& clip) {
            VectorGraphics graphics(picture.DC());
            graphics.SetSmoothing(smooth);
            graphics.SetClipRect(clip);
            graphics.DrawCurve(pen, points);
        };
        Picture whole(50, 40);
        Picture halves(50, 40);
        Picture moved(307, 42);
        moved.DC().SetViewportOrg(257, 2);
        draw(moved, { 0, 0, 50, 40 });
        draw(whole, { 0, 0, 50, 40 });
        int const split = 1 + round % 48;
        draw(halves, { 0, 0, split, 40 });
        draw(halves, { split, 0, 50, 40 });
        draw(halves, { 5, 5, 5, 40 });
        ASSERT_EQ(whole.Pixels(), halves.Pixels()) << "round " << round;
        ASSERT_EQ(whole.Pixels(), moved.Pixels({ 257, 2, 307, 42 })) << "round " << round;
    }
}

TEST(VectorStroke, ManyPointsDrawThePixelsOfTheSingleLines)
{
    // Dense upright lines go another way than few.
    std::mt19937 random(5);
    Points points;
    for (int x = 0; x < 120; ++x) {
        for (int i = 0; i < 4; ++i)
            points.push_back({ x, static_cast<int>(random() % 130) - 15 });
    }
    Picture together(120, 100);
    VectorGraphics(together.DC()).DrawCurve(Pen(1), points);
    Picture single(120, 100);
    for (std::size_t i = 1; i < points.size(); ++i)
        VectorGraphics(single.DC()).DrawLine(Pen(1), points[i - 1], points[i]);
    EXPECT_EQ(together.Rows(), single.Rows());
}

TEST(VectorStroke, OverlapsBlendOnce)
{
    Points const there { { 5, 5 }, { 35, 5 }, { 5, 5 }, { 35, 6 }, { 5, 30 }, { 35, 6 } };
    for (bool const smooth : { false, true }) {
        for (double const width : { 1.0, 3.0 }) {
            Picture picture(40, 40);
            picture.DC().FillSolidRect({ 0, 0, 40, 40 }, 0xFFFFFF);
            VectorGraphics graphics(picture.DC());
            graphics.SetSmoothing(smooth);
            graphics.DrawCurve({ { 0, 128 }, width, {} }, there);
            auto const pixels = picture.Pixels();
            EXPECT_EQ(*std::min_element(pixels.begin(), pixels.end()), 0x7F7F7FU);
        }
    }
}

TEST(SmoothLine, PixelsAreCoveredByTheQuarter)
{
    struct {
        double width;
        std::vector<std::string> rows;
    } const cases[] = {
        { 2, { ".......", ".......", ".......", ".12221.", ".24442.", ".12221.", "......." } },
        { 3, { ".......", ".......", ".......", ".24442.", ".24442.", ".24442.", "......." } },
        { 1, { ".......", ".......", ".......", ".......", ".24442.", ".......", "......." } },
    };
    for (auto const& c : cases) {
        // Level and upright, and both ways round.
        for (int turn = 0; turn < 4; ++turn) {
            bool const upright = turn % 2 != 0;
            Points points { { 1, 4 }, { 5, 4 } };
            if (turn / 2)
                std::swap(points[0], points[1]);
            for (CPoint& p : points)
                p = upright ? CPoint(p.y, p.x) : p;
            auto const rows = Coverage(7, 7, Pen(c.width), points);
            for (std::size_t y = 0; y < 7; ++y) {
                for (std::size_t x = 0; x < 7; ++x) {
                    char const letter = upright ? c.rows[x][y] : c.rows[y][x];
                    EXPECT_NEAR(rows[y][x], letter == '.' ? 0 : (letter - '0') * 63.75, 2.0)
                        << c.width << " turned " << turn << " at " << x << ',' << y;
                }
            }
        }
    }
}

TEST(SmoothLine, CoverageAddsUpToTheBandsArea)
{
    double const dashes[] { 4, 2 };
    for (CPoint const to : { CPoint(95, 20), CPoint(95, 90), CPoint(60, 95), CPoint(12, 95), CPoint(90, 10) }) {
        double const length = std::hypot(to.x - 10.0, to.y - 10.0);
        for (double const width : { 1.0, 1.5, 2.0, 5.0 }) {
            double const area = length * width;
            EXPECT_NEAR(Total(Coverage(106, 106, Pen(width), { { 10, 10 }, to })), area, 0.02 * area + 1.0);
            double const period = 6.0 * width;
            double const rest = std::fmod(length, period);
            double const drawn = (length - rest) * 2.0 / 3.0 + std::min(rest, 4.0 * width);
            EXPECT_NEAR(Total(Coverage(106, 106, Pen(width, dashes), { { 10, 10 }, to })), drawn * width,
                0.03 * drawn * width + 1.0);
            EXPECT_NEAR(Total(Coverage(106, 106, Pen(width), { to, { 10, 10 } })), area, 0.02 * area + 1.0);
        }
    }
}

TEST(SmoothLine, DashesCoverTheirPixelsWholly)
{
    double const dashes[] { 2, 1 };
    std::vector<int> expected(16, 0);
    for (std::size_t const start : { 2U, 8U }) {
        std::fill_n(expected.begin() + static_cast<std::ptrdiff_t>(start + 1), 3, 255);
        expected[start] = expected[start + 4] = 128;
    }
    for (bool const upright : { false, true }) {
        auto const rows = Coverage(
            16, 16, Pen(2, dashes), upright ? Points { { 4, 2 }, { 4, 13 } } : Points { { 2, 4 }, { 13, 4 } });
        for (std::size_t i = 3; i < 16; ++i)
            EXPECT_EQ(upright ? rows[i][4] : rows[4][i], expected[i]) << upright << " at " << i;
    }
}

TEST(SmoothLine, CrossingBandsLeaveWhatTheOtherCovered)
{
    double const dashes[] { 30, 1 };
    for (auto const& pen : { Pen(2), Pen(2, dashes) }) {
        // The edges of each band lie upon the other's middle.
        auto const level = Coverage(16, 16, pen, { { 2, 6 }, { 12, 6 }, { 12, 12 }, { 6, 12 }, { 6, 2 } });
        auto const slanted = Coverage(16, 16, pen, { { 2, 6 }, { 12, 6 }, { 12, 12 }, { 4, 12 }, { 8, 2 } });
        for (std::size_t i = 4; i < 11; ++i) {
            EXPECT_EQ(level[6][i], 255) << i;
            EXPECT_EQ(level[i][6], 255) << i;
            EXPECT_EQ(slanted[6][i], 255) << i;
        }
    }
}

TEST(SmoothLine, VerticesLeaveNoGap)
{
    auto const straight = Coverage(40, 20, Pen(2), { { 3, 3 }, { 11, 7 }, { 19, 11 }, { 35, 19 } });
    EXPECT_NEAR(Total(straight), 2 * std::hypot(32, 16), 2.0);
    EXPECT_GT(std::min(straight[7][11], straight[11][19]), 250);
    auto const corner = Coverage(20, 20, Pen(3), { { 2, 5 }, { 12, 5 }, { 12, 15 } });
    EXPECT_EQ(corner[4][13], 255);
    EXPECT_EQ(corner[3][12], 0);
}

TEST(VectorStroke, ExtremeArgumentsAreHarmless)
{
    int const low = std::numeric_limits<int>::min();
    int const high = std::numeric_limits<int>::max();
    double const dashes[] { 3, 1 };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Points const points { { low, low }, { high, high }, { 5, low }, { 6, high }, { low, 7 }, { high, 7 } };
    for (double const width : { 0.0, -4.0, 1.0, 2.0, 1e9, kInfinity, std::numeric_limits<double>::quiet_NaN() }) {
        for (int kind = 0; kind < 4; ++kind) {
            Picture picture(20, 20);
            VectorGraphics graphics(picture.DC());
            graphics.SetSmoothing(kind % 2);
            graphics.DrawCurve(Pen(width, std::span(dashes).first(kind < 2 ? 0 : 2)), points);
            EXPECT_LT(picture.Count('.'), 400);
        }
    }
    Picture picture(20, 20);
    picture.DC().Polyline(points);
    VectorGraphics(picture.DC()).FillPolygon(VectorBrush::Solid(kBrushColour), points);
    EXPECT_GT(picture.Count('#') * picture.Count('o'), 0);
    std::size_t const wrong[] { 3, 1, 99, 0 };
    VectorGraphics(picture.DC()).DrawPath(Pen(2), { points, wrong });
    VectorGraphics(picture.DC()).DrawPath(Pen(2), { {}, wrong });
}

} // namespace
} // namespace ombrel
