#include "ombrel/annotation/Caption.h"
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace ombrel {
namespace {

using test::AddLine;
using test::OfKind;
using test::Record;

constexpr CRect kWindow(0, 0, 400, 300);

TEST(Graph2D, HasItsStandardComponentsInOrder)
{
    C2DGraph graph(1);
    CGraphComponent const* const expected[] = { graph.GetGrid(), graph.GetAxes(), graph.GetPolarGrid(),
        graph.GetLegend(), graph.GetColourKeyArray(), graph.GetCaptionArray(), graph.GetPlotArray() };
    ASSERT_EQ(graph.GetNumComponents(), 7);
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(graph.GetComponent(i), expected[i]);
        EXPECT_EQ(graph.GetComponent(i)->GetTag(), static_cast<unsigned long>(i + 1));
    }
    EXPECT_EQ(graph.AddPlot(it2DLinePlot)->GetTag(), 8u);
    EXPECT_EQ(graph.AddPlot(it2DLine), nullptr);
    EXPECT_EQ(graph.AddPlot(itSurfacePlot), nullptr);
    EXPECT_TRUE(graph.CanHaveLogScale());

    CAxes* const own = graph.GetAxes();
    CAxes other(&graph);
    other.SetXAxisTitle("Other");
    graph.ReplaceAxes(&other);
    EXPECT_TRUE(graph.GetAxes() == own && own->GetTag() == 2 && own->GetXAxisTitle() == "Other");
}

TEST(Graph2D, FitsTheAxesWithTheirLabelsIntoTheGraphRectangle)
{
    for (CSize const size : { CSize(1200, 900), CSize(200, 600), CSize(90, 60) }) {
        C2DGraph graph(1);
        AddLine(graph, { { -1234.5, -98765 }, { 99999, 12345678 } });
        graph.GetAxes()->SetXAxisTitle("Time since the start, s");
        graph.GetAxes()->SetYAxisTitle("Height");
        Record(graph, size);
        CRect const graphRect = graph.GetGraphRect();
        CRect const extent = graph.GetAxesExtent();
        CRect common;
        EXPECT_TRUE(common.IntersectRect(graphRect, extent) && common == extent);
        EXPECT_EQ(graph.GetAxes()->GetExtentRect(), extent) << "measuring and drawing agree";
    }
    C2DGraph tiny(1);
    tiny.GetAxes()->SetYAxisTitle("too large");
    tiny.GetAxes()->SetXAxisTitle("too large");
    Record(tiny, { 2, 2 });
    EXPECT_GE(std::min(tiny.GetAxesRect().Width(), tiny.GetAxesRect().Height()), 1);
    C2DGraph placed(1);
    placed.SetInitialNormalisedRect({ 0.1, 0.2 }, { 0.5, 0.6 });
    Record(placed, { 400, 300 });
    EXPECT_EQ(placed.GetGraphRect(), CRect(40, 60, 240, 240));
    EXPECT_EQ(placed.GetAxesExtent(), placed.GetGraphRect());
    auto const keyFrame = placed.GetAnnotationFrame(AnnotationKind::ColourKey, kWindow);
    EXPECT_EQ(keyFrame->reference, placed.GetGraphRect());
    EXPECT_EQ(keyFrame->textArea, kWindow);
}

TEST(Graph2D, TakesTheRangeOfThePlotsThatReportOne)
{
    C2DGraph graph(1);
    EXPECT_EQ(test::XRange(graph), std::make_pair(0.0, 0.0));
    graph.AddPlot(it2DLinePlot);
    EXPECT_EQ(test::YRange(graph), std::make_pair(0.0, 0.0));
    AddLine(graph, { { 3, -9 }, { 4, -8 } });
    AddLine(graph, { { 5, -7 }, { 2, -8 } });
    graph.AddPlot(it2DBarPlot);
    EXPECT_GT(graph.GetDataSize(), 0);
    EXPECT_EQ(test::XRange(graph), std::make_pair(2.0, 5.0));
    EXPECT_EQ(test::YRange(graph), std::make_pair(-9.0, -7.0));
    // Where 1 is lost beside a value, the range is widened by a part of it.
    C2DGraph huge(1);
    AddLine(huge, { { 1e20, 0 }, { 1e20, 1 } });
    double min = 0.0;
    double max = 0.0;
    huge.GetAxes()->GetRange(CAxes::atX, CAxes::rmExact, min, max);
    EXPECT_EQ(CRealPoint(min, max), CRealPoint(1e20 - 1e14, 1e20 + 1e14));
}

std::vector<COLORREF> StrokeColours(C2DGraph& graph)
{
    std::vector<COLORREF> colours;
    for (auto const& p : OfKind<primitive::Stroke>(Record(graph, kWindow.Size())))
        colours.push_back(p.pen.colour.colour);
    return colours;
}

TEST(Graph2D, DrawsGridAxesAndCurvesInTheDefaultOrTheUsersOrder)
{
    C2DGraph graph(1);
    C2DLine& first = AddLine(graph, { { 0, 0 }, { 1, 1 } });
    C2DLine& second = AddLine(graph, { { 0, 1 }, { 1, 0 } });
    first.SetColour(RGB(1, 0, 0));
    second.SetColour(RGB(2, 0, 0));
    CDWordArray tags;
    graph.GetDefaultDrawOrderTags(tags);
    EXPECT_EQ(tags, (CDWordArray { 1, 2, 9, 10 }));
    graph.SetDrawOrderTags(tags);
    EXPECT_EQ(StrokeColours(graph), (std::vector<COLORREF> { RGB(1, 0, 0), RGB(2, 0, 0) }));
    graph.SetDrawOrderTags({ 10, 77, 9, 10, 9 });
    EXPECT_EQ(StrokeColours(graph), (std::vector<COLORREF> { RGB(2, 0, 0), RGB(1, 0, 0) }));
    graph.GetDrawOrderTags(tags);
    EXPECT_EQ(tags, (CDWordArray { 10, 9, 1, 2 })) << "unknown tags and repeated ones go, new ones come last";
    ASSERT_TRUE(graph.RemovePlotComponent(&second));
    delete &second;
    EXPECT_EQ(StrokeColours(graph).size(), 1u);
    AddLine(graph, { { 0, 1 }, { 1, 0 } }).SetTag(5);
    graph.ResetDrawOrderTags();
    EXPECT_EQ(StrokeColours(graph), (std::vector<COLORREF> { RGB(255, 0, 0), RGB(1, 0, 0) })) << "by tag";
    EXPECT_EQ(graph.GetPlotArray()->GetAt(0)->GetComponent(1), &first);
    graph.ResetDrawOrderTags();
    graph.GetDrawOrderTags(tags);
    EXPECT_EQ(tags, (CDWordArray { 1, 2 }));
}

TEST(Graph2D, DrawsThePolarGridAfterTheAxesOrWhereTheUsersOrderHasIt)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 1, 1 } });
    graph.GetPolarGrid()->SetOn(1);
    auto const inOrder = Record(graph, kWindow.Size());
    EXPECT_EQ(graph.GetAxesExtent(), graph.GetGraphRect());
    EXPECT_EQ(graph.GetPolarGrid()->GetExtentRect().left, graph.GetGraphRect().left) << "its labels reach out most";
    graph.SetDrawOrderTags({ 2, 1 });
    EXPECT_EQ(Record(graph, kWindow.Size()), inOrder) << "grid and axes draw nothing meanwhile";
    graph.SetDrawOrderTags({ 9, 3 });
    auto const gridLast = Record(graph, kWindow.Size());
    EXPECT_EQ(gridLast.size(), inOrder.size());
    auto const isCurve = [](RecordedPrimitive const& p) {
        auto const* const stroke = p.As<primitive::Stroke>();
        return stroke && stroke->pen.colour.colour == RGB(255, 0, 0);
    };
    EXPECT_EQ(std::find_if(gridLast.begin(), gridLast.end(), isCurve) - gridLast.begin(), 2) << "the backgrounds first";
}

