#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

#include <span>
#include <vector>

namespace ombrel {

/// One colour of a palette; the flags mean nothing here.
struct PALETTEENTRY {
    BYTE peRed = 0;
    BYTE peGreen = 0;
    BYTE peBlue = 0;
    BYTE peFlags = 0;
};

/// A list of colours. Devices here show true colours, so that a palette is a carrier of colours and nothing more.
class OMBREL_EXPORT CPalette {
public:
    CPalette() = default;
    explicit CPalette(std::span<PALETTEENTRY const> entries) { CreatePalette(entries); }
    /// Replaces the entries.
    void CreatePalette(std::span<PALETTEENTRY const> entries) { m_entries.assign(entries.begin(), entries.end()); }
    int GetEntryCount() const { return static_cast<int>(m_entries.size()); }
    /// Copies at most count entries from index start on; returns how many there were.
    UINT GetPaletteEntries(UINT start, UINT count, PALETTEENTRY* entries) const;

private:
    std::vector<PALETTEENTRY> m_entries;
};

} // namespace ombrel
