#include "ombrel/scene/Scene.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/scene/parts/SceneLayout.h"
#include "ombrel/scene/parts/SceneParts.h"

#include <cmath>

namespace ombrel {

struct Scene::State : SceneParts {
    SceneStyle style;
    std::vector<std::unique_ptr<SceneItem>> items;
    TitledKey keys;
    /// What it was last laid out for.
    CRect window;
    int dotsPerInch = 0;

    void Settle();
    SceneData Describe(C3DCurve const*& keyCurve);
};

namespace {

void ApplyEnds(AxisRange& range, AxisEnds const& ends, char const* setting)
{
    range = { ends.min.value_or(range.min), ends.max.value_or(range.max) };
    if (range.max < range.min)
        throw ChartError(ChartError::Cause::Setting,
            std::string(setting) + ": all data lies beyond the end at " + NumberText(ends.min ? *ends.min : *ends.max));
}

void TakeTitle(std::string& title, std::string const& found) { title = title.empty() ? found : title; }

Direction Turned(Direction direction)
{
    constexpr double kMostPolar = 180.0;
    constexpr double kFull = 360.0;
    CheckedSetting("view", direction.polar, 0.0, kMostPolar);
    double const turned = std::fmod(direction.azimuth, kFull);
    if (!std::isfinite(turned))
        throw ChartError(ChartError::Cause::Setting, "view: expected an azimuth in degrees, found what is no number");
    return { turned < 0.0 ? turned + kFull : turned, direction.polar };
}

} // namespace

// --- axes ---

SceneAxis& SceneAxis::Title(std::string_view title)
{
    m_axis.title = std::string(title);
    m_scene.Changed();
    return *this;
}

SceneAxis& SceneAxis::Range(double min, double max)
{
    AxisRange const range = CheckedRange("range", min, max);
    m_axis.ends = { range.min, range.max };
    m_scene.Changed();
    return *this;
}

SceneAxis& SceneAxis::Min(double min)
{
    m_axis.ends.min = CheckedSetting("range", min, -kGap, kGap);
    m_scene.Changed();
    return *this;
}

SceneAxis& SceneAxis::Max(double max)
{
    m_axis.ends.max = CheckedSetting("range", max, -kGap, kGap);
    m_scene.Changed();
    return *this;
}

// --- the scene ---

Scene::Scene(std::string_view title)
    : DrawnPicture(title)
    , m_state(std::make_unique<State>())
{
    m_state->graph = MakeScene();
    m_state->look = LookOf(m_state->style.theme);
    ApplySceneStyle(*m_state->graph, m_state->style, m_state->look);
    AddTitle(*m_state->graph, OneLine(std::string(title)), m_state->look);
}

Scene::~Scene() = default;
Scene::Scene(Scene&&) noexcept = default;
Scene& Scene::operator=(Scene&&) noexcept = default;

template <typename Item, typename Data> Item& Scene::Add(Data&& data)
{
    CPlotArray const& plots = *m_state->graph->GetPlotArray();
    int const before = plots.GetSize();
    try {
        auto item = std::make_unique<Item>(*m_state, std::forward<Data>(data));
        Item& added = *item;
        m_state->items.push_back(std::move(item));
        m_state->Raise(Stale::View);
        return added;
    } catch (...) {
        // What cannot be shown leaves no empty curve behind.
        while (plots.GetSize() > before) {
            std::unique_ptr<CPlot> const empty(plots.GetAt(plots.GetSize() - 1));
            m_state->graph->RemovePlot(empty.get());
        }
        throw;
    }
}

SceneSurface& Scene::Surface(HeightSource heights) { return Add<SceneSurface>(std::move(heights)); }
SceneBars& Scene::Bars(HeightSource heights) { return Add<SceneBars>(std::move(heights)); }
SceneSeries& Scene::Series(HeightSource heights) { return Add<SceneSeries>(std::move(heights)); }
SceneWireframe& Scene::Wireframe(HeightSource heights) { return Add<SceneWireframe>(std::move(heights)); }

SceneSurface& Scene::Surface(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    return Surface(MakeGrid(heights, rows, columns));
}

SceneSurface& Scene::Surface(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Surface(GridOrPoints(MakePoints(x, y, z)));
}

SceneBars& Scene::Bars(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    return Bars(MakeGrid(heights, rows, columns));
}

SceneBars& Scene::Bars(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Bars(GridOrPoints(MakePoints(x, y, z)));
}

SceneSeries& Scene::Series(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    return Series(MakeGrid(heights, rows, columns));
}

SceneSeries& Scene::Series(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Series(GridOrPoints(MakePoints(x, y, z)));
}

SceneWireframe& Scene::Wireframe(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    return Wireframe(MakeGrid(heights, rows, columns));
}

SceneWireframe& Scene::Wireframe(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Wireframe(GridOrPoints(MakePoints(x, y, z)));
}

SceneLine& Scene::Line(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Line(MakePoints(x, y, z));
}

SceneLine& Scene::Line(ombrel::Points points) { return Add<SceneLine>(std::move(points)); }

ScenePoints& Scene::Points(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    return Points(MakePoints(x, y, z));
}

ScenePoints& Scene::Points(ombrel::Points points) { return Add<ScenePoints>(std::move(points)); }

SceneTexts& Scene::Texts(
    std::span<double const> x, std::span<double const> y, std::span<double const> z, std::span<std::string const> texts)
{
    ombrel::Points points = MakePoints(x, y, z);
    points.labels.assign(texts.begin(), texts.end());
    return Texts(std::move(points));
}

SceneTexts& Scene::Texts(ombrel::Points points) { return Add<SceneTexts>(std::move(points)); }

SceneMesh& Scene::Mesh(std::string const& path) { return Add<SceneMesh>(path); }

SceneAxis Scene::X() { return { *this, m_state->style.x }; }
SceneAxis Scene::Y() { return { *this, m_state->style.y }; }
SceneAxis Scene::Z() { return { *this, m_state->style.z }; }

SceneStyle const& Scene::GetStyle() const { return m_state->style; }

Scene& Scene::Style(SceneStyle style)
{
    m_state->style = std::move(style);
    m_state->look = LookOf(m_state->style.theme);
    ApplySceneStyle(*m_state->graph, m_state->style, m_state->look);
    // Lines and texts have colours of the theme.
    for (auto const& item : m_state->items)
        item->Touch();
    Changed();
    return *this;
}

namespace {

/// The style with one setting changed.
template <typename T, typename Value> SceneStyle With(SceneStyle style, T SceneStyle::*setting, Value&& value)
{
    style.*setting = std::forward<Value>(value);
    return style;
}

} // namespace

Scene& Scene::SetTheme(Theme theme) { return Style(With(GetStyle(), &SceneStyle::theme, theme)); }
Scene& Scene::Footnote(std::string_view text) { return Style(With(GetStyle(), &SceneStyle::footnote, text)); }
Scene& Scene::View(Direction direction) { return Style(With(GetStyle(), &SceneStyle::view, Turned(direction))); }
Scene& Scene::Edges(EdgeChoice edges) { return Style(With(GetStyle(), &SceneStyle::edges, edges)); }
Scene& Scene::Key(KeyChoice choice) { return Style(With(GetStyle(), &SceneStyle::key, choice)); }
Scene& Scene::Unlit() { return Style(With(GetStyle(), &SceneStyle::lit, false)); }

Scene& Scene::Zoom(double factor)
{
    return Style(With(GetStyle(), &SceneStyle::zoom, CheckedSetting("zoom", factor, 0.1, 10.0)));
}

Scene& Scene::Perspective(double strength)
{
    return Style(With(GetStyle(), &SceneStyle::perspective, CheckedSetting("perspective", strength, 0.0, 1.0)));
}

Scene& Scene::VerticalScale(double scale)
{
    return Style(With(GetStyle(), &SceneStyle::verticalScale, CheckedSetting("vertical-scale", scale, 0.01, 100.0)));
}

Scene& Scene::Lights(std::initializer_list<Direction> lights)
{
    if (lights.size() < 1 || lights.size() > 2)
        throw ChartError(
            ChartError::Cause::Setting, "lights: expected one or two, found " + std::to_string(lights.size()));
    SceneStyle style = With(GetStyle(), &SceneStyle::lit, true);
    style.lights.clear();
    for (Direction const& light : lights)
        style.lights.push_back(Turned(light));
    return Style(std::move(style));
}

Scene& Scene::Refit()
{
    Changed();
    return *this;
}

C3DGraph& Scene::Graph() { return *m_state->graph; }

std::unique_ptr<C3DGraph> Scene::TakeGraph() &&
{
    std::unique_ptr<C3DGraph> graph = std::move(m_state->graph);
    m_state.reset();
    return graph;
}

ChartNotes Scene::Notes() const
{
    ChartNotes all = m_state->readNotes;
    for (auto const& item : m_state->items)
        all.Add(item->m_notes);
    return all;
}

void Scene::Changed() { m_state->Raise(Stale::View); }

void Scene::State::Settle()
{
    for (auto const& item : items) {
        if (!item->m_isTouched)
            continue;
        item->m_notes = {};
        item->Prepare();
    }
    graph->UpdatePlots();
    for (auto const& item : items) {
        if (item->m_isTouched)
            item->Finish();
        item->m_isTouched = false;
    }
}

SceneData Scene::State::Describe(C3DCurve const*& keyCurve)
{
    SceneData data = SceneDataOf(*graph);
    ApplyEnds(data.x, style.x.ends, "x-range");
    ApplyEnds(data.y, style.y.ends, "y-range");
    ApplyEnds(data.z, style.z.ends, "z-range");
    keyCurve = nullptr;
    for (auto const& item : items) {
        TakeTitle(data.titles.x, item->m_titles.x);
        TakeTitle(data.titles.y, item->m_titles.y);
        TakeTitle(data.titles.z, item->m_titles.z);
        data.titles.sameUnits = data.titles.sameUnits || item->m_titles.sameUnits;
        C3DCurve const* const curve = item->KeyCurve();
        if (keyCurve || !curve || !curve->NeedsColourKey())
            continue;
        keyCurve = curve;
        data.keyTitle = item->m_keyTitle;
    }
    if (items.empty()) {
        for (C3DCurve const* const curve : CurvesOf(*graph))
            keyCurve = !keyCurve && curve->NeedsColourKey() ? curve : keyCurve;
    }
    if (style.key == KeyChoice::Off)
        keyCurve = nullptr;
    C3DAxis* const* const axes = graph->GetAxes();
    auto const settle = [this, &axes](std::string& title, AxisStyle const& axis, int index) {
        // Of curves that were added to the graph itself.
        if (items.empty())
            title = axes[index]->GetTitle().ToUtf8();
        title = axis.title.value_or(title);
    };
    settle(data.titles.x, style.x, 0);
    settle(data.titles.y, style.y, 1);
    settle(data.titles.z, style.z, 2);
    return data;
}

CAnnotatedGraph& Scene::LaidOut(CDC& dc, CRect const& window)
{
    State& state = *m_state;
    int const dotsPerInch = dc.GetDeviceCaps(LOGPIXELSX);
    if (window != state.window || dotsPerInch != state.dotsPerInch)
        Changed();
    if (state.stale == Stale::Nothing)
        return *state.graph;
    if (CurvesOf(*state.graph).empty())
        throw ChartError(ChartError::Cause::Data, "there is nothing to draw: the scene is empty");
    state.Settle();
    C3DCurve const* keyCurve = nullptr;
    SceneData const data = state.Describe(keyCurve);
    bool const hasKey = HasKey(*state.graph, state.keys);
    if (state.stale == Stale::Data && (keyCurve != nullptr) == hasKey) {
        SetSceneAxes(*state.graph, data, state.style.verticalScale);
        if (hasKey)
            SetKeyLabels(*state.keys.colours, *keyCurve);
    } else {
        state.keys = LayOutScene(*state.graph, keyCurve, data, state.look, state.style, state.keys, dc, window);
    }
    state.window = window;
    state.dotsPerInch = dotsPerInch;
    state.stale = Stale::Nothing;
    return *state.graph;
}

} // namespace ombrel
