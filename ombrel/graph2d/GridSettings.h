#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

/// How the major or the minor lines of a 2D grid look.
struct GridLine {
    COLORREF colour = 0;
    /// 0 broken (dotted on a rectangular grid, dashed on a polar one), 1 or any other value solid.
    int style = 0;
    bool IsSolid() const { return style != 0; }
};

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

} // namespace ombrel
