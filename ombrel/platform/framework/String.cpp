#include "ombrel/platform/framework/String.h"

#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/framework/Unicode.h"

#include <algorithm>
#include <limits>

namespace ombrel {

namespace {

/// A position or count limited to 0 … limit.
std::size_t Limited(int value, std::size_t limit)
{
    return value <= 0 ? 0 : std::min(static_cast<std::size_t>(value), limit);
}

int Position(std::size_t found) { return found == std::u16string::npos ? -1 : static_cast<int>(found); }

/// Maps every code point; simple mappings keep the number of units.
void MapCodePoints(std::u16string& text, char32_t (*map)(char32_t))
{
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const start = i;
        char32_t const mapped = map(unicode::Next(text, i));
        if (i - start == 1)
            text[start] = static_cast<char16_t>(mapped);
        else
            unicode::ToPair(mapped, text[start], text[start + 1]);
    }
}

} // namespace

CString::CString(char const* utf8)
    : CString(utf8 ? std::string_view(utf8) : std::string_view())
{
}

CString::CString(std::string_view utf8) { unicode::AppendUtf8(m_text, utf8); }

CString::CString(char16_t const* text)
    : m_text(text ? std::u16string_view(text) : std::u16string_view())
{
}

CString::CString(wchar_t const* text)
{
    for (; text && *text; ++text)
        unicode::Append(m_text, static_cast<char32_t>(*text));
}

CString::CString(char16_t unit, int repeat)
    : m_text(static_cast<std::size_t>(std::max(repeat, 0)), unit)
{
}

std::string CString::ToUtf8() const { return unicode::ToUtf8(m_text); }

CString& CString::operator+=(CString const& other)
{
    m_text += other.m_text;
    return *this;
}

CString& CString::operator+=(char16_t unit)
{
    m_text += unit;
    return *this;
}

CString operator+(CString const& a, CString const& b)
{
    CString sum;
    sum.m_text.reserve(a.m_text.size() + b.m_text.size());
    sum.m_text += a.m_text;
    sum.m_text += b.m_text;
    return sum;
}

int CString::Compare(CString const& other) const { return m_text.compare(other.m_text); }

int CString::CompareNoCase(CString const& other) const
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < m_text.size() && j < other.m_text.size()) {
        char32_t const a = unicode::Fold(unicode::Next(m_text, i));
        char32_t const b = unicode::Fold(unicode::Next(other.m_text, j));
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (i < m_text.size())
        return 1;
    return j < other.m_text.size() ? -1 : 0;
}

CString CString::Mid(int first) const { return View().substr(Limited(first, m_text.size())); }

CString CString::Mid(int first, int count) const
{
    return View().substr(Limited(first, m_text.size()), Limited(count, m_text.size()));
}

CString CString::Left(int count) const { return View().substr(0, Limited(count, m_text.size())); }

CString CString::Right(int count) const { return View().substr(m_text.size() - Limited(count, m_text.size())); }

int CString::Find(CString const& part, int start) const
{
    return Position(m_text.find(part.m_text, static_cast<std::size_t>(std::max(start, 0))));
}

int CString::Find(char16_t unit, int start) const
{
    return Position(m_text.find(unit, static_cast<std::size_t>(std::max(start, 0))));
}

int CString::ReverseFind(char16_t unit) const { return Position(m_text.rfind(unit)); }

int CString::FindOneOf(CString const& set) const { return Position(m_text.find_first_of(set.m_text)); }

CString& CString::MakeLower()
{
    MapCodePoints(m_text, unicode::ToLower);
    return *this;
}

CString& CString::MakeUpper()
{
    MapCodePoints(m_text, unicode::ToUpper);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimLeft()
{
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), unicode::IsSpace));
    return *this;
}

CString& CString::TrimRight()
{
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), unicode::IsSpace).base(), m_text.end());
    return *this;
}

int CString::Replace(CString const& old, CString const& replacement)
{
    if (old.IsEmpty())
        return 0;
    // Built anew: old or replacement may be this string, and each replacement in place would move the rest again.
    std::u16string result;
    int count = 0;
    std::size_t from = 0;
    for (std::size_t at; (at = m_text.find(old.m_text, from)) != std::u16string::npos; ++count) {
        result.append(m_text, from, at - from).append(replacement.m_text);
        from = at + old.m_text.size();
    }
    if (count > 0) {
        result.append(m_text, from);
        m_text = std::move(result);
    }
    return count;
}

int CString::Remove(char16_t unit) { return static_cast<int>(std::erase(m_text, unit)); }

int CString::Insert(int index, CString const& part)
{
    m_text.insert(Limited(index, m_text.size()), part.m_text);
    return GetLength();
}

int CString::Delete(int index, int count)
{
    m_text.erase(Limited(index, m_text.size()), Limited(count, m_text.size()));
    return GetLength();
}

int _wtoi(CString const& text)
{
    CString number = text;
    number.TrimLeft();
    std::string digits;
    for (char16_t unit : number.View()) {
        bool const sign = digits.empty() && (unit == u'-' || unit == u'+');
        if (!sign && (unit < u'0' || unit > u'9'))
            break;
        digits += static_cast<char>(unit);
    }
    return ScanInteger(digits).value_or(0);
}

} // namespace ombrel
