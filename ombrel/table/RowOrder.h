#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/table/ColumnValues.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ombrel {

/// How x values follow each other from row to row; gaps are passed over.
struct RowOrder {
    /// Single steps against the direction that most steps have, with steps in that direction before and after: where
    /// one group of rows ends and the next begins. Curves that turn back for several rows have none.
    std::size_t returns = 0;
    /// The row that the first of them leads to.
    std::size_t firstReturn = 0;
    /// It leads to the very x that the table begins with.
    bool returnsToStart = false;
    /// How often steps change between up and down.
    std::size_t turns = 0;
    /// Steps that go neither up nor down, and all steps.
    std::size_t equal = 0;
    std::size_t steps = 0;

    /// The values turn round every few rows: a line through them would go back and forth all the time, rather than
    /// once in a while as along a loop.
    bool IsMixed() const { return turns > 1 && turns * 4 >= steps; }
};

/// Of the values of a column, which dates and places of words have, too.
OMBREL_EXPORT RowOrder OrderOf(ColumnValues const& xs);

/// How many values stand in an earlier row too, whatever lies between.
OMBREL_EXPORT std::size_t CountRepeats(ColumnValues const& xs);

/// The first word that stands in two rows, as the rows (from 0) of its first two appearances. Empty words are gaps.
OMBREL_EXPORT std::optional<std::pair<std::size_t, std::size_t>> FindEqualWords(std::vector<std::string> const& words);

} // namespace ombrel
