#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/objects/ObjectProperty.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DObjectSphere::kClass = PersistentClass<C3DObjectSphere, C3DObject>("C3DObjectSphere");

namespace {

constexpr int kLeastSlices = 3;
constexpr int kLeastStacks = 2;

} // namespace

void C3DObjectSphere::Serialize(CArchive& ar)
{
    C3DObject::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(m_radiusX, m_radiusY, m_radiusZ).Int(m_slices, m_stacks);
}

void C3DObjectSphere::SetRadii(double x, double y, double z)
{
    Change(m_radiusX, x);
    Change(m_radiusY, y);
    Change(m_radiusZ, z);
}

void C3DObjectSphere::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    ObjectProperty const property { file, name, value };
    int count = 0;
    double radius = 0.0;
    std::array<double, 3> radii {};
    if (property.Is("stacks")) {
        if (property.ReadDivisions(kLeastStacks, kMostDivisions, count))
            SetStacks(count);
    } else if (property.Is("slices")) {
        if (property.ReadDivisions(kLeastSlices, kMostDivisions, count))
            SetSlices(count);
    } else if (property.Is("radii")) {
        if (property.Read(radii))
            SetRadii(radii[0], radii[1], radii[2]);
    } else if (property.Is("radius")) {
        if (property.Read(radius))
            SetRadii(radius, radius, radius);
    } else {
        C3DObject::SetProperty(file, name, value);
    }
}

CVertex C3DObjectSphere::GetWorldVertex(CVertex const& v) const
{
    return TransformVertex({ m_radiusX * v.X(), m_radiusY * v.Y(), m_radiusZ * v.Z() });
}

std::size_t C3DObjectSphere::CountPoints(int most) const
{
    auto const slices = static_cast<std::size_t>(GetDivisions(m_slices, kLeastSlices, most));
    auto const stacks = static_cast<std::size_t>(GetDivisions(m_stacks, kLeastStacks, most));
    return slices * (stacks - 1) + 2;
}

void C3DObjectSphere::MakeMesh(ObjectMesh& mesh, int most) const
{
    int const slices = GetDivisions(m_slices, kLeastSlices, most);
    int const stacks = GetDivisions(m_stacks, kLeastStacks, most);
    auto const add = [&](CVertex const& p) {
        // In proportion to 2 p / r, but without dividing by radii, which may be 0.
        CNormal const normal(
            p.X() * m_radiusY * m_radiusZ, p.Y() * m_radiusX * m_radiusZ, p.Z() * m_radiusX * m_radiusY);
        mesh.points.emplace_back(GetWorldVertex(p), TransformNormal(normal));
    };
    std::uint32_t const first = mesh.GetNumPoints();
    for (int j = 1; j < stacks; ++j) {
        double const phi = j * kRoundPi / stacks;
        for (int i = 0; i < slices; ++i) {
            double const theta = 2.0 * i * kRoundPi / slices;
            add({ std::cos(theta) * std::sin(phi), std::sin(theta) * std::sin(phi), std::cos(phi) });
        }
    }
    std::uint32_t const last = mesh.GetNumPoints();
    add({ 0.0, 0.0, 1.0 });
    add({ 0.0, 0.0, -1.0 });
    auto const cols = static_cast<std::uint32_t>(slices);
    mesh.AddGrid(first, cols, static_cast<std::uint32_t>(stacks - 1), true);
    mesh.AddFan(last, first, cols);
    mesh.AddFan(last + 1, last - cols, cols);
}

} // namespace ombrel
