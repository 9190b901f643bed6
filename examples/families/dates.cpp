// Dates along x: one value a week over two years.
#include <ombrel/chart.h>

#include <chrono>
#include <cmath>
#include <numbers>
#include <vector>

int main()
{
    using namespace std::chrono_literals;
    std::chrono::sys_days const first = 2023y / 1 / 2;
    std::vector<std::chrono::sys_days> weeks;
    std::vector<double> hours;
    for (int week = 0; week < 104; ++week) {
        weeks.push_back(first + std::chrono::days(7 * week));
        hours.push_back(12.3 - 4.2 * std::cos(2 * std::numbers::pi * (week + 1.5) / 52.18));
    }
    ombrel::Chart chart("Daylight in Vienna");
    chart.Filled(weeks, hours);
    chart.Y().Title("hours a day");
    chart.Save("dates.png");
}
