#include "ombrel/io/ZValsFile.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/model/TableData.h"
#include "tests/io/DataFile.h"
#include "tests/model/ArchiveBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::DataFile;
using test::Load;
using test::Stored;
using testing::ElementsAre;
using testing::HasSubstr;
using Rows = std::vector<std::vector<double>>;

/// Remembers what it was told.
struct Owner : ZValsOwner {
    void PlaceZVals(double x, double y, double dx, double dy) override { place = { x, y, dx, dy }; }
    void SetZValsCurveType(int type) override { curveType = type; }
    void SetZValsRadialGrid(int on) override { radial = on; }
    CTableData& GetZValsTable() override { return table; }
    void SetZValsRead() override { ++timesRead; }

    Rows GetRows() const
    {
        Rows rows;
        for (int r = 0; r < table.GetNumRows(); ++r)
            rows.emplace_back(table[r], table[r] + table.GetNumCols());
        return rows;
    }

    CTableData table { 5, 7 };
    std::vector<double> place;
    int curveType = -1;
    int radial = -1;
    int timesRead = 0;
};

struct Result {
    Owner owner;
    CZValsFile file;
    /// Of the exception, when there was one; its fixed message.
    CString message;
    std::string what;
};

void Read(std::string const& text, Result& result)
{
    DataFile const data("grid.tvl", text);
    result.file.SetOwner(&result.owner);
    try {
        result.file.Read(data.GetPath());
    } catch (CException* e) {
        result.message = e->GetErrorMessage();
        result.what = e->AsError().what();
        e->Delete();
    }
}

TEST(ZValsFile, LinesRunAlongYOrAlongXAndEitherWay)
{
    struct Case {
        char const* header;
        std::vector<double> place;
        Rows rows;
    };
    // Two lines of three values each, of a grid that starts at (10, 20) with steps of 2 and 5.
    Case const cases[] = {
        { "0 0 2 3 10 20 2 5 0", { 10, 20, 2, 5 }, { { 1, 4 }, { 2, 5 }, { 3, 6 } } },
        { "0 0 2 3 10 20 -2 5 0", { 8, 20, 2, 5 }, { { 4, 1 }, { 5, 2 }, { 6, 3 } } },
        { "0 0 2 3 10 20 2 -5 0", { 10, 10, 2, 5 }, { { 3, 6 }, { 2, 5 }, { 1, 4 } } },
        { "0 0 2 3 10 20 -2 -5 0.5", { 8, 10, 2, 5 }, { { 6.5, 3.5 }, { 5.5, 2.5 }, { 4.5, 1.5 } } },
        { "0 1 2 3 10 20 2 5 0", { 10, 20, 2, 5 }, { { 1, 2, 3 }, { 4, 5, 6 } } },
        { "0 1 2 3 10 20 -2 5 0", { 6, 20, 2, 5 }, { { 3, 2, 1 }, { 6, 5, 4 } } },
        { "0 1 2 3 10 20 2 -5 -1", { 10, 15, 2, 5 }, { { 3, 4, 5 }, { 0, 1, 2 } } },
    };
    for (Case const& c : cases) {
        Result result;
        Read(std::string(c.header) + "\n1 2 3\n4 5 6\n", result);
        EXPECT_EQ(result.message, "") << c.header;
        EXPECT_EQ(result.owner.place, c.place) << c.header;
        EXPECT_EQ(result.owner.GetRows(), c.rows) << c.header;
        EXPECT_EQ(result.owner.timesRead, 1);
        EXPECT_EQ(result.file.GetReadOK(), 1);
    }
}

TEST(ZValsFile, ManyLinesAlongYFillTheirColumns)
{
    // More lines than are put into the table at once.
    std::string text = "0 0 21 3 0 0 -1 1 0.25\n";
    for (int i = 0; i < 63; ++i)
        text += std::to_string(i) + (i % 3 == 2 ? "\n" : " ");
    Result result;
    Read(text, result);
    Rows const rows = result.owner.GetRows();
    ASSERT_EQ(rows.size(), 3u);
    for (int i = 0; i < 63; ++i)
        EXPECT_EQ(rows.at(static_cast<std::size_t>(i % 3)).at(static_cast<std::size_t>(20 - i / 3)), i + 0.25);
}

TEST(ZValsFile, ACommaInTheHeaderMeansCommasInTheWholeFile)
{
    Result result;
    Read(
        "\xEF\xBB\xBF// made by hand, today\r\n  // 9 9\r\n0, 0,2,2,10,5,-1,1,0.5\r\n1 , 2,more\r\n3,\r\nrest", result);
    EXPECT_EQ(result.message, "Number of columns found is less the number specified") << "\"3,\" is one item";
    Read("0,0,2,2,10,5,-1,1,0.5\n1,2,7\n,x", result);
    EXPECT_EQ(result.owner.place, (std::vector<double> { 9, 5, 1, 1 }));
    EXPECT_EQ(result.owner.GetRows(), (Rows { { kGap, 1.5 }, { kGap, 2.5 } }));
    EXPECT_EQ(result.file.GetNumGaps(), 2u);
}

TEST(ZValsFile, TheGridTypeTellsTheCoordinateSystem)
{
    struct Case {
        char const* type;
        int curveType;
        int radial;
    };
    for (Case const& c : { Case { "0", 0, 0 }, { "1", 0, 1 }, { "3", 3, -1 }, { "x", 0, 0 } }) {
        Result result;
        Read(std::string(c.type) + " 1 1 1 0 0 1 1 0\n5", result);
        EXPECT_EQ(result.owner.curveType, c.curveType) << c.type;
        EXPECT_EQ(result.owner.radial, c.radial) << c.type;
    }
}

