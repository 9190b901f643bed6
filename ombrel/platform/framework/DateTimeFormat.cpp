#include "ombrel/platform/framework/DateTime.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ombrel {

namespace {

using Fields = COleDateTime::Fields;

constexpr std::array<std::u16string_view, 7> kWeekdays { u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday",
    u"Friday", u"Saturday" };
constexpr std::array<std::u16string_view, 12> kMonths { u"January", u"February", u"March", u"April", u"May", u"June",
    u"July", u"August", u"September", u"October", u"November", u"December" };
/// The first letters of a name that stand for it.
constexpr std::size_t kShortName = 3;

std::u16string_view Weekday(Fields const& f) { return kWeekdays[static_cast<std::size_t>(f.weekday)]; }
std::u16string_view Month(Fields const& f) { return kMonths[static_cast<std::size_t>(f.month - 1)]; }
std::u16string_view HalfDay(Fields const& f) { return f.hour < 12 ? u"AM" : u"PM"; }
int TwelveHour(Fields const& f) { return (f.hour + 11) % 12 + 1; }

/// Appends a number that is not negative with at least the given digits.
void AppendNumber(std::u16string& text, int number, int digits, char16_t fill = u'0')
{
    char16_t reversed[12];
    int length = 0;
    for (; number > 0 || length == 0; number /= 10)
        reversed[length++] = static_cast<char16_t>(u'0' + number % 10);
    for (; digits > length; --digits)
        text += fill;
    while (length > 0)
        text += reversed[--length];
}

/// Monday 1 … Sunday 7.
int IsoWeekday(Fields const& f) { return f.weekday == 0 ? 7 : f.weekday; }

/// Weeks begin on Monday and belong to the year that their Thursday lies in.
struct IsoWeek {
    int year;
    int week;
};

IsoWeek IsoWeekOf(Fields const& f)
{
    // The weekday of a year's last day: Thursday is 4.
    auto const lastWeekday = [](int year) { return (year + year / 4 - year / 100 + year / 400) % 7; };
    auto const weeks = [&](int year) { return lastWeekday(year) == 4 || lastWeekday(year - 1) == 3 ? 53 : 52; };
    int const week = (f.dayOfYear - IsoWeekday(f) + 10) / 7;
    if (week < 1)
        return { f.year - 1, weeks(f.year - 1) };
    if (week > weeks(f.year))
        return { f.year + 1, 1 };
    return { f.year, week };
}

bool AppendWeekCode(std::u16string& text, Fields const& f, char16_t code)
{
    switch (code) {
    case u'G':
        AppendNumber(text, IsoWeekOf(f).year, 1);
        return true;
    case u'g':
        AppendNumber(text, IsoWeekOf(f).year % 100, 2);
        return true;
    case u'V':
        AppendNumber(text, IsoWeekOf(f).week, 2);
        return true;
    case u'u':
        AppendNumber(text, IsoWeekday(f), 1);
        return true;
    case u'U': // weeks from the first Sunday
        AppendNumber(text, (f.dayOfYear + 6 - f.weekday) / 7, 2);
        return true;
    case u'w':
        AppendNumber(text, f.weekday, 1);
        return true;
    case u'W': // weeks from the first Monday
        AppendNumber(text, (f.dayOfYear + 7 - IsoWeekday(f)) / 7, 2);
        return true;
    default:
        return false;
    }
}

bool AppendDateCode(std::u16string& text, Fields const& f, char16_t code)
{
    switch (code) {
    case u'a':
        text += Weekday(f).substr(0, kShortName);
        return true;
    case u'A':
        text += Weekday(f);
        return true;
    case u'b':
    case u'h':
        text += Month(f).substr(0, kShortName);
        return true;
    case u'B':
        text += Month(f);
        return true;
    case u'd':
        AppendNumber(text, f.day, 2);
        return true;
    case u'e':
        AppendNumber(text, f.day, 2, u' ');
        return true;
    case u'j':
        AppendNumber(text, f.dayOfYear, 3);
        return true;
    case u'm':
        AppendNumber(text, f.month, 2);
        return true;
    case u'C':
        AppendNumber(text, f.year / 100, 2);
        return true;
    case u'y':
        AppendNumber(text, f.year % 100, 2);
        return true;
    case u'Y':
        AppendNumber(text, f.year, 1);
        return true;
    default:
        return false;
    }
}

bool AppendTimeCode(std::u16string& text, Fields const& f, char16_t code)
{
    switch (code) {
    case u'H':
        AppendNumber(text, f.hour, 2);
        return true;
    case u'I':
        AppendNumber(text, TwelveHour(f), 2);
        return true;
    case u'M':
        AppendNumber(text, f.minute, 2);
        return true;
    case u'p':
        text += HalfDay(f);
        return true;
    case u'S':
        AppendNumber(text, f.second, 2);
        return true;
    default:
        return false;
    }
}

/// A code that stands for others, or for a text.
struct ShortCode {
    char16_t code;
    std::u16string_view pattern;
};

constexpr ShortCode kShortCodes[] { { u'c', u"%a %b %e %H:%M:%S %Y" }, { u'D', u"%m/%d/%y" }, { u'x', u"%m/%d/%y" },
    { u'F', u"%Y-%m-%d" }, { u'R', u"%H:%M" }, { u'r', u"%I:%M:%S %p" }, { u'T', u"%H:%M:%S" }, { u'X', u"%H:%M:%S" },
    { u'n', u"\n" }, { u't', u"\t" }, { u'Z', u"" }, { u'%', u"%" } };

void AppendFormatted(std::u16string& text, Fields const& f, std::u16string_view pattern);

bool AppendShortCode(std::u16string& text, Fields const& f, char16_t code)
{
    auto const* const found = std::find_if(std::begin(kShortCodes), std::end(kShortCodes),
        [code](ShortCode const& shortCode) { return shortCode.code == code; });
    if (found == std::end(kShortCodes))
        return false;
    AppendFormatted(text, f, found->pattern);
    return true;
}

void AppendFormatted(std::u16string& text, Fields const& f, std::u16string_view pattern)
{
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'%' && i + 1 < pattern.size()
            && (AppendDateCode(text, f, pattern[i + 1]) || AppendWeekCode(text, f, pattern[i + 1])
                || AppendTimeCode(text, f, pattern[i + 1]) || AppendShortCode(text, f, pattern[i + 1])))
            ++i;
        else
            text += pattern[i];
    }
}

