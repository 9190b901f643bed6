#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/platform/gdi/Recorded.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace ombrel {
namespace {

class TestCurve : public CPlotComponent {
public:
    int NeedsColourKey() const override { return needsKey; }
    int needsKey = 1;
};

class TestGraph : public CAnnotatedGraph {
public:
    using CAnnotatedGraph::ClearComponents;
    using CAnnotatedGraph::IsAnnotation;
    void CreateAll()
    {
        CreateLegend();
        CreateColourKeyArray();
        CreateCaptionArray();
    }
    CPlot& AddPlotOfPlots()
    {
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
        auto* const plot = new CPlot(this);
        plot->SetTag(GetNewTag());
        plots->Add(plot);
        return *plot;
    }
};

/// Counts the captions that are alive.
class CountedCaption : public CCaption {
public:
    explicit CountedCaption(int& count)
        : m_count(count)
    {
        ++m_count;
    }
    ~CountedCaption() override { --m_count; }

private:
    int& m_count;
};

TEST(AnnotatedGraph, HasNoAnnotationUntilItIsCreatedAndThenOneOfEach)
{
    TestGraph graph;
    EXPECT_EQ(graph.GetLegend(), nullptr);
    EXPECT_EQ(graph.AddCaption(CPoint(1, 2)), nullptr);
    EXPECT_EQ(graph.AddColourKey(CPoint(1, 2), 0), nullptr);
    graph.ClearCaptions();
    graph.CreateAll();
    graph.CreateAll();
    EXPECT_EQ(graph.GetNumComponents(), 3);
    EXPECT_EQ(graph.GetLegend()->GetTag(), 1u);
    EXPECT_TRUE(graph.IsAnnotation(graph.GetCaptionArray()));
    EXPECT_FALSE(graph.IsAnnotation(nullptr));
    EXPECT_FALSE(graph.GetLegend()->IsOn());
}

TEST(AnnotatedGraph, AddsCaptionsWithANewTagAtThePoint)
{
    TestGraph graph;
    graph.CreateAll();
    CCaption* const caption = graph.AddCaption(CPoint(30, 40));
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->GetTag(), 4u);
    EXPECT_EQ(caption->GetText(), "Caption Text");
    EXPECT_EQ(caption->GetTitleType(), CCaption::ctGeneral);
    EXPECT_EQ(caption->GetGraph(), &graph);
    EXPECT_EQ(caption->GetRect().TopLeft(), CPoint(30, 40));
    EXPECT_EQ(graph.GetObjectByTag(4), caption);
    EXPECT_EQ(graph.GetCaptionArray()->GetCaptionIndex(caption), 0);
    graph.SetModifiedFlag(0);
    graph.ClearCaptions();
    EXPECT_EQ(graph.GetCaptionArray()->GetSize(), 0);
    EXPECT_EQ(graph.GetModifiedFlag(), 1);
    EXPECT_EQ(graph.GetObjectByTag(4), nullptr);
}

TEST(AnnotatedGraph, SelectsOneObjectAtATimeAlsoInsideArrays)
{
    TestGraph graph;
    graph.CreateAll();
    CPlot& plot = graph.AddPlotOfPlots();
    CCaption* const first = graph.AddCaption(CPoint());
    CCaption* const second = graph.AddCaption(CPoint());
    CColourKey* const key = graph.AddColourKey(CPoint(), 0);
    CGraphComponent* const all[] = { &plot, first, second, key, graph.GetLegend() };
    for (CGraphComponent* component : all) {
        component->SetSelected(1);
        EXPECT_EQ(graph.GetSelectedComponent(), component);
        for (CGraphComponent* other : all)
            EXPECT_EQ(other->GetSelected() != 0, other == component);
    }
    graph.GetLegend()->SetSelected(0);
    EXPECT_EQ(graph.GetSelectedComponent(), nullptr);
}

