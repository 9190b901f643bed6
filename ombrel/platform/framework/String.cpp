#include "ombrel/platform/framework/String.h"

#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/framework/Unicode.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

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

CString::Block* CString::NewBlock(std::u16string_view text, std::size_t capacity)
{
    if (capacity == 0)
        return nullptr;
    if (capacity > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::bad_alloc();
    void* const memory = ::operator new(sizeof(Block) + (capacity + 1) * sizeof(char16_t));
    auto* const block
        = new (memory) Block { 1, static_cast<std::uint32_t>(text.size()), static_cast<std::uint32_t>(capacity) };
    char16_t* const end = std::copy(text.begin(), text.end(), block->Units());
    *end = u'\0';
    return block;
}

void CString::Free(Block* block)
{
    block->~Block();
    ::operator delete(block);
}

void CString::Assign(std::u16string_view text) { Release(std::exchange(m_block, NewBlock(text, text.size()))); }

CString& CString::Append(std::u16string_view text)
{
    if (text.empty())
        return *this;
    std::u16string_view const own = View();
    std::size_t const length = own.size() + text.size();
    bool const isAlone = m_block && m_block->holders.load(std::memory_order_acquire) == 1;
    if (!isAlone || length > m_block->capacity) {
        // Texts that are put together piece by piece grow by half.
        Block* const block = NewBlock(own, own.empty() ? length : std::max(length, own.size() + own.size() / 2));
        // The text may be part of this one, so that the old block goes last.
        std::copy(text.begin(), text.end(), block->Units() + own.size());
        Release(std::exchange(m_block, block));
    } else {
        std::copy(text.begin(), text.end(), m_block->Units() + own.size());
    }
    m_block->length = static_cast<std::uint32_t>(length);
    m_block->Units()[length] = u'\0';
    return *this;
}

CString::CString(char const* utf8)
    : CString(utf8 ? std::string_view(utf8) : std::string_view())
{
}

CString::CString(std::string_view utf8)
{
    std::u16string text;
    unicode::AppendUtf8(text, utf8);
    Assign(text);
}

CString::CString(char16_t const* text)
    : CString(text ? std::u16string_view(text) : std::u16string_view())
{
}

CString::CString(wchar_t const* wide)
{
    std::u16string text;
    for (; wide && *wide; ++wide)
        unicode::Append(text, static_cast<char32_t>(*wide));
    Assign(text);
}

CString::CString(char16_t unit, int repeat)
    : CString(std::u16string(static_cast<std::size_t>(std::max(repeat, 0)), unit))
{
}

std::string CString::ToUtf8() const { return unicode::ToUtf8(View()); }

void CString::SetAt(int index, char16_t unit)
{
    std::size_t const i = CheckedIndex(index, View().size());
    if (m_block->holders.load(std::memory_order_acquire) != 1)
        Assign(View());
    m_block->Units()[i] = unit;
}

CString& CString::operator+=(CString const& other) { return Append(other.View()); }

CString& CString::operator+=(char16_t unit) { return Append({ &unit, 1 }); }

CString operator+(CString const& a, CString const& b)
{
    CString sum;
    sum.m_block = CString::NewBlock(a.View(), a.View().size() + b.View().size());
    return sum.Append(b.View());
}

int CString::Compare(CString const& other) const { return View().compare(other.View()); }

int CString::CompareNoCase(CString const& other) const
{
    std::u16string_view const mine = View();
    std::u16string_view const others = other.View();
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < mine.size() && j < others.size()) {
        char32_t const a = unicode::Fold(unicode::Next(mine, i));
        char32_t const b = unicode::Fold(unicode::Next(others, j));
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (i < mine.size())
        return 1;
    return j < others.size() ? -1 : 0;
}

CString CString::Mid(int first) const { return View().substr(Limited(first, View().size())); }

CString CString::Mid(int first, int count) const
{
    return View().substr(Limited(first, View().size()), Limited(count, View().size()));
}

CString CString::Left(int count) const { return View().substr(0, Limited(count, View().size())); }

CString CString::Right(int count) const { return View().substr(View().size() - Limited(count, View().size())); }

int CString::Find(CString const& part, int start) const
{
    return Position(View().find(part.View(), static_cast<std::size_t>(std::max(start, 0))));
}

int CString::Find(char16_t unit, int start) const
{
    return Position(View().find(unit, static_cast<std::size_t>(std::max(start, 0))));
}

int CString::ReverseFind(char16_t unit) const { return Position(View().rfind(unit)); }

int CString::FindOneOf(CString const& set) const { return Position(View().find_first_of(set.View())); }

CString& CString::MakeLower()
{
    std::u16string text(View());
    MapCodePoints(text, unicode::ToLower);
    Assign(text);
    return *this;
}

CString& CString::MakeUpper()
{
    std::u16string text(View());
    MapCodePoints(text, unicode::ToUpper);
    Assign(text);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimLeft()
{
    std::u16string_view const text = View();
    auto const first = std::find_if_not(text.begin(), text.end(), unicode::IsSpace);
    if (first != text.begin())
        Assign({ first, text.end() });
    return *this;
}

CString& CString::TrimRight()
{
    std::u16string_view const text = View();
    auto const end = std::find_if_not(text.rbegin(), text.rend(), unicode::IsSpace).base();
    if (end != text.end())
        Assign({ text.begin(), end });
    return *this;
}

int CString::Replace(CString const& old, CString const& replacement)
{
    if (old.IsEmpty())
        return 0;
    std::u16string_view const text = View();
    std::u16string result;
    int count = 0;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(old.View(), from)) != std::u16string::npos; ++count) {
        result.append(text, from, at - from).append(replacement.View());
        from = at + old.View().size();
    }
    if (count > 0)
        Assign(result.append(text, from));
    return count;
}

int CString::Remove(char16_t unit)
{
    std::u16string text(View());
    auto const count = std::erase(text, unit);
    if (count > 0)
        Assign(text);
    return static_cast<int>(count);
}

int CString::Insert(int index, CString const& part)
{
    std::u16string text(View());
    text.insert(Limited(index, text.size()), part.View());
    Assign(text);
    return GetLength();
}

int CString::Delete(int index, int count)
{
    std::u16string text(View());
    text.erase(Limited(index, text.size()), Limited(count, text.size()));
    Assign(text);
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
