#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/File.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel {

/// The text of an object or mesh description, line by line: that of a file, or that of a string (read mode 1).
///
/// Lines end with CR LF, LF or CR; a UTF-8 byte order mark at the start is skipped. A file is read in blocks.
/// Errors: CFileException* from Open and whatever reads; what is wrong with a line is a CVFileException* (Fail), which
/// names it.
class OMBREL_EXPORT C3DObjectFile : public CStdioFile {
public:
    /// Something that was read over, and may be a mistake.
    struct Note {
        /// Counted from 1.
        std::uint64_t line = 0;
        CString text;
    };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C3DObjectFile() = default;

    /// 0: a file; 1: the lines of a string.
    int GetReadMode() const { return m_readMode; }
    void SetReadMode(int mode) { m_readMode = mode; }
    /// The text that is read in read mode 1, from its start.
    void SetLines(CString const& lines);
    /// Does nothing in read mode 1.
    void Open(CString const& path, unsigned mode);
    void Close() override;
    /// One line without its break; false at the end.
    bool ReadString(CString& line);

    /// The same as UTF-8, as it stands in the text; the view is valid until the next read.
    bool ReadLine(std::string_view& line);
    /// The next line that says something, trimmed: empty lines and those that begin with "//" are skipped.
    bool ReadContent(std::string_view& line);
    /// The next such line in lower case, split at its first ":" into name and value, both trimmed; without ":", or with
    /// ":" at its start, all of it is the name. False for a line with "endobject" in it, and at the end of the text.
    bool ReadProperty(CString& name, CString& value);

    /// Of the line read last, counted from 1; 0 before the first. At the end of the text that of the last line.
    std::uint64_t GetLine() const { return m_line; }
    /// Bytes from the start of the text to that line.
    std::uint64_t GetOffset() const { return m_offset; }
    /// Bytes behind that line: a line takes at least one, but for the last one. 0 for pipes, whose length nobody knows.
    std::uint64_t GetRemaining() const;

    /// Throws a CVFileException* (newly allocated) with the message for the line read last, or the one given.
    [[noreturn]] void Fail(CString const& message, CString const& expected, CString const& found) const;
    [[noreturn]] void Fail(
        CString const& message, CString const& expected, CString const& found, std::uint64_t line) const;
    /// Tells of the line read last. Beyond a hundred, notes are only counted.
    void AddNote(CString const& text);
    std::vector<Note> const& GetNotes() const { return m_notes; }
    std::uint64_t GetNumNotes() const { return m_numNotes; }

private:
    bool Fill();
    void Restart();

    int m_readMode = 0;
    /// What has been read and not yet given back begins at m_next.
    std::string m_text;
    std::size_t m_next = 0;
    bool m_isAtEnd = false;
    /// There is no LF between m_next and here.
    std::size_t m_searched = 0;
    std::uint64_t m_line = 0;
    std::uint64_t m_offset = 0;
    std::uint64_t m_nextOffset = 0;
    std::vector<Note> m_notes;
    std::uint64_t m_numNotes = 0;
};

/// Reads numbers as "%lf %lf …" and "%d %d …" do, the same in every process locale; returns how many there are from the
/// start on, at most as many as there is room for. What is not finite is no number.
OMBREL_EXPORT std::size_t ScanNumbers(std::string_view text, std::span<double> into);
/// Whole numbers, likewise.
OMBREL_EXPORT std::size_t ScanIntegers(std::string_view text, std::span<int> into);

} // namespace ombrel
