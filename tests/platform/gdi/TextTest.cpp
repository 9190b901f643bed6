#include "ombrel/platform/gdi/TextMetrics.h"
#include "ombrel/platform/gdi/text/TextEngine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ombrel {
namespace {

using text::RenderText;
using text::TextMask;

LOGFONT MakeFont(int height, int weight = 400, bool italic = false, char const* face = "Arial")
{
    LOGFONT font;
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfItalic = italic ? 1 : 0;
    font.lfFaceName = face;
    return font;
}

std::uint8_t CoverageAt(TextMask const& mask, CPoint p)
{
    int const x = p.x - mask.offset.x;
    int const y = p.y - mask.offset.y;
    if (x < 0 || y < 0 || x >= mask.width || y >= mask.height)
        return 0;
    return mask.coverage[static_cast<std::size_t>(y * mask.width + x)];
}

long long Ink(TextMask const& mask)
{
    return std::count_if(mask.coverage.begin(), mask.coverage.end(), [](std::uint8_t c) { return c > 0; });
}

TEST(Text, MetricsFollowFromTheCellHeight)
{
    // Height, ascent, descent, internal and external leading, each rounded for itself: the sum may miss by one.
    using Case = std::pair<int, std::array<LONG, 5>>;
    for (auto const& [height, expected] : { Case { 8, { 7, 6, 1, 1, 0 } }, { 13, { 14, 11, 3, 1, 0 } },
             { 16, { 16, 13, 3, 2, 0 } }, { 24, { 23, 19, 4, 2, 1 } }, { 29, { 30, 24, 6, 3, 1 } } }) {
        TEXTMETRIC const metric = MeasureFont(MakeFont(height));
        EXPECT_EQ((std::array { metric.tmHeight, metric.tmAscent, metric.tmDescent, metric.tmInternalLeading,
                      metric.tmExternalLeading }),
            expected);
    }
}

TEST(Text, ExtentIsTheSumOfRoundedAdvances)
{
    using Case = std::tuple<int, char const*, CSize>;
    for (auto const& [height, text, size] :
        { Case { 8, "AVAWATo", { 35, 7 } }, { 14, "Temperature (°C)", { 95, 14 } }, { 15, "Hello World", { 66, 15 } },
            { 23, "fi fl ff", { 46, 23 } }, { 24, "-1.5e+06", { 85, 23 } }, { 40, "Hg12", { 86, 41 } } })
        EXPECT_EQ(MeasureText(MakeFont(height), text), size) << text << " at " << height;
}

TEST(Text, ShapedAndPlainTextAreTheSame)
{
    // A zero-width joiner at the end sends the whole text through shaping.
    for (char const* text : { "AVAWATo", "Temperature (°C)", "fi fl ff", "-1.5e+06", "ÄÖÜß µm", "Ωαβ" })
        for (int const height : { 9, 13, 15, 24 })
            for (LOGFONT const& font :
                { MakeFont(height), MakeFont(height, 700), MakeFont(height, 400, true, "Courier New") }) {
                CString const shaped = CString(text) + u"\u200D";
                EXPECT_EQ(MeasureText(font, text), MeasureText(font, shaped)) << text << " at " << height;
                EXPECT_EQ(RenderText(font, text)->coverage, RenderText(font, shaped)->coverage) << text;
            }
}

TEST(Text, CombiningMarksTakeNoRoom)
{
    LOGFONT const font = MakeFont(24);
    EXPECT_EQ(MeasureText(font, u"xe\u0301x"), MeasureText(font, "xex"));
    EXPECT_EQ(MeasureText(font, u"\u05D0\u05D1").cx, MeasureText(font, u"\u05D0").cx + MeasureText(font, u"\u05D1").cx);
    // The acute, for which no letter stands ready, sits above the letter.
    auto const plain = RenderText(font, "X");
    auto const marked = RenderText(font, u"X\u0301");
    EXPECT_EQ(marked->width, plain->width);
    EXPECT_LE(marked->offset.y, plain->offset.y - 3);
    EXPECT_EQ(marked->offset.y + marked->height, plain->offset.y + plain->height);
    // A second acute stands on the first; the point inside a Hebrew letter is moved back into it.
    EXPECT_LE(RenderText(MakeFont(40), u"x\u0301\u0301")->offset.y, RenderText(MakeFont(40), u"x\u0301")->offset.y - 5);
    EXPECT_LT(text::Shape(*text::FindFont(MakeFont(40)), u"\u05D1\u05BC\u05B8").runs[0].glyphs[1].x, -2);
}

TEST(Text, UnusualTextsAndSizesAreLimited)
{
    LOGFONT const font = MakeFont(16);
    EXPECT_EQ(MeasureText(font, ""), CSize());
    EXPECT_EQ(MeasureText(MakeFont(0), "Hello World"), MeasureText(font, "Hello World"));
    EXPECT_EQ(MeasureText(font, u"a\tb\r\nc\u2028d"), MeasureText(font, "a b  c d"));
    EXPECT_EQ(MeasureText(font, u"a\nb\u200D"), MeasureText(font, "a b"));
    // A negative height is the em size.
    EXPECT_EQ(MeasureFont(MakeFont(-13)).tmHeight, 15);
    EXPECT_EQ(MeasureText(MakeFont(INT32_MIN), "x"), MeasureText(MakeFont(-2000), "x"));
    EXPECT_GT(MeasureText(font, CString(u'W', 1000000)).cx, 1000000);
    EXPECT_EQ(RenderText(font, "")->coverage.size(), 0U);
    auto const cut = RenderText(MakeFont(2000), CString(u'W', 1000));
    EXPECT_LE(cut->width, 0x10000);
    EXPECT_EQ(cut->coverage.size(), static_cast<std::size_t>(cut->width) * static_cast<std::size_t>(cut->height));
}

TEST(Text, LargeTextIsDrawnAsFarAsItIsSeen)
{
    LOGFONT font = MakeFont(1800, 400, true);
    font.lfUnderline = 1;
    for (LONG const escapement : { 0, 900 }) {
        font.lfEscapement = escapement;
        auto const whole = RenderText(font, "Wg8");
        int inked = 0;
        for (CPoint const corner : { CPoint(900, 700), CPoint(2300, 1500), CPoint(500, -1900), CPoint(1500, -2900) }) {
            CRect const visible(corner, CSize(170, 90));
            auto const part = RenderText(font, "Wg8", visible);
            EXPECT_LE(part->width, 170);
            EXPECT_LE(part->height, 90);
            // Where outlines are cut, their coverage may round a little differently.
            for (int i = 0; i < 170 * 90; ++i) {
                CPoint const p = corner + CPoint(i % 170, i / 170);
                ASSERT_NEAR(CoverageAt(*part, p), CoverageAt(*whole, p), 8) << p.x << ',' << p.y;
            }
            inked += Ink(*part) > 0;
        }
        EXPECT_GT(inked, 1);
    }
}

TEST(Text, VerticalTextIsTheHorizontalOneTurnedAboutItsCorner)
{
    LOGFONT font = MakeFont(20, 700);
    auto const flat = RenderText(font, "Hg12");
    font.lfEscapement = 900;
    auto const turned = RenderText(font, "Hg12");
    EXPECT_EQ(MeasureText(font, "Hg12"), CSize(44, 20));
    ASSERT_GT(Ink(*flat), 50);
    // The foot of the letters is the row above the baseline; only the g goes below it.
    EXPECT_EQ(RenderText(MakeFont(20), "H")->offset.y + RenderText(MakeFont(20), "H")->height, 16);
    EXPECT_EQ(Ink(*turned), Ink(*flat));
    for (int v = -2; v < 22; ++v)
        for (int u = -2; u < 46; ++u)
            ASSERT_EQ(CoverageAt(*turned, { v, -1 - u }), CoverageAt(*flat, { u, v })) << u << "," << v;
}

TEST(Text, MissingGlyphsLeaveTheirPlaceEmpty)
{
    LOGFONT const font = MakeFont(16);
    // A code point that no character has been given.
    CString const unknown = u"\u0378";
    EXPECT_TRUE(HasAllGlyphs(font, "Temperature (°C)"));
    EXPECT_TRUE(HasAllGlyphs(font, u"e\u0301"));
    EXPECT_FALSE(HasAllGlyphs(font, CString("a") + unknown));
    EXPECT_GT(MeasureText(font, unknown).cx, 0);
    EXPECT_EQ(Ink(*RenderText(font, unknown)), 0);
    TakeCharactersWithoutGlyph();
    RenderText(font, u"a\u0379b\u0378c\u0379");
    MeasureText(font, u"\u0380\U0001F0FF\u0001");
    EXPECT_TRUE(TakeCharactersWithoutGlyph() == U"\u0378\u0379\u0380\U0001F0FF");
    EXPECT_TRUE(TakeCharactersWithoutGlyph().empty());
    // Half a surrogate pair is no character at all.
    EXPECT_GE(MeasureText(font, CString(char16_t { 0xD800 })).cx, 0);
}

TEST(Text, LinesRunOverTheWholeWidthUnderAndThroughTheLetters)
{
    struct {
        int height, underlined, struckOut, top, bottom, rows;
    } const cases[] = {
        { 16, 0, 0, 0, 0, 0 },
        // In a small cell the underline is pushed up to its foot.
        { 2, 1, 0, 1, 2, 1 },
        { 40, 1, 0, 34, 37, 3 },
        { 8, 0, 1, 4, 5, 1 },
        { 40, 1, 1, 23, 37, 6 },
    };
    for (auto const& c : cases) {
        LOGFONT font = MakeFont(c.height);
        font.lfUnderline = static_cast<decltype(font.lfUnderline)>(c.underlined);
        font.lfStrikeOut = static_cast<decltype(font.lfStrikeOut)>(c.struckOut);
        auto const mask = RenderText(font, "   ");
        int const width = c.rows > 0 ? MeasureText(font, "   ").cx : 0;
        SCOPED_TRACE(c.height);
        EXPECT_EQ(mask->offset, CPoint(0, c.top));
        EXPECT_EQ(CSize(mask->width, mask->height), CSize(width, c.bottom - c.top));
        EXPECT_EQ(Ink(*mask), c.rows * width);
    }
}

TEST(Text, GlyphsStandWhereTheirCharactersDo)
{
    struct {
        CString text;
        std::vector<std::size_t> clusters;
        bool textFromRight, runFromRight;
    } const cases[] = {
        { u"aä€b", { 0, 1, 3, 6 }, false, false },
        { u"a\tb", { 0, 1, 2 }, false, false },
        // No ligature, and a joiner that is a blank of no width.
        { u"fi\u200D", { 0, 1, 2 }, false, false },
        // Visual order: the last letter comes first.
        { u"\u05D0\u05D1\u05D2", { 4, 2, 0 }, true, true },
        { u"\u05D0\u05D1 1", { 5, 4, 2, 0 }, true, false },
    };
    auto const font = text::FindFont(MakeFont(20));
    for (auto const& c : cases) {
        auto const shaped = text::Shape(*font, c.text.View());
        std::vector<std::size_t> clusters;
        int x = 0;
        for (auto const& run : shaped.runs)
            for (auto const& glyph : run.glyphs) {
                clusters.push_back(glyph.cluster);
                EXPECT_GE(glyph.x, x);
                x = glyph.x + (glyph.missing ? 0 : run.font->Advance(glyph.index));
            }
        EXPECT_EQ(clusters, c.clusters) << c.text.ToUtf8();
        EXPECT_EQ(x, shaped.width) << c.text.ToUtf8();
        EXPECT_EQ(shaped.rightToLeft, c.textFromRight) << c.text.ToUtf8();
        EXPECT_EQ(shaped.runs.at(0).rightToLeft, c.runFromRight) << c.text.ToUtf8();
        EXPECT_EQ(shaped.runs.back().rightToLeft, c.textFromRight) << c.text.ToUtf8();
    }
}

TEST(Text, FontsAreLookedForByFamilyAndStyle)
{
    using Case = std::tuple<char const*, bool, bool, char const*>;
    Case const cases[] = {
        { "ARIAL", false, false, "/LiberationSans-Regular.ttf" },
        { "Helvetica", true, false, "/LiberationSans-Bold.ttf" },
        { "", false, true, "/LiberationSans-Italic.ttf" },
        { "Courier", true, true, "/LiberationMono-BoldItalic.ttf" },
        { "Times", false, false, "/LiberationSerif-Regular.ttf" },
        // Where nothing has the name, the nearest style of the second choice.
        { "No Such Face", true, false, "/LiberationSans-Bold.ttf" },
        { "No Such Face", false, true, "/LiberationSans-Italic.ttf" },
        { "Liberation Nothing", false, false, "/LiberationSans-Regular.ttf" },
    };
    for (auto const& [face, bold, italic, file] : cases) {
        std::string const path = text::FindFontFile(text::FamilyFor(face), bold, italic).path;
        EXPECT_TRUE(path.ends_with(file)) << face << ": " << path;
    }
    // The same height in other styles is another font; bold begins above 550.
    EXPECT_EQ(MeasureText(MakeFont(20, 550), "Hg12").cx, 43);
    EXPECT_EQ(MeasureText(MakeFont(20, 551), "Hg12").cx, 44);
    EXPECT_NE(RenderText(MakeFont(20, 400), "Hg12")->coverage, RenderText(MakeFont(20, 400, true), "Hg12")->coverage);
}

TEST(Text, PatternsOfFontsTellFileAndStyle)
{
    FcPattern* const pattern = FcPatternCreate();
    EXPECT_EQ(text::FileOfPattern(pattern), text::FontFile());
    FcPatternAddString(pattern, FC_FILE, reinterpret_cast<FcChar8 const*>("/a/font.ttc"));
    EXPECT_EQ(text::FileOfPattern(pattern), (text::FontFile { "/a/font.ttc", 0, false, false }));
    FcMatrix const slope { 1.0, 0.2, 0.0, 1.0 };
    FcPatternAddInteger(pattern, FC_INDEX, 3);
    FcPatternAddBool(pattern, FC_EMBOLDEN, FcTrue);
    FcPatternAddMatrix(pattern, FC_MATRIX, &slope);
    EXPECT_EQ(text::FileOfPattern(pattern), (text::FontFile { "/a/font.ttc", 3, true, true }));
    FcPatternDestroy(pattern);
}

TEST(Text, StylesThatNoFileHasAreMadeOfTheUprightLetters)
{
    text::OpenFaces faces;
    std::string const path = text::FindFontFile("Liberation Sans", false, false).path;
    text::ScaledFont plain(faces.Open({ path, 0, false, false }), 32);
    text::ScaledFont bold(faces.Open({ path, 0, true, false }), 32);
    text::ScaledFont slanted(faces.Open({ path, 0, false, true }), 32);
    auto const glyph = plain.Face().GlyphOf(U'l');
    auto const& upright = plain.Mask(glyph);
    // Wider by 1/24 em; leaning to the right by about a fifth of the height above the baseline.
    EXPECT_NEAR(bold.Mask(glyph).width, upright.width + 1, 1);
    EXPECT_GT(bold.Mask(glyph).width, upright.width);
    EXPECT_EQ(bold.Mask(glyph).height, upright.height);
    EXPECT_NEAR(slanted.Mask(glyph).width, upright.width + 0.2126 * upright.height, 2);
    EXPECT_EQ(slanted.Mask(glyph).left, upright.left);
    EXPECT_EQ(&plain.Face(), faces.Open({ path, 0, false, false }).get());
    EXPECT_FALSE(faces.Open({ "/no/such/file", 0, false, false })->IsUsable());
}

} // namespace
} // namespace ombrel
