#pragma once
#include "ombrel/io/DEMHeader.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

namespace ombrel {

/// Reads a Digital Elevation Model in the ASCII form of the U.S. Geological Survey's standard: a record that describes
/// it, one profile of elevations for each column of the grid, from south to north, and perhaps a record of statistics.
/// Records are 1024 characters long; line breaks (LF, CR LF, CR) may follow them or end them earlier.
///
/// Errors: CVFileException* (newly allocated) with a fixed message, and with file, line, offset and what was expected
/// for those who ask; CArchiveException* from Serialize.
/// Memory: a model has at most as many cells as its file has bytes (or a million): nothing is taken for more.
class OMBREL_EXPORT CUSGSDEM : public CObject {
public:
    /// The elevation of cells that no profile fills.
    static constexpr std::int16_t kFillValue = -32768;
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    /// Reads the model of that path, unless it is loaded already (by the path without regard to case). Returns as Load.
    int SetPathname(CString const& path);
    /// Reads the model anew: 1 when that is done, 0 when the file cannot be opened.
    int Load();
    /// Reads from the stream's position to its end. With headerOnly not 0 the elevations stay as they are, and nothing
    /// is read behind the first record (and what the stream has buffered).
    void ReadAscii(std::FILE* file, int headerOnly);

    /// At most 32767 each.
    int GetNumRows() const { return std::max<int>(m_header.gridRows, 0); }
    int GetNumCols() const { return std::max<int>(m_header.profileColumns, 0); }
    /// Ground units from one cell to the next.
    double GetXDel() const { return static_cast<double>(m_header.xResolution); }
    double GetYDel() const { return static_cast<double>(m_header.yResolution); }
    /// Always 0: the grid counts from its own corner.
    double GetXMin() const { return 0.0; }
    double GetYMin() const { return 0.0; }
    /// Bytes of the elevations of a whole grid.
    int GetDataSize() const { return GetNumRows() * GetNumCols() * 2; }
    CString const& GetPathname() const { return m_pathName; }
    /// rows × columns elevations as the file has them (not multiplied by the z resolution), row-major, row 0 at the
    /// north; empty when none are loaded. kFillValue and −32767 stand for no elevation. Valid until the model is loaded
    /// anew or destroyed.
    std::span<std::int16_t const> GetElevations() const { return m_elevations; }
    DEMHeader const& GetHeader() const { return m_header; }
    /// Elevations of the file last read that were blank, and those that were no whole number of 16 bits: their cells
    /// have the fill value.
    int GetNumBlank() const { return m_blank; }
    int GetNumDamaged() const { return m_damaged; }

    /// Stores only half of the elevations, the first ones: a loaded model has the fill value in place of the others.
    void Serialize(CArchive& ar) override;

private:
    void SerializeElevations(CArchive& ar);

    DEMHeader m_header {};
    std::vector<std::int16_t> m_elevations;
    CString m_pathName;
    int m_loaded = 0;
    int m_blank = 0;
    int m_damaged = 0;
};

} // namespace ombrel
