#include "ombrel/graph2d/paths/AreaBands.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DCurve.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <functional>
#include <limits>

namespace ombrel {
namespace {

/// Columns whose totals are worked out together, in a buffer that stays in the processor's nearest memory.
constexpr std::size_t kChunk = 256;
using Chunk = std::array<double, kChunk>;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void Include(Extremes& e, double v)
{
    e.min = v < e.min ? v : e.min;
    e.max = v > e.max ? v : e.max;
}

/// Adds values to totals and returns the extremes of the new totals.
Extremes AddTo(double* totals, double const* values, std::size_t count)
{
    // Several at a time, so that one comparison need not wait for the one before.
    constexpr std::size_t kLanes = 4;
    Extremes lanes[kLanes];
    std::fill(std::begin(lanes), std::end(lanes), Extremes { kInfinity, -kInfinity });
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (std::size_t k = 0; k < kLanes; ++k)
            Include(lanes[k], totals[i + k] += values[i + k]);
    }
    for (; i < count; ++i)
        Include(lanes[0], totals[i] += values[i]);
    Extremes found = lanes[0];
    for (Extremes const& lane : lanes)
        found = { std::min(found.min, lane.min), std::max(found.max, lane.max) };
    return found;
}

} // namespace

double AreaStack::X(std::size_t i) const
{
    double x = xs[i];
    if (xLogarithmic && !IsGap(x))
        C2DCurve::LogClamp(x);
    return x;
}

double const* AreaStack::Load(std::size_t layer, std::size_t first, std::size_t last, double* buffer) const
{
    Layer const& from = layers[layer];
    if (from.complete && !from.logarithmic && from.count >= last)
        return from.ys + first;
    std::size_t const present = std::clamp(from.count, first, last) - first;
    for (std::size_t i = 0; i < present; ++i) {
        double const y = from.ys[first + i];
        buffer[i] = IsGap(y) ? 0.0 : y;
        if (from.logarithmic && !IsGap(y))
            C2DCurve::LogClamp(buffer[i]);
    }
    std::fill(buffer + present, buffer + (last - first), 0.0);
    return buffer;
}

Extremes TotalsOf(std::span<double const> values)
{
    Extremes totals { 0.0, 0.0 };
    double total = 0.0;
    for (double const v : values)
        Include(totals, total += v);
    return totals;
}

Extremes TotalsOf(AreaStack const& stack)
{
    if (stack.count == 0 || stack.layers.empty())
        return { 0.0, -1.0 };
    Extremes found { 0.0, 0.0 };
    Chunk values;
    for (std::size_t first = 0; first < stack.count; first += kChunk) {
        std::size_t const last = std::min(first + kChunk, stack.count);
        Chunk totals {};
        for (std::size_t layer = 0; layer < stack.layers.size(); ++layer) {
            double const* const loaded = stack.Load(layer, first, last, values.data());
            Extremes const added = AddTo(totals.data(), loaded, last - first);
            found = { std::min(found.min, added.min), std::max(found.max, added.max) };
        }
    }
    constexpr double kLargest = kGap / 2;
    return { std::max(found.min, -kLargest), std::min(found.max, kLargest) };
}

double NormalDivisor(Extremes const& totals)
{
    // Telling in full whether two numbers are nearly equal takes long.
    constexpr double kSurelyApart = 1e-5;
    double const extent = totals.max - totals.min;
    if (extent > kSurelyApart * std::max(totals.max, -totals.min))
        return extent;
    return CVUtils::FloatEq(totals.max, totals.min) ? 1.0 : extent;
}

void NormaliseColumns(std::span<double* const> rows, std::size_t count)
{
    std::vector<double> column(rows.size());
    for (std::size_t i = 0; i < count; ++i) {
        std::transform(rows.begin(), rows.end(), column.begin(), [i](double const* row) { return row[i]; });
        double const divisor = NormalDivisor(TotalsOf(column));
        for (double* const row : rows)
            row[i] /= divisor;
    }
}

namespace {

/// Finds the columns with the extreme totals of each layer among columns of one pixel column.
class ExtremeColumns {
public:
    ExtremeColumns(AreaStack const& stack, Normalising normalising)
        : m_stack(stack)
        , m_normalising(normalising)
        , m_layers(stack.layers.size())
    {
    }
    /// Appends the first and the last of the columns first ≤ i < last and the extreme ones between them.
    void Append(std::vector<std::size_t>& kept, std::size_t first, std::size_t last)
    {
        m_layers.assign(m_layers.size(), { kInfinity, -kInfinity, first, first });
        for (std::size_t from = first; from < last; from += kChunk)
            Look(from, std::min(from + kChunk, last));
        std::size_t const begin = kept.size();
        kept.push_back(first);
        for (Found const& f : m_layers) {
            kept.push_back(f.minAt);
            kept.push_back(f.maxAt);
        }
        kept.push_back(last - 1);
        auto const at = kept.begin() + static_cast<std::ptrdiff_t>(begin);
        std::sort(at, kept.end());
        kept.erase(std::unique(at, kept.end()), kept.end());
    }

private:
    struct Found {
        double min;
        double max;
        std::size_t minAt;
        std::size_t maxAt;
    };

