#include "tools/ombrel/commands/Groups.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace ombrel::host {

namespace {

constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

/// Which rows of a table make one row of each group.
struct Group {
    std::string_view word;
    /// The table's rows in the order of the group's; kNowhere where the group has none.
    std::vector<std::size_t> rows;
};

/// The table's rows by group.
std::vector<Group> GatherGroups(PlotSource const& source)
{
    std::vector<Group> groups;
    std::unordered_map<std::string_view, std::size_t> indices;
    auto const& words = source.table.columns[source.groupColumn].texts;
    for (std::size_t row = 0; row < words.size(); ++row) {
        auto const [found, isNew] = indices.try_emplace(words[row], groups.size());
        if (isNew) {
            if (groups.size() == kMostGroups)
                throw Failure(kDataFault,
                    source.PlaceOf(row) + ColumnLabel(source.table, source.groupColumn) + ": expected at most "
                        + std::to_string(kMostGroups) + " groups, found one more: " + QuoteForMessage(words[row]));
            groups.push_back({ words[row], {} });
        }
        groups[found->second].rows.push_back(row);
    }
    return groups;
}

/// For each row of the table the place of its x value among the different ones; kNowhere without an x value.
std::vector<std::size_t> PlacesOf(TableColumn const& column, bool asWords)
{
    std::vector<std::size_t> places;
    if (asWords) {
        std::unordered_map<std::string_view, std::size_t> known;
        for (std::string const& word : column.texts)
            places.push_back(known.try_emplace(word, known.size()).first->second);
        return places;
    }
    std::unordered_map<double, std::size_t> known;
    column.values.ForEach([&](double x) {
        places.push_back(std::isnan(x) ? kNowhere : known.try_emplace(x, known.size()).first->second);
    });
    return places;
}

/// Puts each group's rows where their x values belong.
void MatchRows(PlotSource const& source, std::vector<Group>& groups)
{
    if (source.xColumn == PlotSource::kRowNumbers) {
        std::size_t longest = 0;
        for (Group const& group : groups)
            longest = std::max(longest, group.rows.size());
        for (Group& group : groups)
            group.rows.resize(longest, kNowhere);
        return;
    }
    std::vector<std::size_t> const places = PlacesOf(source.table.columns[source.xColumn], source.HasWords());
    std::size_t count = 0;
    for (std::size_t const place : places)
        count = place == kNowhere ? count : std::max(count, place + 1);
    for (Group& group : groups) {
        std::vector<std::size_t> matched(count, kNowhere);
        for (std::size_t const row : group.rows) {
            if (places[row] == kNowhere)
                continue;
            std::size_t& slot = matched[places[row]];
            if (slot != kNowhere)
                throw Failure(kDataFault,
                    source.PlaceOf(row) + "expected one row for each x of the group " + QuoteForMessage(group.word)
                        + ", found another (line " + std::to_string(source.table.LineOf(slot)) + " has the same x)");
            slot = row;
        }
        group.rows = std::move(matched);
    }
}

/// The rows of the values; a gap for those that the group does not have.
void PickValues(std::vector<double> const& values, std::vector<std::size_t> const& rows, ColumnValues& picked)
{
    for (std::size_t const row : rows)
        picked.Append(row == kNowhere ? std::numeric_limits<double>::quiet_NaN() : values[row]);
}

void PickTexts(
    std::vector<std::string> const& texts, std::vector<std::size_t> const& rows, std::vector<std::string>& picked)
{
    for (std::size_t const row : rows)
        picked.push_back(row == kNowhere ? std::string() : texts[row]);
}

/// Without what belongs to rows.
PlotSource EmptySource(PlotSource const& source, Group const& group)
{
    PlotSource part;
    part.name = source.name;
    part.group = group.word;
    part.xColumn = source.xColumn;
    part.yColumns = source.yColumns;
    part.errorColumns = source.errorColumns;
    part.labelColumn = source.labelColumn;
    part.groupColumn = source.groupColumn;
    part.table.dialect = source.table.dialect;
    part.table.rows = group.rows.size();
    for (TableColumn const& column : source.table.columns) {
        part.table.columns.emplace_back();
        part.table.columns.back().name = column.name;
        part.table.columns.back().type = column.type;
    }
    return part;
}

void AddLines(Table const& table, std::vector<std::size_t> const& rows, Table& part)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t const line = rows[i] == kNowhere ? part.LineOf(i) : table.LineOf(rows[i]);
        if (i == 0 || line != part.LineOf(i))
            part.lineJumps.push_back({ i, line });
    }
}

} // namespace

std::vector<PlotSource> SplitByGroup(PlotSource source, GroupRows rows)
{
    std::vector<Group> groups = GatherGroups(source);
    // The x values as they are shared, for rows that a group does not have.
    std::vector<std::size_t> xRows;
    if (rows == GroupRows::Matched) {
        MatchRows(source, groups);
        xRows.assign(groups.front().rows.size(), kNowhere);
        for (Group const& group : groups) {
            for (std::size_t i = 0; i < xRows.size(); ++i)
                xRows[i] = std::min(xRows[i], group.rows[i]);
        }
    }
    std::vector<PlotSource> parts;
    for (Group const& group : groups) {
        parts.push_back(EmptySource(source, group));
        AddLines(source.table, group.rows, parts.back().table);
    }
    for (std::size_t i = 0; i < source.table.columns.size(); ++i) {
        TableColumn& column = source.table.columns[i];
        bool const isSharedX = rows == GroupRows::Matched && i == source.xColumn;
        std::vector<double> values(column.values.Size());
        column.values.MoveTo(values.data());
        for (std::size_t k = 0; k < groups.size(); ++k) {
            auto const& picked = isSharedX ? xRows : groups[k].rows;
            if (!values.empty())
                PickValues(values, picked, parts[k].table.columns[i].values);
            if (!column.texts.empty() && i != source.groupColumn)
                PickTexts(column.texts, picked, parts[k].table.columns[i].texts);
        }
    }
    return parts;
}

} // namespace ombrel::host
