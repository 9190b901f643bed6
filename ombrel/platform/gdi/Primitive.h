#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Surface.h"

#include <cstdint>
#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace ombrel {

/// What can be drawn on a surface, with all that it refers to.
namespace primitive {

/// Lines of whole pixels from point to point.
struct Polyline {
    std::vector<CPoint> points;
    LineStyle line;
    friend bool operator==(Polyline const&, Polyline const&) = default;
};

/// A VectorPen that owns its dash lengths.
struct StrokePen {
    VectorColour colour;
    double width = 1.0;
    std::vector<double> dashes;
    friend bool operator==(StrokePen const&, StrokePen const&) = default;
};

/// Figures drawn by a vector pen.
struct Stroke {
    std::vector<CPoint> points;
    /// Where the figures begin.
    std::vector<std::size_t> starts;
    StrokePen pen;
    bool smooth = false;
    friend bool operator==(Stroke const&, Stroke const&) = default;
};

/// Single pixels and rectangles are rectangular regions.
struct Fill {
    Region region;
    VectorBrush brush;
    friend bool operator==(Fill const&, Fill const&) = default;
};

/// One text output.
struct Text {
    CString text;
    CPoint at;
    LOGFONT font;
    COLORREF colour = 0;
    std::optional<COLORREF> cellColour;
    friend bool operator==(Text const&, Text const&) = default;
};

/// Not the picture itself.
struct Image {
    CRect from;
    CRect to;
    DWORD operation = 0;
    /// Over the pixels that are copied, and the colours of a 1-bit source.
    std::uint64_t pixelSum = 0;
    friend bool operator==(Image const&, Image const&) = default;
};

/// An ellipse in its box; without a line or a fill that part is not drawn.
struct Ellipse {
    CRect box;
    std::optional<LineStyle> line;
    std::optional<COLORREF> fill;
    friend bool operator==(Ellipse const&, Ellipse const&) = default;
};

/// The part of the outline of an ellipse between the rays to two points.
struct Arc {
    CRect box;
    CPoint start;
    CPoint end;
    LineStyle line;
    friend bool operator==(Arc const&, Arc const&) = default;
};

} // namespace primitive

/// One primitive that was drawn, and where it was let through. Equal ones draw the same.
struct RecordedPrimitive {
    std::variant<primitive::Polyline, primitive::Stroke, primitive::Fill, primitive::Text, primitive::Image,
        primitive::Ellipse, primitive::Arc>
        what;
    Clip clip;
    /// The primitive when it is one of this kind, else null.
    template <typename Kind> Kind const* As() const { return std::get_if<Kind>(&what); }
    friend bool operator==(RecordedPrimitive const&, RecordedPrimitive const&) = default;
};

/// Draws a primitive again, moved, on another surface. Its own clip does not count; a picture is not drawn, since only
/// a sum of its pixels was kept.
OMBREL_EXPORT void Replay(RecordedPrimitive const& primitive, CPoint by, Surface& surface, Clip const& clip);
/// Whether the primitive gives every pixel that it touches a colour that does not depend on what was there nor on where
/// it is drawn: then drawing it again changes nothing.
OMBREL_EXPORT bool IsPlain(RecordedPrimitive const& primitive);
/// A box around all that the primitives touch, for plain ones.
OMBREL_EXPORT CRect ReachOf(std::span<RecordedPrimitive const> primitives);

} // namespace ombrel
