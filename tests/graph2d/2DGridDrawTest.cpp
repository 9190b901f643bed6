#include "tests/graph2d/GraphFixture.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/axes/GridPositions.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"
#include "tests/platform/framework/PrintString.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pointwise;
using testing::SizeIs;
using Kind = RecordedPrimitive::Kind;
using Values = std::vector<double>;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
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

TEST(GridPositions, DecadesHaveNineMinorLinesEach)
{
    EXPECT_THAT(DecadeLines({ 0, 2 }, ttMajor), ElementsAre(0, 1, 2));
    EXPECT_THAT(DecadeLines({ -0.5, 1.5 }, ttMajor), ElementsAre(0, 1));
    Values const minors = DecadeLines({ 0, 2 }, ttMinor);
    ASSERT_THAT(minors, SizeIs(18));
    EXPECT_EQ(minors[8], 1.0);
    EXPECT_NEAR(minors[16], 1.95424250943932, 1e-12);
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
    for (GridTickType const type : { ttMinor, ttMajor }) {
        for (int const n : { 0, -1, kHuge, -kHuge - 1 })
            EXPECT_THAT(DivisionLines(Divisions(n, 4), { 0, 10 }, type), IsEmpty()) << n;
        for (double const del : { 0.0, -2.0, 1e-300, kNan, kInfinity })
            EXPECT_THAT(StepLines(Steps(0, del), { 0, 10 }, type, ClosingLine::AtMaximum), IsEmpty()) << del;
        for (GridRange const range : { GridRange { 0, 0 }, { kNan, 1 }, { 0, kInfinity }, { -1.7e308, 1.7e308 } }) {
            EXPECT_THAT(DivisionLines(Divisions(5, 4), range, type), IsEmpty()) << range.min;
            EXPECT_THAT(StepLines(Steps(0, 2), range, type, ClosingLine::AtMaximum), IsEmpty()) << range.min;
            EXPECT_THAT(DecadeLines(range, type), IsEmpty()) << range.min;
            EXPECT_THAT(DateLines({}, range, type), IsEmpty()) << range.min;
        }
    }
    for (int const n : { 0, 1, -1, kHuge, -kHuge - 1 })
        EXPECT_THAT(DivisionLines(Divisions(5, n), { 0, 10 }, ttMinor), IsEmpty()) << n;
}

/// A graph over [0, 10] × [0, 10] of 400 × 300 pixels, mapped onto (50, 20) – (350, 220): 30 and 20 pixels a unit.
class GridDraw : public testing::Test {
protected:
    GridDraw()
    {
        m_graph.SetGraphAndWindowRect(CRect(0, 0, 400, 300), CRect(0, 0, 400, 300));
        m_axes.SetXAxisRangeMode(CAxes::rmFixed);
        m_axes.SetYAxisRangeMode(CAxes::rmFixed);
    }
    std::vector<RecordedPrimitive> Draw(CGraphComponent& component, DeviceCapabilities const& device = {})
    {
        m_axes.UpdateGraphParameters();
        bool const printing = device.logPixelsX != DeviceCapabilities().logPixelsX;
        auto const surface = std::make_shared<RecordingSurface>(CSize(400, 300), device, printing);
        CDC dc(surface);
        CPort port(&dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), m_axes.GetRealExtentRect());
        component.Draw(&port);
        EXPECT_EQ(dc.GetTextColor(), CDC().GetTextColor());
        EXPECT_EQ(dc.GetBkMode(), OPAQUE);
        return surface->Primitives();
    }
    /// The columns of upright lines of a path.
    static std::vector<int> Columns(RecordedPrimitive const& path)
    {
        std::vector<int> columns;
        for (std::size_t i = 1; i < path.points.size(); i += 2) {
            if (path.points[i].x == path.points[i - 1].x)
                columns.push_back(path.points[i].x);
        }
        return columns;
    }

    C2DGraph m_graph { 1 };
    CAxes& m_axes = *m_graph.GetAxes();
    C2DGrid& m_grid = *m_graph.GetGrid();
    C2DPolarGrid& m_polar = *m_graph.GetPolarGrid();
};

TEST_F(GridDraw, EachPassIsOnePathAndMajorLinesLieOnTop)
{
    m_grid.SetOn(1);
    m_grid.SetMajorLineStyle(1);
    m_grid.SetMajorColour(RGB(1, 2, 3));
    auto const drawn = Draw(m_grid);
    ASSERT_THAT(drawn, SizeIs(2));
    EXPECT_THAT(drawn[0].starts, SizeIs(30));
    EXPECT_THAT(drawn[0].pen.dashes, ElementsAre(1, 1));
    EXPECT_EQ(drawn[1].pen.colour.colour, RGB(1, 2, 3));
    EXPECT_THAT(drawn[1].pen.dashes, IsEmpty());
    EXPECT_THAT(Columns(drawn[1]), ElementsAre(50, 110, 170, 230, 290, 350));
    EXPECT_EQ(drawn[1].points[3], CPoint(110, 20));
    EXPECT_EQ(drawn[1].points[14], CPoint(50, 180));

    DeviceCapabilities printer;
    printer.logPixelsX = printer.logPixelsY = 600;
    double const factor = CPreferences::GetThicknessScaleFac(4);
    EXPECT_EQ(Draw(m_grid, printer)[0].pen.width, VUNearest(6.25 * factor));
}

