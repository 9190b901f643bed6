#include "ombrel/platform/gdi/page/PageCanvas.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/geometry/DashPattern.h"
#include "ombrel/platform/gdi/geometry/PathSimplify.h"
#include "ombrel/platform/gdi/marks/MarkPicture.h"
#include "ombrel/platform/gdi/text/TextEngine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

constexpr double kMmPerInch = 25.4;
/// Half a device pixel: below what a printer of twice the resolution shows.
constexpr double kTolerance = 0.5;

double LimitSide(double mm)
{
    static constexpr double kLongest = 5080.0;
    return mm >= 1.0 ? std::min(mm, kLongest) : 1.0;
}

PageSetup Limited(PageSetup setup)
{
    setup.widthMm = LimitSide(setup.widthMm);
    setup.heightMm = LimitSide(setup.heightMm);
    return setup;
}

/// The finest resolution at which everything on the page can be drawn on.
int DotsPerInchOf(PageSetup const& setup)
{
    int dots = kPageDotsPerInch;
    while (std::max(setup.widthMm, setup.heightMm) * dots / kMmPerInch > kMappedLimit)
        dots /= 2;
    return dots;
}

DeviceCapabilities PrinterCapabilities(PageSetup const& setup)
{
    static constexpr int kRasterPrinter = 2;
    int const dots = DotsPerInchOf(setup);
    auto const pixels = [dots](double mm) { return static_cast<int>(std::lround(mm * dots / kMmPerInch)); };
    DeviceCapabilities capabilities;
    capabilities.technology = kRasterPrinter;
    capabilities.horzSize = static_cast<int>(std::lround(setup.widthMm));
    capabilities.vertSize = static_cast<int>(std::lround(setup.heightMm));
    capabilities.horzRes = pixels(setup.widthMm);
    capabilities.vertRes = pixels(setup.heightMm);
    capabilities.logPixelsX = dots;
    capabilities.logPixelsY = dots;
    return capabilities;
}

/// The lengths of a dash pattern, or none for a solid line.
std::vector<double> DashLengths(std::span<double const> lengths, double scale)
{
    DashPattern const pattern(lengths, scale);
    std::vector<double> result;
    double start = 0.0;
    for (double const end : pattern.IsSolid() ? std::vector<double>() : pattern.Ends())
        result.push_back(end - std::exchange(start, end));
    return result;
}

/// Where the middle of a line lies within pixels: odd widths have a middle row.
double MiddleOffset(double width) { return std::lround(width) % 2 != 0 ? 0.5 : 0.0; }

/// Coordinates are limited to what formats can express.
int Limited(int coordinate) { return std::clamp(coordinate, -kDocumentLimit, kDocumentLimit); }

std::vector<CPoint> Limited(std::span<CPoint const> points)
{
    std::vector<CPoint> limited(points.begin(), points.end());
    for (CPoint& p : limited)
        p = { Limited(p.x), Limited(p.y) };
    return limited;
}

CRect Limited(CRect const& rect)
{
    CRect limited(Limited(rect.left), Limited(rect.top), Limited(rect.right), Limited(rect.bottom));
    limited.NormalizeRect();
    return limited;
}

/// A width of a device context's pen: 0 is 1.
int PenWidth(LineStyle const& line)
{
    static constexpr int kWidest = 100000;
    return std::clamp(line.width, 1, kWidest);
}

/// Lengthens a rectangle under one that is drawn over it next, where they share an edge: then no paper shines through
/// between them when a viewer smooths both edges. The corners are those of PageShape::AddRect.
void ExtendUnder(std::span<CPoint> corners, CRect const& next)
{
    static constexpr int kOverlap = 4;
    CPoint& topLeft = corners[0];
    CPoint& topRight = corners[1];
    CPoint& bottomRight = corners[2];
    CPoint& bottomLeft = corners[3];
    int const across = std::min(kOverlap, next.Width());
    int const down = std::min(kOverlap, next.Height());
    bool const beside = next.top <= topLeft.y && next.bottom >= bottomRight.y;
    bool const below = next.left <= topLeft.x && next.right >= bottomRight.x;
    if (beside && next.left == topRight.x)
        topRight.x = bottomRight.x = next.left + across;
    else if (beside && next.right == topLeft.x)
        topLeft.x = bottomLeft.x = next.right - across;
    else if (below && next.top == bottomLeft.y)
        bottomLeft.y = bottomRight.y = next.top + down;
    else if (below && next.bottom == topLeft.y)
        topLeft.y = topRight.y = next.bottom - down;
}

