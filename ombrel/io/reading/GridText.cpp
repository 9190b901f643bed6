#include "ombrel/io/reading/GridText.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/Number.h"

#include <algorithm>
#include <cmath>

namespace ombrel::io {

namespace {

/// Between items; other white space is taken off their ends.
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

char const* SkipBlanks(char const* p, char const* end)
{
    while (p != end && IsBlank(*p))
        ++p;
    return p;
}

/// Neither white space of ASCII nor anything that might be white space beyond.
bool IsPlain(char c) { return c > ' ' && c < 0x7F; }

/// An item that is not a plain number: a tiny one, a number with other characters behind it that count for nothing, or
/// a gap.
double OddNumber(CString const& item, std::size_t& gaps)
{
    double value = 0.0;
    if (auto const number = ParseNumber(item.ToUtf8()); number && std::isfinite(*number))
        return *number;
    if (CVUtils::StringToFloat(item, value) && std::isfinite(value))
        return value;
    ++gaps;
    return kGap;
}

NumbersRead ReadBlankSeparated(std::string_view line, std::span<double> into)
{
    NumbersRead read;
    char const* p = line.data();
    char const* const end = p + line.size();
    while (read.items < into.size()) {
        p = SkipBlanks(p, end);
        if (p == end)
            break;
        double value = 0.0;
        char const* q = ScanDecimal(p, value);
        if (q && (q == end || IsBlank(*q))) {
            into[read.items++] = value;
            p = q;
            continue;
        }
        q = std::find_if(p, end, IsBlank);
        CString const item = CString(std::string_view(p, q)).Trim();
        if (!item.IsEmpty())
            into[read.items++] = OddNumber(item, read.gaps);
        p = q;
    }
    return read;
}

NumbersRead ReadCommaSeparated(std::string_view line, std::span<double> into)
{
    NumbersRead read;
    char const* p = line.data();
    char const* const end = p + line.size();
    // A comma at the end adds no item.
    while (read.items < into.size() && p != end) {
        char const* const start = p = SkipBlanks(p, end);
        double value = 0.0;
        char const* q = ScanDecimal(p, value);
        if (q)
            q = SkipBlanks(q, end);
        if (!q || (q != end && *q != ',')) {
            q = std::find(start, end, ',');
            value = OddNumber(CString(std::string_view(start, q)).Trim(), read.gaps);
        }
        into[read.items++] = value;
        p = q == end ? end : q + 1;
    }
    return read;
}

std::string_view WithoutBlanks(std::string_view line)
{
    while (!line.empty() && IsBlank(line.front()))
        line.remove_prefix(1);
    while (!line.empty() && IsBlank(line.back()))
        line.remove_suffix(1);
    return line;
}

} // namespace

TextLines::TextLines(std::string_view text)
    : m_rest(text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (m_rest.starts_with(kByteOrderMark)) {
        m_rest.remove_prefix(kByteOrderMark.size());
        m_next = kByteOrderMark.size();
    }
}

bool TextLines::Next(std::string_view& line)
{
    m_offset = m_next;
    ++m_line;
    if (m_rest.empty())
        return false;
    std::size_t const length = std::min(m_rest.find('\n'), m_rest.size());
    std::size_t const used = std::min(length + 1, m_rest.size());
    line = m_rest.substr(0, length);
    if (used > length && line.ends_with('\r'))
        line.remove_suffix(1);
    m_rest.remove_prefix(used);
    m_next += used;
    return true;
}

NumbersRead ReadNumbers(std::string_view line, Separator separator, std::span<double> into)
{
    if (separator == Separator::WhiteSpace)
        return ReadBlankSeparated(line, into);
    line = WithoutBlanks(line);
    if (line.empty() || (IsPlain(line.front()) && IsPlain(line.back())))
        return ReadCommaSeparated(line, into);
    // White space of other kinds at an end.
    CString trimmed(line);
    return ReadCommaSeparated(trimmed.Trim().ToUtf8(), into);
}

} // namespace ombrel::io
