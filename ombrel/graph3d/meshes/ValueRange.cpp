#include "ombrel/graph3d/meshes/ValueRange.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/model/TableData.h"

#include <span>

namespace ombrel {

std::vector<ValueRange> FindRowRanges(CTableData const& table)
{
    std::vector<ValueRange> ranges(static_cast<std::size_t>(table.HasData() ? table.GetNumRows() : 0), kNoRange);
    for (std::size_t r = 0; r < ranges.size(); ++r) {
        double const* const row = table.GetRow(static_cast<int>(r));
        for (double const value : std::span(row, static_cast<std::size_t>(table.GetNumCols()))) {
            if (!IsGap(value))
                Widen(ranges[r], value);
        }
    }
    return ranges;
}

CTableData MakeRangeTable(std::span<ValueRange const> ranges)
{
    CTableData table(static_cast<int>(ranges.size()), 2);
    for (int v = 0; v < table.GetNumRows(); ++v) {
        auto const& range = ranges[static_cast<std::size_t>(v)];
        for (int k = 0; k < 2 && range[0] <= range[1]; ++k)
            table.SetAt(v, k, range[static_cast<std::size_t>(k)]);
    }
    return table;
}

} // namespace ombrel
