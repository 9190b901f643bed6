#include "ombrel/drawing/2DSymbol.h"
#include "ombrel/drawing/Opacity.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <array>

namespace ombrel {
namespace {

/// Fills the polygon of the corners with the context's brush when asked to, and outlines it back to its first corner.
template <std::size_t N> void DrawPolygon(CDC& dc, std::array<CPoint, N> const& corners, int fill)
{
    if (fill) {
        CRgn region;
        region.CreatePolygonRgn(corners, ALTERNATE);
        dc.PaintRgn(&region);
    }
    std::array<CPoint, N + 1> outline;
    for (std::size_t i = 0; i <= N; ++i)
        outline[i] = corners[i % N];
    dc.Polyline(outline);
}

void DrawSegment(CDC& dc, CPoint from, CPoint to) { dc.Polyline(std::array { from, to }); }

} // namespace

void C2DSymbol::DrawSymbol(SymbolType type, CPort* port, CRect rect, COLORREF colour, int fill, COLORREF fillColour)
{
    if ((rect.Width() == 0 || rect.Height() == 0) && type != Pixel)
        return;
    switch (type) {
    case Circle:
        return DrawCircle(port, rect, colour, fill, fillColour);
    case Square:
        return DrawSquare(port, rect, colour, fill, fillColour);
    case Triangle:
        return DrawTriangle(port, rect, colour, fill, fillColour);
    case InvertedTriangle:
        return DrawInvertedTriangle(port, rect, colour, fill, fillColour);
    case Diamond:
        return DrawDiamond(port, rect, colour, fill, fillColour);
    case Cross:
        return DrawCross(port, rect, colour);
    case Plus:
        return DrawPlus(port, rect, colour);
    case Pixel:
        return DrawPixel(port, rect, colour);
    case None:
        break;
    }
}

void C2DSymbol::DrawSymbols(SymbolType type, CPort* port, std::span<CPoint const> centres, int half, COLORREF colour,
    int fill, COLORREF fillColour)
{
    port->GetDC()->Repeat(
        [&](CDC& dc) {
            CPort once(&dc, port->GetWindowRect(), port->GetMapRect(), port->GetRealRect());
            DrawSymbol(type, &once, { -half, -half, half, half }, colour, fill, fillColour);
        },
        centres, AlphaOf(colour));
}

void C2DSymbol::DrawCircle(CPort* port, CRect rect, COLORREF, int fill, COLORREF)
{
    CDC& dc = *port->GetDC();
    rect.left += 1;
    rect.top += 1;
    if (fill)
        dc.Ellipse(rect);
    dc.Arc(rect, rect.TopLeft(), rect.BottomRight());
    dc.Arc(rect, rect.BottomRight(), rect.TopLeft());
}

void C2DSymbol::DrawSquare(CPort* port, CRect r, COLORREF, int fill, COLORREF)
{
    std::array const corners { CPoint(r.left, r.top), CPoint(r.right, r.top), CPoint(r.right, r.bottom),
        CPoint(r.left, r.bottom) };
    DrawPolygon(*port->GetDC(), corners, fill);
}

void C2DSymbol::DrawTriangle(CPort* port, CRect r, COLORREF, int fill, COLORREF)
{
    std::array const corners { CPoint(r.left, r.top), CPoint((r.left + r.right) / 2, r.bottom),
        CPoint(r.right, r.top) };
    DrawPolygon(*port->GetDC(), corners, fill);
}

void C2DSymbol::DrawInvertedTriangle(CPort* port, CRect r, COLORREF, int fill, COLORREF)
{
    std::array const corners { CPoint(r.left, r.bottom), CPoint((r.left + r.right) / 2, r.top),
        CPoint(r.right, r.bottom) };
    DrawPolygon(*port->GetDC(), corners, fill);
}

void C2DSymbol::DrawDiamond(CPort* port, CRect r, COLORREF, int fill, COLORREF)
{
    int const x = (r.left + r.right) / 2;
    int const y = (r.top + r.bottom) / 2;
    std::array const corners { CPoint(x, r.top), CPoint(r.right, y), CPoint(x, r.bottom), CPoint(r.left, y) };
    DrawPolygon(*port->GetDC(), corners, fill);
}

void C2DSymbol::DrawCross(CPort* port, CRect r, COLORREF)
{
    DrawSegment(*port->GetDC(), { r.left, r.bottom }, { r.right + 1, r.top - 1 });
    DrawSegment(*port->GetDC(), { r.right, r.bottom }, { r.left - 1, r.top - 1 });
}

void C2DSymbol::DrawPlus(CPort* port, CRect r, COLORREF)
{
    int const x = (r.left + r.right) / 2;
    int const y = (r.top + r.bottom) / 2;
    DrawSegment(*port->GetDC(), { x, r.top }, { x, r.bottom + 1 });
    DrawSegment(*port->GetDC(), { r.right, y }, { r.left - 1, y });
}

void C2DSymbol::DrawPixel(CPort* port, CRect rect, COLORREF colour)
{
    CDC& dc = *port->GetDC();
    if (!dc.IsPrinting()) {
        dc.SetPixel(rect.left, rect.top, colour);
        return;
    }
    // A dot of the printer could not be seen: it is as large as a pixel on a screen.
    constexpr int kScreenDotsPerInch = 96;
    int const side = std::max(1, dc.GetDeviceCaps(LOGPIXELSX) / kScreenDotsPerInch);
    dc.FillSolidRect(CRect(CPoint(rect.left - side / 2, rect.top - side / 2), CSize(side, side)), colour);
}

} // namespace ombrel
