// Heights over a grid, drawn as a lit surface.
#include "ombrel/graph3d/Surface.h"
#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/gdi/PngEncoder.h"

#include <cmath>
#include <iostream>

using namespace ombrel;

void DrawSurface()
{
    OmbrelInit();
    C3DGraph graph(1);
    graph.SetLightingOn(1);
    graph.SetAntialiasMode(1);
    graph.SetViewingAzimuth(330);
    graph.SetViewingElevation(60);

    // A curve of a new plot; the graph owns both.
    auto& surface = static_cast<CSurface&>(*graph.AddPlot(itSurfacePlot)->CreateCurve());
    CTableData heights(101, 101);
    for (int row = 0; row <= 100; ++row) {
        for (int column = 0; column <= 100; ++column) {
            double const r = std::hypot(column - 50, row - 50) / 6;
            heights.SetAt(row, column, std::cos(r) / (1 + r));
        }
    }
    surface.SetTableData(std::move(heights));
    // x and y of the first height, and the steps to the next ones.
    surface.SetTablePlacement({ -5, -5, 0.1, 0.1 });
    surface.AlignMeshes();
    surface.SetDataSourceType(CPlotComponent::dsTable);
    // Colours by a colour map, from a file or made here.
    surface.SetColourDescription(2);
    surface.GetColourmap()->Load("Spectrum");
    graph.UpdatePlots();

    CDIB picture(800, 500, 24);
    graph.Draw(picture.GetDC(), CRect(0, 0, 800, 500), pmDirect);
    std::string const png = EncodePng(*picture.GetBitmap().GetRaster(), {});
    WriteFileAtomically("surface.png", std::as_bytes(std::span(png)));
}

int main()
try {
    WithErrors(DrawSurface);
} catch (Error const& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
