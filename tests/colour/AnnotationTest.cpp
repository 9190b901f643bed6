#include "ombrel/colour/AnnotatedGraph.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace ombrel {
namespace {

TEST(Annotation, CreateSwitchesOnAtAnEmptyRectangle)
{
    CLegend legend(nullptr);
    legend.Create(CPoint(12, 34));
    EXPECT_TRUE(legend.IsOn());
    EXPECT_TRUE(legend.IsCreated());
    EXPECT_EQ(legend.GetRect(), CRect(12, 34, 12, 34));
}

TEST(Annotation, DeletingALegendKeepsFontAndRectangle)
{
    CLegend legend(nullptr);
    legend.Create(CPoint(12, 34));
    CFontData const font("Serif", 700, 0, 2.0);
    legend.SetFont(font);
    legend.SetTextColour(1);
    legend.SetBkgndColour(2);
    legend.SetBorderColour(3);
    legend.SetBoundingRectOn(0);
    legend.SetStyle(CLegend::lsSymbol);
    legend.SetFontScaleFac(3.0);
    legend.ResetModifiedFlags();
    legend.Delete();
    EXPECT_FALSE(legend.IsOn());
    EXPECT_FALSE(legend.IsCreated());
    EXPECT_EQ(legend.GetTextColour(), 0u);
    EXPECT_EQ(legend.GetBkgndColour(), 0xFFFFFFu);
    EXPECT_EQ(legend.GetBorderColour(), 0u);
    EXPECT_EQ(legend.GetBoundingRectOn(), 1);
    EXPECT_EQ(legend.GetStyle(), CLegend::lsFill);
    EXPECT_EQ(legend.GetFontScaleFac(), 1.0);
    EXPECT_EQ(legend.GetFont(), font);
    EXPECT_EQ(legend.GetRect(), CRect(12, 34, 12, 34));
    EXPECT_TRUE(legend.Modified());
}

TEST(Annotation, DeletingAColourKeyKeepsItsColours)
{
    CColourKey key(nullptr);
    key.Create(CPoint(1, 2));
    key.SetTextColour(5);
    key.ResetModifiedFlags();
    key.Delete();
    EXPECT_FALSE(key.IsOn());
    EXPECT_FALSE(key.IsCreated());
    EXPECT_EQ(key.GetTextColour(), 5u);
    EXPECT_TRUE(key.Modified());
}

template <typename T> struct Setter {
    char const* name;
    std::function<void(T&)> call;
    bool raisesFlag;
};

template <typename T> void ExpectFlags(T& object, std::initializer_list<Setter<T>> setters)
{
    for (Setter<T> const& setter : setters) {
        object.ResetModifiedFlags();
        setter.call(object);
        EXPECT_EQ(object.Modified() != 0, setter.raisesFlag) << setter.name;
    }
}

template <typename T> void ExpectFlagsOfCommonSetters(T& object)
{
    ExpectFlags<T>(object,
        {
            { "font", [](T& o) { o.SetFont(CFontData()); }, true },
            { "font scale", [](T& o) { o.SetFontScaleFac(2.0); }, true },
            { "text colour", [](T& o) { o.SetTextColour(1); }, true },
            { "background colour", [](T& o) { o.SetBkgndColour(1); }, true },
            { "border colour", [](T& o) { o.SetBorderColour(1); }, true },
            { "bounding rectangle", [](T& o) { o.SetBoundingRectOn(0); }, true },
        });
}

TEST(Annotation, SettersRaiseTheModifiedFlagButForThoseThatEveryDrawReads)
{
    CLegend legend(nullptr);
    ExpectFlagsOfCommonSetters(legend);
    ExpectFlags<CLegend>(legend,
        {
            { "on", [](CLegend& l) { l.SetOn(1); }, false },
            { "rectangle", [](CLegend& l) { l.SetRect(CRect(1, 2, 3, 4)); }, false },
            { "font height", [](CLegend& l) { l.SetFontHeight(9); }, false },
            { "style", [](CLegend& l) { l.SetStyle(1); }, true },
        });
    CCaption caption(nullptr, "text", CCaption::ctNone);
    ExpectFlagsOfCommonSetters(caption);
    ExpectFlags<CCaption>(caption,
        {
            { "on", [](CCaption& c) { c.SetOn(1); }, true },
            { "rectangle", [](CCaption& c) { c.SetRect(CRect(1, 2, 3, 4)); }, true },
            { "text", [](CCaption& c) { c.SetText("other"); }, true },
            { "transparency", [](CCaption& c) { c.SetTransparentBkgnd(1); }, true },
            { "create", [](CCaption& c) { c.Create(CPoint(1, 2)); }, true },
        });
    CColourKey key(nullptr);
    ExpectFlagsOfCommonSetters(key);
    ExpectFlags<CColourKey>(key,
        {
            { "on", [](CColourKey& k) { k.SetOn(1); }, true },
            { "ticks", [](CColourKey& k) { k.SetNumTicks(3); }, true },
            { "rectangle", [](CColourKey& k) { k.SetRect(CRect(1, 2, 3, 4)); }, false },
            { "label mode", [](CColourKey& k) { k.SetLabelMode(1); }, false },
            { "labels", [](CColourKey& k) { k.SetMinAndDel(1, 2); }, false },
            { "clamp mode", [](CColourKey& k) { k.SetClampMode(1); }, false },
            { "clamp range", [](CColourKey& k) { k.SetClampRange(1, 2); }, false },
        });
}

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
}

} // namespace
} // namespace ombrel
