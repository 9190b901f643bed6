#pragma once
#include "ombrel/platform/gdi/Surface.h"

#include <optional>
#include <span>
#include <vector>

namespace ombrel {

/// Part of an ellipse: angles in radians on the ellipse's own parameter, clockwise on the page (y down).
struct PageArc {
    double centreX = 0.0;
    double centreY = 0.0;
    double radiusX = 0.0;
    double radiusY = 0.0;
    double start = 0.0;
    /// A whole turn or more is the closed ellipse.
    double sweep = 0.0;
    bool IsWhole() const;
};

/// Lines and arcs of one paint, in device pixels. Whole coordinates are the corners of pixels.
struct PageShape {
    /// Added to both coordinates of the points: lines of an odd width run through the middle of pixels.
    double offset = 0.0;
    std::vector<CPoint> points;
    struct Figure {
        std::size_t first = 0;
        bool closed = false;
    };
    std::vector<Figure> figures;
    std::vector<PageArc> arcs;
    void Add(std::span<CPoint const> figurePoints, bool closed);
    void AddRect(CRect const& rect);
    std::span<CPoint const> PointsOf(std::size_t figure) const;
    bool IsEmpty() const { return figures.empty() && arcs.empty(); }
    /// Around all points and arcs.
    CRect Box() const;
};

/// How a shape's lines look; widths and lengths in device pixels.
struct PagePen {
    VectorColour colour;
    double width = 1.0;
    /// Round ends and joins, or flat ends and mitred corners.
    bool round = false;
    std::vector<double> dashes;
    friend bool operator==(PagePen const&, PagePen const&) = default;
};

struct PagePaint {
    std::optional<VectorBrush> fill;
    std::optional<PagePen> pen;
    bool winding = false;
    /// Fillings side by side must leave no seam between them, whatever the resolution of the viewer.
    enum class Edges { Smooth, Shared, Upright };
    Edges edges = Edges::Smooth;
    friend bool operator==(PagePaint const&, PagePaint const&) = default;
};

/// The outline of a region as a closed polygon, or as rectangles that cover what it has within the bounds.
PageShape RegionShape(Region const& region, CRect const& bounds);

} // namespace ombrel
