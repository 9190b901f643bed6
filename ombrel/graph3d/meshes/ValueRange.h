#pragma once
#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <vector>

namespace ombrel {

class CTableData;

/// A smallest and a largest value, the other way round while there are none.
using ValueRange = std::array<double, 2>;
inline constexpr ValueRange kNoRange { std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity() };

inline void Widen(ValueRange& range, double value)
{
    range[0] = std::min(range[0], value);
    range[1] = std::max(range[1], value);
}
inline void Unite(ValueRange& range, ValueRange const& other)
{
    range[0] = std::min(range[0], other[0]);
    range[1] = std::max(range[1], other[1]);
}
/// Of each row of the table, without gaps.
std::vector<ValueRange> FindRowRanges(CTableData const& table);
/// A row a range, smallest value first; 0 and 0 for one without values.
CTableData MakeRangeTable(std::span<ValueRange const> ranges);

} // namespace ombrel
