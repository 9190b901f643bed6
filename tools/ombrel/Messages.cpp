#include "tools/ombrel/Messages.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace ombrel::host {

namespace {

void WriteLine(std::string const& text)
{
    std::string const line = "ombrel: " + text + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::size_t CharactersIn(std::string const& text)
{
    // Characters of several bytes begin with one that is not 10xxxxxx.
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

std::string FormatRows(std::vector<std::vector<std::string>> const& rows, std::size_t indent)
{
    std::vector<std::size_t> widths(rows.front().size());
    for (auto const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], CharactersIn(row[i]));
    }
    std::string text;
    for (auto const& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(widths[i] - CharactersIn(row[i]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

void Messages::Error(std::string const& text) const { WriteLine(text); }

void Messages::Warning(std::string const& text) const { WriteLine("warning: " + text); }

void Messages::Tell(ChartNotes const& notes, std::string const& prefix) const
{
    for (ChartNotes::Note const& note : notes.All())
        note.isWarning ? Warning(prefix + note.text) : Note(prefix + note.text);
}

void Messages::Note(std::string const& text) const
{
    if (m_verbose)
        WriteLine(text);
}

Progress::Progress(std::string what, std::uint64_t total)
    : m_what(std::move(what))
    , m_total(total)
    , m_onTerminal(isatty(STDERR_FILENO) == 1)
    , m_next(std::chrono::steady_clock::now() + std::chrono::milliseconds(500))
{
}

Progress::~Progress()
{
    // The whole line is cleared, so that the next message starts on an empty one.
    if (m_shown)
        std::fputs("\r\x1b[K", stderr);
}

void Progress::Advance(std::uint64_t done)
{
    if (!m_onTerminal)
        return;
    auto const now = std::chrono::steady_clock::now();
    if (now < m_next)
        return;
    m_next = now + std::chrono::milliseconds(100);
    m_shown = true;
    if (m_total > 0)
        std::fprintf(stderr, "\r%s %d %%\x1b[K", m_what.c_str(),
            static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(m_total)));
    else
        std::fprintf(stderr, "\r%s %.0f MB\x1b[K", m_what.c_str(), static_cast<double>(done) / 1e6);
    std::fflush(stderr);
}

} // namespace ombrel::host
