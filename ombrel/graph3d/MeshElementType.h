#pragma once

namespace ombrel {

/// What the elements of a mesh are. The values are stored in archives; those not named here are drawn as nothing.
enum MeshElementType : int {
    etTriangle = 0,
    etQuad = 1,
    /// Of any number of nodes.
    etPolygon = 2,
    /// Eight nodes, corners 0 to 3 around one face and 4 to 7 behind them; "block" in files.
    etBrick = 3,
    etTetrahedron = 4,
};

} // namespace ombrel
