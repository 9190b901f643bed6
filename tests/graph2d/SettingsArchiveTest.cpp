#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

// A setter and its getter.
#define BOTH(Class, name)                                                                                              \
    {                                                                                                                  \
        &Class::Set##name, &Class::Get##name                                                                           \
    }

/// Takes settings over by their names, which raises the modified flag or not.
template <typename Set, typename Get, typename T> void TakeOver(
    T& to, T const& from, bool raises, std::initializer_list<std::pair<void (T::*)(Set), Get (T::*)() const>> settings)
{
    for (int index = 0; auto const& [set, get] : settings) {
        to.SetModified(0);
        (to.*set)((from.*get)());
        EXPECT_EQ(to.Modified() != 0, raises) << __PRETTY_FUNCTION__ << ' ' << index;
        ++index;
    }
}

/// What a component stores of its own, beyond what all components do.
Bytes OwnFields(Bytes const& stored)
{
    return Bytes::Of(std::span(stored.Get()).subspan(Bytes().Component(0, 0, 0, 0).Get().size()));
}

/// Every field with a value of its own, in stream order.
Bytes DistinctAxes()
{
    return Bytes()
        .Component(0x332211, 1, 2, 3)
        .Int(1)
        .Double(1.5, 2.5, 3.5, 4.5) // x and y range
        .Point(5.5, 6.5) // crossing point
        .Int(11, 12, 13, 14) // major and minor ticks, x and y each
        .Int(21, 22, 23, 24, 25) // reserved, labels, minor labels, titles, text colour
        .Int(31, 32, 33, 34, 35) // range modes, intersect mode, scale modes
        .Double(7.5, 8.5) // scale factors
        .Int(41, 42, 43, 44) // axes on, labels at the crossing on
        .Texts("x title", "y title")
        .Font("Face 1", 101, 1, 1.25)
        .Font("Face 2", 102, 2, 2.25)
        .Font("Face 3", 103, 3, 3.25)
        .Double(9.5, 10.5, 11.5, 12.5) // tick length factors: x major and minor, y major and minor
        .Int(51) // labels horizontal
        .Point(61.5, 62.5)
        .Point(63.5, 64.5)
        .Point(65.5, 66.5)
        .Point(67.5, 68.5)
        .Int(71, 72) // label modes
        .Short(2)
        .Texts("xa", "xb")
        .Short(1)
        .Text("ya")
        .Int(81, 82) // tick modes
        .Short(1)
        .Double(91.5)
        .Short(2)
        .Double(92.5, 93.5)
        .Int(111, 112, 113, 114) // precisions: major x and y, minor x and y
        .Double(115.5, 116.5, 117.5, 118.5) // tick minimum x and y, tick step x and y
        .Int(121, 122, 123, 124) // label placements, labels on
        .Int(131, 132, 133, 134) // formats: major x and y, minor x and y
        .Int(141, 142) // time units on
        .Int(151)
        .Double(152.5, 153.5) // x tick range
        .Int(154)
        .Double(155.5, 156.5) // y tick range
        .Int(0)
        .Double(40000.25) // reference date
        .Int(161, 2, 162, 5) // major and minor date step
        .Texts("date", "minor date", "time", "minor time")
        .Int(171, 172, 173, 174); // minor labels on, minor labels horizontal, align reference date
}

TEST(AxesArchive, KeepsEveryFieldInItsPlace)
{
    CAxes axes;
    axes.SetXLabels({ "left", "from", "before" });
    axes.SetYArbTickPosns({ 1, 2, 3, 4 });
    ASSERT_TRUE(Load(axes, DistinctAxes()));
    EXPECT_EQ(Stored(axes), DistinctAxes());
    axes.SetModified(0);
    axes.SetAxis(static_cast<CAxes::AxisType>(2), AxisSettings());
    EXPECT_FALSE(axes.Modified()) << "there are two axes";
    axes.SetAxis(CAxes::atX, axes.GetAxis(CAxes::atY));
    EXPECT_TRUE(axes.Modified());
    EXPECT_EQ(axes.GetXAxisTitle(), "y title");
}

