#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

void CVUtils::RGBToHSL(double r, double g, double b, double* h, double* s, double* l)
{
    double const greatest = std::max({ r, g, b });
    double const least = std::min({ r, g, b });
    double const range = greatest - least;
    *l = (greatest + least) / 2.0;
    if (greatest == least) {
        *h = 0.0;
        *s = 0.0;
        return;
    }
    // Not minus the sum, which is rounded: near white little is left of 2.
    *s = range / (*l < 0.5 ? greatest + least : 2.0 - greatest - least);
    double sixths = 0.0;
    if (greatest == r)
        sixths = (g - b) / range;
    else if (greatest == g)
        sixths = (b - r) / range + 2.0;
    else
        sixths = (r - g) / range + 4.0;
    *h = sixths / 6.0;
    if (*h < 0.0)
        *h += 1.0;
}

void CVUtils::HSLToRGB(double h, double s, double l, double* r, double* g, double* b)
{
    double const v = l <= 0.5 ? l * (1.0 + s) : l + s - l * s;
    if (!(v > 0.0)) {
        *r = *g = *b = 0.0;
        return;
    }
    double const m = 2.0 * l - v;
    // Hues are a circle: 1 is 0 again. What is not a number has no place on it and counts as 0.
    double const turn = h - std::floor(h);
    double const sixths = turn >= 0.0 && turn < 1.0 ? 6.0 * turn : 0.0;
    int const sextant = static_cast<int>(sixths);
    double const rise = v * ((v - m) / v) * (sixths - sextant);
    double const mid1 = m + rise;
    double const mid2 = v - rise;
    auto const set = [&](double red, double green, double blue) {
        *r = red;
        *g = green;
        *b = blue;
    };
    switch (sextant) {
    case 0:
        return set(v, mid1, m);
    case 1:
        return set(mid2, v, m);
    case 2:
        return set(m, v, mid1);
    case 3:
        return set(m, mid2, v);
    case 4:
        return set(mid1, m, v);
    default:
        return set(v, m, mid2);
    }
}

namespace {

constexpr double kChannelScale = 255.0;
constexpr double kHueScale = 240.0;

BYTE ToByte(double v, double scale) { return static_cast<BYTE>(std::clamp(VUNearest(v * scale), 0, 255)); }

} // namespace

void CVUtils::RGBToHSL(BYTE r, BYTE g, BYTE b, BYTE& h, BYTE& s, BYTE& l)
{
    double hue = 0.0;
    double saturation = 0.0;
    double lightness = 0.0;
    RGBToHSL(r / kChannelScale, g / kChannelScale, b / kChannelScale, &hue, &saturation, &lightness);
    h = ToByte(hue, kHueScale);
    s = ToByte(saturation, kHueScale);
    l = ToByte(lightness, kHueScale);
}

void CVUtils::HSLToRGB(BYTE h, BYTE s, BYTE l, BYTE& r, BYTE& g, BYTE& b)
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    HSLToRGB(h / kHueScale, s / kHueScale, l / kHueScale, &red, &green, &blue);
    r = ToByte(red, kChannelScale);
    g = ToByte(green, kChannelScale);
    b = ToByte(blue, kChannelScale);
}

} // namespace ombrel
