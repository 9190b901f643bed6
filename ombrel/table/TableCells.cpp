#include "ombrel/table/TableCells.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace ombrel {

namespace {

using detail::IsDigit;
char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// Days from 1 January 1970 to a day of the proleptic Gregorian calendar.
long long DaysSince1970(int year, int month, int day)
{
    // Counting years from March puts the leap day last, so that month lengths follow one formula.
    long long const y = month <= 2 ? year - 1 : year;
    long long const era = (y >= 0 ? y : y - 399) / 400;
    long long const yearOfEra = y - era * 400;
    long long const dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    long long const dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysOfMonth(int year, int month)
{
    constexpr std::array<int, 12> kDays { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    return month == 2 && IsLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

/// Takes exactly count digits off the front.
bool TakeDigits(std::string_view& rest, std::size_t count, int& value)
{
    if (rest.size() < count)
        return false;
    int v = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsDigit(rest[i]))
            return false;
        v = v * 10 + (rest[i] - '0');
    }
    value = v;
    rest.remove_prefix(count);
    return true;
}

bool TakeChar(std::string_view& rest, char c)
{
    if (rest.empty() || rest.front() != c)
        return false;
    rest.remove_prefix(1);
    return true;
}

/// A fraction after a point or comma, if there is one; false for a mark without digits.
bool TakeFraction(std::string_view& rest, double& seconds)
{
    if (rest.empty() || (rest.front() != '.' && rest.front() != ','))
        return true;
    rest.remove_prefix(1);
    if (rest.empty() || !IsDigit(rest.front()))
        return false;
    double place = 0.1;
    while (!rest.empty() && IsDigit(rest.front())) {
        seconds += place * (rest.front() - '0');
        place /= 10.0;
        rest.remove_prefix(1);
    }
    return true;
}

/// hh:mm[:ss[.f]] into seconds.
bool TakeIsoTime(std::string_view& rest, double& seconds)
{
    int hour = 0;
    int minute = 0;
    if (!TakeDigits(rest, 2, hour) || !TakeChar(rest, ':') || !TakeDigits(rest, 2, minute) || hour > 23 || minute > 59)
        return false;
    seconds = hour * 3600.0 + minute * 60.0;
    if (!TakeChar(rest, ':'))
        return true;
    int second = 0;
    if (!TakeDigits(rest, 2, second) || second > 59)
        return false;
    seconds += second;
    return TakeFraction(rest, seconds);
}

/// Z, ±hh, ±hhmm or ±hh:mm into seconds east of UTC; nothing else may follow.
bool TakeOffset(std::string_view& rest, double& seconds)
{
    if (TakeChar(rest, 'Z') || TakeChar(rest, 'z')) {
        seconds = 0.0;
        return rest.empty();
    }
    double const sign = rest.front() == '-' ? -1.0 : 1.0;
    if (!TakeChar(rest, '+') && !TakeChar(rest, '-'))
        return false;
    int hours = 0;
    int minutes = 0;
    if (!TakeDigits(rest, 2, hours))
        return false;
    if (!rest.empty()) {
        TakeChar(rest, ':');
        if (!TakeDigits(rest, 2, minutes))
            return false;
    }
    seconds = sign * (hours * 3600.0 + minutes * 60.0);
    return rest.empty() && hours <= 23 && minutes <= 59;
}

constexpr std::array<std::string_view, 12> kMonthNames { "january", "february", "march", "april", "may", "june", "july",
    "august", "september", "october", "november", "december" };

bool StartsWithNoCase(std::string_view text, std::string_view lower)
{
    if (text.size() < lower.size())
        return false;
    for (std::size_t i = 0; i < lower.size(); ++i) {
        if (ToLower(text[i]) != lower[i])
            return false;
    }
    return true;
}

/// A full or three-letter English month name.
bool TakeMonthName(std::string_view& rest, int& month)
{
    for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
        if (!StartsWithNoCase(rest, kMonthNames[i].substr(0, 3)))
            continue;
        bool const full = StartsWithNoCase(rest, kMonthNames[i]);
        rest.remove_prefix(full ? kMonthNames[i].size() : 3);
        month = static_cast<int>(i) + 1;
        return true;
    }
    return false;
}

/// One to most digits, or exactly most when another field follows without anything between.
bool TakeField(std::string_view& rest, std::size_t most, bool exact, int& value)
{
    std::size_t count = 0;
    while (count < most && count < rest.size() && IsDigit(rest[count]))
        ++count;
    return count > 0 && (!exact || count == most) && TakeDigits(rest, count, value);
}

} // namespace

