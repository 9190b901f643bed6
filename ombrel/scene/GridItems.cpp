#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/3DIrregLineArrayCurve.h"
#include "ombrel/graph3d/3DLineArrayCurve.h"
#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/SceneItems.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/scene/parts/PointArrays.h"
#include "ombrel/scene/parts/SceneData.h"
#include "ombrel/scene/parts/SceneParts.h"

#include <algorithm>
#include <numeric>

namespace ombrel {

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

template <typename Curve> void SetBaseline(Curve& curve, std::optional<double> baseline)
{
    curve.SetAutoBaseline(baseline ? 0 : 1);
    if (baseline)
        curve.SetBaseline(*baseline);
}

template <typename Curve> void SetBars(Curve& bars, BarStyle const& style)
{
    SetHeightColours(bars, style.colours);
    bars.SetColourDescription(DescriptionOf(style.colouring));
    auto const [x, y] = style.width.value_or(std::pair(1.0, 1.0));
    bars.SetBarWidthScaleFacX(x);
    bars.SetBarWidthScaleFacY(y);
    SetBaseline(bars, style.baseline);
}

template <typename Curve> void SetSeries(Curve& series, SeriesStyle const& style, Look const& look)
{
    SetHeightColours(series, style.colours);
    int const description = style.colouring == ColouringChoice::Plain ? 0
        : style.colouring == ColouringChoice::Value                   ? 1
                                                                      : 2;
    series.SetStackColourDescription(description);
    series.SetStackColour(static_cast<COLORREF>(series.GetColour()));
    series.SetLineColour(look.axes);
    // Mode 0 has lines along y.
    series.SetRowMode(style.along == AlongChoice::X ? 1 : 0);
    SetBaseline(series, style.baseline);
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

} // namespace

SceneBars::SceneBars(SceneParts& scene, HeightSource&& heights)
    : HeightItem(scene, SourceOf(heights))
{
    if (ArePoints(heights))
        m_curve = &AddCurve<C3DIrregBarCurve>(*scene.graph, it3DIrregBarPlot);
    else
        m_curve = m_grid = &AddCurve<C3DBarCurve>(*scene.graph, it3DBarPlot);
    TakeHeights(std::move(heights));
}

void SceneBars::Prepare()
{
    if (m_grid) {
        SetBars(static_cast<C3DBarCurve&>(*m_grid), m_style);
        return;
    }
    auto& bars = static_cast<C3DIrregBarCurve&>(*m_curve);
    Points points = m_points;
    LeaveOutGaps(points, m_notes);
    PointArrays arrays(points);
    bars.SetTableData(arrays.All(), arrays.Count());
    SetBars(bars, m_style);
}

SceneBars& SceneBars::Width(double x, double y)
{
    constexpr double kLeast = 1e-6;
    constexpr double kMost = 10.0;
    return Set(m_style.width,
        std::pair(CheckedSetting("bar-width", x, kLeast, kMost), CheckedSetting("bar-width", y, kLeast, kMost)));
}

SceneSeries::SceneSeries(SceneParts& scene, HeightSource&& heights)
    : HeightItem(scene, SourceOf(heights))
{
    if (ArePoints(heights))
        m_curve = &AddCurve<C3DIrregLineArrayCurve>(*scene.graph, it3DIrregLineArrayPlot);
    else
        m_curve = m_grid = &AddCurve<C3DLineArrayCurve>(*scene.graph, it3DLineArrayPlot);
    TakeHeights(std::move(heights));
}

void SceneSeries::Prepare()
{
    if (m_grid) {
        SetSeries(static_cast<C3DLineArrayCurve&>(*m_grid), m_style, m_scene.look);
        return;
    }
    auto& series = static_cast<C3DIrregLineArrayCurve&>(*m_curve);
    Points points = m_points;
    LeaveOutGaps(points, m_notes);
    SortInLines(points, m_style.along);
    PointArrays arrays(points);
    series.SetPoints(*arrays.X(), *arrays.Y(), *arrays.Z());
    SetSeries(series, m_style, m_scene.look);
}

SceneSeries& SceneSeries::Along(AlongChoice along) { return Set(m_style.along, along); }

SceneWireframe::SceneWireframe(SceneParts& scene, HeightSource&& heights)
    : HeightItem(scene, SourceOf(heights))
{
    if (ArePoints(heights))
        throw ChartError(
            ChartError::Cause::Data, m_source + ": expected heights on a grid, found points that form none");
    m_curve = m_grid = &AddCurve<C3DWireframeCurve>(*scene.graph, it3DWireframePlot);
    TakeHeights(std::move(heights));
}

void SceneWireframe::Prepare()
{
    auto& net = static_cast<C3DWireframeCurve&>(*m_grid);
    SetHeightColours(net, m_style.colours);
    net.SetColourDescription(DescriptionOf(m_style.colouring));
    SetCoordinates(net, m_style.coordinates);
}

SceneBars& SceneBars::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

SceneBars& SceneBars::XRange(double first, double last)
{
    PlaceColumns(first, last);
    return *this;
}

SceneBars& SceneBars::YRange(double first, double last)
{
    PlaceRows(first, last);
    return *this;
}

SceneSeries& SceneSeries::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

SceneSeries& SceneSeries::XRange(double first, double last)
{
    PlaceColumns(first, last);
    return *this;
}

SceneSeries& SceneSeries::YRange(double first, double last)
{
    PlaceRows(first, last);
    return *this;
}

SceneWireframe& SceneWireframe::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

SceneWireframe& SceneWireframe::XRange(double first, double last)
{
    PlaceColumns(first, last);
    return *this;
}

SceneWireframe& SceneWireframe::YRange(double first, double last)
{
    PlaceRows(first, last);
    return *this;
}

} // namespace ombrel
