#include "ombrel/platform/framework/Unicode.h"

#include <glib.h>

#include <algorithm>

namespace ombrel::unicode {

namespace {

bool IsHighSurrogate(char32_t c) { return (c & ~char32_t(0x3FF)) == 0xD800; }
bool IsLowSurrogate(char32_t c) { return (c & ~char32_t(0x3FF)) == 0xDC00; }
bool IsSurrogate(char32_t c) { return (c & ~char32_t(0x7FF)) == 0xD800; }

unsigned Byte(char c) { return static_cast<unsigned char>(c); }

/// Decodes the non-ASCII sequence at position, which moves behind what it took.
char32_t NextUtf8(std::string_view utf8, std::size_t& position)
{
    unsigned const lead = Byte(utf8[position++]);
    if (lead < 0xC2 || lead > 0xF4)
        return kReplacement;
    int const trailing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // The first trailing byte excludes longer forms than needed, surrogates and values past U+10FFFF.
    unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t codePoint = lead & (0x3Fu >> trailing);
    for (int i = 0; i < trailing; ++i) {
        if (position == utf8.size() || Byte(utf8[position]) < least || Byte(utf8[position]) > most)
            return kReplacement;
        codePoint = codePoint << 6 | (Byte(utf8[position++]) & 0x3F);
        least = 0x80;
        most = 0xBF;
    }
    return codePoint;
}

char Trailing(char32_t codePoint, int shift) { return static_cast<char>(0x80 | (codePoint >> shift & 0x3F)); }

bool IsAscii(char32_t c) { return c < 0x80; }

} // namespace

char32_t Next(std::u16string_view text, std::size_t& position)
{
    char32_t const unit = text[position++];
    if (!IsHighSurrogate(unit) || position == text.size() || !IsLowSurrogate(text[position]))
        return unit;
    return 0x10000 + ((unit & 0x3FF) << 10) + (text[position++] & 0x3FFu);
}

void ToPair(char32_t codePoint, char16_t& high, char16_t& low)
{
    high = static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10));
    low = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
}

void Append(std::u16string& text, char32_t codePoint)
{
    if (codePoint < 0x10000) {
        text += static_cast<char16_t>(IsSurrogate(codePoint) ? kReplacement : codePoint);
    } else if (codePoint > 0x10FFFF) {
        text += static_cast<char16_t>(kReplacement);
    } else {
        char16_t pair[2];
        ToPair(codePoint, pair[0], pair[1]);
        text.append(pair, 2);
    }
}

void AppendUtf8(std::u16string& text, std::string_view utf8)
{
    text.reserve(text.size() + utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        if (IsAscii(Byte(utf8[i])))
            text += static_cast<char16_t>(utf8[i++]);
        else
            Append(text, NextUtf8(utf8, i));
    }
}

std::string ToUtf8(std::u16string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        char32_t const next = Next(text, i);
        char32_t const c = IsSurrogate(next) ? kReplacement : next;
        if (c < 0x80) {
            utf8 += static_cast<char>(c);
        } else if (c < 0x800) {
            utf8 += static_cast<char>(0xC0 | c >> 6);
            utf8 += Trailing(c, 0);
        } else if (c < 0x10000) {
            utf8 += static_cast<char>(0xE0 | c >> 12);
            utf8 += Trailing(c, 6);
            utf8 += Trailing(c, 0);
        } else {
            utf8 += static_cast<char>(0xF0 | c >> 18);
            utf8 += Trailing(c, 12);
            utf8 += Trailing(c, 6);
            utf8 += Trailing(c, 0);
        }
    }
    return utf8;
}

char32_t ToLower(char32_t codePoint)
{
    if (IsAscii(codePoint))
        return codePoint >= U'A' && codePoint <= U'Z' ? codePoint + 32 : codePoint;
    return static_cast<char32_t>(g_unichar_tolower(static_cast<gunichar>(codePoint)));
}

char32_t ToUpper(char32_t codePoint)
{
    if (IsAscii(codePoint))
        return codePoint >= U'a' && codePoint <= U'z' ? codePoint - 32 : codePoint;
    return static_cast<char32_t>(g_unichar_toupper(static_cast<gunichar>(codePoint)));
}

char32_t Fold(char32_t codePoint)
{
    if (IsAscii(codePoint))
        return ToLower(codePoint);
    // The Turkish dotted capital and dotless small i are letters of their own, not cases of i.
    if (codePoint == 0x130 || codePoint == 0x131)
        return codePoint;
    // By way of upper case, so that the final sigma or the long s meet their common forms.
    return ToLower(ToUpper(codePoint));
}

bool IsSpace(char16_t unit)
{
    return unit == 0x20 || (unit >= 0x09 && unit <= 0x0D) || unit == 0x85 || unit == 0xA0 || unit == 0x1680
        || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F
        || unit == 0x3000;
}

} // namespace ombrel::unicode
