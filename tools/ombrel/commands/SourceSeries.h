#pragma once
#include "tools/ombrel/commands/PlotSource.h"

#include <string>
#include <vector>

namespace ombrel {
class Chart;
class SeriesError;
} // namespace ombrel

namespace ombrel::host {

/// One title a column that is drawn, in the order of the sources: the column's name, the group's word or both, with the
/// file's name where these are not enough.
std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources);

/// Adds a series for every y column of the sources, in their order, and takes the values out of the tables. Throws
/// Failure and ChartError.
void AddSeries(Chart& chart, std::vector<PlotSource>& sources, Options const& options);

/// Says in which file and line what a chart found wrong stands. sources may have given their values away.
std::string PlacedText(SeriesError const& error, std::vector<PlotSource> const& sources);

} // namespace ombrel::host
