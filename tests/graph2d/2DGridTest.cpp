#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/prefs/Preferences.h"
#include "tests/graph2d/TakeOver.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::OwnFields;
using test::Stored;
using test::TakeOver;

Bytes GridBytes()
{
    return Bytes()
        .Component(0x332211, 1, 1, 2)
        .Int(1, 1, 11, 12, 13, 14) // version; on, major x and y, minor x and y divisions
        .Int(0x0000FF, 0x00FF00) // major and minor colour
        .Int(2, 3, 4, 5) // major and minor style, x and y line mode
        .Int(6, 7, 8, 9) // free lines on, and aligned, x and y each
        .Double(0.5, 1.5, 2.5, 3.5) // x minimum and step, y minimum and step
        .Int(21, 22, 0) // horizontal, vertical lines, synchronised
        .Int(0) // a valid date
        .Double(40000.5)
        .Int(31, 3, 32, 4); // major and minor date step and unit
}

TEST(Grid2DArchive, KeepsEveryFieldInItsPlaceWhichItsNameReadsAndSets)
{
    using G = C2DGrid;
    G from;
    ASSERT_TRUE(Load(from, GridBytes()));
    EXPECT_EQ(Stored(from), GridBytes());
    G to(nullptr);
    TakeOver<int, int>(to, from, true,
        { { &G::SetOn, &G::IsOn }, { &G::SetHorzLinesOn, &G::GetHorzLinesOn },
            { &G::SetVertLinesOn, &G::GetVertLinesOn }, { &G::SetMajorLineStyle, &G::GetMajorLineStyle },
            { &G::SetMinorLineStyle, &G::GetMinorLineStyle }, { &G::SetNumMajorXDivs, &G::GetNumMajorXDivs },
            { &G::SetNumMajorYDivs, &G::GetNumMajorYDivs }, { &G::SetNumMinorXDivs, &G::GetNumMinorXDivs },
            { &G::SetNumMinorYDivs, &G::GetNumMinorYDivs }, { &G::SetXLineMode, &G::GetXLineMode },
            { &G::SetYLineMode, &G::GetYLineMode }, { &G::SetArbXLinesOn, &G::GetArbXLinesOn },
            { &G::SetArbYLinesOn, &G::GetArbYLinesOn },
            { &G::SetAlignArbXLinesWithTicks, &G::GetAlignArbXLinesWithTicks },
            { &G::SetAlignArbYLinesWithTicks, &G::GetAlignArbYLinesWithTicks }, { &G::SetXDelTime, &G::GetXDelTime },
            { &G::SetXDelTimeMinor, &G::GetXDelTimeMinor } });
    TakeOver<int, int>(to, from, false, { { &G::SetSynch, &G::GetSynch } });
    TakeOver<COLORREF, COLORREF>(
        to, from, true, { { &G::SetMajorColour, &G::GetMajorColour }, { &G::SetMinorColour, &G::GetMinorColour } });
    TakeOver<double, double>(to, from, true,
        { { &G::SetXLineMin, &G::GetXLineMin }, { &G::SetYLineMin, &G::GetYLineMin },
            { &G::SetXLineDel, &G::GetXLineDel }, { &G::SetYLineDel, &G::GetYLineDel } });
    TakeOver<COleDateTime const&, COleDateTime>(to, from, true, { { &G::SetXMinTime, &G::GetXMinTime } });
    TakeOver<TimeUnit, TimeUnit>(to, from, true,
        { { &G::SetXDelTimeUnit, &G::GetXDelTimeUnit }, { &G::SetXDelTimeUnitMinor, &G::GetXDelTimeUnitMinor } });
    EXPECT_EQ(OwnFields(Stored(to)), OwnFields(GridBytes()));
    for (std::size_t length = 0; length < GridBytes().Get().size(); ++length)
        EXPECT_FALSE(Load(from, Bytes::Of(std::span(GridBytes().Get()).first(length)))) << length;
}

TEST(Grid2DArchive, HoldsTheDefaultsOfANewGrid)
{
    C2DGrid grid(nullptr);
    COLORREF major = 0;
    COLORREF minor = 0;
    CPreferences::GetMajorGridLineColour2D(major);
    CPreferences::GetMinorGridLineColour2D(minor);
    EXPECT_EQ(Stored(grid),
        Bytes()
            .Component(0, 0, 0, 0)
            .Int(1, 0, 5, 5, 4, 4)
            .Int(major, minor)
            .Int(0, 0, 0, 0)
            .Int(0, 0, 0, 0)
            .Double(0, 2, 0, 2)
            .Int(1, 1, 1)
            .Int(0)
            .Double(36526) // 1 January 2000
            .Int(1, 0, 1, 1));
}

