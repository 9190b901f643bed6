#include "ombrel/platform/gdi/DC.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/RecordingSurface.h"
#include "ombrel/platform/gdi/text/TextShaping.h"

#include <algorithm>
#include <cassert>

namespace ombrel {

namespace {

/// The font of a new context.
LOGFONT SystemFont()
{
    LOGFONT font;
    font.lfHeight = 16;
    font.lfWeight = 700;
    font.lfFaceName = "System";
    return font;
}

/// The top-left corner of a text's cell in the unrotated text's own axes, relative to the reference point.
CPoint CellCorner(LOGFONT const& font, CString const& text, UINT align)
{
    CPoint corner;
    if ((align & TA_CENTER) == 0 && (align & TA_BASELINE) == 0)
        return corner;
    CSize const size = MeasureText(font, text);
    if ((align & TA_CENTER) == TA_CENTER)
        corner.x = -(size.cx / 2);
    else if ((align & TA_RIGHT) != 0)
        corner.x = -size.cx;
    if ((align & TA_BASELINE) == TA_BASELINE)
        corner.y = -MeasureFont(font).tmAscent;
    else if ((align & TA_BOTTOM) != 0)
        corner.y = -size.cy;
    return corner;
}

/// An operation on source and destination alone: its result does not depend on a pattern.
bool NeedsNoBrush(DWORD operation) { return (operation >> 16 & 0xF) == (operation >> 20 & 0xF); }

} // namespace

CDC::CDC()
    : m_surface(MakeRasterSurface(nullptr))
{
    Reset();
}

CDC::CDC(std::shared_ptr<Surface> surface)
    : m_surface(std::move(surface))
    , m_isMemory(false)
{
    assert(m_surface);
    Reset();
}

CDC::~CDC() = default;

void CDC::Reset()
{
    m_firstFont.CreateFontIndirect(SystemFont());
    m_state = State();
    m_state.penObject = &m_firstPen;
    m_state.brushObject = &m_firstBrush;
    m_state.fontObject = &m_firstFont;
    m_state.font = m_firstFont.GetLogFont();
    m_saved.clear();
    m_bitmap = &m_noBitmap;
}

bool CDC::CreateCompatibleDC(CDC*)
{
    OwnSurface() = MakeRasterSurface(nullptr);
    m_isMemory = true;
    Reset();
    return true;
}

int CDC::GetDeviceCaps(int capability) const
{
    DeviceCapabilities const& caps = m_surface->Capabilities();
    switch (capability) {
    case TECHNOLOGY:
        return caps.technology;
    case HORZSIZE:
        return caps.horzSize;
    case VERTSIZE:
        return caps.vertSize;
    case HORZRES:
        return caps.horzRes;
    case VERTRES:
        return caps.vertRes;
    case BITSPIXEL:
        return caps.bitsPixel;
    case PLANES:
        return caps.planes;
    case LOGPIXELSX:
        return caps.logPixelsX;
    case LOGPIXELSY:
        return caps.logPixelsY;
    default:
        return 0;
    }
}

CPen* CDC::SelectObject(CPen* pen)
{
    if (!pen)
        return nullptr;
    m_state.pen = *pen;
    return std::exchange(m_state.penObject, pen);
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    if (!brush)
        return nullptr;
    m_state.brush = *brush;
    return std::exchange(m_state.brushObject, brush);
}

CFont* CDC::SelectObject(CFont* font)
{
    if (!font)
        return nullptr;
    m_state.font = font->GetLogFont() ? font->GetLogFont() : m_firstFont.GetLogFont();
    return std::exchange(m_state.fontObject, font);
}

CBitmap* CDC::SelectObject(CBitmap* bitmap)
{
    if (!m_isMemory)
        return nullptr;
    if (!bitmap)
        bitmap = &m_noBitmap;
    if (bitmap->GetRaster().get() != OwnSurface()->GetRaster())
        OwnSurface() = MakeRasterSurface(bitmap->GetRaster());
    return std::exchange(m_bitmap, bitmap);
}

int CDC::SaveDC()
{
    m_saved.push_back(m_state);
    return static_cast<int>(m_saved.size());
}

bool CDC::RestoreDC(int level)
{
    int const count = static_cast<int>(m_saved.size());
    if (level < 0)
        level = level >= -count ? count + 1 + level : 0;
    if (level < 1 || level > count)
        return false;
    m_state = std::move(m_saved[static_cast<std::size_t>(level - 1)]);
    m_saved.resize(static_cast<std::size_t>(level - 1));
    return true;
}

void CDC::SelectClipRgn(CRgn const* region) { m_state.clip.region = region ? region->GetRegion() : nullptr; }

void CDC::IntersectClipRect(CRect const& rect)
{
    Region inside = Region::FromRect(ToDevice(rect));
    if (auto const& before = m_state.clip.region)
        inside = Region::Intersection(*before, inside);
    m_state.clip.region = std::make_shared<Region const>(std::move(inside));
}

CRect CDC::GetClipBox() const
{
    CRect box;
    box.IntersectRect(m_surface->Bounds(), m_state.clip.Box());
    return MoveRect(box, CPoint() - m_state.origin);
}

CPoint CDC::ToDevice(CPoint p) const { return MovePoint(p, m_state.origin); }
CRect CDC::ToDevice(CRect const& r) const { return MoveRect(r, m_state.origin); }

LineStyle CDC::CurrentLine() const
{
    LineStyle line;
    line.style = m_state.pen.GetStyle();
    line.width = std::max(1, m_state.pen.GetWidth());
    line.colour = m_state.pen.GetColour();
    bool const isStyled = line.style >= PS_DASH && line.style <= PS_DASHDOTDOT;
    if (line.style != PS_NULL && (!isStyled || line.width > 1))
        line.style = PS_SOLID;
    else if (isStyled && m_state.backMode == OPAQUE)
        line.gapColour = m_state.backColour;
    return line;
}

void CDC::LineTo(int x, int y)
{
    CPoint const ends[] { ToDevice(MoveTo(x, y)), ToDevice(m_state.position) };
    if (m_state.pen.GetStyle() != PS_NULL)
        m_surface->Polyline(ends, CurrentLine(), m_state.clip);
}

void CDC::Polyline(std::span<CPoint const> points)
{
    if (m_state.pen.GetStyle() == PS_NULL || points.size() < 2)
        return;
    if (m_state.origin == CPoint()) {
        m_surface->Polyline(points, CurrentLine(), m_state.clip);
        return;
    }
    std::vector<CPoint> moved(points.begin(), points.end());
    for (CPoint& p : moved)
        p = ToDevice(p);
    m_surface->Polyline(moved, CurrentLine(), m_state.clip);
}

void CDC::Ellipse(CRect const& box)
{
    LineStyle const line = CurrentLine();
    COLORREF const fill = m_state.brush.GetColour();
    bool const outlined = line.style != PS_NULL;
    bool const filled = !m_state.brush.IsNull();
    if (outlined || filled)
        m_surface->Ellipse(ToDevice(box), outlined ? &line : nullptr, filled ? &fill : nullptr, m_state.clip);
}

void CDC::Arc(CRect const& box, CPoint start, CPoint end)
{
    if (m_state.pen.GetStyle() != PS_NULL)
        m_surface->Arc(ToDevice(box), ToDevice(start), ToDevice(end), CurrentLine(), m_state.clip);
}

void CDC::FillRect(CRect const& rect, CBrush const* brush)
{
    if (brush && !brush->IsNull())
        FillSolidRect(rect, brush->GetColour());
}

void CDC::FillSolidRect(CRect const& rect, COLORREF colour)
{
    m_surface->Fill(Region::FromRect(ToDevice(rect)), VectorBrush::Solid(colour), m_state.clip);
}

void CDC::FillRgn(CRgn const* region, CBrush const* brush)
{
    if (!region || !region->GetRegion() || !brush || brush->IsNull())
        return;
    if (m_state.origin == CPoint()) {
        m_surface->Fill(*region->GetRegion(), VectorBrush::Solid(brush->GetColour()), m_state.clip);
        return;
    }
    Region moved = *region->GetRegion();
    moved.Offset(m_state.origin.x, m_state.origin.y);
    m_surface->Fill(moved, VectorBrush::Solid(brush->GetColour()), m_state.clip);
}

void CDC::SetPixel(int x, int y, COLORREF colour)
{
    m_surface->Fill(Region::FromRect({ ToDevice({ x, y }), CSize(1, 1) }), VectorBrush::Solid(colour), m_state.clip);
}

void CDC::Repeat(std::function<void(CDC&)> const& draw, std::span<CPoint const> points, BYTE alpha)
{
    auto const recording
        = std::make_shared<RecordingSurface>(m_surface->Bounds().Size(), m_surface->Capabilities(), IsPrinting());
    CDC once(recording);
    once.m_state = m_state;
    once.m_state.origin = {};
    once.m_state.clip = {};
    draw(once);
    if (m_state.origin == CPoint())
        return m_surface->Repeat(recording->Primitives(), points, alpha, m_state.clip);
    std::vector<CPoint> moved(points.begin(), points.end());
    for (CPoint& p : moved)
        p = ToDevice(p);
    m_surface->Repeat(recording->Primitives(), moved, alpha, m_state.clip);
}

COLORREF CDC::GetPixel(int x, int y) const
{
    Raster const* const raster = m_surface->GetRaster();
    CPoint const at = ToDevice({ x, y });
    return raster && raster->Bounds().PtInRect(at) ? Raster::ToColour(raster->Row(at.y)[at.x]) : CLR_INVALID;
}

void CDC::TextOut(int x, int y, CString const& text)
{
    if (text.IsEmpty())
        return;
    LOGFONT const& font = *m_state.font;
    CPoint const corner = CellCorner(font, text, m_state.textAlign);
    // Vertical text runs upwards: along it is up, from its top to its bottom is right.
    CPoint const offset = text::IsVertical(font) ? CPoint(corner.y, -corner.x) : corner;
    TextRun run;
    run.text = text;
    run.at = MovePoint(ToDevice({ x, y }), offset);
    run.font = &font;
    run.colour = m_state.textColour;
    if (m_state.backMode == OPAQUE)
        run.cellColour = m_state.backColour;
    m_surface->Text(run, m_state.clip);
}

CSize CDC::GetTextExtent(CString const& text) const
{
    return text.IsEmpty() ? CSize() : MeasureText(*m_state.font, text);
}

TEXTMETRIC CDC::GetTextMetrics() const { return MeasureFont(*m_state.font); }

bool CDC::BitBlt(int x, int y, int w, int h, CDC* source, int sx, int sy, DWORD operation)
{
    return StretchBlt(x, y, w, h, source, sx, sy, w, h, operation);
}

bool CDC::StretchBlt(int x, int y, int w, int h, CDC* source, int sx, int sy, int sw, int sh, DWORD operation)
{
    if (!source || !NeedsNoBrush(operation))
        return false;
    ImageCopy copy;
    copy.source = source->m_surface->GetRaster();
    if (!copy.source)
        return false;
    auto const rectangle = [](CPoint at, int width, int height) {
        return CRect(at.x, at.y, ClampCoordinate(static_cast<long long>(at.x) + width),
            ClampCoordinate(static_cast<long long>(at.y) + height));
    };
    copy.from = rectangle(source->ToDevice({ sx, sy }), sw, sh);
    copy.to = rectangle(ToDevice({ x, y }), w, h);
    copy.operation = operation;
    copy.zeroColour = m_state.textColour;
    copy.oneColour = m_state.backColour;
    copy.maskColour = source->m_state.backColour;
    m_surface->Image(copy, m_state.clip);
    return true;
}

LentSurface::LentSurface(CDC& dc, std::shared_ptr<Surface> surface)
    : m_dc(dc)
{
    assert(surface);
    if (dc.m_own)
        m_outer = std::move(dc.m_surface);
    else
        dc.m_own = std::move(dc.m_surface);
    dc.m_surface = std::move(surface);
}

LentSurface::~LentSurface()
{
    if (m_outer)
        m_dc.m_surface = std::move(m_outer);
    else
        m_dc.m_surface = std::exchange(m_dc.m_own, nullptr);
}

} // namespace ombrel
