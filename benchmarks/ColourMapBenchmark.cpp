// Colours of a million values, as a large surface asks for them, and the table behind them.

#include "ombrel/colour/ColourMap.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace ombrel::bench {
namespace {

std::vector<double> RandomValues()
{
    std::vector<double> values(1000000);
    std::mt19937 random(1);
    for (double& v : values)
        v = static_cast<double>(random()) / 4e9;
    return values;
}

void LookUp(benchmark::State& state, CColourMap const& map)
{
    std::vector<double> const values = RandomValues();
    double min = -0.1;
    double max = 1.2;
    // Or the compiler would do without the division.
    benchmark::DoNotOptimize(min);
    benchmark::DoNotOptimize(max);
    for (auto _ : state) {
        DWORD sum = 0;
        for (double const v : values)
            sum += map.GetColour(v, min, max);
        benchmark::DoNotOptimize(sum);
    }
}

void GetColour(benchmark::State& state)
{
    CColourMap map;
    map.CreateSpectrum();
    LookUp(state, map);
}
BENCHMARK(GetColour)->Unit(benchmark::kMillisecond);

void GetColours(benchmark::State& state)
{
    CColourMap map;
    map.CreateSpectrum();
    std::vector<double> const values = RandomValues();
    std::vector<COLORREF> colours(values.size());
    for (auto _ : state) {
        map.GetColours(values, -0.1, 1.2, colours);
        benchmark::DoNotOptimize(colours.data());
    }
}
BENCHMARK(GetColours)->Unit(benchmark::kMillisecond);

void GetColourOnScale(benchmark::State& state)
{
    CColourMap map;
    map.CreateSpectrum();
    ColourScale scale;
    for (int i = 0; i < state.range(0); ++i) {
        scale.values.Add((i + 1.0) / (static_cast<double>(state.range(0)) + 1.0));
        scale.indices.Add(static_cast<DWORD>(i * 7 % CColourMap::kTableSize));
    }
    map.SetScale(scale);
    LookUp(state, map);
}
BENCHMARK(GetColourOnScale)->Arg(4)->Arg(100)->Unit(benchmark::kMillisecond);

/// points control points in each channel.
void Update(benchmark::State& state)
{
    CColourMap map;
    for (int c = 0; c < CColourMap::kChannels; ++c) {
        ColourChannel channel;
        for (int i = 0; i < state.range(0); ++i) {
            channel.positions.Add(i);
            channel.values.Add(static_cast<BYTE>(i * (c + 1)));
        }
        map.SetChannel(c, channel.positions, channel.values);
    }
    for (auto _ : state)
        map.Update();
}
BENCHMARK(Update)->Arg(2)->Arg(256)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace ombrel::bench
