#pragma once
#include "ombrel/platform/gdi/page/PageShape.h"

#include <string>

namespace ombrel {

/// The shortest form of a number with at most three decimals: "12", "-.5". Not-a-number is 0.
std::string SvgNumber(double value);

/// The "d" attribute of a shape: relative steps, the h and v forms for level and upright ones, no needless separators.
std::string SvgPath(PageShape const& shape);

} // namespace ombrel
