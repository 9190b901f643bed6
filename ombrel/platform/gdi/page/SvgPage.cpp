#include "ombrel/platform/gdi/page/SvgPage.h"

#include "ombrel/platform/framework/Text.h"
#include "ombrel/platform/gdi/PngEncoder.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"
#include "ombrel/platform/gdi/page/PageCanvas.h"
#include "ombrel/platform/gdi/page/PageHatch.h"
#include "ombrel/platform/gdi/page/SvgPath.h"
#include "ombrel/platform/gdi/text/TextEngine.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace ombrel {

namespace {

/// Text for an element or an attribute. What XML cannot hold becomes U+FFFD, line breaks and the like blanks.
std::string Escape(CString const& text)
{
    static constexpr char16_t kReplacement = 0xFFFD;
    std::u16string allowed(text.View());
    for (char16_t& unit : allowed) {
        if (unit < 0x20)
            unit = u' ';
        else if (unit >= 0xFFFE)
            unit = kReplacement;
    }
    std::string escaped;
    for (char const c : CString(allowed).ToUtf8()) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string Attribute(std::string_view name, std::string_view value) { return Join({ " ", name, "=\"", value, "\"" }); }

std::string Attribute(std::string_view name, double value) { return Attribute(name, SvgNumber(value)); }

/// #rgb where that is the same, else #rrggbb.
std::string ColourText(COLORREF colour)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    BYTE const parts[] = { GetRValue(colour), GetGValue(colour), GetBValue(colour) };
    bool const isShort = std::all_of(std::begin(parts), std::end(parts), [](BYTE b) { return b >> 4 == (b & 15); });
    std::string text("#");
    for (BYTE const part : parts) {
        text += kDigits[part >> 4];
        if (!isShort)
            text += kDigits[part & 15];
    }
    return text;
}

constexpr double kOpaque = 255.0;

/// A "fill" or "stroke" attribute, with its opacity.
std::string Paint(std::string_view name, VectorColour const& colour)
{
    std::string text = Attribute(name, ColourText(colour.colour));
    if (colour.alpha < 255)
        text += Attribute(Join({ name, "-opacity" }), colour.alpha / kOpaque);
    return text;
}

constexpr std::string_view kSansFamilies = "Arial, Liberation Sans, Helvetica, sans-serif";

/// The font families to try for a font other than the document's own.
std::string Families(text::LogicalFont const& font)
{
    if (font.Family() == "Liberation Mono")
        return "Courier New, Liberation Mono, Courier, monospace";
    if (font.Family() == "Liberation Serif")
        return "Times New Roman, Liberation Serif, Times, serif";
    std::string name = font.Family();
    std::erase_if(name, [](char c) { return c == '\'' || c == '\\'; });
    return Join({ "'", Escape(CString(name)), "', ", kSansFamilies });
}

std::string Reference(std::string_view id) { return Join({ "url(#", id, ")" }); }

std::string Base64(std::string_view bytes)
{
    static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? kDigits[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::string HatchPath(std::vector<HatchCorners> const& lines)
{
    std::string path;
    for (HatchCorners const& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i)
            path += Join({ i == 0 ? "M" : "L", SvgNumber(line[i].x), " ", SvgNumber(line[i].y) });
        path += "z";
    }
    return path;
}

/// One bit a pixel for each colour.
PackedPicture PackedImage(MarkImage const& marks)
{
    // The eight pixels of a byte, the lowest bit's first, as the higher of two bits each; and as one bit each.
    static constexpr auto kSpread = [] {
        std::array<std::uint16_t, 256> spread {};
        for (unsigned byte = 0; byte < spread.size(); ++byte)
            for (unsigned i = 0; i < 8; ++i)
                if ((byte >> i & 1U) != 0)
                    spread[byte] = static_cast<std::uint16_t>(spread[byte] | 0x8000U >> 2 * i);
        return spread;
    }();
    static constexpr auto kReversed = [] {
        std::array<std::uint8_t, 256> reversed {};
        for (unsigned byte = 0; byte < reversed.size(); ++byte)
            for (unsigned i = 0; i < 8; ++i)
                if ((byte >> i & 1U) != 0)
                    reversed[byte] = static_cast<std::uint8_t>(reversed[byte] | 0x80U >> i);
        return reversed;
    }();
    std::size_t const count = marks.layers.size();
    PackedPicture picture { marks.box.Width(), marks.box.Height(), static_cast<int>(count), {}, {} };
    for (MarkImage::Layer const& layer : marks.layers)
        picture.colours.push_back(layer.colour);
    COLORREF paper = 0;
    while (std::find(picture.colours.begin(), picture.colours.end(), paper) != picture.colours.end())
        ++paper;
    picture.colours.insert(picture.colours.begin(), paper);
    auto const width = static_cast<std::size_t>(picture.width);
    std::size_t const rowBytes = (width * count + 7) / 8;
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
        for (std::size_t x = 0; x < width; x += 8) {
            auto const byte = [&](std::size_t layer) {
                return marks.layers[layer].words[y * marks.rowWords + x / 64] >> x % 64 & 0xFF;
            };
            if (count == 1) {
                picture.rows.push_back(kReversed[byte(0)]);
                continue;
            }
            unsigned const pixels = kSpread[byte(0)] >> 1 | kSpread[byte(1)];
            picture.rows.push_back(static_cast<std::uint8_t>(pixels >> 8));
            picture.rows.push_back(static_cast<std::uint8_t>(pixels));
        }
        picture.rows.resize((y + 1) * rowBytes);
    }
    return picture;
}

/// Scalable Vector Graphics in units of device pixels: text is text, equal clips and hatches are written once.
class SvgPage : public PageCanvas {
public:
    explicit SvgPage(PageSetup const& setup)
        : PageCanvas(setup)
    {
    }

protected:
    void DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip) override;
    void DrawRun(TextRun const& run, Clip const& clip) override;
    void DrawPicture(PagePicture const& picture, Clip const& clip) override;
    void DrawHatch(std::vector<HatchCorners> const& lines, VectorColour const& colour, Clip const& clip) override;
    void DrawMarks(MarkImage const& marks, Clip const& clip) override;
    std::string FinishDocument() override;
    bool BeginMark(std::span<RecordedPrimitive const> mark, BYTE alpha) override;
    void EndMark(std::span<CPoint const> points, BYTE alpha, Clip const& clip) override;

private:
    /// The id of a definition, which is added when there is none with this content. The content has "@" for the id.
    std::string Define(std::string_view prefix, std::string const& content);
    std::string HatchFill(VectorBrush const& brush);
    std::string PenAttributes(PagePen const& pen) const;
    void AddImage(CRect const& to, std::string const& png);
    void SetClip(Clip const& clip);

