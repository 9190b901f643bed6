#include "ombrel/layout/AxisTicks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace ombrel {

namespace {

/// A calendar step and what its labels look like.
struct CalendarStep {
    TimeUnit unit;
    int count;
    /// Days, about.
    double length;
    /// strftime codes of a label that leaves out the period it lies in.
    char const* format;
    TimeUnit minorUnit;
    int minorCount;
};

constexpr double kMinute = 1.0 / 1440.0;
constexpr double kSecond = 1.0 / 86400.0;
constexpr char const* kSeconds = "%H:%M:%S";
constexpr char const* kMinutes = "%H:%M";
constexpr char const* kDay = "%d %b";
constexpr char const* kMonth = "%b";
constexpr char const* kYear = "%Y";
constexpr char const* kDayOfYear = "%d %b %Y";

constexpr std::array kCalendarSteps {
    CalendarStep { TimeUnit::Second, 1, kSecond, kSeconds, TimeUnit::Second, 0 },
    CalendarStep { TimeUnit::Second, 5, 5 * kSecond, kSeconds, TimeUnit::Second, 1 },
    CalendarStep { TimeUnit::Second, 15, 15 * kSecond, kSeconds, TimeUnit::Second, 5 },
    CalendarStep { TimeUnit::Second, 30, 30 * kSecond, kSeconds, TimeUnit::Second, 10 },
    CalendarStep { TimeUnit::Minute, 1, kMinute, kMinutes, TimeUnit::Second, 15 },
    CalendarStep { TimeUnit::Minute, 5, 5 * kMinute, kMinutes, TimeUnit::Minute, 1 },
    CalendarStep { TimeUnit::Minute, 15, 15 * kMinute, kMinutes, TimeUnit::Minute, 5 },
    CalendarStep { TimeUnit::Minute, 30, 30 * kMinute, kMinutes, TimeUnit::Minute, 10 },
    CalendarStep { TimeUnit::Hour, 1, 60 * kMinute, kMinutes, TimeUnit::Minute, 15 },
    CalendarStep { TimeUnit::Hour, 3, 180 * kMinute, kMinutes, TimeUnit::Hour, 1 },
    CalendarStep { TimeUnit::Hour, 6, 360 * kMinute, kMinutes, TimeUnit::Hour, 1 },
    CalendarStep { TimeUnit::Hour, 12, 720 * kMinute, kMinutes, TimeUnit::Hour, 3 },
    CalendarStep { TimeUnit::Day, 1, 1, kDay, TimeUnit::Hour, 6 },
    CalendarStep { TimeUnit::Day, 2, 2, kDay, TimeUnit::Day, 1 },
    CalendarStep { TimeUnit::Day, 7, 7, kDay, TimeUnit::Day, 1 },
    CalendarStep { TimeUnit::Day, 14, 14, kDay, TimeUnit::Day, 7 },
    CalendarStep { TimeUnit::Month, 1, 30.44, kMonth, TimeUnit::Month, 0 },
    CalendarStep { TimeUnit::Month, 2, 60.88, kMonth, TimeUnit::Month, 1 },
    CalendarStep { TimeUnit::Month, 3, 91.31, kMonth, TimeUnit::Month, 1 },
    CalendarStep { TimeUnit::Month, 6, 182.62, kMonth, TimeUnit::Month, 1 },
};

/// Beyond months: years by 1, 2 or 5 times a power of ten.
CalendarStep YearStep(int years)
{
    CalendarStep step { TimeUnit::Year, years, 365.2425 * years, "%Y", TimeUnit::Year, 0 };
    if (years == 1) {
        step.minorUnit = TimeUnit::Month;
        step.minorCount = 3;
    } else {
        int const digit = std::to_string(years).front() - '0';
        step.minorCount = years / (digit == 1 ? 5 : digit);
    }
    return step;
}

/// Without a zero before the day.
std::string FormatDate(double days, std::string const& format)
{
    std::string const text = COleDateTime(days).Format(CString(format)).ToUtf8();
    return format.starts_with("%d") && text.starts_with('0') ? text.substr(1) : text;
}

bool HasTimes(TimeUnit unit) { return unit == TimeUnit::Hour || unit == TimeUnit::Minute || unit == TimeUnit::Second; }

/// The last date at or before the given one that steps are counted from: the first of a year or month that the step
/// divides, a Monday, or a whole number of hours, minutes or seconds after midnight.
COleDateTime AnchorOf(double days, CalendarStep const& step)
{
    COleDateTime::Fields f {};
    COleDateTime date(days);
    if (!date.GetFields(f))
        return date;
    switch (step.unit) {
    case TimeUnit::Year:
        date.SetDateTime(std::max(f.year - f.year % step.count, 100), 1, 1, 0, 0, 0);
        break;
    case TimeUnit::Month:
        date.SetDateTime(f.year, f.month - (f.month - 1) % step.count, 1, 0, 0, 0);
        break;
    case TimeUnit::Day:
    case TimeUnit::Week: {
        // 1 January 1900, day 2, was a Monday.
        double const back = std::fmod(std::floor(days) - 2.0, static_cast<double>(step.count));
        return COleDateTime(std::floor(days) - (back < 0.0 ? back + step.count : back));
    }
    case TimeUnit::Hour:
        date.SetDateTime(f.year, f.month, f.day, f.hour - f.hour % step.count, 0, 0);
        break;
    case TimeUnit::Minute:
        date.SetDateTime(f.year, f.month, f.day, f.hour, f.minute - f.minute % step.count, 0);
        break;
    case TimeUnit::Second:
        date.SetDateTime(f.year, f.month, f.day, f.hour, f.minute, f.second - f.second % step.count);
        break;
    }
    return date;
}

/// The last tick at or before the date.
double TickBefore(double days, CalendarStep const& step)
{
    COleDateTime const anchor = AnchorOf(days, step);
    return anchor.IsValid() ? anchor.GetValue() : days;
}

double TickAfter(double days, CalendarStep const& step)
{
    COleDateTime tick = AnchorOf(days, step);
    if (tick.IsValid() && tick.GetValue() < days)
        CVUtils::IncrementTime(step.count, step.unit, tick);
    return tick.IsValid() && tick.GetValue() >= days ? tick.GetValue() : days;
}

/// Whether both ends lie in one such period.
bool SharePeriod(AxisRange const& range, char const* format)
{
    return FormatDate(range.min, format) == FormatDate(range.max, format);
}

/// What all labels have in common goes into the title, what some have stands at the first of them.
void ChooseForm(DateTicks& ticks, AxisRange const& data)
{
    if (ticks.unit == TimeUnit::Year)
        return;
    bool const isOneYear = SharePeriod(data, kYear);
    if (!HasTimes(ticks.unit)) {
        ticks.common = isOneYear ? FormatDate(data.min, kYear) : "";
        ticks.period = isOneYear ? "" : kYear;
    } else if (SharePeriod(data, kDayOfYear)) {
        ticks.common = FormatDate(data.min, kDayOfYear);
    } else {
        ticks.common = isOneYear ? FormatDate(data.min, kYear) : "";
        ticks.period = isOneYear ? kDay : kDayOfYear;
    }
}

DateTicks MakeDateTicks(AxisRange data, RangeFreedom const& freedom, CalendarStep const& step)
{
    DateTicks ticks;
    auto const isNear = [&](double days) { return days <= freedom.reach * (data.max - data.min) * (1.0 + 1e-9); };
    double const low = TickBefore(data.min, step);
    double const high = TickAfter(data.max, step);
    ticks.range = { freedom.minFixed || !isNear(data.min - low) ? data.min : low,
        freedom.maxFixed || !isNear(high - data.max) ? data.max : high };
    ticks.first = COleDateTime(TickBefore(ticks.range.min, step));
    ticks.step = step.count;
    ticks.unit = step.unit;
    ticks.minorStep = step.minorCount;
    ticks.minorUnit = step.minorUnit;
    ticks.format = step.format;
    ChooseForm(ticks, data);
    return ticks;
}

/// Whether the labels leave room between each other.
bool Fits(DateTicks const& ticks, int length, std::function<int(std::string const&)> const& width)
{
    std::vector<double> places;
    COleDateTime date = ticks.first;
    for (; date.IsValid() && date.GetValue() <= ticks.range.max; CVUtils::IncrementTime(ticks.step, ticks.unit, date)) {
        if (date.GetValue() >= ticks.range.min)
            places.push_back(date.GetValue());
    }
    std::vector<std::string> const labels = DateLabels(ticks, places);
    double const perDay = length / (ticks.range.max - ticks.range.min);
    int const gap = width("00");
    for (std::size_t i = 1; i < places.size(); ++i) {
        double const room = (places[i] - places[i - 1]) * perDay;
        if ((width(labels[i - 1]) + width(labels[i])) / 2.0 + gap > room)
            return false;
    }
    return true;
}

} // namespace

