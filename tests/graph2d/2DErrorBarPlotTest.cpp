#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {
namespace {

using test::OfKind;
using test::Record;

constexpr CSize kSize(1000, 600);
constexpr COLORREF kColour = RGB(1, 2, 3);

void FixAxes(C2DGraph& graph, double maxX, double maxY)
{
    graph.GetAxes()->SetXAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetYAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetRange(CAxes::atX, 0, maxX);
    graph.GetAxes()->SetRange(CAxes::atY, 0, maxY);
}

C2DErrorBarCurve& AddBars(C2DGraph& graph, CDoubleArray const& xs, CDoubleArray const& ys, CDoubleArray const& heights)
{
    auto& curve = static_cast<C2DErrorBarCurve&>(*graph.AddPlot(it2DErrorBarPlot)->CreateCurve());
    curve.SetPoints(&xs, &ys, &heights, std::min(xs.GetSize(), heights.GetSize()));
    curve.SetColour(kColour);
    return curve;
}

/// What the bars drew: an upright line and two caps each.
std::vector<primitive::Polyline> Bars(C2DGraph& graph)
{
    auto lines = OfKind<primitive::Polyline>(Record(graph, kSize));
    std::erase_if(lines, [](primitive::Polyline const& p) { return p.line.colour != kColour; });
    return lines;
}

TEST(ErrorBars, LeaveOutWhatIsMissing)
{
    double const nan = std::nan("");
    struct Case {
        CDoubleArray xs;
        CDoubleArray heights;
        std::size_t bars;
    };
    Case const cases[] = {
        { { 1, 2, 3, 4, 5 }, { 1, 1, 1 }, 3 },
        { { 1, kGap, 3, nan }, { 1, 1, nan, 1 }, 1 },
        { { 2, 2, 2 }, { 0, 0, 0 }, 3 },
        { { 1, 2 }, { 1e308, 1e-308 }, 2 },
        { {}, { 1 }, 0 },
        { { 1 }, {}, 0 },
    };
    for (Case const& c : cases) {
        C2DGraph graph(1);
        C2DErrorBarCurve& curve = AddBars(graph, {}, {}, {});
        FixAxes(graph, 10, 10);
        curve.C2DCurve::SetPoints(&c.xs, &c.xs, c.xs.GetSize());
        curve.GetHeights() = c.heights;
        for (double const factor : { 1.0, 0.0, -1.0, nan, 1e308 }) {
            curve.SetScaleFac(factor);
            auto const lines = Bars(graph);
            EXPECT_LE(lines.size(), 3 * c.bars);
            EXPECT_GE(lines.size(), c.bars);
        }
    }
}

TEST(ErrorBars, ReachHalfTheirHeightInDecadesOnALogarithmicAxis)
{
    C2DGraph graph(1);
    test::AddLine(graph, { { 0, 1 }, { 2, 10000 } });
    AddBars(graph, { 1 }, { 100 }, { 2 });
    graph.GetAxes()->SetYAxisScaleMode(1);
    auto const lines = Bars(graph);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NEAR(lines[0].points[0].y, graph.UnitsToWindow({ 1, 1 }).y, 1);
    EXPECT_NEAR(lines[0].points[1].y, graph.UnitsToWindow({ 1, 3 }).y, 1);
}

TEST(ErrorBarsAndTexts, ChangeNothingWhenAnArrayIsTooShort)
{
    CDoubleArray const three { 1, 2, 3 };
    CDoubleArray const two { 1, 2 };
    CGStringArray texts;
    texts.SetSize(2);
    C2DErrorBarCurve bars;
    C2DTextCurve text;
    bars.SetPoints(&three, &three, &two, 3);
    text.SetPoints(&three, &three, &texts, 3);
    EXPECT_EQ(bars.GetNumPoints() + bars.GetHeights().GetSize() + text.GetNumPoints() + text.GetText().GetSize(), 0);
    bars.SetPoints(&three, &three, &two, 2);
    text.SetPoints(&three, &three, &texts, 2);
    EXPECT_EQ(bars.GetHeights(), two);
    EXPECT_EQ(bars.GetNumPoints() + text.GetNumPoints() + text.GetText().GetSize(), 6);
    EXPECT_FALSE(bars.GetLegendEntry() || text.GetLegendEntry());
}

TEST(Texts, AreAlignedAtTheirPoints)
{
    using A = C2DTextCurve;
    struct Case {
        A::Alignment vertical;
        A::Alignment horizontal;
        CPoint plain;
        CPoint turned;
    };
    // Of a text 31 wide and 15 high at (100, 100).
    Case const cases[] = {
        { A::alBottom, A::alLeft, { 100, 85 }, { 100, 100 } },
        { A::alBottom, A::alRight, { 69, 85 }, { 85, 100 } },
        { A::alBottom, A::alCentre, { 85, 85 }, { 93, 100 } },
        { A::alTop, A::alLeft, { 100, 100 }, { 100, 131 } },
        { A::alTop, A::alRight, { 69, 100 }, { 85, 131 } },
        { A::alTop, A::alCentre, { 85, 100 }, { 93, 131 } },
        { A::alCentre, A::alLeft, { 100, 93 }, { 100, 115 } },
        { A::alCentre, A::alRight, { 69, 93 }, { 85, 115 } },
        { A::alCentre, A::alCentre, { 85, 93 }, { 93, 115 } },
    };
    C2DTextCurve curve;
    for (Case const& c : cases) {
        curve.SetVertAlignment(c.vertical);
        curve.SetHorzAlignment(c.horizontal);
        for (int const turned : { 0, 1 }) {
            curve.SetRotate(turned);
            EXPECT_EQ(curve.GetTextPosParams({ 100, 100 }, { 31, 15 }), turned ? c.turned : c.plain)
                << c.vertical << c.horizontal;
        }
    }
}

TEST(Texts, AreWrittenAtPointsInsideInTheSizeOfLabels)
{
    C2DGraph graph(1);
    auto& curve = static_cast<C2DTextCurve&>(*graph.AddPlot(it2DTextPlot)->CreateCurve());
    EXPECT_EQ(curve.GetColour(), 0u);
    FixAxes(graph, 10, 10);
    CDoubleArray const xs { 0, 5, kGap, 5, 11, 7 };
    curve.C2DCurve::SetPoints(&xs, &xs, 6);
    curve.SetText({ "#edge", "#middle", "#gap", "", "#outside" });
    curve.SetColour(kColour);
    curve.SetVertAlignment(C2DTextCurve::alTop);
    std::vector<primitive::Text> texts;
    int labelHeight = 0;
    for (auto const& p : OfKind<primitive::Text>(Record(graph, kSize))) {
        if (p.text.GetLength() > 0 && p.text.GetAt(0) == u'#')
            texts.push_back(p);
        else
            labelHeight = std::max<int>(labelHeight, p.font.lfHeight);
    }
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].text, CString("#edge"));
    EXPECT_EQ(texts[1].at, graph.UnitsToWindow({ 5, 5 }));
    EXPECT_EQ(texts[1].colour, kColour);
    EXPECT_FALSE(texts[1].cellColour) << "what lies behind a text shows";
    EXPECT_EQ(texts[1].font.lfHeight, labelHeight);
}

} // namespace
} // namespace ombrel
