#include "ombrel/io/reading/DEMRecords.h"

#include <algorithm>
#include <cstring>

namespace ombrel::io {

namespace {

/// Where the first line break stands, or the text's size.
std::size_t FindBreak(std::string_view text)
{
    // Two fast searches: hardly a record holds either.
    std::size_t const lineFeed = std::min(text.find('\n'), text.size());
    return std::min(text.substr(0, lineFeed).find('\r'), lineFeed);
}

} // namespace

void DEMRecords::Fill()
{
    if (m_rest.size() >= kLength + 2)
        return;
    if (!m_rest.empty())
        std::memmove(m_buffer.data(), m_rest.data(), m_rest.size());
    std::size_t const read = std::fread(m_buffer.data() + m_rest.size(), 1, m_buffer.size() - m_rest.size(), m_file);
    m_rest = { m_buffer.data(), m_rest.size() + read };
}

bool DEMRecords::Next()
{
    m_rest.remove_prefix(m_used);
    m_offset += m_used;
    m_line += m_endsLine ? 1 : 0;
    m_used = 0;
    m_endsLine = false;
    m_text = {};
    Fill();
    if (m_rest.empty())
        return false;
    std::size_t const most = std::min(kLength, m_rest.size());
    std::size_t const length = FindBreak(m_rest.substr(0, most));
    m_text = m_rest.substr(0, length);
    m_used = length;
    m_endsLine = length < most;
    m_isCut = !m_endsLine && length < kLength;
    if (m_endsLine)
        m_used += m_rest.substr(length, 2) == "\r\n" ? 2 : 1;
    m_hasBreak = m_hasBreak || m_endsLine;
    return true;
}

bool DEMRecords::NextFilled()
{
    do {
        if (!Next())
            return false;
    } while (m_text.empty());
    return true;
}

DataFileFault DEMRecords::GetPlace() const
{
    // A file without line breaks has no lines to speak of.
    return { .path = m_path, .line = m_hasBreak ? m_line : 0, .offset = m_offset };
}

} // namespace ombrel::io
