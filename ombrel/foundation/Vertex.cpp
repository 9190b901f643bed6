#include "ombrel/foundation/Vertex.h"

#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CVertex::kClass = PersistentClass<CVertex, CObject>("CVertex");
constinit CRuntimeClass const CNormal::kClass = PersistentClass<CNormal, CObject>("CNormal");
constinit CRuntimeClass const CCoord::kClass = DynamicClass<CObject>("CCoord");

void Triple::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(m_values[0], m_values[1], m_values[2]);
}

void CVertex::Scale(double factor)
{
    for (double& v : m_values)
        v *= factor;
}

void CVertex::Scale(double const* factors)
{
    for (double& v : m_values)
        v *= *factors++;
}

int CVertex::FloatEq(CVertex const& other) const
{
    // Values beyond single precision round to infinity, as the conversion does in IEEE arithmetic.
    for (int i = 0; i < 3; ++i) {
        if (static_cast<float>((*this)[i]) != static_cast<float>(other[i]))
            return 0;
    }
    return 1;
}

} // namespace ombrel
