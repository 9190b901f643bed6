#pragma once
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

#include <optional>

namespace ombrel {

/// When the file, or whatever else is there, was changed last, in universal time; nothing when there is none.
OMBREL_EXPORT std::optional<COleDateTime> FindFileTime(CString const& path);

} // namespace ombrel
