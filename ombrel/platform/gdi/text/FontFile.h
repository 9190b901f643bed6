#pragma once
#include "ombrel/platform/framework/String.h"

#include <fontconfig/fontconfig.h>
#include <string>

namespace ombrel::text {

/// Where a font file lies, and what must be done to its outlines to get the style asked for.
struct FontFile {
    std::string path;
    /// Index within the file; a named instance in the upper 16 bits.
    int index = 0;
    bool embolden = false;
    bool slant = false;
    friend bool operator==(FontFile const&, FontFile const&) = default;
};

/// The family that stands in for a face name, with the same widths where there is one; the name itself otherwise.
std::string FamilyFor(CString const& faceName);

/// The file of the installed font nearest to a family, Liberation Sans being the second choice; without a path when
/// nothing is installed. Fontconfig is asked only for what does not lie where distributions put it.
FontFile FindFontFile(std::string const& family, bool bold, bool italic);

/// The file that a pattern of Fontconfig names; without a path when it names none.
FontFile FileOfPattern(FcPattern* pattern);

} // namespace ombrel::text
