#include "ombrel/model/LineWidth.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <utility>

namespace ombrel {

namespace {

/// The innermost scope of the thread; null outside.
thread_local PrintedLinesScope* t_scope = nullptr;

double StoredFactor(ThicknessKind kind) { return CPreferences::GetThicknessScaleFac(static_cast<int>(kind)); }

double PrintedFactor(ThicknessKind kind) { return t_scope ? t_scope->FactorOf(kind) : StoredFactor(kind); }

int ScaledWidth(CDC const& dc, double nominalWidth, double factor)
{
    double const scale = std::min(dc.GetDeviceCaps(LOGPIXELSX), dc.GetDeviceCaps(LOGPIXELSY)) / 96.0;
    constexpr int kWidest = 10000;
    return std::clamp(VUNearest(nominalWidth * scale * factor), 1, kWidest);
}

} // namespace

PrintedLinesScope::PrintedLinesScope()
    : m_outer(std::exchange(t_scope, this))
{
}

PrintedLinesScope::~PrintedLinesScope() { t_scope = m_outer; }

double PrintedLinesScope::FactorOf(ThicknessKind kind)
{
    auto& factor = m_factors[static_cast<std::size_t>(kind)];
    if (!factor)
        factor = StoredFactor(kind);
    return *factor;
}

int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind)
{
    return ScaledWidth(dc, nominalWidth, dc.IsPrinting() ? PrintedFactor(kind) : 1.0);
}

int DeviceLineWidth(CDC const& dc, double nominalWidth) { return ScaledWidth(dc, nominalWidth, 1.0); }

} // namespace ombrel