    std::string m_body;
    std::string m_definitions;
    std::map<std::string, std::string> m_ids;
    Clip m_clip;
    std::vector<std::string> m_clipIds;
    /// What was drawn before a mark was begun.
    std::string m_bodyBefore;
};

std::string SvgPage::Define(std::string_view prefix, std::string const& content)
{
    auto const [entry, isNew] = m_ids.emplace(content, Join({ prefix, std::to_string(m_ids.size() + 1) }));
    if (isNew) {
        std::string definition = content;
        m_definitions += definition.replace(definition.find('@'), 1, entry->second).append("\n");
    }
    return entry->second;
}

void SvgPage::SetClip(Clip const& clip)
{
    if (clip == m_clip)
        return;
    m_clip = clip;
    // One group for each of the shapes that limit drawing.
    std::vector<std::string> ids;
    CRect box;
    box.IntersectRect(clip.box, Bounds());
    if (!(box == Bounds())) {
        PageShape shape;
        shape.AddRect(box);
        ids.push_back(
            Define("c", Join({ "<clipPath id=\"@\"><path", Attribute("d", SvgPath(shape)), "/></clipPath>" })));
    }
    if (clip.region) {
        bool const winding = clip.region->OutlineMode() == WINDING;
        std::string const path = Attribute("d", SvgPath(RegionShape(*clip.region, Bounds())));
        ids.push_back(Define(
            "c", Join({ "<clipPath id=\"@\"><path", path, winding ? "" : " clip-rule=\"evenodd\"", "/></clipPath>" })));
    }
    if (ids == m_clipIds)
        return;
    for (std::size_t i = 0; i < m_clipIds.size(); ++i)
        m_body += "</g>\n";
    for (auto const& id : ids)
        m_body += Join({ "<g", Attribute("clip-path", Reference(id)), ">\n" });
    m_clipIds = std::move(ids);
}

