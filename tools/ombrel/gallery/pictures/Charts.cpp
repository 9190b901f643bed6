#include "ombrel/chart.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <chrono>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <string>

namespace ombrel::host {

namespace {

using std::numbers::pi;

void DampedOscillations(Chart& chart)
{
    chart.X().Title("time / s");
    chart.Y().Title("deflection / mm");
    std::vector<double> const t = Spread(0, 20, 500);
    for (auto const& [name, damping] : { std::pair { "weak", 0.05 }, { "medium", 0.15 }, { "strong", 0.4 } })
        chart
            .Line(
                t, Each(t, [damping = damping](double at) { return 5 * std::exp(-damping * at) * std::cos(1.5 * at); }))
            .Name(name);
}

void CarbonDioxide(Chart& chart)
{
    chart.X().Title("year");
    chart.Y().Title("carbon dioxide / ppm");
    chart.Line(Spread(kFirstCarbonYear, kFirstCarbonYear + 60, 61), kCarbonDioxide).Width(3);
}

void RandomWalks(Chart& chart)
{
    chart.X().Title("step");
    chart.Y().Title("distance");
    std::vector<double> const steps = Spread(0, 1000, 1001);
    FixedRandom random(2012);
    for (char const* const name : { "first", "second", "third", "fourth", "fifth", "sixth" }) {
        double y = 0;
        chart.Line(steps, Each(steps, [&](double) { return y += random.Normal(); })).Name(name).Width(1);
    }
    chart.Legend(LegendPlace::Ends);
}

void ManyPoints(Chart& chart)
{
    chart.X().Title("time / s");
    chart.Y().Title("signal / V");
    FixedRandom random(1);
    std::vector<double> const t = Spread(0, 100, 100'000);
    auto const signal = [&](double at) { return 3 * std::sin(at / 8) + random.Normal() * (1.2 + std::sin(at / 5)); };
    chart.Line(t, Each(t, signal)).Width(1);
}

void Steps(Chart& chart)
{
    chart.X().Title("time / ms");
    chart.Y().Title("voltage / V");
    auto const signal = [](double t) { return 3.5 + 3.5 * std::sin(t); };
    std::vector<double> const t = Spread(0, 10, 201);
    std::vector<double> const clock = Spread(0, 10, 26);
    chart.Line(t, Each(t, signal)).Name("signal");
    chart.Steps(clock, Each(clock, [&](double at) { return std::round(signal(at)); })).Name("converted");
}

void DailyRanges(Chart& chart)
{
    chart.X().Title("day of July 2014");
    chart.Y().Title("temperature / °C");
    std::vector<double> days;
    std::vector<double> temperatures;
    for (std::size_t i = 0; i < kJulyLows.size(); ++i) {
        days.insert(days.end(), 2, static_cast<double>(i + 1));
        temperatures.insert(temperatures.end(), { kJulyLows[i], kJulyHighs[i] });
    }
    chart.Add(SeriesKind::Pairs, days, temperatures).Width(6);
}

void Lissajous(Chart& chart)
{
    std::vector<double> const t = Spread(0, 2 * pi, 2001);
    chart.Line(
        Each(t, [](double at) { return std::sin(7 * at); }), Each(t, [](double at) { return std::cos(9 * at); }));
}

void BesselFunctions(Chart& chart)
{
    chart.X().Title("x");
    std::vector<double> const x = Spread(0, 18, 361);
    for (int order = 0; order < 4; ++order)
        chart.Line(x, Each(x, [&](double at) { return std::cyl_bessel_j(order, at); }))
            .Name("J" + std::to_string(order));
    chart.Legend(LegendPlace::Ends);
}

void Dashes(Chart& chart)
{
    std::vector<double> const x = Spread(0, 10, 200);
    double y = 10;
    for (auto const& [name, dash] : { std::pair { "solid", Dash::Solid }, { "dashed", Dash::Dashed },
             { "dotted", Dash::Dotted }, { "dash, dot", Dash::DashDot }, { "dash, dot, dot", Dash::DashDotDot },
             { "long dashes", Dash::LongDash } }) {
        chart.Line(x, Each(x, [&](double at) { return y + std::sin(at); })).Dash(dash).Name(name);
        y -= 1.5;
    }
    chart.Legend(LegendPlace::Ends);
}

void Widths(Chart& chart)
{
    std::vector<double> const x = Spread(0, 10, 200);
    for (int width = 1; width <= 8; ++width)
        chart.Line(x, Each(x, [&](double at) { return width + 0.4 * std::sin(at); }))
            .Width(width)
            .Dash(Dash::Solid)
            .Colour(colours::kSkyBlue)
            .Name(std::to_string(width) + " px");
    chart.Y().Range(0, 9);
    chart.Legend(LegendPlace::Ends);
}

void Smoothness(Chart& chart)
{
    for (bool const smooth : { false, true }) {
        double const left = smooth ? 1.1 : 0;
        std::vector<double> x;
        std::vector<double> y;
        for (double const angle : Spread(0, pi / 2, 19)) {
            x.insert(x.end(), { left, left + std::cos(angle) });
            y.insert(y.end(), { 0, std::sin(angle) });
        }
        chart.Add(SeriesKind::Pairs, x, y).Smooth(smooth).Width(1).Name(smooth ? "smooth" : "plain");
    }
    chart.Grid(GridChoice::Off);
}

void Marks(Chart& chart)
{
    std::vector<double> const x = Spread(0, 10, 11);
    double y = 7;
    for (auto const& [name, mark] : { std::pair { "circle", Mark::Circle }, { "square", Mark::Square },
             { "triangle", Mark::Triangle }, { "inverted", Mark::InvertedTriangle }, { "diamond", Mark::Diamond },
             { "cross", Mark::Cross }, { "plus", Mark::Plus } }) {
        chart.Line(x, Each(x, [&](double at) { return y + 0.5 * std::cos(0.6 * at); })).Mark(mark).Name(name);
        --y;
    }
    chart.Legend(LegendPlace::Ends);
}

void Scatter(Chart& chart)
{
    chart.X().Title("lowest temperature / °C");
    chart.Y().Title("highest temperature / °C");
    chart.Points(kJulyLows, kJulyHighs);
}

void PointClouds(Chart& chart)
{
    FixedRandom random(7);
    auto const add = [&](char const* name, double x, double y, Mark mark) {
        std::vector<double> const centre(250);
        auto const across = Each(centre, [&](double) { return x + random.Normal(); });
        chart.Points(across, Each(centre, [&](double) { return y + 0.8 * random.Normal(); }))
            .Name(name)
            .Mark(mark)
            .MarkSize(0.8);
    };
    add("around (−2, 1)", -2, 1, Mark::Square);
    add("around (2, 2)", 2, 2, Mark::Diamond);
    add("around (1, −2)", 1, -2, Mark::Plus);
}

void HenonMap(Chart& chart)
{
    std::vector<double> x { 0.1 };
    std::vector<double> y { 0.1 };
    for (std::size_t i = 0; i < 6'000; ++i) {
        x.push_back(1 - 1.4 * x[i] * x[i] + y[i]);
        y.push_back(0.3 * x[i]);
    }
    chart.Points(x, y).Mark(Mark::Pixel);
}

void Bells(Chart& chart)
{
    chart.X().Title("x");
    chart.Y().Title("density").From(0);
    std::vector<double> const x = Spread(-6, 6, 241);
    for (auto const& [name, width] : { std::pair { "σ = 0.5", 0.5 }, { "σ = 1", 1 }, { "σ = 2", 2 } })
        chart
            .Filled(x,
                Each(x,
                    [width = width](
                        double at) { return std::exp(-at * at / (2 * width * width)) / (width * std::sqrt(2 * pi)); }))
            .Name(name);
}

void Precipitation(Chart& chart)
{
    chart.Y().Title("precipitation / mm");
    chart.Bars(kMonths, kMeanPrecipitation);
}

void Histogram(Chart& chart)
{
    chart.X().Title("temperature / °C");
    chart.Y().Title("days");
    chart.Histogram(kJulyLows).Name("lowest");
    chart.Histogram(kJulyHighs).Name("highest");
}

void UpAndDown(Chart& chart)
{
    chart.Y().Title("difference / ppm");
    chart.Bars(kMonths, kCarbonCycle);
}

void KindsOfDays(Chart& chart)
{
    // The most frequent first.
    std::multimap<double, std::string, std::greater<>> kinds;
    for (auto const& kind : kWeatherKinds)
        kinds.emplace(std::accumulate(kind.days.begin(), kind.days.end(), 0.0), kind.name);
    std::vector<std::string> names;
    std::vector<double> days;
    for (auto const& [count, name] : kinds) {
        names.push_back(name);
        days.push_back(count);
    }
    chart.Y().Title("days in four years");
    chart.Bars(names, days);
}

void YearsSideBySide(Chart& chart)
{
    chart.Y().Title("precipitation / mm");
    int year = kFirstYear;
    for (auto const& months : kPrecipitation)
        chart.Bars(kMonths, months).Name(std::to_string(year++));
}

/// Days of each kind of weather by month.
void AddWeather(Chart& chart, SeriesKind series)
{
    constexpr Colour kColours[] { colours::kOrange, colours::kGrey, colours::kSkyBlue, colours::kBlue,
        colours::kPurple };
    for (std::size_t i = 0; i < kWeatherKinds.size(); ++i)
        chart.Add(series, kMonths, kWeatherKinds[i].days).Name(kWeatherKinds[i].name).Colour(kColours[i]);
}

void WeatherStacks(Chart& chart)
{
    chart.Y().Title("days in four years");
    AddWeather(chart, SeriesKind::Stacked);
}

void WeatherShares(Chart& chart)
{
    chart.Y().Title("share of the days / %");
    AddWeather(chart, SeriesKind::Stacked);
    chart.Percent();
}

void StacksBelowZero(Chart& chart)
{
    chart.Y().Title("gain and loss");
    std::vector<double> const x = Spread(1, 12, 12);
    double i = 0;
    for (auto const& [name, sign] : { std::pair { "first", 1 }, { "second", -1 }, { "third", 1 }, { "fourth", -1 } }) {
        chart.Stacked(x, Each(x, [&, sign = sign](double at) { return sign * (3 + 2 * std::sin(0.5 * at + i)); }))
            .Name(name);
        ++i;
    }
}

void SpectralLines(Chart& chart)
{
    chart.X().Title("wavelength / nm");
    chart.Y().Title("intensity");
    std::vector<double> const x = Spread(600, 610, 201);
    for (auto const& [name, centre, width] :
        { std::tuple { "603 nm", 603, 2 }, { "605 nm", 605, 3 }, { "606.5 nm", 606.5, 4 } })
        chart
            .Area(x,
                Each(x,
                    [centre = centre, width = width](
                        double at) { return 1 / (1 + width * (at - centre) * (at - centre)); }))
            .Name(name);
}

void WeatherAreas(Chart& chart)
{
    chart.Y().Title("share of the days");
    AddWeather(chart, SeriesKind::Area);
    chart.Normalised();
}

void Deviations(Chart& chart)
{
    chart.Y().Title("highest temperature / °C");
    chart.Line(kMonths, kMeanHighs).Marks().Errors(kHighDeviations);
}

void FittedLine(Chart& chart)
{
    chart.X().Title("distance / m");
    chart.Y().Title("time / s");
    auto const expected = [](double x) { return 2 + 0.8 * x; };
    FixedRandom random(99);
    std::vector<double> const x = Spread(1, 15, 15);
    std::vector<double> const errors = Each(x, [](double at) { return 0.25 + 0.05 * at; });
    std::vector<double> measured;
    for (std::size_t i = 0; i < x.size(); ++i)
        measured.push_back(expected(x[i]) + errors[i] * random.Normal());
    chart.Points(x, measured).Errors(errors).Name("measured");
    std::vector<double> const ends { 0, 16 };
    chart.Line(ends, Each(ends, expected)).Name("expected");
}

void Planets(Chart& chart)
{
    std::vector<std::string> const names { "Mercury", "Venus", "Earth", "Mars", "Jupiter", "Saturn", "Uranus",
        "Neptune" };
    std::vector<double> const distances { 0.387, 0.723, 1, 1.524, 5.203, 9.537, 19.19, 30.07 };
    std::vector<double> const periods { 0.241, 0.615, 1, 1.881, 11.86, 29.45, 84.02, 164.8 };
    chart.X().Title("distance / astronomical units").Logarithmic();
    chart.Y().Title("period / years").Logarithmic();
    chart.Texts(distances, periods, names);
}

void MinorGrid(Chart& chart)
{
    std::vector<double> const x = Spread(0, 10, 400);
    chart.X().Title("x");
    chart.Y().Title("x sin x");
    chart.Line(x, Each(x, [](double at) { return at * std::sin(at); }));
    chart.Grid(GridChoice::Both);
}

void Threshold(Chart& chart)
{
    chart.X().Title("day of July 2014");
    chart.Y().Title("highest temperature / °C");
    chart.Line(kJulyHighs);
    std::vector<double> const ends { 1, 31 };
    chart.Line(ends, std::vector<double> { 30, 30 }).Dash(Dash::Dashed).Width(1);
    chart.Grid(GridChoice::Off);
}

void Days(Chart& chart)
{
    using namespace std::chrono;
    std::vector<sys_days> days;
    for (unsigned n = 1; n <= 31; ++n)
        days.emplace_back(2014y / July / day(n));
    chart.Y().Title("temperature / °C");
    chart.Line(days, kJulyHighs).Name("highest");
    chart.Line(days, kJulyLows).Name("lowest");
    chart.Legend(LegendPlace::Ends);
}

void Hours(Chart& chart)
{
    using namespace std::chrono;
    chart.Y().Title("tide / m");
    // The two largest tides of the moon and the sun, with periods of 12.42 and 12 hours, every six minutes.
    std::vector<sys_time<minutes>> times;
    std::vector<double> tides;
    for (int i = 0; i <= 480; ++i) {
        times.push_back(sys_days(2024y / March / 9) + 6min * i);
        tides.push_back(1.6 * std::cos(2 * pi * i / 124.2) + 0.6 * std::cos(2 * pi * i / 120));
    }
    chart.Line(times, tides);
}

void Decay(Chart& chart)
{
    chart.X().Title("half-lives");
    chart.Y().Title("activity / Bq").Logarithmic();
    auto const activity = [](double x) { return 20'000 * std::exp2(-x) + 2; };
    FixedRandom random(5);
    std::vector<double> const x = Spread(0, 12, 121);
    chart
        .Points(x,
            Each(x,
                [&](double at) {
                    return std::abs(activity(at) + std::sqrt(5 * activity(at)) * random.Normal()) + 0.2;
                }))
        .MarkSize(0.6)
        .Name("counted");
    chart.Line(x, Each(x, activity)).Name("expected");
    chart.Grid(GridChoice::Both);
}

void LowPasses(Chart& chart)
{
    chart.X().Title("frequency / Hz").Logarithmic();
    chart.Y().Title("amplification").Logarithmic();
    std::vector<double> const f = Each(Spread(0, 3, 301), [](double power) { return std::pow(10, power); });
    for (int order = 1; order <= 3; ++order)
        chart.Line(f, Each(f, [&](double at) { return 1 / std::sqrt(1 + std::pow(at / 20, 2 * order)); }))
            .Name("order " + std::to_string(order));
    chart.Legend(LegendPlace::Ends);
}

void PolarCurves(Chart& chart)
{
    std::vector<double> const angles = Spread(0, 2 * pi, 721);
    chart.Polar(Chart::Angle::Radians);
    chart.Line(angles, Each(angles, [](double at) { return 2 * (1 - std::cos(at)); })).Name("cardioid");
    chart.Line(angles, Each(angles, [](double at) { return 4 * std::abs(std::cos(2 * at)); })).Name("rose");
}

void Corner(Chart& chart)
{
    std::vector<double> const x = Spread(0, 10, 11);
    double slope = 3;
    for (char const* const name : { "spring", "summer", "autumn" }) {
        chart.Line(x, Each(x, [&](double at) { return slope * std::sqrt(at + 1); })).Marks().Name(name);
        --slope;
    }
    chart.Legend(LegendPlace::TopLeft);
}

void Captions(Chart& chart)
{
    CarbonDioxide(chart);
    chart.Caption("Mauna Loa Observatory\nHawaii, 3397 m", 0.05, 0.08).Caption("350 ppm in 1988", 0.55, 0.62);
}

void Interest(Chart& chart)
{
    chart.X().Title("years");
    chart.Y().Title("times the first sum");
    std::vector<double> const years = Spread(0, 30, 31);
    for (int rate = 1; rate <= 8; ++rate)
        chart.Line(years, Each(years, [&](double at) { return std::pow(1 + rate / 100.0, at); }))
            .Name(std::to_string(rate) + " %");
    chart.SetPalette("turbo").Legend(LegendPlace::Ends);
}

void Pendulums(Chart& chart)
{
    chart.X().Title("time / s");
    chart.Y().Title("deflection / mm");
    std::vector<double> const t = Spread(0, 10, 300);
    double i = 0;
    for (char const* const name : { "first", "second", "third", "fourth" }) {
        chart.Line(t, Each(t, [&](double at) { return std::exp(-at / 6) * std::sin(at + 0.6 * i) + 0.5 * i; }))
            .Name(name);
        ++i;
    }
    chart.Legend(LegendPlace::Ends);
}

constexpr GalleryPicture kPictures[] {
    { "lines-oscillations", "Lines", "Strongly damped oscillations rest after ten seconds",
        "Smooth lines two pixels wide, and a legend that shows them.", OMBREL_PICTURE(DampedOscillations),
        "Computed: 5 exp(−δt) cos 1.5t" },
    { "lines-carbon-dioxide", "Lines", "Carbon dioxide rose by 96 ppm in 60 years",
        "Yearly means at Mauna Loa, 1959 to 2019.", OMBREL_PICTURE(CarbonDioxide), kCarbonSource },
    { "lines-walks", "Lines", "Random walks stray far from where they began", "Lines that are named at their ends.",
        OMBREL_PICTURE(RandomWalks), "Computed: sums of normal random numbers" },
    { "lines-many-points", "Lines", "A hundred thousand points, and no peak is lost",
        "However many points there are, drawing costs one pass over them.", OMBREL_PICTURE(ManyPoints),
        "Computed: 3 sin(t/8), with noise that swells" },
    { "lines-steps", "Lines", "Three bits leave steps of one volt", "Each value holds until the next one.",
        OMBREL_PICTURE(Steps), "Computed: 3.5 + 3.5 sin t, rounded" },
    { "lines-pairs", "Lines", "July nights are twelve degrees cooler than days",
        "Pairs of points, joined: temperatures of each day of July 2014 in Seattle.", OMBREL_PICTURE(DailyRanges),
        kWeatherSource },
    { "lines-parametric", "Lines", "Seven swings across and nine up weave a net", "Points may come in any order.",
        OMBREL_PICTURE(Lissajous), "Computed: x = sin 7t, y = cos 9t" },
    { "lines-bessel", "Lines", "Bessel functions of higher order rise later", "Curves that share their x values.",
        OMBREL_PICTURE(BesselFunctions), "Computed: Bessel functions of the first kind" },
    { "types-dashes", "Line types", "Six kinds of dashes stay apart", "From solid to long dashes.",
        OMBREL_PICTURE(Dashes), "Computed: sin x" },
    { "types-widths", "Line types", "Lines of one to eight pixels", "Widths are those of a screen, on paper too.",
        OMBREL_PICTURE(Widths), "Computed: 0.4 sin x" },
    { "types-smooth", "Line types", "Plain lines have steps, smooth ones have none",
        "Lines of one pixel, drawn pixel by pixel on the left and anti-aliased on the right.",
        OMBREL_PICTURE(Smoothness), "Computed: rays every five degrees" },
    { "symbols-all", "Symbols", "Seven marks tell lines apart in print, too", "Every mark, on a line.",
        OMBREL_PICTURE(Marks), "Computed: 0.5 cos 0.6x" },
    { "symbols-scatter", "Symbols", "Warm days follow warm nights, but not closely",
        "Highest over lowest temperature of each day of July 2014 in Seattle.", OMBREL_PICTURE(Scatter),
        kWeatherSource },
    { "symbols-clouds", "Symbols", "Three clouds of points overlap little", "Points of three normal distributions.",
        OMBREL_PICTURE(PointClouds), "Computed: normal random numbers" },
    { "symbols-pixels", "Symbols", "The Hénon map folds onto itself", "Six thousand points, a pixel each.",
        OMBREL_PICTURE(HenonMap), "Computed: x → 1 − 1.4x² + y, y → 0.3x" },
    { "shading-filled", "Shading", "The wider a bell, the lower it is", "Lines with a shade below them.",
        OMBREL_PICTURE(Bells), "Computed: normal densities" },
    { "bars-months", "Bars", "Seattle's Novembers are wet, its Julys dry", "Bars: an average month, 2012 to 2015.",
        OMBREL_PICTURE(Precipitation), kWeatherSource },
    { "bars-histogram", "Bars", "July's warmest nights are as warm as its coolest days",
        "Histograms share their bins: lowest and highest temperatures of July 2014 in Seattle.",
        OMBREL_PICTURE(Histogram), kWeatherSource },
    { "bars-up-and-down", "Bars", "Carbon dioxide peaks in May and is lowest in October",
        "Bars that stand on zero or hang from it: the season's part.", OMBREL_PICTURE(UpAndDown), kCarbonSource },
    { "axes-names", "Bars", "Seattle has as many days of rain as of sun",
        "Words along x, the most frequent first: days of each kind of weather, 2012 to 2015.",
        OMBREL_PICTURE(KindsOfDays), kWeatherSource },
    { "clustered-years", "Bars", "In four years no July had 30 mm of rain",
        "Years side by side: precipitation in Seattle, month by month.", OMBREL_PICTURE(YearsSideBySide),
        kWeatherSource },
    { "stacked-weather", "Stacked bars", "From May to September there is more sun than rain",
        "Stacks: kinds of weather in Seattle, 2012 to 2015.", OMBREL_PICTURE(WeatherStacks), kWeatherSource },
    { "stacked-shares", "Stacked bars", "Nearly three of four days in July are sunny", "The same in percent.",
        OMBREL_PICTURE(WeatherShares), kWeatherSource },
    { "stacked-below-zero", "Stacked bars", "Gains and losses swing, and nearly balance",
        "Positive values are stacked upwards, negative ones downwards.", OMBREL_PICTURE(StacksBelowZero),
        "Computed: 3 + 2 sin(x/2 + i)" },
    { "areas-stacked", "Areas", "Three spectral lines add up to one broad band", "Three spectral lines and their sum.",
        OMBREL_PICTURE(SpectralLines), "Computed: Lorentz profiles" },
    { "areas-shares", "Areas", "Sun and rain change places twice a year",
        "Kinds of weather in Seattle as shares of one.", OMBREL_PICTURE(WeatherAreas), kWeatherSource },
    { "errors-deviations", "Error bars", "Highs in Seattle spread most in early summer",
        "Mean and standard deviation of daily highs by month.", OMBREL_PICTURE(Deviations), kWeatherSource },
    { "errors-fit", "Error bars", "Most measurements lie within an error of the line",
        "Measurements with errors that grow, beside what is expected.", OMBREL_PICTURE(FittedLine),
        "Computed: 2 + 0.8x with normal errors" },
    { "texts-points", "Texts", "A planet's year grows with its distance from the sun",
        "The square of the period grows with the cube of the distance.", OMBREL_PICTURE(Planets),
        "Source: NASA, planetary fact sheet" },
    { "grid-minor", "Grids", "The swings of x sin x grow with x", "Major lines, and minor ones between.",
        OMBREL_PICTURE(MinorGrid), "Computed: x sin x" },
    { "grid-threshold", "Grids", "Nine days of July 2014 reached 30 degrees",
        "A line of its own in place of a grid: highest temperatures in Seattle.", OMBREL_PICTURE(Threshold),
        kWeatherSource },
    { "grid-days", "Grids", "The hottest day of July 2014 was its first",
        "Daily temperatures in Seattle, with a line for each week.", OMBREL_PICTURE(Days), kWeatherSource },
    { "grid-hours", "Grids", "A spring tide comes twice a day", "Hours along x: a spring tide over two days.",
        OMBREL_PICTURE(Hours), "Computed: tides of 12.42 and 12 hours" },
    { "grid-logarithmic", "Grids", "After ten half-lives a source is lost in noise",
        "A logarithmic axis has a line for each digit.", OMBREL_PICTURE(Decay),
        "Computed: 20,000 / 2^x + 2, with noise" },
    { "grid-log-log", "Grids", "Filters of higher order fall more steeply", "Low-pass filters on two logarithmic axes.",
        OMBREL_PICTURE(LowPasses), "Computed: 1 / √(1 + (f/20)^2n)" },
    { "grid-polar", "Grids", "A cardioid opens to the left, a rose to all sides",
        "Angles run counterclockwise on a polar grid.", OMBREL_PICTURE(PolarCurves),
        "Computed: 2 (1 − cos φ) and 4 |cos 2φ|" },
    { "legend-corner", "Legends and captions", "Spring grows three times as fast as autumn",
        "A legend in a corner of its own choice shows lines with their marks.", OMBREL_PICTURE(Corner),
        "Computed: multiples of √(x + 1)" },
    { "captions-texts", "Legends and captions", "Carbon dioxide passed 350 ppm in 1988",
        "Texts of several lines anywhere over the graph.", OMBREL_PICTURE(Captions), kCarbonSource },
    { "colours-palette", "Colours", "At 8 % interest, money grows tenfold in thirty years",
        "Curves take the colours of a map in their order, and names at their ends are the key.",
        OMBREL_PICTURE(Interest), "Computed: (1 + p)^n" },
    { "theme-light", "Themes", "Four pendulums come to rest together, on light ground", "For screens.",
        OMBREL_PICTURE(Pendulums), "Computed: exp(−t/6) sin(t + 0.6i)", Theme::Light },
    { "theme-dark", "Themes", "Four pendulums come to rest together, on dark ground", "For dark screens.",
        OMBREL_PICTURE(Pendulums), "Computed: exp(−t/6) sin(t + 0.6i)", Theme::Dark },
    { "theme-print", "Themes", "Four pendulums come to rest together, on paper", "For paper.",
        OMBREL_PICTURE(Pendulums), "Computed: exp(−t/6) sin(t + 0.6i)", Theme::Print },
};

} // namespace

std::span<GalleryPicture const> ChartPictures() { return kPictures; }

} // namespace ombrel::host
