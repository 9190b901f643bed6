#include "tools/ombrel/commands/HeightFile.h"
#include "ombrel/chart/Document.h"
#include "ombrel/scene/TableHeights.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"

#include <optional>

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

bool TakesPointsOnly(HeightShape shape) { return shape == HeightShape::Points || shape == HeightShape::PointsWithGaps; }

} // namespace

HeightSource ReadHeightFile(Options const& options, InputFile& file, HeightShape shape, Messages const& messages)
{
    std::string const name = file.GetName();
    if (LooksLikeDocument(file.Peek(kDocumentMarkLength)))
        throw Failure(kDataFault, name + ": expected heights, found a graph document (ombrel draw draws it)");
    if (IsHeightFile(name)) {
        if (TakesPointsOnly(shape))
            throw Failure(kDataFault, name + ": expected a table of points, found a file of heights on a grid");
        RefuseTableOptions(options, name);
        return HeightFile { name };
    }
    TableOptions reading { options.table };
    reading.texts = false;
    if (!options.labelColumn.empty())
        reading.asTexts.push_back(options.labelColumn);
    if (TakesPointsOnly(shape)) {
        PointColumnNames const columns = ColumnsOf(options);
        Table table = ReadTableFile(file, reading, messages);
        return PointsOfTable(table, name, columns);
    }
    TableGridOptions const grid = GridOptionsOf(options, shape);
    Table table = ReadTableFile(file, reading, messages);
    ChartNotes notes;
    NotesTeller const teller([&] { return notes; }, messages);
    return HeightsOfTable(table, name, grid, notes);
}

} // namespace ombrel::host
