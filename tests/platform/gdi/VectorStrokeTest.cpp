#include "tests/platform/gdi/Picture.h"

#include <cmath>
#include <gtest/gtest.h>
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
    std::vector<std::vector<int>> rows;
    for (int y = 0; y < height; ++y) {
        rows.emplace_back();
        for (int x = 0; x < width; ++x)
            rows.back().push_back(255 - static_cast<int>(picture.Pixel(x, y) & 0xFF));
    }
    return rows;
}

double Total(std::vector<std::vector<int>> const& rows)
{
    double sum = 0.0;
    for (auto const& row : rows) {
        for (int const value : row)
            sum += value / 255.0;
    }
    return sum;
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
    EXPECT_EQ(Drawn(8, 5, Pen(2), { { 1, 2 }, { 6, 2 } }), "........\n.#####..\n.#####..\n........\n........\n");
    EXPECT_EQ(Drawn(8, 5, Pen(3), { { 6, 2 }, { 1, 2 } }), "........\n.#####..\n.#####..\n.#####..\n........\n");
    EXPECT_EQ(Drawn(5, 6, Pen(4), { { 2, 1 }, { 2, 4 } }), ".....\n####.\n####.\n####.\n.....\n.....\n");
    EXPECT_EQ(Drawn(10, 7, Pen(3), { { 2, 2 }, { 8, 2 }, { 8, 6 } }),
        "..........\n..########\n..########\n..########\n.......###\n......"
        ".###\n..........\n");
    EXPECT_EQ(Drawn(10, 7, Pen(2), { { 8, 6 }, { 8, 2 }, { 2, 2 } }),
        "..........\n..#######.\n..#######.\n.......##.\n.......##.\n......"
        ".##.\n..........\n");
}

TEST(VectorLine, SlantedBandsTakeInTheirLeftAndTopEdges)
{
    // Pixels between the lines x + y = 4 and x + y = 16 that lie less than √2
    // beside the diagonal.
    std::string const band = "..........\n..........\n..##......\n..###.....\n...###....\n....###...\n"
                             ".....###..\n......###.\n.......#..\n..........\n";
    EXPECT_EQ(Drawn(10, 10, Pen(2), { { 2, 2 }, { 8, 8 } }), band);
    EXPECT_EQ(Drawn(9, 3, Pen(3), { { 4, -20 }, { 4, 20 } }), "...###...\n...###...\n...###...\n");
}

TEST(VectorEllipse, StaysOnTheEllipseAndSpansItsBox)
{
    struct {
        CSize size;
        double width;
        double tolerance;
    } const cases[] = { { { 9, 8 }, 1, 1.0 }, { { 500, 301 }, 1, 1.0 }, { { 6, 7 }, 3, 0.6 },
        { { 2811, 2811 }, 6, 0.35 }, { { 31000, 700 }, 1, 0.5 } };
    Picture picture(1, 1);
    for (auto const& c : cases) {
        CRect const box(CPoint(-20, 30), c.size);
        Points const curve = VectorGraphics(picture.DC()).EllipsePoints(Pen(c.width), box);
        ASSERT_GT(curve.size(), 8U);
        EXPECT_EQ(curve.front(), curve.back());
        EXPECT_EQ(curve.front().x, box.right);
        CRect bounds(curve[0], CSize());
        double const a = c.size.cx / 2.0;
        double const b = c.size.cy / 2.0;
        for (std::size_t i = 1; i < curve.size(); ++i) {
            bounds.SetRect(std::min(bounds.left, curve[i].x), std::min(bounds.top, curve[i].y),
                std::max(bounds.right, curve[i].x), std::max(bounds.bottom, curve[i].y));
            // The distance of a segment's middle from the ellipse, to first order.
            double const x = (curve[i].x + curve[i - 1].x) / 2.0 - (box.left + a);
            double const y = (curve[i].y + curve[i - 1].y) / 2.0 - (box.top + b);
            double const level = std::hypot(x / a, y / b);
            EXPECT_NEAR((level - 1.0) * level / std::hypot(x / (a * a), y / (b * b)), 0.0, c.tolerance)
                << c.size.cx << " at " << x << ", " << y;
            EXPECT_GE(x * (curve[i].y - curve[i - 1].y) - y * (curve[i].x - curve[i - 1].x), 0.0) << "clockwise";
        }
        EXPECT_EQ(bounds, box);
    }
    EXPECT_TRUE(VectorGraphics(picture.DC()).EllipsePoints(Pen(1), { 5, 5, 5, 9 }).empty());
}

