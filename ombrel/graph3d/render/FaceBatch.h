#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/render/SampledTriangles.h"
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/opengl/GLObject.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

class C3DGraph;

/// A corner of a face as OpenGL's buffers hold it.
struct FaceVertex {
    /// Box units.
    std::array<float, 3> place {};
    /// Of length 1.
    std::array<float, 3> normal {};
    /// Along the texture of the curve's colours, 0 … 1.
    float value = 0.0F;
    /// Red, green, blue, and opacity, which counts for transparent faces alone. White where a texture colours.
    std::array<BYTE, 4> colour { 255, 255, 255, 255 };

    static std::array<float, 3> Floats(Triple const& t)
    {
        return { static_cast<float>(t.X()), static_cast<float>(t.Y()), static_cast<float>(t.Z()) };
    }
    static std::array<BYTE, 4> Bytes(COLORREF colour, double transparency = 0.0);
};

/// Faces between shared vertices, and lines between them, for everything that is not a regular grid: built when data
/// or settings change, kept in buffers of OpenGL, drawn with few calls however many they are.
///
/// Building needs no OpenGL. The functions that draw belong within a draw of the graph; they leave its state as they
/// found it. A texture is the name of a 1D texture that colours by the vertices' values, 0 for none.
class FaceBatch {
public:
    /// Of indices of triangles' corners, or of lines' ends.
    struct Span {
        std::size_t first = 0;
        std::size_t count = 0;
    };
    /// Triangles and lines that belong together: a face, or several, and its outline.
    struct Element {
        Span faces;
        Span outline;
    };

    void Clear();
    bool IsEmpty() const { return m_vertices.empty(); }
    /// Its index.
    std::uint32_t AddVertex(FaceVertex const& vertex);
    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void AddLine(std::uint32_t a, std::uint32_t b);
    /// What was added since the last call becomes an element, for DrawOutlined.
    void EndElement();

    std::span<FaceVertex const> GetVertices() const { return m_vertices; }
    /// Three indices of vertices a triangle.
    std::span<std::uint32_t const> GetTriangles() const { return m_triangles; }
    /// Places on a texture of two dimensions, one a vertex: for faces that AddTransparent draws with an image. Without
    /// them empty.
    std::span<std::array<float, 2> const> GetImagePlaces() const { return m_imagePlaces; }
    void SetImagePlaces(std::vector<std::array<float, 2>>&& places) { m_imagePlaces = std::move(places); }
    /// Two a line.
    std::span<std::uint32_t const> GetLines() const { return m_lines; }
    std::span<Element const> GetElements() const { return m_elements; }

    /// All faces, or parts of the triangles, opaque.
    void DrawFaces(C3DGraph& graph, unsigned int texture);
    void DrawFaces(C3DGraph& graph, unsigned int texture, std::vector<Span> const& parts);
    /// All lines, unlit, in the vertices' colours or those of the texture.
    void DrawLines(C3DGraph& graph, double width, unsigned int texture);
    /// All lines, smooth, unlit, in the vertices' colours. The vertices themselves are drawn, too: where two lines
    /// meet, no gap is seen between their softened ends.
    void DrawSmoothLines(C3DGraph& graph, double width);
    /// The elements one behind the other, each in its outline: this marks its pixels in the stencil, the faces leave
    /// them alone, and the second outline takes the marks back.
    void DrawOutlined(C3DGraph& graph, COLORREF lineColour, double width, unsigned int texture);
    /// Lets the graph draw the faces after everything opaque, with all that is transparent, the farthest first. The
    /// batch must stay as it is until the picture is drawn. The image is the name of a texture of two dimensions, 0 for
    /// none, which goes before the other one.
    void AddTransparent(C3DGraph& graph, unsigned int texture, unsigned int image = 0) const;
    /// Gives back the buffers; the next draw fills them again.
    void InvalidateDeviceObjects();
    /// Hands vertices, triangles and lines to the driver and forgets them, so that a large batch is held once. They are
    /// gone for good when the driver loses them (IsInDriver), and nothing may be added any more but after Clear.
    void MoveToDriver();
    /// Whether the driver has everything that is drawn.
    bool IsInDriver() const { return m_isUploaded && m_vertexBuffer.IsAlive(); }

private:
    /// What the vertex buffer holds of each vertex behind its place: offsets in bytes, 0 for what all vertices have in
    /// common, which is not in the buffer.
    struct Layout {
        std::size_t normal = 0;
        std::size_t value = 0;
        std::size_t colour = 0;
        std::size_t stride = 0;
    };
    void Upload();
    void UploadVertices();
    void UploadIndices(GLObject& buffer, std::vector<std::uint32_t> const& indices) const;
    void DrawIndices(unsigned int mode, Span const& span) const;
    void BindArrays() const;
    void BindColours() const;
    static void UnbindArrays();
    void DrawAllLines(C3DGraph& graph, double width, unsigned int texture, bool withVertices);

    std::vector<FaceVertex> m_vertices;
    std::vector<std::uint32_t> m_triangles;
    std::vector<std::uint32_t> m_lines;
    std::vector<Element> m_elements;
    std::vector<std::array<float, 2>> m_imagePlaces;
    bool m_isWhite = true;
    bool m_isUploaded = false;
    /// What the buffers hold.
    Layout m_layout;
    FaceVertex m_common;
    std::size_t m_numVertices = 0;
    std::size_t m_numTriangleIndices = 0;
    std::size_t m_numLineIndices = 0;
    SampledTriangles m_sampled;
    GLObject m_vertexBuffer;
    GLObject m_triangleBuffer;
    GLObject m_lineBuffer;
};

} // namespace ombrel
