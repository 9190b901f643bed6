#include "ombrel/platform/gdi/TextMetrics.h"

#include "ombrel/platform/gdi/text/Font.h"

#include <algorithm>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include <limits>
#include <unistd.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

// Text that needs no shaping (Latin, Greek, Cyrillic, signs) is measured and placed from a table of advances that comes
// straight from the font file, and the usual fonts are opened where distributions put them. So a process draws its
// labels without loading Fontconfig's configuration and without a Pango font map, which together cost more than the
// rest of a small graph; they come in with the first text or font that needs them.
namespace ombrel {
namespace text {

namespace {

// The library of the process, never closed: faces in static caches need it to their end.
FT_Library Library()
{
    static FT_Library const library = [] {
        FT_Library created = nullptr;
        return FT_Init_FreeType(&created) == 0 ? created : nullptr;
    }();
    return library;
}

/// a · b / c to the nearest, halves up; none negative.
int Scale(long long a, long long b, long long c) { return static_cast<int>((2 * a * b + c) / (2 * c)); }

std::string LowerAscii(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// The family that stands in for a face name, with the same widths where there is one; the name itself otherwise.
std::string FamilyFor(CString const& faceName)
{
    struct Substitute {
        std::string_view name;
        std::string_view family;
    };
    static constexpr Substitute kSubstitutes[] = {
        { "", "Liberation Sans" },
        { "arial", "Liberation Sans" },
        { "helvetica", "Liberation Sans" },
        { "liberation sans", "Liberation Sans" },
        { "system", "Liberation Sans" },
        { "courier new", "Liberation Mono" },
        { "courier", "Liberation Mono" },
        { "liberation mono", "Liberation Mono" },
        { "times new roman", "Liberation Serif" },
        { "times", "Liberation Serif" },
        { "liberation serif", "Liberation Serif" },
    };
    std::string name = faceName.ToUtf8();
    std::string const lower = LowerAscii(name);
    for (auto const& substitute : kSubstitutes)
        if (substitute.name == lower)
            return std::string(substitute.family);
    return name;
}

/// The file of a Liberation font in the places where distributions install them; empty when it is in none.
std::string PackagedFile(std::string_view family, bool bold, bool italic)
{
    static constexpr std::string_view kPrefix = "Liberation ";
    if (family.substr(0, kPrefix.size()) != kPrefix)
        return {};
    std::string const kind(family.substr(kPrefix.size()));
    if (kind != "Sans" && kind != "Mono" && kind != "Serif")
        return {};
    std::string const name = "/Liberation" + kind
        + (bold ? (italic ? "-BoldItalic" : "-Bold") : (italic ? "-Italic" : "-Regular")) + ".ttf";
    std::string const directories[] = { "/usr/share/fonts/truetype/liberation", "/usr/share/fonts/truetype/liberation2",
        "/usr/share/fonts/liberation-" + LowerAscii(kind), "/usr/share/fonts/liberation-" + LowerAscii(kind) + "-fonts",
        "/usr/share/fonts/liberation", "/usr/share/fonts/liberation-fonts", "/usr/share/fonts/TTF" };
    for (auto const& directory : directories)
        if (access((directory + name).c_str(), R_OK) == 0)
            return directory + name;
    return {};
}

/// What Fontconfig has nearest to the family, Liberation Sans being the second choice.
FontFile MatchFile(std::string const& family, bool bold, bool italic)
{
    struct PatternDeleter {
        void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    };
    std::unique_ptr<FcPattern, PatternDeleter> const pattern(FcPatternCreate());
    if (!pattern)
        return {};
    auto const* name = reinterpret_cast<FcChar8 const*>(family.c_str());
    FcPatternAddString(pattern.get(), FC_FAMILY, name);
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<FcChar8 const*>("Liberation Sans"));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    std::unique_ptr<FcPattern, PatternDeleter> const match(FcFontMatch(nullptr, pattern.get(), &result));
    FcChar8* path = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch)
        return {};
    FontFile file { reinterpret_cast<char const*>(path), 0, false, false };
    FcPatternGetInteger(match.get(), FC_INDEX, 0, &file.index);
    FcBool embolden = FcFalse;
    FcMatrix* matrix = nullptr;
    file.embolden = FcPatternGetBool(match.get(), FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden;
    file.slant = FcPatternGetMatrix(match.get(), FC_MATRIX, 0, &matrix) == FcResultMatch && matrix->xy > 0.01;
    return file;
}

FontFile FindFile(std::string const& family, bool bold, bool italic)
{
    std::string packaged = PackagedFile(family, bold, italic);
    return packaged.empty() ? MatchFile(family, bold, italic) : FontFile { std::move(packaged), 0, false, false };
}

/// The cell height that is drawn: a default for 0, and limits that keep masks within memory.
int CellHeight(LONG height)
{
    static constexpr int kDefaultHeight = 16;
    static constexpr int kLargest = 2000;
    return height == 0 ? kDefaultHeight : static_cast<int>(std::clamp<LONG>(height, -kLargest, kLargest));
}

/// The em size in pixels: the largest whose rounded cell is not above the height. A negative height is the em size.
int EmSize(FontFace const& face, LONG height)
{
    int const cell = CellHeight(height);
    if (cell < 0)
        return -cell;
    int const sum = face.Ascent() + face.Descent();
    int em = Scale(face.UnitsPerEm(), cell, sum);
    if (Scale(em, sum, face.UnitsPerEm()) > cell)
        --em;
    return std::max(em, 1);
}

/// Units that stand for one glyph each, left to right, whatever their neighbours are.
bool IsSimple(char16_t unit)
{
    struct Range {
        char16_t first;
        char16_t last;
    };
    static constexpr Range kSimple[] = { { 0x0020, 0x02FF }, { 0x0370, 0x0482 }, { 0x048A, 0x052F }, { 0x1E00, 0x1FFF },
        { 0x2000, 0x200A }, { 0x2010, 0x2027 }, { 0x202F, 0x205F }, { 0x2070, 0x20CF }, { 0x2100, 0x2BFF } };
    return std::any_of(std::begin(kSimple), std::end(kSimple),
        [unit](Range const& range) { return unit >= range.first && unit <= range.last; });
}

bool IsBoldWeight(LOGFONT const& font) { return font.lfWeight > 550; }

} // namespace

FontFace::FontFace(FontFile file)
    : m_file(std::move(file))
{
    if (!Library() || m_file.path.empty() || FT_New_Face(Library(), m_file.path.c_str(), m_file.index, &m_face) != 0)
        m_face = nullptr;
    if (m_face && !FT_IS_SCALABLE(m_face)) {
        FT_Done_Face(m_face);
        m_face = nullptr;
    }
    if (!m_face)
        return;
    m_unitsPerEm = std::max<int>(m_face->units_per_EM, 1);
    m_ascent = m_face->ascender;
    m_descent = -m_face->descender;
    m_lineGap = std::max(0, m_face->height - m_ascent - m_descent);
    auto const* os2 = static_cast<TT_OS2 const*>(FT_Get_Sfnt_Table(m_face, FT_SFNT_OS2));
    if (os2 && os2->usWinAscent + os2->usWinDescent > 0) {
        m_lineGap = std::max(0, m_face->height - os2->usWinAscent - os2->usWinDescent);
        m_ascent = os2->usWinAscent;
        m_descent = os2->usWinDescent;
    }
    m_ascent = std::max(m_ascent, 0);
    m_descent = std::max(m_descent, 0);
    if (m_ascent + m_descent == 0)
        m_ascent = m_unitsPerEm;
    m_underlineThickness = std::max<int>(m_face->underline_thickness, 0);
    m_underlineTop = std::max(0, -m_face->underline_position - m_underlineThickness / 2);
}

FontFace::~FontFace()
{
    if (m_face)
        FT_Done_Face(m_face);
}

std::uint32_t FontFace::GlyphOf(char32_t character) const { return m_face ? FT_Get_Char_Index(m_face, character) : 0; }

FT_FaceRec_* FontFace::At(int emSize)
{
    if (m_currentSize != emSize && FT_Set_Pixel_Sizes(m_face, 0, static_cast<FT_UInt>(emSize)) == 0)
        m_currentSize = emSize;
    return m_face;
}

ScaledFont::ScaledFont(std::shared_ptr<FontFace> face, int emSize)
    : m_face(std::move(face))
    , m_emSize(emSize)
{
}

int ScaledFont::UnhintedAdvance(std::uint32_t glyph) const
{
    int const half = m_emSize * 32;
    if (!m_face->IsUsable())
        return half;
    FT_Face const face = m_face->At(m_emSize);
    if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0)
        return half;
    return static_cast<int>(std::clamp<FT_Pos>(face->glyph->advance.x, 0, 64 * 0x7000));
}

LogicalFont::LogicalFont(LOGFONT const& font)
    : m_height(font.lfHeight)
    , m_bold(IsBoldWeight(font))
    , m_italic(font.lfItalic != 0)
    , m_faceName(font.lfFaceName)
    , m_family(FamilyFor(font.lfFaceName))
{
    auto face = OpenFace(FindFile(m_family, m_bold, m_italic));
    int const em = EmSize(*face, m_height);
    int const units = face->UnitsPerEm();
    m_metrics.tmAscent = Scale(face->Ascent(), em, units);
    m_metrics.tmDescent = Scale(face->Descent(), em, units);
    m_metrics.tmHeight = m_metrics.tmAscent + m_metrics.tmDescent;
    m_metrics.tmInternalLeading = Scale(std::max(0, face->Ascent() + face->Descent() - units), em, units);
    m_metrics.tmExternalLeading = Scale(face->LineGap(), em, units);
    m_primary = std::make_shared<ScaledFont>(std::move(face), em);
}

bool LogicalFont::Matches(LOGFONT const& font) const
{
    return m_height == font.lfHeight && m_bold == IsBoldWeight(font) && m_italic == (font.lfItalic != 0)
        && m_faceName == font.lfFaceName;
}

int LogicalFont::FindSimpleAdvance(char16_t unit)
{
    auto& page = m_advances[unit >> 8];
    if (!page) {
        page = std::make_unique<std::array<std::int16_t, 256>>();
        page->fill(kUnknown);
    }
    char16_t const drawn = IsControl(unit) ? u' ' : unit;
    std::uint32_t const glyph = IsSimple(drawn) ? m_primary->Face().GlyphOf(drawn) : 0;
    // Without any font there is nothing to shape with either.
    bool const known = glyph != 0 || !m_primary->Face().IsUsable();
    auto& advance = (*page)[unit & 0xFF];
    advance = known ? static_cast<std::int16_t>(m_primary->Advance(glyph)) : kNeedsShaping;
    return advance;
}

std::shared_ptr<FontFace> OpenFace(FontFile const& file)
{
    // As many as there are font files on the system at most.
    static std::vector<std::shared_ptr<FontFace>> faces;
    for (auto const& face : faces)
        if (face->File() == file)
            return face;
    return faces.emplace_back(std::make_shared<FontFace>(file));
}

std::shared_ptr<LogicalFont> const& FindFont(LOGFONT const& font)
{
    static constexpr std::size_t kMostFonts = 256;
    static std::vector<std::shared_ptr<LogicalFont>> fonts;
    static std::size_t last = 0;
    if (last < fonts.size() && fonts[last]->Matches(font))
        return fonts[last];
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        if (fonts[i]->Matches(font)) {
            last = i;
            return fonts[i];
        }
    }
    auto created = std::make_shared<LogicalFont>(font);
    if (fonts.size() >= kMostFonts)
        fonts.clear();
    last = fonts.size();
    return fonts.emplace_back(std::move(created));
}

