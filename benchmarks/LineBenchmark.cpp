// Off-screen redraws of one line curve at 1200 x 900, axes and labels included.

#include "benchmarks/BenchmarkData.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace ombrel::bench {
namespace {

/// The most memory that the process has held so far, in bytes.
double PeakMemory()
{
    double kilobytes = 0.0;
    if (std::FILE* const status = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, status)) {
            if (std::sscanf(line, "VmHWM: %lf", &kilobytes) == 1)
                break;
        }
        std::fclose(status);
    }
    return kilobytes * 1024.0;
}

using Setting = void (*)(C2DLine&);

/// Everything but the data is computed and drawn again.
void Redraw(benchmark::State& state, Setting setting)
{
    auto const graph = RandomWalk(static_cast<int>(state.range(0)));
    setting(LineOf(*graph));
    double const before = PeakMemory();
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->SetModifiedFlag(1);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
    state.counters["memory_beyond_data"] = PeakMemory() - before;
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

BENCHMARK_MAIN();
