#pragma once

#include <string>
#include <vector>

namespace ombrel::host {

/// The whole program: the arguments without its name. Returns the exit status.
int RunProgram(std::vector<std::string> const& arguments);

} // namespace ombrel::host
