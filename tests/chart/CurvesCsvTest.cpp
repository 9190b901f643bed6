#include "ombrel/chart/CurvesCsv.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/platform/gdi/DC.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace ombrel {
namespace {

using namespace std::chrono_literals;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::string CsvOf(std::function<void(Chart&)> const& fill)
{
    Chart chart;
    fill(chart);
    Picture picture(PictureForm {});
    return CurvesAsCsv(chart.Graph(picture.GetDC(), picture.GetRect()));
}

TEST(CurvesCsv, HoldsEveryValueAsItIs)
{
    std::vector<double> const x { 1.0, 2.0, 3.0 };
    using Time = std::chrono::sys_time<std::chrono::milliseconds>;
    struct {
        std::string csv;
        std::function<void(Chart&)> fill;
    } const cases[] {
        // Curves with the same x share it; gaps and what lies beyond the last point are empty.
        { "t / s,a,\"b, \"\"c\"\"\",t / s,d\n1,0.1,,5,1e+300\n2,,-2.5e-09,6,-0\n3,0.30000000000000004,7,,\n",
            [&](Chart& c) {
                c.X().Title("t / s");
                c.Line(x, std::vector { 0.1, kNaN, 0.1 + 0.2 }).Name("a").Marks();
                c.Points(x, std::vector { kNaN, -2.5e-9, 7.0 }).Name("b, \"c\"");
                c.Points(std::vector { 5.0, 6.0 }, std::vector { 1e300, -0.0 }).Name("d");
            } },
        { "x,rain / mm\n1,4\n2,5\n3,6\n",
            [&](Chart& c) {
                c.Y().Title("rain / mm");
                c.Bars(x, std::vector { 4.0, 5.0, 6.0 });
            } },
        // Words as they are, unless there was no room for all of them.
        { "region,y\nnorth,4\n\"south, east\",5\nnorth,6\n",
            [&](Chart& c) {
                c.X().Title("region");
                c.Points(std::vector<std::string> { "north", "south, east", "north" }, std::vector { 4.0, 5.0, 6.0 });
            } },
        { "x,y\n1,4\n2,5\n3,6\n",
            [&](Chart& c) {
                std::string const wide(400, 'w');
                c.Bars(std::vector<std::string> { wide, "b", "c" }, std::vector { 4.0, 5.0, 6.0 });
            } },
        // Before 1900 too, where the fraction of a day still runs forwards.
        { "date,y\n1815-06-18T18:30:00,1\n1899-12-30,2\n2024-02-29T23:59:59.250,3\n",
            [](Chart& c) {
                std::vector<Time> const times { std::chrono::sys_days { 1815y / 6 / 18 } + 18h + 30min,
                    std::chrono::sys_days { 1899y / 12 / 30 },
                    std::chrono::sys_days { 2024y / 2 / 29 } + 23h + 59min + 59s + 250ms };
                c.Points(times, std::vector { 1.0, 2.0, 3.0 });
            } },
        { "x,y,errors,a\n1,2,0.5,2\n2,3,0,3\n3,4,1.25,4\n",
            [&](Chart& c) {
                c.Points(x, std::vector { 2.0, 3.0, 4.0 }).Name("a").Errors(std::vector { 0.5, 0.0, 1.25 });
            } },
    };
    for (auto const& c : cases)
        EXPECT_EQ(CsvOf(c.fill), c.csv);
}

TEST(CurvesCsv, NeedsCurves)
{
    C2DGraph empty(1);
    EXPECT_THROW(CurvesAsCsv(empty), ChartError);
}

} // namespace
} // namespace ombrel
