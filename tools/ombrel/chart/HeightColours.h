#pragma once
#include "tools/ombrel/chart/AxisLayout.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <string>
#include <vector>

namespace ombrel {
class CColourKey;
class CColourMap;
class CPlotComponent;
} // namespace ombrel

namespace ombrel::host {

class Messages;

/// The levels that the options ask for over that range, ascending; without a wish, about ten at tidy values inside of
/// it. So many bands have tidy values between them, too, where there are such. There is always a level: the range's end
/// when no other lies inside. Throws Failure with kUsageFault when steps would make more than a thousand.
std::vector<double> LevelsOf(SurfaceOptions const& options, AxisRange range);

/// Gives a key of the curve's colours labels at tidy values, for when it has no bands.
void SetKeyLabels(CColourKey& key, CPlotComponent const& curve);

/// The colour map of that name or file, viridis for an empty name. Throws Failure with kUsageFault when there is none.
void LoadHeightMap(std::string const& name, CColourMap& map);

} // namespace ombrel::host
