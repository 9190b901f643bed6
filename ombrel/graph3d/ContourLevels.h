#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <functional>
#include <span>
#include <vector>

namespace ombrel {

/// More contour levels than these are refused: nobody could tell them apart.
inline constexpr int kMostContourLevels = 10000;

/// Levels, or for a person why there are none of those that were asked for (then empty otherwise).
struct ContourLevels {
    std::vector<double> values;
    CString error;
};

/// lo + k · (hi − lo)/parts for k = 1 … parts − 1. A range that is not finite has no levels.
OMBREL_EXPORT ContourLevels MakeEvenLevels(double lo, double hi, int parts);
/// The values of the series reference + k · spacing, k any whole number, that are ≥ lo and < hi. A spacing that is not
/// positive, or so small that levels would not differ, is refused, as is a reference that is not a number.
OMBREL_EXPORT ContourLevels MakeSpacedLevels(double lo, double hi, double reference, double spacing);
/// The levels as they are, unless one of them is not a number.
OMBREL_EXPORT ContourLevels MakeArbitraryLevels(std::span<double const> levels);
/// Leaves out the levels that equal lo or hi in single precision.
OMBREL_EXPORT void DropEndLevels(std::vector<double>& levels, double lo, double hi);

/// How a curve's levels are chosen: kBands makes even ones of a number, kSpacing those of a series, others take them as
/// they are given.
struct LevelSettings {
    static constexpr int kBands = 0;
    static constexpr int kSpacing = 1;
    static constexpr int kArbitrary = 2;
    int mode = kBands;
    int numBands = 6;
    double ref = 0.0;
    double spacing = 0.0;
    std::span<double const> arbitrary;
};
/// The levels of a range by these settings, without those at its ends. A mode that is not named counts as kBands.
OMBREL_EXPORT ContourLevels MakeLevels(LevelSettings const& settings, double lo, double hi);

/// Which of the levels' bands, 0 … number of levels, a value lies in; a value on a level lies in the lower band.
class OMBREL_EXPORT ContourBands {
public:
    ContourBands() = default;
    explicit ContourBands(std::span<double const> levels);
    std::span<double const> GetLevels() const { return m_levels; }
    /// 0 up to the first level, the last band above the last one. Where levels do not ascend, the first pair of
    /// neighbours that holds the value decides, else it is the last band.
    int Find(double value) const;

private:
    std::vector<double> m_levels;
    bool m_ascending = true;
};

} // namespace ombrel
