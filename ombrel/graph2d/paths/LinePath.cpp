#include "ombrel/graph2d/paths/LinePath.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/paths/PointSummary.h"

#include <algorithm>
#include <cstdlib>

namespace ombrel {

void LinePath::Clear()
{
    points.clear();
    starts.clear();
    starts.push_back(0);
}

void LinePath::Break()
{
    // A single point draws nothing.
    if (points.size() - starts.back() < 2)
        points.resize(starts.back());
    else
        starts.push_back(points.size());
}

namespace {

/// The points that fell into one pixel column one after the other.
struct ColumnRun {
    int x = 0;
    int first = 0;
    int min = 0;
    int max = 0;
    int last = 0;
};

/// Merges successive device points of one column and puts what is left of them into a path.
class ColumnMerger {
public:
    explicit ColumnMerger(LinePath& path, Merging merging = {})
        : m_path(path)
        , m_merging(merging)
    {
    }
    void Add(int x, int y)
    {
        if (m_open && x == m_run.x) {
            m_run.min = std::min(m_run.min, y);
            m_run.max = std::max(m_run.max, y);
            m_run.last = y;
            return;
        }
        Flush();
        m_run = { x, y, y, y, y };
        m_open = true;
    }
    void AddRun(ColumnRun const& run)
    {
        if (!m_open || (run.x != m_run.x && !IsPart(run))) {
            Flush();
            m_run = run;
            m_left = run.x;
            m_open = true;
            return;
        }
        m_run.x = m_left + (run.x - m_left) / 2;
        m_run.min = std::min(m_run.min, run.min);
        m_run.max = std::max(m_run.max, run.max);
        m_run.last = run.last;
    }
    /// A gap, or the end.
    void Break()
    {
        m_before = {};
        Flush();
        m_path.Break();
        m_before = {};
    }

private:
    void Flush()
    {
        if (!m_open)
            return;
        m_open = false;
        bool const extremesSuffice = m_merging.extremes && AreTall(m_before, m_run);
        m_before = m_run;
        if (extremesSuffice) {
            AddExtremes();
            return;
        }
        m_path.Add({ m_run.x, m_run.first });
        bool const upFirst = m_run.last >= m_run.first;
        int const nearer = upFirst ? m_run.min : m_run.max;
        int const farther = upFirst ? m_run.max : m_run.min;
        if (nearer != m_run.first)
            m_path.Add({ m_run.x, nearer });
        if (farther != m_run.last && farther != nearer)
            m_path.Add({ m_run.x, farther });
        if (m_run.last != m_run.first || m_run.min != m_run.max)
            m_path.Add({ m_run.x, m_run.last });
    }

    /// Tall enough for steep lines from an end of one column to the other end of the next: their corners are too sharp
    /// for a mitre to stick out.
    static bool IsTall(ColumnRun const& run) { return run.max - run.min > 8; }
    /// Also that they overlap.
    static bool AreTall(ColumnRun const& a, ColumnRun const& b)
    {
        return IsTall(a) && IsTall(b) && a.min <= b.max && b.min <= a.max;
    }
    /// Whether the next column may as well be one with those before it.
    bool IsPart(ColumnRun const& next) const
    {
        return m_merging.extremes && std::abs(next.x - m_left) < m_merging.columns && AreTall(m_run, next);
    }
    /// The farther extreme first, so that the line to it is steep and runs inside this column and the one before.
    void AddExtremes()
    {
        int const y = m_path.points.back().y;
        bool const minFirst = y - m_run.min >= m_run.max - y;
        m_path.Add({ m_run.x, minFirst ? m_run.min : m_run.max });
        m_path.Add({ m_run.x, minFirst ? m_run.max : m_run.min });
    }

