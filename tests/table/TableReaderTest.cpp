#include "ombrel/table/TableReader.h"
#include "ombrel/table/EpochTimes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <random>
#include <sstream>

namespace ombrel {
namespace {

using namespace std::literals;

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

/// How the table is written (separator, | for none, decimal mark, h for a header), what else was noticed, and of each
/// column its name, type (Unknown, Number, Date, Text), gaps, values and texts, or its first misfit.
std::string Describe(Table const& table)
{
    std::ostringstream text;
    text << std::setprecision(15) << (table.dialect.separator ? table.dialect.separator : '|')
         << table.dialect.decimalMark << (table.dialect.hasHeader ? "h" : "")
         << (table.headerWasLatin1 ? " Latin-1" : "");
    if (table.shortRows > 0)
        text << " short " << table.shortRows;
    if (table.shiftedDates > 0)
        text << " shifted " << table.shiftedDates;
    for (TableColumn const& column : table.columns) {
        text << "; " << column.name << ": ";
        if (column.misfit)
            text << column.misfit->ToText();
        else
            text << "UNDT"[static_cast<std::size_t>(column.type)] << column.gaps;
        column.values.ForEach([&text](double v) { std::isnan(v) ? text << " NA" : text << ' ' << v; });
        for (std::string const& word : column.texts)
            text << " <" << word << ">";
    }
    return text.str();
}

std::string DescribeResult(std::variant<Table, TableError> const& result)
{
    if (auto const* const error = std::get_if<TableError>(&result))
        return error->ToText();
    auto const& table = std::get<Table>(result);
    return Describe(table) + " in " + std::to_string(table.LineOf(table.rows)) + " lines";
}

/// The result of feeding pieces of one size.
std::variant<Table, TableError> ReadInPieces(std::string_view text, std::size_t size)
{
    TableReader reader({});
    for (std::size_t i = 0; i < text.size() && reader.Feed(text.substr(i, size)); i += size) { }
    return reader.Finish();
}

constexpr std::pair<char const*, char const*> kTables[] {
    { "1,2\n3,4", ",.; : N0 1 3; : N0 2 4" },
    { "a\tb\n1\t\n\t2\n", "\t.h; a: N1 1 NA; b: N1 NA 2" },
    { "  1   2\t 3 \n 4 5 6\n", " .; : N0 1 4; : N0 2 5; : N0 3 6" },
    { "a, b\n1 , 2\n 3,4 \n", ",.h; a: N0 1 3; b: N0 2 4" },
    { "1\n2\n\n3\n", "|.; : N0 1 2 3" },
    { "my value\n1\n2\n3\n", "|.h; my value: N0 1 2 3" },
    { "a,b\r1,2\r3,4\r", ",.h; a: N0 1 3; b: N0 2 4" },
    { "\xEF\xBB\xBFx,y\n1,2\n", ",.h; x: N0 1; y: N0 2" },
    { "t,\xB0\n1,2\n", ",.h Latin-1; t: N0 1; °: N0 2" },
    { "# made by hand\n// twice\n\na,b\n1,2\n  # between\n3,4\n", ",.h; a: N0 1 3; b: N0 2 4" },
    { "a,b\nNA,1\nnan,2\n,3\nN/A,4\nnull,5\n", ",.h; a: U5 NA NA NA NA NA; b: N0 1 2 3 4 5" },
    { "a,b,c,word\n1,,3,x\n4\n7,NA,9,\n",
        ",.h short 1; a: N0 1 4 7; b: U3 NA NA NA; c: N1 3 NA 9; word: T2 <x> <> <>" },
    { "t,v\n2020-01-01T12:00+02:00,1\n2020-01-02T00:00Z,1\n",
        ",.h shifted 2; t: D0 43831.4166666667 43832; v: N0 1 1" },
    { "\"time\n(s)\",v\n1,2\n", ",.h; time\n(s): N0 1; v: N0 2" },
    // Blanks in quotes belong to the cell, which is no number then.
    { "\"a,1\",\"say \"\"b\"\"\"\n\"1\",\"2.5\"\n\" 3 \",4\n",
        ",.h; a,1: 3: column 1: expected a number or a gap (empty, NA, NaN), found \" 3 \"; say \"b\": N0 2.5 4" },
    // As R writes them: with a column of row names, which the header may leave out.
    { "\"id\",\"name\",\"v\"\n\"1\",\"Ann\",\"3\"\n\"2\",\"Bob, Jr\",\"NA\"\n",
        ",.h; id: N0 1 2; name: T0 <Ann> <Bob, Jr>; v: N1 3 NA" },
    { "\"x y\" \"v\"\n\"1\" 0.5 NA\n\"2\" 1 4\n", " .h; : N0 1 2; x y: N0 0.5 1; v: N1 NA 4" },
    { "x v\n1 5 NA\n2 7 4\n", " .h; : N0 1 2; x: N0 5 7; v: N1 NA 4" },
    { "\"x\",\"v\"\n\"1\",5,\n\"2\",7,4\n", ",.h; : N0 1 2; x: N0 5 7; v: N1 NA 4" },
};

TEST(TableReader, FindsOutHowATableIsWritten)
{
    for (auto const& [text, description] : kTables)
        EXPECT_EQ(Describe(ReadWell(text)), description) << text;
}

TEST(TableReader, GivesTheSameResultHoweverTheBytesArePieced)
{
    std::vector<std::string> texts { "a,b\r\n1,\"2\r\n\"\r\n3,4\r\n", "a,b\n1,2\n3,\"4", "a,b\n1,2\0"s, "a,b\n1,2,3\n",
        "\xFF\xFE\x61\0,\0"s, "a,b\n1,\"2\"x\n" };
    for (auto const& [text, description] : kTables)
        texts.emplace_back(text);
    std::string many = "# long\r\nt;v\r\n";
    for (int i = 0; i < 200; ++i)
        many += std::to_string(i) + ";\"" + std::to_string(i) + ",5\"\r\n" + (i % 9 == 0 ? "\r\n" : "");
    texts.push_back(many);
    std::mt19937 random(11);
    constexpr std::string_view kAlphabet = "0123456789.,;\t \n\r\"-+eE#/aNA:T\0\xEF\xBB\xFF"sv;
    for (int i = 0; i < 2000; ++i) {
        std::string& text = texts.emplace_back(random() % 200, ' ');
        for (char& c : text)
            c = kAlphabet[random() % kAlphabet.size()];
    }
    for (std::string const& text : texts) {
        std::string const whole = DescribeResult(ReadTable(text, {}));
        for (std::size_t const size : { 1U, 2U, 7U, 64U })
            ASSERT_EQ(DescribeResult(ReadInPieces(text, size)), whole)
                << "pieces of " << size << ": " << text.substr(0, 60);
    }
}

TEST(TableReader, TellsWhereATableIsWrong)
{
    std::string const long2MiB(std::size_t { 2 } << 20, '#');
    auto const repeat = [](std::string const& row) {
        std::string text;
        for (int i = 0; i < 70; ++i)
            text += row;
        return text;
    };
    std::pair<std::string, char const*> const cases[] {
        { "", "1: expected a table, found nothing but blank lines and comments" },
        { "\n# only this\n\n", "1: expected a table, found nothing but blank lines and comments" },
        { "a,b\n1,2\n3,4,5\n", "3: column 3: expected 2 cells as in the header, found one more: \"5\"" },
        // The first column may be whole parts of numbers with decimal commas.
        { "a,b\n1,2,3\n4,5,6\n", "2: column 3: expected 2 cells as in the header, found one more: \"3\"" },
        { "a b\n1 2 3\n4 5 6 7\n", "2: column 3: expected 2 cells as in the header, found one more: \"3\"" },
        { "a,b\n1,2\n\n# c\n3,4,,\n", "5: column 3: expected 2 cells as in the header, found one more: \"\"" },
        // Beyond the lines that tell the number of columns.
        { "a\n" + repeat("1,2\n"), "2: column 2: expected 1 cell as in the header, found one more: \"2\"" },
        { repeat("1;2\n") + "5;6;\"7;\"\n",
            "71: column 3: expected 2 cells as in the first lines, found one more: \"7;\"" },
        { "a b\n" + repeat("1 2 3\n") + "7 8 9 0\n",
            "72: column 4: expected 3 cells as in the first lines, found one more: \"0\"" },
        { "a,b\n1,\"2\n3,4\n5,6\n", "2: expected a closing quote, found the end of the file" },
        { "a,b\n1,\"2\"7\n", "2: column 2: expected a separator after the closing quote, found \"7\"" },
        { "a,b\n1,2\n3,\0004\n"s, "3: expected text in UTF-8, found a zero byte (is it UTF-16, or not text at all?)" },
        { "\xFF\xFE\x31\0\n\0"s, "1: expected text in UTF-8, found UTF-16 (iconv -f UTF-16 -t UTF-8 converts it)" },
        { "a,b\n" + long2MiB, "2: expected a line of at most 1 MiB, found a longer one (is a quote left open?)" },
        { long2MiB, "1: expected a line of at most 1 MiB, found a longer one (is a quote left open?)" },
        // The first cell that does not fit its column.
        { "a,b\n1,2\n3,x y\n5,6\n7,z\n", "3: column 2: expected a number or a gap (empty, NA, NaN), found \"x y\"" },
        { "a,b\n1,2\n\"3\n3\",4\n5,oops\n",
            "5: column 2: expected a number or a gap (empty, NA, NaN), found \"oops\"" },
        { "a\n1\n\"-1.1e300\"\n", "3: column 1: expected a number between -1e300 and 1e300, found \"-1.1e300\"" },
        { "a,b\n1e300,-1e300\n2,1.1e300\n",
            "3: column 2: expected a number between -1e300 and 1e300, found \"1.1e300\"" },
        { "a,b\n2020-01-01,1\n2020-01-32,2\n",
            "3: column 1: expected a date like 2020-03-31 12:30 or a gap (empty, NA, NaN), found \"2020-01-32\"" },
        { "a;b\n1,5;1\n2,5;2\n3.5;2\n",
            "4: column 1: expected a number with a decimal comma or a gap (empty, NA, NaN), found \"3.5\"" },
    };
    for (auto const& [text, fault] : cases) {
        std::string const found = DescribeResult(ReadTable(text, {}));
        EXPECT_NE(found.find(fault), std::string::npos) << text.substr(0, 40) << "\n" << found.substr(0, 400);
    }
}

TEST(TableReader, DecidesTheTypeOfAColumnThatBeginsWithGapsAtItsFirstValue)
{
    std::string text = "t,late number,late date,late text\n";
    for (int i = 0; i < 100; ++i)
        text += std::to_string(i) + ",,,\n";
    std::string const table = Describe(ReadWell(text + "100,5,2020-01-01,word\n"));
    for (char const* const part : { "late number: N100 NA", "NA 5; late date: D100 NA", "NA 43831; late text: T100" })
        EXPECT_NE(table.find(part), std::string::npos) << part;
}

TEST(TableReader, ReadsWhatIsAskedForAsItIsTold)
{
    TableOptions some;
    some.wanted = { "2", "d" };
    EXPECT_EQ(Describe(ReadWell("a,b,c,d\n1,2,3,4\n5,6,bad,8\n", some)), ",.h; a: N0; b: N0 2 6; c: N0; d: N0 4 8");
    TableOptions dated;
    dated.dateFormat = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y"));
    EXPECT_EQ(Describe(ReadWell("31.03.2020;1,5\n01.04.2020;2\n02.04.2020;2,5\n", dated)),
        ";,; : D0 43921 43922 43923; : N0 1.5 2 2.5");
    dated.dateColumn = "when";
    EXPECT_EQ(Describe(ReadWell("n;when\n7;31.03.2020\n8;x\n", dated)),
        ";.h; n: N0 7 8; when: 3: column 2: expected a date in the form %d.%m.%Y or a gap (empty, NA, NaN), found "
        "\"x\"");
    TableOptions headed;
    headed.header = HeaderChoice::Present;
    EXPECT_EQ(Describe(ReadWell("2019,2020\n1,2\n", headed)), ",.h; 2019: N0 1; 2020: N0 2");
    headed.header = HeaderChoice::Absent;
    EXPECT_EQ(Describe(ReadWell("x,1\ny,2\n", headed)), ",.; : T0 <x> <y>; : N0 1 2");
    TableOptions words;
    words.wordColumn = "1";
    words.asTexts = { "n" };
    Table const table
        = ReadWell("# made by hand\nword,n,other\n,1.50,p\n\"a\nb\",,q\n\n# c\n\"say \"\"x\"\"\",3\n", words);
    EXPECT_EQ(Describe(table),
        ",.h short 1; word: T1 <> <a\nb> <say \"x\">; n: N1 1.5 NA 3 <1.50> <> <3>; other: T1 <p> <q> <>");
    EXPECT_EQ(table.LineOf(0), 3u);
    EXPECT_EQ(table.LineOf(1), 4u);
    EXPECT_EQ(table.LineOf(2), 8u);
}

TEST(TableReader, ReadsDatesInTheOrderThatTheColumnSettles)
{
    auto const day = [](int year, int month, int d) { return *MakeDate(year, month, d, 0.0); };
    auto const daysOf = [](Table const& table) {
        std::vector<double> days;
        table.columns.front().values.ForEach([&days](double v) { days.push_back(std::isnan(v) ? 0.0 : v); });
        return days;
    };
    using Days = std::vector<double>;
    // Gaps and dates that read the same both ways stand before and between.
    Table const american
        = ReadWell("when,y\n2020-01-05,1\n01/02/2020,2\n,3\n02/02/2020,4\n01/13/2020,5\n03/04/2020,6\n");
    EXPECT_EQ(daysOf(american),
        (Days { day(2020, 1, 5), day(2020, 1, 2), 0.0, day(2020, 2, 2), day(2020, 1, 13), day(2020, 3, 4) }));
    EXPECT_EQ(american.columns.front().dateOrder, DateOrder::MonthFirst);
    EXPECT_FALSE(american.columns.front().isDateOrderAssumed);
    Table const other = ReadWell("when,y\n01/02/2020,2\n,3\n13/02/2020,5\n03/04/2020,6\n");
    EXPECT_EQ(daysOf(other), (Days { day(2020, 2, 1), 0.0, day(2020, 2, 13), day(2020, 4, 3) }));
    EXPECT_EQ(other.columns.front().dateOrder, DateOrder::DayFirst);
    EXPECT_FALSE(other.columns.front().isDateOrderAssumed);
    Table const open = ReadWell("01/02/2020,2\n03/04/2020,6\n");
    EXPECT_EQ(daysOf(open), (Days { day(2020, 2, 1), day(2020, 4, 3) }));
    EXPECT_TRUE(open.columns.front().isDateOrderAssumed);
    TableOptions told;
    told.dateOrder = DateOrder::MonthFirst;
    Table const settled = ReadWell("01/02/2020,2\n03/04/2020,6\n", told);
    EXPECT_EQ(daysOf(settled), (Days { day(2020, 1, 2), day(2020, 3, 4) }));
    EXPECT_FALSE(settled.columns.front().isDateOrderAssumed);
    // Both orders in one column are none.
    Table const mixed = ReadWell("01/13/2020,2\n03/04/2020,6\n13/01/2020,1\n");
    ASSERT_TRUE(mixed.columns.front().misfit);
    EXPECT_EQ(mixed.columns.front().misfit->line, 3u);
    EXPECT_THAT(mixed.columns.front().misfit->expected, testing::HasSubstr("12/31/2020"));
}

TEST(EpochTimes, AreFoundWhereNumbersCanHardlyBeAnythingElse)
{
    struct {
        char const* text;
        std::optional<EpochUnit> unit;
    } const cases[] {
        { "a\n1580515200\n1580601600.5\n", EpochUnit::Seconds },
        { "a\n1580601600000\n\n1580515200000\n", EpochUnit::Milliseconds },
        { "a\n1580515200\n1580601600\n1580515201\n", std::nullopt },
        { "Timestamp\n1580515200\n1580601600\n1580515201\n", EpochUnit::Seconds },
        { "a\n1580515200\n1580515200\n", std::nullopt },
        { "a\n1580515200\n2600000000\n", std::nullopt },
        { "time\n0\n1580515200\n", std::nullopt },
        { "a\n1000000000000\n1000000100000\n", std::nullopt },
        { "time\n1000000000000\n1000000100000\n", EpochUnit::Milliseconds },
    };
    for (auto const& c : cases) {
        TableOptions options;
        options.header = HeaderChoice::Present;
        EXPECT_EQ(FindEpoch(ReadWell(c.text, options).columns.front()), c.unit) << c.text;
    }
    Table table = ReadWell("a\n1580515200000\n1580601600000\n");
    MakeDates(table.columns.front(), EpochUnit::Milliseconds);
    EXPECT_EQ(table.columns.front().type, ColumnType::Date);
    table.columns.front().values.ForEach([day = *MakeDate(2020, 2, 1, 0.0)](double v) mutable { EXPECT_EQ(v, day++); });
}

TEST(Table, GivesColumnsOfAFileOrSaysWhatIsWrong)
{
    auto const path = std::filesystem::temp_directory_path() / "ombrel-table-test.csv";
    std::ofstream(path) << "day,city,temperature,note\n2020-01-02,Oslo,-3.5,1\n2020-01-03,Rome,,x\n";
    Table const table = ReadTableFile(path.string());
    auto const messageOf = [](auto const& call) -> std::string {
        try {
            call();
        } catch (TableReadError const& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_THAT(table.Values("day"), testing::ElementsAre(43832.0, 43833.0));
    EXPECT_THAT(table.Values("3"), testing::ElementsAre(-3.5, testing::IsNan()));
    EXPECT_EQ(messageOf([&] { (void)table.Column("town"); }),
        path.string() + ": there is no column \"town\"; the columns are day, city, temperature, note");
    EXPECT_EQ(messageOf([&] { (void)table.Values("city"); }),
        path.string() + ": expected numbers or dates in column \"city\", found \"Oslo\"");
    EXPECT_THAT(messageOf([&] { (void)table.Values("note"); }), testing::HasSubstr(":3: column 4: expected a number"));
    std::filesystem::remove(path);
    EXPECT_THAT(messageOf([&] { ReadTableFile(path.string()); }), testing::HasSubstr("No such file"));
}

TEST(Table, GivesTheRowsOfEachGroupWithTheirLines)
{
    Table const table = ReadWell("day,town,v,k\n1,Rome,10,7\n2,Oslo,20,8.5\n\n3,Rome,,7\n4,,40,\n");
    auto const describe = [](std::vector<TableGroup> const& groups) {
        std::string text;
        for (TableGroup const& group : groups) {
            text += group.name + ":";
            for (std::size_t row = 0; row < group.rows.rows; ++row)
                text += " " + std::to_string(group.rows.LineOf(row)) + "/"
                    + std::to_string(static_cast<int>(group.rows.Values("day")[row])) + "/"
                    + group.rows.Column("town").texts[row];
            text += " " + std::to_string(group.rows.Column("v").gaps) + std::to_string(group.rows.Column("town").gaps)
                + "; ";
        }
        return text;
    };
    EXPECT_EQ(describe(table.GroupBy("town")), "Rome: 2/1/Rome 5/3/Rome 10; Oslo: 3/2/Oslo 00; : 6/4/ 01; ");
    EXPECT_EQ(describe(table.GroupBy("k")), "7: 2/1/Rome 5/3/Rome 10; 8.5: 3/2/Oslo 00; : 6/4/ 01; ");
    EXPECT_THAT(table.GroupBy(1)[0].rows.Values("v"), testing::ElementsAre(10.0, testing::IsNan()));

    TableOptions sparing;
    sparing.texts = false;
    EXPECT_THROW((void)ReadWell("town,v\nRome,1\n", sparing).GroupBy("town"), TableReadError);
    std::string many = "g\n";
    for (int i = 0; i < 1000; ++i)
        many += "w" + std::to_string(i) + "\n";
    EXPECT_EQ(ReadWell(many).GroupBy("g").size(), 1000U);
    EXPECT_THROW((void)ReadWell(many + "x\n").GroupBy("g"), TableReadError);
}

TEST(TableReader, ReadsUpToItsLimitsAndNoFurther)
{
    std::string const widest(16383, ',');
    EXPECT_EQ(ReadWell(widest + "1\n" + widest + "2\n").columns.size(), 16384U);
    EXPECT_EQ(ReadBadly(widest + ",1\n").found, "more");
    std::string const longest(std::size_t { 1 } << 20, ' ');
    for (std::string const& start : { "a\n"s, "a\r\n"s, "# c\na\n"s + std::string(200, '\n') }) {
        EXPECT_EQ(ReadWell(start + "1" + longest.substr(1) + "\n2").rows, 2U);
        EXPECT_EQ(ReadBadly(start + "1" + longest + "\n2").line,
            static_cast<std::size_t>(std::count(start.begin(), start.end(), '\n') + 1));
    }
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

} // namespace
} // namespace ombrel
