#include "tests/graph2d/GraphFixture.h"

#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DPolarGrid.h"
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
using Kind = RecordedPrimitive::Kind;

/// Axes over [0, 10] × [0, 10] in a graph of 400 × 300 pixels, mapped onto (50, 20) – (350, 220).
class AxesDraw : public testing::Test {
protected:
    AxesDraw()
    {
        m_graph.SetGraphAndWindowRect(CRect(0, 0, 400, 300), CRect(0, 0, 400, 300));
        m_axes.SetXAxisRangeMode(CAxes::rmFixed);
        m_axes.SetYAxisRangeMode(CAxes::rmFixed);
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
    std::vector<RecordedPrimitive> Drawn(Kind kind) const { return test::OfKind(m_surface->Primitives(), kind); }
    std::vector<CString> Texts() const
    {
        std::vector<CString> texts;
        for (RecordedPrimitive const& p : Drawn(Kind::Text))
            texts.push_back(p.text);
        return texts;
    }
    /// The first text that reads so.
    RecordedPrimitive Text(CString const& text) const
    {
        for (RecordedPrimitive const& p : Drawn(Kind::Text)) {
            if (p.text == text)
                return p;
        }
        ADD_FAILURE() << "no text " << text.ToUtf8() << " in\n" << m_surface->Dump();
        return Drawn(Kind::Text).at(0);
    }
    /// The extent of a text that was drawn.
    CSize Size(RecordedPrimitive const& text)
    {
        CFont font;
        font.CreateFontIndirect(text.font);
        SavedDC const saved(m_dc);
        m_dc.SelectObject(&font);
        return m_dc.GetTextExtent(text.text);
    }
    bool HasLine(CPoint from, CPoint to) const
    {
        for (RecordedPrimitive const& p : Drawn(Kind::Polyline)) {
            if (p.points == std::vector { from, to })
                return true;
        }
        return false;
    }

    C2DGraph m_graph { 1 };
    CAxes& m_axes = *m_graph.GetAxes();
    std::shared_ptr<RecordingSurface> m_surface = std::make_shared<RecordingSurface>(CSize(400, 300));
    CDC m_dc { m_surface };
};

// 300 pixels: fonts of 15 pixels (4 mm at 96 to the inch), ticks of 4 pixels, minor ones of 2.64.

TEST_F(AxesDraw, LinesTicksAndLabelsStandWhereTheScaleSays)
{
    Draw();
    EXPECT_TRUE(HasLine({ 50, 220 }, { 350, 220 }));
    EXPECT_TRUE(HasLine({ 50, 220 }, { 50, 20 }));
    EXPECT_TRUE(HasLine({ 110, 220 }, { 110, 224 })) << "x tick at 2";
    EXPECT_TRUE(HasLine({ 65, 220 }, { 65, 223 })) << "minor x tick at 0.5";
    EXPECT_TRUE(HasLine({ 50, 180 }, { 46, 180 })) << "y tick at 2";
    EXPECT_EQ(m_axes.GetFontHeight(), 15);
    RecordedPrimitive const label = Text("2");
    EXPECT_EQ(label.font.lfHeight, 15);
    EXPECT_EQ(label.points[0], CPoint(110 - Size(label).cx / 2, 225));
    EXPECT_EQ(Texts().size(), 12u) << "no minor labels";
}

TEST_F(AxesDraw, LabelsKeepToTheirPlacement)
{
    m_axes.SetXAxisTitle("Title");
    struct Case {
        CAxes::LabelPlacement x, y;
        int horizontal;
        std::function<CPoint(CSize)> atX, atY;
    };
    Case const cases[] = {
        { CAxes::lpBelow, CAxes::lpLeft, 1, [](CSize s) { return CPoint(290 - s.cx / 2, 225); },
            [](CSize s) { return CPoint(46 - s.cx, 60 - s.cy / 2); } },
        { CAxes::lpAbove, CAxes::lpRight, 1, [](CSize s) { return CPoint(290 - s.cx / 2, 215 - s.cy); },
            [](CSize s) { return CPoint(54, 60 - s.cy / 2); } },
        { CAxes::lpBelow, CAxes::lpLeft, 0, [](CSize s) { return CPoint(290 - s.cy / 2, 225 + s.cx); },
            [](CSize s) { return CPoint(46 - s.cx, 60 - s.cy / 2); } },
        { CAxes::lpLeft, CAxes::lpBelow, 0, [](CSize s) { return CPoint(290 - s.cy / 2, 217); },
            [](CSize s) { return CPoint(54, 60 - s.cy / 2); } },
    };
    for (Case const& c : cases) {
        m_axes.SetXLabelPlacement(c.x);
        m_axes.SetYLabelPlacement(c.y);
        m_axes.SetLabelsHorizontal(c.horizontal);
        Draw();
        std::vector<RecordedPrimitive> const texts = Drawn(Kind::Text);
        ASSERT_EQ(texts.size(), 13u);
        RecordedPrimitive const& x = texts[4];
        RecordedPrimitive const& y = texts[10];
        EXPECT_EQ(x.text, "8");
        EXPECT_EQ(y.text, "8");
        EXPECT_EQ(x.font.lfEscapement, c.horizontal ? 0 : 900);
        EXPECT_EQ(y.font.lfEscapement, 0);
        EXPECT_EQ(x.points[0], c.atX(Size(x)));
        EXPECT_EQ(y.points[0], c.atY(Size(y)));
    }
}

TEST_F(AxesDraw, MinorLabelsAreSmallerAndHaveTheirOwnColour)
{
    m_axes.SetXMinorLabelsOn(1);
    m_axes.SetMinorLabelsHorizontal(0);
    m_axes.SetMinorLabelsColour(RGB(1, 2, 3));
    m_axes.SetLabelsColour(RGB(4, 5, 6));
    Draw();
    EXPECT_EQ(Text("0.5").font.lfHeight, 13);
    EXPECT_EQ(Text("0.5").font.lfEscapement, 900);
    EXPECT_EQ(Text("0.5").colour, RGB(1, 2, 3));
    EXPECT_EQ(Text("8").colour, RGB(4, 5, 6));
    EXPECT_EQ(Texts().size(), 12u + 15u);
}

TEST_F(AxesDraw, TitlesLieOverTheLongerPartOfTheirAxis)
{
    m_axes.SetXAxisTitle("Across");
    m_axes.SetYAxisTitle("Up");
    m_axes.SetIntersectMode(1);
    struct Case {
        double crossing;
        int xCentre, yCentre;
    };
    for (Case const& c : { Case { 8, 170, 140 }, Case { 2, 230, 100 }, Case { 5, 275, 70 } }) {
        m_axes.SetIntersect({ c.crossing, c.crossing });
        Draw();
        RecordedPrimitive const x = Text("Across");
        EXPECT_NEAR(x.points[0].x + Size(x).cx / 2, c.xCentre, 1) << c.crossing;
        RecordedPrimitive const y = Text("Up");
        EXPECT_EQ(y.font.lfEscapement, 900);
        EXPECT_NEAR(y.points[0].y - Size(y).cx / 2, c.yCentre, 1) << c.crossing;
    }
}

TEST_F(AxesDraw, TitlesStandClearOfTheLabelsAndEndTheExtents)
{
    m_axes.SetXAxisTitle("Across");
    m_axes.SetYAxisTitle("Up");
    Draw();
    CRect const extent = m_axes.GetExtentRect();
    int const fontHeight = Size(Text("2")).cy;
    EXPECT_EQ(Text("Across").points[0].y, 225 + fontHeight);
    EXPECT_EQ(extent.bottom, 225 + 2 * fontHeight);
    int const labelsLeft = 46 - Size(Text("10")).cx;
    EXPECT_EQ(Text("Up").points[0].x, labelsLeft - fontHeight);
    EXPECT_EQ(extent.left, labelsLeft - fontHeight);
    EXPECT_EQ(extent.right, 350 + Size(Text("10")).cx / 2);
    EXPECT_EQ(extent.top, 20 - fontHeight / 2);
}

/// Settings that reach every way of placing ticks.
struct Variant {
    char const* name;
    std::function<void(CAxes&)> apply;
    friend void PrintTo(Variant const& variant, std::ostream* out) { *out << variant.name; }
};

std::vector<Variant> const& Variants()
{
    static std::vector<Variant> const variants {
        { "default", [](CAxes&) {} },
        { "titles", [](CAxes& a) { a.SetXAxisTitle("x"), a.SetYAxisTitle("y"); } },
        { "minor labels", [](CAxes& a) { a.SetXMinorLabelsOn(1), a.SetYMinorLabelsOn(1); } },
        { "turned", [](CAxes& a) { a.SetLabelsHorizontal(0), a.SetMinorLabelsHorizontal(0); } },
        { "other sides", [](CAxes& a) { a.SetXLabelPlacement(CAxes::lpAbove), a.SetYLabelPlacement(CAxes::lpRight); } },
        { "logarithmic", [](CAxes& a) { a.SetXAxisScaleMode(1), a.SetYAxisScaleMode(1); } },
        { "steps with minor labels",
            [](CAxes& a) {
                a.SetXTickMode(CAxes::tmStep), a.SetYTickMode(CAxes::tmStep);
                a.SetXMinorLabelsOn(1), a.SetYMinorLabelsOn(1), a.SetYAxisTitle("y");
            } },
        { "arbitrary",
            [](CAxes& a) {
                a.SetXTickMode(CAxes::tmDivisionsArbitrary), a.SetYTickMode(CAxes::tmArbitrary);
                a.SetXArbTickPosns({ 1, 12 }), a.SetYArbTickPosns({ 3.25 }), a.SetYAxisTitle("y");
            } },
        { "dates",
            [](CAxes& a) {
                a.SetXTimeUnitsOn(1), a.SetXTickMode(CAxes::tmStep), a.SetXDelTimeUnit(CAxes::TimeUnit::Day);
                a.SetXDelTimeMinor(12), a.SetXDelTimeUnitMinor(CAxes::TimeUnit::Hour), a.SetXMinorLabelsOn(1);
            } },
        { "no dates", [](CAxes& a) { a.SetXTimeUnitsOn(1), a.SetXAxisRange(-1e7, 1e7); } },
        { "no axis lines", [](CAxes& a) { a.SetXAxisOn(0), a.SetYAxisOn(0), a.SetYLabelsOn(1); } },
    };
    return variants;
}

class AxesVariants : public AxesDraw, public testing::WithParamInterface<Variant> { };

INSTANTIATE_TEST_SUITE_P(Settings, AxesVariants, testing::ValuesIn(Variants()), [](auto const& test) {
    std::string name = test.param.name;
    std::erase(name, ' ');
    return name;
});

TEST_P(AxesVariants, MeasuringDrawsNothingAndFindsTheSameExtents)
{
    GetParam().apply(m_axes);
    Draw(dmMeasure);
    EXPECT_THAT(m_surface->Primitives(), IsEmpty());
    CRect const measured = m_axes.GetExtentRect();
    Draw();
    EXPECT_EQ(m_axes.GetExtentRect(), measured);
    EXPECT_THAT(m_surface->Primitives(), Not(IsEmpty()));
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
    m_axes.EndLayout();
    m_axes.SetLabelsFont({ "Arial", 400, 0, 3.0 });
    EXPECT_NE(extentAt(50), alone[0]) << "nothing is kept after a layout";
}

TEST_P(AxesVariants, TheDeviceContextIsAsBeforeAfterwards)
{
    GetParam().apply(m_axes);
    m_axes.SetXAxisTitle("x");
    m_dc.SetTextColor(RGB(9, 8, 7));
    m_dc.SetBkMode(OPAQUE);
    Draw();
    EXPECT_EQ(m_dc.GetTextColor(), RGB(9, 8, 7));
    EXPECT_EQ(m_dc.GetBkMode(), OPAQUE);
}

TEST_F(AxesDraw, MinorLabelsBetweenFixedYStepsTakeNoSpace)
{
    m_axes.SetYTickMode(CAxes::tmStep);
    Draw();
    CRect const before = m_axes.GetExtentRect();
    m_axes.SetYMinorLabelsOn(1);
    m_axes.SetYMinorLabelPrecision(12);
    m_axes.SetNumYMinorTicks(2);
    Draw();
    EXPECT_EQ(m_axes.GetExtentRect(), before);
    EXPECT_THAT(Texts(), Contains(CString("1.33333333333")));
}

TEST_F(AxesDraw, TheYTitleStandsBesideArbitraryLabels)
{
    m_axes.SetYAxisTitle("Up");
    m_axes.SetYTickMode(CAxes::tmArbitrary);
    Draw();
    EXPECT_EQ(Text("Up").points[0].x, 46 - Size(Text("Up")).cy) << "without labels beside the ticks";
    m_axes.SetYArbTickPosns({ 5 });
    Draw();
    std::vector<RecordedPrimitive> const texts = Drawn(Kind::Text);
    EXPECT_EQ(Text("Up").points[0].x, 46 - Size(texts[6]).cx - Size(Text("Up")).cy);
}

TEST_F(AxesDraw, DecadeLinesAreDrawnWithoutTheAxisLine)
{
    m_axes.SetXAxisScaleMode(1);
    m_axes.SetXAxisRange(0, 2);
    m_axes.SetXAxisOn(0);
    m_axes.SetXLabelsOn(1);
    Draw();
    EXPECT_TRUE(HasLine({ 50 + 45, 220 }, { 50 + 45, 223 })) << "at log10(2)";
    EXPECT_FALSE(HasLine({ 200, 220 }, { 200, 224 })) << "the major tick at 10";
    EXPECT_THAT(Texts(), IsSupersetOf(std::vector<CString> { "1", "10", "100" }));
}

TEST_F(AxesDraw, InvalidDatesAreSaidInTheMiddleOfTheAxis)
{
    m_axes.SetXTimeUnitsOn(1);
    m_axes.SetXAxisRange(-1e7, 3e7);
    m_axes.SetXLabels({ "mine" });
    Draw();
    RecordedPrimitive const text = Text("Invalid Date Range");
    EXPECT_EQ(text.points[0], CPoint(200 - Size(text).cx / 2, 225));
    EXPECT_EQ(Texts().size(), 7u) << "and the y labels";
    CStringArray labels;
    m_axes.GetXLabels(labels);
    EXPECT_EQ(labels, CStringArray({ "mine" }));

    m_surface->Clear();
    CPort port(&m_dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), m_axes.GetRealExtentRect());
    EXPECT_EQ(m_axes.CheckDateRange(&port), 0);
    EXPECT_THAT(Texts(), ElementsAre("Invalid Date Range"));
    m_axes.SetXAxisRange(0, 40000);
    EXPECT_EQ(m_axes.CheckDateRange(&port), 1);
}

