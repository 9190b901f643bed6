#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <cstddef>

namespace ombrel {

class CTableData;
struct DataFileFault;

/// What a z-values file fills: a surface, which the reader knows by these questions only.
class OMBREL_EXPORT ZValsOwner {
public:
    /// The data coordinates of the table's first row and column, and its steps, which are not negative.
    virtual void PlaceZVals(double xMin, double yMin, double xStep, double yStep) = 0;
    /// The number of a coordinate system; 0 is Cartesian.
    virtual void SetZValsCurveType(int curveType) = 0;
    /// Whether x is a radius and y an angle in degrees.
    virtual void SetZValsRadialGrid(int on) = 0;
    /// Where the values go: table rows are y indices from the lowest y on, columns x indices from the lowest x on.
    virtual CTableData& GetZValsTable() = 0;
    /// All values are in the table.
    virtual void SetZValsRead() = 0;

protected:
    ZValsOwner() = default;
    ~ZValsOwner() = default;
    ZValsOwner(ZValsOwner const&) = default;
    ZValsOwner& operator=(ZValsOwner const&) = default;
};

/// The size and place of a z-values grid.
struct ZValsLayout {
    /// Lines of data in the file, values in each.
    int rows = 0;
    int cols = 0;
    /// 0 rectangular, 1 radial, else the number of a coordinate system.
    int gridType = 0;
    /// 0: each line runs along y at one x; 1: along x at one y.
    int valueOrder = 0;
    /// The lowest corner, whichever way the file runs.
    double originX = 0.0;
    double originY = 0.0;
    /// Not negative.
    double spacingX = 0.0;
    double spacingY = 0.0;
    /// Added to every value.
    double zOffset = 0.0;
};

/// Reads a z-values file: a text file with one line that tells size and place of a regular grid, and one line of
/// numbers for each row of the grid.
///
/// Lines before the header that begin with "//" are skipped. The header has nine items: grid type, value order, number
/// of data lines, values in a line, x and y of the first point, dx, dy (negative when x or y falls), and a z offset.
/// With a comma in it, items are separated by commas in the whole file, else by white space. Errors: CVFileException*
/// (newly allocated) with a fixed message for a format error, and with file, line and what was expected for those who
/// ask; CFileException* for a file that cannot be read; CArchiveException* from Serialize. Memory: no more is taken
/// than the file's bytes can fill, whatever the header claims.
class OMBREL_EXPORT CZValsFile : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    /// What Read fills; not owned, and must outlive the reading.
    void SetOwner(ZValsOwner* owner) { m_owner = owner; }
    /// Reads the whole file into the owner, without which CInvalidArgException* is thrown. After an error the owner
    /// keeps its grid's place and the lines read before it. Items that are no number become gaps.
    void Read(CString const& path);
    /// Takes the layout alone: 1 when the file is separated by commas, 0 for white space. The file stands at its first
    /// line of data then.
    int ReadHeader(CStdioFile& file);
    int ReadHeader(CString const& path);

    ZValsLayout const& GetLayout() const { return m_layout; }
    /// The file last read.
    CString const& GetPathname() const { return m_pathName; }
    /// 1 after a complete read.
    int GetReadOK() const { return m_readOK; }
    /// Items of the file last read that were no number.
    std::size_t GetNumGaps() const { return m_gaps; }

    /// The layout, without the signs of dx and dy; not the values.
    void Serialize(CArchive& ar) override;

protected:
    /// Derives origin and spacing from the header's items.
    void Update();

private:
    /// What ReadHeader returns; throws with the place when the line is no header.
    int ParseHeader(CString const& line, DataFileFault const& place);

    ZValsLayout m_layout;
    CString m_pathName;
    int m_readOK = 0;
    std::size_t m_gaps = 0;
    ZValsOwner* m_owner = nullptr;
    // The header's own items
    double m_fileX = 0.0;
    double m_fileY = 0.0;
    double m_fileDx = 0.0;
    double m_fileDy = 0.0;
};

} // namespace ombrel
