#include "ombrel/model/Graph.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/host/Host.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace ombrel {
namespace {

/// A graph that has plots and whose draws only go through the steps that every draw shares.
class TestGraph : public CGraph {
public:
    TestGraph()
    {
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
    }
    CPlot* AddPlot(ItemType) override
    {
        auto* const plot = new CPlot(this);
        plot->SetTag(GetNewTag());
        GetPlotArray()->Add(plot);
        return plot;
    }
    /// A plot with that many curves, each in the graph's next colour.
    CPlot& AddPlotWithCurves(int count)
    {
        CPlot* const plot = AddPlot(it2DLinePlot);
        for (int i = 0; i < count; ++i)
            plot->AddComponent(new CPlotComponent(plot, 1));
        return *plot;
    }
    void Draw(CDC*, CRect const&, PaintMode) override
    {
        if (IsBusy())
            return;
        std::function<void()> const draw = drawing;
        DrawScope scope(*this);
        ++draws;
        if (draw)
            draw();
        bool* const survived = survivedDraw;
        bool const alive = scope.Finish(printing);
        if (survived)
            *survived = alive;
    }
    void DrawOnce() { Draw(nullptr, CRect(), pmOffScreen); }

    using CGraph::GraphComponentModified;
    using CGraph::IsBusy;
    using CGraph::PlotComponentDataModified;
    using CGraph::PlotComponentModified;
    using CGraph::SetComponentTags;

    std::function<void()> drawing;
    bool printing = false;
    /// Where Draw leaves whether the graph was still there after its callback.
    bool* survivedDraw = nullptr;
    int draws = 0;
};

TEST(GraphTags, CountFromOneAndFindPlotsAndCurves)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(2);
    EXPECT_EQ(graph.GetPlotArray()->GetTag(), 1u);
    EXPECT_EQ(plot.GetTag(), 2u);
    EXPECT_EQ(plot.GetComponent(0)->GetTag(), 3u);
    EXPECT_EQ(graph.GetObjectByTag(1), graph.GetPlotArray());
    EXPECT_EQ(graph.GetObjectByTag(2), &plot);
    EXPECT_EQ(graph.GetObjectByTag(4), plot.GetComponent(1));
    EXPECT_EQ(graph.GetObjectByTag(5), nullptr);
    EXPECT_EQ(graph.GetPlotByTag(2), &plot);
    EXPECT_EQ(graph.GetComponentByTag(4), plot.GetComponent(1));
    EXPECT_EQ(graph.GetComponentByTag(2), nullptr) << "a plot is no curve";

    graph.SetComponentTags();
    EXPECT_EQ(graph.GetPlotArray()->GetTag(), 5u);
    EXPECT_EQ(plot.GetTag(), 6u);
    EXPECT_EQ(plot.GetComponent(1)->GetTag(), 8u);
}

TEST(GraphLookUps, CompareTitlesExactlyAndTakeTheFirst)
{
    TestGraph graph;
    CPlot& first = graph.AddPlotWithCurves(1);
    CPlot& second = graph.AddPlotWithCurves(2);
    first.SetTitle("Same");
    second.SetTitle("Same");
    second.GetComponent(0)->SetTitle("Curve");
    second.GetComponent(1)->SetTitle("Curve");
    EXPECT_EQ(graph.GetPlot("Same"), &first);
    EXPECT_EQ(graph.GetPlot("same"), nullptr);
    EXPECT_EQ(graph.GetComponentByName("Curve"), second.GetComponent(0));
    EXPECT_EQ(second.GetCurve("Curve "), nullptr);
    EXPECT_EQ(graph.GetPlotIndex(&second), 1);
    EXPECT_EQ(graph.GetPlotIndex(nullptr), -1);
    int plot = 7;
    int curve = 7;
    second.GetComponent(1)->GetPlotCurveIndices(plot, curve);
    EXPECT_EQ(plot, 1);
    EXPECT_EQ(curve, 1);
    CPlotComponent().GetPlotCurveIndices(plot, curve);
    EXPECT_EQ(plot, -1);
    EXPECT_EQ(curve, -1);
}

