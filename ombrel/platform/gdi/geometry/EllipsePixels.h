#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <span>
#include <vector>

namespace ombrel {

/// The one-pixel outline of an ellipse whose right and bottom edges are excluded, counter-clockwise from its leftmost
/// pixels; every pixel once. Boxes up to two pixels wide or high are outline wholly; a single pixel has none.
/// Sides up to kLargestEllipse.
std::vector<CPoint> EllipseOutline(CRect const& box);

/// The outermost outline pixels of each row of the box, from its top.
struct EllipseRow {
    int left;
    int right;
};
std::vector<EllipseRow> EllipseRows(CRect const& box, std::span<CPoint const> outline);

/// The part of an outline that an arc draws, counter-clockwise from the radial through start to that through end; the
/// last pixel is left out, as a line leaves out its end.
std::vector<CPoint> ArcPixels(CRect const& box, CPoint start, CPoint end);

/// The ellipse that spans the columns left … right and the rows top … bottom as a closed curve, clockwise from its
/// rightmost point and back; within half a pixel of the ellipse. A box without width or height is a line there and
/// back.
std::vector<CPoint> FlattenedEllipse(CRect const& box);
/// The part of that curve counter-clockwise from the radial through start to that through end; all of it when they are
/// the same.
std::vector<CPoint> FlattenedArc(CRect const& box, CPoint start, CPoint end);

} // namespace ombrel
