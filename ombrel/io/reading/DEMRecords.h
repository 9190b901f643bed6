#pragma once
#include "ombrel/foundation/VException.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace ombrel::io {

/// The records of an elevation model: up to 1024 characters each, or fewer when a line break ends them.
class DEMRecords {
public:
    static constexpr std::size_t kLength = 1024;

    /// Reads from the stream's position on. The path is for messages.
    DEMRecords(std::FILE* file, CString const& path)
        : m_file(file)
        , m_path(path)
        , m_buffer(std::size_t { 64 } << 10)
    {
    }
    /// The next record is GetText; false when there is none, or it cannot be read.
    bool Next();
    /// The next record that does not begin with a line break.
    bool NextFilled();
    /// Without the line break that ended it; valid until the next one is asked for.
    std::string_view GetText() const { return m_text; }
    /// Whether the file ends within the record.
    bool IsCut() const { return m_isCut; }
    /// Bytes up to the end of the record.
    std::size_t GetBytesRead() const { return m_offset + m_used; }
    /// Where the record begins.
    DataFileFault GetPlace() const;

private:
    /// Has a whole record and a line break in the buffer, unless the file ends before.
    void Fill();

    std::FILE* m_file;
    CString m_path;
    std::vector<char> m_buffer;
    /// Bytes in the buffer that are still to come, the record first.
    std::string_view m_rest;
    std::string_view m_text;
    /// Bytes of the record with the break behind it.
    std::size_t m_used = 0;
    std::size_t m_offset = 0;
    std::uint64_t m_line = 1;
    bool m_hasBreak = false;
    bool m_endsLine = false;
    bool m_isCut = false;
};

} // namespace ombrel::io
