#include "ombrel/graph3d/render/TransparentScene.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/graph3d/view/Camera.h"
#include "ombrel/platform/opengl/GLState.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cstddef>

namespace ombrel {

namespace {

/// A triangle's place in the order.
struct Place {
    std::uint32_t key;
    std::uint32_t face;
};

/// Ascending keys are descending depths, in steps finer than any depth buffer's. The seen ones are 0 … 1.
std::uint32_t KeyOf(double depth)
{
    constexpr double kSteps = 0x7FFFFFFF;
    return 0xFFFFFFFFU - static_cast<std::uint32_t>(std::min(depth, 2.0) * kSteps);
}

/// By the key, digit after digit from the last; equal ones keep their order, so that the same input gives the same
/// picture.
void SortByKey(std::vector<Place>& places)
{
    constexpr int kBits = 11;
    constexpr std::size_t kDigits = std::size_t { 1 } << kBits;
    std::vector<Place> other(places.size());
    for (int shift = 0; shift < 32; shift += kBits) {
        auto const digitOf = [shift](Place const& place) { return (place.key >> shift) & (kDigits - 1); };
        std::array<std::size_t, kDigits> firsts {};
        for (Place const& place : places)
            ++firsts[digitOf(place)];
        std::size_t sum = 0;
        for (std::size_t& first : firsts)
            first = std::exchange(sum, sum + first);
        for (Place const& place : places)
            other[firsts[digitOf(place)]++] = place;
        places.swap(other);
    }
}

} // namespace

/// All triangles before they are in order.
struct TransparentScene::Faces {
    std::vector<Vertex> vertices;
    /// Three a triangle.
    std::vector<std::uint32_t> corners;
    /// One a triangle.
    std::vector<Place> places;
    /// From its first triangle on, until the next entry's.
    struct Part {
        std::size_t firstFace;
        Textures textures;
    };
    std::vector<Part> parts;

