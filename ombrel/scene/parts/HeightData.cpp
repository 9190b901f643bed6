#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Number.h"

#include <array>
#include <cmath>

namespace ombrel {

namespace {

HeightTitles TitlesOfDem(CUSGSDEM const& dem)
{
    constexpr std::array<char const*, 4> kGroundUnits { "rad", "ft", "m", "arcsec" };
    auto const units = static_cast<std::size_t>(dem.GetHeader().groundUnits);
    std::string const unit = units < kGroundUnits.size() ? std::string(" / ") + kGroundUnits[units] : "";
    return { "east" + unit, "north" + unit,
        std::string("elevation / ") + (dem.GetHeader().elevationUnits == 1 ? "ft" : "m"), true };
}

/// Elevations count steps of the model's resolution.
void ScaleElevations(CSurface& surface, std::string const& name, ChartNotes& notes)
{
    auto const step = static_cast<double>(surface.GetDEM().GetHeader().zResolution);
    if (!(step > 0.0) || !std::isfinite(step) || step == 1.0)
        return;
    CTableData scaled;
    surface.GetTableData(scaled);
    for (int r = 0; r < scaled.GetNumRows(); ++r) {
        for (int c = 0; c < scaled.GetNumCols(); ++c) {
            double const value = scaled.GetAt(r, c);
            if (!IsGap(value))
                scaled.SetAt(r, c, value * step);
        }
    }
    surface.SetTableData(std::move(scaled));
    notes.AddNote(name + ": elevations are multiplied by the resolution of " + FormatNumber(step, 'g', 7));
}

/// Has the surface read its file.
HeightTitles ReadInto(CSurface& surface, std::string const& name, ChartNotes& notes)
{
    if (!WithErrors([&] { return surface.SetPathname(CString(name)); }))
        throw ChartError(ChartError::Cause::Data, name + ": cannot be read");
    surface.SetDataSourceType(CPlotComponent::dsTable);
    if (surface.GetFileType() != CSurface::ftDEM)
        return { "x", "y", "z" };
    ScaleElevations(surface, name, notes);
    return TitlesOfDem(surface.GetDEM());
}

void GiveTable(CTableData&& table, TablePlacement const& placement, C3DRowColCurve& curve)
{
    curve.SetTableData(std::move(table));
    curve.SetTablePlacement(placement);
    curve.AlignMeshes();
    curve.SetDataSourceType(CPlotComponent::dsTable);
}

CTableData TableOf(std::span<double const> heights, std::size_t rows, std::size_t columns)
{
    CTableData table(static_cast<int>(rows), static_cast<int>(columns));
    for (std::size_t j = 0; j < rows; ++j) {
        for (std::size_t i = 0; i < columns; ++i) {
            double const height = heights[j * columns + i];
            table.SetAt(static_cast<int>(j), static_cast<int>(i), std::isnan(height) ? kGap : height);
        }
    }
    return table;
}

HeightTitles GiveGrid(Grid&& grid, C3DRowColCurve& curve)
{
    CTableData table = TableOf(grid.heights, grid.y.count, grid.x.count);
    grid.heights = {};
    GiveTable(std::move(table), { grid.x.first, grid.y.first, grid.x.Step(), grid.y.Step() }, curve);
    return { grid.x.title, grid.y.title, grid.title, false };
}

/// Moves what is to be kept to the front.
template <typename T> void Keep(std::vector<T>& values, std::vector<bool> const& kept)
{
    std::size_t to = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!kept[i])
            continue;
        if (to != i)
            values[to] = std::move(values[i]);
        ++to;
    }
    values.resize(to);
}

/// Returns their number.
std::size_t DropGaps(Points& points)
{
    std::size_t const count = points.Count();
    std::vector<bool> kept(count);
    for (std::size_t i = 0; i < count; ++i)
        kept[i] = std::isfinite(points.x[i]) && std::isfinite(points.y[i]) && std::isfinite(points.z[i]);
    for (std::vector<double>* values : { &points.x, &points.y, &points.z, &points.sizes, &points.colours })
        Keep(*values, kept);
    Keep(points.labels, kept);
    return count - points.Count();
}

} // namespace

bool ArePoints(HeightSource const& heights) { return std::holds_alternative<Points>(heights); }

HeightTitles TitlesOf(Points const& points) { return { points.xTitle, points.yTitle, points.zTitle, false }; }

void LeaveOutGaps(Points& points, ChartNotes& notes)
{
    std::string const& name = points.source;
    std::size_t const left = DropGaps(points);
    if (points.Count() == 0)
        throw ChartError(ChartError::Cause::Data,
            name + ": there is nothing to draw: "
                + (left > 0 ? "every point has a gap" : "expected rows of points below the names, found none"));
    if (left > 0)
        notes.AddWarning(
            name + ": " + Counted(left, "point has a gap and is", "points have gaps and are") + " left out");
}

HeightTitles GiveHeights(HeightSource&& heights, C3DRowColCurve& curve, ChartNotes& notes)
{
    if (auto* const grid = std::get_if<Grid>(&heights))
        return GiveGrid(std::move(*grid), curve);
    std::string const& path = std::get<HeightFile>(heights).path;
    if (auto* const surface = DynamicDowncast<CSurface>(&curve))
        return ReadInto(*surface, path, notes);
    CSurface surface;
    HeightTitles titles = ReadInto(surface, path, notes);
    GiveTable(std::move(*surface.GetTableDataPtr()),
        { surface.GetTableXMin(), surface.GetTableYMin(), surface.GetTableXStep(), surface.GetTableYStep() }, curve);
    return titles;
}

void PlaceGrid(C3DRowColCurve& curve, GridSide side, AxisRange ends)
{
    bool const isColumns = side == GridSide::Columns;
    double const step = (ends.max - ends.min) / ((isColumns ? curve.GetNumTableCols() : curve.GetNumTableRows()) - 1);
    if (isColumns) {
        curve.SetTableXMin(ends.min);
        curve.SetTableXStep(step);
    } else {
        curve.SetTableYMin(ends.min);
        curve.SetTableYStep(step);
    }
    curve.AlignMeshes();
}

void UpdateHeights(C3DRowColCurve& curve, std::span<double const> heights, std::string const& name)
{
    auto const rows = static_cast<std::size_t>(curve.GetNumTableRows());
    auto const columns = static_cast<std::size_t>(curve.GetNumTableCols());
    if (heights.size() != rows * columns)
        throw ChartError(ChartError::Cause::Data,
            name + ": expected " + std::to_string(rows) + " rows of " + std::to_string(columns)
                + " heights as before, found " + std::to_string(heights.size()));
    curve.SetTableData(TableOf(heights, rows, columns));
}

void CheckHeights(CSurface const& surface, std::string const& name, ChartNotes& notes)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    if (!mesh.HasRange())
        throw ChartError(ChartError::Cause::Data, name + ": there is nothing to draw: all heights are gaps");
    for (int j = 0; j < mesh.GetNumRows(); ++j) {
        for (int i = 0; i < mesh.GetNumCols(); ++i) {
            if (!mesh.IsCellMissing(i, j))
                return;
        }
    }
    notes.AddWarning(name + ": nothing is drawn: every cell of the grid has a gap at a corner");
}

} // namespace ombrel
