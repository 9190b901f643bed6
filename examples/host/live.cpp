// A moving window over values that keep coming in. The chart is built once; each frame puts new points into its curves.
#include <ombrel/chart.h>
#include <ombrel/drawing/DIB.h>
#include <ombrel/platform/gdi/DC.h>
#include <ombrel/platform/gdi/PngEncoder.h>

#include <chrono>
#include <cmath>
#include <iostream>
#include <vector>

namespace {

constexpr int kWindow = 2000;
constexpr int kFrames = 100;
constexpr double kSecondsPerSample = 0.005;

double Measure(double seconds) { return std::sin(seconds) + 0.3 * std::sin(13 * seconds); }

} // namespace

int main()
try {
    std::vector<double> times(kWindow);
    std::vector<double> values(kWindow);
    ombrel::CDIB bitmap(800, 400, 24);
    ombrel::CRect const rect(0, 0, 800, 400);

    ombrel::Chart chart("Pressure");
    chart.X().Title("time / s");
    chart.Y().Title("pressure / bar").Range(-1.5, 1.5);
    ombrel::Series& line = chart.Line(times, values);

    auto const start = std::chrono::steady_clock::now();
    for (int frame = 0; frame < kFrames; ++frame) {
        for (int i = 0; i < kWindow; ++i) {
            times[i] = (frame * 20 + i) * kSecondsPerSample;
            values[i] = Measure(times[i]);
        }
        line.Update(times, values);
        chart.Draw(*bitmap.GetDC(), rect);
        // A program with a window would show the bitmap here.
    }
    std::chrono::duration<double, std::milli> const taken = std::chrono::steady_clock::now() - start;
    std::cout << taken.count() / kFrames << " ms a frame\n";
    ombrel::WritePictureFile("live.png", ombrel::EncodePng(*bitmap.GetBitmap().GetRaster(), {}));
} catch (std::exception const& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
