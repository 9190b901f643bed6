#pragma once
#include "ombrel/platform/gdi/Primitive.h"
#include "ombrel/platform/gdi/Raster.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ombrel {

/// A mark's pixels.
struct MarkPicture {
    /// Round (0, 0).
    CRect box;
    /// Rows top-down; kUntouched where the mark has no pixel.
    Raster pixels;
    /// The different pixel values: at most those of a pen and of a brush.
    std::vector<std::uint32_t> colours;
    static constexpr std::size_t kMostColours = 2;
    /// Nothing that is drawn has it: drawing clears the top byte.
    static constexpr std::uint32_t kUntouched = 0xFF000000;

    /// False outside of the box, too.
    bool Has(CPoint p) const
    {
        CPoint const at = p - box.TopLeft();
        return box.PtInRect(p) && pixels.Row(at.y)[at.x] != kUntouched;
    }
};

/// Nothing for a mark that must be drawn point by point: large ones, and those whose pixels depend on what is there.
std::optional<MarkPicture> DrawMark(std::span<RecordedPrimitive const> mark, int bitsPerPixel);

} // namespace ombrel
