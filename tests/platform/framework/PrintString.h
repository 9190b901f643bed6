#pragma once
#include "ombrel/platform/framework/String.h"

#include <ostream>

namespace ombrel {

/// Shows the text in a failed expectation.
inline void PrintTo(CString const& text, std::ostream* out) { *out << '"' << text.ToUtf8() << '"'; }

} // namespace ombrel