double detail::ConvertLongNumber(char const* first, char const* last, char decimalMark, bool tiny)
{
    double value = 0.0;
    if (*first == '+')
        ++first;
    std::from_chars_result result {};
    if (decimalMark == '.') {
        result = std::from_chars(first, last, value);
    } else {
        std::string text(first, last);
        for (char& c : text) {
            if (c == decimalMark)
                c = '.';
        }
        result = std::from_chars(text.data(), text.data() + text.size(), value);
    }
    if (result.ec == std::errc::result_out_of_range) {
        bool const negative = *first == '-';
        double const limit = tiny ? 0.0 : std::numeric_limits<double>::infinity();
        return negative ? -limit : limit;
    }
    return value;
}

std::optional<double> ParseCellNumber(std::string_view text, char decimalMark)
{
    // The scanner needs a character to stop at; few texts are too long for the stack.
    std::array<char, 64> small {};
    std::string large;
    char const* p = small.data();
    if (text.size() < small.size()) {
        text.copy(small.data(), text.size());
    } else {
        large = text;
        p = large.c_str();
    }
    double value = 0.0;
    char const* const end = ScanCellNumber(p, decimalMark, value);
    if (end != p + text.size())
        return std::nullopt;
    return value;
}

namespace {

/// Takes a currency's sign off one end, with blanks between it and the number; UTF-8.
bool DropCurrency(std::string_view& text)
{
    for (std::string_view const sign : { "$", "\u20AC", "\u00A3", "\u00A5" }) {
        if (text.starts_with(sign)) {
            text.remove_prefix(sign.size());
            while (!text.empty() && IsBlank(text.front()))
                text.remove_prefix(1);
            return true;
        }
        if (text.ends_with(sign)) {
            text.remove_suffix(sign.size());
            while (!text.empty() && IsBlank(text.back()))
                text.remove_suffix(1);
            return true;
        }
    }
    return false;
}

/// Whether the whole part is one to three digits, and groups of three behind marks; the groups' digits are appended.
bool TakeGroups(std::string_view whole, char mark, std::string& digits)
{
    std::size_t const first = whole.find(mark);
    if (first == 0 || first > 3)
        return false;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        bool const isMark = i >= first && (i - first) % 4 == 0;
        if (isMark ? whole[i] != mark : !IsDigit(whole[i]))
            return false;
        if (!isMark)
            digits += whole[i];
    }
    return (whole.size() - first) % 4 == 0;
}

} // namespace

std::optional<double> ParseWrittenNumber(std::string_view text, char decimalMark)
{
    if (auto const plain = ParseCellNumber(text, decimalMark))
        return plain;
    std::string number;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number += text.front();
        text.remove_prefix(1);
    }
    // A sign may stand behind that of the currency, too.
    if (DropCurrency(text) && number.empty() && text.starts_with('-')) {
        number += '-';
        text.remove_prefix(1);
    }
    if (text.empty() || !IsDigit(text.front()))
        return std::nullopt;
    char const group = decimalMark == ',' ? '.' : ',';
    std::size_t const wholeEnd = std::min(text.find(decimalMark), text.size());
    std::string_view const whole = text.substr(0, wholeEnd);
    if (whole.find(group) == std::string_view::npos)
        number += whole;
    else if (!TakeGroups(whole, group, number))
        return std::nullopt;
    number += text.substr(wholeEnd);
    return ParseCellNumber(number, decimalMark);
}

GapWords::GapWords(std::string_view list)
{
    while (!list.empty()) {
        std::size_t const comma = std::min(list.find(','), list.size());
        std::string word(list.substr(0, comma));
        list.remove_prefix(std::min(comma + 1, list.size()));
        for (char& c : word)
            c = ToLower(c);
        if (auto const value = ParseCellNumber(word, '.'))
            m_values.push_back(*value);
        m_words.push_back(std::move(word));
    }
}

