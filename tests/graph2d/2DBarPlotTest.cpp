#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/paths/BarPainter.h"
#include "tests/graph2d/GraphFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace ombrel {
namespace {

using Kind = RecordedPrimitive::Kind;
using test::OfKind;
using test::Record;

constexpr CSize kSize(600, 450);
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr COLORREF kBorder = RGB(200, 0, 0);
constexpr COLORREF kAxes = RGB(0, 0, 200);

/// A table curve of the plot's kind at x = 1, 2, … unless told otherwise.
template <typename Curve = C2DCurve>
Curve& AddCurve(CPlot& plot, std::vector<double> const& ys, std::vector<double> const& xs = {})
{
    auto& curve = static_cast<Curve&>(*plot.CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.Initialise(static_cast<int>(ys.size()));
    for (std::size_t i = 0; i < ys.size(); ++i)
        curve.SetAt(static_cast<int>(i), { i < xs.size() ? xs[i] : static_cast<double>(i + 1), ys[i] });
    return curve;
}

template <typename Plot> Plot& AddPlot(C2DGraph& graph, ItemType type)
{
    auto& plot = static_cast<Plot&>(*graph.AddPlot(type));
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(&plot))
        series->SetXValueMode(1);
    return plot;
}

CRect Device(C2DGraph const& graph, double left, double top, double right, double bottom)
{
    CPoint const from = graph.UnitsToWindow({ left, top });
    CPoint const to = graph.UnitsToWindow({ right, bottom });
    return { from.x, from.y, to.x, to.y };
}

TEST(BarWidth, IsTheSmallestDistanceBetweenNeighbours)
{
    struct Case {
        std::vector<double> xs;
        double width;
    };
    for (Case const& c : { Case { { 1, 2, 4 }, 1 }, Case { { 4, 2.5, 0.5 }, 1.5 }, Case { { 1, 1, 3 }, 0 },
             Case { { 7 }, 1 }, Case { {}, 1 }, Case { { 1, kGap, 4, std::nan(""), kInfinity, 6 }, 2 } })
        EXPECT_EQ(MaxBarWidthOfPoints(c.xs), c.width) << testing::PrintToString(c.xs);
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 11), static_cast<double>(0.1f));
    EXPECT_EQ(MaxBarWidthOfMesh(0, 1, 1), 1.0);
    EXPECT_TRUE(std::isfinite(MaxBarWidthOfMesh(-kMostReal, kMostReal, 3)));
}

TEST(BarCurve, WidensItsRangesForTheBars)
{
    C2DGraph graph(1);
    auto& plot = AddPlot<C2DBarPlot>(graph, it2DBarPlot);
    auto& curve = AddCurve<C2DBarCurve>(plot, { 2, 8, 5 }, { 1, 2, 4 });
    graph.UpdatePlots();
    double min = 0;
    double max = 0;
    plot.GetXRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(0.75, 4.25));
    EXPECT_EQ(curve.GetBarWidth(), 0.5);
    plot.GetYRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(2 - 0.06, 8.0)) << "room below a minimum that is not 0";
    curve.SetAutoBaseline(0);
    curve.SetBaseline(-5);
    plot.GetYRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(-5.0, 8.0));
}

