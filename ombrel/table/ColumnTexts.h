#pragma once
#include "ombrel/table/Table.h"

#include <string>
#include <vector>

namespace ombrel {

// How messages call a table's columns and what they hold.

/// "column 3 (temperature)", or "column 3" without a header.
OMBREL_EXPORT std::string ColumnLabel(Table const& table, std::size_t index);

/// "numbers", "dates", "texts" or "only gaps".
OMBREL_EXPORT std::string TypeLabel(ColumnType type);

/// What a column holds: "dates", or "texts such as …" with the first of them.
OMBREL_EXPORT std::string ContentsOf(TableColumn const& column);

/// By column; empty without a header.
OMBREL_EXPORT std::vector<std::string> NamesOf(Table const& table);

} // namespace ombrel
