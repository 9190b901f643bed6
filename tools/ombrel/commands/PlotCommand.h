#pragma once

#include <memory>
#include <vector>

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// Draws columns of tables into one graph. Throws Failure.
void RunPlot(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages);

} // namespace ombrel::host
