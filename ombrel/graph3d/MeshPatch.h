#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/MeshElementType.h"
#include "ombrel/model/TableData.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ombrel {

class ArchiveFields;
class C3DMeshCurve;
class C3DObjectFile;
class CMeshNodeSet;
struct MeshElements;
struct NodePlaces;

/// The box that bricks and tetrahedra must lie in with all their corners to be drawn: x min, x max, y min, y max, z
/// min, z max in world coordinates.
using MeshClipRanges = std::array<double, 6>;

/// Elements of one type between the nodes of one node set, with the values that were computed for them.
///
/// Elements name nodes by their numbers. One with a number that its node set does not know, or with a node whose place
/// is not finite, is not drawn; files cannot have any. Faces between two bricks or two tetrahedra are not drawn either.
/// Errors: Read throws CVFileException* with the line, Serialize CArchiveException* (newly allocated).
class OMBREL_EXPORT CMeshPatch : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    explicit CMeshPatch(C3DMeshCurve* curve = nullptr);
    ~CMeshPatch() override;
    void Serialize(CArchive& ar) override;

    MeshElementType GetElementType() const { return m_elementType; }
    void SetElementType(MeshElementType type) { m_elementType = type; }
    int GetElementCount() const { return m_elementCount; }
    /// Whether light follows the curved surface that triangles or quads make; else each is flat.
    int GetAverageNormals() const { return m_averageNormals; }
    void SetAverageNormals(int on) { m_averageNormals = on; }
    int GetVariableCount() const { return m_variableCount; }
    void SetVariableCount(int count) { m_variableCount = count; }
    /// A row a variable, a column an element. Missing values as in node data.
    CTableData* GetElementData() { return &m_elementData; }
    CTableData const* GetElementData() const { return &m_elementData; }
    CString GetNodesetTitle() const { return m_nodeSetName; }
    /// Not owned; null when there is none of that title.
    CMeshNodeSet* GetNodeSet() const { return m_nodeSet; }
    /// Takes over the title, too, by which a document finds the node set again.
    void SetNodeSet(CMeshNodeSet* nodes);
    /// Binds the patch to the curve's node set of its title.
    void SetMeshCurve(C3DMeshCurve* curve);

    /// Node numbers element by element: 3, 4, 8 or 4 each; empty for polygons.
    CDWordArray const* GetIndices() const { return &m_indices; }
    /// Replaces the elements by as many as the numbers are enough for.
    void SetIndices(CDWordArray indices);
    int GetNumPolygons() const { return static_cast<int>(m_polygonStarts.size()) - 1; }
    /// Throws CInvalidArgException* (newly allocated) for an index outside.
    std::span<DWORD const> GetPolygon(int i) const;
    /// Adds an element, of a patch of polygons.
    void AddPolygon(std::span<DWORD const> nodes);
    void RemovePolygons();
    /// One an element, or none at all.
    CDWordArray const* GetColours() const { return &m_colours; }
    void SetColours(CDWordArray const& colours) { m_colours = colours; }

    /// Finds the smallest and the largest value of each variable.
    void UpdateDataRanges();
    /// As found; unchanged for a variable that is not there or has no values.
    void GetDataRange(int variable, double& min, double& max) const;
    /// The bounds of the elements in world coordinates, and the range of z without the curve's transforms; unchanged
    /// when there is nothing to draw.
    void GetRanges(CVertex& min, CVertex& max, double& lo, double& hi) const;

    int GetClip() const { return m_clip; }
    void SetClip(int on) { m_clip = on; }
    void GetClipRanges(double& xMin, double& xMax, double& yMin, double& yMax, double& zMin, double& zMax) const;
    void SetClipRanges(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax);
    MeshClipRanges const& GetClipBox() const { return m_clipRanges; }
    /// Finds the faces of bricks and tetrahedra that are drawn: those of elements within the clip box that no other of
    /// them shares.
    void UpdateFaceFlags();
    /// A byte a face, six a brick and four a tetrahedron, not 0 when it is drawn; empty before UpdateFaceFlags.
    CByteArray const* GetFaceFlags() const { return &m_faceFlags; }

    /// Reads a section of a mesh file up to "endobject".
    void Read(C3DObjectFile& file);
    /// Takes one property of it; unknown ones mean nothing.
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value);
    /// Read a count and as many lines, of elements of the present type, or of colours.
    void ReadElements(C3DObjectFile& file);
    void ReadColours(C3DObjectFile& file);
    /// Throws when there is not a colour for each element, or an element has a node that the node set does not know:
    /// what a section in another order than the usual one may bring.
    void CheckElements(C3DObjectFile const& file) const;

private:
    friend class C3DMeshCurve;
    friend class C3DObjectGeneral;
    friend class MeshGeometry;
    /// The elements by columns, made when they are not there.
    MeshElements const& Elements() const;
    /// With the transforms of the curve.
    NodePlaces WorldPlaces() const;
    /// GetRanges of nodes that stand there.
    void FindRanges(NodePlaces const& world, CVertex& min, CVertex& max, double& lo, double& hi) const;
    /// A byte an element, not 0 for those that lie outside of the clip box; empty without any.
    std::vector<BYTE> FindClipped() const;
    void Changed();
    void ReadPolygons(C3DObjectFile& file, int count);
    [[noreturn]] static void RefuseNode(C3DObjectFile const& file, DWORD number);
    void SerializePolygons(ArchiveFields& fields);
    void SerializeElementLists(ArchiveFields& fields) const;
    void SerializeColours(ArchiveFields& fields);

    MeshElementType m_elementType = etTriangle;
    int m_elementCount = 0;
    int m_averageNormals = 0;
    int m_variableCount = 0;
    CTableData m_elementData;
    CDWordArray m_indices;
    CByteArray m_faceFlags;
    /// The node numbers of all polygons; where each starts, and the end of the last one.
    std::vector<DWORD> m_polygonNodes;
    std::vector<std::uint32_t> m_polygonStarts { 0 };
    CDWordArray m_colours;
    CString m_nodeSetName;
    MeshClipRanges m_clipRanges { -1e300, 1e300, -1e300, 1e300, -1e300, 1e300 };
    int m_clip = 0;
    CMeshNodeSet* m_nodeSet = nullptr;
    /// The set that the elements were read for; their numbers are its nodes'. Only compared.
    CMeshNodeSet const* m_checkedSet = nullptr;
    C3DMeshCurve* m_meshCurve = nullptr;
    std::vector<std::array<double, 2>> m_ranges;
    mutable std::unique_ptr<MeshElements> m_elements;
};

} // namespace ombrel
