#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using namespace std::literals;

std::string ReadFile(fs::path const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

/// Runs the program as it was built, in a folder of the test's own.
class Command : public testing::Test {
protected:
    struct Result {
        int status;
        std::string output;
        std::string errors;
    };

    Command()
    {
        std::string pattern = (fs::temp_directory_path() / "ombrel-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
    }
    ~Command() override { fs::remove_all(m_folder); }

    fs::path In(std::string const& name) const { return m_folder / "files" / name; }
    void Write(std::string const& name, std::string_view text) const
    {
        fs::create_directories(m_folder / "files");
        std::ofstream(In(name), std::ios::binary) << text;
    }
    /// arguments in the shell's words; environment as NAME=VALUE words.
    Result Run(std::string const& arguments, std::string const& environment = "") const
    {
        fs::create_directories(m_folder / "files");
        std::string const out = (m_folder / "out").string();
        std::string const err = (m_folder / "err").string();
        std::string const line = "cd '" + (m_folder / "files").string() + "' && env " + environment
            + " '" OMBREL_PROGRAM "' " + arguments + " >'" + out + "' 2>'" + err + "'";
        int const status = std::system(line.c_str());
        return { WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err) };
    }
    std::vector<std::string> Files() const
    {
        std::vector<std::string> names;
        for (auto const& entry : fs::directory_iterator(m_folder / "files"))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    fs::path m_folder;
};

constexpr auto kMonths = "Month,CO2,adjusted\n2019-01-01,410.8,410.5\n2019-02-01,411.7,411.0\n2019-03-01,,411.4\n"
                         "2019-04-01,413.3,411.7\n2020-03-01,414.5,413.2\n"sv;

TEST_F(Command, WritesEveryFormatAndNothingElse)
{
    Write("co2.csv", kMonths);
    struct {
        char const* format;
        std::string_view start;
    } const cases[] { { "png", "\x89PNG\r\n" }, { "bmp", "BM" }, { "pdf", "%PDF-" }, { "svg", "<?xml" },
        { "ps", "%!PS-Adobe" } };
    for (auto const& c : cases) {
        std::string const name = "out."s + c.format;
        Result const written = Run("plot co2.csv -o " + name);
        EXPECT_EQ(written.status, 0) << written.errors;
        EXPECT_EQ(written.output + written.errors, "");
        std::string const bytes = ReadFile(In(name));
        EXPECT_EQ(bytes.substr(0, c.start.size()), c.start);
        Result const piped = Run("plot - -o - --format "s + c.format + " < co2.csv");
        EXPECT_EQ(piped.status, 0);
        EXPECT_TRUE(piped.output == bytes) << c.format << " differs on standard output";
    }
    EXPECT_EQ(Run("co2.csv").status, 0);
    EXPECT_EQ(Run("plot ../files/co2.csv --format svg").status, 0);
    EXPECT_EQ(Files(),
        (std::vector<std::string> {
            "co2.csv", "co2.png", "co2.svg", "out.bmp", "out.pdf", "out.png", "out.ps", "out.svg" }));
}

TEST_F(Command, GivesTheSameBytesWhateverTheClockAndTheLocaleSay)
{
    Write("co2.csv", kMonths);
    for (char const* const name : { "a.png", "a.pdf", "a.svg", "a.ps", "a.bmp" }) {
        std::string const arguments = "plot co2.csv --title 'CO2 <&> é' -o "s + name + " --save a.doc";
        ASSERT_EQ(Run(arguments, "TZ=UTC LC_ALL=C").status, 0);
        std::string const bytes = ReadFile(In(name));
        std::string const document = ReadFile(In("a.doc"));
        ASSERT_EQ(Run(arguments, "TZ=Asia/Tokyo LC_ALL=de_DE.UTF-8 LANG=de_DE.UTF-8").status, 0);
        EXPECT_TRUE(ReadFile(In(name)) == bytes) << name;
        EXPECT_TRUE(ReadFile(In("a.doc")) == document) << name;
    }
    ASSERT_EQ(Run("plot co2.csv -o b.pdf", "SOURCE_DATE_EPOCH=86400").status, 0);
    ASSERT_EQ(Run("plot co2.csv -o c.pdf").status, 0);
    EXPECT_TRUE(ReadFile(In("b.pdf")) != ReadFile(In("c.pdf")));
}

TEST_F(Command, NamesAxesAndCurvesFromTheHeader)
{
    Write("co2.csv", kMonths);
    ASSERT_EQ(Run("plot co2.csv -o a.svg").status, 0);
    std::string const svg = ReadFile(In("a.svg"));
    for (char const* const text : { ">Month<", ">CO2<", ">adjusted<", ">Mar 2019<", ">411<", ">414<" })
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    ASSERT_EQ(Run("plot co2.csv --legend off -o a.svg").status, 0);
    EXPECT_NE(ReadFile(In("a.svg")).find(">CO2, adjusted<"), std::string::npos);
    ASSERT_EQ(
        Run("plot co2.csv -y adjusted --x-title when --y-title 'how much' --title Air -o a.svg --save a.doc").status,
        0);
    std::string const other = ReadFile(In("a.svg"));
    for (char const* const text : { ">when<", ">how much<", ">Air<" })
        EXPECT_NE(other.find(text), std::string::npos) << text;
    EXPECT_EQ(other.find(">CO2"), std::string::npos);
    Result const info = Run("info a.doc");
    EXPECT_NE(info.output.find("title \"adjusted\", 5 points"), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("1 curve"), std::string::npos) << info.output;
}

TEST_F(Command, PutsSeveralFilesInOneGraph)
{
    Write("a.csv", "t,v\n1,2\n2,3\n");
    Write("b.tsv", "t\tv\n5\t20\n7\t30\n");
    ASSERT_EQ(Run("plot a.csv b.tsv -o x.png --save x.doc").status, 0);
    std::string const info = Run("info x.doc").output;
    EXPECT_NE(info.find("title \"a: v\", 2 points"), std::string::npos) << info;
    EXPECT_NE(info.find("title \"b: v\", 2 points"), std::string::npos) << info;
    EXPECT_NE(info.find("x 1 to 7"), std::string::npos) << info;
    Write("c.csv", "t,v\n2020-01-01,1\n");
    Result const mixed = Run("plot a.csv c.csv -o x.png");
    EXPECT_EQ(mixed.status, 1);
    EXPECT_NE(mixed.errors.find("c.csv: expected numbers along x as in a.csv, found dates"), std::string::npos);
}

TEST_F(Command, TellsFaultsWithTheirPlaceAndLeavesEarlierFilesAlone)
{
    Write("good.csv", kMonths);
    Write("word.csv", "x,y\n1,2\n2,abc\n3,4\n4,5\n");
    Write("wide.csv", "x,y\n1,2\n2,3,4\n");
    Write("bars.csv", "x,y,z\n1,2,0\n# a remark\n2,3,1\n\n2,4,-1\n");
    Write("long.csv", "x,y\n1,0.5\n2,3\n");
    Write("word2.csv", "x,y\na,2\nb,3\n");
    Write("word3.csv", "x,y\na,2\nc,3\n");
    Write("foreign.doc", "\xFF\xFF\x01\0\x04\0CFoo\x01\0"sv);
    Write("broken.doc", "\xFF\xFF\x01\0\x08\0C2DGraph\x01\0"sv);
    struct {
        char const* arguments;
        int status;
        char const* text;
    } const cases[] {
        { "plot word.csv", 1, "word.csv:3: column 2: expected a number or a gap (empty, NA, NaN), found \"abc\"" },
        { "plot wide.csv", 1, "wide.csv:3: column 3: expected 2 cells as in the header" },
        { "plot nowhere.csv", 1, "nowhere.csv: cannot be opened: No such file" },
        { "plot .", 1, ".: is a directory" },
        { "plot good.csv -o nowhere/x.png", 1, "nowhere/x.png: cannot be written" },
        { "plot broken.doc", 1, "found a graph document" },
        { "draw broken.doc", 1, "broken.doc: is not a graph document: " },
        { "draw foreign.doc", 1, "foreign.doc: cannot be read: Archive, byte 10: unknown class CFoo." },
        { "draw good.csv", 1, "good.csv: is not a graph document: " },
        { "draw good.csv --in-place Nothing", 2, "--in-place: expected the class of a graph" },
        { "broken.doc --kind line", 2, "--kind is for tables" },
        { "plot good.csv -o x.gif", 2, "expected the extension" },
        { "plot good.csv -o good.csv --format png", 2, "over the input" },
        { "plot good.csv --save good.csv", 2, "over the input" },
        { "plot good.csv -o -", 2, "needs --format" },
        { "plot good.csv -o x.pdf --size 800x600", 2, "--page" },
        { "plot good.csv --page A4", 2, "--size" },
        { "plot good.csv --log x", 2, "the x values are dates" },
        { "plot good.csv --log y --y-range 1:10", 2, "logarithmic" },
        { "plot good.csv --y-range 9:1", 2, "A below B" },
        { "plot good.csv --x-range 2030:2040", 1, "outside of --x-range" },
        { "plot bars.csv --kind bar", 1,
            "bars.csv:6: expected one row for each x, since each has one bar, found 2 again "
            "(line 4 has it)" },
        { "plot word2.csv bars.csv --kind stacked", 1, "bars.csv: expected words along x as in word2.csv" },
        { "plot word2.csv word3.csv", 1,
            "word3.csv:3: expected the words along x of word2.csv, here \"b\", found \"c\"" },
        { "plot long.csv bars.csv --kind area", 1, "bars.csv: expected 2 rows as in long.csv, found 3" },
        { "plot long.csv --kind clustered --log y", 2, "stand on 1" },
        { "plot long.csv --polar --x-range 1:2", 2, "--x-range does nothing with --polar" },
        { "plot word2.csv --log x", 2, "the x values are words" },
        { "plot long.csv --palette nosuch", 2, "expected distinct, grey or a colour map" },
        { "plot", 2, "expected a FILE" },
        { "plot - - < good.csv", 2, "once only" },
    };
    Write("earlier.png", "earlier");
    for (auto const& c : cases) {
        bool const hasOutput = std::string_view(c.arguments).find("-o ") != std::string_view::npos
            || std::string_view(c.arguments).find('<') != std::string_view::npos;
        Result const result = Run(c.arguments + (hasOutput ? ""s : " -o earlier.png"s));
        EXPECT_EQ(result.status, c.status) << c.arguments << ": " << result.errors;
        EXPECT_NE(result.errors.find(c.text), std::string::npos) << c.arguments << ": " << result.errors;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_TRUE(result.errors.starts_with("ombrel: "));
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(ReadFile(In("earlier.png")), "earlier");
    EXPECT_EQ(ReadFile(In("good.csv")), kMonths);
    EXPECT_EQ(Files().size(), 10u) << "something was left behind";
}

TEST_F(Command, TellsWhatItAssumedAndWhatItLeftOut)
{
    Write("t.csv", "when;a;word\n2020-01-01T01:00+01:00;1,5;x\n2020-01-02;NA;y\n2020-01-03\n");
    Result const told = Run("plot t.csv -v");
    EXPECT_EQ(told.status, 0);
    for (char const* const text :
        { "separator \";\", decimal comma, names in the first row, 3 rows of 3 columns", "1 row has fewer cells",
            "1 date names an offset from UTC", "column 3 (word) holds texts such as \"x\"; not drawn",
            "x is column 1 (when) of dates; y is column 2 (a)", "column 2 (a): 2 gaps", "t.png: written, 1000 x 640" })
        EXPECT_NE(told.errors.find(text), std::string::npos) << text << "\n" << told.errors;
    EXPECT_EQ(Run("plot t.csv").errors, "");
    Write("log.csv", "x,y\n1,10\n2,0\n3,-4\n4,100\n");
    Result const logarithmic = Run("plot log.csv --log y");
    EXPECT_EQ(logarithmic.status, 0);
    EXPECT_NE(logarithmic.errors.find("warning: 2 values are not above zero"), std::string::npos);
    Write("empty.csv", "x,a,b\n1,2,\n2,3,\n4,,5\n");
    for (char const* const options : { "", "--kind clustered", "--kind area", "--kind histogram" })
        EXPECT_TRUE(
            Run("plot empty.csv -y a,b --x-range 1:3 "s + options)
                .errors.ends_with("warning: b: nothing is drawn: all values are gaps or outside of --x-range\n"))
            << options;
    EXPECT_NE(Run("plot empty.csv -y a --y-range 4:9").errors.find("all values, from 2 to 3, lie outside of --y-range"),
        std::string::npos);
    EXPECT_EQ(Run("plot empty.csv -y a --y-range 3:9").errors, "");
    Write("gaps.csv", "x,a,b\n1,2,3\n2,,1\n3,4,-1\n");
    Result const bands = Run("plot gaps.csv --kind area");
    EXPECT_NE(bands.errors.find("warning: 1 gap counts as 0"), std::string::npos) << bands.errors;
    EXPECT_NE(bands.errors.find("warning: 1 value is negative"), std::string::npos) << bands.errors;
    EXPECT_NE(
        Run("plot gaps.csv --kind bar -v").errors.find("2 columns: the bars stand side by side"), std::string::npos);
    Result const histogram = Run("plot gaps.csv --kind histogram -y a --bins 2 -v");
    EXPECT_NE(histogram.errors.find("2 values in 2 bins of 1 from 2 to 4; left out: 1 gap"), std::string::npos)
        << histogram.errors;
}

TEST_F(Command, DocumentsKeepTheGraphAndTheirBytes)
{
    Write("co2.csv", kMonths);
    Write("xy.csv", "x,y,z\n1,2,3\n2,4,1\n3,3,2\n");
    ASSERT_EQ(Run("plot co2.csv -o a.png --save a.doc --title Air --symbols").status, 0);
    ASSERT_EQ(Run("draw a.doc -o b.png --save b.doc").status, 0);
    EXPECT_TRUE(ReadFile(In("a.png")) == ReadFile(In("b.png")));
    EXPECT_TRUE(ReadFile(In("a.doc")) == ReadFile(In("b.doc")));
    // At another size and on a page the document stays what it is.
    ASSERT_EQ(Run("b.doc --page A5 -o b.pdf --save c.doc").status, 0);
    EXPECT_TRUE(ReadFile(In("a.doc")) == ReadFile(In("c.doc")));
    ASSERT_EQ(Run("draw - -o d.png < a.doc").status, 0);
    EXPECT_TRUE(ReadFile(In("a.png")) == ReadFile(In("d.png")));
    for (char const* const kind : { "bar", "stacked", "area", "histogram", "points --error 3 -y 2", "line --polar",
             "text --label 1 -x 0", "line --theme dark --caption A@0.2,0.2" }) {
        ASSERT_EQ(Run("plot xy.csv -o a.png --save a.doc --title Air --kind "s + kind).status, 0) << kind;
        ASSERT_EQ(Run("draw a.doc -o b.png --save b.doc").status, 0);
        EXPECT_TRUE(ReadFile(In("a.png")) == ReadFile(In("b.png"))) << kind;
        EXPECT_TRUE(ReadFile(In("a.doc")) == ReadFile(In("b.doc"))) << kind;
    }
}

TEST_F(Command, ReadsTheContentsOfAGraphWithoutItsReference)
{
    Write("t.csv", "x,y\n1,2\n2,3\n");
    ASSERT_EQ(Run("plot t.csv -o a.png --save a.doc").status, 0);
    std::string const document = ReadFile(In("a.doc"));
    // The reference to a new object of a new class: a mark, schema, length and name. With one curve no class occurs
    // twice, so nothing behind it counts on its place in the archive.
    std::string_view const name = "C2DGraph";
    ASSERT_EQ(document.substr(6, name.size()), name);
    Write("contents", document.substr(6 + name.size()));
    ASSERT_EQ(Run("draw contents --in-place C2DGraph -o b.png --save b.doc").status, 0);
    EXPECT_TRUE(ReadFile(In("a.png")) == ReadFile(In("b.png")));
    EXPECT_TRUE(ReadFile(In("b.doc")) == document);
    EXPECT_EQ(Run("info contents --in-place C2DGraph").status, 0);
    EXPECT_EQ(Run("draw contents -o b.png").status, 1);
    EXPECT_EQ(Run("draw contents --in-place CAxes -o b.png").status, 2);
}

TEST_F(Command, RefusesDamagedDocuments)
{
    Write("t.csv", "x,y\n1,2\n2,3\n");
    ASSERT_EQ(Run("plot t.csv -o a.png --save a.doc").status, 0);
    std::string const document = ReadFile(In("a.doc"));
    for (std::size_t size = 0; size < document.size(); size += 97) {
        Write("cut.doc", std::string_view(document).substr(0, size));
        Result const result = Run("draw cut.doc -o cut.png");
        EXPECT_EQ(result.status, 1) << size;
        EXPECT_NE(result.errors.find("cut.doc: "), std::string::npos) << size;
    }
    EXPECT_FALSE(fs::exists(In("cut.png")));
    Write("long.doc", document + "more");
    Result const result = Run("draw long.doc");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.errors.find("4 bytes after the graph"), std::string::npos);
}

TEST_F(Command, InfoDescribesTables)
{
    Write("t.csv", "when,°C,word\n2020-01-01,1.5,x\n2020-01-03,,y\n");
    Result const result = Run("info t.csv");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
        "t.csv: table of 2 rows and 3 columns; separator \",\", decimal point, with names\n"
        "  column  name  type     gaps  range\n"
        "  1       when  dates    0     2020-01-01 to 2020-01-03\n"
        "  2       °C    numbers  1     1.5 to 1.5\n"
        "  3       word  texts    0\n");
    EXPECT_TRUE(Run("info t.csv --header no").output.starts_with("t.csv: table of 3 rows and 3 columns; separator"));
    Write("bad.csv", "x,y\n1,2\n2,3\n3,oops\n");
    Result const bad = Run("info bad.csv");
    EXPECT_EQ(bad.status, 0);
    EXPECT_NE(bad.output.find("line 4 holds \"oops\""), std::string::npos) << bad.output;
}

TEST_F(Command, PrintsHelpAndVersionOnStandardOutput)
{
    for (char const* const arguments : { "--help", "-h", "plot --help", "draw --help", "info -h" }) {
        Result const result = Run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_NE(result.output.find("Usage:"), std::string::npos);
        EXPECT_EQ(result.errors, "");
    }
    EXPECT_TRUE(Run("--version").output.starts_with("ombrel "));
    EXPECT_EQ(Run("").status, 2);
}

} // namespace