    void Look(std::size_t first, std::size_t last)
    {
        std::size_t const count = last - first;
        if (m_normalising == Normalising::Yes)
            FindDivisors(first, last);
        Chunk totals {};
        for (std::size_t layer = 0; layer < m_layers.size(); ++layer) {
            double const* values = m_stack.Load(layer, first, last, m_values.data());
            if (m_normalising == Normalising::Yes) {
                std::transform(values, values + count, m_divisors.begin(), m_values.begin(), std::divides<>());
                values = m_values.data();
            }
            Extremes const added = AddTo(totals.data(), values, count);
            auto const place = [&](double total) {
                auto const begin = totals.begin();
                return first + static_cast<std::size_t>(std::find(begin, begin + count, total) - begin);
            };
            Found& f = m_layers[layer];
            if (added.min < f.min)
                f = { added.min, f.max, place(added.min), f.maxAt };
            if (added.max > f.max)
                f = { f.min, added.max, f.minAt, place(added.max) };
        }
    }
    void FindDivisors(std::size_t first, std::size_t last)
    {
        std::size_t const count = last - first;
        Chunk totals {};
        std::array<Extremes, kChunk> extremes {};
        for (std::size_t layer = 0; layer < m_layers.size(); ++layer) {
            double const* const values = m_stack.Load(layer, first, last, m_values.data());
            for (std::size_t i = 0; i < count; ++i)
                Include(extremes[i], totals[i] += values[i]);
        }
        for (std::size_t i = 0; i < count; ++i)
            m_divisors[i] = NormalDivisor(extremes[i]);
    }

    AreaStack const& m_stack;
    Normalising m_normalising;
    std::vector<Found> m_layers;
    Chunk m_values {};
    Chunk m_divisors {};
};

} // namespace

std::vector<std::size_t> VisibleColumns(
    AreaStack const& stack, PortMapping const& map, PixelStrip const& strip, Normalising normalising)
{
    ExtremeColumns extremes(stack, normalising);
    std::size_t const fewest = 2 * stack.layers.size() + 2;
    // All that lies left of the strip counts as one pixel column, as does all that lies right of it.
    auto const pixel = [&](std::size_t i) { return std::clamp(map.X(stack.X(i)), strip.left - 1, strip.right + 1); };
    auto const endOfRun = [&](std::size_t first, int x) {
        std::size_t next = first + 1;
        // Doubling steps, then ever smaller ones; where x ascends all up to a column of the run belong to it.
        std::size_t step = 1;
        for (; stack.xAscends && next + step < stack.count && pixel(next + step) == x; step *= 2)
            next += step;
        for (; step > 1; step /= 2) {
            if (next + step < stack.count && stack.xAscends && pixel(next + step) == x)
                next += step;
        }
        while (next < stack.count && !IsGap(stack.xs[next]) && pixel(next) == x)
            ++next;
        return next;
    };
    std::vector<std::size_t> kept;
    for (std::size_t first = 0, next = 0; first < stack.count; first = next) {
        next = first + 1;
        if (IsGap(stack.xs[first]))
            continue;
        int const x = pixel(first);
        next = endOfRun(first, x);
        if (x < strip.left || x > strip.right) {
            kept.push_back(first);
            if (next - first > 1)
                kept.push_back(next - 1);
        } else if (next - first <= fewest) {
            for (std::size_t i = first; i < next; ++i)
                kept.push_back(i);
        } else {
            extremes.Append(kept, first, next);
        }
    }
    return kept;
}

void RealPath::Add(CRealPoint const& p)
{
    xs.push_back(p.x);
    ys.push_back(p.y);
}

RealPath ClipToStrip(std::span<double const> xs, std::span<double const> ys, CPort const& port, PixelStrip const& strip)
{
    // Longer than every segment between device points is high.
    constexpr int kFarAway = 2 * PortMapping::kDeviceLimit;
    RealPath clipped;
    auto const addCrossing = [&](CPoint from, CPoint to, int edge) {
        if (from.x == edge || to.x == edge || (from.x < edge) == (to.x < edge))
            return;
        CPoint crossing;
        if (CVUtils::LinesIntersect(from, to, { edge, -kFarAway }, { edge, kFarAway }, crossing) == 1)
            clipped.Add(port.WindowToUnits(crossing));
    };
    CPoint before;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        CPoint const p = port.UnitsToWindow(CRealPoint(xs[i], ys[i]));
        if (i > 0) {
            bool const rightwards = before.x < p.x;
            addCrossing(before, p, rightwards ? strip.left : strip.right);
            if (strip.left != strip.right)
                addCrossing(before, p, rightwards ? strip.right : strip.left);
        }
        if (p.x >= strip.left && p.x <= strip.right)
            clipped.Add({ xs[i], ys[i] });
        before = p;
    }
    return clipped;
}

