#pragma once
#include "ombrel/platform/gdi/raster/CoverageMask.h"

#include <span>

namespace ombrel {

/// Whether a polygon within the box has so many edges side by side that a mask is faster than ordering them.
bool IsCrowdedPolygon(std::span<CPoint const> points, CRect const& box);

/// Fills the mask with the pixels of an alternating polygon within the box: the same as PolygonScan finds.
void CoverPolygon(CoverageMask& mask, std::span<CPoint const> points, CRect const& box);

} // namespace ombrel
