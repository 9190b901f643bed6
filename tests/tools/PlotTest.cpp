#include "ombrel/Init.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/PlotCommand.h"
#include "tools/ombrel/options/Options.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

namespace ombrel::host {
namespace {

constexpr COLORREF kBlue = RGB(0, 95, 170);
constexpr COLORREF kVermilion = RGB(213, 94, 0);
constexpr COLORREF kSkyBlue = RGB(86, 180, 233);
constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kAxes = RGB(64, 64, 64);

/// Graphs of a table in pictures of 1000 by 640 pixels.
class Plots : public testing::Test {
protected:
    Plots() { OmbrelInit(); }

    /// options in words with blanks between. m_told gets the warnings.
    void Plot(std::string const& table, std::string const& options)
    {
        m_folder.Write("t", table);
        std::istringstream stream("plot " + m_folder.In("t") + " " + options);
        std::vector<std::string> const words(std::istream_iterator<std::string>(stream), {});
        m_target = Target();
        m_picture = std::make_unique<Picture>(m_target);
        std::vector<std::unique_ptr<InputFile>> files;
        files.push_back(std::make_unique<InputFile>(m_folder.In("t")));
        testing::internal::CaptureStderr();
        m_graph = MakePlot(ParseOptions(words), files, *m_picture, Messages(false));
        m_told = testing::internal::GetCapturedStderr();
    }
    CAxes& Axes() { return *m_graph->GetAxes(); }
    AxisSettings const& X() { return Axes().GetAxis(CAxes::atX); }
    AxisSettings const& Y() { return Axes().GetAxis(CAxes::atY); }
    CPlot& PlotAt(int i) { return *m_graph->GetPlotArray()->GetAt(i); }
    template <typename Curve> Curve& CurveAt(int plot, int curve = 0)
    {
        return static_cast<Curve&>(*PlotAt(plot).GetComponents()[curve]);
    }
    int CountPlots() { return m_graph->GetPlotArray()->GetSize(); }
    /// The device point of a point of data.
    CPoint At(double x, double y)
    {
        CRect const area = m_graph->GetAxesRect();
        CRealRect const range = m_graph->GetAxesRealRect();
        return { static_cast<int>(area.left + (x - range.left) / range.Width() * area.Width() + 0.5),
            static_cast<int>(area.top + (range.top - y) / (range.top - range.bottom) * area.Height() + 0.5) };
    }
    void Draw() { m_picture->Draw(*m_graph); }
    COLORREF Pixel(CPoint at) { return m_picture->GetDC().GetPixel(at.x, at.y); }
    /// How many pixels of the plotting area have the colour.
    int CountPixels(COLORREF colour)
    {
        CRect const area = m_graph->GetAxesRect();
        int count = 0;
        for (int y = area.top; y <= area.bottom; ++y) {
            for (int x = area.left; x <= area.right; ++x)
                count += Pixel({ x, y }) == colour;
        }
        return count;
    }

