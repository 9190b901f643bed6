#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/opengl/GLObject.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ombrel {

class C3DGraph;
class Camera;
class CPolygon;
class FaceBatch;

/// The transparent faces of a picture, from the farthest to the nearest.
///
/// They lie in buffers of OpenGL with their corners in that order, which the passes of one picture share.
/// All functions belong within a draw of the graph.
class TransparentScene {
public:
    /// The names of textures of OpenGL; 0 for none. That of two dimensions goes before that of one.
    struct Textures {
        unsigned int oneD = 0;
        unsigned int twoD = 0;
        friend bool operator==(Textures const&, Textures const&) = default;
    };

    /// Not owned; the batch must stay as it is until EndPicture. Where there is a texture of two dimensions, the batch
    /// has the places on it.
    void Add(FaceBatch const& batch, Textures const& textures) { m_batches.push_back({ &batch, textures }); }
    bool IsEmpty() const { return m_batches.empty(); }
    /// Forgets what was added: the next pass adds it again.
    void Clear() { m_batches.clear(); }
    /// And what was sorted.
    void EndPicture();

    /// Puts what was added in order, with the polygons.
    void Sort(Camera const& camera, OwnedArray<CPolygon> const& polygons);
    /// What was sorted.
    void Draw(C3DGraph& graph) const;

private:
    struct Batch {
        FaceBatch const* batch;
        Textures textures;
        friend bool operator==(Batch const&, Batch const&) = default;
    };
    struct Vertex {
        std::array<float, 3> place;
        std::array<float, 3> normal;
        std::array<float, 4> colour;
        std::array<float, 2> texture;
    };
    /// Triangles that follow each other and have the same textures.
    struct Run {
        Textures textures;
        std::size_t firstIndex;
        std::size_t count;
    };
    struct Faces;

    static void Append(Faces& faces, Batch const& batch, Camera const& camera);
    static void Append(Faces& faces, CPolygon const& polygon, Camera const& camera);

    std::vector<Batch> m_batches;
    std::vector<Batch> m_sortedBatches;
    std::vector<Run> m_runs;
    GLObject m_vertexBuffer;
    GLObject m_indexBuffer;
};

} // namespace ombrel
