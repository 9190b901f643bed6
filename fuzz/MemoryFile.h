#pragma once
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/framework/String.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace ombrel::fuzz {

inline void Require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A file that readers can open by its path and that never touches a disk.
class MemoryFile {
public:
    MemoryFile()
        : m_file(memfd_create("data", 0))
        , m_path("/proc/self/fd/" + std::to_string(m_file))
    {
    }
    void Fill(std::uint8_t const* data, std::size_t size)
    {
        Require(ftruncate(m_file, 0) == 0 && pwrite(m_file, data, size, 0) == static_cast<ssize_t>(size));
    }
    CString const& GetPath() const { return m_path; }

private:
    int m_file;
    CString m_path;
};

/// Another path of the file, with the ending that tells readers its kind.
inline CString LinkTo(MemoryFile const& file, char const* ending)
{
    std::filesystem::path const link
        = std::filesystem::temp_directory_path() / ("fuzz-" + std::to_string(getpid()) + ending);
    std::filesystem::remove(link);
    std::filesystem::create_symlink(file.GetPath().ToUtf8(), link);
    return CString(link.string());
}

/// The bytes that an object is stored as.
template <typename T> std::vector<std::byte> Stored(T& object)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return file.Detach();
}

} // namespace ombrel::fuzz