TEST(AxesArchive, EachNameReadsAndSetsItsFieldAndRaisesTheModifiedFlagWhereItShould)
{
    using A = CAxes;
    A from;
    ASSERT_TRUE(Load(from, DistinctAxes()));
    // In stream order.
    EXPECT_EQ((std::vector<int> { from.GetNumXMajorTicks(), from.GetNumXMinorTicks(), from.GetNumYMajorTicks(),
                  from.GetNumYMinorTicks(), from.GetXAxisRangeMode(), from.GetYAxisRangeMode(), from.GetIntersectMode(),
                  from.GetXAxisScaleMode(), from.GetYAxisScaleMode(), from.XAxisOn(), from.YAxisOn(),
                  from.GetXIntersectLabelOn(), from.GetYIntersectLabelOn(), from.GetLabelsHorizontal(),
                  from.GetXAxisLabelMode(), from.GetYAxisLabelMode(), from.GetXLabelPrecision(),
                  from.GetYLabelPrecision(), from.GetXMinorLabelPrecision(), from.GetYMinorLabelPrecision(),
                  from.GetXLabelPlacement(), from.GetYLabelPlacement(), from.GetXLabelsOn(), from.GetYLabelsOn(),
                  from.GetXTimeUnitsOn(), from.GetYTimeUnitsOn(), from.GetXTickRangeMode(), from.GetYTickRangeMode(),
                  from.GetXDelTime(), from.GetXDelTimeMinor(), from.GetXMinorLabelsOn(), from.GetYMinorLabelsOn(),
                  from.GetMinorLabelsHorizontal(), from.GetAlignRefDate() }),
        (std::vector<int> { 11, 12, 13, 14, 31, 32, 33, 34, 35, 41, 42, 43, 44, 51, 71, 72, 111, 112, 113, 114, 121,
            122, 123, 124, 141, 142, 151, 154, 161, 162, 171, 172, 173, 174 }));
    EXPECT_EQ((std::vector<double> { from.GetXAxisMin(), from.GetXAxisMax(), from.GetYAxisMin(), from.GetYAxisMax(),
                  from.GetXAxisScaleFac(), from.GetYAxisScaleFac(), from.GetXMajorTickScaleFac(),
                  from.GetXMinorTickScaleFac(), from.GetYMajorTickScaleFac(), from.GetYMinorTickScaleFac(),
                  from.GetXTickMin(), from.GetYTickMin(), from.GetXTickDel(), from.GetYTickDel(),
                  from.GetXTickRangeMin(), from.GetXTickRangeMax(), from.GetYTickRangeMin(), from.GetYTickRangeMax() }),
        (std::vector<double> { 1.5, 2.5, 3.5, 4.5, 7.5, 8.5, 9.5, 10.5, 11.5, 12.5, 115.5, 116.5, 117.5, 118.5, 152.5,
            153.5, 155.5, 156.5 }));
    A to(nullptr);
    TakeOver<int, int>(to, from, true,
        { { &A::SetXAxisOn, &A::XAxisOn }, { &A::SetYAxisOn, &A::YAxisOn }, BOTH(A, XAxisScaleMode),
            BOTH(A, YAxisScaleMode), BOTH(A, IntersectMode), BOTH(A, XAxisRangeMode), BOTH(A, YAxisRangeMode),
            BOTH(A, XTimeUnitsOn), BOTH(A, YTimeUnitsOn), BOTH(A, NumXMajorTicks), BOTH(A, NumYMajorTicks),
            BOTH(A, NumXMinorTicks), BOTH(A, NumYMinorTicks), BOTH(A, XTickRangeMode), BOTH(A, YTickRangeMode),
            BOTH(A, XDelTime), BOTH(A, XDelTimeMinor), BOTH(A, AlignRefDate), BOTH(A, XLabelsOn), BOTH(A, YLabelsOn),
            BOTH(A, XMinorLabelsOn), BOTH(A, YMinorLabelsOn), BOTH(A, XIntersectLabelOn), BOTH(A, YIntersectLabelOn) });
    TakeOver<CRealPoint const&, CRealPoint>(
        to, from, true, { BOTH(A, XAxisStart), BOTH(A, XAxisEnd), BOTH(A, YAxisStart), BOTH(A, YAxisEnd) });
    TakeOver<CRealPoint const&, CRealPoint>(to, from, false, { BOTH(A, Intersect) });
    TakeOver<double, double>(to, from, true,
        { BOTH(A, XAxisMin), BOTH(A, YAxisMin), BOTH(A, XAxisMax), BOTH(A, YAxisMax), BOTH(A, XAxisScaleFac),
            BOTH(A, YAxisScaleFac), BOTH(A, XTickMin), BOTH(A, YTickMin), BOTH(A, XTickDel), BOTH(A, YTickDel),
            BOTH(A, XTickRangeMin), BOTH(A, YTickRangeMin), BOTH(A, XTickRangeMax), BOTH(A, YTickRangeMax),
            BOTH(A, XMajorTickScaleFac), BOTH(A, YMajorTickScaleFac), BOTH(A, XMinorTickScaleFac),
            BOTH(A, YMinorTickScaleFac) });
    TakeOver<CString const&, CString>(to, from, true, { BOTH(A, XAxisTitle), BOTH(A, YAxisTitle) });
    TakeOver<A::TickMode, A::TickMode>(to, from, true, { BOTH(A, XTickMode), BOTH(A, YTickMode) });
    TakeOver<COleDateTime, COleDateTime>(to, from, true, { BOTH(A, XTickMinTime) });
    TakeOver<A::TimeUnit, A::TimeUnit>(to, from, true, { BOTH(A, XDelTimeUnit), BOTH(A, XDelTimeUnitMinor) });
    TakeOver<A::LabelPlacement, A::LabelPlacement>(
        to, from, true, { BOTH(A, XLabelPlacement), BOTH(A, YLabelPlacement) });
    TakeOver<A::FormatType, A::FormatType>(to, from, true,
        { BOTH(A, XFormatType), BOTH(A, YFormatType), BOTH(A, XMinorFormatType), BOTH(A, YMinorFormatType) });
    TakeOver<COLORREF, COLORREF>(to, from, true,
        { BOTH(A, LabelsColour), BOTH(A, MinorLabelsColour), BOTH(A, TitlesColour), BOTH(A, TextColour) });
    TakeOver<DWORD, DWORD>(to, from, true, { BOTH(A, ReservedColour) });
    TakeOver<int, int>(to, from, false,
        { BOTH(A, XAxisLabelMode), BOTH(A, YAxisLabelMode), BOTH(A, XLabelPrecision), BOTH(A, YLabelPrecision),
            BOTH(A, XMinorLabelPrecision), BOTH(A, YMinorLabelPrecision), BOTH(A, LabelsHorizontal),
            BOTH(A, MinorLabelsHorizontal) });
    TakeOver<CString const&, CString>(to, from, false,
        { BOTH(A, XLabelDateFormat), BOTH(A, XMinorLabelDateFormat), BOTH(A, XLabelTimeFormat),
            BOTH(A, XMinorLabelTimeFormat) });
    to.SetTitlesFont(*from.GetTitlesFont());
    to.SetLabelsFont(*from.GetLabelsFont());
    to.SetMinorLabelsFont(*from.GetMinorLabelsFont());
    CStringArray texts;
    from.GetXLabels(texts), to.SetXLabels(texts), from.GetYLabels(texts), to.SetYLabels(texts);
    CDoubleArray positions;
    from.GetXArbTickPosns(positions), to.SetXArbTickPosns(positions);
    from.GetYArbTickPosns(positions), to.SetYArbTickPosns(positions);
    EXPECT_EQ(OwnFields(Stored(to)), OwnFields(DistinctAxes()));
}

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
        { { &G::SetOn, &G::IsOn }, BOTH(G, HorzLinesOn), BOTH(G, VertLinesOn), BOTH(G, MajorLineStyle),
            BOTH(G, MinorLineStyle), BOTH(G, NumMajorXDivs), BOTH(G, NumMajorYDivs), BOTH(G, NumMinorXDivs),
            BOTH(G, NumMinorYDivs), BOTH(G, XLineMode), BOTH(G, YLineMode), BOTH(G, ArbXLinesOn), BOTH(G, ArbYLinesOn),
            BOTH(G, AlignArbXLinesWithTicks), BOTH(G, AlignArbYLinesWithTicks), BOTH(G, XDelTime),
            BOTH(G, XDelTimeMinor) });
    TakeOver<int, int>(to, from, false, { BOTH(G, Synch) });
    TakeOver<COLORREF, COLORREF>(to, from, true, { BOTH(G, MajorColour), BOTH(G, MinorColour) });
    TakeOver<double, double>(
        to, from, true, { BOTH(G, XLineMin), BOTH(G, YLineMin), BOTH(G, XLineDel), BOTH(G, YLineDel) });
    TakeOver<COleDateTime const&, COleDateTime>(to, from, true, { BOTH(G, XMinTime) });
    TakeOver<TimeUnit, TimeUnit>(to, from, true, { BOTH(G, XDelTimeUnit), BOTH(G, XDelTimeUnitMinor) });
    EXPECT_EQ(OwnFields(Stored(to)), OwnFields(GridBytes()));
}

