#pragma once

#include <optional>
#include <string>

namespace ombrel {
class C3DCurve;
class C3DRowColCurve;
class CPlotComponent;
} // namespace ombrel

namespace ombrel::host {

/// "1 to 2".
std::string NumberRange(double min, double max);

/// On a line of its own, "x 0 to 1, y 0 to 2, z 3 to 4": where an evaluated curve lies.
std::string RangesText(C3DCurve const& curve);

/// Numbers of rows, columns and missing heights, and the ranges once the curve has been evaluated.
std::string DescribeGrid(C3DRowColCurve const& curve);

/// What a curve of a 3D graph holds, behind its name; nothing for other curves.
std::optional<std::string> DescribeSceneCurve(CPlotComponent& curve);

} // namespace ombrel::host
