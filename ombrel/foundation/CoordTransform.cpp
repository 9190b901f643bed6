#include "ombrel/foundation/CoordTransform.h"

#include "ombrel/platform/framework/ArchiveFields.h"

#include <cmath>
#include <numbers>

namespace ombrel {

constinit CRuntimeClass const CCoordTransform::kClass = PersistentClass<CCoordTransform, CObject>("CCoordTransform");
constinit CRuntimeClass const CTransformArray::kClass = PersistentClass<CTransformArray, CObject>("CTransformArray");

namespace {

/// Turns the point (u, v) of a plane by degrees from u towards v.
void Turn(double& u, double& v, double degrees)
{
    double const phi = -degrees * std::numbers::pi / 180.0;
    double const c = std::cos(phi);
    double const s = std::sin(phi);
    double const turned = c * u + s * v;
    v = -s * u + c * v;
    u = turned;
}

} // namespace

void CCoordTransform::Transform(double& x, double& y, double& z) const
{
    switch (m_type) {
    case ctTranslate:
        x += m_a;
        y += m_b;
        z += m_c;
        break;
    case ctRotate:
        Rotate(x, y, z);
        break;
    case ctScale:
        x *= m_a;
        y *= m_b;
        z *= m_c;
        break;
    }
}

void CCoordTransform::Rotate(double& x, double& y, double& z) const
{
    Turn(y, z, m_a);
    Turn(z, x, m_b);
    Turn(x, y, m_c);
}

void CCoordTransform::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_type).Double(m_a, m_b, m_c);
}

CTransformArray::CTransformArray(CTransformArray const& other)
    : CObject(other)
{
    for (CCoordTransform const* transform : other.m_transforms)
        Add(*transform);
}

CTransformArray& CTransformArray::operator=(CTransformArray const& other)
{
    CTransformArray copy(other);
    std::swap(m_transforms, copy.m_transforms);
    return *this;
}

void CTransformArray::Transform(double& x, double& y, double& z) const
{
    for (CCoordTransform const* transform : m_transforms)
        transform->Transform(x, y, z);
}

void CTransformArray::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.Owned(m_transforms);
}

} // namespace ombrel
