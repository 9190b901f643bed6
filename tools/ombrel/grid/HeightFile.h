#pragma once
#include "tools/ombrel/grid/Grid.h"
#include "tools/ombrel/grid/TablePoints.h"

#include <optional>
#include <string>

namespace ombrel {
class C3DRowColCurve;
class CSurface;
} // namespace ombrel

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// Heights as a file holds them: a grid or points from a table, or a file that surfaces read by themselves (.tvl,
/// .dem).
struct HeightFile {
    /// How messages call the file; its path when it is read by surfaces.
    std::string name;
    std::optional<Grid> grid {};
    std::optional<Points> points {};
};

/// What a command needs of a file: a grid; a grid where the file holds one, else points; points, whatever grid they
/// form; or points with their gaps, where a line breaks.
enum class HeightShape { Grid, GridOrPoints, Points, PointsWithGaps };

/// What the axes and the colours are called.
struct HeightTitles {
    std::string x;
    std::string y;
    std::string z;
    /// x and y are lengths of one unit: their axes should have the same scale.
    bool sameUnits = false;
};

/// Whether surfaces read the file by themselves, by the ending of its name.
bool IsHeightFile(std::string const& path);

/// Reads the table, or leaves the file to the surface. Of points those with gaps are left out,
/// unless these are wanted. Throws Failure.
HeightFile ReadHeightFile(Options const& options, InputFile& file, HeightShape shape, Messages const& messages);

/// Hands the heights over to the curve, as data of a table; a surface reads a file that is no table itself. Throws
/// Failure and Error.
HeightTitles GiveHeights(HeightFile&& file, C3DRowColCurve& curve, Messages const& messages);

/// Looks at the heights of an evaluated surface: throws Failure when there is none, and warns when no cell of the grid
/// has all of its four. name is how messages call the file.
void CheckHeights(CSurface const& surface, std::string const& name, Messages const& messages);

} // namespace ombrel::host
