#include "ombrel/platform/gdi/TextEngineInternal.h"

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

GlyphMask RenderGlyph(FontFace& font, int emSize, std::uint32_t glyph)
{
    GlyphMask mask;
    if (!font.IsUsable())
        return mask;
    FT_Face const face = font.At(emSize);
    // Light hinting moves outlines up and down only: stems keep their place and width, bars and heights get crisp.
    if (FT_Load_Glyph(face, glyph, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0)
        return mask;
    FT_GlyphSlot const slot = face->glyph;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE)
        return mask;
    if (font.File().embolden)
        FT_Outline_EmboldenXY(&slot->outline, emSize * 64 / 24, 0);
    if (font.File().slant) {
        FT_Matrix const slope { 0x10000, kSlope, 0, 0x10000 };
        FT_Outline_Transform(&slot->outline, &slope);
    }
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
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

/// The mask of a text that is not turned: its box, then the glyphs and lines laid into it.
class MaskBuilder {
public:
    void Include(CRect const& box)
    {
        // Beyond these nothing can be on a picture; they keep the size of a mask in bounds.
        static constexpr CRect kLimits { -0x1000, -0x1000, 0x7FFF, 0x1000 };
        CRect kept;
        if (!kept.IntersectRect(box, kLimits))
            return;
        m_box = m_box.IsRectEmpty() ? kept
                                    : CRect(std::min(m_box.left, kept.left), std::min(m_box.top, kept.top),
                                        std::max(m_box.right, kept.right), std::max(m_box.bottom, kept.bottom));
    }
    void Allocate()
    {
        m_coverage.assign(static_cast<std::size_t>(m_box.Width()) * static_cast<std::size_t>(m_box.Height()), 0);
    }
    void AddGlyph(GlyphMask const& glyph, CPoint at)
    {
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
    CRect m_box;
    std::vector<std::uint8_t> m_coverage;
};

std::shared_ptr<TextMask const> RenderMask(LOGFONT const& font, LogicalFont& logical, std::u16string_view text)
{
    ShapedText const shaped = Shape(logical, text);
    auto const lines = TextLines(font, logical);
    MaskBuilder builder;
    auto const forEachGlyph = [&](auto&& visit) {
        for (GlyphRun const& run : shaped.runs) {
            for (PlacedGlyph const& placed : run.glyphs) {
                if (placed.missing)
                    continue;
                GlyphMask const& mask = run.font->Mask(placed.index);
                visit(mask, CPoint(placed.x + mask.left, logical.Metrics().tmAscent + placed.y + mask.top));
            }
        }
    };
    auto const lineRect
        = [&](TextLine const& line) { return CRect(0, line.top, shaped.width, line.top + line.thickness); };
    forEachGlyph([&](GlyphMask const& mask, CPoint at) { builder.Include(CRect(at, CSize(mask.width, mask.height))); });
    for (TextLine const& line : lines)
        builder.Include(lineRect(line));
    builder.Allocate();
    forEachGlyph([&](GlyphMask const& mask, CPoint at) { builder.AddGlyph(mask, at); });
    for (TextLine const& line : lines)
        builder.AddRect(lineRect(line));
    return builder.Finish(IsVertical(font));
}

/// Masks of whole texts, as many as memory of a sensible size holds.
class MaskCache {
public:
    std::shared_ptr<TextMask const> Find(LOGFONT const& font, std::u16string_view text)
    {
        static constexpr std::size_t kMostEntries = 8192;
        static constexpr std::size_t kMostBytes = 8 * 1024 * 1024;
        // A copy: the font must outlive the cache being dropped.
        std::shared_ptr<LogicalFont> const logical = FindFont(font);
        unsigned const look
            = (IsVertical(font) ? 1U : 0U) | (font.lfUnderline ? 2U : 0U) | (font.lfStrikeOut ? 4U : 0U);
        Key const key { logical.get(), look, std::u16string(text) };
        if (auto const known = m_masks.find(key); known != m_masks.end())
            return known->second.mask;
        auto mask = RenderMask(font, *logical, text);
        std::size_t const bytes = mask->coverage.size() + text.size() * sizeof(char16_t);
        if (bytes > kMostBytes / 4)
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

std::shared_ptr<TextMask const> RenderText(LOGFONT const& font, CString const& text)
{
    static text::MaskCache masks;
    return masks.Find(font, text.View());
}

} // namespace ombrel
