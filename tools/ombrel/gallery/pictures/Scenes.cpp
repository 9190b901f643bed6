#include "ombrel/chart.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

namespace ombrel::host {

namespace {

using std::numbers::pi;

/// Two hills and a hollow.
Grid Hills()
{
    return GridOf(Spread(-3, 3, 121), Spread(-3, 3, 121), [](double x, double y) {
        double const right = (x - 1.2) * (x - 1.2) + (y - 0.6) * (y - 0.6);
        double const left = (x + 1.4) * (x + 1.4) + (y + 0.9) * (y + 0.9);
        double const hollow = x * x / 2 + (y - 1.8) * (y - 1.8);
        return 90 * std::exp(-right) + 60 * std::exp(-left / 1.5) - 50 * std::exp(-hollow);
    });
}

/// A ripple.
Grid Ripple()
{
    std::vector<double> const places = Spread(-12, 12, 121);
    return GridOf(places, places, [](double x, double y) {
        double const r = std::hypot(x, y);
        return r > 0 ? std::sin(r) / r : 1;
    });
}

ContourMap BandsAndLines(std::string_view title)
{
    ContourMap map(Hills(), title);
    map.LevelsEach(10).Contours(ContourChoice::Both).Name("height / m");
    return map;
}

ContourMap ColouredLines(std::string_view title)
{
    ContourMap map(Hills(), title);
    map.LevelsEach(10, 5).Contours(ContourChoice::Lines).LineColours().ColourMap("turbo").Name("height / m");
    return map;
}

ContourMap Shades(std::string_view title)
{
    ContourMap map(GridOf(Spread(-4, 4, 201), Spread(-3, 3, 201),
                       [](double x, double y) {
                           double const r = std::hypot(x - 0.5, y);
                           return std::cos(3 * r) / (1 + r);
                       }),
        title);
    map.Contours(ContourChoice::Off).ColourMap("magma").Name("height / cm");
    return map;
}

ContourMap Hole(std::string_view title)
{
    // There is nothing inside the cylinder.
    ContourMap map(GridOf(Spread(-3, 3, 241), Spread(-2, 2, 241),
                       [](double x, double y) {
                           double const r = x * x + y * y;
                           return r < 1 ? std::numeric_limits<double>::quiet_NaN() : y - y / r;
                       }),
        title);
    map.LevelsEach(0.25).Contours(ContourChoice::Both).ColourMap("coolwarm").Name("flow");
    return map;
}

void LitSurface(Scene& scene) { scene.Surface(Ripple()).ColourMap("viridis"); }

void BandedSurface(Scene& scene)
{
    std::vector<double> const places = Spread(-4, 4, 101);
    scene.Surface(GridOf(places, places, [](double x, double y) { return std::sin(x) * std::cos(y) + 0.1 * x; }))
        .LevelsEach(0.25)
        .Contours(ContourChoice::Both)
        .ColourMap("coolwarm");
}

void Wireframe(Scene& scene) { scene.Surface(Ripple()).Wireframe(3).ColourMap("plasma"); }

void Transparent(Scene& scene)
{
    std::vector<double> const places = Spread(-3, 3, 61);
    scene
        .Surface(GridOf(places, places,
            [](double x, double y) { return 0.5 + 0.5 * std::cos(pi * std::min(std::hypot(x, y) / 3, 1.0)); }))
        .Transparency(0.5)
        .LevelsEach(0.1)
        .Contours(ContourChoice::Lines);
}

void Scattered(Scene& scene)
{
    FixedRandom random(3);
    std::vector<double> const points(700);
    std::vector<double> const x = Each(points, [&](double) { return 6 * random.Uniform() - 3; });
    std::vector<double> const y = Each(points, [&](double) { return 6 * random.Uniform() - 3; });
    std::vector<double> z;
    for (std::size_t i = 0; i < x.size(); ++i)
        z.push_back((x[i] * x[i] - y[i]) * std::exp(-(x[i] * x[i] + y[i] * y[i]) / 2));
    scene.Surface(x, y, z).Wireframe().ColourMap("turbo");
}

void Globe(Scene& scene)
{
    // Longitudes and latitudes in degrees; heights are radii.
    scene
        .Surface(GridOf(Spread(0, 360, 121), Spread(-90, 90, 121),
            [](double longitude, double latitude) {
                double const ring = std::cos(latitude * pi / 180);
                return 1 + 0.15 * ring * ring * ring * std::cos(6 * longitude * pi / 180);
            }))
        .Coordinates(CoordinateChoice::Geographical)
        .ColourMap("turbo")
        .Name("radius");
    scene.View({ 230, 70 });
}

void Drum(Scene& scene)
{
    // Radii, and angles in degrees. The rim lies at the second zero of the Bessel function.
    scene
        .Surface(GridOf(Spread(0, 1, 91), Spread(0, 360, 91),
            [](double radius, double angle) {
                return std::cyl_bessel_j(1.0, 7.0155867 * radius) * std::cos(angle * pi / 180);
            }))
        .Coordinates(CoordinateChoice::Radial)
        .ColourMap("coolwarm");
}

void RainBars(Scene& scene)
{
    std::vector<double> rain;
    for (auto const& year : kPrecipitation)
        rain.insert(rain.end(), year.begin(), year.end());
    scene.Bars(rain, kPrecipitation.size(), 12).XRange(1, 12).YRange(kFirstYear, kFirstYear + 3).Name("rain / mm");
    scene.X().Title("month");
    scene.Y().Title("year");
}

void Sunflower(Scene& scene)
{
    constexpr double kGoldenAngle = 2.399963229728653;
    std::vector<double> const seeds = Spread(0.5, 119.5, 120);
    scene
        .Bars(Each(seeds, [](double i) { return std::sqrt(i) * std::cos(kGoldenAngle * i); }),
            Each(seeds, [](double i) { return std::sqrt(i) * std::sin(kGoldenAngle * i); }),
            Each(seeds, [](double i) { return 4 * std::exp(-i / 40); }))
        .ColourMap("plasma");
}

void Resonances(Scene& scene)
{
    // Two peaks, the nearer to each other the weaker their coupling.
    auto const peak = [](double detuning) { return 1 / (1 + 16 * detuning * detuning); };
    scene.Series(GridOf(Spread(-4, 4, 161), Spread(0, 2.75, 12),
        [&](double frequency, double coupling) { return peak(frequency - coupling) + peak(frequency + coupling); }));
    scene.X().Title("frequency");
    scene.Y().Title("coupling");
    scene.View({ 290, 60 });
}

void Net(Scene& scene)
{
    std::vector<double> const places = Spread(-1, 1, 41);
    scene.Wireframe(GridOf(places, places, [](double x, double y) { return x * x * x - 3 * x * y * y; }))
        .ColourMap("turbo");
}

void Attractor(Scene& scene)
{
    std::vector<double> x { 1 };
    std::vector<double> y { 1 };
    std::vector<double> z { 20 };
    constexpr double kStep = 0.004;
    for (std::size_t i = 0; i < 12'000; ++i) {
        x.push_back(x[i] + kStep * 10 * (y[i] - x[i]));
        y.push_back(y[i] + kStep * (x[i] * (28 - z[i]) - y[i]));
        z.push_back(z[i] + kStep * (x[i] * y[i] - 8.0 / 3.0 * z[i]));
    }
    scene.Line(x, y, z);
}

void Knot(Scene& scene)
{
    std::vector<double> const t = Spread(0, 2 * pi, 241);
    scene
        .Line(Each(t, [](double at) { return std::sin(at) + 2 * std::sin(2 * at); }),
            Each(t, [](double at) { return std::cos(at) - 2 * std::cos(2 * at); }),
            Each(t, [](double at) { return -std::sin(3 * at); }))
        .Tubes()
        .Width(4);
}

void Helix(Scene& scene)
{
    std::vector<double> const t = Spread(0, 18, 61);
    scene
        .Line(Each(t, [](double at) { return std::cos(at); }), Each(t, [](double at) { return std::sin(at); }),
            Each(t, [](double at) { return at / 3; }))
        .Symbols(SymbolChoice::Sphere, 1.2);
}

void Clouds(Scene& scene)
{
    constexpr double kCentres[][3] { { 0, 0, 2 }, { 4, 5, 6 }, { 8, 1, 4 } };
    FixedRandom random(7);
    Points points;
    for (std::size_t i = 0; i < 450; ++i) {
        double const d[] { random.Normal(), random.Normal(), random.Normal() };
        points.x.push_back(kCentres[i % 3][0] + d[0]);
        points.y.push_back(kCentres[i % 3][1] + d[1]);
        points.z.push_back(kCentres[i % 3][2] + d[2]);
        points.colours.push_back(std::hypot(d[0], d[1], d[2]));
        points.sizes.push_back(0.4 + random.Uniform());
    }
    points.colourTitle = "distance";
    scene.Points(points).ColourMap("plasma");
}

void Sticks(Scene& scene)
{
    std::vector<double> const angles = Spread(0, 35 * pi / 18, 36);
    scene
        .Points(Each(angles, [](double at) { return std::cos(at); }),
            Each(angles, [](double at) { return std::sin(at); }),
            Each(angles, [](double at) { return 1 + 0.6 * std::sin(3 * at); }))
        .Sticks()
        .Symbols(SymbolChoice::Sphere, 1.6);
}

void ColourCube(Scene& scene)
{
    std::vector<double> const red { 0, 1, 0, 1, 0, 1, 0, 1 };
    std::vector<double> const green { 0, 0, 1, 1, 0, 0, 1, 1 };
    std::vector<double> const blue { 0, 0, 0, 0, 1, 1, 1, 1 };
    std::vector<std::string> const names { "black", "red", "green", "yellow", "blue", "magenta", "cyan", "white" };
    scene.Texts(red, green, blue, names).Symbols(SymbolChoice::Cube);
    scene.X().Title("red");
    scene.Y().Title("green");
    scene.Z().Title("blue");
}

constexpr GalleryPicture kPictures[] {
    { "contours-bands", "Contours", "Two hills rise beside a hollow",
        "Heights from above: a colour for each ten metres, and lines between.", OMBREL_PICTURE(BandsAndLines),
        "Computed: three exponentials" },
    { "contours-lines", "Contours", "The northern hill is the higher and the steeper",
        "The same heights as lines, each in the colour of its level.", OMBREL_PICTURE(ColouredLines),
        "Computed: three exponentials" },
    { "contours-shades", "Contours", "Waves flatten as they run outwards",
        "Colours that follow the heights without steps.", OMBREL_PICTURE(Shades), "Computed: cos 3r / (1 + r)" },
    { "contours-hole", "Contours", "A flow round a cylinder is fastest at its sides",
        "Where values are missing nothing is drawn.", OMBREL_PICTURE(Hole), "Computed: y − y / r²" },
    { "surfaces-lit", "Surfaces", "A ripple dies away from its middle", "Heights in a box, lit from the viewer's left.",
        OMBREL_PICTURE(LitSurface), "Computed: sin r / r" },
    { "surfaces-bands", "Surfaces", "Hills and hollows take turns, and rise to the east",
        "A colour for each quarter, and lines where they meet.", OMBREL_PICTURE(BandedSurface),
        "Computed: sin x cos y + x/10" },
    { "surfaces-wireframe", "Surfaces", "Lines of a grid show how a ripple bends",
        "Every third line of the grid over the surface.", OMBREL_PICTURE(Wireframe), "Computed: sin r / r" },
    { "surfaces-transparent", "Surfaces", "The far side of a dome shines through the near one",
        "Half of what lies behind shines through; the lines do not.", OMBREL_PICTURE(Transparent),
        "Computed: (1 + cos πr/3) / 2" },
    { "surfaces-scattered", "Surfaces", "Seven hundred scattered points join to a surface",
        "Triangles between points that form no grid.", OMBREL_PICTURE(Scattered), "Computed: (x² − y) exp(−r²/2)" },
    { "surfaces-globe", "Surfaces", "Six bulges stand round a sphere's equator", "Radii over longitudes and latitudes.",
        OMBREL_PICTURE(Globe), "Computed: 1 + 0.15 cos³θ cos 6φ" },
    { "surfaces-drum", "Surfaces", "One half of a drum's skin rises as the other falls",
        "A shape of a drum's skin over radii and angles.", OMBREL_PICTURE(Drum), "Computed: J₁(7.016 r) cos φ" },
    { "bars3d-rain", "Bars and series in 3D", "Rain falls in winter, year after year",
        "Bars over a grid of months and years.", OMBREL_PICTURE(RainBars), kWeatherSource },
    { "bars3d-scattered", "Bars and series in 3D", "A golden angle apart, seeds leave no room",
        "Bars at points that form no grid.", OMBREL_PICTURE(Sunflower), "Computed: 4 exp(−r²/40)" },
    { "series3d-stacks", "Bars and series in 3D", "Coupling splits a resonance in two",
        "Lines one behind the other, each over a stack.", OMBREL_PICTURE(Resonances),
        "Computed: two Lorentz profiles" },
    { "wireframe3d", "Bars and series in 3D", "A monkey saddle has room for two legs and a tail",
        "The lines of a grid alone.", OMBREL_PICTURE(Net), "Computed: x³ − 3xy²" },
    { "lines3d-attractor", "Points in 3D", "A path that never repeats keeps to two wings",
        "A line through 12,000 points.", OMBREL_PICTURE(Attractor), "Computed: Lorenz's equations of convection" },
    { "lines3d-knot", "Points in 3D", "A trefoil knot crosses itself three times", "A tube, lit.", OMBREL_PICTURE(Knot),
        "Computed: sin t + 2 sin 2t, cos t − 2 cos 2t, −sin 3t" },
    { "lines3d-helix", "Points in 3D", "A helix climbs nearly three turns", "A line with a sphere at each point.",
        OMBREL_PICTURE(Helix), "Computed: cos t, sin t, t/3" },
    { "scatter3d-clouds", "Points in 3D", "Three clouds thin out from their middles",
        "Coloured by one variable, as large as another.", OMBREL_PICTURE(Clouds), "Computed: normal random numbers" },
    { "scatter3d-sticks", "Points in 3D", "A ring rises and falls three times", "Sticks show where points stand.",
        OMBREL_PICTURE(Sticks), "Computed: 1 + 0.6 sin 3φ" },
    { "text3d-colours", "Points in 3D", "All colours lie between eight corners", "Texts at points, with marks.",
        OMBREL_PICTURE(ColourCube) },
};

} // namespace

std::span<GalleryPicture const> ScenePictures() { return kPictures; }

} // namespace ombrel::host