TEST_F(AxesDraw, PolarGraphsHaveNoRectangularAxes)
{
    test::AddLine(m_graph, { { -3, 1 }, { 2, 4 } });
    m_graph.GetPolarGrid()->SetOn(1);
    Draw();
    EXPECT_THAT(m_surface->Primitives(), IsEmpty());
    EXPECT_EQ(m_axes.GetRealExtentRect(), CRealRect(-4, 4, 4, -4));
    EXPECT_EQ(m_axes.GetXAxisRangeMode(), 0);
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
        EXPECT_EQ(m_axes.IsClipped({ 11, 5 }), c.mode == 2);
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
        double min = 0;
        double max = 0;
        m_axes.GetLogRange(CAxes::atX, min, max);
        EXPECT_EQ(min, c.decadeMin);
        EXPECT_EQ(max, c.decadeMax);
    }
}

TEST_F(AxesDraw, AUserPointOutsideTheRangesGivesWayToTheAutomaticOne)
{
    m_axes.SetIntersectMode(1);
    m_axes.SetIntersect({ 10, 3 });
    m_axes.UpdateGraphParameters();
    EXPECT_EQ(m_axes.GetIntersect(), CRealPoint(10, 3));
    EXPECT_EQ(m_axes.GetYAxisEnd(), CRealPoint(10, 10));
    m_axes.SetXAxisRange(0, 9);
    m_axes.UpdateGraphParameters();
    EXPECT_EQ(m_axes.GetIntersect(), CRealPoint(0, 0));
    EXPECT_EQ(m_axes.GetIntersectMode(), 0);
}

