#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "tests/graph3d/DataPlot.h"

#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

TEST(Axis3D, GoesFromDataUnitsIntoTheBoxAndBack)
{
    C3DAxis axis(nullptr, atYAxis);
    axis.SetRange(-10.0, 30.0);
    axis.SetScaleFacs(1.0, 0.5, 1.0);
    EXPECT_DOUBLE_EQ(axis.GetViewVal(-10.0, 0), -0.5);
    EXPECT_DOUBLE_EQ(axis.GetViewVal(30.0, 1), 0.25);
    EXPECT_DOUBLE_EQ(axis.GetViewVal(0.0, 1), -0.125);
    EXPECT_DOUBLE_EQ(axis.GetWorldVal(-0.125, 1), 0.0);
    EXPECT_DOUBLE_EQ(axis.GetWorldVal(0.5, 0), 30.0);
    EXPECT_DOUBLE_EQ(axis.GetViewDel(8.0), 0.1);
    // A range without width, and a box without height.
    axis.SetRange(3.0, 3.0);
    EXPECT_EQ(axis.GetViewVal(7.0, 1), 0.0);
    axis.SetScaleFacs(1.0, 0.0, 1.0);
    EXPECT_EQ(axis.GetWorldVal(0.25, 1), 3.0);
}

TEST(Axis3D, TakesItsRangeFromTheDataInTheAutomaticModes)
{
    struct Case {
        double lo, hi;
        int ticks;
        int mode;
        double min, max;
    };
    Case const cases[] = {
        { 0.3, 9.7, 6, C3DAxis::rmTidy, 0.0, 10.0 },
        { 0.3, 9.7, 6, C3DAxis::rmExact, 0.3, 9.7 },
        { 0.3, 9.7, 6, C3DAxis::rmFixed, -10.0, 10.0 },
        { 5.0, 5.0, 6, C3DAxis::rmExact, 4.0, 6.0 },
        { 0.0, 0.3, 6, C3DAxis::rmTidy, 0.0, 0.3 },
        // Where single precision is too coarse for the ends, they still hold the data.
        { 1e9 + 0.3, 1e9 + 9.7, 6, C3DAxis::rmTidy, 1e9, 1e9 + 10.0 },
        // Settings that make no step.
        { 0.3, 9.7, 1, C3DAxis::rmTidy, 0.0, 10.0 },
        { 0.3, 9.7, std::numeric_limits<int>::min(), C3DAxis::rmTidy, 0.0, 10.0 },
    };
    for (Case const& each : cases) {
        C3DGraph graph(1);
        test::AddData(graph, { each.lo, each.lo, each.lo }, { each.hi, each.hi, each.hi });
        for (int i = 0; i < 3; ++i) {
            C3DAxis& axis = *graph.GetAxes()[i];
            axis.SetNumTicks(each.ticks);
            axis.SetRangeMode(each.mode);
            axis.UpdateGraphParameters();
            EXPECT_DOUBLE_EQ(axis.GetMin(), each.min) << each.lo << " " << each.hi << " mode " << each.mode;
            EXPECT_DOUBLE_EQ(axis.GetMax(), each.max) << each.lo << " " << each.hi << " mode " << each.mode;
        }
    }
    // Without data the axis's own range stays.
    C3DGraph empty(1);
    empty.GetAxes()[0]->UpdateGraphParameters();
    EXPECT_EQ(empty.GetAxes()[0]->GetMin(), -10.0);
}

TEST(Axis3D, ANewRangeAsksCurvesToFindTheirPlaceAgainAndTheSameOneDoesNot)
{
    C3DGraph graph(1);
    test::AddData(graph, { 0.0, 0.0, 0.0 }, { 1.0, 1.0, 1.0 });
    C3DAxis& axis = *graph.GetAxes()[0];
    axis.UpdateGraphParameters();
    EXPECT_EQ(axis.ZValPropertyModified(), 1);
    axis.ResetModifiedFlags();
    axis.UpdateGraphParameters();
    EXPECT_EQ(axis.ZValPropertyModified(), 0);
}

} // namespace
} // namespace ombrel
