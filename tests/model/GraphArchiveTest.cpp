#include "tests/model/ArchiveBytes.h"
#include "tests/model/TestGraph.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;
using test::TestGraph;

void RegisterClasses()
{
    for (CRuntimeClass const* c :
        { &CGraphComponent::kClass, &CPlotArray::kClass, &CPlot::kClass, &CPlotComponent::kClass })
        RegisterClass(*c);
}

/// A graph of one plain component.
Bytes GraphBytes(int version)
{
    Bytes bytes;
    bytes.Int(version, 1, 7, 1, 40); // data dimension, graph type, sized flag, tag counter
    if (version >= 2)
        bytes.Text("Title");
    bytes.Point(0.125, 0.25).Point(0.5, 0.75);
    bytes.Short(1).NewClass("CGraphComponent").Component(0x332211, 1, 0, 9);
    if (version >= 3)
        bytes.Int(23, 0); // tag, frame
    return bytes;
}

TEST(GraphArchive, KeepsEveryFieldInItsPlace)
{
    RegisterClasses();
    CGraph graph;
    ASSERT_TRUE(Load(graph, GraphBytes(3)));
    EXPECT_EQ(Stored(graph), GraphBytes(3));
    EXPECT_EQ(graph.GetDataDimension(), gd3D);
    EXPECT_EQ(graph.GetType(), 7);
    EXPECT_EQ(graph.GetTitle(), "Title");
    EXPECT_EQ(graph.GetTag(), 23u);
    EXPECT_FALSE(graph.GetGraphFrameOn());
    EXPECT_EQ(graph.GetNewTag(), 41u) << "goes on from the stored counter";
    ASSERT_EQ(graph.GetNumComponents(), 1);
    EXPECT_EQ(graph.GetComponent(0)->GetGraph(), &graph);
    EXPECT_EQ(graph.GetComponent(0)->GetColour(), 0x332211u);
    EXPECT_EQ(graph.GetComponent(0)->GetTag(), 9u);
    struct Resized : CGraph {
        using CGraph::m_windowRect;
    } resized;
    ASSERT_TRUE(Load(resized, GraphBytes(3)));
    resized.m_windowRect = CRect(0, 0, 800, 400);
    resized.UpdateGraphRect();
    EXPECT_EQ(resized.GetGraphRect(), CRect(100, 100, 500, 400));
}

TEST(GraphArchive, OlderLayoutsTakeANewTagAndKeepTheTitle)
{
    RegisterClasses();
    for (int const version : { 1, 2 }) {
        CGraph graph;
        ASSERT_TRUE(Load(graph, GraphBytes(version))) << version;
        EXPECT_EQ(graph.GetTitle(), version == 1 ? "untitled" : "Title");
        EXPECT_EQ(graph.GetTag(), 41u);
        EXPECT_EQ(graph.GetNewTag(), 42u);
        EXPECT_TRUE(graph.GetGraphFrameOn());
    }
}

TEST(GraphArchive, StoredTwiceIsTheSameWithPlotsAndCurves)
{
    RegisterClasses();
    TestGraph graph;
    graph.AddPlotWithCurves(2).SetTitle("First");
    graph.AddPlotWithCurves(1).GetComponent(0)->SetTitle("Curve");
    Bytes const bytes = Stored(graph);
    TestGraph loaded;
    loaded.AddPlotWithCurves(5);
    ASSERT_TRUE(Load(loaded, bytes));
    EXPECT_EQ(Stored(loaded), bytes);
    ASSERT_EQ(loaded.GetPlotArray()->GetSize(), 2);
    CPlot* const plot = loaded.GetPlotArray()->GetAt(1);
    EXPECT_EQ(plot->GetGraph(), &loaded);
    EXPECT_EQ(plot->GetComponent(0)->GetPlot(), plot);
    EXPECT_EQ(plot->GetComponent(0)->GetTitle(), "Curve");
}

TEST(GraphArchive, TruncatedBytesFailAtEveryLengthAndLeaveASoundGraph)
{
    RegisterClasses();
    TestGraph graph;
    graph.AddPlotWithCurves(1);
    Bytes const bytes = Stored(graph);
    for (std::size_t length = 0; length < bytes.Get().size(); ++length) {
        TestGraph loaded;
        EXPECT_FALSE(Load(loaded, Bytes::Of(std::span(bytes.Get()).first(length)))) << length;
        loaded.UpdatePlots();
        loaded.ClearSelection();
        EXPECT_EQ(loaded.GetObjectByTag(12345), nullptr);
    }
}

TEST(PlotArchive, KeepsTypeTitleAndCurvesInTheirPlace)
{
    RegisterClasses();
    CPlot plot;
    Bytes const empty = Bytes().Component(0x332211, 1, 1, 5).Int(1, 21).Text("Bars").Short(0);
    ASSERT_TRUE(Load(plot, empty));
    EXPECT_EQ(Stored(plot), empty);
    EXPECT_EQ(plot.GetItemType(), it3DBarPlot);
    EXPECT_EQ(plot.GetTitle(), "Bars");
    Bytes const wrong = Bytes().Component(0, 1, 0, 5).Int(1, 21).Text("Bars").Short(1).NewClass("CPlot").Add(empty);
    EXPECT_FALSE(Load(plot, wrong)) << "a plot among curves";
}

} // namespace
} // namespace ombrel
