#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/graph3d/render/LineWidth.h"
#include "ombrel/graph3d/render/TextureProgram.h"
#include "ombrel/platform/opengl/GLState.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace ombrel {

std::array<BYTE, 4> FaceVertex::Bytes(COLORREF colour, double transparency)
{
    Colour3 const c(colour);
    double const opacity = std::isfinite(transparency) ? std::clamp(1.0 - transparency, 0.0, 1.0) : 1.0;
    return { c.rgb[0], c.rgb[1], c.rgb[2], static_cast<BYTE>(std::lround(opacity * 255.0)) };
}

void FaceBatch::Clear()
{
    m_vertices.clear();
    m_triangles.clear();
    m_lines.clear();
    m_elements.clear();
    m_imagePlaces.clear();
    m_isWhite = true;
    m_isUploaded = false;
}

std::uint32_t FaceBatch::AddVertex(FaceVertex const& vertex)
{
    m_isUploaded = false;
    m_isWhite = m_isWhite && std::min({ vertex.colour[0], vertex.colour[1], vertex.colour[2] }) == 255;
    m_vertices.push_back(vertex);
    return static_cast<std::uint32_t>(m_vertices.size() - 1);
}

void FaceBatch::AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    m_isUploaded = false;
    m_triangles.insert(m_triangles.end(), { a, b, c });
}

void FaceBatch::AddLine(std::uint32_t a, std::uint32_t b)
{
    m_isUploaded = false;
    m_lines.insert(m_lines.end(), { a, b });
}

void FaceBatch::EndElement()
{
    auto const since = [](std::vector<std::uint32_t> const& all, std::size_t first) {
        return Span { first, all.size() - first };
    };
    Element const last = m_elements.empty() ? Element {} : m_elements.back();
    m_elements.push_back({ since(m_triangles, last.faces.first + last.faces.count),
        since(m_lines, last.outline.first + last.outline.count) });
}

void FaceBatch::InvalidateDeviceObjects()
{
    m_isUploaded = false;
    for (GLObject* object : { &m_vertexBuffer, &m_triangleBuffer, &m_lineBuffer })
        object->Reset();
}

void FaceBatch::Upload()
{
    if (IsInDriver())
        return;
    m_numVertices = m_vertices.size();
    m_numTriangleIndices = m_triangles.size();
    m_numLineIndices = m_lines.size();
    UploadVertices();
    UploadIndices(m_triangleBuffer, m_triangles);
    UploadIndices(m_lineBuffer, m_lines);
    m_isUploaded = true;
}

void FaceBatch::UploadVertices()
{
    m_common = m_vertices.empty() ? FaceVertex() : m_vertices.front();
    m_layout = {};
    std::size_t end = sizeof(FaceVertex::place);
    auto const place = [&](auto FaceVertex::*part) {
        auto const isCommon = [&](FaceVertex const& vertex) { return vertex.*part == m_common.*part; };
        if (std::ranges::all_of(m_vertices, isCommon))
            return std::size_t {};
        return std::exchange(end, end + sizeof(m_common.*part));
    };
    m_layout.normal = place(&FaceVertex::normal);
    m_layout.value = place(&FaceVertex::value);
    // With one colour for all, drivers multiply light and colour in another order, which rounding tells; white it does
    // not.
    m_layout.colour = m_isWhite ? place(&FaceVertex::colour) : std::exchange(end, end + sizeof(FaceVertex::colour));
    m_layout.stride = end;
    if (end == sizeof(FaceVertex)) {
        FillBuffer(m_vertexBuffer, GL_ARRAY_BUFFER, m_vertices);
        return;
    }
    std::vector<std::byte> bytes(m_vertices.size() * end);
    std::byte* to = bytes.data();
    for (FaceVertex const& vertex : m_vertices) {
        std::memcpy(to, &vertex.place, sizeof vertex.place);
        if (m_layout.normal != 0)
            std::memcpy(to + m_layout.normal, &vertex.normal, sizeof vertex.normal);
        if (m_layout.value != 0)
            std::memcpy(to + m_layout.value, &vertex.value, sizeof vertex.value);
        if (m_layout.colour != 0)
            std::memcpy(to + m_layout.colour, &vertex.colour, sizeof vertex.colour);
        to += end;
    }
    FillBuffer(m_vertexBuffer, GL_ARRAY_BUFFER, bytes);
}

