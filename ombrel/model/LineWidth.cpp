#include "ombrel/model/LineWidth.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>

namespace ombrel {

namespace {

int ScaledWidth(CDC const& dc, double nominalWidth, double factor)
{
    double const scale = std::min(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY)) / 96.0;
    constexpr int kWidest = 10000;
    return std::clamp(VUNearest(nominalWidth * scale * factor), 1, kWidest);
}

} // namespace

int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind)
{
    return ScaledWidth(
        dc, nominalWidth, dc.IsPrinting() ? CPreferences::GetThicknessScaleFac(static_cast<int>(kind)) : 1.0);
}

int DeviceLineWidth(CDC const& dc, double nominalWidth) { return ScaledWidth(dc, nominalWidth, 1.0); }

} // namespace ombrel
