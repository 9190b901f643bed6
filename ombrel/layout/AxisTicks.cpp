#include "ombrel/layout/AxisTicks.h"
#include "ombrel/foundation/TidyNumbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

/// The next larger step of 1, 2 or 5 times a power of ten.
double NextStep(double step) { return CVUtils::NiceNum(1.5 * step, 0); }

/// What the 1, 2 or 5 of such a step is multiplied by is ten to this power.
double ExponentOf(double step) { return std::floor(std::log10(step) + 1e-9); }

double DigitOf(double step) { return std::round(step / std::pow(10.0, ExponentOf(step))); }

/// The multiple of the step at or outside of a value; what is a hair's breadth off counts as on it.
double FloorTo(double value, double step) { return std::floor(value / step + 1e-9) * step; }
double CeilTo(double value, double step) { return std::ceil(value / step - 1e-9) * step; }

bool IsOn(double value, double step) { return FloorTo(value, step) == CeilTo(value, step); }

AxisRange MoveEnds(AxisRange data, RangeFreedom const& freedom, double low, double high)
{
    double const reach = freedom.reach * (data.max - data.min) * (1.0 + 1e-9);
    AxisRange range = data;
    if (!freedom.minFixed && data.min - low <= reach)
        range.min = low;
    if (!freedom.maxFixed && high - data.max <= reach)
        range.max = high;
    return range;
}

/// How many minor ticks a step has room for when they are not to be closer than smallestStep.
int MinorTicks(double step, double smallestStep)
{
    int const usual = DigitOf(step) == 2 ? 3 : 4;
    if (smallestStep <= 0.0)
        return usual;
    return static_cast<int>(std::clamp(std::floor(step / smallestStep + 1e-9) - 1.0, 0.0, usual * 1.0));
}

/// The range with its free ends moved outwards to minor ticks, or to major ones where only one of those would be left.
AxisRange EndOnTicks(AxisRange data, RangeFreedom const& freedom, double step, int minorTicks)
{
    auto const to = [&](double tick) {
        AxisRange const range = MoveEnds(data, freedom, FloorTo(data.min, tick), CeilTo(data.max, tick));
        // A multiple of the tick can be off by a bit.
        return AxisRange { std::min(range.min, data.min), std::max(range.max, data.max) };
    };
    AxisRange const range = to(step / (minorTicks + 1));
    bool const hasTwo = FloorTo(range.max, step) > CeilTo(range.min, step);
    return hasTwo ? range : to(step);
}

void ChooseForm(NumberTicks& ticks)
{
    constexpr double kMostDecimalsOfFew = 4.0;
    double const largest = std::max(std::abs(ticks.range.min), std::abs(ticks.range.max));
    double const exponent = ExponentOf(ticks.step);
    // So many significant digits that neighbouring labels differ.
    double const digits = std::floor(std::log10(largest) + 1e-9) - exponent + 1.0;
    bool const isSmall = largest < kSmallestPlain && -exponent > kMostDecimalsOfFew;
    if (AreLong(largest, digits) || isSmall)
        ticks.power = 3 * static_cast<int>(std::floor((std::log10(largest) + 1e-9) / 3.0));
    ticks.decimals = static_cast<int>(std::max(0.0, ticks.power - exponent));
    ticks.isGrouped = ticks.power == 0 && largest >= kSmallestGrouped;
}

/// Before a power of ten in a title.
constexpr char const* kTimes = "× ";

} // namespace

AxisRange WidenEmptyRange(AxisRange range)
{
    if (range.min > range.max)
        std::swap(range.min, range.max);
    double const largest = std::max(std::abs(range.min), std::abs(range.max));
    // Less than this could not be told apart at the ticks.
    if (range.max - range.min > largest * 1e-12 && range.max > range.min)
        return range;
    double const half = range.max == 0.0 ? 1.0 : std::max(largest * (range.min == range.max ? 0.1 : 1e-11), 1e-290);
    return { range.min - half, range.max + half };
}

