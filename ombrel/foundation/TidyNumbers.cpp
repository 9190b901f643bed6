#include "ombrel/foundation/TidyNumbers.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace ombrel {

namespace {

std::string WithPower(double value, int digits)
{
    if (value == 0.0 || !std::isfinite(value))
        return CVUtils::FormatDouble(kGeneralFormat, value, digits).ToUtf8();
    // A sign, 17 digits, the point and an exponent of three.
    char text[40];
    std::snprintf(text, sizeof text, "%.*e", std::clamp(digits, 1, 17) - 1, value);
    std::string const number(text);
    std::size_t const e = number.find('e');
    return TimesPowerOfTen(WithoutZeros(number.substr(0, e)), std::atoi(number.c_str() + e + 1));
}

std::string WithoutPower(double value, int digits)
{
    double const before = value == 0.0 ? 0.0 : std::floor(std::log10(std::abs(value)));
    int const decimals = static_cast<int>(std::clamp(digits - 1 - before, 0.0, 17.0));
    return WithoutZeros(CVUtils::FormatDouble(kFixedFormat, value, decimals).ToUtf8());
}

} // namespace

std::string GroupThousands(std::string number)
{
    std::size_t const first = number.starts_with('-') ? 1 : 0;
    std::size_t const end = std::min(number.find('.'), number.size());
    for (std::size_t at = end; at > first + 3;)
        number.insert(at -= 3, ",");
    return number;
}

std::string PowerOfTen(int power)
{
    constexpr std::array kDigits { "⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹" };
    std::string text = power < 0 ? "10⁻" : "10";
    for (char const digit : std::to_string(std::abs(power)))
        text += kDigits[static_cast<std::size_t>(digit - '0')];
    return text;
}

std::string TimesPowerOfTen(std::string factor, int power)
{
    if (factor == "1" || factor == "-1")
        factor.pop_back();
    else
        factor += "×";
    return factor + PowerOfTen(power);
}

std::string WithoutZeros(std::string number)
{
    if (number.find('.') == std::string::npos)
        return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.pop_back();
    return number;
}

bool AreLong(double largest, double digits)
{
    constexpr double kMany = 1e6;
    constexpr double kTooMany = 1e15;
    constexpr double kMostShortDigits = 5.0;
    // Where digits are many, a power of ten saves nothing.
    return largest >= kMany && (digits <= kMostShortDigits || largest >= kTooMany);
}

std::vector<std::string> TidyNumbers(std::span<double const> values, int digits)
{
    double largest = 0.0;
    for (double const value : values)
        largest = std::max(largest, std::abs(value));
    bool const hasPowers = AreLong(largest, digits) || (largest > 0.0 && largest < kSmallestPlain);
    std::vector<std::string> texts;
    for (double const value : values) {
        std::string text = hasPowers ? WithPower(value, digits) : WithoutPower(value, digits);
        texts.push_back(largest >= kSmallestGrouped && !hasPowers ? GroupThousands(std::move(text)) : std::move(text));
    }
    return texts;
}

} // namespace ombrel