    std::unique_ptr<C2DGraph> m_graph;
    std::unique_ptr<Picture> m_picture;
    std::string m_told;

private:
    Target m_target;
    TestFolder m_folder;
};

/// "x,a,b,..." and a row for each of 1 ... rows.
std::string Rows(int rows, int columns, std::function<double(int, int)> const& value)
{
    std::string text = "x";
    for (int k = 0; k < columns; ++k)
        text += std::string(",") + static_cast<char>('a' + k);
    for (int i = 1; i <= rows; ++i) {
        text += "\n" + std::to_string(i);
        for (int k = 0; k < columns; ++k)
            text += "," + std::to_string(value(i, k));
    }
    return text + "\n";
}

TEST_F(Plots, GiveAxesTheRangeOfTheDataAndMarginsThatEndWhereItNaturallyEnds)
{
    char const* const signs = "x,a,b\n1,3,-1\n2,4,2\n4,,5\n";
    struct {
        char const* table;
        char const* options;
        /// Minimum, maximum and step.
        double x[3];
        double y[3];
    } const cases[] {
        { "x,y\n-100,-100\n100,100\n", "--kind points", { -110, 110, 50 }, { -110, 110, 50 } },
        { "x,y\n0.2,0.2\n40,40\n", "--kind points", { 0, 41, 5 }, { 0, 42, 10 } },
        { "x,y,t\n-0.2,-0.2,p\n-40,-40,q\n", "--kind text --label t", { -41, 0, 5 }, { -42, 0, 10 } },
        { "x,y\n1,10\n81,40\n", "", { 0, 82, 10 }, { 9, 41, 5 } },
        { "x,y\n1,10\n81,40\n", "--y-range :40", { 0, 82, 10 }, { 9, 40, 5 } },
        { "x,y\n1,10\n81,40\n", "--x-range 5:", { 5, 82, 10 }, { 36, 44, 1 } },
        { "x,y\n1,10\n81,40\n", "--x-range :50", { 1, 50, 5 }, { 9, 11, 0.5 } },
        { "x,y\n1,0\n2,98.5\n", "", { 1, 2, 1 }, { 0, 100, 20 } },
        { "x,y\n1,0\n2,98.5\n", "--kind points", { 0.98, 2.02, 1 }, { 0, 105, 20 } },
        { "x,y\n1,10\n2,20\n", "--kind filled", { 1, 2, 1 }, { 0, 21, 5 } },
        { "x,y\n0,3\n1,24\n2,-1\n", "--kind bar", { -0.5, 2.5, 1 }, { -2, 25, 5 } },
        { signs, "--kind clustered", { 0.5, 4.5, 1 }, { -1.2, 5.2, 1 } },
        { signs, "--kind clustered --x-range 2:4", { 2, 4, 1 }, { 0, 5.2, 1 } },
        { signs, "--kind stacked --percent", { 0.5, 4.5, 1 }, { -30, 100, 20 } },
        { "x,a,b\n1,-3,-1\n2,-4,0\n", "--kind stacked --percent", { 0.5, 2.5, 1 }, { 0, 100, 20 } },
        { "x,a,b\n1,-3,1\n2,-4,0\n", "--kind stacked --percent", { 0.5, 2.5, 1 }, { -100, 30, 20 } },
        { signs, "--kind area", { 1, 4, 1 }, { 0, 6.2, 1 } },
        { signs, "--kind area --normalised", { 1, 4, 1 }, { 0, 1, 0.2 } },
        { "x,y,e\n1,10,2\n2,20,1\n", "-y y --error e", { 0.98, 2.02, 1 }, { 7.5, 21.5, 2 } },
        { "v\n1\n1\n2\n3\n", "--kind histogram --bins 2", { 1, 3, 0.2 }, { 0, 3, 1 } },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::string(c.options) + "\n" + c.table);
        Plot(c.table, c.options);
        for (auto const& [axis, expected] : { std::pair(&X(), c.x), std::pair(&Y(), c.y) }) {
            EXPECT_NEAR(axis->min, expected[0], 1e-9);
            EXPECT_NEAR(axis->max, expected[1], 1e-9);
            EXPECT_NEAR(axis->tickDel, expected[2], 1e-9);
        }
        EXPECT_GE(Y().tickMin, c.y[0] - 1e-9);
        EXPECT_LT(Y().tickMin, c.y[0] + c.y[2] - 1e-9) << "a tick is missing";
        EXPECT_NEAR(std::remainder(Y().tickMin, c.y[2]), 0.0, 1e-9);
    }
}

TEST_F(Plots, LabelWordsAndDatesAlongX)
{
    Plot("w,y\nNorth,1\nSouth,2\n", "--kind bar");
    EXPECT_EQ(X().min, 0.5);
    EXPECT_EQ(X().max, 2.5);
    EXPECT_EQ(X().labels, (CStringArray { "North", "South" }));
    EXPECT_EQ(X().arbitraryTicks.GetSize(), 2);
    EXPECT_EQ(X().arbitraryTicks[1], 2.0);
    EXPECT_EQ(Axes().GetLabelsHorizontal(), 1);
    EXPECT_EQ(X().title, CString("w"));
    Plot("when,y\n2020-03-04 10:07,1\n2020-03-04 15:00,2\n", "--title Day");
    auto const& ticks = Axes().GetDateTicks();
    EXPECT_EQ(X().labels[1], CString("10:30"));
    EXPECT_TRUE(ticks.del == 30 && ticks.delUnit == TimeUnit::Minute);
    EXPECT_TRUE(ticks.delMinor == 10 && ticks.delUnitMinor == TimeUnit::Minute);
    EXPECT_EQ(ticks.tickMin.GetValue(), COleDateTime(2020, 3, 4, 10, 0, 0).GetValue());
    EXPECT_EQ(X().title, CString("when (4 Mar 2020)"));
    EXPECT_EQ(FindTitle(*m_graph)->GetText(), CString("Day"));
    Plot("when,y\n2020-03-04,1\n2020-03-05,2\n", "--kind points --x-title t");
    EXPECT_EQ(X().title, CString("t (2020)"));
    EXPECT_NEAR(X().min, COleDateTime(2020, 3, 4, 0, 0, 0).GetValue() - 0.02, 1e-9);
    EXPECT_NEAR(X().max, COleDateTime(2020, 3, 5, 0, 0, 0).GetValue() + 0.02, 1e-9);
}

TEST_F(Plots, HaveSquarePolarGridsInTheMiddle)
{
    Plot("angle,r\n0,7.5\n90,7.5\n180,7.5\n270,7.5\n300,\n", "--polar");
    CRect const area = m_graph->GetAxesRect();
    EXPECT_EQ(area.Width(), area.Height());
    EXPECT_GT(area.Height(), 500);
    EXPECT_NEAR(area.CenterPoint().x, 500, 10);
    EXPECT_NEAR(area.CenterPoint().y, 320, 10);
    C2DLine const& line = CurveAt<C2DLine>(0);
    EXPECT_NEAR(line.GetAt(1).x, 0.0, 1e-9);
    EXPECT_NEAR(line.GetAt(1).y, 7.5, 1e-9);
    EXPECT_NEAR(line.GetAt(2).x, -7.5, 1e-9);
    EXPECT_TRUE(IsGap(line.GetAt(4).y));
    EXPECT_FALSE(X().on || Y().on);
}

TEST_F(Plots, RunFromLeftToRightWhereValuesHoldUntilTheNextOne)
{
    char const* const newestFirst = "x,y\n4,40\n3,\n2,20\n1,10\n,5\n";
    for (auto const& [kind, first] : { std::pair("line", 4.0), std::pair("steps", 1.0), std::pair("filled", 1.0) }) {
        Plot(newestFirst, std::string("-x x -y y --kind ") + kind);
        C2DLine const& line = CurveAt<C2DLine>(0);
        EXPECT_EQ(line.GetAt(0).x, first) << kind;
        EXPECT_EQ(line.GetAt(0).y, 10 * first) << kind;
        EXPECT_TRUE(IsGap(line.GetAt(first == 1.0 ? 2 : 1).y)) << kind;
        EXPECT_EQ(line.GetAt(3).x, first == 1.0 ? 4.0 : 1.0) << kind;
        EXPECT_TRUE(IsGap(line.GetAt(4).x)) << kind;
    }
    Draw();
    EXPECT_EQ(Pixel(At(1.5, 5)), RGB(153, 191, 221)) << "below the line";
    EXPECT_EQ(Pixel(At(1.5, 18)), kPaper) << "above the line";
    EXPECT_EQ(Pixel(At(2.5, 5)), kPaper) << "a gap";
}

TEST_F(Plots, MarkPointsBetweenGaps)
{
    std::string const table = "x,a,b\n1,2,3\n2,,3\n3,4,3\n4,4,3\n";
    for (std::string const options :
        { "", "--kind filled", "--kind steps --symbols", "--kind pairs", "--x-range 3:" }) {
        Plot(table, options);
        EXPECT_EQ(CurveAt<C2DLine>(0).GetSymbolType(), C2DSymbol::Circle) << options;
        EXPECT_EQ(
            CurveAt<C2DLine>(0, 1).GetSymbolType(), options.ends_with("symbols") ? C2DSymbol::Square : C2DSymbol::None);
        EXPECT_EQ(CountPlots(), 1);
    }
    Plot("x,y\n3,5\n", "");
    Draw();
    EXPECT_EQ(Pixel(At(3, 5)), kBlue);
    // Where marks would hide the line only the points that stand alone have them.
    Plot("x,y\n" + Rows(300, 1, [](int i, int) { return i % 50 ? i : 1000; }).substr(4)
            + "400,\n433,710\n500,\n600,5\n610,6\n",
        "");
    EXPECT_EQ(CurveAt<C2DLine>(0).GetSymbolType(), C2DSymbol::None);
    ASSERT_EQ(CountPlots(), 2);
    auto const& dashes = CurveAt<C2DErrorBarCurve>(1);
    ASSERT_EQ(dashes.GetNumPoints(), 1);
    EXPECT_EQ(dashes.GetAt(0).x, 433);
    Draw();
    for (int dx = -2; dx <= 2; ++dx)
        EXPECT_EQ(Pixel(At(433, 710) + CPoint(dx, 0)), kBlue);
    EXPECT_EQ(Pixel(At(433, 710) + CPoint(0, 1)), kPaper);
    EXPECT_FALSE(m_graph->GetLegend()->IsOn());
}

TEST_F(Plots, OutlineBarsAndBandsSoThatTheyCanBeSeen)
{
    auto const high = [](int, int) { return 10.0; };
    constexpr double kAny = -1.0;
    struct {
        std::string table;
        char const* options;
        double factor;
        COLORREF border;
    } const cases[] {
        { Rows(20, 1, high), "--kind bar", 0.7, kPaper },
        { Rows(20, 1, high), "--kind bar --theme print", 0.7, RGB(0, 0, 0) },
        // 5.9 pixels wide.
        { Rows(110, 1, high), "--kind bar", kAny, kOwnColour },
        { Rows(500, 1, high), "--kind bar", 1.0, kOwnColour },
        { Rows(20, 3, [](int i, int) { return i == 2 ? 5.01 : 10.0; }), "--kind clustered", 0.8, kPaper },
        { Rows(200, 3, high), "--kind clustered", 1.0, kOwnColour },
        { Rows(20, 3, high), "--kind stacked", 0.7, kPaper },
        { Rows(300, 3, high), "--kind stacked", 1.0, kOwnColour },
        { Rows(20, 3, high), "--kind area", 1.0, kPaper },
        { Rows(400, 3, high), "--kind area", 1.0, kOwnColour },
        { Rows(20, 2, [](int, int k) { return k ? 1000.0 : 1.0; }), "--kind area", 1.0, kOwnColour },
        { Rows(20, 2, [](int, int k) { return k ? 1000.0 : 1.0; }), "--kind area --normalised", 1.0, kOwnColour },
        { Rows(20, 2, [](int, int k) { return k ? 1000.0 : 0.0; }), "--kind area", 1.0, kPaper },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::string(c.options) + ", rows: " + std::to_string(c.table.size()));
        Plot(c.table, c.options);
        EXPECT_EQ(m_told, "");
        auto const check = [&c](auto const& bars) {
            EXPECT_EQ(bars.GetBorderColour(), c.border);
            if constexpr (requires { bars.GetBarWidthFactor(); }) {
                EXPECT_TRUE(c.factor == kAny || bars.GetBarWidthFactor() == c.factor);
            }
        };
        if (auto* const area = DynamicDowncast<C2DAreaPlot>(&PlotAt(0)))
            check(*area);
        else if (auto* const clustered = DynamicDowncast<C2DClusteredBarPlot>(&PlotAt(0)))
            check(*clustered);
        else if (auto* const stacked = DynamicDowncast<C2DStackedBarPlot>(&PlotAt(0)))
            check(*stacked);
        else
            check(CurveAt<C2DBarCurve>(0));
    }
    // A flat bar among others would vanish under an outline in the colour of the paper.
    for (auto const& [kind, column, x] :
        { std::tuple("bar -y a", 0, 2.0), std::tuple("clustered", 0, 1.733), std::tuple("stacked", 1, 2.0) }) {
        Plot(Rows(20, 3, [flat = column](int i, int k) { return i == 2 && k == flat ? 0.03 : 10.0; }),
            std::string("--kind ") + kind);
        Draw();
        CPoint at = At(x, 0);
        int count = 0;
        for (; at.y > m_graph->GetAxesRect().top; --at.y)
            count += Pixel(at) == (column ? kVermilion : kBlue);
        EXPECT_GT(count, 0) << kind;
        EXPECT_LT(count, 4) << kind;
    }
}

