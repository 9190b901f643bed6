#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/text/Font.h"

#include <algorithm>
#include <ft2build.h>
#include <limits>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace ombrel {
namespace text {

namespace {

// The slope of a slanted upright font, in 1/65536.
constexpr FT_Fixed kSlope = 0x366A;

/// Coverage laid over coverage.
std::uint8_t Union(std::uint8_t a, std::uint8_t b) { return static_cast<std::uint8_t>(a + b - (a * b + 127) / 255); }

/// Glyphs above this em size are not kept.
constexpr int kLargestKept = 256;

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

/// The pixels that a glyph touches, relative to its origin, y down.
CRect GlyphBox(FT_GlyphSlot slot)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&slot->outline, &box);
    auto const pixels = [](FT_Pos position) { return ClampCoordinate(FloorDivide(position, 64)); };
    return { pixels(box.xMin), pixels(-box.yMax), -pixels(-box.xMax), -pixels(box.yMin) };
}

/// As RenderGlyph, of the part that is visible.
GlyphMask RenderPart(FontFace& font, int emSize, std::uint32_t glyph, CRect const& visible)
{
    GlyphMask mask;
    FT_GlyphSlot const slot = LoadOutline(font, emSize, glyph);
    CRect part;
    if (!slot || !part.IntersectRect(GlyphBox(slot), visible))
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

/// The mask of a text that is not turned: its box, then the glyphs and lines laid into it.
class MaskBuilder {
public:
    explicit MaskBuilder(CRect const& visible)
    {
        m_limits.IntersectRect(visible, { -0x1000, -0x1000, 0x7FFF, 0x1000 });
    }
    void Include(CRect const& box)
    {
        CRect kept;
        if (!kept.IntersectRect(box, m_limits))
            return;
        m_box = m_box.IsRectEmpty() ? kept
                                    : CRect(std::min(m_box.left, kept.left), std::min(m_box.top, kept.top),
                                        std::max(m_box.right, kept.right), std::max(m_box.bottom, kept.bottom));
    }
    void Allocate()
    {
        m_coverage.assign(static_cast<std::size_t>(m_box.Width()) * static_cast<std::size_t>(m_box.Height()), 0);
    }
    /// What has been allocated, relative to an origin.
    CRect BoxFrom(CPoint origin) const { return MoveRect(m_box, CPoint() - origin); }
    void AddGlyph(GlyphMask const& glyph, CPoint origin)
    {
        CPoint const at = origin + CPoint(glyph.left, glyph.top);
        CRect common;
        if (!common.IntersectRect(m_box, CRect(at, CSize(glyph.width, glyph.height))))
            return;
        for (int y = common.top; y < common.bottom; ++y) {
            std::uint8_t const* source = glyph.coverage.data() + Offset(y - at.y, glyph.width) + (common.left - at.x);
            std::uint8_t* target
                = m_coverage.data() + Offset(y - m_box.top, m_box.Width()) + (common.left - m_box.left);
            for (int x = common.left; x < common.right; ++x, ++source, ++target)
                *target = Union(*target, *source);
        }
    }
    void AddRect(CRect const& rect)
    {
        CRect common;
        if (!common.IntersectRect(m_box, rect))
            return;
        for (int y = common.top; y < common.bottom; ++y)
            std::fill_n(m_coverage.begin() + static_cast<std::ptrdiff_t>(Offset(y - m_box.top, m_box.Width()))
                    + (common.left - m_box.left),
                common.Width(), std::uint8_t { 255 });
    }
    std::shared_ptr<TextMask> Finish(bool vertical)
    {
        auto mask = std::make_shared<TextMask>();
        int const width = m_box.Width();
        int const height = m_box.Height();
        if (!vertical) {
            *mask = { m_box.TopLeft(), width, height, std::move(m_coverage) };
            return mask;
        }
        // Pixel (u, v) goes to (v, −1 − u).
        *mask = { CPoint(m_box.top, -m_box.right), height, width, std::vector<std::uint8_t>(m_coverage.size()) };
        for (int v = 0; v < height; ++v)
            for (int u = 0; u < width; ++u)
                mask->coverage[Offset(width - 1 - u, height) + static_cast<std::size_t>(v)]
                    = m_coverage[Offset(v, width) + static_cast<std::size_t>(u)];
        return mask;
    }

private:
    static std::size_t Offset(int row, int width)
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width);
    }
    /// They keep the size of a mask in bounds.
    CRect m_limits;
    CRect m_box;
    std::vector<std::uint8_t> m_coverage;
};