TEST_F(AxesDraw, UnreasonableRangesAndSizesDrawWithoutFaults)
{
    double const largest = std::numeric_limits<double>::max();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    std::pair<double, double> const ranges[] = { { -largest, largest }, { nan, nan }, { 0, infinity }, { 5, -5 },
        { 1e300, 1e300 }, { 5e-324, 1e-323 }, { largest, largest } };
    for (auto const& [min, max] : ranges) {
        for (int const flags : { 0, 1, 2, 3, 4, 5, 6, 7 }) {
            m_axes.SetXAxisRange(min, max);
            m_axes.SetYAxisRange(min, max);
            m_axes.SetXAxisRangeMode(flags & 2);
            m_axes.SetXAxisScaleMode(flags & 1);
            m_axes.SetYAxisScaleMode(flags & 1);
            m_axes.SetXTimeUnitsOn(flags & 4);
            m_axes.SetXMajorTickScaleFac(max);
            m_axes.SetLabelsFont({ "Arial", 400, 0, flags & 4 ? nan : 0.0 });
            Draw();
            double low = 0;
            double high = 0;
            m_axes.GetRange(CAxes::atX, 0, low, high);
            EXPECT_FALSE(low == high) << min;
        }
    }
}

/// A setter, what must be set for it to matter, and what it does.
struct Setting {
    char const* name;
    void (*prepare)(CAxes&);
    void (*apply)(CAxes&);
    enum { Draws = 1, Raises = 2 };
    int effects;
};

