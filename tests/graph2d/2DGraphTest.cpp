#include "ombrel/annotation/Caption.h"
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <clocale>

namespace ombrel {
namespace {

using Kind = RecordedPrimitive::Kind;
using test::AddLine;
using test::OfKind;
using test::Record;

constexpr CRect kWindow(0, 0, 400, 300);

COLORREF PixelAt(CDIB& bitmap, CPoint p) { return bitmap.GetDC()->GetPixel(p.x, p.y); }

/// How many pixels two bitmaps of one size differ in.
int Differences(CDIB& a, CDIB& b)
{
    int different = 0;
    for (int y = 0; y < a.GetSize().cy; ++y) {
        for (int x = 0; x < a.GetSize().cx; ++x)
            different += PixelAt(a, { x, y }) != PixelAt(b, { x, y });
    }
    return different;
}

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
}

TEST(Graph2D, FitsTheAxesWithTheirLabelsIntoTheGraphRectangle)
{
    for (CSize const size : { CSize(400, 300), CSize(1200, 900), CSize(200, 600), CSize(90, 60) }) {
        C2DGraph graph(1);
        AddLine(graph, { { -1234.5, 0.001 }, { 99999, 12345678 } });
        graph.GetAxes()->SetXAxisTitle("Time since the start, s");
        graph.GetAxes()->SetYAxisTitle("Height");
        Record(graph, size);
        CRect const graphRect = graph.GetGraphRect();
        CRect const extent = graph.GetAxesExtent();
        EXPECT_EQ(graphRect.left, static_cast<int>(size.cx * 0.05 + 0.5));
        EXPECT_GE(extent.left, graphRect.left);
        EXPECT_LE(extent.bottom, graphRect.bottom);
        EXPECT_LE(extent.right, graphRect.right);
        EXPECT_GE(extent.top, graphRect.top);
        EXPECT_EQ(graph.GetAxes()->GetExtentRect(), extent) << "measuring and drawing agree";
        CRect const clip = graph.GetClipRect();
        CRect const axes = graph.GetAxesRect();
        EXPECT_NEAR(clip.left, axes.left, 1);
        EXPECT_NEAR(clip.bottom, axes.bottom, 1);
    }
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
    auto const strokeColours = [&] {
        std::vector<COLORREF> colours;
        for (RecordedPrimitive const& p : OfKind(Record(graph, kWindow.Size()), Kind::Stroke))
            colours.push_back(p.pen.colour.colour);
        return colours;
    };
    EXPECT_EQ(strokeColours(), (std::vector<COLORREF> { RGB(1, 0, 0), RGB(2, 0, 0) }));
    graph.SetDrawOrderTags({ 10, 77, 9 });
    EXPECT_EQ(strokeColours(), (std::vector<COLORREF> { RGB(2, 0, 0), RGB(1, 0, 0) }));
    graph.GetDrawOrderTags(tags);
    EXPECT_EQ(tags, (CDWordArray { 10, 9, 1, 2 })) << "unknown tags go, new ones come last";
    ASSERT_TRUE(graph.RemovePlotComponent(&second));
    delete &second;
    EXPECT_EQ(strokeColours().size(), 1u);
    graph.ResetDrawOrderTags();
    graph.GetDrawOrderTags(tags);
    EXPECT_EQ(tags, (CDWordArray { 1, 2 }));
}

TEST(Graph2D, RedrawsOffScreenOnlyWhatChanged)
{
    C2DGraph graph(1);
    C2DLine& line = AddLine(graph, { { 0, 5 }, { 10, 5 } });
    line.SetColour(RGB(255, 0, 0));
    CDIB target(400, 300, 24);
    graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    CPoint const onLine = graph.UnitsToWindow({ 5, 5 });
    EXPECT_EQ(PixelAt(target, onLine), RGB(255, 0, 0));
    EXPECT_FALSE(graph.GetModifiedFlag());
    // The colour marks nothing as modified: the cached picture stays until something else does.
    line.SetColour(RGB(0, 0, 255));
    graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(PixelAt(target, onLine), RGB(255, 0, 0));
    line.SetLineWidth(1);
    graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(PixelAt(target, onLine), RGB(0, 0, 255));
    // A direct draw clears the flags; the off-screen picture must not stay behind.
    line.SetColour(RGB(0, 255, 0));
    line.SetLineWidth(1);
    graph.Draw(target.GetDC(), kWindow, pmDirect);
    target.GetDC()->FillSolidRect(kWindow, 0);
    graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(PixelAt(target, onLine), RGB(0, 255, 0));
    EXPECT_EQ(PixelAt(graph.GetDisplayDIB(), onLine), RGB(0, 255, 0));
    EXPECT_EQ(graph.GetDisplayDIB().GetSize(), CSize(400, 300));
}

TEST(Graph2D, OffScreenDirectAndMovedDrawingGiveTheSamePixels)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 3, 7 }, { 10, 2 } });
    graph.SetBkndColour(RGB(240, 240, 200));
    CDIB offScreen(400, 300, 24);
    CDIB direct(400, 300, 24);
    graph.Draw(offScreen.GetDC(), kWindow, pmOffScreen);
    graph.Draw(direct.GetDC(), kWindow, pmDirect);
    EXPECT_EQ(Differences(offScreen, direct), 0);
    for (PaintMode const mode : { pmOffScreen, pmDirect }) {
        CDIB large(500, 400, 24);
        graph.Draw(large.GetDC(), { 30, 50, 430, 350 }, mode);
        CDIB part(400, 300, 24);
        part.GetDC()->BitBlt(0, 0, 400, 300, large.GetDC(), 30, 50, SRCCOPY);
        EXPECT_EQ(Differences(part, direct), 0) << mode;
    }
}