/// The part of a text that is visible; the rectangle is that of the text before it is turned.
std::shared_ptr<TextMask const> RenderMask(
    LOGFONT const& font, LogicalFont const& logical, ShapedText const& shaped, CRect const& visible)
{
    auto const lines = TextLines(font, logical);
    MaskBuilder builder(visible);
    auto const forEachGlyph = [&](auto&& visit) {
        for (GlyphRun const& run : shaped.runs)
            for (PlacedGlyph const& placed : run.glyphs)
                if (!placed.missing)
                    visit(*run.font, placed.index, CPoint(placed.x, logical.Metrics().tmAscent + placed.y));
    };
    auto const includeGlyph = [&builder](ScaledFont& scaled, std::uint32_t glyph, CPoint origin) {
        if (scaled.EmSize() <= kLargestKept) {
            GlyphMask const& mask = scaled.Mask(glyph);
            builder.Include({ origin + CPoint(mask.left, mask.top), CSize(mask.width, mask.height) });
        } else if (FT_GlyphSlot const slot = LoadOutline(scaled.Face(), scaled.EmSize(), glyph)) {
            builder.Include(MoveRect(GlyphBox(slot), origin));
        }
    };
    auto const addGlyph = [&builder](ScaledFont& scaled, std::uint32_t glyph, CPoint origin) {
        if (scaled.EmSize() <= kLargestKept)
            builder.AddGlyph(scaled.Mask(glyph), origin);
        else
            builder.AddGlyph(RenderPart(scaled.Face(), scaled.EmSize(), glyph, builder.BoxFrom(origin)), origin);
    };
    auto const lineRect
        = [&](TextLine const& line) { return CRect(0, line.top, shaped.width, line.top + line.thickness); };
    forEachGlyph(includeGlyph);
    for (TextLine const& line : lines)
        builder.Include(lineRect(line));
    builder.Allocate();
    forEachGlyph(addGlyph);
    for (TextLine const& line : lines)
        builder.AddRect(lineRect(line));
    return builder.Finish(IsVertical(font));
}

/// Masks of whole texts, as many as memory of a sensible size holds.
class MaskCache {
public:
    std::shared_ptr<TextMask const> Find(LOGFONT const& font, std::u16string_view text, CRect const& visible)
    {
        static constexpr std::size_t kMostEntries = 8192;
        static constexpr std::size_t kMostBytes = 8 * 1024 * 1024;
        static constexpr long long kMostKept = kMostBytes / 4;
        // A copy: the font must outlive the cache being dropped.
        std::shared_ptr<LogicalFont> const logical = FindFont(font);
        unsigned const look
            = (IsVertical(font) ? 1U : 0U) | (font.lfUnderline ? 2U : 0U) | (font.lfStrikeOut ? 4U : 0U);
        Key const key { logical.get(), look, std::u16string(text) };
        if (auto const known = m_masks.find(key); known != m_masks.end())
            return known->second.mask;
        ShapedText const shaped = Shape(*logical, text);
        bool const isLarge = static_cast<long long>(shaped.width) * logical->Metrics().tmHeight > kMostKept;
        if (isLarge && IsVertical(font))
            return RenderMask(font, *logical, shaped, { -visible.bottom, visible.left, -visible.top, visible.right });
        auto mask = RenderMask(font, *logical, shaped, isLarge ? visible : kTextLimits);
        std::size_t const bytes = mask->coverage.size() + text.size() * sizeof(char16_t);
        if (isLarge || bytes > kMostKept)
            return mask;
        if (m_masks.size() >= kMostEntries || m_bytes + bytes > kMostBytes) {
            m_masks.clear();
            m_bytes = 0;
        }
        m_bytes += bytes;
        m_masks.emplace(key, Entry { logical, mask });
        return mask;
    }

private:
    struct Key {
        LogicalFont const* font;
        unsigned look;
        std::u16string text;
        bool operator==(Key const&) const = default;
    };
    struct Hash {
        std::size_t operator()(Key const& key) const
        {
            return std::hash<std::u16string> {}(key.text)
                ^ (std::hash<LogicalFont const*> {}(key.font) * 31 + key.look);
        }
    };
    struct Entry {
        // Keeps the key's pointer from being given to another font.
        std::shared_ptr<LogicalFont const> font;
        std::shared_ptr<TextMask const> mask;
    };
    std::unordered_map<Key, Entry, Hash> m_masks;
    std::size_t m_bytes = 0;
};

} // namespace

GlyphMask const& ScaledFont::Mask(std::uint32_t glyph)
{
    static constexpr std::size_t kMostGlyphs = 2048;
    if (auto const known = m_masks.find(glyph); known != m_masks.end())
        return known->second;
    if (m_masks.size() >= kMostGlyphs)
        m_masks.clear();
    return m_masks.emplace(glyph, RenderGlyph(*m_face, m_emSize, glyph)).first->second;
}

std::vector<TextLine> TextLines(LOGFONT const& font, LogicalFont const& logical)
{
    std::vector<TextLine> lines;
    FontFace const& face = logical.Primary()->Face();
    int const em = logical.Primary()->EmSize();
    auto const scaled = [&](int units) { return (2 * units * em + face.UnitsPerEm()) / (2 * face.UnitsPerEm()); };
    int const thickness = std::max(1, scaled(face.UnderlineThickness()));
    int const ascent = logical.Metrics().tmAscent;
    if (font.lfUnderline)
        lines.push_back(
            { std::min(ascent + scaled(face.UnderlineTop()), logical.Metrics().tmHeight - thickness), thickness });
    // Through the middle of small letters, which are about half an em high.
    if (font.lfStrikeOut)
        lines.push_back({ ascent - (em + 2) / 4 - thickness / 2, thickness });
    return lines;
}

} // namespace text

std::shared_ptr<TextMask const> RenderText(LOGFONT const& font, CString const& text, CRect const& visible)
{
    static text::MaskCache masks;
    return masks.Find(font, text.View(), visible);
}

} // namespace ombrel
