#pragma once
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {

class CDC;

/// The shorter side of a rectangle of pixels; 0 for one without size.
int ShorterSide(CRect const& rect);

/// The height in pixels of the labels of a 2D graph: a fifteenth of the shorter side of the graph rectangle (device
/// pixels), but at most 4 mm on the device. 0 for a rectangle without size.
int LabelFontHeight(CDC& dc, CRect const& graphRect);

} // namespace ombrel
