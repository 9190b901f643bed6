#include "ombrel/platform/framework/String.h"
#include "tests/platform/framework/PrintString.h"
#include "tests/platform/framework/Refused.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>

namespace ombrel {
namespace {

template <typename... Args> CString Formatted(char const* format, Args const&... args)
{
    CString text;
    text.Format(format, args...);
    return text;
}

} // namespace

TEST(String, InvalidUtf8BecomesReplacementCharacters)
{
    using Case = std::tuple<std::string_view, std::u16string_view>;
    for (auto const& [utf8, text] :
        { Case { "", u"" }, { "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80", u"a\u00FC\u20AC\U0001F600" },
            { "\x80x", u"\uFFFDx" }, { "\xC3", u"\uFFFD" }, { "\xC3x", u"\uFFFDx" }, { "\xE2\x82x", u"\uFFFDx" },
            { "\xF0\x9F\x98", u"\uFFFD" }, { "\xC0\x80", u"\uFFFD\uFFFD" }, { "\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD" },
            { "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD" }, { "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD" },
            { "\xFF\xFE", u"\uFFFD\uFFFD" } })
        EXPECT_EQ(CString(utf8), CString(text)) << testing::PrintToString(utf8);
    EXPECT_EQ(CString(std::string_view("a\0b", 3)).GetLength(), 3);
    EXPECT_TRUE(CString(static_cast<char const*>(nullptr)).IsEmpty());
}

TEST(String, CodePointsSurviveUtf8AndBack)
{
    // All lengths, surrogates and planes begin and end at multiples of 128.
    for (int edge = 0; edge <= 0x110000; edge += 128) {
        for (int c = std::max(1, edge - 3); c <= std::min(edge + 2, 0x110000); ++c) {
            wchar_t const wide[] = { static_cast<wchar_t>(c), 0 };
            CString const text(wide);
            bool const exists = c < 0x110000 && (c < 0xD800 || c > 0xDFFF);
            ASSERT_EQ(text == CString(u"\uFFFD"), !exists || c == 0xFFFD) << c;
            ASSERT_EQ(CString(text.ToUtf8()), text) << c;
        }
    }
    EXPECT_EQ(CString(u"a\xD800z\xDC00").ToUtf8(), "a\uFFFDz\uFFFD");
    EXPECT_EQ(CString(u"\xDE00\xD83D").ToUtf8(), "\uFFFD\uFFFD");
}

TEST(String, ComparisonIgnoresCaseOfAllScripts)
{
    for (auto const& [a, b] : { std::pair("ABC", "abc"), { "Ärger", "äRGER" }, { "ΣΊΣΥΦΟΣ", "σίσυφος" },
             { "ЖУК", "жук" }, { "\U00010400", "\U00010428" }, { "K", "\u212A" }, { "ſ", "S" } }) {
        EXPECT_EQ(CString(a).CompareNoCase(b), 0) << a;
        EXPECT_NE(CString(a).Compare(b), 0) << a;
    }
    for (auto const& [a, b] : { std::pair("a", "B"), { "A", "b" }, { "Z", "É" }, { "ab", "ABC" }, { "", "x" } }) {
        EXPECT_LT(CString(a).CompareNoCase(b), 0) << a;
        EXPECT_GT(CString(b).CompareNoCase(a), 0) << a;
    }
    EXPECT_EQ(CString("ÀÉ straße \U00010400").MakeLower(), "àé straße \U00010428");
    EXPECT_EQ(CString("àé straße \U00010428").MakeUpper(), "ÀÉ STRAßE \U00010400");
}

TEST(String, PartsOutsideTheTextAreLimitedToIt)
{
    CString const text = "abcdef";
    EXPECT_EQ(text.Mid(-2), "abcdef");
    EXPECT_EQ(text.Mid(9), "");
    EXPECT_EQ(text.Mid(4, 10), "ef");
    EXPECT_EQ(text.Mid(2, -1), "");
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Left(99), "abcdef");
    EXPECT_EQ(text.Right(2), "ef");
    EXPECT_EQ(text.Right(99), "abcdef");
    EXPECT_EQ(text.Find("cd", -5), 2);
    EXPECT_EQ(text.Find("cd", 3), -1);
    EXPECT_EQ(text.Find(u'a', 99), -1);
    EXPECT_EQ(text.ReverseFind(u'z'), -1);
    EXPECT_EQ(text.FindOneOf("xfc"), 2);
}