TEST(AnnotationArrays, AnswerForWhatTheyHold)
{
    TestGraph graph;
    graph.CreateAll();
    CCaptionArray& captions = *graph.GetCaptionArray();
    CCaption* const caption = graph.AddCaption(CPoint());
    captions.ResetModifiedFlags();
    EXPECT_FALSE(captions.Modified());
    caption->SetText("changed");
    EXPECT_TRUE(captions.Modified());
    graph.ResetModifiedFlags();
    EXPECT_FALSE(caption->Modified());
    EXPECT_EQ(captions.RemoveAt(1), 0);
    EXPECT_EQ(captions.RemoveAt(-1), 0);
    EXPECT_FALSE(captions.Modified());
    EXPECT_EQ(captions.RemoveAt(0), 1);
    EXPECT_TRUE(captions.Modified());
    EXPECT_EQ(captions.GetSize(), 0);

    TestGraph other;
    captions.Add(new CCaption(&graph, "x", CCaption::ctNone));
    captions.SetGraph(&other);
    EXPECT_EQ(captions.GetAt(0)->GetGraph(), &other);
}

TEST(AnnotationArrays, OwnWhatTheyHoldUntilItIsTakenOut)
{
    int alive = 0;
    auto* const kept = new CountedCaption(alive);
    {
        CCaptionArray captions;
        EXPECT_EQ(captions.Add(kept), 0);
        captions.RemoveAll();
        EXPECT_EQ(captions.GetSize(), 0);
        EXPECT_EQ(alive, 1) << "RemoveAll hands over";
        for (int i = 0; i < 3; ++i)
            captions.Add(new CountedCaption(alive));
        captions.RemoveAt(1);
        EXPECT_EQ(alive, 3);
        captions.Clear();
        EXPECT_EQ(alive, 1);
        captions.Add(new CountedCaption(alive));
    }
    EXPECT_EQ(alive, 1) << "the array deletes what it still holds";
    delete kept;
}

TEST(ColourKeyArray, DropsKeysOfCurvesThatAreGoneOrNeedNoneAnyMore)
{
    TestGraph graph;
    graph.CreateAll();
    CPlot& plot = graph.AddPlotOfPlots();
    TestCurve* const curves[] = { new TestCurve, new TestCurve, new TestCurve };
    for (TestCurve* curve : curves) {
        plot.AddComponent(curve);
        graph.AddColourKey(CPoint(5, 6), curve->GetTag());
    }
    CColourKeyArray& keys = *graph.GetColourKeyArray();
    EXPECT_EQ(keys.GetAt(0)->GetRect().TopLeft(), CPoint(5, 6));
    CDWordArray tags { 99 };
    auto const tag = [&curves](int i) { return static_cast<DWORD>(curves[i]->GetTag()); };
    keys.GetCurves(tags);
    EXPECT_EQ(tags, (CDWordArray { tag(0), tag(1), tag(2) }));

    keys.Refresh();
    EXPECT_EQ(keys.GetSize(), 3);
    curves[0]->needsKey = 0;
    plot.RemoveComponent(curves[2]);
    std::unique_ptr<TestCurve> const removed(curves[2]);
    keys.ResetModifiedFlags();
    keys.Refresh();
    keys.GetCurves(tags);
    EXPECT_EQ(tags, CDWordArray { tag(1) });
    EXPECT_TRUE(keys.Modified());

    graph.AddColourKey(CPoint(), 0);
    keys.Refresh();
    EXPECT_EQ(keys.GetSize(), 1) << "a key without a curve is dropped";
}

TEST(AnnotatedGraph, ForgetsAnnotationThatIsTakenOut)
{
    TestGraph graph;
    graph.CreateAll();
    std::unique_ptr<CLegend> const legend(graph.GetLegend());
    EXPECT_TRUE(graph.RemoveComponent(legend.get()));
    EXPECT_EQ(graph.GetLegend(), nullptr);
    EXPECT_NE(graph.GetCaptionArray(), nullptr);
    graph.ClearComponents();
    EXPECT_EQ(graph.GetCaptionArray(), nullptr);
}

