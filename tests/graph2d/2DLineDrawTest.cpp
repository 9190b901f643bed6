#include "ombrel/foundation/GArray.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace ombrel {
namespace {

using Kind = RecordedPrimitive::Kind;
using test::AddLine;
using test::OfKind;
using test::Record;

constexpr CSize kSize(600, 450);

std::vector<RecordedPrimitive> Lines(std::vector<RecordedPrimitive> const& all) { return OfKind(all, Kind::Stroke); }

std::vector<RecordedPrimitive> Fills(std::vector<RecordedPrimitive> const& all) { return OfKind(all, Kind::Fill); }

CRect BoxOf(std::vector<CPoint> const& points)
{
    CRect box(points[0], CSize());
    for (CPoint const p : points)
        box = { std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y) };
    return box;
}

TEST(Line2D, DrawsNothingUnlessValid)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 0 }, { 1, 1 } });
    EXPECT_EQ(Lines(Record(graph, kSize)).size(), 1u);
    line.SetDataSourceType(CPlotComponent::dsFormula);
    graph.UpdatePlots();
    EXPECT_TRUE(Lines(Record(graph, kSize)).empty());
}

TEST(Line2D, StrokesWithItsColourWidthAndDashesInsideTheAxes)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { -5, -5 }, { 20, 20 } });
    graph.GetAxes()->SetXAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetYAxisRangeMode(CAxes::rmFixed);
    line.SetColour(RGB(10, 20, 30));
    line.SetLineWidth(3);
    line.SetLineType(3);
    line.SetAntialiasingOn(1);
    auto const strokes = Lines(Record(graph, kSize));
    ASSERT_EQ(strokes.size(), 1u);
    EXPECT_EQ(strokes[0].pen.colour.colour, RGB(10, 20, 30));
    EXPECT_EQ(strokes[0].pen.width, 3.0);
    EXPECT_EQ(strokes[0].pen.dashes, (std::vector<double> { 8, 2, 2, 2 }));
    EXPECT_TRUE(strokes[0].smooth);
    CRect const clip = graph.GetClipRect();
    EXPECT_EQ(strokes[0].clip.box, CRect(clip.left, clip.top, clip.right + 1, clip.bottom + 1));
    for (int const type : { 0, 6, -1, 1000000 }) {
        line.SetLineType(type);
        EXPECT_TRUE(Lines(Record(graph, kSize))[0].pen.dashes.empty()) << type;
    }
}

TEST(Line2D, GapsBreakTheLineAndStayOutOfTheRange)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 1, 2 }, { 2, kGap }, { 3, 4 }, { 4, std::nan("") }, { 5, 1 }, { 6, 3 } });
    auto const strokes = Lines(Record(graph, kSize));
    ASSERT_EQ(strokes.size(), 1u);
    // A single point between gaps draws nothing.
    EXPECT_EQ(strokes[0].points.size(), 4u);
    double min = 0;
    double max = 0;
    graph.GetYRange(min, max);
    EXPECT_EQ(min, 0.0);
    EXPECT_EQ(max, 4.0);
}

TEST(Line2D, ShadesBetweenCurveAndBaseline)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 4 }, { 2, -4 }, { 4, 4 } });
    line.SetFillOn(1);
    line.SetFillPattern(kSolidFillPattern);
    line.SetFillColour(RGB(0, 0, 255));
    line.SetAutoBaseline(0);
    line.SetBaseline(0.0);
    auto const whole = Fills(Record(graph, kSize));
    ASSERT_EQ(whole.size(), 1u);
    EXPECT_FALSE(whole[0].brush.hatchStyle);
    int const zero = graph.UnitsToWindow({ 0, 0 }).y;
    int const top = graph.UnitsToWindow({ 0, 4 }).y;
    int const bottom = graph.UnitsToWindow({ 0, -4 }).y;
    EXPECT_EQ(BoxOf(whole[0].points).top, top);
    EXPECT_EQ(BoxOf(whole[0].points).bottom, bottom);
    line.SetBaselineShadeMode(C2DLine::bsAbove);
    graph.SetModifiedFlag(1);
    EXPECT_EQ(BoxOf(Fills(Record(graph, kSize))[0].points).bottom, zero);
    line.SetBaselineShadeMode(C2DLine::bsBelow);
    EXPECT_EQ(BoxOf(Fills(Record(graph, kSize))[0].points).top, zero);

    line.SetBaselineShadeMode(C2DLine::bsBoth);
    line.SetUseFillRange(1);
    line.SetFillRange(0.5, 1.5);
    CRect const part = BoxOf(Fills(Record(graph, kSize))[0].points);
    EXPECT_EQ(part.left, graph.UnitsToWindow({ 0.5, 0 }).x);
    EXPECT_EQ(part.right, graph.UnitsToWindow({ 1.5, 0 }).x);
    EXPECT_EQ(part.top, graph.UnitsToWindow({ 0, 2 }).y) << "the end follows the curve's interpolated height";
    line.SetFillRange(5, 9);
    EXPECT_TRUE(Fills(Record(graph, kSize)).empty()) << "right of the data";
}

