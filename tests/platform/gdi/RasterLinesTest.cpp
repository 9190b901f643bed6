#include "ombrel/platform/gdi/LineDDA.h"
#include "tests/platform/gdi/Picture.h"

#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

using Points = std::vector<CPoint>;

std::string Drawn(int width, int height, Points const& points)
{
    Picture picture(width, height);
    picture.DC().MoveTo(points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
        picture.DC().LineTo(points[i]);
    return picture.Rows();
}

/// The pixels, on a row of 60, of a level line with a styled pen.
std::string StyledRow(int style, int from, int to, bool opaque)
{
    Picture picture(60, 1);
    picture.UsePen(style, 1);
    picture.DC().SetBkMode(opaque ? OPAQUE : TRANSPARENT);
    picture.DC().SetBkColor(kBrushColour);
    picture.DC().MoveTo(from, 0);
    picture.DC().LineTo(to, 0);
    std::string row = picture.Rows();
    row.pop_back();
    return row;
}

std::string Repeated(std::initializer_list<int> lengths, char first, char second)
{
    std::string row;
    bool on = true;
    for (int const length : lengths) {
        row.append(static_cast<std::size_t>(length), on ? first : second);
        on = !on;
    }
    return row;
}

TEST(Lines, HalvesGoToTheSmallerCoordinateAndTheLastPointIsLeftOut)
{
    EXPECT_EQ(Drawn(6, 3, { { 0, 0 }, { 5, 2 } }), "##....\n..##..\n....#.\n");
    EXPECT_EQ(Drawn(6, 3, { { 5, 2 }, { 0, 0 } }), ".#....\n..##..\n....##\n");
    EXPECT_EQ(Drawn(5, 3, { { 0, 0 }, { 4, 2 } }), "##...\n..##.\n.....\n");
    EXPECT_EQ(Drawn(5, 3, { { 0, 2 }, { 4, 0 } }), "...#.\n.##..\n#....\n");
    EXPECT_EQ(Drawn(3, 5, { { 2, 4 }, { 0, 0 } }), "...\n#..\n.#.\n.#.\n..#\n");
    EXPECT_EQ(Drawn(2, 2, { { 1, 1 }, { 1, 1 } }), "..\n..\n");
}

TEST(Lines, OutlineOfARectangleHasAllItsCorners)
{
    Points const outline { { 2, 2 }, { 6, 2 }, { 6, 5 }, { 2, 5 }, { 2, 2 } };
    std::string const expected = "........\n........\n..#####.\n..#...#.\n..#...#.\n..#####.\n........\n";
    EXPECT_EQ(Drawn(8, 7, outline), expected);
    Picture picture(8, 7);
    picture.DC().MoveTo(1, 1);
    picture.DC().Polyline(outline);
    EXPECT_EQ(picture.Rows(), expected);
    EXPECT_EQ(picture.DC().GetCurrentPosition(), CPoint(1, 1));
}

TEST(Lines, StyledPensRepeatTheirPattern)
{
    struct {
        int style;
        std::initializer_list<int> lengths;
    } const cases[] = {
        { PS_DASH, { 18, 6, 18, 6, 12 } },
        { PS_DOT, { 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3 } },
        { PS_DASHDOT, { 9, 6, 3, 6, 9, 6, 3, 6, 9, 3 } },
        { PS_DASHDOTDOT, { 9, 3, 3, 3, 3, 3, 9, 3, 3, 3, 3, 3, 9, 3 } },
    };
    for (auto const& c : cases) {
        EXPECT_EQ(StyledRow(c.style, 0, 60, false), Repeated(c.lengths, '#', '.'));
        EXPECT_EQ(StyledRow(c.style, 0, 60, true), Repeated(c.lengths, '#', 'o'));
        std::string const forwards = Repeated(c.lengths, '#', '.');
        EXPECT_EQ(StyledRow(c.style, 59, -1, false), std::string(forwards.rbegin(), forwards.rend()));
    }
    EXPECT_EQ(StyledRow(PS_NULL, 0, 60, true), std::string(60, '.'));
    EXPECT_EQ(StyledRow(PS_INSIDEFRAME, 0, 60, true), std::string(60, '#'));
}

TEST(Lines, PatternRunsOnOverTheVerticesOfAPolyline)
{
    Picture bent(30, 30);
    Picture straight(60, 1);
    bent.UsePen(PS_DASHDOT, 1);
    straight.UsePen(PS_DASHDOT, 1);
    bent.DC().Polyline(Points { { 0, 0 }, { 20, 0 }, { 20, 25 } });
    straight.DC().Polyline(Points { { 0, 0 }, { 45, 0 } });
    for (int i = 0; i < 45; ++i)
        EXPECT_EQ(bent.Pixel(std::min(i, 20), std::max(i - 20, 0)), straight.Pixel(i, 0)) << i;
}

TEST(Lines, WidePensStampARoundDot)
{
    auto const drawn = [](int width, CPoint from, CPoint to) {
        Picture picture(9, 6);
        picture.UsePen(PS_DASH, width);
        picture.DC().MoveTo(from);
        picture.DC().LineTo(to);
        return picture.Rows();
    };
    EXPECT_EQ(drawn(2, { 3, 3 }, { 3, 3 }), ".........\n.........\n..##.....\n..##.....\n.........\n.........\n");
    EXPECT_EQ(drawn(3, { 2, 2 }, { 5, 2 }), ".........\n..####...\n.######..\n..####...\n.........\n.........\n");
    EXPECT_EQ(drawn(4, { 5, 2 }, { 3, 2 }), "..####...\n.######..\n.######..\n..####...\n.........\n.........\n");
    EXPECT_EQ(drawn(5, { 3, 3 }, { 3, 3 }), ".........\n..###....\n.#####...\n.#####...\n.#####...\n..###....\n");
}

/// The part of a picture that begins at a point.
std::vector<std::uint32_t> Part(Picture const& picture, CPoint from, CSize size)
{
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < size.cy; ++y)
        for (int x = 0; x < size.cx; ++x)
            pixels.push_back(picture.Pixel(from.x + x, from.y + y));
    return pixels;
}