/// A graph whose body is a filled graph rectangle.
class DrawnGraph : public CAnnotatedGraph {
public:
    DrawnGraph() { CreateCaptionArray(); }
    void SetInitialSize() override
    {
        SetGraphSize({ 11, 21, 110, 70 });
        UpdateNormalisedRect();
    }
    void DrawBody(CDC& dc) override
    {
        ++bodies;
        dc.FillSolidRect(m_graphRect, RGB(255, 0, 0));
        if (whileDrawing)
            whileDrawing();
    }
    int bodies = 0;
    std::function<void()> whileDrawing;
};

TEST(AnnotatedGraphDrawing, FillsAWindowOrATargetFromItsCorner)
{
    std::string const frame
        = "polyline 30,50 229,50 pen=#000000/1/solid\npolyline 229,50 229,149 pen=#000000/1/solid\n"
          "polyline 229,149 30,149 pen=#000000/1/solid\npolyline 30,149 30,50 pen=#000000/1/solid\n";
    DrawnGraph graph;
    auto const surface = std::make_shared<RecordingSurface>(CSize(300, 200));
    CDC dc(surface);
    graph.Draw(&dc, { 30, 50, 230, 150 }, pmDirect);
    EXPECT_EQ(test::Dump(surface->Primitives()), "fill [41,71 140,120] #ff0000\n" + frame);
    graph.SetGraphFrameOn(0);
    // Half the size: halves are rounded up, and the width is kept rather than the right edge.
    surface->Clear();
    graph.DrawEmbedded(&dc, { 0, 0, 300, 200 }, { 0, 40, 100, 90 });
    EXPECT_EQ(test::Dump(surface->Primitives()), "fill [6,51 56,75] #ff0000\n");
    EXPECT_EQ(graph.GetGraphRect(), CRect(11, 21, 110, 70));
    EXPECT_EQ(graph.GetWindowRect(), CRect(30, 50, 230, 150));
    // Twice the size, laid out alone and then drawn.
    graph.LayOut(&dc, { 0, 0, 400, 200 });
    EXPECT_EQ(graph.GetGraphRect(), CRect(22, 42, 220, 140));
    EXPECT_EQ(graph.GetDC(), nullptr);
    surface->Clear();
    graph.AddCaption({ 5, 6 });
    graph.Draw(&dc, { 1, 2, 401, 202 }, pmDirect);
    EXPECT_EQ(std::get<primitive::Fill>(surface->Primitives()[0].what).region.Box(), CRect(23, 44, 221, 142));
    EXPECT_EQ(std::get<primitive::Fill>(surface->Primitives()[1].what).region.Box().TopLeft(), CPoint(6, 8))
        << "the caption's box";
    EXPECT_EQ(dc.GetViewportOrg(), CPoint()) << "as it was";
}