TEST_F(GridDraw, LinesMeetTheTicksOfTheSameDraw)
{
    m_grid.SetOn(1);
    m_axes.SetXTickMin(0.75);
    m_axes.SetXTickDel(1.5);
    m_axes.SetNumXMajorTicks(4);
    struct {
        CAxes::TickMode mode;
        int timeUnits;
    } const cases[] = { { CAxes::tmDivisions, 0 }, { CAxes::tmStep, 0 }, { CAxes::tmStep, 1 } };
    for (auto const& c : cases) {
        // Nothing is told to the grid: it finds out when it is drawn.
        m_axes.SetXTickMode(c.mode);
        m_axes.SetXTimeUnitsOn(c.timeUnits);
        m_axes.SetXDelTime(2);
        m_axes.SetXDelTimeUnit(TimeUnit::Day);
        auto const drawn = Draw(m_grid);
        CDoubleArray ticks;
        m_axes.GetXNotchPositions(ticks);
        std::vector<int> expected;
        for (int i = 0; i < ticks.GetSize(); ++i)
            expected.push_back(50 + VUNearest(30 * ticks[i]));
        EXPECT_THAT(Columns(drawn.back()), ElementsAreArray(expected)) << c.mode;
    }
}

TEST_F(GridDraw, LogarithmicAxesHaveDecadesEvenWithLinesOff)
{
    m_axes.SetXAxisScaleMode(1);
    m_axes.SetXAxisRange(0, 2);
    m_grid.SetOn(1);
    m_grid.SetVertLinesOn(0);
    m_grid.SetHorzLinesOn(0);
    auto const drawn = Draw(m_grid);
    EXPECT_THAT(Columns(drawn.at(0)), SizeIs(18));
    EXPECT_THAT(Columns(drawn.at(1)), ElementsAre(50, 200, 350));
}

TEST_F(GridDraw, FreeLinesAreThereWithoutTheGrid)
{
    m_grid.SetArbXLinesOn(1);
    m_grid.SetArbXLinePosns({ 3.0, kNan, 12.0 });
    m_grid.SetArbYLinesOn(1);
    m_grid.SetArbYLinePosns({ 5.0 });
    m_grid.SetArbLineStyle(PS_DASH);
    auto const drawn = Draw(m_grid);
    ASSERT_THAT(drawn, SizeIs(3));
    EXPECT_THAT(drawn[0].points, ElementsAre(CPoint(140, 220), CPoint(140, 20)));
    EXPECT_EQ(drawn[0].line.style, PS_DASH);
    EXPECT_THAT(drawn[1].points, ElementsAre(CPoint(410, 220), CPoint(410, 20)));
    EXPECT_THAT(drawn[2].points, ElementsAre(CPoint(50, 120), CPoint(350, 120)));
}

TEST_F(GridDraw, PolarLabelsStandOutsideTheCircle)
{
    m_polar.SetOn(1);
    m_polar.SetNumMajorRDivs(4);
    m_axes.SetXAxisRange(-4, 4);
    m_axes.SetYAxisRange(-4, 4);
    auto const drawn = Draw(m_polar);
    auto const texts = test::OfKind(drawn, Kind::Text);
    std::vector<CString> read;
    std::vector<CPoint> at;
    for (auto const& text : texts) {
        read.push_back(text.text);
        at.push_back(text.points[0]);
    }
    ASSERT_THAT(read, ElementsAre("0", "180", "45", "225", "90", "270", "135", "315", "1", "2", "3", "4"));
    // The centre is (200, 120), the half axes are 150 and 100: labels touch the ends from outside.
    EXPECT_TRUE(at[0].x > 350 && at[1].x < 50 && at[4].y < 20 && at[5].y > 220 && at[6].x < 94);
    EXPECT_EQ(at[2].x, 306);
    EXPECT_EQ(at[3].y, 191);
    EXPECT_EQ(at[7], CPoint(306, 191));
    // Minor lines, major lines, the scale.
    auto const paths = test::OfKind(drawn, Kind::Stroke);
    ASSERT_THAT(paths, SizeIs(3));
    EXPECT_THAT(paths[0].starts, SizeIs(12 + 4));
    EXPECT_THAT(paths[0].pen.dashes, ElementsAre(3, 1));
    ASSERT_THAT(paths[1].starts, SizeIs(4 + 4));
    EXPECT_EQ(paths[1].points[paths[1].starts[3]], CPoint(350, 120));
    EXPECT_EQ(paths[1].points.back(), CPoint(94, 49));
    EXPECT_EQ(paths[2].points[1], CPoint(50, 20));
    EXPECT_THAT(paths[2].pen.dashes, IsEmpty());

    m_polar.SetNumMajorPhiDivs(0);
    m_polar.SetNumMajorRDivs(-3);
    EXPECT_THAT(Draw(m_polar), IsEmpty());
}

TEST_F(GridDraw, MeasuringAPolarGridDrawsNothingAndKeepsRoomForTheScale)
{
    m_polar.SetOn(1);
    m_polar.SetNumMajorPhiDivs(4);
    m_polar.SetDrawMode(dmMeasure);
    EXPECT_THAT(Draw(m_polar), IsEmpty());
    CRect const measured = m_polar.GetExtentRect();
    EXPECT_LT(measured.left, 40);
    EXPECT_EQ(measured.right, 350) << "angles take no room";
    m_polar.SetDrawMode(dmDraw);
    Draw(m_polar);
    EXPECT_GT(m_polar.GetExtentRect().right, measured.right);

    // In a graph without labels of axes, no label of the scale is cut.
    m_axes.SetXAxisOn(0);
    m_axes.SetYAxisOn(0);
    auto const texts = test::OfKind(test::Record(m_graph, CSize(400, 400)), Kind::Text);
    ASSERT_THAT(texts, SizeIs(4 + 5));
    for (std::size_t i = 4; i < texts.size(); ++i)
        EXPECT_GE(texts[i].points[0].x, m_graph.GetGraphRect().left);
    EXPECT_EQ(m_polar.GetDrawMode(), dmDraw);
}

} // namespace
} // namespace ombrel
