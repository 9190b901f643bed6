#include "tools/ombrel/grid/TableGrid.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/grid/PointGrid.h"
#include "tools/ombrel/options/OptionValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel::host {

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

/// A table on its way to a grid.
struct Source {
    Table& table;
    std::string const& name;
    TableGridOptions const& options;
    Messages const& messages;

    [[noreturn]] void Fail(std::string const& text) const { throw Failure(kDataFault, name + text); }
    std::string PlaceOf(std::size_t row) const { return name + ":" + std::to_string(table.LineOf(row)); }
};

bool HoldsNumbers(TableColumn const& column) { return !column.misfit && column.type == ColumnType::Number; }

/// The numbers of a column, which gives them up; gaps all along when it holds nothing else.
std::vector<double> TakeNumbers(Source const& source, std::size_t index)
{
    TableColumn& column = source.table.columns[index];
    if (column.misfit)
        source.Fail(":" + column.misfit->ToText());
    if (column.type == ColumnType::Unknown)
        return std::vector<double>(source.table.rows, kGap);
    if (column.type != ColumnType::Number)
        source.Fail(": " + ColumnLabel(source.table, index) + ": expected numbers, found " + ContentsOf(column));
    std::vector<double> values(column.values.Size());
    column.values.MoveTo(values.data());
    return values;
}

/// The numbers in the first row when it was read as a header: the x coordinates. Empty when one is none.
std::vector<double> HeaderNumbers(Table const& table)
{
    std::vector<double> numbers;
    for (std::size_t i = 1; i < table.columns.size(); ++i) {
        auto const number = ParseCellNumber(table.columns[i].name, table.dialect.decimalMark);
        if (!number)
            return {};
        numbers.push_back(*number);
    }
    return numbers;
}

double FirstValue(TableColumn const& column)
{
    double first = kGap;
    bool found = false;
    column.values.ForEach([&](double value) {
        first = found ? first : value;
        found = true;
    });
    return first;
}

// --- matrices ---

/// The coordinates of a headed matrix, and the first row of heights.
struct Heading {
    GridAxis x;
    GridAxis y;
    std::size_t firstRow = 0;
};

/// Reads the coordinates in the first row and column; nothing, and why in fault, when they are none.
std::optional<Heading> ReadHeading(Source const& source, std::string& fault)
{
    Table& table = source.table;
    Heading heading;
    std::vector<double> xs;
    if (table.dialect.hasHeader) {
        xs = HeaderNumbers(table);
        if (xs.empty())
            fault = "expected x coordinates in the first row, found words";
    } else {
        for (std::size_t i = 1; i < table.columns.size(); ++i)
            xs.push_back(FirstValue(table.columns[i]));
        heading.firstRow = 1;
    }
    if (!fault.empty())
        return std::nullopt;
    std::vector<double> ys;
    if (HoldsNumbers(table.columns.front())) {
        table.columns.front().values.ForEach([&](double value) { ys.push_back(value); });
        ys.erase(ys.begin(), ys.begin() + static_cast<std::ptrdiff_t>(std::min(heading.firstRow, ys.size())));
    }
    auto const x = EvenAxis(xs, fault);
    if (!x) {
        fault = "the first row: " + fault;
        return std::nullopt;
    }
    auto const y = EvenAxis(ys, fault);
    if (!y) {
        fault = "the first column: " + fault;
        return std::nullopt;
    }
    heading.x = *x;
    heading.y = *y;
    return heading;
}

/// Whether what stands in the corner is no height: nothing, a word, or the number of columns.
bool HasHeadingCorner(Table const& table)
{
    if (table.dialect.hasHeader)
        return true;
    double const corner = FirstValue(table.columns.front());
    return std::isnan(corner) || corner == static_cast<double>(table.columns.size() - 1);
}

GridAxis PlacedAxis(std::optional<std::pair<double, double>> const& ends, std::size_t count, char const* counted)
{
    GridAxis axis { 1.0, static_cast<double>(count), count, ends ? "" : counted };
    if (ends) {
        axis.first = ends->first;
        axis.last = ends->second;
    }
    return axis;
}

