#pragma once
#include "ombrel/table/TableReader.h"
#include "tools/ombrel/grid/Grid.h"
#include "tools/ombrel/grid/TablePoints.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace ombrel::host {

class Messages;

/// Which part of a table makes the grid.
struct TableGridOptions {
    MatrixChoice matrix = MatrixChoice::Detect;
    /// Naming one of them makes it a table of points.
    PointColumnNames columns;
    /// Points need not form a grid.
    bool takesPoints = false;
    /// Where a plain matrix lies; without them columns and rows are counted from 1.
    std::optional<std::pair<double, double>> xEnds;
    std::optional<std::pair<double, double>> yEnds;
};

/// The heights that a table holds: a matrix whose rows run upwards, or points in any order, which make a grid when
/// there is one at each of its crossings. The columns' values are used up. name is how messages call the file. Throws
/// Failure, which names the first cell that is not a number, or where a grid is needed the first point that is missing
/// or double.
std::variant<Grid, Points> HeightsOfTable(
    Table& table, std::string const& name, TableGridOptions const& options, Messages const& messages);

} // namespace ombrel::host
