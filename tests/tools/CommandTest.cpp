#include "tests/tools/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

namespace ombrel::host {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;
using namespace std::literals;

/// Runs the program as it was built, in a folder of the test's own.
class Command : public testing::Test {
protected:
    struct Result {
        int status;
        std::string output;
        std::string errors;
    };

    /// arguments in the shell's words; environment as NAME=VALUE words.
    Result Run(std::string const& arguments, std::string const& environment = "") const
    {
        std::string const line = "cd '" + m_files.In("") + "' && env " + environment + " '" OMBREL_PROGRAM "' "
            + arguments + " >'" + m_streams.In("out") + "' 2>'" + m_streams.In("err") + "'";
        int const status = std::system(line.c_str());
        return { WIFEXITED(status) ? WEXITSTATUS(status) : -1, m_streams.Read("out"), m_streams.Read("err") };
    }
    /// What it tells when nothing goes wrong.
    std::string RunWell(std::string const& arguments, std::string const& environment = "") const
    {
        Result const result = Run(arguments, environment);
        EXPECT_EQ(result.status, 0) << arguments << ": " << result.errors;
        return result.output + result.errors;
    }
    void ExpectSame(std::string const& name, std::string const& other) const
    {
        EXPECT_TRUE(m_files.Read(name) == m_files.Read(other)) << name << " and " << other;
    }

