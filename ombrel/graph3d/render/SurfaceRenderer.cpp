#include "ombrel/graph3d/render/SurfaceRenderer.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/graph3d/render/TextureProgram.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>

namespace ombrel {
namespace {

void Set(unsigned int capability, bool on) { (on ? gl::Enable : gl::Disable)(capability); }

} // namespace

void SurfaceRenderer::Render(CSurface& surface, C3DGraph& graph)
{
    surface.BuildContours();
    if (surface.UseColourmap())
        m_colours.Bind(graph, surface.Make1DTexture());
    if (surface.GetUseTextureMap())
        SetImage(surface, true);
    GeometryKey const key = KeyOf(surface);
    if (!m_hasGeometry || !(key == m_key) || !m_vertexBuffer.IsAlive()) {
        m_key = key;
        MakeGeometry(surface);
        Upload();
        m_hasGeometry = true;
    }
    if (surface.GetWireframeOn())
        DrawWireframe(surface, graph);
    else if (m_key.isTransparent)
        AddTransparent(graph);
    else
        DrawPolygons(surface);
    if (surface.GetUseTextureMap())
        SetImage(surface, false);
    if (surface.UseColourmap())
        ColourTexture::Unbind(graph);
    if (surface.NeedContourLines() && !graph.GetCoarseMeshMode())
        DrawContourLines(surface, graph);
}

void SurfaceRenderer::InvalidateDeviceObjects()
{
    m_hasGeometry = false;
    m_linesKey = {};
    m_imageDirty = true;
    for (GLObject* object :
        { &m_vertexBuffer, &m_indexBuffer, &m_imagePlaceBuffer, &m_wireframeColourBuffer, &m_image, &m_lineBuffer })
        object->Reset();
    m_colours.Reset();
}

// --- Geometry

SurfaceRenderer::GeometryKey SurfaceRenderer::KeyOf(CSurface const& surface) const
{
    GeometryKey key;
    key.revision = surface.m_revision;
    key.axes = surface.GetSurfaceMesh()->GetBoxAxes();
    key.isFlat = surface.GetForceNormalAveraging() == 0;
    key.isTransparent = surface.GetTransparency() != 0.0 && !surface.GetWireframeOn();
    key.hasColours = surface.UseColourmap() != 0;
    if (surface.GetWireframeOn()) {
        CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
        key.blockCols = CVUtils::GetNearestDivisor(mesh.GetNumCols(), surface.GetNumWireframeCols());
        key.blockRows = CVUtils::GetNearestDivisor(mesh.GetNumRows(), surface.GetNumWireframeRows());
        key.outlineMode = surface.GetWireframeMode();
    }
    key.hasImage = surface.GetUseTextureMap() && m_image.Name() != 0;
    if (key.hasImage) {
        TextureMapParams const& image = surface.GetTextureMap()->GetParams();
        key.isClamped = surface.GetClampTextureMap() != 0;
        key.imagePlace = { image.xMin, image.xMax, image.yMin, image.yMax };
    }
    if (key.isTransparent) {
        bool const isWhite = key.hasColours || key.hasImage;
        key.colour = FaceVertex::Bytes(
            isWhite ? 0xFFFFFF : static_cast<COLORREF>(surface.GetColour()), surface.GetTransparency());
    }
    return key;
}

SurfaceValues SurfaceRenderer::ValuesOf(CSurface const& surface) const
{
    SurfaceValues values;
    if (m_key.hasColours) {
        values.values = surface.ColourValues();
        surface.GetUntransformedDataRange(values.min, values.max);
    }
    return values;
}

void SurfaceRenderer::MakeGeometry(CSurface const& surface)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    m_layout = StripLayout(mesh.GetNumRows(), mesh.GetNumCols());
    m_vertices.clear();
    m_indices.clear();
    m_imagePlaces.clear();
    m_blocks.clear();
    m_plainFaces = {};
    m_imageFaces = {};
    for (FaceBatch& batch : m_transparent)
        batch = {};
    if (m_key.isTransparent) {
        MakeTransparent(surface);
        return;
    }
    // Separate triangles need the nodes for outlines only.
    if (!m_key.isFlat || surface.GetWireframeOn())
        MakeNodeVertices(mesh, ValuesOf(surface), m_layout, m_vertices);
    if (m_key.isFlat && !surface.GetWireframeOn())
        m_vertices.reserve(
            6 * static_cast<std::size_t>(mesh.GetNumRows()) * static_cast<std::size_t>(mesh.GetNumCols()));
    m_numNodeVertices = m_vertices.size();
    CellRange const all { 0, mesh.GetNumCols(), 0, mesh.GetNumRows() };
    if (surface.GetWireframeOn()) {
        MakeBlocks(surface);
    } else if (m_key.hasImage && m_key.isClamped) {
        m_plainFaces
            = AddFaces(surface, all, [](CSurface const& s, int i, int j) { return s.GetTextureFlag(i, j) == 0; });
        m_imageFaces
            = AddFaces(surface, all, [](CSurface const& s, int i, int j) { return s.GetTextureFlag(i, j) != 0; });
    } else {
        Span& faces = m_key.hasImage ? m_imageFaces : m_plainFaces;
        faces = AddFaces(surface, all, nullptr);
    }
    if (m_key.hasImage)
        MakeImagePlaces(surface);
}

