#include "tools/ombrel/commands/TableFile.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"

#include <algorithm>

namespace ombrel::host {

namespace {

void TellAssumptions(Table const& table, Messages const& messages)
{
    std::string const& name = table.name;
    std::string text = name + ": ";
    if (table.dialect.separator == 0)
        text += "one column";
    else
        text += "separator " + SeparatorLabel(table.dialect.separator);
    text += ", decimal ";
    text += table.dialect.decimalMark == ',' ? "comma" : "point";
    text += table.dialect.hasHeader ? ", names in the first row" : ", no names in the first row";
    if (table.dialect.hasRowNames)
        text += " but for the first column";
    messages.Note(
        text + ", " + Counted(table.rows, "row", "rows") + " of " + Counted(table.columns.size(), "column", "columns"));
    if (table.shortRows > 0)
        messages.Note(name + ": " + Counted(table.shortRows, "row has", "rows have")
            + " fewer cells than there are columns; the others are gaps");
    if (table.shiftedDates > 0)
        messages.Note(name + ": " + Counted(table.shiftedDates, "date names", "dates name")
            + " an offset from UTC; times are UTC");
    if (table.headerWasLatin1)
        messages.Note(name + ": the names are not UTF-8; read as Latin-1");
}

} // namespace

std::string CountedInt(int count, std::string const& singular, std::string const& plural)
{
    return Counted(static_cast<std::size_t>(std::max(count, 0)), singular, plural);
}

std::string SeparatorLabel(char separator)
{
    switch (separator) {
    case 0:
        return "none";
    case '\t':
        return "tab";
    case ' ':
        return "blanks";
    default:
        return std::string("\"") + separator + "\"";
    }
}

Table ReadTableFile(InputFile& file, TableOptions const& options, Messages const& messages)
{
    TableReader reader(options);
    {
        Progress progress("reading " + file.GetName(), file.GetSize());
        std::uint64_t done = 0;
        for (std::string_view piece = file.Read(); !piece.empty() && reader.Feed(piece); piece = file.Read()) {
            done += piece.size();
            progress.Advance(done);
        }
    }
    auto result = reader.Finish();
    if (auto const* const error = std::get_if<TableError>(&result))
        throw Failure(kDataFault, file.GetName() + ":" + error->ToText());
    Table table = std::get<Table>(std::move(result));
    table.name = file.GetName();
    TellAssumptions(table, messages);
    return table;
}

} // namespace ombrel::host