TEST(PolarGridArchive, KeepsLabelsOfAnglesInTheSwitch)
{
    for (int const stored : { -1, 0, 1, 2, 3, 4 }) {
        Bytes const bytes
            = Bytes().Component(0x332211, 1, 1, 2).Int(1, stored, 11, 12, 13, 14).Int(0x0000FF, 0x00FF00).Int(2, 3);
        C2DPolarGrid grid;
        grid.SetAngleLabels(C2DPolarGrid::alBearings);
        ASSERT_TRUE(Load(grid, bytes));
        EXPECT_EQ(Stored(grid), bytes);
        EXPECT_EQ(grid.IsOn() != 0, stored != 0);
        EXPECT_EQ(grid.GetAngleLabels(),
            stored == 2       ? C2DPolarGrid::alDegrees
                : stored == 3 ? C2DPolarGrid::alBearings
                              : C2DPolarGrid::alPlain);
    }
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
    // −1 where the grid keeps the mode it has.
    std::pair<CAxes::TickMode, int> const cases[] = { { CAxes::tmNone, -1 },
        { CAxes::tmDivisions, C2DGrid::lmDivisions }, { CAxes::tmStep, C2DGrid::lmStep }, { CAxes::tmArbitrary, -1 },
        { CAxes::tmDivisionsArbitrary, C2DGrid::lmDivisions }, { CAxes::tmStepArbitrary, C2DGrid::lmStep } };
    for (auto const& [tickMode, lineMode] : cases) {
        for (int const before : { C2DGrid::lmDivisions, C2DGrid::lmStep }) {
            CAxes axes;
            Configure(axes, tickMode);
            C2DGrid grid(nullptr);
            grid.SetXLineMode(before);
            grid.ResetModifiedFlags();
            grid.FollowAxes(axes);
            int const mode = lineMode < 0 ? before : lineMode;
            bool const steps = mode == C2DGrid::lmStep;
            EXPECT_EQ(grid.GetXLineMode(), mode) << tickMode;
            EXPECT_EQ(grid.GetNumMajorXDivs(), steps ? 5 : 7) << tickMode;
            EXPECT_EQ(grid.GetXLineMin(), steps ? 0.5 : 0.0) << tickMode;
            EXPECT_EQ(grid.GetXLineDel(), steps ? 0.25 : 2.0) << tickMode;
            EXPECT_EQ(grid.GetNumMinorXDivs(), 2) << tickMode;
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

} // namespace
} // namespace ombrel
