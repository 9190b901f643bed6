#include "ombrel/scene/SceneSetters.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace ombrel {

namespace {

/// More could not be told apart, and each is a walk over the grid.
constexpr int kMostLevels = 1000;

[[noreturn]] void Refuse(std::string const& setting, std::string const& expected, std::string const& found)
{
    throw ChartError(ChartError::Cause::Setting, setting + ": expected " + expected + ", found " + found);
}

} // namespace

double CheckedSetting(char const* setting, double value, double least, double most)
{
    if (!(value >= least && value <= most))
        Refuse(setting, "a number of " + ShortNumber(least) + " to " + ShortNumber(most), ShortNumber(value));
    return value;
}

AxisRange CheckedRange(char const* setting, double low, double high)
{
    if (!(low < high) || !std::isfinite(low) || !std::isfinite(high))
        Refuse(setting, "two numbers, the smaller one first", ShortNumber(low) + " and " + ShortNumber(high));
    return { low, high };
}

LevelChoice LevelsAt(std::span<double const> values)
{
    bool const ascend = std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) == values.end();
    bool const areNumbers = std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
    if (values.empty() || values.size() >= kMostLevels || !ascend || !areNumbers)
        Refuse("levels", "1 to 999 numbers that ascend",
            std::to_string(values.size()) + " numbers" + (ascend ? "" : " that do not")
                + (areNumbers ? "" : ", not all of them finite"));
    LevelChoice levels;
    levels.values.assign(values.begin(), values.end());
    return levels;
}

LevelChoice LevelsOfBands(int bands)
{
    if (bands < 1 || bands > kMostLevels)
        Refuse("levels", "1 to 1000 bands", std::to_string(bands));
    LevelChoice levels;
    levels.bands = bands;
    return levels;
}

LevelChoice LevelsEvery(double step, double reference)
{
    if (!(step > 0.0) || !std::isfinite(step) || !std::isfinite(reference))
        Refuse("levels", "a step above 0 from a number", ShortNumber(step) + " from " + ShortNumber(reference));
    LevelChoice levels;
    levels.reference = reference;
    levels.spacing = step;
    return levels;
}

} // namespace ombrel
