#pragma once
#include "ombrel/platform/framework/Export.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ombrel {

namespace detail {
inline constexpr std::array<double, 23> kPowersOfTen { 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22 };
inline bool IsDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }
/// The general road for numbers whose digits or exponent are out of the exact range; tiny: the exponent is negative.
OMBREL_EXPORT double ConvertLongNumber(char const* first, char const* last, char decimalMark, bool tiny);
} // namespace detail

/// Reads the number at p, which ends at the first character that cannot belong to it; the text must hold such a
/// character (a line break will do). Returns where the number ends, or null when there is none or its exponent is
/// incomplete. The value is correctly rounded; too large a number becomes infinite, too small a one zero.
inline char const* ScanCellNumber(char const* p, char decimalMark, double& value)
{
    using detail::IsDigit;
    char const* q = p;
    bool const negative = *q == '-';
    if (negative || *q == '+')
        ++q;
    std::uint64_t mantissa = 0; // wraps when there are more than 19 digits and is not used then
    char const* const digits = q;
    for (; IsDigit(*q); ++q)
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - '0');
    auto digitCount = q - digits;
    long long exponent = 0;
    if (*q == decimalMark) {
        char const* const fraction = ++q;
        for (; IsDigit(*q); ++q)
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - '0');
        exponent = fraction - q;
        digitCount -= exponent;
        // A comma at the end is more likely a separator than a decimal mark.
        if (exponent == 0 && decimalMark == ',')
            return nullptr;
    }
    if (digitCount == 0)
        return nullptr;
    if (*q == 'e' || *q == 'E') {
        ++q;
        bool const negativeExponent = *q == '-';
        if (negativeExponent || *q == '+')
            ++q;
        if (!IsDigit(*q))
            return nullptr;
        long long e = 0;
        for (; IsDigit(*q); ++q)
            e = e < 100'000'000 ? e * 10 + (*q - '0') : e;
        exponent += negativeExponent ? -e : e;
    }
    constexpr std::uint64_t kExactMantissa = std::uint64_t { 1 } << 53;
    if (digitCount <= 19 && mantissa <= kExactMantissa && exponent >= -22 && exponent <= 22) {
        // Both operands are exact doubles, so one multiplication or division rounds correctly.
        auto const v = static_cast<double>(mantissa);
        double const scaled = exponent < 0 ? v / detail::kPowersOfTen[static_cast<std::size_t>(-exponent)]
                                           : v * detail::kPowersOfTen[static_cast<std::size_t>(exponent)];
        value = negative ? -scaled : scaled;
    } else {
        value = detail::ConvertLongNumber(p, q, decimalMark, exponent < 0);
    }
    return q;
}

/// The number that the whole text spells, or nothing.
OMBREL_EXPORT std::optional<double> ParseCellNumber(std::string_view text, char decimalMark);

/// Numbers beyond ±this are not accepted: a graph's range could not be computed from them.
inline constexpr double kLargestNumber = 1e300;

/// The number that a person has written: as above, or with a currency sign before or behind it, and with its digits in
/// groups of three, which a comma separates (a point where the comma is the decimal mark).
OMBREL_EXPORT std::optional<double> ParseWrittenNumber(std::string_view text, char decimalMark);

/// The texts that stand for a missing value.
class OMBREL_EXPORT GapWords {
public:
    /// Those that are common, in any case: empty, NA, N/A, NaN, -NaN, null, - and ?.
    GapWords() = default;
    /// And those of a list with commas between them, in any case; a number stands for all cells of that value.
    explicit GapWords(std::string_view list);
    bool Contains(std::string_view text) const;
    bool Contains(double value) const
    {
        return !m_values.empty() && std::find(m_values.begin(), m_values.end(), value) != m_values.end();
    }

private:
    /// In lower case.
    std::vector<std::string> m_words;
    std::vector<double> m_values;
};

/// A date as days since 30 December 1899 (the time counted away from zero before that day).
struct CellDate {
    double days = 0.0;
    /// The text named an offset from UTC (or Z), which has been applied.
    bool hasOffset = false;
};

/// The date of a day of the proleptic Gregorian calendar and a time in seconds from its start (negative and beyond a
/// day allowed); nothing for a day that does not exist or a year outside 100 … 9999.
OMBREL_EXPORT std::optional<double> MakeDate(int year, int month, int day, double seconds);

/// An ISO 8601 date: 2020-03, 2020-03-31 or 2020/03/31, with a time 12:30, 12:30:15 or 12:30:15.25 after T or a
/// blank, and Z, +02, +0200 or +02:00 after that. A plain year is a number, not a date.
OMBREL_EXPORT std::optional<CellDate> ParseIsoDate(std::string_view text);

/// Which of three numbers of a date come first: 31/12/2020, 12/31/2020 or 20/12/31.
enum class DateOrder { DayFirst, MonthFirst, YearFirst };

/// A date that may be read in two ways, as days since 30 December 1899; nothing for one that does not exist.
struct WrittenDate {
    std::optional<double> dayFirst;
    std::optional<double> monthFirst;
};

/// A date as people write it: 31/12/2020, 1.2.2020, 1/2/03, 19-Sep-03, Jan 1 2000, January 1, 2000, 1 Jan 2000 or Sep
/// 2003, with a time like 9:30, 21:30:15 or 9:30 pm behind it. Months have English names; years of two digits are 1969
/// … 2068; a year of four digits may come first, too. Numbers with points begin with the day, others are read both ways
/// unless the order is known; what else there is reads the same both ways.
OMBREL_EXPORT std::optional<WrittenDate> ParseWrittenDate(
    std::string_view text, std::optional<DateOrder> order = std::nullopt);

/// Dates written in a form of the user's own.
///
/// Codes: %Y year, %y two-digit year (69 … 99 are 1969 … 1999), %m month, %b %B English month name, %d or %e day,
/// %j day of the year, %H hour, %M minute, %S second with an optional fraction, %F for %Y-%m-%d, %T for %H:%M:%S,
/// %% for a percent sign. Leading zeros may be missing. A blank stands for any blanks, everything else for itself.
class OMBREL_EXPORT DateFormat {
public:
    /// The format, or why it cannot be one.
    static std::variant<DateFormat, std::string> Compile(std::string_view text);
    /// Fields that the format lacks are 1 January, midnight; without any year the day is 30 December 1899.
    std::optional<double> Parse(std::string_view text) const;
    std::string const& GetText() const { return m_text; }

private:
    struct Fields;
    bool ParseField(char code, bool nextIsField, std::string_view& rest, Fields& fields) const;

    std::string m_text;
    /// With %F and %T written out.
    std::string m_codes;
};

} // namespace ombrel
