#pragma once
#include "ombrel/graph3d/Mesh.h"
#include "ombrel/platform/framework/Export.h"

#include <array>

namespace ombrel {

/// The nodes of a grid curve that is no surface, with their ranges.
class OMBREL_EXPORT C3DRowColCurveMesh : public CMesh {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using CMesh::CMesh;

    /// The ranges of the nodes that are not missing; all 0 without any.
    void ComputeRanges();
    /// Whether some node is not missing, as ComputeRanges found.
    bool HasRange() const { return m_hasRange; }
    /// Data units; coordinate 0 is x, 1 y, 2 z.
    double GetMin(int coordinate) const { return m_min[CheckedIndex(coordinate, m_min.size())]; }
    double GetMax(int coordinate) const { return m_max[CheckedIndex(coordinate, m_max.size())]; }

private:
    std::array<double, 3> m_min {};
    std::array<double, 3> m_max {};
    bool m_hasRange = false;
};

} // namespace ombrel
