#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace ombrel {

void C3DGraph::AddTransparentPolygon(std::unique_ptr<CPolygon> polygon) { m_polygons.Add(std::move(polygon)); }

void C3DGraph::ClearPolygons()
{
    m_polygons.DeleteAll();
    m_transparentFaces.clear();
    m_distances.clear();
}

void C3DGraph::AddTransparentFaces(FaceBatch const& batch, int texture)
{
    m_transparentFaces.push_back({ &batch, texture });
}

void C3DGraph::BuildPolygonDistances()
{
    m_distances.clear();
    if (!m_picture)
        return;
    // What lies behind the eye is not seen, wherever it stands in the order.
    auto const depthOf = [this](CVertex const& vertex) {
        std::optional<CVertex> const window = m_picture->camera.Project(vertex);
        return window && std::isfinite(window->Z()) ? std::fabs(window->Z()) : 0.0;
    };
    for (int i = 0; i < m_polygons.GetSize(); ++i) {
        std::span<CVertex const> const vertices = m_polygons[i]->GetVertices();
        double sum = 0.0;
        for (CVertex const& vertex : vertices)
            sum += depthOf(vertex);
        m_distances.push_back(
            { vertices.empty() ? 0.0 : sum / static_cast<double>(vertices.size()), -1, static_cast<std::size_t>(i) });
    }
    std::vector<double> depths;
    for (std::size_t b = 0; b < m_transparentFaces.size(); ++b) {
        FaceBatch const& batch = *m_transparentFaces[b].batch;
        depths.clear();
        for (FaceVertex const& vertex : batch.GetVertices())
            depths.push_back(depthOf({ vertex.place[0], vertex.place[1], vertex.place[2] }));
        std::span<std::uint32_t const> const corners = batch.GetTriangles();
        for (std::size_t c = 0; c < corners.size(); c += 3) {
            double const sum = depths[corners[c]] + depths[corners[c + 1]] + depths[corners[c + 2]];
            m_distances.push_back({ sum / 3.0, static_cast<int>(b), c });
        }
    }
    // Equally distant ones keep their order, so that the same input gives the same picture.
    std::stable_sort(m_distances.begin(), m_distances.end(),
        [](PolygonDistance const& a, PolygonDistance const& b) { return a.distance > b.distance; });
}

namespace {

/// The textures that a polygon is drawn with; 0 for none. That of two dimensions goes before that of one.
struct Textures {
    int oneD = 0;
    int twoD = 0;
    explicit Textures(CPolygon const& polygon)
    {
        if (!polygon.GetTextureCoords().empty())
            twoD = static_cast<int>(polygon.GetTexture());
        else if (polygon.Get1DTexture() >= 1)
            oneD = polygon.Get1DTexture();
    }
    Textures() = default;
    friend bool operator==(Textures const&, Textures const&) = default;
};

/// Corners of triangles, as OpenGL's arrays take them.
struct TransparentCorner {
    std::array<float, 3> vertex;
    std::array<float, 3> normal;
    std::array<float, 4> colour;
    std::array<float, 2> texture;
};

std::array<float, 3> Floats(Triple const& t)
{
    return { static_cast<float>(t.X()), static_cast<float>(t.Y()), static_cast<float>(t.Z()) };
}

TransparentCorner Corner(FaceVertex const& vertex)
{
    auto const channel = [&](std::size_t k) { return static_cast<float>(vertex.colour[k]) / 255.0F; };
    return { vertex.place, vertex.normal, { channel(0), channel(1), channel(2), channel(3) }, { vertex.value, 0.0F } };
}

TransparentCorner Corner(CPolygon const& polygon, std::size_t i, CNormal const& face)
{
    TransparentCorner corner {};
    corner.vertex = Floats(polygon.GetVertices()[i]);
    bool const hasNormal = i < polygon.GetNormals().size();
    corner.normal = Floats(hasNormal ? static_cast<Triple const&>(polygon.GetNormals()[i]) : face);
    int const index = static_cast<int>(i);
    COLORREF const colour = index < polygon.GetColours().GetSize() ? polygon.GetColours()[index] : 0;
    double const transparency
        = index < polygon.GetTransparencies().GetSize() ? polygon.GetTransparencies()[index] : 0.0;
    corner.colour = { GetRValue(colour) / 255.0F, GetGValue(colour) / 255.0F, GetBValue(colour) / 255.0F,
        static_cast<float>(1.0 - transparency) };
    if (i < polygon.GetTextureCoords().size())
        corner.texture = { static_cast<float>(polygon.GetTextureCoords()[i].x),
            static_cast<float>(polygon.GetTextureCoords()[i].y) };
    else if (index < polygon.Get1DTextureCoords().GetSize())
        corner.texture = { static_cast<float>(polygon.Get1DTextureCoords()[index]), 0.0F };
    return corner;
}

void DrawTriangles(std::vector<TransparentCorner> const& corners)
{
    if (corners.empty())
        return;
    GLsizei const stride = sizeof(TransparentCorner);
    gl::VertexPointer(3, GL_FLOAT, stride, corners[0].vertex.data());
    gl::NormalPointer(GL_FLOAT, stride, corners[0].normal.data());
    gl::ColorPointer(4, GL_FLOAT, stride, corners[0].colour.data());
    gl::TexCoordPointer(2, GL_FLOAT, stride, corners[0].texture.data());
    gl::DrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(corners.size()));
}

} // namespace

