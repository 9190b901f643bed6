#pragma once
#include "tools/ombrel/options/Options.h"

namespace ombrel::host {

class Messages;

/// Without names and anything about a picture, lists all colour maps on standard output. Otherwise draws those named,
/// or all, as a chart: for each its name, the continuous strip with ten steps of it below, and how light it is along
/// its way. Throws Failure.
void RunColours(Options const& options, Messages const& messages);

} // namespace ombrel::host