std::vector<std::string> DateLabels(DateTicks const& ticks, std::span<double const> places)
{
    std::vector<std::string> labels;
    std::string last;
    for (double const place : places) {
        std::string text = FormatDate(place, ticks.format);
        // What lies before the axis has no label.
        if (!ticks.period.empty() && place >= ticks.range.min) {
            std::string period = FormatDate(place, ticks.period);
            bool const isNew = period != last;
            last = period;
            bool const isMidnight = FormatDate(place, kSeconds) == "00:00:00";
            if (isNew && !HasTimes(ticks.unit))
                text.append(" ").append(period);
            else if (isNew)
                text = isMidnight ? std::move(period) : period.append(" ").append(text);
        }
        labels.push_back(std::move(text));
    }
    return labels;
}

DateTicks FitDateTicks(
    AxisRange data, RangeFreedom freedom, int length, std::function<int(std::string const&)> const& width)
{
    constexpr double kMostLabels = 10.0;
    constexpr int kLongest = 5000;
    double const days = data.max - data.min;
    for (CalendarStep const& step : kCalendarSteps) {
        if (days / step.length > kMostLabels)
            continue;
        DateTicks ticks = MakeDateTicks(data, freedom, step);
        if (Fits(ticks, length, width))
            return ticks;
    }
    for (double years = 1.0;; years = CVUtils::NiceNum(1.5 * years, 0)) {
        CalendarStep const step = YearStep(static_cast<int>(years));
        DateTicks ticks = MakeDateTicks(data, freedom, step);
        if (step.count >= kLongest || (days / step.length <= kMostLabels && Fits(ticks, length, width)))
            return ticks;
    }
}

} // namespace ombrel
