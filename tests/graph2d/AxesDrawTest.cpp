#include "tests/graph2d/GraphFixture.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/axes/LabelFont.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/platform/framework/PrintString.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

/// Axes over [0, 10] × [0, 10] in a graph of 400 × 300 pixels, mapped onto (50, 20) – (350, 220).
class AxesDraw : public testing::Test {
protected:
    AxesDraw()
    {
        m_graph.SetGraphAndWindowRect(CRect(0, 0, 400, 300), CRect(0, 0, 400, 300));
        AxisSettings x = m_axes.GetAxis(CAxes::atX);
        x.rangeMode = CAxes::rmFixed;
        x.numMajorTicks = 3;
        x.numMinorTicks = 1;
        AxisSettings y = x;
        y.labelPlacement = CAxes::lpLeft;
        y.min = -5;
        y.max = 5;
        m_axes.SetAxis(CAxes::atX, x);
        m_axes.SetAxis(CAxes::atY, y);
    }
    void Draw(DrawMode mode = dmDraw)
    {
        m_axes.UpdateGraphParameters();
        m_surface->Clear();
        CRealRect const real = m_axes.GetRealExtentRect();
        CPort port(&m_dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), real);
        m_axes.SetDrawMode(mode);
        m_axes.Draw(&port);
        m_axes.SetDrawMode(dmDraw);
    }
    std::vector<CString> Texts() const
    {
        std::vector<CString> texts;
        for (auto const& p : test::OfKind<primitive::Text>(m_surface->Primitives()))
            texts.push_back(p.text);
        return texts;
    }

    C2DGraph m_graph { 1 };
    CAxes& m_axes = *m_graph.GetAxes();
    std::shared_ptr<RecordingSurface> m_surface = std::make_shared<RecordingSurface>(CSize(400, 300));
    CDC m_dc { m_surface };
};

/// Settings that reach every way of placing ticks, with all that is drawn of them.
///
/// The x axis from 0 to 10 has 30 pixels a unit, the y axis from -5 to 5 has 20; each has three major ticks, with a
/// minor one between them. Labels are 15 pixels high (4 mm at 96 pixels an inch), minor ones 13, which the font makes
/// 14; figures are 7 pixels wide in both, a minus 4. Ticks are 4 pixels long (300 / 80), minor ones 2.64.
struct Variant {
    char const* name;
    void (*apply)(CAxes&);
    char const* drawn;
    char const* extent;
    friend void PrintTo(Variant const& variant, std::ostream* out) { *out << variant.name; }
};

