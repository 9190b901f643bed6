#include "ombrel/scene/GraphPicture.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/FillLook.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/scene/MapKey.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace ombrel {

namespace {

/// What the curve draws beyond its points.
void WidenForCurve(C2DCurve const& curve, AxisRange& y)
{
    auto const include = [&y](double value) {
        y.min = std::min(y.min, value);
        y.max = std::max(y.max, value);
    };
    auto const* const line = DynamicDowncast<C2DLine>(&curve);
    if (line && line->GetFillOn() && !line->GetAutoBaseline() && line->GetShadeMode() == C2DLine::shBaseline)
        include(line->GetBaseline());
    if (auto const* const bars = DynamicDowncast<C2DErrorBarCurve>(&curve)) {
        for (int i = 0; i < std::min(bars->GetNumPoints(), bars->GetHeights().GetSize()); ++i) {
            include(bars->GetAt(i).y + bars->GetHeights()[i] / 2);
            include(bars->GetAt(i).y - bars->GetHeights()[i] / 2);
        }
    }
}

/// The margin for what a curve draws beside its points.
double MarginFor(C2DCurve const& curve)
{
    // Room for texts, and for half of a line that is many pixels wide.
    constexpr double kWideMargin = 0.05;
    constexpr int kWide = 5;
    auto const* const line = DynamicDowncast<C2DLine>(&curve);
    if (curve.IsKindOf(C2DTextCurve::kClass) || (line && line->GetLineWidth() > kWide))
        return kWideMargin;
    bool const isApart = line
        && (line->GetPointConnectionMode() == C2DLine::cmPairs
            || (line->GetPointConnectionMode() == C2DLine::cmNone && line->GetSymbolType() != C2DSymbol::None));
    return isApart || !line ? kMarkMargin : kCurveMargin;
}

/// Calls visit(curve) for every curve.
template <typename Visit> void ForCurves(C2DGraph const& graph, Visit const& visit)
{
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        for (CPlotComponent const* curve : plot->GetComponents())
            visit(static_cast<C2DCurve const&>(*curve));
    }
}

/// The curve whose colours a key should explain; null when there is none.
CPlotComponent const* CurveWithKey(CAnnotatedGraph const& graph)
{
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        for (CPlotComponent const* curve : plot->GetComponents()) {
            if (curve->NeedsColourKey())
                return curve;
        }
    }
    return nullptr;
}

/// What is to be seen.
void GetRanges(C2DGraph const& graph, PlotAxisSettings& x, PlotAxisSettings& y)
{
    graph.GetXRange(x.data.min, x.data.max);
    graph.GetYRange(y.data.min, y.data.max);
    y.margin = kCurveMargin;
    ForCurves(graph, [&](C2DCurve const& curve) {
        WidenForCurve(curve, y.data);
        double const margin = MarginFor(curve);
        y.margin = std::max(y.margin, margin);
        if (margin == kMarkMargin && curve.IsKindOf(C2DLine::kClass))
            x.margin = kMarkMargin;
    });
    // Grids end with the axes.
    if (graph.HasPlotType(it2DContourPlot)) {
        x.min = x.data.min;
        x.max = x.data.max;
        y.min = y.data.min;
        y.max = y.data.max;
    }
    for (CPlot const* plot : graph.GetPlotArray()->GetPlots()) {
        auto const* const stacked = DynamicDowncast<C2DStackedBarPlot>(plot);
        if (stacked && stacked->GetPlotStyle() == C2DStackedBarPlot::psPercent)
            y.limit = 100.0;
        auto const* const area = DynamicDowncast<C2DAreaPlot>(plot);
        if (area && area->GetNormalised())
            y.limit = 1.0;
    }
    if (graph.HasPlotType(it2DClusteredBarPlot))
        y.data = { std::min(y.data.min, 0.0), std::max(y.data.max, 0.0) };
}

void TakeOver(AxisSettings const& axis, PlotAxisSettings& settings)
{
    settings.title = axis.title.ToUtf8();
    settings.logarithmic = axis.scaleMode != 0;
    if (axis.rangeMode == CAxes::rmFixed) {
        settings.min = axis.min;
        settings.max = axis.max;
    }
}

