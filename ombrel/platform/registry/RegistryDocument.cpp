#include "ombrel/platform/registry/RegistryDocument.h"

#include <algorithm>
#include <charconv>

namespace ombrel {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

/// Whether the unit at i cannot stand in a line of UTF-8 text.
bool NeedsNumber(std::u16string_view text, std::size_t i)
{
    char16_t const c = text[i];
    if (IsHighSurrogate(c))
        return i + 1 == text.size() || !IsLowSurrogate(text[i + 1]);
    if (IsLowSurrogate(c))
        return i == 0 || !IsHighSurrogate(text[i - 1]);
    return c < 0x20 || c == 0x7F;
}

/// The text of a line, or nothing when it is not UTF-8 or holds control characters other than tabs.
std::optional<CString> Decode(std::string_view line)
{
    CString text(line);
    for (char16_t const c : text.View()) {
        if ((c < 0x20 && c != u'\t') || c == 0x7F)
            return std::nullopt;
    }
    // What was not UTF-8 has been replaced.
    if (text.Find(u'\uFFFD') >= 0 && text.ToUtf8() != line)
        return std::nullopt;
    return text;
}

std::u16string_view TrimBlanks(std::u16string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

void AppendNumbered(std::u16string& line, char16_t unit)
{
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    line += u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        line += kDigits[static_cast<std::size_t>(unit >> shift & 0xF)];
}

/// The unit that the letter after a backslash stands for; nothing for a letter that means nothing.
std::optional<char16_t> PlainEscape(char16_t letter)
{
    switch (letter) {
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    case u'\\':
    case u'=':
    case u'#':
    case u';':
    case u'[':
    case u'@':
        return letter;
    default:
        return std::nullopt;
    }
}

enum class Role { Name, Value };

/// The text as it stands in a line.
std::u16string Escape(std::u16string_view text, Role role)
{
    std::u16string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t const c = text[i];
        bool const first = i == 0;
        bool const atEnd = first || i + 1 == text.size();
        bool const meansElse = role == Role::Name
            && (c == u'=' || (first && (c == u'#' || c == u';' || c == u'[' || c == u'@' || c == u'\uFEFF')));
        if (c == u'\n' || c == u'\r' || c == u'\t')
            line += c == u'\n' ? u"\\n" : c == u'\r' ? u"\\r" : u"\\t";
        else if (NeedsNumber(text, i) || (c == u' ' && atEnd) || (meansElse && c == u'\uFEFF'))
            AppendNumbered(line, c);
        else if (c == u'\\' || meansElse)
            line.append({ u'\\', c });
        else
            line += c;
    }
    return line;
}

/// What was escaped, or nothing when a backslash stands before something unknown.
std::optional<CString> Unescape(std::u16string_view line)
{
    std::u16string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != u'\\') {
            text += line[i];
            continue;
        }
        if (++i == line.size())
            return std::nullopt;
        if (line[i] != u'u') {
            std::optional<char16_t> const plain = PlainEscape(line[i]);
            if (!plain)
                return std::nullopt;
            text += *plain;
            continue;
        }
        std::u16string_view const digits = line.substr(i + 1, 4);
        unsigned unit = 0;
        for (char16_t const d : digits) {
            bool const decimal = d >= u'0' && d <= u'9';
            bool const upper = d >= u'A' && d <= u'F';
            if (!decimal && !upper && !(d >= u'a' && d <= u'f'))
                return std::nullopt;
            unit = unit * 16 + static_cast<unsigned>(d - (decimal ? u'0' : (upper ? u'A' : u'a') - 10));
        }
        if (digits.size() < 4)
            return std::nullopt;
        text += static_cast<char16_t>(unit);
        i += 4;
    }
    return CString(text);
}

std::u16string Fold(CString text) { return std::u16string(text.MakeUpper().MakeLower().View()); }