TEST(Lines, WideOnesHaveTheSamePixelsWhereverTheyLie)
{
    constexpr CSize kSize(48, 40);
    constexpr CPoint kMoves[] { { 1, 0 }, { 257, 2 }, { 601, 423 } };
    std::mt19937 random(29);
    double const dashes[] { 2, 1.5 };
    for (int round = 0; round < 60; ++round) {
        Points points;
        for (int i = 0; i < 3; ++i)
            points.push_back({ 8 + static_cast<int>(random() % 32), 8 + static_cast<int>(random() % 24) });
        int const width = 2 + round % 6;
        auto const draw = [&](CDC& dc) {
            dc.Polyline(points);
            VectorGraphics graphics(dc);
            graphics.SetSmoothing(round % 3 == 2);
            std::span<double const> const pattern
                = round % 2 ? std::span<double const>(dashes) : std::span<double const>();
            graphics.DrawCurve({ { kBrushColour, 255 }, width - 0.5, pattern }, points);
        };
        Picture first(kSize.cx, kSize.cy);
        first.UsePen(PS_SOLID, width);
        draw(first.DC());
        for (CPoint const by : kMoves) {
            Picture moved(by.x + kSize.cx, by.y + kSize.cy);
            moved.UsePen(PS_SOLID, width);
            moved.DC().SetViewportOrg(by.x, by.y);
            draw(moved.DC());
            ASSERT_EQ(Part(moved, by, kSize), Part(first, {}, kSize)) << "round " << round << " by " << by.x;
        }
    }
}

TEST(Lines, ClippingNeverMovesALine)
{
    std::mt19937 random(3);
    auto const coordinate
        = [&random](int reach) { return static_cast<int>(random() % (2U * static_cast<unsigned>(reach))) - reach; };
    for (int round = 0; round < 300; ++round) {
        int const reach = round % 3 == 0 ? 32000 : 60;
        Points const points { { coordinate(reach), coordinate(reach) }, { coordinate(reach), coordinate(reach) },
            { coordinate(40), coordinate(40) } };
        int const style = round % 5;
        int const width = round % 4 == 3 ? 3 : 1;
        Picture whole(40, 30);
        whole.UsePen(style, width);
        whole.DC().Polyline(points);
        // The same on a larger bitmap, moved; and in two halves.
        Picture larger(140, 130);
        larger.UsePen(style, width);
        larger.DC().SetViewportOrg(50, 50);
        larger.DC().Polyline(points);
        Picture halves(40, 30);
        halves.UsePen(style, width);
        int const split = 5 + round % 30;
        halves.ClipTo({ 0, 0, split, 30 });
        halves.DC().Polyline(points);
        halves.ClipTo({ 40, 30, split, 0 });
        halves.DC().Polyline(points);
        ASSERT_EQ(whole.Rows(), halves.Rows()) << "round " << round;
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(whole.Pixel(x, y), larger.Pixel(x + 50, y + 50)) << x << ',' << y << " round " << round;
        }
    }
}