TEST(GraphColours, TakeTheFirstFreeOneOfTheTable)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(3);
    EXPECT_EQ(plot.GetComponent(2)->GetColour(), RGB(0, 0, 255));
    EXPECT_EQ(graph.GetColour(), RGB(255, 0, 255));
    plot.GetComponent(1)->SetColour(RGB(1, 2, 3));
    EXPECT_EQ(graph.GetColour(), RGB(0, 255, 0)) << "given back";
    EXPECT_EQ(plot.GetComponent(1)->GetOriginalColour(), RGB(0, 255, 0));
}

TEST(GraphColours, BeyondTheTableAreTheSameEveryTime)
{
    for (int run = 0; run < 2; ++run) {
        TestGraph graph;
        // One of the fifteen entries stands twice in the table.
        CPlot& plot = graph.AddPlotWithCurves(17);
        std::vector<unsigned long> last;
        for (int i = 13; i < 17; ++i)
            last.push_back(plot.GetComponent(i)->GetColour());
        EXPECT_EQ(last,
            (std::vector<unsigned long> { RGB(128, 0, 128), RGB(32, 2, 99), RGB(68, 179, 60), RGB(119, 191, 32) }));
    }
}

TEST(GraphRectangles, ScaleWithTheWindow)
{
    CGraph graph;
    graph.SetGraphAndWindowRect(CRect(10, 20, 110, 220), CRect(0, 0, 400, 300));
    graph.UpdateGraphRect();
    EXPECT_EQ(graph.GetGraphRect(), CRect(10, 20, 110, 220));
    // A window of its own place counts by its size only, and a graph that draws is given it before its rectangle.
    struct Resized : CGraph {
        using CGraph::m_normalisedOrigin;
        using CGraph::m_normalisedSize;
        using CGraph::m_windowRect;
    } resized;
    resized.SetGraphAndWindowRect(CRect(10, 20, 110, 220), CRect(0, 0, 400, 300));
    resized.m_windowRect = CRect(1000, 1000, 1800, 1600);
    resized.UpdateGraphRect();
    EXPECT_EQ(resized.GetGraphRect(), CRect(20, 40, 220, 440));
    resized.m_windowRect = CRect();
    resized.UpdateNormalisedRect();
    resized.m_windowRect = CRect(0, 0, 400, 300);
    resized.UpdateGraphRect();
    EXPECT_EQ(resized.GetGraphRect(), CRect(10, 20, 110, 220)) << "an empty window changes no fractions";
    // Fractions of a damaged document; others are cut towards zero.
    resized.m_normalisedOrigin.Set(std::numeric_limits<double>::quiet_NaN(), -0.0017);
    resized.m_normalisedSize.Set(1e300, -1e300);
    resized.UpdateGraphRect();
    EXPECT_EQ(resized.GetGraphRect(), CRect(0, 0, 32000, 0));
    resized.m_normalisedOrigin.Set(-0.0051, 0.0066);
    resized.m_normalisedSize.Set(0.3, 0.1);
    resized.UpdateGraphRect();
    EXPECT_EQ(resized.GetGraphRect(), CRect(-2, 1, 118, 31)) << "0.3 × 400 is not quite 120";
}

TEST(GraphSorting, OrdersPlotsAndCurvesByTagWithTheFirstOfEqualsFirst)
{
    TestGraph graph;
    std::vector<CPlot*> plots;
    for (unsigned long const tag : { 5UL, 2UL, 9UL, 2UL }) {
        CPlot& plot = graph.AddPlotWithCurves(3);
        plot.SetTag(tag);
        plot.GetComponent(0)->SetTag(30);
        plot.GetComponent(1)->SetTag(10);
        plot.GetComponent(2)->SetTag(20);
        plots.push_back(&plot);
    }
    graph.GetPlotArray()->SortByTag();
    CPlot* const expected[] = { plots[1], plots[3], plots[0], plots[2] };
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(graph.GetPlotArray()->GetAt(i), expected[i]) << i;
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(expected[i]->GetComponent(c)->GetTag(), static_cast<unsigned long>(10 + 10 * c));
    }
}

