#include "tools/ombrel/chart/ContourMap.h"
#include "ombrel/chart/AxesLayout.h"
#include "ombrel/chart/Look.h"
#include "ombrel/chart/Titles.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/Surface.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/HeightColours.h"
#include "tools/ombrel/chart/MapKey.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ombrel::host {

namespace {

C2DContourCurve& AddCurve(C2DGraph& graph)
{
    CPlot* const plot = graph.AddPlot(it2DContourPlot);
    return static_cast<C2DContourCurve&>(*plot->AddCurve("", CPlotComponent::dsTable));
}

void SetLevels(C2DContourCurve& curve, SurfaceOptions const& options, AxisRange range, Look const& look)
{
    CSurface& surface = *curve.GetSurface();
    // Where all heights are one there is nothing between levels.
    ContourChoice const contours
        = range.max > range.min ? options.contours.value_or(ContourChoice::Both) : ContourChoice::Off;
    surface.SetArbContourLevels(LevelArray(options, range));
    curve.SetLevelMode(C2DContourCurve::lmArbitrary);
    // Colours without bands.
    if (contours == ContourChoice::Off) {
        curve.SetLevelMode(C2DContourCurve::lmEven);
        curve.SetNumContours(0);
    }
    curve.SetDisplayMode(contours == ContourChoice::Lines ? C2DContourCurve::dmLines
            : contours == ContourChoice::Both             ? C2DContourCurve::dmShadingAndLines
                                                          : C2DContourCurve::dmShading);
    curve.SetContourColourMode(options.lineColours ? C2DContourCurve::ccLevelColours : C2DContourCurve::ccOneColour);
    surface.SetColour(contours == ContourChoice::Lines ? look.text : kLineColour);
}

PlotAxisSettings FixedAxis(AxisRange range, std::string const& title)
{
    PlotAxisSettings axis;
    axis.data = range;
    axis.min = range.min;
    axis.max = range.max;
    axis.title = title;
    return axis;
}

/// The largest rectangle in which x and y have the same scale, for what lies round the axes in the one that was laid
/// out; the same one when they may differ.
CRect EqualScales(C2DGraph const& graph, CRect const& rect, PlotAxisSettings const& x, PlotAxisSettings const& y)
{
    CRect const axes = graph.GetAxesRect();
    double const width = x.data.max - x.data.min;
    double const height = y.data.max - y.data.min;
    double const scale = std::min(axes.Width() / width, axes.Height() / height);
    int const spareX = axes.Width() - static_cast<int>(std::lround(scale * width));
    int const spareY = axes.Height() - static_cast<int>(std::lround(scale * height));
    return { rect.left + spareX / 2, rect.top + spareY / 2, rect.right - (spareX - spareX / 2),
        rect.bottom - (spareY - spareY / 2) };
}

} // namespace

std::unique_ptr<C2DGraph> MakeContourMap(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages)
{
    auto owner = std::make_unique<C2DGraph>(1);
    C2DGraph& graph = *owner;
    Look const look = LookOf(options.theme);
    graph.SetGraphFrameOn(0);
    graph.GetPolarGrid()->SetOn(0);
    SetGrid(graph, GridChoice::Off, false);
    AddTitle(graph, OneLine(options.title), look);
    C2DContourCurve& curve = AddCurve(graph);
    CSurface& surface = *curve.GetSurface();
    std::string const name = file.name;
    HeightTitles const titles = GiveHeights(std::move(file), surface, messages);
    LoadHeightMap(options.surface.colourMap, *surface.GetWireframeColourmap());
    SetColourRange(surface, options.surface);
    graph.UpdatePlots();
    CheckHeights(surface, name, messages);
    AxisRange heights;
    surface.GetZRange(heights.min, heights.max);
    SetLevels(curve, options.surface, heights, look);
    AxisRange x;
    AxisRange y;
    curve.GetXRange(x.min, x.max);
    curve.GetYRange(y.min, y.max);

    graph.SetGraphAndWindowRect(picture.GetRect(), picture.GetRect());
    PlotAxisSettings const xAxis = FixedAxis(x, options.xTitle.value_or(titles.x));
    PlotAxisSettings const yAxis = FixedAxis(y, options.yTitle.value_or(titles.y));
    CDC& dc = picture.GetDC();
    std::optional<MapKey> key;
    if (options.surface.key == KeyChoice::Auto && curve.NeedsColourKey())
        key.emplace(graph, curve, options.surface.zTitle.value_or(titles.z), look, dc);
    ApplyLook(graph, look);
    CRect rect = GraphRectIn(graph, graph.GetWindowRect(), dc);
    LayOutAxes(graph, xAxis, yAxis, rect, dc);
    if (key) {
        rect.right -= key->Width();
        LayOutAxes(graph, xAxis, yAxis, rect, dc);
    }
    if (titles.sameUnits)
        LayOutAxes(graph, xAxis, yAxis, EqualScales(graph, rect, xAxis, yAxis), dc);
    if (key)
        key->Place();
    PlaceTitle(graph, dc);
    return owner;
}

} // namespace ombrel::host
