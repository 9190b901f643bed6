#pragma once
#include "ombrel/graph2d/AxisSettings.h"
#include "ombrel/graph2d/GridSettings.h"

#include <vector>

namespace ombrel {

/// The part of an axis that a grid covers.
struct GridRange {
    double min;
    double max;
};

/// Whether a line at the maximum closes the grid when no step falls there.
enum class ClosingLine { None, AtMaximum };

// Each function below gives the positions of the lines of one pass, from the minimum on. Ranges that are not finite or
// have no length have none; in a reversed range, whose minimum is above its maximum, there are no steps, dates and
// decades.

/// Equal divisions of the range, reversed or not: the ends with the major lines, and the minor lines between.
std::vector<double> DivisionLines(GridDirection const& direction, GridRange range, GridTickType type);

/// lineMin ± n · lineDel in the range, and the parts of these steps in the range. Only major lines have a closing line.
std::vector<double> StepLines(GridDirection const& direction, GridRange range, GridTickType type, ClosingLine closing);

/// The dates tickMin ± n · del in the range, and the smaller steps after each of them. A range that is no range of
/// dates has none.
std::vector<double> DateLines(DateSteps const& dates, GridRange range, GridTickType type);

/// The whole decades in the range; the minor lines at 2 … 10 times each power of ten from that below the minimum.
std::vector<double> DecadeLines(GridRange range, GridTickType type);

} // namespace ombrel
