#pragma once
#include "ombrel/platform/gdi/Primitive.h"

#include <span>
#include <vector>

namespace ombrel {

/// What of a mark shows on paper: an arc along the outline that was just drawn with the same pen does not.
std::vector<RecordedPrimitive> WithoutRedrawn(std::span<RecordedPrimitive const> mark);
/// The points in order, each place only where it comes last: what is drawn there later hides what was drawn before.
std::vector<CPoint> LastOfEach(std::span<CPoint const> points);

} // namespace ombrel
