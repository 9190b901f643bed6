#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

class C3DMeshCurve;
class C3DObjectFile;

/// The nodes of a mesh: their places, the values that were computed at them, and the numbers that elements know them
/// by.
///
/// A node is a column of both tables. Its number is that column plus one; with zero-based numbers the column itself;
/// with indices any number that the file gives it.
/// Errors: Read throws CVFileException* with the line, Serialize CArchiveException* (newly allocated).
class OMBREL_EXPORT CMeshNodeSet : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CMeshNodeSet() = default;
    explicit CMeshNodeSet(C3DMeshCurve* curve)
        : m_meshCurve(curve)
    {
    }
    void Serialize(CArchive& ar) override;

    CString GetTitle() const { return m_title; }
    void SetTitle(CString const& title) { m_title = title; }
    /// Not owned; its transforms move the nodes.
    void SetMeshCurve(C3DMeshCurve* curve) { m_meshCurve = curve; }
    C3DMeshCurve* GetMeshCurve() const { return m_meshCurve; }
    /// How many values a node has.
    int GetVariableCount() const { return m_variableCount; }
    void SetVariableCount(int count) { m_variableCount = count; }
    /// Rows x, y, z; a column a node.
    CTableData* GetPoints() { return &m_points; }
    CTableData const* GetPoints() const { return &m_points; }
    /// A row a variable, a column a node. A missing value is kGap, an infinity or what is not a number.
    CTableData* GetNodeData() { return &m_nodeData; }
    CTableData const* GetNodeData() const { return &m_nodeData; }
    int GetNumNodes() const { return m_points.GetNumRows() == 3 ? m_points.GetNumCols() : 0; }

    int GetZeroBased() const { return m_zeroBased; }
    void SetZeroBased(int on) { m_zeroBased = on; }
    int GetUseIndices() const { return m_useIndices; }
    /// Gives the columns, from the first on, numbers of their own. False, and nothing is changed, when one occurs
    /// twice.
    bool SetNodeNumbers(std::span<DWORD const> numbers);
    /// The column of a node number; −1 when there is no such node.
    int GetNodeIndex(DWORD number) const;
    /// The node's place; (0, 0, 0) for one that is not there.
    CVertex GetVertex(DWORD number) const;
    /// The same after the transforms of the curve.
    CVertex GetWorldVertex(DWORD number) const;

    /// Finds the smallest and the largest value of each variable.
    void UpdateDataRanges();
    /// As found; unchanged for a variable that is not there or has no values.
    void GetDataRange(int variable, double& min, double& max) const;

    /// Reads a section of a mesh file up to "endobject".
    void Read(C3DObjectFile& file);
    /// Takes one property of it; unknown ones mean nothing.
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value);
    /// Reads a count and as many lines of nodes.
    void ReadVertices(C3DObjectFile& file);

private:
    struct NumberedNode {
        DWORD number = 0;
        /// As the archive holds it; may be no column at all.
        DWORD column = 0;
    };
    /// Makes m_slots; returns the first entry whose number an earlier one has, −1 when there is none.
    int BuildSlots();
    std::size_t SlotOf(DWORD number) const;

    CString m_title;
    CTableData m_points;
    CTableData m_nodeData;
    C3DMeshCurve* m_meshCurve = nullptr;
    int m_variableCount = 0;
    int m_useIndices = 0;
    int m_zeroBased = 0;
    std::vector<NumberedNode> m_numbers;
    /// An index into m_numbers plus one, or 0: found by hashing the number, or in the next slots. A power of two of
    /// them.
    std::vector<std::uint32_t> m_slots;
    /// Of each variable, min before max; a variable without values has min > max.
    std::vector<std::array<double, 2>> m_ranges;
};

} // namespace ombrel
