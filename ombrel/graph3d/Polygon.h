#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

#include <span>
#include <vector>

namespace ombrel {

/// A flat polygon with colours, transparencies, normals and texture coordinates at its vertices: what curves hand to a
/// 3D graph, which draws it after everything opaque.
///
/// Each array has an entry a vertex or is empty. Copies have the shape and what textures need; colours and
/// transparencies are the original's own, and so is the index array.
class OMBREL_EXPORT CPolygon : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CPolygon() = default;
    ~CPolygon() override = default;
    CPolygon(CPolygon const& other);
    CPolygon& operator=(CPolygon const& other);
    CPolygon(CPolygon&&) = default;
    CPolygon& operator=(CPolygon&&) = default;

    /// Adds a copy of the vertex, unless VertexExists. A colour is added when addColour is not 0, a transparency when
    /// it is above −1 (which means none).
    void AddVertex(CVertex const& v, int addColour, COLORREF colour, double transparency);
    /// 1 when a vertex before the last one equals v exactly, else 0.
    int VertexExists(CVertex const& v) const;
    void AddNormal(CNormal const& n) { m_normals.push_back(n); }
    void AddTextureCoord(CRealPoint const& p) { m_textureCoords.push_back(p); }
    void Add1DTextureCoord(double t) { m_1DTextureCoords.Add(t); }
    /// Adds to the index array, if one is set.
    void AddIndex(int index);
    /// Not owned; null for none.
    void SetIndexArray(CDWordArray* indices) { m_indices = indices; }
    CDWordArray* GetIndexArray() const { return m_indices; }

    int GetSize() const { return static_cast<int>(m_vertices.size()); }
    /// The vertex, owned by the polygon until a vertex is added or removed. Throws CInvalidArgException* (newly
    /// allocated) for an index outside.
    CVertex* operator[](int i) { return &m_vertices[CheckedIndex(i, m_vertices.size())]; }
    CVertex const* operator[](int i) const { return &m_vertices[CheckedIndex(i, m_vertices.size())]; }
    std::span<CVertex const> GetVertices() const { return m_vertices; }
    std::span<CNormal const> GetNormals() const { return m_normals; }
    std::span<CRealPoint const> GetTextureCoords() const { return m_textureCoords; }
    CDWordArray const& GetColours() const { return m_colours; }
    /// 0 opaque … 1 invisible.
    CDoubleArray const& GetTransparencies() const { return m_transparencies; }
    CDoubleArray const& Get1DTextureCoords() const { return m_1DTextureCoords; }

    /// Names of textures of OpenGL, 0 for none.
    unsigned int GetTexture() const { return m_texture; }
    void SetTexture(unsigned int name) { m_texture = name; }
    int Get1DTexture() const { return m_1DTexture; }
    void Set1DTexture(int name) { m_1DTexture = name; }

    /// Removes vertices, normals, colours, transparencies and 2D texture coordinates; what the index array holds and
    /// the rest stay.
    void Clear();
    void ClearVertices() { m_vertices.clear(); }
    void ClearNormals() { m_normals.clear(); }
    void ClearColours() { m_colours.RemoveAll(); }
    void ClearTransparencies() { m_transparencies.RemoveAll(); }
    void ClearTextureCoords() { m_textureCoords.clear(); }

    /// The vertices, each place once, in their order.
    std::vector<CVertex> GetUniqueVertices() const;
    /// The unit normal of the first three neighbours among the unique vertices that are not on one line; seen from its
    /// tip they turn to the left. (0, 0, 0) when there are none.
    CNormal GetNormal() const;
    /// The centre and the area of what the polygon covers in x and y; the area is negative when it turns to the right.
    /// Returns 0; 1 with fewer than three vertices; 2 when the area is 0, which alone is stored then.
    int Centroid(double* x, double* y, double* area) const;
    /// Replaces the content of the index array by triangles that cover the polygon, three indices of vertices each. It
    /// stays empty when there is nothing to cover, and when edges cross, which would take more vertices.
    /// Throws Error (Resource) with what to install when OpenGL's utility library is missing.
    void Tessellate();

private:
    /// What the tessellator calls with a vertex's index and the polygon.
    static void VertexCB(void* index, void* polygon) noexcept;
    /// Its presence alone makes all triangles separate ones.
    static void EdgeFlagCB(unsigned char isOutline) noexcept;
    static void ErrorCB(unsigned int error, void* polygon) noexcept;

    std::vector<CVertex> m_vertices;
    std::vector<CNormal> m_normals;
    CDWordArray m_colours;
    CDoubleArray m_transparencies;
    std::vector<CRealPoint> m_textureCoords;
    unsigned int m_texture = 0;
    int m_1DTexture = 0;
    CDWordArray* m_indices = nullptr;
    CDoubleArray m_1DTextureCoords;
    /// While Tessellate runs.
    bool m_failed = false;
};

} // namespace ombrel
