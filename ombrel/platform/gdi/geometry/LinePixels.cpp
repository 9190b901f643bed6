#include "ombrel/platform/gdi/geometry/LinePixels.h"

namespace ombrel {

void LinePixels::Clip(CRect const& box, long long& first, long long& last) const
{
    long long const majorLow = steep ? box.top : box.left;
    long long const majorHigh = steep ? box.bottom : box.right;
    long long const low = static_cast<long long>(steep ? box.left : box.top) - minorStart;
    long long const high = static_cast<long long>(steep ? box.right : box.bottom) - minorStart;
    if (majorStep > 0) {
        first = std::max(first, majorLow - majorStart);
        last = std::min(last, majorHigh - majorStart);
    } else {
        first = std::max(first, majorStart - majorHigh + 1);
        last = std::min(last, majorStart - majorLow + 1);
    }
    if (minorDelta == 0) {
        if (low > 0 || high <= 0)
            last = first;
        return;
    }
    // Pixel i lies at floor((2·i·d + offset) / 2n): solved for the first i inside and the first beyond.
    long long const d = 2 * (minorDelta < 0 ? -minorDelta : minorDelta);
    if (minorDelta > 0) {
        first = std::max(first, -FloorDivide(offset - 2 * n * low, d));
        last = std::min(last, -FloorDivide(offset - 2 * n * high, d));
    } else {
        first = std::max(first, FloorDivide(offset - 2 * n * high, d) + 1);
        last = std::min(last, FloorDivide(offset - 2 * n * low, d) + 1);
    }
}

} // namespace ombrel
