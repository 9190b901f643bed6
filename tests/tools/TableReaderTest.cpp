#include "tools/ombrel/table/TableReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace ombrel::host {
namespace {

using namespace std::literals;

constexpr double kNa = std::numeric_limits<double>::quiet_NaN();

Table ReadWell(std::string_view text, TableOptions const& options = {})
{
    auto result = ReadTable(text, options);
    if (auto const* const error = std::get_if<TableError>(&result)) {
        ADD_FAILURE() << error->ToText();
        return {};
    }
    return std::move(std::get<Table>(result));
}

TableError ReadBadly(std::string_view text, TableOptions const& options = {})
{
    auto const result = ReadTable(text, options);
    auto const* const error = std::get_if<TableError>(&result);
    EXPECT_TRUE(error) << "read without an error: " << text.substr(0, 60);
    return error ? *error : TableError {};
}

std::vector<double> ValuesOf(TableColumn const& column)
{
    std::vector<double> values;
    column.values.ForEach([&values](double v) { values.push_back(v); });
    return values;
}

/// Everything that a table says, for comparing and for messages.
std::string Describe(std::variant<Table, TableError> const& result)
{
    if (auto const* const error = std::get_if<TableError>(&result))
        return "error " + error->ToText();
    auto const& table = std::get<Table>(result);
    std::string text = "separator "s + std::to_string(table.dialect.separator) + " mark " + table.dialect.decimalMark
        + (table.dialect.hasHeader ? " header" : "") + " rows " + std::to_string(table.rows) + " short "
        + std::to_string(table.shortRows) + " shifted " + std::to_string(table.shiftedDates) + " lines "
        + std::to_string(table.LineOf(table.rows)) + "\n";
    for (TableColumn const& column : table.columns) {
        text += "'" + column.name + "' type " + std::to_string(static_cast<int>(column.type)) + " gaps "
            + std::to_string(column.gaps) + (column.misfit ? " misfit " + column.misfit->ToText() : "") + ":";
        for (double const v : ValuesOf(column))
            text += " " + (std::isnan(v) ? "NA"s : std::to_string(v));
        text += "\n";
    }
    return text;
}

/// The result of feeding pieces of one size.
std::variant<Table, TableError> ReadInPieces(std::string_view text, std::size_t size)
{
    TableReader reader({});
    for (std::size_t i = 0; i < text.size() && reader.Feed(text.substr(i, size)); i += size) { }
    return reader.Finish();
}

struct DialectCase {
    char const* name;
    std::string text;
    char separator;
    char decimalMark;
    bool hasHeader;
    std::vector<std::string> names;
    /// An empty one has only gaps, or only texts.
    std::vector<std::vector<double>> columns;
    bool texts = false;
};

std::vector<DialectCase> DialectCases()
{
    return {
        { "commas", "a,b\n1,2.5\n3,4\n", ',', '.', true, { "a", "b" }, { { 1, 3 }, { 2.5, 4 } } },
        { "no header", "1,2\n3,4", ',', '.', false, { "", "" }, { { 1, 3 }, { 2, 4 } } },
        { "semicolons", "a;b\n1;2.5\n", ';', '.', true, { "a", "b" }, { { 1 }, { 2.5 } } },
        { "semicolons and decimal comma", "1,5;2,7\n2,5;3\n", ';', ',', false, { "", "" },
            { { 1.5, 2.5 }, { 2.7, 3 } } },
        { "semicolons, decimal comma, header", "x;y\r\n1,5;2,7\r\n", ';', ',', true, { "x", "y" },
            { { 1.5 }, { 2.7 } } },
        { "tabs", "a\tb\n1\t\n\t2\n", '\t', '.', true, { "a", "b" }, { { 1, kNa }, { kNa, 2 } } },
        { "tabs and decimal comma", "1,5\t2,5\n3,5\t4\n", '\t', ',', false, { "", "" }, { { 1.5, 3.5 }, { 2.5, 4 } } },
        { "blanks", "  1   2\t 3 \n 4 5 6\n", ' ', '.', false, { "", "", "" }, { { 1, 4 }, { 2, 5 }, { 3, 6 } } },
        { "blanks and decimal comma", "1,5 2,7\n2,5 3,7\n", ' ', ',', false, { "", "" },
            { { 1.5, 2.5 }, { 2.7, 3.7 } } },
        { "commas and blanks", "a, b\n1 , 2\n 3,4 \n", ',', '.', true, { "a", "b" }, { { 1, 3 }, { 2, 4 } } },
        { "one column", "1\n2\n\n3\n", 0, '.', false, { "" }, { { 1, 2, 3 } } },
        { "one column with a title of two words", "my value\n1\n2\n3\n", 0, '.', true, { "my value" },
            { { 1, 2, 3 } } },
        { "CR alone", "a,b\r1,2\r3,4\r", ',', '.', true, { "a", "b" }, { { 1, 3 }, { 2, 4 } } },
        { "byte order mark", "\xEF\xBB\xBFx,y\n1,2\n", ',', '.', true, { "x", "y" }, { { 1 }, { 2 } } },
        { "comments", "# made by hand\n// twice\n\na,b\n1,2\n  # between\n3,4\n", ',', '.', true, { "a", "b" },
            { { 1, 3 }, { 2, 4 } } },
        { "quotes", "\"a,1\",\"say \"\"b\"\"\"\n\"1\",\"2.5\"\n\" 3 \",4\n", ',', '.', true, { "a,1", "say \"b\"" },
            { { 1, kNa }, { 2.5, 4 } } },
        { "line break in quotes", "\"time\n(s)\",v\n1,2\n", ',', '.', true, { "time\n(s)", "v" }, { { 1 }, { 2 } } },
        { "every cell in quotes", "\"id\",\"name\",\"v\"\n\"1\",\"Ann\",\"3\"\n\"2\",\"Bob, Jr\",\"NA\"\n", ',', '.',
            true, { "id", "name", "v" }, { { 1, 2 }, {}, { 3, kNa } }, true },
        { "R's write.csv", "\"\",\"x\",\"v\"\n\"1\",0.5,NA\n\"2\",1,4\n", ',', '.', true, { "", "x", "v" },
            { { 1, 2 }, { .5, 1 }, { kNa, 4 } } },
        { "R's write.table", "\"x y\" \"v\"\n\"1\" 0.5 NA\n\"2\" 1 4\n", ' ', '.', true, { "", "x y", "v" },
            { { 1, 2 }, { .5, 1 }, { kNa, 4 } } },
        { "R's write.table without quotes", "x v\n1 5 NA\n2 7 4\n", ' ', '.', true, { "", "x", "v" },
            { { 1, 2 }, { 5, 7 }, { kNa, 4 } } },
        { "R's write.table with commas", "\"x\",\"v\"\n\"1\",5,\n\"2\",7,4\n", ',', '.', true, { "", "x", "v" },
            { { 1, 2 }, { 5, 7 }, { kNa, 4 } } },
        { "gap words", "a,b\nNA,1\nnan,2\n,3\nN/A,4\nnull,5\n", ',', '.', true, { "a", "b" },
            { {}, { 1, 2, 3, 4, 5 } } },
        { "trailing separator", "a,b\n1,2,\n3,4,\n", ',', '.', true, { "a", "b" }, { { 1, 3 }, { 2, 4 } } },
        { "Latin-1 header",
            "t,\xB0"
            "C\n1,2\n",
            ',', '.', true, { "t", "°C" }, { { 1 }, { 2 } } },
    };
}

TEST(TableReader, FindsOutHowATableIsWritten)
{
    for (DialectCase const& c : DialectCases()) {
        SCOPED_TRACE(c.name);
        if (std::string_view(c.name) == "quotes") {
            // Blanks in quotes belong to the cell, which is no number then.
            EXPECT_EQ(ReadWell(c.text).columns[0].misfit->line, 3u);
            continue;
        }
        Table const table = ReadWell(c.text);
        EXPECT_EQ(table.dialect.separator, c.separator);
        EXPECT_EQ(table.dialect.decimalMark, c.decimalMark);
        EXPECT_EQ(table.dialect.hasHeader, c.hasHeader);
        EXPECT_EQ(table.headerWasLatin1, c.name == "Latin-1 header"s);
        ASSERT_EQ(table.columns.size(), c.columns.size());
        for (std::size_t i = 0; i < c.columns.size(); ++i) {
            EXPECT_EQ(table.columns[i].name, c.names[i]);
            EXPECT_FALSE(table.columns[i].misfit);
            if (c.columns[i].empty()) {
                EXPECT_EQ(table.columns[i].gaps, c.texts ? 0U : table.rows);
                EXPECT_EQ(table.columns[i].type, c.texts ? ColumnType::Text : ColumnType::Unknown);
                continue;
            }
            auto const values = ValuesOf(table.columns[i]);
            ASSERT_EQ(values.size(), c.columns[i].size());
            for (std::size_t k = 0; k < values.size(); ++k) {
                if (std::isnan(c.columns[i][k]))
                    EXPECT_TRUE(std::isnan(values[k])) << k;
                else
                    EXPECT_EQ(values[k], c.columns[i][k]) << k;
            }
        }
    }
}

TEST(TableReader, GivesTheSameResultHoweverTheBytesArePieced)
{
    std::vector<std::string> texts;
    for (DialectCase const& c : DialectCases())
        texts.push_back(c.text);
    texts.push_back("a,b\r\n1,\"2\r\n\"\r\n3,4\r\n");
    texts.push_back("a,b\n1,2\n3,\"4");
    texts.push_back("a,b\n1,2\0"s);
    texts.push_back("a,b\n1,2,3\n");
    texts.push_back("\xFF\xFE"
                    "a\0,\0"s);
    texts.push_back("a,b\n1,\"2\"x\n");
    std::string many = "# long\r\nt;v\r\n";
    for (int i = 0; i < 200; ++i)
        many += std::to_string(i) + ";\"" + std::to_string(i) + ",5\"\r\n" + (i % 9 == 0 ? "\r\n" : "");
    texts.push_back(many);
    for (std::string const& text : texts) {
        std::string const whole = Describe(ReadTable(text, {}));
        for (std::size_t const size : { 1U, 2U, 3U, 5U, 7U, 64U, 1000U })
            ASSERT_EQ(Describe(ReadInPieces(text, size)), whole) << "pieces of " << size << ": " << text.substr(0, 60);
    }
}

TEST(TableReader, TellsWhereATableIsWrong)
{
    struct {
        std::string text;
        std::size_t line;
        std::size_t column;
        char const* found;
    } const cases[] {
        { "", 1, 0, "nothing but blank lines" },
        { "\n# only this\n\n", 1, 0, "nothing but blank lines" },
        { "a,b\n1,2\n3,4,5\n", 3, 3, "one more: \"5\"" },
        // The first column may be whole parts of numbers with decimal commas.
        { "a,b\n1,2,3\n4,5,6\n", 2, 3, "one more: \"3\"" },
        { "a b\n1 2 3\n4 5 6 7\n", 2, 3, "one more: \"3\"" },
        { "a,b\n1,2\n\n# c\n3,4,,\n", 5, 3, "one more" },
        { "a,b\n1,\"2\n3,4\n5,6\n", 2, 0, "the end of the file" },
        { "a,b\n1,\"2\"7\n", 2, 2, "\"7\"" },
        { "a,b\n1,2\n3,\0004\n"s, 3, 0, "zero byte" },
        { "\xFF\xFE"
          "1\0\n\0"s,
            1, 0, "UTF-16" },
        { "\xFE\xFF\0"
          "1"s,
            1, 0, "UTF-16" },
        { "a,b\n" + std::string(std::size_t { 2 } << 20, '1') + "\n", 2, 0, "a longer one" },
        { std::string(std::size_t { 2 } << 20, '#'), 1, 0, "a longer one" },
        { std::string(20000, ',') + "\n", 1, 0, "more" },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 40));
        TableError const error = ReadBadly(c.text);
        EXPECT_EQ(error.line, c.line);
        EXPECT_EQ(error.column, c.column);
        EXPECT_NE(error.found.find(c.found), std::string::npos) << error.ToText();
        EXPECT_FALSE(error.expected.empty());
    }
    // Beyond the lines that tell the number of columns.
    auto const after = [](std::string const& header, std::string const& row, std::string const& last) {
        std::string text = header;
        for (int i = 0; i < 70; ++i)
            text += row;
        return ReadBadly(text + last).ToText();
    };
    EXPECT_EQ(after("a\n", "1,2\n", ""), "2: column 2: expected 1 cell as in the header, found one more: \"2\"");
    EXPECT_EQ(after("", "1;2\n", "5;6;\"7;\"\n"),
        "71: column 3: expected 2 cells as in the first lines, found one more: \"7;\"");
    EXPECT_EQ(after("a b\n", "1 2 3\n", "7 8 9 0\n"),
        "72: column 4: expected 3 cells as in the first lines, found one more: \"0\"");
    EXPECT_EQ(ReadBadly("a,b\n1,\"2\"3\n").ToText(),
        "2: column 2: expected a separator after the closing quote, found \"3\"");
}

