#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// The root keys of the registry; there is one: the current user's.
enum HKEY : int { HKEY_CURRENT_USER = 1 };

/// What a key is opened for: reading, or everything.
inline constexpr DWORD KEY_READ = 0x20019;
/// A key asked for with it is missing when the process may not write the file.
inline constexpr DWORD KEY_ALL_ACCESS = 0xF003F;

// Any thread may call these at any time: a reader sees the file as it is before or after a change, never between.

/// Sets the file that holds the current user's registry; the empty path goes back to the default,
/// $XDG_CONFIG_HOME/ombrel/registry or ~/.config/ombrel/registry.
OMBREL_EXPORT void SetRegistryFile(CString const& path);

/// Reads a named text value (the empty name is the key's default value) of the key at path ("\" separated, compared
/// without regard to case). The file is read afresh when it has changed. False, and value untouched, when the key or
/// the value is missing or the file cannot be read; a key asked for with KEY_ALL_ACCESS is missing, too, when the
/// process may not write the file. Lines that make no sense are skipped.
OMBREL_EXPORT bool ReadRegistryValue(
    HKEY root, CString const& path, CString const& name, CString& value, DWORD access = KEY_READ);

/// Creates the key when missing and stores the value. The file is replaced whole under a lock, and lines that make no
/// sense are kept. False when the file cannot be written.
OMBREL_EXPORT bool WriteRegistryValue(HKEY root, CString const& path, CString const& name, CString const& value);

} // namespace ombrel
