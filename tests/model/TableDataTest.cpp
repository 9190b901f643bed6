#include "ombrel/model/TableData.h"
#include "tests/model/ArchiveBytes.h"
#include "tests/platform/framework/Refused.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

CTableData Row(std::initializer_list<double> values)
{
    CTableData table(1, static_cast<int>(values.size()));
    int column = 0;
    for (double const v : values)
        table.SetAt(0, column++, v);
    return table;
}

TEST(TableData, ArchiveHoldsRowsOneAfterTheOther)
{
    Bytes const bytes = Bytes().Int(2, 2, 3).Double(1, 2, 3, 4, 5, 6).Double(7, 8);
    CTableData table;
    ASSERT_TRUE(Load(table, bytes));
    EXPECT_EQ(Stored(table), bytes);
    EXPECT_EQ(table.GetAt(1, 0), 4.0);
    EXPECT_EQ(table[0][2], 3.0);
    EXPECT_EQ(table.GetOffset(), 7.0);
    EXPECT_EQ(table.GetGain(), 8.0);
    CTableData first;
    ASSERT_TRUE(Load(first, Bytes().Int(1, 2, 3).Double(1, 2, 3, 4, 5, 6)));
    EXPECT_EQ(first.GetAt(1, 2), 6.0);
    EXPECT_EQ(first.GetOffset(), 0.0);
    EXPECT_EQ(first.GetGain(), 1.0);
}

TEST(TableData, SizesThatCannotBeDoNotLoad)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    CTableData table(3, 3);
    EXPECT_FALSE(Load(table, Bytes().Int(2, kMost, kMost).Double(1, 2)));
    EXPECT_FALSE(Load(table, Bytes().Int(2, 1, 4).Double(1, 2, 3)));
    EXPECT_TRUE(Load(table, Bytes().Int(2, -5, kMost).Double(3, 4))) << "an empty table holds no values";
    EXPECT_FALSE(table.HasData());
    EXPECT_EQ(table.GetNumCols(), 0);
    EXPECT_EQ(table.GetOffset(), 3.0);
    EXPECT_EQ(CTableData(10, 20).GetDataSize(), 1600u);
}

TEST(TableData, RangeIsSmallestAndLargestValue)
{
    auto const range = [](CTableData const& table) {
        std::pair range(5.0, 6.0);
        table.GetRange(range.first, range.second);
        return range;
    };
    EXPECT_EQ(range({}), std::pair(5.0, 6.0));
    EXPECT_EQ(range(Row({ 3, -1, 7, 7 })), std::pair(-1.0, 7.0));
    EXPECT_EQ(range(Row({ 2, 1, 0 })), std::pair(0.0, 2.0));
}

TEST(TableData, OffsetAndGainReExpressValuesWithoutChangingWhatTheyMean)
{
    CTableData table = Row({ 4 });
    table.Offset(10, 2);
    EXPECT_EQ(table.GetAt(0, 0), 7.0);
    EXPECT_EQ(table.GetAt(0, 0) * table.GetGain() - table.GetOffset(), 4.0);
    table.Offset(0, 1);
    EXPECT_EQ(table.GetAt(0, 0), 4.0);
}

TEST(TableData, AssignmentCopiesValuesAndKeepsTheTargetsUnits)
{
    CTableData source = Row({ 4, 5 });
    source.Offset(5, 1);
    CTableData target(3, 3);
    target = source;
    EXPECT_EQ(target.GetNumRows(), 1);
    EXPECT_EQ(target.GetAt(0, 1), 10.0);
    EXPECT_EQ(target.GetOffset(), 0.0);
    target = *&target;
    EXPECT_EQ(target.GetAt(0, 1), 10.0);
    target = CTableData();
    EXPECT_FALSE(target.HasData());
}

TEST(TableData, RowsAndColumnsOutsideAreRefused)
{
    CTableData table(2, 3);
    for (auto const& [row, col] :
        { std::pair(-1, 0), std::pair(2, 0), std::pair(0, -1), std::pair(0, 3), std::pair(1, 3), std::pair(1, -1) }) {
        EXPECT_TRUE(test::Refused([&, r = row, c = col] { return table.GetAt(r, c); })) << row << ' ' << col;
        EXPECT_TRUE(test::Refused([&, r = row, c = col] { table.SetAt(r, c, 1.0); })) << row << ' ' << col;
    }
    for (int const row : { -1, 2 }) {
        EXPECT_TRUE(test::Refused([&] { return table.GetRow(row); }));
        EXPECT_TRUE(test::Refused([&] { return std::as_const(table)[row]; }));
    }
    CTableData empty;
    EXPECT_EQ(empty.GetRow(0), nullptr) << "a row of no values";
    EXPECT_TRUE(test::Refused([&] { return empty.GetAt(0, 0); }));
    EXPECT_TRUE(test::Refused([&] { empty.SetAt(0, 0, 1.0); }));
}

TEST(TableData, RevisionGoesUpWithEveryChange)
{
    CTableData table(2, 2);
    auto revision = table.GetRevision();
    std::pair<char const*, std::function<void()>> const changes[] = {
        { "value", [&] { table.SetAt(0, 0, 1.0); } },
        { "row", [&] { table[1][1] = 2.0; } },
        { "units", [&] { table.Offset(1, 2); } },
        { "assignment", [&] { table = Row({ 1 }); } },
        { "copy", [&, other = Row({ 1 })] { table = other; } },
        { "clear", [&] { table.Clear(); } },
    };
    for (auto const& [what, change] : changes) {
        change();
        EXPECT_GT(table.GetRevision(), revision) << what;
        revision = table.GetRevision();
    }
    EXPECT_FALSE(std::as_const(table).HasData());
    EXPECT_EQ(table.GetRevision(), revision);
}

} // namespace
} // namespace ombrel
