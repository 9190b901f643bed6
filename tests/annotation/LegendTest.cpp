#include "ombrel/drawing/FillPattern.h"
#include "ombrel/foundation/Utils.h"
#include "tests/annotation/AnnotationFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel {
namespace {

using test::FramedGraph;
using test::Recorder;

TEST(Legend, StacksSamplesAndTitlesByTheHeightOfTheWidestTitle)
{
    FramedGraph graph;
    for (char const* title : { "short", "the longest of all", "" })
        graph.List(title);
    graph.List(std::nullopt);
    CLegend& legend = *graph.GetLegend();
    for (auto const& [style, sampleWidth] :
        { std::pair(0, 24), std::pair(1, 80), std::pair(2, 24), std::pair(7, 24) }) {
        Recorder recorder;
        legend.Create({ 100, 50 });
        legend.SetStyle(style);
        legend.SetFontHeight(16);
        auto const texts = recorder.Draw<primitive::Text>(legend);
        ASSERT_EQ(texts.size(), 2u) << "the empty title draws nothing";
        EXPECT_EQ(texts[0].font.lfHeight, 16);
        EXPECT_EQ(texts[0].at, CPoint(100 + sampleWidth, 50 + 4));
        EXPECT_EQ(texts[1].at, CPoint(100 + sampleWidth, 50 + 4 + 18));
        CFont font;
        CVUtils::ConfigureFont(&font, legend.GetFont(), 16, 0);
        CFont* const before = recorder.Dc().SelectObject(&font);
        int const widest = recorder.Dc().GetTextExtent("the longest of all").cx;
        recorder.Dc().SelectObject(before);
        CSize const size(5 + sampleWidth + widest, 2 * 18 + 24);
        EXPECT_EQ(legend.GetRect(), CRect(CPoint(100, 50), size)) << style;
        EXPECT_EQ(recorder.Draw<primitive::Fill>(legend)[0].region.Box(), legend.GetRect());
        EXPECT_EQ(legend.Measure(&recorder.Dc()), size);
    }
}

/// A host's legend that draws its samples itself.
class HostLegend : public CLegend {
public:
    using CLegend::CLegend;
    using CLegend::GetCellSize;
    using CLegend::GetDefaultSize;
    using CLegend::GetLegendCellRects;
    using CLegend::GetMaxTextSize;
    std::vector<std::tuple<CPoint, CPoint, int>> lines;
    std::vector<std::pair<CRect, int>> symbols;
    std::string heights;

protected:
    void UpdateFontHeight2D(CDC*) override
    {
        heights += '2';
        m_fontHeight = 20;
    }
    void UpdateFontHeight3D(CDC*) override
    {
        heights += '3';
        m_fontHeight = 30;
    }
    int GetFillPattern(CPlotComponent* curve) override { return curve->GetTitle() == CString("odd") ? 5 : -1; }
    void DrawLine(CPort*, CPoint from, CPoint to, int entry) override { lines.emplace_back(from, to, entry); }
    void DrawSymbol(CPort*, CRect square, int entry) override { symbols.emplace_back(square, entry); }
};

TEST(Legend, StepsBelongToTheHostThatOverridesThem)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    graph.List("a");
    graph.List("b");
    graph.GetPlotArray()->GetAt(0)->GetComponent(1)->SetTitle("odd");
    HostLegend legend(&graph);
    legend.Create({ 100, 50 });
    Recorder recorder;
    // Lines of 20 pixels: entries from 50 + 20 / 4 on, 22 apart.
    auto patches = recorder.Draw<primitive::Fill>(legend);
    ASSERT_EQ(patches.size(), 3u);
    patches.erase(patches.begin()); // The background.
    EXPECT_EQ(patches[0].brush.hatchStyle, std::nullopt);
    EXPECT_EQ(patches[1].brush.hatchStyle, 5);
    EXPECT_EQ(patches[1].region.Box(), CRect(108, 80, 122, 94));
    legend.SetStyle(CLegend::lsLine);
    recorder.Draw(legend);
    EXPECT_EQ(legend.lines,
        (std::vector<std::tuple<CPoint, CPoint, int>> {
            { { 110, 65 }, { 190, 65 }, 0 }, { { 110, 87 }, { 190, 87 }, 1 } }));
    legend.SetStyle(CLegend::lsSymbol);
    recorder.Draw(legend);
    EXPECT_EQ(legend.symbols,
        (std::vector<std::pair<CRect, int>> { { { 108, 58, 122, 72 }, 0 }, { { 108, 80, 122, 94 }, 1 } }));
    CRect sample;
    CRect text;
    legend.GetLegendCellRects({ 0, 10, 99, 40 }, sample, text, nullptr);
    EXPECT_EQ(sample, CRect(12, 15, 32, 35));
    EXPECT_EQ(text, CRect(45, 10, 99, 40));
    graph.frame->textRule = AnnotationFrame::TextRule::Picture;
    recorder.Draw(legend);
    graph.frame.reset();
    recorder.Draw(legend);
    EXPECT_EQ(legend.heights, "2223") << "by the kind of graph; outside one, none";
    CSize const widest = legend.GetMaxTextSize(&recorder.Dc());
    EXPECT_EQ(legend.GetCellSize(&recorder.Dc()), CSize(widest.cy / 3 + 3 * widest.cy / 2 + widest.cx, widest.cy));
    EXPECT_EQ(legend.GetDefaultSize(&recorder.Dc(), 0), legend.GetRect().Size());
}

