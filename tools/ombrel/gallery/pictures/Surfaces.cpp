#include "ombrel/colour/TextureMap.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "ombrel/scene/Scene.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace ombrel::host {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

double Hat(double x, double y)
{
    double const r = std::hypot(x, y);
    return r > 0 ? std::sin(r) / r : 1;
}

double Saddles(double x, double y) { return std::sin(x) * std::cos(y) + 0.1 * x; }

/// A surface in colours of that map, without data.
CSurface& AddSurface(C3DGraph& graph, char const* colourMap)
{
    CPlot& plot = *graph.AddPlot(itSurfacePlot);
    auto& surface = static_cast<CSurface&>(*plot.CreateCurve());
    surface.SetColourDescription(2);
    LoadColourMap(colourMap, *surface.GetColourmap());
    return surface;
}

void LitSurface(Scene& scene)
{
    constexpr std::size_t kNodes = 121;
    std::vector<double> heights;
    for (double const y : Spread(-12, 12, kNodes)) {
        for (double const x : Spread(-12, 12, kNodes))
            heights.push_back(Hat(x, y));
    }
    scene.Surface(heights, kNodes, kNodes).XRange(-12, 12).YRange(-12, 12).ColourMap("viridis");
}

void BandedSurface(C3DGraph& graph, PictureLook const& /*look*/)
{
    CSurface& surface = AddSurface(graph, "coolwarm");
    SampleGrid(surface, { -4, -4 }, { 4, 4 }, 100, Saddles);
    surface.SetContoursOn(1);
    surface.SetContourMode(CSurface::cmBandsAndLines);
    surface.SetContourLevelMode(CSurface::clSpacing);
    surface.SetContourRef(0);
    surface.SetContourSpacing(0.25);
    surface.SetContourColour(RGB(40, 40, 40));
}

void Wireframe(C3DGraph& graph, PictureLook const& /*look*/)
{
    CSurface& surface = AddSurface(graph, "plasma");
    SampleGrid(surface, { -12, -12 }, { 12, 12 }, 120, Hat);
    surface.SetWireframeOn(1);
    // Every third line of the grid.
    surface.SetWireframeXFac(3);
    surface.SetWireframeYFac(3);
    surface.SetWireframeColour(RGB(40, 40, 40));
}

void Transparent(C3DGraph& graph, PictureLook const& look)
{
    CSurface& surface = AddSurface(graph, "viridis");
    SampleGrid(surface, { -3, -3 }, { 3, 3 }, 60, [](double x, double y) {
        double const r = std::min(std::hypot(x, y) / 3, 1.0);
        return 0.5 + 0.5 * std::cos(std::numbers::pi * r);
    });
    surface.SetTransparency(0.5);
    surface.SetContoursOn(1);
    surface.SetContourMode(CSurface::cmLines);
    surface.SetContourLevelMode(CSurface::clSpacing);
    surface.SetContourSpacing(0.1);
    surface.SetContourColour(look.text);
}

void Textured(C3DGraph& graph, PictureLook const& look)
{
    CSurface& surface = AddSurface(graph, "viridis");
    SampleGrid(surface, { -4, -4 }, { 4, 4 }, 100, Saddles);
    surface.SetColourDescription(0);
    // An image made here; SetTextureMapParams reads one from a bitmap file.
    constexpr int kSide = 256;
    std::vector<BYTE> texels;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            COLORREF const colour = (x / 32 + y / 32) % 2 ? look.Colour(0) : RGB(235, 235, 235);
            for (BYTE const part : { GetRValue(colour), GetGValue(colour), GetBValue(colour), BYTE { 255 } })
                texels.push_back(part);
        }
    }
    TextureMapParams params;
    params.xMin = params.yMin = -4;
    params.xMax = params.yMax = 4;
    surface.SetUseTextureMap(1);
    surface.GetTextureMap()->SetParams(params);
    surface.GetTextureMap()->SetTexels({ kSide, kSide }, texels);
}

void Globe(C3DGraph& graph, PictureLook const& /*look*/)
{
    CSurface& surface = AddSurface(graph, "turbo");
    surface.SetCurveType(C3DCurve::ctGeographical);
    // Longitudes and latitudes in degrees; heights are radii.
    SampleGrid(surface, { 0, -90 }, { 360, 90 }, 120, [](double longitude, double latitude) {
        double const ring = std::cos(latitude * kDegree);
        return 1 + 0.15 * ring * ring * ring * std::cos(6 * longitude * kDegree);
    });
    graph.SetViewingElevation(70);
}

void Drum(C3DGraph& graph, PictureLook const& /*look*/)
{
    CSurface& surface = AddSurface(graph, "coolwarm");
    surface.SetUseRadialGrid(1);
    // Radii, and angles in degrees: one of the shapes in which the skin of a drum sounds.
    SampleGrid(surface, { 0, 0 }, { 1, 360 }, 90, [](double radius, double angle) {
        constexpr double kSecondZero = 7.0155867;
        return std::cyl_bessel_j(1.0, kSecondZero * radius) * std::cos(angle * kDegree);
    });
}

void Scattered(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& surface = AddSceneCurve<C3DIrregularSurfaceCurve>(graph, it3DIrregularSurfacePlot);
    FixedRandom random(3);
    constexpr int kPoints = 700;
    CDoubleArray x;
    CDoubleArray y;
    CDoubleArray z;
    for (int i = 0; i < kPoints; ++i) {
        double const px = 6 * random.Uniform() - 3;
        double const py = 6 * random.Uniform() - 3;
        x.Add(px);
        y.Add(py);
        z.Add((px * px - py) * std::exp(-(px * px + py * py) / 2));
    }
    CDoubleArray const* const points[] { &x, &y, &z };
    surface.SetTableData(points, kPoints);
    surface.SetColourDescription(1);
    LoadColourMap("turbo", *surface.GetColourmap());
    surface.SetWireframeOn(1);
    surface.SetWireframeColour(RGB(40, 40, 40));
}

constexpr GalleryPicture kPictures[] {
    { "surfaces-lit", "Surfaces", "A ripple, lit from the left", "Heights in a box, lit from the viewer's left.",
        OMBREL_PICTURE(LitSurface) },
    { "surfaces-bands", "Surfaces", "Hills and hollows in four bands",
        "A colour for each quarter, and lines where they meet.", OMBREL_PICTURE(BandedSurface) },
    { "surfaces-wireframe", "Surfaces", "Wireframe", "The lines of the grid over the surface.",
        OMBREL_PICTURE(Wireframe) },
    { "surfaces-transparent", "Surfaces", "Transparent", "Half of what lies behind shines through; the lines do not.",
        OMBREL_PICTURE(Transparent) },
    { "surfaces-textured", "Surfaces", "An image", "A picture that is draped over the surface.",
        OMBREL_PICTURE(Textured) },
    { "surfaces-scattered", "Surfaces", "Scattered points", "Triangles between points that form no grid.",
        OMBREL_PICTURE(Scattered) },
    { "surfaces-globe", "Surfaces", "Round a sphere", "Radii over longitudes and latitudes.", OMBREL_PICTURE(Globe) },
    { "surfaces-drum", "Surfaces", "A drum's skin in one of its shapes",
        "A shape of a drum's skin over radii and angles.", OMBREL_PICTURE(Drum) },
};

} // namespace

std::span<GalleryPicture const> SurfacePictures() { return kPictures; }

} // namespace ombrel::host
