#pragma once
#include "ombrel/platform/gdi/Primitive.h"
#include "ombrel/platform/gdi/page/FaxEncoder.h"

#include <optional>
#include <span>
#include <vector>

namespace ombrel {

struct MarkPicture;

/// What of a mark shows on paper: an arc along the outline that was just drawn with the same pen does not.
std::vector<RecordedPrimitive> WithoutRedrawn(std::span<RecordedPrimitive const> mark);
/// The mark with pens of the width that a page gives to those of one pixel; nothing when these are dashed.
std::optional<std::vector<RecordedPrimitive>> WithPageLines(std::span<RecordedPrimitive const> mark, int thinWidth);
/// The points in order, each place only where it comes last: what is drawn there later hides what was drawn before.
std::vector<CPoint> LastOfEach(std::span<CPoint const> points);
/// The points in order, without those whose marks later ones cover to the last pixel, including those at their edges.
/// Nothing when more than so many marks show. The places differ.
std::optional<std::vector<CPoint>> WithoutCovered(
    MarkPicture const& mark, std::span<CPoint const> points, std::size_t most);

/// Marks in device pixels: what shows of each colour.
struct MarkImage {
    CRect box;
    std::size_t rowWords = 0;
    struct Layer {
        COLORREF colour = 0;
        std::vector<std::uint64_t> words;
    };
    std::vector<Layer> layers;
    BitPicture Bits(Layer const& layer) const { return { box.Width(), box.Height(), rowWords, layer.words }; }
};

/// The marks at the points, whose places differ, one after the other, as far as they reach into the visible part.
MarkImage DrawMarkImage(MarkPicture const& mark, std::span<CPoint const> points, CRect const& visible);

} // namespace ombrel
