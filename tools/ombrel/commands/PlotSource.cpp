#include "tools/ombrel/commands/PlotSource.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/table/EpochTimes.h"
#include "ombrel/table/RowOrder.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <cassert>
#include <optional>

namespace ombrel::host {

namespace {

constexpr char const* kRowsAsX = "0";

/// The column that an option names.
std::size_t NamedColumn(PlotSource const& source, std::string const& text, char const* option)
{
    std::size_t const index = FindColumn(NamesOf(source.table), text);
    if (index < source.table.columns.size())
        return index;
    std::string known;
    for (std::size_t i = 0; i < source.table.columns.size() && known.size() < 200; ++i)
        known += (i == 0 ? "" : ", ") + ColumnLabel(source.table, i);
    throw Failure(kUsageFault,
        std::string(option) + " " + text + ": " + source.table.name + " has no such column; it has " + known);
}

/// What a column may hold besides numbers.
enum class Others { None, Dates, DatesOrWords };

/// A wanted column that cannot be drawn stops the command.
void RequireValues(PlotSource const& source, std::size_t index, Others others)
{
    TableColumn const& column = source.table.columns[index];
    if (column.misfit)
        throw Failure(kDataFault, source.table.name + ":" + column.misfit->ToText());
    assert(column.type != ColumnType::Number || column.values.Size() == source.table.rows);
    if (column.type == ColumnType::Number || (others != Others::None && column.type == ColumnType::Date)
        || (others == Others::DatesOrWords && column.type == ColumnType::Text))
        return;
    std::string const expected = others == Others::None ? "numbers" : "numbers, dates or words";
    throw Failure(kDataFault,
        source.table.name + ": " + ColumnLabel(source.table, index) + ": expected " + expected + ", found "
            + ContentsOf(column));
}

bool IsTaken(PlotSource const& source, std::size_t index)
{
    auto const& errors = source.errorColumns;
    return index == source.xColumn || index == source.labelColumn || index == source.groupColumn
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
        std::string const text = ColumnLabel(source.table, i) + " holds " + ContentsOf(column);
        messages.Note(source.table.name + ": " + text + "; not drawn");
        others += "; " + text;
    }
    if (source.yColumns.empty())
        throw Failure(kDataFault, source.table.name + ": expected a column of numbers, found none" + others);
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
    messages.Note(source.table.name + ": x is " + x + "; y is " + y);
    std::vector<std::size_t> told;
    auto const tellGaps = [&](std::size_t index) {
        std::size_t const gaps = source.table.columns[index].gaps;
        bool const isNew = std::find(told.begin(), told.end(), index) == told.end();
        told.push_back(index);
        if (gaps > 0 && isNew)
            messages.Note(
                source.table.name + ": " + ColumnLabel(source.table, index) + ": " + Counted(gaps, "gap", "gaps"));
    };
    if (source.xColumn != PlotSource::kRowNumbers)
        tellGaps(source.xColumn);
    for (std::size_t const index : source.yColumns)
        tellGaps(index);
    for (std::size_t const index : source.errorColumns)
        tellGaps(index);
}

/// How dates along x were read; makes some of numbers that look like them.
void TellDates(PlotSource& source, Options const& options, Messages const& messages)
{
    if (source.xColumn == PlotSource::kRowNumbers)
        return;
    TableColumn& column = source.table.columns[source.xColumn];
    std::string const place = source.table.name + ": " + ColumnLabel(source.table, source.xColumn);
    bool const isAlsoY
        = std::find(source.yColumns.begin(), source.yColumns.end(), source.xColumn) != source.yColumns.end();
    if (options.epochDates && !options.polar && !isAlsoY) {
        if (auto const unit = FindEpoch(column)) {
            MakeDates(column, *unit);
            messages.Note(place + (*unit == EpochUnit::Seconds ? ": seconds" : ": milliseconds")
                + " since 1970 are dates (UTC); --date-format none keeps numbers");
        }
    }
    if (!column.dateOrder)
        return;
    std::string const order = column.dateOrder == DateOrder::DayFirst ? "day/month/year" : "month/day/year";
    if (column.isDateOrderAssumed)
        messages.Warning(place + ": dates are read as " + order + ", and no day tells whether that is right; "
            + "--date-order dmy or mdy says so");
    else
        messages.Note(place + ": dates are " + order);
}

/// What the reader is to keep.
TableOptions ReadingOptions(Options const& options)
{
    TableOptions reading { options.table };
    reading.texts = false;
    reading.dateFormat = options.dateFormat;
    reading.dateColumn = options.xColumn;
    if (!options.yColumns.empty()) {
        reading.wanted = options.yColumns;
        reading.wanted.insert(reading.wanted.end(), options.errorColumns.begin(), options.errorColumns.end());
    }
    for (std::string const& text : { options.labelColumn, options.groupColumn }) {
        if (!text.empty())
            reading.asTexts.push_back(text);
    }
    if (options.kind == PlotKind::Histogram || options.xColumn == kRowsAsX)
        return reading;
    if (options.xColumn.empty()) {
        // The first column that is not asked for as something else.
        reading.leading = 1 + options.errorColumns.size() + reading.asTexts.size();
        return reading;
    }
    if (!reading.wanted.empty())
        reading.wanted.push_back(options.xColumn);
    reading.wordColumn = options.xColumn;
    return reading;
}

bool IsJoined(PlotKind kind) { return kind == PlotKind::Line || kind == PlotKind::Steps || kind == PlotKind::Filled; }

/// A row, and what its place among the others says against joining them.
struct OrderFault {
    std::size_t row = 0;
    std::string text;
};

std::optional<OrderFault> FindWordFault(PlotSource const& source, PlotKind kind)
{
    if (!IsJoined(kind))
        return std::nullopt;
    auto const& words = source.table.columns[source.xColumn].texts;
    auto const equal = FindEqualWords(words);
    if (!equal)
        return std::nullopt;
    return OrderFault { equal->second,
        QuoteForMessage(words[equal->second]) + " stands along x again (line "
            + std::to_string(source.table.LineOf(equal->first)) + " has it)" };
}

/// A column of texts that is not drawn.
std::optional<std::size_t> FindSpareTexts(PlotSource const& source)
{
    for (std::size_t i = 0; i < source.table.columns.size(); ++i) {
        if (source.table.columns[i].type == ColumnType::Text && !IsTaken(source, i))
            return i;
    }
    return std::nullopt;
}

std::optional<OrderFault> FindNumberFault(PlotSource const& source, PlotKind kind)
{
    ColumnValues const& xs = source.table.columns[source.xColumn].values;
    OrderFault const several { 0, "most x values stand in several rows" };
    // Bands are sorted.
    if (kind == PlotKind::Area)
        return CountRepeats(xs) * 2 >= xs.Size() && xs.Size() > 3 ? std::optional(several) : std::nullopt;
    if (!IsJoined(kind))
        return std::nullopt;
    RowOrder const order = OrderOf(xs);
    if (order.returns > 1)
        return OrderFault { order.firstReturn,
            "x runs backwards here and " + Counted(order.returns - 1, "time", "times") + " more" };
    if (order.returnsToStart)
        return OrderFault { order.firstReturn, "x begins anew here" };
    if (order.IsMixed())
        return OrderFault { 0, "x values neither rise nor fall" };
    // Vertical stretches have equal x values too, but no words beside them.
    if (order.equal > 1 && order.equal * 2 >= order.steps && FindSpareTexts(source))
        return several;
    return std::nullopt;
}

/// The column that may tell groups apart.
std::optional<std::size_t> GuessGroupColumn(PlotSource const& source, Options const& options)
{
    // Words along x that nobody asked for there.
    return source.HasWords() && options.xColumn.empty() ? source.xColumn : FindSpareTexts(source);
}

/// A line is drawn because nothing was said of it.
bool IsLineByDefault(Options const& options)
{
    return options.kind == PlotKind::Line
        && !(options.IsGiven(OptionId::Kind) || options.IsGiven(OptionId::LineWidth)
            || options.IsGiven(OptionId::NoAntialias));
}

/// Has points drawn where a line would go back and forth, and tells that, or warns of the first source with such rows.
void SettleOrder(std::vector<PlotSource>& sources, Options const& options, Messages const& messages)
{
    for (PlotSource const& source : sources) {
        if (source.xColumn == PlotSource::kRowNumbers || options.polar)
            return;
        auto const fault
            = source.HasWords() ? FindWordFault(source, options.kind) : FindNumberFault(source, options.kind);
        if (!fault)
            continue;
        std::string text = source.PlaceOf(fault->row);
        if (source.group)
            text += "group " + QuoteForMessage(*source.group) + ": ";
        bool const isMixed = IsLineByDefault(options);
        text += fault->text + (isMixed ? "; points are drawn, and --kind line joins them" : ", and rows are joined");
        auto const guess = source.group ? std::nullopt : GuessGroupColumn(source, options);
        if (!source.group)
            text += "; --by COL makes a curve of each group";
        if (guess)
            text += ", perhaps by " + ColumnLabel(source.table, *guess);
        // Points alone hide nothing.
        if (isMixed && !guess)
            messages.Note(text);
        else
            messages.Warning(text);
        for (PlotSource& one : sources)
            one.isMixed = isMixed;
        return;
    }
}

/// One source for each group, or the one.
std::vector<PlotSource> SplitByGroup(PlotSource source, Messages const& messages)
try {
    std::vector<PlotSource> sources;
    if (source.groupColumn == PlotSource::kRowNumbers) {
        sources.push_back(std::move(source));
        return sources;
    }
    for (TableGroup& group : source.table.GroupBy(source.groupColumn)) {
        PlotSource& one = sources.emplace_back();
        one.table = std::move(group.rows);
        one.group = std::move(group.name);
        one.xColumn = source.xColumn;
        one.yColumns = source.yColumns;
        one.errorColumns = source.errorColumns;
        one.labelColumn = source.labelColumn;
        one.groupColumn = source.groupColumn;
    }
    messages.Note(source.table.name + ": " + Counted(sources.size(), "group", "groups") + " by "
        + ColumnLabel(source.table, source.groupColumn));
    return sources;
} catch (TableReadError const& error) {
    throw Failure(kDataFault, error.what());
}

} // namespace

std::vector<PlotSource> ReadPlotSources(Options const& options, InputFile& file, Messages const& messages)
{
    PlotSource source;
    source.table = ReadTableFile(file, ReadingOptions(options), messages);
    if (source.table.rows == 0)
        throw Failure(kDataFault, source.table.name + ": expected rows of values below the names, found none");
    for (std::string const& text : options.yColumns)
        source.yColumns.push_back(NamedColumn(source, text, "-y"));
    ChooseErrors(source, options);
    if (!options.labelColumn.empty())
        source.labelColumn = NamedColumn(source, options.labelColumn, "--label");
    if (!options.groupColumn.empty())
        source.groupColumn = NamedColumn(source, options.groupColumn, "--by");
    ChooseX(source, options);
    if (options.yColumns.empty())
        ChooseAllY(source, messages);
    for (std::size_t const index : source.yColumns)
        RequireValues(source, index, Others::None);
    MatchErrors(source);
    TellDates(source, options, messages);
    TellColumns(source, messages);
    std::vector<PlotSource> sources = SplitByGroup(std::move(source), messages);
    SettleOrder(sources, options, messages);
    return sources;
}

} // namespace ombrel::host
