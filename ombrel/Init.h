#pragma once
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// Makes the library's classes known to archives; a host calls it once before it loads or stores. Calling it again
/// changes nothing. Without it, loading throws a CArchiveException* that asks for it.
OMBREL_EXPORT void OmbrelInit();

} // namespace ombrel