Variant const kVariants[] = {
    { "plain", [](CAxes&) {},
        "50,220-350,220  50,220-50,20  50,220-50,224  0 15 47,225  125,220-125,223  200,220-200,224  5 15 197,225  "
        "275,220-275,223  350,220-350,224  10 15 343,225  50,220-46,220  -5 15 35,213  50,170-47,170  50,120-46,120  "
        "0 15 39,113  50,70-47,70  50,20-46,20  5 15 39,13",
        "35,13-357,240" },
    { "titles",
        [](CAxes& a) {
            a.SetXAxisTitle("across"), a.SetYAxisTitle("up"), a.SetTitlesColour(RGB(3, 0, 0));
            a.SetIntersectMode(1), a.SetIntersect({ 8, -3 });
        },
        "50,180-350,180  290,220-290,20  50,180-50,184  0 15 47,185  125,180-125,183  200,180-200,184  5 15 197,185  "
        "275,180-275,183  350,180-350,184  10 15 343,185  290,220-286,220  -5 15 275,213  290,170-287,170  "
        "290,120-286,120  0 15 279,113  290,70-287,70  290,20-286,20  5 15 279,13  across 15 151,220#3  "
        "^up 15 35,107#3",
        "35,13-357,235" },
    { "minor labels",
        [](CAxes& a) {
            a.SetXMinorLabelsOn(1), a.SetYMinorLabelsOn(1), a.SetNumYMajorTicks(2);
            a.SetLabelsColour(RGB(1, 0, 0)), a.SetMinorLabelsColour(RGB(2, 0, 0));
        },
        "50,220-350,220  50,220-50,20  50,220-50,224  0 15 47,225#1  125,220-125,223  2.5 13 117,224#2  "
        "200,220-200,224  5 15 197,225#1  275,220-275,223  7.5 13 267,224#2  350,220-350,224  10 15 343,225#1  "
        "50,220-46,220  -5 15 35,213#1  50,120-47,120  0 13 40,113#2  50,20-46,20  5 15 39,13#1",
        "35,13-357,240" },
    { "turned",
        [](CAxes& a) {
            a.SetLabelsHorizontal(0), a.SetMinorLabelsHorizontal(0), a.SetXMinorLabelsOn(1), a.SetXAxisTitle("x");
        },
        "50,220-350,220  50,220-50,20  50,220-50,224  ^0 15 43,232  125,220-125,223  ^2.5 13 118,241  "
        "200,220-200,224  ^5 15 193,232  275,220-275,223  ^7.5 13 268,241  350,220-350,224  ^10 15 343,239  "
        "50,220-46,220  -5 15 35,213  50,170-47,170  50,120-46,120  0 15 39,113  50,70-47,70  50,20-46,20  "
        "5 15 39,13  x 15 197,241",
        "35,13-357,256" },
    { "other sides",
        [](CAxes& a) {
            a.SetXLabelPlacement(CAxes::lpAbove), a.SetYLabelPlacement(CAxes::lpRight);
            a.SetIntersectMode(1), a.SetIntersect({ 10, 0 }), a.SetYIntersectLabelOn(0);
            a.SetXMajorTickScaleFac(2), a.SetXMinorTickScaleFac(3), a.SetYMajorTickScaleFac(3);
            a.SetYMinorTickScaleFac(2), a.SetXMinorLabelsOn(1), a.SetYMinorLabelsOn(1), a.SetYAxisTitle("up");
        },
        "50,120-350,120  350,220-350,20  50,120-50,112  0 15 47,96  125,120-125,112  2.5 13 117,97  200,120-200,112  "
        "5 15 197,96  275,120-275,112  7.5 13 267,97  350,120-350,112  10 15 343,96  350,220-362,220  -5 15 362,213  "
        "350,170-355,170  -2.5 13 355,163  350,70-355,70  2.5 13 355,63  350,20-362,20  5 15 362,13  ^up 15 35,77",
        "35,13-376,227" },
    { "logarithmic",
        [](CAxes& a) {
            a.SetXAxisScaleMode(1), a.SetYAxisScaleMode(1), a.SetXAxisRange(0, 1), a.SetYAxisRange(1, 2);
            a.SetYAxisOn(0), a.SetYLabelsOn(1);
        },
        "50,220-350,220  50,220-50,224  1 15 47,225  140,220-140,223  193,220-193,223  231,220-231,223  "
        "260,220-260,223  283,220-283,223  304,220-304,223  321,220-321,223  336,220-336,223  350,220-350,223  "
        "350,220-350,224  10 15 343,225  10 15 32,213  50,160-47,160  50,125-47,125  50,100-47,100  50,80-47,80  "
        "50,64-47,64  50,51-47,51  50,39-47,39  50,29-47,29  50,20-47,20  100 15 25,13",
        "25,13-357,240" },
    { "steps",
        [](CAxes& a) {
            a.SetXTickMode(CAxes::tmStep), a.SetXTickMin(3), a.SetXTickDel(4), a.SetXMinorLabelsOn(1);
            a.SetYTickMode(CAxes::tmStep), a.SetYTickMin(8), a.SetYTickDel(6), a.SetYMinorLabelsOn(1);
            a.SetNumYMinorTicks(3), a.SetYAxisTitle("up");
        },
        "50,220-350,220  50,220-50,20  140,220-140,224  3 15 137,225  260,220-260,224  7 15 257,225  "
        "200,220-200,223  5 13 197,224  50,200-46,200  -4 15 35,193  50,80-46,80  2 15 39,73  50,170-47,170  "
        "-2.5 13 26,163  50,140-47,140  -1 13 36,133  50,110-47,110  0.5 13 30,103  ^up 15 20,127",
        "20,20-350,240" },
    { "arbitrary",
        [](CAxes& a) {
            a.SetXTickMode(CAxes::tmDivisionsArbitrary), a.SetXArbTickPosns({ 12, 1 });
            a.SetXAxisLabelMode(CAxes::lmArbitraryStrings), a.SetXLabels({ "II", "I" });
            a.SetYTickMode(CAxes::tmStepArbitrary), a.SetYTickMin(-4.75), a.SetYTickDel(100);
            a.SetYArbTickPosns({ 3.25, -6 }), a.SetYAxisTitle("up");
        },
        "50,220-350,220  50,220-50,20  50,220-50,224  0 15 47,225  125,220-125,223  200,220-200,224  5 15 197,225  "
        "275,220-275,223  350,220-350,224  10 15 343,225  410,220-410,224  II 15 406,225  80,220-80,224  "
        "I 15 78,225  50,215-46,215  -4.75 15 17,208  50,55-46,55  3.25 15 21,48  50,240-46,240  -6 15 35,233  "
        "^up 15 6,127",
        "6,20-414,247" },
    { "dates",
        [](CAxes& a) {
            a.SetXTimeUnitsOn(1), a.SetYTimeUnitsOn(1), a.SetXAxisRange(2, 4), a.SetXTickMode(CAxes::tmStep);
            a.SetXDelTimeUnit(CAxes::TimeUnit::Day), a.SetXDelTimeMinor(8);
            a.SetXDelTimeUnitMinor(CAxes::TimeUnit::Hour), a.SetXMinorLabelsOn(1), a.SetXLabelDateFormat("%d.");
            a.SetXLabelTimeFormat(""), a.SetXMinorLabelDateFormat("%H"), a.SetXMinorLabelTimeFormat("%M");
        },
        "50,220-350,220  50,220-50,20  50,220-50,224  01. 15 41,225  200,220-200,224  02. 15 191,225  "
        "350,220-350,224  03. 15 341,225  100,220-100,223  08 13 93,224  150,220-150,223  16 13 143,224  "
        "250,220-250,223  08 13 243,224  300,220-300,223  16 13 293,224  50,220-46,220  -5 15 35,213  50,170-47,170  "
        "50,120-46,120  0 15 39,113  50,70-47,70  50,20-46,20  5 15 39,13",
        "35,13-359,240" },
    { "no axis lines",
        [](CAxes& a) {
            a.SetXAxisOn(0), a.SetYAxisOn(0), a.SetYLabelsOn(1), a.SetXAxisTitle("x"), a.SetYAxisTitle("y");
        },
        "-5 15 35,213  0 15 39,113  5 15 39,13", "35,13-350,227" },
    { "reversed", [](CAxes& a) { a.SetXAxisRange(10, 0); },
        "50,220-350,220  50,220-50,20  50,220-54,220  -5 15 43,213  50,170-53,170  50,120-54,120  0 15 47,113  "
        "50,70-53,70  50,20-54,20  5 15 47,13",
        "43,13-350,227" },
    { "tick ranges",
        [](CAxes& a) {
            a.SetXTickRangeMode(CAxes::trFixed), a.SetTickRange(CAxes::atX, 4, 8);
            a.SetYTickRangeMode(CAxes::trFixed), a.SetTickRange(CAxes::atY, -4, 4);
            a.SetYTickMode(CAxes::tmStep), a.SetYTickMin(-8), a.SetYTickDel(3);
        },
        "50,220-350,220  50,220-50,20  170,220-170,224  4 15 167,225  200,220-200,223  230,220-230,224  "
        "6 15 227,225  260,220-260,223  290,220-290,224  8 15 287,225  50,160-46,160  -2 15 35,153  50,100-46,100  "
        "1 15 39,93  50,40-46,40  4 15 39,33  50,190-47,190  50,130-47,130  50,70-47,70",
        "35,20-350,240" },
};

