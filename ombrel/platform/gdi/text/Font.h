#pragma once
#include "ombrel/platform/gdi/TextMetrics.h"
#include "ombrel/platform/gdi/text/FontFile.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// FreeType's face and library, which its own header calls FT_Face and FT_Library.
struct FT_FaceRec_;
struct FT_LibraryRec_;

namespace ombrel::text {

/// Units that lie on one line: line breaks and control characters are blanks.
constexpr bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
}

/// The coverage of one glyph; left and top are relative to its origin on the baseline, y down.
struct GlyphMask {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

/// A font file opened by FreeType. Without a usable file it has the proportions of Liberation Sans and no glyphs.
class FontFace {
public:
    /// The library may be null: then no file is usable.
    FontFace(std::shared_ptr<FT_LibraryRec_> library, FontFile file);
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
    /// Closed after the last of its faces.
    std::shared_ptr<FT_LibraryRec_> m_library;
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

/// The files opened so far, each once; as many as there are font files on the system at most.
class OpenFaces {
public:
    std::shared_ptr<FontFace> Open(FontFile const& file);

private:
    std::shared_ptr<FT_LibraryRec_> m_library;
    std::vector<std::shared_ptr<FontFace>> m_faces;
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
    /// Whether glyphs are so large that their masks are not kept: then ask for the part that is visible.
    bool IsLarge() const;
    GlyphMask const& Mask(std::uint32_t glyph);
    /// The pixels that a glyph of a large font touches, relative to its origin, y down.
    CRect BoxOf(std::uint32_t glyph) const;
    /// The mask of the part that lies in the rectangle.
    GlyphMask MaskOfPart(std::uint32_t glyph, CRect const& visible) const;

private:
    std::shared_ptr<FontFace> m_face;
    int m_emSize;
    std::unordered_map<std::uint32_t, GlyphMask> m_masks;
};

/// What a LOGFONT comes down to: a primary font and its metrics. Escapement and lines under the text do not matter
/// here.
class LogicalFont {
public:
    LogicalFont(LOGFONT const& font, OpenFaces& faces);
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

} // namespace ombrel::text
