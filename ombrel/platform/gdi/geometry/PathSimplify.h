#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <span>
#include <vector>

namespace ombrel {

/// Fewer points for the same line. Those kept are some of the given ones, in order, the first and the last among them;
/// every dropped point lies within the tolerance (pixels) of the segment that takes its place. Points that go back on
/// the line's way are kept, so a run up and down one column keeps its extremes. With tolerance 0 only repeated points
/// and points between others go, and lengths along the line stay exact. Takes time in proportion to the points.
std::vector<CPoint> SimplifyPath(std::span<CPoint const> points, double tolerance);

} // namespace ombrel