namespace {

/// Collects the corners of an outline. Of those that follow each other in one pixel column only the first, the lowest,
/// the highest and the last are kept, in an order that passes over the same pixels.
class OutlinePath {
public:
    explicit OutlinePath(std::vector<CPoint>& points)
        : m_points(points)
    {
    }
    void Add(CPoint p)
    {
        if (m_open && p.x == m_first.x) {
            m_min = std::min(m_min, p.y);
            m_max = std::max(m_max, p.y);
            m_last = p.y;
            return;
        }
        Flush();
        m_first = p;
        m_min = m_max = m_last = p.y;
        m_open = true;
    }
    void Flush()
    {
        if (!m_open)
            return;
        m_open = false;
        m_points.push_back(m_first);
        bool const upFirst = m_last >= m_first.y;
        for (int const y : { upFirst ? m_min : m_max, upFirst ? m_max : m_min, m_last }) {
            if (y != m_points.back().y)
                m_points.push_back({ m_first.x, y });
        }
    }

private:
    std::vector<CPoint>& m_points;
    CPoint m_first;
    int m_min = 0;
    int m_max = 0;
    int m_last = 0;
    bool m_open = false;
};

/// Along the tops, then back along the bottoms.
std::vector<CPoint> BandPolygon(std::span<int const> xs, std::span<int const> tops, std::span<int const> bottoms)
{
    std::size_t const n = xs.size();
    std::vector<CPoint> polygon;
    polygon.reserve(2 * n);
    OutlinePath path(polygon);
    for (std::size_t i = 0; i < n; ++i)
        path.Add({ xs[i], tops[i] });
    path.Flush();
    for (std::size_t i = n; i-- > 0;)
        path.Add({ xs[i], bottoms[i] });
    path.Flush();
    return polygon;
}

} // namespace

std::vector<CPoint> ClipToRows(std::span<CPoint const> polygon, CRect const& rect)
{
    std::vector<CPoint> clipped;
    clipped.reserve(polygon.size());
    auto const isOutside = [&](CPoint p) { return p.y < rect.top || p.y > rect.bottom; };
    auto const addCrossing = [&](CPoint from, CPoint to, int row) {
        CPoint crossing;
        if (CVUtils::LinesIntersect(from, to, { rect.left, row }, { rect.right, row }, crossing) == 1)
            clipped.push_back(crossing);
    };
    for (std::size_t k = 0; k < polygon.size(); ++k) {
        CPoint const p = polygon[k];
        if (k > 0 && (isOutside(polygon[k - 1]) || isOutside(p))) {
            bool const downwards = polygon[k - 1].y < p.y;
            addCrossing(polygon[k - 1], p, downwards ? rect.top : rect.bottom);
            addCrossing(polygon[k - 1], p, downwards ? rect.bottom : rect.top);
        }
        clipped.push_back({ p.x, std::clamp(p.y, rect.top, rect.bottom) });
    }
    return clipped;
}

namespace {

/// 1 or −1 when no value lies on the other side of 0, else 0.
int SideOf(std::span<double const> values)
{
    auto const [min, max] = std::minmax_element(values.begin(), values.end());
    if (values.empty() || !(*min >= 0.0 || *max <= 0.0))
        return 0;
    return *min >= 0.0 ? 1 : -1;
}

} // namespace

std::vector<std::vector<CPoint>> MakeBands(std::span<double const> xs, std::span<std::span<double const> const> rows,
    PortMapping const& map, std::span<BandReach const> reaches)
{
    std::vector<int> pixelXs(xs.size());
    std::transform(xs.begin(), xs.end(), pixelXs.begin(), [&](double x) { return map.X(x); });
    std::vector<double> totals(xs.size(), 0.0);
    // The pixel rows of the totals before the first row and with each.
    std::vector<std::vector<int>> edges { std::vector<int>(xs.size(), map.Y(0.0)) };
    for (auto const& row : rows) {
        assert(row.size() == xs.size());
        std::vector<int>& edge = edges.emplace_back(xs.size());
        for (std::size_t i = 0; i < xs.size(); ++i)
            edge[i] = map.Y(totals[i] += row[i]);
    }
    std::vector<std::vector<CPoint>> bands;
    for (std::size_t band = 0; band < rows.size(); ++band) {
        bool const under = band + 1 < rows.size() && !reaches.empty() && reaches[band] == BandReach::UnderNext
            && SideOf(rows[band]) != 0 && SideOf(rows[band]) == SideOf(rows[band + 1]);
        bands.push_back(BandPolygon(pixelXs, edges[band + (under ? 2 : 1)], edges[band]));
    }
    return bands;
}

} // namespace ombrel
