#include "ombrel/scene/ContourMap.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/scene/MapKey.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/HeightData.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ombrel {

namespace {

void SetLevels(C2DContourCurve& curve, MapStyle const& style, AxisRange range, Look const& look)
{
    CSurface& surface = *curve.GetSurface();
    // Where all heights are one there is nothing between levels.
    ContourChoice const contours
        = range.max > range.min ? style.contours.choice.value_or(ContourChoice::Both) : ContourChoice::Off;
    surface.SetArbContourLevels(LevelArray(style.contours, style.colours, range));
    curve.SetLevelMode(C2DContourCurve::lmArbitrary);
    // Colours without bands.
    if (contours == ContourChoice::Off) {
        curve.SetLevelMode(C2DContourCurve::lmEven);
        curve.SetNumContours(0);
    }
    curve.SetDisplayMode(contours == ContourChoice::Lines ? C2DContourCurve::dmLines
            : contours == ContourChoice::Both             ? C2DContourCurve::dmShadingAndLines
                                                          : C2DContourCurve::dmShading);
    curve.SetContourColourMode(
        style.contours.lineColours ? C2DContourCurve::ccLevelColours : C2DContourCurve::ccOneColour);
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

/// A grid, if there is one.
HeightSource OnGrid(HeightSource heights)
{
    if (auto* const points = std::get_if<Points>(&heights))
        heights = GridOrPoints(std::move(*points));
    if (ArePoints(heights))
        throw ChartError(
            ChartError::Cause::Data, SourceOf(heights) + ": expected heights on a grid, found points that form none");
    return heights;
}

} // namespace

struct ContourMap::State {
    std::unique_ptr<C2DGraph> graph = std::make_unique<C2DGraph>(1);
    /// Owned by the graph, as the surface in it.
    C2DContourCurve* curve = nullptr;
    std::string source;
    HeightTitles titles;
    ChartNotes readNotes;
    ChartNotes notes;
    /// What was last added; the graph owns it.
    std::optional<MapKey> key;
    /// What it was last laid out for; empty when that is out of date.
    CRect window;
    int dotsPerInch = 0;

    CSurface& Surface() { return *curve->GetSurface(); }
};

ContourMap::ContourMap(std::span<double const> heights, std::size_t rows, std::size_t columns, std::string_view title)
    : ContourMap(MakeGrid(heights, rows, columns), title)
{
}

ContourMap::ContourMap(HeightSource heights, std::string_view title)
    : DrawnPicture(title)
    , m_state(std::make_unique<State>())
{
    State& state = *m_state;
    heights = OnGrid(std::move(heights));
    state.source = SourceOf(heights);
    C2DGraph& graph = *state.graph;
    graph.SetGraphFrameOn(0);
    graph.GetPolarGrid()->SetOn(0);
    SetGrid(graph, GridChoice::Off, false);
    AddTitle(graph, OneLine(std::string(title)), LookOf(m_style.theme));
    state.curve = static_cast<C2DContourCurve*>(graph.AddPlot(it2DContourPlot)->AddCurve("", CPlotComponent::dsTable));
    state.titles = GiveHeights(std::move(heights), state.Surface(), state.readNotes);
}

ContourMap::~ContourMap() = default;
ContourMap::ContourMap(ContourMap&&) noexcept = default;
ContourMap& ContourMap::operator=(ContourMap&&) noexcept = default;

void ContourMap::Touch() { m_state->window = {}; }

ContourMap& ContourMap::XRange(double first, double last)
{
    PlaceGrid(m_state->Surface(), GridSide::Columns, CheckedRange("x-range", first, last));
    Touch();
    return *this;
}

ContourMap& ContourMap::YRange(double first, double last)
{
    PlaceGrid(m_state->Surface(), GridSide::Rows, CheckedRange("y-range", first, last));
    Touch();
    return *this;
}

ContourMap& ContourMap::Name(std::string_view name) { return Set(m_style.zTitle, std::string(name)); }
ContourMap& ContourMap::XTitle(std::string_view title) { return Set(m_style.xTitle, std::string(title)); }
ContourMap& ContourMap::YTitle(std::string_view title) { return Set(m_style.yTitle, std::string(title)); }
ContourMap& ContourMap::SetTheme(Theme theme) { return Set(m_style.theme, theme); }
ContourMap& ContourMap::Footnote(std::string_view text) { return Set(m_style.footnote, std::string(text)); }
ContourMap& ContourMap::Key(KeyChoice choice) { return Set(m_style.key, choice); }

ContourMap& ContourMap::Update(std::span<double const> heights)
{
    UpdateHeights(m_state->Surface(), heights, m_state->source);
    Touch();
    return *this;
}

C2DGraph& ContourMap::Graph() { return *m_state->graph; }

std::unique_ptr<C2DGraph> ContourMap::TakeGraph() && { return std::move(m_state->graph); }

ChartNotes ContourMap::Notes() const
{
    ChartNotes all = m_state->readNotes;
    all.Add(m_state->notes);
    return all;
}

CAnnotatedGraph& ContourMap::LaidOut(CDC& dc, CRect const& window)
{
    State& state = *m_state;
    int const dotsPerInch = dc.GetDeviceCaps(LOGPIXELSX);
    if (window != state.window || dotsPerInch != state.dotsPerInch) {
        state.window = {};
        Settle(dc, window);
        state.window = window;
        state.dotsPerInch = dotsPerInch;
    }
    return *state.graph;
}

void ContourMap::Settle(CDC& dc, CRect const& window)
{
    State& state = *m_state;
    C2DGraph& graph = *state.graph;
    C2DContourCurve& curve = *state.curve;
    CSurface& surface = state.Surface();
    Look const look = LookOf(m_style.theme);
    state.notes = {};
    if (state.key)
        state.key->Remove();
    state.key.reset();
    LoadHeightMap(m_style.colours.map, *surface.GetWireframeColourmap());
    SetColourRange(surface, m_style.colours);
    graph.UpdatePlots();
    CheckHeights(surface, state.source, state.notes);
    AxisRange heights;
    surface.GetZRange(heights.min, heights.max);
    curve.SetTitle(CString(m_style.zTitle.value_or(state.titles.z)));
    SetLevels(curve, m_style, heights, look);
    AxisRange x;
    AxisRange y;
    curve.GetXRange(x.min, x.max);
    curve.GetYRange(y.min, y.max);

    graph.SetGraphAndWindowRect(window, window);
    PlotAxisSettings const xAxis = FixedAxis(x, m_style.xTitle.value_or(state.titles.x));
    PlotAxisSettings const yAxis = FixedAxis(y, m_style.yTitle.value_or(state.titles.y));
    if (m_style.key == KeyChoice::Auto && curve.NeedsColourKey())
        state.key.emplace(graph, curve, m_style.zTitle.value_or(state.titles.z), look);
    SetFootnote(graph, m_style.footnote, look);
    ApplyLook(graph, look);
    CRect rect = GraphRectIn(graph, graph.GetWindowRect(), dc);
    if (state.key) {
        LayOutAxes(graph, xAxis, yAxis, rect, dc);
        rect.right -= state.key->Width(dc);
    }
    (state.titles.sameUnits ? LayOutEqualScales : LayOutAxes)(graph, xAxis, yAxis, rect, dc);
    PlaceTitle(graph, dc, state.key ? state.key->Place(dc) : CRect());
    PlaceFootnote(graph, m_style.footnote, dc);
}

} // namespace ombrel
