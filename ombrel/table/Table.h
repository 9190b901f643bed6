#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/table/ColumnValues.h"
#include "ombrel/table/TableDialect.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel {

/// Where a table cannot be read, and why.
struct OMBREL_EXPORT TableError {
    /// Counted from 1.
    std::size_t line = 0;
    /// Number of the cell in its line from 1; 0 when the whole line is at fault.
    std::size_t column = 0;
    std::string expected;
    std::string found;

    /// "17: column 3: expected …, found …", to be put behind the file's name and a colon.
    std::string ToText() const;
    bool operator==(TableError const&) const = default;
};

/// One column of a table, with its values or its texts.
struct TableColumn {
    /// From the header, in UTF-8; empty without one.
    std::string name;
    ColumnType type = ColumnType::Unknown;
    /// One a row: numbers, or days since 30 December 1899; NaN is a gap. Empty for texts, for columns that were not
    /// asked for, and when there is a misfit.
    ColumnValues values;
    /// One a row, as they were written and in UTF-8; empty at a gap. Only of columns whose texts were asked for.
    std::vector<std::string> texts;
    /// The first text of a wanted column of texts, for messages.
    std::string firstText;
    /// Whether its dates in numbers begin with the day or the month, where it has such.
    std::optional<DateOrder> dateOrder;
    /// Nothing told that order: the day was taken to come first.
    bool isDateOrderAssumed = false;
    /// Cells that are empty, missing at the end of a short row, or hold a gap word. Counted in wanted columns.
    std::size_t gaps = 0;
    /// The first cell of a wanted column that is neither a gap nor of the column's type.
    std::optional<TableError> misfit;
};

/// What a file or a column of it was needed for and cannot be: "FILE:LINE: column N: expected …, found …".
class OMBREL_EXPORT TableReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A row whose line does not follow from the one before, since lines lie between or belong to it.
struct TableLineJump {
    std::size_t row = 0;
    std::size_t line = 0;
};

struct TableGroup;

/// What was read from a text table: its columns, and how it was written.
struct OMBREL_EXPORT Table {
    /// What messages call it; the path of a file.
    std::string name;
    TableDialect dialect;
    std::vector<TableColumn> columns;
    std::size_t rows = 0;
    /// Rows with fewer cells than there are columns.
    std::size_t shortRows = 0;
    /// Dates that named an offset from UTC; it has been applied.
    std::size_t shiftedDates = 0;
    /// The header was not UTF-8 and was read as Latin-1.
    bool headerWasLatin1 = false;
    /// By ascending row; the first row is always there.
    std::vector<TableLineJump> lineJumps;

    /// The line, from 1, that a row (from 0) begins in.
    std::size_t LineOf(std::size_t row) const;

    /// The column of that name, or else with that number from 1. Throws TableReadError when there is none.
    TableColumn const& Column(std::string_view name) const;
    /// Its values, one a row; NaN is a gap. Throws TableReadError when it holds texts, or something that is no value.
    std::vector<double> Values(std::string_view name) const;

    /// The rows by what stands in a column, named as above or numbered from 0: one group for each word or number, in
    /// the order in which these first appear. Rows with a gap there are a group of their own. Throws TableReadError
    /// when there are more than 1000 groups, or the column's texts were not kept.
    ///
    ///     for (auto const& [species, rows] : table.GroupBy("species"))
    ///         chart.Points(rows.Values("length"), rows.Values("width")).Name(species);
    std::vector<TableGroup> GroupBy(std::string_view name) const;
    std::vector<TableGroup> GroupBy(std::size_t column) const;

private:
    std::size_t IndexOf(std::string_view name) const;
};

/// The rows of a table that have the same word or number in a column.
struct TableGroup {
    /// What stands there; empty for a gap.
    std::string name;
    Table rows;
};

} // namespace ombrel
