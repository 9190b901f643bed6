#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>

namespace ombrel::host {

namespace {

/// Hills and a hollow, and the waves of a stone that fell into water.
double Hills(double x, double y)
{
    double const right = (x - 1.2) * (x - 1.2) + (y - 0.6) * (y - 0.6);
    double const left = (x + 1.4) * (x + 1.4) + (y + 0.9) * (y + 0.9);
    double const hollow = x * x / 2 + (y - 1.8) * (y - 1.8);
    return 90 * std::exp(-right) + 60 * std::exp(-left / 1.5) - 50 * std::exp(-hollow);
}

double Waves(double x, double y)
{
    double const r = std::hypot(x - 0.5, y);
    return std::cos(3 * r) / (1 + r);
}

/// A contour curve in colours of that map, without data.
C2DContourCurve& AddMap(C2DGraph& graph, char const* title, char const* colourMap)
{
    graph.GetGrid()->SetOn(0);
    CPlot& plot = *graph.AddPlot(it2DContourPlot);
    auto& curve = static_cast<C2DContourCurve&>(*plot.AddCurve(title, CPlotComponent::dsTable));
    LoadColourMap(colourMap, *curve.GetSurface()->GetWireframeColourmap());
    return curve;
}

void BandsAndLines(C2DGraph& graph, PictureLook const& look)
{
    C2DContourCurve& curve = AddMap(graph, "height / m", "viridis");
    SampleGrid(*curve.GetSurface(), { -3, -3 }, { 3, 3 }, 120, Hills);
    curve.SetDisplayMode(C2DContourCurve::dmShadingAndLines);
    curve.SetLevelMode(C2DContourCurve::lmSpaced);
    curve.SetRef(0);
    curve.SetSpacing(10);
    curve.GetSurface()->SetColour(look.window);
}

void ColouredLines(C2DGraph& graph, PictureLook const& look)
{
    // Maps that begin with black or end with white would lose lines on one of the grounds.
    C2DContourCurve& curve = AddMap(graph, "height / m", look.theme == Theme::Dark ? "turbo" : "plasma");
    SampleGrid(*curve.GetSurface(), { -3, -3 }, { 3, 3 }, 120, Hills);
    curve.SetDisplayMode(C2DContourCurve::dmLines);
    curve.SetContourColourMode(C2DContourCurve::ccLevelColours);
    curve.SetLevelMode(C2DContourCurve::lmSpaced);
    curve.SetRef(5);
    curve.SetSpacing(10);
    curve.SetLineThickness(2);
}

void Shades(C2DGraph& graph, PictureLook const& /*look*/)
{
    C2DContourCurve& curve = AddMap(graph, "", "magma");
    SampleGrid(*curve.GetSurface(), { -4, -3 }, { 4, 3 }, 200, Waves);
    curve.SetDisplayMode(C2DContourCurve::dmShading);
    // Without levels, each pixel has the colour of its height.
    curve.SetLevelMode(C2DContourCurve::lmEven);
    curve.SetNumContours(0);
}

void Hole(C2DGraph& graph, PictureLook const& /*look*/)
{
    C2DContourCurve& curve = AddMap(graph, "flow", "coolwarm");
    // What flows round a cylinder: there is nothing inside.
    SampleGrid(*curve.GetSurface(), { -3, -2 }, { 3, 2 }, 240, [](double x, double y) {
        double const r = x * x + y * y;
        return r < 1 ? kGap : y - y / r;
    });
    curve.SetDisplayMode(C2DContourCurve::dmShadingAndLines);
    curve.SetLevelMode(C2DContourCurve::lmSpaced);
    curve.SetRef(0);
    curve.SetSpacing(0.25);
    curve.GetSurface()->SetColour(RGB(60, 60, 60));
}

constexpr GalleryPicture kPictures[] {
    { "contours-bands", "Contours", "Two hills and a hollow",
        "Heights from above: a colour for each ten metres, and lines between.", OMBREL_PICTURE(BandsAndLines) },
    { "contours-lines", "Contours", "The same hills in lines of their colours",
        "The same heights as lines, each in the colour of its level.", OMBREL_PICTURE(ColouredLines) },
    { "contours-shades", "Contours", "The same hills without steps", "Colours that follow the heights without steps.",
        OMBREL_PICTURE(Shades) },
    { "contours-hole", "Contours", "A flow round a cylinder is fastest at its sides",
        "Where values are missing nothing is drawn.", OMBREL_PICTURE(Hole) },
};

} // namespace

std::span<GalleryPicture const> ContourPictures() { return kPictures; }

} // namespace ombrel::host