TEST(TableReader, KeepsTheFirstCellThatDoesNotFitItsColumn)
{
    struct {
        char const* text;
        std::size_t column;
        std::size_t line;
        char const* found;
        char const* expected;
    } const cases[] {
        { "a,b\n1,2\n3,x y\n5,6\n7,z\n", 1, 3, "\"x y\"", "a number or a gap" },
        { "a,b\n1,2\n\"3\n3\",4\n5,oops\n", 1, 5, "\"oops\"", "a number or a gap" },
        { "a\n1\n1e999\n", 0, 3, "\"1e999\"", "between -1e300 and 1e300" },
        { "a,b\n2020-01-01,1\n2020-01-32,2\n", 0, 3, "\"2020-01-32\"", "a date like 2020-03-31 12:30" },
        { "a,b\n2020-01-01,1\n2020-02-01,2\n7,2\n", 0, 4, "\"7\"", "a date like" },
        { "a;b\n1,5;1\n2,5;2\n3.5;2\n", 0, 4, "\"3.5\"", "a number with a decimal comma" },
        { "a\n1\n\x01\xFF\n", 0, 3, "\"\\x01\\xff\"", "a number" },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        Table const table = ReadWell(c.text);
        auto const& misfit = table.columns[c.column].misfit;
        ASSERT_TRUE(misfit);
        EXPECT_EQ(misfit->line, c.line);
        EXPECT_EQ(misfit->column, c.column + 1);
        EXPECT_EQ(misfit->found, c.found);
        EXPECT_NE(misfit->expected.find(c.expected), std::string::npos) << misfit->expected;
        EXPECT_EQ(table.columns[c.column].values.Size(), 0u);
    }
}

