#include "ombrel/graph3d/Baseline.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

double Baseline::GetAutomatic(BoxAxis const& zAxis)
{
    auto const [low, high] = std::minmax(zAxis.min, zAxis.max);
    return low > 0.0 ? low : high < 0.0 ? high : 0.0;
}

double Baseline::Get(BoxAxis const& zAxis) const
{
    if (automatic || std::isnan(value))
        return GetAutomatic(zAxis);
    auto const [low, high] = std::minmax(zAxis.min, zAxis.max);
    return std::min(std::max(value, low), high);
}

} // namespace ombrel