    TestFolder m_files;

private:
    TestFolder m_streams;
};

constexpr auto kMonths = "Month,CO2,adjusted\n2019-01-01,410.8,410.5\n2019-02-01,411.7,411\n2019-03-01,,411.4\n"
                         "2019-04-01,413.3,411.7\n2020-03-01,414.5,413.2\n"sv;

TEST_F(Command, WritesEveryFormatAndNothingElse)
{
    m_files.Write("co2.csv", kMonths);
    for (auto const& [format, start] : { std::pair("png", "\x89PNG\r\n"), std::pair("bmp", "BM"),
             std::pair("pdf", "%PDF-"), std::pair("svg", "<?xml"), std::pair("ps", "%!PS-Adobe") }) {
        std::string const name = "out."s + format;
        EXPECT_EQ(RunWell("plot co2.csv -o " + name), "");
        EXPECT_THAT(m_files.Read(name), StartsWith(start));
        EXPECT_TRUE(RunWell("plot - -o - --format "s + format + " < co2.csv") == m_files.Read(name)) << format;
    }
    RunWell("co2.csv");
    RunWell("plot ./co2.csv --format svg");
    EXPECT_THAT(m_files.List(),
        testing::ElementsAre("co2.csv", "co2.png", "co2.svg", "out.bmp", "out.pdf", "out.png", "out.ps", "out.svg"));
    std::string const svg = m_files.Read("co2.svg");
    for (char const* const text : { ">Month<", ">CO2<", ">adjusted<", ">Jan 2020<", ">411<", ">414<" })
        EXPECT_THAT(svg, HasSubstr(text));
}

TEST_F(Command, GivesTheSameBytesWhateverTheClockAndTheLocaleSay)
{
    m_files.Write("co2.csv", kMonths);
    for (std::string const format : { "png", "pdf", "svg", "ps", "bmp" }) {
        std::string const arguments = "plot co2.csv --title 'CO2 <&> é' --save a.doc -o a." + format;
        RunWell(arguments, "TZ=UTC LC_ALL=C");
        std::filesystem::rename(m_files.In("a." + format), m_files.In("b." + format));
        std::filesystem::rename(m_files.In("a.doc"), m_files.In("b.doc"));
        RunWell(arguments, "TZ=Asia/Tokyo LC_ALL=de_DE.UTF-8 LANG=de_DE.UTF-8");
        ExpectSame("a." + format, "b." + format);
        ExpectSame("a.doc", "b.doc");
    }
    RunWell("plot co2.csv -o b.pdf", "SOURCE_DATE_EPOCH=86400");
    RunWell("plot co2.csv -o c.pdf");
    EXPECT_TRUE(m_files.Read("b.pdf") != m_files.Read("c.pdf"));
    RunWell("plot co2.csv --title Air -o b.ps", "SOURCE_DATE_EPOCH=86400");
    EXPECT_THAT(m_files.Read("b.pdf"), HasSubstr("/CreationDate (19700102000000Z)"));
    EXPECT_THAT(m_files.Read("b.ps"),
        AllOf(HasSubstr("\n%%CreationDate: 1970-01-02T00:00:00Z\n"), HasSubstr("\n%%Title: Air\n")));
}

TEST_F(Command, TellsWhichMarksOfAPageAreNoShapesAndKeepsThemWhenAskedTo)
{
    m_files.Write("same.csv", "x,y\n1,2\n1,2\n1,2\n3,4\n");
    std::string many = "x,y\n";
    for (int i = 0; i < 15000; ++i)
        many += std::to_string(i % 150) + "," + std::to_string(i / 150) + "\n";
    m_files.Write("many.csv", many);
    std::string const draw = "plot --kind points -v -o p.svg ";
    EXPECT_THAT(RunWell(draw + "same.csv"), HasSubstr("p.svg: 2 marks hidden by others are left out (--vector all"));
    EXPECT_THAT(
        RunWell(draw + "many.csv"), HasSubstr("p.svg: 15000 marks are part of an image of 600 dots per inch (--vec"));
    for (std::string const name : { "same.csv", "many.csv" })
        EXPECT_THAT(RunWell(draw + "--vector all " + name), Not(HasSubstr("marks"))) << name;
    EXPECT_EQ(Run("plot many.csv --vector auto -o p.png").status, 2);
}

TEST_F(Command, WritesSeveralFilesFromOneReading)
{
    m_files.Write("co2.csv", kMonths);
    m_files.Write("z.csv", "1,2,3\n4,5,6\n7,9,8\n");
    for (std::string const draw : { "plot co2.csv --title Air", "contour z.csv", "surface z.csv" }) {
        SCOPED_TRACE(draw);
        // Standard input is read once only.
        std::string const file = draw.find("co2") == std::string::npos ? "z.csv" : "co2.csv";
        std::string piped = draw;
        piped.replace(draw.find(file), file.size(), "-");
        RunWell(piped.append(" -o a.png -o a.svg --size 300x200 -o a.ombrel -o a.pdf < ").append(file));
        RunWell(draw + " --size 300x200 -o b.png --save b.ombrel");
        RunWell(draw + " --size 300x200 -o c.ombrel");
        RunWell(draw + " -o b.svg");
        RunWell(draw + " -o b.pdf");
        for (std::string const ending : { ".png", ".svg", ".pdf", ".ombrel" })
            EXPECT_TRUE(m_files.Read('a' + ending) == m_files.Read('b' + ending)) << ending;
        ExpectSame("c.ombrel", "b.ombrel");
        RunWell("draw b.ombrel --size 300x200 -o c.png -o d.ombrel -o c.svg");
        ExpectSame("c.png", "b.png");
        ExpectSame("d.ombrel", "b.ombrel");
    }
    // One that cannot be written does not keep the others from being, and nothing is when the data is at fault.
    Result const partly = Run("plot co2.csv -o nowhere/a.png -o new.png -o nowhere/b.png");
    EXPECT_EQ(partly.status, 1);
    EXPECT_THAT(partly.errors, AllOf(HasSubstr("nowhere/a.png: cannot be"), HasSubstr("nowhere/b.png: cannot be")));
    EXPECT_THAT(m_files.Read("new.png"), StartsWith("\x89PNG"));
    std::string const before = m_files.Read("a.png");
    EXPECT_EQ(Run("plot co2.csv --y-range 1:0 -o a.png -o other.png").status, 2);
    EXPECT_EQ(Run("plot co2.csv -o other.png -o a.png -o other.png").status, 2);
    EXPECT_TRUE(m_files.Read("a.png") == before);
    EXPECT_THAT(m_files.List(), Not(testing::Contains("other.png")));
}

TEST_F(Command, PutsSeveralFilesInOneGraph)
{
    m_files.Write("a.csv", "t,v\n1,2\n2,3\n");
    m_files.Write("b.tsv", "t\tv\n5\t20\n7\t30\n");
    RunWell("plot a.csv b.tsv -o x.png --save x.doc");
    EXPECT_THAT(RunWell("info x.doc"),
        AllOf(HasSubstr("title \"a: v\", 2 points"), HasSubstr("title \"b: v\", 2 points"), HasSubstr("x 1 to 7")));
}

TEST_F(Command, LeavesEarlierFilesAloneWhenSomethingIsWrong)
{
    m_files.Write("good.csv", kMonths);
    m_files.Write("wide.csv", "x,y\n1,2\n2,3,4\n");
    m_files.Write("broken.doc", "\xFF\xFF\x01\0\x08\0C2DGraph\x01\0"sv);
    m_files.Write("earlier.png", "earlier");
    for (auto const& [arguments, status] :
        { std::pair("plot wide.csv", 1), std::pair("draw broken.doc", 1), std::pair("plot good.csv --log x", 2),
            std::pair("plot good.csv --x-range 2030:2040", 1), std::pair("plot - - < good.csv", 2) }) {
        Result const result = Run(arguments + " -o earlier.png"s);
        EXPECT_EQ(result.status, status) << arguments;
        EXPECT_THAT(result.errors, MatchesRegex("ombrel: [^\n]*\n"));
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(m_files.Read("earlier.png"), "earlier");
    EXPECT_EQ(m_files.Read("good.csv"), kMonths);
    EXPECT_EQ(m_files.List().size(), 4u) << "something was left behind";
}

TEST_F(Command, DocumentsKeepTheGraphAndTheirBytes)
{
    m_files.Write("xy.csv", "x,y,z\n1,2,3\n2,4,1\n3,3,2\n");
    for (char const* const options : { "--symbols", "--kind bar", "--kind stacked", "--kind area", "--kind histogram",
             "--kind points --error 3 -y 2", "--polar", "--kind text --label 1 -x 0",
             "--theme dark --caption A@0.2,0.2" }) {
        SCOPED_TRACE(options);
        RunWell("plot xy.csv -o a.png --save a.doc --title Air "s + options);
        RunWell("draw a.doc -o b.png --save b.doc");
        ExpectSame("a.png", "b.png");
        ExpectSame("a.doc", "b.doc");
    }
    // At another size and on a page the document stays what it is.
    RunWell("b.doc --page A5 -o b.pdf --save c.doc");
    ExpectSame("a.doc", "c.doc");
    // Its title is in the middle there, too.
    m_files.Write("one.csv", "x,y\n1,2\n2,3\n");
    RunWell("plot one.csv --title Air -o wide.svg --save a1.doc");
    RunWell("plot one.csv --title Air --page 100x200 -o plot.svg");
    RunWell("a1.doc --page 100x200 -o draw.svg");
    auto const titleAt = [this](char const* name) {
        std::string const page = m_files.Read(name);
        return std::stod(page.substr(page.rfind("x=\"", page.find(">Air</text>")) + 3));
    };
    EXPECT_NEAR(titleAt("draw.svg"), titleAt("plot.svg"), 15.0);
    RunWell("draw - -o d.png < a.doc");
    ExpectSame("a.png", "d.png");
}

TEST_F(Command, ConvertsDocumentsToTheNewestLayoutAndToTables)
{
    m_files.Write("co2.csv", kMonths);
    RunWell("plot co2.csv -o a.ombrel");
    // A plot of the table is the plot that the table was made from.
    RunWell("convert a.ombrel -o b.ombrel -o b.csv");
    ExpectSame("a.ombrel", "b.ombrel");
    ExpectSame("b.csv", "co2.csv");
    EXPECT_EQ(RunWell("convert - < a.ombrel"), m_files.Read("b.csv"));
    std::string const before = m_files.Read("a.ombrel");
    struct {
        char const* arguments;
        int status;
        char const* message;
    } const cases[] {
        { "convert co2.csv -o c.ombrel", 1, "co2.csv: is not a graph document" },
        { "convert a.ombrel -o c.png", 2, "expected .ombrel or .csv" },
        { "convert a.ombrel -o a.ombrel", 2, "would be written over the input" },
        { "convert a.ombrel b.ombrel", 2, "expected one document, found 2" },
    };
    for (auto const& c : cases) {
        Result const result = Run(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_THAT(result.errors, HasSubstr(c.message));
    }
    EXPECT_TRUE(m_files.Read("a.ombrel") == before);
}

TEST_F(Command, ReadsTheContentsOfAGraphWithoutItsReferenceAndNothingDamaged)
{
    m_files.Write("t.csv", "x,y\n1,2\n2,3\n");
    RunWell("plot t.csv -o a.png --save a.doc");
    std::string const document = m_files.Read("a.doc");
    // The reference to a new object of a new class: a mark, schema, length and name. With one curve no class occurs
    // twice, so nothing behind it counts on its place in the archive.
    std::string_view const name = "C2DGraph";
    ASSERT_EQ(document.substr(6, name.size()), name);
    m_files.Write("contents", document.substr(6 + name.size()));
    RunWell("draw contents --in-place C2DGraph -o b.png --save b.doc");
    ExpectSame("a.png", "b.png");
    ExpectSame("a.doc", "b.doc");
    RunWell("info contents --in-place C2DGraph");
    EXPECT_EQ(Run("draw contents -o b.png").status, 1);
    EXPECT_EQ(Run("draw contents --in-place CAxes -o b.png").status, 2);
    for (std::size_t size = 0; size < document.size(); size += 97) {
        m_files.Write("cut.doc", std::string_view(document).substr(0, size));
        Result const result = Run("draw cut.doc -o cut.png");
        EXPECT_EQ(result.status, 1) << size;
        EXPECT_THAT(result.errors, HasSubstr("cut.doc: ")) << size;
    }
    EXPECT_THAT(m_files.List(), Not(testing::Contains("cut.png")));
    m_files.Write("long.doc", document + "more");
    EXPECT_THAT(RunWell("draw long.doc"), HasSubstr("4 bytes after the graph"));
}

TEST_F(Command, WatchesItsInputUntilItIsInterrupted)
{
    m_files.Write("t.csv", "x,y\n1,2\n2,3\n");
    // Waits for each step to show, ten seconds at most. Jobs in the background ignore interrupts otherwise.
    m_files.Write("steps", R"(
        waitFor() { n=0; until eval "$1"; do n=$((n + 1)); [ $n -lt 500 ] || { echo "waited for: $1"; break; }; sleep 0.02; done; }
        has() { grep -q ">$1<" a.svg 2>/dev/null; }
        env --default-signal=INT ")" OMBREL_PROGRAM R"(" plot t.csv -o a.svg --watch 2>told &
        job=$!
        waitFor 'has y'
        printf 'x,replaced\n1,2\n2,3\n' >new; mv new t.csv
        waitFor 'has replaced'
        printf 'x,written\n1,2\n2,5\n' >t.csv
        waitFor 'has written'
        printf 'x,broken\n1,2\n2,z\n' >t.csv
        waitFor 'grep -q z told'
        has written || echo 'the picture is gone'
        rm t.csv
        (printf 'x,kept\n1,2\n'; waitFor 'has kept'; printf '2,3\n') >t.csv
        waitFor 'has kept'
        kill -INT $job; wait $job; echo "status $?"
    )");
    EXPECT_EQ(std::system(("cd '" + m_files.In("") + "' && sh steps >out 2>&1").c_str()), 0);
    EXPECT_EQ(m_files.Read("out"), "status 0\n");
    EXPECT_THAT(m_files.Read("told"), HasSubstr("t.csv:3: column 2: expected a number"));
    EXPECT_EQ(Run("plot - --watch -o b.svg < t.csv").status, 2);
    EXPECT_EQ(Run("plot t.csv --watch --kind nothing -o b.svg").status, 2);
    EXPECT_EQ(Run("plot t.csv --watch -y nothing -o b.svg").status, 2);
}

TEST_F(Command, PrintsHelpVersionAndColourMapsOnStandardOutput)
{
    for (char const* const arguments : { "--help", "-h", "plot --help", "draw --help", "info -h" })
        EXPECT_THAT(Run(arguments).output, HasSubstr("Usage:")) << arguments;
    EXPECT_THAT(RunWell("--version"), StartsWith("ombrel "));
    EXPECT_THAT(RunWell("colours"), HasSubstr("\nviridis            installed  256     S. van der Walt"));
    EXPECT_EQ(Run("").status, 2);
}

} // namespace
} // namespace ombrel::host
