#pragma once
#include "ombrel/graph3d/SurfaceMesh.h"
#include "ombrel/graph3d/geometry/SurfaceGeometry.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/ColourTexture.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/render/SampledTriangles.h"
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/opengl/GLObject.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace ombrel {

class C3DGraph;
class TextureScaler;

/// Draws a surface: keeps its geometry in buffers of OpenGL, and makes these anew when data or settings have changed.
///
/// All functions but SetTextureDirty and InvalidateDeviceObjects belong within a draw of the graph.
class SurfaceRenderer {
public:
    void Render(CSurface& surface, C3DGraph& graph);
    /// Scales images as OpenGL does, in any place.
    static TextureScaler& GetImageScaler();
    /// The image has changed.
    void SetTextureDirty(bool dirty) { m_imageDirty = dirty; }
    /// Gives back buffers and textures; the next draw makes them again.
    void InvalidateDeviceObjects();

private:
    /// Part of the vertices, or of their indices.
    struct Span {
        std::size_t first = 0;
        std::size_t count = 0;
    };
    /// Cells that are drawn together, and the lines around them.
    struct Block {
        CellRange cells;
        Span faces;
        Span outline;
    };
    /// What the geometry was made from.
    struct GeometryKey {
        std::uint64_t revision = 0;
        BoxAxes axes;
        bool isFlat = false;
        bool isTransparent = false;
        bool hasColours = false;
        /// 0 without a wireframe.
        int blockCols = 0;
        int blockRows = 0;
        int outlineMode = 0;
        /// Whether cells beyond the image are drawn apart; and the image's place.
        bool isClamped = false;
        bool hasImage = false;
        std::array<double, 4> imagePlace {};
        /// Of transparent faces.
        std::array<BYTE, 4> colour {};
        friend bool operator==(GeometryKey const& a, GeometryKey const& b) = default;
    };
    /// What the contour lines were made from.
    struct LinesKey {
        std::uint64_t revision = 0;
        BoxAxes axes;
        std::vector<double> levels;
        friend bool operator==(LinesKey const& a, LinesKey const& b) = default;
    };
    /// Lines that are drawn with one colour and at one distance in front of the surface.
    struct LineGroup {
        std::size_t level = 0;
        double distance = 0.0;
        Span vertices;
    };

    GeometryKey KeyOf(CSurface const& surface) const;
    SurfaceValues ValuesOf(CSurface const& surface) const;
    void MakeGeometry(CSurface const& surface);
    void MakeBlocks(CSurface const& surface);
    void AddOutline(CSurfaceMesh const& mesh, Block& block, int mode);
    /// Without isWanted all cells.
    Span AddFaces(CSurface const& surface, CellRange const& cells, bool (*isWanted)(CSurface const&, int, int));
    void MakeImagePlaces(CSurface const& surface);
    void MakeTransparent(CSurface const& surface);
    void Upload();
    void UploadWireframeColours(CSurface const& surface);
    void BindArrays(bool withImagePlaces) const;
    void UnbindArrays() const;
    void DrawFaces(Span const& faces);

    void SetImage(CSurface& surface, bool on);
    void DrawPolygons(CSurface& surface);
    void DrawWireframe(CSurface& surface, C3DGraph& graph);
    void AddTransparent(C3DGraph& graph) const;

    void MakeContourLines(CSurface const& surface);
    void DrawContourLines(CSurface const& surface, C3DGraph& graph);

    GeometryKey m_key;
    bool m_hasGeometry = false;
    StripLayout m_layout;
    /// Of a transparent surface: without and with its image.
    std::array<FaceBatch, 2> m_transparent;
    // Until the driver has them
    std::vector<SurfaceVertex> m_vertices;
    std::vector<std::uint32_t> m_indices;
    std::vector<std::array<float, 2>> m_imagePlaces;
    /// Of the nodes, in front of the separate triangles of flat shading.
    std::size_t m_numNodeVertices = 0;
    Span m_plainFaces;
    Span m_imageFaces;
    std::vector<Block> m_blocks;
    /// Where the nodes are and how they make the faces, where only those that can be seen are drawn; else empty.
    std::vector<std::array<float, 3>> m_places;
    std::vector<std::uint32_t> m_strip;
    SampledTriangles m_sampled;
    GLObject m_vertexBuffer;
    GLObject m_indexBuffer;
    GLObject m_imagePlaceBuffer;
    /// What the colours of the wireframe's nodes were made from.
    ColourMapKey m_wireframeColoursKey;
    GLObject m_wireframeColourBuffer;

    ColourTexture m_colours;
    bool m_imageDirty = false;
    GLObject m_image;

    LinesKey m_linesKey;
    std::vector<LineGroup> m_lineGroups;
    GLObject m_lineBuffer;
};

} // namespace ombrel