std::string SvgPage::HatchFill(VectorBrush const& brush)
{
    std::string const path = HatchPath(HatchLines(*brush.hatchStyle, 1));
    std::string const background = brush.background.alpha > kInvisible
        ? Join({ "<path", Paint("fill", brush.background), " d=\"M0 0h8v8h-8z\"/>" })
        : std::string();
    return Reference(Define("h",
        Join({ "<pattern id=\"@\"", Attribute("width", kHatchSide), Attribute("height", kHatchSide),
            " patternUnits=\"userSpaceOnUse\" patternTransform=\"scale(", SvgNumber(ScreenScale()), ")\">", background,
            "<path", Paint("fill", brush.foreground), Attribute("d", path), "/></pattern>" })));
}

std::string SvgPage::PenAttributes(PagePen const& pen) const
{
    std::string text = Paint("stroke", pen.colour);
    if (pen.width != 1.0)
        text += Attribute("stroke-width", pen.width);
    // The document's own setting is flat ends and mitred corners; a solid round pen is a class.
    if (pen.round && !pen.dashes.empty())
        text += Attribute("stroke-linejoin", "round");
    std::string dashes;
    for (double const length : pen.dashes)
        dashes += Join({ dashes.empty() ? "" : " ", SvgNumber(length) });
    return dashes.empty() ? text : text + Attribute("stroke-dasharray", dashes);
}

void SvgPage::DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip)
{
    SetClip(clip);
    std::string element = "<path";
    if (paint.fill) {
        element += paint.fill->hatchStyle ? Attribute("fill", HatchFill(*paint.fill))
                                          : Paint("fill", paint.fill->foreground);
        if (!paint.winding && !shape.figures.empty())
            element += Attribute("fill-rule", "evenodd");
    }
    if (paint.pen)
        element += PenAttributes(*paint.pen);
    // Without smoothing there is no seam between fillings that border on each other.
    bool const isCrisp = paint.fill && paint.edges != PagePaint::Edges::Smooth;
    bool const isRound = paint.pen && paint.pen->round && paint.pen->dashes.empty();
    if (isCrisp || isRound)
        element += Attribute("class", isCrisp && isRound ? "f r" : isCrisp ? "f" : "r");
    m_body += Join({ element, Attribute("d", SvgPath(shape)), "/>\n" });
}

void SvgPage::DrawRun(TextRun const& run, Clip const& clip)
{
    SetClip(clip);
    auto const font = text::FindFont(*run.font);
    text::ShapedText const shaped = text::Shape(*font, run.text.View());
    int const ascent = font->Metrics().tmAscent;
    int const start = shaped.rightToLeft ? shaped.width : 0;
    std::string element = "<text";
    if (text::IsVertical(*run.font))
        element += Attribute("x", start) + Attribute("y", ascent)
            + Attribute("transform",
                Join({ "translate(", std::to_string(run.at.x), " ", std::to_string(run.at.y), ")rotate(-90)" }));
    else
        element += Attribute("x", run.at.x + start) + Attribute("y", run.at.y + ascent);
    if (run.text.GetLength() > 1 && shaped.width > 0)
        element += Attribute("textLength", shaped.width);
    element += Attribute("font-size", font->Primary()->EmSize());
    if (font->Family() != "Liberation Sans")
        element += Attribute("font-family", Families(*font));
    if (font->IsBold())
        element += Attribute("font-weight", "bold");
    if (font->IsItalic())
        element += Attribute("font-style", "italic");
    if (shaped.rightToLeft)
        element += Attribute("direction", "rtl");
    std::string const content = Escape(CString(shaped.utf8));
    bool const blanks = content.front() == ' ' || content.back() == ' ' || content.find("  ") != std::string::npos;
    if (blanks)
        element += Attribute("xml:space", "preserve");
    m_body += Join({ element, Paint("fill", { run.colour, 255 }), ">", content, "</text>\n" });
}

