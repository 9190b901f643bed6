// A graph made in memory, drawn into a picture and stored as a document.
#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/gdi/PngEncoder.h"

#include <cmath>
#include <iostream>

using namespace ombrel;

/// The classes throw pointers; WithErrors turns these into errors as other libraries throw them.
void DrawExample()
{
    OmbrelInit();
    C2DGraph graph(1);
    graph.GetAxes()->SetXAxisTitle("Time / s");
    graph.GetAxes()->SetYAxisTitle("Amplitude");

    CPlot* plot = graph.AddPlot(it2DLinePlot);
    auto* curve = static_cast<C2DLine*>(plot->AddCurve("Damped oscillation", CPlotComponent::dsTable));
    curve->SetLineWidth(2);
    curve->Initialise(500);
    for (int i = 0; i < 500; ++i) {
        double const t = i * 0.02;
        curve->SetAt(i, { t, std::exp(-0.4 * t) * std::cos(5 * t) });
    }
    graph.UpdatePlots();

    CDIB picture(800, 500, 24);
    graph.Draw(picture.GetDC(), CRect(0, 0, 800, 500), pmDirect);
    std::string const png = EncodePng(*picture.GetBitmap().GetRaster(), {});
    WriteFileAtomically("classes.png", std::as_bytes(std::span(png)));

    CFile file("classes.ombrel", CFile::modeWrite | CFile::modeCreate);
    CArchive archive(&file, CArchive::store);
    archive.WriteObject(&graph);
    archive.Close();
    file.Close();
}

int main()
try {
    WithErrors(DrawExample);
} catch (Error const& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
