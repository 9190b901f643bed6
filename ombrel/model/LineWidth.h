#pragma once
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class CDC;

/// What a line is part of: printed lines of each kind are scaled by a preference of the user.
enum class ThicknessKind { Curve = 0, Axes = 1, Border = 2, Symbol = 3, Grid = 4 };

/// The pen width in device pixels, at least 1, of a line of nominal width at 96 pixels to the inch.
OMBREL_EXPORT int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind);
/// As above, untouched by the preferences: a sample in a legend.
OMBREL_EXPORT int DeviceLineWidth(CDC const& dc, double nominalWidth);

} // namespace ombrel
