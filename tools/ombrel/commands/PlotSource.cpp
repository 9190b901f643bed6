#include "tools/ombrel/commands/PlotSource.h"
#include "ombrel/foundation/Utils.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>

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

/// What a column may hold besides numbers.
enum class Others { None, Dates, DatesOrWords };

/// A wanted column that cannot be drawn stops the command.
void RequireValues(PlotSource const& source, std::size_t index, Others others)
{
    TableColumn const& column = source.table.columns[index];
    if (column.misfit)
        throw Failure(kDataFault, source.name + ":" + column.misfit->ToText());
    if (column.type == ColumnType::Number || (others != Others::None && column.type == ColumnType::Date)
        || (others == Others::DatesOrWords && column.type == ColumnType::Text))
        return;
    std::string const expected = others == Others::None ? "numbers" : "numbers, dates or words";
    throw Failure(kDataFault,
        source.name + ": " + ColumnLabel(source.table, index) + ": expected " + expected + ", found "
            + TypeLabel(column.type));
}

bool IsTaken(PlotSource const& source, std::size_t index)
{
    auto const& errors = source.errorColumns;
    return index == source.xColumn || index == source.labelColumn
        || std::find(errors.begin(), errors.end(), index) != errors.end();
}

void ChooseX(PlotSource& source, Options const& options)
{
    // Counting needs values alone.
    if (options.xColumn == kRowsAsX || options.kind == PlotKind::Histogram)
        return;
    Others const others = options.dateFormat ? Others::Dates : Others::DatesOrWords;
    if (!options.xColumn.empty()) {
        source.xColumn = NamedColumn(source, options.xColumn, "-x");
        RequireValues(source, source.xColumn, others);
        return;
    }
    if (source.table.columns.size() == 1 && !options.dateFormat)
        return;
    // The first column that is not asked for as something else.
    std::size_t first = 0;
    while (first < source.table.columns.size() && IsTaken(source, first))
        ++first;
    if (first == source.table.columns.size() || (source.yColumns.size() == 1 && source.yColumns.front() == first))
        return;
    // Words of other columns than the first are not kept.
    if (source.table.columns[first].type == ColumnType::Text && source.table.columns[first].texts.empty())
        return;
    source.xColumn = first;
    RequireValues(source, first, others);
}

/// Every other column of numbers.
void ChooseAllY(PlotSource& source, Messages const& messages)
{
    std::string others;
    for (std::size_t i = 0; i < source.table.columns.size(); ++i) {
        if (IsTaken(source, i))
            continue;
        TableColumn const& column = source.table.columns[i];
        if (column.misfit || column.type == ColumnType::Number) {
            RequireValues(source, i, Others::None);
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

void ChooseErrors(PlotSource& source, Options const& options)
{
    for (std::string const& text : options.errorColumns)
        source.errorColumns.push_back(NamedColumn(source, text, "--error"));
}

/// One column of errors may serve all y columns.
void MatchErrors(PlotSource& source)
{
    auto& errors = source.errorColumns;
    if (errors.empty())
        return;
    if (errors.size() == 1)
        errors.resize(source.yColumns.size(), errors.front());
    if (errors.size() != source.yColumns.size())
        throw Failure(kUsageFault,
            "--error: expected one column, or one for each of the " + std::to_string(source.yColumns.size())
                + " y columns, found " + std::to_string(errors.size()));
    for (std::size_t const index : errors) {
        RequireValues(source, index, Others::None);
        std::size_t row = 0;
        source.table.columns[index].values.ForEach([&](double value) {
            if (value < 0.0)
                throw Failure(kDataFault,
                    source.PlaceOf(row) + "column " + std::to_string(index + 1)
                        + ": expected an error that is not negative, found " + NumberText(value));
            ++row;
        });
    }
}

void TellColumns(PlotSource const& source, Messages const& messages)
{
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
    for (std::size_t const index : source.errorColumns)
        tellGaps(index);
}

/// What the reader is to keep.
TableOptions ReadingOptions(Options const& options)
{
    TableOptions reading;
    reading.header = options.header;
    reading.dateFormat = options.dateFormat;
    if (!options.xColumn.empty())
        reading.dateColumn = options.xColumn;
    if (!options.yColumns.empty()) {
        reading.wanted = options.yColumns;
        reading.wanted.insert(reading.wanted.end(), options.errorColumns.begin(), options.errorColumns.end());
        reading.wanted.push_back(reading.dateColumn);
    }
    if (options.xColumn != kRowsAsX && options.kind != PlotKind::Histogram)
        reading.wordColumn = reading.dateColumn;
    if (!options.labelColumn.empty())
        reading.asTexts.push_back(options.labelColumn);
    return reading;
}

} // namespace

std::string NumberText(double value) { return CVUtils::FormatDouble(kGeneralFormat, value, 15).ToUtf8(); }

PlotSource ReadSource(Options const& options, InputFile& file, Messages const& messages)
{
    PlotSource source;
    source.name = file.GetName();
    source.table = ReadTableFile(file, ReadingOptions(options), messages);
    if (source.table.rows == 0)
        throw Failure(kDataFault, source.name + ":2: expected a row of values, found the end of the file");
    for (std::string const& text : options.yColumns)
        source.yColumns.push_back(NamedColumn(source, text, "-y"));
    ChooseErrors(source, options);
    if (!options.labelColumn.empty())
        source.labelColumn = NamedColumn(source, options.labelColumn, "--label");
    ChooseX(source, options);
    if (options.yColumns.empty())
        ChooseAllY(source, messages);
    for (std::size_t const index : source.yColumns)
        RequireValues(source, index, Others::None);
    MatchErrors(source);
    TellColumns(source, messages);
    return source;
}

} // namespace ombrel::host
