#include "ombrel/platform/gdi/RecordingSurface.h"

#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/framework/Text.h"
#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>
#include <tuple>

namespace ombrel {

namespace {

bool Same(LOGFONT const& a, LOGFONT const& b)
{
    auto const fields = [](LOGFONT const& f) {
        return std::tie(f.lfHeight, f.lfWidth, f.lfEscapement, f.lfOrientation, f.lfWeight, f.lfItalic, f.lfUnderline,
            f.lfStrikeOut, f.lfCharSet, f.lfOutPrecision, f.lfClipPrecision, f.lfQuality, f.lfPitchAndFamily,
            f.lfFaceName);
    };
    return fields(a) == fields(b);
}

bool Same(Region const& a, Region const& b)
{
    if (!(a.Box() == b.Box()) || a.IsRect() != b.IsRect())
        return false;
    auto const spansA = a.Spans(a.Box().top, a.Box().bottom);
    auto const spansB = b.Spans(b.Box().top, b.Box().bottom);
    return std::equal(
        spansA.begin(), spansA.end(), spansB.begin(), spansB.end(), [](Region::Span const& s, Region::Span const& t) {
            return s.y == t.y && s.left == t.left && s.right == t.right;
        });
}

bool Same(Clip const& a, Clip const& b)
{
    if (!(a.box == b.box) || !a.region != !b.region)
        return false;
    return !a.region || a.region == b.region || Same(*a.region, *b.region);
}

/// FNV-1a over the pixels that are copied and the colours that they may become.
std::uint64_t PixelSum(ImageCopy const& copy)
{
    std::uint64_t sum = 0xCBF29CE484222325;
    auto const add = [&sum](std::uint32_t value) { sum = (sum ^ value) * 0x100000001B3; };
    add(copy.zeroColour);
    add(copy.oneColour);
    add(copy.maskColour);
    if (!copy.source)
        return sum;
    add(static_cast<std::uint32_t>(copy.source->BitsPerPixel()));
    CRect part;
    part.IntersectRect(copy.from, copy.source->Bounds());
    for (int y = part.top; y < part.bottom; ++y)
        std::for_each(copy.source->Row(y) + part.left, copy.source->Row(y) + part.right, add);
    return sum;
}

std::string Hex(COLORREF colour)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "#";
    for (BYTE const part : { GetRValue(colour), GetGValue(colour), GetBValue(colour) })
        text += { kDigits[part >> 4], kDigits[part & 15] };
    return text;
}

std::string Hex(VectorColour const& colour)
{
    return colour.alpha == 255 ? Hex(colour.colour) : Join({ Hex(colour.colour), "*", std::to_string(colour.alpha) });
}

std::string Write(CPoint p) { return Join({ std::to_string(p.x), ",", std::to_string(p.y) }); }

std::string Write(CRect const& r) { return Join({ "[", Write(r.TopLeft()), " ", Write(r.BottomRight()), "]" }); }

std::string Write(LineStyle const& line)
{
    static constexpr char const* kNames[] = { "solid", "dash", "dot", "dashdot", "dashdotdot", "null", "inside" };
    bool const known = line.style >= 0 && line.style < static_cast<int>(std::size(kNames));
    std::string const style = known ? kNames[line.style] : std::to_string(line.style);
    std::string const gaps = line.gapColour ? Join({ "/gaps", Hex(*line.gapColour) }) : std::string();
    return Join({ " pen=", Hex(line.colour), "/", std::to_string(line.width), "/", style, gaps });
}

std::string Write(RecordedPen const& pen)
{
    std::string text = Join({ " pen=", Hex(pen.colour), "/", FormatNumber(pen.width, 'g', 6) });
    for (std::size_t i = 0; i < pen.dashes.size(); ++i)
        text += Join({ i == 0 ? "/dashes" : ",", FormatNumber(pen.dashes[i], 'g', 6) });
    return text;
}

std::string Write(VectorBrush const& brush)
{
    std::string text = Join({ " brush=", Hex(brush.foreground) });
    if (brush.hatchStyle)
        text += Join({ "/hatch", std::to_string(*brush.hatchStyle), "/over", Hex(brush.background) });
    return text;
}

std::string Write(LOGFONT const& font)
{
    std::string text = Join({ " font=", font.lfFaceName.ToUtf8(), "/", std::to_string(font.lfHeight) });
    if (font.lfWeight != 0)
        text += Join({ "/w", std::to_string(font.lfWeight) });
    if (font.lfItalic)
        text += "/italic";
    if (font.lfUnderline)
        text += "/underline";
    if (font.lfStrikeOut)
        text += "/strikeout";
    if (font.lfEscapement != 0)
        text += Join({ "/turned", std::to_string(font.lfEscapement) });
    return text;
}

/// The points, with "|" where a figure begins.
std::string WritePoints(RecordedPrimitive const& primitive)
{
    std::string text;
    for (std::size_t i = 0; i < primitive.points.size(); ++i) {
        bool const begins = std::binary_search(primitive.starts.begin(), primitive.starts.end(), i);
        text += Join({ begins && i > 0 ? " | " : " ", Write(primitive.points[i]) });
    }
    return text;
}

std::string WriteClip(Clip const& clip)
{
    std::string text;
    if (!(clip.box == Clip().box))
        text += Join({ " clip=", Write(clip.box) });
    if (clip.region)
        text += Join({ " region=", Write(clip.region->Box()), clip.region->IsRect() ? "" : "shaped" });
    return text;
}

std::string Write(RecordedPrimitive const& p)
{
    using Kind = RecordedPrimitive::Kind;
    switch (p.kind) {
    case Kind::Polyline:
        return Join({ "polyline", WritePoints(p), Write(p.line) });
    case Kind::Ellipse:
        return Join({ "ellipse ", Write(p.rect), Write(p.line), p.filled ? " fill=" : "",
            p.filled ? Hex(p.colour) : std::string() });
    case Kind::Arc:
        return Join({ "arc ", Write(p.rect), " from ", Write(p.points[0]), " to ", Write(p.points[1]), Write(p.line) });
    case Kind::FillRect:
        return Join({ "fillrect ", Write(p.rect), " fill=", Hex(p.colour) });
    case Kind::FillRegion:
        return Join({ "fillregion ", Write(p.rect), WritePoints(p), " fill=", Hex(p.colour) });
    case Kind::SetPixel:
        return Join({ "setpixel ", Write(p.points[0]), " ", Hex(p.colour) });
    case Kind::Text:
        return Join({ "text ", Write(p.points[0]), " \"", p.text.ToUtf8(), "\" ", Hex(p.colour), Write(p.font),
            p.filled ? " cell=" : "", p.filled ? Hex(p.cellColour) : std::string() });
    case Kind::Image:
        return Join({ "image ", Write(p.from), " to ", Write(p.rect), " op=", std::to_string(p.operation),
            " sum=", std::to_string(p.pixelSum) });
    case Kind::Stroke:
        return Join({ "stroke", WritePoints(p), Write(p.pen), p.smooth ? " smooth" : "" });
    case Kind::Fill:
        return Join({ "fill ", Write(p.rect), WritePoints(p), Write(p.brush) });
    }
    return {};
}

} // namespace

