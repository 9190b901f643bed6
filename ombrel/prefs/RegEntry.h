#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/registry/Registry.h"

namespace ombrel {

/// A key of the registry, for its named text values. Its own text is the key's path below the root.
///
/// Values are read into 2048 bytes: a text of 1024 units or more counts as missing. The key is opened with all access
/// even for reading: in a registry that the process may not write every value is missing.
class OMBREL_EXPORT CRegEntry : public CString {
public:
    explicit CRegEntry(HKEY root)
        : m_root(root)
    {
    }
    CRegEntry(CRegEntry const&) = default;
    CRegEntry& operator=(CRegEntry const&) = default;
    virtual ~CRegEntry() = default;
    /// The path becomes the text of a string resource; false, and the path untouched, when there is none.
    bool LoadString(UINT id);
    void SetPath(CString const& path) { static_cast<CString&>(*this) = path; }
    HKEY GetRoot() const { return m_root; }

    /// 1 and the value, or 0 with value untouched when it is missing.
    int GetValue(CString const& name, CString& value) const;
    /// Creates the key when missing; 1, or 0 when storing failed. A text of 1024 units or more is stored whole.
    int SetValue(CString const& name, CString const& value);
    /// Goes down to the subkey (this entry's path is the longer one afterwards) and stores the value there.
    int SetValue(CString const& subkey, CString const& name, CString const& value);

private:
    HKEY m_root;
};

} // namespace ombrel