TEST(Line2D, ShadesEachGapFreeStretchAndTheClosedPolygon)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 1 }, { 1, 2 }, { 2, kGap }, { 3, 4 }, { 5, 1 } });
    line.SetFillOn(1);
    line.SetFillBoundaryOn(1);
    auto const primitives = Record(graph, kSize);
    auto const fills = Fills(primitives);
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(*fills[0].brush.hatchStyle, 3);
    EXPECT_EQ(fills[0].brush.background.alpha, 1);
    EXPECT_LT(BoxOf(fills[0].points).right, BoxOf(fills[1].points).left);
    line.SetShadeMode(C2DLine::shClosed);
    EXPECT_EQ(Fills(Record(graph, kSize)).size(), 1u);
    EXPECT_EQ(Fills(Record(graph, kSize))[0].points.size(), 4u);
}

TEST(Line2D, ShadingOfDenseDataCoversThePixelsOfAllItsPoints)
{
    auto const shaded = [](int points) {
        C2DGraph graph(1);
        std::vector<std::pair<double, double>> data;
        // Every further point lies on the line between two others, so the picture must not change.
        for (int i = 0; i <= points; ++i) {
            double const x = 8.0 * i / points;
            data.emplace_back(x, std::abs(x - 4.0));
        }
        C2DLine& line = AddLine(graph, data);
        line.SetFillOn(1);
        line.SetFillPattern(kSolidFillPattern);
        line.SetPointConnectionMode(C2DLine::cmNone);
        CDIB target(200, 150, 24);
        graph.Draw(target.GetDC(), { 0, 0, 200, 150 }, pmOffScreen);
        int black = 0;
        for (int y = 0; y < 150; ++y) {
            for (int x = 0; x < 200; ++x)
                black += target.GetDC()->GetPixel(x, y) == 0;
        }
        return black;
    };
    // The slanted edges round their corners to pixels: one pixel a column may differ.
    EXPECT_NEAR(shaded(2), shaded(20000), 200);
}

TEST(Line2D, MarksEachPointInsideTheAxesWithItsSymbol)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 0 }, { 5, 5 }, { 10, 10 }, { 50, 5 }, { 3, kGap } });
    line.SetPointConnectionMode(C2DLine::cmNone);
    graph.GetAxes()->SetXAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetYAxisRangeMode(CAxes::rmFixed);
    line.SetSymbolColour(RGB(200, 0, 0));
    struct Case {
        C2DSymbol::SymbolType type;
        Kind kind;
        int perSymbol;
    };
    for (Case const& c : { Case { C2DSymbol::Circle, Kind::Arc, 2 }, Case { C2DSymbol::Square, Kind::Polyline, 1 },
             Case { C2DSymbol::Triangle, Kind::Polyline, 1 }, Case { C2DSymbol::InvertedTriangle, Kind::Polyline, 1 },
             Case { C2DSymbol::Diamond, Kind::Polyline, 1 }, Case { C2DSymbol::Cross, Kind::Polyline, 2 },
             Case { C2DSymbol::Plus, Kind::Polyline, 2 }, Case { C2DSymbol::Pixel, Kind::SetPixel, 1 } }) {
        line.SetSymbolType(c.type);
        int marks = 0;
        for (RecordedPrimitive const& p : OfKind(Record(graph, kSize), c.kind))
            marks += c.kind == Kind::SetPixel || p.line.colour == RGB(200, 0, 0);
        EXPECT_EQ(marks, 3 * c.perSymbol) << c.type;
    }
    line.SetSymbolType(C2DSymbol::Square);
    CRect const extent = graph.GetAxes()->GetExtentRect();
    int const half = static_cast<int>(std::max(extent.Width(), extent.Height()) / 150.0 + 0.5);
    for (RecordedPrimitive const& p : OfKind(Record(graph, kSize), Kind::Polyline)) {
        if (p.line.colour == RGB(200, 0, 0)) {
            EXPECT_EQ(BoxOf(p.points).Width(), 2 * half);
        }
    }
}

TEST(Symbols, FillTheirShapesUnderTheirOutlines)
{
    struct Case {
        C2DSymbol::SymbolType type;
        std::vector<std::string> rows;
    };
    for (Case const& c :
        {
            Case { C2DSymbol::Square, { "#######", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#ooooo#", "#######" } },
            Case {
                C2DSymbol::Triangle, { "#######", "#oooo#.", ".#ooo#.", ".#oo#..", "..#o#..", "..##...", "...#..." } },
            Case {
                C2DSymbol::Diamond, { "...#...", "..#o#..", ".#ooo#.", "#ooooo#", ".#ooo#.", "..#o#..", "...#..." } },
            Case { C2DSymbol::Plus, { "...#...", "...#...", "...#...", "#######", "...#...", "...#...", "...#..." } },
            Case { C2DSymbol::Cross, { "#.....#", ".#...#.", "..#.#..", "...#...", "..#.#..", ".#...#.", "#.....#" } },
        }) {
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
