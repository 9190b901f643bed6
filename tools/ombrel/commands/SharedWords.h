#pragma once

#include <string>
#include <vector>

namespace ombrel::host {

struct PlotSource;

/// The words along the x axis; empty when the sources have other x values. Throws Failure when some sources have words
/// and others have not, or other words.
std::vector<std::string> WordsAlongX(std::vector<PlotSource> const& sources);

} // namespace ombrel::host