LegendEntry Striking()
{
    static constexpr std::array kDashes { 8.0, 2.0 };
    LegendEntry entry;
    entry.title = "curve";
    entry.colour = RGB(1, 2, 3);
    entry.dashes = kDashes;
    entry.lineWidth = 2;
    entry.symbolType = C2DSymbol::Square;
    entry.symbolColour = RGB(4, 5, 6);
    entry.fillSymbol = 1;
    entry.symbolFillColour = RGB(7, 8, 9);
    return entry;
}

TEST(Legend, FillsPatchesWithTheCurvesPatternOnWhite)
{
    FramedGraph graph;
    std::optional<int> const expected[] = { std::nullopt, std::nullopt, 0, 52, std::nullopt, std::nullopt };
    LegendEntry entry = Striking();
    for (int const pattern : { LegendEntry::kNoPattern, kSolidFillPattern, 0, 52, 53, -1000 }) {
        entry.fillPattern = pattern;
        graph.List(entry);
    }
    graph.GetLegend()->Create({ 0, 0 });
    graph.GetLegend()->SetFontHeight(16);
    auto patches = Recorder().Draw<primitive::Fill>(*graph.GetLegend());
    patches.erase(patches.begin()); // The background.
    ASSERT_EQ(patches.size(), std::size(expected));
    for (std::size_t i = 0; i < patches.size(); ++i) {
        VectorBrush const& brush = patches[i].brush;
        EXPECT_EQ(brush.hatchStyle, expected[i]);
        EXPECT_EQ(brush.foreground.colour, RGB(1, 2, 3));
        EXPECT_TRUE(!brush.hatchStyle || (brush.background.colour == 0xFFFFFF && brush.background.alpha == 255));
    }
    EXPECT_EQ(patches[1].region.Box(), CRect(CPoint(6, 4 + 18 + 2), CSize(12, 12)));
}

TEST(Legend, DrawsLinesAndSymbolsAsTheCurveHasThem)
{
    FramedGraph graph;
    graph.List(Striking());
    CLegend& legend = *graph.GetLegend();
    legend.Create({ 0, 0 });
    legend.SetFontHeight(16);
    for (bool const page : { false, true }) {
        Recorder recorder(page);
        legend.SetStyle(CLegend::lsLine);
        auto const strokes = recorder.Draw<primitive::Stroke>(legend);
        ASSERT_EQ(strokes.size(), 1u);
        EXPECT_EQ(strokes[0].points, (std::vector { CPoint(8, 4 + 8), CPoint(80 - 8, 4 + 8) }));
        EXPECT_EQ(strokes[0].pen.width, page ? 6.0 : 2.0) << "two at 96 to the inch";
        EXPECT_EQ(strokes[0].pen.dashes, (std::vector { 8.0, 2.0 }));
        EXPECT_TRUE(strokes[0].smooth);
    }
    FramedGraph wide;
    LegendEntry entry = Striking();
    entry.lineWidth = 17;
    wide.List(entry);
    wide.GetLegend()->Create({ 0, 0 });
    wide.GetLegend()->SetStyle(CLegend::lsLine);
    wide.GetLegend()->SetFontHeight(16);
    for (RecordedPrimitive const& p : Recorder().Draw(*wide.GetLegend())) {
        if (p.As<primitive::Stroke>()) {
            EXPECT_EQ(p.clip.Box(), CRect(0, 4, 80, 20)) << "cut";
        }
    }
    Recorder recorder;
    legend.SetStyle(CLegend::lsSymbol);
    auto const fills = recorder.Draw<primitive::Fill>(legend);
    ASSERT_EQ(fills.size(), 2u) << "the background and the symbol";
    EXPECT_EQ(fills[1].brush, VectorBrush::Solid(RGB(7, 8, 9)));
    EXPECT_EQ(recorder.Draw<primitive::Polyline>(legend)[0].line.colour, RGB(4, 5, 6));
}

