#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <string>
#include <string_view>

namespace ombrel {

/// How a locale writes dates and times, in d, dd, M, MM, yy, yyyy, H, HH, h, hh, mm, ss, tt letters; other letters
/// stand between apostrophes.
struct LocalePictures {
    CString shortDate = "MM/dd/yy";
    CString time = "HH:mm:ss";
};

/// The pictures of a locale by its name ("de_DE.UTF-8"); those of "C" when the system does not have it.
OMBREL_EXPORT LocalePictures GetLocalePictures(std::string const& localeName);

/// The picture of a strftime format.
OMBREL_EXPORT CString MakePicture(std::string_view format);

} // namespace ombrel