class AxesVariants : public AxesDraw, public testing::WithParamInterface<Variant> { };

INSTANTIATE_TEST_SUITE_P(Settings, AxesVariants, testing::ValuesIn(kVariants), [](auto const& test) {
    std::string name = test.param.name;
    std::erase(name, ' ');
    return name;
});

TEST_P(AxesVariants, DrawTheseLinesAndTextsAndMeasureWithoutDrawing)
{
    GetParam().apply(m_axes);
    m_dc.SetTextColor(RGB(9, 8, 7));
    for (DrawMode const mode : { dmMeasure, dmDraw }) {
        Draw(mode);
        EXPECT_EQ(test::Figures(m_surface->Primitives()), mode == dmDraw ? GetParam().drawn : "");
        EXPECT_EQ(test::Figure(m_axes.GetExtentRect()), GetParam().extent);
    }
    EXPECT_EQ(m_dc.GetTextColor(), RGB(9, 8, 7)) << "the device context is as before";
    EXPECT_EQ(m_dc.GetBkMode(), OPAQUE);
}

TEST_P(AxesVariants, MeasuringInALayoutGivesWhatItGivesAlone)
{
    GetParam().apply(m_axes);
    m_axes.UpdateGraphParameters();
    m_axes.SetDrawMode(dmMeasure);
    auto const extentAt = [this](int left) {
        CPort port(&m_dc, CRect(0, 0, 400, 300), CRect(left, 20, 350, 220), m_axes.GetRealExtentRect());
        m_axes.Draw(&port);
        return m_axes.GetExtentRect();
    };
    CRect const alone[] = { extentAt(50), extentAt(90) };
    m_axes.BeginLayout();
    EXPECT_EQ(extentAt(90), alone[1]);
    EXPECT_EQ(extentAt(50), alone[0]);
    m_axes.SetLabelsFont({ "Arial", 400, 0, 3.0 });
    EXPECT_EQ(extentAt(50), alone[0]) << "texts are measured once in a layout";
    m_axes.EndLayout();
    EXPECT_NE(extentAt(50), alone[0]) << "nothing is kept after a layout";
}

