#include "tools/ombrel/chart/HeightColours.h"
#include "ombrel/colour/ColourMap.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/ColourMaps.h"
#include "tools/ombrel/table/Utf8.h"

#include <cmath>

namespace ombrel::host {

namespace {

constexpr char const* kUsualMap = "viridis";
constexpr int kUsualBands = 10;
constexpr double kMostLevels = 1000.0;

} // namespace

HeightLevels LevelsOf(SurfaceOptions const& options, AxisRange range)
{
    HeightLevels levels;
    if (options.zRange)
        range = { options.zRange->first, options.zRange->second };
    LevelChoice const choice = options.levels.value_or(LevelChoice());
    if (choice.bands) {
        for (int k = 1; k < *choice.bands; ++k)
            levels.values.push_back(range.min + k * (range.max - range.min) / *choice.bands);
        // One band still has a level: where it ends.
        if (levels.values.empty())
            levels.values.push_back(range.max);
        return levels;
    }
    levels.values = choice.values;
    if (choice.reference) {
        levels.reference = *choice.reference;
        levels.spacing = choice.spacing;
        if ((range.max - range.min) / levels.spacing > kMostLevels)
            throw Failure(kUsageFault, "--levels: so small a step makes more than 1000 levels");
        // The series is the same wherever it is counted from; near the data it is counted most exactly.
        levels.reference += std::ceil((range.min - levels.reference) / levels.spacing) * levels.spacing;
        return levels;
    }
    if (levels.values.empty()) {
        NumberTicks const ticks = MakeNumberTicks(WidenEmptyRange(range), { true, true }, kUsualBands);
        levels.reference = ticks.first;
        levels.spacing = ticks.step;
    }
    return levels;
}

void LoadHeightMap(std::string const& name, CColourMap& map)
{
    if (!LoadColourMap(name.empty() ? kUsualMap : name, map))
        throw Failure(kUsageFault,
            "--colour-map: there is no colour map " + QuoteForMessage(name.empty() ? kUsualMap : name)
                + " (ombrel colours lists them)");
}

} // namespace ombrel::host