bool IsDot(std::span<CPoint const> points)
{
    return std::all_of(points.begin(), points.end(), [&](CPoint const& p) { return p == points.front(); });
}

} // namespace

PageCanvas::PageCanvas(PageSetup const& setup)
    : m_setup(Limited(setup))
    , m_capabilities(PrinterCapabilities(m_setup))
    , m_bounds(0, 0, m_capabilities.horzRes, m_capabilities.vertRes)
{
}

double PageCanvas::StrokeWidth(LineStyle const& line) const
{
    // A pen of one pixel asks for the thinnest line: one dot of the printer would vanish on a screen, half a pixel of a
    // screen reads well.
    int const width = PenWidth(line);
    return width > 1 ? width : ScreenScale() / 2.0;
}

std::vector<double> PageCanvas::StyleDashes(LineStyle const& line) const
{
    return line.width > 1 ? std::vector<double>() : DashLengths(PenDashes(line.style), ScreenScale());
}

void PageCanvas::Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip)
{
    int const width = PenWidth(line);
    if (points.size() < 2 || line.style == PS_NULL || (width == 1 && IsDot(points)))
        return;
    PageShape shape;
    shape.offset = MiddleOffset(width);
    std::vector<CPoint> kept = SimplifyPath(Limited(points), StyleDashes(line).empty() ? kTolerance : 0.0);
    bool const closed = kept.size() > 3 && kept.front() == kept.back();
    if (closed)
        kept.pop_back();
    shape.Add(kept, closed);
    AddLine(std::move(shape), line, clip);
}

void PageCanvas::AddLine(PageShape&& shape, LineStyle const& line, Clip const& clip)
{
    PagePen pen { { line.colour, 255 }, StrokeWidth(line), PenWidth(line) > 1, StyleDashes(line) };
    if (!pen.dashes.empty() && line.gapColour)
        Add(PageShape(shape), PagePaint { {}, PagePen { { *line.gapColour, 255 }, pen.width, false, {} }, false, {} },
            Merging::No, clip);
    Merging const merging = pen.dashes.empty() || !line.gapColour ? Merging::Yes : Merging::No;
    Add(std::move(shape), PagePaint { {}, std::move(pen), false, {} }, merging, clip);
}

void PageCanvas::Ellipse(CRect const& given, LineStyle const* outline, COLORREF const* fill, Clip const& clip)
{
    CRect const box = Limited(given);
    bool const outlined = outline && outline->style != PS_NULL;
    if (box.IsRectEmpty() || (!outlined && !fill))
        return;
    // An outline runs through the middle of the outermost pixels.
    double const inset = outlined ? 0.5 : 0.0;
    PageShape shape;
    shape.arcs.push_back(
        { 0.5 * (static_cast<double>(box.left) + box.right), 0.5 * (static_cast<double>(box.top) + box.bottom),
            0.5 * box.Width() - inset, 0.5 * box.Height() - inset, 0.0, 2.0 * std::numbers::pi });
    if (outlined && !fill)
        return AddLine(std::move(shape), *outline, clip);
    PagePaint paint;
    paint.fill = VectorBrush::Solid(*fill);
    if (outlined)
        paint.pen = PagePen { { outline->colour, 255 }, StrokeWidth(*outline), true, StyleDashes(*outline) };
    Add(std::move(shape), std::move(paint), Merging::No, clip);
}

void PageCanvas::Arc(CRect const& given, CPoint start, CPoint end, LineStyle const& line, Clip const& clip)
{
    CRect const box = Limited(given);
    if (line.style == PS_NULL || box.Width() < 2 || box.Height() < 2)
        return;
    PageArc arc { 0.5 * (static_cast<double>(box.left) + box.right), 0.5 * (static_cast<double>(box.top) + box.bottom),
        0.5 * (box.Width() - 1), 0.5 * (box.Height() - 1), 0.0, 0.0 };
    auto const angle
        = [&arc](CPoint p) { return std::atan2((p.y - arc.centreY) / arc.radiusY, (p.x - arc.centreX) / arc.radiusX); };
    // Counter-clockwise is backwards with y down.
    arc.start = angle(start);
    arc.sweep = angle(end) - arc.start;
    if (arc.sweep >= 0.0)
        arc.sweep -= 2.0 * std::numbers::pi;
    PageShape shape;
    shape.arcs.push_back(arc);
    AddLine(std::move(shape), line, clip);
}

