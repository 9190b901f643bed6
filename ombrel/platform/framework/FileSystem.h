#pragma once
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Export.h"

#include <cstddef>
#include <string>

/// Thin cover of the operating system's files for the sources of this folder.
namespace ombrel::filesystem {

/// An open file descriptor, closed with the object.
class OMBREL_EXPORT Descriptor {
public:
    explicit Descriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor() { Close(); }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    /// Closes what is open and takes another one over.
    void Reset(int descriptor)
    {
        Close();
        m_descriptor = descriptor;
    }
    /// False with errno set when the system reports that something written has not arrived.
    bool Close();

private:
    int m_descriptor;
};

/// Throws a CFileException* for an errno value.
[[noreturn]] void ThrowError(CString const& path, int error);
/// Reads until count bytes or the end and returns how many; throws CFileException*.
OMBREL_EXPORT std::size_t ReadAll(int descriptor, void* into, std::size_t count, CString const& path);
/// Writes all of the bytes. Returns 0 or the errno value.
OMBREL_EXPORT int WriteAll(int descriptor, void const* from, std::size_t count);
/// open with close-on-exec, repeated when a signal interrupts it; −1 with errno. The permissions are for a new file,
/// before the process's mask.
OMBREL_EXPORT int OpenDescriptor(std::string const& path, int flags, unsigned permissions = 0666);

} // namespace ombrel::filesystem
