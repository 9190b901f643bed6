#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/platform/framework/Types.h"
#include "ombrel/scene/SceneStyle.h"

#include <string>
#include <vector>

namespace ombrel {
class C3DCurve;
class CColourKey;
class CColourMap;
class CPlotComponent;

/// Lines over bands and faces are darker than all of them.
constexpr COLORREF kLineColour = RGB(40, 40, 40);

/// The levels that are asked for over that range, ascending; without a wish, about ten at tidy values inside of
/// it. So many bands have tidy values between them, too, where there are such. There is always a level: the range's end
/// when no other lies inside. Throws ChartError when steps would make more than a thousand.
std::vector<double> LevelsOf(std::optional<LevelChoice> const& wanted, AxisRange range);
/// The same as curves take them, over the range of the colours when there is one.
CDoubleArray LevelArray(ContourStyle const& contours, ColourStyle const& colours, AxisRange range);

/// Gives the curve's colours the range that is asked for, else that of the data.
void SetColourRange(CPlotComponent& curve, ColourStyle const& colours);

/// Gives the curve the colour map and its range. Throws ChartError when there is no such map.
void SetHeightColours(C3DCurve& curve, ColourStyle const& colours);

/// Gives a key of the curve's colours labels at tidy values, for when it has no bands.
void SetKeyLabels(CColourKey& key, CPlotComponent const& curve);

/// The colour map of that name or file, viridis for an empty name. Throws ChartError when there is none.
void LoadHeightMap(std::string const& name, CColourMap& map);

} // namespace ombrel