void SvgPage::DrawPicture(PagePicture const& picture, Clip const& clip)
{
    SetClip(clip);
    PngSettings settings;
    settings.dotsPerInch = 0;
    settings.transparent = picture.transparent;
    AddImage(picture.to, EncodePng(picture.pixels, settings));
}

void SvgPage::AddImage(CRect const& to, std::string const& png)
{
    m_body += Join({ "<image", Attribute("x", to.left), Attribute("y", to.top), Attribute("width", to.Width()),
        Attribute("height", to.Height()), " preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64,",
        Base64(png), "\"/>\n" });
}

void SvgPage::DrawHatch(std::vector<HatchCorners> const& lines, VectorColour const& colour, Clip const& clip)
{
    SetClip(clip);
    m_body += Join({ "<path", Paint("fill", colour), Attribute("d", HatchPath(lines)), "/>\n" });
}

void SvgPage::DrawMarks(MarkImage const& marks, Clip const& clip)
{
    SetClip(clip);
    AddImage(marks.box, EncodePng(PackedImage(marks)));
}

bool SvgPage::BeginMark(std::span<RecordedPrimitive const> mark, BYTE alpha)
{
    // Lines and dots of all marks make one path, which is shorter than references.
    auto const joins = [](RecordedPrimitive const& p) {
        auto const* const fill = p.As<primitive::Fill>();
        bool const isDot = fill && fill->region.IsRect() && fill->region.Box().Size() == CSize(1, 1);
        return isDot || p.As<primitive::Polyline>();
    };
    if (alpha == 255 && std::all_of(mark.begin(), mark.end(), joins))
        return false;
    SetClip({});
    m_bodyBefore = std::exchange(m_body, {});
    return true;
}

void SvgPage::EndMark(std::span<CPoint const> points, BYTE alpha, Clip const& clip)
{
    std::string const opacity = alpha < 255 ? Attribute("opacity", alpha / kOpaque) : std::string();
    std::string const id = Define("m", Join({ "<g id=\"@\"", opacity, ">\n", m_body, "</g>" }));
    m_body = std::exchange(m_bodyBefore, {});
    SetClip(clip);
    std::string const reference = Attribute("xlink:href", Join({ "#", id }));
    for (CPoint const& p : points)
        m_body += Join({ "<use", reference, Attribute("x", p.x), Attribute("y", p.y), "/>\n" });
}

std::string SvgPage::FinishDocument()
{
    SetClip({});
    auto const element = [](std::string_view name, CString const& text) {
        return text.IsEmpty() ? std::string() : Join({ "<", name, ">", Escape(text), "</", name, ">\n" });
    };
    std::string const viewBox
        = Join({ "0 0 ", std::to_string(Bounds().Width()), " ", std::to_string(Bounds().Height()) });
    std::string const definitions
        = m_definitions.empty() ? std::string() : Join({ "<defs>\n", m_definitions, "</defs>\n" });
    return Join({ "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""
                  " xmlns:xlink=\"http://www.w3.org/1999/xlink\"",
        Attribute("width", Join({ SvgNumber(Setup().widthMm), "mm" })),
        Attribute("height", Join({ SvgNumber(Setup().heightMm), "mm" })), Attribute("viewBox", viewBox),
        // A picture as a whole rather than its texts one by one.
        Setup().description.IsEmpty() ? "" : " role=\"img\"", ">\n", element("title", Setup().title),
        element("desc", Setup().description),
        "<style>.f{shape-rendering:crispEdges}.r{stroke-linejoin:round;stroke-linecap:round}</style>\n", definitions,
        "<g fill=\"none\" stroke-miterlimit=\"10\" font-family=\"", kSansFamilies, "\">\n", m_body, "</g>\n</svg>\n" });
}

} // namespace

std::unique_ptr<PageSurface> MakeSvgPage(PageSetup const& setup) { return std::make_unique<SvgPage>(setup); }

} // namespace ombrel
