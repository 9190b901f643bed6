#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/foundation/VException.h"
#include "ombrel/platform/framework/Number.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DObjectFile::kClass = DynamicClass<CStdioFile>("C3DObjectFile");

namespace {

constexpr std::size_t kBlock = std::size_t(1) << 18;
constexpr std::size_t kMostNotes = 100;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text)
{
    constexpr char kSpace[] = " \t\v\f\r";
    std::size_t const first = text.find_first_not_of(kSpace);
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

template <typename T, typename Scan> std::size_t ScanAll(std::string_view text, std::span<T> into, Scan const& scan)
{
    std::size_t count = 0;
    for (T& value : into) {
        std::size_t consumed = 0;
        auto const number = scan(text, &consumed);
        if (!number || !std::isfinite(static_cast<double>(*number)))
            break;
        value = *number;
        text.remove_prefix(consumed);
        ++count;
    }
    return count;
}

} // namespace

std::size_t ScanNumbers(std::string_view text, std::span<double> into) { return ScanAll(text, into, &ScanNumber); }

std::size_t ScanIntegers(std::string_view text, std::span<int> into) { return ScanAll(text, into, &ScanInteger); }

void C3DObjectFile::SetLines(CString const& lines)
{
    Restart();
    m_text = lines.ToUtf8();
    m_isAtEnd = true;
}

void C3DObjectFile::Open(CString const& path, unsigned mode)
{
    if (m_readMode == 1)
        return;
    Restart();
    CStdioFile::Open(path, mode);
}

void C3DObjectFile::Close()
{
    if (m_readMode != 1)
        CStdioFile::Close();
}

void C3DObjectFile::Restart()
{
    m_text.clear();
    m_next = 0;
    m_searched = 0;
    m_isAtEnd = false;
    m_line = 0;
    m_offset = 0;
    m_nextOffset = 0;
    m_notes.clear();
    m_numNotes = 0;
}

// Puts the next block behind what is there; false at the end.
bool C3DObjectFile::Fill()
{
    if (m_isAtEnd)
        return false;
    m_text.erase(0, m_next);
    m_searched -= m_next;
    m_next = 0;
    std::size_t const had = m_text.size();
    // A line of many blocks is read in ever larger ones, so that its time stays in proportion to its length.
    std::size_t const wanted = std::max(kBlock, had);
    m_text.resize(had + wanted);
    std::size_t const read = CStdioFile::Read(m_text.data() + had, wanted);
    m_text.resize(had + read);
    m_isAtEnd = read < wanted;
    return read != 0;
}

bool C3DObjectFile::ReadLine(std::string_view& line)
{
    // Where no LF is, is looked at once: a text may have none at all.
    while (m_searched == m_text.size() || m_text[m_searched] != '\n') {
        m_searched = std::min(m_text.find('\n', m_searched), m_text.size());
        if (m_searched == m_text.size() && !Fill())
            break;
    }
    if (m_next == m_text.size())
        return false;
    line = std::string_view(m_text).substr(m_next, m_searched - m_next);
    std::size_t end = std::min(m_searched + 1, m_text.size());
    std::size_t const carriageReturn = line.find('\r');
    if (carriageReturn != line.npos) {
        line = line.substr(0, carriageReturn);
        std::size_t const behind = m_next + carriageReturn + 1;
        end = behind == m_searched ? end : behind;
    }
    m_offset = m_nextOffset;
    m_nextOffset += end - m_next;
    m_next = end;
    m_searched = std::max(m_searched, m_next);
    if (++m_line == 1 && line.starts_with(kByteOrderMark))
        line.remove_prefix(kByteOrderMark.size());
    return true;
}

bool C3DObjectFile::ReadString(CString& line)
{
    std::string_view text;
    bool const isThere = ReadLine(text);
    line = text;
    return isThere;
}

bool C3DObjectFile::ReadContent(std::string_view& line)
{
    while (ReadLine(line)) {
        line = Trimmed(line);
        if (!line.empty() && !line.starts_with("//"))
            return true;
    }
    line = {};
    return false;
}

bool C3DObjectFile::ReadProperty(CString& name, CString& value)
{
    std::string_view text;
    bool const isThere = ReadContent(text);
    CString const line = CString(text).MakeLower();
    value.Empty();
    name = line;
    if (!isThere || line.Find(CString("endobject")) >= 0)
        return false;
    if (int const colon = line.Find(u':'); colon > 0) {
        name = line.Left(colon).Trim();
        value = line.Mid(colon + 1).Trim();
    }
    return true;
}

std::uint64_t C3DObjectFile::GetRemaining() const
{
    std::uint64_t const length = m_readMode == 1 ? m_text.size() : GetLength();
    return length - std::min(length, m_nextOffset);
}

void C3DObjectFile::Fail(CString const& message, CString const& expected, CString const& found) const
{
    Fail(message, expected, found, m_line);
}

void C3DObjectFile::Fail(
    CString const& message, CString const& expected, CString const& found, std::uint64_t line) const
{
    DataFileFault place;
    place.path = m_readMode == 1 ? CString("Formula text") : GetFilePath();
    place.line = line;
    place.offset = line == m_line ? m_offset : 0;
    place.expected = expected;
    place.found = found;
    throw new CVFileException(message, place);
}

void C3DObjectFile::AddNote(CString const& text)
{
    ++m_numNotes;
    if (m_notes.size() < kMostNotes)
        m_notes.push_back({ m_line, text });
}

} // namespace ombrel