void Plain(CAxes& a)
{
    a.SetXAxisTitle("x");
    a.SetYAxisTitle("y");
    a.SetXMinorLabelsOn(1);
    a.SetYMinorLabelsOn(1);
    a.SetIntersect({ 4, 6 });
}

void Steps(CAxes& a)
{
    a.SetXTickMode(CAxes::tmStep);
    a.SetYTickMode(CAxes::tmStep);
}

void Arbitrary(CAxes& a)
{
    a.SetXTickMode(CAxes::tmArbitrary);
    a.SetYTickMode(CAxes::tmArbitrary);
    a.SetXArbTickPosns({ 3, 7 });
    a.SetYArbTickPosns({ 3, 7 });
    a.SetXLabels({ "a", "b" });
    a.SetYLabels({ "c", "d" });
    a.SetXAxisLabelMode(1);
    a.SetYAxisLabelMode(1);
}

void Dates(CAxes& a)
{
    Steps(a);
    a.SetXTimeUnitsOn(1);
    a.SetXDelTime(3);
    a.SetXDelTimeUnit(CAxes::TimeUnit::Day);
    a.SetXDelTimeMinor(1);
    a.SetXDelTimeUnitMinor(CAxes::TimeUnit::Day);
    a.SetXMinorLabelsOn(1);
}

