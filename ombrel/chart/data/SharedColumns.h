#pragma once
#include "ombrel/chart/data/SeriesCurves.h"

namespace ombrel {

/// The columns of one graph over all x values that any of them has.
struct SharedColumns {
    struct Column {
        SeriesData const* series = nullptr;
        /// One for each x; NaN where the series has none.
        std::vector<double> ys;
        /// Likewise, or empty.
        std::vector<double> errors;
    };
    /// Ascending, without gaps.
    std::vector<double> xs;
    std::vector<Column> columns;

    /// The smallest distance between neighbours; 1 for a single one.
    double Spacing() const;
    bool HasWholeNumbers() const;
};

/// Whether equal x values may follow each other.
enum class EqualX { Allowed, Refused };

/// Turns what the reader calls a gap, and what a logarithmic axis cannot show, into the library's gaps in all columns,
/// and notes those without a value that is shown.
void MarkGaps(CurveInput const& input, SharedColumns& shared, bool logarithmic, CurveData& data);

/// The values of all series in the order of x. Throws SeriesError when equal x values of a series are refused and there
/// are some.
SharedColumns ShareColumns(CurveInput const& input, EqualX equalX);

} // namespace ombrel
