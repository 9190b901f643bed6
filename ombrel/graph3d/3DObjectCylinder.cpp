#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/objects/ObjectProperty.h"
#include "ombrel/graph3d/objects/Placement.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DObjectCylinder::kClass
    = PersistentClass<C3DObjectCylinder, C3DObject>("C3DObjectCylinder");

namespace {

constexpr int kLeastSlices = 3;
constexpr int kLeastStacks = 1;

} // namespace

void C3DObjectCylinder::Serialize(CArchive& ar)
{
    if (ar.IsStoring() && m_endpointsSet) {
        Placement placement = GetTransform();
        // Column by column, so that what is loaded scales first.
        for (std::size_t k = 0; k < 12; ++k)
            placement[k] = m_placedSize[k / 4] != 0.0 ? placement[k] / m_placedSize[k / 4] : 0.0;
        SerializeWith(ar, placement);
    } else {
        C3DObject::Serialize(ar);
        m_endpointsSet = 0;
    }
    std::array<double, 3> size = GetSize();
    ArchiveFields f(ar);
    f.Version(1);
    f.Double(size[0], size[1], size[2], m_scaleFac).Int(m_slices, m_stacks, m_topShown, m_bottomShown);
    if (ar.IsLoading()) {
        m_radiusX = size[0];
        m_radiusY = size[1];
        m_halfHeight = size[2];
    }
}

void C3DObjectCylinder::SetEndpoints(CVertex const& p1, CVertex const& p2)
{
    CVertex const d = p2 - p1;
    m_halfHeight = std::hypot(d.X(), d.Y(), d.Z()) / 2.0;
    m_placedSize = { m_radiusX, m_radiusY, m_halfHeight };
    m_endpointsSet = 1;
    InitTransforms();
    Scale(m_radiusX, m_radiusY, m_halfHeight);
    Apply(MakeAligningRotation(d));
    CVertex const middle = (p1 + p2) * 0.5;
    Translate(middle.X(), middle.Y(), middle.Z());
}

std::array<double, 3> C3DObjectCylinder::GetSize() const
{
    return m_endpointsSet ? m_placedSize : std::array { m_radiusX, m_radiusY, m_halfHeight };
}

void C3DObjectCylinder::SetRadii(double x, double y)
{
    Change(m_radiusX, x);
    Change(m_radiusY, y);
}

void C3DObjectCylinder::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    ObjectProperty const property { file, name, value };
    int count = 0;
    double number = 0.0;
    std::array<double, 2> radii {};
    std::array<double, 6> ends {};
    auto const setRadii = [&](double x, double y) {
        SetRadii(x, y);
        if (m_endpointsSet)
            property.Note("comes after the endpoints and changes nothing");
    };
    if (property.Is("stacks")) {
        if (property.ReadDivisions(kLeastStacks, kMostDivisions, count))
            SetStacks(count);
    } else if (property.Is("slices")) {
        if (property.ReadDivisions(kLeastSlices, kMostDivisions, count))
            SetSlices(count);
    } else if (property.Is("radii")) {
        if (property.Read(radii))
            setRadii(radii[0], radii[1]);
    } else if (property.Is("radius")) {
        if (property.Read(number))
            setRadii(number, number);
    } else if (property.Is("length")) {
        if (property.Read(number)) {
            SetHalfHeight(0.5 * number);
            if (m_endpointsSet)
                property.Note("comes after the endpoints and changes nothing");
        }
    } else if (property.Is("endpoints")) {
        if (property.Read(ends))
            SetEndpoints({ ends[0], ends[1], ends[2] }, { ends[3], ends[4], ends[5] });
    } else if (property.Is("topendratio")) {
        if (property.Read(number))
            SetScaleFac(number);
    } else if (property.Is("hidetop")) {
        SetTopShown(0);
    } else if (property.Is("hidebottom")) {
        SetBottomShown(0);
    } else {
        C3DObject::SetProperty(file, name, value);
    }
}

CVertex C3DObjectCylinder::GetWorldVertex(CVertex const& v) const
{
    return TransformVertex(m_endpointsSet ? v : CVertex(m_radiusX * v.X(), m_radiusY * v.Y(), m_halfHeight * v.Z()));
}

std::size_t C3DObjectCylinder::CountPoints(int most) const
{
    auto const slices = static_cast<std::size_t>(GetDivisions(m_slices, kLeastSlices, most));
    auto const stacks = static_cast<std::size_t>(GetDivisions(m_stacks, kLeastStacks, most));
    return slices * (stacks + 3) + 2;
}

void C3DObjectCylinder::MakeMesh(ObjectMesh& mesh, int most) const
{
    int const slices = GetDivisions(m_slices, kLeastSlices, most);
    int const stacks = GetDivisions(m_stacks, kLeastStacks, most);
    auto const [a, b, c] = GetSize();
    // Where the placement holds the size, it is taken out of the normal, since placing puts it in once more.
    auto const part = [this](double v, double size) { return !m_endpointsSet ? v : size != 0.0 ? v / size : 0.0; };
    auto const pointAt = [&](int i, int j) {
        double const theta = 2.0 * i * kRoundPi / slices;
        double const s = 1.0 - (1.0 - m_scaleFac) * j / stacks;
        return CVertex(s * std::cos(theta), s * std::sin(theta), 2.0 * j / stacks - 1.0);
    };
    auto const cols = static_cast<std::uint32_t>(slices);
    std::uint32_t const first = mesh.GetNumPoints();
    for (int j = 0; j <= stacks; ++j) {
        for (int i = 0; i < slices; ++i) {
            double const theta = 2.0 * i * kRoundPi / slices;
            CNormal const normal(part(2.0 * c * b * std::cos(theta), a), part(2.0 * c * a * std::sin(theta), b),
                part((1.0 - m_scaleFac) * a * b, c));
            mesh.points.emplace_back(GetWorldVertex(pointAt(i, j)), TransformNormal(normal));
        }
    }
    mesh.AddGrid(first, cols, static_cast<std::uint32_t>(stacks + 1), true);
    auto const addCap = [&](int j, double z) {
        CNormal const normal = TransformNormal({ 0.0, 0.0, z });
        std::uint32_t const centre = mesh.GetNumPoints();
        mesh.points.emplace_back(GetWorldVertex({ 0.0, 0.0, z }), normal);
        for (int i = 0; i < slices; ++i)
            mesh.points.emplace_back(GetWorldVertex(pointAt(i, j)), normal);
        mesh.AddFan(centre, centre + 1, cols);
    };
    if (m_bottomShown)
        addCap(0, -1.0);
    if (m_topShown && m_scaleFac != 0.0)
        addCap(stacks, 1.0);
}

} // namespace ombrel
