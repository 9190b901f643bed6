#pragma once
#include "tools/ombrel/TableReader.h"

#include <string>
#include <vector>

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// A table, and which of its columns are drawn.
struct PlotSource {
    static constexpr std::size_t kRowNumbers = kMostColumns;

    /// How messages call the file.
    std::string name;
    Table table;
    /// kRowNumbers to draw against the number of the row.
    std::size_t xColumn = kRowNumbers;
    std::vector<std::size_t> yColumns;

    bool HasDates() const { return xColumn != kRowNumbers && table.columns[xColumn].type == ColumnType::Date; }
};

/// Reads the file and chooses the columns that the options ask for, or that fit. Throws Failure.
PlotSource ReadSource(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
