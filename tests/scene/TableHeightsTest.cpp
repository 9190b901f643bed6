#include "ombrel/scene/TableHeights.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/table/TableReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace ombrel {
namespace {

std::string Describe(GridAxis const& axis)
{
    std::ostringstream text;
    text << axis.title << " " << axis.first << ".." << axis.last << " (" << axis.count << ")";
    return text.str();
}

/// The grid in words, rows from the first y, or what it fails with.
std::string GridOf(std::string_view text, TableGridOptions const& options = {})
{
    auto read = ReadTable(text, {});
    ChartNotes notes;
    try {
        auto const heights = HeightsOfTable(std::get<Table>(read), "t.csv", options, notes);
        Grid const& grid = std::get<Grid>(heights);
        std::ostringstream out;
        out << Describe(grid.x) << ", " << Describe(grid.y) << ", " << grid.title << ":";
        for (std::size_t i = 0; i < grid.heights.size(); ++i) {
            out << (i > 0 && i % grid.x.count == 0 ? " / " : " ");
            if (std::isnan(grid.heights[i]))
                out << "-";
            else
                out << grid.heights[i];
        }
        return out.str();
    } catch (ChartError const& error) {
        return error.what();
    }
}

TableGridOptions With(MatrixChoice matrix)
{
    TableGridOptions options;
    options.matrix = matrix;
    return options;
}

struct GridCase {
    char const* table;
    TableGridOptions options;
    char const* grid;
};

TEST(TableHeights, RowsOfAMatrixRunUpwards)
{
    TableGridOptions placed;
    placed.xEnds = { 0.0, 1.5 };
    placed.yEnds = { 20.0, 10.0 };
    GridCase const cases[] {
        { "1,2,3,4\n5,6,,8\n", {}, "column 1..4 (4), row 1..2 (2), : 1 2 3 4 / 5 6 - 8" },
        { "1,2,3,4\n5,6,7,8\n", placed, " 0..1.5 (4),  10..20 (2), : 5 6 7 8 / 1 2 3 4" },
        // Coordinates: below an empty corner, a word, or the number of columns.
        { ",0,10,20,30\n5,1,2,3,4\n6,5,6,7,8\n", {}, " 0..30 (4),  5..6 (2), : 1 2 3 4 / 5 6 7 8" },
        { "y\\x 0 10 20\n5 1 2 3\n6 5 6 7\n", {}, " 0..20 (3),  5..6 (2), : 1 2 3 / 5 6 7" },
        { "3 0 10 20\n5 1 2 3\n6 5 6 7\n", {}, " 0..20 (3),  5..6 (2), : 1 2 3 / 5 6 7" },
        { "3 0 10 20\n5 1 2 3\n6 5 6 7\n", With(MatrixChoice::Plain),
            "column 1..4 (4), row 1..3 (3), : 3 0 10 20 / 5 1 2 3 / 6 5 6 7" },
        { "9 0 10 20\n5 1 2 3\n6 5 6 7\n", With(MatrixChoice::Headed), " 0..20 (3),  5..6 (2), : 1 2 3 / 5 6 7" },
        // They may descend, and are heights where they are uneven.
        { "y 20 10 0\n6 1 2 3\n5 5 6 7\n", {}, " 0..20 (3),  5..6 (2), : 7 6 5 / 3 2 1" },
        { "3 0 10 25\n5 1 2 3\n6 5 6 7\n", {}, "column 1..4 (4), row 1..3 (3), : 3 0 10 25 / 5 1 2 3 / 6 5 6 7" },
        { "3 0 10 25\n5 1 2 3\n6 5 6 7\n", With(MatrixChoice::Headed),
            "t.csv: the first row: expected evenly spaced coordinates, found 10 after 0, where 12.5 would be even" },
        { "a,b,c,d\n1,x,3,4\n", With(MatrixChoice::Plain),
            "t.csv: expected at least 2 rows and 2 columns of heights, found 1 x 4" },
        { "1,2,3,4\n1,2,x,4\n1,2,3,4\n", With(MatrixChoice::Plain),
            "t.csv:2: column 3: expected a number or a gap (empty, NA, NaN), found \"x\"" },
        { "1\n2\n3\n", {}, "t.csv: expected at least 2 rows and 2 columns of heights, found 3 x 1" },
    };
    for (GridCase const& c : cases)
        EXPECT_EQ(GridOf(c.table, c.options), c.grid) << c.table;
}

TEST(TableHeights, PointsStandAtTheCrossingsInAnyOrder)
{
    TableGridOptions named;
    named.columns.y = "y";
    named.columns.z = "b";
    GridCase const cases[] {
        { "lon,lat,height\n1,0,5\n0,0,4\n1,0.5,7\n0,0.5,\n", {}, "lon 0..1 (2), lat 0..0.5 (2), height: 4 5 / - 7" },
        { "z y x w\n9 0 1 a\n8 0 2 b\n7 3 1 c\n6 3 2 d\n", {}, "x 1..2 (2), y 0..3 (2), z: 9 8 / 7 6" },
        { "a,x,b,y\n0,0,1,0\n1,1,2,0\n0,0,3,1\n1,1,4,1\n", named, "a 0..1 (2), y 0..1 (2), b: 1 2 / 3 4" },
        // Three columns without names: points when the first two say where, else a matrix.
        { "0 0 1\n1 0 2\n0 1 3\n1 1 4\n", {}, " 0..1 (2),  0..1 (2), : 1 2 / 3 4" },
        { "0 0 1\n1 0 2\n0 1 3\n", {}, "column 1..3 (3), row 1..3 (3), : 0 0 1 / 1 0 2 / 0 1 3" },
        // Written with few digits.
        { "x,y,z\n0,0,1\n0.33,0,2\n0.67,0,3\n1,0,4\n0,1,5\n0.33,1,6\n0.67,1,7\n1,1,8\n", {},
            "x 0..1 (4), y 0..1 (2), z: 1 2 3 4 / 5 6 7 8" },
        { "x,y,z\n0,0,1\n1,0,2\n3,0,3\n0,1,5\n1,1,6\n3,1,7\n", {},
            "t.csv: the points form no grid: x: expected evenly spaced coordinates, found 1 after 0, where 1.5 would "
            "be even" },
        { "x,y,z\n0,0,1\n1,0,2\n0,1,3\n", {},
            "t.csv: the points form no grid of 2 x 2: there is no point at x = 1, y = 1" },
        { "x,y,z\n0,0,1\n1,0,2\n0,1,3\n0,0,4\n", {},
            "t.csv:5: the points form no grid of 2 x 2: a second point stands at x = 0, y = 0 (the first: t.csv:2)" },
        { "x,y,z\n0,0,1\n0,1,2\n", {},
            "t.csv: the points form no grid: x: expected at least 2 different coordinates, found 1" },
        { "x,y,z\n0,0,1\n1,0,b\n", {}, "t.csv:3: column 3: expected a number or a gap (empty, NA, NaN), found \"b\"" },
    };
    for (GridCase const& c : cases)
        EXPECT_EQ(GridOf(c.table, c.options), c.grid) << c.table;
}

} // namespace
} // namespace ombrel