TEST_F(Plots, ShowBarsAndBandsOfMoreRowsThanPixels)
{
    auto const values = [](int i, int k) { return 10.0 * (k + 1) + i % 7; };
    Plot(Rows(1100, 3, values), "--kind clustered");
    EXPECT_EQ(m_told,
        "ombrel: warning: 1100 rows of bars are too narrow to be told apart: they cover each other; a wider picture, "
        "fewer rows or bands would show more\n");
    Plot(Rows(365, 3, values), "--kind clustered");
    EXPECT_NE(m_told, "");
    Draw();
    for (COLORREF const colour : { kBlue, kVermilion, kSkyBlue })
        EXPECT_GT(CountPixels(colour), 20000);
    // Among thousands of rows, each peak of the first band and those of the second are there up to their tops.
    Plot(Rows(3000, 2, [](int i, int k) { return k == 0  ? (i == 1500 ? 56.0 : 1.0)
                                              : i == 500 ? 40.0
                                                         : 2.0; }),
        "--kind area");
    Draw();
    EXPECT_EQ(Pixel(At(1500, 55)), kBlue);
    EXPECT_EQ(Pixel(At(1500, 57)), kVermilion);
    EXPECT_EQ(Pixel(At(500, 40)), kVermilion);
    EXPECT_EQ(Pixel(At(1000, 0.5)), kBlue);
    EXPECT_EQ(Pixel(At(1010, 11)), kPaper);
}

