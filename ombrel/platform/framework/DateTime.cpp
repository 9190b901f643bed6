#include "ombrel/platform/framework/DateTime.h"

#include <array>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

constexpr int kSecondsPerDay = 86400;
/// The first value before 1 January 100 (its fraction counts backwards), and the first after 31 December 9999.
constexpr double kBelowRange = -657435.0;
constexpr double kAboveRange = 2958466.0;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
/// 30 December 1899, counted from 1 March of the year 0.
constexpr int kEpoch = 693899;
constexpr int kDaysPerEra = 146097;

bool InRange(double value) { return value > kBelowRange && value < kAboveRange; }

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysInMonth(int year, int month)
{
    constexpr std::array<int, 12> kDays { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    return month == 2 && IsLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

/// Days since 30 December 1899 of a date of the proleptic Gregorian calendar. Years begin in March here, so that
/// the leap day is the last of its year and the lengths of the months before it follow (153 m + 2) / 5.
int DayNumber(int year, int month, int day)
{
    int const marchYear = month <= 2 ? year - 1 : year;
    int const marchMonth = month <= 2 ? month + 9 : month - 3;
    int const era = marchYear / 400;
    int const yearOfEra = marchYear - era * 400;
    int const dayOfYear = (153 * marchMonth + 2) / 5 + day - 1;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - kEpoch;
}

/// The inverse of DayNumber: fills year, month, day, weekday and dayOfYear.
void SplitDay(int dayNumber, COleDateTime::Fields& fields)
{
    int const days = dayNumber + kEpoch;
    int const era = days / kDaysPerEra;
    int const dayOfEra = days - era * kDaysPerEra;
    int const yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    int const dayOfMarchYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    int const marchMonth = (5 * dayOfMarchYear + 2) / 153;
    fields.day = dayOfMarchYear - (153 * marchMonth + 2) / 5 + 1;
    fields.month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    fields.year = era * 400 + yearOfEra + (fields.month <= 2 ? 1 : 0);
    // 1 March is day 60 of a common year; January begins 306 days after it.
    fields.dayOfYear
        = fields.month <= 2 ? dayOfMarchYear - 305 : dayOfMarchYear + 60 + (IsLeapYear(fields.year) ? 1 : 0);
    // 1 March of the year 0 was a Wednesday.
    fields.weekday = (days + 3) % 7;
}

/// Added one by one, as the platform does: the last bit depends on it.
double Compose(int dayNumber, int hour, int minute, int second)
{
    double const direction = dayNumber >= 0 ? 1.0 : -1.0;
    double value = dayNumber;
    value += direction * (hour / 24.0);
    value += direction * (minute / 1440.0);
    value += direction * (second / 86400.0);
    return value;
}

} // namespace

COleDateTimeSpan::COleDateTimeSpan(long long days, long long hours, long long minutes, long long seconds)
    : m_days(static_cast<double>(days) + static_cast<double>(hours) / 24.0 + static_cast<double>(minutes) / 1440.0
        + static_cast<double>(seconds) / kSecondsPerDay)
{
}

COleDateTime::COleDateTime(double days)
    : m_value(days)
    , m_status(InRange(days) ? valid : invalid)
{
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second)
{
    SetDateTime(year, month, day, hour, minute, second);
}

bool COleDateTime::GetFields(Fields& fields) const
{
    // The status can be set by hand, so it alone says nothing about the value.
    if (m_status != valid || !InRange(m_value))
        return false;
    int day = static_cast<int>(m_value);
    int seconds = static_cast<int>(std::fabs(m_value - day) * kSecondsPerDay + 0.5);
    if (seconds == kSecondsPerDay) {
        // The last half second of the last year has no next day to go to.
        bool const last = day + 1.0 >= kAboveRange;
        seconds = last ? kSecondsPerDay - 1 : 0;
        day += last ? 0 : 1;
    }
    SplitDay(day, fields);
    fields.hour = seconds / 3600;
    fields.minute = seconds / 60 % 60;
    fields.second = seconds % 60;
    return true;
}

bool COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second)
{
    bool const exists = year >= kFirstYear && year <= kLastYear && month >= 1 && month <= 12 && day >= 1
        && day <= DaysInMonth(year, month) && hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0
        && second < 60;
    m_status = exists ? valid : invalid;
    if (exists)
        m_value = Compose(DayNumber(year, month, day), hour, minute, second);
    return exists;
}

int COleDateTime::Field(int Fields::*field) const
{
    Fields fields;
    return GetFields(fields) ? fields.*field : -1;
}

int COleDateTime::GetYear() const { return Field(&Fields::year); }
int COleDateTime::GetMonth() const { return Field(&Fields::month); }
int COleDateTime::GetDay() const { return Field(&Fields::day); }
int COleDateTime::GetHour() const { return Field(&Fields::hour); }
int COleDateTime::GetMinute() const { return Field(&Fields::minute); }
int COleDateTime::GetSecond() const { return Field(&Fields::second); }
int COleDateTime::GetDayOfWeek() const { return Field(&Fields::weekday); }
int COleDateTime::GetDayOfYear() const { return Field(&Fields::dayOfYear); }

double COleDateTime::Linear() const
{
    double const day = std::trunc(m_value);
    return day + std::fabs(m_value - day);
}

COleDateTime& COleDateTime::operator+=(COleDateTimeSpan span)
{
    if (m_status != valid)
        return *this;
    double const linear = Linear() + span.GetTotalDays();
    double day = std::floor(linear);
    double time = linear - day;
    // The difference of a tiny negative sum and its floor rounds up to a whole day.
    if (time >= 1.0) {
        day += 1.0;
        time = 0.0;
    }
    *this = COleDateTime(day >= 0.0 ? linear : day - time);
    return *this;
}

COleDateTime& COleDateTime::operator-=(COleDateTimeSpan span) { return *this += -span.GetTotalDays(); }

COleDateTimeSpan operator-(COleDateTime const& a, COleDateTime const& b)
{
    if (!a.IsValid() || !b.IsValid())
        return std::numeric_limits<double>::quiet_NaN();
    return a.Linear() - b.Linear();
}

bool operator==(COleDateTime const& a, COleDateTime const& b)
{
    return a.IsValid() && b.IsValid() && a.Linear() == b.Linear();
}

bool operator<(COleDateTime const& a, COleDateTime const& b)
{
    return a.IsValid() && b.IsValid() && a.Linear() < b.Linear();
}

bool operator<=(COleDateTime const& a, COleDateTime const& b)
{
    return a.IsValid() && b.IsValid() && a.Linear() <= b.Linear();
}

} // namespace ombrel
