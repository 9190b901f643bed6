#pragma once
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/graph3d/geometry/TriangleMesh.h"
#include "ombrel/graph3d/render/ColourTexture.h"
#include "ombrel/graph3d/render/KeptBatch.h"

#include <array>
#include <cstdint>

namespace ombrel {

/// What the geometry of an irregular surface follows from.
struct IrregularSurfaceKey {
    std::uint64_t revision = 0;
    BoxAxes axes;
    bool isFlat = false;
    bool hasOutlines = false;
    bool hasValueTable = false;
    std::array<BYTE, 4> colour {};
    std::array<BYTE, 4> lineColour {};
    friend bool operator==(IrregularSurfaceKey const& a, IrregularSurfaceKey const& b) = default;
};

/// What an irregular surface keeps between draws.
struct IrregularSurfaceDrawing : KeptBatch<IrregularSurfaceKey> {
    TriangleLists lists;
    ColourTexture colours;
};

} // namespace ombrel
