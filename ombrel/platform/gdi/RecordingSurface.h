#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ombrel {

/// A VectorPen that owns its dash lengths.
struct RecordedPen {
    VectorColour colour;
    double width = 1.0;
    std::vector<double> dashes;
    friend bool operator==(RecordedPen const&, RecordedPen const&) = default;
};

/// One primitive that was drawn. What does not belong to its kind keeps its default.
struct OMBREL_EXPORT RecordedPrimitive {
    enum class Kind { Polyline, Ellipse, Arc, FillRect, FillRegion, SetPixel, Text, Image, Stroke, Fill };
    Kind kind;
    /// Polyline, Stroke: the points. Arc: start and end. SetPixel, Text: one point. Regions: corner points, if known.
    std::vector<CPoint> points;
    /// Stroke: where the figures begin.
    std::vector<std::size_t> starts;
    /// Ellipse, Arc, FillRect, Image (where it goes to); the box of a region.
    CRect rect;
    /// FillRegion, Fill.
    Region region;
    CString text;
    LOGFONT font;
    /// Polyline, Arc, Ellipse (PS_NULL without an outline).
    LineStyle line;
    /// Ellipse: whether it has a filling. Text: whether its cell is filled.
    bool filled = false;
    /// FillRect, FillRegion, SetPixel, Text; the filling of an Ellipse.
    COLORREF colour = 0;
    COLORREF cellColour = 0;
    RecordedPen pen;
    VectorBrush brush;
    bool smooth = false;
    /// Image: the part of the source, the raster operation and a sum over its pixels and colours.
    CRect from;
    DWORD operation = 0;
    std::uint64_t pixelSum = 0;
    Clip clip;
    /// Whether both draw the same.
    friend bool operator==(RecordedPrimitive const&, RecordedPrimitive const&);
};

/// Draws a primitive again, moved, on another surface. Its own clip does not count; a picture is not drawn, since only
/// a sum of its pixels was kept.
OMBREL_EXPORT void Replay(RecordedPrimitive const& primitive, CPoint by, Surface& surface, Clip const& clip);
/// Whether the primitive gives every pixel that it touches a colour that does not depend on what was there nor on where
/// it is drawn: then drawing it again changes nothing.
OMBREL_EXPORT bool IsPlain(RecordedPrimitive const& primitive);
/// A box around all that the primitives touch, for plain ones.
OMBREL_EXPORT CRect ReachOf(std::span<RecordedPrimitive const> primitives);

/// Keeps a list of the primitives instead of drawing them: for tests, and for measuring without drawing.
class OMBREL_EXPORT RecordingSurface : public Surface {
public:
    explicit RecordingSurface(CSize size, DeviceCapabilities const& capabilities = {}, bool printing = false);
    std::vector<RecordedPrimitive> const& Primitives() const { return m_primitives; }
    void Clear() { m_primitives.clear(); }
    /// The primitives as text, one a line, for failure messages.
    std::string Dump() const;

    DeviceCapabilities const& Capabilities() const override { return m_capabilities; }
    CRect Bounds() const override { return m_bounds; }
    bool IsPrinting() const override { return m_printing; }
    void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) override;
    void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip) override;
    void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip) override;
    void FillRect(CRect const& rect, COLORREF colour, Clip const& clip) override;
    void FillRegion(Region const& region, COLORREF colour, Clip const& clip) override;
    void SetPixel(CPoint p, COLORREF colour, Clip const& clip) override;
    void Text(TextRun const& run, Clip const& clip) override;
    void Image(ImageCopy const& copy, Clip const& clip) override;
    void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) override;
    void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) override;

private:
    RecordedPrimitive& Add(RecordedPrimitive::Kind kind, Clip const& clip);

    DeviceCapabilities m_capabilities;
    CRect m_bounds;
    bool m_printing;
    std::vector<RecordedPrimitive> m_primitives;
};

} // namespace ombrel
