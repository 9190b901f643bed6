#include "ombrel/platform/framework/Number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipSpace(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size() && IsSpace(text[at]))
        ++at;
    return at;
}

/// What a number beyond the range of double stands for: the digits and the exponent tell whether it is huge or
/// next to nothing. The text is what from_chars has accepted, without sign.
double OutOfRange(std::string_view number)
{
    std::size_t const e = std::min(number.find_first_of("eE"), number.size());
    std::string_view const digits = number.substr(0, e);
    std::size_t const point = std::min(digits.find('.'), digits.size());
    std::size_t const leading = digits.find_first_of("123456789");
    if (leading == std::string_view::npos)
        return 0.0;
    double magnitude = static_cast<double>(point) - static_cast<double>(leading);
    if (e < number.size()) {
        bool const negative = number[e + 1] == '-';
        long long exponent = 0;
        for (char c : number.substr(e + 1)) {
            if (IsDigit(c))
                exponent = std::min(exponent * 10 + (c - '0'), 1'000'000'000'000LL);
        }
        magnitude += static_cast<double>(negative ? -exponent : exponent);
    }
    return magnitude > 0.0 ? std::numeric_limits<double>::infinity() : 0.0;
}

constexpr std::array<double, 23> kPowersOfTen { 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12,
    1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22 };

struct Scanned {
    double value;
    std::size_t length;
};

/// A number with optional sign at the start of the text.
std::optional<Scanned> ScanSigned(std::string_view text)
{
    std::size_t const sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::string_view const number = text.substr(sign);
    // A second sign would be taken by from_chars.
    if (number.empty() || number[0] == '-')
        return std::nullopt;
    double value = 0.0;
    auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    auto const length = static_cast<std::size_t>(end - number.data());
    if (error == std::errc::result_out_of_range)
        value = OutOfRange(number.substr(0, length));
    return Scanned { sign == 1 && text[0] == '-' ? -value : value, sign + length };
}

} // namespace

std::string FormatNumber(double value, char notation, int precision)
{
    if (std::isnan(value))
        return "nan";
    std::chars_format const format = notation == 'f' ? std::chars_format::fixed
        : notation == 'e'                            ? std::chars_format::scientific
                                                     : std::chars_format::general;
    // The longest text: 309 digits, 100 decimals, sign and point.
    std::array<char, 512> text;
    auto const result
        = std::to_chars(text.data(), text.data() + text.size(), value, format, std::clamp(precision, 0, 100));
    return std::string(text.data(), result.ptr);
}

std::optional<double> ParseNumber(std::string_view text)
{
    std::optional<Scanned> const scanned = ScanSigned(text);
    if (!scanned || scanned->length != text.size())
        return std::nullopt;
    return scanned->value;
}

std::optional<double> ScanNumber(std::string_view text, std::size_t* consumed)
{
    std::size_t const start = SkipSpace(text);
    std::optional<Scanned> const scanned = ScanSigned(text.substr(start));
    if (consumed)
        *consumed = scanned ? start + scanned->length : 0;
    if (!scanned)
        return std::nullopt;
    return scanned->value;
}

std::optional<int> ScanInteger(std::string_view text, std::size_t* consumed)
{
    if (consumed)
        *consumed = 0;
    std::size_t at = SkipSpace(text);
    bool const negative = at < text.size() && text[at] == '-';
    if (negative || (at < text.size() && text[at] == '+'))
        ++at;
    if (at == text.size() || !IsDigit(text[at]))
        return std::nullopt;
    constexpr long long kMost = std::numeric_limits<int>::max();
    long long value = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at)
        value = std::min(value * 10 + (text[at] - '0'), kMost + 1);
    if (consumed)
        *consumed = at;
    return static_cast<int>(negative ? -value : std::min(value, kMost));
}

char const* ScanDecimal(char const* text, double& value)
{
    char const* q = text;
    bool const negative = *q == '-';
    if (negative || *q == '+')
        ++q;
    char const* const first = q;
    std::uint64_t mantissa = 0; // wraps where there are more than 19 digits, and is not used then
    for (; IsDigit(*q); ++q)
        mantissa = mantissa * 10 + static_cast<unsigned>(*q - '0');
    auto digits = q - first;
    std::ptrdiff_t decimals = 0;
    if (*q == '.') {
        char const* const fraction = ++q;
        for (; IsDigit(*q); ++q)
            mantissa = mantissa * 10 + static_cast<unsigned>(*q - '0');
        decimals = q - fraction;
        digits += decimals;
    }
    if (digits == 0)
        return nullptr;
    constexpr std::uint64_t kExactMantissa = std::uint64_t { 1 } << 53;
    if (*q != 'e' && *q != 'E' && digits <= 19 && mantissa <= kExactMantissa) {
        // Both operands are exact, so one division rounds correctly.
        value = static_cast<double>(mantissa) / kPowersOfTen[static_cast<std::size_t>(decimals)];
    } else {
        if (*q == 'e' || *q == 'E') {
            q += q[1] == '-' || q[1] == '+' ? 2 : 1;
            while (IsDigit(*q))
                ++q;
        }
        auto const [end, error] = std::from_chars(first, q, value);
        if (error != std::errc() || end != q)
            return nullptr;
    }
    if (negative)
        value = -value;
    return q;
}

} // namespace ombrel
