#pragma once
#include "ombrel/platform/framework/Exception.h"

namespace ombrel::test {

/// Whether the call is refused for an argument that it does not take.
template <typename Call> bool Refused(Call&& call)
{
    try {
        WithErrors([&] { (void)call(); });
        return false;
    } catch (Error const& error) {
        return error.GetKind() == Error::Kind::Argument;
    }
}

} // namespace ombrel::test