void DateDivisions(CAxes& a)
{
    Dates(a);
    a.SetXTickMode(CAxes::tmDivisions);
}

void FixedTicks(CAxes& a)
{
    a.SetXTickRangeMode(1);
    a.SetYTickRangeMode(1);
}

constexpr int kBoth = Setting::Draws | Setting::Raises;
Setting const kSettings[] = {
    { "XAxisMin", Plain, [](CAxes& a) { a.SetXAxisMin(1); }, kBoth },
    { "YAxisMax", Plain, [](CAxes& a) { a.SetYAxisMax(9); }, kBoth },
    { "XAxisRangeMode", Plain, [](CAxes& a) { a.SetXAxisRangeMode(0); }, Setting::Raises },
    { "XAxisScaleMode", Plain, [](CAxes& a) { a.SetXAxisScaleMode(1); }, kBoth },
    { "YAxisScaleFac", Plain, [](CAxes& a) { a.SetYAxisScaleFac(2); }, Setting::Raises },
    { "YTimeUnitsOn", Plain, [](CAxes& a) { a.SetYTimeUnitsOn(1); }, Setting::Raises },
    { "XTimeUnitsOn", Plain, [](CAxes& a) { a.SetXTimeUnitsOn(1); }, kBoth },
    { "XAxisOn", Plain, [](CAxes& a) { a.SetXAxisOn(0); }, kBoth },
    { "IntersectMode", Plain, [](CAxes& a) { a.SetIntersectMode(1); }, kBoth },
    { "YAxisTitle", Plain, [](CAxes& a) { a.SetYAxisTitle("other"); }, kBoth },
    { "YTickMode", Plain, [](CAxes& a) { a.SetYTickMode(CAxes::tmNone); }, kBoth },
    { "NumXMajorTicks", Plain, [](CAxes& a) { a.SetNumXMajorTicks(4); }, kBoth },
    { "NumYMinorTicks", Plain, [](CAxes& a) { a.SetNumYMinorTicks(1); }, kBoth },
    { "XTickMin", Steps, [](CAxes& a) { a.SetXTickMin(0.5); }, kBoth },
    { "YTickDel", Steps, [](CAxes& a) { a.SetYTickDel(4); }, kBoth },
    { "XTickRangeMin", FixedTicks, [](CAxes& a) { a.SetXTickRangeMin(3); }, kBoth },
    { "YTickRangeMax", FixedTicks, [](CAxes& a) { a.SetYTickRangeMax(7); }, kBoth },
    { "TickRange", FixedTicks, [](CAxes& a) { a.SetTickRange(CAxes::atY, 2, 3); }, kBoth },
    { "XMajorTickScaleFac", Plain, [](CAxes& a) { a.SetXMajorTickScaleFac(2); }, kBoth },
    { "YMinorTickScaleFac", Plain, [](CAxes& a) { a.SetYMinorTickScaleFac(3); }, kBoth },
    { "XTickMinTime", Dates, [](CAxes& a) { a.SetAlignRefDate(0), a.SetXTickMinTime(COleDateTime(1.0)); }, kBoth },
    { "XDelTime", Dates, [](CAxes& a) { a.SetXDelTime(2); }, kBoth },
    { "XDelTimeUnit", Dates, [](CAxes& a) { a.SetXDelTimeUnit(CAxes::TimeUnit::Week); }, kBoth },
    { "XDelTimeMinor", Dates, [](CAxes& a) { a.SetXDelTimeMinor(2); }, kBoth },
    { "XDelTimeUnitMinor", Dates, [](CAxes& a) { a.SetXDelTimeUnitMinor(CAxes::TimeUnit::Hour); }, kBoth },
    { "XLabelsOn", Plain, [](CAxes& a) { a.SetXLabelsOn(0); }, kBoth },
    { "YMinorLabelsOn", Plain, [](CAxes& a) { a.SetYMinorLabelsOn(0); }, kBoth },
    { "YIntersectLabelOn", Plain, [](CAxes& a) { a.SetYIntersectLabelOn(0); }, kBoth },
    { "XLabelPlacement", Plain, [](CAxes& a) { a.SetXLabelPlacement(CAxes::lpAbove); }, kBoth },
    { "YFormatType", Plain, [](CAxes& a) { a.SetYFormatType(kFixedFormat); }, kBoth },
    { "XMinorFormatType", Plain, [](CAxes& a) { a.SetXMinorFormatType(kFixedFormat); }, kBoth },
    { "LabelsColour", Plain, [](CAxes& a) { a.SetLabelsColour(1); }, kBoth },
    { "MinorLabelsColour", Plain, [](CAxes& a) { a.SetMinorLabelsColour(1); }, kBoth },
    { "TitlesColour", Plain, [](CAxes& a) { a.SetTitlesColour(1); }, kBoth },
    { "TextColour", Plain, [](CAxes& a) { a.SetTextColour(1); }, Setting::Raises },
    { "Colour", Plain, [](CAxes& a) { a.SetColour(1); }, kBoth },
    { "TitlesFont", Plain,
        [](CAxes& a) {
            a.SetTitlesFont({ "Arial", 700, 0, 1 });
        },
        kBoth },
    { "LabelsFont", Plain,
        [](CAxes& a) {
            a.SetLabelsFont({ "Arial", 700, 0, 1 });
        },
        kBoth },
    { "MinorLabelsFont", Plain,
        [](CAxes& a) {
            a.SetMinorLabelsFont({ "Arial", 400, 1, 1 });
        },
        kBoth },
    { "XAxisLabelMode", Arbitrary, [](CAxes& a) { a.SetXAxisLabelMode(0); }, Setting::Draws },
    { "XLabelPrecision", Plain, [](CAxes& a) { a.SetXLabelPrecision(1); }, Setting::Draws },
    { "YMinorLabelPrecision", Plain, [](CAxes& a) { a.SetYMinorLabelPrecision(1); }, Setting::Draws },
    { "LabelsHorizontal", Plain, [](CAxes& a) { a.SetLabelsHorizontal(0); }, Setting::Draws },
    { "MinorLabelsHorizontal", Plain, [](CAxes& a) { a.SetMinorLabelsHorizontal(0); }, Setting::Draws },
    { "XLabelDateFormat", Dates, [](CAxes& a) { a.SetXLabelDateFormat("%Y"); }, Setting::Draws },
    { "XMinorLabelDateFormat", Dates, [](CAxes& a) { a.SetXMinorLabelDateFormat("%Y"); }, Setting::Draws },
    { "XLabelTimeFormat", Dates, [](CAxes& a) { a.SetXLabelTimeFormat("%H"); }, Setting::Draws },
    { "XMinorLabelTimeFormat", DateDivisions, [](CAxes& a) { a.SetXMinorLabelTimeFormat("%H"); }, Setting::Draws },
    { "XAxisRange", Plain, [](CAxes& a) { a.SetXAxisRange(1, 2); }, Setting::Draws },
    { "XLabels", Arbitrary,
        [](CAxes& a) {
            a.SetXLabels({ "b", "a" });
        },
        Setting::Draws },
    { "YArbTickPosns", Arbitrary,
        [](CAxes& a) {
            a.SetYArbTickPosns({ 2, 7 });
        },
        Setting::Draws },
};

