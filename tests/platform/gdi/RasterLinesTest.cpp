#include "ombrel/platform/gdi/LineDDA.h"
#include "tests/platform/gdi/Picture.h"

#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

using Points = std::vector<CPoint>;

std::string Drawn(int width, int height, Points const& points, int style = PS_SOLID, int penWidth = 1)
{
    Picture picture(width, height);
    picture.UsePen(style, penWidth);
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

TEST(Lines, HalvesGoToTheSmallerCoordinateAndTheLastPointIsLeftOut)
{
    EXPECT_EQ(Drawn(6, 3, { { 0, 0 }, { 5, 2 } }), "##....\n..##..\n....#.\n");
    EXPECT_EQ(Drawn(6, 3, { { 5, 2 }, { 0, 0 } }), ".#....\n..##..\n....##\n");
    EXPECT_EQ(Drawn(5, 3, { { 0, 0 }, { 4, 2 } }), "##...\n..##.\n.....\n");
    EXPECT_EQ(Drawn(5, 3, { { 0, 2 }, { 4, 0 } }), "...#.\n.##..\n#....\n");
    EXPECT_EQ(Drawn(3, 5, { { 2, 4 }, { 0, 0 } }), "...\n#..\n.#.\n.#.\n..#\n");
    EXPECT_EQ(Drawn(2, 2, { { 1, 1 }, { 1, 1 } }), "..\n..\n");
}

TEST(Lines, StyledPensRepeatTheirPattern)
{
    using Case = std::tuple<int, std::string>;
    for (auto const& [style, row] : { Case { PS_DASH, "##################......##################......############" },
             { PS_DOT, "###...###...###...###...###...###...###...###...###...###..." },
             { PS_DASHDOT, "#########......###......#########......###......#########..." },
             { PS_DASHDOTDOT, "#########...###...###...#########...###...###...#########..." } }) {
        EXPECT_EQ(StyledRow(style, 0, 60, false), row);
        EXPECT_EQ(StyledRow(style, 59, -1, false), std::string(row.rbegin(), row.rend()));
        std::string filled = row;
        std::replace(filled.begin(), filled.end(), '.', 'o');
        EXPECT_EQ(StyledRow(style, 0, 60, true), filled);
    }
    EXPECT_EQ(StyledRow(PS_NULL, 0, 60, true), std::string(60, '.'));
    EXPECT_EQ(StyledRow(PS_INSIDEFRAME, 0, 60, true), std::string(60, '#'));
}

TEST(Lines, PatternRunsOnOverTheVerticesOfAPolyline)
{
    Picture bent(30, 3);
    bent.UsePen(PS_DASHDOT, 1);
    bent.DC().Polyline(Points { { 0, 0 }, { 20, 0 }, { 20, 2 }, { 10, 2 } });
    EXPECT_EQ(bent.Rows(),
        "#########......###............\n..............................\n...........########...........\n");
}

TEST(Lines, WidePensStampARoundDot)
{
    auto const drawn = [](int width, CPoint from, CPoint to) { return Drawn(8, 5, { from, to }, PS_DASH, width); };
    EXPECT_EQ(drawn(2, { 3, 3 }, { 3, 3 }), "........\n........\n..##....\n..##....\n........\n");
    EXPECT_EQ(drawn(3, { 2, 2 }, { 5, 2 }), "........\n..####..\n.######.\n..####..\n........\n");
    EXPECT_EQ(drawn(4, { 5, 2 }, { 3, 2 }), "..####..\n.######.\n.######.\n..####..\n........\n");
    EXPECT_EQ(drawn(5, { 3, 2 }, { 3, 2 }), "..###...\n.#####..\n.#####..\n.#####..\n..###...\n");
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
        ASSERT_EQ(whole.Pixels(), halves.Pixels()) << "round " << round;
        ASSERT_EQ(whole.Pixels(), larger.Pixels({ 50, 50, 90, 80 })) << "round " << round;
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