TEST(VectorDashes, StartAtTheFirstPointAndRunOnOverVertices)
{
    double const long2[] { 8, 2 };
    double const dots[] { 1, 1 };
    std::string expected(85, '.');
    for (std::size_t x = 5; x <= 80; ++x)
        expected[x] = (x - 5) % 10 < 8 ? '#' : '.';
    EXPECT_EQ(Drawn(85, 1, Pen(1, long2), { { 5, 0 }, { 80, 0 } }), expected + '\n');
    for (std::size_t x = 5; x <= 80; ++x)
        expected[x] = (80 - x) % 10 < 8 ? '#' : '.';
    EXPECT_EQ(Drawn(85, 1, Pen(1, long2), { { 80, 0 }, { 5, 0 } }), expected + '\n');
    EXPECT_EQ(Drawn(9, 1, Pen(1, dots), { { 1, 0 }, { 7, 0 } }), ".#.#.#.#.\n");

    Picture bent(16, 16);
    VectorGraphics(bent.DC()).DrawCurve(Pen(1, long2), Points { { 2, 2 }, { 14, 2 }, { 14, 14 } });
    std::string along;
    for (int i = 0; i <= 24; ++i)
        along += bent.Pixel(std::min(2 + i, 14), std::max(2, i - 10)) == Raster::FromColour(kPaper) ? '.' : '#';
    EXPECT_EQ(along, "########..########..#####");
    EXPECT_EQ(bent.Count('#'), 21);
}

TEST(VectorDashes, AreMultiplesOfTheWidth)
{
    double const pattern[] { 2, 2 };
    std::string expected(85, '.');
    for (std::size_t x = 5; x < 80; ++x)
        expected[x] = (x - 5) % 8 < 4 ? '#' : '.';
    std::string const rows = Drawn(85, 3, Pen(2, pattern), { { 5, 1 }, { 80, 1 } });
    EXPECT_EQ(rows, expected + '\n' + expected + '\n' + std::string(85, '.') + '\n');
    for (std::size_t x = 5; x < 80; ++x)
        expected[x] = (79 - x) % 8 < 4 ? '#' : '.';
    EXPECT_EQ(Drawn(85, 3, Pen(2, pattern), { { 80, 1 }, { 5, 1 } }).substr(0, 85), expected);
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

TEST(VectorDashes, ImpossiblePatternsDrawSolid)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> const patterns[] { { 0, 0 }, { -1, 3 }, { nan, 1 }, { 1e300, 1e300 }, { 1e-9, 1e-9 } };
    for (auto const& pattern : patterns) {
        EXPECT_EQ(Drawn(8, 1, Pen(1, pattern), { { 1, 0 }, { 6, 0 } }), ".######.\n");
        EXPECT_EQ(Drawn(8, 3, Pen(2, pattern), { { 1, 1 }, { 6, 1 } }).substr(0, 9), ".#####..\n");
    }
    double const odd[] { 2 };
    EXPECT_EQ(Drawn(8, 1, Pen(1, odd), { { 0, 0 }, { 7, 0 } }), "##..##..\n");
}

TEST(VectorStroke, TwoHalfClipsEqualOneDrawing)
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
        draw(whole, { 0, 0, 50, 40 });
        int const split = 1 + round % 48;
        draw(halves, { 0, 0, split, 40 });
        draw(halves, { split, 0, 50, 40 });
        draw(halves, { 5, 5, 5, 40 });
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 50; ++x)
                ASSERT_EQ(whole.Pixel(x, y), halves.Pixel(x, y)) << x << ',' << y << " round " << round;
        }
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

    Picture dashed(120, 100);
    Picture translucent(120, 100);
    double const dashes[] { 7, 3, 1, 3 };
    VectorGraphics(dashed.DC()).DrawCurve(Pen(1, dashes), points);
    VectorGraphics(translucent.DC()).DrawCurve(Pen(1, dashes, 128), points);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 120; ++x)
            ASSERT_EQ(dashed.Pixel(x, y) == Raster::FromColour(kPaper),
                translucent.Pixel(x, y) == Raster::FromColour(kPaper));
    }
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
            std::uint32_t darkest = 255;
            for (int y = 0; y < 40; ++y) {
                for (int x = 0; x < 40; ++x)
                    darkest = std::min(darkest, picture.Pixel(x, y) & 0xFF);
            }
            EXPECT_EQ(darkest, 127U);
        }
    }
}

