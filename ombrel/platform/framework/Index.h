#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstddef>

namespace ombrel {

/// Throws the CInvalidArgException* (newly allocated) for an index into something of that size.
[[noreturn]] OMBREL_EXPORT void ThrowBadIndex(int index, std::size_t size);

/// The index as a size; throws CInvalidArgException* unless it lies in 0 … size − 1.
constexpr std::size_t CheckedIndex(int index, std::size_t size)
{
    // Negative indices become larger than any size.
    auto const i = static_cast<std::size_t>(index);
    if (i >= size) [[unlikely]]
        ThrowBadIndex(index, size);
    return i;
}

/// Throws CInvalidArgException* unless count elements from index first on lie within the size.
constexpr void CheckRange(int first, int count, std::size_t size)
{
    if (first < 0 || static_cast<std::size_t>(first) > size)
        ThrowBadIndex(first, size);
    if (count < 0 || static_cast<std::size_t>(count) > size - static_cast<std::size_t>(first))
        ThrowBadIndex(count, size - static_cast<std::size_t>(first));
}

} // namespace ombrel
