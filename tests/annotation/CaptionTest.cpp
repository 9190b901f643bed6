#include "tests/annotation/AnnotationFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

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
    std::u16string const pairs = u"a" + [] {
        std::u16string text;
        for (int i = 0; i < 200; ++i)
            text += u"\U0001F600";
        return text;
    }();
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

/// A host's caption that wraps its text at every blank.
class HostCaption : public CCaption {
public:
    using CCaption::CCaption;
    using CCaption::GetLongestLine;
    std::string steps;

protected:
    int MakeLines() override
    {
        steps += 'l';
        CString wrapped = GetText();
        wrapped.Replace(" ", "\n");
        CString const text = GetText();
        SetText(wrapped);
        int const count = CCaption::MakeLines();
        SetText(text);
        return count;
    }
    void SetInitialSize(CDC* dc) override
    {
        steps += 'i';
        CCaption::SetInitialSize(dc);
    }
    void UpdateRect2D() override
    {
        steps += 'r';
        CCaption::UpdateRect2D();
    }
    void UpdateNormalisedPos3D() override
    {
        steps += 'n';
        CCaption::UpdateNormalisedPos3D();
    }
};

TEST(Caption, StepsBelongToTheHostThatOverridesThem)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    HostCaption caption(&graph, "a longest b", CCaption::ctGeneral);
    caption.Create(CRealPoint(0.5, 0.5));
    Recorder recorder;
    EXPECT_EQ(recorder.Draw<primitive::Text>(caption).size(), 3u);
    EXPECT_EQ(caption.GetLongestLine(&recorder.Dc()), 1);
    EXPECT_EQ(caption.GetRect().TopLeft(), CPoint(450, 450));
    recorder.Draw(caption);
    EXPECT_EQ(caption.steps, "rilrl") << "the corner leads at first, then the fractions";
    caption.SetRect({ 10, 20, 0, 0 });
    graph.frame->textRule = AnnotationFrame::TextRule::Picture;
    recorder.Draw(caption);
    EXPECT_EQ(caption.steps, "rilrlnl");
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
}

TEST(Caption, StaysUntouchedWhileItIsOffOrEmpty)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    CCaption& caption = *graph.AddCaption({ 100, 50 });
    Recorder recorder;
    caption.SetOn(0);
    EXPECT_TRUE(recorder.Draw(caption).empty());
    caption.SetOn(1);
    caption.SetText("");
    EXPECT_TRUE(recorder.Draw(caption).empty());
    EXPECT_EQ(caption.GetRect(), CRect(100, 50, 100, 50));
    caption.SetText("\n\n");
    recorder.Draw(caption);
    EXPECT_EQ(caption.GetRect(), CRect(100, 50, 100, 50)) << "nothing but line feeds";
}

TEST(Caption, DrawsOnlyLinesThatCanBeSeen)
{
    FramedGraph graph;
    graph.SetFrame({ 0, 0, 900, 900 });
    CCaption& caption = *graph.AddCaption({ 0, 0 });
    Recorder recorder;
    std::u16string lines;
    for (int i = 0; i < 2000; ++i)
        lines += u"x\n";
    caption.SetText(CString(std::u16string_view(lines)));
    // 1000 pixels of lines of 15, and those that reach in from above and below.
    for (int const top : { -5000, -15000 }) {
        caption.SetRect({ 0, top, 0, 0 });
        EXPECT_NEAR(static_cast<double>(recorder.Draw<primitive::Text>(caption).size()), 1000 / 15 + 3, 1);
    }
}

TEST(Caption, TakesTheCornerOrTheFractionsThatWereSetLast)
{
    FramedGraph graph;
    graph.SetFrame({ 100, 100, 500, 300 });
    Recorder recorder;
    CCaption& caption = *graph.AddCaption({ 7, 8 });
    auto const corner = [&] {
        recorder.Draw(caption);
        return caption.GetRect().TopLeft();
    };
    caption.Create(CRealPoint(0.5, 0.5));
    EXPECT_EQ(corner(), CPoint(300, 200)) << "the centre";
    caption.Create(CPoint(30, 40));
    EXPECT_EQ(corner(), CPoint(30, 40));
    caption.Create(CRealPoint(0.25, 0.25));
    caption.SetRect({ 50, 60, 0, 0 });
    EXPECT_EQ(corner(), CPoint(50, 60));
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

TEST_P(AnnotationPlace, WaitsForAReferenceThatHasASize)
{
    m_box.Create(CPoint(150, 125));
    EXPECT_EQ(DrawIn({ 10, 10, 10, 90 }).TopLeft(), CPoint(150, 125));
    EXPECT_EQ(DrawIn({ 10, 10, 90, 10 }).TopLeft(), CPoint(150, 125));
    EXPECT_EQ(DrawIn({ 100, 100, 300, 200 }).TopLeft(), CPoint(150, 125));
    EXPECT_EQ(DrawIn({ 0, 0, 400, 400 }).TopLeft(), CPoint(100, 100));
}

} // namespace
} // namespace ombrel