bool GapWords::Contains(std::string_view text) const
{
    if (text.size() > 4 && m_words.empty())
        return false;
    std::string lower(text);
    for (char& c : lower)
        c = ToLower(c);
    for (std::string_view const word : { "", "na", "nan", "n/a", "-nan", "null", "-", "?" }) {
        if (lower == word)
            return true;
    }
    return std::find(m_words.begin(), m_words.end(), lower) != m_words.end();
}

std::optional<double> MakeDate(int year, int month, int day, double seconds)
{
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysOfMonth(year, month))
        return std::nullopt;
    constexpr long long kDaysTo1970 = 25569;
    double const extraDays = std::floor(seconds / 86400.0);
    double const fraction = (seconds - extraDays * 86400.0) / 86400.0;
    double const wholeDays = static_cast<double>(DaysSince1970(year, month, day) + kDaysTo1970) + extraDays;
    double const value = wholeDays >= 0.0 ? wholeDays + fraction : wholeDays - fraction;
    // An offset from UTC may lead out of the years that dates can have.
    if (!(value > -657435.0 && value < 2958466.0))
        return std::nullopt;
    return value;
}

std::optional<CellDate> ParseIsoDate(std::string_view text)
{
    int year = 0;
    int month = 0;
    int day = 1;
    double seconds = 0.0;
    double offset = 0.0;
    bool hasOffset = false;
    std::string_view rest = text;
    if (!TakeDigits(rest, 4, year) || rest.empty())
        return std::nullopt;
    char const mark = rest.front();
    if ((mark != '-' && mark != '/') || !TakeChar(rest, mark) || !TakeDigits(rest, 2, month))
        return std::nullopt;
    if (!rest.empty()) {
        if (!TakeChar(rest, mark) || !TakeDigits(rest, 2, day))
            return std::nullopt;
    }
    if (!rest.empty()) {
        if (!TakeChar(rest, 'T') && !TakeChar(rest, 't') && !TakeChar(rest, ' '))
            return std::nullopt;
        while (TakeChar(rest, ' ')) { }
        if (!TakeIsoTime(rest, seconds))
            return std::nullopt;
    }
    if (!rest.empty()) {
        hasOffset = true;
        if (!TakeOffset(rest, offset))
            return std::nullopt;
    }
    auto const date = MakeDate(year, month, day, seconds - offset);
    if (!date)
        return std::nullopt;
    return CellDate { *date, hasOffset };
}

namespace {

/// A number of a date, and how many digits it has.
struct DateNumber {
    int value = 0;
    std::size_t digits = 0;
};

bool TakeNumber(std::string_view& rest, DateNumber& number)
{
    std::size_t const before = rest.size();
    bool const isRead = TakeField(rest, 4, false, number.value);
    number.digits = before - rest.size();
    return isRead && number.digits != 3 && (rest.empty() || !IsDigit(rest.front()));
}

int FullYear(DateNumber const& year)
{
    return year.digits > 2 ? year.value : year.value + (year.value < 69 ? 2000 : 1900);
}

bool IsDay(DateNumber const& number) { return number.digits <= 2; }
bool IsYear(DateNumber const& number) { return number.digits == 2 || number.digits == 4; }

void SkipBlanks(std::string_view& rest)
{
    while (!rest.empty() && IsBlank(rest.front()))
        rest.remove_prefix(1);
}

/// What stands between a month's name and numbers.
bool TakeGap(std::string_view& rest)
{
    std::size_t const before = rest.size();
    TakeChar(rest, '.') || TakeChar(rest, ',') || TakeChar(rest, '-') || TakeChar(rest, '/');
    SkipBlanks(rest);
    return rest.size() < before;
}

/// Nothing, or a time up to the end, into seconds.
bool TakeTimeBehind(std::string_view rest, double& seconds)
{
    seconds = 0.0;
    if (rest.empty())
        return true;
    if (!TakeChar(rest, 'T') && !TakeChar(rest, ',') && !IsBlank(rest.front()))
        return false;
    SkipBlanks(rest);
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!TakeField(rest, 2, false, hour) || !TakeChar(rest, ':') || !TakeDigits(rest, 2, minute))
        return false;
    double fraction = 0.0;
    if (TakeChar(rest, ':') && (!TakeDigits(rest, 2, second) || !TakeFraction(rest, fraction)))
        return false;
    SkipBlanks(rest);
    bool const isAfternoon = StartsWithNoCase(rest, "pm");
    if (isAfternoon || StartsWithNoCase(rest, "am")) {
        if (hour < 1 || hour > 12)
            return false;
        rest.remove_prefix(2);
        hour = hour % 12 + (isAfternoon ? 12 : 0);
    }
    seconds = hour * 3600.0 + minute * 60.0 + second + fraction;
    return rest.empty() && hour <= 23 && minute <= 59 && second <= 59;
}

