#include "tools/ombrel/chart/BarScene.h"
#include "ombrel/chart/Look.h"
#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/PointArrays.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <numeric>

namespace ombrel::host {

namespace {

/// Colour descriptions of bars.
int DescriptionOf(ColouringChoice colouring)
{
    switch (colouring) {
    case ColouringChoice::Plain:
        return 0;
    case ColouringChoice::Columns:
        return 2;
    case ColouringChoice::Rows:
        return 3;
    default:
        return 1;
    }
}

template <typename Curve> void SetBaseline(Curve& curve, SurfaceOptions const& options)
{
    if (!options.baseline)
        return;
    curve.SetAutoBaseline(0);
    curve.SetBaseline(*options.baseline);
}

template <typename Curve> void SetBars(Curve& bars, SurfaceOptions const& options)
{
    SetHeightColours(bars, options);
    bars.SetColourDescription(DescriptionOf(options.colouring));
    auto const [x, y] = options.barWidth.value_or(std::pair(1.0, 1.0));
    bars.SetBarWidthScaleFacX(x);
    bars.SetBarWidthScaleFacY(y);
    SetBaseline(bars, options);
}

template <typename Curve> void SetSeries(Curve& series, SurfaceOptions const& options, Look const& look)
{
    SetHeightColours(series, options);
    int const description = options.colouring == ColouringChoice::Plain ? 0
        : options.colouring == ColouringChoice::Value                   ? 1
                                                                        : 2;
    series.SetStackColourDescription(description);
    series.SetStackColour(static_cast<COLORREF>(series.GetColour()));
    series.SetLineColour(look.axes);
    // Mode 0 has lines along y.
    series.SetRowMode(options.along == AlongChoice::X ? 1 : 0);
    SetBaseline(series, options);
}

/// Puts the points of a line together, in their order along it: those that have the same place across.
void SortInLines(Points& points, AlongChoice along)
{
    std::vector<double>& across = along == AlongChoice::X ? points.y : points.x;
    std::vector<double>& place = along == AlongChoice::X ? points.x : points.y;
    std::vector<std::size_t> order(points.Count());
    std::iota(order.begin(), order.end(), std::size_t { 0 });
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return across[a] != across[b] ? across[a] < across[b] : place[a] < place[b];
    });
    for (std::vector<double>* const values : { &points.x, &points.y, &points.z }) {
        std::vector<double> sorted;
        sorted.reserve(order.size());
        for (std::size_t const i : order)
            sorted.push_back((*values)[i]);
        *values = std::move(sorted);
    }
}

/// Has the curve find its ranges, and takes them over.
SceneContent Finish(C3DGraph& scene, C3DCurve& curve, HeightTitles const& titles, std::string const& name)
{
    scene.UpdatePlots();
    if (!curve.IsValid())
        throw Failure(kDataFault, name + ": there is nothing to draw, or more than can be drawn");
    return ContentOf(scene, curve, titles);
}

} // namespace

SceneContent AddBars(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages)
{
    std::string const name = file.name;
    SceneContent content;
    if (file.points) {
        auto& bars = AddCurve<C3DIrregBarCurve>(scene, it3DIrregBarPlot);
        HeightTitles const titles = TitlesOf(*file.points);
        PointArrays arrays(*file.points);
        bars.SetTableData(arrays.All(), arrays.Count());
        SetBars(bars, options.surface);
        content = Finish(scene, bars, titles, name);
    } else {
        auto& bars = AddCurve<C3DBarCurve>(scene, it3DBarPlot);
        HeightTitles const titles = GiveHeights(std::move(file), bars, messages);
        SetBars(bars, options.surface);
        content = Finish(scene, bars, titles, name);
    }
    return content;
}

SceneContent AddSeries(
    C3DGraph& scene, Options const& options, HeightFile&& file, Look const& look, Messages const& messages)
{
    std::string const name = file.name;
    SceneContent content;
    if (file.points) {
        auto& series = AddCurve<C3DIrregLineArrayCurve>(scene, it3DIrregLineArrayPlot);
        HeightTitles const titles = TitlesOf(*file.points);
        SortInLines(*file.points, options.surface.along);
        PointArrays arrays(*file.points);
        series.SetPoints(*arrays.X(), *arrays.Y(), *arrays.Z());
        SetSeries(series, options.surface, look);
        content = Finish(scene, series, titles, name);
    } else {
        auto& series = AddCurve<C3DLineArrayCurve>(scene, it3DLineArrayPlot);
        HeightTitles const titles = GiveHeights(std::move(file), series, messages);
        SetSeries(series, options.surface, look);
        content = Finish(scene, series, titles, name);
    }
    return content;
}

SceneContent AddWireframe(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages)
{
    std::string const name = file.name;
    auto& net = AddCurve<C3DWireframeCurve>(scene, it3DWireframePlot);
    HeightTitles const titles = GiveHeights(std::move(file), net, messages);
    SetHeightColours(net, options.surface);
    net.SetColourDescription(DescriptionOf(options.surface.colouring));
    SetCoordinates(net, options.surface.coordinates);
    return Finish(scene, net, titles, name);
}

} // namespace ombrel::host