TEST(TableReader, CountsGaps)
{
    Table const table = ReadWell("a,b,c,word\n1,,3,x\n4\n7,NA,9,\n", {});
    EXPECT_EQ(table.rows, 3u);
    EXPECT_EQ(table.shortRows, 1u);
    EXPECT_EQ(table.columns[0].gaps, 0u);
    EXPECT_EQ(table.columns[1].gaps, 3u);
    EXPECT_EQ(table.columns[2].gaps, 1u);
    EXPECT_EQ(table.columns[3].gaps, 2u);
    EXPECT_EQ(table.columns[3].type, ColumnType::Text);
    EXPECT_EQ(table.columns[3].values.Size(), 0u);
    EXPECT_EQ(table.columns[2].values.Size(), 3u);
}

TEST(TableReader, DecidesTheTypeOfAColumnThatBeginsWithGapsAtItsFirstValue)
{
    std::string text = "t,late number,late date,late text\n";
    for (int i = 0; i < 100; ++i)
        text += std::to_string(i) + ",,,\n";
    text += "100,5,2020-01-01,word\n";
    Table const table = ReadWell(text);
    EXPECT_EQ(table.columns[1].type, ColumnType::Number);
    EXPECT_EQ(table.columns[2].type, ColumnType::Date);
    EXPECT_EQ(table.columns[3].type, ColumnType::Text);
    EXPECT_EQ(ValuesOf(table.columns[1]).back(), 5.0);
    EXPECT_EQ(table.columns[1].gaps, 100u);
}

