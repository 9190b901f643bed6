#include "ombrel/platform/gdi/text/TextRendering.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>

namespace ombrel::text {

namespace {

/// Coverage laid over coverage.
std::uint8_t Union(std::uint8_t a, std::uint8_t b) { return static_cast<std::uint8_t>(a + b - (a * b + 127) / 255); }

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

} // namespace

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
        if (scaled.IsLarge()) {
            builder.Include(MoveRect(scaled.BoxOf(glyph), origin));
        } else {
            GlyphMask const& mask = scaled.Mask(glyph);
            builder.Include({ origin + CPoint(mask.left, mask.top), CSize(mask.width, mask.height) });
        }
    };
    auto const addGlyph = [&builder](ScaledFont& scaled, std::uint32_t glyph, CPoint origin) {
        if (scaled.IsLarge())
            builder.AddGlyph(scaled.MaskOfPart(glyph, builder.BoxFrom(origin)), origin);
        else
            builder.AddGlyph(scaled.Mask(glyph), origin);
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

} // namespace ombrel::text
