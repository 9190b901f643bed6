#include "tools/ombrel/grid/HeightFile.h"
#include "ombrel/chart/Document.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Number.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/grid/TableGrid.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <array>
#include <climits>
#include <cmath>
#include <filesystem>

namespace ombrel::host {

namespace {

/// Both ends of a range, which a matrix needs.
std::optional<std::pair<double, double>> EndsOf(std::optional<std::string> const& text, char const* option)
{
    if (!text)
        return std::nullopt;
    auto const ends = ParseRange(*text, false, nullptr);
    if (!ends || !ends->min || !ends->max)
        throw Failure(kUsageFault, std::string(option) + ": expected A:B with numbers A below B, found " + *text);
    return std::pair(*ends->min, *ends->max);
}

PointColumnNames ColumnsOf(Options const& options)
{
    if (options.yColumns.size() > 1)
        throw Failure(kUsageFault, "-y: expected one column, found " + std::to_string(options.yColumns.size()));
    PointColumnNames columns;
    columns.x = options.xColumn;
    columns.y = options.yColumns.empty() ? std::string() : options.yColumns.front();
    columns.z = options.surface.zColumn;
    columns.size = options.surface.sizeColumn;
    columns.colour = options.surface.colourColumn;
    columns.label = options.labelColumn;
    return columns;
}

TableGridOptions GridOptionsOf(Options const& options, HeightShape shape)
{
    TableGridOptions grid;
    grid.matrix = options.surface.matrix;
    grid.columns = ColumnsOf(options);
    grid.takesPoints = shape == HeightShape::GridOrPoints;
    grid.xEnds = EndsOf(options.xRange, "--x-range");
    grid.yEnds = EndsOf(options.yRange, "--y-range");
    return grid;
}

/// These say where a table's heights lie, and other files do so themselves.
void RefuseTableOptions(Options const& options, std::string const& path)
{
    for (OptionId const id :
        { OptionId::Matrix, OptionId::XColumn, OptionId::YColumns, OptionId::ZColumn, OptionId::XRange,
            OptionId::YRange, OptionId::Header, OptionId::Separator, OptionId::Decimal, OptionId::Missing }) {
        if (options.IsGiven(id))
            throw Failure(kUsageFault,
                NameOf(EntryOf(id)) + " is for tables, and " + path + " says itself where its heights lie");
    }
}

HeightTitles TitlesOfDem(CUSGSDEM const& dem)
{
    constexpr std::array<char const*, 4> kGroundUnits { "rad", "ft", "m", "arcsec" };
    auto const units = static_cast<std::size_t>(dem.GetHeader().groundUnits);
    std::string const unit = units < kGroundUnits.size() ? std::string(" / ") + kGroundUnits[units] : "";
    return { "east" + unit, "north" + unit,
        std::string("elevation / ") + (dem.GetHeader().elevationUnits == 1 ? "ft" : "m"), true };
}

/// Elevations count steps of the model's resolution.
void ScaleElevations(CSurface& surface, std::string const& name, Messages const& messages)
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
    messages.Note(name + ": elevations are multiplied by the resolution of " + FormatNumber(step, 'g', 7));
}

/// Has the surface read its file.
HeightTitles ReadInto(CSurface& surface, std::string const& name, Messages const& messages)
{
    if (!WithErrors([&] { return surface.SetPathname(CString(name)); }))
        throw Failure(kDataFault, name + ": cannot be read");
    surface.SetDataSourceType(CPlotComponent::dsTable);
    if (surface.GetFileType() != CSurface::ftDEM)
        return { "x", "y", "z" };
    ScaleElevations(surface, name, messages);
    return TitlesOfDem(surface.GetDEM());
}

void GiveTable(CTableData&& table, TablePlacement const& placement, C3DRowColCurve& curve)
{
    curve.SetTableData(std::move(table));
    curve.SetTablePlacement(placement);
    curve.AlignMeshes();
    curve.SetDataSourceType(CPlotComponent::dsTable);
}

HeightTitles GiveGrid(Grid&& grid, C3DRowColCurve& curve)
{
    CTableData table(static_cast<int>(grid.y.count), static_cast<int>(grid.x.count));
    for (std::size_t j = 0; j < grid.y.count; ++j) {
        for (std::size_t i = 0; i < grid.x.count; ++i) {
            double const height = grid.heights[j * grid.x.count + i];
            table.SetAt(static_cast<int>(j), static_cast<int>(i), std::isnan(height) ? kGap : height);
        }
    }
    grid.heights = {};
    GiveTable(std::move(table), { grid.x.first, grid.y.first, grid.x.Step(), grid.y.Step() }, curve);
    return { grid.x.title, grid.y.title, grid.title, false };
}

void LeaveOutGaps(Points& points, std::string const& name, Messages const& messages)
{
    std::size_t const left = DropGaps(points);
    if (points.Count() == 0)
        throw Failure(kDataFault,
            name + ": there is nothing to draw: "
                + (left > 0 ? "every point has a gap" : "expected rows of points below the names, found none"));
    if (left > 0)
        messages.Warning(
            name + ": " + Counted(left, "point has a gap and is", "points have gaps and are") + " left out");
}

} // namespace