SurfaceRenderer::Span SurfaceRenderer::AddFaces(
    CSurface const& surface, CellRange const& cells, bool (*isWanted)(CSurface const&, int, int))
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    CellFilter isDrawn;
    if (isWanted || mesh.HasMissing())
        isDrawn = [&](int i, int j) { return !mesh.IsCellMissing(i, j) && (!isWanted || isWanted(surface, i, j)); };
    if (m_key.isFlat) {
        std::size_t const first = m_vertices.size();
        AppendFlatTriangles(mesh, ValuesOf(surface), cells, isDrawn, m_vertices);
        return { first, m_vertices.size() - first };
    }
    std::size_t const first = m_indices.size();
    AppendStrip(m_layout, cells, isDrawn, m_indices);
    return { first, m_indices.size() - first };
}

void SurfaceRenderer::MakeBlocks(CSurface const& surface)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    int const width = mesh.GetNumCols() / m_key.blockCols;
    int const height = mesh.GetNumRows() / m_key.blockRows;
    for (int i = 0; i < mesh.GetNumCols(); i += width) {
        for (int j = 0; j < mesh.GetNumRows(); j += height) {
            if (mesh.IsMissing(i, j))
                continue;
            Block block { { i, i + width, j, j + height }, {}, {} };
            block.faces = AddFaces(surface, block.cells, nullptr);
            m_blocks.push_back(block);
        }
    }
    // One behind the other, since a block's second outline and the next one's first are drawn together.
    for (Block& block : m_blocks)
        AddOutline(mesh, block, surface.GetWireframeMode());
}

void SurfaceRenderer::AddOutline(CSurfaceMesh const& mesh, Block& block, int mode)
{
    CellRange const& c = block.cells;
    block.outline.first = m_indices.size();
    auto const add = [&](int i0, int j0, int i1, int j1) {
        if (!mesh.IsMissing(i0, j0) && !mesh.IsMissing(i1, j1))
            m_indices.insert(m_indices.end(), { m_layout.GetIndex(i0, j0), m_layout.GetIndex(i1, j1) });
    };
    if (mode != CSurface::wmAcrossY) {
        for (int j = c.firstRow; j < c.lastRow; ++j)
            add(c.lastCol, j, c.lastCol, j + 1);
        for (int j = c.lastRow; j > c.firstRow; --j)
            add(c.firstCol, j, c.firstCol, j - 1);
    }
    if (mode != CSurface::wmAcrossX) {
        for (int i = c.lastCol; i > c.firstCol; --i)
            add(i, c.lastRow, i - 1, c.lastRow);
        for (int i = c.firstCol; i < c.lastCol; ++i)
            add(i, c.firstRow, i + 1, c.firstRow);
    }
    block.outline.count = m_indices.size() - block.outline.first;
}

namespace {

using ImagePlaces = std::vector<std::array<float, 2>>;

// Nodes beyond the image take the image's edge.
std::array<float, 2> ImagePlaceOf(CSurface const& surface, int i, int j)
{
    double s = 0.0;
    double t = 0.0;
    surface.GetTextureCoord(i, j, s, t);
    return { static_cast<float>(std::clamp(s, 0.0, 1.0)), static_cast<float>(std::clamp(t, 0.0, 1.0)) };
}

// As MakeNodeVertices places them.
void AppendNodes(CSurface const& surface, StripLayout const& layout, ImagePlaces& places)
{
    for (int s = 0; s < layout.GetNumStrips(); ++s) {
        for (int j = 0; j <= layout.GetRows(); ++j) {
            for (int i = layout.GetFirstCol(s); i <= layout.GetLastCol(s); ++i)
                places.push_back(ImagePlaceOf(surface, i, j));
        }
    }
}

// As AppendFlatTriangles places them.
void AppendTriangles(CSurface const& surface, CellRange const& cells, CellFilter const& isWanted, ImagePlaces& places)
{
    for (int j = cells.firstRow; j < cells.lastRow; ++j) {
        for (int i = cells.firstCol; i < cells.lastCol; ++i) {
            if (!isWanted(i, j))
                continue;
            for (auto const& [di, dj] : { std::pair(1, 1), { 0, 1 }, { 0, 0 }, { 1, 0 }, { 1, 1 }, { 0, 0 } })
                places.push_back(ImagePlaceOf(surface, i + di, j + dj));
        }
    }
}

} // namespace

