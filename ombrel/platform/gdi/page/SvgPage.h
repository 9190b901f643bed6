#pragma once
#include "ombrel/platform/gdi/PageSurface.h"

#include <memory>

namespace ombrel {

/// A page of Scalable Vector Graphics.
std::unique_ptr<PageSurface> MakeSvgPage(PageSetup const& setup);

} // namespace ombrel