TEST_F(Plots, HaveAxesOverBarsAndAreasAndALineAtZero)
{
    auto const signs = [](int i, int k) { return (i % 2 ? 5.0 : -3.0) - k; };
    for (char const* const kind : { "bar -y a", "clustered", "stacked", "stacked --percent", "area" }) {
        SCOPED_TRACE(kind);
        Plot(Rows(30, 2, signs), std::string("--kind ") + kind);
        Draw();
        CRect const area = m_graph->GetAxesRect();
        int const zero = At(0, 0).y;
        for (int x = area.left + 1; x < area.right; ++x)
            ASSERT_TRUE(Pixel({ x, zero }) == kAxes && Pixel({ x, area.bottom }) == kAxes) << x;
        for (int y = area.top + 1; y < area.bottom; ++y)
            ASSERT_EQ(Pixel({ area.left, y }), kAxes) << y;
    }
    for (auto const& [options, order] : { std::pair("", "C2DGrid CAxes C2DLine C2DLine C2DLine "),
             std::pair("-y a --error e --kind filled", "C2DGrid C2DErrorBarCurve C2DLine CAxes "),
             std::pair("-y a --polar --kind filled", "C2DGrid CAxes C2DLine "),
             std::pair("-y a --error e --kind bar", "C2DGrid C2DBarCurve CAxes C2DErrorBarCurve "),
             std::pair("-y a,b --error e --kind clustered",
                 "C2DGrid C2DClusteredBarPlot CAxes C2DErrorBarCurve C2DErrorBarCurve ") }) {
        Plot("x,a,b,e\n1,2,3,1\n2,3,4,1\n", options);
        CDWordArray tags;
        m_graph->GetDrawOrderTags(tags);
        std::string found;
        for (DWORD const tag : tags)
            found += m_graph->GetObjectByTag(tag)->GetRuntimeClass().name + std::string(" ");
        EXPECT_EQ(found, order) << options;
    }
    // Each in the middle of its bar: two share eight tenths of their place.
    EXPECT_NEAR(CurveAt<C2DErrorBarCurve>(1, 0).GetAt(1).x, 1.8, 1e-9);
    EXPECT_NEAR(CurveAt<C2DErrorBarCurve>(1, 1).GetAt(1).x, 2.2, 1e-9);
    EXPECT_EQ(CurveAt<C2DErrorBarCurve>(1, 1).GetHeights()[1], 2.0);
}

