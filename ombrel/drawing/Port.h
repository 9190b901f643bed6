#pragma once
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/GdiObjects.h"

#include <cstdint>

namespace ombrel {

/// How a port maps real coordinates (y up) to device pixels (y down): a small value to keep in a loop over points.
///
/// X and Y give exactly what CPort::UnitsToWindow gives. Results lie in −32000 … 32000; what is not a number maps to 0
/// (plus the window's top).
struct OMBREL_EXPORT PortMapping {
    static constexpr int kDeviceLimit = kMappedLimit;
    double realLeft = 0.0;
    double realTop = 0.0;
    /// Pixels per real unit.
    double xScale = 0.0;
    double yScale = 0.0;
    /// The device point that (realLeft, realTop) maps to is (mapLeft, mapTop + windowTop).
    double mapLeft = 0.0;
    double mapTop = 0.0;
    int windowTop = 0;

    int X(double x) const { return Device((x - realLeft) * xScale + mapLeft, 0); }
    int Y(double y) const { return Device((realTop - y) * yScale + mapTop, windowTop); }

private:
    /// Rounds as VUNearest does, adds the offset and limits; limiting first keeps the conversion defined.
    static int Device(double v, int offset)
    {
        double const low = -static_cast<double>(kDeviceLimit) - offset;
        double const high = static_cast<double>(kDeviceLimit) - offset;
        double rounded = v + 0.5;
        rounded = rounded == rounded ? rounded : 0.0;
        rounded = rounded < high ? rounded : high;
        rounded = rounded > low ? rounded : low;
        return static_cast<int>(static_cast<std::int64_t>(rounded) + offset);
    }
};

/// The drawing port: binds a device context to a mapping from real coordinates (y up) to device pixels (y down).
///
/// The real rectangle is mapped onto the map rectangle. Device points are moved down by the window rectangle's top in
/// both directions, so that UnitsToWindow and WindowToUnits undo each other for the window's pixels (rounding cuts
/// towards zero: left of 0 and above the window's top a pixel may come back as its neighbour). The static forms do not
/// know a window.
/// Made for one draw; the device context is not owned.
class OMBREL_EXPORT CPort : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CPort() = default;
    /// As Set. Nothing is clipped at first.
    CPort(CDC* dc, CRect const& window, CRect const& map, CRealRect const& real) { Set(dc, window, map, real); }
    void Set(CDC* dc, CRect const& window, CRect const& map, CRealRect const& real);
    void SetRects(CRect const& window, CRect const& map, CRealRect const& real);
    CDC* GetDC() const { return m_dc; }
    /// The device rectangle of the whole drawing.
    CRect const& GetWindowRect() const { return m_window; }
    /// The device rectangle that the real rectangle is mapped onto.
    CRect const& GetMapRect() const { return m_map; }
    CRealRect const& GetRealRect() const { return m_real; }
    /// A font that lives as long as the port, for components to make and select.
    CFont& GetFont() { return m_font; }
    PortMapping const& GetMapping() const { return m_mapping; }
    /// Pixels per real unit.
    double GetXScale() const { return m_mapping.xScale; }
    double GetYScale() const { return m_mapping.yScale; }

    /// Lines and pixels are clipped to the device rectangle (copied); null lifts that.
    void SetClipRect(CRect const* rect);
    /// Not 0 while clipping; rect receives the last clip rectangle.
    int GetClipRect(CRect& rect) const;

    /// The device pixel, each coordinate limited to −32000 … 32000.
    POINT UnitsToWindow(CRealPoint const& p) const { return { m_mapping.X(p.x), m_mapping.Y(p.y) }; }
    CRealPoint WindowToUnits(POINT p) const;
    /// Lengths in pixels of real lengths from the origin, never negative.
    int UnitsToWindowLength(double length) const;
    int UnitsToWindowHeight(double height) const;
    CSize UnitsToWindow(CRealSize const& size) const;
    /// Real lengths of lengths in pixels, never negative.
    double WindowToUnitsLength(int length) const;
    double WindowToUnitsHeight(int height) const;
    CRealSize WindowToUnits(CSize size) const;

    /// The mapping without a port; the window rectangle is not used.
    static POINT UnitsToWindow(CRealPoint const& p, CRect const& window, CRect const& map, CRealRect const& real);
    static CRealPoint WindowToUnits(POINT p, CRect const& window, CRect const& map, CRealRect const& real);
    /// Limits both coordinates to −32000 … 32000.
    static void LimitToWindow(POINT& p);

    /// The position that LineTo draws from.
    void MoveTo(CRealPoint const& p);
    void MoveToEx(CRealPoint const& p) { MoveTo(p); }
    /// Draws with the device context's pen up to, not including, the point, which becomes the position. While
    /// clipping, only the part in the clip rectangle, all four edges included.
    void LineTo(CRealPoint const& p);
    /// Device coordinates. While clipping, only inside the clip rectangle, right and bottom edges excluded.
    void SetPixel(int x, int y, COLORREF colour);
    /// A dotted line, never clipped by the port: every second pixel (dense not 0) or every third. The third argument
    /// means nothing.
    void LineDDA(CRealPoint const& p1, CRealPoint const& p2, int, COLORREF colour, int dense);
    /// With the device context's font, colour and alignment.
    void TextOutW(CString const& text, CRealPoint const& p);
    /// The text's size in real units; vertical not 0 exchanges width and height before they are converted.
    CRealSize GetTextExtent(CString const& text, int vertical) const;

private:
    bool IsInClip(CPoint p) const;
    void ClippedLineTo(CPoint from, CPoint to);

    CDC* m_dc = nullptr;
    CFont m_font;
    CRealRect m_real;
    PortMapping m_mapping;
    CRect m_window;
    CRect m_map;
    CRect m_clip;
    bool m_clipping = false;
    /// The last device point moved or drawn to.
    CPoint m_position;
};

} // namespace ombrel