bool operator==(RecordedPrimitive const& a, RecordedPrimitive const& b)
{
    return a.kind == b.kind && a.points == b.points && a.starts == b.starts && a.rect == b.rect
        && Same(a.region, b.region) && a.text == b.text && Same(a.font, b.font) && a.line == b.line
        && a.filled == b.filled && a.colour == b.colour && a.cellColour == b.cellColour && a.pen == b.pen
        && a.brush == b.brush && a.smooth == b.smooth && a.from == b.from && a.operation == b.operation
        && a.pixelSum == b.pixelSum && Same(a.clip, b.clip);
}

void Replay(RecordedPrimitive const& p, CPoint by, Surface& surface, Clip const& clip)
{
    using Kind = RecordedPrimitive::Kind;
    std::vector<CPoint> points = p.points;
    for (CPoint& point : points)
        point = MovePoint(point, by);
    CRect const rect = MoveRect(p.rect, by);
    auto const region = [&p, by] {
        Region moved = p.region;
        moved.Offset(by.x, by.y);
        return moved;
    };
    switch (p.kind) {
    case Kind::Polyline:
        return surface.Polyline(points, p.line, clip);
    case Kind::Ellipse:
        return surface.Ellipse(rect, p.line.style != PS_NULL ? &p.line : nullptr, p.filled ? &p.colour : nullptr, clip);
    case Kind::Arc:
        return surface.Arc(rect, points[0], points[1], p.line, clip);
    case Kind::FillRect:
        return surface.FillRect(rect, p.colour, clip);
    case Kind::FillRegion:
        return surface.FillRegion(region(), p.colour, clip);
    case Kind::SetPixel:
        return surface.SetPixel(points[0], p.colour, clip);
    case Kind::Text: {
        TextRun run { p.text, points[0], &p.font, p.colour, {} };
        if (p.filled)
            run.cellColour = p.cellColour;
        return surface.Text(run, clip);
    }
    case Kind::Stroke:
        return surface.Stroke({ points, p.starts }, { p.pen.colour, p.pen.width, p.pen.dashes }, p.smooth, clip);
    case Kind::Fill:
        return surface.Fill(region(), p.brush, clip);
    case Kind::Image:
        return;
    }
}

