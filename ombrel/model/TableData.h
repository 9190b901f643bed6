#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Index.h"
#include "ombrel/platform/framework/Object.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ombrel {

/// A rows × columns table of doubles, row-major, with the offset and gain that relate a stored value s to the real
/// value s × gain − offset.
///
/// Errors: a row or column outside throws CInvalidArgException* (newly allocated), Serialize CArchiveException*. A
/// table that does not fit into memory throws std::bad_alloc.
class OMBREL_EXPORT CTableData : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    /// Empty; offset 0, gain 1.
    CTableData() = default;
    CTableData(int rows, int cols) { Initialise(rows, cols, 1); }
    /// Copies the values as operator= does; offset 0, gain 1.
    CTableData(CTableData const& other);
    CTableData(CTableData&& other) noexcept { Take(other); }
    /// Copies the values; the table keeps its own offset and gain.
    CTableData& operator=(CTableData const& other);
    CTableData& operator=(CTableData&& other) noexcept;

    /// Makes the table rows × cols, all 0 when zero is non-zero, else with undefined values; empty when either is
    /// below 1. Offset and gain stay.
    void Initialise(int rows, int cols, int zero);
    /// Releases the values. Offset and gain stay.
    void Clear();

    int GetNumRows() const { return m_rows; }
    int GetNumCols() const { return m_cols; }
    double GetOffset() const { return m_offset; }
    double GetGain() const { return m_gain; }
    bool HasData() const { return m_rows >= 1 && m_cols >= 1 && m_values; }
    /// Bytes of the values.
    std::size_t GetDataSize() const { return Count() * sizeof(double); }

    double GetAt(int row, int col) const { return GetRow(row)[CheckedIndex(col, static_cast<std::size_t>(m_cols))]; }
    void SetAt(int row, int col, double value)
    {
        std::size_t const at = Offset(row) + CheckedIndex(col, static_cast<std::size_t>(m_cols));
        m_values[at] = value;
        ++m_revision;
    }
    /// The first of the row's GetNumCols() values; null for an empty table. Asking for it from a table that may be
    /// changed counts as a change (GetRevision); a host that writes through a pointer kept from earlier calls
    /// UpdatePlots before the next draw, as for any change.
    double* GetRow(int row)
    {
        double* const first = m_values.get() + Offset(row);
        ++m_revision;
        return first;
    }
    double const* GetRow(int row) const { return m_values.get() + Offset(row); }
    double* operator[](int row) { return GetRow(row); }
    double const* operator[](int row) const { return GetRow(row); }

    /// Smallest and largest stored value; an empty table leaves both unchanged.
    void GetRange(double& min, double& max) const;
    /// Re-expresses the values for a new offset and gain (not 0): real values stay.
    void Offset(double offset, double gain);

    void Serialize(CArchive& ar) override;

    /// Goes up with every change of the values, so that what was computed from them can be kept.
    std::uint64_t GetRevision() const { return m_revision; }

private:
    std::size_t Offset(int row) const
    {
        if (m_rows == 0)
            return 0;
        return CheckedIndex(row, static_cast<std::size_t>(m_rows)) * static_cast<std::size_t>(m_cols);
    }
    std::size_t Count() const { return static_cast<std::size_t>(m_rows) * static_cast<std::size_t>(m_cols); }
    void Take(CTableData& other) noexcept;

    int m_rows = 0;
    int m_cols = 0;
    std::unique_ptr<double[]> m_values;
    double m_offset = 0.0;
    double m_gain = 1.0;
    std::uint64_t m_revision = 1;
};

} // namespace ombrel
