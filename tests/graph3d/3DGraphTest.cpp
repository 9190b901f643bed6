#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DAxis.h"
#include "tests/graph3d/DataPlot.h"

#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

TEST(Graph3D, KnowsTheWallsAtTheBackOfEveryView)
{
    struct Case {
        double azimuth, elevation;
        WallType x, y, z;
    };
    Case const cases[] = {
        { 30.0, 70.0, wtXMin, wtYMin, wtZMin },
        { 120.0, 89.9, wtXMax, wtYMin, wtZMin },
        { 210.0, 90.0, wtXMax, wtYMax, wtZMax },
        { 330.0, 110.0, wtXMin, wtYMax, wtZMax },
        // The azimuth counts modulo 360, and what is no number as 0.
        { 330.0 + 720.0, 20.0, wtXMin, wtYMax, wtZMin },
        { -30.0, 20.0, wtXMin, wtYMax, wtZMin },
        { 360.0, 20.0, wtXMin, wtYMin, wtZMin },
        { std::numeric_limits<double>::quiet_NaN(), 20.0, wtXMin, wtYMin, wtZMin },
    };
    C3DGraph graph(1);
    for (Case const& each : cases) {
        graph.SetViewingAzimuth(each.azimuth);
        graph.SetViewingElevation(each.elevation);
        WallType x = wtZMax;
        WallType y = wtZMax;
        WallType z = wtXMin;
        graph.GetWalls(x, y, z);
        EXPECT_EQ(x, each.x) << each.azimuth;
        EXPECT_EQ(y, each.y) << each.azimuth;
        EXPECT_EQ(z, each.z) << each.azimuth;
    }
}

TEST(Graph3D, UnitesTheRangesOfItsPlots)
{
    C3DGraph graph(1);
    double min = 1.0;
    double max = 1.0;
    graph.GetXRange(min, max);
    EXPECT_EQ(min, 0.0);
    EXPECT_EQ(max, 0.0);
    test::DataCurve* const first = test::AddData(graph, { 3.0, 0.0, -7.0 }, { 5.0, 1.0, -2.0 });
    test::DataCurve* const second = test::AddData(graph, { 4.0, -1.0, -3.0 }, { 9.0, 2.0, -1.0 });
    graph.GetXRange(min, max);
    EXPECT_EQ(min, 3.0);
    EXPECT_EQ(max, 9.0);
    graph.GetZRange(min, max);
    EXPECT_EQ(min, -7.0);
    EXPECT_EQ(max, -1.0);
    // Only the first plot replaces the 0 that the range starts from.
    first->defined = 0;
    graph.GetXRange(min, max);
    EXPECT_EQ(min, 0.0);
    EXPECT_EQ(max, 9.0);
    first->defined = 1;
    second->max[0] = std::numeric_limits<double>::quiet_NaN();
    graph.GetXRange(min, max);
    EXPECT_EQ(max, 5.0);
}

TEST(Graph3D, GivesTheBoxTheProportionsOfTheRanges)
{
    C3DGraph graph(1);
    test::DataCurve* const curve = test::AddData(graph, { 0.0, 0.0, 0.0 }, { 8.0, 4.0, 1.0 });
    auto const factors = [&graph] {
        std::array<double, 3> f {};
        graph.GetAxes()[2]->GetScaleFacs(f[0], f[1], f[2]);
        return f;
    };
    graph.SetAutoScaleParams(1);
    EXPECT_EQ(factors(), (std::array<double, 3> { 1.0, 0.5, 0.125 }));
    // Again, with data that just came: the ranges are brought up to date first.
    curve->max = { 2.0, 4.0, 1.0 };
    graph.SetAutoScaleParams(1);
    EXPECT_EQ(factors(), (std::array<double, 3> { 0.5, 1.0, 0.25 }));
    graph.SetAutoscaleMode(1);
    graph.SetAutoscaleMode(0);
    EXPECT_EQ(factors(), (std::array<double, 3> { 1.0, 1.0, 1.0 }));
    // Extents that are no proportions.
    for (C3DAxis** axis = graph.GetAxes(); axis != graph.GetAxes() + 3; ++axis) {
        (*axis)->SetRangeMode(C3DAxis::rmFixed);
        (*axis)->SetRange(1.0, 1.0);
    }
    graph.SetAutoScaleParams(1);
    EXPECT_EQ(factors(), (std::array<double, 3> { 1.0, 1.0, 1.0 }));
    graph.GetAxes()[0]->SetMax(3.0);
    graph.SetAutoScaleParams(1);
    EXPECT_EQ(factors()[0], 1.0);
    EXPECT_GT(factors()[1], 0.0);
}

TEST(Graph3D, AsksOnlyDefinedCurvesToRefresh)
{
    C3DGraph graph(1);
    test::DataCurve* const first = test::AddData(graph, {}, {});
    test::DataCurve* const second = test::AddData(graph, {}, {});
    second->defined = 0;
    graph.UpdateZVals();
    EXPECT_EQ(first->refreshed, 1);
    EXPECT_EQ(second->refreshed, 0);
}

TEST(Graph3D, ReplacedAxesTakeOverEverythingButTheirTags)
{
    C3DGraph graph(1);
    C3DGraph other(1);
    other.GetAxes()[2]->SetTitle("height");
    other.GetAxes()[2]->SetRange(1.0, 2.0);
    other.GetAxes()[2]->SetTag(77);
    unsigned long const tag = graph.GetAxes()[2]->GetTag();
    graph.ResetModifiedFlags();
    graph.ReplaceAxes(other.GetAxes());
    EXPECT_EQ(graph.GetAxes()[2]->GetTitle(), "height");
    EXPECT_EQ(graph.GetAxes()[2]->GetMax(), 2.0);
    EXPECT_EQ(graph.GetAxes()[2]->GetTag(), tag);
    EXPECT_EQ(graph.GetModifiedFlag(), 1);
}

TEST(Graph3D, PlacesItsLegendByItsRectangleAndCaptionsByTheWindow)
{
    C3DGraph graph(1);
    CRect const window(0, 0, 400, 300);
    graph.SetGraphAndWindowRect({ 100, 50, 300, 250 }, window);
    graph.SetPrintScale(2.5);
    for (AnnotationKind const kind : { AnnotationKind::Legend, AnnotationKind::Caption, AnnotationKind::ColourKey }) {
        std::optional<AnnotationFrame> const frame = graph.GetAnnotationFrame(kind, window);
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->reference, kind == AnnotationKind::Caption ? window : CRect(100, 50, 300, 250));
        EXPECT_EQ(frame->textArea, window);
        EXPECT_EQ(frame->textRule, AnnotationFrame::TextRule::Picture);
        EXPECT_EQ(frame->printScale, 2.5);
    }
    CCaption* const caption = graph.AddCaption(0.25, 0.75);
    ASSERT_TRUE(caption);
    EXPECT_EQ(caption->GetText(), "Caption Text");
    EXPECT_EQ(graph.GetCaptionArray()->GetSize(), 1);
    EXPECT_EQ(graph.AddPlot(it2DLinePlot), nullptr);
}

} // namespace
} // namespace ombrel
