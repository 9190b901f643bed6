#pragma once
#include "ombrel/platform/framework/Export.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel {

/// A number in the notation 'g', 'f' or 'e' with the given precision, as printf would write it in the "C" locale:
/// exponents have at least two digits, 'g' drops trailing zeros. Precision is limited to 0 … 100. Infinities and NaN
/// come out as "inf", "-inf" and "nan"; any other notation counts as 'g'.
OMBREL_EXPORT std::string FormatNumber(double value, char notation, int precision);

/// The number that the whole text spells ("." is the decimal mark; a sign may lead; no white space), or nothing.
/// "inf" and "nan" are numbers; one too large for a double is infinite, one too small is 0.
OMBREL_EXPORT std::optional<double> ParseNumber(std::string_view text);

/// The number at the start of the text as scanf reads it: leading white space and sign allowed, stops at the first
/// character that cannot belong to it; nothing when there is none. consumed receives the length read when not null.
OMBREL_EXPORT std::optional<double> ScanNumber(std::string_view text, std::size_t* consumed = nullptr);
/// As ScanNumber for decimal digits; limited to the range of int.
OMBREL_EXPORT std::optional<int> ScanInteger(std::string_view text, std::size_t* consumed = nullptr);

/// The plain decimal number at the start of the text, correctly rounded, several times as fast as the others where it
/// has few digits. Returns where it ends; null when there is none, or none that a double can hold. Behind the text must
/// stand a character that is no part of a number: a line break or a zero will do.
OMBREL_EXPORT char const* ScanDecimal(char const* text, double& value);

} // namespace ombrel
