#include "ombrel/graph3d/3DRowColCurve.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/SceneItems.h"
#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/scene/parts/SceneParts.h"

#include <cmath>

namespace ombrel {

namespace {

[[noreturn]] void FailData(std::string const& text) { throw ChartError(ChartError::Cause::Data, text); }

} // namespace

SceneItem::SceneItem(SceneParts& scene, std::string source)
    : m_scene(scene)
    , m_source(std::move(source))
{
}

void SceneItem::Touch()
{
    m_isTouched = true;
    m_scene.Raise(Stale::View);
}

void SceneItem::TouchData()
{
    m_isTouched = true;
    m_scene.Raise(Stale::Data);
}

void SceneItem::SetName(std::string_view name)
{
    m_titles.z = name;
    m_curve->SetTitle(CString(std::string(name)));
    Touch();
}

void SceneItem::Finish()
{
    if (!m_curve->IsValid())
        FailData(m_source + ": there is nothing to draw, or more than can be drawn");
}

void HeightItem::TakeHeights(HeightSource&& heights)
{
    m_source = SourceOf(heights);
    if (m_grid) {
        m_titles = GiveHeights(std::move(heights), *m_grid, m_scene.readNotes);
        return;
    }
    m_points = std::get<Points>(std::move(heights));
    m_titles = TitlesOf(m_points);
}

void HeightItem::Place(bool columns, double first, double last)
{
    char const* const setting = columns ? "x-range" : "y-range";
    if (!m_grid)
        throw ChartError(
            ChartError::Cause::Setting, std::string(setting) + ": the points have coordinates of their own");
    PlaceGrid(*m_grid, columns ? GridSide::Columns : GridSide::Rows, CheckedRange(setting, first, last));
    Touch();
}

void HeightItem::Update(std::span<double const> heights)
{
    if (m_grid) {
        UpdateHeights(*m_grid, heights, m_source);
    } else {
        if (heights.size() != m_points.Count())
            FailData(m_source + ": expected " + std::to_string(m_points.Count()) + " heights as before, found "
                + std::to_string(heights.size()));
        m_points.z.assign(heights.begin(), heights.end());
    }
    TouchData();
}

void HeightItem::Update(HeightSource heights)
{
    if (ArePoints(heights) == (m_grid != nullptr))
        FailData(SourceOf(heights) + ": expected " + (m_grid ? "a grid, found points" : "points, found a grid")
            + "; a new one of the other kind has to be added");
    HeightTitles const before = m_titles;
    TakeHeights(std::move(heights));
    for (auto const& [now, then] :
        { std::pair(&m_titles.x, &before.x), std::pair(&m_titles.y, &before.y), std::pair(&m_titles.z, &before.z) }) {
        if (now->empty())
            *now = *then;
    }
    TouchData();
}

PointItem::PointItem(SceneParts& scene, Points&& points)
    : SceneItem(scene, points.source)
{
    TakePoints(std::move(points));
}

void PointItem::TakePoints(Points&& points)
{
    m_source = points.source;
    m_points = std::move(points);
    m_titles = TitlesOf(m_points);
    m_keyTitle = m_points.colourTitle;
}

void PointItem::Finish()
{
    if (!m_curve->IsValid())
        FailData(m_source + ": there is nothing to draw: every point has a gap");
}

void PointItem::Update(Points points)
{
    HeightTitles const before = m_titles;
    std::string const keyBefore = m_keyTitle;
    TakePoints(std::move(points));
    if (m_points.xTitle.empty() && m_points.yTitle.empty() && m_points.zTitle.empty())
        m_titles = before;
    if (m_keyTitle.empty())
        m_keyTitle = keyBefore;
    TouchData();
}

void PointItem::Update(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    Update(MakePoints(x, y, z));
}

} // namespace ombrel
