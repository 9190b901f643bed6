#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/table/Table.h"

#include <optional>

namespace ombrel {

/// What a clock's count from 1 January 1970, 0:00 UTC, is of.
enum class EpochUnit { Seconds, Milliseconds };

/// The unit that a column of numbers seems to count in, if it does. There are several, all before March 2049; and
/// either the column's name speaks of time and they begin in September 2001 or later, or they rise or fall throughout
/// and begin in November 2004 or later, beyond the round numbers that anything may reach.
OMBREL_EXPORT std::optional<EpochUnit> FindEpoch(TableColumn const& column);

/// Makes dates of such numbers.
OMBREL_EXPORT void MakeDates(TableColumn& column, EpochUnit unit);

} // namespace ombrel
