#include "ombrel/prefs/RegEntry.h"

#include "ombrel/platform/host/Host.h"

namespace ombrel {

bool CRegEntry::LoadString(UINT id)
{
    CString path;
    if (!LoadStringResource(id, path))
        return false;
    SetPath(path);
    return true;
}

int CRegEntry::GetValue(CString const& name, CString& value) const
{
    // What 2048 bytes hold besides the terminator.
    constexpr int kLongest = 1023;
    CString text;
    if (!ReadRegistryValue(m_root, *this, name, text, KEY_ALL_ACCESS) || text.GetLength() > kLongest)
        return 0;
    value = text;
    return 1;
}

int CRegEntry::SetValue(CString const& name, CString const& value)
{
    return WriteRegistryValue(m_root, *this, name, value) ? 1 : 0;
}

int CRegEntry::SetValue(CString const& subkey, CString const& name, CString const& value)
{
    SetPath(*this + "\\" + subkey);
    return SetValue(name, value);
}

} // namespace ombrel