TEST(TableReader, ReadsOnlyTheColumnsAskedFor)
{
    TableOptions options;
    options.wanted = { "2", "d" };
    Table const table = ReadWell("a,b,c,d\n1,2,3,4\n5,6,bad,8\n", options);
    EXPECT_EQ(table.columns[0].values.Size(), 0u);
    EXPECT_EQ(ValuesOf(table.columns[1]), (std::vector<double> { 2, 6 }));
    EXPECT_FALSE(table.columns[2].misfit);
    EXPECT_EQ(ValuesOf(table.columns[3]), (std::vector<double> { 4, 8 }));
}

TEST(TableReader, TakesDatesInTheFormItIsGiven)
{
    TableOptions options;
    options.dateFormat = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y"));
    Table const table = ReadWell("31.03.2020;1,5\n01.04.2020;2\n02.04.2020;2,5\n", options);
    EXPECT_FALSE(table.dialect.hasHeader);
    EXPECT_EQ(table.dialect.separator, ';');
    EXPECT_EQ(table.columns[0].type, ColumnType::Date);
    EXPECT_EQ(ValuesOf(table.columns[0]), (std::vector<double> { 43921, 43922, 43923 }));
    options.dateColumn = "when";
    Table const named = ReadWell("n;when\n7;31.03.2020\n8;x\n", options);
    EXPECT_EQ(named.columns[0].type, ColumnType::Number);
    ASSERT_TRUE(named.columns[1].misfit);
    EXPECT_NE(named.columns[1].misfit->expected.find("%d.%m.%Y"), std::string::npos);
    EXPECT_EQ(ReadWell("t,v\n2020-01-01T12:00+02:00,1\n2020-01-02T00:00Z,1\n").shiftedDates, 2u);
}