/// Year, month and day, and what stands behind them.
std::optional<WrittenDate> DateOf(int year, int month, int day, std::string_view behind)
{
    double seconds = 0.0;
    if (!TakeTimeBehind(behind, seconds))
        return std::nullopt;
    auto const date = MakeDate(year, month, day, seconds);
    return date ? std::optional(WrittenDate { date, date }) : std::nullopt;
}

/// Jan 1 2000, January 1, 2000, Sep 2003.
std::optional<WrittenDate> ParseMonthDate(std::string_view rest)
{
    int month = 0;
    DateNumber day;
    DateNumber year;
    if (!TakeMonthName(rest, month) || !TakeGap(rest) || !TakeNumber(rest, day))
        return std::nullopt;
    if (day.digits == 4)
        return DateOf(day.value, month, 1, rest);
    if (!TakeGap(rest) || !TakeNumber(rest, year) || !IsYear(year))
        return std::nullopt;
    return DateOf(FullYear(year), month, day.value, rest);
}

/// 19-Sep-03, 19 Sep 2003 or 2003-Sep-19, after the first number.
std::optional<WrittenDate> ParseDateRoundMonth(DateNumber const& first, std::string_view rest)
{
    int month = 0;
    DateNumber last;
    if (!TakeMonthName(rest, month) || !TakeGap(rest) || !TakeNumber(rest, last))
        return std::nullopt;
    if (first.digits == 4)
        return IsDay(last) ? DateOf(first.value, month, last.value, rest) : std::nullopt;
    return IsYear(last) ? DateOf(FullYear(last), month, first.value, rest) : std::nullopt;
}

/// Three numbers, after the first.
std::optional<WrittenDate> ParseDateNumbers(
    DateNumber const& first, std::string_view rest, std::optional<DateOrder> order)
{
    char const mark = rest.front();
    DateNumber second;
    DateNumber third;
    if ((mark != '/' && mark != '.' && mark != '-') || !TakeChar(rest, mark) || !TakeNumber(rest, second)
        || !IsDay(second) || !TakeChar(rest, mark) || !TakeNumber(rest, third))
        return std::nullopt;
    if (first.digits == 4 || (order == DateOrder::YearFirst && first.digits == 2 && IsDay(third)))
        return IsDay(third) ? DateOf(FullYear(first), second.value, third.value, rest) : std::nullopt;
    // 1.2.10 is rather a version, and 01-02-10 may be anything.
    bool const isShortYear
        = third.digits == 2 && (mark == '/' || (mark == '.' && first.digits == 2 && second.digits == 2));
    if (third.digits != 4 && !isShortYear)
        return std::nullopt;
    auto const dayFirst = DateOf(FullYear(third), second.value, first.value, rest);
    auto const monthFirst = DateOf(FullYear(third), first.value, second.value, rest);
    if (order == DateOrder::MonthFirst)
        return monthFirst;
    if (order || mark == '.')
        return dayFirst;
    if (!dayFirst && !monthFirst)
        return std::nullopt;
    return WrittenDate { dayFirst ? dayFirst->dayFirst : std::nullopt,
        monthFirst ? monthFirst->monthFirst : std::nullopt };
}

} // namespace

std::optional<WrittenDate> ParseWrittenDate(std::string_view text, std::optional<DateOrder> order)
{
    DateNumber first;
    std::string_view rest = text;
    if (rest.empty())
        return std::nullopt;
    if (!IsDigit(rest.front()))
        return ParseMonthDate(rest);
    if (!TakeNumber(rest, first) || rest.empty())
        return std::nullopt;
    std::string_view behind = rest;
    bool const hasName = TakeGap(behind) && !behind.empty() && !IsDigit(behind.front());
    return hasName ? ParseDateRoundMonth(first, behind) : ParseDateNumbers(first, rest, order);
}

