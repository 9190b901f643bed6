#include "ombrel/graph3d/3DObject.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph3d/3DObjectCube.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/graph3d/3DObjectGeneral.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/graph3d/Colour3.h"
#include "ombrel/graph3d/objects/ObjectMesh.h"
#include "ombrel/graph3d/objects/ObjectProperty.h"
#include "ombrel/graph3d/objects/Placement.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

constinit CRuntimeClass const C3DObject::kClass = PersistentClass<C3DObject, CObject>("C3DObject");

void C3DObject::Serialize(CArchive& ar) { SerializeWith(ar, m_transform); }

void C3DObject::SerializeWith(CArchive& ar, Placement& transform)
{
    CObject::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Short(m_colourDescription).Dword(m_colour, m_wireframeColour).Int(m_wireframeOn).Double(m_transparency);
    f.Int(m_gradationOn, m_reserved);
    for (double& element : transform)
        f.Double(element);
    if (ar.IsLoading()) {
        m_reconstruct = 1;
        m_needsRange = true;
    }
}

// --- Reading

int C3DObject::GetProperty(C3DObjectFile& file, CString& name, CString& value)
{
    return file.ReadProperty(name, value) ? 1 : 0;
}

std::unique_ptr<C3DObject> C3DObject::CreateFromHeader(CString const& line, C3DObjectCurve* curve)
{
    if (line.Find(CString("general")) >= 0)
        return std::make_unique<C3DObjectGeneral>(curve);
    if (line.Find(CString("sphere")) >= 0)
        return std::make_unique<C3DObjectSphere>(curve);
    if (line.Find(CString("cylinder")) >= 0)
        return std::make_unique<C3DObjectCylinder>(curve);
    if (line.Find(CString("cube")) >= 0)
        return std::make_unique<C3DObjectCube>(curve);
    return nullptr;
}

void C3DObject::Read(C3DObjectFile& file)
{
    CString name;
    CString value;
    while (GetProperty(file, name, value))
        SetProperty(file, name, value);
    if (name.IsEmpty())
        file.AddNote("the last object has no \"endobject\"");
}

void C3DObject::SetProperty(C3DObjectFile& file, CString const& name, CString const& value)
{
    ObjectProperty const property { file, name, value };
    auto const readColour = [&] {
        std::array<int, 3> rgb {};
        if (!property.Read(rgb))
            return COLORREF { 255 };
        auto const channel = [&](std::size_t k) { return static_cast<BYTE>(std::clamp(rgb[k], 0, 255)); };
        return RGB(channel(0), channel(1), channel(2));
    };
    std::array<double, 3> v {};
    if (property.Is("colour")) {
        SetColour(readColour());
    } else if (property.Is("wireframecolour")) {
        SetWireframeColour(readColour());
    } else if (property.Is("transparency")) {
        double transparency = 0.0;
        SetTransparency(property.Read(transparency) ? transparency : 0.0);
    } else if (property.Is("wireframe")) {
        SetWireframeOn(1);
    } else if (property.Is("gradation")) {
        SetGradationOn(1);
    } else if (property.Is("rotate")) {
        if (property.Read(v))
            Rotate(v[0], v[1], v[2]);
    } else if (property.Is("translate")) {
        if (property.Read(v))
            Translate(v[0], v[1], v[2]);
    } else if (property.Is("scale")) {
        if (property.Read(v))
            Scale(v[0], v[1], v[2]);
    } else {
        property.Note("is no property of this object");
    }
}

// --- Place

CVertex C3DObject::TransformVertex(CVertex const& v) const
{
    CVertex placed = IsTransformIdentity() ? v : Placed(m_transform, v);
    if (m_curve && m_curve->GetNumTransforms() > 0) {
        double* const xyz = placed.GetData();
        m_curve->Transform(&xyz[0], &xyz[1], &xyz[2]);
    }
    return placed;
}

