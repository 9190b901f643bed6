#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

/// The colour of a row of bars, or of a line of a series: fifteen that are told apart, then those of the platform's
/// random numbers, always the same. Rows below 0 are black.
OMBREL_EXPORT COLORREF GetRowColour(int row);

} // namespace ombrel
