#include "ombrel/platform/gdi/Palette.h"

#include <algorithm>

namespace ombrel {

UINT CPalette::GetPaletteEntries(UINT start, UINT count, PALETTEENTRY* entries) const
{
    std::size_t const first = std::min<std::size_t>(start, m_entries.size());
    std::size_t const copied = std::min<std::size_t>(count, m_entries.size() - first);
    std::copy_n(m_entries.data() + first, copied, entries);
    return static_cast<UINT>(copied);
}

} // namespace ombrel
