#pragma once
#include "tools/ombrel/chart/PlotCurves.h"

namespace ombrel::host {

/// The columns of one graph over x values that they have in common.
struct SharedColumns {
    struct Column {
        std::string title;
        /// One for each x.
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

/// Takes all y columns out of the sources, in the order of x. Throws Failure when the sources' x values differ, or when
/// equal ones are refused and there are some.
SharedColumns TakeSharedColumns(CurveInput const& input, EqualX equalX);

} // namespace ombrel::host
