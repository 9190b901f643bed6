#include "ombrel/platform/framework/File.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrel {

constinit CRuntimeClass const CFile::kClass = DynamicClass<CObject>("CFile");
constinit CRuntimeClass const CMemFile::kClass = DynamicClass<CFile>("CMemFile");
constinit CRuntimeClass const CStdioFile::kClass = DynamicClass<CFile>("CStdioFile");

namespace {

/// Blocks of this size and more go past the buffer.
constexpr std::size_t kBufferSize = std::size_t(64) << 10;

} // namespace

/// An open file: the buffer holds bytes read ahead, or bytes still to be written.
struct CFile::Stream {
    filesystem::Descriptor descriptor;
    CString path;
    bool writing = false;
    std::vector<std::byte> buffer;
    /// Reading: the next byte of the buffer.
    std::size_t next = 0;
    std::uint64_t position = 0;

    explicit Stream(int open)
        : descriptor(open)
    {
    }
    /// Reads the next buffer; false at the end of the file.
    bool Fill()
    {
        buffer.resize(kBufferSize);
        next = 0;
        ssize_t n;
        do {
            n = read(descriptor.Get(), buffer.data(), buffer.size());
        } while (n < 0 && errno == EINTR);
        int const error = errno;
        buffer.resize(static_cast<std::size_t>(std::max<ssize_t>(n, 0)));
        if (n < 0)
            filesystem::ThrowError(path, error);
        return n > 0;
    }
    void Flush()
    {
        if (!writing || buffer.empty())
            return;
        int const error = filesystem::WriteAll(descriptor.Get(), buffer.data(), buffer.size());
        buffer.clear();
        if (error != 0)
            filesystem::ThrowError(path, error);
    }
};

CFile::CFile() = default;

CFile::CFile(CString const& path, unsigned mode) { Open(path, mode); }

CFile::~CFile()
{
    // Whoever needs to know whether that succeeds calls Close.
    if (m_stream)
        (void)Succeeds([this] { m_stream->Flush(); });
}

void CFile::Open(CString const& path, unsigned mode)
{
    CFile::Close();
    bool const writing = (mode & (modeWrite | modeCreate)) != 0;
    int const flags = (writing ? O_WRONLY : O_RDONLY) | ((mode & modeCreate) != 0 ? O_CREAT | O_TRUNC : 0);
    std::string const name = path.ToUtf8();
    if (name.find('\0') != std::string::npos)
        filesystem::ThrowError(path, EINVAL);
    auto stream = std::make_unique<Stream>(filesystem::OpenDescriptor(name, flags));
    struct stat status;
    if (!stream->descriptor.IsOpen() || fstat(stream->descriptor.Get(), &status) != 0)
        filesystem::ThrowError(path, errno);
    if (S_ISDIR(status.st_mode))
        filesystem::ThrowError(path, EISDIR);
    stream->path = path;
    stream->writing = writing;
    m_stream = std::move(stream);
}

void CFile::Close()
{
    // Taken out first, so that a failure leaves the file closed.
    std::unique_ptr<Stream> const stream = std::move(m_stream);
    if (!stream)
        return;
    stream->Flush();
    if (!stream->descriptor.Close())
        filesystem::ThrowError(stream->path, errno);
}

std::size_t CFile::Read(void* into, std::size_t count)
{
    if (!m_stream || m_stream->writing)
        filesystem::ThrowError(GetFilePath(), EBADF);
    Stream& s = *m_stream;
    auto* const bytes = static_cast<std::byte*>(into);
    std::size_t done = 0;
    while (done < count) {
        if (s.next == s.buffer.size()) {
            if (count - done >= kBufferSize) {
                done += filesystem::ReadAll(s.descriptor.Get(), bytes + done, count - done, s.path);
                break;
            }
            if (!s.Fill())
                break;
        }
        std::size_t const n = std::min(count - done, s.buffer.size() - s.next);
        std::memcpy(bytes + done, s.buffer.data() + s.next, n);
        s.next += n;
        done += n;
    }
    s.position += done;
    return done;
}

