#include "ombrel/graph2d/axes/LabelFont.h"

#include "ombrel/foundation/Utils.h"

#include <algorithm>

namespace ombrel {

int ShorterSide(CRect const& rect) { return std::max(0, std::min(rect.Width(), rect.Height())); }

int LabelFontHeight(CDC& dc, CRect const& graphRect)
{
    constexpr int kLargestMillimetres = 4;
    int const height = VUNearest(ShorterSide(graphRect) / 15.0);
    if (CVUtils::PixelsToMM(&dc, CSize(0, height)).cy > kLargestMillimetres)
        return CVUtils::MMToPixels(&dc, CSize(0, kLargestMillimetres)).cy;
    return height;
}

} // namespace ombrel
