#pragma once

#include <optional>
#include <string>

namespace ombrel {
class CPlotComponent;
class C3DRowColCurve;
} // namespace ombrel

namespace ombrel::host {

/// "1 to 2".
std::string NumberRange(double min, double max);

/// Numbers of rows, columns and missing heights, and the ranges once the curve has been evaluated.
std::string DescribeGrid(C3DRowColCurve const& curve);

/// What a curve of a 3D graph holds, behind its name; nothing for other curves.
std::optional<std::string> DescribeSceneCurve(CPlotComponent& curve);

} // namespace ombrel::host
