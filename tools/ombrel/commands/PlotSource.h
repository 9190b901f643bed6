#pragma once
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/table/TableReader.h"

#include <optional>
#include <string>
#include <vector>

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// A table, and which of its columns are drawn.
struct PlotSource {
    static constexpr std::size_t kRowNumbers = kMostColumns;

    Table table;
    /// kRowNumbers to draw against the number of the row.
    std::size_t xColumn = kRowNumbers;
    std::vector<std::size_t> yColumns;
    /// One for each y column, or none.
    std::vector<std::size_t> errorColumns;
    /// Of the texts at the points; kRowNumbers for none.
    std::size_t labelColumn = kRowNumbers;
    /// Of what tells groups of rows apart; kRowNumbers for none.
    std::size_t groupColumn = kRowNumbers;
    /// What stands there in all rows, when the rows are one group of a file; empty where there was a gap.
    std::optional<std::string> group;
    /// A line that nobody asked for would go back and forth: points stand in its place.
    bool isMixed = false;

    bool HasDates() const { return HasX(ColumnType::Date); }
    /// The x values are words, which stand side by side.
    bool HasWords() const { return HasX(ColumnType::Text); }
    /// "FILE:LINE: " of a row.
    std::string PlaceOf(std::size_t row) const { return table.name + ":" + std::to_string(table.LineOf(row)) + ": "; }

private:
    bool HasX(ColumnType type) const { return xColumn != kRowNumbers && table.columns[xColumn].type == type; }
};

/// Reads the file and chooses the columns that the options ask for, or that fit: one source, or one for each group of
/// its rows. Warns of rows in an order that looks as if there were groups. Throws Failure.
std::vector<PlotSource> ReadPlotSources(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