TEST(BarCurve, FillsAndOutlinesABarAtEachPointThatIsNoGap)
{
    C2DGraph graph(1);
    auto& curve = AddCurve<C2DBarCurve>(AddPlot<C2DBarPlot>(graph, it2DBarPlot), { 4, -2, kGap, 20 });
    graph.UpdatePlots();
    CAxes& axes = *graph.GetAxes();
    axes.SetYAxisRangeMode(CAxes::rmFixed);
    axes.SetYAxisMin(-5);
    axes.SetYAxisMax(10);
    axes.SetIntersectMode(1);
    axes.SetIntersect({ 0, 0 });
    axes.SetColour(kAxes);
    curve.SetColour(RGB(1, 2, 3));
    curve.SetBorderColour(kBorder);
    curve.SetFillPattern(25);
    auto const primitives = Record(graph, kSize);
    std::vector<CRect> const bars { Device(graph, 0.75, 4, 1.25, 0), Device(graph, 1.75, 0, 2.25, -2),
        Device(graph, 3.75, 10, 4.25, 0) };
    auto const fills = OfKind(primitives, Kind::Fill);
    ASSERT_EQ(fills.size(), bars.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        EXPECT_EQ(fills[i].rect, bars[i]);
        EXPECT_EQ(*fills[i].brush.hatchStyle, 25);
        EXPECT_EQ(fills[i].brush.background.colour, RGB(255, 255, 255));
        EXPECT_EQ(fills[i].brush.background.alpha, 255);
        CPoint const onAxis[] { { bars[i].right, i == 1 ? bars[i].top : bars[i].bottom },
            { bars[i].left, i == 1 ? bars[i].top : bars[i].bottom } };
        auto const isOnAxis = [&](RecordedPrimitive const& p) {
            return p.line.colour == kAxes && std::is_permutation(p.points.begin(), p.points.end(), onAxis, onAxis + 2);
        };
        EXPECT_EQ(std::count_if(primitives.begin(), primitives.end(), isOnAxis), 1) << "bar " << i;
    }
    curve.SetFillPattern(kSolidFillPattern);
    EXPECT_FALSE(OfKind(Record(graph, kSize), Kind::Fill)[0].brush.hatchStyle);
    CRect outside(-10, -10, -5, -5);
    EXPECT_FALSE(curve.GetActualRect(outside));
    EXPECT_EQ(outside, CRect(-10, -10, -5, -5));
}

struct TestBar {
    double x;
    double from;
    double to;
};

/// In turn.
constexpr COLORREF kFills[] { RGB(0, 160, 0), RGB(160, 160, 0) };

/// Draws bars one by one, and their outlines side by side.
void DrawPlainly(
    CPort& port, C2DGraph const& graph, std::vector<TestBar> const& bars, double width, COLORREF borderColour)
{
    CDC& dc = *port.GetDC();
    VectorGraphics graphics(dc);
    CRect const axesRect = graph.GetAxesRect();
    CPoint const crossing = port.UnitsToWindow(graph.GetAxes()->GetIntersect());
    int const penWidth = std::max(1, dc.GetDeviceCaps(LOGPIXELSX) / 96);
    for (std::size_t i = 0; i < bars.size(); ++i) {
        TestBar const& bar = bars[i];
        COLORREF const border = borderColour == kOwnColour ? kFills[i % 2] : borderColour;
        CPoint const topLeft = port.UnitsToWindow(CRealPoint(bar.x - width / 2, std::max(bar.from, bar.to)));
        CPoint const bottomRight = port.UnitsToWindow(CRealPoint(bar.x + width / 2, std::min(bar.from, bar.to)));
        CRect r(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
        if (!BarPainter::ClipToAxes(r, axesRect))
            continue;
        r.right = std::min(r.right, axesRect.right);
        r.bottom = std::min(r.bottom, axesRect.bottom);
        graphics.FillRectangle(VectorBrush::Solid(kFills[i % 2]), r.left, r.top, r.Width(), r.Height());
        auto const side = [&](CPoint a, CPoint b, bool onAxis) {
            CPen pen(PS_SOLID, penWidth, onAxis ? kAxes : border);
            dc.SelectObject(&pen);
            dc.MoveTo(a);
            dc.LineTo(b);
        };
        side({ r.left, r.top }, { r.right, r.top }, r.top == crossing.y);
        side({ r.right, r.top }, { r.right, r.bottom }, r.right == crossing.x);
        side({ r.right, r.bottom }, { r.left, r.bottom }, r.bottom == crossing.y);
        side({ r.left, r.bottom }, { r.left, r.top }, r.left == crossing.x);
    }
}

std::vector<COLORREF> Pixels(std::vector<RecordedPrimitive> const& primitives, CSize size)
{
    CDIB bitmap(size.cx, size.cy, 24);
    for (RecordedPrimitive const& p : primitives)
        Replay(p, {}, bitmap.GetDC()->GetSurface(), p.clip);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x)
            pixels.push_back(bitmap.GetDC()->GetPixel(x, y));
    }
    return pixels;
}