TEST_F(AxesDraw, CheckingTheDateRangeDrawsWhatIsWrongAndKeepsTheLabels)
{
    m_axes.SetXAxisRange(-1e7, 3e7);
    m_axes.SetXLabels({ "mine" });
    m_axes.SetColour(RGB(5, 0, 0));
    CPort port(&m_dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), CRealRect(-1e7, 5, 3e7, -5));
    m_axes.UpdateGraphParameters();
    EXPECT_EQ(m_axes.CheckDateRange(&port), 0);
    EXPECT_EQ(test::Figures(m_surface->Primitives()), "200,220-200,224#5  Invalid Date Range 15 145,225");
    CStringArray labels;
    m_axes.GetXLabels(labels);
    EXPECT_EQ(labels, CStringArray({ "mine" }));
    EXPECT_EQ(test::Figure(m_axes.GetExtentRect()), "0,0-0,0") << "extents stay";
    for (auto const& [min, max, valid] :
        { std::tuple(0.0, 40000.0, 1), { -1e7, 40000.0, 0 }, { 0.0, 1e7, 0 }, { -1e7, 3e7, 0 } }) {
        m_axes.SetXAxisRange(min, max);
        EXPECT_EQ(m_axes.CheckDateRange(nullptr), valid);
    }
}

TEST_F(AxesDraw, PolarGraphsHaveNoRectangularAxes)
{
    test::AddLine(m_graph, { { -3, 1 }, { 2, 4 } });
    m_graph.GetPolarGrid()->SetOn(1);
    Draw();
    EXPECT_THAT(m_surface->Primitives(), IsEmpty());
    EXPECT_EQ(m_axes.GetRealExtentRect(), CRealRect(-4, 4, 4, -4));
    EXPECT_EQ(m_axes.GetXAxisRangeMode(), 0);
    EXPECT_EQ(m_axes.GetYAxisRangeMode(), 0);
    Draw(dmMeasure);
    EXPECT_EQ(test::Figure(m_axes.GetExtentRect()), "35,13-353,240") << "what is laid out is what it is without";
}