TEST(PolarGrid2DArchive, KeepsEveryFieldInItsPlaceWhichItsNameReadsAndSets)
{
    using G = C2DPolarGrid;
    Bytes const bytes = Bytes().Component(0x332211, 1, 1, 3).Int(1, 9, 11, 12, 13, 14).Int(0x0000FF, 0x00FF00, 2, 3);
    G from;
    ASSERT_TRUE(Load(from, bytes));
    EXPECT_EQ(Stored(from), bytes);
    G to(nullptr);
    EXPECT_EQ(OwnFields(Stored(to)), Bytes().Int(1, 0, 5, 8, 4, 2).Int(to.GetMajorColour(), to.GetMinorColour(), 0, 0))
        << "at first";
    TakeOver<int, int>(to, from, true,
        { { &G::SetOn, &G::IsOn }, { &G::SetNumMajorRDivs, &G::GetNumMajorRDivs },
            { &G::SetNumMinorRDivs, &G::GetNumMinorRDivs }, { &G::SetNumMajorPhiDivs, &G::GetNumMajorPhiDivs },
            { &G::SetNumMinorPhiDivs, &G::GetNumMinorPhiDivs }, { &G::SetMajorLineStyle, &G::GetMajorLineStyle },
            { &G::SetMinorLineStyle, &G::GetMinorLineStyle } });
    TakeOver<COLORREF, COLORREF>(
        to, from, true, { { &G::SetMajorColour, &G::GetMajorColour }, { &G::SetMinorColour, &G::GetMinorColour } });
    EXPECT_EQ(OwnFields(Stored(to)), OwnFields(bytes));
}

TEST(Grid2D, FreeLinesAreReadAndSetByTheirNamesWhichRaisesTheModifiedFlag)
{
    C2DGrid grid(nullptr);
    grid.SetArbXLinePosns({ 1.0, 2.0 });
    grid.SetModified(0);
    grid.SetArbYLinePosns({ 3.0 });
    EXPECT_TRUE(grid.Modified());
    CDoubleArray positions { 7.0 };
    grid.GetArbXLinePosns(positions);
    EXPECT_EQ(positions, (CDoubleArray { 1.0, 2.0 }));
    grid.GetArbYLinePosns(positions);
    EXPECT_EQ(positions, (CDoubleArray { 3.0 }));
}

/// Settings of both axes that differ in everything.
void Configure(CAxes& axes, CAxes::TickMode xMode)
{
    axes.SetXTickMode(xMode);
    axes.SetYTickMode(CAxes::tmDivisions);
    axes.SetNumXMajorTicks(8);
    axes.SetNumXMinorTicks(1);
    axes.SetNumYMajorTicks(12);
    axes.SetNumYMinorTicks(9);
    axes.SetXTickMin(0.5);
    axes.SetXTickDel(0.25);
    axes.SetYTickMin(-3.0);
    axes.SetYTickDel(1.5);
}

TEST(Grid2D, FollowsTheAxesInEveryTickMode)
{
    struct {
        CAxes::TickMode tickMode;
        /// Which of the two modes it gives; −1 where the grid keeps the one it has.
        int lineMode;
    } const cases[] = {
        { CAxes::tmNone, -1 },
        { CAxes::tmDivisions, C2DGrid::lmDivisions },
        { CAxes::tmStep, C2DGrid::lmStep },
        { CAxes::tmArbitrary, -1 },
        { CAxes::tmDivisionsArbitrary, C2DGrid::lmDivisions },
        { CAxes::tmStepArbitrary, C2DGrid::lmStep },
    };
    for (auto const& c : cases) {
        for (int const before : { C2DGrid::lmDivisions, C2DGrid::lmStep }) {
            CAxes axes;
            Configure(axes, c.tickMode);
            C2DGrid grid(nullptr);
            grid.SetXLineMode(before);
            grid.ResetModifiedFlags();
            grid.FollowAxes(axes);
            bool const steps = (c.lineMode < 0 ? before : c.lineMode) == C2DGrid::lmStep;
            EXPECT_EQ(grid.GetXLineMode(), steps ? C2DGrid::lmStep : C2DGrid::lmDivisions) << c.tickMode;
            EXPECT_EQ(grid.GetNumMajorXDivs(), steps ? 5 : 7) << c.tickMode;
            EXPECT_EQ(grid.GetXLineMin(), steps ? 0.5 : 0.0) << c.tickMode;
            EXPECT_EQ(grid.GetXLineDel(), steps ? 0.25 : 2.0) << c.tickMode;
            EXPECT_EQ(grid.GetNumMinorXDivs(), 2) << c.tickMode;
            EXPECT_EQ(grid.GetNumMajorYDivs(), 11) << "y lines stay divisions";
            EXPECT_EQ(grid.GetNumMinorYDivs(), 10);
            EXPECT_FALSE(grid.Modified()) << "following is no change that asks for another draw";
        }
    }
}

TEST(Grid2D, FollowsItsGraphOnlyWhileSynchronised)
{
    C2DGraph graph(1);
    C2DGrid& grid = *graph.GetGrid();
    Configure(*graph.GetAxes(), CAxes::tmDivisions);
    grid.SetSynch(0);
    graph.UpdateComponentParameters();
    EXPECT_EQ(grid.GetNumMajorXDivs(), 5);
    grid.SetSynch(1);
    graph.UpdateComponentParameters();
    EXPECT_EQ(grid.GetNumMajorXDivs(), 7);
    C2DGrid lost(nullptr);
    lost.UpdateGraphParameters();
    EXPECT_EQ(lost.GetNumMajorXDivs(), 5);
}

TEST(Grid2D, DamagedTickCountsDoNotOverflow)
{
    CAxes axes;
    constexpr int kHuge = 0x7FFFFFFF;
    axes.SetNumXMajorTicks(-kHuge - 1);
    axes.SetNumXMinorTicks(kHuge);
    C2DGrid grid(nullptr);
    grid.FollowAxes(axes);
    EXPECT_EQ(grid.GetNumMajorXDivs(), -kHuge - 1);
    EXPECT_EQ(grid.GetNumMinorXDivs(), kHuge);
}

} // namespace
} // namespace ombrel
