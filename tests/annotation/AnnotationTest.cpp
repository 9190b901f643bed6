#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/RecordingSurface.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

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

    std::unique_ptr<CLegend> const legend(graph.GetLegend());
    EXPECT_TRUE(graph.RemoveComponent(legend.get()));
    EXPECT_EQ(graph.GetLegend(), nullptr);
    EXPECT_NE(graph.GetCaptionArray(), nullptr);
    graph.ClearComponents();
    EXPECT_EQ(graph.GetCaptionArray(), nullptr);
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
    graph.GetPlotArray()->SetSelected(1);
    EXPECT_EQ(graph.GetSelectedComponent(), nullptr) << "an array is nothing that can be selected";
    for (CGraphComponent* component : all) {
        component->SetSelected(1);
        graph.ClearSelection();
        EXPECT_EQ(graph.GetSelectedComponent(), nullptr);
    }
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

Bytes LegendBytes()
{
    return Bytes()
        .Component(0x332211, 1, 1, 7)
        .Int(1, 1, 2, 3) // version; created, on, positioned
        .Int(10, 20, 30, 40) // rectangle
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 5, 2) // text, background, border; frame, style
        .Font("Serif", 700, 1, 1.5)
        .Double(2.5)
        .Point(0.25, 0.75)
        .Double(1.463);
}

Bytes CaptionBytes(int version)
{
    Bytes bytes;
    bytes.Component(0x332211, 1, 1, 8)
        .Int(version, 1, 2, 3) // created, on, positioned
        .Int(10, 20, 30, 40)
        .Text("Two\nlines")
        .Font("Mono", 400, 1, 0.5)
        .Double(2.5)
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 4, 5) // text, background, border; frame, title type
        .Short(2)
        .Texts("Two", "lines")
        .Point(0.25, 0.75);
    if (version >= 2)
        bytes.Int(6);
    return bytes;
}

Bytes KeyBytes(int version)
{
    Bytes bytes;
    bytes.Component(0x332211, 1, 1, 9)
        .Int(version, 1, 2, 3) // created, on, positioned
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 4) // text, background, border; frame
        .Int(10, 20, 30, 40)
        .Double(0.125)
        .Font("Mono", 400, 1, 0.5)
        .Double(2.5)
        .Point(0.25, 0.75)
        .Point(0.3, 0.6)
        .Short(2)
        .Texts("low", "high")
        .Short(3)
        .Int(1, 2, 3)
        .Int(5)
        .Double(-1.0, 0.5)
        .Int(6)
        .Double(-2.0, 2.0);
    if (version >= 2)
        bytes.Int(21, 0, 8); // curve tag, style, ticks
    return bytes;
}

TEST(AnnotationArchive, LegendsAndCaptionsKeepEveryFieldInItsPlace)
{
    CLegend legend;
    ASSERT_TRUE(Load(legend, LegendBytes()));
    EXPECT_EQ(Stored(legend), LegendBytes());
    EXPECT_EQ(legend.GetTag(), 7u);
    EXPECT_EQ(legend.IsOn(), 2);
    EXPECT_EQ(legend.GetTextColour(), RGB(255, 0, 0));
    EXPECT_EQ(legend.GetStyle(), 2);
    CCaption caption;
    ASSERT_TRUE(Load(caption, CaptionBytes(2)));
    EXPECT_EQ(Stored(caption), CaptionBytes(2));
    EXPECT_EQ(caption.GetTitleType(), 5);
    EXPECT_EQ(caption.GetTransparentBkgnd(), 6);
    CCaption older;
    ASSERT_TRUE(Load(older, CaptionBytes(1)));
    EXPECT_EQ(older.GetTransparentBkgnd(), 0) << "the first layout does not have it";
}

TEST(AnnotationArchive, AColourKeyKeepsEveryFieldInItsPlace)
{
    CColourKey key;
    ASSERT_TRUE(Load(key, KeyBytes(2)));
    EXPECT_EQ(Stored(key), KeyBytes(2));
    auto const range = [&key](void (CColourKey::*get)(double&, double&) const) {
        CRealPoint range;
        (key.*get)(range.x, range.y);
        return range;
    };
    EXPECT_EQ(range(&CColourKey::GetMinAndDel), CRealPoint(-1.0, 0.5));
    EXPECT_EQ(range(&CColourKey::GetClampRange), CRealPoint(-2.0, 2.0));
    EXPECT_EQ(key.GetLabelMode(), 5);
    EXPECT_EQ(key.GetClampMode(), 6);
    EXPECT_EQ(key.GetCurveTag(), 21u);
    EXPECT_EQ(key.GetStyle(), CColourKey::ksDiscrete);
    EXPECT_EQ(key.GetNumTicks(), 8);
    CDWordArray colours;
    CStringArray labels;
    key.GetArbData(colours, labels);
    EXPECT_EQ(colours, (CDWordArray { 1, 2, 3 }));
    EXPECT_EQ(labels, (CStringArray { "low", "high" }));
    key.SetMinAndDel(3, 4);
    key.SetClampRange(5, 6);
    EXPECT_EQ(range(&CColourKey::GetMinAndDel), CRealPoint(3, 4));
    EXPECT_EQ(range(&CColourKey::GetClampRange), CRealPoint(5, 6));
    CColourKey first;
    ASSERT_TRUE(Load(first, KeyBytes(1)));
    EXPECT_EQ(first.GetStyle(), CColourKey::ksContinuous);
    EXPECT_EQ(first.GetNumTicks(), 6);
    EXPECT_EQ(first.GetCurveTag(), 0u);
    EXPECT_EQ(first.GetClampMode(), 6);
}

TEST(AnnotationArchive, ArraysHoldReferencesToTheirOwnClassOnly)
{
    RegisterClass(CCaption::kClass);
    RegisterClass(CColourKey::kClass);
    Bytes const captions = Bytes().Component(0, 1, 0, 3).Int(1).Short(2).NewClass("CCaption").Add(CaptionBytes(2));
    Bytes const both = Bytes(captions).Short(-0x7FFF).Add(CaptionBytes(2));
    CCaptionArray array;
    ASSERT_TRUE(Load(array, both));
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(Stored(array), both);

    Bytes const keys = Bytes().Component(0, 1, 0, 3).Int(1).Short(1).NewClass("CColourKey").Add(KeyBytes(2));
    CColourKeyArray keyArray;
    ASSERT_TRUE(Load(keyArray, keys));
    EXPECT_EQ(Stored(keyArray), keys);
    EXPECT_FALSE(Load(array, keys)) << "a colour key among captions";
}

TEST(Annotation, DeletingALegendGivesBackItsFirstSettingsButFontAndRectangle)
{
    CLegend legend(nullptr);
    legend.Create(CPoint(12, 34));
    CFontData const font("Serif", 700, 0, 2.0);
    legend.SetFont(font);
    legend.SetTextColour(1);
    legend.SetBkgndColour(2);
    legend.SetBorderColour(3);
    legend.SetBoundingRectOn(0);
    legend.SetStyle(CLegend::lsSymbol);
    legend.SetFontScaleFac(3.0);
    legend.Delete();

    CLegend fresh(nullptr);
    fresh.SetFont(font);
    fresh.SetRect(CRect(12, 34, 12, 34));
    EXPECT_EQ(Stored(legend), Stored(fresh));
}

} // namespace
} // namespace ombrel
