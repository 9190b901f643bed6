#include "ombrel/scene/TableHeights.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/scene/parts/PointGrid.h"
#include "ombrel/table/TableCells.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace ombrel {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// A table on its way to a grid.
struct Source {
    Table& table;
    std::string const& name;
    TableGridOptions const& options;
    ChartNotes& notes;

    [[noreturn]] void Fail(std::string const& text) const { throw ChartError(ChartError::Cause::Data, name + text); }
    std::string PlaceOf(std::size_t row) const { return name + ":" + std::to_string(table.LineOf(row)); }
};

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
    double first = kNoNumber;
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
        std::vector<double> const values = TakeNumbers(table, firstColumn + i, source.name);
        std::size_t const to = leftwards ? columns - 1 - i : i;
        for (std::size_t j = 0; j < rows; ++j)
            grid.heights[(downwards ? rows - 1 - j : j) * columns + to] = values[firstRow + j];
    }
    source.notes.AddNote(source.name + ": read as a matrix of " + std::to_string(columns) + " x " + std::to_string(rows)
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
        throw ChartError(ChartError::Cause::Setting,
            std::string(source.options.xEnds ? "x-range" : "y-range")
                + ": the matrix has coordinates of its own in the first row and column (matrix plain takes all cells "
                  "for heights)");
    return MatrixGrid(source, heading);
}

// --- points ---

/// The grid that the points form, or why they form none.
std::variant<Grid, PointFault> GridOf(Source const& source, Points const& points)
{
    auto made
        = GridOfPoints({ points.x, points.y, points.z }, [&](std::size_t point) { return source.PlaceOf(point); });
    if (auto* const grid = std::get_if<Grid>(&made)) {
        grid->x.title = points.xTitle;
        grid->y.title = points.yTitle;
        grid->title = points.zTitle;
        source.notes.AddNote(source.name + ": read as points on a grid of " + std::to_string(grid->x.count) + " x "
            + std::to_string(grid->y.count));
    }
    return made;
}

std::string TextOf(Source const& source, PointFault const& fault)
{
    std::string const place
        = fault.point < source.table.rows ? ":" + std::to_string(source.table.LineOf(fault.point)) : "";
    return source.name + place + ": " + fault.text;
}

HeightSource ReadPoints(Source const& source)
{
    if (source.options.xEnds || source.options.yEnds)
        throw ChartError(ChartError::Cause::Setting,
            std::string(source.options.xEnds ? "x-range" : "y-range")
                + ": places a matrix, and the table holds points with coordinates of their own");
    Points points = PointsOfTable(source.table, source.name, source.options.columns);
    auto made = GridOf(source, points);
    if (auto* const grid = std::get_if<Grid>(&made))
        return std::move(*grid);
    std::string const fault = TextOf(source, std::get<PointFault>(made));
    if (!source.options.takesPoints)
        throw ChartError(ChartError::Cause::Data, fault);
    source.notes.AddNote(fault + "; they are taken as they stand");
    return points;
}

/// Points are told from a matrix by words that name three columns, or by three columns the first two of which say
/// where.
bool LooksLikePoints(Source const& source)
{
    Table const& table = source.table;
    if (table.columns.size() < 3 || !HasPointColumns(table))
        return false;
    if (table.dialect.hasHeader)
        return HeaderNumbers(table).empty();
    if (table.columns.size() > 3)
        return false;
    // So many rows of three heights each hardly make a grid.
    constexpr std::size_t kManyRows = 12;
    if (source.options.takesPoints && table.rows >= kManyRows)
        return true;
    std::vector<double> values[2];
    for (std::size_t i = 0; i < 2; ++i) {
        table.columns[i].values.ForEach([&](double value) { values[i].push_back(value); });
        std::sort(values[i].begin(), values[i].end());
        values[i].erase(std::unique(values[i].begin(), values[i].end()), values[i].end());
    }
    return values[0].size() * values[1].size() == table.rows && values[0].size() > 1 && values[1].size() > 1;
}

} // namespace

HeightSource HeightsOfTable(Table& table, std::string const& name, TableGridOptions const& options, ChartNotes& notes)
{
    Source const source { table, name, options, notes };
    bool const wantsPoints = options.columns.NameAPlace();
    if (wantsPoints && options.matrix != MatrixChoice::Detect)
        throw ChartError(ChartError::Cause::Setting, "matrix: columns of points are named");
    bool const holdsPoints = wantsPoints || (options.matrix == MatrixChoice::Detect && LooksLikePoints(source));
    HeightSource heights = holdsPoints ? ReadPoints(source) : ReadMatrix(source);
    if (auto* const grid = std::get_if<Grid>(&heights))
        grid->source = name;
    return heights;
}

} // namespace ombrel
