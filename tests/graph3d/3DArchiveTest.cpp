#include "ombrel/Init.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/Walls.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

/// Loads and stores what is complete, and refuses every shorter beginning of it.
template <typename T> void ExpectEveryFieldInItsPlace(Bytes const& bytes)
{
    OmbrelInit();
    T object;
    ASSERT_TRUE(Load(object, bytes));
    EXPECT_EQ(Stored(object), bytes);
    for (std::size_t length = 0; length < bytes.Get().size(); ++length) {
        T cut;
        EXPECT_FALSE(Load(cut, Bytes::Of(std::span(bytes.Get()).first(length)))) << length;
    }
}

Bytes Vertex(double x, double y, double z) { return Bytes().Int(1).Double(x, y, z); }

TEST(Archive3D, AxesKeepEveryFieldInItsPlace)
{
    ExpectEveryFieldInItsPlace<C3DAxis>(
        Bytes()
            .Component(0x332211, 1, 2, 3)
            .Int(1)
            .Int(2, 11) // axis type, on
            .Double(1.5, 1.5, 2.5) // the minimum twice, and the maximum
            .Int(12)
            .Double(3.5, 4.5, 5.5) // scale factors
            .Int(13, 14) // range mode, minor divisions
            .Double(6.5, 7.5, 8.5, 9.5) // tick lengths: x and y, then z
            .Text("title")
            .Int(21, 22, 23, 24, 25) // face viewer, horizontal, labels horizontal, tick mode, tick range mode
            .Double(10.5, 11.5)
            .Int(31, 32) // label precision, format type
            .Double(12.5, 13.5) // tick minimum and step
            .Int(41) // label mode
            .Byte(1, 2, 3, 4, 5, 6, 7, 8, 9)
            .Font("Face 1", 101, 1, 1.25)
            .Font("Face 2", 102, 2, 2.25)
            .Short(2)
            .Texts("a", "b")
            .Short(1)
            .Double(14.5)
            .Short(1)
            .Text("c")
            .Short(2)
            .Double(15.5, 16.5)
            .Short(1)
            .Int(51)
            .Short(1) // minor ticks
            .NewClass("CVertex")
            .Add(Vertex(1, 2, 3))
            .Short(1, 0x8001) // ticks: an object of the class that stands first in the table
            .Add(Vertex(4, 5, 6))
            .Short(1, 0x8001) // labels
            .Add(Vertex(7, 8, 9)));
    C3DAxis axis;
    ASSERT_TRUE(Load(axis, Stored(axis)));
    EXPECT_EQ(axis.GetColour(), 0U);
}

TEST(Archive3D, TheSecondOfAnAxisMinimumsStays)
{
    C3DAxis axis;
    Bytes bytes = Stored(axis);
    std::vector<std::byte> raw = bytes.Get();
    Bytes const stored = Bytes().Double(-10.0, -10.0);
    auto const at = std::search(raw.begin(), raw.end(), stored.Get().begin(), stored.Get().end());
    ASSERT_NE(at, raw.end());
    Bytes const changed = Bytes().Double(1.0, 2.0);
    std::copy(changed.Get().begin(), changed.Get().end(), at);
    ASSERT_TRUE(Load(axis, Bytes::Of(raw)));
    EXPECT_EQ(axis.GetMin(), 2.0);
}

TEST(Archive3D, GridsKeepEveryFieldInItsPlace)
{
    ExpectEveryFieldInItsPlace<C3DGrid>(Bytes()
                                            .Component(0x332211, 1, 2, 3)
                                            .Int(1, 11)
                                            .Double(1.5, 2.5, 3.5)
                                            .Int(12, 13, 14, 15, 16, 17, 18) // lines, synch, line modes
                                            .Double(4.5, 5.5, 6.5, 7.5, 8.5, 9.5) // minimum and step along x, y and z
                                            .Int(21, 22, 23, 24, 25, 26, 27) // planes on, minor divisions, lighting
                                            .Byte(1, 2, 3));
    C3DGrid grid;
    grid.SetXLineDel(3.0);
    grid.SetNumMinorZDivs(4);
    grid.SetYPLaneOn(0);
    C3DGrid loaded;
    ASSERT_TRUE(Load(loaded, Stored(grid)));
    EXPECT_EQ(loaded.GetXLineDel(), 3.0);
    EXPECT_EQ(loaded.GetNumMinorZDivs(), 4);
    EXPECT_EQ(loaded.GetYPLaneOn(), 0);
}

TEST(Archive3D, WallsKeepEveryFieldInItsPlaceAndOlderOnesAreNotLit)
{
    auto const walls = [](int version) {
        return Bytes().Component(0x332211, 1, 2, 3).Int(version, 11).Byte(1, 2, 3).Int(12, 13, 14);
    };
    ExpectEveryFieldInItsPlace<CWalls>(walls(2).Int(15));
    CWalls old;
    ASSERT_TRUE(Load(old, walls(1)));
    EXPECT_EQ(old.GetLit(), 0);
    EXPECT_EQ(old.GetFloorOn(), 14);
    EXPECT_EQ(old.GetColour(), 0x030201U);
}

