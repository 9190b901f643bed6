#pragma once
#include "ombrel/graph3d/3DObject.h"

namespace ombrel {

/// An ellipsoid about the origin, before its placement.
class OMBREL_EXPORT C3DObjectSphere : public C3DObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using C3DObject::C3DObject;
    void Serialize(CArchive& ar) override;
    /// Besides the common ones: "stacks", "slices", "radii" (three), "radius" (all three).
    void SetProperty(C3DObjectFile& file, CString const& name, CString const& value) override;
    /// A point of the unit sphere.
    CVertex GetWorldVertex(CVertex const& v) const override;
    void MakeMesh(ObjectMesh& mesh, int most) const override;
    std::size_t CountPoints(int most) const override;

    double GetRadiusX() const { return m_radiusX; }
    double GetRadiusY() const { return m_radiusY; }
    double GetRadiusZ() const { return m_radiusZ; }
    void SetRadii(double x, double y, double z);
    /// Around the z axis; fewer than 3 are stored, but drawn as 3.
    int GetSlices() const { return m_slices; }
    void SetSlices(int slices) { Change(m_slices, slices); }
    /// From pole to pole; fewer than 2 are stored, but drawn as 2.
    int GetStacks() const { return m_stacks; }
    void SetStacks(int stacks) { Change(m_stacks, stacks); }

private:
    double m_radiusX = 0.5;
    double m_radiusY = 0.5;
    double m_radiusZ = 0.5;
    int m_slices = 20;
    int m_stacks = 20;
};

} // namespace ombrel