    void Begin(Textures const& textures)
    {
        if (parts.empty() || parts.back().textures != textures)
            parts.push_back({ places.size(), textures });
    }
    void AddTriangle(double depth) { places.push_back({ KeyOf(depth), static_cast<std::uint32_t>(places.size()) }); }
};

void TransparentScene::EndPicture()
{
    m_batches.clear();
    m_sortedBatches.clear();
    m_runs.clear();
    m_vertexBuffer.Reset();
    m_indexBuffer.Reset();
}

void TransparentScene::Append(Faces& faces, Batch const& batch, Camera const& camera)
{
    faces.Begin(batch.textures);
    auto const firstVertex = static_cast<std::uint32_t>(faces.vertices.size());
    std::span<FaceVertex const> const vertices = batch.batch->GetVertices();
    std::span<std::array<float, 2> const> const imagePlaces = batch.batch->GetImagePlaces();
    bool const hasImage = batch.textures.twoD != 0 && imagePlaces.size() == vertices.size();
    Camera::DepthOf const depthOf = camera.GetDepthOf();
    std::vector<double> depths(vertices.size());
    for (std::size_t v = 0; v < vertices.size(); ++v)
        depths[v] = depthOf(vertices[v].place[0], vertices[v].place[1], vertices[v].place[2]);
    faces.vertices.reserve(faces.vertices.size() + vertices.size());
    for (std::size_t v = 0; v < vertices.size(); ++v) {
        FaceVertex const& vertex = vertices[v];
        auto const channel = [&](std::size_t k) { return static_cast<float>(vertex.colour[k]) / 255.0F; };
        faces.vertices.push_back({ vertex.place, vertex.normal, { channel(0), channel(1), channel(2), channel(3) },
            hasImage ? imagePlaces[v] : std::array { vertex.value, 0.0F } });
    }
    std::span<std::uint32_t const> const corners = batch.batch->GetTriangles();
    faces.corners.reserve(faces.corners.size() + corners.size());
    faces.places.reserve(faces.places.size() + corners.size() / 3);
    for (std::size_t c = 0; c + 2 < corners.size(); c += 3) {
        for (std::size_t k = 0; k < 3; ++k)
            faces.corners.push_back(firstVertex + corners[c + k]);
        faces.AddTriangle((depths[corners[c]] + depths[corners[c + 1]] + depths[corners[c + 2]]) / 3.0);
    }
}

// A convex polygon is a fan of triangles, which keep together.
void TransparentScene::Append(Faces& faces, CPolygon const& polygon, Camera const& camera)
{
    std::span<CVertex const> const vertices = polygon.GetVertices();
    if (vertices.size() < 3)
        return;
    Textures textures;
    if (!polygon.GetTextureCoords().empty())
        textures.twoD = polygon.GetTexture();
    else if (polygon.Get1DTexture() >= 1)
        textures.oneD = static_cast<unsigned int>(polygon.Get1DTexture());
    faces.Begin(textures);
    auto const firstVertex = static_cast<std::uint32_t>(faces.vertices.size());
    CNormal const face = polygon.GetNormals().size() < vertices.size() ? polygon.GetNormal() : CNormal();
    Camera::DepthOf const depthOf = camera.GetDepthOf();
    double depth = 0.0;
    for (std::size_t v = 0; v < vertices.size(); ++v) {
        depth += depthOf(vertices[v].X(), vertices[v].Y(), vertices[v].Z());
        Vertex vertex {};
        vertex.place = FaceVertex::Floats(vertices[v]);
        vertex.normal = FaceVertex::Floats(v < polygon.GetNormals().size() ? polygon.GetNormals()[v] : face);
        int const index = static_cast<int>(v);
        COLORREF const colour = index < polygon.GetColours().GetSize() ? polygon.GetColours()[index] : 0;
        double const transparency
            = index < polygon.GetTransparencies().GetSize() ? polygon.GetTransparencies()[index] : 0.0;
        vertex.colour = { GetRValue(colour) / 255.0F, GetGValue(colour) / 255.0F, GetBValue(colour) / 255.0F,
            static_cast<float>(1.0 - transparency) };
        if (v < polygon.GetTextureCoords().size())
            vertex.texture = { static_cast<float>(polygon.GetTextureCoords()[v].x),
                static_cast<float>(polygon.GetTextureCoords()[v].y) };
        else if (index < polygon.Get1DTextureCoords().GetSize())
            vertex.texture = { static_cast<float>(polygon.Get1DTextureCoords()[index]), 0.0F };
        faces.vertices.push_back(vertex);
    }
    for (std::uint32_t v = 2; v < vertices.size(); ++v) {
        faces.corners.insert(faces.corners.end(), { firstVertex, firstVertex + v - 1, firstVertex + v });
        faces.AddTriangle(depth / static_cast<double>(vertices.size()));
    }
}

void TransparentScene::Sort(Camera const& camera, OwnedArray<CPolygon> const& polygons)
{
    // A pass moves the picture by fractions of a pixel; depths stay what they are.
    if (polygons.IsEmpty() && !m_runs.empty() && m_batches == m_sortedBatches)
        return;
    m_sortedBatches.clear();
    m_runs.clear();
    Faces faces;
    for (int i = 0; i < polygons.GetSize(); ++i)
        Append(faces, *polygons[i], camera);
    for (Batch const& batch : m_batches)
        Append(faces, batch, camera);
    SortByKey(faces.places);

    std::vector<std::uint32_t> indices;
    indices.reserve(faces.corners.size());
    auto const partOf = [&](std::size_t face) {
        return std::prev(std::upper_bound(faces.parts.begin(), faces.parts.end(), face,
            [](std::size_t f, Faces::Part const& part) { return f < part.firstFace; }));
    };
    for (Place const& place : faces.places) {
        Textures const& textures = partOf(place.face)->textures;
        if (m_runs.empty() || m_runs.back().textures != textures)
            m_runs.push_back({ textures, indices.size(), 0 });
        m_runs.back().count += 3;
        auto const corner = faces.corners.begin() + static_cast<std::ptrdiff_t>(place.face) * 3;
        indices.insert(indices.end(), corner, corner + 3);
    }
    FillBuffer(m_vertexBuffer, GL_ARRAY_BUFFER, faces.vertices);
    FillBuffer(m_indexBuffer, GL_ELEMENT_ARRAY_BUFFER, indices);
    if (polygons.IsEmpty())
        m_sortedBatches = m_batches;
}

void TransparentScene::Draw(C3DGraph& graph) const
{
    if (m_runs.empty())
        return;
    GLKeptSettings const kept(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_CURRENT_BIT);
    gl::Enable(GL_BLEND);
    gl::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // Tested against the opaque scene, but hiding nothing.
    gl::DepthMask(GL_FALSE);
    for (int const array : { GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY })
        gl::EnableClientState(static_cast<GLenum>(array));
    gl::BindBuffer(GL_ARRAY_BUFFER, m_vertexBuffer.Name());
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_indexBuffer.Name());
    constexpr int kStride = sizeof(Vertex);
    gl::VertexPointer(3, GL_FLOAT, kStride, BufferOffset(offsetof(Vertex, place)));
    gl::NormalPointer(GL_FLOAT, kStride, BufferOffset(offsetof(Vertex, normal)));
    gl::ColorPointer(4, GL_FLOAT, kStride, BufferOffset(offsetof(Vertex, colour)));
    gl::TexCoordPointer(2, GL_FLOAT, kStride, BufferOffset(offsetof(Vertex, texture)));
    for (Run const& run : m_runs) {
        graph.Set1DTextureState(run.textures.oneD != 0 && run.textures.twoD == 0, static_cast<int>(run.textures.oneD));
        graph.SetTextureState(run.textures.twoD != 0, static_cast<int>(run.textures.twoD));
        gl::DrawElements(GL_TRIANGLES, static_cast<GLsizei>(run.count), GL_UNSIGNED_INT,
            BufferOffset(run.firstIndex * sizeof(std::uint32_t)));
    }
    graph.Set1DTextureState(0, 0);
    graph.SetTextureState(0, 0);
}

} // namespace ombrel
