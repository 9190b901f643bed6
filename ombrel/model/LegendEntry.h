#pragma once
#include "ombrel/drawing/2DSymbol.h"
#include "ombrel/platform/framework/String.h"

#include <span>

namespace ombrel {

/// How a curve wants to be shown in a legend: its title, and what its patch, its stretch of line and its symbol look
/// like. Curves that have no line or symbol keep the defaults.
struct LegendEntry {
    /// The fill pattern that stands for a solid patch without a pattern of its own.
    static constexpr int kNoPattern = -1;

    CString title;
    COLORREF colour = 0;
    /// Hatch style of the patch; kNoPattern, kSolidFillPattern and styles that do not exist are solid.
    int fillPattern = kNoPattern;
    /// Lengths in multiples of the line's width; empty is solid. Static storage.
    std::span<double const> dashes;
    /// Nominal, in pixels at 96 to the inch.
    int lineWidth = 1;
    /// What stands for the curve where a legend shows each as it is: its patch, else its line and symbol.
    bool isFill = false;
    bool hasLine = true;
    C2DSymbol::SymbolType symbolType = C2DSymbol::None;
    COLORREF symbolColour = 0;
    int fillSymbol = 0;
    COLORREF symbolFillColour = 0;
};

} // namespace ombrel