TEST(BarPainter, GivesThePixelsOfBarsDrawnPlainlyHoweverThinTheyAre)
{
    constexpr CSize kSmall(160, 120);
    C2DGraph graph(1);
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetYAxisRangeMode(CAxes::rmFixed);
    axes.SetXAxisMin(-5);
    axes.SetXAxisMax(5);
    axes.SetYAxisMin(-9);
    axes.SetYAxisMax(9);
    axes.SetIntersectMode(1);
    axes.SetIntersect({ 0, 0 });
    axes.SetColour(kAxes);
    Record(graph, kSmall);
    std::mt19937 random(7);
    // Some reach beyond the axes, some have no height, some stand on the x axis and some hang in the air.
    std::uniform_real_distribution<> anyX(-5.2, 5.2);
    std::uniform_real_distribution<> anyY(-12, 12);
    for (int const count : { 20, 70, 300, 3000 }) {
        std::vector<TestBar> bars;
        for (int i = 0; i < count; ++i) {
            double const y = anyY(random);
            bars.push_back({ anyX(random), y, i % 3 == 0 ? 0.0 : i % 11 == 5 ? y : y + 0.1 * anyY(random) });
        }
        for (auto const& [resolution, border] : { std::pair(96, kBorder), std::pair(288, kBorder),
                 std::pair(96, kOwnColour), std::pair(288, kOwnColour) }) {
            DeviceCapabilities capabilities;
            capabilities.logPixelsX = capabilities.logPixelsY = resolution;
            auto const gathered = std::make_shared<RecordingSurface>(kSmall, capabilities);
            auto const plain = std::make_shared<RecordingSurface>(kSmall, capabilities);
            CDC gatheredDC(gathered);
            CDC plainDC(plain);
            CPort gatheredPort(&gatheredDC, {}, graph.GetAxesRect(), graph.GetAxesRealRect());
            CPort plainPort(&plainDC, {}, graph.GetAxesRect(), graph.GetAxesRealRect());
            double const width = 5.0 / count;
            {
                BarPainter painter(gatheredPort, graph, border);
                for (std::size_t i = 0; i < bars.size(); ++i)
                    painter.Paint(bars[i].x, width, bars[i].from, bars[i].to, VectorBrush::Solid(kFills[i % 2]));
            }
            DrawPlainly(plainPort, graph, bars, width, border);
            EXPECT_EQ(Pixels(gathered->Primitives(), kSmall), Pixels(plain->Primitives(), kSmall))
                << count << " bars at " << resolution << " to the inch";
            if (count == 3000 && border == kBorder) {
                EXPECT_LT(gathered->Primitives().size(), plain->Primitives().size() / 4) << "fewer lines";
            }
        }
    }
}

TEST(ClusteredBars, StandSideBySideOnZero)
{
    C2DGraph graph(1);
    auto& plot = AddPlot<C2DClusteredBarPlot>(graph, it2DClusteredBarPlot);
    for (double const y : { 3.0, -1.0, 2.0 })
        AddCurve(plot, { y, y, kGap }, { 10, 11, 12 });
    graph.UpdatePlots();
    auto const fills = OfKind(Record(graph, kSize), Kind::Fill);
    ASSERT_EQ(fills.size(), 6u);
    EXPECT_EQ(fills[0].rect, Device(graph, 9.7, 3, 9.9, 0));
    EXPECT_EQ(fills[1].rect, Device(graph, 9.9, 0, 10.1, -1));
    EXPECT_EQ(fills[2].rect, Device(graph, 10.1, 2, 10.3, 0));
    double min = 0;
    double max = 0;
    plot.GetXRange(min, max);
    EXPECT_NEAR(min, 9.7, 1e-12);
    EXPECT_NEAR(max, 11.3, 1e-12) << "a point of gaps alone widens nothing";
}

