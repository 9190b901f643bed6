#include "ombrel/foundation/Utils.h"

#include "ombrel/platform/host/Host.h"

#include <algorithm>

namespace ombrel {

namespace {

/// The line's fields between any of the delimiters, without blanks at their ends.
template <typename Take> void ForEachField(CString line, std::u16string_view delimiters, Take const& take)
{
    std::u16string_view rest = line.Trim().View();
    while (!rest.empty()) {
        std::size_t const length = std::min(rest.find_first_of(delimiters), rest.size());
        CString field(rest.substr(0, length));
        take(field.Trim());
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
}

} // namespace

void CVUtils::SplitSpaceDelimitedString(CString const& line, CStringArray& fields)
{
    fields.RemoveAll();
    ForEachField(line, u" \t", [&](CString const& field) {
        if (!field.IsEmpty())
            fields.Add(field);
    });
}

void CVUtils::SplitDelimitedString(CString const& line, CStringArray& fields, char16_t delimiter)
{
    fields.RemoveAll();
    ForEachField(line, { &delimiter, 1 }, [&](CString const& field) { fields.Add(field); });
}

void CVUtils::SplitCSVString(CString const& line, CStringArray& fields) { SplitDelimitedString(line, fields, u','); }

namespace {

/// The index of the last unit of the first line break, or npos; lineLength receives the length before it.
std::size_t FindLineBreak(std::u16string_view text, std::size_t& lineLength)
{
    std::size_t const first = text.find_first_of(u"\r\n");
    lineLength = std::min(first, text.size());
    bool const pair = first != text.npos && text.substr(first, 2) == u"\r\n";
    return pair ? first + 1 : first;
}

/// Letters beyond ASCII are taken by their block: everything from U+00C0 on but the two signs among them.
bool IsLetterOrDigit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z')
        || (c >= 0xC0 && c != 0xD7 && c != 0xF7 && !(c >= 0x2000 && c <= 0x2BFF) && !(c >= 0x3000 && c <= 0x303F));
}

bool StandsAlone(std::u16string_view text, std::size_t pos, std::size_t length)
{
    if (pos > 0 && IsLetterOrDigit(text[pos - 1]))
        return false;
    std::size_t const after = pos + length;
    return after >= text.size() || !(IsLetterOrDigit(text[after]) || text[after] == u'(');
}

} // namespace

int CVUtils::GetNextLine(CString& text, CString& line)
{
    std::size_t length = 0;
    std::size_t const breakEnd = FindLineBreak(text.View(), length);
    line = text.Left(static_cast<int>(length));
    if (breakEnd == std::u16string_view::npos) {
        text.Empty();
        return -1;
    }
    text = text.Mid(static_cast<int>(breakEnd) + 1);
    return static_cast<int>(breakEnd);
}

int CVUtils::GetNumScriptLines(CString const& text)
{
    int lines = 0;
    std::size_t length = 0;
    for (std::u16string_view rest = text.View(); !rest.empty(); ++lines) {
        std::size_t const breakEnd = FindLineBreak(rest, length);
        rest.remove_prefix(breakEnd == rest.npos ? rest.size() : breakEnd + 1);
    }
    return lines;
}

bool CVUtils::IsVariableName(CString const& text, CString const& name, int pos)
{
    return pos >= 0 && pos <= text.GetLength()
        && StandsAlone(text.View(), static_cast<std::size_t>(pos), name.View().size());
}

bool CVUtils::FindVariableName(CString const& text, CString const& name)
{
    std::u16string_view const units = text.View();
    std::u16string_view const wanted = name.View();
    if (wanted.empty())
        return false;
    for (std::size_t pos = units.find(wanted); pos != units.npos; pos = units.find(wanted, pos + 1)) {
        if (StandsAlone(units, pos, wanted.size()))
            return true;
    }
    return false;
}

bool CVUtils::FindAssignmentLine(CString const& script, CString const& name)
{
    constexpr std::u16string_view kWhite = u" \t\r\n";
    CString const lowerScript = CString(script).MakeLower().Trim();
    CString const lowerName = CString(name).MakeLower().Trim();
    std::u16string_view const text = lowerScript.View();
    std::u16string_view const wanted = lowerName.View();
    if (wanted.empty())
        return false;
    for (std::size_t pos = text.find(wanted); pos != text.npos; pos = text.find(wanted, pos + 1)) {
        bool const starts = pos == 0 || kWhite.find(text[pos - 1]) != kWhite.npos;
        std::size_t const next = text.find_first_not_of(kWhite, pos + wanted.size());
        if (starts && next != text.npos && text[next] == u'=')
            return true;
    }
    return false;
}

int CVUtils::GetScript(UINT firstId, CString& script)
{
    int result = 0;
    CString segment;
    for (int i = 0; LoadStringResource(firstId + static_cast<UINT>(i), segment) && segment != "Script End"; ++i) {
        script += segment;
        if (segment.Find("Script segment code") >= 0)
            result = i + 1;
    }
    return result;
}

} // namespace ombrel