void PageCanvas::AddRect(CRect const& rect, VectorBrush const& brush, Clip const& clip)
{
    CRect visible = rect;
    visible.NormalizeRect();
    if (!visible.IntersectRect(visible, m_bounds))
        return;
    PageShape shape;
    shape.AddRect(visible);
    bool const plain = !brush.hatchStyle && brush.foreground.alpha == 255;
    bool const afterRect = m_pending && m_pending->paint.edges == PagePaint::Edges::Upright;
    if (plain && afterRect && m_pending->clip == clip)
        ExtendUnder(std::span(m_pending->shape.points).last<4>(), visible);
    Add(std::move(shape), PagePaint { brush, {}, true, PagePaint::Edges::Upright }, plain ? Merging::Yes : Merging::No,
        clip);
}

void PageCanvas::FillWithLines(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    // Within the clip and the region.
    Clip inner = clip;
    if (region.IsRect())
        inner.box.IntersectRect(clip.box, region.Box());
    else
        inner.region = std::make_shared<Region>(clip.region ? Region::Intersection(*clip.region, region) : region);
    CRect visible;
    if (m_finished || !visible.IntersectRect(inner.Box(), m_bounds))
        return;
    if (brush.background.alpha > kInvisible)
        Fill(region, { brush.background, {}, {} }, clip);
    Flush();
    DrawHatch(HatchLinesOver(*brush.hatchStyle, visible, ScreenScale()), brush.foreground, inner);
}

void PageCanvas::Fill(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    if (brush.hatchStyle && HasLongLines(*brush.hatchStyle))
        return FillWithLines(region, brush, clip);
    if (region.IsRect())
        return AddRect(region.Box(), brush, clip);
    PageShape shape = RegionShape(region, m_bounds);
    shape.points = Limited(shape.points);
    Add(std::move(shape), PagePaint { brush, {}, region.OutlineMode() == WINDING, PagePaint::Edges::Shared },
        Merging::No, clip);
}

void PageCanvas::Stroke(Figures const& figures, VectorPen const& vectorPen, bool, Clip const& clip)
{
    static constexpr double kWidest = 1e5;
    double const width = vectorPen.width > 0.0 ? std::min(vectorPen.width, kWidest) : 1.0;
    PagePen pen { vectorPen.colour, width, false, DashLengths(vectorPen.dashes, width) };
    PageShape shape;
    shape.offset = MiddleOffset(width);
    for (std::size_t i = 0; i < figures.Count(); ++i) {
        auto const points = figures.PointsOf(i);
        if (points.size() >= 2 && !IsDot(points))
            shape.Add(SimplifyPath(Limited(points), pen.dashes.empty() ? kTolerance : 0.0), false);
    }
    Merging const merging = vectorPen.colour.alpha == 255 ? Merging::Yes : Merging::No;
    Add(std::move(shape), PagePaint { {}, std::move(pen), false, {} }, merging, clip);
}

void PageCanvas::Text(TextRun const& given, Clip const& clip)
{
    static LOGFONT const kDefaultFont;
    TextRun run = given;
    if (!run.font)
        run.font = &kDefaultFont;
    if (m_finished || run.text.IsEmpty())
        return;
    run.at = ClampPoint(run.at);
    CSize const size = MeasureText(*run.font, run.text);
    bool const vertical = text::IsVertical(*run.font);
    // A rectangle of the text that is not turned, as it lies on the page.
    auto const placed = [&](int left, int top, int right, int bottom) {
        return vertical ? CRect(run.at.x + top, run.at.y - right, run.at.x + bottom, run.at.y - left)
                        : CRect(run.at.x + left, run.at.y + top, run.at.x + right, run.at.y + bottom);
    };
    CRect reach = placed(0, 0, size.cx, size.cy);
    if (run.cellColour)
        AddRect(reach, VectorBrush::Solid(*run.cellColour), clip);
    reach.InflateRect(size.cy, size.cy);
    if (!IsVisible(reach, clip))
        return;
    Flush();
    DrawRun(run, clip);
    for (auto const& line : text::TextLines(*run.font, *text::FindFont(*run.font)))
        AddRect(placed(0, line.top, size.cx, line.top + line.thickness), VectorBrush::Solid(run.colour), clip);
}

void PageCanvas::Image(ImageCopy const& copy, Clip const& clip)
{
    if (m_finished)
        return;
    auto const picture = MakePicture(copy);
    if (!picture || !IsVisible(picture->to, clip))
        return;
    Flush();
    DrawPicture(*picture, clip);
}

