#include "ombrel/annotation/AnnotatedGraph.h"

#include <gtest/gtest.h>

#include <memory>

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

} // namespace
} // namespace ombrel
