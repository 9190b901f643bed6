#pragma once
#include "tools/ombrel/chart/AxisLayout.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <string>
#include <vector>

namespace ombrel {
class CColourMap;
}

namespace ombrel::host {

class Messages;

/// Levels as the library places them: in a series, or each where it is said to be.
struct HeightLevels {
    /// Used when there are no values.
    double reference = 0.0;
    double spacing = 1.0;
    std::vector<double> values;
};

/// The levels that the options ask for over that range; without a wish, about ten at tidy values. Throws Failure with
/// kUsageFault when steps would make more than a thousand.
HeightLevels LevelsOf(SurfaceOptions const& options, AxisRange range);

/// The colour map of that name or file, viridis for an empty name. Throws Failure with kUsageFault when there is none.
void LoadHeightMap(std::string const& name, CColourMap& map);

} // namespace ombrel::host
