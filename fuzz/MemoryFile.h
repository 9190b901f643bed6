#pragma once
#include "ombrel/platform/framework/String.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

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

} // namespace ombrel::fuzz