TEST(TableReader, TakesTheHeaderAsTold)
{
    TableOptions options;
    options.header = HeaderChoice::Present;
    EXPECT_EQ(ReadWell("2019,2020\n1,2\n", options).columns[1].name, "2020");
    options.header = HeaderChoice::Absent;
    Table const table = ReadWell("x,1\ny,2\n", options);
    EXPECT_EQ(table.rows, 2u);
    EXPECT_EQ(table.columns[0].type, ColumnType::Text);
}

TEST(TableReader, ReadsUpToItsLimitsAndNoFurther)
{
    std::string const widest(16383, ',');
    EXPECT_EQ(ReadWell(widest + "1\n" + widest + "2\n").columns.size(), 16384U);
    EXPECT_EQ(ReadBadly(widest + ",1\n").found, "more");
    std::string const longest(std::size_t { 1 } << 20, ' ');
    for (std::string const& start : { "a\n"s, "a\r\n"s, "# c\na\n"s + std::string(200, '\n') }) {
        EXPECT_EQ(ReadWell(start + "1" + longest.substr(1) + "\n2").rows, 2U);
        TableError const error = ReadBadly(start + "1" + longest + "\n2");
        EXPECT_EQ(error.ToText(),
            std::to_string(std::count(start.begin(), start.end(), '\n') + 1)
                + ": expected a line of at most 1 MiB, found a longer one (is a quote left open?)");
    }
    Table const largest = ReadWell("a,b\n1e300,2\n-1e300,1.1e300\n");
    EXPECT_EQ(ValuesOf(largest.columns[0]), (std::vector<double> { 1e300, -1e300 }));
    EXPECT_EQ(largest.columns[1].misfit->ToText(),
        "3: column 2: expected a number between -1e300 and 1e300, found \"1.1e300\"");
    Table const quoted = ReadWell("a\n1\n\"-1.1e300\"\n");
    EXPECT_EQ(quoted.columns[0].misfit->line, 3U);
}

TEST(TableReader, DoesNotFillMissingCellsWithoutLimit)
{
    // A header of 16000 columns over short rows would need a thousand times the memory of the file.
    std::string text = "a";
    for (int i = 1; i < 16000; ++i)
        text += ",a";
    text += "\n";
    for (int i = 0; i < 100000; ++i)
        text += "1,1\n";
    TableError const error = ReadBadly(text);
    EXPECT_LT(error.line, 200u);
    EXPECT_EQ(error.column, 3u);
}

TEST(TableReader, SurvivesAnyBytes)
{
    std::mt19937 random(11);
    constexpr std::string_view kAlphabet = "0123456789.,;\t \n\r\"-+eE#/aNA:T\0\xEF\xBB\xFF"sv;
    for (int i = 0; i < 3000; ++i) {
        std::string text;
        std::size_t const length = random() % 200;
        for (std::size_t k = 0; k < length; ++k)
            text += kAlphabet[random() % kAlphabet.size()];
        std::string const whole = Describe(ReadTable(text, {}));
        ASSERT_EQ(Describe(ReadInPieces(text, 1 + random() % 9)), whole) << text;
    }
}

TEST(TableReader, KeepsTextsThatAreAskedForAndTellsTheLineOfEachRow)
{
    TableOptions options;
    options.wordColumn = "1";
    options.asTexts = { "n" };
    Table const table
        = ReadWell("# made by hand\nword,n,other\n,1.50,p\n\"a\nb\",,q\n\n# c\n\"say \"\"x\"\"\",3\n", options);
    EXPECT_EQ(table.columns[0].texts, (std::vector<std::string> { "", "a\nb", "say \"x\"" }));
    EXPECT_EQ(table.columns[1].texts, (std::vector<std::string> { "1.50", "", "3" }));
    EXPECT_EQ(ValuesOf(table.columns[1]).front(), 1.5);
    EXPECT_TRUE(table.columns[2].texts.empty());
    EXPECT_EQ(table.LineOf(0), 3u);
    EXPECT_EQ(table.LineOf(1), 4u);
    EXPECT_EQ(table.LineOf(2), 8u);
}

} // namespace
} // namespace ombrel::host