TEST(Legend, TextFollowsTheGraphUpToFourMillimetresOfTheDevice)
{
    using Rule = AnnotationFrame::TextRule;
    Recorder screen;
    Recorder page(true);
    struct {
        Rule rule;
        CSize area;
        CDC* printer;
        double scale;
        Recorder& recorder;
        int legend;
        int step;
        int caption;
    } const cases[] = {
        { Rule::PlottingArea, { 300, 200 }, nullptr, 1, screen, 8, 9, 8 },
        { Rule::PlottingArea, { 900, 2000 }, nullptr, 1, screen, 15, 17, 15 },
        { Rule::PlottingArea, { 4000, 3000 }, nullptr, 1, page, 94, 103, 94 },
        { Rule::PlottingArea, { 5, 5 }, nullptr, 1, screen, 1, 1, 1 },
        { Rule::PlottingArea, { -300, 200 }, nullptr, 1, screen, 1, 1, 1 },
        { Rule::Picture, { 300, 315 }, nullptr, 1, screen, 10, 11, 10 },
        { Rule::Picture, { 900, 2000 }, nullptr, 1, screen, 15, 17, 15 },
        { Rule::Picture, { 900, 900 }, &page.Dc(), 4, screen, 30, 33, 23 },
        { Rule::Picture, { 4000, 3000 }, &page.Dc(), 4, screen, 9, 13, 9 },
    };
    for (auto const& c : cases) {
        FramedGraph graph;
        graph.List("curve");
        graph.List("another");
        graph.frame = AnnotationFrame { {}, CRect({}, c.area), c.rule, c.printer, c.scale };
        graph.GetLegend()->Create({ 0, 0 });
        auto const texts = c.recorder.Draw<primitive::Text>(*graph.GetLegend());
        EXPECT_EQ(texts[0].font.lfHeight, c.legend) << c.area.cx;
        EXPECT_NEAR(texts[1].at.y - texts[0].at.y, c.step, 1) << c.area.cx;
        auto const captionTexts = c.recorder.Draw<primitive::Text>(*graph.AddCaption({ 0, 0 }));
        EXPECT_EQ(captionTexts[0].font.lfHeight, c.caption) << c.area.cx;
    }
}

TEST(Legend, StandsWhateverADocumentHolds)
{
    constexpr int kMax = std::numeric_limits<int>::max();
    FramedGraph graph;
    graph.List("");
    graph.List("two\nlines");
    graph.List(CString(std::u16string(10000, u'W')));
    Recorder recorder;
    for (double const v : { 0.0, std::numeric_limits<double>::quiet_NaN(), -1e300, 1e300 }) {
        for (CRect const& frame : { CRect(), CRect(0, 0, 900, 900), CRect(kMax, kMax, -kMax, -kMax) }) {
            graph.SetFrame(frame);
            test::Bytes const bytes = test::Bytes()
                                          .Component(0, 1, 1, 7)
                                          .Int(1, 1, 1, 1)
                                          .Int(kMax, -kMax, kMax, kMax)
                                          .Int(0, 0xFFFFFF, 0, 1, 99)
                                          .Font("", -5, 1, v)
                                          .Double(v)
                                          .Point(v, -v)
                                          .Double(v);
            CLegend& legend = *graph.GetLegend();
            ASSERT_TRUE(test::Load(legend, bytes));
            legend.SetGraph(&graph);
            recorder.Draw(legend);
            EXPECT_GE(legend.GetRect().Width(), 0) << "no edge has wrapped round";
            legend.SetRect({ -kMax, kMax, 0, 0 });
            recorder.Draw(legend);
            EXPECT_GT(legend.GetRect().Width(), 0);
        }
    }
}

TEST(Legend, DrawsOnlyWhatCanBeSeen)
{
    FramedGraph graph;
    CLegend& legend = *graph.GetLegend();
    legend.Create({ 10, 20 });
    Recorder recorder;
    recorder.Draw(legend);
    EXPECT_EQ(legend.GetRect(), CRect(10, 20, 10, 20)) << "nothing to list";
    for (int i = 0; i < 10000; ++i)
        graph.List("curve");
    legend.SetFontHeight(16);
    auto const texts = recorder.Draw<primitive::Text>(legend);
    EXPECT_EQ(legend.GetRect().Height(), 9999 * 18 + 24);
    EXPECT_GE(texts.size(), 1000u / 18);
    EXPECT_LE(texts.size(), 1000u / 18 + 4);
    legend.SetRect({ 10, -90000, 0, 0 });
    EXPECT_NEAR(static_cast<double>(recorder.Draw<primitive::Text>(legend).size()), 1000 / 18 + 2, 2);
    legend.SetOn(0);
    EXPECT_TRUE(recorder.Draw(legend).empty());
}

} // namespace
} // namespace ombrel
