#include "ombrel/platform/registry/Registry.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/FileSystem.h"
#include "ombrel/platform/registry/RegistryDocument.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrel {

namespace {

constexpr off_t kLargestFile = off_t(16) << 20;

std::string DefaultFile()
{
    char const* const configuration = std::getenv("XDG_CONFIG_HOME");
    // A relative directory there is to be ignored.
    if (configuration && configuration[0] == '/')
        return std::string(configuration) + "/ombrel/registry";
    char const* const home = std::getenv("HOME");
    return home && home[0] != '\0' ? std::string(home) + "/.config/ombrel/registry" : std::string();
}

enum class FileState { Read, Missing, Unreadable };

/// The file as it was read once; never changed afterwards, so that any number of threads may look into it.
struct Snapshot {
    FileState state = FileState::Unreadable;
    /// Whether the process may write the file, too.
    bool writable = false;
    /// Which file was read.
    struct stat status = {};
    RegistryDocument document;
};

/// Where the registry lies, and what was read of it last.
class RegistryFile {
public:
    std::string GetPath() const
    {
        std::lock_guard const lock(m_mutex);
        return m_path;
    }
    void SetPath(std::string path)
    {
        std::lock_guard const lock(m_mutex);
        m_path = std::move(path);
    }
    /// What was read last, of whatever file; null at first.
    std::shared_ptr<Snapshot const> GetKept() const
    {
        std::lock_guard const lock(m_mutex);
        return m_snapshot;
    }
    void Keep(std::shared_ptr<Snapshot const> snapshot)
    {
        std::lock_guard const lock(m_mutex);
        m_snapshot = std::move(snapshot);
    }

private:
    mutable std::mutex m_mutex;
    std::string m_path = DefaultFile();
    std::shared_ptr<Snapshot const> m_snapshot;
};

RegistryFile& TheFile()
{
    static RegistryFile file;
    return file;
}

bool IsSameFile(struct stat const& a, struct stat const& b)
{
    // The time of change, since it follows a change of rights as well as of contents.
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size
        && a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

/// Whether a change made after now would get another time of change: file times advance by the kernel's tick.
bool IsSettled(struct stat const& status)
{
    constexpr long long kTick = 20'000'000;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    long long const seconds = now.tv_sec - status.st_ctim.tv_sec;
    // A file from the future is never settled.
    if (seconds < 0)
        return false;
    return seconds > 1 || seconds * 1'000'000'000 + (now.tv_nsec - status.st_ctim.tv_nsec) > kTick;
}

bool ReadText(filesystem::Descriptor const& descriptor, off_t size, std::string const& path, std::string& text)
{
    text.resize(static_cast<std::size_t>(size));
    return Succeeds(
        [&] { text.resize(filesystem::ReadAll(descriptor.Get(), text.data(), text.size(), CString(path))); });
}

/// The file at the path as it is now; without a file it is empty.
std::shared_ptr<Snapshot const> Refresh(std::string const& path)
{
    struct stat status = {};
    int const error = path.empty() ? EINVAL : stat(path.c_str(), &status) != 0 ? errno : 0;
    if (auto kept = TheFile().GetKept(); error == 0 && kept && IsSameFile(status, kept->status))
        return kept;
    auto snapshot = std::make_shared<Snapshot>();
    if (error != 0) {
        if (error == ENOENT || error == ENOTDIR)
            snapshot->state = FileState::Missing;
        return snapshot;
    }
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    filesystem::Descriptor const descriptor(S_ISREG(status.st_mode) ? filesystem::OpenDescriptor(path, kFlags) : -1);
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0 || status.st_size > kLargestFile)
        return snapshot;
    // Asked before reading: what changes the text behind our back then gets another time.
    bool const settled = IsSettled(status);
    std::string text;
    if (!ReadText(descriptor, status.st_size, path, text))
        return snapshot;
    snapshot->status = status;
    snapshot->document = ParseRegistry(text);
    snapshot->writable = faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    snapshot->state = FileState::Read;
    if (settled)
        TheFile().Keep(snapshot);
    return snapshot;
}

/// Keeps other threads and processes from writing while it lives. The lock has a file of its own, since the registry's
/// is replaced.
class WriteLock {
public:
    explicit WriteLock(std::string const& path)
        : m_file(filesystem::OpenDescriptor(path + ".lock", O_RDWR | O_CREAT | O_NOCTTY, 0600))
    {
        if (!m_file.IsOpen())
            return;
        int result = 0;
        do {
            result = flock(m_file.Get(), LOCK_EX);
        } while (result != 0 && errno == EINTR);
        m_held = result == 0;
    }
    bool IsHeld() const { return m_held; }

private:
    filesystem::Descriptor m_file;
    bool m_held = false;
};

bool WriteDocument(std::string const& path, RegistryDocument const& document)
{
    std::string const text = document.ToText();
    if (text.size() > static_cast<std::size_t>(kLargestFile))
        return false;
    return Succeeds([&] { WriteFileAtomically(CString(path), std::as_bytes(std::span(text))); });
}

} // namespace

void SetRegistryFile(CString const& path) { TheFile().SetPath(path.IsEmpty() ? DefaultFile() : path.ToUtf8()); }

bool ReadRegistryValue(HKEY root, CString const& path, CString const& name, CString& value, DWORD access)
{
    if (root != HKEY_CURRENT_USER)
        return false;
    auto const snapshot = Refresh(TheFile().GetPath());
    if (snapshot->state != FileState::Read || (access == KEY_ALL_ACCESS && !snapshot->writable))
        return false;
    std::optional<CString> found = snapshot->document.Find(path, name);
    if (!found)
        return false;
    value = std::move(*found);
    return true;
}

bool WriteRegistryValue(HKEY root, CString const& path, CString const& name, CString const& value)
{
    std::string const file = TheFile().GetPath();
    if (root != HKEY_CURRENT_USER || file.empty())
        return false;
    std::error_code error;
    std::filesystem::path const directory = std::filesystem::path(file).parent_path();
    if (!directory.empty())
        std::filesystem::create_directories(directory, error);
    WriteLock const lock(file);
    if (!lock.IsHeld())
        return false;
    auto const snapshot = Refresh(file);
    if (snapshot->state == FileState::Unreadable)
        return false;
    RegistryDocument document = snapshot->document;
    return document.Set(path, name, value) && WriteDocument(file, document);
}

} // namespace ombrel
