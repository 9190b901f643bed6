// Lines through points: a pendulum, measured and as the theory has it.
#include <ombrel/chart.h>

#include <cmath>
#include <vector>

int main()
{
    std::vector<double> seconds;
    std::vector<double> theory;
    std::vector<double> measured;
    for (int i = 0; i <= 100; ++i) {
        double const t = i * 0.1;
        seconds.push_back(t);
        theory.push_back(std::exp(-0.3 * t) * std::cos(3.0 * t));
        measured.push_back(theory.back() + 0.04 * std::sin(37.0 * t));
    }
    ombrel::Chart chart("A pendulum comes to rest");
    chart.Line(seconds, theory).Name("theory");
    chart.Points(seconds, measured).Name("measured");
    chart.X().Title("time / s");
    chart.Y().Title("angle / rad");
    chart.Save("line.png");
}
