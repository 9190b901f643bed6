#include "ombrel/platform/gdi/marks/MarkPicture.h"

#include <algorithm>
#include <memory>

namespace ombrel {

std::optional<MarkPicture> DrawMark(std::span<RecordedPrimitive const> mark, int bitsPerPixel)
{
    static constexpr int kLargestSide = 512;
    CRect const box = ReachOf(mark);
    bool const isSmall = !box.IsRectEmpty() && box.Width() <= kLargestSide && box.Height() <= kLargestSide;
    if (!isSmall || !std::all_of(mark.begin(), mark.end(), IsPlain))
        return {};
    auto const raster = std::make_shared<Raster>(box.Width(), box.Height(), bitsPerPixel);
    for (int y = 0; y < box.Height(); ++y)
        std::fill_n(raster->Row(y), box.Width(), MarkPicture::kUntouched);
    std::unique_ptr<Surface> const surface = MakeRasterSurface(raster);
    for (RecordedPrimitive const& primitive : mark)
        Replay(primitive, CPoint() - box.TopLeft(), *surface, {});
    std::vector<std::uint32_t> colours;
    for (int y = 0; y < box.Height(); ++y) {
        std::uint32_t const* const row = raster->Row(y);
        for (int x = 0; x < box.Width(); ++x)
            if (row[x] != MarkPicture::kUntouched && std::find(colours.begin(), colours.end(), row[x]) == colours.end())
                colours.push_back(row[x]);
        if (colours.size() > MarkPicture::kMostColours)
            return {};
    }
    return MarkPicture { box, std::move(*raster), std::move(colours) };
}

} // namespace ombrel
