#include "ombrel/graph2d/BarSettings.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ombrel {

void BarSettings::Serialize(ArchiveFields& f)
{
    f.Double(maxWidth, widthFactor, baseline).Int(autoBaseline).Dword(borderColour);
}

double BarSettings::Width() const
{
    double const width = maxWidth * widthFactor;
    return width > 0.0 ? std::min(width, kMostReal) : 0.0;
}

void BarSettings::WidenXRange(double& min, double& max) const
{
    double const margin = Width() * 0.5;
    min = std::max(min - margin, -kMostReal);
    max = std::min(max + margin, kMostReal);
}

double MaxBarWidthOfMesh(double min, double max, int points)
{
    if (points < 2)
        return kLoneBarWidth;
    constexpr double kMostSingle = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp((max - min) / (points - 1), -kMostSingle, kMostSingle));
}

double MaxBarWidthOfPoints(std::span<double const> xs)
{
    double smallest = kGap;
    double before = kGap;
    for (double const x : xs) {
        if (IsGap(x))
            continue;
        if (!IsGap(before))
            smallest = std::min(smallest, std::abs(x - before));
        before = x;
    }
    return IsGap(smallest) ? kLoneBarWidth : smallest;
}

double MaxBarWidthOfSeries(C2DSeriesPlot& plot)
{
    if (plot.GetXValueMode()) {
        CTableData const& points = plot.GetPoints();
        return points.HasData()
            ? MaxBarWidthOfPoints({ points.GetRow(0), static_cast<std::size_t>(points.GetNumCols()) })
            : kLoneBarWidth;
    }
    double min = 0.0;
    double max = 0.0;
    // The range of the points, not the one that a bar plot widens.
    plot.C2DPlot::GetXRange(min, max);
    return MaxBarWidthOfMesh(min, max, plot.GetNumPts());
}

} // namespace ombrel