AxisRange WithMargins(AxisRange range, double part, std::span<double const> stops)
{
    double const room = part * (range.max - range.min);
    AxisRange wider { range.min - room, range.max + room };
    for (double const stop : stops) {
        if (range.min >= stop)
            wider.min = std::max(wider.min, stop);
        if (range.max <= stop)
            wider.max = std::min(wider.max, stop);
    }
    return wider;
}

NumberTicks MakeNumberTicks(AxisRange data, RangeFreedom freedom, int mostSteps, double smallestStep)
{
    NumberTicks ticks;
    double const length = data.max - data.min;
    double const wanted = std::max(length / std::max(mostSteps, 1), smallestStep);
    // Half of it: more steps than wanted are allowed below.
    double const finest = CVUtils::NiceNum(std::max(wanted / 2, std::numeric_limits<double>::min()), 0);
    auto const isStep = [smallestStep](double step) { return step >= smallestStep * (1.0 - 1e-9); };
    for (double step = finest;; step = NextStep(step)) {
        ticks.step = step;
        ticks.range = EndOnTicks(data, freedom, step, MinorTicks(step, smallestStep));
        if (isStep(step) && (ticks.range.max - ticks.range.min) / step <= mostSteps + 1e-6)
            break;
    }
    // Fixed ends should have ticks of their own, for which there may be a few more of them or about half as many.
    if (freedom.minFixed && freedom.maxFixed) {
        int const most = mostSteps + mostSteps / 4;
        for (double step = finest; length / step * 2 >= std::min(mostSteps, 4); step = NextStep(step)) {
            if (isStep(step) && length / step <= most + 1e-6 && IsOn(data.min, step) && IsOn(data.max, step)) {
                ticks.step = step;
                break;
            }
        }
    }
    ticks.first = CeilTo(ticks.range.min, ticks.step);
    ticks.minor = MinorTicks(ticks.step, smallestStep);
    ChooseForm(ticks);
    return ticks;
}

std::string NumberLabel(NumberTicks const& ticks, double value)
{
    // A multiple of the step can be off by a bit, also round zero.
    bool const isZero = std::abs(value) < ticks.step * 1e-6;
    double const scaled = isZero ? 0.0 : value / std::pow(10.0, ticks.power);
    std::string text = CVUtils::FormatDouble(kFixedFormat, scaled, ticks.decimals).ToUtf8();
    return ticks.isGrouped ? GroupThousands(std::move(text)) : text;
}

std::vector<std::string> NumberLabels(NumberTicks const& ticks)
{
    std::vector<std::string> labels;
    double const steps = std::floor((ticks.range.max - ticks.first) / ticks.step + 1e-6);
    for (double i = 0.0; i <= steps; ++i)
        labels.push_back(NumberLabel(ticks, ticks.first + i * ticks.step));
    return labels;
}

std::string TitleWithPower(std::string const& title, NumberTicks const& ticks)
{
    if (ticks.power == 0)
        return title;
    std::string const power = kTimes + PowerOfTen(ticks.power);
    return title.empty() ? power : title + " (" + power + ")";
}

std::string TitleWithoutPower(std::string const& title)
{
    if (title.starts_with(kTimes))
        return {};
    std::size_t const behind = title.rfind(" (" + std::string(kTimes));
    return behind == std::string::npos || !title.ends_with(')') ? title : title.substr(0, behind);
}

NumberTicks FitNumberTicks(AxisRange data, RangeFreedom freedom, double smallestStep, int length,
    std::function<int(std::string const&)> const& width)
{
    constexpr int kMostSteps = 10;
    int const gap = width("00");
    for (int steps = kMostSteps; steps > 1; --steps) {
        NumberTicks const ticks = MakeNumberTicks(data, freedom, steps, smallestStep);
        int const widest
            = std::max({ width(NumberLabel(ticks, ticks.first)), width(NumberLabel(ticks, ticks.first + ticks.step)),
                width(NumberLabel(ticks, FloorTo(ticks.range.max, ticks.step))) });
        double const room = length * ticks.step / (ticks.range.max - ticks.range.min);
        if (widest + gap <= room)
            return ticks;
    }
    return MakeNumberTicks(data, freedom, 1, smallestStep);
}

