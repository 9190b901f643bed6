#include "ombrel/table/TableDialect.h"
#include "ombrel/table/ColumnValues.h"
#include "ombrel/table/Utf8.h"

#include <gtest/gtest.h>

#include <numeric>

namespace ombrel {
namespace {

using namespace std::literals;

TEST(TableCells, EndWhereTheirSeparatorOrTheLineDoes)
{
    struct {
        char const* text;
        char separator;
        char const* cell;
        bool quoted;
        CellStatus status;
        char const* rest;
    } const cases[] {
        { "ab,c\n", ',', "ab", false, CellStatus::Cell, ",c\n" },
        { " \ta b\t ,c\n", ',', "a b", false, CellStatus::Cell, ",c\n" },
        { ",c\n", ',', "", false, CellStatus::Cell, ",c\n" },
        { " \"a\"\"b\" ;x\n", ';', "a\"\"b", true, CellStatus::Cell, ";x\n" },
        { "\"\"\n", ';', "", true, CellStatus::Cell, "\n" },
        { "\"a;\n\"\t\n", ';', "a;\n", true, CellStatus::Cell, "\n" },
        { "\"a\" b;c\n", ';', "a", true, CellStatus::TextAfterQuote, "b;c\n" },
        { "\"a\"\"\n", ';', "", true, CellStatus::Unclosed, "" },
        { "a\"b\";c\n", ';', "a\"b\"", false, CellStatus::Cell, ";c\n" },
        { "a\t\tb\n", '\t', "a", false, CellStatus::Cell, "\t\tb\n" },
        { "\tb\n", '\t', "", false, CellStatus::Cell, "\tb\n" },
        { "\"a\"\tb\n", '\t', "a", true, CellStatus::Cell, "\tb\n" },
        // Blanks that separate stay, those at the end of a line go.
        { " a  b\n", ' ', "a", false, CellStatus::Cell, "  b\n" },
        { "a \t\n", ' ', "a", false, CellStatus::Cell, "\n" },
        { "\"a b\" c\n", ' ', "a b", true, CellStatus::Cell, " c\n" },
        { "\"a b\",c\n", ' ', "a b", true, CellStatus::TextAfterQuote, ",c\n" },
        { "a, b \n", 0, "a, b", false, CellStatus::Cell, "\n" },
    };
    for (auto const& c : cases) {
        std::string_view const text = c.text;
        char const* p = text.data();
        TableCell cell;
        ASSERT_EQ(ReadCell(p, text.data() + text.size(), c.separator, cell), c.status) << text;
        EXPECT_EQ(cell.quoted, c.quoted) << text;
        if (c.status == CellStatus::Unclosed)
            continue;
        EXPECT_EQ(cell.text, c.cell) << text;
        EXPECT_EQ(std::string_view(p), c.rest) << text;
    }
    EXPECT_EQ(CellText({ "a\"\"b\"\"\"\"", true }), "a\"b\"\"");
    EXPECT_EQ(CellText({ "a\"\"b", false }), "a\"\"b");
}

TEST(TableLines, AreToldFromCommentsAndBreaksFromText)
{
    for (std::string_view const text : { "", " \t", "# x", " \t# x", "// x", "  //", "\r\n1", " \n1" })
        EXPECT_TRUE(IsCommentOrBlank(text.data(), text.data() + text.size())) << text;
    for (std::string_view const text : { "a # x", "/ x", "\"#\"", "0", "/" })
        EXPECT_FALSE(IsCommentOrBlank(text.data(), text.data() + text.size())) << text;
    std::string_view const breaks = "\r\n\n\r\r";
    std::vector<std::ptrdiff_t> places;
    for (char const* p = breaks.data(); p < breaks.data() + breaks.size();) {
        p = SkipLineBreak(p, breaks.data() + breaks.size());
        places.push_back(p - breaks.data());
    }
    EXPECT_EQ(places, (std::vector<std::ptrdiff_t> { 2, 3, 4, 5 }));
    std::string_view const line = "ab\rc\nd";
    EXPECT_EQ(FindLineEnd(line.data(), line.data() + 6) - line.data(), 2);
    EXPECT_EQ(FindLineEnd(line.data() + 3, line.data() + 6) - line.data(), 4);
    EXPECT_EQ(FindLineEnd(line.data() + 5, line.data() + 6) - line.data(), 6);
}

TEST(TableCells, AreNumbersDatesGapsOrTexts)
{
    auto const german = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y"));
    for (char const* const gap : { "", "NA", "na", "NaN", "nan", "-NaN", "N/A", "n/a", "null", "NULL", "-", "?" }) {
        EXPECT_TRUE(GapWords().Contains(gap)) << gap;
        EXPECT_EQ(ClassifyCell({ gap, true }, '.', &german), ColumnType::Unknown);
    }
    for (char const* const word : { "--", "none", "nul", "nulls", "n a", "nann", "--nan", "0" })
        EXPECT_FALSE(GapWords().Contains(word)) << word;
    EXPECT_EQ(ClassifyCell({ "1.5", true }, '.', nullptr), ColumnType::Number);
    EXPECT_EQ(ClassifyCell({ "1,5", false }, '.', nullptr), ColumnType::Text);
    EXPECT_EQ(ClassifyCell({ "1,5", false }, ',', nullptr), ColumnType::Number);
    EXPECT_EQ(ClassifyCell({ "2020-03", false }, '.', nullptr), ColumnType::Date);
    EXPECT_EQ(ClassifyCell({ "2020-13", false }, '.', nullptr), ColumnType::Text);
    EXPECT_EQ(ClassifyCell({ "31.03.2020", false }, '.', &german), ColumnType::Date);
    EXPECT_EQ(ClassifyCell({ "1.5", false }, '.', &german), ColumnType::Text);
}

TEST(TableCells, AreGapsWhereTheirWordOrNumberWasNamed)
{
    GapWords const gaps("-999,Missing,1e3");
    for (char const* const gap : { "-999", "-999.0", "MISSING", "1000", "-", "" })
        EXPECT_EQ(ClassifyCell({ gap, false }, '.', nullptr, gaps), ColumnType::Unknown) << gap;
    EXPECT_EQ(ClassifyCell({ "999", false }, '.', nullptr, gaps), ColumnType::Number);
    EXPECT_EQ(ClassifyCell({ "missings", false }, '.', nullptr, gaps), ColumnType::Text);
    EXPECT_TRUE(gaps.Contains(-999.0));
    EXPECT_FALSE(GapWords().Contains(0.0));
}

TEST(TableCells, HoldNumbersAsAPersonWritesThem)
{
    struct {
        char const* text;
        char decimalMark;
        std::optional<double> value;
    } const cases[] {
        { "1,234", '.', 1234.0 },
        { "-12,345,678.5", '.', -12345678.5 },
        { "1.234,5", ',', 1234.5 },
        { "$12", '.', 12.0 },
        { "-$1,200.50", '.', -1200.5 },
        { "$-3", '.', -3.0 },
        { "12,50 \u20AC", ',', 12.5 },
        { "1,23", '.', {} },
        { "1234,567", '.', {} },
        { ",123", '.', {} },
        { "1,234,", '.', {} },
        { "1,234,56", '.', {} },
        { "$", '.', {} },
        { "$$1", '.', {} },
        { "1,2a4", '.', {} },
    };
    for (auto const& c : cases)
        EXPECT_EQ(ParseWrittenNumber(c.text, c.decimalMark), c.value) << c.text;
}

TEST(TableHeads, TellJsonFromTables)
{
    for (char const* const json : { "{\"a\": 1}", " {\n  \"a\": [] }", "[{\"a\":1}]", "[\n [1,2]]", "{}" })
        EXPECT_TRUE(LooksLikeJson(json)) << json;
    for (char const* const table : { "", "{", "[s],[m]\n1,2\n", "[1 2]\n", "{a} b\n", "\"a\",1\n" })
        EXPECT_FALSE(LooksLikeJson(table)) << table;
}

TEST(TableHeads, TellHowATableIsWritten)
{
    auto const german = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y"));
    TableHints const detect;
    TableHints const dated { {}, &german, "" };
    TableHints const datedSecond { {}, &german, "when" };
    TableHints const named { { HeaderChoice::Present }, nullptr, "" };
    TableHints const colons { { HeaderChoice::Detect, ':' } };
    TableHints const commaMarks { { HeaderChoice::Detect, {}, ',' } };
    TableHints const pointMarks { { HeaderChoice::Detect, {}, '.' } };
    TableHints const oneColumn { { HeaderChoice::Detect, '\0' } };
    struct {
        char const* sample;
        TableHints const& hints;
        /// Separator (none as |, a bar as !), decimal mark, h for a header, r for row names.
        char const* dialect;
        /// A letter a column: Number, Date, Text, Unknown.
        char const* types;
    } const cases[] {
        // Of what explains the values best, the first of comma, semicolon, tab, blanks and one column.
        { "1,5;2\n1,5;3\n", detect, ";,", "NN" },
        { "a;b\n1,5;2\n1.5;3\n", detect, ";.h", "NN" },
        { "a,b,c\n1,2,3\n1,2\n", detect, ",.h", "NNN" },
        { "1,2\n3\n4,5\n", detect, ",.", "NN" },
        { "x y\n1\n2\n", detect, "|.h", "N" },
        { "1\t2 3\n4\t5 6\n", detect, " .", "NNN" },
        // What most cells are; numbers before dates, and both before texts.
        { "a,b,c\n1,2020-01-01,1\nx,y,2020-01-01\nNA,,\n", detect, ",.h", "NDN" },
        { "a,b\n1,\nx,\ny,NA\n", detect, ",.h", "TU" },
        { "1,2\n3,4\n", named, ",.h", "NN" },
        // What was said decides, and numbers with groups of digits are numbers.
        { "a:b\n1:2\n", colons, ":.h", "NN" },
        { "a,b\n1,5\n2,5\n", commaMarks, "|,h", "N" },
        { "a\tb\n1,234\t2\n5,678\t3\n", pointMarks, "\t.h", "NN" },
        { "a\n1,5\n", oneColumn, "|.h", "T" },
        { "a|b\n1|2\n", detect, "!.h", "NN" },
        { "a;b\n\"1,234.5\";$2\n", detect, ";.h", "NN" },
        { "a;b\n1.234,5;2 \u20AC\n", detect, ";,h", "NN" },
        { "day;n\n1.2.2020;1\n", dated, ";.h", "DN" },
        { "n;when\n1;1.2.2020\n", datedSecond, ";.h", "ND" },
        { "when\n1;1.2.2020\n2;2.2.2020\n", datedSecond, ";.hr", "ND" },
        // A name too few.
        { "\"a\",\"b\"\n\"1\",2,3\n\"2\",5,\n", detect, ",.hr", "NNN" },
        { "a,b\nx,2,3\ny,5,6\n", detect, ",.hr", "TNN" },
        { "a,b\n1,2,3\n\"4\",5,6\n", detect, ",.h", "NN" },
        { "a;b\n1;2;\n3;4;\n", detect, ";.h", "NN" },
        { "a;b\n", detect, ";.h", "UU" },
    };
    for (auto const& c : cases) {
        TableHead const head = DetectDialect(c.sample, c.hints);
        char const separator = head.dialect.separator == '|' ? '!' : head.dialect.separator;
        std::string dialect { separator ? separator : '|', head.dialect.decimalMark };
        dialect += head.dialect.hasHeader ? "h" : "";
        dialect += head.dialect.hasRowNames ? "r" : "";
        std::string types;
        for (ColumnType const type : head.types)
            types += "UNDT"[static_cast<std::size_t>(type)];
        EXPECT_EQ(dialect, c.dialect) << c.sample;
        EXPECT_EQ(types, c.types) << c.sample;
    }
    EXPECT_EQ(FindColumn({ "a", "1", "b" }, "1"), 1u) << "a name goes before a number";
    EXPECT_EQ(FindColumn({ "a", "1", "b" }, "3"), 2u);
    for (char const* const none : { "4", "0", "3x", "-1", "", "A" })
        EXPECT_EQ(FindColumn({ "a", "", "b" }, none), 3u) << none;
}

TEST(ColumnValues, ComeBackInOrderWhateverTheirNumber)
{
    // Blocks of 32, 64, 128, ... values.
    for (std::size_t const count : { 0U, 1U, 31U, 32U, 33U, 96U, 97U, 140000U }) {
        ColumnValues values;
        for (std::size_t i = 0; i < count; ++i)
            values.Append(static_cast<double>(i));
        ColumnValues moved(std::move(values));
        values.Append(-1.0);
        EXPECT_EQ(values.Size(), 1U);
        EXPECT_EQ(moved.Size(), count);
        std::vector<double> expected(count);
        std::iota(expected.begin(), expected.end(), 0.0);
        std::vector<double> out;
        moved.ForEach([&out](double v) { out.push_back(v); });
        EXPECT_EQ(out, expected);
        out.assign(count, 0.0);
        moved.MoveTo(out.data());
        EXPECT_EQ(out, expected);
        EXPECT_EQ(moved.Size(), 0U);
    }
}

TEST(Utf8, IsToldFromOtherBytes)
{
    for (char const* const text : { "", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
             "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF" })
        EXPECT_TRUE(IsUtf8(text)) << text;
    for (char const* const text : { "\x80", "\xC1\xBF", "\xC2", "\xC2x", "\xE0\x9F\xBF", "\xE1\x80", "\xED\xA0\x80",
             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF1\x80\x80x", "\xFF" })
        EXPECT_FALSE(IsUtf8(text)) << text;
    EXPECT_EQ(Utf8FromLatin1("a\x7F\x80\xBF\xC0\xFF"), "a\x7F\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF");
    EXPECT_EQ(QuoteForMessage("a\n\x1F\x7F\xFFé"sv), "\"a\\x0a\\x1f\\x7f\\xffé\"");
    EXPECT_EQ(QuoteForMessage(std::string(40, 'x')), "\"" + std::string(40, 'x') + "\"");
    EXPECT_EQ(QuoteForMessage(std::string(41, 'x')), "\"" + std::string(40, 'x') + "…\"");
}

} // namespace
} // namespace ombrel
