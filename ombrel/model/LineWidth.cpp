#include "ombrel/model/LineWidth.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>

namespace ombrel {

int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind)
{
    double const scale = std::min(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY)) / 96.0;
    double const factor = dc.IsPrinting() ? CPreferences::GetThicknessScaleFac(static_cast<int>(kind)) : 1.0;
    constexpr int kWidest = 10000;
    return std::clamp(VUNearest(nominalWidth * scale * factor), 1, kWidest);
}

} // namespace ombrel
