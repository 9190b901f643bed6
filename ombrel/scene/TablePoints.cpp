#include "ombrel/scene/TablePoints.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/scene/parts/SceneTexts.h"
#include "ombrel/table/ColumnTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace ombrel {

namespace {

/// The columns called x, y and z; else the first three of numbers. Nothing when there are not so many.
std::optional<std::array<std::size_t, 3>> FindPointColumns(Table const& table)
{
    auto const& columns = table.columns;
    auto const named = [&](std::string_view name) {
        return static_cast<std::size_t>(std::find_if(columns.begin(), columns.end(), [&](TableColumn const& c) {
            return LowerCase(c.name) == name;
        }) - columns.begin());
    };
    std::array<std::size_t, 3> const byName { named("x"), named("y"), named("z") };
    if (*std::max_element(byName.begin(), byName.end()) < columns.size())
        return byName;
    std::array<std::size_t, 3> byType {};
    std::size_t found = 0;
    for (std::size_t i = 0; i < columns.size() && found < byType.size(); ++i) {
        if (HoldsNumbers(columns[i]))
            byType[found++] = i;
    }
    if (found < byType.size())
        return std::nullopt;
    return byType;
}

std::size_t NamedColumn(Table const& table, std::string const& name, std::string const& text, char const* option)
{
    std::size_t const index = FindColumn(NamesOf(table), text);
    if (index < table.columns.size())
        return index;
    throw ChartError(
        ChartError::Cause::Setting, std::string(option) + " " + text + ": " + name + " has no such column");
}

/// Takes columns out of a table; one that is asked for twice is copied.
class ColumnTaker {
public:
    ColumnTaker(Table& table, std::string const& name)
        : m_table(table)
        , m_name(name)
    {
    }
    std::vector<double> Take(std::size_t index)
    {
        for (auto const& [taken, values] : m_taken) {
            if (taken == index)
                return *values;
        }
        return TakeNumbers(m_table, index, m_name);
    }
    /// Values that are in their place and may be asked for again.
    void Remember(std::size_t index, std::vector<double> const& values) { m_taken.emplace_back(index, &values); }

private:
    Table& m_table;
    std::string const& m_name;
    std::vector<std::pair<std::size_t, std::vector<double> const*>> m_taken;
};

} // namespace

bool HoldsNumbers(TableColumn const& column) { return !column.misfit && column.type == ColumnType::Number; }

bool HasPointColumns(Table const& table) { return FindPointColumns(table).has_value(); }

std::vector<double> TakeNumbers(Table& table, std::size_t index, std::string const& name)
{
    TableColumn& column = table.columns[index];
    if (column.misfit)
        throw ChartError(ChartError::Cause::Data, name + ":" + column.misfit->ToText());
    if (column.type == ColumnType::Unknown)
        return std::vector<double>(table.rows, std::numeric_limits<double>::quiet_NaN());
    if (column.type != ColumnType::Number)
        throw ChartError(ChartError::Cause::Data,
            name + ": " + ColumnLabel(table, index) + ": expected numbers, found " + ContentsOf(column));
    std::vector<double> values(column.values.Size());
    column.values.MoveTo(values.data());
    return values;
}

Points PointsOfTable(Table& table, std::string const& name, PointColumnNames const& columns)
{
    std::array<std::size_t, 3> place = FindPointColumns(table).value_or(std::array<std::size_t, 3> { 0, 1, 2 });
    std::array<std::pair<std::string const*, char const*>, 3> const wanted { { { &columns.x, "x" }, { &columns.y, "y" },
        { &columns.z, "z" } } };
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (!wanted[i].first->empty())
            place[i] = NamedColumn(table, name, *wanted[i].first, wanted[i].second);
    }
    if (*std::max_element(place.begin(), place.end()) >= table.columns.size())
        throw ChartError(ChartError::Cause::Data,
            name + ": expected columns of x, y and z, found " + Counted(table.columns.size(), "column", "columns"));
    Points points;
    points.source = name;
    ColumnTaker taker(table, name);
    auto const take = [&](std::size_t index, std::vector<double>& values) {
        values = taker.Take(index);
        taker.Remember(index, values);
        return table.columns[index].name;
    };
    points.xTitle = take(place[0], points.x);
    points.yTitle = take(place[1], points.y);
    points.zTitle = take(place[2], points.z);
    if (!columns.size.empty())
        take(NamedColumn(table, name, columns.size, "size-by"), points.sizes);
    if (!columns.colour.empty())
        points.colourTitle = take(NamedColumn(table, name, columns.colour, "colour-by"), points.colours);
    if (!columns.label.empty())
        points.labels = std::move(table.columns[NamedColumn(table, name, columns.label, "label")].texts);
    return points;
}

} // namespace ombrel