/// Graphs count decades on logarithmic axes, layouts take the values.
void TakeValuesOfDecades(PlotAxisSettings& settings)
{
    if (!settings.logarithmic)
        return;
    for (double* end : { &settings.data.min, &settings.data.max })
        *end = std::pow(10.0, *end);
    for (std::optional<double>* end : { &settings.min, &settings.max }) {
        if (*end)
            *end = std::pow(10.0, **end);
    }
}

/// Lays a graph out, as often as its rectangle changes.
class PictureLayout {
public:
    PictureLayout(C2DGraph& graph, bool keepAxes, CRect const& window, CDC& dc)
        : m_graph(graph)
        , m_keepAxes(keepAxes)
        , m_window(window)
        , m_dc(dc)
    {
        AxisSettings const& x = graph.GetAxes()->GetAxis(CAxes::atX);
        TakeOver(x, m_x);
        TakeOver(graph.GetAxes()->GetAxis(CAxes::atY), m_y);
        m_x.dates = x.timeUnitsOn != 0;
        GetRanges(graph, m_x, m_y);
        TakeValuesOfDecades(m_x);
        TakeValuesOfDecades(m_y);
        if (x.labelMode == CAxes::lmValues)
            return;
        for (CString const& word : x.labels)
            m_x.words.push_back(word.ToUtf8());
        m_wordsRange = { x.min, x.max };
    }
    void LayOut()
    {
        m_whole = GraphRectIn(m_graph, m_window, m_dc);
        LayOutIn(m_whole);
    }
    /// Where the graph lies in the picture when nothing stands beside it.
    CRect const& WholeRect() const { return m_whole; }
    void LayOutIn(CRect const& rect)
    {
        m_graph.SetGraphAndWindowRect(rect, m_window);
        if (m_graph.GetPolarGrid()->IsOn()) {
            LayOutPolar(m_graph, rect, m_dc);
            return;
        }
        if (!m_keepAxes)
            LayOutAxes(m_graph, m_x, m_y, rect, m_dc);
        if (!m_x.words.empty())
            m_graph.GetAxes()->SetXAxisRange(m_wordsRange.min, m_wordsRange.max);
        m_graph.LayOut(&m_dc, m_window);
    }

private:
    C2DGraph& m_graph;
    bool m_keepAxes;
    CRect m_window;
    CDC& m_dc;
    PlotAxisSettings m_x;
    PlotAxisSettings m_y;
    AxisRange m_wordsRange;
    CRect m_whole;
};

/// An axis as the program set it: a layout writes its own ticks, labels and ends over these settings, and the next one
/// must not take them for the program's.
class GivenAxis {
public:
    explicit GivenAxis(CAxes::AxisType type)
        : m_type(type)
    {
    }
    /// Puts back what the last layout changed and the program has not changed since.
    void PutBack(CAxes& axes)
    {
        AxisSettings axis = axes.GetAxis(m_type);
        if (m_laidOut) {
            using A = AxisSettings;
            PutBack(axis, &A::title);
            PutBack(axis, &A::min, &A::max, &A::rangeMode);
            PutBack(axis, &A::tickMode, &A::numMajorTicks, &A::numMinorTicks, &A::tickMin, &A::tickDel,
                &A::arbitraryTicks, &A::labelMode, &A::labels, &A::formatType, &A::labelPrecision);
            PutBack(axis, &A::on, &A::labelsOn);
            PutBack(axis, &A::scaleFac, &A::majorTickScaleFac, &A::minorTickScaleFac);
            PutBack(axis, &A::timeUnitsOn);
            axes.SetAxis(m_type, axis);
        }
        m_given = std::move(axis);
    }
    void KeepLaidOut(CAxes const& axes) { m_laidOut = axes.GetAxis(m_type); }

private:
    /// Fields that belong together.
    template <typename... Fields> void PutBack(AxisSettings& axis, Fields... fields) const
    {
        auto const isAsLaidOut = [&](auto field) { return axis.*field == (*m_laidOut).*field; };
        if ((isAsLaidOut(fields) && ...))
            ((axis.*fields = m_given.*fields), ...);
    }

    CAxes::AxisType m_type;
    AxisSettings m_given;
    std::optional<AxisSettings> m_laidOut;
};