bool IsHeightFile(std::string const& path)
{
    std::string const extension = LowerCase(std::filesystem::path(path).extension().string());
    return path != "-" && (extension == ".tvl" || extension == ".dem");
}

namespace {

bool TakesPointsOnly(HeightShape shape) { return shape == HeightShape::Points || shape == HeightShape::PointsWithGaps; }

} // namespace

HeightFile ReadHeightFile(Options const& options, InputFile& file, HeightShape shape, Messages const& messages)
{
    std::string const name = file.GetName();
    if (LooksLikeDocument(file.Peek(kDocumentMarkLength)))
        throw Failure(kDataFault, name + ": expected heights, found a graph document (ombrel draw draws it)");
    if (IsHeightFile(name)) {
        if (TakesPointsOnly(shape))
            throw Failure(kDataFault, name + ": expected a table of points, found a file of heights on a grid");
        RefuseTableOptions(options, name);
        return { name };
    }
    TableOptions reading { options.table };
    if (!options.labelColumn.empty())
        reading.asTexts.push_back(options.labelColumn);
    HeightFile heights { name };
    if (TakesPointsOnly(shape)) {
        PointColumnNames const columns = ColumnsOf(options);
        Table table = ReadTableFile(file, reading, messages);
        heights.points = PointsOfTable(table, name, columns);
    } else {
        TableGridOptions const grid = GridOptionsOf(options, shape);
        Table table = ReadTableFile(file, reading, messages);
        auto made = HeightsOfTable(table, name, grid, messages);
        if (auto* const found = std::get_if<Grid>(&made))
            heights.grid = std::move(*found);
        else
            heights.points = std::get<Points>(std::move(made));
    }
    if (heights.points && shape != HeightShape::PointsWithGaps)
        LeaveOutGaps(*heights.points, name, messages);
    return heights;
}

HeightTitles GiveHeights(HeightFile&& file, C3DRowColCurve& curve, Messages const& messages)
{
    if (file.grid)
        return GiveGrid(std::move(*file.grid), curve);
    if (auto* const surface = DynamicDowncast<CSurface>(&curve))
        return ReadInto(*surface, file.name, messages);
    CSurface surface;
    HeightTitles titles = ReadInto(surface, file.name, messages);
    GiveTable(std::move(*surface.GetTableDataPtr()),
        { surface.GetTableXMin(), surface.GetTableYMin(), surface.GetTableXStep(), surface.GetTableYStep() }, curve);
    return titles;
}

void CheckHeights(CSurface const& surface, std::string const& name, Messages const& messages)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    if (!mesh.HasRange())
        throw Failure(kDataFault, name + ": there is nothing to draw: all heights are gaps");
    for (int j = 0; j < mesh.GetNumRows(); ++j) {
        for (int i = 0; i < mesh.GetNumCols(); ++i) {
            if (!mesh.IsCellMissing(i, j))
                return;
        }
    }
    messages.Warning(name + ": nothing is drawn: every cell of the grid has a gap at a corner");
}

} // namespace ombrel::host
