#include "ombrel/foundation/FaceIndices.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const CFaceIndices::kClass = DynamicClass<CObject>("CFaceIndices");

void CFaceIndices::Sort()
{
    std::sort(m_indices.begin(), m_indices.end());
    m_key = m_indices[0] + 100 * m_indices[1] + 200 * m_indices[2] + 300 * m_indices[3];
}

} // namespace ombrel
