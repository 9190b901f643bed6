#include "ombrel/graph3d/view/AxisTicks3D.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

/// As a fraction of a step: values that near are one and the same but for rounding.
constexpr double kSlack = 1e-6;

double Tidied(double v, double step) { return std::fabs(v) < std::fabs(step) * 1e-9 ? 0.0 : v; }

std::vector<double> DivisionValues(TickSettings3D const& settings)
{
    int const n = settings.numTicks;
    double const step = (settings.max - settings.min) / (static_cast<double>(n) - 1.0);
    if (n < 2 || n > kMaxTicks3D || !std::isfinite(step) || !std::isfinite(settings.min))
        return {};
    std::vector<double> values(static_cast<std::size_t>(n));
    for (std::size_t k = 0; k < values.size(); ++k)
        values[k] = Tidied(settings.min + static_cast<double>(k) * step, step);
    values.back() = settings.max;
    return values;
}

} // namespace

std::vector<double> StepValues(double start, double step, double lo, double hi)
{
    if (!(step > 0.0) || !std::isfinite(step) || !std::isfinite(start) || !std::isfinite(lo) || !std::isfinite(hi))
        return {};
    double const first = std::ceil((lo - start) / step - kSlack);
    double const last = std::floor((hi - start) / step + kSlack);
    double const count = last - first + 1.0;
    // So far from the range that steps cannot be told apart; and written so that what is not a number fails.
    constexpr double kMostSteps = 1e15;
    if (!(std::fabs(first) < kMostSteps && count >= 1.0 && count <= kMaxTicks3D))
        return {};
    std::vector<double> values(static_cast<std::size_t>(count));
    for (std::size_t k = 0; k < values.size(); ++k) {
        double const v = std::clamp(start + (first + static_cast<double>(k)) * step, lo, hi);
        values[k] = Tidied(v, step);
    }
    return values;
}

Ticks3D MakeTicks(TickSettings3D const& settings)
{
    using enum C3DAxis::TickMode;
    Ticks3D ticks;
    std::vector<double> values;
    if (settings.mode == tmDivisions || settings.mode == tmDivisionsArbitrary)
        values = DivisionValues(settings);
    else if (settings.mode == tmStep || settings.mode == tmStepArbitrary)
        values = StepValues(settings.tickMin, settings.tickDel, std::min(settings.min, settings.max),
            std::max(settings.min, settings.max));
    for (double const v : values)
        ticks.major.push_back({ v, false });

    int const parts = settings.numMinorDivs;
    if (parts >= 1 && values.size() >= 2 && parts <= kMaxTicks3D / static_cast<int>(values.size())) {
        for (std::size_t i = 0; i + 1 < values.size(); ++i) {
            for (int j = 0; j < parts; ++j)
                ticks.minor.push_back(values[i] + j * ((values[i + 1] - values[i]) / parts));
        }
    }
    if (settings.mode >= tmArbitrary && settings.mode <= tmStepArbitrary
        && settings.arbitrary.size() <= static_cast<std::size_t>(kMaxTicks3D)) {
        for (double const v : settings.arbitrary) {
            if (std::isfinite(v))
                ticks.major.push_back({ v, true });
        }
    }
    bool const backwards = settings.min > settings.max;
    std::stable_sort(ticks.major.begin(), ticks.major.end(),
        [backwards](Tick3D const& a, Tick3D const& b) { return backwards ? a.value > b.value : a.value < b.value; });
    return ticks;
}

} // namespace ombrel
