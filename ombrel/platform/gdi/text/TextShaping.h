#pragma once
#include "ombrel/platform/gdi/text/Font.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace ombrel::text {

/// Turned a quarter counter-clockwise.
constexpr bool IsVertical(LOGFONT const& font) { return (font.lfEscapement % 3600 + 3600) % 3600 == 900; }

/// A glyph at its place: x from the left end of the text, y down from the baseline; pixels.
struct PlacedGlyph {
    std::uint32_t index = 0;
    int x = 0;
    int y = 0;
    /// The byte of ShapedText::utf8 at which the characters that it stands for begin.
    std::size_t cluster = 0;
    /// No font has it: its place stays empty.
    bool missing = false;
};

/// Glyphs of one font and one direction, in visual order.
struct GlyphRun {
    std::shared_ptr<ScaledFont> font;
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
    bool rightToLeft = false;
    std::vector<PlacedGlyph> glyphs;
};

struct ShapedText {
    /// The text with control characters replaced by blanks.
    std::string utf8;
    std::vector<GlyphRun> runs;
    int width = 0;
    /// The direction of the whole line, by its first letter.
    bool rightToLeft = false;
    bool hasAllGlyphs = true;
};

/// Places the glyphs of texts.
///
/// Text that needs no shaping (Latin, Greek, Cyrillic, signs) is placed from a table of advances that comes straight
/// from the font file. So a process draws its labels without loading Fontconfig's configuration and without a Pango
/// font map, which together cost more than the rest of a small graph; they come in with the first text that needs
/// them.
class TextShaper {
public:
    /// The faces must outlive the shaper.
    explicit TextShaper(OpenFaces& faces);
    ~TextShaper();
    TextShaper(TextShaper const&) = delete;
    TextShaper& operator=(TextShaper const&) = delete;

    ShapedText Shape(LogicalFont& font, std::u16string_view text);
    /// As Shape, always by Pango: bidirectional order, contextual forms, combining marks, fallback fonts.
    ShapedText ShapeWithPango(LogicalFont const& font, std::u16string_view text);
    /// The characters without glyphs of all texts since the last call, each once and ascending.
    std::u32string TakeMissing();

private:
    struct Pango;
    OpenFaces& m_faces;
    std::unique_ptr<Pango> m_pango;
    std::set<char32_t> m_missing;
};

} // namespace ombrel::text
