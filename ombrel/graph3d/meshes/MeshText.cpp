#include "ombrel/graph3d/meshes/MeshText.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/platform/framework/Number.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {
namespace {

CString Quoted(std::string_view text)
{
    constexpr std::size_t kLongest = 40;
    CString quoted("\"");
    quoted += CString(text.substr(0, kLongest));
    quoted += CString("\"");
    return quoted;
}

template <typename... Args> CString Formatted(char const* format, Args const&... args)
{
    CString text;
    text.Format(format, args...);
    return text;
}

} // namespace

std::string_view MeshFields::GetField() const { return { m_next, std::find_if(m_next, m_end, IsBlank) }; }

std::size_t MeshFields::Count() const
{
    std::size_t count = 0;
    for (char const* p = m_next; p != m_end;) {
        p = std::find_if(p, m_end, IsBlank);
        p = std::find_if_not(p, m_end, IsBlank);
        ++count;
    }
    return count;
}

DWORD MeshFields::TakeNumber(C3DObjectFile const& file)
{
    std::uint64_t number = 0;
    char const* p = m_next;
    // Ten digits at most are enough for 32 bits.
    for (; p != m_end && p - m_next < 11 && *p >= '0' && *p <= '9'; ++p)
        number = number * 10 + static_cast<unsigned>(*p - '0');
    bool const isWhole = p != m_next && (p == m_end || IsBlank(*p));
    if (!isWhole || number > std::numeric_limits<DWORD>::max())
        file.Fail("A node number is missing or cannot be used", "a whole number from 0 on",
            IsAtEnd() ? CString("the end of the line") : Quoted(GetField()));
    m_next = p;
    SkipBlanks();
    return static_cast<DWORD>(number);
}

bool MeshFields::TakeDouble(double& value)
{
    char const* p = ScanDecimal(m_next, value);
    if (p && (p == m_end || IsBlank(*p))) {
        m_next = p;
        SkipBlanks();
        return true;
    }
    std::string_view const field = GetField();
    auto const number = ParseNumber(field);
    if (!number || !std::isfinite(*number))
        return false;
    value = *number;
    m_next += field.size();
    SkipBlanks();
    return true;
}

void MeshFields::TakeCoordinate(C3DObjectFile const& file, double& value)
{
    if (!IsAtEnd() && !TakeDouble(value))
        file.Fail("A coordinate cannot be read", "a number", Quoted(GetField()));
}

void MeshFields::TakeValue(double& value)
{
    if (IsAtEnd() || TakeDouble(value))
        return;
    value = kGap;
    m_next += GetField().size();
    SkipBlanks();
}

int ReadMeshCount(C3DObjectFile& file, char const* what, std::size_t valuesEach)
{
    CString const expected = Formatted("the number of %s", what);
    std::string_view line;
    if (!file.ReadContent(line))
        file.Fail("The file ends too early", expected, {});
    auto const count = ScanInteger(line);
    if (!count || *count < 0)
        file.Fail("A count is missing or cannot be used", expected, Quoted(line));
    // A line takes two bytes, but for the last one. A value that is left out takes none: some may be.
    std::uint64_t const remaining = file.GetRemaining() + 1;
    auto const lines = static_cast<std::uint64_t>(*count);
    constexpr std::uint64_t kFewValues = 1 << 16;
    if (lines > remaining / 2 || lines * valuesEach > std::max(remaining, kFewValues)
        || lines * std::max<std::uint64_t>(valuesEach, 8) > std::numeric_limits<int>::max())
        file.Fail("The file is too short for a count in it", Formatted("at most as many %s as there are lines", what),
            Formatted("%d", *count));
    return *count;
}

std::string_view ReadMeshLine(C3DObjectFile& file, char const* what, int index, int count)
{
    std::string_view line;
    if (!file.ReadContent(line))
        file.Fail("The file ends too early", Formatted("%d %s", count, what), Formatted("%d", index));
    return line;
}

void SplitNames(CString const& text, CStringArray& names)
{
    names.RemoveAll();
    std::string const all = text.ToUtf8();
    constexpr char kSpace[] = " \t\v\f\r\n";
    std::size_t end = 0;
    for (std::size_t at = all.find_first_not_of(kSpace); at != all.npos; at = all.find_first_not_of(kSpace, end)) {
        end = std::min(all.find_first_of(kSpace, at), all.size());
        names.Add(CString(std::string_view(all).substr(at, end - at)));
    }
}

} // namespace ombrel