/// The path without separators that separate nothing.
CString NormalisePath(CString const& path)
{
    std::u16string normal;
    std::u16string_view rest = path.View();
    while (!rest.empty()) {
        std::size_t const length = std::min(rest.find(u'\\'), rest.size());
        if (length > 0 && !normal.empty())
            normal += u'\\';
        normal += rest.substr(0, length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return CString(normal);
}

std::u16string IndexOf(std::u16string const& key, CString const& name) { return key + u'\0' + Fold(name); }

std::string ValueLine(CString const& name, CString const& value)
{
    std::u16string const left = name.IsEmpty() ? u"@" : Escape(name.View(), Role::Name);
    std::u16string const right = Escape(value.View(), Role::Value);
    return CString(left + u" =" + (right.empty() ? u"" : u" ") + right).ToUtf8();
}

} // namespace

std::optional<CString> RegistryDocument::Find(CString const& path, CString const& name) const
{
    auto const found = m_values.find(IndexOf(Fold(NormalisePath(path)), name));
    if (found == m_values.end())
        return std::nullopt;
    return found->second.value;
}

bool RegistryDocument::Set(CString const& path, CString const& name, CString const& value)
{
    CString const normal = NormalisePath(path);
    for (std::size_t i = 0; i < normal.View().size(); ++i) {
        if (NeedsNumber(normal.View(), i))
            return false;
    }
    std::u16string const key = Fold(normal);
    auto const found = m_values.find(IndexOf(key, name));
    if (found != m_values.end()) {
        m_lines[found->second.line] = ValueLine(name, value);
        found->second.value = value;
        return true;
    }
    auto const section = m_lastLine.find(key);
    if (section == m_lastLine.end()) {
        if (!m_lines.empty())
            m_lines.emplace_back();
        AddLine((CString("[") + normal + "]").ToUtf8());
        AddLine(ValueLine(name, value));
        return true;
    }
    // Everything behind the new line moves, so that the positions are best found anew.
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(section->second) + 1, ValueLine(name, value));
    *this = ParseRegistry(ToText());
    return true;
}

std::string RegistryDocument::ToText() const
{
    std::string text;
    for (std::string const& line : m_lines)
        text += line + '\n';
    return text;
}

void RegistryDocument::AddLine(std::string_view line)
{
    std::size_t const index = m_lines.size();
    m_lines.emplace_back(line);
    std::string_view content = line;
    if (index == 0 && content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    content.remove_prefix(std::min(content.find_first_not_of(" \t"), content.size()));
    content = content.substr(0, content.find_last_not_of(" \t\r") + 1);
    if (content.empty())
        return;
    bool const comment = content[0] == '#' || content[0] == ';';
    if (!comment && !(content[0] == '[' ? AddKey(content) : AddValue(content)))
        ++m_damagedLines;
    if (m_key)
        m_lastLine[*m_key] = index;
}

bool RegistryDocument::AddKey(std::string_view line)
{
    // Until the next good key, values must not fall to the key before.
    m_key.reset();
    std::optional<CString> const text = line.back() == ']' ? Decode(line) : std::nullopt;
    if (!text || text->Find(u'\t') >= 0)
        return false;
    m_key = Fold(NormalisePath(text->Mid(1, text->GetLength() - 2)));
    return true;
}

bool RegistryDocument::AddValue(std::string_view line)
{
    std::optional<CString> const text = Decode(line);
    if (!text || !m_key)
        return false;
    std::u16string_view const units = text->View();
    std::size_t equals = 0;
    while (equals < units.size() && units[equals] != u'=')
        equals += units[equals] == u'\\' ? 2 : 1;
    if (equals >= units.size())
        return false;
    std::u16string_view const left = TrimBlanks(units.substr(0, equals));
    std::optional<CString> const name = left == u"@" ? CString() : Unescape(left);
    std::optional<CString> const value = Unescape(TrimBlanks(units.substr(equals + 1)));
    if (left.empty() || !name || !value)
        return false;
    m_values[IndexOf(*m_key, *name)] = { m_lines.size() - 1, *value };
    return true;
}

RegistryDocument ParseRegistry(std::string_view text)
{
    RegistryDocument document;
    while (!text.empty()) {
        std::size_t const length = std::min(text.find('\n'), text.size());
        document.AddLine(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return document;
}

} // namespace ombrel
