#pragma once
#include "ombrel/platform/framework/Types.h"
#include "ombrel/prefs/Preferences.h"

namespace ombrel {

/// How the major or the minor lines of a 2D grid look.
struct GridLine {
    COLORREF colour = 0;
    /// 0 broken (dotted on a rectangular grid, dashed on a polar one), 1 solid; other values are not defined.
    int style = 0;
};

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
