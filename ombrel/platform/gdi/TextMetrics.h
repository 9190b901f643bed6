#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/gdi/GdiObjects.h"

namespace ombrel {

// Fonts: "Arial" and "Helvetica" (and no name) are Liberation Sans, "Courier New" Liberation Mono, "Times New Roman"
// Liberation Serif; other names are the nearest installed font. Weights above 550 are bold. A height of 0 is 16 pixels,
// a negative one is the em size; both are limited to 2000 pixels. lfWidth is not looked at. Text of a quarter turn
// (lfEscapement 900) runs upwards, any other is horizontal. Every thread keeps fonts and sizes of its own, so that any
// number of them may measure at once.

/// Sizes of a font in pixels.
struct TEXTMETRIC {
    LONG tmHeight = 0;
    LONG tmAscent = 0;
    LONG tmDescent = 0;
    LONG tmInternalLeading = 0;
    LONG tmExternalLeading = 0;
};

/// The pixel sizes of a font: em size, ascent, descent and leadings follow from the cell height.
OMBREL_EXPORT TEXTMETRIC MeasureFont(LOGFONT const& font);

/// Width and height in pixels of the unrotated text on one line; 0 × 0 for the empty text. Cheap enough to be called
/// thousands of times a layout. Control characters and line breaks count as blanks.
OMBREL_EXPORT CSize MeasureText(LOGFONT const& font, CString const& text);

/// Whether some installed font has a glyph for every character; the place of a missing one is left empty.
OMBREL_EXPORT bool HasAllGlyphs(LOGFONT const& font, CString const& text);

/// The characters that no font has, in texts that this thread has measured or drawn since the last call: each once, in
/// ascending order. A text that is drawn again may not count again.
OMBREL_EXPORT std::u32string TakeCharactersWithoutGlyph();

} // namespace ombrel