TEST(Graph2D, MeasuresALegendBeforeItsFirstDrawAndLeavesNoTraceWhereItWas)
{
    CDIB moved(400, 300, 24);
    CDIB fresh(400, 300, 24);
    CPoint const elsewhere(60, 200);
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 10, 10 } });
    graph.LayOut(moved.GetDC(), kWindow);
    CRect const axes = graph.GetAxesRect();
    CSize const size = graph.GetLegend()->Measure(moved.GetDC());
    graph.GetLegend()->Create({ axes.right - size.cx, axes.top });
    graph.Draw(moved.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(graph.GetAxesRect(), axes);
    EXPECT_EQ(graph.GetLegend()->GetRect(), CRect(axes.right - size.cx, axes.top, axes.right, axes.top + size.cy));
    graph.GetLegend()->SetRect({ elsewhere, CSize() });
    graph.Draw(moved.GetDC(), kWindow, pmOffScreen);

    C2DGraph other(1);
    AddLine(other, { { 0, 0 }, { 10, 10 } });
    other.GetLegend()->Create(elsewhere);
    other.Draw(fresh.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(Differences(moved, fresh), 0);
    // A layout for another window is not taken for that of the picture that is kept.
    graph.LayOut(moved.GetDC(), { 0, 0, 900, 900 });
    graph.Draw(moved.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(Differences(moved, fresh), 0);
}

TEST(Graph2D, EmbeddedDrawingKeepsProportionsAndPutsEverythingBack)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 10, 10 } });
    CDIB own(400, 300, 24);
    graph.Draw(own.GetDC(), kWindow, pmOffScreen);
    CRect const graphRect = graph.GetGraphRect();
    auto const surface = std::make_shared<RecordingSurface>(CSize(1000, 800));
    CDC dc(surface);
    CRect const target(200, 100, 600, 400);
    graph.DrawEmbedded(&dc, { 0, 0, 1000, 800 }, target);
    EXPECT_EQ(graph.GetGraphRect(), graphRect);
    EXPECT_EQ(graph.GetWindowRect(), kWindow);
    for (RecordedPrimitive const& p : OfKind(surface->Primitives(), Kind::Stroke)) {
        for (CPoint const point : p.points)
            EXPECT_TRUE(target.PtInRect(point));
    }
    // Frame along the target: its corners end the last outline.
    auto const outlines = OfKind(surface->Primitives(), Kind::Polyline);
    EXPECT_TRUE(std::any_of(outlines.begin(), outlines.end(),
        [&](RecordedPrimitive const& p) { return !p.points.empty() && p.points[0] == target.TopLeft(); }));
    CDIB again(400, 300, 24);
    graph.Draw(again.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(Differences(own, again), 0);

    C2DGraph fresh(1);
    AddLine(fresh, { { 0, 0 }, { 10, 10 } });
    surface->Clear();
    fresh.DrawEmbedded(&dc, { 0, 0, 1000, 800 }, target);
    for (RecordedPrimitive const& p : OfKind(surface->Primitives(), Kind::Stroke)) {
        for (CPoint const point : p.points)
            EXPECT_TRUE(target.PtInRect(point)) << "never drawn before";
    }
}

