#pragma once
#include "ombrel/chart/AxisTicks.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/framework/Types.h"
#include "tools/ombrel/options/SurfaceOptions.h"

#include <string>
#include <vector>

namespace ombrel {
class CColourKey;
class CColourMap;
class CPlotComponent;
} // namespace ombrel

namespace ombrel::host {

/// Lines over bands and faces are darker than all of them.
constexpr COLORREF kLineColour = RGB(40, 40, 40);

/// The levels that the options ask for over that range, ascending; without a wish, about ten at tidy values inside of
/// it. So many bands have tidy values between them, too, where there are such. There is always a level: the range's end
/// when no other lies inside. Throws Failure with kUsageFault when steps would make more than a thousand.
std::vector<double> LevelsOf(SurfaceOptions const& options, AxisRange range);
/// The same as curves take them.
CDoubleArray LevelArray(SurfaceOptions const& options, AxisRange range);

/// Has the curve's colours reach over the heights that the options ask for, where they do.
void SetColourRange(CPlotComponent& curve, SurfaceOptions const& options);

/// Gives a key of the curve's colours labels at tidy values, for when it has no bands.
void SetKeyLabels(CColourKey& key, CPlotComponent const& curve);

/// The colour map of that name or file, viridis for an empty name. Throws Failure with kUsageFault when there is none.
void LoadHeightMap(std::string const& name, CColourMap& map);

} // namespace ombrel::host
