#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/framework/Object.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace ombrel {

class COleDateTime;

/// Stores objects in a file, or loads them, in the platform's binary archive form (little-endian).
///
/// Loading trusts nothing: counts are checked against the bytes that remain before memory is taken, nesting is
/// bounded, and an object belongs to exactly one owner. Every failure throws CArchiveException* (newly allocated)
/// with the offset and what was expected; after that every further use of the archive throws again.
/// Lifetime: the file is not owned and must outlive the archive. Close (or the destructor) hands buffered bytes to it.
class OMBREL_EXPORT CArchive {
public:
    /// Whether an archive writes objects or makes them from what was written.
    enum Mode { store, load };
    /// Loading begins at the file's position and reads ahead; the file must have a length (see ReadWholeFile for
    /// pipes).
    CArchive(CFile* file, Mode mode);
    /// Loads from bytes that the caller keeps until the archive is gone.
    explicit CArchive(std::span<std::byte const> bytes);
    ~CArchive();
    CArchive(CArchive const&) = delete;
    CArchive& operator=(CArchive const&) = delete;

    bool IsStoring() const { return m_mode == store; }
    bool IsLoading() const { return m_mode == load; }
    /// Writes what is buffered to the file. The destructor does the same but swallows errors.
    void Close();
    void Flush();

    CArchive& operator<<(BYTE v) { return Put(v); }
    CArchive& operator<<(WORD v) { return Put(v); }
    CArchive& operator<<(std::int16_t v) { return Put(v); }
    CArchive& operator<<(LONG v) { return Put(v); }
    CArchive& operator<<(DWORD v) { return Put(v); }
    CArchive& operator<<(std::int64_t v) { return Put(v); }
    CArchive& operator<<(std::uint64_t v) { return Put(v); }
    CArchive& operator<<(float v) { return Put(v); }
    CArchive& operator<<(double v) { return Put(v); }
    CArchive& operator<<(CString const& v);
    CArchive& operator<<(CRect const& v);
    CArchive& operator<<(CPoint v);
    CArchive& operator<<(CSize v);
    CArchive& operator<<(COleDateTime const& v);
    CArchive& operator>>(BYTE& v) { return Take(v); }
    CArchive& operator>>(WORD& v) { return Take(v); }
    CArchive& operator>>(std::int16_t& v) { return Take(v); }
    CArchive& operator>>(LONG& v) { return Take(v); }
    CArchive& operator>>(DWORD& v) { return Take(v); }
    CArchive& operator>>(std::int64_t& v) { return Take(v); }
    CArchive& operator>>(std::uint64_t& v) { return Take(v); }
    CArchive& operator>>(float& v) { return Take(v); }
    CArchive& operator>>(double& v) { return Take(v); }
    CArchive& operator>>(CString& v);
    CArchive& operator>>(CRect& v);
    CArchive& operator>>(CPoint& v);
    CArchive& operator>>(CSize& v);
    CArchive& operator>>(COleDateTime& v);

    /// Raw bytes; Read throws unless all of them are there.
    void Write(void const* from, std::size_t count);
    void Read(void* into, std::size_t count);
    /// The next bytes without consuming them; fewer than asked for only at the end.
    std::span<std::byte const> Peek(std::size_t count);
    /// Bytes between here and the end of what is loaded.
    std::uint64_t GetRemaining() const;
    /// Bytes since the archive's start.
    std::uint64_t GetOffset() const;

    /// The archive's count form.
    void WriteCount(std::uint64_t count);
    /// A count of elements that take at least bytesEach bytes of the archive; throws when they cannot all be there, or
    /// are more than an int can count.
    std::size_t ReadCount(std::size_t bytesEach);
    /// Throws endOfFile unless count elements of bytesEach bytes remain.
    void RequireRemaining(std::uint64_t count, std::size_t bytesEach, char const* what);

    /// An object reference: null, one met before, or a new object. Objects are told apart by their addresses: those
    /// stored stay alive until the archive is gone. Throws badClass for a class without an archive form.
    void WriteObject(CObject const* object);
    /// A new object of the class or one derived from it, or null for a null reference. A reference to an object met
    /// before is an error (badIndex), since every object of a document has one owner. Other causes: badClass (not
    /// registered, as all classes without OmbrelInit; not derived from expected), badSchema, badIndex, tooDeep (more
    /// than 64 objects within each other).
    std::unique_ptr<CObject> ReadObject(CRuntimeClass const& expected);
    template <typename T> std::unique_ptr<T> ReadObjectOf()
    {
        return std::unique_ptr<T>(static_cast<T*>(ReadObject(T::kClass).release()));
    }

    /// Throws the exception for data that cannot be: at the present offset, with what was expected.
    [[noreturn]] void Fail(CArchiveException::Cause cause, CString const& expected);

private:
    template <typename T> CArchive& Put(T v)
    {
        Write(&v, sizeof v);
        return *this;
    }
    template <typename T> CArchive& Take(T& v)
    {
        Read(&v, sizeof v);
        return *this;
    }
    [[noreturn]] void Fail(std::unique_ptr<CArchiveException> exception);
    void Require(Mode mode);
    void ReadFile(std::byte* into, std::size_t count);
    void Fill(std::size_t wanted);
    std::uint64_t ReadLength(bool& wide);
    std::uint32_t TakeIndex();
    void WriteIndex(std::uint32_t index, bool isClass);
    void WriteClass(CRuntimeClass const& c);
    CRuntimeClass const& ReadNewClass();
    CRuntimeClass const* ReadClass();
    void SerializeWithin(CObject& object);

    Mode m_mode;
    /// Null when loading from bytes in memory.
    CFile* m_file = nullptr;
    std::vector<std::byte> m_buffer;
    std::span<std::byte const> m_unread;
    /// Bytes handed to the file, or taken from it (those in m_unread are still to be given out).
    std::uint64_t m_transferred = 0;
    /// When loading: bytes from the archive's start to the end of the data.
    std::uint64_t m_length = 0;
    std::uint32_t m_nextIndex = 1;
    std::unordered_map<void const*, std::uint32_t> m_storedIndex;
    /// Per index met while loading: its class, or null for an object.
    std::vector<CRuntimeClass const*> m_loaded;
    int m_depth = 0;
    bool m_failed = false;
};

} // namespace ombrel
