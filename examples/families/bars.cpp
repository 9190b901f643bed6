// Bars over words, two series side by side.
#include <ombrel/chart.h>

#include <string>
#include <vector>

int main()
{
    std::vector<std::string> const days { "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun" };
    std::vector<double> const loans { 120, 140, 131, 155, 170, 210, 0 };
    std::vector<double> const returns { 150, 120, 118, 125, 160, 190, 0 };
    ombrel::Chart chart("A week at the library");
    chart.Bars(days, loans).Name("lent");
    chart.Bars(days, returns).Name("returned");
    chart.Y().Title("books");
    chart.Save("bars.png");
}
