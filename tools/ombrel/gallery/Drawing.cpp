#include "tools/ombrel/gallery/Drawing.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/graph2d/2DTextPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/FillLook.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/scene/MapKey.h"
#include "ombrel/scene/Scene.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <memory>

namespace ombrel::host {

namespace {

/// In rows of three.
constexpr std::string_view kOnOverview[] { "lines-constrained", "clustered-years", "areas-stream", "shading-range",
    "stacked-shares", "grid-polar", "symbols-clouds", "errors-fit", "colours-spectrum", "contours-bands",
    "surfaces-lit", "surfaces-globe", "bars3d-rain", "scatter3d-clouds", "mesh-clipped" };

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

/// Lays the graph of a picture out, as often as its rectangle changes.
class PictureLayout {
public:
    PictureLayout(C2DGraph& graph, AxesChoice choice, CRect const& window, CDC& dc)
        : m_graph(graph)
        , m_choice(choice)
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
        if (m_choice == AxesChoice::Fitted)
            LayOutAxes(m_graph, m_x, m_y, rect, m_dc);
        if (!m_x.words.empty())
            m_graph.GetAxes()->SetXAxisRange(m_wordsRange.min, m_wordsRange.max);
        m_graph.Draw(&m_dc, m_window, pmDirect);
    }

private:
    C2DGraph& m_graph;
    AxesChoice m_choice;
    CRect m_window;
    CDC& m_dc;
    PlotAxisSettings m_x;
    PlotAxisSettings m_y;
    AxisRange m_wordsRange;
    CRect m_whole;
};

void PlaceAnnotation(C2DGraph& graph, PictureLayout& layout, PictureLook const& look, CDC& dc)
{
    if (CPlotComponent const* const curve = CurveWithKey(graph)) {
        MapKey key(graph, *curve, curve->GetTitle().ToUtf8(), look);
        CRect rect = layout.WholeRect();
        rect.right -= key.Width(dc);
        layout.LayOutIn(rect);
        key.Place(dc);
    }
    CLegend& legend = *graph.GetLegend();
    if (legend.IsOn()) {
        int const style = legend.GetStyle();
        PlaceLegend(
            graph, LegendPlace::Auto, layout.WholeRect(), dc, [&](CRect const& rect) { layout.LayOutIn(rect); });
        legend.SetStyle(style);
    }
    PlaceTitle(graph, dc);
    CCaption const* const title = FindTitle(graph);
    CCaptionArray const& captions = *graph.GetCaptionArray();
    for (int i = 0; i < captions.GetSize(); ++i) {
        if (captions.GetAt(i) != title)
            SetReadableFont(*captions.GetAt(i), graph, dc);
    }
}

using BuildGraph = std::variant_alternative_t<0, BuildPicture>;
using BuildScene = std::variant_alternative_t<1, BuildPicture>;

std::unique_ptr<C2DGraph> MakeGraph(BuildGraph build, PictureLook const& look, AxesChoice axes, Target const& target)
{
    auto graph = std::make_unique<C2DGraph>(1);
    ApplyLook(*graph, look);
    graph->SetGraphFrameOn(0);
    SetGrid(*graph, GridChoice::Major, true);
    build(*graph, look);
    if (graph->GetPolarGrid()->IsOn()) {
        ApplyLook(*graph, PolarLookOf(look.theme));
        graph->GetGrid()->SetOn(0);
    }
    if (graph->GetTitle() != CString(kUntitled))
        AddTitle(*graph, graph->GetTitle().ToUtf8(), look);
    PutAxesOverFills(*graph);
    graph->UpdatePlots();
    Picture scratch(target);
    PictureLayout layout(*graph, axes, scratch.GetRect(), scratch.GetDC());
    layout.LayOut();
    PlaceAnnotation(*graph, layout, look, scratch.GetDC());
    return graph;
}

std::unique_ptr<C3DGraph> MakeGraph(BuildScene build, PictureLook const& look, Target const& target)
{
    Scene scene;
    scene.SetTheme(look.theme);
    build(scene.Graph(), look);
    Picture scratch(target);
    scene.LayOut(scratch.GetDC(), scratch.GetRect());
    return std::move(scene).TakeGraph();
}

} // namespace

std::unique_ptr<CAnnotatedGraph> MakeGalleryGraph(GalleryPicture const& picture, Target const& target, Theme theme)
{
    PictureLook const look(picture.theme.value_or(theme));
    if (auto const* const scene = std::get_if<BuildScene>(&picture.build))
        return MakeGraph(*scene, look, target);
    return MakeGraph(std::get<BuildGraph>(picture.build), look, picture.axes, target);
}

std::string DrawGalleryPicture(GalleryPicture const& picture, Target const& target, Theme theme)
{
    auto const graph = MakeGalleryGraph(picture, target, theme);
    Picture drawing(target);
    drawing.Draw(*graph);
    return drawing.Encode();
}

std::string DrawOverview(std::span<GalleryPicture const> pictures, Theme theme)
{
    constexpr int kPerRow = 3;
    Target whole;
    whole.size = kOverview;
    whole.title = "Overview";
    Picture overview(whole);
    Target part;
    part.size = { kOverview.width / kPerRow, kOverview.height / (static_cast<int>(std::size(kOnOverview)) / kPerRow) };
    int place = 0;
    for (std::string_view const name : kOnOverview) {
        auto const picture = std::find_if(
            pictures.begin(), pictures.end(), [name](GalleryPicture const& p) { return p.name == name; });
        assert(picture != pictures.end());
        auto const graph = MakeGalleryGraph(*picture, part, theme);
        {
            // From a draw on, annotation keeps its place in the graph.
            Picture alone(part);
            alone.Draw(*graph);
        }
        CRect cell(CPoint(0, 0), CSize(part.size.width, part.size.height));
        cell.OffsetRect(place % kPerRow * part.size.width, place / kPerRow * part.size.height);
        graph->DrawEmbedded(&overview.GetDC(), cell, cell);
        ++place;
    }
    return overview.Encode();
}

} // namespace ombrel::host