TEST(Graph2D, ComparesOrdersWithTheDefaultOneWhereCurvesShareATag)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 1, 1 } });
    AddLine(graph, { { 0, 1 }, { 1, 0 } }).SetTag(9);
    CDWordArray tags;
    for (CDWordArray const& order : { CDWordArray { 1, 2, 9, 9 }, CDWordArray { 1, 2, 9 } }) {
        graph.SetDrawOrderTags(order);
        graph.GetDrawOrderTags(tags);
        EXPECT_EQ(tags, (CDWordArray { 1, 2, 9, 9 })) << "the default one";
        EXPECT_EQ(StrokeColours(graph).size(), 2u);
    }
    graph.SetDrawOrderTags({ 9, 1 });
    EXPECT_EQ(StrokeColours(graph).size(), 2u) << "both at the place of their tag, once";
}

TEST(Graph2D, OrdersSeriesPlotsAsAWholeAndDrawsWhatAnOrderLacksLast)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 1, 1 } });
    auto& series = static_cast<C2DSeriesPlot&>(*graph.AddPlot(it2DLineSeriesPlot));
    for (int i = 0; i < 2; ++i)
        test::AddCurve(series, {}, { 0, 0, 0 });
    graph.SetDrawOrderTags({ 11, 12, 10, 9 });
    EXPECT_EQ(StrokeColours(graph).size(), 3u) << "tags of its curves stand for nothing";
    auto const surface = std::make_shared<RecordingSurface>(kWindow.Size());
    CDC dc(surface);
    CPort port(&dc, kWindow, kWindow, { 0, 10, 10, 0 });
    graph.SetDrawOrderTags({ 10 });
    graph.DrawComponentsUserOrder(port);
    auto const strokes = OfKind<primitive::Stroke>(surface->Primitives());
    ASSERT_EQ(strokes.size(), 3u);
    EXPECT_EQ(strokes[2].points[0], CPoint(0, 300));
}