TEST(String, CopiesShareTheirTextUntilOneChanges)
{
    CString const first = "abc";
    CString second = first;
    EXPECT_EQ(second.GetString(), first.GetString());
    second.SetAt(2, u'x');
    EXPECT_EQ(first, "abc");
    EXPECT_EQ(second, "abx");
    CString third = second;
    third += third;
    third += u'!';
    third += third;
    EXPECT_EQ(second, "abx");
    EXPECT_EQ(third, "abxabx!abxabx!");
    char16_t const* const kept = third.GetString();
    EXPECT_EQ(CString(std::move(third)).GetString(), kept);
    EXPECT_EQ((CString() + CString()).GetLength(), 0);
    EXPECT_EQ(first[3], u'\0') << "the terminator may be read";
    EXPECT_EQ(CString()[0], u'\0');
    for (int const i : { -1, 4 })
        EXPECT_TRUE(test::Refused([&] { return first.GetAt(i); })) << i;
    for (int const i : { -1, 3 })
        EXPECT_TRUE(test::Refused([&] { second.SetAt(i, u'x'); })) << i;
}

TEST(String, EditsInPlace)
{
    CString text = "\u00A0\t a b \u3000\r\n";
    EXPECT_EQ(CString(text).TrimLeft().Left(1), "a");
    EXPECT_EQ(CString(text).TrimRight().Right(1), "b");
    EXPECT_EQ(text.Trim(), "a b");
    EXPECT_EQ(CString("  ").Trim(), "");
    EXPECT_EQ(text.Insert(99, "!"), 4);
    EXPECT_EQ(text.Insert(-1, "<"), 5);
    EXPECT_EQ(text, "<a b!");
    EXPECT_EQ(text.Delete(3, 99), 3);
    EXPECT_EQ(text.Delete(99), 3);
    EXPECT_EQ(text, "<a ");
    text = "aaa";
    EXPECT_EQ(text.Replace("aa", "a"), 1);
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(text.Replace(text, text + text), 1);
    EXPECT_EQ(text, "aaaa");
    EXPECT_EQ(text.Remove(u'a'), 4);
    EXPECT_TRUE(text.IsEmpty());
}

template <typename T> void ExpectAsPrintf(std::string const& letters, std::initializer_list<T> values)
{
    for (char const* const flags : { "", "-", "+", " ", "0", "#", "+0", "-#", "#0", "+ " }) {
        for (char const* const size : { "", "3", "12", ".0", ".3", "14.2", "20.10", "." }) {
            for (char const letter : letters) {
                std::string const format = std::string("[%") + flags + size + letter + "]";
                for (T const value : values) {
                    char expected[512];
                    std::snprintf(expected, sizeof expected, format.c_str(), value);
                    EXPECT_EQ(Formatted(format.c_str(), value), expected) << format;
                }
            }
        }
    }
}

TEST(String, FormatsNumbersAsPrintfDoes)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    ExpectAsPrintf("fegFEG", { 0.0, -0.0, 1.0, -2.5, 3.14159265358979, 1e10, -1e-10, 1e5, 1e6, kInfinity, -kInfinity });
    ExpectAsPrintf("diuxX", { 0, 1, -1, 255, 123456, INT_MAX, INT_MIN });
    EXPECT_EQ(Formatted("%lld %I64d %lu", LLONG_MIN, LLONG_MAX, ULONG_MAX),
        "-9223372036854775808 9223372036854775807 18446744073709551615");
}

TEST(String, FormatConvertsWrongAndLeavesOutMissingArguments)
{
    EXPECT_EQ(Formatted("%s|%5s|%-5s|%.2s|%c", "abc", CString("ü"), "x", "long", u'é'), "abc|    ü|x    |lo|é");
    EXPECT_EQ(Formatted("%.0s|%2.0s|%.s", "abc", "abc", "abc"), "|  |");
    EXPECT_EQ(Formatted("%*d|%-*d|%.*f", 5, 42, 4, 7, 2, 1.0), "   42|7   |1.00");
    EXPECT_EQ(Formatted("%d %s %s %f", 2.9, 7, 0.5, 3), "2 7 0.5 3.000000");
    EXPECT_EQ(Formatted("%d %g", "12abc", "2.5"), "12 2.5");
    EXPECT_EQ(Formatted("%d%% %d.", 50), "50% .");
    EXPECT_EQ(Formatted("100%"), "100%");
    EXPECT_EQ(Formatted("%y %5", 1), "%y %5");
    EXPECT_EQ(Formatted("%d", std::nan("")), "0");
    EXPECT_EQ(Formatted("%d", 1e300), "9223372036854775807");
    EXPECT_EQ(Formatted("%d", -1e300), "-9223372036854775808");
    EXPECT_EQ(Formatted("%999999999d", 1).GetLength(), 4096);
    CString text = "%s!";
    text.Format(text, text);
    EXPECT_EQ(text, "%s!!");
}

TEST(String, LeadingIntegerOfAText)
{
    for (auto const& [text, value] : { std::pair("", 0), { "12", 12 }, { " \u3000-12 3", -12 }, { "+4x", 4 },
             { "+-4", 0 }, { "x1", 0 }, { "99999999999", INT_MAX }, { "-99999999999", INT_MIN }, { "１", 0 } })
        EXPECT_EQ(_wtoi(text), value) << text;
}

} // namespace ombrel
