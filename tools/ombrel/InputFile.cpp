#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ombrel::host {

namespace {

constexpr std::size_t kPiece = std::size_t { 1 } << 19;

} // namespace

InputFile::InputFile(std::string const& path)
    : m_name(path == "-" ? "standard input" : path)
    , m_descriptor(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC))
{
    struct stat status { };
    if (m_descriptor < 0)
        throw Failure(kDataFault, m_name + ": cannot be opened: " + std::strerror(errno));
    if (fstat(m_descriptor, &status) == 0) {
        if (S_ISREG(status.st_mode))
            m_size = static_cast<std::uint64_t>(status.st_size);
        if (S_ISDIR(status.st_mode)) {
            if (m_descriptor != STDIN_FILENO)
                close(m_descriptor);
            throw Failure(kDataFault, m_name + ": is a directory");
        }
    }
}

InputFile::~InputFile()
{
    if (m_descriptor != STDIN_FILENO)
        close(m_descriptor);
}

std::size_t InputFile::ReadInto(char* to, std::size_t count)
{
    for (;;) {
        ssize_t const got = read(m_descriptor, to, count);
        if (got >= 0)
            return static_cast<std::size_t>(got);
        if (errno != EINTR)
            throw Failure(kDataFault, m_name + ": cannot be read: " + std::strerror(errno));
    }
}

std::string_view InputFile::Peek(std::size_t count)
{
    while (m_peeked.size() < count) {
        std::size_t const had = m_peeked.size();
        m_peeked.resize(count);
        std::size_t const got = ReadInto(m_peeked.data() + had, count - had);
        m_peeked.resize(had + got);
        if (got == 0)
            break;
    }
    return std::string_view(m_peeked).substr(0, count);
}

std::string_view InputFile::Read()
{
    if (!m_peeked.empty()) {
        m_buffer = std::exchange(m_peeked, {});
        return m_buffer;
    }
    m_buffer.resize(kPiece);
    return { m_buffer.data(), ReadInto(m_buffer.data(), m_buffer.size()) };
}

std::string InputFile::ReadAll()
{
    std::string all;
    for (std::string_view piece = Read(); !piece.empty(); piece = Read())
        all += piece;
    return all;
}

} // namespace ombrel::host
