// Areas upon each other: parts of a whole over time.
#include <ombrel/chart.h>

#include <vector>

int main()
{
    std::vector<double> const hours { 0, 3, 6, 9, 12, 15, 18, 21, 24 };
    ombrel::Chart chart("Where the power came from");
    chart.Area(hours, std::vector<double> { 30, 30, 32, 33, 32, 33, 34, 32, 30 }).Name("water");
    chart.Area(hours, std::vector<double> { 12, 14, 11, 9, 8, 10, 15, 17, 14 }).Name("wind");
    chart.Area(hours, std::vector<double> { 0, 0, 4, 18, 29, 21, 5, 0, 0 }).Name("sun");
    chart.X().Title("hour");
    chart.Y().Title("power / MW");
    chart.Save("areas.png");
}
