#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>

namespace ombrel::host {

namespace {

/// Millimetres of rain over months and years.
void SetRain(C3DGraph& graph, C3DRowColCurve& curve)
{
    CTableData rain(static_cast<int>(kPrecipitation.size()), 12);
    for (int year = 0; year < rain.GetNumRows(); ++year) {
        for (int month = 0; month < rain.GetNumCols(); ++month)
            rain.SetAt(year, month, kPrecipitation[static_cast<std::size_t>(year)][static_cast<std::size_t>(month)]);
    }
    curve.SetTableData(std::move(rain));
    curve.SetTablePlacement({ 1, kFirstYear, 1, 1 });
    curve.AlignMeshes();
    curve.SetDataSourceType(CPlotComponent::dsTable);
    C3DAxis* const* const axes = graph.GetAxes();
    axes[0]->SetTitle("month");
    axes[1]->SetTitle("year");
    axes[2]->SetTitle("rain / mm");
}

void RainBars(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& bars = AddSceneCurve<C3DBarCurve>(graph, it3DBarPlot);
    SetRain(graph, bars);
    bars.SetColourDescription(1);
    LoadColourMap("viridis", *bars.GetColourmap());
}

void RowBars(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& bars = AddSceneCurve<C3DBarCurve>(graph, it3DBarPlot);
    SetRain(graph, bars);
    // By the place along y.
    bars.SetColourDescription(3);
    bars.SetBarWidthScaleFacX(1.3);
    bars.SetBarWidthScaleFacY(0.4);
    graph.SetViewingAzimuth(300);
}

void ScatteredBars(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& bars = AddSceneCurve<C3DIrregBarCurve>(graph, it3DIrregBarPlot);
    // The seeds of a sunflower: each a golden angle beyond the one before.
    constexpr int kSeeds = 120;
    constexpr double kGoldenAngle = 2.399963229728653;
    CDoubleArray x;
    CDoubleArray y;
    CDoubleArray z;
    for (int i = 0; i < kSeeds; ++i) {
        double const r = std::sqrt(i + 0.5);
        x.Add(r * std::cos(kGoldenAngle * i));
        y.Add(r * std::sin(kGoldenAngle * i));
        z.Add(4 * std::exp(-r * r / 40));
    }
    CDoubleArray* points[] { &x, &y, &z };
    bars.SetTableData(points, kSeeds);
    bars.SetColourDescription(1);
    LoadColourMap("plasma", *bars.GetColourmap());
}

/// Two peaks of a resonance, the nearer to each other the stronger their coupling.
double Resonance(double frequency, double coupling)
{
    auto const peak = [frequency](double centre) {
        double const detuning = (frequency - centre) / 0.25;
        return 1 / (1 + detuning * detuning);
    };
    return peak(coupling) + peak(-coupling);
}

/// Gives the series lines along x, one for each step of the coupling.
void SetResonances(C3DGraph& graph, C3DRowColCurve& series)
{
    constexpr int kLines = 12;
    constexpr int kPoints = 160;
    CTableData values(kLines, kPoints);
    for (int line = 0; line < kLines; ++line) {
        for (int i = 0; i < kPoints; ++i)
            values.SetAt(line, i, Resonance(-4 + 8.0 * i / (kPoints - 1), 0.25 * line));
    }
    series.SetTableData(std::move(values));
    series.SetTablePlacement({ -4, 0, 8.0 / (kPoints - 1), 0.25 });
    series.AlignMeshes();
    series.SetDataSourceType(CPlotComponent::dsTable);
    graph.SetViewingAzimuth(290);
    graph.GetAxes()[0]->SetTitle("frequency");
    graph.GetAxes()[1]->SetTitle("coupling");
}

void Stacks(C3DGraph& graph, PictureLook const& look)
{
    auto& series = AddSceneCurve<C3DLineArrayCurve>(graph, it3DLineArrayPlot);
    SetResonances(graph, series);
    // Lines along x.
    series.SetRowMode(1);
    series.SetLineColour(look.text);
    series.SetStackColourDescription(1);
    LoadColourMap("viridis", *series.GetColourmap());
}

void Ribbons(C3DGraph& graph, PictureLook const& look)
{
    auto& series = AddSceneCurve<C3DLineArrayCurve>(graph, it3DLineArrayPlot);
    SetResonances(graph, series);
    series.SetRowMode(1);
    series.SetDrawStacks(0);
    series.SetLineColour(look.Colour(0));
    series.SetThicknessScaleFac(2);
}

void Net(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& net = AddSceneCurve<C3DWireframeCurve>(graph, it3DWireframePlot);
    SampleGrid(net, { -12, -12 }, { 12, 12 }, 48, [](double x, double y) {
        double const r = std::hypot(x, y);
        return r > 0 ? std::sin(r) / r : 1;
    });
    net.SetColourDescription(1);
    LoadColourMap("turbo", *net.GetColourmap());
}

constexpr GalleryPicture kPictures[] {
    { "bars3d-rain", "Bars and series in 3D", "Rain falls in winter, year after year",
        "Bars over a grid of months and years.", OMBREL_PICTURE(RainBars), kWeatherSource },
    { "bars3d-rows", "Bars and series in 3D", "A colour for each row", "The same, wider along x than along y.",
        OMBREL_PICTURE(RowBars), kWeatherSource },
    { "bars3d-scattered", "Bars and series in 3D", "Bars anywhere", "At points that form no grid.",
        OMBREL_PICTURE(ScatteredBars) },
    { "series3d-stacks", "Bars and series in 3D", "Series", "Lines one behind the other, each over a stack.",
        OMBREL_PICTURE(Stacks) },
    { "series3d-lines", "Bars and series in 3D", "Series of lines", "The same without stacks.",
        OMBREL_PICTURE(Ribbons) },
    { "wireframe3d", "Bars and series in 3D", "A net", "The lines of a grid alone.", OMBREL_PICTURE(Net) },
};

} // namespace

std::span<GalleryPicture const> SceneBarPictures() { return kPictures; }

} // namespace ombrel::host
