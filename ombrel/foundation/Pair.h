#pragma once
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// One code and its value, as object and mesh files hold them.
class CPair {
public:
    CPair() = default;
    CPair(int c, CString const& v)
        : code(c)
        , value(v)
    {
    }

    int code = 0;
    CString value;
};

} // namespace ombrel
