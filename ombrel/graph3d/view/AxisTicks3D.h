#pragma once
#include "ombrel/graph3d/3DAxis.h"

#include <span>
#include <vector>

namespace ombrel {

/// What the ticks of an axis are made from.
struct TickSettings3D {
    C3DAxis::TickMode mode = C3DAxis::tmDivisions;
    /// The range of the axis; min may lie above max.
    double min = 0.0;
    double max = 0.0;
    int numTicks = 0;
    int numMinorDivs = 0;
    double tickMin = 0.0;
    double tickDel = 0.0;
    std::span<double const> arbitrary;
};

/// A tick: automatic, or at an arbitrary value.
struct Tick3D {
    double value = 0.0;
    bool isArbitrary = false;
};

struct Ticks3D {
    /// In the order of their values along the axis.
    std::vector<Tick3D> major;
    std::vector<double> minor;
};

/// The most ticks, and the most minor ones, that an axis has: settings may come from anywhere. Those of more than that
/// are none.
inline constexpr int kMaxTicks3D = 10000;

/// The ticks of the settings. The ends of the range are not lost to rounding, and zero is exact. An arbitrary value
/// that is no number makes no tick.
Ticks3D MakeTicks(TickSettings3D const& settings);

/// The values start + k · step, k any integer, from lo to hi, ascending; those within rounding of an end are that end.
/// None where there would be too many, or the step is not above zero.
std::vector<double> StepValues(double start, double step, double lo, double hi);

} // namespace ombrel
