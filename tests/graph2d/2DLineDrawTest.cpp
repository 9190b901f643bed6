#include "ombrel/foundation/GArray.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

using test::OfKind;
using test::Record;

constexpr CSize kSize(600, 450);

TEST(Line2D, StrokesWithItsColourWidthAndDashesInsideTheAxes)
{
    C2DGraph graph(1);
    C2DLine& line = test::AddLine(graph, { { -5, -5 }, { 3, 3 }, { 20, 20 } });
    test::FixAxes(*graph.GetAxes(), 10, 10);
    line.SetColour(RGB(10, 20, 30));
    line.SetLineWidth(3);
    line.SetLineType(3);
    line.SetAntialiasingOn(1);
    auto const primitives = Record(graph, kSize);
    auto const strokes = OfKind<primitive::Stroke>(primitives);
    ASSERT_EQ(strokes.size(), 1u);
    EXPECT_EQ(strokes[0].pen.colour.colour, RGB(10, 20, 30));
    EXPECT_EQ(strokes[0].pen.width, 3.0);
    EXPECT_EQ(strokes[0].pen.dashes, (std::vector<double> { 8, 2, 2, 2 }));
    EXPECT_TRUE(strokes[0].smooth);
    CRect const clip = graph.GetClipRect();
    auto const isStroke = [](RecordedPrimitive const& p) { return p.As<primitive::Stroke>() != nullptr; };
    EXPECT_EQ(std::ranges::find_if(primitives, isStroke)->clip.box,
        CRect(clip.left, clip.top, clip.right + 1, clip.bottom + 1));
    line.SetFillOn(1);
    auto const fills = test::FillsOver(Record(graph, kSize));
    ASSERT_EQ(fills.size(), 1u);
    EXPECT_EQ(fills[0].brush.hatchStyle, 3);
    EXPECT_EQ(fills[0].brush.background.alpha, 1) << "all but transparent";
    for (int const type : { 0, 6, -1, 1000000 }) {
        line.SetLineType(type);
        EXPECT_TRUE(OfKind<primitive::Stroke>(Record(graph, kSize))[0].pen.dashes.empty()) << type;
    }
}

TEST(Symbols, FillTheirShapesUnderTheirOutlines)
{
    struct Case {
        C2DSymbol::SymbolType type;
        std::vector<std::string> rows;
    };
    Case const cases[] = {
        { C2DSymbol::Square, { "#######", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#######" } },
        { C2DSymbol::Triangle, { "#######", "#oooo#.", ".#ooo#.", ".#oo#..", "..#o#..", "..##...", "...#..." } },
        { C2DSymbol::Diamond, { "...#...", "..#o#..", ".#ooo#.", "#ooooo#", ".#ooo#.", "..#o#..", "...#..." } },
        { C2DSymbol::InvertedTriangle,
            { "...#...", "..##...", "..#o#..", ".#oo#..", ".#ooo#.", "#oooo#.", "#######" } },
        { C2DSymbol::Circle, { ".......", "..###..", ".#ooo#.", ".#ooo#.", ".#ooo#.", "..###..", "......." } },
        { C2DSymbol::Pixel, { "#......", ".......", ".......", ".......", ".......", ".......", "......." } },
        { C2DSymbol::None, { ".......", ".......", ".......", ".......", ".......", ".......", "......." } },
        { C2DSymbol::Plus, { "...#...", "...#...", "...#...", "#######", "...#...", "...#...", "...#..." } },
        { C2DSymbol::Cross, { "#.....#", ".#...#.", "..#.#..", "...#...", "..#.#..", ".#...#.", "#.....#" } },
    };
    for (Case const& c : cases) {
        CDIB bitmap(9, 9, 24);
        CDC& dc = *bitmap.GetDC();
        dc.FillSolidRect({ 0, 0, 9, 9 }, 0xFFFFFF);
        CBrush brush(RGB(0, 0, 255));
        dc.SelectObject(&brush);
        CPort port;
        port.Set(&dc, { 0, 0, 9, 9 }, { 0, 0, 9, 9 }, CRealRect({ 0, 9 }, { 9, 0 }));
        C2DSymbol::DrawSymbol(c.type, &port, { 1, 1, 7, 7 }, 0, 1, RGB(0, 0, 255));
        for (int y = 0; y < 7; ++y) {
            std::string row;
            for (int x = 0; x < 7; ++x) {
                COLORREF const pixel = dc.GetPixel(x + 1, y + 1);
                row += pixel == 0 ? '#' : pixel == RGB(0, 0, 255) ? 'o' : '.';
            }
            EXPECT_EQ(row, c.rows[static_cast<std::size_t>(y)]) << "type " << c.type << " row " << y;
        }
    }
}

} // namespace
} // namespace ombrel