TEST(Graph2D, OffScreenPicturesFollowEveryChange)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 5 }, { 10, 5 } });
    C2DLine& other = AddLine(graph, { { 0, 7 }, { 10, 2 } });
    std::unique_ptr<CPlotComponent> removedCurve;
    std::unique_ptr<CPlot> removedPlot;
    std::unique_ptr<CGraphComponent> removedAxes;
    std::pair<char const*, std::function<void()>> const changes[] = {
        { "colour of a curve", [&] { line.SetColour(RGB(0, 0, 255)); } },
        { "colour of a component", [&] { graph.GetAxes()->SetColour(RGB(9, 200, 9)); } },
        { "line type", [&] { line.SetLineType(2); } },
        { "filling", [&] { line.SetFillOn(1); } },
        { "background of the graph", [&] { graph.SetBkndColour(RGB(200, 200, 200)); } },
        { "background of the window", [&] { graph.SetWindowBkndColour(RGB(250, 200, 200)); } },
        { "frame", [&] { graph.SetGraphFrameOn(0); } },
        { "turned labels", [&] { graph.GetAxes()->SetLabelsHorizontal(0); } },
        { "place", [&] { graph.SetGraphRect(CRect(50, 60, 300, 250)); } },
        { "order",
            [&] {
                graph.SetDrawOrderTags(CDWordArray { 10, 9, 1, 2 });
            } },
        { "curve out", [&] { graph.RemovePlotComponent((removedCurve.reset(&line), &line)); } },
        { "curve in", [&] { other.GetPlot()->AddComponent(removedCurve.release()); } },
        { "plot out", [&] { graph.RemovePlot((removedPlot.reset(other.GetPlot()), removedPlot.get())); } },
        { "plot in", [&] { graph.GetPlotArray()->Add(removedPlot.release()); } },
        { "component out", [&] { graph.RemoveComponent((removedAxes.reset(graph.GetAxes()), removedAxes.get())); } },
    };
    CDIB before(400, 300, 24);
    CDIB after(400, 300, 24);
    graph.Draw(after.GetDC(), kWindow, pmOffScreen);
    for (auto const& [what, change] : changes) {
        after.Draw(before.GetDC(), 0, 0);
        change();
        graph.Draw(after.GetDC(), kWindow, pmOffScreen);
        EXPECT_NE(before.EncodeBmp(), after.EncodeBmp()) << what;
        EXPECT_FALSE(graph.GetModifiedFlag()) << what;
    }
}

/// Two labelled ticks an axis, a line from corner to corner, a legend and a caption; every length can be worked out.
std::unique_ptr<C2DGraph> MakePlainGraph()
{
    auto graph = std::make_unique<C2DGraph>(1);
    AddLine(*graph, { { 0, 0 }, { 10, 10 } });
    CAxes& axes = *graph->GetAxes();
    axes.SetNumXMajorTicks(2);
    axes.SetNumYMajorTicks(2);
    axes.SetNumXMinorTicks(0);
    axes.SetNumYMinorTicks(0);
    graph->GetLegend()->Create({ 300, 100 });
    graph->GetLegend()->SetBkgndColour(4);
    CCaption& caption = *graph->AddCaption({ 50, 20 });
    caption.SetText("Two\nlines");
    caption.SetBkgndColour(3);
    graph->SetBkndColour(2);
    graph->SetWindowBkndColour(1);
    return graph;
}

