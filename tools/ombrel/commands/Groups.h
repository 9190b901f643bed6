#pragma once
#include "tools/ombrel/commands/PlotSource.h"

namespace ombrel::host {

/// More groups than this are an error: a column with so many different words tells no groups apart.
inline constexpr std::size_t kMostGroups = 1000;

/// Whether the groups' rows are matched by their x values.
enum class GroupRows {
    /// Each group has its own rows.
    Separate,
    /// Each group has one row for every x value of the table, with gaps where the group has none. The x values stand
    /// in the order of their first appearance.
    Matched,
};

/// One source for each word or number of the group column, in the order in which these appear, each with the table's
/// rows of that group; rows with a gap there make a group of their own. Numbered rows are numbered in each group.
///
/// Throws Failure with kDataFault when there are too many groups, or when a group's rows are to be matched and two of
/// them have the same x value.
std::vector<PlotSource> SplitByGroup(PlotSource source, GroupRows rows);

} // namespace ombrel::host