TEST(ZValsFile, ErrorsTellWhereAndWhy)
{
    constexpr char kHeader[] = "Number of data items on first line of file\nshould be exactly nine";
    constexpr char kColumns[] = "Number of columns found is less the number specified";
    constexpr char kRows[] = "Number of rows found is less the number specified";
    struct Case {
        char const* text;
        char const* message;
        char const* place;
        char const* expected;
    };
    Case const cases[] = {
        { "", kHeader, "line 1:", "nine items" },
        { "// a\n//b\n", kHeader, "line 3:", "found 0." },
        { "// a\n\n0 0 1 1 0 0 1 1 0\n1", kHeader, "line 2:", "found 0." },
        { "0 0 1 1 0 0 1 1\n1", kHeader, "line 1:", "found 8." },
        { "0 0 1 1 0 0 1 1 0 0\n1", kHeader, "line 1:", "found 10." },
        { "0 0 1 1 0 0 wide 1 0\n1", kHeader, "line 1:", "a number as item 7, found \"wide\"" },
        { "0 2 1 1 0 0 1 1 0\n1", kHeader, "line 1:", "0 or 1 as item 2" },
        { "0 0 0 1 0 0 1 1 0\n1", kRows, "line 1:", "at least one row" },
        { "0 0 1 -1 0 0 1 1 0\n1", kColumns, "line 1:", "found 1 and -1" },
        { "//\n0 1 2 3 0 0 1 1 0\n1 2 3\n4 5\n", kColumns, "line 4:", "3 numbers, found 2." },
        { "0 1 3 2 0 0 1 1 0\r\n1 2\r\n3 4\r\n", kRows, "line 4:", "3 lines of data, found 2." },
        { "0 1 3 2 0 0 1 1 0\n1 2\n\n3 4\n", kColumns, "line 3:", "found 0." },
        { "0 1 2000000000 2 0 0 1 1 0\n1 2\n", kRows, "line 3:", "found 1." },
        { "0 0 2 2000000000 0 0 1 1 0\n1 2\n", kColumns, "line 2:", "found 2." },
        { "0 0 2000000000 2000000000 0 0 1 1 0\n", kRows, "line 2:", "found 0." },
    };
    for (Case const& c : cases) {
        Result result;
        Read(c.text, result);
        EXPECT_EQ(result.message, c.message) << c.text;
        EXPECT_THAT(result.what, HasSubstr("grid.tvl, ")) << c.text;
        EXPECT_THAT(result.what, HasSubstr(c.place)) << c.text;
        EXPECT_THAT(result.what, HasSubstr(c.expected)) << c.text;
        EXPECT_EQ(result.owner.timesRead, 0) << c.text;
        EXPECT_EQ(result.file.GetReadOK(), 0) << c.text;
    }
}

TEST(ZValsFile, WhatWasReadBeforeAnErrorStays)
{
    Result result;
    Read("0 0 3 2 0 0 1 1 0\n1 2\n3 4\n5\n", result);
    EXPECT_EQ(result.owner.GetRows(), (Rows { { 1, 3, 0 }, { 2, 4, 0 } }));
    Read("0 0 2000 2000 0 0 1 1 0\n1 2\n", result);
    EXPECT_FALSE(result.owner.table.HasData()) << "a grid that the file cannot fill takes no memory";
}

TEST(ZValsFile, AFileThatIsNotThereIsAFileException)
{
    Owner owner;
    CZValsFile file;
    file.SetOwner(&owner);
    EXPECT_THROW(WithErrors([&] { file.Read("/nowhere/grid.tvl"); }), Error);
    EXPECT_FALSE(Succeeds([&] { file.ReadHeader("/nowhere/grid.tvl"); }));
    EXPECT_TRUE(owner.place.empty());
}

TEST(ZValsFile, TheHeaderAloneGivesTheLayout)
{
    DataFile const data("grid.tvl", "//x\n7,1,3,4,1e1,5,-1,-2,0.5\n1,2\n");
    CStdioFile opened(data.GetPath(), CFile::modeRead);
    CZValsFile file;
    EXPECT_EQ(file.ReadHeader(opened), 1);
    CString next;
    EXPECT_TRUE(opened.ReadString(next));
    EXPECT_EQ(next, "1,2") << "the file stands behind the header";
    // Only the layout: the reader has read no file.
    EXPECT_EQ(Stored(file), Bytes().Int(1, 0, 3, 4).Double(10 - 3 * 1, 5 - 2 * 2, 1, 2).Text("").Int(1, 7).Double(0.5));
    EXPECT_EQ(CZValsFile().ReadHeader(DataFile("b", "0 0 1 1 0 0 1 1 0").GetPath()), 0);

    Bytes const bytes = Bytes().Int(1, 1, 3, 4).Double(7, 1, 1, 2).Text("a.tvl").Int(0, 1).Double(2);
    ASSERT_TRUE(Load(file, bytes));
    EXPECT_EQ(Stored(file), bytes);
    EXPECT_EQ(file.GetPathname(), "a.tvl");
    EXPECT_EQ(file.GetLayout().gridType, 1);
}

} // namespace
} // namespace ombrel