TEST_F(AxesDraw, RangeOperationsReadAndSetTheAxisThatTheyName)
{
    constexpr auto kNone = static_cast<CAxes::AxisType>(2);
    m_axes.Set(1, 3, 5, 9, { 2, 6 });
    m_axes.SetRange(kNone, 7, 8);
    double x[2], y[2];
    CRealPoint crossing;
    m_axes.Get(x[0], x[1], y[0], y[1], crossing);
    EXPECT_THAT((std::vector { x[0], x[1], y[0], y[1], crossing.x, crossing.y }), ElementsAre(1, 3, 5, 9, 2, 6));
    EXPECT_EQ(m_axes.GetRange(CAxes::atX), 2);
    EXPECT_EQ(m_axes.GetRange(CAxes::atY), 4);
    EXPECT_EQ(m_axes.GetRange(kNone), 0);
    m_axes.SetTickRange(CAxes::atY, 6, 7);
    m_axes.GetTickRange(CAxes::atY, 0, y[0], y[1]);
    EXPECT_THAT(y, ElementsAre(6, 7));
    for (auto const& [v, within] : { std::pair(5.9, 0), { 6.0, 1 }, { 7.0, 1 }, { 7.1, 0 } })
        EXPECT_EQ(m_axes.IsWithinTickRange(CAxes::atY, v), within) << v;
    m_axes.SetYTickMin(4);
    m_axes.SetYTickDel(8);
    m_axes.GetTickMinDel(CAxes::atY, y[0], y[1]);
    EXPECT_THAT(y, ElementsAre(4, 8));
    for (CRealPoint const& outside : { CRealPoint(0.9, 6), { 3.1, 6 }, { 2, 4.9 }, { 2, 9.1 } })
        EXPECT_EQ(m_axes.IsClipped(outside), 1) << outside.x;
    EXPECT_EQ(m_axes.IsClipped({ 1, 5 }) + m_axes.IsClipped({ 3, 9 }), 0);
    m_axes.SetXAxisRange(1.7e308, 1.79e308);
    m_axes.GetRange(CAxes::atX, CAxes::rmTidy, x[0], x[1]);
    EXPECT_THAT(x, ElementsAre(1.7e308, 1.79e308)) << "too large to be widened";
}

TEST_F(AxesDraw, LabelsAreAFifteenthOfTheShorterSideHighButFourMillimetresAtMost)
{
    struct Case {
        CRect graph;
        int height;
    };
    for (Case const& c : { Case { { 10, 0, 160, 400 }, 10 }, Case { { 0, 10, 400, 163 }, 10 },
             Case { { 0, 0, 225, 400 }, 15 }, Case { { 0, 0, 500, 400 }, 15 }, Case { { 400, 0, 0, 400 }, 0 } })
        EXPECT_EQ(LabelFontHeight(m_dc, c.graph), c.height) << c.graph.right;
}

TEST_F(AxesDraw, CurvesLearnTheScaleModesHoweverTheyAreSet)
{
    C2DLine const& line = test::AddLine(m_graph, { { 1, 2 } });
    AxisSettings y = m_axes.GetAxis(CAxes::atY);
    y.scaleMode = 1;
    m_axes.SetAxis(CAxes::atY, y);
    EXPECT_EQ(line.GetYScaleMode(), 1);
    EXPECT_EQ(line.GetXScaleMode(), 0);
    m_axes.SetXAxisScaleMode(1);
    EXPECT_EQ(line.GetXScaleMode(), 1);
}

