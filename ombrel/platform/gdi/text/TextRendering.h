#pragma once
#include "ombrel/platform/gdi/text/TextShaping.h"

namespace ombrel::text {

/// A text's coverage, 0 … 255, rows top-down: already turned when the font is.
struct TextMask {
    /// Position of the mask's first pixel relative to the text's reference point.
    CPoint offset;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

/// Beyond these nothing of a text can be on a picture.
inline constexpr CRect kTextLimits { -0x7FFF, -0x7FFF, 0x7FFF, 0x7FFF };

/// A line along the text: rows from the top of the cell.
struct TextLine {
    int top = 0;
    int thickness = 0;
};
/// The underline and the line through the text that the font asks for.
std::vector<TextLine> TextLines(LOGFONT const& font, LogicalFont const& logical);

/// The mask of the part of a text that is visible; the rectangle is relative to the reference point of the text before
/// it is turned.
std::shared_ptr<TextMask const> RenderMask(
    LOGFONT const& font, LogicalFont const& logical, ShapedText const& shaped, CRect const& visible);

} // namespace ombrel::text
