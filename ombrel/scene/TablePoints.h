#pragma once
#include "ombrel/scene/Heights.h"
#include "ombrel/table/Table.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ombrel {

/// The columns of points, by name or number from 1; empty ones are chosen, those of further values left out.
struct PointColumnNames {
    std::string x;
    std::string y;
    std::string z;
    std::string size;
    std::string colour;
    /// Of texts, which the reader of the table has to keep.
    std::string label;

    bool NameAPlace() const { return !x.empty() || !y.empty() || !z.empty(); }
};

/// Whether all that the column holds is numbers and gaps.
OMBREL_EXPORT bool HoldsNumbers(TableColumn const& column);

/// Whether columns are called x, y and z, or three hold numbers.
OMBREL_EXPORT bool HasPointColumns(Table const& table);

/// The numbers of a column, which gives them up; gaps all along when it holds nothing else. name is how messages call
/// the file. Throws ChartError, which names the first cell that is not a number.
OMBREL_EXPORT std::vector<double> TakeNumbers(Table& table, std::size_t index, std::string const& name);

/// The points that the columns hold: those that are named, else those called x, y and z, else the first three of
/// numbers. The columns' values are used up. Throws ChartError.
OMBREL_EXPORT Points PointsOfTable(Table& table, std::string const& name, PointColumnNames const& columns);

} // namespace ombrel
