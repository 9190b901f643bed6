#include "ombrel/model/LineWidth.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>

namespace ombrel {

double PrintedThicknessFactor(ThicknessKind kind)
{
    float factor = 1.0F;
    switch (kind) {
    case ThicknessKind::Curve:
        CPreferences::GetCurveThicknessScaleFac(factor);
        break;
    case ThicknessKind::Axes:
        CPreferences::GetAxesThicknessScaleFac(factor);
        break;
    case ThicknessKind::Border:
        CPreferences::GetBorderThicknessScaleFac(factor);
        break;
    case ThicknessKind::Symbol:
        CPreferences::GetSymbolThicknessScaleFac(factor);
        break;
    case ThicknessKind::Grid:
        CPreferences::GetGridThicknessScaleFac(factor);
        break;
    }
    return factor;
}

int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind)
{
    double const scale = std::min(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY)) / 96.0;
    double const factor = dc.IsPrinting() ? PrintedThicknessFactor(kind) : 1.0;
    constexpr int kWidest = 10000;
    return std::clamp(VUNearest(nominalWidth * scale * factor), 1, kWidest);
}

} // namespace ombrel
