#include "ombrel/model/Graph.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

void RegisterClasses()
{
    for (CRuntimeClass const* c : { &CGraphComponent::kClass, &CPlotArray::kClass, &CPlot::kClass,
             &CPlotComponent::kClass, &CCoordTransform::kClass })
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

/// Every field with a value of its own, in one of the layouts.
Bytes CurveBytes(int version, bool shortDataSource, std::string_view fullScript = "script")
{
    Bytes bytes;
    bytes.Int(version, 26).Texts("text", "formula", "title", "lut", "name").Short(3);
    if (shortDataSource)
        bytes.Short(2);
    else
        bytes.Int(2);
    bytes.Int(1, 0x332211, 0x665544, 4).Text(fullScript).Int(5); // modified, colours, debug; use full script
    bytes.Int(6, 7, 8).Double(0.5).Int(9).Double(-1.5, 1.5); // tag, steps, first width; range of the look-up table
    bytes.Int(10, 11);
    if (version >= 2)
        bytes.Int(12);
    if (version >= 3)
        bytes.Int(1).Short(1).NewClass("CCoordTransform").Int(1, 2).Double(1, 2, 3);
    if (version >= 4)
        bytes.Int(13);
    return bytes;
}

TEST(PlotComponentArchive, KeepsEveryFieldInItsPlace)
{
    RegisterClasses();
    CPlotComponent curve;
    ASSERT_TRUE(Load(curve, CurveBytes(5, false)));
    EXPECT_EQ(Stored(curve), CurveBytes(5, false));
    EXPECT_EQ(curve.GetItemType(), it3DLineArrayCurve);
    EXPECT_EQ(curve.GetFormulaString(), "formula");
    EXPECT_EQ(curve.GetTitle(), "title");
    EXPECT_EQ(curve.GetLUTString(), "lut");
    EXPECT_EQ(curve.GetLUTName(), "name");
    EXPECT_EQ(curve.GetColourDescription(), 3);
    EXPECT_EQ(curve.GetDataSourceType(), CPlotComponent::dsFile);
    EXPECT_EQ(curve.GetColour(), 0x332211u);
    EXPECT_EQ(curve.GetOriginalColour(), 0x665544u);
    EXPECT_EQ(curve.GetDebug(), 4);
    EXPECT_EQ(curve.GetUseFullScript(), 5);
    EXPECT_EQ(curve.GetTag(), 6u);
    EXPECT_EQ(curve.GetNumSharpSpectrumSteps(), 7);
    EXPECT_EQ(curve.GetUseFirstSharpSpectrumWidth(), 8);
    EXPECT_EQ(curve.GetUseLUTMinMax(), 9);
    EXPECT_EQ(curve.GetScriptSegmentLine(), 10);
    EXPECT_EQ(curve.GetScriptDebug(), 11);
    EXPECT_EQ(curve.GetNumScriptLines(), 12);
    EXPECT_EQ(curve.GetSeed(), 13);
    ASSERT_EQ(curve.GetNumTransforms(), 1);
    CTransformArray const transforms = curve.GetTransforms();
    EXPECT_EQ(transforms.GetAt(0)->GetType(), CCoordTransform::ctScale);
}

TEST(PlotComponentArchive, OlderLayoutsKeepTheDefaultsOfWhatTheyLack)
{
    RegisterClasses();
    struct {
        int version;
        bool shortDataSource;
        int scriptLines;
        int transforms;
        int seed;
    } const cases[] = {
        { 1, true, 0, 0, 99 },
        { 2, true, 12, 0, 99 },
        { 3, true, 12, 1, 99 },
        { 4, true, 12, 1, 13 },
        { 4, false, 12, 1, 13 },
        { 5, false, 12, 1, 13 },
    };
    for (auto const& c : cases) {
        CPlotComponent curve;
        ASSERT_TRUE(Load(curve, CurveBytes(c.version, c.shortDataSource))) << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetDataSourceType(), CPlotComponent::dsFile) << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetFullScriptString(), "script") << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetNumScriptLines(), c.scriptLines) << c.version;
        EXPECT_EQ(curve.GetNumTransforms(), c.transforms) << c.version;
        EXPECT_EQ(curve.GetSeed(), c.seed) << c.version;
    }
}

TEST(PlotComponentArchive, BothFormsOfTheFourthLayoutAreToldApartWithoutAScriptToo)
{
    RegisterClasses();
    for (bool const shortDataSource : { true, false }) {
        CPlotComponent curve;
        ASSERT_TRUE(Load(curve, CurveBytes(4, shortDataSource, ""))) << shortDataSource;
        EXPECT_EQ(curve.GetTag(), 6u) << shortDataSource;
    }
    // 254 units, the first with the low byte FF: where the longer form would have its string, there is a mark, too.
    std::string const script = "\xFF" + std::string(253, 's');
    CPlotComponent curve;
    ASSERT_TRUE(Load(curve, CurveBytes(4, true, script)));
    EXPECT_EQ(curve.GetFullScriptString().GetLength(), 254);
    EXPECT_EQ(curve.GetTag(), 6u);
}

} // namespace
} // namespace ombrel
