#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/registry/Registry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace ombrel {

int CVUtils::Round(float f)
{
    // One half towards the outside, then the fraction is cut: in double, where the sum is exact.
    double const shifted = static_cast<double>(f) + SignOf(f) * 0.5;
    if (std::isnan(shifted))
        return 0;
    return static_cast<int>(
        std::clamp<double>(shifted, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

int CVUtils::GetNearestDivisor(int n, int d)
{
    if (d < 1)
        return 1;
    // Everything divides zero.
    if (n == 0)
        return d;
    long long const size = std::abs(static_cast<long long>(n));
    long long nearest = 1;
    for (long long low = 1; low * low <= size && low <= d; ++low) {
        if (size % low != 0)
            continue;
        long long const high = size / low;
        nearest = std::max(nearest, high <= d ? high : low);
    }
    return static_cast<int>(nearest);
}

int CVUtils::fcmp(double a, double b, double epsilon)
{
    int exponent = 0;
    std::frexp(std::fabs(a) > std::fabs(b) ? a : b, &exponent);
    double const delta = std::ldexp(epsilon, exponent);
    double const difference = a - b;
    if (difference > delta)
        return 1;
    return difference < -delta ? -1 : 0;
}

bool CVUtils::FloatEq(double a, double b)
{
    return fcmp(a, b, static_cast<double>(std::numeric_limits<float>::epsilon())) == 0;
}

double CVUtils::NiceNum(double x, int round)
{
    if (!(x > 0.0) || std::isinf(x))
        return 0.0;
    double const exponent = std::floor(std::log10(x));
    double const power = std::pow(10.0, exponent);
    double const fraction = x / power;
    double nice = 10.0;
    if (round != 0)
        nice = fraction < 1.5 ? 1.0 : fraction < 3.0 ? 2.0 : fraction < 7.0 ? 5.0 : 10.0;
    else
        nice = fraction <= 1.0 ? 1.0 : fraction <= 2.0 ? 2.0 : fraction <= 5.0 ? 5.0 : 10.0;
    // Divided by a whole power, 0.000005 and the like are as exact as a double can be.
    double const inverse = std::pow(10.0, -exponent);
    return exponent < 0.0 && std::isfinite(inverse) ? nice / inverse : nice * power;
}

namespace {

/// The user's decimal mark, read once: labels are formatted by the thousand.
CString const& DecimalSeparator()
{
    static CString const separator = [] {
        CString text(".");
        ReadRegistryValue(HKEY_CURRENT_USER, "Control Panel\\International", "sDecimal", text);
        return text;
    }();
    return separator;
}

constexpr int kLeastGroup = -5;
constexpr int kGreatestGroup = 5;

/// The group of three powers of ten to take out of the value, before the digits are known.
int FirstGroup(double value)
{
    if (value == 0.0 || std::isnan(value))
        return 0;
    // Infinity is limited before it is converted.
    double const exponent = std::clamp(std::log10(std::fabs(value)), -400.0, 400.0);
    int const group = static_cast<int>(std::lround(exponent)) / 3 - (exponent < 0.0 ? 1 : 0);
    return std::clamp(group, kLeastGroup, kGreatestGroup);
}

char16_t const* PrefixOf(int group)
{
    static constexpr std::array kPrefixes { u"f", u"p", u"n", u"\u00B5", u"m", u"", u"k", u"M", u"G", u"T" };
    auto const index = static_cast<std::size_t>(group - kLeastGroup);
    return index < kPrefixes.size() ? kPrefixes[index] : u"";
}

CString FormatEngineering(double value, int precision)
{
    if (precision < 0)
        precision = 6;
    int group = FirstGroup(value);
    // A negative zero would show a sign that means nothing.
    double mantissa = value == 0.0 ? 0.0 : value / std::pow(10.0, 3 * group);
    std::string text = FormatNumber(mantissa, 'g', precision);
    auto const nextGroup = [&] {
        mantissa /= 1000.0;
        ++group;
        text = FormatNumber(mantissa, 'g', precision);
    };
    if (std::isfinite(value)) {
        if (text.find('e') != text.npos)
            nextGroup();
        if (text.find('.') == text.npos && text.size() > (text[0] == '-' ? 4U : 3U))
            nextGroup();
    }
    bool const negative = text[0] == '-';
    CString result(negative ? "-" : " ");
    result += CString(std::string_view(text).substr(negative ? 1 : 0));
    result += PrefixOf(group);
    result.Replace(".", DecimalSeparator());
    return result;
}

} // namespace

CString CVUtils::FormatDouble(int mode, double value, int precision)
{
    switch (mode) {
    case kGeneralFormat:
        return FormatNumber(value, 'g', precision);
    case kFixedFormat:
        return FormatNumber(value, 'f', precision);
    case kEngineeringFormat:
        return FormatEngineering(value, precision);
    default:
        return {};
    }
}

int CVUtils::StringToFloat(CString const& text, double& value)
{
    std::u16string_view units = text.View();
    units.remove_prefix(std::min(units.find_first_not_of(u" \t"), units.size()));
    if (units.empty() || units.find_first_not_of(u"0123456789eE.+-") != units.npos)
        return 0;
    std::string const characters(units.begin(), units.end());
    double const number = ScanNumber(characters).value_or(0.0);
    // What is not a number gives 0 too, so a zero must look like one.
    if (number == 0.0 && characters != "0"
        && (characters.size() < 2
            || !(characters.starts_with("0") || characters.starts_with("-0") || characters.starts_with("+0"))))
        return 0;
    value = number;
    return 1;
}

} // namespace ombrel
