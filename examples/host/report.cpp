// A report from a table: one PDF of several A4 pages, each with charts of its own, as vector graphics.
#include <ombrel/chart.h>
#include <ombrel/platform/gdi/DC.h>

#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ombrel;

/// The upper or the lower half of a page.
CRect Half(Picture const& page, bool upper)
{
    CRect const all = page.GetRect();
    int const middle = (all.top + all.bottom) / 2;
    return upper ? CRect(all.left, all.top, all.right, middle) : CRect(all.left, middle, all.right, all.bottom);
}

/// How warm it was, and how often.
void DrawTemperatures(Table const& table, Picture& page)
{
    std::vector<double> const days = table.Values("date");
    std::vector<double> const highest = table.Values("temp_max");
    std::vector<double> const lowest = table.Values("temp_min");
    Chart lines("Temperatures");
    lines.Line(XValues::Dates(days), highest).Name("highest").Width(1);
    lines.Line(XValues::Dates(days), lowest).Name("lowest").Width(1);
    lines.Y().Title("degrees Celsius");
    lines.Draw(page.GetDC(), Half(page, true));

    Chart bars("How many days were how warm");
    bars.Histogram(highest);
    bars.X().Title("degrees Celsius");
    bars.Y().Title("days");
    bars.Draw(page.GetDC(), Half(page, false));
}

/// How much it rained.
void DrawRain(Table const& table, Picture& page)
{
    std::vector<double> const days = table.Values("date");
    std::vector<double> const rain = table.Values("precipitation");
    std::vector<double> sum;
    for (double const day : rain)
        sum.push_back(day + (sum.empty() ? 0.0 : sum.back()));
    Chart daily("Rain of a day");
    daily.Bars(XValues::Dates(days), rain);
    daily.Y().Title("mm");
    daily.Draw(page.GetDC(), Half(page, true));

    Chart together("Rain since the first day");
    together.Filled(XValues::Dates(days), sum);
    together.Y().Title("mm");
    together.Draw(page.GetDC(), Half(page, false));
}

} // namespace

int main(int count, char** arguments)
try {
    if (count != 2)
        throw std::runtime_error("expected the path of seattle-weather.csv, which lies beside this program's folder");
    Table const table = ReadTableFile(arguments[1]);
    PictureForm form;
    form.format = PictureFormat::Pdf;
    form.page = { 210, 297 };
    form.title = "Weather in Seattle";
    form.description = "Two pages of charts: temperatures, and rain, from 2012 to 2015.";
    Picture report(form);
    DrawTemperatures(table, report);
    report.NextPage();
    DrawRain(table, report);
    WritePictureFile("report.pdf", report.Encode());
} catch (std::exception const& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
