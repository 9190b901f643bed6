#include "ombrel/platform/gdi/PageSurface.h"

#include "ombrel/platform/gdi/page/CairoPage.h"
#include "ombrel/platform/gdi/page/SvgPage.h"

namespace ombrel {

std::unique_ptr<PageSurface> MakePageSurface(PageSetup const& setup)
{
    return setup.format == PageFormat::Svg ? MakeSvgPage(setup) : MakeCairoPage(setup);
}

} // namespace ombrel