bool IsPlain(RecordedPrimitive const& primitive)
{
    using Kind = RecordedPrimitive::Kind;
    switch (primitive.kind) {
    case Kind::Polyline:
    case Kind::Ellipse:
    case Kind::Arc:
    case Kind::FillRect:
    case Kind::FillRegion:
    case Kind::SetPixel:
        return true;
    default:
        return false;
    }
}

CRect ReachOf(std::span<RecordedPrimitive const> primitives)
{
    using Kind = RecordedPrimitive::Kind;
    auto const include = [](CRect& all, CRect const& box) {
        all = all.IsRectEmpty() ? box
                                : CRect(std::min(all.left, box.left), std::min(all.top, box.top),
                                    std::max(all.right, box.right), std::max(all.bottom, box.bottom));
    };
    CRect reach;
    for (RecordedPrimitive const& p : primitives) {
        CRect box = ClampRect(p.rect);
        box.NormalizeRect();
        bool const hasCorners = p.kind == Kind::Polyline || p.kind == Kind::SetPixel;
        for (std::size_t i = 0; hasCorners && i < p.points.size(); ++i)
            include(box, { ClampPoint(p.points[i]), CSize(1, 1) });
        int const margin = p.kind == Kind::FillRect || p.kind == Kind::SetPixel ? 0 : ClampCoordinate(p.line.width);
        box.InflateRect(margin, margin);
        include(reach, box);
    }
    return reach;
}

RecordingSurface::RecordingSurface(CSize size, DeviceCapabilities const& capabilities, bool printing)
    : m_capabilities(capabilities)
    , m_bounds({}, size)
    , m_printing(printing)
{
}

std::string RecordingSurface::Dump() const
{
    std::string text;
    for (auto const& primitive : m_primitives)
        text += Write(primitive) + WriteClip(primitive.clip) + "\n";
    return text;
}

RecordedPrimitive& RecordingSurface::Add(RecordedPrimitive::Kind kind, Clip const& clip)
{
    RecordedPrimitive primitive {};
    primitive.kind = kind;
    primitive.clip = clip;
    return m_primitives.emplace_back(std::move(primitive));
}

void RecordingSurface::Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Polyline, clip);
    p.points.assign(points.begin(), points.end());
    p.line = line;
}

void RecordingSurface::Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Ellipse, clip);
    p.rect = box;
    p.line = outline ? *outline : LineStyle { PS_NULL, 0, 0, {} };
    p.filled = fill != nullptr;
    p.colour = fill ? *fill : 0;
}

void RecordingSurface::Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Arc, clip);
    p.rect = box;
    p.points = { start, end };
    p.line = line;
}

void RecordingSurface::FillRect(CRect const& rect, COLORREF colour, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::FillRect, clip);
    p.rect = rect;
    p.colour = colour;
}

void RecordingSurface::FillRegion(Region const& region, COLORREF colour, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::FillRegion, clip);
    p.region = region;
    p.rect = region.Box();
    p.points = region.Outline();
    p.colour = colour;
}

void RecordingSurface::SetPixel(CPoint point, COLORREF colour, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::SetPixel, clip);
    p.points = { point };
    p.colour = colour;
}

void RecordingSurface::Text(TextRun const& run, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Text, clip);
    p.points = { run.at };
    p.text = run.text;
    if (run.font)
        p.font = *run.font;
    p.colour = run.colour;
    p.filled = run.cellColour.has_value();
    p.cellColour = run.cellColour.value_or(0);
}

void RecordingSurface::Image(ImageCopy const& copy, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Image, clip);
    p.from = copy.from;
    p.rect = copy.to;
    p.operation = copy.operation;
    p.pixelSum = PixelSum(copy);
}

void RecordingSurface::Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Stroke, clip);
    p.points.assign(figures.points.begin(), figures.points.end());
    p.starts.assign(figures.starts.begin(), figures.starts.end());
    p.pen = { pen.colour, pen.width, { pen.dashes.begin(), pen.dashes.end() } };
    p.smooth = smooth;
}

void RecordingSurface::Fill(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    auto& p = Add(RecordedPrimitive::Kind::Fill, clip);
    p.region = region;
    p.rect = region.Box();
    p.points = region.Outline();
    p.brush = brush;
}

} // namespace ombrel