TEST(Lines, FarAwayLineIsTheExactOne)
{
    Picture picture(100, 100);
    picture.DC().MoveTo(-32000, -31000);
    picture.DC().LineTo(32000, 31700);
    for (int x = 0; x < 100; ++x) {
        long long const i = x + 32000;
        // −31000 + 62700 · i / 64000, halves down.
        long long const y = -31000 + (2 * i * 62700 + 63999) / 128000;
        for (int row = 0; row < 100; ++row)
            ASSERT_EQ(Raster::ToColour(picture.Pixel(x, row)) == kPenColour, row == y) << x << ',' << row;
    }
}

TEST(Lines, PolygonClipIsTheSameAsTestingEveryPixel)
{
    Points const corners { { 20, 0 }, { 39, 15 }, { 20, 29 }, { 1, 15 } };
    Points const points { { -5, 3 }, { 44, 25 }, { 30, -4 }, { 10, 33 }, { 2, 2 } };
    CRgn region;
    region.CreatePolygonRgn(corners, ALTERNATE);
    for (int const style : { PS_SOLID, PS_DOT }) {
        Picture open(40, 30);
        Picture clipped(40, 30);
        for (Picture* picture : { &open, &clipped }) {
            picture->UsePen(style, 1);
            picture->DC().SetBkMode(OPAQUE);
            picture->DC().SetBkColor(kBrushColour);
        }
        clipped.DC().SelectClipRgn(&region);
        open.DC().Polyline(points);
        clipped.DC().Polyline(points);
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                bool const inside = region.GetRegion()->Contains({ x, y });
                std::uint32_t const expected = inside ? open.Pixel(x, y) : Raster::FromColour(kPaper);
                // Where a gap crosses a dash the dash may win.
                if (style == PS_SOLID || expected == Raster::FromColour(kPaper))
                    ASSERT_EQ(clipped.Pixel(x, y), expected) << x << ',' << y;
                else
                    ASSERT_NE(clipped.Pixel(x, y), Raster::FromColour(kPaper)) << x << ',' << y;
            }
        }
    }
}

TEST(Lines, ExtremeCoordinatesAreHarmless)
{
    int const low = std::numeric_limits<int>::min();
    int const high = std::numeric_limits<int>::max();
    for (int const width : { 1, 5, 100000 }) {
        for (int const style : { PS_SOLID, PS_DASHDOT }) {
            Picture picture(20, 20);
            picture.UsePen(style, width);
            picture.DC().SetViewportOrg(10, 10);
            picture.DC().Polyline(Points { { low, low }, { high, high }, { low, high }, { 0, low }, { 3, high } });
            EXPECT_GT(picture.Count('#'), 0);
        }
    }
}

TEST(LineDDA, HalvesStayNearerTheStart)
{
    auto const pixels = [](CPoint from, CPoint to) {
        std::string text;
        LineDDA(from.x, from.y, to.x, to.y,
            [&text](int x, int y) { text += std::to_string(x) + ',' + std::to_string(y) + ' '; });
        return text;
    };
    EXPECT_EQ(pixels({ 0, 0 }, { 4, 2 }), "0,0 1,0 2,1 3,1 ");
    EXPECT_EQ(pixels({ 0, 0 }, { 4, -2 }), "0,0 1,0 2,-1 3,-1 ");
    EXPECT_EQ(pixels({ 0, 0 }, { 10, 4 }), "0,0 1,0 2,1 3,1 4,2 5,2 6,2 7,3 8,3 9,4 ");
    EXPECT_EQ(pixels({ 3, 3 }, { 3, 3 }), "");
}

} // namespace
} // namespace ombrel
