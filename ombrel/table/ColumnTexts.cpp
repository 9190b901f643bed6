#include "ombrel/table/ColumnTexts.h"
#include "ombrel/table/Utf8.h"

namespace ombrel {

std::string TypeLabel(ColumnType type)
{
    switch (type) {
    case ColumnType::Number:
        return "numbers";
    case ColumnType::Date:
        return "dates";
    case ColumnType::Text:
        return "texts";
    case ColumnType::Unknown:
        break;
    }
    return "only gaps";
}

std::string ContentsOf(TableColumn const& column)
{
    std::string const label = TypeLabel(column.type);
    return column.firstText.empty() ? label : label + " such as " + QuoteForMessage(column.firstText);
}

std::vector<std::string> NamesOf(Table const& table)
{
    std::vector<std::string> names;
    for (TableColumn const& column : table.columns)
        names.push_back(column.name);
    return names;
}

std::string ColumnLabel(Table const& table, std::size_t index)
{
    std::string const label = "column " + std::to_string(index + 1);
    std::string const& name = table.columns[index].name;
    return name.empty() ? label : label + " (" + name + ")";
}

} // namespace ombrel
