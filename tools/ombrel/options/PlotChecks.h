#pragma once

namespace ombrel::host {

struct Options;

/// Refuses options that would do nothing or make no sense with the kind of plot. Throws Failure with kUsageFault.
void CheckPlotOptions(Options const& options);

} // namespace ombrel::host
