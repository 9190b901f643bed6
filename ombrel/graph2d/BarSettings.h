#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

#include <limits>
#include <span>

namespace ombrel {

class ArchiveFields;
class C2DSeriesPlot;

/// The largest real number short of a gap: sums and margins of huge values end there.
inline constexpr double kMostReal = std::numeric_limits<double>::max() * (1.0 - std::numeric_limits<double>::epsilon());

/// The largest width of a bar that stands alone, in real x units.
inline constexpr double kLoneBarWidth = 1.0;

/// As the colour of a bar's border: the bar's own, so that the outline covers nothing however narrow the bar is.
inline constexpr COLORREF kOwnColour = 0xFFFFFFFF;

/// How bars are placed and outlined: by each bar curve for itself, by the other bar plots for all of their curves.
struct OMBREL_EXPORT BarSettings {
    /// Part of the largest width that a bar takes up; 0 and less draws lines.
    double widthFactor = 0.5;
    /// The largest width that keeps bars apart, as last computed. Real x units.
    double maxWidth = kLoneBarWidth;
    /// Real y units (decades on a logarithmic axis); used when autoBaseline is 0.
    double baseline = 0.0;
    /// Non-zero: bars start where the axes cross.
    int autoBaseline = 1;
    /// Or kOwnColour.
    COLORREF borderColour = 0;

    void Serialize(ArchiveFields& f);
    /// The width that bars are drawn with, never negative. Real x units.
    double Width() const;
    /// Adds half a bar on each side.
    void WidenXRange(double& min, double& max) const;
};

/// The largest width of bars at points evenly spaced x values from min to max, in single precision; that of a lone bar
/// for fewer than two points, which nothing keeps apart.
OMBREL_EXPORT double MaxBarWidthOfMesh(double min, double max, int points);

/// The largest width of bars at these x values: the smallest distance between one and the next, whether they ascend or
/// descend, so 0 when two are equal. Gaps are passed over. That of a lone bar for fewer than two values.
OMBREL_EXPORT double MaxBarWidthOfPoints(std::span<double const> xs);

/// The largest width of bars that share the plot's x values.
OMBREL_EXPORT double MaxBarWidthOfSeries(C2DSeriesPlot& plot);

} // namespace ombrel