TEST(GraphRemoval, HandsPlotsCurvesAndComponentsToTheCaller)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(2);
    std::unique_ptr<CPlotComponent> const curve(plot.GetComponent(0));
    EXPECT_TRUE(graph.RemovePlotComponent(curve.get()));
    EXPECT_EQ(plot.GetNumComponents(), 1);
    std::unique_ptr<CPlot> const removed(&plot);
    EXPECT_TRUE(graph.RemovePlot(&plot));
    std::unique_ptr<CPlot> const other(graph.AddPlot(it2DLinePlot));
    graph.GetPlotArray()->RemoveAll();
    EXPECT_EQ(graph.GetPlotArray()->GetSize(), 0);
    std::unique_ptr<CPlotArray> const plots(graph.GetPlotArray());
    EXPECT_TRUE(graph.RemoveComponent(plots.get()));
    EXPECT_EQ(graph.GetPlotArray(), nullptr);
    EXPECT_EQ(graph.GetNumComponents(), 0);

    graph.ResetModifiedFlags();
    EXPECT_FALSE(graph.RemovePlotComponent(curve.get()) || graph.RemovePlot(&plot));
    EXPECT_FALSE(graph.RemoveComponent(plots.get()));
    plots->RemoveAt(0);
    EXPECT_FALSE(graph.GetModifiedFlag()) << "what is not there changes nothing when it is taken out";
}

TEST(GraphFlags, RiseWhenPlotsCurvesOrComponentsComeGoOrChangePlaces)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(3);
    CPlotArray& plots = *graph.GetPlotArray();
    auto* const component = new CGraphComponent(&graph);
    std::unique_ptr<CPlotComponent> curve;
    auto* const other = new CPlot(&graph);
    std::pair<char const*, std::function<void()>> const changes[] = {
        { "curve out", [&] { graph.RemovePlotComponent((curve.reset(plot.GetComponent(1)), curve.get())); } },
        { "curve in", [&] { plot.AddComponent(curve.release()); } },
        { "curves sorted", [&] { plot.SortByTag(); } },
        { "plot in", [&] { plots.Add(other); } },
        { "plots sorted", [&] { plots.SortByTag(); } },
        { "plot out", [&] { graph.RemovePlot(&plot); } },
        { "component in", [&] { graph.AddComponent(component); } },
        { "component out", [&] { graph.RemoveComponent(component); } },
        { "every plot out", [&] { plots.RemoveAll(); } },
    };
    for (auto const& [what, change] : changes) {
        graph.ResetModifiedFlags();
        change();
        EXPECT_TRUE(graph.GetModifiedFlag()) << what;
    }
    delete component;
    delete other;
    delete &plot;
}

TEST(GraphFlags, RiseWithEveryLevelAndFallAfterADraw)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(1);
    CPlotComponent& curve = *plot.GetComponent(0);
    graph.ResetModifiedFlags();
    EXPECT_FALSE(graph.GetModifiedFlag());
    EXPECT_FALSE(graph.GraphComponentModified());

    curve.SetColour(1);
    EXPECT_TRUE(graph.PlotComponentModified() && !graph.PlotComponentDataModified()) << "its look, not its data";
    curve.SetFormulaString("x");
    EXPECT_TRUE(graph.PlotComponentDataModified());
    EXPECT_TRUE(graph.GetPlotArray()->ZValPropertyModified());
    EXPECT_FALSE(graph.GraphComponentModified()) << "a curve is no component";
    plot.SetTitle("new");
    EXPECT_TRUE(graph.GraphComponentModified());
    graph.SetTitle("new");
    EXPECT_TRUE(graph.GetModifiedFlag());

    graph.DrawOnce();
    EXPECT_FALSE(graph.GetModifiedFlag());
    EXPECT_FALSE(graph.PlotComponentModified());
    EXPECT_FALSE(graph.PlotComponentDataModified());
    EXPECT_FALSE(graph.GetPlotArray()->ZValPropertyModified());
    EXPECT_TRUE(plot.Modified()) << "a plot keeps its own flag";
    graph.printing = true;
    graph.DrawOnce();
    EXPECT_TRUE(graph.GetModifiedFlag()) << "a page was drawn: the screen is due";
}

