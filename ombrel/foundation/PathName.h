#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// A file's path, split into its parts; the object itself is the full path text.
///
/// "\" and "/" both separate directories. After the text was changed through the string's own operations, Reset
/// splits it again.
class OMBREL_EXPORT CPathName : public CString {
public:
    CPathName() = default;
    CPathName(CString const& path);
    CPathName(char const* utf8)
        : CPathName(CString(utf8))
    {
    }
    /// Splits the text anew. Only its first 260 units are looked at, and a part is cut to 255 units.
    void Reset();
    /// "C:", or empty.
    CString GetDrive() const { return m_drive; }
    /// Without directory and extension.
    CString GetFileName() const { return m_fileName; }
    /// With its leading ".", or empty.
    CString GetExtension() const { return m_extension; }
    /// Drive and directory, up to and including the last separator.
    CString GetDirectoryPath() const { return m_drive + m_directory; }
    /// Everything but the extension.
    CString GetFilePath() const { return m_drive + m_directory + m_fileName; }
    /// The directory with every backslash taken out: "\data\" gives "data".
    CString GetDirectory() const;

private:
    CString m_drive;
    CString m_directory;
    CString m_fileName;
    CString m_extension;
};

} // namespace ombrel
