#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ombrel {

/// What was noticed while a chart was made, in order. It is drawn all the same.
class ChartNotes {
public:
    /// One thing that was noticed, as a sentence.
    struct Note {
        /// The picture may not show what was meant; else it was a choice that somebody may want to know.
        bool isWarning = false;
        std::string text;
    };
    void AddWarning(std::string text) { m_notes.push_back({ true, std::move(text) }); }
    void AddNote(std::string text) { m_notes.push_back({ false, std::move(text) }); }
    /// Those of another behind the own.
    void Add(ChartNotes const& notes) { m_notes.insert(m_notes.end(), notes.m_notes.begin(), notes.m_notes.end()); }
    std::vector<Note> const& All() const { return m_notes; }

private:
    std::vector<Note> m_notes;
};

/// "1 row", "2 rows".
OMBREL_EXPORT std::string Counted(std::size_t count, std::string const& singular, std::string const& plural);

/// A number as messages show it, with up to 15 digits.
OMBREL_EXPORT std::string NumberText(double value);

/// A number as it is told where a few digits do: ten significant ones.
OMBREL_EXPORT std::string ShortNumber(double value);

/// A date, in days since 30 December 1899, as messages show it: 2020-01-31, and the time of day unless it is midnight.
OMBREL_EXPORT std::string DateText(double days);

} // namespace ombrel
