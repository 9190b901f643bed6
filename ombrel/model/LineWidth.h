#pragma once
#include "ombrel/platform/framework/Export.h"

#include <array>
#include <optional>

namespace ombrel {

class CDC;

/// What a line is part of: printed lines of each kind are scaled by a preference of the user.
enum class ThicknessKind { Curve = 0, Axes = 1, Border = 2, Symbol = 3, Grid = 4 };

/// While it lives, the factors of lines that this thread prints are read from the preferences once a kind, rather than
/// for every pen: a draw is of one cast, whatever is stored meanwhile. Scopes may be nested; each reads afresh.
class OMBREL_EXPORT PrintedLinesScope {
public:
    PrintedLinesScope();
    ~PrintedLinesScope();
    PrintedLinesScope(PrintedLinesScope const&) = delete;
    PrintedLinesScope& operator=(PrintedLinesScope const&) = delete;
    double FactorOf(ThicknessKind kind);

private:
    PrintedLinesScope* m_outer;
    std::array<std::optional<double>, 5> m_factors;
};

/// The pen width in device pixels, at least 1, of a line of nominal width at 96 pixels to the inch.
OMBREL_EXPORT int DeviceLineWidth(CDC const& dc, double nominalWidth, ThicknessKind kind);
/// As above, untouched by the preferences: a sample in a legend.
OMBREL_EXPORT int DeviceLineWidth(CDC const& dc, double nominalWidth);

} // namespace ombrel