TEST(VectorStroke, ClipRectangleAndViewportOriginApply)
{
    Picture picture(10, 3);
    picture.DC().SetViewportOrg(2, 1);
    VectorGraphics graphics(picture.DC());
    graphics.SetClipRect({ 1, 0, 5, 1 });
    graphics.DrawLine(Pen(1), { -9, 0 }, { 20, 0 });
    EXPECT_EQ(picture.Rows(), "..........\n...####...\n..........\n");
    graphics.SetClipRect({ 5, 0, 1, 1 });
    graphics.DrawLine(Pen(1), { -9, 1 }, { 20, 1 });
    EXPECT_EQ(picture.Count('#'), 4);
}

TEST(SmoothLine, LevelLineLiesWhollyOnItsRow)
{
    for (bool const upright : { false, true }) {
        Points const points = upright ? Points { { 4, 2 }, { 4, 12 } } : Points { { 2, 4 }, { 12, 4 } };
        auto const rows = Coverage(16, 16, Pen(1), points);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                int const along = upright ? y : x;
                int const across = upright ? x : y;
                int const value = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                bool const isOff = across != 4 || along < 2 || along > 12;
                bool const isEnd = along == 2 || along == 12;
                EXPECT_NEAR(value, isOff ? 0 : isEnd ? 128 : 255, isEnd ? 2 : 0) << x << ',' << y;
            }
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
        { 3, { ".......", ".......", ".24442.", ".24442.", ".24442.", ".......", "......." } },
        { 1, { ".......", ".......", ".......", ".......", ".24442.", ".......", "......." } },
    };
    for (auto const& c : cases) {
        // Level and upright, and both ways round.
        for (int turn = 0; turn < 4; ++turn) {
            bool const upright = turn % 2 != 0;
            int const row = c.width == 3 ? 3 : 4;
            Points points { { 1, row }, { 5, row } };
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

TEST(SmoothLine, VerticesLeaveNoGap)
{
    // A straight line in many pieces is the line in one.
    Points pieces;
    for (int i = 0; i <= 20; ++i)
        pieces.push_back({ 5 + 4 * i, 8 + 2 * i });
    for (double const width : { 1.0, 2.0, 3.0 }) {
        auto const whole = Coverage(100, 60, Pen(width), { pieces.front(), pieces.back() });
        auto const many = Coverage(100, 60, Pen(width), pieces);
        for (std::size_t y = 0; y < 60; ++y) {
            for (std::size_t x = 0; x < 100; ++x)
                EXPECT_NEAR(whole[y][x], many[y][x], 40) << width << " at " << x << ',' << y;
        }
        EXPECT_NEAR(Total(many), Total(whole), 0.03 * Total(whole));
        for (CPoint const& p : pieces) {
            bool const isInner = !(p == pieces.front()) && !(p == pieces.back());
            EXPECT_GT(many[static_cast<std::size_t>(p.y)][static_cast<std::size_t>(p.x)], isInner ? 215 : 90);
        }
    }
    auto const corner = Coverage(20, 20, Pen(3), { { 2, 5 }, { 12, 5 }, { 12, 15 } });
    EXPECT_EQ(corner[4][13], 255);
    EXPECT_EQ(corner[3][12], 0);
}

TEST(VectorStroke, ExtremeArgumentsAreHarmless)
{
    int const low = std::numeric_limits<int>::min();
    int const high = std::numeric_limits<int>::max();
    double const dashes[] { 3, 1 };
    double const widths[] { 0, -4, 1, 2, 1e9, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN() };
    Points const points { { low, low }, { high, high }, { 5, low }, { 6, high }, { low, 7 }, { high, 7 } };
    for (double const width : widths) {
        for (bool const smooth : { false, true }) {
            for (bool const dashed : { false, true }) {
                Picture picture(20, 20);
                VectorGraphics graphics(picture.DC());
                graphics.SetSmoothing(smooth);
                graphics.DrawCurve(
                    Pen(width, dashed ? std::span<double const>(dashes) : std::span<double const>()), points);
                EXPECT_LT(picture.Count('.'), 400);
            }
        }
    }
    Picture picture(20, 20);
    std::size_t const wrong[] { 3, 1, 99, 0 };
    VectorGraphics(picture.DC()).DrawPath(Pen(2), { points, wrong });
    VectorGraphics(picture.DC()).DrawPath(Pen(2), { {}, wrong });
}

} // namespace
} // namespace ombrel