namespace {

ShapedText ShapeSimple(LogicalFont& font, std::u16string_view text)
{
    ShapedText shaped;
    std::u16string line(text);
    for (char16_t& unit : line)
        if (IsControl(unit))
            unit = u' ';
    shaped.utf8 = CString(line).ToUtf8();
    GlyphRun run;
    run.font = font.Primary();
    run.textEnd = shaped.utf8.size();
    run.glyphs.reserve(line.size());
    std::size_t byte = 0;
    long long x = 0;
    for (char16_t const unit : line) {
        PlacedGlyph glyph;
        glyph.index = font.Primary()->Face().GlyphOf(unit);
        glyph.missing = glyph.index == 0;
        glyph.x = static_cast<int>(x);
        glyph.cluster = byte;
        shaped.hasAllGlyphs &= !glyph.missing;
        run.glyphs.push_back(glyph);
        x = std::min<long long>(x + font.SimpleAdvance(unit), std::numeric_limits<int>::max() / 2);
        byte += unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
    }
    shaped.width = static_cast<int>(x);
    shaped.runs.push_back(std::move(run));
    return shaped;
}

/// Widths of texts that Pango laid out, which are slow to find.
class ShapedWidths {
public:
    int Find(std::shared_ptr<LogicalFont> const& font, std::u16string_view text)
    {
        static constexpr std::size_t kMostEntries = 8192;
        static constexpr std::size_t kLongest = 1024;
        if (text.size() > kLongest)
            return ShapeWithPango(*font, text).width;
        auto& widths = m_fonts[font];
        if (auto const known = widths.find(text); known != widths.end())
            return known->second;
        int const width = ShapeWithPango(*font, text).width;
        if (++m_count > kMostEntries) {
            m_fonts.clear();
            m_count = 1;
        }
        m_fonts[font].emplace(text, width);
        return width;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view> {}(text); }
    };
    using Widths = std::unordered_map<std::u16string, int, Hash, std::equal_to<>>;
    std::unordered_map<std::shared_ptr<LogicalFont>, Widths> m_fonts;
    std::size_t m_count = 0;
};

} // namespace

ShapedText Shape(LogicalFont& font, std::u16string_view text)
{
    bool const simple = std::all_of(text.begin(), text.end(), [&](char16_t u) { return font.SimpleAdvance(u) >= 0; });
    return simple ? ShapeSimple(font, text) : ShapeWithPango(font, text);
}

} // namespace text

TEXTMETRIC MeasureFont(LOGFONT const& font) { return text::FindFont(font)->Metrics(); }

CSize MeasureText(LOGFONT const& font, CString const& text)
{
    if (text.IsEmpty())
        return {};
    auto const& found = text::FindFont(font);
    int const height = found->Metrics().tmHeight;
    long long width = 0;
    for (char16_t const unit : text.View()) {
        int const advance = found->SimpleAdvance(unit);
        if (advance < 0) {
            static text::ShapedWidths widths;
            return { widths.Find(found, text.View()), height };
        }
        width += advance;
    }
    return { static_cast<int>(std::min<long long>(width, std::numeric_limits<int>::max() / 2)), height };
}

bool HasAllGlyphs(LOGFONT const& font, CString const& text)
{
    return text::Shape(*text::FindFont(font), text.View()).hasAllGlyphs;
}

} // namespace ombrel
