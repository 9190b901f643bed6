#pragma once
#include "ombrel/layout/ChartNotes.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::host {

enum ExitStatus : int {
    kDone = 0,
    /// The data or a file was at fault.
    kDataFault = 1,
    /// The command line was.
    kUsageFault = 2,
};

/// Ends a command with one line for the user.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, std::string const& text)
        : std::runtime_error(text)
        , m_status(status)
    {
    }
    ExitStatus GetStatus() const { return m_status; }

private:
    ExitStatus m_status;
};

/// Lines of cells that stand below each other, columns two blanks apart, behind as many blanks as the indent says. All
/// rows have as many cells as the first.
std::string FormatRows(std::vector<std::vector<std::string>> const& rows, std::size_t indent);

/// What the user is told, on standard error: every line begins with the program's name.
class Messages {
public:
    explicit Messages(bool verbose)
        : m_verbose(verbose)
    {
    }
    bool IsVerbose() const { return m_verbose; }
    void Error(std::string const& text) const;
    void Warning(std::string const& text) const;
    /// Only when the user asked for details.
    void Note(std::string const& text) const;

    /// What a chart noted, with that before each.
    void Tell(ChartNotes const& notes, std::string const& prefix = {}) const;

private:
    bool m_verbose;
};

/// Tells what was noted at the end of its life at the latest, when something failed too.
class NotesTeller {
public:
    /// notes gives all there are.
    NotesTeller(std::function<ChartNotes()> notes, Messages const& messages)
        : m_notes(std::move(notes))
        , m_messages(messages)
    {
    }
    ~NotesTeller() { Tell(); }
    NotesTeller(NotesTeller const&) = delete;
    NotesTeller& operator=(NotesTeller const&) = delete;
    void Tell()
    {
        if (m_notes)
            m_messages.Tell(std::exchange(m_notes, nullptr)());
    }

private:
    std::function<ChartNotes()> m_notes;
    Messages const& m_messages;
};

/// One line on a terminal for work that takes longer than half a second; removed when the work ends.
class Progress {
public:
    /// total is 0 when it is not known.
    Progress(std::string what, std::uint64_t total);
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    /// done of total.
    void Advance(std::uint64_t done);

private:
    std::string m_what;
    std::uint64_t m_total;
    bool m_onTerminal;
    bool m_shown = false;
    std::chrono::steady_clock::time_point m_next;
};

} // namespace ombrel::host
