#include "ombrel/annotation/keys/KeyLabels.h"
#include "ombrel/foundation/TidyNumbers.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

bool KeyRange::IsFinite() const { return std::isfinite(low) && std::isfinite(high); }

double KeyRange::PartBelow(double value) const
{
    double const width = high - low;
    // The width of the widest ranges is not a number's.
    return std::isfinite(width) ? (value - low) / width : (value / 2 - low / 2) / (high / 2 - low / 2);
}

double KeyRange::ValueAt(double part) const { return std::lerp(low, high, part); }

std::vector<double> EvenKeyValues(KeyRange const& range, int count)
{
    std::vector<double> values;
    if (!range.IsFinite() || count < 1)
        return values;
    int const steps = range.low == range.high ? 0 : std::min(count, kMostKeyLabels) - 1;
    for (int i = 0; i <= steps; ++i)
        values.push_back(range.ValueAt(steps > 0 ? static_cast<double>(i) / steps : 0.0));
    return values;
}

std::vector<double> SteppedKeyValues(KeyRange const& range, double first, double step)
{
    // Ends that lie within a rounding error of a step are not lost.
    constexpr double kRounding = 1e-9;
    std::vector<double> values;
    double const low = std::min(range.low, range.high);
    double const high = std::max(range.low, range.high);
    double const lowest = std::ceil((low - first) / step - kRounding);
    double const highest = std::floor((high - first) / step + kRounding);
    // Farther steps cannot be told from each other.
    constexpr double kFarthest = 1e15;
    if (!(range.IsFinite() && step > 0.0 && std::abs(lowest) < kFarthest && std::abs(highest) < kFarthest))
        return values;
    double const stride = CVUtils::NiceNum(std::max(1.0, std::ceil((highest - lowest + 1) / kMostKeyLabels)), 0);
    for (double k = std::ceil(lowest / stride) * stride; k <= highest; k += stride)
        values.push_back(first + k * step);
    return values;
}

namespace {

CStringArray Format(std::span<double const> values, int digits, bool tidy)
{
    CStringArray texts;
    if (tidy) {
        for (std::string const& text : TidyNumbers(values, digits))
            texts.Add(CString(text));
        return texts;
    }
    for (double const v : values)
        texts.Add(CVUtils::FormatDouble(kGeneralFormat, v, digits));
    return texts;
}

/// Whether neighbours that differ read the same.
bool IsAmbiguous(std::span<double const> values, CStringArray const& texts)
{
    for (std::size_t i = 1; i < values.size(); ++i) {
        int const at = static_cast<int>(i);
        if (values[i] != values[i - 1] && texts[at] == texts[at - 1])
            return true;
    }
    return false;
}

/// The values with what is small against its distance to its neighbours made zero.
std::vector<double> WithoutRoundingErrors(std::span<double const> values)
{
    constexpr double kRounding = 1e-9;
    std::vector<double> rounded(values.begin(), values.end());
    for (std::size_t i = 0; i < values.size(); ++i) {
        double nearest = i > 0 ? std::abs(values[i] - values[i - 1]) : std::abs(values[i]);
        if (i + 1 < values.size())
            nearest = i > 0 ? std::min(nearest, std::abs(values[i + 1] - values[i])) : std::abs(values[1] - values[0]);
        // Without a sign, too.
        if (std::abs(values[i]) <= kRounding * nearest)
            rounded[i] = 0.0;
    }
    return rounded;
}

} // namespace

CStringArray FormatKeyValues(std::span<double const> values, bool tidy)
{
    constexpr int kUsualDigits = 4;
    constexpr int kMostDigits = 17;
    std::vector<double> const rounded = WithoutRoundingErrors(values);
    CStringArray texts = Format(rounded, kUsualDigits, tidy);
    for (int digits = kUsualDigits + 1; digits <= kMostDigits && IsAmbiguous(rounded, texts); ++digits)
        texts = Format(rounded, digits, tidy);
    return texts;
}

} // namespace ombrel
