#include "tools/ombrel/chart/PointScene.h"
#include "ombrel/chart/Look.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/PointArrays.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <cmath>

namespace ombrel::host {

namespace {

/// Symbols of the library's size hide each other when there are many.
double SymbolScale(int points, SurfaceOptions const& options)
{
    constexpr double kFew = 60.0;
    constexpr double kLargest = 1.2;
    return options.symbolSize * kLargest * std::cbrt(std::min(1.0, kFew / std::max(points, 1)));
}

void SetSymbols(C3DLineCurve& curve, int points, SurfaceOptions const& options)
{
    curve.SetSymbols(1);
    curve.SetSymbolStyle(static_cast<int>(options.symbol.value_or(SymbolChoice::Sphere)));
    curve.SetSymbolScaleFac(SymbolScale(points, options));
}

/// The ends that were asked for.
void ApplyEnds(AxisRange& range, std::optional<std::string> const& text, char const* option)
{
    if (!text)
        return;
    auto const ends = ParseRange(*text, false, nullptr);
    if (!ends)
        throw Failure(kUsageFault,
            std::string(option) + ": expected A:B with numbers A below B, found " + QuoteForMessage(*text));
    range = { ends->min.value_or(range.min), ends->max.value_or(range.max) };
}

SceneContent Finish(
    C3DGraph& scene, C3DCurve& curve, Options const& options, HeightTitles const& titles, std::string const& name)
{
    scene.UpdatePlots();
    if (!curve.IsValid())
        throw Failure(kDataFault, name + ": there is nothing to draw: every point has a gap");
    SceneContent content = ContentOf(scene, curve, titles);
    ApplyEnds(content.data.x, options.xRange, "--x-range");
    ApplyEnds(content.data.y, options.yRange, "--y-range");
    return content;
}

} // namespace

SceneContent AddLines(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look)
{
    auto& line = AddCurve<C3DLineCurve>(scene, it3DLinePlot);
    HeightTitles const titles = TitlesOf(*file.points);
    PointArrays arrays(*file.points);
    line.SetPoints(arrays.X(), arrays.Y(), arrays.Z());
    SetCoordinates(line, options.surface.coordinates);
    CurveLook const curveLook = PaletteNamed("", 1, look).At(0);
    line.SetColour(curveLook.colour);
    line.SetLineStyle(options.surface.tubes ? 1 : 0);
    line.SetThicknessScaleFac(options.lineWidth);
    line.SetSymbolColour(curveLook.colour);
    if (options.symbols || options.surface.symbol)
        SetSymbols(line, arrays.Count(), options.surface);
    return Finish(scene, line, options, titles, file.name);
}

SceneContent AddScatter(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look)
{
    auto& scatter = AddCurve<C3DScatterCurve>(scene, it3DScatterPlot);
    Points& points = *file.points;
    HeightTitles const titles = TitlesOf(points);
    std::string const colourTitle = points.colourTitle;
    PointArrays arrays(points);
    scatter.SetPoints(arrays.X(), arrays.Y(), arrays.Z());
    SetCoordinates(scatter, options.surface.coordinates);
    SetHeightColours(scatter, options.surface);
    scatter.SetColour(PaletteNamed("", 1, look).At(0).colour);
    SetSymbols(scatter, arrays.Count(), options.surface);
    bool const hasColours = !points.colours.empty();
    bool const hasSizes = !points.sizes.empty();
    // Most are smaller than the largest.
    constexpr double kLarger = 1.8;
    if (hasSizes)
        scatter.SetSymbolScaleFac(kLarger * scatter.GetSymbolScaleFac());
    if (hasColours || hasSizes) {
        CDoubleArray colours = PointArrays::ToArray(hasColours ? points.colours : points.sizes);
        CDoubleArray sizes = PointArrays::ToArray(hasSizes ? points.sizes : points.colours);
        CDoubleArray* const variables[] { &colours, &sizes };
        scatter.SetVarData(variables, arrays.Count());
        scatter.SetVar1Use(hasColours ? C3DScatterCurve::vuColour : C3DScatterCurve::vuNone);
        scatter.SetVar2Use(hasSizes ? C3DScatterCurve::vuSize : C3DScatterCurve::vuNone);
    }
    scatter.SetColourByZVal(!hasColours && options.surface.colouring == ColouringChoice::Value);
    if (options.surface.sticks) {
        scatter.SetSticksOn(1);
        if (options.surface.baseline) {
            scatter.SetAutoBaseline(0);
            scatter.SetBaseline(*options.surface.baseline);
        }
    }
    SceneContent content = Finish(scene, scatter, options, titles, file.name);
    content.data.keyTitle = colourTitle;
    return content;
}

SceneContent AddTexts(C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look)
{
    auto& texts = AddCurve<C3DTextCurve>(scene, it3DTextPlot);
    Points& points = *file.points;
    HeightTitles const titles = TitlesOf(points);
    CGStringArray labels;
    for (std::string const& label : points.labels)
        labels.Add(CString(label));
    PointArrays arrays(points);
    texts.SetPoints(arrays.X(), arrays.Y(), arrays.Z(), &labels, arrays.Count());
    SetCoordinates(texts, options.surface.coordinates);
    texts.SetColour(look.text);
    if (options.symbols) {
        auto& marks = AddCurve<C3DScatterCurve>(scene, it3DScatterPlot);
        marks.SetPoints(arrays.X(), arrays.Y(), arrays.Z());
        SetCoordinates(marks, options.surface.coordinates);
        marks.SetColour(PaletteNamed("", 1, look).At(0).colour);
        SetSymbols(marks, arrays.Count(), options.surface);
    }
    return Finish(scene, texts, options, titles, file.name);
}

} // namespace ombrel::host
