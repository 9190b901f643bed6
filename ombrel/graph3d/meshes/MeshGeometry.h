#pragma once
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/graph3d/MeshColouring.h"
#include "ombrel/graph3d/meshes/MeshElements.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/FaceBatch.h"

#include <array>
#include <functional>
#include <vector>

namespace ombrel {

class CMeshPatch;

/// How the geometry of a mesh looks, as far as its buffers depend on it.
struct MeshLook {
    MeshColourSource source = MeshColourSource::Plain;
    /// Of everything that has no colour of its own; 0 opaque … 1 invisible.
    COLORREF colour = 0;
    double transparency = 0.0;
    bool isSolid = true;
    bool hasOutlines = false;
    COLORREF outlineColour = 0;
    /// Row of the variable in the node or the element data; −1 for the height.
    int variable = -1;
    /// The ends of the texture: nodes' values, or heights.
    double lo = 0.0;
    double hi = 0.0;
    // What colours elements by their values, and so is in the geometry: contour bands, or a map and its ends
    std::vector<double> elementLevels;
    CDWordArray elementBands;
    ColourMapKey elementMap;
    std::array<double, 2> mapEnds {};
    friend bool operator==(MeshLook const& a, MeshLook const& b) = default;
};

/// Makes what is drawn of one patch, in box units.
class MeshGeometry {
public:
    /// Takes over a batch that is complete or has grown large; the rest follows in the next one.
    using Take = std::function<void(FaceBatch&& batch)>;

    /// All of these must stay until Make is through. A place in world coordinates is shown by axes; colourOf gives the
    /// colours of elements' values.
    MeshGeometry(CMeshPatch const& patch, NodePlaces const& world, BoxAxes const& axes, MeshLook const& look,
        MeshColouring::ColourOf const& colourOf, Take const& take);
    void Make();

private:
    using Place = std::array<double, 3>;
    /// A corner on its way into the batch.
    struct Corner {
        std::uint32_t column;
        Place place;
    };
    static constexpr std::uint32_t kNoVertex = 0xFFFFFFFF;

    void MakeLines();
    void MakeFace(std::span<std::uint32_t const> columns);
    void MakePolygon(std::span<std::uint32_t const> columns);
    void MakeFan(Place const& normal);
    void Tessellate(Place const& normal);
    void AverageNormals();
    std::uint32_t AddSharedVertex(std::uint32_t column);
    std::uint32_t AddCorner(Corner const& corner, Place const& normal);
    void SetColour(std::size_t element);
    void SetCorners(std::span<std::uint32_t const> columns);
    void EndFace(std::span<std::uint32_t const> outline);
    void TakeBatch();
    float TexturePlace(std::uint32_t column) const;
    Place PlaceOf(std::uint32_t column) const;
    static Place Normal(Place const& a, Place const& b, Place const& c);

    CMeshPatch const& m_patch;
    MeshElements const& m_elements;
    NodePlaces const& m_world;
    MeshLook const& m_look;
    MeshColouring::ColourOf const& m_colourOf;
    Take const& m_take;
    std::array<Place, 2> m_toBox {};
    Place m_boxScale {};
    /// Of the nodes, what colours them; null without.
    double const* m_nodeValues = nullptr;
    /// Of the elements; null without.
    double const* m_elementValues = nullptr;
    FaceBatch m_batch;
    std::array<BYTE, 4> m_colour {};
    /// Of each node, where light follows them.
    std::vector<std::array<float, 3>> m_normals;
    /// Its vertex in this batch, where neighbours share one.
    std::vector<std::uint32_t> m_vertexOf;
    std::vector<Corner> m_corners;
    std::vector<std::uint32_t> m_outline;
};

} // namespace ombrel
