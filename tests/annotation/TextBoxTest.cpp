#include "ombrel/drawing/FillPattern.h"
#include "ombrel/foundation/Utils.h"
#include "tests/annotation/AnnotationFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel {
namespace {

using test::FramedGraph;
using test::Recorder;

TEST(CaptionLines, AreCutAtLineFeedsWithoutEmptyOnesAtTheEnd)
{
    struct {
        char const* text;
        CStringArray lines;
    } const cases[] = {
        { "", {} },
        { "one", { "one" } },
        { "Hello\r\nWorld\n\n", { "Hello", "World" } },
        { "\n\nlow", { "", "", "low" } },
        { "a\n\nb", { "a", "", "b" } },
        { "\r\n\n\r", {} },
        { "a\rb", { "ab" } },
    };
    for (auto const& c : cases)
        EXPECT_EQ(SplitCaptionLines(c.text), c.lines) << c.text;
}

TEST(CaptionLines, LoseNothingOfALineThatIsTooLong)
{
    std::u16string const words = std::u16string(250, u'w') + u" next " + std::u16string(400, u'x');
    std::u16string pairs = u"a";
    for (int i = 0; i < 200; ++i)
        pairs += u"\U0001F600";
    for (std::u16string const& text : { words, pairs, std::u16string(255, u'y'), std::u16string(511, u'z') }) {
        std::u16string joined;
        for (CString const& line : SplitCaptionLines(CString(std::u16string_view(text)))) {
            EXPECT_LE(line.GetLength(), 255);
            EXPECT_FALSE(line[0] >= 0xDC00 && line[0] <= 0xDFFF) << "a line begins inside a pair";
            joined += line.View();
        }
        EXPECT_EQ(joined, text);
    }
    EXPECT_EQ(SplitCaptionLines(CString(std::u16string_view(words)))[0].GetLength(), 251) << "cut after the blank";
    EXPECT_EQ(SplitCaptionLines(CString(std::u16string_view(std::u16string(255, u'y')))).GetSize(), 1);
}

TEST(Caption, FrameItsLinesWithASixthOfTheirHeightAround)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    CCaption& caption = *graph.AddCaption({ 100, 50 });
    caption.SetText("short\r\n\nthe longest of all\n\n");
    Recorder recorder;
    auto const texts = recorder.Draw<primitive::Text>(caption);
    ASSERT_EQ(texts.size(), 2u) << "the empty line draws nothing";
    // Cells of 15 pixels, three lines, a margin of 45 / 6.
    EXPECT_EQ(texts[0].at, CPoint(107, 57));
    EXPECT_EQ(texts[1].at, CPoint(107, 57 + 2 * 15));
    EXPECT_EQ(caption.GetRect().Size(), caption.Measure(&recorder.Dc()));
    EXPECT_EQ(caption.GetRect().Height(), 45 + 2 * 7);
    EXPECT_EQ(recorder.Draw<primitive::Fill>(caption)[0].region.Box(), caption.GetRect());
    EXPECT_FALSE(recorder.Draw<primitive::Polyline>(caption).empty());
    caption.SetTransparentBkgnd(1);
    caption.SetBoundingRectOn(0);
    EXPECT_EQ(recorder.Draw(caption).size(), 2u) << "just the texts";
    CRect const rect = caption.GetRect();
    for (char const* const none : { "", "\n\n" }) {
        caption.SetText(none);
        EXPECT_TRUE(recorder.Draw(caption).empty());
        EXPECT_EQ(caption.GetRect().TopLeft(), rect.TopLeft());
    }
    caption.SetText("off");
    caption.SetOn(0);
    EXPECT_TRUE(recorder.Draw(caption).empty());
}

/// The legend or a caption: both keep their place in the same way.
class AnnotationPlace : public testing::TestWithParam<bool> {
protected:
    AnnotationPlace()
        : m_box(GetParam() ? static_cast<CAnnotation&>(*m_graph.GetLegend()) : *m_graph.AddCaption({ 0, 0 }))
    {
        m_graph.List("curve");
    }
    CRect DrawIn(CRect const& frame)
    {
        m_graph.SetFrame(frame);
        m_recorder.Draw(m_box);
        return m_box.GetRect();
    }

    FramedGraph m_graph;
    Recorder m_recorder;
    CAnnotation& m_box;
};

INSTANTIATE_TEST_SUITE_P(OfBoth, AnnotationPlace, testing::Bool());