// One place a vertex.
void SurfaceRenderer::MakeImagePlaces(CSurface const& surface)
{
    if (m_numNodeVertices != 0)
        AppendNodes(surface, m_layout, m_imagePlaces);
    if (!m_key.isFlat)
        return;
    CellRange const all { 0, m_layout.GetCols(), 0, m_layout.GetRows() };
    auto const isDrawn = [&](int i, int j) { return !surface.GetSurfaceMesh()->IsCellMissing(i, j); };
    if (surface.GetWireframeOn()) {
        for (Block const& block : m_blocks)
            AppendTriangles(surface, block.cells, isDrawn, m_imagePlaces);
    } else if (m_key.isClamped) {
        for (int const flag : { 0, 1 })
            AppendTriangles(
                surface, all, [&](int i, int j) { return isDrawn(i, j) && surface.GetTextureFlag(i, j) == flag; },
                m_imagePlaces);
    } else {
        AppendTriangles(surface, all, isDrawn, m_imagePlaces);
    }
}

// All faces, or apart those that lie on the image.
void SurfaceRenderer::MakeTransparent(CSurface const& surface)
{
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    CellRange const all { 0, mesh.GetNumCols(), 0, mesh.GetNumRows() };
    for (bool const isOnImage : { false, true }) {
        CellFilter const isWanted = [&](int i, int j) {
            bool const hasImage = m_key.hasImage && (!m_key.isClamped || surface.GetTextureFlag(i, j) != 0);
            return hasImage == isOnImage && !mesh.IsCellMissing(i, j);
        };
        if (isOnImage && !m_key.hasImage)
            break;
        FaceBatch& batch = m_transparent[isOnImage ? 1 : 0];
        std::vector<SurfaceVertex> vertices;
        if (m_key.isFlat)
            AppendFlatTriangles(mesh, ValuesOf(surface), all, isWanted, vertices);
        else
            MakeNodeVertices(mesh, ValuesOf(surface), m_layout, vertices);
        for (SurfaceVertex const& v : vertices)
            batch.AddVertex({ std::to_array(v.place), std::to_array(v.normal), v.colour, m_key.colour });
        if (m_key.isFlat) {
            for (std::uint32_t v = 0; v < vertices.size(); v += 3)
                batch.AddTriangle(v, v + 1, v + 2);
        } else {
            for (int i = 0; i < all.lastCol; ++i) {
                for (int j = 0; j < all.lastRow; ++j) {
                    if (!isWanted(i, j))
                        continue;
                    std::uint32_t const near = m_layout.GetIndex(i, j);
                    std::uint32_t const far = m_layout.GetIndex(i + 1, j + 1);
                    batch.AddTriangle(far, m_layout.GetIndex(i, j + 1), near);
                    batch.AddTriangle(m_layout.GetIndex(i + 1, j), far, near);
                }
            }
        }
        ImagePlaces places;
        if (isOnImage && m_key.isFlat)
            AppendTriangles(surface, all, isWanted, places);
        else if (isOnImage)
            AppendNodes(surface, m_layout, places);
        batch.SetImagePlaces(std::move(places));
    }
}

void SurfaceRenderer::AddTransparent(C3DGraph& graph) const
{
    if (!m_transparent[0].IsEmpty())
        m_transparent[0].AddTransparent(graph, m_key.hasColours ? m_colours.Name() : 0);
    if (!m_transparent[1].IsEmpty())
        m_transparent[1].AddTransparent(graph, 0, m_image.Name());
}

void SurfaceRenderer::Upload()
{
    Release(m_places);
    Release(m_strip);
    if (m_blocks.empty() && SampledTriangles::AreWorthIt(m_indices.size())) {
        m_places.reserve(m_vertices.size());
        for (SurfaceVertex const& vertex : m_vertices)
            m_places.push_back(std::to_array(vertex.place));
        m_strip.swap(m_indices);
    }
    FillBuffer(m_vertexBuffer, GL_ARRAY_BUFFER, m_vertices);
    FillBuffer(m_indexBuffer, GL_ELEMENT_ARRAY_BUFFER, m_indices);
    FillBuffer(m_imagePlaceBuffer, GL_ARRAY_BUFFER, m_imagePlaces);
    m_wireframeColourBuffer.Reset();
    // The driver has them now.
    Release(m_vertices);
    Release(m_indices);
    Release(m_imagePlaces);
}