TEST(CurveFlags, RiseOnlyWithWhatIsDrawn)
{
    CPlotComponent curve;
    curve.SetUseLUTMinMax(1);
    curve.SetLUTMinMax(1, 2);
    curve.SetUseFirstSharpSpectrumWidth(1);
    curve.SetFirstSharpSpectrumWidth(2);
    curve.SetSeed(1);
    curve.SetValid(1);
    EXPECT_FALSE(curve.Modified());
    for (auto const& set :
        { +[](CPlotComponent& c) { c.SetLUTName("x"); }, +[](CPlotComponent& c) { c.SetColour(1); } }) {
        curve.SetModified(0);
        set(curve);
        EXPECT_TRUE(curve.Modified());
    }
    EXPECT_FALSE(curve.PlotDataModified());
    curve.SetPlotDataModified(1);
    EXPECT_TRUE(curve.ZValPropertyModified());
    curve.ResetModifiedFlags();
    EXPECT_FALSE(curve.Modified() || curve.PlotDataModified() || curve.ZValPropertyModified());
    CGraphComponent component(nullptr);
    component.SetColour(0);
    EXPECT_TRUE(component.Modified());
    component.SetZValPropertyModified(1);
    component.ResetModifiedFlags();
    EXPECT_FALSE(component.Modified() || component.ZValPropertyModified());
}

TEST(CurveData, IsDefinedByTheFormulaOrTheFullScriptThatCounts)
{
    CPlotComponent curve;
    curve.SetColourDescription(0x12345);
    EXPECT_EQ(curve.GetColourDescription(), 0x2345);
    EXPECT_FALSE(curve.IsDefined());
    curve.SetUseFullScript(1);
    curve.SetFormulaString("x");
    EXPECT_FALSE(curve.IsDefined()) << "the full script counts";
    curve.SetFullScriptString("y");
    EXPECT_TRUE(curve.IsDefined());
}

/// Told of finished draws.
class Listener : public CObject {
public:
    void OnDrawn()
    {
        ++calls;
        if (action)
            action();
    }
    static void (CObject::*Method())() { return static_cast<void (CObject::*)()>(&Listener::OnDrawn); }
    int calls = 0;
    std::function<void()> action;
};

TEST(GraphDrawing, TellsTheListenerOnceFlagsAreDownAndStartsNoDrawWithinADraw)
{
    TestGraph graph;
    Listener listener;
    graph.SetGraphDrawnCallback(&listener, Listener::Method());
    listener.action = [&graph] {
        EXPECT_FALSE(graph.GetModifiedFlag());
        graph.DrawOnce();
    };
    graph.drawing = [&graph] { graph.DrawOnce(); };
    graph.DrawOnce();
    EXPECT_EQ(graph.draws, 1);
    EXPECT_EQ(listener.calls, 1);
    EXPECT_FALSE(graph.IsBusy());
    graph.SetGraphDrawnCallback(nullptr, nullptr);
    graph.DrawOnce();
    EXPECT_EQ(graph.draws, 2);
    EXPECT_EQ(listener.calls, 1);
}

TEST(GraphDrawing, SurvivesAListenerThatDestroysTheGraph)
{
    auto graph = std::make_unique<TestGraph>();
    graph->printing = true;
    bool survived = true;
    graph->survivedDraw = &survived;
    Listener listener;
    listener.action = [&graph] { graph.reset(); };
    graph->SetGraphDrawnCallback(&listener, Listener::Method());
    graph->DrawOnce();
    EXPECT_FALSE(survived);
    EXPECT_EQ(listener.calls, 1);
}

/// Notes in which order a plot's steps are taken.
class SteppingPlot : public CPlot {
public:
    using CPlot::CPlot;
    int Evaluate() override { return evaluatesItself; }
    void PrepareCurve(CPlotComponent& curve) override { steps += "p" + std::to_string(GetCurveIndex(&curve)); }
    void TakeOverPoints(CPlotComponent& curve) override { steps += "t" + std::to_string(GetCurveIndex(&curve)); }
    int evaluatesItself = 0;
    std::string steps;
};
class SteppingCurve : public CPlotComponent {
public:
    int Evaluate() override
    {
        auto& plot = static_cast<SteppingPlot&>(*GetPlot());
        plot.steps += "e" + std::to_string(plot.GetCurveIndex(this));
        return 1;
    }
};

