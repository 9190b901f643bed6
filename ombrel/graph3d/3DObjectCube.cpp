#include "ombrel/graph3d/3DObjectCube.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/objects/ObjectProperty.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DObjectCube::kClass = PersistentClass<C3DObjectCube, C3DObject>("C3DObjectCube");

namespace {

/// Points of a face at u and v, each from −1 to 1: v goes with the first index of a point, u with the second.
struct CubeFace {
    CVertex (*pointAt)(double u, double v);
    std::array<double, 3> normal;
};

constexpr CubeFace kFaces[] = {
    { [](double u, double v) { return CVertex(-1.0, -u, v); }, { -1, 0, 0 } },
    { [](double u, double v) { return CVertex(1.0, u, v); }, { 1, 0, 0 } },
    { [](double u, double v) { return CVertex(-u, 1.0, v); }, { 0, 1, 0 } },
    { [](double u, double v) { return CVertex(u, -1.0, v); }, { 0, -1, 0 } },
    { [](double u, double v) { return CVertex(-u, -v, 1.0); }, { 0, 0, 1 } },
    { [](double u, double v) { return CVertex(u, -v, -1.0); }, { 0, 0, -1 } },
};

} // namespace

void C3DObjectCube::Serialize(CArchive& ar)
{
    C3DObject::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(m_radiusX, m_radiusY, m_radiusZ).Int(m_divisions);
}

void C3DObjectCube::SetRadii(double x, double y, double z)
{
    Change(m_radiusX, x);
    Change(m_radiusY, y);
    Change(m_radiusZ, z);
}

void C3DObjectCube::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    ObjectProperty const property { file, name, value };
    if (!property.Is("dimensions"))
        C3DObject::SetProperty(file, name, value);
    else if (std::array<double, 3> radii {}; property.Read(radii))
        SetRadii(radii[0], radii[1], radii[2]);
}

CVertex C3DObjectCube::GetWorldVertex(CVertex const& v) const
{
    return TransformVertex({ m_radiusX * v.X(), m_radiusY * v.Y(), m_radiusZ * v.Z() });
}

std::size_t C3DObjectCube::CountPoints(int most) const
{
    auto const points = static_cast<std::size_t>(GetDivisions(m_divisions, 1, most)) + 1;
    return std::size(kFaces) * points * points;
}

void C3DObjectCube::MakeMesh(ObjectMesh& mesh, int most) const
{
    int const n = GetDivisions(m_divisions, 1, most);
    auto const points = static_cast<std::uint32_t>(n) + 1;
    auto const along = [n](int i) { return 2.0 * i / n - 1.0; };
    for (CubeFace const& face : kFaces) {
        std::uint32_t const first = mesh.GetNumPoints();
        CNormal const normal = TransformNormal({ face.normal[0], face.normal[1], face.normal[2] });
        for (int i = 0; i <= n; ++i) {
            for (int j = 0; j <= n; ++j)
                mesh.points.emplace_back(GetWorldVertex(face.pointAt(along(j), along(i))), normal);
        }
        mesh.AddGrid(first, points, points, false);
    }
}

} // namespace ombrel
