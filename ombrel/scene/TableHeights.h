#pragma once
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/TablePoints.h"
#include "ombrel/table/Table.h"

#include <optional>
#include <string>
#include <utility>

namespace ombrel {

class ChartNotes;

/// Detect: whatever the table looks like. Plain: all cells are heights. Headed: the first row holds the x and the first
/// column the y coordinates.
enum class MatrixChoice { Detect, Plain, Headed };

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
/// ChartError, which names the first cell that is not a number, or where a grid is needed the first point that is
/// missing or double.
OMBREL_EXPORT HeightSource HeightsOfTable(
    Table& table, std::string const& name, TableGridOptions const& options, ChartNotes& notes);

} // namespace ombrel
