#include "ombrel/layout/Description.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/platform/gdi/DC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace ombrel {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
std::vector<double> const kX { 0.0, 5.0, 10.0 };
std::vector<double> const kY { -0.8, 1.0, 0.25 };

std::string Described(std::function<void(Chart&)> const& fill, std::string_view title = {})
{
    Chart chart(title);
    fill(chart);
    Picture picture(PictureForm {});
    return DescribeGraph(chart.Graph(picture.GetDC(), picture.GetRect()));
}

TEST(Descriptions, AreSentencesThatAPersonWouldWrite)
{
    auto const day = [](double days) {
        return std::chrono::sys_days { 2020y / 3 / 1 }
        + std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double, std::ratio<86400>>(days));
    };
    auto const dates = [&](double first, double last) { return std::vector { day(first), day(last) }; };
    std::vector<double> const two { 10.0, 20.0 };
    struct {
        std::string sentence;
        std::function<void(Chart&)> fill;
        std::string title;
    } const cases[] {
        { "Line chart: x from 0 to 10, y from -0.8 to 1.", [](Chart& c) { c.Line(kX, kY); }, "" },
        { "Line chart “Damped oscillation” of measured and model: time / s from 0 to 10, values from -0.8 to 1.",
            [](Chart& c) {
                c.Line(kX, kY).Name("measured");
                c.Line(kX, kY).Name("model");
                c.X().Title("time / s");
            },
            "Damped oscillation" },
        { "Line chart and scatter plot of a and b: x from 0 to 10, y / m from -0.8 to 1.",
            [](Chart& c) {
                c.Line(kX, kY).Name("a");
                c.Points(kX, kY).Name("b");
                c.Y().Title("y / m");
            },
            "" },
        // What the only axis says is not said twice, and gaps and what the axis cuts off take no part.
        { "Scatter plot: x from 5 to 10, rain from 0.25 to 1.",
            [](Chart& c) {
                c.Points(std::vector { -3.0, 0.0, 5.0, 10.0, 12.0 }, std::vector { kNaN, 0.5, 1.0, 0.25, kNaN })
                    .Name("rain");
                c.Y().Title("rain");
                c.X().From(5.0);
                c.Y().From(0.25);
            },
            "" },
        { "Line chart of 30 series from s1 to s30: x from 0 to 10, values from -0.8 to 1.",
            [](Chart& c) {
                for (int i = 1; i <= 30; ++i)
                    c.Line(kX, kY).Name("s" + std::to_string(i));
            },
            "" },
        { "Line chart of 8 series: x from 0 to 10, y from -0.8 to 1.",
            [](Chart& c) {
                for (int i = 1; i <= 8; ++i)
                    c.Line(kX, kY);
            },
            "" },
        { "Bar chart: month Jan, Feb and Mar, y from 0 to 30.",
            [](Chart& c) {
                c.Bars(std::vector<std::string> { "Jan", "Feb", "Mar" }, std::vector { 10.0, 30.0, 20.0 });
                c.X().Title("month");
            },
            "" },
        { "Line chart: dates from March 2020 to March 2024, y from 10 to 20.",
            [&](Chart& c) { c.Line(dates(0.0, 4 * 365.25), two); }, "" },
        { "Line chart: dates from 1 March 2020 to 9 April 2020, y from 10 to 20.",
            [&](Chart& c) { c.Line(dates(0.0, 39.25), two); }, "" },
        { "Line chart: dates from 1 March 2020 06:00 to 2 March 2020 18:00, y from 10 to 20.",
            [&](Chart& c) { c.Line(dates(0.25, 1.75), two); }, "" },
        { "Line chart: f / Hz from 0.1 to 20,000 on a logarithmic scale, y from 10 to 20.",
            [&](Chart& c) {
                c.Line(std::vector { 0.1, 20000.0 }, two);
                c.X().Title("f / Hz").Logarithmic();
            },
            "" },
        { "Polar chart: radius from 0 to 2.",
            [](Chart& c) {
                c.Polar().Line(std::vector { 0.0, 90.0, 180.0 }, std::vector { 1.0, 2.0, 1.5 });
            },
            "" },
        { "Stacked bar chart of a and b: x from 0 to 10, values from 0 to 2.",
            [](Chart& c) {
                c.Stacked(kX, std::vector { 1.0, 1.0, 0.5 }).Name("a");
                c.Stacked(kX, std::vector { 0.5, 1.0, 0.5 }).Name("b");
            },
            "" },
        // Years have no comma; digits follow the range.
        { "Line chart: x from 1958 to 2020, y from 1,234,560,000 to 1,234,570,000.",
            [](Chart& c) {
                c.Line(std::vector { 1958.0, 2020.0 }, std::vector { 1234560001.0, 1234569999.0 });
            },
            "" },
        { "Line chart: x at 3, y at 7e-9.", [](Chart& c) { c.Line(std::vector { 3.0 }, std::vector { 7e-9 }); }, "" },
    };
    for (auto const& c : cases)
        EXPECT_EQ(Described(c.fill, c.title), c.sentence);
}

TEST(Descriptions, AreInTheFilesThatCanHoldThem)
{
    Chart chart;
    chart.Line(kX, kY).Name("µ & more");
    chart.Points(kX, kY).Name("b");
    PictureForm form;
    form.size = { 200, 100 };
    auto const bytes = [&](PictureFormat format) {
        form.format = format;
        return chart.Encode(form);
    };
    EXPECT_THAT(bytes(PictureFormat::Png), HasSubstr("Line chart and scatter plot of µ & more and b: x from 0 to 10"));
    EXPECT_THAT(
        bytes(PictureFormat::Svg), HasSubstr("<desc>Line chart and scatter plot of µ &amp; more and b: x from"));
    EXPECT_THAT(bytes(PictureFormat::Svg), HasSubstr("role=\"img\""));
    // UTF-16 as PDF has it.
    EXPECT_THAT(bytes(PictureFormat::Pdf), HasSubstr("/Subject"));
    EXPECT_THAT(bytes(PictureFormat::PostScript), testing::Not(HasSubstr("scatter plot")));
    chart.Description("Two of a kind");
    EXPECT_THAT(bytes(PictureFormat::Pdf), HasSubstr("/Subject (Two of a kind)"));
    EXPECT_THAT(bytes(PictureFormat::Png), HasSubstr("Description"));
    EXPECT_THAT(bytes(PictureFormat::Png), testing::Not(HasSubstr("scatter plot")));
}

} // namespace
} // namespace ombrel
