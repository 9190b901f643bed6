#include "ombrel/platform/framework/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace ombrel::filesystem {

namespace {

/// The most that one read or write call is asked for; Linux moves at most 2 GiB − 4096 at a time.
constexpr std::size_t kMostAtOnce = std::size_t(1) << 30;

CFileException::Cause CauseOf(int error)
{
    switch (error) {
    case ENOENT:
    case ENXIO:
        return CFileException::fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
    case EINVAL:
        return CFileException::badPath;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
        return CFileException::accessDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return CFileException::diskFull;
    case EIO:
        return CFileException::hardIO;
    default:
        return CFileException::genericException;
    }
}

} // namespace

bool Descriptor::Close()
{
    int const descriptor = std::exchange(m_descriptor, -1);
    // Linux frees the descriptor even when close is interrupted: it must not be closed again.
    return descriptor < 0 || close(descriptor) == 0 || errno == EINTR;
}

void ThrowError(CString const& path, int error) { throw new CFileException(CauseOf(error), path, error); }

std::size_t ReadAll(int descriptor, void* into, std::size_t count, CString const& path)
{
    std::size_t done = 0;
    while (done < count) {
        ssize_t const n = read(descriptor, static_cast<std::byte*>(into) + done, std::min(count - done, kMostAtOnce));
        if (n == 0)
            break;
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (errno != EINTR)
            ThrowError(path, errno);
    }
    return done;
}

int WriteAll(int descriptor, void const* from, std::size_t count)
{
    auto const* next = static_cast<std::byte const*>(from);
    while (count > 0) {
        ssize_t const n = write(descriptor, next, std::min(count, kMostAtOnce));
        if (n < 0 && errno != EINTR)
            return errno;
        if (n > 0) {
            next += n;
            count -= static_cast<std::size_t>(n);
        }
    }
    return 0;
}

int OpenDescriptor(std::string const& path, int flags, unsigned permissions)
{
    int descriptor;
    do {
        descriptor = open(path.c_str(), flags | O_CLOEXEC, permissions);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace ombrel::filesystem
