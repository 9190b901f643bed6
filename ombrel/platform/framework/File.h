#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ombrel {

/// A file on disk, read and written through a buffer. Not copyable; closed with the object.
///
/// Errors are thrown as CFileException* (newly allocated) with the path and a cause.
class OMBREL_EXPORT CFile : public CObject {
public:
    /// How a file is opened: for reading or for writing, and made or emptied first.
    enum Mode : unsigned { modeRead = 0, modeWrite = 1, modeCreate = 0x1000 };
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CFile();
    /// Opens as Open does.
    CFile(CString const& path, unsigned mode);
    ~CFile() override;
    CFile(CFile const&) = delete;
    CFile& operator=(CFile const&) = delete;
    /// Opens for reading or writing; throws when the file is not there, is a directory, or may not be opened.
    /// modeCreate makes the file when it is not there and empties it when it is.
    void Open(CString const& path, unsigned mode);
    /// Flushes and closes; throws when what was written does not fit on the disk.
    virtual void Close();
    /// Reads at most the given number of bytes and returns how many; fewer only at the end of the file.
    virtual std::size_t Read(void* into, std::size_t count);
    virtual void Write(void const* from, std::size_t count);
    /// 0 for pipes and devices.
    virtual std::uint64_t GetLength() const;
    virtual std::uint64_t GetPosition() const;
    virtual void SeekToBegin();
    virtual CString GetFilePath() const;

protected:
    /// Appends the bytes up to and including the next last; false when the file ends before it.
    bool ReadThrough(char last, std::string& into);

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

/// A file in memory that grows as it is written.
class OMBREL_EXPORT CMemFile : public CFile {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CMemFile() = default;
    /// Starts with these bytes, positioned at the first.
    explicit CMemFile(std::vector<std::byte> bytes)
        : m_bytes(std::move(bytes))
    {
    }
    void Close() override { }
    std::size_t Read(void* into, std::size_t count) override;
    void Write(void const* from, std::size_t count) override;
    std::uint64_t GetLength() const override { return m_bytes.size(); }
    std::uint64_t GetPosition() const override { return m_position; }
    void SeekToBegin() override { m_position = 0; }
    CString GetFilePath() const override { return {}; }
    std::vector<std::byte> const& GetBytes() const { return m_bytes; }
    std::vector<std::byte> Detach() { return std::move(m_bytes); }

private:
    std::vector<std::byte> m_bytes;
    std::size_t m_position = 0;
};

/// A text file read line by line. A UTF-8 byte order mark at the start is skipped.
class OMBREL_EXPORT CStdioFile : public CFile {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CStdioFile() = default;
    CStdioFile(CString const& path, unsigned mode);
    /// One line without its break (CR LF or LF); false at the end of the file.
    bool ReadString(CString& line);
    /// Writes the text as UTF-8, its line breaks as they are.
    void WriteString(CString const& text);
};

/// Writes the whole of the bytes beside the path and renames over it, so that the file is never half-written and an
/// earlier one stays as it was when anything fails. A symbolic link is followed, the permissions of an earlier file are
/// kept; devices, pipes and open files named through /dev/stdout or /dev/fd are written to directly.
/// Throws CFileException*.
OMBREL_EXPORT void WriteFileAtomically(CString const& path, std::span<std::byte const> bytes);

/// The whole file, also of a pipe or a device. Throws CFileException*.
OMBREL_EXPORT std::vector<std::byte> ReadWholeFile(CString const& path);

} // namespace ombrel