/// A run of one letter in a picture; false when the letter says nothing there.
bool AppendPictureRun(std::u16string& text, Fields const& f, char16_t letter, int length)
{
    int const digits = length > 1 ? 2 : 1;
    switch (letter) {
    case u'd':
        if (length > 2)
            text += length == 3 ? Weekday(f).substr(0, kShortName) : Weekday(f);
        else
            AppendNumber(text, f.day, digits);
        return true;
    case u'M':
        if (length > 2)
            text += length == 3 ? Month(f).substr(0, kShortName) : Month(f);
        else
            AppendNumber(text, f.month, digits);
        return true;
    case u'y':
        AppendNumber(text, length > 2 ? f.year : f.year % 100, digits);
        return true;
    case u'H':
        AppendNumber(text, f.hour, digits);
        return true;
    case u'h':
        AppendNumber(text, TwelveHour(f), digits);
        return true;
    case u'm':
        AppendNumber(text, f.minute, digits);
        return true;
    case u's':
        AppendNumber(text, f.second, digits);
        return true;
    case u't':
        text += HalfDay(f).substr(0, static_cast<std::size_t>(digits));
        return true;
    default:
        return false;
    }
}

void AppendPicture(std::u16string& text, Fields const& f, std::u16string_view picture)
{
    bool quoted = false;
    for (std::size_t i = 0; i < picture.size();) {
        char16_t const letter = picture[i];
        std::size_t const end = std::min(picture.find_first_not_of(letter, i), picture.size());
        if (letter == u'\'') {
            // Two apostrophes are one that is meant.
            text.append((end - i) / 2, u'\'');
            quoted = quoted != ((end - i) % 2 == 1);
        } else if (quoted || !AppendPictureRun(text, f, letter, static_cast<int>(end - i))) {
            text.append(end - i, letter);
        }
        i = end;
    }
}

/// What stands in for a date without fields.
CString FieldlessText(COleDateTime const& date) { return date.IsNull() ? CString() : CString("Invalid DateTime"); }

} // namespace

CString COleDateTime::Format(CString const& pattern) const
{
    Fields fields;
    if (!GetFields(fields))
        return FieldlessText(*this);
    std::u16string text;
    text.reserve(32);
    AppendFormatted(text, fields, pattern.View());
    return CString(text);
}

CString COleDateTime::FormatDefault(CString const& datePicture, CString const& timePicture) const
{
    Fields fields;
    if (!GetFields(fields))
        return FieldlessText(*this);
    bool const midnight = fields.hour == 0 && fields.minute == 0 && fields.second == 0;
    bool const dayZero = fields.year == 1899 && fields.month == 12 && fields.day == 30;
    std::u16string text;
    if (!dayZero)
        AppendPicture(text, fields, datePicture.View());
    if (!dayZero && !midnight)
        text += u' ';
    if (dayZero || !midnight)
        AppendPicture(text, fields, timePicture.View());
    return CString(text);
}

} // namespace ombrel
