#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// A length of time in days; not a number when it is the distance to a date that is not valid.
class OMBREL_EXPORT COleDateTimeSpan {
public:
    COleDateTimeSpan() = default;
    COleDateTimeSpan(double days)
        : m_days(days)
    {
    }
    COleDateTimeSpan(long long days, long long hours, long long minutes, long long seconds);
    double GetTotalDays() const { return m_days; }

private:
    double m_days = 0.0;
};

/// A date as days since 30 December 1899; the time of day is the fraction, counted away from zero before that day.
///
/// Valid from 1 January 100 to 31 December 9999. Comparisons with an invalid or null date are false; sums with one
/// are invalid or null, as are sums that leave the range. Fields are read to the nearest second, so that the last half
/// second of a day belongs to the next one.
class OMBREL_EXPORT COleDateTime {
public:
    /// Whether there is a date: yes, no since it cannot be, or none yet.
    enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };
    /// The calendar fields of a valid date. weekday: 0 Sunday … 6; dayOfYear from 1.
    struct Fields {
        int year, month, day, hour, minute, second, weekday, dayOfYear;
    };

    /// 30 December 1899 00:00:00, valid.
    COleDateTime() = default;
    /// Invalid when the value lies outside the valid range or is not a number.
    COleDateTime(double days);
    /// As SetDateTime.
    COleDateTime(int year, int month, int day, int hour, int minute, int second);

    double GetValue() const { return m_value; }
    explicit operator double() const { return m_value; }
    DateTimeStatus GetStatus() const { return m_status; }
    void SetStatus(DateTimeStatus status) { m_status = status; }
    bool IsValid() const { return m_status == valid; }
    bool IsNull() const { return m_status == null; }

    /// False, and fields untouched, unless valid.
    bool GetFields(Fields& fields) const;
    /// One field alone; −1 unless valid.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const;
    int GetDayOfYear() const;

    /// A day or time that does not exist makes the date invalid and returns false.
    bool SetDateTime(int year, int month, int day, int hour, int minute, int second);

    COleDateTime& operator+=(COleDateTimeSpan span);
    COleDateTime& operator-=(COleDateTimeSpan span);
    friend COleDateTime operator+(COleDateTime date, COleDateTimeSpan span) { return date += span; }
    friend COleDateTime operator-(COleDateTime date, COleDateTimeSpan span) { return date -= span; }
    friend COleDateTime operator-(COleDateTime date, double days) { return date -= days; }
    friend OMBREL_EXPORT COleDateTimeSpan operator-(COleDateTime const& a, COleDateTime const& b);
    friend OMBREL_EXPORT bool operator==(COleDateTime const& a, COleDateTime const& b);
    friend OMBREL_EXPORT bool operator<(COleDateTime const& a, COleDateTime const& b);
    friend bool operator>(COleDateTime const& a, COleDateTime const& b) { return b < a; }
    friend OMBREL_EXPORT bool operator<=(COleDateTime const& a, COleDateTime const& b);
    friend bool operator>=(COleDateTime const& a, COleDateTime const& b) { return b <= a; }

    /// The date with strftime codes (English names, whatever the process locale): a null date gives the empty text,
    /// an invalid one "Invalid DateTime". %c, %x and %X are those of the "C" locale; %Z is empty, since dates have no
    /// time zone; unknown codes stay as they are written.
    CString Format(CString const& pattern) const;
    /// The default text by a locale's short-date and time pictures (d, dd, M, MM, yy, yyyy, H, HH, h, hh, mm, ss, tt):
    /// the time alone for day 0, the date alone at midnight, else both with a blank. English names stand for ddd,
    /// dddd, MMM and MMMM; text between apostrophes and all other characters stand for themselves. Null and invalid
    /// dates as in Format.
    CString FormatDefault(CString const& datePicture, CString const& timePicture) const;

    /// Both statuses and both values alike (unlike ==, an invalid date is the same as itself).
    bool IsSameAs(COleDateTime const& other) const
    {
        bool const bothNotANumber = m_value != m_value && other.m_value != other.m_value;
        return m_status == other.m_status && (m_value == other.m_value || bothNotANumber);
    }

private:
    int Field(int Fields::*field) const;
    /// The value with time running forwards on negative days too.
    double Linear() const;

    double m_value = 0.0;
    DateTimeStatus m_status = valid;
    friend class CArchive;
};

} // namespace ombrel
