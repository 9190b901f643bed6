#include "ombrel/scene/Heights.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/parts/PointGrid.h"
#include "ombrel/scene/parts/SceneTexts.h"

#include <climits>

namespace ombrel {

namespace {

[[noreturn]] void FailData(std::string const& text) { throw ChartError(ChartError::Cause::Data, text); }

/// Curves count in int.
void CheckCount(std::size_t count)
{
    if (count > INT_MAX / sizeof(double))
        FailData(
            "expected at most " + std::to_string(INT_MAX / sizeof(double)) + " values, found " + std::to_string(count));
}

} // namespace

Grid MakeGrid(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    if (rows < 2 || columns < 2)
        FailData("heights: expected at least 2 rows and 2 columns, found " + std::to_string(rows) + " x "
            + std::to_string(columns));
    CheckCount(heights.size());
    if (heights.size() / columns != rows || heights.size() % columns != 0)
        FailData("heights: expected " + std::to_string(rows) + " rows of " + std::to_string(columns) + ", found "
            + std::to_string(heights.size()) + " values");
    Grid grid;
    grid.x = { 0.0, static_cast<double>(columns - 1), columns, {} };
    grid.y = { 0.0, static_cast<double>(rows - 1), rows, {} };
    grid.heights.assign(heights.begin(), heights.end());
    return grid;
}

Points MakePoints(std::span<double const> x, std::span<double const> y, std::span<double const> z)
{
    CheckCount(x.size());
    if (x.size() != y.size() || x.size() != z.size())
        FailData("points: expected as many x as y and z, found " + std::to_string(x.size()) + ", "
            + std::to_string(y.size()) + " and " + std::to_string(z.size()));
    Points points;
    points.x.assign(x.begin(), x.end());
    points.y.assign(y.begin(), y.end());
    points.z.assign(z.begin(), z.end());
    return points;
}

HeightSource GridOrPoints(Points points)
{
    auto made = GridOfPoints(
        { points.x, points.y, points.z }, [](std::size_t point) { return "point " + std::to_string(point); });
    auto* const grid = std::get_if<Grid>(&made);
    if (!grid)
        return points;
    grid->x.title = points.xTitle;
    grid->y.title = points.yTitle;
    grid->title = points.zTitle;
    grid->source = points.source;
    return std::move(*grid);
}

std::string const& SourceOf(HeightSource const& heights)
{
    if (auto const* const file = std::get_if<HeightFile>(&heights))
        return file->path;
    if (auto const* const grid = std::get_if<Grid>(&heights))
        return grid->source;
    return std::get<Points>(heights).source;
}

bool IsHeightFile(std::string const& path)
{
    std::string const extension = ExtensionOf(path);
    return path != "-" && (extension == ".tvl" || extension == ".dem");
}

} // namespace ombrel
