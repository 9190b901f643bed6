#include "ombrel/platform/gdi/page/CairoPage.h"

#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"
#include "ombrel/platform/gdi/page/PageCanvas.h"
#include "ombrel/platform/gdi/page/PageHatch.h"
#include "ombrel/platform/gdi/text/TextEngine.h"

#include <algorithm>
#include <cairo-ft.h>
#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo.h>
#include <chrono>
#include <cmath>
#include <cstring>
#include <fontconfig/fontconfig.h>
#include <new>
#include <numbers>

namespace ombrel {

namespace {

constexpr double kPointsPerInch = 72.0;

struct CairoDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
template <typename T> using CairoOwned = std::unique_ptr<T, CairoDeleter>;

/// Seconds since 1970 as 2024-01-31T12:34:56Z, of the years 1 … 9999.
std::string IsoDate(long long seconds)
{
    static constexpr long long kFirst = -62135596800;
    static constexpr long long kLast = 253402300799;
    std::chrono::sys_seconds const time { std::chrono::seconds(std::clamp(seconds, kFirst, kLast)) };
    auto const day = std::chrono::floor<std::chrono::days>(time);
    std::chrono::year_month_day const date(day);
    std::chrono::hh_mm_ss const clock(time - day);
    std::string text;
    auto const append = [&text](long long value, std::size_t digits, char after) {
        std::string const number = std::to_string(value);
        text.append(digits - std::min(digits, number.size()), '0').append(number).push_back(after);
    };
    append(static_cast<int>(date.year()), 4, '-');
    append(static_cast<unsigned>(date.month()), 2, '-');
    append(static_cast<unsigned>(date.day()), 2, 'T');
    append(clock.hours().count(), 2, ':');
    append(clock.minutes().count(), 2, ':');
    append(clock.seconds().count(), 2, 'Z');
    return text;
}

cairo_status_t AppendBytes(void* closure, unsigned char const* data, unsigned length)
{
    // An exception must not cross Cairo's frames.
    try {
        static_cast<std::string*>(closure)->append(reinterpret_cast<char const*>(data), length);
    } catch (std::bad_alloc const&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
    return CAIRO_STATUS_SUCCESS;
}

void TraceHatch(cairo_t* context, std::vector<HatchCorners> const& lines)
{
    for (HatchCorners const& line : lines) {
        cairo_new_sub_path(context);
        for (HatchCorner const& corner : line)
            cairo_line_to(context, corner.x, corner.y);
        cairo_close_path(context);
    }
}

/// PDF and PostScript by Cairo: lines, curves, tiling patterns, embedded subsets of the fonts.
class CairoPage : public PageCanvas {
public:
    explicit CairoPage(PageSetup const& setup)
        : PageCanvas(setup)
        , m_isPdf(setup.format == PageFormat::Pdf)
    {
        double const width = Setup().widthMm / 25.4 * kPointsPerInch;
        double const height = Setup().heightMm / 25.4 * kPointsPerInch;
        if (m_isPdf)
            m_surface.reset(cairo_pdf_surface_create_for_stream(AppendBytes, &m_bytes, width, height));
        else
            m_surface.reset(cairo_ps_surface_create_for_stream(AppendBytes, &m_bytes, width, height));
        cairo_surface_set_fallback_resolution(m_surface.get(), DotsPerInch(), DotsPerInch());
        Entitle();
        m_context.reset(cairo_create(m_surface.get()));
        cairo_scale(m_context.get(), kPointsPerInch / DotsPerInch(), kPointsPerInch / DotsPerInch());
        cairo_set_miter_limit(m_context.get(), 10.0);
        CairoOwned<cairo_font_options_t> const options(cairo_font_options_create());
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_set_font_options(m_context.get(), options.get());
    }

protected:
    void DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip) override;
    void DrawRun(TextRun const& run, Clip const& clip) override;
    void DrawPicture(PagePicture const& picture, Clip const& clip) override;
    void DrawHatch(std::vector<HatchCorners> const& lines, VectorColour const& colour, Clip const& clip) override;
    void DrawMarks(MarkImage const& marks, Clip const& clip) override;
    std::string FinishDocument() override;
    bool EndPage() override;
    bool BeginMark(std::span<RecordedPrimitive const> mark, BYTE alpha) override;
    void EndMark(std::span<CPoint const> points, BYTE alpha, Clip const& clip) override;

private:
    void Entitle();
    void SetMetadata(cairo_pdf_metadata_t key, std::string const& value);
    void CoverPage();
    void SetClip(Clip const& clip);
    void SetColour(cairo_t* context, VectorColour const& colour) const;
    /// Fills the current path and keeps it; edges that other shapes share are covered.
    void FillWith(VectorColour colour, bool sharedEdges);
    void SetHatch(VectorBrush const& brush);
    void SetPen(PagePen const& pen);
    void TracePath(PageShape const& shape);
    void ShowGlyphs(text::GlyphRun const& run, std::string const& utf8, double baseline);
    /// How many cells a tile has along each side.
    int CellsOfTile(int style) const;
    cairo_surface_t* TileOf(VectorBrush const& brush);
    cairo_font_face_t* FaceOf(text::FontFile const& file);

    struct OpenFace {
        text::FontFile file;
        CairoOwned<cairo_font_face_t> face;
    };

    /// The picture that a hatch brush repeats; one for all that it fills.
    struct Tile {
        VectorBrush brush;
        CairoOwned<cairo_surface_t> surface;
    };

    bool m_isPdf;
    std::string m_bytes;
    CairoOwned<cairo_surface_t> m_surface;
    CairoOwned<cairo_t> m_context;
    /// That of the page, while a mark is drawn.
    CairoOwned<cairo_t> m_pageContext;
    std::vector<OpenFace> m_faces;
    std::vector<Tile> m_tiles;
    Clip m_clip;
    long long m_shapeCount = 0;
};

void CairoPage::SetMetadata(cairo_pdf_metadata_t key, std::string const& value)
{
    if (!value.empty())
        cairo_pdf_surface_set_metadata(m_surface.get(), key, value.c_str());
}

void CairoPage::Entitle()
{
    std::string const title = Setup().title.ToUtf8();
    std::string const date = IsoDate(Setup().creationTime);
    if (m_isPdf) {
        SetMetadata(CAIRO_PDF_METADATA_TITLE, title);
        SetMetadata(CAIRO_PDF_METADATA_CREATOR, "Ombrel");
        SetMetadata(CAIRO_PDF_METADATA_CREATE_DATE, date);
        return;
    }
    // A comment is one line of at most 255 bytes.
    static constexpr int kLongest = 60;
    std::string line = Setup().title.Left(kLongest).ToUtf8();
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    if (!title.empty())
        cairo_ps_surface_dsc_comment(m_surface.get(), ("%%Title: " + line).c_str());
}

/// Fills two spots beyond opposite corners of the page. Cairo keeps a region of all that was drawn so far, in as many
/// rectangles as it takes, and adds to it with every drawing; the box of these spots makes it one rectangle from there
/// on, so that the time for many small shapes does not grow with their square.
void CairoPage::CoverPage()
{
    SetClip({});
    static constexpr double kSpot = 10.0;
    cairo_t* const context = m_context.get();
    cairo_rectangle(context, -2.0 * kSpot, -2.0 * kSpot, kSpot, kSpot);
    cairo_rectangle(context, Bounds().right + kSpot, Bounds().bottom + kSpot, kSpot, kSpot);
    SetColour(context, { 0xFFFFFF, 255 });
    cairo_fill(context);
}

void CairoPage::SetColour(cairo_t* context, VectorColour const& colour) const
{
    double const alpha = colour.alpha / 255.0;
    // PostScript has no transparency: colours are mixed with the paper's white.
    auto const part = [&](BYTE c) { return m_isPdf ? c / 255.0 : 1.0 - alpha + alpha * c / 255.0; };
    cairo_set_source_rgba(context, part(GetRValue(colour.colour)), part(GetGValue(colour.colour)),
        part(GetBValue(colour.colour)), m_isPdf ? alpha : 1.0);
}

void CairoPage::SetClip(Clip const& clip)
{
    if (clip == m_clip)
        return;
    m_clip = clip;
    cairo_t* const context = m_context.get();
    cairo_reset_clip(context);
    CRect box;
    box.IntersectRect(clip.box, Bounds());
    if (!(box == Bounds())) {
        cairo_rectangle(context, box.left, box.top, box.Width(), box.Height());
        cairo_clip(context);
    }
    if (!clip.region)
        return;
    bool const winding = clip.region->OutlineMode() == WINDING;
    cairo_set_fill_rule(context, winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
    TracePath(RegionShape(*clip.region, Bounds()));
    cairo_clip(context);
}

void CairoPage::TracePath(PageShape const& shape)
{
    cairo_t* const context = m_context.get();
    cairo_new_path(context);
    for (std::size_t i = 0; i < shape.figures.size(); ++i) {
        auto const points = shape.PointsOf(i);
        for (std::size_t k = 0; k < points.size(); ++k) {
            double const x = points[k].x + shape.offset;
            double const y = points[k].y + shape.offset;
            k == 0 ? cairo_move_to(context, x, y) : cairo_line_to(context, x, y);
        }
        if (shape.figures[i].closed)
            cairo_close_path(context);
    }
    for (PageArc const& arc : shape.arcs) {
        if (!(arc.radiusX > 0.0 && arc.radiusY > 0.0))
            continue;
        cairo_matrix_t saved;
        cairo_get_matrix(context, &saved);
        cairo_new_sub_path(context);
        cairo_translate(context, arc.centreX, arc.centreY);
        cairo_scale(context, arc.radiusX, arc.radiusY);
        if (arc.sweep < 0.0)
            cairo_arc_negative(context, 0.0, 0.0, 1.0, arc.start, arc.start + arc.sweep);
        else
            cairo_arc(context, 0.0, 0.0, 1.0, arc.start, arc.start + arc.sweep);
        if (arc.IsWhole())
            cairo_close_path(context);
        cairo_set_matrix(context, &saved);
    }
}

void CairoPage::SetPen(PagePen const& pen)
{
    cairo_t* const context = m_context.get();
    SetColour(context, pen.colour);
    cairo_set_line_width(context, pen.width);
    bool const roundCaps = pen.round && pen.dashes.empty();
    cairo_set_line_cap(context, roundCaps ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(context, pen.round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_set_dash(context, pen.dashes.data(), static_cast<int>(pen.dashes.size()), 0.0);
}

void CairoPage::FillWith(VectorColour colour, bool sharedEdges)
{
    cairo_t* const context = m_context.get();
    SetColour(context, colour);
    cairo_fill_preserve(context);
    if (sharedEdges && colour.alpha == 255) {
        // Viewers smooth the edges of each filling by itself and let the paper shine through between two of them: a
        // line of the same colour closes the gap. It is as wide as a pixel of a good screen.
        static constexpr double kOverlap = 3.0;
        SetPen({ colour, kOverlap, true, {} });
        cairo_stroke_preserve(context);
    }
}

void CairoPage::SetHatch(VectorBrush const& brush)
{
    CairoOwned<cairo_pattern_t> const pattern(cairo_pattern_create_for_surface(TileOf(brush)));
    cairo_matrix_t toCell;
    cairo_matrix_init_scale(&toCell, 1.0 / ScreenScale(), 1.0 / ScreenScale());
    cairo_pattern_set_matrix(pattern.get(), &toCell);
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
    cairo_set_source(m_context.get(), pattern.get());
}

int CairoPage::CellsOfTile(int style) const
{
    // Some viewers leave a fine gap between tiles: patterns of many parts have half an inch in one, so that gaps are
    // few.
    static constexpr int kFewest = 6;
    static constexpr std::size_t kMostParts = 2000;
    double const pageCells = std::max(Bounds().Width(), Bounds().Height()) / (kHatchSide * ScreenScale());
    int cells = kFewest;
    while (cells < pageCells && HatchLines(style, 2 * cells).size() <= kMostParts)
        cells *= 2;
    return cells;
}

cairo_surface_t* CairoPage::TileOf(VectorBrush const& brush)
{
    for (Tile const& known : m_tiles)
        if (known.brush == brush)
            return known.surface.get();
    int const cells = CellsOfTile(*brush.hatchStyle);
    double const side = static_cast<double>(kHatchSide) * cells;
    cairo_rectangle_t const extents { 0.0, 0.0, side, side };
    CairoOwned<cairo_surface_t> tile(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
    CairoOwned<cairo_t> const painter(cairo_create(tile.get()));
    SetColour(painter.get(), brush.foreground);
    TraceHatch(painter.get(), HatchLines(*brush.hatchStyle, cells));
    cairo_fill(painter.get());
    return m_tiles.emplace_back(Tile { brush, std::move(tile) }).surface.get();
}

void CairoPage::DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip)
{
    static constexpr int kManyShapes = 1000;
    if (!m_pageContext && ++m_shapeCount == kManyShapes)
        CoverPage();
    cairo_t* const context = m_context.get();
    SetClip(clip);
    TracePath(shape);
    if (paint.fill) {
        cairo_set_fill_rule(context, paint.winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
        bool const shared = paint.edges == PagePaint::Edges::Shared;
        if (!paint.fill->hatchStyle) {
            FillWith(paint.fill->foreground, shared);
        } else {
            // A background in the tiles would let the paper shine through between them.
            if (paint.fill->background.alpha > kInvisible)
                FillWith(paint.fill->background, shared);
            SetHatch(*paint.fill);
            cairo_fill_preserve(context);
        }
    }
    if (paint.pen) {
        SetPen(*paint.pen);
        cairo_stroke_preserve(context);
    }
    cairo_new_path(context);
}

bool CairoPage::BeginMark(std::span<RecordedPrimitive const> mark, BYTE alpha)
{
    // A shape each takes less of a document, but would show its parts through each other. In PostScript, which knows no
    // transparency, marks are opaque.
    if (alpha == 255 || !m_isPdf)
        return false;
    SetClip({});
    CRect box = ReachOf(mark);
    int const margin = 1 + static_cast<int>(ScreenScale());
    box.InflateRect(margin, margin);
    cairo_rectangle_t const extents { static_cast<double>(box.left), static_cast<double>(box.top),
        static_cast<double>(box.Width()), static_cast<double>(box.Height()) };
    CairoOwned<cairo_surface_t> const recording(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
    m_pageContext = std::move(m_context);
    m_context.reset(cairo_create(recording.get()));
    return true;
}

void CairoPage::EndMark(std::span<CPoint const> points, BYTE alpha, Clip const& clip)
{
    // The document holds the mark once.
    CairoOwned<cairo_t> const mark = std::exchange(m_context, std::move(m_pageContext));
    SetClip(clip);
    for (CPoint const& p : points) {
        cairo_set_source_surface(m_context.get(), cairo_get_target(mark.get()), p.x, p.y);
        cairo_paint_with_alpha(m_context.get(), alpha / 255.0);
    }
}

cairo_font_face_t* CairoPage::FaceOf(text::FontFile const& file)
{
    for (OpenFace const& open : m_faces)
        if (open.file == file)
            return open.face.get();
    FcPattern* const pattern = FcPatternCreate();
    if (!pattern)
        return nullptr;
    FcPatternAddString(pattern, FC_FILE, reinterpret_cast<FcChar8 const*>(file.path.c_str()));
    FcPatternAddInteger(pattern, FC_INDEX, file.index);
    FcPatternAddBool(pattern, FC_EMBOLDEN, file.embolden ? FcTrue : FcFalse);
    m_faces.push_back({ file, CairoOwned<cairo_font_face_t>(cairo_ft_font_face_create_for_pattern(pattern)) });
    FcPatternDestroy(pattern);
    return m_faces.back().face.get();
}

void CairoPage::ShowGlyphs(text::GlyphRun const& run, std::string const& utf8, double baseline)
{
    // The slope of slanted upright letters.
    static constexpr double kSlope = 0.2126;
    cairo_t* const context = m_context.get();
    text::FontFace const& face = run.font->Face();
    if (!face.IsUsable())
        return;
    cairo_set_font_face(context, FaceOf(face.File()));
    double const em = run.font->EmSize();
    cairo_matrix_t size;
    cairo_matrix_init(&size, em, 0.0, face.File().slant ? -kSlope * em : 0.0, em, 0.0, 0.0);
    cairo_set_font_matrix(context, &size);

    std::vector<cairo_glyph_t> glyphs;
    std::vector<cairo_text_cluster_t> clusters;
    // In the order of the text, which is that of the glyphs from the right in a run that goes to the left.
    std::vector<text::PlacedGlyph const*> logical;
    for (auto const& glyph : run.glyphs)
        logical.push_back(&glyph);
    if (run.rightToLeft)
        std::reverse(logical.begin(), logical.end());
    std::size_t covered = run.textBegin;
    for (std::size_t i = 0; i < logical.size();) {
        std::size_t next = i;
        int drawn = 0;
        while (next < logical.size() && logical[next]->cluster == logical[i]->cluster)
            drawn += logical[next++]->missing ? 0 : 1;
        std::size_t const end = next < logical.size() ? std::max(logical[next]->cluster, covered) : run.textEnd;
        clusters.push_back({ static_cast<int>(end - covered), drawn });
        covered = end;
        i = next;
    }
    for (auto const& glyph : run.glyphs)
        if (!glyph.missing)
            glyphs.push_back({ glyph.index, static_cast<double>(glyph.x), baseline + glyph.y });
    std::erase_if(clusters, [](cairo_text_cluster_t const& c) { return c.num_bytes == 0 && c.num_glyphs == 0; });
    if (glyphs.empty())
        return;
    cairo_show_text_glyphs(context, utf8.data() + run.textBegin, static_cast<int>(run.textEnd - run.textBegin),
        glyphs.data(), static_cast<int>(glyphs.size()), clusters.data(), static_cast<int>(clusters.size()),
        run.rightToLeft ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : static_cast<cairo_text_cluster_flags_t>(0));
}

void CairoPage::DrawRun(TextRun const& run, Clip const& clip)
{
    cairo_t* const context = m_context.get();
    SetClip(clip);
    SetColour(context, { run.colour, 255 });
    auto const font = text::FindFont(*run.font);
    text::ShapedText const shaped = text::Shape(*font, run.text.View());
    cairo_matrix_t saved;
    cairo_get_matrix(context, &saved);
    cairo_translate(context, run.at.x, run.at.y);
    if (text::IsVertical(*run.font))
        cairo_rotate(context, -0.5 * std::numbers::pi);
    for (auto const& glyphs : shaped.runs)
        ShowGlyphs(glyphs, shaped.utf8, font->Metrics().tmAscent);
    cairo_set_matrix(context, &saved);
}

void CairoPage::DrawPicture(PagePicture const& picture, Clip const& clip)
{
    Raster const& pixels = picture.pixels;
    auto const format = picture.transparent ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24;
    CairoOwned<cairo_surface_t> const image(cairo_image_surface_create(format, pixels.Width(), pixels.Height()));
    unsigned char* const data = cairo_image_surface_get_data(image.get());
    if (!data)
        throw new CResourceException;
    std::uint32_t const left = picture.transparent ? Raster::FromColour(*picture.transparent) : 0;
    std::vector<std::uint32_t> line(static_cast<std::size_t>(pixels.Width()));
    for (int y = 0; y < pixels.Height(); ++y) {
        std::transform(pixels.Row(y), pixels.Row(y) + pixels.Width(), line.begin(),
            [&](std::uint32_t pixel) { return picture.transparent && pixel == left ? 0U : pixel | 0xFF000000U; });
        std::memcpy(data + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(image.get()), line.data(),
            line.size() * sizeof(std::uint32_t));
    }
    cairo_surface_mark_dirty(image.get());
    cairo_t* const context = m_context.get();
    SetClip(clip);
    cairo_save(context);
    cairo_translate(context, picture.to.left, picture.to.top);
    cairo_scale(context, static_cast<double>(picture.to.Width()) / pixels.Width(),
        static_cast<double>(picture.to.Height()) / pixels.Height());
    cairo_set_source_surface(context, image.get(), 0.0, 0.0);
    // Smoothing would mix the colour that is left out into its neighbours.
    if (picture.transparent)
        cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    cairo_paint(context);
    cairo_restore(context);
}

void CairoPage::DrawHatch(std::vector<HatchCorners> const& lines, VectorColour const& colour, Clip const& clip)
{
    cairo_t* const context = m_context.get();
    SetClip(clip);
    cairo_new_path(context);
    TraceHatch(context, lines);
    SetColour(context, colour);
    cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
    cairo_fill(context);
}

void CairoPage::DrawMarks(MarkImage const& marks, Clip const& clip)
{
    cairo_t* const context = m_context.get();
    SetClip(clip);
    for (MarkImage::Layer const& layer : marks.layers) {
        BitPicture const bits = marks.Bits(layer);
        // Cairo does not write to what it takes as a source.
        auto* const data = reinterpret_cast<unsigned char*>(const_cast<std::uint64_t*>(layer.words.data()));
        CairoOwned<cairo_surface_t> const mask(cairo_image_surface_create_for_data(
            data, CAIRO_FORMAT_A1, bits.width, bits.height, static_cast<int>(bits.rowWords * sizeof(std::uint64_t))));
        // Both formats take compressed bits as they are.
        auto const attach = [&mask](char const* type, std::string text) {
            auto bytes = std::make_unique<std::string>(std::move(text));
            auto const* const start = reinterpret_cast<unsigned char const*>(bytes->data());
            std::size_t const size = bytes->size();
            auto const destroy = [](void* owned) { delete static_cast<std::string*>(owned); };
            if (cairo_surface_set_mime_data(mask.get(), type, start, size, destroy, bytes.get())
                != CAIRO_STATUS_SUCCESS)
                throw new CResourceException;
            static_cast<void>(bytes.release());
        };
        attach(CAIRO_MIME_TYPE_CCITT_FAX, EncodeFax(bits));
        attach(CAIRO_MIME_TYPE_CCITT_FAX_PARAMS,
            "Columns=" + std::to_string(bits.width) + " Rows=" + std::to_string(bits.height) + " K=-1 BlackIs1=true");
        CairoOwned<cairo_pattern_t> const pattern(cairo_pattern_create_for_surface(mask.get()));
        cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
        cairo_matrix_t toMask;
        cairo_matrix_init_translate(&toMask, -marks.box.left, -marks.box.top);
        cairo_pattern_set_matrix(pattern.get(), &toMask);
        SetColour(context, { layer.colour, 255 });
        cairo_mask(context, pattern.get());
    }
}

bool CairoPage::EndPage()
{
    cairo_show_page(m_context.get());
    m_shapeCount = 0;
    return true;
}

std::string CairoPage::FinishDocument()
{
    if (m_isPdf)
        SetMetadata(CAIRO_PDF_METADATA_SUBJECT, Setup().description.ToUtf8());
    cairo_show_page(m_context.get());
    cairo_status_t const drawn = cairo_status(m_context.get());
    m_context.reset();
    cairo_surface_finish(m_surface.get());
    if (drawn != CAIRO_STATUS_SUCCESS || cairo_surface_status(m_surface.get()) != CAIRO_STATUS_SUCCESS)
        throw new CResourceException;
    if (!m_isPdf) {
        // Cairo puts the time of day here, which would make every document differ.
        static constexpr std::string_view kDate = "%%CreationDate: ";
        std::size_t const at = m_bytes.find(kDate);
        std::size_t const end = at == std::string::npos ? at : m_bytes.find('\n', at);
        if (end != std::string::npos)
            m_bytes.replace(at + kDate.size(), end - at - kDate.size(), IsoDate(Setup().creationTime));
    }
    return std::move(m_bytes);
}

} // namespace

std::unique_ptr<PageSurface> MakeCairoPage(PageSetup const& setup) { return std::make_unique<CairoPage>(setup); }

} // namespace ombrel