TEST_F(Plots, HaveTheirTitleAboveAndCaptionsInsideThePicture)
{
    Plot("x,y\n1,2\n2,3\n", "--title Title --caption A@0.5,0.25 --caption Longer@1,1");
    Draw();
    CRect const area = m_graph->GetAxesRect();
    CRect const title = FindTitle(*m_graph)->GetRect();
    EXPECT_NEAR(title.CenterPoint().x, area.CenterPoint().x, 1);
    EXPECT_GT(title.top, 0);
    EXPECT_LE(title.bottom, area.top);
    CCaption& a = *m_graph->GetCaptionArray()->GetAt(1);
    EXPECT_NEAR(a.GetRect().left, area.left + area.Width() / 2, 1);
    EXPECT_NEAR(a.GetRect().top, area.top + area.Height() / 4, 1);
    CCaption& b = *m_graph->GetCaptionArray()->GetAt(2);
    EXPECT_EQ(b.GetRect().right, 1000);
    EXPECT_NEAR(b.GetRect().top, area.bottom, 1);
    // Boxes that lie outside of the picture are moved into it, others are not.
    a.SetRect(CRect(CPoint(990, 630), a.GetRect().Size()));
    b.SetRect(CRect(CPoint(-20, 50), b.GetRect().Size()));
    KeepBoxesInside(*m_graph);
    EXPECT_EQ(a.GetRect().BottomRight(), CPoint(1000, 640));
    EXPECT_EQ(b.GetRect().TopLeft(), CPoint(0, 50));
    EXPECT_EQ(FindTitle(*m_graph)->GetRect(), title);
    Plot("x,y\n1,2\n2,3\n", "--title " + std::string(200, 'M'));
    Draw();
    CCaption* const shortened = FindTitle(*m_graph);
    ASSERT_TRUE(shortened);
    EXPECT_TRUE(shortened->IsOn());
    EXPECT_EQ(shortened->GetText().Right(1), CString("…"));
    EXPECT_GT(shortened->GetRect().Width(), 850);
    EXPECT_LE(shortened->GetRect().Width(), 1000);
    EXPECT_EQ(m_graph->GetTitle().GetLength(), 200);
}

} // namespace
} // namespace ombrel::host