TEST(Graph2D, TakesOverTheSettingsOfOtherAxesButKeepsItsOwnObject)
{
    C2DGraph graph(1);
    CAxes* const own = graph.GetAxes();
    CAxes other(&graph);
    other.SetXAxisTitle("Other");
    other.SetNumYMajorTicks(9);
    graph.ReplaceAxes(&other);
    EXPECT_EQ(graph.GetAxes(), own);
    EXPECT_EQ(own->GetTag(), 2u);
    EXPECT_EQ(own->GetXAxisTitle(), CString("Other"));
    EXPECT_EQ(own->GetNumYMajorTicks(), 9);
}

TEST(Graph2D, PicturesDoNotDependOnTheLocaleOrOnOtherGraphs)
{
    auto const draw = [](C2DGraph& graph, CDIB& target) {
        graph.SetModifiedFlag(1);
        graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    };
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0.25 }, { 10, 1234.5 } });
    C2DGraph other(1);
    AddLine(other, { { 0, 0.25 }, { 1e-9, 1234.5 } });
    CDIB before(400, 300, 24);
    CDIB after(400, 300, 24);
    draw(graph, before);
    std::string const locale = std::setlocale(LC_ALL, nullptr);
    for (char const* const name : { "de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8" }) {
        if (!std::setlocale(LC_ALL, name))
            continue;
        draw(other, after);
        draw(graph, after);
        EXPECT_EQ(Differences(before, after), 0) << name;
    }
    std::setlocale(LC_ALL, locale.c_str());
}

class Listener : public CObject {
public:
    void Drawn() { ++calls; }
    void DestroyGraph() { graph.reset(); }
    void DrawAgain()
    {
        ++calls;
        CDIB target(400, 300, 24);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
    int calls = 0;
    std::unique_ptr<C2DGraph> graph = std::make_unique<C2DGraph>(1);
};

void Listen(C2DGraph& graph, Listener& listener, void (Listener::*method)())
{
    graph.SetGraphDrawnCallback(&listener, static_cast<void (CObject::*)()>(method));
}

TEST(Graph2D, CallsBackAfterEveryDrawEvenWhenTheCallDrawsOrDestroysTheGraph)
{
    Listener listener;
    CDIB target(400, 300, 24);
    Listen(*listener.graph, listener, &Listener::Drawn);
    listener.graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    listener.graph->Draw(target.GetDC(), kWindow, pmDirect);
    listener.graph->Draw(target.GetDC(), CRect(), pmDirect);
    EXPECT_EQ(listener.calls, 2);
    Listen(*listener.graph, listener, &Listener::DrawAgain);
    listener.graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    EXPECT_EQ(listener.calls, 3) << "a draw within a draw does nothing";
    Listen(*listener.graph, listener, &Listener::DestroyGraph);
    listener.graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    EXPECT_FALSE(listener.graph);
}

TEST(Graph2D, APrintedPageAsksForACompleteNextDraw)
{
    C2DGraph graph(1);
    AddLine(graph, { { 0, 0 }, { 10, 10 } });
    DeviceCapabilities page;
    page.logPixelsX = page.logPixelsY = 600;
    page.horzRes = 4000;
    page.vertRes = 3000;
    page.horzSize = 169;
    page.vertSize = 127;
    auto const surface = std::make_shared<RecordingSurface>(CSize(4000, 3000), page, true);
    CDC dc(surface);
    graph.Draw(&dc, { 0, 0, 4000, 3000 }, pmDirect);
    EXPECT_TRUE(graph.GetModifiedFlag());
    EXPECT_EQ(OfKind(surface->Primitives(), Kind::Stroke)[0].pen.width, 6.0) << "one nominal pixel at 600 to the inch";
    surface->Clear();
    graph.DrawToPrinter(&dc);
    auto const images = OfKind(surface->Primitives(), Kind::Image);
    ASSERT_EQ(images.size(), 1u);
    EXPECT_EQ(images[0].rect, CRect(236, 236, 236 + 4024, 236 + 2126));
}

} // namespace
} // namespace ombrel