void C3DGraph::RenderTransparentPolygons()
{
    if (!m_picture || (m_polygons.IsEmpty() && m_transparentFaces.empty()))
        return;
    BuildPolygonDistances();
    gl::Enable(GL_BLEND);
    gl::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // Tested against the opaque scene, but hiding nothing.
    gl::DepthMask(GL_FALSE);
    gl::PushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    gl::BindBuffer(GL_ARRAY_BUFFER, 0);
    for (int const array : { GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY })
        gl::EnableClientState(static_cast<GLenum>(array));

    // Triangles in order, as many at once as have the same textures: a convex polygon is a fan of them.
    constexpr std::size_t kMostCorners = 3 << 16;
    std::vector<TransparentCorner> corners;
    Textures bound;
    for (PolygonDistance const& entry : m_distances) {
        bool const isPolygon = entry.batch < 0;
        Textures textures;
        if (isPolygon)
            textures = Textures(*m_polygons[static_cast<int>(entry.index)]);
        else
            textures.oneD = m_transparentFaces[static_cast<std::size_t>(entry.batch)].texture;
        if (textures != bound || corners.size() >= kMostCorners) {
            DrawTriangles(corners);
            corners.clear();
        }
        if (textures != bound) {
            Set1DTextureState(textures.oneD != 0, textures.oneD);
            SetTextureState(textures.twoD != 0, textures.twoD);
            bound = textures;
        }
        if (!isPolygon) {
            FaceBatch const& batch = *m_transparentFaces[static_cast<std::size_t>(entry.batch)].batch;
            for (std::uint32_t const corner : batch.GetTriangles().subspan(entry.index, 3))
                corners.push_back(Corner(batch.GetVertices()[corner]));
            continue;
        }
        CPolygon const& polygon = *m_polygons[static_cast<int>(entry.index)];
        bool const needsFace = polygon.GetNormals().size() < polygon.GetVertices().size();
        CNormal const face = needsFace ? polygon.GetNormal() : CNormal();
        for (std::size_t i = 2; i < polygon.GetVertices().size(); ++i) {
            corners.push_back(Corner(polygon, 0, face));
            corners.push_back(Corner(polygon, i - 1, face));
            corners.push_back(Corner(polygon, i, face));
        }
    }
    DrawTriangles(corners);

    gl::PopClientAttrib();
    Set1DTextureState(0, 0);
    SetTextureState(0, 0);
    gl::Disable(GL_BLEND);
    gl::DepthMask(GL_TRUE);
}

} // namespace ombrel
