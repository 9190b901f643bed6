// Contour lines of a large grid: 20 levels of 2000 x 2000 smooth values, and of noise.

#include "ombrel/graph3d/ContourLines.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace ombrel::bench {
namespace {

constexpr int kNodes = 2000;

std::vector<double> Peaks()
{
    std::vector<double> z;
    for (int j = 0; j < kNodes; ++j) {
        double const y = -3.0 + 6.0 * j / (kNodes - 1);
        for (int i = 0; i < kNodes; ++i) {
            double const x = -3.0 + 6.0 * i / (kNodes - 1);
            z.push_back(3 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1))
                - 10 * (x / 5 - x * x * x - std::pow(y, 5)) * std::exp(-x * x - y * y)
                - std::exp(-(x + 1) * (x + 1) - y * y) / 3 + 0.8 * std::sin(7 * x) * std::cos(6 * y));
        }
    }
    return z;
}

std::vector<double> Noise()
{
    std::vector<double> z(static_cast<std::size_t>(kNodes) * kNodes);
    std::mt19937 random(1);
    for (double& v : z)
        v = static_cast<double>(random());
    return z;
}

template <typename Work> void Run(benchmark::State& state, std::vector<double> const& z, Work const& work)
{
    auto const [lo, hi] = std::ranges::minmax(z);
    for (auto _ : state) {
        ContourFinder const finder({ z, kNodes - 1, kNodes - 1, 0, 0, 1, 1, {} });
        for (int k = 1; k <= 20; ++k)
            work(finder, lo + k * (hi - lo) / 21);
    }
}

void Segments(benchmark::State& state, std::vector<double> const& z)
{
    std::vector<ContourSegment> segments;
    Run(state, z, [&](ContourFinder const& finder, double level) {
        segments.clear();
        finder.FindSegments(level, segments);
        benchmark::DoNotOptimize(segments.data());
    });
}

void Lines(benchmark::State& state, std::vector<double> const& z)
{
    Run(state, z, [](ContourFinder const& finder, double level) {
        ContourPolylines lines;
        finder.FindLines(level, lines);
        benchmark::DoNotOptimize(lines.points.data());
    });
}

BENCHMARK_CAPTURE(Segments, peaks, Peaks())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lines, peaks, Peaks())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Segments, noise, Noise())->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