TEST(Archive3D, CurvesOfTheFirstLayoutHaveNeitherColourMapNorDefaultRanges)
{
    C3DCurve curve;
    Bytes const stored = Stored(curve);
    CPlotComponent base;
    Bytes bytes = Stored(base);
    bytes.Int(2, 0, 0).Add(Stored(*curve.GetColourmap())).Int(1);
    EXPECT_EQ(stored, bytes);

    curve.SetCurveType(C3DCurve::ctPolar);
    curve.SetGradationOn(1);
    curve.SetUseDefaultRanges(1);
    C3DCurve old;
    ASSERT_TRUE(Load(old, Stored(base).Int(1, C3DCurve::ctCylindrical)));
    EXPECT_EQ(old.GetCurveType(), C3DCurve::ctCylindrical);
    EXPECT_EQ(old.GetUseDefaultRanges(), 0);
    EXPECT_EQ(old.GetGradationOn(), 0);
    ASSERT_TRUE(Load(old, Stored(curve)));
    EXPECT_EQ(old.GetCurveType(), C3DCurve::ctPolar);
    EXPECT_EQ(old.GetUseDefaultRanges(), 1);
    EXPECT_EQ(old.GetGradationOn(), 1);
}

/// The fields that a graph of a layout version stores of its own.
Bytes GraphFields(int version)
{
    Bytes bytes;
    bytes.Int(version)
        .Double(1.5, 2.5, 3.5, 4.5)
        .Text("Face")
        .Int(11, 12)
        .Float(5.5, 6.5, 7.5, 8.5, 9.5)
        .Double(10.5, 11.5, 12.5, 13.5, 14.5, 15.5)
        .Int(13)
        .Double(16.5);
    if (version >= 2)
        bytes.Short(101, 102, 103);
    if (version >= 3)
        bytes.Int(21);
    if (version >= 4)
        bytes.Int(22);
    if (version >= 5)
        bytes.Int(23);
    if (version >= 6)
        bytes.Double(17.5);
    return bytes;
}

TEST(Archive3D, GraphsKeepEveryFieldInItsPlaceAndLoadOlderLayouts)
{
    OmbrelInit();
    C3DGraph fresh(1);
    std::size_t const ownSize
        = GraphFields(6).Get().size() - 2 * std::string_view("Face").size() + 2 * std::string_view("Arial").size();
    Bytes const all = Stored(fresh);
    Bytes const common = Bytes::Of(std::span(all.Get()).first(all.Get().size() - ownSize));
    for (int version = 1; version <= 6; ++version) {
        C3DGraph graph;
        ASSERT_TRUE(Load(graph, Bytes(common).Add(GraphFields(version)))) << version;
        EXPECT_EQ(graph.GetViewingAzimuth(), 1.5);
        EXPECT_EQ(graph.GetYPos(), 15.5);
        EXPECT_EQ(graph.GetAttenuation(), 16.5);
        double azimuth = 0.0;
        double polarAngle = 0.0;
        graph.GetLight2Pos(azimuth, polarAngle);
        EXPECT_EQ(azimuth, 7.5);
        EXPECT_EQ(polarAngle, 9.5);
        EXPECT_EQ(graph.GetBackgroundColour(), version >= 2 ? RGB(101, 102, 103) : RGB(0, 0, 0));
        EXPECT_EQ(graph.GetAutoscaleMode(), version >= 3 ? 21 : 0);
        EXPECT_EQ(graph.GetGridLineAntialiasMode(), version >= 4 ? 22 : 0);
        EXPECT_EQ(graph.GetAxisLineAntialiasMode(), version >= 5 ? 23 : 1);
        EXPECT_EQ(graph.GetLightDistance(), version >= 6 ? 17.5 : 1.5);
        if (version == 6) {
            EXPECT_EQ(Stored(graph), Bytes(common).Add(GraphFields(6)));
        }
    }
}

TEST(Archive3D, LoadedGraphsKnowTheirComponentsAndGetTheMissingOnes)
{
    OmbrelInit();
    C3DGraph graph(1);
    graph.GetAxes()[1]->SetTitle("depth");
    graph.GetWalls()->SetOn(1);
    C3DAxis* const removed = graph.GetAxes()[2];
    ASSERT_TRUE(graph.RemoveComponent(removed));
    delete removed;
    C3DGraph loaded;
    ASSERT_TRUE(Load(loaded, Stored(graph)));
    EXPECT_EQ(loaded.GetAxes()[1]->GetTitle(), "depth");
    EXPECT_EQ(loaded.GetWalls()->IsOn(), 1);
    ASSERT_TRUE(loaded.GetAxes()[2]);
    EXPECT_EQ(loaded.GetAxes()[2]->GetTitle(), "Z");
    EXPECT_EQ(loaded.GetNumComponents(), 9);
}

} // namespace
} // namespace ombrel
