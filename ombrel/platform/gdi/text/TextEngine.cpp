#include "ombrel/platform/gdi/text/TextEngine.h"

#include <algorithm>
#include <limits>

namespace ombrel {
namespace text {

int ShapedWidths::Find(TextShaper& shaper, std::shared_ptr<LogicalFont> const& font, std::u16string_view text)
{
    static constexpr std::size_t kMostEntries = 8192;
    static constexpr std::size_t kLongest = 1024;
    if (text.size() > kLongest)
        return shaper.ShapeWithPango(*font, text).width;
    auto& widths = m_fonts[font];
    if (auto const known = widths.find(text); known != widths.end())
        return known->second;
    int const width = shaper.ShapeWithPango(*font, text).width;
    if (++m_count > kMostEntries) {
        m_fonts.clear();
        m_count = 1;
    }
    m_fonts[font].emplace(text, width);
    return width;
}

std::shared_ptr<TextMask const> MaskCache::Find(TextShaper& shaper, std::shared_ptr<LogicalFont> const& logical,
    LOGFONT const& font, std::u16string_view text, CRect const& visible)
{
    static constexpr std::size_t kMostEntries = 8192;
    static constexpr std::size_t kMostBytes = 8 * 1024 * 1024;
    static constexpr long long kMostKept = kMostBytes / 4;
    unsigned const look = (IsVertical(font) ? 1U : 0U) | (font.lfUnderline ? 2U : 0U) | (font.lfStrikeOut ? 4U : 0U);
    Key const key { logical.get(), look, std::u16string(text) };
    if (auto const known = m_masks.find(key); known != m_masks.end())
        return known->second.mask;
    ShapedText const shaped = shaper.Shape(*logical, text);
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

TextEngine& TextEngine::OfThread()
{
    static thread_local TextEngine engine;
    return engine;
}

std::shared_ptr<LogicalFont> const& TextEngine::FindFont(LOGFONT const& font)
{
    static constexpr std::size_t kMostFonts = 256;
    if (m_lastFont < m_fonts.size() && m_fonts[m_lastFont]->Matches(font))
        return m_fonts[m_lastFont];
    for (std::size_t i = 0; i < m_fonts.size(); ++i) {
        if (m_fonts[i]->Matches(font)) {
            m_lastFont = i;
            return m_fonts[i];
        }
    }
    auto created = std::make_shared<LogicalFont>(font, m_faces);
    if (m_fonts.size() >= kMostFonts)
        m_fonts.clear();
    m_lastFont = m_fonts.size();
    return m_fonts.emplace_back(std::move(created));
}

CSize TextEngine::Measure(LOGFONT const& font, std::u16string_view text)
{
    if (text.empty())
        return {};
    auto const& found = FindFont(font);
    int const height = found->Metrics().tmHeight;
    long long width = 0;
    for (char16_t const unit : text) {
        int const advance = found->SimpleAdvance(unit);
        if (advance < 0)
            return { m_widths.Find(m_shaper, found, text), height };
        width += advance;
    }
    return { static_cast<int>(std::min<long long>(width, std::numeric_limits<int>::max() / 2)), height };
}

std::shared_ptr<TextMask const> TextEngine::Render(LOGFONT const& font, std::u16string_view text, CRect const& visible)
{
    return m_masks.Find(m_shaper, FindFont(font), font, text, visible);
}

std::shared_ptr<LogicalFont> FindFont(LOGFONT const& font) { return TextEngine::OfThread().FindFont(font); }

ShapedText Shape(LogicalFont& font, std::u16string_view text) { return TextEngine::OfThread().Shape(font, text); }

std::shared_ptr<TextMask const> RenderText(LOGFONT const& font, CString const& text, CRect const& visible)
{
    return TextEngine::OfThread().Render(font, text.View(), visible);
}

} // namespace text

TEXTMETRIC MeasureFont(LOGFONT const& font) { return text::TextEngine::OfThread().FindFont(font)->Metrics(); }

CSize MeasureText(LOGFONT const& font, CString const& text)
{
    return text::TextEngine::OfThread().Measure(font, text.View());
}

bool HasAllGlyphs(LOGFONT const& font, CString const& text)
{
    auto& engine = text::TextEngine::OfThread();
    return engine.Shape(*engine.FindFont(font), text.View()).hasAllGlyphs;
}

std::u32string TakeCharactersWithoutGlyph() { return text::TextEngine::OfThread().TakeMissing(); }

} // namespace ombrel
