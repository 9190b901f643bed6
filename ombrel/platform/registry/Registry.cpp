#include "ombrel/platform/registry/Registry.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/FileSystem.h"
#include "ombrel/platform/registry/RegistryDocument.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

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

/// What is known of the registry's file. There is one thread.
struct RegistryFile {
    std::string path = DefaultFile();
    /// What was read last, and of which file; empty when nothing can be relied on.
    std::optional<RegistryDocument> document;
    struct stat status = {};
};

RegistryFile& TheFile()
{
    static RegistryFile file;
    return file;
}

bool IsSameTime(timespec const& a, timespec const& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

bool IsSameFile(struct stat const& a, struct stat const& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size && IsSameTime(a.st_mtim, b.st_mtim);
}

/// Whether a change made after now would get another time of modification: file times advance by the kernel's tick.
bool IsSettled(struct stat const& status)
{
    constexpr long long kTick = 20'000'000;
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    long long const seconds = now.tv_sec - status.st_mtim.tv_sec;
    // A file from the future is never settled.
    if (seconds < 0)
        return false;
    return seconds > 1 || seconds * 1'000'000'000 + (now.tv_nsec - status.st_mtim.tv_nsec) > kTick;
}

bool ReadText(filesystem::Descriptor const& descriptor, off_t size, RegistryFile const& file, std::string& text)
{
    text.resize(static_cast<std::size_t>(size));
    try {
        text.resize(filesystem::ReadAll(descriptor.Get(), text.data(), text.size(), CString(file.path)));
    } catch (CException* e) {
        e->Delete();
        return false;
    }
    return true;
}

/// Brings file.document up to date; without a file it is empty.
FileState Refresh(RegistryFile& file)
{
    struct stat status = {};
    if (file.path.empty())
        return FileState::Unreadable;
    if (stat(file.path.c_str(), &status) != 0) {
        int const error = errno;
        file.document.reset();
        return error == ENOENT || error == ENOTDIR ? FileState::Missing : FileState::Unreadable;
    }
    if (file.document && IsSameFile(status, file.status))
        return FileState::Read;
    file.document.reset();
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    filesystem::Descriptor const descriptor(
        S_ISREG(status.st_mode) ? filesystem::OpenDescriptor(file.path, kFlags) : -1);
    std::string text;
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0 || status.st_size > kLargestFile
        || !ReadText(descriptor, status.st_size, file, text))
        return FileState::Unreadable;
    file.document = ParseRegistry(text);
    file.status = status;
    return FileState::Read;
}

/// Forgets what a later change of the file could not be told from.
void ForgetUnsettled(RegistryFile& file)
{
    if (file.document && !IsSettled(file.status))
        file.document.reset();
}

/// Keeps other processes from writing while it lives. The lock has a file of its own, since the registry's is replaced.
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
    try {
        WriteFileAtomically(CString(path), std::as_bytes(std::span(text)));
    } catch (CException* e) {
        e->Delete();
        return false;
    }
    return true;
}

} // namespace

void SetRegistryFile(CString const& path)
{
    TheFile() = RegistryFile();
    if (!path.IsEmpty())
        TheFile().path = path.ToUtf8();
}

bool ReadRegistryValue(HKEY root, CString const& path, CString const& name, CString& value)
{
    RegistryFile& file = TheFile();
    if (root != HKEY_CURRENT_USER || Refresh(file) != FileState::Read)
        return false;
    std::optional<CString> found = file.document->Find(path, name);
    ForgetUnsettled(file);
    if (!found)
        return false;
    value = std::move(*found);
    return true;
}

bool WriteRegistryValue(HKEY root, CString const& path, CString const& name, CString const& value)
{
    RegistryFile& file = TheFile();
    if (root != HKEY_CURRENT_USER || file.path.empty())
        return false;
    std::error_code error;
    std::filesystem::path const directory = std::filesystem::path(file.path).parent_path();
    if (!directory.empty())
        std::filesystem::create_directories(directory, error);
    WriteLock const lock(file.path);
    if (!lock.IsHeld())
        return false;
    FileState const state = Refresh(file);
    if (state == FileState::Unreadable)
        return false;
    RegistryDocument document = state == FileState::Read ? std::move(*file.document) : RegistryDocument();
    file.document.reset();
    return document.Set(path, name, value) && WriteDocument(file.path, document);
}

} // namespace ombrel
