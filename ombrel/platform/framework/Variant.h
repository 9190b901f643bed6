#pragma once
#include "ombrel/platform/framework/Types.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace ombrel {

/// An array of doubles of one or two dimensions as OLE automation hands it over. The leftmost dimension varies
/// fastest: element (i, j) of bounds[0] × bounds[1] lies at i + j · bounds[0].
struct SAFEARRAY {
    std::vector<std::size_t> bounds;
    std::vector<double> values;
};

/// The OLE value kinds that the library meets.
enum VARTYPE : WORD { VT_EMPTY = 0, VT_I4 = 3, VT_R8 = 5, VT_ARRAY = 0x2000 };

/// A value passed through OLE automation.
struct VARIANT {
    /// VT_EMPTY, VT_I4, VT_R8, or VT_ARRAY | VT_R8.
    WORD vt = VT_EMPTY;
    LONG lVal = 0;
    double dblVal = 0.0;
    std::shared_ptr<SAFEARRAY> parray;
};

} // namespace ombrel
