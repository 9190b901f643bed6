#pragma once
#include "ombrel/platform/gdi/PageSurface.h"

#include <memory>

namespace ombrel {

/// A page of PDF or PostScript.
std::unique_ptr<PageSurface> MakeCairoPage(PageSetup const& setup);

} // namespace ombrel
