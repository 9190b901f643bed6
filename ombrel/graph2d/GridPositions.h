#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/AxisSettings.h"
#include "ombrel/platform/framework/Export.h"

#include <vector>

namespace ombrel {

/// Which lines one pass over a rectangular grid draws.
enum GridTickType : int { ttMinor = 0, ttMajor = 1 };

/// The settings of the grid lines across one axis. Positions are data units; on a logarithmic axis they are decades.
///
/// A document may hold any value. Divisions that are not positive and steps that are not positive numbers make no
/// lines, and neither does a pass of more than kMaxTicks lines.
struct GridDirection {
    /// How lines are spaced: equal divisions of the axis range, or a fixed step (of dates on a date axis).
    enum LineMode : int { lmDivisions = 0, lmStep = 1 };

    /// Lines of divisions, steps and dates are drawn; those of decades always are.
    int linesOn = 1;
    int majorDivisions = 5;
    /// Of each major division, or each step.
    int minorDivisions = 4;
    int lineMode = lmDivisions;
    /// A position that a line of the fixed step lies on, and the step.
    double lineMin = 0.0;
    double lineDel = 2.0;
    int freeLinesOn = 0;
    /// Only stored.
    int alignFreeLines = 0;
    CDoubleArray freePositions;
};

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
OMBREL_EXPORT std::vector<double> DivisionLines(GridDirection const& direction, GridRange range, GridTickType type);

/// lineMin ± n · lineDel in the range, and the parts of these steps in the range. Only major lines have a closing line.
OMBREL_EXPORT std::vector<double> StepLines(
    GridDirection const& direction, GridRange range, GridTickType type, ClosingLine closing);

/// The dates tickMin ± n · del in the range, and the smaller steps after each of them. A range that is no range of
/// dates has none.
OMBREL_EXPORT std::vector<double> DateLines(DateTickSettings const& dates, GridRange range, GridTickType type);

/// The whole decades in the range; the minor lines at 2 … 10 times each power of ten from that below the minimum.
OMBREL_EXPORT std::vector<double> DecadeLines(GridRange range, GridTickType type);

} // namespace ombrel
