#pragma once
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/TextMetrics.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// FreeType's face, which its own header calls FT_Face.
struct FT_FaceRec_;

// What the text sources and the page surfaces share. Not installed: hosts see TextEngine.h alone.
namespace ombrel::text {

/// Where a font file lies, and what must be done to its outlines to get the style asked for.
struct FontFile {
    std::string path;
    /// Index within the file; a named instance in the upper 16 bits.
    int index = 0;
    bool embolden = false;
    bool slant = false;
    friend bool operator==(FontFile const&, FontFile const&) = default;
};

/// A font file opened by FreeType. Without a usable file it has the proportions of Liberation Sans and no glyphs.
class FontFace {
public:
    explicit FontFace(FontFile file);
    ~FontFace();
    FontFace(FontFace const&) = delete;
    FontFace& operator=(FontFace const&) = delete;
    FontFile const& File() const { return m_file; }
    bool IsUsable() const { return m_face != nullptr; }
    /// Font units; descent is positive.
    int UnitsPerEm() const { return m_unitsPerEm; }
    int Ascent() const { return m_ascent; }
    int Descent() const { return m_descent; }
    int LineGap() const { return m_lineGap; }
    /// Top edge below the baseline, and thickness.
    int UnderlineTop() const { return m_underlineTop; }
    int UnderlineThickness() const { return m_underlineThickness; }
    /// 0 when the font has none.
    std::uint32_t GlyphOf(char32_t character) const;
    /// The FreeType face set to an em size in pixels; only when usable.
    FT_FaceRec_* At(int emSize);

private:
    FontFile m_file;
    FT_FaceRec_* m_face = nullptr;
    int m_currentSize = 0;
    int m_unitsPerEm = 2048;
    int m_ascent = 1854;
    int m_descent = 434;
    int m_lineGap = 67;
    int m_underlineTop = 217;
    int m_underlineThickness = 150;
};

/// The coverage of one glyph; left and top are relative to its origin on the baseline, y down.
struct GlyphMask {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

/// A face at an em size in whole pixels.
class ScaledFont {
public:
    ScaledFont(std::shared_ptr<FontFace> face, int emSize);
    FontFace& Face() const { return *m_face; }
    int EmSize() const { return m_emSize; }
    /// The unhinted advance in 1/64 pixels.
    int UnhintedAdvance(std::uint32_t glyph) const;
    /// The unhinted advance in whole pixels, halves up.
    int Advance(std::uint32_t glyph) const { return (UnhintedAdvance(glyph) + 32) >> 6; }
    GlyphMask const& Mask(std::uint32_t glyph);

private:
    std::shared_ptr<FontFace> m_face;
    int m_emSize;
    std::unordered_map<std::uint32_t, GlyphMask> m_masks;
};

/// What a LOGFONT comes down to: a primary font and its metrics. Escapement and lines under the text do not matter
/// here.
class LogicalFont {
public:
    explicit LogicalFont(LOGFONT const& font);
    bool Matches(LOGFONT const& font) const;
    TEXTMETRIC const& Metrics() const { return m_metrics; }
    std::shared_ptr<ScaledFont> const& Primary() const { return m_primary; }
    std::string const& Family() const { return m_family; }
    bool IsBold() const { return m_bold; }
    bool IsItalic() const { return m_italic; }
    /// The advance of a UTF-16 unit that stands for itself and needs neither shaping nor another font; negative when
    /// it does.
    int SimpleAdvance(char16_t unit)
    {
        auto const& page = m_advances[unit >> 8];
        int const known = page ? (*page)[unit & 0xFF] : kUnknown;
        return known != kUnknown ? known : FindSimpleAdvance(unit);
    }

private:
    static constexpr std::int16_t kUnknown = -1;
    static constexpr std::int16_t kNeedsShaping = -2;
    int FindSimpleAdvance(char16_t unit);

    LONG m_height;
    bool m_bold;
    bool m_italic;
    CString m_faceName;
    std::string m_family;
    std::shared_ptr<ScaledFont> m_primary;
    TEXTMETRIC m_metrics;
    /// Whole pixels, by the upper and the lower byte of the unit; pages appear when they are used.
    std::array<std::unique_ptr<std::array<std::int16_t, 256>>, 256> m_advances;
};

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

/// The font that a LOGFONT stands for; the pointer stays good for as long as the caller holds it.
std::shared_ptr<LogicalFont> const& FindFont(LOGFONT const& font);
/// The opened file, shared by all that use it.
std::shared_ptr<FontFace> OpenFace(FontFile const& file);

/// Units that lie on one line: line breaks and control characters are blanks.
constexpr bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
}

/// Places the glyphs of a text.
ShapedText Shape(LogicalFont& font, std::u16string_view text);
/// As Shape, always by Pango: bidirectional order, contextual forms, combining marks, fallback fonts.
ShapedText ShapeWithPango(LogicalFont const& font, std::u16string_view text);

/// Turned a quarter counter-clockwise.
constexpr bool IsVertical(LOGFONT const& font) { return (font.lfEscapement % 3600 + 3600) % 3600 == 900; }

/// A line along the text: rows from the top of the cell.
struct TextLine {
    int top = 0;
    int thickness = 0;
};
/// The underline and the line through the text that the font asks for.
std::vector<TextLine> TextLines(LOGFONT const& font, LogicalFont const& logical);

} // namespace ombrel::text
