#include "ombrel/foundation/Utils.h"

#include <algorithm>

namespace ombrel {
namespace {

constexpr int kTableSize = 1000;
/// Blue; the spectra end at red, hue 0.
constexpr double kFirstHue = 0.6875;
constexpr double kSaturation = 1.0;
constexpr double kLightness = 0.5;

void SetEntry(double** lut, int i, double hue)
{
    CVUtils::HSLToRGB(hue, kSaturation, kLightness, &lut[0][i], &lut[1][i], &lut[2][i]);
}

} // namespace

void CVUtils::MakeSpectrumLUT(double** lut)
{
    for (int i = 0; i < kTableSize; ++i)
        SetEntry(lut, i, (kTableSize - i) * kFirstHue / kTableSize);
}

void CVUtils::MakeSharpSpectrumLUT(double** lut, int steps, int useFirstWidth, double firstWidth)
{
    steps = std::max(steps, 2);
    if (useFirstWidth == 0)
        firstWidth = 1.0 / steps;
    else if (!(firstWidth >= 0.0))
        firstWidth = 0.0;
    firstWidth = std::min(firstWidth, 1.0);
    double const width = (1.0 - firstWidth) * kTableSize / (steps - 1);
    int const firstEnd = static_cast<int>(firstWidth * kTableSize);
    for (int i = 0; i < kTableSize; ++i) {
        // The limit keeps what rounding adds at the table's end within the last band. One is added to a whole number:
        // added to the quotient, it could round up into the next band.
        int const band = i < firstEnd ? 0 : static_cast<int>(std::min((i - firstEnd) / width, steps - 2.0)) + 1;
        SetEntry(lut, i, (steps - band - 1) * kFirstHue / (steps - 1));
    }
}

} // namespace ombrel
