#pragma once
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/graph3d/render/FaceBatch.h"

namespace ombrel {

class C3DObject;
struct ObjectMesh;

/// The faces and wires of a curve's objects in box units, all in few batches, however many objects there are.
///
/// Building needs no OpenGL. Wires are lines of their own in front of the faces: an outline of each face through the
/// stencil would take a draw call for each.
class ObjectScene {
public:
    void Clear();
    void Add(C3DObject const& object, BoxAxes const& axes);
    FaceBatch const& GetOpaque() const { return m_opaque; }
    FaceBatch const& GetTransparent() const { return m_transparent; }
    FaceBatch const& GetWires() const { return m_wires; }
    /// Within a draw of the graph.
    void Draw(C3DGraph& graph);
    void InvalidateDeviceObjects();

private:
    FaceBatch m_opaque;
    FaceBatch m_transparent;
    FaceBatch m_wires;
};

} // namespace ombrel
