#include "ombrel/scene/parts/PointGrid.h"
#include "ombrel/layout/ChartNotes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <tuple>

namespace ombrel {

namespace {

/// The different values, ascending; those closer than a billionth of the range are one.
std::vector<double> DistinctValues(std::span<double const> values)
{
    std::vector<double> sorted;
    sorted.reserve(values.size());
    std::copy_if(values.begin(), values.end(), std::back_inserter(sorted), [](double v) { return !std::isnan(v); });
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    if (sorted.empty())
        return sorted;
    double const smallest = (sorted.back() - sorted.front()) * 1e-9;
    std::vector<double> distinct { sorted.front() };
    for (double const value : sorted) {
        if (value - distinct.back() > smallest)
            distinct.push_back(value);
    }
    return distinct;
}

/// Which of the ascending values it is; they are further apart than rounding.
std::size_t IndexIn(std::vector<double> const& values, double value)
{
    auto const above = std::upper_bound(values.begin(), values.end(), value);
    return static_cast<std::size_t>(above - values.begin()) - 1;
}

/// A point, and the crossing that it stands at.
struct NodePoint {
    std::size_t node = 0;
    std::size_t point = 0;
};

/// The different coordinates of points, ascending.
struct Crossings {
    std::vector<double> x;
    std::vector<double> y;

    std::string TextOf(std::size_t node) const
    {
        return "x = " + ShortNumber(x[node % x.size()]) + ", y = " + ShortNumber(y[node / x.size()]);
    }
};

/// The first crossing, from the first row upwards, that has no point or two.
PointFault FirstFault(Crossings const& crossings, std::vector<NodePoint>& nodes, std::size_t points,
    std::function<std::string(std::size_t)> const& placeOf)
{
    std::stable_sort(
        nodes.begin(), nodes.end(), [](NodePoint const& a, NodePoint const& b) { return a.node < b.node; });
    std::string const shape = "the points form no grid of " + std::to_string(crossings.x.size()) + " x "
        + std::to_string(crossings.y.size()) + ": ";
    std::size_t expected = 0;
    for (; expected < nodes.size(); ++expected) {
        auto const& [node, point] = nodes[expected];
        if (expected > 0 && nodes[expected - 1].node == node)
            return { point,
                shape + "a second point stands at " + crossings.TextOf(node)
                    + " (the first: " + placeOf(nodes[expected - 1].point) + ")" };
        if (node != expected)
            break;
    }
    return { points, shape + "there is no point at " + crossings.TextOf(expected) };
}

} // namespace

std::optional<GridAxis> EvenAxis(std::span<double const> values, std::string& fault)
{
    constexpr double kTolerance = 0.02;
    if (values.size() < 2) {
        fault = "expected at least 2 different coordinates, found " + std::to_string(values.size());
        return std::nullopt;
    }
    GridAxis const axis { values.front(), values.back(), values.size(), {} };
    double const step = axis.Step();
    if (!std::isfinite(step) || step == 0.0) {
        fault = "expected coordinates that ascend, found " + ShortNumber(values.front()) + " to "
            + ShortNumber(values.back());
        return std::nullopt;
    }
    for (std::size_t i = 1; i < values.size(); ++i) {
        if (std::abs(values[i] - axis.At(i)) <= kTolerance * std::abs(step))
            continue;
        fault = "expected evenly spaced coordinates, found " + ShortNumber(values[i]) + " after "
            + ShortNumber(values[i - 1]) + ", where " + ShortNumber(axis.At(i)) + " would be even";
        return std::nullopt;
    }
    return axis;
}

std::variant<Grid, PointFault> GridOfPoints(
    GridPoints const& points, std::function<std::string(std::size_t)> const& placeOf)
{
    std::size_t const count = points.x.size();
    Crossings const crossings { DistinctValues(points.x), DistinctValues(points.y) };
    std::vector<NodePoint> nodes;
    nodes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (!std::isnan(points.x[i]) && !std::isnan(points.y[i]))
            nodes.push_back(
                { IndexIn(crossings.y, points.y[i]) * crossings.x.size() + IndexIn(crossings.x, points.x[i]), i });
    }
    Grid grid;
    if (!nodes.empty() && crossings.x.size() * crossings.y.size() != nodes.size())
        return FirstFault(crossings, nodes, count, placeOf);
    std::vector<bool> taken(nodes.size());
    grid.heights.resize(nodes.size());
    for (auto const& [node, point] : nodes) {
        if (taken[node])
            return FirstFault(crossings, nodes, count, placeOf);
        taken[node] = true;
        grid.heights[node] = points.z[point];
    }
    for (auto const& [values, axis, name] :
        { std::tuple(&crossings.x, &grid.x, "x"), std::tuple(&crossings.y, &grid.y, "y") }) {
        std::string fault;
        auto const even = EvenAxis(*values, fault);
        if (!even)
            return PointFault { count, std::string("the points form no grid: ") + name + ": " + fault };
        *axis = *even;
    }
    return grid;
}

} // namespace ombrel
