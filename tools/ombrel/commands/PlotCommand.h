#pragma once

#include <memory>
#include <vector>

namespace ombrel {
class Picture;
class C2DGraph;
} // namespace ombrel

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// The graph of the options' columns, laid out for the picture. The options must have been checked. Throws Failure.
std::unique_ptr<C2DGraph> MakePlot(
    Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Picture& picture, Messages const& messages);

/// Draws columns of tables into one graph. Throws Failure.
void RunPlot(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages);

} // namespace ombrel::host