/// Turns a descending axis round; heights follow by the caller.
bool TurnUpwards(GridAxis& axis)
{
    if (axis.first < axis.last)
        return false;
    std::swap(axis.first, axis.last);
    return true;
}

Grid MatrixGrid(Source const& source, std::optional<Heading> const& heading)
{
    Table& table = source.table;
    std::size_t const firstColumn = heading ? 1 : 0;
    std::size_t const firstRow = heading ? heading->firstRow : 0;
    std::size_t const columns = table.columns.size() - firstColumn;
    std::size_t const rows = table.rows - firstRow;
    Grid grid;
    grid.x = heading ? heading->x : PlacedAxis(source.options.xEnds, columns, "column");
    grid.y = heading ? heading->y : PlacedAxis(source.options.yEnds, rows, "row");
    bool const leftwards = TurnUpwards(grid.x);
    bool const downwards = TurnUpwards(grid.y);
    grid.heights.resize(columns * rows);
    for (std::size_t i = 0; i < columns; ++i) {
        std::vector<double> const values = TakeNumbers(source, firstColumn + i);
        std::size_t const to = leftwards ? columns - 1 - i : i;
        for (std::size_t j = 0; j < rows; ++j)
            grid.heights[(downwards ? rows - 1 - j : j) * columns + to] = values[firstRow + j];
    }
    source.messages.Note(source.name + ": read as a matrix of " + std::to_string(columns) + " x " + std::to_string(rows)
        + " heights, rows upwards, "
        + (heading ? "with coordinates in the first row and column" : "without coordinates"));
    return grid;
}

Grid ReadMatrix(Source const& source)
{
    std::string fault;
    bool const tryHeading = source.options.matrix != MatrixChoice::Plain && source.table.columns.size() > 2;
    std::optional<Heading> heading;
    if (tryHeading && (source.options.matrix == MatrixChoice::Headed || HasHeadingCorner(source.table)))
        heading = ReadHeading(source, fault);
    if (!heading && source.options.matrix == MatrixChoice::Headed)
        source.Fail(": " + (fault.empty() ? "expected coordinates and at least 2 columns of heights" : fault));
    std::size_t const columns = source.table.columns.size() - (heading ? 1 : 0);
    std::size_t const rows = source.table.rows - (heading ? heading->firstRow : 0);
    if (columns < 2 || rows < 2)
        source.Fail(": expected at least 2 rows and 2 columns of heights, found " + std::to_string(rows) + " x "
            + std::to_string(columns));
    if (heading && (source.options.xEnds || source.options.yEnds))
        throw Failure(kUsageFault,
            std::string(source.options.xEnds ? "--x-range" : "--y-range")
                + ": the matrix has coordinates of its own in the first row and column (--matrix plain takes all cells "
                  "for heights)");
    return MatrixGrid(source, heading);
}

// --- points ---

/// The columns of x, y and z.
struct PointColumns {
    std::size_t x = 0;
    std::size_t y = 1;
    std::size_t z = 2;
};

std::size_t NamedColumn(Source const& source, std::string const& text, char const* option)
{
    std::size_t const index = FindColumn(NamesOf(source.table), text);
    if (index < source.table.columns.size())
        return index;
    throw Failure(kUsageFault, std::string(option) + " " + text + ": " + source.name + " has no such column");
}

/// Columns called x, y and z; else the first three of numbers. Nothing when there are not so many.
std::optional<PointColumns> FindPointColumns(Source const& source)
{
    auto const& columns = source.table.columns;
    auto const named = [&](std::string_view name) {
        return static_cast<std::size_t>(std::find_if(columns.begin(), columns.end(), [&](TableColumn const& c) {
            return LowerCase(c.name) == name;
        }) - columns.begin());
    };
    PointColumns const byName { named("x"), named("y"), named("z") };
    if (byName.x < columns.size() && byName.y < columns.size() && byName.z < columns.size())
        return byName;
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < columns.size() && numbers.size() < 3; ++i) {
        if (HoldsNumbers(columns[i]))
            numbers.push_back(i);
    }
    if (numbers.size() < 3)
        return std::nullopt;
    return PointColumns { numbers[0], numbers[1], numbers[2] };
}

