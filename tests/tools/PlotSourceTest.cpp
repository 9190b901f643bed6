#include "tools/ombrel/commands/PlotSource.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/SourceSeries.h"
#include "tools/ombrel/options/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace ombrel::host {
namespace {

class PlotSources : public testing::Test {
protected:
    /// options as on the command line; m_told gets what standard error gets, without the file's path.
    std::vector<PlotSource> Read(std::string_view text, std::vector<std::string> options)
    {
        m_folder.Write("t", text);
        options.insert(options.begin(), "plot");
        testing::internal::CaptureStderr();
        std::string const path = m_folder.In("t");
        std::vector<PlotSource> sources;
        m_told.clear();
        try {
            InputFile file(path);
            Options const parsed = ParseOptions(options);
            sources = ReadPlotSources(parsed, file, Messages(parsed.verbose));
        } catch (Failure const& failure) {
            m_told = failure.what();
        }
        m_told += testing::internal::GetCapturedStderr();
        for (auto at = m_told.find(path); at != std::string::npos; at = m_told.find(path))
            m_told.replace(at, path.size(), "t");
        return sources;
    }

    std::string m_told;

private:
    TestFolder m_folder;
};

/// "1 2 NA" of a column.
std::string ValuesOf(PlotSource const& source, std::size_t column)
{
    std::string text;
    source.table.columns[column].values.ForEach(
        [&text](double v) { text += (text.empty() ? "" : " ") + (std::isnan(v) ? "NA" : NumberText(v)); });
    return text;
}

/// Of each source its x values or words, and the values of its y columns.
std::string Describe(std::vector<PlotSource> const& sources)
{
    std::string text;
    for (PlotSource const& source : sources) {
        text += text.empty() ? "" : "; ";
        if (source.xColumn == PlotSource::kRowNumbers)
            text += "rows";
        else if (!source.HasWords())
            text += ValuesOf(source, source.xColumn);
        else
            for (std::string const& word : source.table.columns[source.xColumn].texts)
                text += word + ",";
        for (std::size_t const column : source.yColumns)
            text += " | " + ValuesOf(source, column);
    }
    return text;
}

TEST_F(PlotSources, AreTheColumnsAskedForOrThoseThatFit)
{
    constexpr auto kTable = "word,a,b,c\nx,1,2,3\ny,4,,6\n";
    struct {
        char const* text;
        std::vector<std::string> options;
        char const* found;
    } const cases[] {
        { kTable, {}, "x,y, | 1 4 | 2 NA | 3 6" },
        { kTable, { "-y", "c,2" }, "x,y, | 3 6 | 1 4" },
        { kTable, { "-x", "b", "-y", "3" }, "2 NA | 2 NA" },
        { kTable, { "--kind", "histogram", "-y", "c" }, "rows | 3 6" },
        // The first column that is nothing else is x, and is read, whatever was asked for.
        { kTable, { "--kind", "text", "--label", "1", "-y", "c" }, "1 4 | 3 6" },
        { kTable, { "--kind", "error", "--label", "word", "--error", "a", "-y", "c" }, "2 NA | 3 6" },
        { "1,2,3\n7,8,9\n", { "--header", "yes", "-y", "3" }, "7 | 9" },
        { "7,1,3\n7,8,9\n", { "--header", "yes", "-y", "3" }, "7 | 9" },
        { "a\n5\n6\n", {}, "rows | 5 6" },
        { "a,b\n5,1\n6,2\n", { "-y", "1" }, "rows | 5 6" },
        { "7,31.03.2020\n8,01.04.2020\n", { "-x", "2", "--date-format", "%d.%m.%Y" }, "43921 43922 | 7 8" },
    };
    for (auto const& c : cases) {
        EXPECT_EQ(Describe(Read(c.text, c.options)), c.found) << c.text << testing::PrintToString(c.options);
        EXPECT_EQ(m_told, "");
    }
}

TEST_F(PlotSources, OfGroupsHaveTheirRowsInTheOrderOfTheWords)
{
    constexpr auto kLong = "year,town,v\n1,Rome,10\n2,Rome,20\n\n1,Oslo,30\n3,Oslo,40\n2,,50\n";
    constexpr auto kWords = "town,month,v,e\nRome,May,1,.1\nRome,June,2,.2\nOslo,June,3,.3\nOslo,July,4,.4\n";
    struct {
        char const* text;
        std::vector<std::string> options;
        char const* found;
        std::vector<std::string> titles;
    } const cases[] {
        { kLong, {}, "1 2 | 10 20; 1 3 | 30 40; 2 | 50", { "Rome", "Oslo", "(none)" } },
        { kLong, { "-x", "v", "-y", "year,v" }, "10 20 | 1 2 | 10 20; 30 40 | 1 3 | 30 40; 50 | 2 | 50",
            { "Rome, year", "Rome, v", "Oslo, year", "Oslo, v", "(none), year", "(none), v" } },
        { kLong, { "--kind", "bar", "-x", "0" }, "rows | 1 2 | 10 20; rows | 1 3 | 30 40; rows | 2 | 50", {} },
        { kWords, { "-y", "v" }, "May,June, | 1 2; June,July, | 3 4", { "Rome", "Oslo" } },
        { "x,k,y\n1,7,1\n2,7.0,2\n3,7,3\n", { "--by", "k" }, "1 3 | 1 3; 2 | 2", { "7", "7.0" } },
    };
    for (auto const& c : cases) {
        std::vector<std::string> options = c.options;
        if (std::find(options.begin(), options.end(), "--by") == options.end())
            options.insert(options.end(), { "--by", "town" });
        std::vector<PlotSource> const sources = Read(c.text, options);
        EXPECT_EQ(Describe(sources), c.found) << testing::PrintToString(c.options);
        EXPECT_TRUE(c.titles.empty() || CurveTitles(sources) == c.titles)
            << testing::PrintToString(CurveTitles(sources));
        EXPECT_EQ(m_told, "");
    }
    std::vector<PlotSource> const sources
        = Read(kWords, { "--by", "town", "-y", "v", "--error", "e", "--kind", "points" });
    EXPECT_EQ(ValuesOf(sources[1], sources[1].errorColumns[0]), "0.3 0.4");
    EXPECT_EQ(sources[1].PlaceOf(1).substr(sources[1].table.name.size()), ":5: ");
    EXPECT_EQ(Read(kLong, { "--by", "town" })[1].table.LineOf(1), 6U);

    std::string many = "x,g,y\n";
    for (int i = 0; i < 1001; ++i)
        many += "1," + std::to_string(i) + ",1\n";
    Read(many, { "--by", "g" });
    EXPECT_EQ(m_told, "t:1002: column 2 (g): expected at most 1000 groups, found one more: \"1000\"");
}

TEST_F(PlotSources, ThatLookLikeGroupsAreWarnedOf)
{
    struct {
        char const* text;
        std::vector<std::string> options;
        char const* warning;
    } const cases[] {
        { "x,y\n1,1\n2,2\n1,3\n2,4\n1,5\n2,6\n", { "--kind", "line" },
            "t:4: x runs backwards here and 1 time more, and rows are joined; --by COL makes a curve of each group" },
        { "x,g,y\n1,a,1\n2,a,2\n1,b,3\n2,b,4\n", { "--kind", "steps" },
            "t:4: x begins anew here, and rows are joined; --by COL makes a curve of each group, perhaps by column 2 "
            "(g)" },
        { "x,g,y\n1,a,1\n1,b,2\n2,a,3\n2,b,4\n", {},
            "t:2: most x values stand in several rows; points are drawn, and --kind line joins them; --by COL makes a "
            "curve of each group, perhaps by column 2 (g)" },
        { "x,y\n1,1\n2,2\n1,3\n2,4\n", { "--kind", "area" },
            "t:2: most x values stand in several rows, and rows are joined; --by COL makes a curve of each group" },
        { "g,m,y\na,May,1\na,June,2\nb,May,3\n", { "--line-width", "1" },
            "t:3: \"a\" stands along x again (line 2 has it), and rows are joined; --by COL makes a curve of each "
            "group, perhaps by column 1 (g)" },
        { "x,g,y\n1,a,1\n1,b,1\n2,b,2\n1,b,3\n2,b,2\n1,b,3\n2,b,2\n", { "--by", "g", "--kind", "line" },
            "t:5: group \"b\": x runs backwards here and 1 time more, and rows are joined" },
        // Nothing is joined, or rows go back on purpose.
        { "x,y\n1,1\n2,2\n1,3\n2,4\n", { "--kind", "points" }, nullptr },
        { "x,y\n1,1\n2,2\n1,3\n2,4\n", { "--polar" }, nullptr },
        { "x,y\n1,1\n2,2\n1,3\n2,4\n", { "-x", "0" }, nullptr },
        { "x,y\n0,0\n0,1\n1,1\n1,0\n0,0\n", {}, nullptr },
        { "g,y\na,1\nb,2\n,3\n,4\n", {}, nullptr },
        // Points hide nothing.
        { "x,y\n3,1\n1,2\n2,3\n1,4\n", {}, nullptr },
    };
    for (auto const& c : cases) {
        Read(c.text, c.options);
        EXPECT_EQ(m_told, c.warning ? "ombrel: warning: " + std::string(c.warning) + "\n" : "") << c.text;
    }
}

TEST_F(PlotSources, AreDrawnAsPointsWhereALineWouldGoBackAndForth)
{
    constexpr auto kMixed = "x,y\n3,1\n1,2\n2,3\n1,4\n";
    struct {
        char const* text;
        std::vector<std::string> options;
        bool isMixed;
    } const cases[] {
        { kMixed, {}, true },
        { kMixed, { "--kind", "line" }, false },
        { kMixed, { "--line-width", "2" }, false },
        { kMixed, { "--polar" }, false },
        { kMixed, { "-x", "0" }, false },
        { "x,y\n4,1\n3,2\n3,3\n1,4\n", {}, false },
        { "x,y\n0,0\n0,1\n1,1\n1,0\n0,0\n", {}, false },
        { "w,y\na,1\nb,2\na,3\n", {}, true },
        { "w,y\na,1\nb,2\n", {}, false },
        // One group is enough, since all are to look alike.
        { "x,g,y\n1,a,1\n2,a,2\n5,b,1\n3,b,2\n4,b,3\n2,b,2\n", { "--by", "g" }, true },
    };
    for (auto const& c : cases) {
        for (PlotSource const& source : Read(c.text, c.options))
            EXPECT_EQ(source.isMixed, c.isMixed) << c.text << testing::PrintToString(c.options);
    }
    Read(kMixed, { "-v" });
    EXPECT_THAT(m_told,
        testing::HasSubstr("t:2: x values neither rise nor fall; points are drawn, and --kind line joins them; --by "));
}

} // namespace
} // namespace ombrel::host
