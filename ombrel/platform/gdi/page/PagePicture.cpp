#include "ombrel/platform/gdi/page/PagePicture.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

/// The part of the source that exists, and where it goes to; false when there is none.
bool LimitToSource(ImageCopy const& copy, CRect& from, CRect& to)
{
    CRect whole = ClampRect(copy.from);
    whole.NormalizeRect();
    to = ClampRect(copy.to);
    to.NormalizeRect();
    if (!copy.source || to.IsRectEmpty() || !from.IntersectRect(whole, copy.source->Bounds()))
        return false;
    double const scaleX = static_cast<double>(to.Width()) / whole.Width();
    double const scaleY = static_cast<double>(to.Height()) / whole.Height();
    auto const scaled = [](int distance, double scale) { return static_cast<int>(std::lround(distance * scale)); };
    to = { to.left + scaled(from.left - whole.left, scaleX), to.top + scaled(from.top - whole.top, scaleY),
        to.left + scaled(from.right - whole.left, scaleX), to.top + scaled(from.bottom - whole.top, scaleY) };
    return !to.IsRectEmpty();
}

} // namespace

std::optional<PagePicture> MakePicture(ImageCopy const& copy)
{
    static constexpr std::uint32_t kColourBits = 0xFFFFFF;
    CRect from;
    CRect to;
    if (!LimitToSource(copy, from, to))
        return {};
    PagePicture picture { Raster(from.Width(), from.Height(), 24), {}, to };
    std::uint32_t const inverse = copy.operation == NOTSRCCOPY ? kColourBits : 0;
    std::uint32_t const zero = Raster::FromColour(copy.zeroColour);
    std::uint32_t const one = Raster::FromColour(copy.oneColour);
    bool const mono = copy.source->BitsPerPixel() == 1;
    for (int y = 0; y < from.Height(); ++y) {
        std::uint32_t const* const source = copy.source->Row(from.top + y) + from.left;
        std::transform(source, source + from.Width(), picture.pixels.Row(y), [&](std::uint32_t pixel) {
            std::uint32_t const colour = pixel & kColourBits;
            return (mono ? (colour ? one : zero) : colour) ^ inverse;
        });
    }
    if (copy.operation == SRCAND)
        picture.transparent = RGB(255, 255, 255);
    else if (copy.operation == SRCPAINT || copy.operation == SRCINVERT)
        picture.transparent = RGB(0, 0, 0);
    return picture;
}

} // namespace ombrel