TEST_F(AxesDraw, RangesFollowTheDataAsTheRangeModeSays)
{
    test::AddLine(m_graph, { { 0.3, 5 }, { 7.2, 5 } });
    struct Case {
        int mode;
        CRealRect range;
    };
    for (Case const& c : { Case { 0, { 0, 6, 8, 4 } }, Case { 1, { 0.3, 6, 7.2, 4 } }, Case { 2, { 0, 10, 10, 0 } } }) {
        m_axes.Set(0, 10, 0, 10, { 0, 0 });
        m_axes.SetXAxisRangeMode(c.mode);
        m_axes.SetYAxisRangeMode(c.mode);
        m_axes.UpdateGraphParameters();
        EXPECT_EQ(m_axes.GetRealExtentRect(), c.range) << c.mode;
        EXPECT_EQ(m_axes.IsClipped({ 11, 12 }), c.mode == 2);
        EXPECT_EQ(m_axes.GetXTickRangeMax(), c.range.right);
        EXPECT_EQ(m_axes.GetIntersect(), m_axes.GetAutoIntersect());
        EXPECT_EQ(m_axes.GetXTickMinTime().GetValue(), c.range.left);
    }
}

TEST_F(AxesDraw, TheReferenceDateIsTheValidMinimumWhateverItsStatusWas)
{
    COleDateTime none;
    none.SetStatus(COleDateTime::null);
    for (double const min : { 40000.25, -1e7, 4e6 }) {
        m_axes.SetXAxisRange(min, 5e6);
        m_axes.SetXTickMinTime(none);
        m_axes.SetAlignRefDate(0);
        m_axes.UpdateGraphParameters();
        EXPECT_EQ(m_axes.GetXTickMinTime().GetStatus(), COleDateTime::null);
        m_axes.SetAlignRefDate(1);
        m_axes.UpdateGraphParameters();
        EXPECT_EQ(m_axes.GetXTickMinTime().GetStatus(), COleDateTime::valid);
        EXPECT_EQ(m_axes.GetXTickMinTime().GetValue(), min);
    }
}

TEST_F(AxesDraw, LogarithmicRangesAreWholeDecadesAndAtLeastOne)
{
    struct Case {
        double min, max, decadeMin, decadeMax;
    };
    for (Case const& c : { Case { 0.3, 7.2, 0, 8 }, Case { 2, 2, 2, 3 }, Case { -1.5, -1.2, -2, -1 } }) {
        m_axes.SetXAxisRange(c.min, c.max);
        std::pair<double, double> decades;
        m_axes.GetLogRange(CAxes::atX, decades.first, decades.second);
        EXPECT_EQ(decades, std::make_pair(c.decadeMin, c.decadeMax));
    }
}

TEST_F(AxesDraw, AUserPointOutsideTheRangesGivesWayToTheAutomaticOne)
{
    struct Case {
        CRealPoint point;
        bool stays;
    };
    for (Case const& c :
        { Case { { 10, 3 }, true }, Case { { 0, -5 }, true }, Case { { 0, 5 }, true }, Case { { -1, 0 }, false },
            Case { { 11, 0 }, false }, Case { { 3, -6 }, false }, Case { { 3, 6 }, false } }) {
        m_axes.SetIntersectMode(1);
        m_axes.SetIntersect(c.point);
        m_axes.UpdateGraphParameters();
        CRealPoint const crossing = c.stays ? c.point : CRealPoint(0, -5);
        EXPECT_EQ(m_axes.GetIntersectMode(), c.stays);
        EXPECT_EQ(m_axes.GetIntersect(), crossing);
        EXPECT_EQ(m_axes.GetXAxisStart(), CRealPoint(0, crossing.y));
        EXPECT_EQ(m_axes.GetXAxisEnd(), CRealPoint(10, crossing.y));
        EXPECT_EQ(m_axes.GetYAxisStart(), CRealPoint(crossing.x, -5));
        EXPECT_EQ(m_axes.GetYAxisEnd(), CRealPoint(crossing.x, 5));
    }
}

} // namespace
} // namespace ombrel
