#pragma once
#include "ombrel/graph3d/Baseline.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

/// How 3D series look: lines, and the stacks that fill the strips between these and the baseline.
struct OMBREL_EXPORT SeriesSettings {
    /// What colours lines, and what stacks; other numbers count as one colour.
    enum ColourBy : int { cbOneColour = 0, cbValue = 1, cbRow = 2 };

    /// 0: each line has one x and runs along y; else one y, along x.
    int rowMode = 0;
    /// Only stored: lines are lines.
    int lineStyle = 1;
    /// Of the lines' width.
    double thicknessScaleFac = 1.0;
    COLORREF lineColour = 0;
    COLORREF stackColour = RGB(255, 0, 0);
    Baseline baseline;
    int drawLines = 1;
    int drawStacks = 1;
    int lineColourDescription = cbOneColour;
    int stackColourDescription = cbOneColour;

    /// As documents have them, the layout's version included; loading also needs the curve's colour description. The
    /// first layout had lines only: those of style 1 become twice as wide, and a curve that was not in one colour has
    /// row colours.
    void Serialize(ArchiveFields& f, int curveColourDescription);
    /// Whether what is drawn is coloured by value.
    bool UsesColourMap() const
    {
        return (drawLines && lineColourDescription == cbValue) || (drawStacks && stackColourDescription == cbValue);
    }
    friend bool operator==(SeriesSettings const& a, SeriesSettings const& b) = default;
};

} // namespace ombrel
