#include "ombrel/platform/gdi/text/TextShaping.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>

namespace ombrel::text {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
    void operator()(PangoAttrList* attributes) const { pango_attr_list_unref(attributes); }
    void operator()(PangoLayoutIter* iterator) const { pango_layout_iter_free(iterator); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
template <typename T> using Owned = std::unique_ptr<T, Unref>;

/// A context on a font map of our own: the host's default map, its resolution and caches stay as they are. Null
/// without Pango's support for FreeType.
Owned<PangoContext> MakeContext()
{
    Owned<PangoFontMap> const map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    if (!map)
        return nullptr;
    Owned<PangoContext> context(pango_font_map_create_context(map.get()));
    Owned<cairo_font_options_t> const options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), 72.0);
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    // Bidirectional order must not follow the locale's language.
    pango_context_set_language(context.get(), pango_language_from_string("en"));
    return context;
}

Owned<PangoLayout> MakeLayout(PangoContext* context, LogicalFont const& font, std::string const& utf8)
{
    Owned<PangoFontDescription> const description(pango_font_description_new());
    pango_font_description_set_family(description.get(), font.Family().c_str());
    pango_font_description_set_weight(description.get(), font.IsBold() ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description.get(), font.IsItalic() ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(description.get(), font.Primary()->EmSize() * double(PANGO_SCALE));
    Owned<PangoLayout> layout(pango_layout_new(context));
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    Owned<PangoAttrList> const attributes(pango_attr_list_new());
    // The platform neither kerns nor joins letters; what a script requires stays.
    pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("kern=0,liga=0,clig=0"));
    pango_layout_set_attributes(layout.get(), attributes.get());
    pango_layout_set_text(layout.get(), utf8.data(), static_cast<int>(utf8.size()));
    return layout;
}

/// Our own handle of the file that Pango took the glyphs from; null when it is not drawn as outlines.
std::shared_ptr<ScaledFont> ScaledFontOf(PangoFont* pangoFont, LogicalFont const& logical, OpenFaces& faces)
{
    if (!pangoFont || !PANGO_IS_FC_FONT(pangoFont))
        return nullptr;
    FcPattern* const pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(pangoFont));
    FontFile const file = pattern ? FileOfPattern(pattern) : FontFile();
    if (file.path.empty())
        return nullptr;
    if (file == logical.Primary()->Face().File())
        return logical.Primary();
    auto face = faces.Open(file);
    return face->IsUsable() ? std::make_shared<ScaledFont>(std::move(face), logical.Primary()->EmSize()) : nullptr;
}

int ToPixels(int pangoUnits) { return static_cast<int>(std::floor(pangoUnits / double(PANGO_SCALE) + 0.5)); }

/// Advances that Pango left alone are rounded from the font's, as in text that needs no shaping.
int RoundedAdvance(ScaledFont const* font, PangoGlyphInfo const& info)
{
    if (info.geometry.width == 0 || !font)
        return ToPixels(info.geometry.width);
    static constexpr double kSameAdvance = 0.1;
    int const unhinted = font->UnhintedAdvance(info.glyph);
    bool const alone = std::abs(unhinted / 64.0 - info.geometry.width / double(PANGO_SCALE)) < kSameAdvance;
    return alone ? (unhinted + 32) >> 6 : ToPixels(info.geometry.width);
}

/// Appends the glyphs of one item at x, and characters that no font has to missing; returns the x after it.
long long AppendRun(ShapedText& shaped, std::set<char32_t>& missing, PangoGlyphItem const& item,
    LogicalFont const& logical, OpenFaces& faces, long long x)
{
    GlyphRun run;
    auto font = ScaledFontOf(item.item->analysis.font, logical, faces);
    run.font = font ? font : logical.Primary();
    run.textBegin = static_cast<std::size_t>(item.item->offset);
    run.textEnd = run.textBegin + static_cast<std::size_t>(item.item->length);
    run.rightToLeft = item.item->analysis.level % 2 != 0;
    run.glyphs.reserve(static_cast<std::size_t>(item.glyphs->num_glyphs));
    for (int i = 0; i < item.glyphs->num_glyphs; ++i) {
        PangoGlyphInfo const& info = item.glyphs->glyphs[i];
        PlacedGlyph glyph;
        glyph.cluster = run.textBegin + static_cast<std::size_t>(item.glyphs->log_clusters[i]);
        bool const blank = info.glyph == PANGO_GLYPH_EMPTY;
        glyph.missing = !blank && ((info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0 || info.glyph == 0 || !font);
        glyph.index = blank || glyph.missing ? 0 : info.glyph;
        shaped.hasAllGlyphs &= !glyph.missing;
        if (glyph.missing)
            missing.insert(g_utf8_get_char(shaped.utf8.c_str() + glyph.cluster));
        glyph.x = static_cast<int>(x + ToPixels(info.geometry.x_offset));
        glyph.y = ToPixels(info.geometry.y_offset);
        int const advance = glyph.missing ? logical.Primary()->Advance(0)
            : blank                       ? ToPixels(info.geometry.width)
                                          : RoundedAdvance(font.get(), info);
        // Nothing is drawn for a blank: glyph 0 would be a box.
        glyph.missing |= blank;
        x = std::clamp<long long>(x + advance, 0, std::numeric_limits<int>::max() / 2);
        run.glyphs.push_back(glyph);
    }
    shaped.runs.push_back(std::move(run));
    return x;
}

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

} // namespace

struct TextShaper::Pango {
    Owned<PangoContext> context = MakeContext();
};

TextShaper::TextShaper(OpenFaces& faces)
    : m_faces(faces)
{
}

TextShaper::~TextShaper() = default;

ShapedText TextShaper::Shape(LogicalFont& font, std::u16string_view text)
{
    bool const simple = std::all_of(text.begin(), text.end(), [&](char16_t u) { return font.SimpleAdvance(u) >= 0; });
    return simple ? ShapeSimple(font, text) : ShapeWithPango(font, text);
}

ShapedText TextShaper::ShapeWithPango(LogicalFont const& font, std::u16string_view text)
{
    ShapedText shaped;
    std::u16string line(text);
    std::replace_if(line.begin(), line.end(), IsControl, u' ');
    shaped.utf8 = CString(line).ToUtf8();
    if (!m_pango)
        m_pango = std::make_unique<Pango>();
    PangoContext* const context = m_pango->context.get();
    if (!context || shaped.utf8.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        shaped.hasAllGlyphs = false;
        return shaped;
    }
    Owned<PangoLayout> const layout = MakeLayout(context, font, shaped.utf8);
    Owned<PangoLayoutIter> const iterator(pango_layout_get_iter(layout.get()));
    long long x = 0;
    do {
        if (PangoLayoutRun const* const run = pango_layout_iter_get_run_readonly(iterator.get()))
            x = AppendRun(shaped, m_missing, *run, font, m_faces, x);
    } while (pango_layout_iter_next_run(iterator.get()));
    shaped.width = static_cast<int>(x);
    PangoLayoutLine* const first = pango_layout_get_line_readonly(layout.get(), 0);
    shaped.rightToLeft = first && pango_layout_line_get_resolved_direction(first) == PANGO_DIRECTION_RTL;
    return shaped;
}

std::u32string TextShaper::TakeMissing()
{
    std::u32string taken(m_missing.begin(), m_missing.end());
    m_missing.clear();
    return taken;
}

} // namespace ombrel::text
