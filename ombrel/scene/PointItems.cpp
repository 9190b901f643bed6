#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/SceneItems.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/scene/parts/PointArrays.h"
#include "ombrel/scene/parts/SceneData.h"
#include "ombrel/scene/parts/SceneParts.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

/// Symbols of the library's size hide each other when there are many.
double SymbolScale(int points, SymbolStyle const& symbols)
{
    constexpr double kFew = 60.0;
    constexpr double kLargest = 1.2;
    return symbols.size * kLargest * std::cbrt(std::min(1.0, kFew / std::max(points, 1)));
}

void SetSymbols(C3DLineCurve& curve, int points, SymbolStyle const& symbols)
{
    curve.SetSymbols(1);
    curve.SetSymbolStyle(static_cast<int>(symbols.shape));
    curve.SetSymbolScaleFac(SymbolScale(points, symbols));
}

CurveLook FirstLook(Look const& look) { return PaletteNamed("", 1, look).At(0); }

void CheckOneEach(std::string const& source, char const* what, std::size_t found, std::size_t points)
{
    if (found != points && found != 0)
        throw ChartError(ChartError::Cause::Data,
            source + ": expected as many " + what + " as points (" + std::to_string(points) + "), found "
                + std::to_string(found));
}

} // namespace

SceneLine::SceneLine(SceneParts& scene, Points&& points)
    : PointItem(scene, std::move(points))
    , m_line(AddCurve<C3DLineCurve>(*scene.graph, it3DLinePlot))
{
    m_curve = &m_line;
}

void SceneLine::Prepare()
{
    Points points = m_points;
    PointArrays arrays(points);
    m_line.SetPoints(arrays.X(), arrays.Y(), arrays.Z());
    SetCoordinates(m_line, m_style.coordinates);
    CurveLook const look = FirstLook(m_scene.look);
    m_line.SetColour(look.colour);
    m_line.SetLineStyle(m_style.tubes ? 1 : 0);
    m_line.SetThicknessScaleFac(m_style.width);
    m_line.SetSymbolColour(look.colour);
    if (m_style.marks)
        SetSymbols(m_line, arrays.Count(), m_style.symbols);
}

SceneLine& SceneLine::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

SceneLine& SceneLine::Width(double width)
{
    constexpr double kMost = 100.0;
    return Set(m_style.width, CheckedSetting("line-width", width, 1.0, kMost));
}

SceneLine& SceneLine::Tubes() { return Set(m_style.tubes, true); }

ScenePoints::ScenePoints(SceneParts& scene, Points&& points)
    : PointItem(scene, std::move(points))
    , m_scatter(AddCurve<C3DScatterCurve>(*scene.graph, it3DScatterPlot))
{
    m_curve = &m_scatter;
    CheckOneEach(m_source, "values of colour", m_points.colours.size(), m_points.Count());
    CheckOneEach(m_source, "sizes", m_points.sizes.size(), m_points.Count());
}

void ScenePoints::Prepare()
{
    Points points = m_points;
    LeaveOutGaps(points, m_notes);
    PointArrays arrays(points);
    m_scatter.SetPoints(arrays.X(), arrays.Y(), arrays.Z());
    SetCoordinates(m_scatter, m_style.coordinates);
    SetHeightColours(m_scatter, m_style.colours);
    m_scatter.SetColour(FirstLook(m_scene.look).colour);
    SetSymbols(m_scatter, arrays.Count(), m_style.symbols);
    bool const hasColours = !points.colours.empty();
    bool const hasSizes = !points.sizes.empty();
    // Most are smaller than the largest.
    constexpr double kLarger = 1.8;
    if (hasSizes)
        m_scatter.SetSymbolScaleFac(kLarger * m_scatter.GetSymbolScaleFac());
    if (hasColours || hasSizes) {
        CDoubleArray colours = PointArrays::ToArray(hasColours ? points.colours : points.sizes);
        CDoubleArray sizes = PointArrays::ToArray(hasSizes ? points.sizes : points.colours);
        CDoubleArray* const variables[] { &colours, &sizes };
        m_scatter.SetVarData(variables, arrays.Count());
    }
    m_scatter.SetVar1Use(hasColours ? C3DScatterCurve::vuColour : C3DScatterCurve::vuNone);
    m_scatter.SetVar2Use(hasSizes ? C3DScatterCurve::vuSize : C3DScatterCurve::vuNone);
    m_scatter.SetColourByZVal(!hasColours && m_style.colouring == ColouringChoice::Value);
    m_scatter.SetSticksOn(m_style.sticks);
    if (!m_style.sticks)
        return;
    m_scatter.SetAutoBaseline(m_style.baseline ? 0 : 1);
    if (m_style.baseline)
        m_scatter.SetBaseline(*m_style.baseline);
}

ScenePoints& ScenePoints::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

ScenePoints& ScenePoints::Colours(std::span<double const> values, std::string_view title)
{
    CheckOneEach(m_source, "values of colour", values.size(), m_points.Count());
    m_keyTitle = title;
    return Set(m_points.colours, std::vector<double>(values.begin(), values.end()));
}

ScenePoints& ScenePoints::Sizes(std::span<double const> values)
{
    CheckOneEach(m_source, "sizes", values.size(), m_points.Count());
    return Set(m_points.sizes, std::vector<double>(values.begin(), values.end()));
}

ScenePoints& ScenePoints::Sticks() { return Set(m_style.sticks, true); }

SceneTexts::SceneTexts(SceneParts& scene, Points&& points)
    : PointItem(scene, std::move(points))
    , m_texts(AddCurve<C3DTextCurve>(*scene.graph, it3DTextPlot))
{
    m_curve = &m_texts;
    CheckOneEach(m_source, "texts", m_points.labels.size(), m_points.Count());
}

void SceneTexts::Prepare()
{
    Points points = m_points;
    points.labels.resize(points.Count());
    LeaveOutGaps(points, m_notes);
    CGStringArray labels;
    for (std::string const& label : points.labels)
        labels.Add(CString(label));
    PointArrays arrays(points);
    m_texts.SetPoints(arrays.X(), arrays.Y(), arrays.Z(), &labels, arrays.Count());
    SetCoordinates(m_texts, m_style.coordinates);
    m_texts.SetColour(m_scene.look.text);
    if (!m_style.marks)
        return;
    if (!m_marks)
        m_marks = &AddCurve<C3DScatterCurve>(*m_scene.graph, it3DScatterPlot);
    m_marks->SetPoints(arrays.X(), arrays.Y(), arrays.Z());
    SetCoordinates(*m_marks, m_style.coordinates);
    m_marks->SetColour(FirstLook(m_scene.look).colour);
    SetSymbols(*m_marks, arrays.Count(), m_style.symbols);
}

SceneTexts& SceneTexts::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

} // namespace ombrel
