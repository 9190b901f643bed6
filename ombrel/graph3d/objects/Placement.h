#pragma once
#include "ombrel/foundation/Vertex.h"

#include <array>

namespace ombrel {

/// A matrix of 4 × 4 in the order of OpenGL: column by column. The last row is that of a placement, 0 0 0 1, unless a
/// document says otherwise; points take no notice of it.
using Placement = std::array<double, 16>;

inline constexpr Placement kNoPlacement { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };

/// What does b first and then a.
Placement operator*(Placement const& a, Placement const& b);
Placement MakeScaling(double sx, double sy, double sz);
Placement MakeTranslation(double tx, double ty, double tz);
/// Degrees, about x first, then y, then z; right-handed each.
Placement MakeRotation(double ax, double ay, double az);
/// Degrees about a direction of any length; nothing about (0, 0, 0) and what is not finite.
Placement MakeRotation(CVertex const& axis, double angle);
/// Turns the z axis onto a direction of any length; nothing for (0, 0, 0) and what is not finite. A direction that is
/// nearly that of the axis counts as the same, its opposite as half a turn.
Placement MakeAligningRotation(CVertex const& direction);

CVertex Placed(Placement const& placement, CVertex const& v);

} // namespace ombrel
