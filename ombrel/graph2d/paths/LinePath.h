#pragma once
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/platform/gdi/Surface.h"

#include <cstddef>
#include <vector>

namespace ombrel {

/// Device points of figures on their way to a stroke; the memory is kept when it is emptied.
struct LinePath {
    std::vector<CPoint> points;
    std::vector<std::size_t> starts;
    void Clear();
    /// What follows is a figure of its own.
    void Break();
    void Add(CPoint p) { points.push_back(p); }
    Figures Get() const { return { points, starts }; }
};

/// Maps a curve's stored points to the device: log10 first on logarithmic axes.
struct PointMapping {
    PortMapping port;
    bool xLogarithmic = false;
    bool yLogarithmic = false;
    /// Whether larger values of x lie farther left.
    bool RunsBackwards() const { return port.xScale < 0.0; }
    int X(double v) const
    {
        if (xLogarithmic)
            C2DCurve::LogClamp(v);
        return port.X(v);
    }
    int Y(double v) const
    {
        if (yLogarithmic)
            C2DCurve::LogClamp(v);
        return port.Y(v);
    }
};

/// The points of a curve as stored; the summary may be null.
struct StoredPoints {
    double const* xs;
    double const* ys;
    std::size_t count;
    PointSummary const* summary;
};

/// The first index of first … last − 1 whose pixel column is right of the given one (left of it where the axis runs
/// backwards), else last; x ascends. Doubling steps keep the search near where it starts.
std::size_t PastColumn(
    StoredPoints const& points, PointMapping const& map, std::size_t first, std::size_t last, int column);

/// How much of crowded pixel columns is kept.
struct Merging {
    /// What a line one pixel wide needs to cover the same pixels, or the extremes alone where columns overlap: enough
    /// for a line of several pixels, which hides how its columns are joined.
    bool extremes = false;
    /// With extremes alone, up to so many tall columns that overlap become one.
    int columns = 1;
};

/// Puts straight lines through the points into the path, broken at gaps. The points that fall into one pixel column
/// one after the other are replaced by the first, the lowest, the highest and the last: a solid line covers the same
/// pixels. Where x ascends the columns are found by bisection and their extremes in the summary. Columns left of
/// firstColumn and right of lastColumn are left out but for the points next to them.
void AddStraightLines(LinePath& path, StoredPoints const& points, PointMapping const& map, int firstColumn,
    int lastColumn, Merging merging = {});

/// As AddStraightLines for a dashed line. Moves along a column in one direction become one, which changes no dash;
/// where a column's moves go up and down for longer than maxLength pixels their dashes would overlap into a solid
/// line, and solid takes that line in place of the moves.
void AddDashedLines(
    LinePath& dashed, LinePath& solid, StoredPoints const& points, PointMapping const& map, int maxLength);

/// A stepped line: where the y of a point changes to that of the next (C2DLine's step modes).
void AddSteppedLines(LinePath& path, StoredPoints const& points, PointMapping const& map, int stepMode);

/// The segments 0–1, 2–3, …, each a figure; those with a gap are left out.
void AddPointPairs(LinePath& path, StoredPoints const& points, PointMapping const& map);

} // namespace ombrel
