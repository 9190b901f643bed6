#pragma once
#include "ombrel/table/TableReader.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ombrel::host {

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

/// Points in space, in the order of the table's rows; what is no number is NaN.
struct Points {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    /// Empty when they were not asked for, like labels.
    std::vector<double> sizes;
    std::vector<double> colours;
    std::vector<std::string> labels;
    /// The columns' names.
    std::string xTitle;
    std::string yTitle;
    std::string zTitle;
    std::string colourTitle;

    std::size_t Count() const { return x.size(); }
};

/// Whether all that the column holds is numbers and gaps.
bool HoldsNumbers(TableColumn const& column);

/// Whether columns are called x, y and z, or three hold numbers.
bool HasPointColumns(Table const& table);

/// The numbers of a column, which gives them up; gaps all along when it holds nothing else. name is how messages call
/// the file. Throws Failure, which names the first cell that is not a number.
std::vector<double> TakeNumbers(Table& table, std::size_t index, std::string const& name);

/// The points that the columns hold: those that are named, else those called x, y and z, else the first three of
/// numbers. The columns' values are used up. Throws Failure.
Points PointsOfTable(Table& table, std::string const& name, PointColumnNames const& columns);

/// Leaves out the points without a place. Returns their number.
std::size_t DropGaps(Points& points);

} // namespace ombrel::host