AxisRange MakeLogRange(AxisRange data, RangeFreedom const& freedom)
{
    auto const tidy = [](double value, bool up) {
        double const decade = std::floor(std::log10(value) + 1e-9);
        double const digits = value / std::pow(10.0, decade);
        constexpr std::array kDigits { 1.0, 2.0, 5.0, 10.0 };
        auto const isAbove = [&](double d) { return up ? d >= digits * (1.0 - 1e-9) : d > digits * (1.0 + 1e-9); };
        auto const above = std::find_if(kDigits.begin(), kDigits.end(), isAbove);
        return decade + std::log10(up ? *above : above[-1]);
    };
    AxisRange range { freedom.minFixed ? std::log10(data.min) : tidy(data.min, false),
        freedom.maxFixed ? std::log10(data.max) : tidy(data.max, true) };
    // One value alone stands in the middle of what it spans.
    if (!(range.max > range.min)) {
        range.min -= freedom.minFixed ? 0.0 : 0.5;
        range.max += freedom.maxFixed ? 0.0 : 0.5;
    }
    return range;
}

std::vector<std::string> FitLogLabels(std::span<double const> ticks, AxisRange const& range, int length,
    std::function<int(std::string const&)> const& size)
{
    bool const isPlain = std::all_of(ticks.begin(), ticks.end(), [](double v) { return v >= -4.001 && v <= 6.001; });
    bool const isGrouped = std::any_of(ticks.begin(), ticks.end(), [](double v) { return v >= 4.0; });
    auto const textOf = [&](double v) {
        // A tick's number has few digits, which the power of ten gives but for rounding.
        if (isPlain) {
            std::string text = CVUtils::FormatDouble(kGeneralFormat, std::pow(10.0, v), 7).ToUtf8();
            return isGrouped ? GroupThousands(std::move(text)) : text;
        }
        double const decade = std::floor(v + 1e-9);
        std::string const digits = CVUtils::FormatDouble(kGeneralFormat, std::pow(10.0, v - decade), 6).ToUtf8();
        return TimesPowerOfTen(digits, static_cast<int>(decade));
    };
    struct Taken {
        double from;
        double to;
    };
    std::vector<Taken> taken;
    std::vector<std::string> labels(ticks.size());
    auto const place = [&](std::size_t i) {
        std::string text = textOf(ticks[i]);
        double const middle = (ticks[i] - range.min) / (range.max - range.min) * length;
        double const half = size(text) / 2.0;
        Taken const room { middle - half, middle + half };
        bool const isFree = std::none_of(
            taken.begin(), taken.end(), [&](Taken const& t) { return room.from < t.to && t.from < room.to; });
        if (!isFree)
            return;
        taken.push_back(room);
        labels[i] = std::move(text);
    };
    auto const isDecade = [&](std::size_t i) { return std::abs(ticks[i] - std::round(ticks[i])) < 1e-9; };
    for (bool const decades : { true, false }) {
        for (std::size_t i = 0; i < ticks.size(); ++i) {
            if (isDecade(i) == decades)
                place(i);
        }
    }
    return labels;
}

int TidyCircles(double radius)
{
    constexpr int kUsual = 5;
    auto const isNice = [](double step) { return std::abs(CVUtils::NiceNum(step, 1) - step) < 1e-9 * step; };
    for (int const circles : { kUsual, 4, 6, 3 }) {
        // Half of a nice step will do as well: of so few circles 2.5, 5, 7.5 and 10 are read at a glance.
        if (isNice(radius / circles) || isNice(2 * radius / circles))
            return circles;
    }
    return kUsual;
}

} // namespace ombrel
