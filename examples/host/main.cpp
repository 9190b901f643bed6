// A chart in a few lines.
#include <ombrel/chart.h>

#include <cmath>
#include <vector>

int main()
{
    std::vector<double> t;
    std::vector<double> y;
    for (int i = 0; i < 500; ++i) {
        t.push_back(i * 0.02);
        y.push_back(std::exp(-0.4 * t[i]) * std::cos(5 * t[i]));
    }
    ombrel::Chart chart("Damped oscillation");
    chart.Line(t, y);
    chart.X().Title("Time / s");
    chart.Y().Title("Amplitude");
    chart.Save("example.png"); // .bmp .pdf .svg .ps by extension
    chart.Save("example.ombrel"); // a document that ombrel draw and other programs read
}