TEST(AxesSettings, ChangeTheDrawingAndRaiseTheModifiedFlagWhereTheyShould)
{
    for (Setting const& setting : kSettings) {
        // Two graphs, so that neither remembers the other's settings.
        auto const draw = [&](bool apply) {
            C2DGraph graph(1);
            graph.SetGraphAndWindowRect(CRect(0, 0, 400, 300), CRect(0, 0, 400, 300));
            CAxes& axes = *graph.GetAxes();
            axes.SetXAxisRangeMode(CAxes::rmFixed);
            axes.SetYAxisRangeMode(CAxes::rmFixed);
            setting.prepare(axes);
            axes.SetModified(0);
            if (apply) {
                setting.apply(axes);
                EXPECT_EQ(axes.Modified() != 0, (setting.effects & Setting::Raises) != 0) << setting.name;
            }
            axes.UpdateGraphParameters();
            auto const surface = std::make_shared<RecordingSurface>(CSize(400, 300));
            CDC dc(surface);
            CPort port(&dc, CRect(0, 0, 400, 300), CRect(50, 20, 350, 220), CRealRect(0, 10, 10, 0));
            axes.Draw(&port);
            return surface->Primitives();
        };
        EXPECT_EQ(draw(true) != draw(false), (setting.effects & Setting::Draws) != 0) << setting.name;
    }
}

} // namespace
} // namespace ombrel