TEST_P(AnnotationPlace, FollowsTheGraphUntilItIsMovedOrTheHintKeepsIt)
{
    CRect const small(100, 100, 300, 200);
    CRect const large(0, 0, 400, 400);
    m_box.Create(CPoint(150, 125));
    CRect const drawn = DrawIn(small);
    EXPECT_EQ(drawn.TopLeft(), CPoint(150, 125));
    CRect const grown = DrawIn(large);
    EXPECT_EQ(grown.TopLeft(), CPoint(100, 100)) << "a quarter of either side";
    EXPECT_GT(grown.Height(), drawn.Height()) << "the text grows too";
    EXPECT_EQ(DrawIn(small), drawn);

    m_box.SetRect({ 200, 150, 999, 999 });
    EXPECT_EQ(DrawIn(small), CRect(CPoint(200, 150), drawn.Size())) << "the size is the content's";
    EXPECT_EQ(DrawIn(large).TopLeft(), CPoint(200, 200));

    m_graph.SetHint(ghKeepRects);
    CRect const kept = DrawIn(small);
    EXPECT_EQ(kept.TopLeft(), CPoint(200, 200));
    EXPECT_EQ(kept.Size(), grown.Size()) << "so is the text";
    m_graph.SetHint(ghResized);
    EXPECT_EQ(DrawIn(large).TopLeft(), CPoint(200, 400)) << "the fractions have followed the kept rectangle";

    DrawIn(small);
    m_box.Create(CPoint(150, 125));
    EXPECT_EQ(DrawIn(large), CRect(CPoint(150, 125), grown.Size())) << "text begins anew, too";
    // A document that was kept at its place says nothing about the height of text.
    CLegend loadedLegend;
    CCaption loadedCaption;
    CAnnotation& loaded = GetParam() ? static_cast<CAnnotation&>(loadedLegend) : loadedCaption;
    ASSERT_TRUE(test::Load(loaded, test::Stored(m_box)));
    loaded.SetGraph(&m_graph);
    m_graph.SetHint(ghKeepRects);
    m_recorder.Draw(loaded);
    EXPECT_EQ(loaded.GetRect(), m_box.GetRect());
}

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

TEST(Legend, ShowsCurvesAsTheyAreDrawnAndStacksFromTheTop)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    graph.List("line");
    LegendEntry entry;
    entry.title = "marks";
    entry.hasLine = false;
    graph.List(entry);
    entry.title = "bars";
    entry.isFill = true;
    graph.List(entry);
    graph.GetPlotArray()->GetAt(0)->GetComponent(2)->SetTitle("odd");
    HostLegend legend(&graph);
    legend.Create({ 100, 50 });
    Recorder recorder;
    legend.SetStyle(CLegend::lsLineAndSymbol);
    auto patches = recorder.Draw<primitive::Fill>(legend);
    ASSERT_EQ(legend.lines.size(), 1u);
    EXPECT_EQ(std::get<2>(legend.lines[0]), 0);
    EXPECT_EQ(legend.symbols,
        (std::vector<std::pair<CRect, int>> { { { 143, 58, 157, 72 }, 0 }, { { 143, 80, 157, 94 }, 1 } }));
    ASSERT_EQ(patches.size(), 2u) << "the background and the bars";
    legend.lines.clear();
    legend.symbols.clear();
    legend.SetStyle(CLegend::lsStack);
    patches = recorder.Draw<primitive::Fill>(legend);
    ASSERT_EQ(patches.size(), 2u);
    EXPECT_EQ(patches[1].brush.hatchStyle, 5);
    EXPECT_LT(patches[1].region.Box().top, 70) << "the last curve comes first";
    ASSERT_EQ(legend.lines.size(), 1u);
    EXPECT_EQ(std::get<2>(legend.lines[0]), 2);
}

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

TEST(LegendAndCaption, DrawOnlyWhatCanBeSeen)
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

    graph.SetFrame({ 0, 0, 900, 900 });
    CCaption& caption = *graph.AddCaption({ 0, -5000 });
    std::u16string lines;
    for (int i = 0; i < 2000; ++i)
        lines += u"x\n";
    caption.SetText(CString(std::u16string_view(lines)));
    // 1000 pixels of lines of 15, and those that reach in from above and below.
    EXPECT_NEAR(static_cast<double>(recorder.Draw<primitive::Text>(caption).size()), 1000 / 15 + 3, 1);
}

} // namespace
} // namespace ombrel