struct DateFormat::Fields {
    std::optional<int> year;
    int month = 0;
    int day = 0;
    int dayOfYear = 0;
    int hour = 0;
    int minute = 0;
    double second = 0.0;
};

std::variant<DateFormat, std::string> DateFormat::Compile(std::string_view text)
{
    DateFormat format;
    format.m_text = text;
    bool hasField = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            format.m_codes += text[i];
            continue;
        }
        if (++i == text.size())
            return std::string("a percent sign at the end names no field");
        char const code = text[i];
        if (code == 'F') {
            format.m_codes += "%Y-%m-%d";
        } else if (code == 'T') {
            format.m_codes += "%H:%M:%S";
        } else if (std::string_view("YymbBdejHMS%").find(code) != std::string_view::npos) {
            format.m_codes += '%';
            format.m_codes += code;
        } else {
            return std::string("%") + code + " is not known; the codes are %Y %y %m %b %B %d %j %H %M %S %F %T";
        }
        hasField = hasField || code != '%';
    }
    if (!hasField)
        return std::string("it names no field such as %Y");
    return format;
}

bool DateFormat::ParseField(char code, bool nextIsField, std::string_view& rest, Fields& fields) const
{
    switch (code) {
    case 'Y': {
        int year = 0;
        bool const read = TakeField(rest, 4, nextIsField, year);
        fields.year = year;
        return read;
    }
    case 'y': {
        int year = 0;
        bool const read = TakeField(rest, 2, nextIsField, year);
        fields.year = year + (year < 69 ? 2000 : 1900);
        return read;
    }
    case 'm':
        return TakeField(rest, 2, nextIsField, fields.month) && fields.month >= 1;
    case 'b':
    case 'B':
        return TakeMonthName(rest, fields.month);
    case 'd':
    case 'e':
        return TakeField(rest, 2, nextIsField, fields.day) && fields.day >= 1;
    case 'j':
        return TakeField(rest, 3, nextIsField, fields.dayOfYear) && fields.dayOfYear >= 1;
    case 'H':
        return TakeField(rest, 2, nextIsField, fields.hour) && fields.hour <= 23;
    case 'M':
        return TakeField(rest, 2, nextIsField, fields.minute) && fields.minute <= 59;
    case 'S': {
        int second = 0;
        if (!TakeField(rest, 2, nextIsField, second) || second > 59)
            return false;
        fields.second = second;
        return nextIsField || TakeFraction(rest, fields.second);
    }
    default:
        return TakeChar(rest, '%');
    }
}

std::optional<double> DateFormat::Parse(std::string_view text) const
{
    Fields fields;
    std::string_view rest = text;
    for (std::size_t i = 0; i < m_codes.size(); ++i) {
        if (m_codes[i] == '%') {
            ++i;
            bool const nextIsField = i + 1 < m_codes.size() && m_codes[i + 1] == '%';
            if (!ParseField(m_codes[i], nextIsField, rest, fields))
                return std::nullopt;
        } else if (IsBlank(m_codes[i])) {
            while (!rest.empty() && IsBlank(rest.front()))
                rest.remove_prefix(1);
        } else if (!TakeChar(rest, m_codes[i])) {
            return std::nullopt;
        }
    }
    if (!rest.empty())
        return std::nullopt;
    double seconds = fields.hour * 3600.0 + fields.minute * 60.0 + fields.second;
    if (!fields.year && fields.month == 0 && fields.day == 0 && fields.dayOfYear == 0)
        return seconds / 86400.0;
    int const year = fields.year.value_or(1900);
    if (fields.dayOfYear > 0) {
        if (fields.dayOfYear > (IsLeapYear(year) ? 366 : 365))
            return std::nullopt;
        return MakeDate(year, 1, 1, seconds + (fields.dayOfYear - 1) * 86400.0);
    }
    return MakeDate(year, fields.month == 0 ? 1 : fields.month, fields.day == 0 ? 1 : fields.day, seconds);
}

} // namespace ombrel
