#pragma once

namespace ombrel {

/// Makes the library's classes known to archives; a host calls it once before it loads or stores. Calling it again
/// changes nothing.
void OmbrelInit();

} // namespace ombrel
