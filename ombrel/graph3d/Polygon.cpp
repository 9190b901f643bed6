#include "ombrel/graph3d/Polygon.h"

#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/opengl/GLTessellator.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const CPolygon::kClass = DynamicClass<CObject>("CPolygon");

CPolygon::CPolygon(CPolygon const& other)
    : CObject(other)
    , m_vertices(other.m_vertices)
    , m_normals(other.m_normals)
    , m_textureCoords(other.m_textureCoords)
    , m_texture(other.m_texture)
    , m_1DTexture(other.m_1DTexture)
    , m_1DTextureCoords(other.m_1DTextureCoords)
{
}

CPolygon& CPolygon::operator=(CPolygon const& other)
{
    if (this != &other)
        *this = CPolygon(other);
    return *this;
}

void CPolygon::AddVertex(CVertex const& v, int addColour, COLORREF colour, double transparency)
{
    if (VertexExists(v))
        return;
    m_vertices.push_back(v);
    if (addColour)
        m_colours.Add(colour);
    if (transparency > -1.0)
        m_transparencies.Add(transparency);
}

int CPolygon::VertexExists(CVertex const& v) const
{
    return !m_vertices.empty() && std::find(m_vertices.begin(), m_vertices.end() - 1, v) != m_vertices.end() - 1;
}

void CPolygon::AddIndex(int index)
{
    if (m_indices)
        m_indices->Add(static_cast<DWORD>(index));
}

void CPolygon::Clear()
{
    ClearVertices();
    ClearNormals();
    ClearColours();
    ClearTransparencies();
    ClearTextureCoords();
}

std::vector<CVertex> CPolygon::GetUniqueVertices() const
{
    std::vector<CVertex> unique;
    for (auto const& vertex : m_vertices) {
        if (std::find(unique.begin(), unique.end(), vertex) == unique.end())
            unique.push_back(vertex);
    }
    return unique;
}

CNormal CPolygon::GetNormal() const
{
    auto const vertices = GetUniqueVertices();
    CNormal normal(0.0, 0.0, 0.0);
    for (std::size_t i = 2; i < vertices.size(); ++i) {
        CVUtils::NormalVector(vertices[i - 2], vertices[i - 1], vertices[i], normal);
        if (normal.X() != 0.0 || normal.Y() != 0.0 || normal.Z() != 0.0)
            break;
    }
    return normal;
}

int CPolygon::Centroid(double* x, double* y, double* area) const
{
    if (m_vertices.size() < 3)
        return 1;
    double doubleArea = 0.0;
    double sumX = 0.0;
    double sumY = 0.0;
    CVertex const* previous = &m_vertices.back();
    for (auto const& vertex : m_vertices) {
        double const cross = previous->X() * vertex.Y() - vertex.X() * previous->Y();
        doubleArea += cross;
        sumX += (vertex.X() + previous->X()) * cross;
        sumY += (vertex.Y() + previous->Y()) * cross;
        previous = &vertex;
    }
    *area = doubleArea / 2.0;
    if (doubleArea == 0.0)
        return 2;
    *x = sumX / (3.0 * doubleArea);
    *y = sumY / (3.0 * doubleArea);
    return 0;
}

void CPolygon::Tessellate()
{
    if (!m_indices)
        return;
    m_indices->RemoveAll();
    auto const isFinite
        = [](CVertex const& v) { return std::isfinite(v.X()) && std::isfinite(v.Y()) && std::isfinite(v.Z()); };
    if (m_vertices.size() < 3 || !std::all_of(m_vertices.begin(), m_vertices.end(), isFinite))
        return;

    GLTessellator const shared;
    GLUtesselator* const tessellator = shared.Get();
    glu::TessCallback(tessellator, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(&VertexCB));
    glu::TessCallback(tessellator, GLU_TESS_EDGE_FLAG, reinterpret_cast<_GLUfuncptr>(&EdgeFlagCB));
    glu::TessCallback(tessellator, GLU_TESS_ERROR_DATA, reinterpret_cast<_GLUfuncptr>(&ErrorCB));
    m_failed = false;
    glu::TessBeginPolygon(tessellator, this);
    glu::TessBeginContour(tessellator);
    for (std::size_t i = 0; i < m_vertices.size(); ++i)
        glu::TessVertex(tessellator, m_vertices[i].GetData(), std::bit_cast<void*>(i));
    glu::TessEndContour(tessellator);
    glu::TessEndPolygon(tessellator);
    if (m_failed)
        m_indices->RemoveAll();
}

void CPolygon::VertexCB(void* index, void* polygon) noexcept
{
    auto& self = *static_cast<CPolygon*>(polygon);
    try {
        self.AddIndex(static_cast<int>(std::bit_cast<std::size_t>(index)));
    } catch (std::bad_alloc const&) {
        // The tessellator is not made for exceptions.
        self.m_failed = true;
    }
}

void CPolygon::EdgeFlagCB(unsigned char) noexcept { }

void CPolygon::ErrorCB(unsigned int, void* polygon) noexcept { static_cast<CPolygon*>(polygon)->m_failed = true; }

} // namespace ombrel
