#pragma once
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/gdi/GdiObjects.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ombrel {

struct TEXTMETRIC;

// Fonts: "Arial" and "Helvetica" (and no name) are Liberation Sans, "Courier New" Liberation Mono, "Times New Roman"
// Liberation Serif; other names are the nearest installed font. Weights above 550 are bold. A height of 0 is 16 pixels,
// a negative one is the em size; both are limited to 2000 pixels. lfWidth is not looked at. Text of a quarter turn
// (lfEscapement 900) runs upwards, any other is horizontal. One thread at a time.

/// The pixel sizes of a font: em size, ascent, descent and leadings follow from the cell height.
TEXTMETRIC MeasureFont(LOGFONT const& font);

/// Width and height in pixels of the unrotated text on one line; 0 × 0 for the empty text. Cheap enough to be called
/// thousands of times a layout. Control characters and line breaks count as blanks.
CSize MeasureText(LOGFONT const& font, CString const& text);

/// Whether some installed font has a glyph for every character; the place of a missing one is left empty.
bool HasAllGlyphs(LOGFONT const& font, CString const& text);

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

/// The mask of a text; cached per font and text. Of a large text it may be only the part that lies in the visible
/// rectangle, relative to the reference point: what cannot be seen costs no time and no memory.
std::shared_ptr<TextMask const> RenderText(
    LOGFONT const& font, CString const& text, CRect const& visible = kTextLimits);

} // namespace ombrel