bool PageCanvas::KeepShapes(std::span<RecordedPrimitive const> mark, std::vector<CPoint>& points, Clip const& clip)
{
    // Each takes some 30 bytes of a document, and viewers some microseconds.
    static constexpr std::size_t kMostShapes = 10000;
    std::size_t const given = points.size();
    points = LastOfEach(points);
    auto const count = [this, given, &points] { m_markCounts.hidden += static_cast<long long>(given - points.size()); };
    auto const solid = WithPageLines(mark, static_cast<int>(std::lround(ScreenScale() / 2.0)));
    auto const picture = solid ? DrawMark(*solid, 24) : std::nullopt;
    if (!picture || picture->colours.empty()) {
        count();
        return true;
    }
    if (auto kept = WithoutCovered(*picture, points, kMostShapes)) {
        points = std::move(*kept);
        count();
        return true;
    }
    m_markCounts.inImages += static_cast<long long>(given);
    CRect visible;
    visible.IntersectRect(clip.Box(), m_bounds);
    DrawMarks(DrawMarkImage(*picture, points, visible), clip);
    return false;
}

void PageCanvas::Repeat(
    std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip)
{
    if (m_finished || !std::all_of(mark.begin(), mark.end(), IsPlain))
        return Surface::Repeat(mark, points, alpha, clip);
    std::vector<RecordedPrimitive> const shown = WithoutRedrawn(mark);
    std::vector<CPoint> visible(points.begin(), points.end());
    std::erase_if(visible, [&, reach = ReachOf(mark)](CPoint p) { return !IsVisible(MoveRect(reach, p), clip); });
    if (visible.empty())
        return;
    Flush();
    // What is below others shows through them.
    if (alpha == 255 && m_setup.marks == PageMarks::Auto && !KeepShapes(shown, visible, clip))
        return;
    if (!BeginMark(shown, alpha))
        return Surface::Repeat(shown, visible, alpha, clip);
    // Round (0, 0), as if the paper went on there.
    CRect const page = std::exchange(m_bounds, Clip().box);
    Surface::Repeat(shown, std::array { CPoint() }, 255, {});
    Flush();
    m_bounds = page;
    EndMark(visible, alpha, clip);
}

bool PageCanvas::IsVisible(CRect const& box, Clip const& clip) const
{
    CRect common;
    return common.IntersectRect(clip.Box(), m_bounds) && common.IntersectRect(common, box);
}

void PageCanvas::Add(PageShape&& shape, PagePaint&& paint, Merging merging, Clip const& clip)
{
    // Mitred corners reach out farther than the width.
    static constexpr double kMitreReach = 6.0;
    static constexpr std::size_t kLargest = 1 << 16;
    // Viewers that find the outline of a whole stroke take a time that grows with the square of its figures.
    static constexpr std::size_t kMostStroked = 256;
    CRect reach = shape.Box();
    int const margin = 1 + (paint.pen ? static_cast<int>(paint.pen->width * kMitreReach) : 0);
    reach.InflateRect(margin, margin);
    if (m_finished || shape.IsEmpty() || !IsVisible(reach, clip))
        return;
    bool const joins = merging == Merging::Yes && m_pending && m_pending->shape.points.size() < kLargest
        && (!paint.pen || m_pending->shape.figures.size() + m_pending->shape.arcs.size() < kMostStroked)
        && m_pending->shape.offset == shape.offset && m_pending->paint == paint && m_pending->clip == clip;
    if (!joins) {
        Flush();
        if (merging == Merging::Yes)
            m_pending = Pending { std::move(shape), std::move(paint), clip };
        else
            DrawShape(shape, paint, clip);
        return;
    }
    PageShape& target = m_pending->shape;
    target.arcs.insert(target.arcs.end(), shape.arcs.begin(), shape.arcs.end());
    for (std::size_t i = 0; i < shape.figures.size(); ++i) {
        auto points = shape.PointsOf(i);
        // A line that starts where the last one ended goes on with it.
        bool const goesOn = paint.pen && paint.pen->dashes.empty()
            && (paint.pen->round || paint.pen->width <= ScreenScale() / 2.0) && !shape.figures[i].closed
            && !target.figures.empty() && !target.figures.back().closed && target.points.back() == points.front();
        if (goesOn)
            target.points.insert(target.points.end(), points.begin() + 1, points.end());
        else
            target.Add(points, shape.figures[i].closed);
    }
}

void PageCanvas::Flush()
{
    if (!m_pending)
        return;
    Pending const pending = std::move(*m_pending);
    m_pending.reset();
    DrawShape(pending.shape, pending.paint, pending.clip);
}

bool PageCanvas::NextPage()
{
    if (m_finished)
        return false;
    Flush();
    return EndPage();
}

std::string PageCanvas::Finish()
{
    if (m_finished)
        return {};
    Flush();
    m_finished = true;
    return FinishDocument();
}

} // namespace ombrel