TEST(StackedBars, ListTheirPiecesFromTheLowerEndOn)
{
    struct Case {
        int style;
        int scaled;
        std::array<double, 3> values;
        double base;
        std::vector<double> heights;
        std::vector<COLORREF> curves;
        double min;
        double max;
    };
    for (Case const& c : {
             Case { 0, 0, { 3, -2, 5 }, -2, { 2, 3, 5 }, { 1, 0, 2 }, -2, 8 },
             Case { 0, 0, { -3, -2, 5 }, -5, { 2, 3, 5 }, { 1, 0, 2 }, -5, 5 },
             Case { 1, 0, { 3, -2, 5 }, -20, { 20, 30, 50 }, { 1, 0, 2 }, -20, 80 },
             Case { 1, 0, { -1, -2, -5 }, 0, { 62.5, 25, 12.5 }, { 2, 1, 0 }, 0, 100 },
             Case { 1, 0, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, 0, 100 },
             Case { 0, 1, { 3, -2, 5 }, -0.8, { 0.8, 1.2, 2 }, { 1, 0, 2 }, -2, 8 },
             Case { 0, 1, { 0, 0, 0 }, 0, { 0, 0, 0 }, { 0, 1, 2 }, 0, 0 },
             Case { 1, 1, { 3, kGap, 1 }, 0, { 3, 1 }, { 0, 2 }, 0, 100 },
             Case { 0, 0, { -kMostReal, kMostReal, kMostReal }, -kMostReal, { kMostReal, kMostReal, kMostReal },
                 { 0, 1, 2 }, -kMostReal, kMostReal },
         }) {
        C2DGraph graph(1);
        auto& plot = AddPlot<C2DStackedBarPlot>(graph, it2DStackedBarPlot);
        plot.SetPlotStyle(c.style);
        plot.SetScaleStacksOn(c.scaled);
        plot.SetStackTotal(4);
        for (COLORREF k = 0; k < 3; ++k)
            AddCurve(plot, { c.values[k] }).SetColour(k);
        // A curve that is not valid takes no part.
        plot.CreateCurve();
        graph.UpdatePlots();
        double base = 0;
        double heights[4];
        COLORREF colours[4];
        int patterns[4];
        auto const n = static_cast<std::size_t>(plot.GetStackedBars(0, base, heights, colours, patterns));
        std::string const message = testing::PrintToString(c.values) + " style " + std::to_string(c.style);
        ASSERT_EQ(n, c.heights.size()) << message;
        EXPECT_DOUBLE_EQ(base, c.base) << message;
        for (std::size_t k = 0; k < n; ++k) {
            EXPECT_DOUBLE_EQ(heights[k], c.heights[k]) << message;
            EXPECT_EQ(colours[k], c.curves[k]) << message;
        }
        double min = 1;
        double max = 1;
        plot.GetYRange(min, max);
        EXPECT_DOUBLE_EQ(min, c.min) << message;
        EXPECT_DOUBLE_EQ(max, c.max) << message;
        EXPECT_EQ(plot.GetStackedBars(1, base, heights, colours, patterns), 0) << "beyond the points";
    }
}

TEST(StackedBars, LieOnTopOfEachOtherWithoutASeam)
{
    C2DGraph graph(1);
    auto& plot = AddPlot<C2DStackedBarPlot>(graph, it2DStackedBarPlot);
    for (double const y : { 0.3, -0.2, 0.7, 0.1 })
        AddCurve(plot, { y, 1.0 });
    graph.UpdatePlots();
    auto const fills = OfKind(Record(graph, kSize), Kind::Fill);
    ASSERT_EQ(fills.size(), 8u);
    EXPECT_EQ(fills[0].rect, Device(graph, 0.75, 0, 1.25, -0.2));
    for (std::size_t k = 1; k < 4; ++k)
        EXPECT_EQ(fills[k].rect.bottom, fills[k - 1].rect.top);
    EXPECT_EQ(fills[3].rect.top, graph.UnitsToWindow({ 1, 1.1 }).y);
    double min = 0;
    double max = 0;
    plot.GetXRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(0.75, 2.25));
    plot.SetNoRangeMargin(1);
    plot.GetXRange(min, max);
    EXPECT_EQ(std::make_pair(min, max), std::make_pair(1.0, 2.0));
}