namespace {

/// Whether two bytes are enough for an index.
bool AreFew(std::size_t vertices) { return vertices <= 0x10000; }

} // namespace

void FaceBatch::UploadIndices(GLObject& buffer, std::vector<std::uint32_t> const& indices) const
{
    if (AreFew(m_numVertices))
        FillBuffer(buffer, GL_ELEMENT_ARRAY_BUFFER, std::vector<std::uint16_t>(indices.begin(), indices.end()));
    else
        FillBuffer(buffer, GL_ELEMENT_ARRAY_BUFFER, indices);
}

void FaceBatch::DrawIndices(unsigned int mode, Span const& span) const
{
    if (span.count == 0)
        return;
    bool const areShort = AreFew(m_numVertices);
    gl::DrawElements(mode, static_cast<GLsizei>(span.count), areShort ? GL_UNSIGNED_SHORT : GL_UNSIGNED_INT,
        BufferOffset(span.first * (areShort ? sizeof(std::uint16_t) : sizeof(std::uint32_t))));
}

void FaceBatch::MoveToDriver()
{
    Upload();
    Release(m_vertices);
    Release(m_triangles);
    Release(m_lines);
}

// What all vertices have in common is what OpenGL takes where there is no array.
void FaceBatch::BindArrays() const
{
    auto const stride = static_cast<GLsizei>(m_layout.stride);
    gl::BindBuffer(GL_ARRAY_BUFFER, m_vertexBuffer.Name());
    gl::EnableClientState(GL_VERTEX_ARRAY);
    gl::VertexPointer(3, GL_FLOAT, stride, BufferOffset(0));
    if (m_layout.normal != 0) {
        gl::EnableClientState(GL_NORMAL_ARRAY);
        gl::NormalPointer(GL_FLOAT, stride, BufferOffset(m_layout.normal));
    } else {
        gl::Normal3fv(m_common.normal.data());
    }
    if (m_layout.value != 0) {
        gl::EnableClientState(GL_TEXTURE_COORD_ARRAY);
        gl::TexCoordPointer(1, GL_FLOAT, stride, BufferOffset(m_layout.value));
    } else {
        gl::TexCoord1f(m_common.value);
    }
    if (m_layout.colour != 0)
        gl::ColorPointer(4, GL_UNSIGNED_BYTE, stride, BufferOffset(m_layout.colour));
    BindColours();
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_triangleBuffer.Name());
}

void FaceBatch::BindColours() const
{
    if (m_layout.colour != 0)
        gl::EnableClientState(GL_COLOR_ARRAY);
    else
        gl::Color4ubv(m_common.colour.data());
}

