#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/Coordinates.h"

#include <memory>
#include <span>
#include <vector>

namespace ombrel {

/// What is inside where a polygon crosses itself: points that an odd number of edges encloses, or all that it winds
/// round.
enum PolyFillMode { ALTERNATE = 1, WINDING = 2 };

/// A set of device pixels, kept as spans ordered by row and column.
///
/// A polygon covers, on each row y, the pixels from where its edges cross the line at y, rounded up, to the next
/// crossing, rounded up: left and top edges are inside, right and bottom edges outside. Its spans are found when they
/// are asked for, so that a shape that reaches far beyond the bitmap costs only what is visible.
class OMBREL_EXPORT Region {
public:
    /// The pixels left ≤ x < right of row y.
    struct Span {
        int y;
        int left;
        int right;
        friend bool operator==(Span const&, Span const&) = default;
    };
    Region() = default;
    static Region FromRect(CRect const& rect);
    static Region FromPolygon(std::span<CPoint const> points, PolyFillMode mode);
    static Region Intersection(Region const& a, Region const& b);

    bool IsEmpty() const { return m_box.IsRectEmpty(); }
    /// A rectangle has no spans of its own: Box is the whole of it.
    bool IsRect() const { return m_isRect; }
    CRect const& Box() const { return m_box; }
    bool Contains(CPoint p) const;
    /// The spans of the rows top ≤ y < bottom (none for a rectangle), disjoint and in order. Valid until the next call.
    std::span<Span const> Spans(int top, int bottom) const;
    /// The corner points that the region was made from, for surfaces that keep shapes exact; empty for others.
    std::vector<CPoint> const& Outline() const { return m_outline; }
    PolyFillMode OutlineMode() const { return m_outlineMode; }
    void Offset(int dx, int dy);
    /// Whether both have the same pixels.
    OMBREL_EXPORT friend bool operator==(Region const& a, Region const& b);

private:
    struct Rows {
        int top = 0;
        int bottom = 0;
    };
    CRect m_box;
    bool m_isRect = true;
    /// The spans of the rows m_spanRows.
    mutable std::vector<Span> m_spans;
    mutable Rows m_spanRows;
    std::vector<CPoint> m_outline;
    PolyFillMode m_outlineMode = ALTERNATE;
};

/// Where drawing is let through: a box and, when there is one, a region as well.
struct OMBREL_EXPORT Clip {
    CRect box { -kCoordinateLimit, -kCoordinateLimit, kCoordinateLimit, kCoordinateLimit };
    std::shared_ptr<Region const> region;
    /// The smallest rectangle outside which nothing is drawn.
    CRect Box() const;
    bool Contains(CPoint p) const;
    /// Whether both have the same box and let the same pixels of it through.
    OMBREL_EXPORT friend bool operator==(Clip const& a, Clip const& b);
};

} // namespace ombrel
