#pragma once
#include "ombrel/scene/Heights.h"

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// What a command needs of a file: a grid; a grid where the file holds one, else points; points, whatever grid they
/// form; or points with their gaps, where a line breaks.
enum class HeightShape { Grid, GridOrPoints, Points, PointsWithGaps };

/// Reads the table, or leaves the file to the surface. Throws Failure and ChartError.
HeightSource ReadHeightFile(Options const& options, InputFile& file, HeightShape shape, Messages const& messages);

} // namespace ombrel::host
