#pragma once

namespace ombrel::host {

/// Given by the build.
inline constexpr char const* kVersion = OMBREL_VERSION;

} // namespace ombrel::host
