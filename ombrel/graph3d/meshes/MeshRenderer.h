#pragma once
#include "ombrel/graph3d/meshes/MeshGeometry.h"
#include "ombrel/graph3d/render/ColourTexture.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace ombrel {

class C3DGraph;

/// A patch, which is not owned, and its nodes where they are drawn.
struct MeshPart {
    CMeshPatch const* patch = nullptr;
    NodePlaces world;
};

/// What is drawn, and by what it is coloured.
struct MeshScene {
    /// Goes up with every change of data, clip box or face flags.
    std::uint64_t revision = 0;
    BoxAxes axes;
    /// Its variable and its contours as they are to be drawn. Not owned.
    MeshColouring const& colouring;
    int colourDescription = 0;
    int gradation = 0;
    MeshColouring::ColourOf colourOf;
    /// What colourOf follows from where there are no contours: a map, not owned, and the values of its ends.
    CColourMap const& map;
    std::array<double, 2> mapEnds {};
    /// Takes each part of the mesh in turn; asked for when the geometry is made.
    std::function<void(std::function<void(MeshPart const& part)> const& take)> forEachPart;
};

/// Draws a mesh: keeps its geometry in buffers of OpenGL, and makes these anew when data or settings have changed.
class MeshRenderer {
public:
    /// Within a draw of the graph. The look gives everything but the source of colours and its values.
    void Render(C3DGraph& graph, MeshScene const& scene, MeshLook look);
    /// Gives back buffers and textures; the next draw makes them again.
    void InvalidateDeviceObjects();

private:
    struct Key {
        std::uint64_t revision = 0;
        BoxAxes axes;
        MeshLook look;
        friend bool operator==(Key const& a, Key const& b) = default;
    };
    bool HasGeometry() const;

    Key m_key;
    bool m_isMade = false;
    std::vector<FaceBatch> m_batches;
    ColourTexture m_colours;
};

} // namespace ombrel
