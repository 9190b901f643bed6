#include "ombrel/chart/Chart.h"
#include "ombrel/chart/Document.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/platform/gdi/DC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <thread>

namespace ombrel {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
PictureForm SmallForm()
{
    PictureForm form;
    form.size = { 300, 200 };
    return form;
}
PictureForm const kSmall = SmallForm();

std::vector<double> Numbers(int count, std::function<double(int)> const& value)
{
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(value(i));
    return numbers;
}

std::vector<double> const kX = Numbers(50, [](int i) { return i * 0.25; });
std::vector<double> const kY = Numbers(50, [](int i) { return std::sin(i * 0.25); });

/// The ranges of the axes that a chart gets in a small picture.
std::pair<AxisSettings, AxisSettings> AxesOf(Chart& chart)
{
    Picture picture(kSmall);
    CAxes const& axes = *chart.Graph(picture.GetDC(), picture.GetRect()).GetAxes();
    return { axes.GetAxis(CAxes::atX), axes.GetAxis(CAxes::atY) };
}

std::string MessageOf(std::function<void()> const& call)
{
    try {
        call();
    } catch (ChartError const& error) {
        return error.what();
    }
    return "";
}

TEST(Chart, DrawsEveryKindOverTheRangeOfItsData)
{
    std::vector<std::string> const words { "north", "south", "east" };
    std::vector<std::chrono::sys_days> const days { std::chrono::sys_days(2020y / 1 / 1),
        std::chrono::sys_days(2020y / 2 / 1), std::chrono::sys_days(2020y / 3 / 1) };
    std::vector<double> const three { 2, kNaN, 5 };
    struct {
        std::function<void(Chart&)> add;
        double xMin, xMax, yMin, yMax;
    } const cases[] {
        { [&](Chart& c) { c.Line(kX, kY); }, 0, 12.5, -1, 1 },
        { [&](Chart& c) { c.Line(three); }, 1, 3, 2, 5 },
        { [&](Chart& c) { c.Points(words, three); }, 0.5, 3.5, 2, 5 },
        { [&](Chart& c) { c.Steps(days, three); }, 43831, 43891, 2, 5 },
        { [&](Chart& c) { c.Filled(kX, kY).Errors(std::vector<double>(50, 3)); }, 0, 12.5, -4, 4 },
        // Equal words share a place.
        { [&](Chart& c) {
             c.Points(std::vector<std::string> { "a", "b", "a" }, three);
         },
            0.5, 2.5, 2, 5 },
        { [&](Chart& c) { c.Bars(words, three); }, 0.5, 3.5, 0, 5 },
        { [&](Chart& c) { c.Bars(three), c.Bars(three), c.Line(three); }, 0.5, 3.5, 0, 5 },
        { [&](Chart& c) { c.Stacked(words, three), c.Stacked(words, three), c.Percent(); }, 0.5, 3.5, 0, 100 },
        { [&](Chart& c) { c.Area(kX, kX), c.Area(kX, kX), c.Line(kX, kX); }, 0, 12.5, 0, 24.5 },
        { [&](Chart& c) { c.Histogram(kX).Name("h"), c.Bins(5); }, 0, 12.25, 0, 10 },
        { [&](Chart& c) { c.Texts(words, three, words); }, 0.5, 3.5, 2, 5 },
        { [&](Chart& c) { c.Line(three).Name("a"), c.X().From(0), c.Y().Range(-10, 10); }, 0, 3, -10, 10 },
        { [&](Chart& c) { c.Line(three), c.Y().Logarithmic(); }, 1, 3, std::log10(2), std::log10(5) },
    };
    for (auto const& c : cases) {
        Chart chart;
        c.add(chart);
        SCOPED_TRACE(&c - cases);
        auto const [x, y] = AxesOf(chart);
        // Room at the sides is no more than a fifth of the range.
        EXPECT_LE(x.min, c.xMin);
        EXPECT_GE(x.max, c.xMax);
        EXPECT_LE(x.max - x.min, 1.2 * (c.xMax - c.xMin));
        EXPECT_LE(y.min, c.yMin + 1e-9);
        EXPECT_GE(y.max, c.yMax - 1e-9);
        EXPECT_LE(y.max - y.min, 1.3 * (c.yMax - c.yMin));
    }
}

TEST(Chart, SaysWhatCannotBeDrawn)
{
    std::vector<std::string> const words { "a", "b" };
    std::vector<double> const two { 1, 2 };
    std::vector<double> const three { 1, 2, 3 };
    std::vector<double> const equal { 1, 1 };
    std::vector<double> const gaps { kNaN, kNaN };
    std::vector<double> const one { 1 };
    struct {
        std::function<void(Chart&)> make;
        char const* message;
    } const cases[] {
        { [&](Chart&) {}, "no series was added" },
        { [&](Chart& c) { c.Line(two, one); }, "expected as many y values as there are x values (2), found 1" },
        { [&](Chart& c) { c.Line(two, two).Errors(one); }, "expected an error for each of 2 points, found 1" },
        { [&](Chart& c) { c.Texts(two, two, std::span(words).first(1)); }, "expected a text for each of 2 points" },
        { [&](Chart& c) { c.Bars(two, two).Name("a"), c.Bars(std::vector<std::string>({ "a" }), one); },
            "expected numbers along x as in the series before it, found words" },
        { [&](Chart& c) {
             c.Bars(std::vector<std::string>({ "a", "b", "a" }), three);
         },
            "found \"a\" again" },
        { [&](Chart& c) { c.Add(SeriesKind::Line, CTableData(2, 2), XKind::Words); }, "numbers or dates in a table" },
        { [&](Chart& c) { c.Bars(equal, two); }, "expected one point for each x" },
        { [&](Chart& c) { c.Bars(two, two), c.Stacked(two, two); }, "stacked bars do not stand beside others" },
        { [&](Chart& c) { c.Area(two, two), c.Y().Logarithmic(); }, "area values add up" },
        { [&](Chart& c) { c.Bars(two, two), c.Polar(); }, "polar: is for lines" },
        { [&](Chart& c) { c.Points(words, two), c.EqualScales(); }, "equal: the x values are words" },
        { [&](Chart& c) { c.Line(two), c.EqualScales().Y().Logarithmic(); }, "logarithmic axes cannot be equal" },
        { [&](Chart& c) { c.Line(two), c.EqualScales().Polar(); }, "polar chart are equal already" },
        { [&](Chart& c) { c.Line(two), c.North(); }, "north: only a polar chart" },
        { [&](Chart& c) { c.Line(gaps); }, "there is nothing to draw: all values are gaps" },
        { [&](Chart& c) { c.Line(two), c.SetPalette("rainbowish"); }, "palette: expected distinct, grey" },
        { [&](Chart& c) { c.Line(two), c.X().Range(2, 1); }, "x-range: expected ends with the first below the second" },
        { [&](Chart& c) { c.Line(two), c.Save("chart.gif"); }, "found \"chart.gif\"" },
        { [&](Chart& c) { c.Line(two), c.Save("no/such/folder/chart.png"); }, "cannot be written: No such file" },
        { [&](Chart& c) { c.Add(SeriesKind::Line, CTableData(3, 2)); }, "a table of two rows, x and y, found 3" },
    };
    for (auto const& c : cases) {
        EXPECT_THAT(MessageOf([&] {
            Chart chart;
            c.make(chart);
            (void)chart.Encode(kSmall);
        }),
            HasSubstr(c.message));
    }
    // What could not be added is not there.
    Chart chart;
    chart.Line(two);
    EXPECT_THROW(chart.Line(two, one), SeriesError);
    EXPECT_EQ(chart.GetSeries(1), nullptr);
    EXPECT_FALSE(chart.Encode(kSmall).empty());
}

TEST(Chart, PutsSeriesThatStandTogetherOverTheXValuesOfAll)
{
    using Words = std::vector<std::string>;
    std::vector<double> const two { 10, 20 };
    struct {
        std::function<void(Chart&)> add;
        std::vector<double> first, second;
        int labels;
    } const cases[] {
        { [&](Chart& c) {
             c.Bars(std::vector<double> { 3, 1 }, two), c.Bars(std::vector<double> { 2, 3 }, two);
         },
            { 20, kGap, 10 }, { kGap, 10, 20 }, 0 },
        { [&](Chart& c) {
             c.Bars(Words { "a", "b" }, two), c.Bars(Words { "c", "a" }, two);
         },
            { 10, 20, kGap }, { 20, kGap, 10 }, 3 },
        // An empty word is a gap, as others are.
        { [&](Chart& c) {
             c.Bars(Words { "", "b" }, two), c.Bars(Words { "b", "c" }, two);
         },
            { 20, kGap }, { 10, 20 }, 2 },
        { [&](Chart& c) {
             c.Bars(Words { "a", "b" }, two), c.Bars(Words { "a", "b" }, two);
             c.GetSeries(1)->Update(Words { "c", "b" }, two);
         },
            { 10, 20, kGap }, { kGap, 20, 10 }, 3 },
        { [&](Chart& c) {
             c.Bars(std::vector<double> { 1, kNaN }, two), c.Bars(std::vector<double> { kNaN, 1 }, two);
         },
            { 10 }, { 20 }, 0 },
    };
    for (auto const& c : cases) {
        Chart chart;
        c.add(chart);
        SCOPED_TRACE(&c - cases);
        Picture picture(kSmall);
        C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
        std::vector<std::vector<double>> found;
        for (int i = 0; i < 2; ++i) {
            auto& curve = static_cast<C2DCurve&>(*graph.GetPlotArray()->GetAt(0)->GetComponents()[i]);
            found.emplace_back();
            for (int k = 0; k < curve.GetNumPoints(); ++k)
                found.back().push_back(curve.GetAt(k).y);
        }
        EXPECT_EQ(found[0], c.first);
        EXPECT_EQ(found[1], c.second);
        EXPECT_EQ(graph.GetAxes()->GetAxis(CAxes::atX).labels.GetSize() * (c.labels > 0), c.labels);
    }
    // Lines run along words from left to right, whatever the order of their rows.
    Chart chart;
    chart.Line(Words { "a", "b", "c" }, std::vector<double> { 1, 2, 3 });
    chart.Line(Words { "c", "b", "a" }, std::vector<double> { 3, 2, 1 });
    Picture picture(kSmall);
    CPlot& plot = *chart.Graph(picture.GetDC(), picture.GetRect()).GetPlotArray()->GetAt(0);
    auto& line = static_cast<C2DLine&>(*plot.GetComponents()[1]);
    EXPECT_TRUE(line.GetAt(0).x == 1 && line.GetAt(0).y == 1 && line.GetAt(2).x == 3);
}

TEST(Chart, ShowsNewPointsAsANewChartWouldWithTheGraphThatItHas)
{
    auto const make = [](std::vector<double> const& y) {
        Chart chart("Live");
        chart.Line(kX, y).Name("a");
        chart.Points(kX, kY).Name("b");
        chart.Legend(LegendPlace::TopLeft);
        return chart;
    };
    std::vector<double> const higher = Numbers(50, [](int i) { return 3.0 + std::cos(i * 0.3); });
    Chart live = make(kY);
    std::string const first = live.Encode(kSmall);
    Picture picture(kSmall);
    C2DGraph const* const graph = &live.Graph(picture.GetDC(), picture.GetRect());
    live.GetSeries(0)->Update(kX, higher);
    EXPECT_EQ(live.Encode(kSmall), make(higher).Encode(kSmall));
    EXPECT_EQ(&live.Graph(picture.GetDC(), picture.GetRect()), graph);
    live.GetSeries(0)->Update(kX, kY);
    EXPECT_EQ(live.Encode(kSmall), first);
    // Points between gaps, and errors, need curves of their own; fewer points are fine.
    std::vector<double> const gappy = Numbers(50, [](int i) { return i % 2 ? kNaN : 1.0; });
    live.GetSeries(0)->Update(kX, gappy);
    EXPECT_EQ(live.Encode(kSmall), make(gappy).Encode(kSmall));
    live.GetSeries(0)->Update(std::span(kX).first(10), std::span(kY).first(10));
    EXPECT_NE(live.Encode(kSmall), first);
    EXPECT_THROW(live.GetSeries(0)->Update(kX, std::span(kY).first(10)), SeriesError);
    // A chart that is changed otherwise is built anew.
    live.GetSeries(0)->Update(kX, kY);
    live.GetSeries(0)->Colour(colours::kRed);
    EXPECT_NE(live.Encode(kSmall), first);
}

TEST(Chart, LooksTheSameWhereverItIsDrawn)
{
    Chart chart("Title");
    chart.Line(kX, kY).Name("a").Width(3).Dash(Dash::Dashed).Mark(Mark::Square);
    chart.X().Title("x").Logarithmic(false);
    // In a part of a bitmap as in one of that size.
    CDIB whole(300, 200, 24);
    chart.Draw(*whole.GetDC(), CRect(0, 0, 300, 200));
    CDIB part(500, 400, 24);
    chart.Draw(*part.GetDC(), CRect(120, 90, 420, 290));
    int differing = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x)
            differing += whole.GetDC()->GetPixel(x, y) != part.GetDC()->GetPixel(x + 120, y + 90);
    }
    EXPECT_EQ(differing, 0);
    // As a document, too.
    auto const path = (std::filesystem::temp_directory_path() / "chart-test.ombrel").string();
    chart.Save(path, kSmall);
    std::string bytes;
    {
        std::ifstream file(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    std::filesystem::remove(path);
    ChartNotes notes;
    auto const loaded = LoadDocument(bytes, "", notes);
    loaded->UpdatePlots();
    CDIB again(300, 200, 24);
    static_cast<C2DGraph&>(*loaded).Draw(again.GetDC(), CRect(0, 0, 300, 200), pmDirect);
    EXPECT_EQ(again.EncodeBmp(), whole.EncodeBmp());
    // And from any thread.
    std::string fromThread;
    std::thread([&] {
        Chart other("Title");
        other.Line(kX, kY).Name("a").Width(3).Dash(Dash::Dashed).Mark(Mark::Square);
        other.X().Title("x");
        fromThread = other.Encode(kSmall);
    }).join();
    EXPECT_EQ(fromThread, chart.Encode(kSmall));
}

TEST(Pictures, HoldSeveralPagesWhereTheFormatCan)
{
    Chart one("One");
    one.Line(kX, kY);
    Chart two("Two");
    two.Points(kX, kY);
    PictureForm form;
    for (PictureFormat const format : { PictureFormat::Pdf, PictureFormat::PostScript }) {
        form.format = format;
        Picture report(form);
        one.Draw(report);
        report.NextPage();
        two.Draw(report);
        EXPECT_THAT(report.Encode(), HasSubstr(format == PictureFormat::Pdf ? "/Count 2" : "%%Pages: 2"));
    }
    for (PictureFormat const format : { PictureFormat::Svg, PictureFormat::Png }) {
        form.format = format;
        Picture page(form);
        EXPECT_EQ(MessageOf([&] { page.NextPage(); }), "pages: several need PDF or PostScript");
    }
}

TEST(Chart, NamesLinesAtTheirEndsWhereThereIsRoomAndHasALegendElsewhere)
{
    // The captions' texts from the top, and whether there is a legend.
    auto const namesOf = [](std::vector<double> const& ends, double lastX) {
        Chart chart;
        for (std::size_t i = 0; i < ends.size(); ++i) {
            std::vector const x { 0.0, i == 0 ? lastX : 10.0 };
            std::vector const y { 0.0, ends[i] };
            chart.Line(x, y).Name("line " + std::to_string(i));
        }
        chart.Legend(LegendPlace::Ends);
        Picture picture(kSmall);
        C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
        graph.Draw(&picture.GetDC(), picture.GetRect(), pmDirect);
        std::map<LONG, std::string> names;
        CCaptionArray& captions = *graph.GetCaptionArray();
        for (int i = 0; i < captions.GetSize(); ++i)
            names[captions.GetAt(i)->GetRect().top] = captions.GetAt(i)->GetText().ToUtf8();
        std::string all;
        for (auto const& [y, name] : names)
            all += name + ";";
        return all + (graph.GetLegend()->IsOn() ? "legend" : "");
    };
    EXPECT_EQ(namesOf({ 1, 3, 2 }, 10), "line 1;line 2;line 0;");
    EXPECT_EQ(namesOf({ 1, 3, 2 }, 5), "legend") << "a line that ends in the middle";
    EXPECT_EQ(namesOf({ 1, 1, 1, 1, 1, 1, 2 }, 10), "legend") << "too many at one height";
}

TEST(Chart, KeepsItsFootnoteBelowEverythingAndInside)
{
    Chart chart("Title");
    chart.Line(kX, kY);
    for (std::string const& text : { std::string("Source"), std::string(300, 'x') }) {
        chart.Footnote(text);
        Picture picture(kSmall);
        C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
        graph.Draw(&picture.GetDC(), picture.GetRect(), pmDirect);
        CCaption const* const note = FindFootnote(graph);
        ASSERT_NE(note, nullptr);
        EXPECT_TRUE(note->IsOn());
        EXPECT_GE(note->GetRect().left, 0);
        EXPECT_LE(note->GetRect().right, kSmall.size.width);
        EXPECT_LE(note->GetRect().bottom, kSmall.size.height);
        EXPECT_GE(note->GetRect().top, graph.GetAxes()->GetExtentRect().bottom);
    }
}

TEST(Dates, AreDaysSinceTheEndOf1899)
{
    using std::chrono::sys_days;
    EXPECT_EQ(DateValue(sys_days(1899y / 12 / 30)), 0.0);
    EXPECT_EQ(DateValue(sys_days(2000y / 1 / 1) + 6h), 36526.25);
    // Before that day, times count away from zero.
    EXPECT_EQ(DateValue(sys_days(1899y / 12 / 29) + 6h), -1.25);
}

TEST(Charts, ChooseLegendSamplesThatShowHowSeriesAreDrawn)
{
    using enum SeriesKind;
    struct {
        std::vector<SeriesKind> kinds;
        int style;
    } const cases[] {
        { { Line, Points }, CLegend::lsLineAndSymbol },
        { { Points, Points }, CLegend::lsSymbol },
        { { Bars, Bars }, CLegend::lsFill },
        { { Bars, Points }, CLegend::lsLineAndSymbol },
        { { Stacked, Stacked, Line }, CLegend::lsStack },
        { { Area, Area }, CLegend::lsStack },
    };
    for (auto const& c : cases) {
        Chart chart;
        for (SeriesKind const kind : c.kinds)
            chart.Add(kind, kX, kY).Name("some");
        Picture picture(kSmall);
        EXPECT_EQ(chart.Graph(picture.GetDC(), picture.GetRect()).GetLegend()->GetStyle(), c.style);
    }
}

TEST(Charts, KeepLegendsOfManySeriesInsideThePicture)
{
    Chart chart;
    for (int i = 0; i < 30; ++i)
        chart.Line(kX, kY).Name("some");
    Picture picture({ .size = { 800, 480 } });
    chart.Draw(picture.GetDC(), picture.GetRect());
    CRect const legend = chart.Graph(picture.GetDC(), picture.GetRect()).GetLegend()->GetRect();
    EXPECT_LE(legend.bottom, 480);
    EXPECT_LE(legend.right, 800);
}

TEST(Charts, KeepTheYTitleApartFromTheLabels)
{
    auto const leftOfAxes = [](std::string_view title) {
        Chart chart;
        chart.Line(kX, kY);
        chart.Y().Title(title);
        Picture picture(PictureForm {});
        C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
        return std::pair(graph.GetAxesRect().left, graph.GetAxes()->GetFontHeight());
    };
    auto const [without, height] = leftOfAxes("");
    EXPECT_GE(leftOfAxes("y").first - without, height + height / 4) << "its height and a gap";
}

TEST(Charts, DrawHistogramsOfSeveralColumnsAsOutlinesUnlessTheyAreFew)
{
    auto const classOf = [](int columns, int bins) {
        Chart chart;
        for (int i = 0; i < columns; ++i)
            chart.Histogram(kY);
        chart.Bins(bins);
        Picture picture(kSmall);
        CPlot const& plot = *chart.Graph(picture.GetDC(), picture.GetRect()).GetPlotArray()->GetAt(0);
        return std::string(plot.GetComponents()[0]->GetRuntimeClass().name);
    };
    EXPECT_EQ(classOf(1, 20), "C2DBarCurve");
    EXPECT_EQ(classOf(2, 5), "C2DClusteredBarCurve");
    EXPECT_EQ(classOf(2, 20), "C2DLine");
    EXPECT_EQ(classOf(4, 5), "C2DLine");
}

TEST(Charts, AreTwiceAsLargeAtTwiceTheScale)
{
    struct Sizes {
        int font, frame, legend, line;
    };
    auto const sizesOf = [](int factor) {
        Chart chart("Title");
        chart.Line(kX, kY).Name("a");
        chart.Points(kX, kY).Name("b");
        chart.Legend(LegendPlace::TopLeft);
        PictureForm form;
        form.size = { 600 * factor, 400 * factor };
        form.scale = factor;
        Picture picture(form);
        chart.Draw(picture.GetDC(), picture.GetRect());
        C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
        return Sizes { graph.GetAxes()->GetFontHeight(), static_cast<int>(graph.GetAxesRect().Width()),
            static_cast<int>(graph.GetLegend()->GetRect().Width()), DeviceLineWidth(picture.GetDC(), 2) };
    };
    Sizes const once = sizesOf(1);
    Sizes const twice = sizesOf(2);
    EXPECT_NEAR(twice.font, 2 * once.font, 1);
    EXPECT_NEAR(twice.frame, 2 * once.frame, 12);
    EXPECT_NEAR(twice.legend, 2 * once.legend, 12);
    EXPECT_EQ(twice.line, 2 * once.line);
}

TEST(Charts, MarkPointsAsLargeAsTheyAreTold)
{
    auto const sizeOf = [](double factor) {
        Chart chart;
        chart.Points(kX, kY).MarkSize(factor);
        Picture picture(PictureForm {});
        CPlotComponent const& curve
            = *chart.Graph(picture.GetDC(), picture.GetRect()).GetPlotArray()->GetAt(0)->GetComponents()[0];
        return static_cast<C2DLine const&>(curve).GetSymbolScaleFac();
    };
    EXPECT_DOUBLE_EQ(sizeOf(3.0), 3.0 * sizeOf(1.0));
    EXPECT_THROW(sizeOf(0.0), ChartError);
    EXPECT_THROW(sizeOf(kNaN), ChartError);
}

/// Where each column of a chart's plot is coloured, from the end of the smallest x: the distances of the nearest and
/// farthest such pixel from the end of the smallest y; -1 without any.
std::vector<std::pair<int, int>> ColouredPixels(
    std::function<void(Chart&)> const& addSeries, bool xReversed, bool yReversed)
{
    Chart chart;
    addSeries(chart);
    chart.X().Reversed(xReversed);
    chart.Y().Reversed(yReversed);
    CDIB bitmap(600, 400, 24);
    CDC& dc = *bitmap.GetDC();
    CRect const rect(0, 0, 600, 400);
    chart.Draw(dc, rect);
    CRect const area = chart.Graph(dc, rect).GetAxesRect();
    auto const isColoured = [&](int x, int y) {
        COLORREF const colour = dc.GetPixel(x, y);
        auto const [least, most] = std::minmax({ GetRValue(colour), GetGValue(colour), GetBValue(colour) });
        return most - least > 60;
    };
    std::vector<std::pair<int, int>> columns;
    for (int across = 1; across < area.Width() - 1; ++across) {
        std::pair<int, int> ends(-1, -1);
        for (int up = 1; up < area.Height() - 1; ++up) {
            if (!isColoured(
                    xReversed ? area.right - across : area.left + across, yReversed ? area.top + up : area.bottom - up))
                continue;
            if (ends.first < 0)
                ends.first = up;
            ends.second = up;
        }
        columns.push_back(ends);
    }
    return columns;
}

TEST(ChartAxes, ThatRunBackwardsDrawTheSameInAMirror)
{
    // More points than pixels, few points, and rectangles.
    std::vector<double> many;
    std::vector<double> waves;
    for (int i = 0; i < 20'000; ++i) {
        many.push_back(i / 200.0);
        waves.push_back(3 + std::sin(many.back() / 8) + 0.2 * std::sin(40 * many.back()));
    }
    std::vector<double> const few { 1, 2, 3, 4, 5, 6 };
    std::vector<double> const heights { 3, 1, 4, 1, 5, 9 };
    std::function<void(Chart&)> const kinds[] {
        [&](Chart& chart) { chart.Line(many, waves); },
        [&](Chart& chart) { chart.Line(few, heights); },
        [&](Chart& chart) { chart.Bars(few, heights); },
        [&](Chart& chart) { chart.Area(few, heights); },
    };
    for (auto const& addSeries : kinds) {
        SCOPED_TRACE(&addSeries - kinds);
        auto const forwards = ColouredPixels(addSeries, false, false);
        for (auto const& [x, y] : { std::pair(true, false), { false, true }, { true, true } }) {
            SCOPED_TRACE(testing::Message() << x << y);
            auto const backwards = ColouredPixels(addSeries, x, y);
            // Labels at other ends may leave other widths.
            ASSERT_NEAR(static_cast<double>(backwards.size()), static_cast<double>(forwards.size()), 12);
            std::size_t different = 0;
            for (std::size_t i = 0; i < forwards.size(); ++i) {
                auto const& there = backwards[i * backwards.size() / forwards.size()];
                constexpr int kNear = 10;
                if (std::abs(there.first - forwards[i].first) > kNear
                    || std::abs(there.second - forwards[i].second) > kNear)
                    ++different;
            }
            // A few columns lie beside the steep sides of bars.
            EXPECT_LT(different, forwards.size() / 20);
        }
    }
}

TEST(ChartAxes, HaveEqualScalesInEveryShape)
{
    std::vector<double> const east { 0, 3, -3, 0 };
    std::vector<double> const north { 0, 30, 60, 100 };
    struct {
        CSize size;
        std::function<void(Chart&)> change;
    } const cases[] {
        { CSize(600, 300), [](Chart&) {} },
        { CSize(200, 500), [](Chart& c) { c.Legend(LegendPlace::TopLeft), c.Title("A walk"); } },
        { CSize(400, 400), [](Chart& c) { c.X().Reversed(), c.Y().Reversed(); } },
        { CSize(600, 300), [](Chart& c) { c.X().From(0), c.Y().To(50); } },
        { CSize(500, 400), [](Chart& c) { c.X().Range(-4, 4), c.Y().Range(0, 100); } },
    };
    for (auto const& [size, change] : cases) {
        for (bool const isTall : { true, false }) {
            Chart chart;
            chart.EqualScales();
            (isTall ? chart.Line(east, north) : chart.Line(north, east)).Name("path");
            change(chart);
            Picture picture(kSmall);
            C2DGraph& graph = chart.Graph(picture.GetDC(), CRect(CPoint(), size));
            AxisSettings const x = graph.GetAxes()->GetAxis(CAxes::atX);
            AxisSettings const y = graph.GetAxes()->GetAxis(CAxes::atY);
            CRect const area = graph.GetAxesRect();
            EXPECT_NEAR(area.Width() / std::abs(x.max - x.min), area.Height() / std::abs(y.max - y.min),
                1.5 * std::max(1 / std::abs(x.max - x.min), 1 / std::abs(y.max - y.min)))
                << size.cx << " x " << size.cy << (isTall ? ", tall" : "");
            CRect inside;
            EXPECT_TRUE(inside.IntersectRect(area, CRect(CPoint(), size)) && inside == area);
            EXPECT_GT(std::min(area.Width(), area.Height()), std::min(size.cx, size.cy) / 15);
        }
    }
}

TEST(Chart, ShowsWhatLiesUnderTranslucentSeries)
{
    std::vector<double> const heights { 1, 3, 2, 4 };
    std::function<Series&(Chart&)> const kinds[] { [&](Chart& c) -> Series& { return c.Line(heights); },
        [&](Chart& c) -> Series& { return c.Points(heights); }, [&](Chart& c) -> Series& { return c.Bars(heights); },
        [&](Chart& c) -> Series& { return c.Add(SeriesKind::Filled, heights); },
        [&](Chart& c) -> Series& { return c.Add(SeriesKind::Stacked, heights); },
        [&](Chart& c) -> Series& { return c.Add(SeriesKind::Area, heights); },
        [&](Chart& c) -> Series& { return c.Histogram(heights); } };
    PictureForm page = kSmall;
    page.format = PictureFormat::Svg;
    for (auto const& add : kinds) {
        SCOPED_TRACE(&add - kinds);
        Chart chart;
        chart.Legend(LegendPlace::TopLeft);
        Series& series = add(chart).Name("series");
        EXPECT_EQ(chart.Encode(page).find("opacity"), std::string::npos);
        series.Opacity(0.2);
        std::string const svg = chart.Encode(page);
        std::size_t count = 0;
        for (std::size_t i = svg.find("opacity=\".2\""); i != std::string::npos; i = svg.find("opacity=\".2\"", i + 1))
            ++count;
        EXPECT_GE(count, 2U) << "of the series and its sample in the legend";
        // A document keeps it.
        Picture drawn(page);
        Picture again(page);
        C2DGraph& graph = chart.Graph(drawn.GetDC(), drawn.GetRect());
        ChartNotes notes;
        auto const loaded = LoadDocument(EncodeDocument(graph), "", notes);
        loaded->UpdatePlots();
        graph.Draw(&drawn.GetDC(), drawn.GetRect(), pmDirect);
        static_cast<C2DGraph&>(*loaded).Draw(&again.GetDC(), again.GetRect(), pmDirect);
        EXPECT_EQ(drawn.Encode(), again.Encode());
    }
    for (double const opacity : { 0.0, -1.0, 1.01, kNaN }) {
        EXPECT_THAT(MessageOf([&] { Chart().Line(heights).Opacity(opacity); }), HasSubstr("opacity: expected"));
    }
}

TEST(Chart, TurnsBearingsClockwiseFromTheTop)
{
    std::vector<double> const degrees { 0, 90, 225 };
    std::vector<double> const radii { 1, 2, 2 };
    Chart chart;
    chart.Polar().North().Line(degrees, radii);
    Picture picture(kSmall);
    C2DGraph& graph = chart.Graph(picture.GetDC(), picture.GetRect());
    auto const& line = *DynamicDowncast<C2DLine>(graph.GetPlotArray()->GetAt(0)->GetComponents().GetAt(0));
    CRealPoint const expected[] { { 0, 1 }, { 2, 0 }, { -std::sqrt(2.0), -std::sqrt(2.0) } };
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(line.GetAt(i).x, expected[i].x, 1e-12);
        EXPECT_NEAR(line.GetAt(i).y, expected[i].y, 1e-12);
    }
    // Numbers along the radius are those of other axes.
    chart.Line(degrees, std::vector { 2e7, 0.0, 1e7 });
    PictureForm page = kSmall;
    page.format = PictureFormat::Svg;
    EXPECT_THAT(chart.Encode(page), testing::AllOf(HasSubstr(">2×10⁷<"), HasSubstr(">135°<")));
}

} // namespace
} // namespace ombrel
