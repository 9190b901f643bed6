#include "ombrel/platform/framework/FileTime.h"

#include <string>

#include <sys/stat.h>

namespace ombrel {

std::optional<COleDateTime> FindFileTime(CString const& path)
{
    std::string const name = path.ToUtf8();
    struct stat status;
    if (name.find('\0') != std::string::npos || stat(name.c_str(), &status) != 0)
        return std::nullopt;
    constexpr double kSecondsADay = 86400.0;
    double const seconds
        = static_cast<double>(status.st_mtim.tv_sec) + 1e-9 * static_cast<double>(status.st_mtim.tv_nsec);
    return COleDateTime(1970, 1, 1, 0, 0, 0) + COleDateTimeSpan(seconds / kSecondsADay);
}

} // namespace ombrel