TEST(AnnotatedGraphDrawing, DrawsABodyOffScreenOnlyWhenItMust)
{
    DrawnGraph graph;
    CDIB target(300, 200, 24);
    CRect window(30, 50, 230, 150);
    auto const draw = [&](CDC& dc) {
        int const before = graph.bodies;
        graph.Draw(&dc, window, pmOffScreen);
        return graph.bodies - before;
    };
    CDC& dc = *target.GetDC();
    EXPECT_EQ(draw(dc), 1);
    EXPECT_EQ(dc.GetPixel(41, 71), RGB(255, 0, 0));
    EXPECT_EQ(dc.GetPixel(40, 71), 0u);
    EXPECT_EQ(draw(dc), 0);
    CCaption& caption = *graph.AddCaption({ 20, 30 });
    caption.SetBkgndColour(RGB(0, 0, 255));
    EXPECT_EQ(draw(dc), 0) << "annotation is drawn over the picture";
    EXPECT_EQ(dc.GetPixel(51, 81), RGB(0, 0, 255));
    EXPECT_EQ(graph.GetDisplayDIB().GetDC()->GetPixel(21, 31), RGB(0, 0, 255));
    caption.SetRect({ 60, 30, 0, 0 });
    EXPECT_EQ(draw(dc), 0);
    EXPECT_EQ(dc.GetPixel(51, 81), RGB(255, 0, 0)) << "and leaves no trace";
    window.OffsetRect(-30, -50);
    EXPECT_EQ(draw(dc), 0) << "a picture may be copied elsewhere";
    std::function<void()> const changes[] = {
        [&] { graph.SetTitle("new"); },
        [&] {
            graph.SetGraphRect({ 30, 30, 60, 60 });
        },
        [&] { graph.GetComponent(graph.GetNumComponents() - 1)->SetColour(1); },
        [&] { window.right += 10; },
        [&] { graph.Draw(&dc, window, pmDirect); },
        [&] { graph.DrawEmbedded(&dc, window, window); },
        [&] {
            graph.LayOut(&dc, { 0, 0, 50, 50 });
        },
    };
    graph.AddComponent(new CGraphComponent(&graph));
    EXPECT_EQ(draw(dc), 1);
    for (int i = 0; auto const& change : changes) {
        change();
        EXPECT_EQ(draw(dc), 1) << i;
        EXPECT_EQ(draw(dc), 0) << i;
        ++i;
    }
    CDC page(std::make_shared<RecordingSurface>(CSize(300, 200), DeviceCapabilities(), true));
    EXPECT_EQ(draw(page), 1);
    EXPECT_EQ(draw(dc), 1) << "a page asks for a complete next draw";
    window = CRect();
    EXPECT_EQ(draw(dc), 0);
}

TEST(AnnotatedGraphDrawing, StartsNoDrawWithinADraw)
{
    DrawnGraph graph;
    CDIB target(300, 200, 24);
    CRect const window(0, 0, 300, 200);
    graph.whileDrawing = [&] {
        graph.Draw(target.GetDC(), window, pmOffScreen);
        graph.DrawEmbedded(target.GetDC(), window, window);
        graph.LayOut(target.GetDC(), { 0, 0, 1, 1 });
    };
    graph.Draw(target.GetDC(), window, pmDirect);
    EXPECT_EQ(graph.bodies, 1);
    EXPECT_EQ(graph.GetWindowRect(), window);
    graph.whileDrawing = [] { throw 1; };
    EXPECT_THROW(graph.DrawEmbedded(target.GetDC(), window, { 0, 0, 30, 20 }), int);
    EXPECT_EQ(graph.GetWindowRect(), window) << "put back however it ended";
    EXPECT_EQ(graph.GetGraphRect(), CRect(11, 21, 110, 70));
}

TEST(AnnotatedGraphDrawing, PrintsTheFinishedPictureAtItsPlaceInMillimetres)
{
    DrawnGraph graph;
    CDIB target(200, 100, 24);
    graph.Draw(target.GetDC(), { 0, 0, 200, 100 }, pmOffScreen);
    DeviceCapabilities page;
    page.horzRes = 4000;
    page.vertRes = 3000;
    page.horzSize = 169;
    page.vertSize = 64;
    auto const surface = std::make_shared<RecordingSurface>(CSize(4000, 3000), page, true);
    CDC dc(surface);
    // What is drawn straight elsewhere leaves the picture alone.
    graph.Draw(target.GetDC(), { 0, 0, 50, 50 }, pmDirect);
    graph.DrawToPrinter(&dc);
    // 10 mm from the corner, 170 × 90 mm.
    ASSERT_EQ(surface->Primitives().size(), 1u);
    auto const& image = std::get<primitive::Image>(surface->Primitives()[0].what);
    EXPECT_EQ(image.to, CRect(CPoint(236, 468), CSize(4024, 4219)));
    EXPECT_EQ(image.from.Size(), CSize(200, 100));
}

} // namespace
} // namespace ombrel
