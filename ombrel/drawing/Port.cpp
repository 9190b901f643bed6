#include "ombrel/drawing/Port.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/LineDDA.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace ombrel {

constinit CRuntimeClass const CPort::kClass = DynamicClass<CObject>("CPort");

void CPort::Set(CDC* dc, CRect const& window, CRect const& map, CRealRect const& real)
{
    m_dc = dc;
    SetRects(window, map, real);
}

void CPort::SetRects(CRect const& window, CRect const& map, CRealRect const& real)
{
    m_window = window;
    m_map = map;
    m_real = real;
    m_mapping.realLeft = real.left;
    m_mapping.realTop = real.bottom + real.Height();
    m_mapping.xScale = map.Width() / real.Width();
    m_mapping.yScale = map.Height() / real.Height();
    m_mapping.mapLeft = map.left;
    m_mapping.mapTop = map.top;
    m_mapping.windowTop = window.top;
}

void CPort::SetClipRect(CRect const* rect)
{
    m_clipping = rect != nullptr;
    if (rect)
        m_clip = *rect;
}

int CPort::GetClipRect(CRect& rect) const
{
    rect = m_clip;
    return m_clipping ? 1 : 0;
}

CRealPoint CPort::WindowToUnits(POINT p) const
{
    double const mapBottom = m_mapping.mapTop + m_map.Height();
    double const y = static_cast<double>(p.y) - m_mapping.windowTop;
    return { (p.x - m_mapping.mapLeft) / m_mapping.xScale + m_real.left,
        (mapBottom - y) / m_mapping.yScale + m_real.bottom };
}

int CPort::UnitsToWindowLength(double length) const { return std::abs(m_mapping.X(length) - m_mapping.X(0.0)); }

int CPort::UnitsToWindowHeight(double height) const { return std::abs(m_mapping.Y(height) - m_mapping.Y(0.0)); }

CSize CPort::UnitsToWindow(CRealSize const& size) const
{
    return { UnitsToWindowLength(size.cx), UnitsToWindowHeight(size.cy) };
}

double CPort::WindowToUnitsLength(int length) const
{
    return std::fabs(WindowToUnits(POINT { length, 0 }).x - WindowToUnits(POINT()).x);
}

double CPort::WindowToUnitsHeight(int height) const
{
    // The least int has no negative.
    int const up = -std::max(height, -std::numeric_limits<int>::max());
    return std::fabs(WindowToUnits(POINT { 0, up }).y - WindowToUnits(POINT()).y);
}

CRealSize CPort::WindowToUnits(CSize size) const
{
    return { WindowToUnitsLength(size.cx), WindowToUnitsHeight(size.cy) };
}

POINT CPort::UnitsToWindow(CRealPoint const& p, CRect const&, CRect const& map, CRealRect const& real)
{
    double const top = real.bottom + real.Height();
    POINT device { VUNearest((p.x - real.left) * map.Width() / real.Width() + map.left),
        VUNearest((top - p.y) * map.Height() / real.Height() + map.top) };
    LimitToWindow(device);
    return device;
}

CRealPoint CPort::WindowToUnits(POINT p, CRect const&, CRect const& map, CRealRect const& real)
{
    double const x = static_cast<double>(p.x) - map.left;
    double const y = static_cast<double>(map.top) + map.Height() - p.y;
    return { x / (map.Width() / real.Width()) + real.left, y / (map.Height() / real.Height()) + real.bottom };
}

void CPort::LimitToWindow(POINT& p)
{
    constexpr LONG kLimit = PortMapping::kDeviceLimit;
    p.x = std::clamp(p.x, -kLimit, kLimit);
    p.y = std::clamp(p.y, -kLimit, kLimit);
}

void CPort::MoveTo(CRealPoint const& p)
{
    m_position = UnitsToWindow(p);
    m_dc->MoveTo(m_position);
}

void CPort::LineTo(CRealPoint const& p)
{
    CPoint const to = UnitsToWindow(p);
    if (m_clipping)
        ClippedLineTo(m_position, to);
    else
        m_dc->LineTo(to);
    m_position = to;
}

bool CPort::IsInClip(CPoint p) const
{
    return p.x >= m_clip.left && p.x <= m_clip.right && p.y >= m_clip.top && p.y <= m_clip.bottom;
}

void CPort::ClippedLineTo(CPoint from, CPoint to)
{
    bool const fromIn = IsInClip(from);
    bool const toIn = IsInClip(to);
    if (fromIn && toIn) {
        m_dc->LineTo(to);
        return;
    }
    CPoint first;
    CPoint second;
    int const crossings = CVUtils::LineRectIntersect(m_clip, from, to, first, second);
    if (fromIn) {
        if (crossings > 0)
            m_dc->LineTo(first);
    } else if (toIn) {
        if (crossings > 0) {
            m_dc->MoveTo(first);
            m_dc->LineTo(to);
        }
    } else if (crossings == 2) {
        m_dc->MoveTo(first);
        m_dc->LineTo(second);
    } else {
        m_dc->MoveTo(to);
    }
}

void CPort::SetPixel(int x, int y, COLORREF colour)
{
    if (!m_clipping || m_clip.PtInRect({ x, y }))
        m_dc->SetPixel(x, y, colour);
}

void CPort::LineDDA(CRealPoint const& p1, CRealPoint const& p2, int, COLORREF colour, int dense)
{
    POINT const from = UnitsToWindow(p1);
    POINT const to = UnitsToWindow(p2);
    int const period = dense != 0 ? 2 : 3;
    int step = 0;
    ombrel::LineDDA(from.x, from.y, to.x, to.y, [&](int x, int y) {
        if (++step % period == 0)
            m_dc->SetPixel(x, y, colour);
    });
}

void CPort::TextOutW(CString const& text, CRealPoint const& p)
{
    POINT const at = UnitsToWindow(p);
    m_dc->TextOut(at.x, at.y, text);
}

CRealSize CPort::GetTextExtent(CString const& text, int vertical) const
{
    CSize const extent = m_dc->GetTextExtent(text);
    return WindowToUnits(vertical != 0 ? CSize(extent.cy, extent.cx) : extent);
}

} // namespace ombrel
