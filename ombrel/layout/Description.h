#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <vector>

namespace ombrel {
class CAnnotatedGraph;
class CPlotComponent;
struct AxisSettings;

/// What the graph shows, in a sentence for those who cannot see it: the kind of graph, its title, its series by name,
/// and the range of the data along each axis with the axis' title.
///
///     Line chart “Damped oscillation” of measured and model: time / s from 0 to 10, amplitude / mm from -0.8 to 1.
///
/// The graph must have been drawn or laid out, and is left as it is. UTF-8.
OMBREL_EXPORT std::string DescribeGraph(CAnnotatedGraph& graph);

/// What is written along an axis whose labels are words at 1, 2, 3, ..., in their order; some may have been left out or
/// shortened for want of room. Empty for any other axis.
OMBREL_EXPORT std::vector<std::string> WordsAlong(AxisSettings const& axis);

/// What a curve of that class is called before anyone gives it a name.
OMBREL_EXPORT std::string FirstTitle(CPlotComponent const& curve);

/// The title of an axis of dates without what its labels have in common, which stands behind it or in its place; days
/// is one of the dates.
OMBREL_EXPORT std::string TitleWithoutDate(std::string const& title, double days);

} // namespace ombrel
