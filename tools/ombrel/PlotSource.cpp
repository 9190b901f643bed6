#include "tools/ombrel/PlotSource.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Options.h"
#include "tools/ombrel/TableFile.h"

namespace ombrel::host {

namespace {

constexpr char const* kRowsAsX = "0";

std::vector<std::string> NamesOf(Table const& table)
{
    std::vector<std::string> names;
    for (TableColumn const& column : table.columns)
        names.push_back(column.name);
    return names;
}

/// The column that an option names.
std::size_t NamedColumn(PlotSource const& source, std::string const& text, char const* option)
{
    std::size_t const index = FindColumn(NamesOf(source.table), text);
    if (index < source.table.columns.size())
        return index;
    std::string known;
    for (std::size_t i = 0; i < source.table.columns.size() && known.size() < 200; ++i)
        known += (i == 0 ? "" : ", ") + ColumnLabel(source.table, i);
    throw Failure(
        kUsageFault, std::string(option) + " " + text + ": " + source.name + " has no such column; it has " + known);
}

/// A wanted column that cannot be drawn stops the command.
void RequireValues(PlotSource const& source, std::size_t index, bool mayBeDates)
{
    TableColumn const& column = source.table.columns[index];
    if (column.misfit)
        throw Failure(kDataFault, source.name + ":" + column.misfit->ToText());
    if (column.type == ColumnType::Number || (mayBeDates && column.type == ColumnType::Date))
        return;
    std::string const dates = mayBeDates ? "numbers or dates" : "numbers";
    throw Failure(kDataFault,
        source.name + ": " + ColumnLabel(source.table, index) + ": expected " + dates + ", found "
            + TypeLabel(column.type));
}

void ChooseX(PlotSource& source, Options const& options)
{
    if (options.xColumn == kRowsAsX)
        return;
    if (!options.xColumn.empty()) {
        source.xColumn = NamedColumn(source, options.xColumn, "-x");
        RequireValues(source, source.xColumn, true);
        return;
    }
    if (source.table.columns.size() == 1 && !options.dateFormat)
        return;
    // The first column, unless it is what is to be drawn.
    if (source.yColumns.size() == 1 && source.yColumns.front() == 0)
        return;
    // Text cannot be placed along an axis; TellColumns says so.
    if (source.table.columns[0].type == ColumnType::Text)
        return;
    source.xColumn = 0;
    RequireValues(source, 0, true);
}

/// Every other column of numbers.
void ChooseAllY(PlotSource& source, Messages const& messages)
{
    std::string others;
    for (std::size_t i = 0; i < source.table.columns.size(); ++i) {
        if (i == source.xColumn)
            continue;
        TableColumn const& column = source.table.columns[i];
        if (column.misfit || column.type == ColumnType::Number) {
            RequireValues(source, i, false);
            source.yColumns.push_back(i);
            continue;
        }
        std::string const text = ColumnLabel(source.table, i) + " holds " + TypeLabel(column.type);
        messages.Note(source.name + ": " + text + "; not drawn");
        others += "; " + text;
    }
    if (source.yColumns.empty())
        throw Failure(kDataFault, source.name + ": expected a column of numbers, found none" + others);
}

void TellColumns(PlotSource const& source, Options const& options, Messages const& messages)
{
    bool const rowsInstead = source.xColumn == PlotSource::kRowNumbers && options.xColumn.empty();
    if (rowsInstead && source.yColumns.front() != 0 && source.table.columns[0].type == ColumnType::Text)
        messages.Warning(
            source.name + ": " + ColumnLabel(source.table, 0) + " holds texts; drawn against the number of the row");
    if (!messages.IsVerbose())
        return;
    std::string const x = source.xColumn == PlotSource::kRowNumbers
        ? "the number of the row"
        : ColumnLabel(source.table, source.xColumn) + " of " + TypeLabel(source.table.columns[source.xColumn].type);
    std::string y;
    for (std::size_t const index : source.yColumns)
        y += (y.empty() ? "" : ", ") + ColumnLabel(source.table, index);
    messages.Note(source.name + ": x is " + x + "; y is " + y);
    auto const tellGaps = [&](std::size_t index) {
        std::size_t const gaps = source.table.columns[index].gaps;
        if (gaps > 0)
            messages.Note(source.name + ": " + ColumnLabel(source.table, index) + ": " + Counted(gaps, "gap", "gaps"));
    };
    if (source.xColumn != PlotSource::kRowNumbers)
        tellGaps(source.xColumn);
    for (std::size_t const index : source.yColumns)
        tellGaps(index);
}

} // namespace

PlotSource ReadSource(Options const& options, InputFile& file, Messages const& messages)
{
    TableOptions reading;
    reading.header = options.header;
    reading.dateFormat = options.dateFormat;
    if (!options.xColumn.empty())
        reading.dateColumn = options.xColumn;
    if (!options.yColumns.empty()) {
        reading.wanted = options.yColumns;
        reading.wanted.push_back(reading.dateColumn);
    }
    PlotSource source;
    source.name = file.GetName();
    source.table = ReadTableFile(file, reading, messages);
    if (source.table.rows == 0)
        throw Failure(kDataFault, source.name + ":2: expected a row of values, found the end of the file");
    for (std::string const& text : options.yColumns)
        source.yColumns.push_back(NamedColumn(source, text, "-y"));
    ChooseX(source, options);
    if (options.yColumns.empty())
        ChooseAllY(source, messages);
    for (std::size_t const index : source.yColumns)
        RequireValues(source, index, false);
    TellColumns(source, options, messages);
    return source;
}

} // namespace ombrel::host
