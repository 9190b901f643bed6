#include "ombrel/annotation/Caption.h"
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DLineSeriesPlot.h"
#include "ombrel/platform/framework/Archive.h"
#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace ombrel {
namespace {

using test::AddLine;
using Bytes = std::vector<std::byte>;

Bytes Store(CObject& object)
{
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar.WriteObject(&object);
    ar.Close();
    return file.GetBytes();
}

std::unique_ptr<CObject> Load(std::span<std::byte const> bytes, CRuntimeClass const& expected = CObject::kClass)
{
    OmbrelInit();
    CArchive ar(bytes);
    return ar.ReadObject(expected);
}

/// Fails without a leak: the exception is deleted, and the loader must have deleted the rest.
bool LoadFails(std::span<std::byte const> bytes)
{
    try {
        return Load(bytes) == nullptr;
    } catch (CException* e) {
        e->Delete();
        return true;
    }
}

std::unique_ptr<C2DGraph> MakeFullGraph()
{
    auto graph = std::make_unique<C2DGraph>(1);
    graph->SetTitle("Full");
    C2DLine& line = AddLine(*graph, { { 0, 1 }, { 1, kGap }, { 2, -3.5 } });
    line.SetTitle("Höhe");
    line.SetLineType(2);
    line.SetFillOn(1);
    for (ItemType const type : { it2DLineSeriesPlot, it2DAreaPlot, it2DStackedBarPlot, it2DErrorBarPlot })
        test::AddCurve(*graph->AddPlot(type), { 0, 1, 2 }, { 3, -1, 2 });
    graph->UpdatePlots();
    graph->AddCaption({ 10, 10 });
    graph->GetLegend()->Create({ 20, 20 });
    graph->GetAxes()->SetXAxisTitle("x");
    graph->SetDrawOrderTags({ 2, 1 });
    CDIB target(200, 150, 24);
    graph->Draw(target.GetDC(), { 0, 0, 200, 150 }, pmOffScreen);
    return graph;
}

TEST(Document, EveryClassStoresLoadsAndStoresTheSameBytes)
{
    for (char const* const name : { "CRealPoint", "CRealRect", "CVertex", "CNormal", "CCoordTransform",
             "CTransformArray", "CFontData", "CTableData", "CGraph", "CGraphComponent", "CPlotComponent", "CPlot",
             "CPlotArray", "CLegend", "CCaption", "CCaptionArray", "CColourKey", "CColourKeyArray", "CColourMap",
             "C2DGraph", "CAxes", "C2DGrid", "C2DPolarGrid", "C2DPlot", "C2DSeriesPlot", "C2DLinePlot",
             "C2DLineSeriesPlot", "C2DCurve", "C2DLine", "C2DLineSeriesLine", "C2DAreaPlot", "C2DAreaCurve",
             "C2DErrorBarPlot", "C2DErrorBarCurve", "C2DTextPlot", "C2DTextCurve", "C2DBarPlot", "C2DBarCurve",
             "C2DClusteredBarPlot", "C2DClusteredBarCurve", "C2DStackedBarPlot", "C2DStackedBarCurve" }) {
        OmbrelInit();
        CRuntimeClass const* const registered = FindRegisteredClass(name);
        ASSERT_NE(registered, nullptr) << name;
        auto const object = registered->create();
        EXPECT_EQ(&object->GetRuntimeClass(), registered) << name;
        // A graph without components gains the standard ones when it is loaded, so the second form is compared.
        Bytes const first = Store(*Load(Store(*object)));
        EXPECT_EQ(Store(*Load(first)), first) << name;
    }
}

TEST(Document, AFullGraphComesBackWithItsBytesAndItsPicture)
{
    auto const graph = MakeFullGraph();
    Bytes const bytes = Store(*graph);
    auto const object = Load(bytes, CGraph::kClass);
    auto* const loaded = DynamicDowncast<C2DGraph>(object.get());
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(Store(*loaded), bytes);
    EXPECT_EQ(loaded->GetComponentByName("Höhe")->GetTag(), 9u);
    EXPECT_EQ(loaded->GetPlotArray()->GetAt(0)->GetComponent(0)->GetPlot(), loaded->GetPlotArray()->GetAt(0));
    EXPECT_EQ(loaded->GetAxes()->GetGraph(), loaded);
    EXPECT_EQ(loaded->GetCaptionArray()->GetAt(0)->GetText(), CString("Caption Text"));
    EXPECT_EQ(loaded->GetCaptionArray()->GetAt(0)->GetGraph(), loaded);
    EXPECT_TRUE(loaded->GetLegend()->IsOn());
    EXPECT_EQ(loaded->GetNumComponents(), 7) << "none was made anew";
    EXPECT_EQ(loaded->GetNewTag(), graph->GetNewTag());
    graph->UpdatePlots();
    loaded->UpdatePlots();
    EXPECT_EQ(test::Record(*loaded, { 300, 200 }), test::Record(*graph, { 300, 200 }));
}

TEST(Document, AnyTruncationIsAnErrorAndLeaksNothing)
{
    Bytes const bytes = Store(*MakeFullGraph());
    for (std::size_t size = 0; size < bytes.size(); ++size)
        ASSERT_TRUE(LoadFails(std::span(bytes).first(size))) << size;
}

TEST(Document, DamagedBytesNeverCrashAndWhatLoadsCanBeDrawn)
{
    Bytes const bytes = Store(*MakeFullGraph());
    std::mt19937 random(11);
    CDIB target(80, 60, 24);
    for (int round = 0; round < 400; ++round) {
        Bytes damaged = bytes;
        for (int i = 0; i < 3; ++i)
            damaged[random() % damaged.size()] = std::byte(random() & 0xFF);
        try {
            auto const object = Load(damaged, CGraph::kClass);
            if (auto* const graph = DynamicDowncast<C2DGraph>(object.get())) {
                graph->UpdatePlots();
                graph->Draw(target.GetDC(), { 0, 0, 80, 60 }, pmOffScreen);
            }
        } catch (CException* e) {
            e->Delete();
        }
    }
}

} // namespace
} // namespace ombrel
