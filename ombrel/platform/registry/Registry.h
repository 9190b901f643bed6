#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// The root keys of the registry; there is one: the current user's.
enum HKEY : int { HKEY_CURRENT_USER = 1 };

inline constexpr DWORD KEY_ALL_ACCESS = 0xF003F;

/// Sets the file that holds the current user's registry; the empty path goes back to the default,
/// $XDG_CONFIG_HOME/ombrel/registry or ~/.config/ombrel/registry.
OMBREL_EXPORT void SetRegistryFile(CString const& path);

/// Reads a named text value (the empty name is the key's default value) of the key at path ("\" separated, compared
/// without regard to case). The file is read afresh when it has changed. False, and value untouched, when the key or
/// the value is missing or the file cannot be read; lines that make no sense are skipped.
OMBREL_EXPORT bool ReadRegistryValue(HKEY root, CString const& path, CString const& name, CString& value);

/// Creates the key when missing and stores the value. The file is replaced whole under a lock, and lines that make no
/// sense are kept. False when the file cannot be written.
OMBREL_EXPORT bool WriteRegistryValue(HKEY root, CString const& path, CString const& name, CString const& value);

} // namespace ombrel
