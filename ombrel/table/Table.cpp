#include "ombrel/table/Table.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>

namespace ombrel {

std::string TableError::ToText() const
{
    std::string text = std::to_string(line) + ": ";
    if (column > 0)
        text += "column " + std::to_string(column) + ": ";
    return text + "expected " + expected + ", found " + found;
}

std::size_t Table::LineOf(std::size_t row) const
{
    auto const after = std::upper_bound(lineJumps.begin(), lineJumps.end(), row,
        [](std::size_t wanted, TableLineJump const& jump) { return wanted < jump.row; });
    if (after == lineJumps.begin())
        return 0;
    return (after - 1)->line + (row - (after - 1)->row);
}

TableColumn const& Table::Column(std::string_view wanted) const
{
    std::vector<std::string> names;
    for (TableColumn const& column : columns)
        names.push_back(column.name);
    std::size_t const index = FindColumn(names, wanted);
    if (index < columns.size())
        return columns[index];
    std::string known;
    for (std::string const& n : names)
        known += (known.empty() ? "" : ", ") + n;
    throw TableReadError(name + ": there is no column " + QuoteForMessage(wanted)
        + (dialect.hasHeader ? "; the columns are " + known
                             : " among " + std::to_string(columns.size()) + " columns without names"));
}

std::vector<double> Table::Values(std::string_view wanted) const
{
    TableColumn const& column = Column(wanted);
    if (column.misfit)
        throw TableReadError(name + ":" + column.misfit->ToText());
    if (column.values.Size() != rows)
        throw TableReadError(name + ": expected numbers or dates in column " + QuoteForMessage(wanted) + ", found "
            + (column.firstText.empty() ? "texts" : QuoteForMessage(column.firstText)));
    std::vector<double> values;
    values.reserve(rows);
    column.values.ForEach([&values](double value) { values.push_back(value); });
    return values;
}

} // namespace ombrel