void SurfaceRenderer::UploadWireframeColours(CSurface const& surface)
{
    ColourMapKey key(*surface.GetWireframeColourmap());
    if (m_wireframeColourBuffer.IsAlive() && key == m_wireframeColoursKey)
        return;
    m_wireframeColoursKey = std::move(key);
    std::vector<std::array<BYTE, 4>> colours;
    colours.reserve(m_layout.GetNumVertices());
    for (int s = 0; s < m_layout.GetNumStrips(); ++s) {
        for (int j = 0; j <= m_layout.GetRows(); ++j) {
            for (int i = m_layout.GetFirstCol(s); i <= m_layout.GetLastCol(s); ++i) {
                Colour3 const c(surface.GetWireframeLUTColour(i, j));
                colours.push_back({ c.rgb[0], c.rgb[1], c.rgb[2], 255 });
            }
        }
    }
    FillBuffer(m_wireframeColourBuffer, GL_ARRAY_BUFFER, colours);
}

// --- Arrays

void SurfaceRenderer::BindArrays(bool withImagePlaces) const
{
    gl::EnableClientState(GL_VERTEX_ARRAY);
    gl::EnableClientState(GL_NORMAL_ARRAY);
    gl::EnableClientState(GL_TEXTURE_COORD_ARRAY);
    gl::BindBuffer(GL_ARRAY_BUFFER, m_vertexBuffer.Name());
    constexpr int kStride = sizeof(SurfaceVertex);
    gl::VertexPointer(3, GL_FLOAT, kStride, BufferOffset(offsetof(SurfaceVertex, place)));
    gl::NormalPointer(GL_FLOAT, kStride, BufferOffset(offsetof(SurfaceVertex, normal)));
    if (withImagePlaces) {
        gl::BindBuffer(GL_ARRAY_BUFFER, m_imagePlaceBuffer.Name());
        gl::TexCoordPointer(2, GL_FLOAT, 0, BufferOffset(0));
    } else {
        gl::TexCoordPointer(1, GL_FLOAT, kStride, BufferOffset(offsetof(SurfaceVertex, colour)));
    }
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_indexBuffer.Name());
}

void SurfaceRenderer::UnbindArrays() const
{
    gl::BindBuffer(GL_ARRAY_BUFFER, 0);
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    gl::DisableClientState(GL_VERTEX_ARRAY);
    gl::DisableClientState(GL_NORMAL_ARRAY);
    gl::DisableClientState(GL_TEXTURE_COORD_ARRAY);
}

void SurfaceRenderer::DrawFaces(Span const& faces)
{
    if (faces.count == 0)
        return;
    if (!m_strip.empty()) {
        m_sampled.Find({ m_places.front().data(), sizeof m_places.front(), m_places.size() },
            std::span(m_strip).subspan(faces.first, faces.count), SampledTriangles::Form::Strip);
        m_sampled.Draw();
        return;
    }
    auto const count = static_cast<GLsizei>(faces.count);
    if (m_key.isFlat)
        gl::DrawArrays(GL_TRIANGLES, static_cast<GLint>(faces.first), count);
    else
        gl::DrawElements(GL_TRIANGLE_STRIP, count, GL_UNSIGNED_INT, BufferOffset(faces.first * sizeof(std::uint32_t)));
}

// --- Textures

void SurfaceRenderer::SetImage(CSurface& surface, bool on)
{
    if (!on) {
        gl::Disable(GL_TEXTURE_2D);
        return;
    }
    CTextureMap const& map = *surface.GetTextureMap();
    if (m_imageDirty || !m_image.IsAlive()) {
        m_imageDirty = false;
        m_image.Reset();
        GLint longest = 0;
        gl::GetIntegerv(GL_MAX_TEXTURE_SIZE, &longest);
        CSize const size = map.GetSize();
        if (map.GetTexels().empty() || size.cx > longest || size.cy > longest)
            return;
        m_image = GLObject(GLObject::Kind::Texture);
        gl::PixelStorei(GL_UNPACK_ALIGNMENT, 1);
        gl::BindTexture(GL_TEXTURE_2D, m_image.Name());
        gl::TexImage2D(
            GL_TEXTURE_2D, 0, GL_RGBA, size.cx, size.cy, 0, GL_RGBA, GL_UNSIGNED_BYTE, map.GetTexels().data());
    }
    gl::Enable(GL_TEXTURE_2D);
    gl::TexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    gl::BindTexture(GL_TEXTURE_2D, m_image.Name());
    GLint const wrap = surface.GetClampTextureMap() ? GL_CLAMP : GL_REPEAT;
    gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
    gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
}