TEST(Bars, OfAnyDataStayInsideTheAxes)
{
    std::vector<std::pair<std::vector<double>, std::vector<double>>> const data {
        { {}, {} },
        { { 5 }, { 1 } },
        { { kGap, std::nan("") }, { 1, 2 } },
        { { 1, 2, 3 }, { 2, 2, 2 } },
        { { 1, 2, 3 }, { 3, 2, 1 } },
        { { kMostReal, -kMostReal, 1e300 }, { -kMostReal, 0, kMostReal } },
        { { kInfinity, -kInfinity, 1 }, { 1, std::nan(""), kInfinity } },
    };
    for (ItemType const type : { it2DBarPlot, it2DClusteredBarPlot, it2DStackedBarPlot }) {
        for (auto const& [ys, xs] : data) {
            for (double const factor : { 0.5, 0.0, -3.0, 1e300, kInfinity, std::nan("") }) {
                C2DGraph graph(1);
                auto& plot = AddPlot<C2DPlot>(graph, type);
                auto& first = AddCurve(plot, ys, xs);
                AddCurve(plot, { -1, 4 });
                if (auto* const bars = DynamicDowncast<C2DBarCurve>(&first))
                    bars->SetBarWidthFactor(factor);
                if (auto* const clusters = DynamicDowncast<C2DClusteredBarPlot>(&plot))
                    clusters->SetBarWidthFactor(factor);
                if (auto* const stacks = DynamicDowncast<C2DStackedBarPlot>(&plot))
                    stacks->SetBarWidthFactor(factor);
                graph.UpdatePlots();
                // As in a damaged document: fewer points than the plot and the other curves have.
                static_cast<C2DCurve&>(*plot.GetComponent(1)).Initialise(1);
                auto const primitives = Record(graph, kSize);
                CRect const axes = graph.GetAxesRect();
                for (RecordedPrimitive const& p : OfKind(primitives, Kind::Fill)) {
                    CRect common;
                    EXPECT_TRUE(common.IntersectRect(p.rect, axes) && common == p.rect);
                }
            }
        }
    }
}

TEST(Bars, StoreTheirSettingsLast)
{
    auto const endsWith = [](CObject& object, test::Bytes const& expected) {
        CMemFile file;
        CArchive ar(&file, CArchive::store);
        object.Serialize(ar);
        ar.Close();
        std::vector<std::byte> const all = file.GetBytes();
        std::vector<std::byte> const& end = expected.Get();
        return all.size() > end.size() && std::equal(end.rbegin(), end.rend(), all.rbegin());
    };
    C2DBarCurve curve;
    curve.SetBarWidthFactor(0.25);
    curve.SetBaseline(-2);
    curve.SetAutoBaseline(0);
    curve.SetBorderColour(7);
    curve.SetFillPattern(19);
    EXPECT_TRUE(endsWith(curve, test::Bytes().Int(1).Double(1, 0.25, -2).Int(0, 7, 19)));
    C2DClusteredBarPlot clusters;
    EXPECT_TRUE(endsWith(clusters, test::Bytes().Int(1).Double(1, 0.6, 0).Int(1, 0)));
    C2DStackedBarPlot stacks;
    stacks.SetNoRangeMargin(2);
    stacks.SetScaleStacksOn(3);
    stacks.SetStackTotal(4.5);
    stacks.SetPlotStyle(1);
    EXPECT_TRUE(endsWith(stacks, test::Bytes().Int(1).Double(1, 0.5, 0).Int(1, 0, 2, 3).Double(4.5).Int(1)));
}

} // namespace
} // namespace ombrel
