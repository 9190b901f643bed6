#pragma once
#include "ombrel/graph3d/meshes/MeshGeometry.h"
#include "ombrel/graph3d/render/ColourTexture.h"

#include <cstdint>
#include <span>

namespace ombrel {

class C3DGraph;

/// Patches and their nodes as they are to be drawn. Not owned.
struct MeshPart {
    CMeshPatch const* patch = nullptr;
    NodePlaces world;
};

/// Draws a mesh: keeps its geometry in buffers of OpenGL, and makes these anew when data or settings have changed.
class MeshRenderer {
public:
    /// The parts of the mesh, asked for when the geometry is made.
    using MakeParts = std::function<std::vector<MeshPart>()>;

    /// Within a draw of the graph. The revision goes up with every change of data, clip box or face flags. The texels
    /// are those of the variable's range (MakeTexels), coloured by colourOf; they are used where values colour.
    void Render(C3DGraph& graph, std::uint64_t revision, BoxAxes const& axes, MeshLook look, std::vector<BYTE>&& texels,
        MeshColouring::ColourOf const& colourOf, MakeParts const& makeParts);
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
