#include "ombrel/platform/registry/RegistryDocument.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

/// The value as UTF-8, or "(none)".
std::string Found(RegistryDocument const& document, char const* path, char const* name)
{
    std::optional<CString> const value = document.Find(path, name);
    return value ? value->ToUtf8() : "(none)";
}

TEST(RegistryDocument, FindsValuesAsAPersonWouldWriteThem)
{
    auto const document = ParseRegistry("\xEF\xBB\xBF# my settings\n"
                                        "[Software\\Ombrel]\r\n"
                                        "  Plain=1  \r\n"
                                        "Tabs\t=\t2\t\n"
                                        "\tAxes Colour = 12 = 0xC\n"
                                        "; another comment\n"
                                        "@ = the default value\n"
                                        "Empty =\n"
                                        "Twice = first\n"
                                        "\n"
                                        "[software\\OMBREL\\]\n"
                                        "twice = second\n"
                                        "[\\Software\\\\Ombrel\\Gr\xC3\xA4"
                                        "fe]\n"
                                        "N\xC3\x84ME = caf\xC3\xA9\\tbar");
    using Case = std::tuple<char const*, char const*, char const*>;
    for (auto const& [path, name, value] :
        { Case { "Software\\Ombrel", "Plain", "1" }, { "SOFTWARE\\ombrel\\", "PLAIN", "1" },
            { "Software\\Ombrel", "Tabs", "2" }, { "Software\\Ombrel", "Axes Colour", "12 = 0xC" },
            { "Software\\Ombrel", "", "the default value" }, { "Software\\Ombrel", "@", "(none)" },
            { "Software\\Ombrel", "Empty", "" }, { "Software\\Ombrel", "Twice", "second" },
            { "Software\\Ombrel\\GR\xC3\x84"
              "FE",
                "n\xC3\xA4me", "caf\xC3\xA9\tbar" },
            { "Software", "Plain", "(none)" }, { "", "Plain", "(none)" } })
        EXPECT_EQ(Found(document, path, name), value) << path << " / " << name;
    EXPECT_EQ(document.GetDamagedLines(), 0);
}

TEST(RegistryDocument, SkipsDamagedLinesAndKeepsThemInPlace)
{
    std::string const text = "orphan = value before any key\n"
                             "[Good]\n"
                             "no equals sign\n"
                             "= no name\n"
                             "bad = \\q escape\n"
                             "bad = cut \\u12\n"
                             "bad = \\uXYZW\n"
                             "bad = ends \\\n"
                             "bad = not \xFF UTF-8\n"
                             "bad = control \x01\n"
                             "ok = 1\n"
                             "[Broken\n"
                             "ok = of a key that nobody knows\n"
                             "[Bro\tken]\n"
                             "[Last]\n"
                             "ok = 3\n";
    auto document = ParseRegistry(text);
    EXPECT_EQ(document.GetDamagedLines(), 12);
    EXPECT_EQ(Found(document, "Good", "ok"), "1");
    EXPECT_EQ(Found(document, "Good", "bad"), "(none)");
    EXPECT_EQ(Found(document, "Broken", "ok"), "(none)");
    EXPECT_EQ(document.ToText(), text);

    ASSERT_TRUE(document.Set("good", "OK", "2"));
    ASSERT_TRUE(document.Set("Good", "a#;b", ""));
    ASSERT_TRUE(document.Set("Other", "", "y"));
    std::string expected = text;
    expected.replace(expected.find("ok = 1\n"), 7, "OK = 2\na#;b =\n");
    EXPECT_EQ(document.ToText(), expected + "\n[Other]\n@ = y\n");
    EXPECT_EQ(Found(document, "Good", "ok"), "2");
    EXPECT_EQ(Found(document, "Last", "ok"), "3");
}

TEST(RegistryDocument, AnyTextSurvivesAsNameAndAsValue)
{
    CString const texts[] = { "plain", " leading", "trailing ", "  ", " ", "\ttabs\t", "line\r\nbreak", "a=b=c", "#x",
        ";x", "[x]", "@", "@x", "\\", "\\n", "C:\\data\\", "100 %", "\"quoted\"", CString(u'\0'),
        CString(std::u16string_view(u"a\0b", 3)), CString(u"\xD800"), CString(u"\xDC00x\xD83D"), CString(u"\U0001F600"),
        CString(u"\uFEFFmark"), CString(u"\uFFFD"), CString(u'\x7F'), CString(u'x', 5000) };
    RegistryDocument document;
    for (CString const& text : texts) {
        ASSERT_TRUE(document.Set("Names", text, "n"));
        ASSERT_TRUE(document.Set("Values", text, text));
    }
    auto const copy = ParseRegistry(document.ToText());
    EXPECT_EQ(copy.GetDamagedLines(), 0) << document.ToText();
    for (CString const& text : texts) {
        EXPECT_EQ(copy.Find("Names", text), CString("n")) << text.ToUtf8();
        EXPECT_EQ(copy.Find("Values", text), text) << text.ToUtf8();
    }
}

TEST(RegistryDocument, RefusesKeysThatNoLineCanHold)
{
    RegistryDocument document;
    for (CString const& path : { CString("a\nb"), CString(u"a\xD800"), CString(u'\0') })
        EXPECT_FALSE(document.Set(path, "name", "value"));
    EXPECT_EQ(document.ToText(), "");
    for (char const* const path : { "", " blanks ", "a]b", "[a]", "a=b", "#a", "\xEF\xBF\xBD" }) {
        EXPECT_TRUE(document.Set(path, "name", path));
        EXPECT_EQ(ParseRegistry(document.ToText()).Find(path, "name"), CString(path)) << path;
    }
}

} // namespace
} // namespace ombrel
