#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/gdi/Figures.h"
#include "ombrel/platform/gdi/GdiObjects.h"
#include "ombrel/platform/gdi/Raster.h"
#include "ombrel/platform/gdi/Region.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ombrel {

/// What a device says of itself; sizes of the whole device, not of a bitmap selected into it.
struct DeviceCapabilities {
    int technology = 1;
    int horzSize = 271;
    int vertSize = 203;
    int horzRes = 1024;
    int vertRes = 768;
    int logPixelsX = 96;
    int logPixelsY = 96;
    int bitsPixel = 32;
    int planes = 1;
};

/// A line of the device context's pen.
struct LineStyle {
    int style = PS_SOLID;
    int width = 1;
    COLORREF colour = 0;
    /// The colour between dashes; without one they are left alone.
    std::optional<COLORREF> gapColour;
    friend bool operator==(LineStyle const&, LineStyle const&) = default;
};

/// A colour with its opacity, 0 transparent … 255 opaque.
struct VectorColour {
    COLORREF colour = 0;
    BYTE alpha = 255;
    friend bool operator==(VectorColour const&, VectorColour const&) = default;
};

/// A pen of the anti-aliasing vector interface: flat ends, mitred corners.
struct VectorPen {
    VectorColour colour;
    double width = 1.0;
    /// Lengths "on", "off", … in multiples of the width, from the first point on; empty is solid.
    std::span<double const> dashes;
};

/// How many hatch styles there are.
inline constexpr int kHatchStyles = 53;

/// A solid fill, or one of the 53 hatch styles anchored to the device's pixel (0, 0).
struct OMBREL_EXPORT VectorBrush {
    VectorColour foreground;
    /// 0 … 52; none for a solid brush.
    std::optional<int> hatchStyle;
    VectorColour background { 0, 0 };
    static VectorBrush Solid(COLORREF c) { return { { c, 255 }, {}, {} }; }
    /// Styles outside 0 … 52 give a solid brush.
    static VectorBrush Hatch(int style, VectorColour foreground, VectorColour background);
    friend bool operator==(VectorBrush const&, VectorBrush const&) = default;
};

/// One text output.
struct TextRun {
    CString text;
    /// The reference point: the cell's top-left corner, about which vertical text is turned.
    CPoint at;
    LOGFONT const* font = nullptr;
    COLORREF colour = 0;
    /// Fills the cell when present.
    std::optional<COLORREF> cellColour;
};

/// How the pixels of a picture and those below it become one.
enum RasterOperation : DWORD {
    SRCCOPY = 0x00CC0020,
    SRCAND = 0x008800C6,
    SRCPAINT = 0x00EE0086,
    SRCINVERT = 0x00660046,
    NOTSRCCOPY = 0x00330008,
};

/// A copy of part of a bitmap; the rectangles have the same size or the picture is stretched.
struct ImageCopy {
    Raster const* source = nullptr;
    CRect from;
    CRect to;
    DWORD operation = SRCCOPY;
    /// Colours that a 1-bit source's zeros and ones become.
    COLORREF zeroColour = 0;
    COLORREF oneColour = 0xFFFFFF;
    /// The source colour that becomes white in a 1-bit destination.
    COLORREF maskColour = 0xFFFFFF;
};

struct RecordedPrimitive;

/// Where a device context's primitives go, in device pixels, y down; coordinates as Coordinates.h limits them.
///
/// A new surface answers what is pure here: its bounds, lines, strokes, fills, texts and pictures. Ellipses and arcs
/// come to it as lines and fills, marks one by one, and rectangles and single pixels as fills, unless it has a better
/// way.
class OMBREL_EXPORT Surface {
public:
    virtual ~Surface() = default;
    /// Those of the screen, unless the surface is something else.
    virtual DeviceCapabilities const& Capabilities() const;
    /// The pixels that can be drawn on.
    virtual CRect Bounds() const = 0;
    /// A page of a printer rather than a screen.
    virtual bool IsPrinting() const { return false; }

    /// Lines one after the other with the last point left out; a start equal to its end draws nothing (width 1).
    virtual void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) = 0;
    /// Lines of the vector interface: both ends included at width 1.
    virtual void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) = 0;
    virtual void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) = 0;
    virtual void Text(TextRun const& run, Clip const& clip) = 0;
    virtual void Image(ImageCopy const& copy, Clip const& clip) = 0;

    /// The outline by outline (when given), filled (when given) with a colour; right and bottom edges excluded.
    virtual void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip);
    /// The outline counter-clockwise from the radial through start to that through end.
    virtual void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip);
    /// Draws a mark, made of primitives round (0, 0), at each of the points, one point after the other. The primitives'
    /// own clips do not count, and pictures are left out. A mark with an alpha below 255 is laid over what is there as
    /// a whole, so that marks show through each other but no part of a mark through another; surfaces that cannot do
    /// that, and marks that are large or have anything but plain parts, draw opaquely.
    virtual void Repeat(
        std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip);

    /// The bitmap that a raster surface draws on, else null.
    virtual Raster const* GetRaster() const { return nullptr; }
};

/// A surface that draws on a bitmap in memory and reports the screen's capabilities.
OMBREL_EXPORT std::unique_ptr<Surface> MakeRasterSurface(std::shared_ptr<Raster> raster);

} // namespace ombrel
