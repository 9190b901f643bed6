#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/FileSystem.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace ombrel {

namespace {

using filesystem::Descriptor;
using filesystem::ThrowError;

/// The directory with its final separator; empty for the current one.
std::string DirectoryOf(std::string const& path) { return path.substr(0, path.rfind('/') + 1); }

/// Names of open files under /proc lead to files that may have no path (or another one by now): such a name is
/// written through, never replaced.
bool IsOnProcessFileSystem(std::string const& path)
{
    struct statfs status;
    std::string const directory = DirectoryOf(path);
    return statfs(directory.empty() ? "." : directory.c_str(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

struct Target {
    /// Behind all symbolic links.
    std::string path;
    /// Of the file that is replaced, when there is one.
    std::optional<struct stat> status;
    /// A device, a pipe or a name of an open file.
    bool direct = false;
};

Target FindTarget(CString const& path)
{
    Target target;
    target.path = path.ToUtf8();
    if (target.path.empty() || target.path.find('\0') != std::string::npos)
        ThrowError(path, EINVAL);
    constexpr int kMostLinks = 40;
    for (int links = 0;; ++links) {
        struct stat status;
        if (lstat(target.path.c_str(), &status) != 0) {
            if (errno != ENOENT)
                ThrowError(path, errno);
            return target;
        }
        if (!S_ISLNK(status.st_mode)) {
            target.direct = !S_ISREG(status.st_mode);
            target.status = status;
            return target;
        }
        if (IsOnProcessFileSystem(target.path)) {
            target.direct = true;
            return target;
        }
        char link[PATH_MAX];
        ssize_t const length = readlink(target.path.c_str(), link, sizeof link);
        if (length < 0 || links == kMostLinks)
            ThrowError(path, length < 0 ? errno : ELOOP);
        std::string const next(link, static_cast<std::size_t>(length));
        target.path = next.starts_with('/') ? next : DirectoryOf(target.path) + next;
    }
}

void WriteDirectly(CString const& path, std::string const& target, std::span<std::byte const> bytes)
{
    // Appending, so that output already redirected into a file stays in front.
    Descriptor file(filesystem::OpenDescriptor(target, O_WRONLY | O_APPEND | O_NOCTTY));
    if (!file.IsOpen())
        ThrowError(path, errno);
    if (int const error = filesystem::WriteAll(file.Get(), bytes.data(), bytes.size()))
        ThrowError(path, error);
    if (!file.Close())
        ThrowError(path, errno);
}

/// A file beside the target that is removed again unless it takes the target's place.
class TemporaryFile {
public:
    /// Throws CFileException* when the directory takes no new file.
    TemporaryFile(CString const& path, std::string const& target, unsigned permissions)
        : m_path(path)
        , m_target(target)
    {
        // Made with open rather than mkstemp: the system then applies the process's file mode mask, which cannot
        // be asked for without changing it for other threads.
        static std::atomic<unsigned> s_serial = 0;
        constexpr int kNewFile = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW;
        constexpr int kAttempts = 1000;
        for (int i = 0; i < kAttempts && !m_file.IsOpen(); ++i) {
            m_name = DirectoryOf(target) + ".ombrel-" + std::to_string(getpid()) + "-" + std::to_string(s_serial++);
            m_file.Reset(filesystem::OpenDescriptor(m_name, kNewFile, permissions));
            if (!m_file.IsOpen() && errno != EEXIST)
                break;
        }
        if (m_file.IsOpen())
            return;
        if (errno == ENOENT)
            throw new CFileException(CFileException::badPath, path, ENOENT);
        ThrowError(path, errno);
    }
    ~TemporaryFile()
    {
        if (!m_replaced)
            unlink(m_name.c_str());
    }
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    /// Owner, group and permissions. Only a privileged process can give a file away, so a refusal of that counts
    /// for nothing.
    void TakeAttributes(struct stat const& status)
    {
        if (status.st_uid != geteuid() || status.st_gid != getegid())
            (void)!fchown(m_file.Get(), status.st_uid, status.st_gid);
        if (fchmod(m_file.Get(), status.st_mode & 07777) != 0)
            ThrowError(m_path, errno);
    }
    void Write(std::span<std::byte const> bytes)
    {
        if (int const error = filesystem::WriteAll(m_file.Get(), bytes.data(), bytes.size()))
            ThrowError(m_path, error);
    }
    void Replace()
    {
        if (!m_file.Close() || rename(m_name.c_str(), m_target.c_str()) != 0)
            ThrowError(m_path, errno);
        m_replaced = true;
    }

private:
    CString const& m_path;
    std::string const& m_target;
    std::string m_name;
    Descriptor m_file;
    bool m_replaced = false;
};

} // namespace

void WriteFileAtomically(CString const& path, std::span<std::byte const> bytes)
{
    Target const target = FindTarget(path);
    if (target.direct) {
        WriteDirectly(path, target.path, bytes);
        return;
    }
    // Renaming asks only the directory: a file that its owner has write-protected stays as it is all the same.
    if (target.status && faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) != 0)
        ThrowError(path, errno);
    // Not synchronised with the disk: renaming keeps the old or the new file whole whenever this process or another
    // one dies. Only a loss of power within seconds may still cost the new contents, which is not worth a wait of
    // tens of milliseconds for every save.
    // Closed to others until it has the permissions of the file that it replaces.
    TemporaryFile file(path, target.path, target.status ? 0600 : 0666);
    file.Write(bytes);
    if (target.status)
        file.TakeAttributes(*target.status);
    file.Replace();
}

} // namespace ombrel
