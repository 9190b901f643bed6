#include "ombrel/table/Table.h"
#include "ombrel/table/ColumnTexts.h"
#include "ombrel/table/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace ombrel {

namespace {

/// More groups than this: a column with so many different words tells no groups apart.
constexpr std::size_t kMostGroups = 1000;

/// What stands in the cells: texts, or else the shortest text of each number.
std::vector<std::string> CellTexts(TableColumn const& column)
{
    if (!column.texts.empty())
        return column.texts;
    std::vector<std::string> texts;
    column.values.ForEach([&texts](double value) {
        std::array<char, 32> text {};
        char* const end = std::isnan(value) ? text.data() : std::to_chars(text.begin(), text.end(), value).ptr;
        texts.emplace_back(text.data(), end);
    });
    return texts;
}

/// The whole table's, without what belongs to rows.
Table WithoutRows(Table const& table)
{
    Table empty;
    empty.name = table.name;
    empty.dialect = table.dialect;
    for (TableColumn const& column : table.columns) {
        TableColumn& same = empty.columns.emplace_back();
        same.name = column.name;
        same.type = column.type;
        same.firstText = column.firstText;
        same.dateOrder = column.dateOrder;
        same.isDateOrderAssumed = column.isDateOrderAssumed;
        same.misfit = column.misfit;
    }
    return empty;
}

} // namespace

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

std::size_t Table::IndexOf(std::string_view wanted) const
{
    std::vector<std::string> const names = NamesOf(*this);
    std::size_t const index = FindColumn(names, wanted);
    if (index < columns.size())
        return index;
    std::string known;
    for (std::string const& n : names)
        known += (known.empty() ? "" : ", ") + n;
    throw TableReadError(name + ": there is no column " + QuoteForMessage(wanted)
        + (dialect.hasHeader ? "; the columns are " + known
                             : " among " + std::to_string(columns.size()) + " columns without names"));
}

TableColumn const& Table::Column(std::string_view wanted) const { return columns[IndexOf(wanted)]; }

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

std::vector<TableGroup> Table::GroupBy(std::string_view wanted) const { return GroupBy(IndexOf(wanted)); }

std::vector<TableGroup> Table::GroupBy(std::size_t column) const
{
    std::vector<std::string> const texts = CellTexts(columns.at(column));
    if (texts.size() != rows)
        throw TableReadError(
            name + ": " + ColumnLabel(*this, column) + ": its texts were not kept (TableOptions::asTexts keeps them)");
    std::vector<TableGroup> groups;
    // Of each row.
    std::vector<std::size_t> places;
    std::unordered_map<std::string_view, std::size_t> known;
    for (std::size_t row = 0; row < rows; ++row) {
        auto const [found, isNew] = known.try_emplace(texts[row], groups.size());
        if (isNew && groups.size() == kMostGroups)
            throw TableReadError(name + ":" + std::to_string(LineOf(row)) + ": " + ColumnLabel(*this, column)
                + ": expected at most " + std::to_string(kMostGroups)
                + " groups, found one more: " + QuoteForMessage(texts[row]));
        if (isNew)
            groups.push_back({ texts[row], WithoutRows(*this) });
        places.push_back(found->second);
        Table& part = groups[found->second].rows;
        if (part.rows == 0 || LineOf(row) != part.LineOf(part.rows))
            part.lineJumps.push_back({ part.rows, LineOf(row) });
        ++part.rows;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::size_t row = 0;
        columns[i].values.ForEach([&](double value) {
            TableColumn& part = groups[places[row++]].rows.columns[i];
            part.values.Append(value);
            part.gaps += std::isnan(value);
        });
        for (row = 0; row < columns[i].texts.size(); ++row) {
            TableColumn& part = groups[places[row]].rows.columns[i];
            part.texts.push_back(columns[i].texts[row]);
            part.gaps += part.type == ColumnType::Text && columns[i].texts[row].empty();
        }
    }
    return groups;
}

} // namespace ombrel
