// Off-screen redraws of one line curve at 1200 x 900, axes and labels included.

#include "benchmarks/BenchmarkData.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

namespace ombrel::bench {
namespace {

/// A figure of the process's memory in bytes: VmRSS, what it holds now, or VmHWM, the most it held.
double Memory(std::string const& name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (status >> word) {
        if (word == name + ":" && status >> kilobytes)
            return kilobytes * 1024.0;
    }
    return 0.0;
}

/// From here on VmHWM counts anew.
void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

using Setting = void (*)(C2DLine&);

/// Everything but the data is computed and drawn again.
void Redraw(benchmark::State& state, Setting setting)
{
    auto const graph = RandomWalk(static_cast<int>(state.range(0)));
    setting(LineOf(*graph));
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    ForgetPeak();
    double const before = Memory("VmRSS");
    for (auto _ : state) {
        graph->SetModifiedFlag(1);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
    state.counters["memory"] = Memory("VmHWM") - before;
}

void Default(C2DLine&) { }

BENCHMARK_CAPTURE(Redraw, line, Default)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, dashed, [](C2DLine& l) { l.SetLineType(1); })->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, wide, [](C2DLine& l) { l.SetLineWidth(3); })->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, antialiased, [](C2DLine& l) { l.SetAntialiasingOn(1); })
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, shaded, [](C2DLine& l) { l.SetFillOn(1); })->Arg(1000000)->Unit(benchmark::kMillisecond);

/// As after a change of the data: the points are read once more for their ranges.
void RedrawNewData(benchmark::State& state)
{
    auto const graph = RandomWalk(static_cast<int>(state.range(0)));
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->UpdatePlots();
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
}
BENCHMARK(RedrawNewData)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

/// Nothing has changed: the kept picture is copied.
void RedrawUnchanged(benchmark::State& state)
{
    auto const graph = RandomWalk(1000000);
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    for (auto _ : state)
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
}
BENCHMARK(RedrawUnchanged)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
