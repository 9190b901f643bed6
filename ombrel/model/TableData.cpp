#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const CTableData::kClass = PersistentClass<CTableData, CObject>("CTableData");

CTableData::CTableData(CTableData const& other)
    : CObject(other)
{
    *this = other;
}

CTableData& CTableData::operator=(CTableData const& other)
{
    if (this == &other)
        return *this;
    Initialise(other.m_rows, other.m_cols, 0);
    std::copy_n(other.m_values.get(), other.Count(), m_values.get());
    return *this;
}

CTableData& CTableData::operator=(CTableData&& other) noexcept
{
    if (this != &other)
        Take(other);
    return *this;
}

void CTableData::Take(CTableData& other) noexcept
{
    m_rows = std::exchange(other.m_rows, 0);
    m_cols = std::exchange(other.m_cols, 0);
    m_values = std::move(other.m_values);
    ++m_revision;
    ++other.m_revision;
}

void CTableData::Initialise(int rows, int cols, int zero)
{
    Clear();
    if (rows < 1 || cols < 1)
        return;
    std::size_t const count = static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
    if (count > std::numeric_limits<std::size_t>::max() / sizeof(double) / 2)
        throw std::bad_alloc();
    m_values = zero ? std::make_unique<double[]>(count) : std::make_unique_for_overwrite<double[]>(count);
    m_rows = rows;
    m_cols = cols;
}

void CTableData::Clear()
{
    m_values.reset();
    m_rows = 0;
    m_cols = 0;
    ++m_revision;
}

void CTableData::GetRange(double& min, double& max) const
{
    if (!HasData())
        return;
    double const* const values = m_values.get();
    min = max = values[0];
    for (std::size_t i = 1, n = Count(); i < n; ++i) {
        if (values[i] >= min)
            max = values[i] > max ? values[i] : max;
        else
            min = values[i];
    }
}

void CTableData::Offset(double offset, double gain)
{
    double* const values = m_values.get();
    for (std::size_t i = 0, n = Count(); i < n; ++i)
        values[i] = (values[i] * m_gain - m_offset + offset) / gain;
    m_offset = offset;
    m_gain = gain;
    ++m_revision;
}

void CTableData::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(2);
    int rows = m_rows;
    int cols = m_cols;
    f.Int(rows, cols);
    if (ar.IsLoading()) {
        if (rows >= 1 && cols >= 1) {
            ar.RequireRemaining(static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(cols), sizeof(double),
                "the values of a table");
        }
        Initialise(rows, cols, 0);
        ar.Read(m_values.get(), GetDataSize());
    } else {
        ar.Write(m_values.get(), GetDataSize());
    }
    if (version >= 2)
        f.Double(m_offset, m_gain);
}

} // namespace ombrel
