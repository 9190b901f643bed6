#pragma once
#include "ombrel/platform/framework/Arrays.h"

#include <span>
#include <vector>

namespace ombrel {

/// What the colours of a key's bar stand for: from its foot to its top. low may lie above high.
struct KeyRange {
    double low = 0.0;
    double high = 0.0;

    bool IsFinite() const;
    /// The part of the bar that lies below a value; not a number in a range without a width.
    double PartBelow(double value) const;
    /// The value at a part of the bar.
    double ValueAt(double part) const;
};

/// No key has more labels. There is room for fewer, even on the highest page.
inline constexpr int kMostKeyLabels = 1000;

/// So many values from low to high, evenly; only one in a range without a width, none in one that is not finite.
std::vector<double> EvenKeyValues(KeyRange const& range, int count);
/// The values first + k × step within the range, ascending. Where these are too many, every second, fifth, tenth, … of
/// them. step must be above 0.
std::vector<double> SteppedKeyValues(KeyRange const& range, double first, double step);

/// The values as texts of four significant digits; more where neighbours would read the same otherwise. What is zero
/// but for rounding reads 0. Tidy ones are those of TidyNumbers.
CStringArray FormatKeyValues(std::span<double const> values, bool tidy);

} // namespace ombrel
