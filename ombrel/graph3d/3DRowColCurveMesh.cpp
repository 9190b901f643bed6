#include "ombrel/graph3d/3DRowColCurveMesh.h"

#include <algorithm>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const C3DRowColCurveMesh::kClass = DynamicClass<CMesh>("C3DRowColCurveMesh");

void C3DRowColCurveMesh::ComputeRanges()
{
    m_min.fill(std::numeric_limits<double>::infinity());
    m_max.fill(-std::numeric_limits<double>::infinity());
    m_hasRange = false;
    for (int j = 0; HasNodes() && j <= GetNumRows(); ++j) {
        for (int i = 0; i <= GetNumCols(); ++i) {
            if (IsMissing(i, j))
                continue;
            m_hasRange = true;
            std::array<double, 3> const place { GetX(i, j), GetY(i, j), GetZ(i, j) };
            for (std::size_t k = 0; k < place.size(); ++k) {
                m_min[k] = std::min(m_min[k], place[k]);
                m_max[k] = std::max(m_max[k], place[k]);
            }
        }
    }
    if (!m_hasRange) {
        m_min = {};
        m_max = {};
    }
}

} // namespace ombrel