    LinePath& m_path;
    Merging m_merging;
    ColumnRun m_run;
    ColumnRun m_before;
    /// The first of the columns that are one.
    int m_left = 0;
    bool m_open = false;
};

template <typename Sink>
void AddPoints(Sink& sink, StoredPoints const& p, PointMapping const& map, std::size_t first, std::size_t last)
{
    for (std::size_t i = first; i < last; ++i) {
        if (IsGap(p.xs[i]) || IsGap(p.ys[i]))
            sink.Break();
        else
            sink.Add(map.X(p.xs[i]), map.Y(p.ys[i]));
    }
}

} // namespace

std::size_t PastColumn(StoredPoints const& p, PointMapping const& map, std::size_t first, std::size_t last, int column)
{
    auto const isPast = [&](std::size_t i) {
        int const x = map.X(p.xs[i]);
        return map.RunsBackwards() ? x < column : x > column;
    };
    std::size_t low = first;
    std::size_t step = 1;
    while (low + step < last && !isPast(low + step)) {
        low += step;
        step *= 2;
    }
    std::size_t high = std::min(low + step, last);
    while (low < high) {
        std::size_t const middle = low + (high - low) / 2;
        if (isPast(middle))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

namespace {

/// One run a column, its extremes from the summary.
void AddColumns(
    ColumnMerger& merger, StoredPoints const& p, PointMapping const& map, std::size_t first, std::size_t last)
{
    while (first < last) {
        int const column = map.X(p.xs[first]);
        std::size_t const next = PastColumn(p, map, first, last, column);
        Extremes y {};
        if (p.summary->YExtremes(p.ys, first, next, y)) {
            auto const [top, bottom] = std::minmax({ map.Y(y.max), map.Y(y.min) });
            merger.AddRun({ column, map.Y(p.ys[first]), top, bottom, map.Y(p.ys[next - 1]) });
        } else {
            AddPoints(merger, p, map, first, next);
        }
        first = next;
    }
}

} // namespace

void AddStraightLines(LinePath& path, StoredPoints const& points, PointMapping const& map, int firstColumn,
    int lastColumn, Merging merging)
{
    ColumnMerger merger(path, merging);
    std::size_t first = 0;
    std::size_t last = points.count;
    if (points.summary && points.summary->XAscends()) {
        bool const backwards = map.RunsBackwards();
        int const before = backwards ? lastColumn + 1 : firstColumn - 1;
        std::size_t const firstInside = PastColumn(points, map, 0, points.count, before);
        std::size_t const firstBeyond
            = PastColumn(points, map, firstInside, points.count, backwards ? firstColumn : lastColumn);
        first = firstInside - (firstInside > 0 ? 1 : 0);
        last = std::min(firstBeyond + 1, points.count);
        // Finding a column costs about as much as looking at this many points.
        constexpr std::size_t kWorthSearching = 24;
        auto const columns = static_cast<std::size_t>(std::max(lastColumn - firstColumn + 1, 1));
        if (last - first > kWorthSearching * columns) {
            AddColumns(merger, points, map, first, last);
            merger.Break();
            return;
        }
    }
    AddPoints(merger, points, map, first, last);
    merger.Break();
}

namespace {

/// Turns moves along a column into single ones, or the whole column into a solid line when they overlap too much.
class DashMerger {
public:
    DashMerger(LinePath& dashed, LinePath& solid, int maxLength)
        : m_dashed(dashed)
        , m_solid(solid)
        , m_maxLength(maxLength)
    {
    }
    void Add(int x, int y)
    {
        if (!m_open || x != m_run.x) {
            Flush();
            m_run = { x, y, y, y, y };
            m_columnStart = m_dashed.points.size();
            m_dashed.Add({ x, y });
            m_length = 0;
            m_turns = 0;
            m_open = true;
            return;
        }
        if (y == m_run.last)
            return;
        m_length += std::abs(y - m_run.last);
        m_run.min = std::min(m_run.min, y);
        m_run.max = std::max(m_run.max, y);
        AddMove(y);
        m_run.last = y;
    }
    /// A column whose moves overlap into a solid line.
    void AddSolid(ColumnRun const& run)
    {
        Add(run.x, run.first);
        m_run.min = std::min(m_run.min, run.min);
        m_run.max = std::max(m_run.max, run.max);
        m_run.last = run.last;
        m_length = m_maxLength + 1L;
        m_turns = 1;
    }
    void Break()
    {
        Flush();
        m_dashed.Break();
    }

private:
    /// Goes on in the same direction by moving the last point, turns by adding one; past the limit only the run's
    /// extremes matter.
    void AddMove(int y)
    {
        auto& points = m_dashed.points;
        if (m_length > m_maxLength && m_turns > 0)
            return;
        bool const first = points.size() == m_columnStart + 1;
        int const before = first ? 0 : points[points.size() - 2].y;
        bool const onwards = !first && (points.back().y > before) == (y > points.back().y);
        if (onwards) {
            points.back().y = y;
            return;
        }
        m_turns += first ? 0 : 1;
        points.push_back({ m_run.x, y });
    }
    void Flush()
    {
        if (!m_open)
            return;
        m_open = false;
        if (m_length <= m_maxLength || m_turns == 0)
            return;
        m_dashed.points.resize(m_columnStart + 1);
        m_dashed.Break();
        m_solid.Add({ m_run.x, m_run.min });
        m_solid.Add({ m_run.x, m_run.max });
        m_solid.Break();
        m_dashed.Add({ m_run.x, m_run.last });
    }

    LinePath& m_dashed;
    LinePath& m_solid;
    int m_maxLength;
    ColumnRun m_run;
    std::size_t m_columnStart = 0;
    long m_length = 0;
    int m_turns = 0;
    bool m_open = false;
};

/// How far y moves up and down in all over the points first ≤ i < last, in data units.
double TotalVariation(double const* ys, std::size_t first, std::size_t last)
{
    double sums[4] = {};
    std::size_t i = first + 1;
    for (; i + 4 <= last; i += 4) {
        for (std::size_t k = 0; k < 4; ++k)
            sums[k] += std::abs(ys[i + k] - ys[i + k - 1]);
    }
    for (; i < last; ++i)
        sums[0] += std::abs(ys[i] - ys[i - 1]);
    return sums[0] + sums[1] + sums[2] + sums[3];
}

/// Column by column; a crowded one whose moves overlap is told by their length, without mapping each point.
void AddDashedColumns(DashMerger& merger, StoredPoints const& p, PointMapping const& map, int maxLength)
{
    constexpr std::size_t kCrowd = 64;
    for (std::size_t first = 0; first < p.count;) {
        int const column = map.X(p.xs[first]);
        std::size_t const next = PastColumn(p, map, first, p.count, column);
        Extremes y {};
        if (next - first >= kCrowd && p.summary->YExtremes(p.ys, first, next, y)) {
            auto const [top, bottom] = std::minmax({ map.Y(y.max), map.Y(y.min) });
            double const length = TotalVariation(p.ys, first, next) * std::abs(map.port.yScale);
            // Moves that only go up, or only down, are no longer than the column is high.
            if (length > 2.0 * (maxLength + bottom - top + 2)) {
                merger.AddSolid({ column, map.Y(p.ys[first]), top, bottom, map.Y(p.ys[next - 1]) });
                first = next;
                continue;
            }
        }
        AddPoints(merger, p, map, first, next);
        first = next;
    }
}

} // namespace

void AddDashedLines(
    LinePath& dashed, LinePath& solid, StoredPoints const& points, PointMapping const& map, int maxLength)
{
    DashMerger merger(dashed, solid, maxLength);
    if (points.summary && points.summary->XAscends() && !map.yLogarithmic)
        AddDashedColumns(merger, points, map, maxLength);
    else
        AddPoints(merger, points, map, 0, points.count);
    merger.Break();
}

namespace {

/// Puts the vertices of a stepped line into a sink as its points come in.
template <typename Sink> class StepSink {
public:
    StepSink(Sink& sink, PortMapping const& map, int stepMode)
        : m_sink(sink)
        , m_map(map)
        , m_stepMode(stepMode)
    {
    }
    void Add(CRealPoint const& c)
    {
        if (!m_open) {
            Put(c.x, c.y);
        } else if (m_stepMode == C2DLine::smMiddle) {
            double const middle = (m_before.x + c.x) / 2;
            Put(middle, m_before.y);
            Put(middle, c.y);
        } else if (m_stepMode == C2DLine::smHorizontalFirst) {
            Put(m_before.x, m_before.y);
            Put(c.x, m_before.y);
        } else if (m_stepMode == C2DLine::smVerticalFirst) {
            Put(m_before.x, c.y);
            Put(c.x, c.y);
        }
        m_before = c;
        m_open = true;
    }
    void Break()
    {
        if (m_open)
            Put(m_before.x, m_before.y);
        m_open = false;
        m_sink.Break();
    }

private:
    void Put(double x, double y) { m_sink.Add(m_map.X(x), m_map.Y(y)); }
    Sink& m_sink;
    PortMapping const& m_map;
    int m_stepMode;
    CRealPoint m_before;
    bool m_open = false;
};

CRealPoint AsDrawn(StoredPoints const& p, PointMapping const& map, std::size_t i)
{
    CRealPoint point(p.xs[i], p.ys[i]);
    if (map.xLogarithmic)
        C2DCurve::LogClamp(point.x);
    if (map.yLogarithmic)
        C2DCurve::LogClamp(point.y);
    return point;
}

} // namespace

void AddSteppedLines(LinePath& path, StoredPoints const& points, PointMapping const& map, int stepMode)
{
    ColumnMerger merger(path);
    StepSink sink(merger, map.port, stepMode);
    for (std::size_t i = 0; i < points.count; ++i) {
        if (IsGap(points.xs[i]) || IsGap(points.ys[i]))
            sink.Break();
        else
            sink.Add(AsDrawn(points, map, i));
    }
    sink.Break();
}

void AddPointPairs(LinePath& path, StoredPoints const& points, PointMapping const& map)
{
    for (std::size_t i = 0; i + 1 < points.count; i += 2) {
        StoredPoints const pair { points.xs + i, points.ys + i, 2, nullptr };
        if (IsGap(pair.xs[0]) || IsGap(pair.ys[0]) || IsGap(pair.xs[1]) || IsGap(pair.ys[1]))
            continue;
        path.Add({ map.X(pair.xs[0]), map.Y(pair.ys[0]) });
        path.Add({ map.X(pair.xs[1]), map.Y(pair.ys[1]) });
        path.Break();
    }
}

} // namespace ombrel