// --- Faces

void SurfaceRenderer::DrawPolygons(CSurface& surface)
{
    Colour3 const colour(surface.UseColourmap() ? 0xFFFFFF : surface.GetColour());
    gl::Color3ubv(colour.rgb);
    if (m_plainFaces.count != 0) {
        BindArrays(false);
        gl::Disable(GL_TEXTURE_2D);
        TextureProgram const program(surface.UseColourmap() ? m_plainFaces.count / (m_key.isFlat ? 3 : 1) : 0);
        DrawFaces(m_plainFaces);
    }
    if (m_imageFaces.count != 0) {
        BindArrays(true);
        gl::Enable(GL_TEXTURE_2D);
        DrawFaces(m_imageFaces);
    }
    UnbindArrays();
}

// Outlines and faces of the blocks, one block behind the other: the outline marks its pixels in the stencil, the faces
// leave them alone, and the second outline takes the marks back.
void SurfaceRenderer::DrawWireframe(CSurface& surface, C3DGraph& graph)
{
    bool const hasColours = surface.UseColourmap() != 0;
    Colour3 const faceColour(hasColours ? 0xFFFFFF : surface.GetColour());
    Colour3 const lineColour(surface.GetWireframeColour());
    bool const hasNodeColours = surface.GetWireframeColourDescription() > 0;
    if (hasNodeColours)
        UploadWireframeColours(surface);
    bool const isLit = graph.GetLightingOn() != 0;
    gl::Enable(GL_STENCIL_TEST);
    gl::Clear(GL_STENCIL_BUFFER_BIT);
    gl::PushAttrib(GL_LIGHTING_BIT);
    gl::LineWidth(static_cast<float>(graph.GetLineWidth(3)));
    if (hasNodeColours) {
        gl::BindBuffer(GL_ARRAY_BUFFER, m_wireframeColourBuffer.Name());
        gl::ColorPointer(4, GL_UNSIGNED_BYTE, 0, BufferOffset(0));
    }
    BindArrays(m_key.hasImage);

    auto const drawOutlines = [&](Span const& lines) {
        gl::Color3ubv(lineColour.rgb);
        gl::Disable(GL_TEXTURE_2D);
        if (isLit)
            gl::Disable(GL_LIGHTING);
        if (hasColours)
            gl::Disable(GL_TEXTURE_1D);
        gl::StencilFunc(GL_ALWAYS, 0, 1);
        gl::StencilOp(GL_INVERT, GL_INVERT, GL_INVERT);
        if (hasNodeColours)
            gl::EnableClientState(GL_COLOR_ARRAY);
        gl::DrawElements(GL_LINES, static_cast<GLsizei>(lines.count), GL_UNSIGNED_INT,
            BufferOffset(lines.first * sizeof(std::uint32_t)));
        if (hasNodeColours)
            gl::DisableClientState(GL_COLOR_ARRAY);
    };
    auto const drawFaces = [&](Block const& block) {
        gl::Color3ubv(faceColour.rgb);
        gl::StencilFunc(GL_EQUAL, 0, 1);
        gl::StencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        if (m_key.hasImage) {
            bool const isOnImage
                = !m_key.isClamped || surface.GetTextureFlag(block.cells.firstCol, block.cells.firstRow) != 0;
            BindArrays(isOnImage);
            Set(GL_TEXTURE_2D, isOnImage);
        }
        if (isLit)
            gl::Enable(GL_LIGHTING);
        if (hasColours)
            gl::Enable(GL_TEXTURE_1D);
        DrawFaces(block.faces);
    };
    for (std::size_t b = 0; b < m_blocks.size(); ++b) {
        if (b == 0)
            drawOutlines(m_blocks[b].outline);
        drawFaces(m_blocks[b]);
        // Its second one, and the first one of the next block.
        Span lines = m_blocks[b].outline;
        if (b + 1 < m_blocks.size())
            lines.count += m_blocks[b + 1].outline.count;
        drawOutlines(lines);
    }
    UnbindArrays();
    gl::Flush();
    gl::LineWidth(1.0F);
    gl::Disable(GL_STENCIL_TEST);
    gl::PopAttrib();
}

} // namespace ombrel
