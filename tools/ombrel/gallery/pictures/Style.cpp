#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tools/ombrel/gallery/Data.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>

namespace ombrel::host {

namespace {

// --- legends ---

/// Three curves with lines, symbols and shading.
void AddThreeCurves(C2DGraph& graph, PictureLook const& look)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    char const* const titles[] { "spring", "summer", "autumn" };
    C2DSymbol::SymbolType const symbols[] { C2DSymbol::Circle, C2DSymbol::Square, C2DSymbol::Diamond };
    for (int i = 0; i < 3; ++i) {
        auto& line = AddCurve<C2DLine>(plot, titles[i], look.Colour(i));
        line.SetLineWidth(2);
        line.SetLineType(i);
        line.SetAntialiasingOn(1);
        line.SetSymbolType(symbols[i]);
        line.SetSymbolColour(look.Colour(i));
        line.SetSymbolFillColour(look.Colour(i));
        line.SetFillSymbol(1);
        Sample(line, 0, 10, 11, [&](double x) { return std::sqrt(x + 1) * (3 - i) + 0.3 * std::sin(2 * x + i); });
    }
    graph.GetLegend()->Create(CPoint());
}

void LegendOfPatches(C2DGraph& graph, PictureLook const& look)
{
    AddThreeCurves(graph, look);
    graph.GetLegend()->SetStyle(CLegend::lsFill);
}

void LegendOfLines(C2DGraph& graph, PictureLook const& look)
{
    AddThreeCurves(graph, look);
    graph.GetLegend()->SetStyle(CLegend::lsLine);
}

void LegendOfSymbols(C2DGraph& graph, PictureLook const& look)
{
    AddThreeCurves(graph, look);
    graph.GetLegend()->SetStyle(CLegend::lsSymbol);
    graph.GetLegend()->SetBoundingRectOn(0);
}

// --- captions ---

void Captions(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("year");
    graph.GetAxes()->SetYAxisTitle("carbon dioxide / ppm");
    auto& line = AddCurve<C2DLine>(*graph.AddPlot(it2DLinePlot), "Mauna Loa", look.Colour(0));
    line.SetLineWidth(2);
    line.SetAntialiasingOn(1);
    SetValues(line, kCarbonDioxide, kFirstCarbonYear);

    CCaption* const framed = graph.AddCaption(CPoint());
    framed->SetText("Mauna Loa Observatory\nHawaii, 3397 m");
    framed->SetTextColour(look.text);
    framed->SetBorderColour(look.text);
    framed->SetBkgndColour(look.plottingArea);
    framed->Create(CRealPoint(0.05, 0.08));

    CCaption* const plain = graph.AddCaption(CPoint());
    plain->SetText("350 ppm were\npassed in 1988");
    plain->SetFont(CFontData("Arial", CFontData::kNormalWeight, 1, 1.0));
    plain->SetTextColour(look.Colour(1));
    plain->SetTransparentBkgnd(1);
    plain->SetBoundingRectOn(0);
    plain->Create(CRealPoint(0.55, 0.62));
}

void Titles(C2DGraph& graph, PictureLook const& look)
{
    NameMonths(graph);
    graph.GetAxes()->SetXAxisTitle("month");
    graph.GetAxes()->SetYAxisTitle("precipitation / mm");
    auto& bars = AddCurve<C2DBarCurve>(*graph.AddPlot(it2DBarPlot), "an average month", look.Colour(4));
    bars.SetBarWidthFactor(0.7);
    bars.SetAutoBaseline(0);
    bars.SetBorderColour(look.Colour(4));
    SetValues(bars, kMeanPrecipitation);
}

// --- hatches ---

void Hatches(C2DGraph& graph, PictureLook const& look)
{
    graph.GetGrid()->SetOn(0);
    CAxes& axes = *graph.GetAxes();
    axes.SetXAxisOn(0);
    axes.SetYAxisOn(0);
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetXAxisRange(-0.4, 4.7);
    CPlot& bars = *graph.AddPlot(it2DBarPlot);
    auto& numbers = AddCurve<C2DTextCurve>(*graph.AddPlot(it2DTextPlot), "numbers", look.text);
    numbers.SetVertAlignment(C2DTextCurve::alCentre);
    auto const patterns = C2DLine::GetPatternIDs();
    numbers.Initialise(static_cast<int>(patterns.size()));
    for (int i = 0; i < numbers.GetNumPoints(); ++i) {
        // Four rows of five: bars with a base line each, and the number at the right.
        int const pattern = patterns[static_cast<std::size_t>(i)];
        int const column = i % 5;
        int const row = i / 5;
        auto& bar = AddCurve<C2DBarCurve>(bars, "hatch", look.Colour(0));
        bar.SetFillPattern(pattern);
        bar.SetBorderColour(look.text);
        bar.SetBarWidthFactor(0.65);
        bar.SetAutoBaseline(0);
        bar.SetBaseline(3.0 - row);
        bar.Initialise(1);
        bar.SetAt(0, { 0.0 + column, 3.75 - row });
        numbers.SetAt(i, { column + 0.37, 3.375 - row });
        numbers.GetText().Add(CString(std::to_string(pattern)));
    }
}

// --- colour maps ---

/// Lines in colours from one end of the map to the other.
void AddFan(C2DGraph& graph, CColourMap const& map)
{
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    constexpr int kLines = 40;
    for (int i = 0; i < kLines; ++i) {
        auto& line = AddCurve<C2DLine>(plot, "line", map.GetColour(i, 0, kLines - 1));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        Sample(line, -4, 4, 161, [&](double x) { return (i + 1) * std::exp(-x * x / 3) * std::cos(3 * x + i / 10.0); });
    }
}

void SpectrumMap(C2DGraph& graph, PictureLook const&)
{
    CColourMap map;
    map.CreateSpectrum();
    AddFan(graph, map);
}

void ExtendedSpectrumMap(C2DGraph& graph, PictureLook const&)
{
    CColourMap map;
    map.CreateExtendedSpectrum();
    AddFan(graph, map);
}

void GradedMap(C2DGraph& graph, PictureLook const& look)
{
    CColourMap map;
    map.CreateGraded(look.Colour(0));
    AddFan(graph, map);
}

void Stripes(C2DGraph& graph, PictureLook const&)
{
    // From blue through white to red: red, green and blue at three positions.
    CColourMap map;
    map.SetChannel(0, { 0.0, 0.5, 1.0 }, { 8, 247, 165 });
    map.SetChannel(1, { 0.0, 0.5, 1.0 }, { 48, 247, 0 });
    map.SetChannel(2, { 0.0, 0.5, 1.0 }, { 140, 247, 30 });
    map.Update();
    CPlot& plot = *graph.AddPlot(it2DBarPlot);
    for (std::size_t i = 1; i < kCarbonDioxide.size(); ++i) {
        double const growth = kCarbonDioxide[i] - kCarbonDioxide[i - 1];
        COLORREF const colour = map.GetColour(growth, 0.2, 3.2);
        auto& bar = AddCurve<C2DBarCurve>(plot, "year", colour);
        bar.SetBarWidthFactor(1);
        bar.SetAutoBaseline(0);
        bar.SetBorderColour(colour);
        bar.Initialise(1);
        bar.SetAt(0, { kFirstCarbonYear + static_cast<double>(i), 1 });
    }
    // From edge to edge.
    auto const fix = [&axes = *graph.GetAxes()](CAxes::AxisType type, double min, double max) {
        AxisSettings axis = axes.GetAxis(type);
        axis.rangeMode = CAxes::rmFixed;
        axis.min = min;
        axis.max = max;
        axes.SetAxis(type, axis);
    };
    fix(CAxes::atX, kFirstCarbonYear + 0.5, kFirstCarbonYear + static_cast<double>(kCarbonDioxide.size()) - 0.5);
    fix(CAxes::atY, 0, 1);
    graph.GetAxes()->SetYAxisOn(0);
}

// --- themes ---

void ThemedGraph(C2DGraph& graph, PictureLook const& look)
{
    graph.GetAxes()->SetXAxisTitle("time / s");
    graph.GetAxes()->SetYAxisTitle("deflection / mm");
    CPlot& plot = *graph.AddPlot(it2DLinePlot);
    char const* const titles[] { "first", "second", "third", "fourth" };
    for (int i = 0; i < 4; ++i) {
        auto& line = AddCurve<C2DLine>(plot, titles[i], look.Colour(i));
        line.SetLineWidth(2);
        line.SetAntialiasingOn(1);
        Sample(line, 0, 10, 300, [&](double t) { return std::exp(-t / 6) * std::sin(t + i * 0.6) + 0.15 * i; });
    }
    graph.GetLegend()->Create(CPoint());
    graph.GetLegend()->SetStyle(CLegend::lsLine);
}

constexpr GalleryPicture kPictures[] {
    { "legend-patches", "Legends", "A legend of patches", "The legend shows each curve's colour and fill.",
        OMBREL_PICTURE(LegendOfPatches) },
    { "legend-lines", "Legends", "A legend of lines", "The legend shows a stretch of each line, with its dashes.",
        OMBREL_PICTURE(LegendOfLines) },
    { "legend-symbols", "Legends", "A legend of symbols", "The legend shows each curve's symbol; here without a frame.",
        OMBREL_PICTURE(LegendOfSymbols) },
    { "captions-texts", "Captions", "Texts anywhere over the graph",
        "Texts of several lines anywhere over the graph, framed or not.", OMBREL_PICTURE(Captions) },
    { "captions-titles", "Captions", "A title over the graph, and one along each axis",
        "A title over the graph, and one along each axis.", OMBREL_PICTURE(Titles) },
    { "hatches-all", "Hatches", "Twenty fill patterns", "The twenty patterns on offer, with their numbers; 6 is solid.",
        OMBREL_PICTURE(Hatches) },
    { "colours-spectrum", "Colour maps", "Forty lines from blue to red", "Forty lines in colours from blue to red.",
        OMBREL_PICTURE(SpectrumMap) },
    { "colours-extended", "Colour maps", "Forty lines from magenta to red", "The same, from magenta on.",
        OMBREL_PICTURE(ExtendedSpectrumMap) },
    { "colours-graded", "Colour maps", "Shades of one colour", "A map between two colours.",
        OMBREL_PICTURE(GradedMap) },
    { "colours-stripes", "Colour maps", "Carbon dioxide grows faster than it did",
        "How much it grew in each year: from 0.2 (blue) to 3.2 ppm (red).", OMBREL_PICTURE(Stripes), kCarbonSource },
    { "theme-light", "Themes", "The light theme", "For screens.", OMBREL_PICTURE(ThemedGraph), {}, AxesChoice::Fitted,
        Theme::Light },
    { "theme-dark", "Themes", "The dark theme", "For dark screens.", OMBREL_PICTURE(ThemedGraph), {},
        AxesChoice::Fitted, Theme::Dark },
    { "theme-print", "Themes", "The theme for paper", "For paper.", OMBREL_PICTURE(ThemedGraph), {}, AxesChoice::Fitted,
        Theme::Print },
};

} // namespace

std::span<GalleryPicture const> StylePictures() { return kPictures; }

} // namespace ombrel::host