void SetCaptionFonts(C2DGraph& graph, CDC& dc)
{
    CCaptionArray const& captions = *graph.GetCaptionArray();
    CCaption const* const title = FindTitle(graph);
    CCaption const* const footnote = FindFootnote(graph);
    for (int i = 0; i < captions.GetSize(); ++i) {
        if (captions.GetAt(i) != title && captions.GetAt(i) != footnote)
            SetReadableFont(*captions.GetAt(i), graph, dc);
    }
}

} // namespace

struct GraphPicture::State {
    explicit State(Theme theme)
        : look(theme)
    {
    }
    std::unique_ptr<C2DGraph> graph = std::make_unique<C2DGraph>(1);
    PictureLook look;
    std::string footnote;
    bool keepsAxes = false;
    std::array<GivenAxis, 2> axes = { GivenAxis(CAxes::atX), GivenAxis(CAxes::atY) };
    /// What was last added; the graph owns it.
    std::optional<MapKey> key;
    /// What it was last laid out for; empty when that is out of date.
    CRect window;
    int dotsPerInch = 0;
};

GraphPicture::GraphPicture(std::string_view title, Theme theme)
    : DrawnPicture(title)
    , m_state(std::make_unique<State>(theme))
{
    C2DGraph& graph = *m_state->graph;
    graph.GetPolarGrid()->SetOn(0);
    ApplyLook(graph, m_state->look);
    graph.SetGraphFrameOn(0);
    SetGrid(graph, GridChoice::Major, true);
    AddTitle(graph, OneLine(std::string(title)), m_state->look);
}

GraphPicture::~GraphPicture() = default;
GraphPicture::GraphPicture(GraphPicture&&) noexcept = default;
GraphPicture& GraphPicture::operator=(GraphPicture&&) noexcept = default;

GraphPicture& GraphPicture::Footnote(std::string_view text)
{
    m_state->footnote = text;
    SetFootnote(*m_state->graph, m_state->footnote, m_state->look);
    Touch();
    return *this;
}

GraphPicture& GraphPicture::KeepAxes()
{
    m_state->keepsAxes = true;
    Touch();
    return *this;
}

C2DGraph& GraphPicture::Graph() { return *m_state->graph; }

void GraphPicture::Touch() { m_state->window = {}; }

PictureLook const& GraphPicture::GetLook() const { return m_state->look; }

CAnnotatedGraph& GraphPicture::LaidOut(CDC& dc, CRect const& window)
{
    State& state = *m_state;
    C2DGraph& graph = *state.graph;
    int const dotsPerInch = dc.GetDeviceCaps(LOGPIXELSX);
    if (window == state.window && dotsPerInch == state.dotsPerInch)
        return graph;
    if (state.key)
        state.key->Remove();
    state.key.reset();
    if (graph.GetPolarGrid()->IsOn()) {
        ApplyLook(graph, PolarLookOf(state.look.theme));
        graph.GetGrid()->SetOn(0);
    }
    PutAxesOverFills(graph);
    for (GivenAxis& axis : state.axes)
        axis.PutBack(*graph.GetAxes());
    graph.UpdatePlots();
    PictureLayout layout(graph, state.keepsAxes, window, dc);
    layout.LayOut();
    CRect key;
    if (CPlotComponent const* const curve = CurveWithKey(graph)) {
        state.key.emplace(graph, *curve, curve->GetTitle().ToUtf8(), state.look);
        CRect rect = layout.WholeRect();
        rect.right -= state.key->Width(dc);
        layout.LayOutIn(rect);
        key = state.key->Place(dc);
    }
    CLegend& legend = *graph.GetLegend();
    if (legend.IsOn()) {
        int const style = legend.GetStyle();
        PlaceLegend(
            graph, LegendPlace::Auto, layout.WholeRect(), dc, [&](CRect const& rect) { layout.LayOutIn(rect); });
        legend.SetStyle(style);
    }
    PlaceTitle(graph, dc, key);
    PlaceFootnote(graph, state.footnote, dc);
    SetCaptionFonts(graph, dc);
    for (GivenAxis& axis : state.axes)
        axis.KeepLaidOut(*graph.GetAxes());
    state.window = window;
    state.dotsPerInch = dotsPerInch;
    return graph;
}

} // namespace ombrel
