#pragma once
#include "tools/ombrel/grid/Grid.h"
#include "tools/ombrel/options/SurfaceOptions.h"
#include "tools/ombrel/table/TableReader.h"

#include <optional>
#include <string>
#include <utility>

namespace ombrel::host {

class Messages;

/// Which part of a table makes the grid.
struct TableGridOptions {
    MatrixChoice matrix = MatrixChoice::Detect;
    /// Columns of points, by name or number from 1; empty for those that fit. Any of them makes it a table of points.
    std::string xColumn;
    std::string yColumn;
    std::string zColumn;
    /// Where a plain matrix lies; without them columns and rows are counted from 1.
    std::optional<std::pair<double, double>> xEnds;
    std::optional<std::pair<double, double>> yEnds;
};

/// The grid that a table holds: a matrix of heights whose rows run upwards, or points in any order, one at each
/// crossing of the grid. The columns' values are used up. name is how messages call the file. Throws Failure, which
/// names the first point that is missing or double, or the first cell that is not a number.
Grid GridOfTable(Table& table, std::string const& name, TableGridOptions const& options, Messages const& messages);

} // namespace ombrel::host