PointColumns ChoosePointColumns(Source const& source)
{
    TableGridOptions const& options = source.options;
    PointColumns chosen = FindPointColumns(source).value_or(PointColumns());
    if (!options.xColumn.empty())
        chosen.x = NamedColumn(source, options.xColumn, "-x");
    if (!options.yColumn.empty())
        chosen.y = NamedColumn(source, options.yColumn, "-y");
    if (!options.zColumn.empty())
        chosen.z = NamedColumn(source, options.zColumn, "-z");
    if (std::max({ chosen.x, chosen.y, chosen.z }) >= source.table.columns.size())
        source.Fail(
            ": expected columns of x, y and z, found " + Counted(source.table.columns.size(), "column", "columns"));
    return chosen;
}

Grid ReadPoints(Source const& source)
{
    if (source.options.xEnds || source.options.yEnds)
        throw Failure(kUsageFault,
            std::string(source.options.xEnds ? "--x-range" : "--y-range")
                + ": places a matrix, and the table holds points with coordinates of their own");
    PointColumns const columns = ChoosePointColumns(source);
    std::string const titles[] { source.table.columns[columns.x].name, source.table.columns[columns.y].name,
        source.table.columns[columns.z].name };
    std::vector<double> const xs = TakeNumbers(source, columns.x);
    std::vector<double> const ys = TakeNumbers(source, columns.y);
    std::vector<double> const zs = TakeNumbers(source, columns.z);
    auto made = GridOfPoints({ xs, ys, zs }, [&](std::size_t point) { return source.PlaceOf(point); });
    if (auto const* const fault = std::get_if<PointFault>(&made)) {
        std::string const place
            = fault->point < source.table.rows ? ":" + std::to_string(source.table.LineOf(fault->point)) : "";
        source.Fail(place + ": " + fault->text);
    }
    Grid grid = std::get<Grid>(std::move(made));
    grid.x.title = titles[0];
    grid.y.title = titles[1];
    grid.title = titles[2];
    source.messages.Note(source.name + ": read as points on a grid of " + std::to_string(grid.x.count) + " x "
        + std::to_string(grid.y.count));
    return grid;
}

/// Points are told from a matrix by words that name three columns, or by three columns the first two of which say
/// where.
bool LooksLikePoints(Source const& source)
{
    Table const& table = source.table;
    if (table.columns.size() < 3 || !FindPointColumns(source))
        return false;
    if (table.dialect.hasHeader)
        return HeaderNumbers(table).empty();
    if (table.columns.size() > 3)
        return false;
    std::vector<double> values[2];
    for (std::size_t i = 0; i < 2; ++i) {
        table.columns[i].values.ForEach([&](double value) { values[i].push_back(value); });
        std::sort(values[i].begin(), values[i].end());
        values[i].erase(std::unique(values[i].begin(), values[i].end()), values[i].end());
    }
    return values[0].size() * values[1].size() == table.rows && values[0].size() > 1 && values[1].size() > 1;
}

} // namespace

Grid GridOfTable(Table& table, std::string const& name, TableGridOptions const& options, Messages const& messages)
{
    Source const source { table, name, options, messages };
    bool const wantsPoints = !options.xColumn.empty() || !options.yColumn.empty() || !options.zColumn.empty();
    if (wantsPoints && options.matrix != MatrixChoice::Detect)
        throw Failure(kUsageFault, "--matrix: -x, -y and -z name the columns of points");
    if (wantsPoints || (options.matrix == MatrixChoice::Detect && LooksLikePoints(source)))
        return ReadPoints(source);
    return ReadMatrix(source);
}

} // namespace ombrel::host
