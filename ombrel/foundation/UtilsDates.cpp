#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/host/Host.h"

#include <algorithm>

namespace ombrel {

int CVUtils::IsValidDate(double d)
{
    constexpr double kFirstDay = -657434.0;
    constexpr double kLastDay = 2958465.0;
    return COleDateTime(d).IsValid() && d >= kFirstDay && d <= kLastDay ? 1 : 0;
}

namespace {

/// Moves the calendar fields by whole months; years out of the calendar's range make the date invalid.
void AddMonths(long long months, COleDateTime& date)
{
    COleDateTime::Fields fields;
    if (!date.GetFields(fields))
        return;
    long long const sum = fields.year * 12LL + fields.month - 1 + months;
    // Only whole months before the year 0 are negative, and those are invalid whatever their month.
    long long const year = std::clamp(sum < 0 ? -1LL : sum / 12, -1LL, 10000LL);
    int const month = static_cast<int>(((sum % 12) + 12) % 12) + 1;
    date.SetDateTime(static_cast<int>(year), month, fields.day, fields.hour, fields.minute, fields.second);
}

} // namespace

void CVUtils::IncrementTime(int n, TimeUnit unit, COleDateTime& date)
{
    long long const count = n;
    switch (unit) {
    case TimeUnit::Year:
        AddMonths(12 * count, date);
        break;
    case TimeUnit::Month:
        AddMonths(count, date);
        break;
    case TimeUnit::Week:
        date += COleDateTimeSpan(7 * count, 0, 0, 0);
        break;
    case TimeUnit::Day:
        date += COleDateTimeSpan(count, 0, 0, 0);
        break;
    case TimeUnit::Hour:
        date += COleDateTimeSpan(0, count, 0, 0);
        break;
    case TimeUnit::Minute:
        date += COleDateTimeSpan(0, 0, count, 0);
        break;
    case TimeUnit::Second:
        date += COleDateTimeSpan(0, 0, 0, count);
        break;
    }
}

CString CVUtils::FormatODTFull(COleDateTime const& date)
{
    CString const datePicture = GetLocaleShortDatePicture();
    CString const timePicture = GetLocaleTimePicture();
    CString text = date.FormatDefault(datePicture, timePicture);
    COleDateTime const zero;
    CString const midnight = zero.FormatDefault(datePicture, timePicture);
    COleDateTime::Fields fields;
    // The zero date's own text is that time already.
    if (date.GetFields(fields) && fields.hour == 0 && fields.minute == 0 && fields.second == 0 && text != midnight)
        text += CString(" ") + midnight;
    return text;
}

CString CVUtils::GetDefaultDateTimeFormat() { return GetLocaleShortDatePicture() + ":" + GetLocaleTimePicture(); }

} // namespace ombrel
