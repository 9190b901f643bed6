#include "ombrel/foundation/RealTypes.h"

#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const CRealPoint::kClass = PersistentClass<CRealPoint, CObject>("CRealPoint");
constinit CRuntimeClass const CRealSize::kClass = DynamicClass<CObject>("CRealSize");
constinit CRuntimeClass const CRealRect::kClass = PersistentClass<CRealRect, CObject>("CRealRect");

void CRealPoint::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(x, y);
}

void CRealSize::Swap() { std::swap(cx, cy); }

void CRealRect::Set(CRealPoint const& topLeft, CRealPoint const& bottomRight)
{
    m_topLeft = topLeft;
    m_bottomRight = bottomRight;
    left = m_topLeft.x;
    right = m_bottomRight.x;
    top = m_topLeft.y;
    bottom = m_bottomRight.y;
}

void CRealRect::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Nested(m_topLeft, m_bottomRight);
    if (ar.IsLoading())
        Set(m_topLeft, m_bottomRight);
}

} // namespace ombrel
