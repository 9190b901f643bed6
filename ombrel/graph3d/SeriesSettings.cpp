#include "ombrel/graph3d/SeriesSettings.h"

namespace ombrel {

void SeriesSettings::Serialize(ArchiveFields& f, int curveColourDescription)
{
    int const version = f.Version(2);
    f.Int(rowMode, lineStyle).Double(thicknessScaleFac);
    if (version >= 2) {
        f.Dword(lineColour, stackColour).Int(baseline.automatic, drawLines, drawStacks).Double(baseline.value);
        f.Int(lineColourDescription, stackColourDescription);
        return;
    }
    if (lineStyle == 1)
        thicknessScaleFac = 2.0;
    drawStacks = 0;
    lineColourDescription = curveColourDescription != 0 ? cbRow : cbOneColour;
}

} // namespace ombrel
