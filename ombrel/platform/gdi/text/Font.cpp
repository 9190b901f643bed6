#include "ombrel/platform/gdi/text/Font.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

namespace ombrel::text {

namespace {

/// a · b / c to the nearest, halves up; none negative.
int Scale(long long a, long long b, long long c) { return static_cast<int>((2 * a * b + c) / (2 * c)); }

// The slope of a slanted upright font, in 1/65536.
constexpr FT_Fixed kSlope = 0x366A;

/// A glyph's outline as it is drawn, good until the next is loaded; null when it has none.
FT_GlyphSlot LoadOutline(FontFace& font, int emSize, std::uint32_t glyph)
{
    if (!font.IsUsable())
        return nullptr;
    FT_Face const face = font.At(emSize);
    // Light hinting moves outlines up and down only: stems keep their place and width, bars and heights get crisp.
    if (FT_Load_Glyph(face, glyph, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0)
        return nullptr;
    FT_GlyphSlot const slot = face->glyph;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE)
        return nullptr;
    if (font.File().embolden)
        FT_Outline_EmboldenXY(&slot->outline, emSize * 64 / 24, 0);
    if (font.File().slant) {
        FT_Matrix const slope { 0x10000, kSlope, 0, 0x10000 };
        FT_Outline_Transform(&slot->outline, &slope);
    }
    return slot;
}

GlyphMask RenderGlyph(FontFace& font, int emSize, std::uint32_t glyph)
{
    GlyphMask mask;
    FT_GlyphSlot const slot = LoadOutline(font, emSize, glyph);
    if (!slot || FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
        return mask;
    FT_Bitmap const& bitmap = slot->bitmap;
    mask.left = slot->bitmap_left;
    mask.top = -slot->bitmap_top;
    mask.width = static_cast<int>(bitmap.width);
    mask.height = static_cast<int>(bitmap.rows);
    mask.coverage.reserve(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height));
    for (int row = 0; row < mask.height; ++row) {
        unsigned char const* const pixels = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        mask.coverage.insert(mask.coverage.end(), pixels, pixels + mask.width);
    }
    return mask;
}

/// The pixels that an outline touches, relative to the glyph's origin, y down.
CRect OutlineBox(FT_GlyphSlot slot)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&slot->outline, &box);
    auto const pixels = [](FT_Pos position) { return ClampCoordinate(FloorDivide(position, 64)); };
    return { pixels(box.xMin), pixels(-box.yMax), -pixels(-box.xMax), -pixels(box.yMin) };
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

FontFace::FontFace(std::shared_ptr<FT_LibraryRec_> library, FontFile file)
    : m_library(std::move(library))
    , m_file(std::move(file))
{
    if (!m_library || m_file.path.empty()
        || FT_New_Face(m_library.get(), m_file.path.c_str(), m_file.index, &m_face) != 0)
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

std::shared_ptr<FontFace> OpenFaces::Open(FontFile const& file)
{
    for (auto const& face : m_faces)
        if (face->File() == file)
            return face;
    if (!m_library) {
        FT_Library created = nullptr;
        if (FT_Init_FreeType(&created) == 0)
            m_library.reset(created, [](FT_Library library) { FT_Done_FreeType(library); });
    }
    return m_faces.emplace_back(std::make_shared<FontFace>(m_library, file));
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

LogicalFont::LogicalFont(LOGFONT const& font, OpenFaces& faces)
    : m_height(font.lfHeight)
    , m_bold(IsBoldWeight(font))
    , m_italic(font.lfItalic != 0)
    , m_faceName(font.lfFaceName)
    , m_family(FamilyFor(font.lfFaceName))
{
    auto face = faces.Open(FindFontFile(m_family, m_bold, m_italic));
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

GlyphMask const& ScaledFont::Mask(std::uint32_t glyph)
{
    static constexpr std::size_t kMostGlyphs = 2048;
    if (auto const known = m_masks.find(glyph); known != m_masks.end())
        return known->second;
    if (m_masks.size() >= kMostGlyphs)
        m_masks.clear();
    return m_masks.emplace(glyph, RenderGlyph(*m_face, m_emSize, glyph)).first->second;
}

bool ScaledFont::IsLarge() const
{
    static constexpr int kLargestKept = 256;
    return m_emSize > kLargestKept;
}

CRect ScaledFont::BoxOf(std::uint32_t glyph) const
{
    FT_GlyphSlot const slot = LoadOutline(*m_face, m_emSize, glyph);
    return slot ? OutlineBox(slot) : CRect();
}

GlyphMask ScaledFont::MaskOfPart(std::uint32_t glyph, CRect const& visible) const
{
    GlyphMask mask;
    FT_GlyphSlot const slot = LoadOutline(*m_face, m_emSize, glyph);
    CRect part;
    if (!slot || !part.IntersectRect(OutlineBox(slot), visible))
        return mask;
    mask = { part.left, part.top, part.Width(), part.Height(), {} };
    mask.coverage.resize(static_cast<std::size_t>(mask.width) * static_cast<std::size_t>(mask.height));
    FT_Outline_Translate(&slot->outline, -64L * part.left, 64L * part.bottom);
    FT_Bitmap bitmap {};
    bitmap.width = static_cast<unsigned>(mask.width);
    bitmap.rows = static_cast<unsigned>(mask.height);
    bitmap.pitch = mask.width;
    bitmap.buffer = mask.coverage.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    // What cannot be drawn stays empty.
    FT_Outline_Get_Bitmap(slot->library, &slot->outline, &bitmap);
    return mask;
}

} // namespace ombrel::text