// The graph's rectangle in the window is 20,15 … 380,285. A label is 15 pixels high (4 mm) and 7 a digit wide, a tick
// 1/80 of 270 long, a label one pixel below it: the axes lie 14 + 3 from the left, half a "10" (7) from the right, half
// a label (7) from the top, and 15 + 1 + 3 from the bottom. Annotation is 1/25 of the axes' 244 high; a box of text has
// a margin of a sixth of its height.
std::string const kPlainGraph
    = "fill 30,50-431,351#1  fill 67,72-403,316#2  67,316-403,316  67,316-67,72  67,316-67,319  0 15 64,320  "
      "403,316-403,319  10 15 396,320  67,316-64,316  0 15 57,309  67,72-64,72  10 15 50,65  67,316-403,72#255  "
      "30,50-429,50  429,50-429,349  429,349-30,349  30,349-30,50  "
      "fill 80,70-105,96#3  Two 10 83,73  lines 10 83,83  80,70-105,70  105,70-105,96  105,96-80,96  80,96-80,70  "
      "fill 330,150-373,165#4  fill 333,153-341,161#255  333,153-341,153  341,153-341,161  341,161-333,161  "
      "333,161-333,153  Curve 10 345,152  330,150-373,150  373,150-373,165  373,165-330,165  330,165-330,150";

TEST(Graph2D, PutsEveryPrimitiveWhereItBelongsInAWindowThatIsNotAtTheOrigin)
{
    constexpr CRect kPlace(30, 50, 430, 350);
    auto const surface = std::make_shared<RecordingSurface>(CSize(500, 400));
    CDC dc(surface);
    auto const graph = MakePlainGraph();
    auto const embed = [&](C2DGraph& embedded, CRect const& target) {
        surface->Clear();
        embedded.DrawEmbedded(&dc, { 0, 0, 500, 400 }, target);
        return test::Figures(surface->Primitives());
    };
    EXPECT_EQ(embed(*graph, kPlace), kPlainGraph) << "never drawn in a window";
    EXPECT_EQ(graph->GetWindowRect(), CRect());
    graph->LayOut(&dc, kPlace);
    EXPECT_EQ(graph->GetAxesRect(), CRect(37, 22, 373, 266));
    surface->Clear();
    graph->Draw(&dc, kPlace, pmDirect);
    EXPECT_EQ(test::Figures(surface->Primitives()), kPlainGraph);
    for (CRect const& window : { CRect(0, 40, 400, 340), kPlace }) {
        graph->Draw(&dc, window, pmDirect);
        EXPECT_EQ(embed(*graph, kPlace), kPlainGraph);
    }
    // In half the size halves are rounded up, labels are 135 / 15 high with digits of 4, ticks end 2 from the axes.
    std::string const half = embed(*graph, { 100, 40, 300, 190 });
    for (char const* const line : { "fill 100,40-301,191", "fill 120,52-286,171", "  120,171-286,171", "  10 9 282,174",
             "  10 9 110,48", "  120,171-286,52#255", "  299,40-299,189", "fill 250,90-268,97" })
        EXPECT_NE(half.find(line), std::string::npos) << line << "\n" << half;
    EXPECT_EQ(graph->GetWindowRect(), kPlace);
    EXPECT_EQ(graph->GetGraphRect(), CRect(20, 15, 380, 285));
    EXPECT_EQ(graph->GetAxesRect(), CRect(37, 22, 373, 266));
    EXPECT_EQ(graph->GetClipRect(), CRect(37, 22, 373, 266));
    EXPECT_EQ(graph->GetAxesExtent(), graph->GetGraphRect());
    EXPECT_EQ(graph->UnitsToWindow({ 5, 5 }), CPoint(205, 144));
    EXPECT_DOUBLE_EQ(graph->WindowToUnits({ 205, 144 }).x, 5);
    EXPECT_DOUBLE_EQ(graph->WindowToUnits({ 205, 144 }).y, 5);
    graph->SetGraphRect({ 100, 100, 300, 200 });
    graph->Draw(&dc, kPlace, pmDirect);
    EXPECT_EQ(graph->GetAxesExtent(), CRect(100, 100, 300, 200)) << "counts from the window's corner, too";
}

} // namespace
} // namespace ombrel
