#pragma once
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// What bars and stacks stand on: a height of its own, or one that follows the z axis. Data units.
struct OMBREL_EXPORT Baseline {
    double value = 0.0;
    int automatic = 1;

    /// 0 when the axis's range contains it, else the end of the range that is nearer to 0.
    static double GetAutomatic(BoxAxis const& zAxis);
    /// The height on that axis: a height of its own is moved into the axis's range.
    double Get(BoxAxis const& zAxis) const;
    friend bool operator==(Baseline const& a, Baseline const& b) = default;
};

} // namespace ombrel
