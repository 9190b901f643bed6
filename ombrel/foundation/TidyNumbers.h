#pragma once
#include "ombrel/platform/framework/Export.h"

#include <span>
#include <string>
#include <vector>

namespace ombrel {

// Numbers as people write them.

/// "1,234,567.8": a comma after every third digit before the point.
OMBREL_EXPORT std::string GroupThousands(std::string number);

/// "10⁻⁹".
OMBREL_EXPORT std::string PowerOfTen(int power);

/// "2.5×10⁷"; "10⁷" for a factor of "1".
OMBREL_EXPORT std::string TimesPowerOfTen(std::string factor, int power);

/// Without zeros at the end of a fraction.
OMBREL_EXPORT std::string WithoutZeros(std::string number);

/// Numbers from here on have commas between thousands, and with them those beside them.
inline constexpr double kSmallestGrouped = 1e4;
/// Numbers below have a power of ten, if that saves digits.
inline constexpr double kSmallestPlain = 1e-3;
/// Whether numbers up to the largest, of so many significant digits, are shorter with a power of ten.
OMBREL_EXPORT bool AreLong(double largest, double digits);

/// The numbers as texts of one form with so many significant digits, of which none before the point is left out: with
/// commas between thousands where one is 10,000 or more, and as 2.5×10⁷ where all are below a thousandth, or one is a
/// million or more and there are no more than five digits (from 10¹⁵ on with any).
OMBREL_EXPORT std::vector<std::string> TidyNumbers(std::span<double const> values, int digits);

} // namespace ombrel
