#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <array>
#include <cmath>
#include <numbers>

namespace ombrel::host {

namespace {

/// Points for a curve.
struct PointList {
    CDoubleArray x;
    CDoubleArray y;
    CDoubleArray z;

    void Add(double px, double py, double pz)
    {
        x.Add(px);
        y.Add(py);
        z.Add(pz);
    }
};

void Attractor(C3DGraph& graph, PictureLook const& look)
{
    auto& line = AddSceneCurve<C3DLineCurve>(graph, it3DLinePlot);
    // The path of Lorenz's three equations of convection.
    PointList path;
    double x = 1;
    double y = 1;
    double z = 20;
    constexpr double kStep = 0.004;
    for (int i = 0; i < 12000; ++i) {
        path.Add(x, y, z);
        double const dx = 10 * (y - x);
        double const dy = x * (28 - z) - y;
        double const dz = x * y - 8.0 / 3.0 * z;
        x += kStep * dx;
        y += kStep * dy;
        z += kStep * dz;
    }
    line.SetPoints(&path.x, &path.y, &path.z);
    line.SetLineStyle(0);
    line.SetColour(look.Colour(0));
}

void Knot(C3DGraph& graph, PictureLook const& look)
{
    auto& line = AddSceneCurve<C3DLineCurve>(graph, it3DLinePlot);
    PointList knot;
    constexpr int kPoints = 240;
    for (int i = 0; i <= kPoints; ++i) {
        double const t = 2 * std::numbers::pi * i / kPoints;
        knot.Add(std::sin(t) + 2 * std::sin(2 * t), std::cos(t) - 2 * std::cos(2 * t), -std::sin(3 * t));
    }
    line.SetPoints(&knot.x, &knot.y, &knot.z);
    line.SetColour(look.Colour(1));
    line.SetThicknessScaleFac(4);
}

void Helix(C3DGraph& graph, PictureLook const& look)
{
    auto& line = AddSceneCurve<C3DLineCurve>(graph, it3DLinePlot);
    PointList helix;
    for (int i = 0; i <= 60; ++i)
        helix.Add(std::cos(0.3 * i), std::sin(0.3 * i), 0.1 * i);
    line.SetPoints(&helix.x, &helix.y, &helix.z);
    line.SetLineStyle(0);
    line.SetColour(look.text);
    line.SetSymbols(1);
    line.SetSymbolScaleFac(1.2);
    line.SetSymbolColour(look.Colour(2));
}

void Clouds(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& scatter = AddSceneCurve<C3DScatterCurve>(graph, it3DScatterPlot);
    constexpr std::array<std::array<double, 3>, 3> kCentres { { { 0, 0, 2 }, { 4, 5, 6 }, { 8, 1, 4 } } };
    FixedRandom random(7);
    PointList points;
    CDoubleArray distances;
    CDoubleArray sizes;
    constexpr int kPoints = 450;
    for (int i = 0; i < kPoints; ++i) {
        auto const& centre = kCentres[static_cast<std::size_t>(i) % kCentres.size()];
        std::array<double, 3> const d { random.Normal(), random.Normal(), random.Normal() };
        points.Add(centre[0] + d[0], centre[1] + d[1], centre[2] + d[2]);
        distances.Add(std::hypot(d[0], d[1], d[2]));
        sizes.Add(0.4 + random.Uniform());
    }
    scatter.SetPoints(&points.x, &points.y, &points.z);
    CDoubleArray* const variables[] { &distances, &sizes };
    scatter.SetVarData(variables, kPoints);
    scatter.SetVar1Use(C3DScatterCurve::vuColour);
    scatter.SetVar2Use(C3DScatterCurve::vuSize);
    scatter.SetSymbolScaleFac(1.5);
    LoadColourMap("plasma", *scatter.GetColourmap());
}

void Sticks(C3DGraph& graph, PictureLook const& look)
{
    auto& scatter = AddSceneCurve<C3DScatterCurve>(graph, it3DScatterPlot);
    PointList points;
    for (int i = 0; i < 36; ++i) {
        double const angle = 2 * std::numbers::pi * i / 36;
        points.Add(std::cos(angle), std::sin(angle), 1 + 0.6 * std::sin(3 * angle));
    }
    scatter.SetPoints(&points.x, &points.y, &points.z);
    scatter.SetColourByZVal(1);
    scatter.SetSymbolScaleFac(1.6);
    scatter.SetSticksOn(1);
    scatter.SetStickColour(look.axes);
    LoadColourMap("viridis", *scatter.GetColourmap());
}

void ColourCube(C3DGraph& graph, PictureLook const& look)
{
    constexpr std::array<char const*, 8> kNames { "black", "red", "green", "yellow", "blue", "magenta", "cyan",
        "white" };
    PointList corners;
    CGStringArray names;
    for (int i = 0; i < 8; ++i) {
        corners.Add(i & 1, i >> 1 & 1, i >> 2);
        names.Add(kNames[static_cast<std::size_t>(i)]);
        // One curve each, for a colour each.
        auto& corner = AddSceneCurve<C3DScatterCurve>(graph, it3DScatterPlot);
        corner.SetNumPts(1);
        corner.SetXVal(0, i & 1);
        corner.SetYVal(0, i >> 1 & 1);
        corner.SetZVal(0, i >> 2);
        corner.SetColour(RGB(255 * (i & 1), 255 * (i >> 1 & 1), 255 * (i >> 2)));
        corner.SetSymbolStyle(3);
        corner.SetSymbolScaleFac(1.2);
    }
    auto& texts = AddSceneCurve<C3DTextCurve>(graph, it3DTextPlot);
    texts.SetPoints(&corners.x, &corners.y, &corners.z, &names, 8);
    texts.SetDeltas(0, 0.04, 0);
    // Below their points, where the axes leave room.
    texts.SetVertAlignment(C3DTextCurve::alTop);
    texts.SetColour(look.text);
    C3DAxis* const* const axes = graph.GetAxes();
    axes[0]->SetTitle("red");
    axes[1]->SetTitle("green");
    axes[2]->SetTitle("blue");
}

constexpr GalleryPicture kPictures[] {
    { "lines3d-attractor", "Points in 3D", "A path that never repeats",
        "A line through 12,000 points of Lorenz's equations.", OMBREL_PICTURE(Attractor) },
    { "lines3d-knot", "Points in 3D", "A knot of one thick line", "A line with a width, lit.", OMBREL_PICTURE(Knot) },
    { "lines3d-helix", "Points in 3D", "Line and symbols", "A sphere at each point.", OMBREL_PICTURE(Helix) },
    { "scatter3d-clouds", "Points in 3D", "Scattered points", "Coloured by one variable, as large as another.",
        OMBREL_PICTURE(Clouds) },
    { "scatter3d-sticks", "Points in 3D", "Points on sticks", "Sticks show where points stand.",
        OMBREL_PICTURE(Sticks) },
    { "text3d-colours", "Points in 3D", "Eight corners of the cube of all colours",
        "The corners of the cube of all colours, with their names.", OMBREL_PICTURE(ColourCube) },
};

} // namespace

std::span<GalleryPicture const> ScenePointPictures() { return kPictures; }

} // namespace ombrel::host