CNormal C3DObject::TransformNormal(CNormal const& n) const
{
    CVertex const d = TransformVertex({ n.X(), n.Y(), n.Z() }) - TransformVertex({ 0.0, 0.0, 0.0 });
    double const length = std::hypot(d.X(), d.Y(), d.Z());
    if (!(length > 0.0) || !std::isfinite(length))
        return { 0.0, 0.0, 1.0 };
    return { d.X() / length, d.Y() / length, d.Z() / length };
}

void C3DObject::Apply(Placement const& operation) { SetTransform(operation * m_transform); }

void C3DObject::Scale(double sx, double sy, double sz) { Apply(MakeScaling(sx, sy, sz)); }

void C3DObject::Translate(double tx, double ty, double tz) { Apply(MakeTranslation(tx, ty, tz)); }

void C3DObject::Rotate(double ax, double ay, double az) { Apply(MakeRotation(ax, ay, az)); }

void C3DObject::RotateArbAxis(double x, double y, double z, double angle)
{
    Apply(MakeRotation(CVertex(x, y, z), angle));
}

void C3DObject::InitTransforms() { SetTransform(kNoPlacement); }

bool C3DObject::IsTransformIdentity() const { return m_transform == kNoPlacement; }

void C3DObject::GetRanges(CVertex& min, CVertex& max)
{
    if (m_needsRange)
        Construct();
    if (!m_hasRange)
        return;
    min = m_rangeMin;
    max = m_rangeMax;
}

void C3DObject::Construct()
{
    m_needsRange = false;
    m_hasRange = false;
    ObjectMesh mesh;
    MakeMesh(mesh, m_mostDivisions);
    for (CCoord const& point : mesh.points) {
        double const* const p = point.vertex.GetData();
        if (!std::all_of(p, p + 3, [](double c) { return std::isfinite(c); }))
            continue;
        for (int k = 0; k < 3; ++k) {
            m_rangeMin[k] = m_hasRange ? std::min(m_rangeMin[k], p[k]) : p[k];
            m_rangeMax[k] = m_hasRange ? std::max(m_rangeMax[k], p[k]) : p[k];
        }
        m_hasRange = true;
    }
}

// --- Drawing

void C3DObject::SetCurve(C3DObjectCurve* curve)
{
    m_curve = curve;
    m_reconstruct = 1;
    m_needsRange = true;
}

void C3DObject::SetCoarseMode(int on)
{
    if (m_isCoarse == (on != 0))
        return;
    m_isCoarse = on != 0;
    m_reconstruct = 1;
}

void C3DObject::MakeMesh(ObjectMesh&, int) const { }

std::size_t C3DObject::CountPoints(int) const { return 0; }

int C3DObject::GetMostDrawnDivisions() const
{
    constexpr int kCoarse = 8;
    return m_isCoarse ? std::min(kCoarse, m_mostDivisions) : m_mostDivisions;
}

int C3DObject::GetDivisions(int count, int least, int most) { return std::clamp(count, least, std::max(least, most)); }

void C3DObject::SetReconstructFlag(int on)
{
    m_reconstruct = on;
    m_needsRange = m_needsRange || on != 0;
}

void C3DObject::TellChanged()
{
    m_modified = 1;
    SetReconstructFlag(1);
    if (m_curve)
        m_curve->SetModified(1);
}

COLORREF C3DObject::GetVertexColour(double worldZ) const
{
    if (m_colourDescription < 1 && !m_gradationOn)
        return m_colour;
    double const low = m_rangeMin.Z();
    double const high = m_rangeMax.Z();
    // Coarse points may lie a rounding error beyond.
    return CColourMap::GetGradedColour(m_colour, low < high ? std::clamp(worldZ, low, high) : low, low, high);
}

BYTE* C3DObject::MakeColour(unsigned long colour)
{
    std::ranges::copy(Colour3(colour).rgb, m_colourBytes.begin());
    return m_colourBytes.data();
}

} // namespace ombrel
