#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/meshes/MeshText.h"
#include "ombrel/graph3d/meshes/ValueRange.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <bit>

namespace ombrel {

constinit CRuntimeClass const CMeshNodeSet::kClass = PersistentClass<CMeshNodeSet, CObject>("CMeshNodeSet");

// --- Numbers

std::size_t CMeshNodeSet::SlotOf(DWORD number) const
{
    std::size_t const mask = m_slots.size() - 1;
    // Each bit of the number counts for each bit of its slot, since numbers come in steps of any size.
    std::uint64_t hash = (number + std::uint64_t { 1 }) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32;
    hash *= 0xD6E8FEB86659FD93U;
    std::size_t slot = (hash >> 32) & mask;
    while (m_slots[slot] != 0 && m_numbers[m_slots[slot] - 1].number != number)
        slot = (slot + 1) & mask;
    return slot;
}

int CMeshNodeSet::BuildSlots()
{
    m_slots.assign(std::bit_ceil(2 * m_numbers.size() + 2), 0);
    int firstDouble = -1;
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        std::uint32_t& slot = m_slots[SlotOf(m_numbers[i].number)];
        if (slot == 0)
            slot = static_cast<std::uint32_t>(i + 1);
        else if (firstDouble < 0)
            firstDouble = static_cast<int>(i);
    }
    return firstDouble;
}

bool CMeshNodeSet::SetNodeNumbers(std::span<DWORD const> numbers)
{
    std::vector<NumberedNode> before = std::move(m_numbers);
    m_numbers.clear();
    m_numbers.reserve(numbers.size());
    for (DWORD const number : numbers)
        m_numbers.push_back({ number, static_cast<DWORD>(m_numbers.size()) });
    bool const isUnique = BuildSlots() < 0;
    if (isUnique) {
        m_useIndices = 1;
    } else {
        m_numbers = std::move(before);
        BuildSlots();
    }
    return isUnique;
}

int CMeshNodeSet::GetNodeIndex(DWORD number) const
{
    DWORD column = number - (m_zeroBased ? 0U : 1U);
    if (m_useIndices) {
        std::uint32_t const entry = m_slots.empty() ? 0 : m_slots[SlotOf(number)];
        if (entry == 0)
            return -1;
        column = m_numbers[entry - 1].column;
    }
    return column < static_cast<DWORD>(GetNumNodes()) ? static_cast<int>(column) : -1;
}

CVertex CMeshNodeSet::GetVertex(DWORD number) const
{
    int const column = GetNodeIndex(number);
    if (column < 0)
        return {};
    return { m_points.GetAt(0, column), m_points.GetAt(1, column), m_points.GetAt(2, column) };
}

CVertex CMeshNodeSet::GetWorldVertex(DWORD number) const
{
    CVertex vertex = GetVertex(number);
    if (m_meshCurve)
        m_meshCurve->Transform(&vertex[0], &vertex[1], &vertex[2]);
    return vertex;
}

// --- Values

void CMeshNodeSet::UpdateDataRanges() { m_ranges = FindRowRanges(m_nodeData); }

void CMeshNodeSet::GetDataRange(int variable, double& min, double& max) const
{
    if (variable < 0 || static_cast<std::size_t>(variable) >= m_ranges.size())
        return;
    auto const& [low, high] = m_ranges[static_cast<std::size_t>(variable)];
    if (low > high)
        return;
    min = low;
    max = high;
}

// --- Files

void CMeshNodeSet::Read(C3DObjectFile& file)
{
    CString name;
    CString value;
    while (file.ReadProperty(name, value))
        SetProperty(file, name, value);
}

void CMeshNodeSet::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    if (name.CompareNoCase("title") == 0)
        m_title = value;
    else if (name.CompareNoCase("use_indices") == 0)
        m_useIndices = 1;
    else if (name.CompareNoCase("0_based_indices") == 0)
        m_zeroBased = 1;
    else if (name.CompareNoCase("nodes") == 0)
        ReadVertices(file);
}

void CMeshNodeSet::ReadVertices(C3DObjectFile& file)
{
    auto const variables = static_cast<std::size_t>(std::max(m_variableCount, 0));
    int const count = ReadMeshCount(file, "nodes", variables);
    m_points.Initialise(3, count, 1);
    m_nodeData.Initialise(m_variableCount, count, 1);
    m_numbers.clear();
    if (m_useIndices)
        m_numbers.reserve(static_cast<std::size_t>(count));
    std::array<double*, 3> places {};
    for (int k = 0; k < 3; ++k)
        places[static_cast<std::size_t>(k)] = m_points.GetRow(k);
    std::vector<double*> values;
    values.reserve(static_cast<std::size_t>(m_nodeData.GetNumRows()));
    for (int v = 0; v < m_nodeData.GetNumRows(); ++v)
        values.push_back(m_nodeData.GetRow(v));
    std::vector<std::uint64_t> lines;
    for (int i = 0; i < count; ++i) {
        MeshFields fields(ReadMeshLine(file, "nodes", i, count));
        if (m_useIndices) {
            m_numbers.push_back({ fields.TakeNumber(file), static_cast<DWORD>(i) });
            lines.push_back(file.GetLine());
        }
        for (double* const place : places)
            fields.TakeCoordinate(file, place[i]);
        for (double* const value : values)
            fields.TakeValue(value[i]);
    }
    if (int const twice = BuildSlots(); twice >= 0) {
        CString found;
        found.Format("%u", m_numbers[static_cast<std::size_t>(twice)].number);
        file.Fail("A node number occurs twice", "each number once", found, lines[static_cast<std::size_t>(twice)]);
    }
}

// --- Archive

void CMeshNodeSet::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.String(m_title).Int(m_variableCount).Nested(m_points, m_nodeData).Int(m_useIndices);
    if (ar.IsStoring())
        ar.WriteCount(m_numbers.size());
    else
        m_numbers.assign(ar.ReadCount(2 * sizeof(DWORD)), {});
    for (NumberedNode& node : m_numbers)
        f.Dword(node.number, node.column);
    if (version >= 2)
        f.Int(m_zeroBased);
    if (!ar.IsStoring())
        BuildSlots();
}

} // namespace ombrel