void FaceBatch::UnbindArrays()
{
    gl::BindBuffer(GL_ARRAY_BUFFER, 0);
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void FaceBatch::DrawFaces(C3DGraph& graph, unsigned int texture)
{
    Upload();
    DrawFaces(graph, texture, { { 0, m_numTriangleIndices } });
}

void FaceBatch::DrawFaces(C3DGraph& graph, unsigned int texture, std::vector<Span> const& parts)
{
    Upload();
    std::size_t indices = 0;
    for (Span const& part : parts)
        indices += part.count;
    if (indices == 0)
        return;
    GLKeptSettings const kept(GL_CURRENT_BIT);
    graph.Set1DTextureState(texture != 0, static_cast<int>(texture));
    BindArrays();
    TextureProgram const program(texture != 0 && m_isWhite ? indices / 3 : 0);
    bool const isSampled = SampledTriangles::AreWorthIt(indices / 3) && !m_triangles.empty();
    for (Span const& part : parts) {
        if (isSampled) {
            m_sampled.Find({ m_vertices.front().place.data(), sizeof m_vertices.front(), m_vertices.size() },
                GetTriangles().subspan(part.first, part.count), SampledTriangles::Form::List);
            m_sampled.Draw();
        } else {
            DrawIndices(GL_TRIANGLES, part);
        }
    }
    UnbindArrays();
    graph.Set1DTextureState(0, 0);
}

void FaceBatch::DrawLines(C3DGraph& graph, double width, unsigned int texture)
{
    DrawAllLines(graph, width, texture, false);
}

void FaceBatch::DrawSmoothLines(C3DGraph& graph, double width)
{
    GLKeptSettings const kept(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT | GL_HINT_BIT);
    // First the colours: where lines overlap each other, all of them count. Then the depths.
    gl::DepthMask(GL_FALSE);
    for (int const what : { GL_LINE_SMOOTH, GL_POINT_SMOOTH, GL_BLEND })
        gl::Enable(static_cast<GLenum>(what));
    for (int const hint : { GL_LINE_SMOOTH_HINT, GL_POINT_SMOOTH_HINT })
        gl::Hint(static_cast<GLenum>(hint), GL_NICEST);
    gl::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    DrawAllLines(graph, width, 0, true);
    gl::DepthMask(GL_TRUE);
    gl::ColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    gl::Disable(GL_LINE_SMOOTH);
    DrawAllLines(graph, width, 0, false);
}

void FaceBatch::DrawAllLines(C3DGraph& graph, double width, unsigned int texture, bool withVertices)
{
    Upload();
    if (m_numLineIndices == 0)
        return;
    GLKeptSettings const kept(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_LINE_BIT | GL_POINT_BIT);
    graph.Set1DTextureState(texture != 0, static_cast<int>(texture));
    gl::Disable(GL_LIGHTING);
    gl::LineWidth(GetValidLineWidth(width));
    BindArrays();
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_lineBuffer.Name());
    DrawIndices(GL_LINES, { 0, m_numLineIndices });
    if (withVertices) {
        gl::PointSize(GetValidLineWidth(width));
        gl::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(m_numVertices));
    }
    UnbindArrays();
    graph.Set1DTextureState(0, 0);
}

void FaceBatch::DrawOutlined(C3DGraph& graph, COLORREF lineColour, double width, unsigned int texture)
{
    if (m_elements.empty())
        return;
    Upload();
    GLKeptSettings const kept(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_LINE_BIT | GL_STENCIL_BUFFER_BIT);
    Colour3 const colour(lineColour);
    bool const isLit = graph.GetLightingOn() != 0;
    graph.Set1DTextureState(texture != 0, static_cast<int>(texture));
    gl::Enable(GL_STENCIL_TEST);
    gl::Clear(GL_STENCIL_BUFFER_BIT);
    gl::LineWidth(GetValidLineWidth(width));
    BindArrays();
    auto const drawOutlines = [&](Span const& lines) {
        if (isLit)
            gl::Disable(GL_LIGHTING);
        if (texture != 0)
            gl::Disable(GL_TEXTURE_1D);
        gl::StencilFunc(GL_ALWAYS, 0, 1);
        gl::StencilOp(GL_INVERT, GL_INVERT, GL_INVERT);
        gl::DisableClientState(GL_COLOR_ARRAY);
        gl::Color3ubv(colour.rgb);
        gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_lineBuffer.Name());
        DrawIndices(GL_LINES, lines);
        gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_triangleBuffer.Name());
        BindColours();
    };
    for (std::size_t e = 0; e < m_elements.size(); ++e) {
        if (e == 0)
            drawOutlines(m_elements[e].outline);
        gl::StencilFunc(GL_EQUAL, 0, 1);
        gl::StencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        if (isLit)
            gl::Enable(GL_LIGHTING);
        if (texture != 0)
            gl::Enable(GL_TEXTURE_1D);
        DrawIndices(GL_TRIANGLES, m_elements[e].faces);
        // Its second one, and the first one of the next element.
        Span lines = m_elements[e].outline;
        if (e + 1 < m_elements.size())
            lines.count += m_elements[e + 1].outline.count;
        drawOutlines(lines);
    }
    UnbindArrays();
    gl::Flush();
    graph.Set1DTextureState(0, 0);
}

void FaceBatch::AddTransparent(C3DGraph& graph, unsigned int texture, unsigned int image) const
{
    graph.AddTransparentFaces(*this, static_cast<int>(texture), static_cast<int>(image));
}

} // namespace ombrel
