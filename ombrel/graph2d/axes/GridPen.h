#pragma once
#include "ombrel/graph2d/GridSettings.h"
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/prefs/Preferences.h"

#include <span>

namespace ombrel {

class CDC;

/// A pen for the lines: of nominal width 1, printed in the thickness that the user prefers for grids. Broken lines have
/// these dashes, which the pen refers to.
VectorPen GridPen(CDC const& dc, GridLine const& line, std::span<double const> dashes);

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