bool CFile::ReadThrough(char last, std::string& into)
{
    if (!m_stream || m_stream->writing)
        filesystem::ThrowError(GetFilePath(), EBADF);
    Stream& s = *m_stream;
    for (;;) {
        if (s.next == s.buffer.size() && !s.Fill())
            return false;
        auto const* const from = reinterpret_cast<char const*>(s.buffer.data()) + s.next;
        std::size_t const ready = s.buffer.size() - s.next;
        void const* const found = std::memchr(from, last, ready);
        std::size_t const n = found ? static_cast<std::size_t>(static_cast<char const*>(found) - from) + 1 : ready;
        into.append(from, n);
        s.next += n;
        s.position += n;
        if (found)
            return true;
    }
}

void CFile::Write(void const* from, std::size_t count)
{
    if (!m_stream || !m_stream->writing)
        filesystem::ThrowError(GetFilePath(), EBADF);
    if (count == 0)
        return;
    Stream& s = *m_stream;
    auto const* const bytes = static_cast<std::byte const*>(from);
    if (s.buffer.size() + count > kBufferSize)
        s.Flush();
    if (count >= kBufferSize) {
        if (int const error = filesystem::WriteAll(s.descriptor.Get(), bytes, count))
            filesystem::ThrowError(s.path, error);
    } else {
        s.buffer.reserve(kBufferSize);
        s.buffer.insert(s.buffer.end(), bytes, bytes + count);
    }
    s.position += count;
}

std::uint64_t CFile::GetLength() const
{
    struct stat status;
    if (!m_stream)
        return 0;
    if (fstat(m_stream->descriptor.Get(), &status) != 0)
        filesystem::ThrowError(m_stream->path, errno);
    auto const length = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    return m_stream->writing ? std::max(length, m_stream->position) : length;
}

std::uint64_t CFile::GetPosition() const { return m_stream ? m_stream->position : 0; }

void CFile::SeekToBegin()
{
    if (!m_stream)
        filesystem::ThrowError({}, EBADF);
    m_stream->Flush();
    if (lseek(m_stream->descriptor.Get(), 0, SEEK_SET) != 0)
        filesystem::ThrowError(m_stream->path, errno);
    m_stream->buffer.clear();
    m_stream->next = 0;
    m_stream->position = 0;
}

CString CFile::GetFilePath() const { return m_stream ? m_stream->path : CString(); }

std::size_t CMemFile::Read(void* into, std::size_t count)
{
    std::size_t const n = std::min(count, m_bytes.size() - std::min(m_position, m_bytes.size()));
    if (n > 0)
        std::memcpy(into, m_bytes.data() + m_position, n);
    m_position += n;
    return n;
}

void CMemFile::Write(void const* from, std::size_t count)
{
    auto const* const bytes = static_cast<std::byte const*>(from);
    m_position = std::min(m_position, m_bytes.size());
    std::size_t const over = std::min(count, m_bytes.size() - m_position);
    if (over > 0)
        std::memcpy(m_bytes.data() + m_position, bytes, over);
    m_bytes.insert(m_bytes.end(), bytes + over, bytes + count);
    m_position += count;
}

CStdioFile::CStdioFile(CString const& path, unsigned mode)
    : CFile(path, mode)
{
}

bool CStdioFile::ReadString(CString& line)
{
    bool const atStart = GetPosition() == 0;
    std::string text;
    bool const broken = ReadThrough('\n', text);
    std::string_view content = text;
    if (broken) {
        content.remove_suffix(1);
        if (content.ends_with('\r'))
            content.remove_suffix(1);
    }
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (atStart && content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    line = content;
    return broken || !content.empty();
}

void CStdioFile::WriteString(CString const& text)
{
    std::string const bytes = text.ToUtf8();
    Write(bytes.data(), bytes.size());
}

std::vector<std::byte> ReadWholeFile(CString const& path)
{
    CFile file(path, CFile::modeRead);
    // One byte more than the length tells the end without growing; pipes and files that grow meanwhile do grow.
    std::vector<std::byte> bytes(static_cast<std::size_t>(file.GetLength()) + 1);
    std::size_t length = 0;
    for (;;) {
        length += file.Read(bytes.data() + length, bytes.size() - length);
        if (length < bytes.size())
            break;
        bytes.resize(std::max(kBufferSize, 2 * bytes.size()));
    }
    bytes.resize(length);
    return bytes;
}

} // namespace ombrel
