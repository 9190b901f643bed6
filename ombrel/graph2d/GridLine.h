#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/prefs/Preferences.h"

#include <span>

namespace ombrel {

class CDC;

/// How the major or the minor lines of a 2D grid look.
struct GridLine {
    COLORREF colour = 0;
    /// 0 broken (dotted on a rectangular grid, dashed on a polar one), 1 or any other value solid.
    int style = 0;
    bool IsSolid() const { return style != 0; }
};

/// A pen for the lines: of nominal width 1, printed in the thickness that the user prefers for grids. Broken lines have
/// these dashes, which the pen refers to.
OMBREL_EXPORT VectorPen GridPen(CDC const& dc, GridLine const& line, std::span<double const> dashes);

/// Broken lines in the colour that the user prefers.
inline GridLine PreferredMajorGridLine()
{
    GridLine line;
    CPreferences::GetMajorGridLineColour2D(line.colour);
    return line;
}
inline GridLine PreferredMinorGridLine()
{
    GridLine line;
    CPreferences::GetMinorGridLineColour2D(line.colour);
    return line;
}

} // namespace ombrel
