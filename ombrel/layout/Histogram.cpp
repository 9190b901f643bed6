#include "ombrel/layout/Histogram.h"
#include "ombrel/foundation/Utils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel {

namespace {

constexpr double kMostBins = 1000.0;

double QuantileOf(std::vector<double> const& sorted, double share)
{
    double const at = share * static_cast<double>(sorted.size() - 1);
    auto const low = static_cast<std::size_t>(at);
    std::size_t const high = std::min(low + 1, sorted.size() - 1);
    return sorted[low] + (sorted[high] - sorted[low]) * (at - static_cast<double>(low));
}

double AutomaticWidth(std::vector<double> const& sorted)
{
    auto const count = static_cast<double>(sorted.size());
    double const range = sorted.back() - sorted.front();
    double const quartiles = QuantileOf(sorted, 0.75) - QuantileOf(sorted, 0.25);
    double width = range / (1.0 + std::log2(count));
    // Quartiles far apart may be two humps, which wide bins would hide; equal ones say nothing.
    double const quartileWidth = 2.0 * quartiles / std::cbrt(count);
    if (quartileWidth > range * 1e-12)
        width = std::min(width, quartileWidth);
    // A width of 0 would make bins without end.
    return std::max({ width, range / (kMostBins / 2.5), std::numeric_limits<double>::min() });
}

std::vector<double> EvenEdges(double first, double width, std::size_t bins)
{
    std::vector<double> edges(bins + 1);
    for (std::size_t i = 0; i <= bins; ++i)
        edges[i] = first + width * static_cast<double>(i);
    return edges;
}

} // namespace

std::vector<double> HistogramEdges(std::span<double const> values, int bins)
{
    if (values.empty())
        return {};
    std::vector<double> sorted(values.begin(), values.end());
    std::sort(sorted.begin(), sorted.end());
    double const least = sorted.front();
    double const most = sorted.back();
    bool const whole
        = std::all_of(sorted.begin(), sorted.end(), [](double v) { return v == std::floor(v) && std::abs(v) < 1e15; });
    double const magnitude = std::max(std::abs(least), std::abs(most));
    if (most - least <= magnitude * 1e-12) {
        // All alike: bins round the one value.
        double const half = whole || magnitude == 0.0 ? 0.5 : magnitude * 0.05;
        double const width = 2.0 * half / std::max(bins, 1);
        return EvenEdges(least - half, width, static_cast<std::size_t>(std::max(bins, 1)));
    }
    if (bins > 0) {
        std::vector<double> edges = EvenEdges(least, (most - least) / bins, static_cast<std::size_t>(bins));
        edges.back() = most;
        return edges;
    }
    double width = CVUtils::NiceNum(AutomaticWidth(sorted), 1);
    if (whole)
        width = std::max(width, 1.0);
    double const shift = whole && width == 1.0 ? 0.5 : 0.0;
    double const first = std::floor((least + shift) / width);
    double last = std::ceil((most + shift) / width);
    // A whole number on the last edge needs a bin of its own.
    if (whole && last * width - shift <= most)
        last += 1.0;
    std::vector<double> edges;
    for (double i = first; i <= last; i += 1.0)
        edges.push_back(i * width - shift);
    return edges;
}

Outline OutlineOf(std::span<std::size_t const> counts, std::span<double const> edges)
{
    std::size_t first = 0;
    while (first < counts.size() && counts[first] == 0)
        ++first;
    std::size_t last = counts.size();
    while (last > first && counts[last - 1] == 0)
        --last;
    Outline outline;
    auto const add = [&outline](double x, double y) {
        outline.xs.push_back(x);
        outline.ys.push_back(y);
    };
    if (first == last)
        return outline;
    add(edges[first], 0.0);
    for (std::size_t i = first; i < last; ++i) {
        add(edges[i], static_cast<double>(counts[i]));
        add(edges[i + 1], static_cast<double>(counts[i]));
    }
    add(edges[last], 0.0);
    return outline;
}

std::vector<std::size_t> CountInBins(std::span<double const> values, std::span<double const> edges)
{
    if (edges.size() < 2)
        return {};
    std::vector<std::size_t> counts(edges.size() - 1);
    double const perUnit = static_cast<double>(counts.size()) / (edges.back() - edges.front());
    for (double const value : values) {
        if (!(value >= edges.front() && value <= edges.back()))
            continue;
        auto bin = std::min(static_cast<std::size_t>((value - edges.front()) * perUnit), counts.size() - 1);
        // Rounding may be one bin off.
        while (bin > 0 && value < edges[bin])
            --bin;
        while (bin + 1 < counts.size() && value >= edges[bin + 1])
            ++bin;
        ++counts[bin];
    }
    return counts;
}

} // namespace ombrel