TEST(GraphUpdatePlots, EvaluatesCurvesOneByOneUnlessThePlotDidIt)
{
    TestGraph graph;
    auto* const plot = new SteppingPlot;
    graph.GetPlotArray()->Add(plot);
    plot->AddComponent(new SteppingCurve);
    plot->AddComponent(new SteppingCurve);
    graph.UpdatePlots();
    EXPECT_EQ(plot->GetGraph(), &graph) << "plots learn first whose they are";
    EXPECT_EQ(plot->steps, "p0e0t0p1e1");
    plot->evaluatesItself = 1;
    plot->steps.clear();
    graph.UpdatePlots();
    EXPECT_EQ(plot->steps, "");
}

struct KeyCurve : CPlotComponent {
    int needsKey;
    std::optional<bool> canHaveKey;
    KeyCurve(int needs, std::optional<bool> canHave)
        : needsKey(needs)
        , canHaveKey(canHave)
    {
    }
    int NeedsColourKey() const override { return needsKey; }
    bool CanHaveColourKey() const override { return canHaveKey.value_or(CPlotComponent::CanHaveColourKey()); }
};

TEST(PlotArray, OffersColourKeysToCurvesThatNeedOneOrSayThatTheyCanHaveOne)
{
    TestGraph graph;
    graph.AddPlotWithCurves(1);
    CPlot* const plot = graph.AddPlot(it2DLinePlot);
    using Key = std::optional<bool>;
    for (auto const& [needsKey, canHaveKey] :
        { std::pair(0, Key()), { 1, Key() }, { 1, Key(false) }, { 0, Key(true) } })
        plot->AddComponent(new KeyCurve(needsKey, canHaveKey));
    plot->GetComponent(1)->SetTitle("needs");
    plot->GetComponent(3)->SetTitle("can have");
    CDWordArray tags { 77 };
    CStringArray titles { "kept" };
    graph.GetPlotArray()->GetColourRampCurves(tags, titles);
    EXPECT_EQ(tags, (CDWordArray { 77, 6, 8 }));
    EXPECT_EQ(titles, (CStringArray { "kept", "needs", "can have" }));
}

TEST(CurveErrors, NameTheCurveAndItsPlot)
{
    TestGraph graph;
    CPlot& plot = graph.AddPlotWithCurves(1);
    plot.SetTitle("Yields");
    plot.GetComponent(0)->SetTitle("%s");
    std::string shown;
    SetMessageBoxFunction([&shown](CString const& text, CString const& title, UINT style) {
        shown = title.ToUtf8() + "|" + std::to_string(style) + "|" + text.ToUtf8();
    });
    CVUtils::PlotDialogErrMsg(plot.GetComponent(0), "Bad data", "Line 3");
    EXPECT_EQ(shown, "Ombrel|0|Bad data\n\nCurve: \"%s\"\n    Plot: \"Yields\"\n\nLine 3");
    CPlotComponent const lone;
    CVUtils::PlotDialogErrMsg(&lone, "", "");
    EXPECT_EQ(shown, "Ombrel|0|\n\nCurve: \"Untitled Curve\"\n    Plot: \"\"\n\n");
    SetMessageBoxFunction(nullptr);
}

TEST(ItemTypes, OnlyPlotsHaveADescription)
{
    EXPECT_EQ(VUGetPlotDescription(itProbabilityPlot), " Probablity Plot.");
    EXPECT_EQ(VUGetPlotDescription(it2DContourPlot), " Contour Plot.");
    EXPECT_EQ(VUGetPlotDescription(it2DLine), "");
    int described = 0;
    for (int type = -1; type < 100; ++type)
        described += VUGetPlotDescription(static_cast<ItemType>(type)).IsEmpty() ? 0 : 1;
    EXPECT_EQ(described, 27);
}

} // namespace
} // namespace ombrel
