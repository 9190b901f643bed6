#include "tests/graph2d/GraphFixture.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/axes/AxesTicks.h"
#include "ombrel/graph2d/axes/GridPositions.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/registry/Registry.h"
#include "ombrel/prefs/Preferences.h"
#include "tests/platform/framework/PrintString.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>

namespace ombrel {
namespace {

using test::Values;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pointwise;
using testing::SizeIs;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr int kHuge = std::numeric_limits<int>::max();

auto Near(Values const& values) { return Pointwise(DoubleNear(1e-9), values); }

GridDirection Divisions(int majors, int minors)
{
    GridDirection direction;
    direction.majorDivisions = majors;
    direction.minorDivisions = minors;
    return direction;
}

GridDirection Steps(double min, double del, int minors = 4)
{
    GridDirection direction = Divisions(5, minors);
    direction.lineMin = min;
    direction.lineDel = del;
    return direction;
}

TEST(GridPositions, DivisionsAndStepsLieInTheRange)
{
    EXPECT_THAT(DivisionLines(Divisions(3, 2), { 1, 7 }, ttMajor), Near({ 1, 3, 5, 7 }));
    EXPECT_THAT(DivisionLines(Divisions(3, 2), { 1, 7 }, ttMinor), Near({ 2, 4, 6 }));
    EXPECT_THAT(DivisionLines(Divisions(3, 2), { 7, 1 }, ttMajor), Near({ 7, 5, 3, 1 })) << "reversed";
    EXPECT_THAT(DivisionLines(Divisions(3, 2), { 7, 1 }, ttMinor), Near({ 6, 4, 2 }));
    EXPECT_THAT(StepLines(Steps(0, 2), { 7, 1 }, ttMajor, ClosingLine::None), IsEmpty()) << "no step lies in it";
    EXPECT_THAT(StepLines(Steps(0, 2), { 7, 1 }, ttMajor, ClosingLine::AtMaximum), ElementsAre(1));
    struct {
        double min;
        double del;
        Values majors;
        Values minors;
    } const cases[] = {
        { 7, 2, { 1, 3, 5, 7, 9 }, { 0, 2, 4, 6, 8, 10 } },
        { -3, 4, { 1, 5, 9 }, { 3, 7 } },
        { 1e6, 4, { 0, 4, 8 }, { 2, 6, 10 } },
        { 16, 100, {}, {} },
        { 55, 100, {}, { 5 } },
    };
    for (auto const& c : cases) {
        GridDirection const steps = Steps(c.min, c.del, 2);
        EXPECT_THAT(StepLines(steps, { 0, 10 }, ttMajor, ClosingLine::None), Near(c.majors)) << c.min;
        EXPECT_THAT(StepLines(steps, { 0, 10 }, ttMinor, ClosingLine::AtMaximum), Near(c.minors)) << c.min;
        Values closed = c.majors;
        closed.push_back(10);
        EXPECT_THAT(StepLines(steps, { 0, 10 }, ttMajor, ClosingLine::AtMaximum), Near(closed)) << c.min;
    }
    EXPECT_THAT(StepLines(Steps(0, 0.1), { 0, 0.3 }, ttMajor, ClosingLine::AtMaximum), SizeIs(4))
        << "a step that is off the maximum by rounding needs no closing line";
}

TEST(GridPositions, DatesStepBackAcrossTheYear)
{
    auto const day = [](int y, int m, int d) { return COleDateTime(y, m, d, 0, 0, 0).GetValue(); };
    DateTickSettings dates;
    dates.tickMin = COleDateTime(2020, 3, 10, 0, 0, 0);
    dates.delUnit = TimeUnit::Month;
    dates.delMinor = 2;
    dates.delUnitMinor = TimeUnit::Week;
    GridRange const range { day(2019, 11, 30), day(2020, 2, 20) };
    EXPECT_THAT(DateLines(dates, range, ttMajor), ElementsAre(day(2019, 12, 10), day(2020, 1, 10), day(2020, 2, 10)));
    EXPECT_THAT(DateLines(dates, range, ttMinor),
        ElementsAre(day(2019, 12, 8), day(2019, 12, 24), day(2020, 1, 7), day(2020, 1, 24), day(2020, 2, 7)));
    EXPECT_THAT(DateLines(dates, { 0, 1e7 }, ttMajor), IsEmpty()) << "no range of dates";
}

TEST(GridPositions, SettingsOfADamagedDocumentMakeNoLines)
{
    EXPECT_THAT(DecadeLines({ 0, 1e9 }, ttMajor), IsEmpty());
    EXPECT_THAT(DecadeLines({ -0.5, 1.5 }, ttMajor), ElementsAre(0, 1));
    for (GridTickType const type : { ttMinor, ttMajor }) {
        for (int const n : { 0, kMaxTicks, -kHuge - 1 })
            EXPECT_THAT(DivisionLines(Divisions(n, 4), { 0, 10 }, type), IsEmpty()) << n;
        for (double const del : { 0.0, -2.0, 1e-300, kNan })
            EXPECT_THAT(StepLines(Steps(0, del), { 0, 10 }, type, ClosingLine::AtMaximum), IsEmpty()) << del;
        for (GridRange const range : { GridRange { 0, 0 }, { kNan, 1 }, { -1.7e308, 1.7e308 } }) {
            EXPECT_THAT(DivisionLines(Divisions(5, 4), range, type), IsEmpty()) << range.min;
            EXPECT_THAT(StepLines(Steps(0, 2), range, type, ClosingLine::AtMaximum), IsEmpty()) << range.min;
        }
    }
    for (int const n : { 0, 1, -1, kHuge, -kHuge - 1 })
        EXPECT_THAT(DivisionLines(Divisions(5, n), { 0, 10 }, ttMinor), IsEmpty()) << n;
}

/// A graph over [0, 10] × [0, 10] of 400 × 300 pixels, mapped onto (50, 20) – (350, 220): 30 and 20 pixels a unit.
class GridDraw : public testing::Test {
protected:
    GridDraw() { test::FixAxes(m_axes, 10, 10); }
    static std::vector<RecordedPrimitive> Draw(
        C2DGraph& graph, std::function<void(CPort&)> const& draw, DeviceCapabilities const& device = {})
    {
        graph.SetGraphAndWindowRect(CRect(0, 0, 400, 300), CRect(0, 0, 400, 300));
        graph.GetAxes()->UpdateGraphParameters();
        bool const printing = device.logPixelsX != DeviceCapabilities().logPixelsX;
        auto const surface = std::make_shared<RecordingSurface>(CSize(400, 300), device, printing);
        CDC dc(surface);
        CPort port(&dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), graph.GetAxes()->GetRealExtentRect());
        draw(port);
        EXPECT_EQ(dc.GetTextColor(), CDC().GetTextColor());
        EXPECT_EQ(dc.GetBkMode(), OPAQUE);
        return surface->Primitives();
    }
    static std::vector<RecordedPrimitive> Draw(C2DGraph& graph, CGraphComponent& component)
    {
        return Draw(graph, [&component](CPort& port) { component.Draw(&port); });
    }
    C2DGraph m_graph { 1 };
    CAxes& m_axes = *m_graph.GetAxes();
    C2DGrid& m_grid = *m_graph.GetGrid();
    C2DPolarGrid& m_polar = *m_graph.GetPolarGrid();
};

/// Settings of either grid, with all that is drawn of it over the plotting area from (50, 220) to (350, 20).
struct Variant {
    char const* name;
    void (*apply)(CAxes&, C2DGrid&);
    char const* drawn;
};

/// Two divisions of two parts along x from 0 to 10, one of three along y from 0 to 6.
void MakeSmall(C2DGraph& graph)
{
    test::FixAxes(*graph.GetAxes(), 10, 6);
    C2DGrid& grid = *graph.GetGrid();
    grid.SetOn(1);
    grid.SetSynch(0);
    grid.SetMajorLineStyle(1);
    grid.SetMinorColour(RGB(1, 0, 0));
    grid.SetNumMajorXDivs(2);
    grid.SetNumMinorXDivs(2);
    grid.SetNumMajorYDivs(1);
    grid.SetNumMinorYDivs(3);
}

Variant const kVariants[] = {
    { "divisions", [](CAxes&, C2DGrid&) {},
        "[1,1]  125,220-125,20#1  275,220-275,20#1  50,153-350,153#1  50,87-350,87#1  []  50,220-50,20  200,220-200,20 "
        " 350,220-350,20  50,220-350,220  50,20-350,20" },
    { "one direction of lines at a time", [](CAxes&, C2DGrid& g) { g.SetHorzLinesOn(0), g.SetMinorLineStyle(1); },
        "125,220-125,20#1  275,220-275,20#1  50,220-50,20  200,220-200,20  350,220-350,20" },
    { "reversed", [](CAxes& a, C2DGrid& g) { a.SetXAxisRange(10, 0), a.SetYAxisRange(6, 0), g.SetVertLinesOn(0); },
        "[1,1]  50,153-350,153#1  50,87-350,87#1  []  50,220-350,220  50,20-350,20" },
    { "steps that end before the edge, the last line broken",
        [](CAxes&, C2DGrid& g) {
            g.SetXLineMode(1), g.SetXLineMin(7), g.SetXLineDel(4), g.SetMajorLineStyle(0);
            g.SetYLineMode(1), g.SetYLineMin(-5), g.SetYLineDel(4), g.SetNumMinorYDivs(2);
        },
        "[1,1]  80,220-80,20#1  200,220-200,20#1  320,220-320,20#1  50,187-350,187#1  50,53-350,53#1  [1,1]  "
        "140,220-140,20  260,220-260,20  50,120-350,120  50,20-350,20" },
    { "steps closed by a solid line",
        [](CAxes&, C2DGrid& g) { g.SetXLineMode(1), g.SetXLineMin(7), g.SetXLineDel(4), g.SetHorzLinesOn(0); },
        "[1,1]  80,220-80,20#1  200,220-200,20#1  320,220-320,20#1  []  140,220-140,20  260,220-260,20  "
        "350,220-350,20" },
    { "steps of the axes",
        [](CAxes& a, C2DGrid& g) {
            a.SetXTickMode(CAxes::tmStep), a.SetXTickMin(0.75), a.SetXTickDel(4.5), a.SetNumXMinorTicks(0);
            a.SetYTickMode(CAxes::tmStepArbitrary), a.SetYTickMin(-3.5), a.SetYTickDel(5), a.SetNumYMinorTicks(1);
            g.SetSynch(1), g.SetMajorLineStyle(0);
        },
        "[1,1]  50,87-350,87#1  [1,1]  73,220-73,20  208,220-208,20  343,220-343,20  50,170-350,170  50,20-350,20" },
    { "dates of the axes",
        [](CAxes& a, C2DGrid& g) {
            a.SetXTimeUnitsOn(1), a.SetXTickMode(CAxes::tmStep), a.SetXDelTime(4), a.SetXAxisRange(2, 12);
            a.SetXDelTimeUnit(TimeUnit::Day), a.SetXDelTimeMinor(2), a.SetXDelTimeUnitMinor(TimeUnit::Day);
            g.SetSynch(1), g.SetHorzLinesOn(0);
        },
        "[1,1]  110,220-110,20#1  230,220-230,20#1  []  50,220-50,20  170,220-170,20  290,220-290,20" },
    { "dates",
        [](CAxes& a, C2DGrid& g) {
            a.SetXTimeUnitsOn(1), a.SetXAxisRange(2, 5), g.SetXLineMode(1), g.SetHorzLinesOn(0), g.SetXDelTime(2);
            g.SetXDelTimeUnit(TimeUnit::Day), g.SetXDelTimeMinor(12), g.SetXDelTimeUnitMinor(TimeUnit::Hour);
        },
        "[1,1]  100,220-100,20#1  150,220-150,20#1  200,220-200,20#1  300,220-300,20#1  []  50,220-50,20  "
        "250,220-250,20" },
    { "decades, whatever lines are on",
        [](CAxes& a, C2DGrid& g) {
            a.SetXAxisScaleMode(1), a.SetYAxisScaleMode(1), a.SetXAxisRange(0, 1), a.SetYAxisRange(1, 3);
            g.SetVertLinesOn(0), g.SetHorzLinesOn(0);
        },
        "[1,1]  140,220-140,20#1  193,220-193,20#1  231,220-231,20#1  260,220-260,20#1  283,220-283,20#1  "
        "304,220-304,20#1  321,220-321,20#1  336,220-336,20#1  350,220-350,20#1  50,190-350,190#1  50,172-350,172#1  "
        "50,160-350,160#1  50,150-350,150#1  50,142-350,142#1  50,135-350,135#1  50,130-350,130#1  50,125-350,125#1  "
        "50,120-350,120#1  50,90-350,90#1  50,72-350,72#1  50,60-350,60#1  50,50-350,50#1  50,42-350,42#1  "
        "50,35-350,35#1  50,30-350,30#1  50,25-350,25#1  50,20-350,20#1  []  50,220-50,20  350,220-350,20  "
        "50,220-350,220  50,120-350,120  50,20-350,20" },
    { "free lines without the grid",
        [](CAxes&, C2DGrid& g) {
            g.SetOn(0), g.SetArbXLinesOn(1), g.SetArbXLinePosns({ 3.0, kNan, 12.0 }), g.SetArbYLinesOn(1);
            g.SetArbYLinePosns({ 5.0 }), g.SetArbLineColour(RGB(2, 0, 0));
        },
        "140,220-140,20#2  410,220-410,20#2  50,53-350,53#2" },
    { "free lines that are off",
        [](CAxes&, C2DGrid& g) { g.SetOn(0), g.SetArbXLinePosns({ 3.0 }), g.SetArbYLinePosns({ 5.0 }); }, "" },
};

TEST_F(GridDraw, DrawsTheseLines)
{
    for (Variant const& variant : kVariants) {
        C2DGraph graph(1);
        MakeSmall(graph);
        variant.apply(*graph.GetAxes(), *graph.GetGrid());
        EXPECT_EQ(test::Figures(Draw(graph, *graph.GetGrid())), variant.drawn) << variant.name;
    }
}

TEST_F(GridDraw, EachPassDrawsItsLinesAlone)
{
    MakeSmall(m_graph);
    m_grid.SetMinorLineStyle(1);
    m_grid.SetMinorColour(0);
    m_grid.SetXLineDel(8);
    m_grid.SetYLineDel(8);
    m_grid.SetXDelTimeUnit(TimeUnit::Day);
    m_grid.SetXDelTime(8);
    m_grid.SetXDelTimeUnitMinor(TimeUnit::Day);
    m_grid.SetXDelTimeMinor(5);
    using Pass = void (*)(C2DGrid&, CPort*);
    auto const drawn
        = [this](Pass pass) { return test::Figures(Draw(m_graph, [&](CPort& port) { pass(m_grid, &port); })); };
    std::pair<Pass, char const*> const passes[] = {
        { [](C2DGrid& g, CPort* port) { g.DrawDivs(port, CAxes::atX, ttMajor); },
            "50,220-50,20  200,220-200,20  350,220-350,20" },
        { [](C2DGrid& g, CPort* port) { g.DrawDivs(port, CAxes::atY, ttMinor); }, "50,153-350,153  50,87-350,87" },
        { [](C2DGrid& g, CPort* port) { g.DrawDel(port, CAxes::atX, ttMajor); },
            "50,220-50,20  290,220-290,20  350,220-350,20" },
        { [](C2DGrid& g, CPort* port) { g.DrawDel(port, CAxes::atY, ttMinor); }, "50,131-350,131  50,42-350,42" },
        // From 1 January 2000 back: 36526 is 6 more than a multiple of 8.
        { [](C2DGrid& g, CPort* port) { g.DrawDate(port, ttMajor); }, "230,220-230,20" },
        { [](C2DGrid& g, CPort* port) { g.DrawDate(port, ttMinor); }, "140,220-140,20" },
        { [](C2DGrid& g, CPort* port) { g.DrawLogX(port, ttMajor); }, "50,220-50,20  80,220-80,20  " },
        { [](C2DGrid& g, CPort* port) { g.DrawLogY(port, ttMinor); }, "50,210-350,210  50,204-350,204  " },
    };
    for (auto const& [pass, lines] : passes)
        EXPECT_THAT(drawn(pass), testing::StartsWith(lines));
    m_axes.SetXAxisScaleMode(1);
    EXPECT_EQ(drawn(passes[0].first), "") << "logarithmic";
}

TEST_F(GridDraw, LinesHaveTheColoursAndOnPaperTheThicknessThatTheUserPrefers)
{
    auto const registry = std::filesystem::path(testing::TempDir()) / ("ombrel-grids-" + std::to_string(getpid()));
    SetRegistryFile(registry.string());
    CPreferences::SetAxesThicknessScaleFac(2);
    CPreferences::SetGridThicknessScaleFac(3);
    int next = 1;
    for (auto const set : { CPreferences::SetAxesColour2D, CPreferences::SetMajorLabelsColour2D,
             CPreferences::SetMinorLabelsColour2D, CPreferences::SetTitlesColour2D,
             CPreferences::SetMajorGridLineColour2D, CPreferences::SetMinorGridLineColour2D })
        set(static_cast<COLORREF>(next++));
    DeviceCapabilities printer;
    printer.logPixelsX = printer.logPixelsY = 600;
    C2DGraph graph(1);
    auto const draw = [&](CGraphComponent& component) {
        return Draw(
            graph, [&component](CPort& port) { component.Draw(&port); }, printer);
    };
    graph.GetGrid()->SetOn(1);
    graph.GetPolarGrid()->SetOn(1);
    for (CGraphComponent* const grid :
        std::initializer_list<CGraphComponent*> { graph.GetGrid(), graph.GetPolarGrid() }) {
        auto const drawn = test::OfKind<primitive::Stroke>(draw(*grid));
        ASSERT_GE(drawn.size(), 2u);
        EXPECT_EQ(drawn[0].pen.width, VUNearest(6.25 * 3));
        EXPECT_EQ(drawn[0].pen.colour.colour, 6u);
        EXPECT_EQ(drawn[1].pen.colour.colour, 5u);
    }
    graph.GetPolarGrid()->SetOn(0);
    LineStyle const line = test::OfKind<primitive::Polyline>(draw(*graph.GetAxes())).at(0).line;
    EXPECT_EQ(line.width, VUNearest(6.25 * 2));
    EXPECT_EQ(line.colour, 1u);
    AxesTextSettings const& texts = graph.GetAxes()->GetTexts();
    EXPECT_THAT(
        (std::vector { texts.labels.colour, texts.minorLabels.colour, texts.titlesColour }), ElementsAre(2, 3, 4));
    SetRegistryFile("");
    std::filesystem::remove(registry);
}

/// Settings of a polar grid over ranges from -40 to 40, round (200, 120), 3.75 pixels a unit along x and 2.5 along y.
///
/// Labels are 15 pixels high and stand 4 pixels beside the circle; figures are 7 pixels wide.
struct PolarVariant {
    char const* name;
    void (*apply)(C2DPolarGrid&);
    char const* drawn;
    char const* extent;
};

PolarVariant const kPolarVariants[] = {
    { "four angles", [](C2DPolarGrid&) {},
        "[3,1]  o163,95-238,145#1  o88,45-313,195#1  94,191-306,49#1  306,191-94,49#1  []  o125,70-275,170  "
        "o50,20-350,220  50,120-350,120  200,220-200,20  50,120-50,20  47,70-50,70  47,20-50,20  0 15 354,112  180 15 "
        "25,112  90 15 193,5  270 15 189,224  20 15 29,62  40 15 29,12",
        "25,5-361,239" },
    { "eight angles, broken lines",
        [](C2DPolarGrid& g) {
            g.SetNumMajorPhiDivs(8), g.SetNumMinorPhiDivs(1), g.SetMajorLineStyle(0), g.SetNumMinorRDivs(1);
        },
        "[3,1]  o125,70-275,170  o50,20-350,220  50,120-350,120  94,191-306,49  200,220-200,20  306,191-94,49  []  "
        "50,120-50,20  47,70-50,70  47,20-50,20  0 15 354,112  180 15 25,112  45 15 306,34  225 15 73,191  90 15 193,5 "
        " 270 15 189,224  135 15 73,34  315 15 306,191  20 15 29,62  40 15 29,12",
        "25,5-361,239" },
    { "six angles, three parts",
        [](C2DPolarGrid& g) {
            g.SetNumMajorPhiDivs(6), g.SetNumMinorPhiDivs(3), g.SetNumMajorRDivs(1), g.SetMinorLineStyle(1);
        },
        "o125,70-275,170#1  59,154-341,86#1  85,184-315,56#1  174,218-226,22#1  226,218-174,22#1  315,184-85,56#1  "
        "341,154-59,86#1  o50,20-350,220  50,120-350,120  125,207-275,33  275,207-125,33  50,120-50,20  47,20-50,20  0 "
        "15 354,112  180 15 25,112  60 15 275,18  240 15 104,207  120 15 104,18  300 15 275,207  40 15 29,12",
        "25,12-361,222" },
    { "an odd number of angles",
        [](C2DPolarGrid& g) {
            g.SetNumMajorPhiDivs(3), g.SetNumMinorPhiDivs(1), g.SetNumMajorRDivs(1), g.SetNumMinorRDivs(3);
        },
        "[3,1]  o150,87-250,153#1  o100,53-300,187#1  []  o50,20-350,220  50,120-350,120  50,120-50,20  47,20-50,20  0 "
        "15 354,112  180 15 29,120  40 15 29,12",
        "29,12-361,220" },
    { "bearings in degrees",
        [](C2DPolarGrid& g) {
            g.SetAngleLabels(C2DPolarGrid::alBearings), g.SetNumMajorPhiDivs(8), g.SetNumMajorRDivs(0);
        },
        "[3,1]  61,158-339,82#1  143,212-257,28#1  257,212-143,28#1  339,158-61,82#1  []  50,120-350,120  "
        "94,191-306,49  200,220-200,20  306,191-94,49  90\xC2\xB0 15 354,112  270\xC2\xB0 15 20,112  45\xC2\xB0 15 "
        "306,34  225\xC2\xB0 15 68,191  0\xC2\xB0 15 194,5  180\xC2\xB0 15 187,224  315\xC2\xB0 15 68,34  135\xC2\xB0 "
        "15 306,191",
        "20,5-373,239" },
    { "angles alone", [](C2DPolarGrid& g) { g.SetNumMajorRDivs(0); },
        "[3,1]  94,191-306,49#1  306,191-94,49#1  []  50,120-350,120  200,220-200,20  0 15 354,112  180 15 25,112  90 "
        "15 193,5  270 15 189,224",
        "25,5-361,239" },
    { "circles alone", [](C2DPolarGrid& g) { g.SetNumMajorPhiDivs(-4); },
        "[3,1]  o163,95-238,145#1  o88,45-313,195#1  []  o125,70-275,170  o50,20-350,220  50,120-50,20  47,70-50,70  "
        "47,20-50,20  20 15 29,62  40 15 29,12",
        "29,12-350,220" },
    { "off", [](C2DPolarGrid& g) { g.SetOn(0); }, "", "0,0-0,0" },
};

TEST_F(GridDraw, DrawsThesePolarGrids)
{
    m_axes.SetXAxisRange(-40, 40);
    m_axes.SetYAxisRange(-40, 40);
    for (PolarVariant const& variant : kPolarVariants) {
        C2DPolarGrid grid(&m_graph);
        grid.SetOn(1);
        grid.SetMajorColour(0);
        grid.SetMajorLineStyle(1);
        grid.SetMinorColour(RGB(1, 0, 0));
        grid.SetNumMajorRDivs(2);
        grid.SetNumMinorRDivs(2);
        grid.SetNumMajorPhiDivs(4);
        variant.apply(grid);
        EXPECT_EQ(test::Figures(Draw(m_graph, grid)), variant.drawn) << variant.name;
        EXPECT_EQ(test::Figure(grid.GetExtentRect()), variant.extent) << variant.name;
    }
}

TEST_F(GridDraw, MeasuringAPolarGridDrawsNothingAndKeepsRoomForTheScale)
{
    m_polar.SetOn(1);
    m_axes.SetXAxisRange(-40, 40);
    m_axes.SetYAxisRange(-40, 40);
    m_polar.SetDrawMode(dmMeasure);
    EXPECT_THAT(Draw(m_graph, m_polar), IsEmpty());
    EXPECT_EQ(test::Figure(m_polar.GetExtentRect()), "29,12-350,220") << "angles take no room";
    m_polar.BeginLayout();
    Draw(m_graph, m_polar);
    m_axes.SetXAxisRange(-400, 400);
    m_axes.SetYAxisRange(-400, 400);
    Draw(m_graph, m_polar);
    EXPECT_EQ(m_polar.GetExtentRect().left, 29) << "texts are measured once in a layout";
    m_polar.EndLayout();
    Draw(m_graph, m_polar);
    EXPECT_EQ(m_polar.GetExtentRect().left, 21) << "1.25 times 21 pixels beside the ticks";
}

} // namespace
} // namespace ombrel
