// A histogram: how often values of each size occur.
#include <ombrel/chart.h>

#include <random>
#include <vector>

int main()
{
    // The same numbers in every run.
    std::mt19937 random(7);
    std::vector<double> weights;
    for (int i = 0; i < 2000; ++i) {
        double sum = 0.0;
        for (int k = 0; k < 12; ++k)
            sum += static_cast<double>(random()) / 4294967296.0;
        weights.push_back(500.0 + 4.0 * (sum - 6.0));
    }
    ombrel::Chart chart("2000 bags of flour");
    chart.Histogram(weights);
    chart.X().Title("weight / g");
    chart.Y().Title("bags");
    chart.Save("histogram.png");
}
