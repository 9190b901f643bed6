// Angles and distances: how well microphones listen in each direction.
#include <ombrel/chart.h>

#include <cmath>
#include <numbers>
#include <vector>

int main()
{
    std::vector<double> degrees;
    std::vector<double> forwards;
    std::vector<double> around;
    for (int angle = 0; angle <= 360; angle += 2) {
        double const cosine = std::cos(angle * std::numbers::pi / 180.0);
        degrees.push_back(angle);
        forwards.push_back(0.5 + 0.5 * cosine);
        around.push_back(std::abs(cosine));
    }
    ombrel::Chart chart("Two microphones");
    chart.Polar();
    chart.Line(degrees, forwards).Name("cardioid");
    chart.Line(degrees, around).Name("figure of eight");
    chart.Save("polar.png");
}
